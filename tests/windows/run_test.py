#!/usr/bin/env python3
"""Plays one session natively and under Wine, and compares what both tell: the trajectory follows the same formulas,
and the texts, the settings file and the log are equal but for times and numbers of threads.

usage: run_test.py SOURCE_FOLDER WINDOWS_BUILD_FOLDER WINDOWS_WORKBENCH [NATIVE_WORKBENCH]
"""
import json
import os
import re
import subprocess
import sys
import tempfile

SESSION = """0 rotmode 010 zoom on
400 motion 7 -4 25 60 -40 30
1200 motion 0 0 0 0 0 0
1600 key top
2000 command LM_Toggle_Scroll_Mode
2400 key fit
2800 command LM_Toggle_Scroll_Mode
3200 end
"""


def play(command, source, folder, extra):
    session = os.path.join(folder, "a.session")
    with open(session, "w", encoding="ascii") as file:
        file.write(SESSION)
    out = os.path.join(folder, "out")
    os.mkdir(out)
    result = subprocess.run(command + ["replay", "--drawing", os.path.join(source, "samples", "bracket.dxf"), "--session",
                                       session, "--out", out, "--quiet"] + extra,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    if result.returncode != 0:
        raise SystemExit(f"{command[0]}: status {result.returncode}\n{result.stdout}")
    return out, session


def read(*parts):
    with open(os.path.join(*parts), encoding="latin-1", newline=None) as file:
        return file.read()


def texts(out):
    """The command line without times."""
    return [line.split(" ", 1)[1] for line in read(out, "commandline.log").splitlines()]


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


def only_at_changes(report, out):
    """Whether every pass that is off is the first one after the cap has changed: in real time a change may come while a
    pass is under way, which then is listed with the new values and was computed with the old ones."""
    rows = [line.split(",") for line in read(out, "trajectory.csv").splitlines()]
    off = [int(number) for number in re.findall(r"line (\d+): off by", report)]
    told = re.search(r"(\d+) differ", report)
    return bool(off) and told and int(told.group(1)) == len(off) and all(
        rows[line - 1][3:9] != rows[line - 2][3:9] for line in off)


def compare(what, native, windows):
    if native == windows:
        return 0
    left, right = set(native) - set(windows), set(windows) - set(native)
    print(f"{what} differ\n  native only: {sorted(left)[:6]}\n  Windows only: {sorted(right)[:6]}\n"
          f"  {len(native)} and {len(windows)} lines")
    return 1


def main(source, build, program, *given):
    # Natively this is tested with the debug build, so that one is up to date when this test runs.
    natives = [*given] or [os.path.join(os.path.dirname(build), name, "workbench", "workbench") for name in ("debug", "release")]
    native = next((path for path in natives if os.path.exists(path)), None)
    if native is None:
        print("skipped: no native build to compare with")
        return 77
    failed = 0
    with tempfile.TemporaryDirectory() as one, tempfile.TemporaryDirectory() as two:
        native_out, _ = play([native], source, one, [])
        wine = [os.path.join(source, "cmake", "run_in_wine.sh"), build, program]
        windows_out, session = play(wine, source, two, [])
        checked = subprocess.run([sys.executable, os.path.join(source, "tests", "trajectory", "check_trajectory.py"),
                                  os.path.join(windows_out, "trajectory.csv"), session],
                                 stdout=subprocess.PIPE, text=True, check=False)
        print(checked.stdout.strip())
        failed += checked.returncode != 0 and not only_at_changes(checked.stdout, windows_out)
        failed += compare("texts", texts(native_out), texts(windows_out))
        settings = ["profile", "Lumetrapad", "Applications", "autocad_addin.ini"]
        failed += compare("settings", read(native_out, *settings).splitlines(), read(windows_out, *settings).splitlines())
        failed += compare("log lines", sorted(log_lines(native_out)), sorted(log_lines(windows_out)))
        summary = json.loads(read(windows_out, "summary.json"))
        if summary["clean"] is not True:
            print("the Windows run is not clean")
            failed += 1
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
