#!/usr/bin/env python3
"""Holds a run's commandline.log to the texts of the keys in its session, and trajectory.csv to what they mean.

Written apart from the module: the texts are built from the session and the menu file, the views are judged by where
the camera is and by what the drawing's box needs.

usage: check_keys.py FOLDER SESSION MENU DRAWING    FOLDER holds the results of the run
"""
import csv
import json
import os
import sys

from check_entities import screen_axes
from check_trajectory import View, dot, sub, unit

VIEWS = {"front": ((0, -1, 0), (0, 0, 1)), "back": ((0, 1, 0), (0, 0, 1)), "left": ((-1, 0, 0), (0, 0, 1)),
         "right": ((1, 0, 0), (0, 0, 1)), "top": ((0, 0, 1), (0, 1, 0)), "bottom": ((0, 0, -1), (0, 1, 0))}
SHEET = [210.0, 148.5, 420.0, 297.0]  # centre and size of all of it
ROOM = 1.2  # a view of everything wastes at most a fifth
LONGEST_WAIT_MS = 150  # from a key to its texts while the cap rests


def functions(menu):
    """Macros by number."""
    macros, inside = [], False
    with open(menu, encoding="latin-1") as lines:
        for line in lines:
            text = line.strip()
            if text.startswith("["):
                inside = text == "[MenuBar]"
            elif inside and not text:
                break
            elif inside and not line.startswith("#") and "=" in line:
                value = line.split("=", 1)[1].strip()
                rest = value.split("}", 1)[1] if "}" in value else ""
                # "{label}|help" has an empty macro, which takes a number.
                macros += [rest.split("|")[0]] if rest else []
    return macros


def function_texts(macros, number):
    if number >= len(macros):
        return []
    tokens = macros[number].split(";")
    if tokens[-1] == "":
        tokens.pop()
    if not tokens:
        return []
    texts = ["\x1b\x1b"]
    for token in tokens:
        texts.append(f'(command (menucmd "{token}"))\n' if token.startswith("M=") else token + "\n")
    return [("send-activate", text) for text in texts]


def key_texts(key, zoom, on_sheet):
    if on_sheet:
        return [("send", "_ZOOM _ALL ")] if key == "fit" else []
    zoom_all = ("send", "'_ZOOM _ALL ")
    if key == "fit":
        return [zoom_all]
    return [("send", f"'_-VIEW _{key.upper()} ")] + ([zoom_all] if zoom else [])


def presses(session):
    """(time, special key or None, function or None, zoom after view) of each time; the later of a kind counts."""
    zoom, found = False, {}
    with open(session, encoding="utf-8") as lines:
        for line in lines:
            words = line.split("#")[0].split()
            if len(words) < 2:
                continue
            if words[1] == "rotmode":
                zoom = words[4] == "on"
            if words[1] in ("key", "function"):
                press = found.setdefault(int(words[0]), [None, None, zoom])
                press[0 if words[1] == "key" else 1] = words[2] if words[1] == "key" else int(words[2])
    return [(time, *press) for time, press in sorted(found.items())]


class Run:
    def __init__(self, folder):
        with open(os.path.join(folder, "commandline.log"), encoding="utf-8") as lines:
            parts = [line.split(" ", 2) for line in lines]
        sent = [(int(time), kind, json.loads(text)) for time, kind, text in parts if kind.startswith("send")]
        # The first text of all loads the menu exporter; no key has sent it.
        self.sent = [entry for entry in sent if not entry[2].startswith('(command "netload" ')]
        with open(os.path.join(folder, "trajectory.csv"), encoding="utf-8", newline="") as text:
            self.rows = list(csv.DictReader(text))

    def viewport(self, time):
        return [row["viewport"] for row in self.rows if int(row["time_ms"]) <= time][-1]

    def before(self, time):
        """The last row of the model before that time."""
        return [row for row in self.rows if int(row["time_ms"]) < time and row["viewport"] != "1"][-1]

    def views(self, time):
        return [row for row in self.rows if row["kind"] == "view" and int(row["time_ms"]) == time]


def box_corners(drawing):
    """Corners of the box that the drawing's head gives."""
    with open(drawing, encoding="latin-1") as lines:
        text = [line.strip() for line in lines]
    low, high = ([float(text[text.index(name) + 2 * i + 2]) for i in range(3)] for name in ("$EXTMIN", "$EXTMAX"))
    return [[(low, high)[i >> axis & 1][axis] for axis in range(3)] for i in range(8)]


def shows_all(row, corners):
    """Everything is in view, and not much besides."""
    view = View(row)
    right, up, _ = screen_axes(view)
    shares = [(2 * abs(dot(sub(c, view.target), right)) / view.width, 2 * abs(dot(sub(c, view.target), up)) / view.height)
              for c in corners]
    most = max(max(pair) for pair in shares)
    return 1 / ROOM < most <= 1 + 1e-9


def direction(row):
    """From the target toward the camera, and up."""
    view = View(row)
    return unit(sub(view.position, view.target)) + unit(view.up)


def looks_as(row, wanted):
    return all(abs(a - b) < 1e-9 for a, b in zip(direction(row), wanted))


def judge_views(run, press, time, on_sheet, corners):
    _, key, function, zoom = press
    rows = run.views(time)
    if function is not None or key is None:
        return []
    if on_sheet:
        numbers = [[float(row[name]) for name in ("px", "py", "field_width", "field_height")] for row in rows]
        return [] if numbers == ([SHEET] if key == "fit" else []) else [f"{press}: the sheet shows {numbers}"]
    wanted = 2 if zoom and key != "fit" else 1
    if len(rows) != wanted:
        return [f"{press}: {len(rows)} views instead of {wanted}"]
    faults = [f"{press}: not everything is in view"] * (not all(shows_all(row, corners) for row in rows))
    # A zoom keeps the direction.
    looks = VIEWS[key][0] + VIEWS[key][1] if key != "fit" else direction(run.before(time))
    return faults + [f"{press}: looks from elsewhere"] * (not all(looks_as(row, looks) for row in rows))


def check(folder, session, menu, drawing):
    run, macros, corners, faults = Run(folder), functions(menu), box_corners(drawing), []
    rest, count = list(run.sent), 0
    for press in presses(session):
        at, key, function, zoom = press
        on_sheet = run.viewport(at) == "1"
        texts = function_texts(macros, function) if function is not None else []
        texts += key_texts(key, zoom, on_sheet) if key else []
        got, rest = rest[:len(texts)], rest[len(texts):]
        if [entry[1:] for entry in got] != texts:
            return count, faults + [f"{press}: sent {got}, expected {texts}"]
        if any(not at <= entry[0] <= at + LONGEST_WAIT_MS for entry in got):
            faults.append(f"{press}: sent late: {got}")
        faults += judge_views(run, press, got[0][0] if got else at, on_sheet, corners)
        count += 1
    return count, faults + [f"sent besides: {entry}" for entry in rest]


def main():
    count, faults = check(*sys.argv[1:5])
    for fault in faults[:5]:
        print(fault)
    print(f"{count} presses checked, {len(faults)} faults")
    return 0 if count and not faults else 1


if __name__ == "__main__":
    sys.exit(main())
