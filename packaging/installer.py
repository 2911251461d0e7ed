"""The Windows Installer package: its description for wixl, and what wixl leaves open or at random."""
import hashlib
import os
import re
import struct
import subprocess
from xml.sax.saxutils import quoteattr

import icon
from identity import BUNDLE, MAKER, PRODUCT, component_code, guid, product_code, upgrade_code
from pe_version import pe_version

ENGLISH = "1033"
ICON = "lumetrapad.ico"
# From the start of 1601, in which Windows counts, to that of 1970, in tenths of microseconds.
EPOCH = 116444736000000000
PROPERTY_SET = bytes.fromhex("E0859FF2F94F6810AB9108002B27B3D9")
PACKAGE_CODE, CREATED, SAVED = 9, 12, 13

# A folder above the bundle's, which this installer may be the first to make: it goes when nothing else is in it.
FOLDER = '<Component Id="{name}" Guid="{code}" Win64="yes" KeyPath="yes"><CreateFolder /></Component>'

HEAD = """<?xml version="1.0" encoding="utf-8"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
  <Product Id={product_code} UpgradeCode={upgrade_code} Name={product} Version={version} Manufacturer={maker}
      Language="1033" Codepage="1252">
    <Package Description={product} Comments={version} Manufacturer={maker} Keywords="Installer"
        InstallerVersion="500" Languages="1033" Compressed="yes" SummaryCodepage="1252" InstallScope="perMachine" />
    <Upgrade Id={upgrade_code}>
      <UpgradeVersion Minimum="0.0.0" IncludeMinimum="yes" Maximum={version}
          Property="OLDERFOUND" />
      <UpgradeVersion Minimum={version} IncludeMinimum="no" OnlyDetect="yes" Property="NEWERFOUND" />
    </Upgrade>
    <Condition Message="A newer version of the Lumetrapad plug-in is installed. Remove it first.">NOT NEWERFOUND</Condition>
    <InstallExecuteSequence><RemoveExistingProducts After="InstallValidate" /></InstallExecuteSequence>
    <Media Id="1" Cabinet="bundle.cab" EmbedCab="yes" />
    <Icon Id="lumetrapad.ico" SourceFile={icon} />
    <Property Id="ARPPRODUCTICON" Value="lumetrapad.ico" />
    <Property Id="ARPNOMODIFY" Value="1" />
    <Directory Id="TARGETDIR" Name="SourceDir">
      <Directory Id="ProgramFiles64Folder">
        <Directory Id="Autodesk" Name="Autodesk">
          {folder_autodesk}
          <Directory Id="ApplicationPlugins" Name="ApplicationPlugins">
            {folder_plugins}
"""
TAIL = """          </Directory>
        </Directory>
      </Directory>
    </Directory>
    <Feature Id="Bundle" Title={product} Level="1">
      <ComponentRef Id="kPlugins" />
      <ComponentRef Id="kAutodesk" />
{references}    </Feature>
  </Product>
</Wix>
"""


def identifier(path):
    """Short, and the same in every version."""
    return "f" + hashlib.sha256(path.encode()).hexdigest()[:16]


def files_below(folder):
    """Paths of the files relative to the folder, with slashes, sorted."""
    found = []
    for place, _, names in os.walk(folder):
        found += [os.path.relpath(os.path.join(place, name), folder).replace(os.sep, "/") for name in names]
    return sorted(found)


def tree(paths):
    """Nested dictionaries of folders; a file's value is its path."""
    root = {}
    for path in paths:
        *folders, name = path.split("/")
        place = root
        for folder in folders:
            place = place.setdefault(folder, {})
        place[name] = path
    return root


def directory(name, content, path, source, depth):
    indent = " " * depth
    lines = [f"{indent}<Directory Id={quoteattr(identifier(path))} Name={quoteattr(name)}>\n"]
    for entry, value in sorted(content.items()):
        if isinstance(value, dict):
            lines += directory(entry, value, f"{path}/{entry}", source, depth + 2)
            continue
        key = identifier(value)
        lines.append(f'{indent}  <Component Id="c{key}" Guid={quoteattr(component_code(value))} Win64="yes">'
                     f'<File Id="{key}" Name={quoteattr(entry)} Source={quoteattr(os.path.join(source, value))}'
                     ' KeyPath="yes" /></Component>\n')
    return lines + [f"{indent}</Directory>\n"]


def description(bundle, version, source):
    """What wixl makes the package of; `source` is the bundle's folder as wixl finds it."""
    paths = files_below(bundle)
    values = {"product": PRODUCT, "maker": MAKER, "version": version, "icon": ICON,
              "product_code": product_code(version), "upgrade_code": upgrade_code()}
    quoted = {key: quoteattr(value) for key, value in values.items()}
    for name in ("autodesk", "plugins"):
        quoted["folder_" + name] = FOLDER.format(name="k" + name.capitalize(), code=component_code("above " + name))
    references = "".join(f'      <ComponentRef Id="c{identifier(path)}" />\n' for path in paths)
    folders = "".join(directory(BUNDLE, tree(paths), BUNDLE, source, 12))
    return HEAD.format(**quoted) + folders + TAIL.format(references=references, **quoted)


# What wixl reads and passes over: that a package of the same version is replaced, too. Windows does not look at the
# fourth number of a version.
PASSED_OVER = (
    "DELETE FROM `Upgrade` WHERE `ActionProperty`='OLDERFOUND'",
    "INSERT INTO `Upgrade` (`UpgradeCode`, `VersionMin`, `VersionMax`, `Attributes`, `ActionProperty`) "
    "VALUES ('{upgrade_code}', '0.0.0', '{version}', 768, 'OLDERFOUND')",
)


def complete(msi, version):
    """Enters what wixl passes over."""
    for query in PASSED_OVER:
        change(msi, query.replace("{upgrade_code}", upgrade_code()).replace("{version}", version))


def change(msi, query):
    subprocess.run(["msibuild", msi, "-q", query], check=True, stderr=subprocess.PIPE, text=True)


def name_versions(msi, bundle):
    """Enters the programs' versions, which wixl does not read. Without them a repair would take any file that has a
    version for newer than the package's."""
    for path in files_below(bundle):
        version = pe_version(os.path.join(bundle, path))
        if version is None:
            continue
        key = identifier(path)
        change(msi, f"UPDATE `File` SET `Version`='{version}', `Language`='{ENGLISH}' WHERE `File`='{key}'")
        change(msi, f"DELETE FROM `MsiFileHash` WHERE `File_`='{key}'")


def summary_places(data):
    """Where the value of each summary property stands in the file."""
    if data.count(PROPERTY_SET) != 1:
        raise ValueError("expected one summary in the installer package")
    entry = data.index(PROPERTY_SET)
    start = entry - 28 + struct.unpack_from("<I", data, entry + 16)[0]
    count = struct.unpack_from("<I", data, start + 4)[0]
    pairs = [struct.unpack_from("<II", data, start + 8 + 8 * i) for i in range(count)]
    return {number: start + offset for number, offset in pairs}


def fix_summary(msi, package_code, epoch):
    """Replaces what wixl makes anew each time: the package's code and two times."""
    with open(msi, "rb") as file:
        data = bytearray(file.read())
    places = summary_places(data)
    struct.pack_into("<38s", data, places[PACKAGE_CODE] + 8, package_code.encode())
    for number in (CREATED, SAVED):
        struct.pack_into("<Q", data, places[number] + 4, EPOCH + epoch * 10**7)
    with open(msi, "wb") as file:
        file.write(data)
    told = subprocess.run(["msiinfo", "suminfo", msi], check=True, capture_output=True, text=True).stdout
    if not re.search(r"^Revision number \(UUID\): " + re.escape(package_code) + "$", told, re.M):
        raise ValueError(f"the installer package did not take its code {package_code}:\n{told}")


def contents_code(bundle, version):
    """The package's code: another one for every other content."""
    digest = hashlib.sha256(version.encode())
    for path in files_below(bundle):
        with open(os.path.join(bundle, path), "rb") as file:
            digest.update(path.encode() + b"\0" + hashlib.sha256(file.read()).digest())
    return guid("package " + digest.hexdigest())


def make_installer(bundle, version, epoch, work, msi):
    """Makes `msi` of the bundle's folder, whose files bear the time `epoch`; `work` is for what lies in between."""
    with open(os.path.join(work, ICON), "wb") as file:
        file.write(icon.icon())
    with open(os.path.join(work, "installer.wxs"), "w", encoding="utf-8") as file:
        # wixl knows no full paths.
        file.write(description(bundle, version, os.path.relpath(bundle, work)))
    # The cabinet holds local times.
    subprocess.run(["wixl", "--arch", "x64", "--output", os.path.abspath(msi), "installer.wxs"], cwd=work, check=True,
                   stderr=subprocess.PIPE, text=True, env=dict(os.environ, TZ="UTC"))
    complete(msi, version)
    name_versions(msi, bundle)
    fix_summary(msi, contents_code(bundle, version), epoch)
