#!/usr/bin/env python3
"""Installs, upgrades, repairs and removes under Wine.

usage: install_test.py SOURCE_FOLDER PACKAGES MACHINE_FOLDER HOLD_FILE BUILD_FOLDER WORKBENCH CASE
"""
import glob
import os
import shutil
import subprocess
import sys
import tempfile

from make_test_packages import GONE
from wine_machine import BUNDLE, WineMachine, wait_for, windows_path

UNINSTALL = r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall"
# What Windows Installer keeps for itself of every product, by the product's and the components' numbers.
OWN_KEYS = (r"HKEY_LOCAL_MACHINE\Software\Classes\Installer", r"HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Installer")
FAILED = 1603 & 255
SESSION = "300 motion 0 0 0 0 100 0\n600 motion 0 0 0 0 0 0\n900 key top\n1200 end\n"


class Machine(WineMachine):
    """The machine without the product, and the packages to install."""

    def __init__(self, source, packages, folder, hold_file, screen, workbench):
        super().__init__(source, folder)
        self.source, self.hold_file, self.screen, self.workbench = source, hold_file, screen, workbench
        sys.path.insert(0, os.path.join(source, "packaging"))
        from identity import product_code  # pylint: disable=import-error,import-outside-toplevel
        self.packages, self.codes = {}, {}
        for kind in ("older", "current", "sibling", "newer"):
            self.packages[kind] = glob.glob(os.path.join(packages, kind, "*.msi"))[0]
            self.codes[kind] = product_code(os.path.basename(self.packages[kind]).split("-")[-1][:-len(".msi")])
        self.content = {kind: read_folder(os.path.join(packages, kind, BUNDLE)) for kind in self.packages}

    def clean(self):
        """As before any of the cases, whatever the last one left."""
        for code in self.codes.values():
            if any(code in key for key, _ in self.registry(UNINSTALL)):
                self.remove(code)
        shutil.rmtree(os.path.join(self.programs, "Autodesk"), ignore_errors=True)

    def installed(self):
        return read_folder(self.bundle)

    def entries(self):
        """Version and name of each of the product's entries in Programs and Features."""
        values = self.registry(UNINSTALL)
        return sorted((values[(key, "DisplayVersion")].strip('"'), values[(key, "DisplayName")].strip('"'))
                      for key, name in values if name == "DisplayName" and "Lumetrapad" in values[(key, name)])


def read_folder(folder):
    found = {}
    for place, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(place, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = file.read()
    return found


def expect(what, found, expected):
    if found != expected:
        raise AssertionError(f"{what}: found {found!r}, expected {expected!r}")


def expect_bundle(machine, kind):
    found, expected = machine.installed(), machine.content[kind]
    expect("files", sorted(found), sorted(expected))
    expect("changed files", [name for name in expected if found[name] != expected[name]], [])


def added(before, after):
    return sorted(key for key, value in after.items() if before.get(key) != value)


def case_SilentInstallWritesWhatTheListSays(machine):
    files = machine.files("Program Files"), machine.files("users")
    registry = machine.registry("HKLM\\Software")
    user_registry = machine.registry("HKCU\\Software")
    expect("status", machine.install(machine.packages["current"]), 0)
    expect_bundle(machine, "current")
    new = added(files[0], machine.files("Program Files"))
    bundle = f"Autodesk/ApplicationPlugins/{BUNDLE}"
    folders = {"Autodesk/", "Autodesk/ApplicationPlugins/", bundle + "/"}
    for name in machine.content["current"]:
        folders |= {f"{bundle}/{name[:i + 1]}" for i, letter in enumerate(name) if letter == "/"}
    expect("new below Program Files", new, sorted(folders | {f"{bundle}/{name}" for name in machine.content["current"]}))
    expect("new below users", [name for name in added(files[1], machine.files("users")) if "/Temp/" not in name], [])
    changed = added(user_registry, machine.registry("HKCU\\Software"))
    # Wine writes there on its own account, whenever the desktop's colours are read for the first time.
    own = "HKEY_CURRENT_USER\\Software\\Wine\\"
    expect("changed for the user", [key for key in changed if not key[0].startswith(own)], [])
    values = machine.registry("HKLM\\Software")
    new = [key for key in added(registry, values) if not key[0].startswith(OWN_KEYS)]
    with open(os.path.join(os.path.dirname(__file__), "registry.txt"), encoding="utf-8") as file:
        listed = file.read().replace("{ProductCode}", machine.codes["current"]).splitlines()
    found = [f"{key} | {name} | {values[(key, name)]}" for key, name in new if name not in ("InstallDate", "InstallSource")]
    expect("new in the registry", found, listed)


def case_SecondInstallChangesNothing(machine):
    machine.install(machine.packages["current"])
    expect("status", machine.install(machine.packages["current"]), 0)
    expect_bundle(machine, "current")
    expect("entries", [version for version, _ in machine.entries()], ["2.9.2.0"])


def case_UpgradeReplacesAnOlderVersion(machine):
    expect("status of the older", machine.install(machine.packages["older"]), 0)
    expect("the file that goes", f"Contents/{GONE}" in machine.installed(), True)
    expect("status", machine.install(machine.packages["current"]), 0)
    expect_bundle(machine, "current")
    expect("entries", [version for version, _ in machine.entries()], ["2.9.2.0"])


def case_NewerVersionIsNotReplaced(machine):
    machine.install(machine.packages["newer"])
    expect("status", machine.install(machine.packages["current"]), FAILED)
    expect_bundle(machine, "newer")
    expect("entries", [version for version, _ in machine.entries()], ["3.0.0.0"])


def case_FourthNumberOfTheVersionDoesNotMatter(machine):
    # Windows compares three numbers: without a rule for equal ones both would be installed in one folder.
    machine.install(machine.packages["sibling"])
    expect("status", machine.install(machine.packages["current"]), 0)
    expect_bundle(machine, "current")
    expect("entries", [version for version, _ in machine.entries()], ["2.9.2.0"])


def case_RepairBringsBackADeletedFile(machine):
    machine.install(machine.packages["current"])
    os.remove(os.path.join(machine.bundle, "Contents", "LMTRAutoCAD2013.arx"))
    expect("status", machine.repair(machine.codes["current"]), 0)
    expect_bundle(machine, "current")


def case_UpgradeWorksWhileAFileIsInUse(machine):
    machine.install(machine.packages["older"])
    module = os.path.join(machine.bundle, "Contents", "LMTRAutoCAD2013.arx")
    with tempfile.TemporaryDirectory() as folder:
        ready, end = os.path.join(folder, "ready"), os.path.join(folder, "end")
        user = machine.start(machine.hold_file, windows_path(module), windows_path(ready), windows_path(end))
        try:
            wait_for(lambda: os.path.exists(ready), "the file to be in use")
            # 0, or 3010: at the next start of Windows.
            expect("status", machine.install(machine.packages["current"]) in (0, 3010 & 255), True)
        finally:
            with open(end, "w", encoding="ascii"):
                pass
            user.wait()
    expect("status of a repair once the file is free", machine.repair(machine.codes["current"]), 0)
    expect_bundle(machine, "current")


def case_RemovalLeavesNothingButTheUsersFiles(machine):
    user = os.path.join(machine.drive, "users", os.environ.get("USER", "root"), "Lumetrapad", "Applications")
    os.makedirs(user, exist_ok=True)
    kept = os.path.join(user, "autocad_addin.ini")
    with open(kept, "w", encoding="ascii") as file:
        file.write("[PROGRAM]\n")
    files = machine.files("Program Files"), machine.files("windows/Installer")
    registry = machine.registry("HKLM\\Software")
    machine.install(machine.packages["current"])
    expect("status", machine.remove(machine.codes["current"]), 0)
    expect("left below Program Files", added(files[0], machine.files("Program Files")), [])
    expect("left of the installer", added(files[1], machine.files("windows/Installer")), [])
    expect("left in the registry", added(registry, machine.registry("HKLM\\Software")), [])
    expect("the user's settings are kept", os.path.exists(kept), True)
    shutil.rmtree(os.path.dirname(user))


def case_InstalledModulePlaysASession(machine):
    machine.install(machine.packages["current"])
    with tempfile.TemporaryDirectory() as folder:
        session, out = os.path.join(folder, "a.session"), os.path.join(folder, "out")
        with open(session, "w", encoding="ascii") as file:
            file.write(SESSION)
        os.mkdir(out)
        # On the tests' screen, which the machine has not; the module comes from its place on the machine.
        played = subprocess.run([machine.runner[0], machine.screen, machine.workbench, "replay", "--quiet",
                                 "--module", windows_path(os.path.join(machine.bundle, "Contents", "LMTRAutoCAD2013.arx")),
                                 "--drawing", os.path.join(machine.source, "samples", "bracket.dxf"), "--session", session, "--out", out],
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                timeout=100, check=False)
        expect("status", played.returncode, 0)
        with open(os.path.join(out, "commandline.log"), encoding="utf-8") as file:
            texts = [line.split(" ", 1)[1] for line in file.read().splitlines()]
        expect("the module is loaded", 'print "\\nmLmAutoCadP constructed\\n"' in texts, True)
        expect("the key is sent", "send \"'_-VIEW _TOP \"" in texts, True)


CASES = {name[len("case_"):]: value for name, value in globals().items() if name.startswith("case_")}


def main():
    *places, name = sys.argv[1:]
    machine = Machine(*places)
    machine.clean()
    CASES[name](machine)
    print("as expected")


if __name__ == "__main__":
    try:
        main()
    except (AssertionError, subprocess.SubprocessError) as error:
        print(error)
        sys.exit(1)
