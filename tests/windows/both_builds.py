"""One session played by the native workbench and by the Windows one under Wine, and what both tell."""
import os
import re
import subprocess
import sys
import tempfile

OUTPUTS = ("trajectory.csv", "entities.csv", "commandline.log", "summary.json", "index.html")


class Workbenches:
    """The two programs. The native one is the debug build's, made up to date."""

    def __init__(self, source, build, windows_program):
        self.source = source
        folder = os.path.join(os.path.dirname(build), "debug")
        self.native = [os.path.join(folder, "workbench", "workbench")]
        self.windows = [os.path.join(source, "tools", "run_in_wine.sh"), build, windows_program]
        if not os.path.exists(os.path.join(folder, "build.ninja")):
            print("skipped: no native debug build to compare with")
            sys.exit(1 if os.environ.get("CI") == "true" else 77)
        built = subprocess.run(["cmake", "--build", folder, "--target", "workbench"], stdout=subprocess.PIPE, text=True,
                               check=False)
        if built.returncode != 0:
            raise SystemExit(built.stdout)

    def play(self, program, session, out):
        os.mkdir(out)
        samples = os.path.join(self.source, "samples")
        # Into a file: Wine's desktop may outlive the program, and would keep a pipe open.
        with tempfile.TemporaryFile("w+") as told:
            result = subprocess.run(
                program + ["replay", "--drawing", os.path.join(samples, "bracket.dxf"), "--session", session,
                           "--menu", os.path.join(samples, "autocad.mnu"), "--out", out, "--quiet"],
                stdout=told, stderr=subprocess.STDOUT, check=False)
            told.seek(0)
            if result.returncode != 0:
                raise SystemExit(f"{program[0]}: status {result.returncode}\n{told.read()}")
        missing = [name for name in OUTPUTS if not os.path.getsize(os.path.join(out, name))]
        if missing:
            raise SystemExit(f"{program[0]}: empty {missing}")

    def play_both(self, session, folder):
        """Folders of the results: native, Windows."""
        outs = os.path.join(folder, "native"), os.path.join(folder, "windows")
        self.play(self.native, session, outs[0])
        self.play(self.windows, session, outs[1])
        return outs

    def trajectory_report(self, session, out, *options):
        """What the check of the Windows run's rows prints, and whether every row follows the formulas; `options` say
        what the session selects."""
        checked = subprocess.run(
            [sys.executable, os.path.join(self.source, "tests", "trajectory", "check_trajectory.py"),
             os.path.join(out, "trajectory.csv"), session, "--realtime", *options],
            stdout=subprocess.PIPE, text=True, check=False)
        return checked.stdout.strip(), checked.returncode == 0


def read(*parts):
    with open(os.path.join(*parts), encoding="latin-1", newline=None) as file:
        return file.read()


def texts(out):
    """The command line without times, and without the folder of the exporter, which differs."""
    lines = [line.split(" ", 1)[1] for line in read(out, "commandline.log").splitlines()]
    return [re.sub(r'[^"]*/(?=MenuScribe2015[.]dll)', "", line) for line in lines]


def settings(out):
    return read(out, "profile", "Lumetrapad", "Applications", "autocad_addin.ini").splitlines()


def entities(out):
    """Handle, type and layer of each: where they are depends on the number of passes."""
    return [line.split(",")[0:3] for line in read(out, "entities.csv").splitlines()]


def log_lines(out):
    """Level, file, class and text of each line; the module's own path and the profile's differ. What every pass tells
    is listed once: how many passes there are in real time is the machine's affair."""
    lines = []
    for line in read(out, "profile", "Lumetrapad", "autocad_addin_log.txt").splitlines():
        if re.match(r"\d\d:\d\d:\d\d\.\d{3}", line):
            line = re.sub(r"^\S{12}", "", line)
            line = re.sub(r"^(.\S+?.)\s*\d+", r"\1", line)
        line = re.sub(r"opened at .*", "", line)
        line = re.sub(r"[^ ']*[\\/]([\w.]+)", r"\1", line)
        if not ("::moveXYZ|" in line and line in lines):
            lines.append(line)
    return lines


def differences(what, native, windows):
    """0 and nothing printed when both are equal, else 1."""
    if native == windows:
        return 0
    left = [line for line in native if line not in windows]
    right = [line for line in windows if line not in native]
    print(f"{what} differ\n  native only: {left[:6]}\n  Windows only: {right[:6]}\n"
          f"  {len(native)} and {len(windows)} lines")
    return 1
