#!/usr/bin/env python3
"""Holds what ./run package makes to what it promises.

usage: package_test.py SOURCE_FOLDER PACKAGES DESCRIPTION CASE
"""
import glob
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile

from make_test_packages import SOME_TIME
from wine_machine import BUNDLE


def expect(what, found, expected):
    if found != expected:
        raise AssertionError(f"{what}: found {found!r}, expected {expected!r}")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def read(path):
    with open(path, "rb") as file:
        return file.read()


class Package:
    def __init__(self, folder):
        self.folder = folder
        self.bundle = os.path.join(folder, BUNDLE)
        self.contents_xml = os.path.join(self.bundle, "PackageContents.xml")
        self.msi = glob.glob(os.path.join(folder, "*.msi"))[0]
        self.zip = glob.glob(os.path.join(folder, "*.zip"))[0]

    def table(self, name):
        """Rows of a table of the installer."""
        return [row.split("\t") for row in output("msiinfo", "export", self.msi, name).replace("\r", "").splitlines()[3:]]


class Place:
    """The sources, the packages made for the tests, and the makers themselves."""

    def __init__(self, source, packages, description):
        self.source, self.packages, self.description = source, packages, description
        sys.path.insert(0, os.path.join(source, "packaging"))
        self.schema = os.path.join(os.path.dirname(os.path.abspath(__file__)), "package_contents.xsd")
        self.current = Package(os.path.join(packages, "current"))

    def make(self, out, *options):
        return subprocess.run([sys.executable, os.path.join(self.source, "packaging", "make_package.py"), self.description, out,
                               *options], capture_output=True, text=True, check=False,
                              env={"SOURCE_DATE_EPOCH": SOME_TIME, **os.environ})

    def schema_status(self, xml):
        return subprocess.run(["xmllint", "--noout", "--schema", self.schema, xml], capture_output=True, check=False).returncode


def case_DescriptionFollowsTheSchema(place):
    expect("status", place.schema_status(place.current.contents_xml), 0)


def case_SchemaRefusesWhatTheAutoloaderCannotUse(place):
    text = read(place.current.contents_xml).decode()
    for found, wrong in ((' OS="Win64"', ""), ("R19.0", "R18.2"), ("Contents/LMTR", "LMTR"), ("{", ""),
                         (' LoadOnAutoCADStartup="True"', ' LoadOnAutoCADStartup="False"'), ("ComponentEntry", "Component")):
        with tempfile.NamedTemporaryFile("w", suffix=".xml", encoding="utf-8") as file:
            file.write(text.replace(found, wrong))
            file.flush()
            expect(f"refused with {wrong!r} for {found!r}", place.schema_status(file.name) != 0, True)


def case_SameCommitGivesTheSameBytes(place):
    with tempfile.TemporaryDirectory() as folder:
        result = place.make(os.path.join(folder, "a", "second"))
        expect(f"status ({result.stderr})", result.returncode, 0)
        second = Package(os.path.join(folder, "a", "second"))
        for kind in ("zip", "msi"):
            expect(f"{kind} is the same", read(getattr(second, kind)) == read(getattr(place.current, kind)), True)


def case_TimeIsThatOfTheCommit(place):
    from make_package import PackageError, source_date  # pylint: disable=import-error,import-outside-toplevel
    os.environ.pop("SOURCE_DATE_EPOCH", None)
    with tempfile.TemporaryDirectory() as folder:
        try:
            source_date(folder)
        except PackageError as error:
            expect("without history", str(error), "the time of the commit is not known: set SOURCE_DATE_EPOCH (seconds since 1970)")
        else:
            raise AssertionError("a folder without history gave a time")
        output("git", "-C", folder, "init", "--quiet")
        subprocess.run(["git", "-C", folder, "-c", "user.name=a", "-c", "user.email=a@b", "commit", "--quiet", "--allow-empty",
                        "--message", "a"], check=True, env=dict(os.environ, GIT_COMMITTER_DATE="1600000000 +0200"))
        expect("commit's time", source_date(folder), 1600000000)
    os.environ["SOURCE_DATE_EPOCH"] = "1500000000"
    expect("the environment's time", source_date("/nowhere"), 1500000000)


def case_VersionIsTheSameEverywhere(place):
    from pe_version import pe_version  # pylint: disable=import-error,import-outside-toplevel
    with open(os.path.join(place.source, "CMakeLists.txt"), encoding="utf-8") as file:
        version = re.search(r"VERSION (\d+\.\d+\.\d+\.\d+)", file.read()).group(1)
    package = place.current
    programs = [os.path.join(package.bundle, "Contents", name) for name in os.listdir(os.path.join(package.bundle, "Contents"))
                if name.endswith((".arx", ".exe", ".dll"))]
    expect("programs", {os.path.basename(path): pe_version(path) for path in programs},
           {os.path.basename(path): version for path in programs})
    expect("description", set(re.findall(r'[ p]Version="([^"]+)"', read(package.contents_xml).decode())), {"1.0", version} - {"1.0"})
    expect("installer", dict(package.table("Property"))["ProductVersion"], version)
    expect("installer's files", {row[4] for row in package.table("File") if row[4]}, {version})
    expect("names", [os.path.basename(path) for path in (package.zip, package.msi)],
           [f"Lumetrapad-AutoCAD2013-{version}.{kind}" for kind in ("zip", "msi")])


def case_InstallerAndZipHoldTheBundle(place):
    package = place.current
    files = sorted(os.path.relpath(os.path.join(at, name), package.bundle) for at, _, names in os.walk(package.bundle) for name in names)
    with zipfile.ZipFile(package.zip) as archive:
        expect("zip", sorted(archive.namelist()), sorted(f"{BUNDLE}/{name}" for name in files))
    with tempfile.TemporaryDirectory() as folder:
        output("msiextract", "--directory", folder, package.msi)
        found = os.path.join(glob.glob(os.path.join(folder, "**", BUNDLE), recursive=True)[0])
        for name in files:
            expect(f"{name} is the same", read(os.path.join(found, name)) == read(os.path.join(package.bundle, name)), True)
        expect("number of files", sum(len(names) for _, _, names in os.walk(folder)), len(files))


def case_SumsAreThoseOfTheFiles(place):
    package = place.current
    with open(os.path.join(package.folder, "SHA256SUMS"), encoding="ascii") as file:
        listed = dict(reversed(line.split()) for line in file)
    expect("sums", listed, {os.path.basename(path): hashlib.sha256(read(path)).hexdigest() for path in (package.zip, package.msi)})


def case_InstallerIsForAllUsersAndNeedsTheirAdministrator(place):
    package = place.current
    properties = dict(package.table("Property"))
    expect("for all users", properties["ALLUSERS"], "1")
    expect("publisher", properties["Manufacturer"], "Lumetra")
    expect("icon", properties["ARPPRODUCTICON"] in [row[0] for row in package.table("Icon")], True)
    summary = output("msiinfo", "suminfo", package.msi)
    expect("64-bit", "Template: x64;1033" in summary, True)
    # Bit 3 would say that no administrator is needed.
    expect("administrator", int(re.search(r"^Source: (\d+)", summary, re.M).group(1)) & 8, 0)


def case_NoticesComeWithEveryLinkedPackage(place):
    import notices  # pylint: disable=import-error,import-outside-toplevel
    text = read(os.path.join(place.current.bundle, "Contents", "notices.txt")).decode()
    expect("compiler's runtime", "GCC RUNTIME LIBRARY EXCEPTION" in text.upper(), True)
    with tempfile.TemporaryDirectory() as folder:
        part = os.path.join(folder, "a.map")
        with open(part, "w", encoding="ascii") as file:
            file.write("LOAD /usr/share/lib_of_no_package.a\n")
        try:
            notices.packages(notices.linked_files(part))
        except notices.NoticeError as error:
            expect("message", str(error), "of no package, so that there is no notice: /usr/share/lib_of_no_package.a")
        else:
            raise AssertionError("a part of no package was let through")
        with open(part, "w", encoding="ascii") as file:
            file.write(f"LOAD {glob.glob('/usr/lib/x86_64-linux-gnu/libc.a')[0]}\n")
        expect("a part that is new", notices.packages(notices.linked_files(part)), ["libc6-dev"])


def case_HelpNeedsNoNetworkAndHasItsPictures(place):
    pages = {os.path.basename(path): read(path).decode() for path in glob.glob(os.path.join(place.current.bundle, "Contents", "help", "*"))}
    expect("pages", sorted(pages), ["administering.html", "cap_does_nothing.html", "using.html"])
    for name, text in pages.items():
        targets = re.findall(r'(?:src|href)="([^"]*)"', text)
        expect(f"{name}: targets elsewhere", [target for target in targets if not target.startswith("data:image/svg+xml;base64,")
                                              and target.split("#")[0] not in (*pages, "")], [])
    expect("pictures", len(re.findall(r'<img src="data:', pages["using.html"])), 3)


def make_key(folder):
    key, certificate = os.path.join(folder, "key.pem"), os.path.join(folder, "certificate.pem")
    output("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=Test of the package", "-days", "36500",
           "-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", certificate)
    both = os.path.join(folder, "both.pem")
    with open(both, "wb") as file:
        file.write(read(key) + read(certificate))
    return both, certificate


def case_SignedPackageIsSignedThroughout(place):
    with tempfile.TemporaryDirectory() as folder:
        key, certificate = make_key(folder)
        result = place.make(os.path.join(folder, "signed"), "--sign", key)
        expect(f"status ({result.stderr})", result.returncode, 0)
        package = Package(os.path.join(folder, "signed"))
        contents = os.path.join(package.bundle, "Contents")
        signed = [package.msi] + sorted(os.path.join(contents, name) for name in os.listdir(contents) if name.endswith((".arx", ".exe", ".dll")))
        for path in signed:
            told = subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", path], capture_output=True, text=True, check=False)
            expect(f"{os.path.basename(path)} verifies ({told.stdout})", told.returncode, 0)
        expect("the unsigned does not", subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", place.current.msi],
                                                       capture_output=True, check=False).returncode != 0, True)


def case_MissingKeyIsNamed(place):
    with tempfile.TemporaryDirectory() as folder:
        out = os.path.join(folder, "out")
        shutil.copytree(place.current.folder, out)
        result = place.make(out, "--sign", "/nowhere/key.pem")
        expect("status", result.returncode, 2)
        expect("message", result.stderr,
               "package: /nowhere/key.pem: expected a file with key and certificate (.p12, .pfx or .pem), found none\n")
        expect("the package before is kept", read(Package(out).msi) == read(place.current.msi), True)


CASES = {name[len("case_"):]: value for name, value in globals().items() if name.startswith("case_")}

if __name__ == "__main__":
    try:
        CASES[sys.argv[-1]](Place(*sys.argv[1:-1]))
        print("as expected")
    except (AssertionError, subprocess.SubprocessError) as failure:
        print(failure)
        sys.exit(1)
