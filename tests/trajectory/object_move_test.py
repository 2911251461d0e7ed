#!/usr/bin/env python3
"""Moves objects through every axis and mode and compares where they end with the product of the matrices.

usage: object_move_test.py [--broken] WORKBENCH
  --broken  falsifies one coordinate of the entities and expects the comparison to see it
"""
import csv
import os
import sys
import tempfile

from check_entities import expected, largest_difference, read_entities, sheet_passes
from check_trajectory import Session
from trajectory_test import play

TOLERANCE = 1e-9
TOGGLE = "command LM_Toggle_Object_Move_Mode"
MOTIONS = ["3 0 0 0 0 0", "-3 0 0 0 0 0", "0 2 0 0 0 0", "0 -2 0 0 0 0", "0 0 4 0 0 0", "0 0 -4 0 0 0", "0 0 0 9 0 0",
           "0 0 0 0 7 0", "0 0 0 0 0 11", "1 -2 3 -9 -7 -11", "-1 2 -3 5 -3 8"]


def model_session(selection):
    lines, time = [f"0 select {selection}", f"10 {TOGGLE}"], 20
    for projection in ("parallel", "perspective"):
        lines.append(f"{time} projection {projection}")
        for code in ("000", "010", "100", "110", "003", "004"):
            lines.append(f"{time} rotmode {code} zoom off")
            for motion in MOTIONS:
                time += 110
                lines.append(f"{time} motion {motion}")
            lines.append(f"{time + 110} motion 0 0 0 0 0 0")
            time += 400
    return "\n".join(lines + [f"{time} end", ""])


def view_session(toggle):
    lines = ["0 projection perspective", "5 rotmode 110 zoom off"] + ([f"10 {TOGGLE}"] if toggle else [])
    lines += [f"{100 + 150 * i} motion {motion}" for i, motion in enumerate(MOTIONS)]
    return "\n".join(lines + ["2000 motion 0 0 0 0 0 0", "2200 setvar TILEMODE 0", "2300 motion 50 20 90 9 9 9",
                              "2600 motion 0 0 0 0 0 0", "2900 end", ""])


def read_rows(path):
    with open(path, encoding="utf-8", newline="") as text:
        return list(csv.DictReader(text))


def entities_after(workbench, text):
    with tempfile.TemporaryDirectory() as folder:
        trajectory, session_file = play(workbench, folder, text)
        return read_entities(os.path.join(folder, "entities.csv")), read_rows(trajectory), Session(session_file)


def falsify(entities):
    handle = sorted(entities)[0]
    entities[handle][0][2] = entities[handle][0][2] * (1 + 1e-7) + 1e-7


def check_model(workbench, start, selection, broken):
    actual, rows, session = entities_after(workbench, model_session(selection))
    wanted, passes = expected(rows, start, selection.split(), session.mode)
    if broken:
        falsify(actual)
    error = largest_difference(actual, wanted)
    print(f"'{selection}' moved in {passes} passes, largest relative difference {error:.3g}")
    return passes > 700 and (error <= TOLERANCE) != broken and largest_difference(wanted, start) > 0.01


def check_sheet(workbench, start, broken):
    text = "\n".join(["0 setvar TILEMODE 0", "10 select A2", f"20 {TOGGLE}", "100 motion 4000 -2000 900 50 50 50",
                      "400 motion 0 0 0 0 0 0", "600 end", ""])
    actual, _, _ = entities_after(workbench, text)
    if broken:
        falsify({"A2": actual["A2"]})
    passes = sheet_passes(start["A2"][0], actual["A2"][0], 4000, -2000)
    others_stay = actual["A1"] == start["A1"]
    print(f"on the sheet: moved in {passes} passes")
    return ((passes or 0) > 10) != broken and others_stay


def check_nothing_selected(workbench):
    texts = []
    for toggle in (False, True):
        with tempfile.TemporaryDirectory() as folder:
            trajectory, _ = play(workbench, folder, view_session(toggle))
            with open(trajectory, encoding="ascii") as file:
                texts.append(file.read())
    is_moving = texts[0].count(",pass3d,") > 50 and texts[0].count(",pass2d,") > 10
    print("with nothing selected: " + ("the same bytes" if texts[0] == texts[1] else "another trajectory"))
    return is_moving and texts[0] == texts[1]


def main():
    broken, workbench = "--broken" in sys.argv, sys.argv[-1]
    start, _, _ = entities_after(workbench, "10 end\n")
    results = [check_model(workbench, start, selection, broken) for selection in ("A1", "A2", "A1 A2")]
    results.append(check_sheet(workbench, start, broken))
    if not broken:
        results.append(check_nothing_selected(workbench))
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
