#!/usr/bin/env python3
"""Tests of the exporter's assembly as it is shipped, and of what it writes when AutoCAD's stand-in loads it.

usage: assembly_test.py TEST --build FOLDER --source FOLDER --mono FILE --mcs FILE --monodis FILE --version N.N.N.N
"""
import argparse
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

from requirement import Failure, require

HOST = {"AcCui", "accoremgd", "Acdbmgd"}
SYSTEM = {"mscorlib", "System"}
CODE_PAGE = "1252"
WORKSPACE = "Drawing Office"


class Exporter:
    def __init__(self, options):
        self.options = options
        self.file = os.path.join(options.build, "MenuScribe2015.dll")
        self.menu = os.path.join(options.source, "samples", "office.cuix")

    def monodis(self, table):
        require(os.access(self.options.monodis, os.X_OK), "monodis is not installed (package mono-utils)")
        # References are resolved only when the assemblies are at hand.
        environment = dict(os.environ, MONO_PATH=os.path.join(self.options.build, "reference"))
        return subprocess.run([self.options.monodis, table, self.file], env=environment, stdout=subprocess.PIPE, text=True,
                              check=True).stdout

    def run(self, profile, *arguments, host="standin", workspace=WORKSPACE, launcher=(), before=None):
        """What the command line shows."""
        program = os.path.join(self.options.build, host, "netload_host.exe")
        command = [*launcher, self.options.mono, program, self.file, "--menu", self.menu, "--workspace", workspace,
                   "--code-page", CODE_PAGE, *arguments]
        result = subprocess.run(command, env=dict(os.environ, USERPROFILE=profile), preexec_fn=before,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
        require(result.returncode == 0, f"status {result.returncode}: {result.stdout}{result.stderr}")
        return result.stdout


def new_profile(folder):
    os.makedirs(os.path.join(folder, "Lumetrapad", "Applications"))
    return folder


def menu_file(profile):
    return os.path.join(profile, "Lumetrapad", "Applications", "autocad.mnu")


def read(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, contents):
    with open(path, "wb") as file:
        file.write(contents)


def members(table):
    """Each member reference outside the host, without type arguments."""
    found = set()
    for resolved, signature in re.findall(r"Resolved: (.*)\n\s*Signature: (.*)", table):
        while "<" in resolved:
            resolved = re.sub(r"<[^<>]*>", "", resolved)
        resolved = re.sub(r"^(class|valuetype) ", "", resolved)
        assembly, name = re.match(r"\[(\w+)\](.*)", resolved).groups()
        if assembly not in HOST:
            found.add(f"{name} : {signature.strip()}")
    return found


def AssemblyRefersToTheSystemAndTheHostOnly(exporter, _):
    table = exporter.monodis("--assemblyref")
    versions = dict(zip(re.findall(r"Name=(\S+)", table), re.findall(r"Version=(\S+)", table)))
    expected = {name: "4.0.0.0" for name in SYSTEM} | {name: "19.0.0.0" for name in HOST}
    require(versions == expected, f"references {versions}")
    keys = dict(zip(re.findall(r"Name=(\S+)", table), re.findall(r"(Public Key:|Zero sized public key)", table)))
    signed = {name for name, key in keys.items() if key == "Public Key:"}
    require(signed == SYSTEM, f"with a key: {signed}")


def AssemblyUsesOnlyMembersOfDotNet4(exporter, _):
    with open(os.path.join(os.path.dirname(__file__), "members_of_net_4_0.txt"), encoding="utf-8") as file:
        known = {line.strip() for line in file if line.strip() and not line.startswith("#")}
    used = members(exporter.monodis("--memberref"))
    require(len(used) > 80, f"only {len(used)} members found")
    require(not used - known, "not known to be in .NET 4.0: " + "\n".join(sorted(used - known)))
    require(not known - used, "no longer used: " + "\n".join(sorted(known - used)))


def AssemblyIsForAnyProcessor(exporter, _):
    image = read(exporter.file)
    head = struct.unpack_from("<I", image, 0x3C)[0]
    machine, sections = struct.unpack_from("<HH", image, head + 4)
    size, = struct.unpack_from("<H", image, head + 20)
    magic, = struct.unpack_from("<H", image, head + 24)
    address, = struct.unpack_from("<I", image, head + 24 + 208)
    rows = [struct.unpack_from("<8sIIII", image, head + 24 + size + 40 * i) for i in range(sections)]
    start = next(address - rva + offset for _, length, rva, _, offset in rows if rva <= address < rva + length)
    flags, = struct.unpack_from("<I", image, start + 16)
    require((machine, magic, flags) == (0x14C, 0x10B, 1), f"machine {machine:#x}, kind {magic:#x}, flags {flags:#x}")
    require(b"v4.0.30319\0" in image, "not for the runtime of .NET 4")


def AssemblyHasTheVersionOfTheProject(exporter, _):
    image = read(exporter.file)
    for name, value in (("FileVersion", exporter.options.version), ("ProductVersion", exporter.options.version),
                        ("OriginalFilename", "MenuScribe2015.dll"), ("CompanyName", "Lumetra")):
        key = (name + "\0").encode("utf-16-le")
        require(key in image, f"no {name}")
        text = image[image.index(key) + len(key):][:120].decode("utf-16-le", "ignore").lstrip("\0")
        require(text.split("\0")[0] == value, f"{name} is {text!r}")


def AssemblyIsTheSameFromAnotherFolder(exporter, folder):
    """Compiled again as the build does it, from sources in a folder of another name, somewhat later."""
    options = exporter.options
    sources = os.path.join(folder, "other")
    shutil.copytree(os.path.join(options.source, "exporter"), sources)
    shutil.copy(os.path.join(options.build, "assembly_info.cs"), os.path.join(folder, "zz_info.cs"))
    compiler = [options.mcs, "-target:library", "-optimize+", "-debug-", "-langversion:5", "-noconfig"]
    references = []
    for name in sorted(HOST, key=str.lower):
        references.append(os.path.join(folder, name + ".dll"))
        subprocess.run(compiler + ["-out:" + references[-1], os.path.join(sources, "reference", name.lower() + ".cs")],
                       check=True)
    files = sorted(name for name in os.listdir(sources) if name.endswith(".cs"))
    again = os.path.join(folder, "MenuScribe2015.dll")
    subprocess.run(compiler + ["-r:System.dll", *("-r:" + name for name in references), "-out:" + again,
                               *(os.path.join(sources, name) for name in files), os.path.join(folder, "zz_info.cs")],
                   check=True)
    require(read(again) == read(exporter.file), "the bytes differ")


def LoadedAssemblyExportsAndReports(exporter, folder):
    profile = new_profile(folder)
    told = exporter.run(profile)
    require(told == "", f"loading shows {told!r}")
    require(read(menu_file(profile)).startswith(b"[MenuBar]\r\nOFFICE."), "no menu file")
    told = exporter.run(profile, "lm_export_menu")
    wanted = (r"\nMenu export: (\d+) of (\d+) menu items are in '.*/autocad\.mnu'; left out: 1 without a macro, "
              r"1 only cancelling, .*; \d+ end where their macro waits for input\n")
    numbers = re.fullmatch(wanted, told)
    require(numbers is not None, f"the command shows {told!r}")
    written = sum(b"}" in line for line in read(menu_file(profile)).splitlines())
    require(int(numbers[1]) == written, f"{written} entries, told {numbers[1]}")
    lost = sum(int(number) for number in re.findall(r"(?:out: |, )(\d+) ", told))
    require(int(numbers[2]) == written + lost, f"{numbers[2]} items, {written} written, {lost} left out")


def LeanHostCostsOnlyWhatItLacks(exporter, folder):
    profile = new_profile(folder)
    told = exporter.run(profile, host="lean_standin")
    require(told.startswith("\nMenu export: ") and told.endswith("more, see menu_exporter_log.txt)\n"), f"shown: {told!r}")
    with open(os.path.join(profile, "Lumetrapad", "menu_exporter_log.txt"), encoding="utf-8") as file:
        log = file.read()
    for name in ("PopMenu.get_DisplayName", "MenuGroup.get_RibbonRoot", "Macro has no HelpString"):
        require(name in log, f"the log does not name {name}: {log}")
    lines = read(menu_file(profile)).decode("cp1252").splitlines()
    require("OFFICE.PMI_Lines_01 = {Draw > Lines > Line}_LINE|" in lines, "an item of a menu is not there")
    require("OFFICE.ID_Box = {Other commands > Box}_box|" in lines, "a macro of the ribbon is not there")


def expect_old_file(exporter, profile, reason, **how):
    write(menu_file(profile), b"old")
    told = exporter.run(profile, **how)
    require(re.fullmatch(r"\nMenu export: menu file: .*; the menu file is as it was, LM_EXPORT_MENU tries again\n", told)
            is not None and reason in told, f"shown: {told!r}")
    require(read(menu_file(profile)) == b"old", "the old file is not kept")
    left = os.listdir(os.path.dirname(menu_file(profile)))
    require(left == ["autocad.mnu"], f"left behind: {left}")


def ReadOnlyFolderKeepsTheOldFile(exporter, folder):
    profile = new_profile(folder)
    write(menu_file(profile), b"old")
    os.chmod(os.path.dirname(menu_file(profile)), 0o555)
    # The administrator may write everywhere, unless that right is given up.
    launcher = ["setpriv", "--bounding-set", "-dac_override"] if os.getuid() == 0 else []
    try:
        expect_old_file(exporter, profile, "denied", launcher=launcher)
    finally:
        os.chmod(os.path.dirname(menu_file(profile)), 0o755)


def FullDiskKeepsTheOldFile(exporter, folder):
    profile = new_profile(folder)

    def fill_disk():
        # The exporter's process keeps this one's number, which is in the name of the file that it writes first.
        os.symlink("/dev/full", f"{menu_file(profile)}.{os.getpid()}.new")

    expect_old_file(exporter, profile, "Disk full", before=fill_disk)


def SampleFileIsWhatTheExporterWrites(exporter, folder):
    profile = new_profile(folder)
    exporter.run(profile, workspace="")
    sample = os.path.join(exporter.options.source, "samples", "autocad.mnu")
    require(read(menu_file(profile)) == read(sample),
            f"write it anew: USERPROFILE=DIR mono netload_host.exe MenuScribe2015.dll --menu samples/office.cuix "
            f"--code-page {CODE_PAGE}")


def PlainWorkspaceHasItsOwnMenus(exporter, folder):
    profile = new_profile(folder)
    exporter.run(profile, workspace="Plain")
    lines = read(menu_file(profile)).decode("cp1252").splitlines()
    require(lines[1].startswith("OFFICE.PMI_File_01 = {File > New"), lines[1])
    require("OFFICE.ID_Line = {Ribbon > Drawing > Line}_LINE|Asks for its points" in lines, "a macro of no menu")
    require(not any("{Draw > " in line for line in lines), "a menu that is not shown")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("test")
    for option in ("build", "source", "mono", "mcs", "monodis", "version"):
        parser.add_argument("--" + option, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        try:
            globals()[options.test](Exporter(options), folder)
        except Failure as failure:
            print(f"{options.test}: {failure}")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
