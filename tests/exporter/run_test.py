#!/usr/bin/env python3
"""Plays sessions with the host's menus: the module has the exporter loaded, and reads the file that this writes.

usage: run_test.py TEST WORKBENCH SOURCE
"""
import json
import os
import re
import subprocess
import sys
import tempfile

from requirement import Failure, require

OUTPUTS = ("trajectory.csv", "entities.csv", "commandline.log", "summary.json")
MENU_FILE = os.path.join("profile", "Lumetrapad", "Applications", "autocad.mnu")
LOG = os.path.join("profile", "Lumetrapad", "autocad_addin_log.txt")
LOADED = '0 send-activate "(command \\"netload\\" \\"module/MenuScribe2015.dll\\")\\n"'


def read(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


class Runs:
    def __init__(self, workbench, source, folder):
        self.workbench, self.samples, self.folder = workbench, os.path.join(source, "samples"), folder

    def file(self, name, contents):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(contents)
        return path

    def play(self, name, session, menu, status=0):
        out = os.path.join(self.folder, name)
        os.makedirs(out, exist_ok=True)
        result = subprocess.run([self.workbench, "replay", "--quiet", "--session", session, "--menu", menu, "--out", out,
                                 "--drawing", os.path.join(self.samples, "bracket.dxf")], stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, check=False)
        require(result.returncode == status, f"status {result.returncode}: {result.stdout}")
        return out, result.stdout

    def play_sample(self, name):
        return self.play(name, os.path.join(self.samples, "keys.session"), os.path.join(self.samples, "office.cuix"))[0]


def KeysSendWhatTheExporterHasWritten(runs):
    out = runs.play_sample("out")
    sample = read(runs.samples, "autocad.mnu")
    require(read(out, MENU_FILE) == sample, "the menu file is not the sample's")
    entries = sum(b"}" in line for line in sample.splitlines())
    log = read(out, LOG).decode("latin-1")
    require(log.count(f"autocad.mnu' with {entries} entries loaded.") == 1, f"the module does not read {entries} entries once")
    errors = re.findall(r"\|ERR\|.*\| (.*)", log)
    require(errors == [f"keyEvent ({entries}') too big (max. is {entries - 1})!"], f"errors {errors}")
    require(LOADED in read(out, "commandline.log").decode().splitlines(), "the exporter is not loaded")
    sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "trajectory"))
    from check_keys import check  # pylint: disable=import-outside-toplevel
    count, faults = check(out, *(os.path.join(runs.samples, name) for name in ("keys.session", "autocad.mnu", "bracket.dxf")))
    require(count >= 35 and not faults, f"{count} presses, {faults}")


def ReportListsTheFunctionsWithTheirLabels(runs):
    page = read(runs.play_sample("out"), "index.html").decode()
    for line in read(runs.samples, "autocad.mnu").decode("cp1252").splitlines():
        if "}" not in line:
            continue
        label, rest = line.split("{", 1)[1].split("}", 1)
        for text in (label, rest.split("|")[0]):
            require(json.dumps(text, ensure_ascii=False) in page, f"no {text!r}")


def TwoRunsAreEqualByteForByte(runs):
    outs = [runs.play_sample(name) for name in ("first", "second")]
    # The report shows the module's log, whose times and thread numbers are the machine's.
    different = [name for name in (*OUTPUTS, MENU_FILE) if read(outs[0], name) != read(outs[1], name)]
    require(not different, f"different: {different}")


def MenusThatCannotBeReadAreReportedOnTheCommandLine(runs):
    out, _ = runs.play("out", runs.file("a.session", "500 function 0\n1000 end\n"), runs.file("bad.cuix", "no menus"))
    told = [line for line in read(out, "commandline.log").decode().splitlines() if "Menu export" in line]
    require(len(told) == 1 and told[0].startswith('0 host "Menu export: main menu file '), f"told: {told}")
    require(not os.path.exists(os.path.join(out, MENU_FILE)), "there is a menu file")


def MenusCannotAppearDuringTheSession(runs):
    _, told = runs.play("out", runs.file("a.session", "500 menu\n1000 end\n"),
                        os.path.join(runs.samples, "office.cuix"), status=2)
    require('a.session:1: expected the option --menu beside the event "menu", found a customization file' in told, told)


def main():
    test, workbench, source = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        try:
            globals()[test](Runs(workbench, source, folder))
        except Failure as failure:
            print(f"{test}: {failure}")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
