#!/usr/bin/env python3
"""Runs the checker on machines with something broken, under Wine, and holds each to the lines that it prints.

usage: check_test.py SOURCE_FOLDER PACKAGES MACHINE_FOLDER CHECKER CLIENT_LIBRARY OLD_CLIENT_LIBRARY
"""
import os
import re
import shutil
import sys

from wine_machine import BUNDLE, WineMachine, windows_path

ACAD = r"SOFTWARE\Autodesk\AutoCAD\R19.0\ACAD-B001:409"
DRIVER = r"SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\lm_daemon.exe"
MODULE = "Contents/LMTRAutoCAD2013.arx"
PLACE = r"C:\Program Files\Autodesk\ApplicationPlugins" + "\\" + BUNDLE
LIBRARY = r"C:\Driver\lmt_ctrlr_64.dll"
MENU = "[Modes]\nAutoCAD = 0\n\n[MenuBar]\n1 = {Line}_line\n"


def settings_text(source):
    """The default settings file as the tests of the settings type it."""
    with open(os.path.join(source, "tests", "support", "settings_text.cpp"), encoding="utf-8") as file:
        return re.search(r'kDefaultSettings =\s+R"\((.*?)\)"', file.read(), re.S).group(1)


class Machine(WineMachine):
    """One on which nothing is wrong, to be broken by a case."""

    def __init__(self, source, packages, folder, checker, client, old_client):
        super().__init__(source, folder)
        self.content = os.path.join(packages, "current", BUNDLE)
        self.checker, self.client, self.old_client = checker, client, old_client
        self.default_settings = settings_text(source)
        self.home = os.path.join(self.drive, "Checked")
        self.applications = os.path.join(self.home, "Lumetrapad", "Applications")
        self.user_bundle = os.path.join(self.home, "Roaming", "Autodesk", "ApplicationPlugins", BUNDLE)
        self.driver = os.path.join(self.drive, "Driver")

    def set_up(self):
        self.clear()
        shutil.copytree(self.content, self.bundle)
        os.makedirs(self.applications)
        with open(os.path.join(self.applications, "autocad_addin.ini"), "w", encoding="ascii") as file:
            file.write(self.default_settings)
        with open(os.path.join(self.applications, "autocad.mnu"), "w", encoding="ascii") as file:
            file.write(MENU)
        os.makedirs(self.driver)
        shutil.copyfile(self.client, os.path.join(self.driver, "lmt_ctrlr_64.dll"))
        os.makedirs(os.path.join(self.drive, "AutoCAD"))

    def clear(self):
        for folder in (os.path.join(self.programs, "Autodesk"), self.home, self.driver, os.path.join(self.drive, "AutoCAD")):
            shutil.rmtree(folder, ignore_errors=True)

    def write_registry(self):
        self.run("reg", "add", "HKLM\\" + ACAD, "/v", "AcadLocation", "/d", r"C:\AutoCAD", "/f")
        self.run("reg", "add", "HKLM\\" + DRIVER, "/ve", "/d", r"C:\Driver\lm_daemon.exe", "/f")

    def remove_from_registry(self):
        self.run("reg", "delete", r"HKLM\SOFTWARE\Autodesk", "/f")
        self.run("reg", "delete", "HKLM\\" + DRIVER, "/f")

    def check(self, environment, *arguments):
        """Status and lines of the checker. Windows sets the variables of the profile itself: a batch file sets others."""
        values = {"USERPROFILE": r"C:\Checked", "APPDATA": r"C:\Checked\Roaming", "PATH": r"C:\windows\system32;C:\Driver",
                  **environment}
        batch = os.path.join(self.folder, "check.bat")
        with open(batch, "w", encoding="ascii", newline="\r\n") as file:
            file.writelines(f"@set {name}={value}\n" for name, value in values.items())
            file.write(f"@{' '.join((windows_path(self.checker), *arguments))}\n@exit %ERRORLEVEL%\n")
        status, told = self.run("cmd", "/c", windows_path(batch))
        return status, told.splitlines()


def remove_module(machine):
    os.remove(os.path.join(machine.bundle, MODULE))


def damage(path):
    with open(path, "wb") as file:
        file.write(b"MZ" + bytes(200))


def mark_as_downloaded(machine):
    """As a stream beside the file, which Wine keeps as a file of that name."""
    with open(os.path.join(machine.bundle, MODULE + ":Zone.Identifier"), "w", encoding="ascii") as file:
        file.write("[ZoneTransfer]\r\nZoneId=3\r\n")


def repair_fails(machine):
    """Lets the checker repair a settings file with a key missing. What is wrong with the outcome; empty when nothing."""
    machine.set_up()
    settings = os.path.join(machine.applications, "autocad_addin.ini")
    with open(settings, "w", encoding="ascii", newline="\r\n") as file:
        file.write(machine.default_settings.replace("minThreshold ", "nThreshold "))
    status, lines = machine.check({}, "--fix")
    with open(os.path.join(machine.applications, "autocad_addin.repaired.ini"), encoding="ascii", newline="") as file:
        repaired = file.read()
    if repaired != machine.default_settings.replace("\n", "\r\n"):
        return f"the repaired file is {repaired!r} ({status}, {lines})"
    os.replace(os.path.join(machine.applications, "autocad_addin.repaired.ini"), settings)
    found = machine.check({})
    return "" if found == (0, ["Nothing found."]) else f"in its place it has {found}"


# Name; what is broken; the environment; what is printed.
CASES = [
    ("nothing is broken", lambda machine: None, {}, ["Nothing found."]),
    ("no module", remove_module, {}, [rf"Bundle: '{PLACE}' lacks Contents\LMTRAutoCAD2013.arx; repair the installation."]),
    ("a damaged module", lambda machine: damage(os.path.join(machine.bundle, MODULE)), {},
     [rf"Bundle: '{PLACE}' has programs that are not 64-bit Windows programs (Contents\LMTRAutoCAD2013.arx); repair the "
      "installation."]),
    ("no bundle", lambda machine: shutil.rmtree(machine.bundle), {},
     ["Bundle: there is no Lumetrapad.bundle in any of the folders that AutoCAD looks into (C:\\Program "
      "Files\\Autodesk\\ApplicationPlugins, C:\\Checked\\Roaming\\Autodesk\\ApplicationPlugins); install the plug-in."]),
    ("a bundle of one user", lambda machine: shutil.move(machine.bundle, machine.user_bundle), {}, ["Nothing found."]),
    ("two bundles", lambda machine: shutil.copytree(machine.bundle, machine.user_bundle), {},
     ["Bundle: it is installed for all users and for this user, and AutoCAD finds it twice; remove "
      rf"'C:\Checked\Roaming\Autodesk\ApplicationPlugins\{BUNDLE}'."]),
    ("a folder of AutoCAD that is gone", lambda machine: os.rmdir(os.path.join(machine.drive, "AutoCAD")), {},
     ["AutoCAD: the registry names no AutoCAD 2013 (release R19.0), and the module works with no other release; install "
      "AutoCAD 2013, 64-bit."]),
    ("no driver", lambda machine: shutil.rmtree(machine.driver), {},
     ["Driver: the client library lmt_ctrlr_64.dll is neither beside the module nor on the search path, so that AutoCAD "
      "cannot load the module; install the driver."]),
    ("a driver off the search path", lambda machine: None, {"PATH": r"C:\windows\system32"},
     ["Driver: the client library lmt_ctrlr_64.dll is in 'C:\\Driver', where the module does not find it; add that folder "
      "to PATH, or copy the file beside the module."]),
    ("a damaged library", lambda machine: damage(os.path.join(machine.driver, "lmt_ctrlr_64.dll")), {},
     [f"Driver: the client library lmt_ctrlr_64.dll in '{LIBRARY}' is not a 64-bit library; install the driver for 64-bit "
      "Windows."]),
    ("an old library", lambda machine: shutil.copyfile(machine.old_client, os.path.join(machine.driver, "lmt_ctrlr_64.dll")), {},
     [f"Driver: the client library '{LIBRARY}' lacks operations that the module needs (numbers 117, 180), so that AutoCAD "
      "cannot load the module; update the driver."]),
    ("a driver that refuses", lambda machine: None, {"LM_TEST_DRIVER": "refuses"},
     ["Driver: it does not accept a connection; start it, or restart it if it runs."]),
    ("a driver that counts nothing", lambda machine: None, {"LM_TEST_DRIVER": "counts nothing"},
     ["Driver: it accepts a connection and does not tell its devices; restart it."]),
    ("no device", lambda machine: None, {"LM_TEST_DRIVER": "has no device"},
     ["Device: the driver runs and knows no device; plug the device in."]),
    ("a device without a description", lambda machine: None, {"LM_TEST_DRIVER": "describes nothing"},
     ["Device: the driver does not describe its device 0, with which the module does not connect; plug the device in "
      "again."]),
    ("a module from the Internet", mark_as_downloaded, {},
     [rf"Bundle: '{PLACE}' has files that Windows marks as coming from the Internet (Contents\LMTRAutoCAD2013.arx), so that "
      "AutoCAD may not load them; press 'Unblock' in their properties, or unpack the zip file again after unblocking it."]),
    ("no driver's folder", lambda machine: shutil.rmtree(machine.applications), {},
     ["Driver: its folder 'C:\\Checked\\Lumetrapad\\Applications' is missing, and the module can keep neither settings nor "
      "menu file; start the driver once as this user."]),
]


def main(*places):
    machine = Machine(*places)
    machine.write_registry()
    failures = 0
    try:
        for name, break_it, environment, expected in CASES:
            machine.set_up()
            break_it(machine)
            found = machine.check(environment)
            wanted = (0 if expected == ["Nothing found."] else 1, expected)
            if found != wanted:
                failures += 1
                print(f"{name}: found {found}, expected {wanted}")
        wrong = repair_fails(machine)
        if wrong:
            failures += 1
            print(f"repair: {wrong}")
    finally:
        machine.clear()
        machine.remove_from_registry()
    status, lines = machine.check({"USERPROFILE": ""})
    if (status, len(lines)) != (2, 1):
        failures += 1
        print(f"no profile: found {status}, {lines}")
    print(f"{len(CASES) + 2 - failures} of {len(CASES) + 2} machines as expected")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
