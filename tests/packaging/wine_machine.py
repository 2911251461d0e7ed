"""A Windows machine of the build folder's own, for tests that install and remove."""
import os
import re
import subprocess
import time

BUNDLE = "Lumetrapad.bundle"
WAIT_S = 60


class WineMachine:
    def __init__(self, source, folder):
        """`folder` holds the prefix; it is made when it is missing."""
        self.folder = folder
        self.runner = [os.path.join(source, "tools", "run_in_wine.sh"), folder]
        self.drive = os.path.join(folder, "prefix", "drive_c")
        self.programs = os.path.join(self.drive, "Program Files")
        self.bundle = os.path.join(self.programs, "Autodesk", "ApplicationPlugins", BUNDLE)

    ENVIRONMENT = {name: value for name, value in os.environ.items() if name != "DISPLAY"}

    def run(self, *command):
        """Status and output of a Windows program. The output goes through a file, which Wine's server may hold open."""
        path = os.path.join(self.folder, "output.txt")
        with open(path, "w+b") as file:
            status = subprocess.run([*self.runner, *command], stdin=subprocess.DEVNULL, stdout=file,
                                    stderr=subprocess.STDOUT, env=self.ENVIRONMENT, timeout=WAIT_S, check=False).returncode
            file.seek(0)
            return status, file.read().decode("latin-1").replace("\r\n", "\n")

    def start(self, *command):
        return subprocess.Popen([*self.runner, *command], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL, env=self.ENVIRONMENT)

    def msiexec(self, *arguments):
        """Status of a silent call, as Windows Installer numbers them; of numbers above 255 only the last eight bits."""
        return self.run("msiexec", *arguments, "/qn")[0]

    def install(self, package):
        return self.msiexec("/i", windows_path(package))

    def remove(self, product_code):
        return self.msiexec("/x", product_code)

    def repair(self, product_code):
        """Every file that is missing, older or damaged, and the registry."""
        return self.msiexec("/i", product_code, "REINSTALL=ALL", "REINSTALLMODE=omus")

    def registry(self, key):
        """Every value below the key, as the lines of an export: {(key, name): value}."""
        path = os.path.join(self.folder, "export.reg")
        for _ in range(3):
            status, told = self.run("reg", "export", key, windows_path(path), "/y")
            # On a busy machine Wine sometimes ends before the program begins; reg itself always prints something.
            if status == 0 or told.strip():
                break
        if status != 0:
            raise AssertionError(f"registry not exported, status {status}: {told}")
        with open(path, encoding="utf-16") as file:
            text = re.sub(r"\\\n\s+", "", file.read())
        values, current = {}, ""
        for line in text.splitlines():
            if line.startswith("["):
                current = line[1:-1]
                values[(current, "")] = ""
            elif current and "=" in line:
                name, _, value = line.partition("=")
                values[(current, name.strip('"'))] = plain(value)
        return values

    def files(self, folder):
        """Paths below a folder of drive C, folders with a slash at the end, to the file's bytes."""
        found = {}
        top = os.path.join(self.drive, folder)
        for place, folders, names in os.walk(top):
            for name in folders:
                found[os.path.relpath(os.path.join(place, name), top) + "/"] = b""
            for name in names:
                path = os.path.join(place, name)
                with open(path, "rb") as file:
                    found[os.path.relpath(path, top)] = file.read()
        return found


def plain(value):
    """Texts with variables, which an export shows in hexadecimal, as texts."""
    if not value.startswith("hex(2):"):
        return value
    return '"' + bytes.fromhex(value[len("hex(2):"):].replace(",", "")).decode("utf-16-le").rstrip("\0") + '"'


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def wait_for(condition, what):
    """For what another process does, within a minute."""
    end = time.monotonic() + WAIT_S
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.02)
