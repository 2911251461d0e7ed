#!/usr/bin/env python3
"""Holds a run's trajectory.csv to the formulas of view motion and of the sheet's pan and zoom, row by row.

The formulas are written out here a second time, in another language and from the description of the motion, so
that an error in the module is not repeated by its own check. From each row the next `pass3d` or `pass2d` row is
computed out of the cap's values and compared within a tolerance relative to the size of the scene.

usage: check_trajectory.py TRAJECTORY SESSION [--centre X,Y,Z] [--line X,Y,Z,X,Y,Z] [--axis] [--no-centre] [--realtime]
  --centre     mean of the box centres of what the session selects
  --line       ends of the one line that the session selects
  --axis       the selected line is the rotation axis
  --no-centre  the selection is not the rotation centre
  --realtime   the cap may have changed between a pass's reading of it and its row: a pass3d row may follow from the
               values of the row before
Prints the number of passes checked; status 1 and the first rows that differ when any does.
"""
import argparse
import copy
import csv
import math
import sys

TRANSLATION_BASE = 20000.0
ROTATION_BASE = 10000.0
TOLERANCE = 1e-9
SHEET = "1"


def add(a, b):
    return [x + y for x, y in zip(a, b)]


def sub(a, b):
    return [x - y for x, y in zip(a, b)]


def scale(a, s):
    return [x * s for x in a]


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def unit(a):
    length = math.sqrt(dot(a, a))
    return scale(a, 1.0 / length) if length >= 1e-10 else a


def rotation(angle, axis):
    """Rotation matrix through the unit quaternion of the turn (right-handed)."""
    x, y, z = scale(unit(axis), math.sin(angle / 2))
    w = math.cos(angle / 2)
    return [
        [1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)],
        [2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)],
        [2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)],
    ]


def turned(matrix, v):
    return [dot(row, v) for row in matrix]


class View:
    def __init__(self, row):
        value = [float(row[name]) for name in
                 "px py pz tx ty tz ux uy uz field_width field_height".split()]
        self.position, self.target, self.up = value[0:3], value[3:6], value[6:9]
        self.width, self.height = value[9:11]
        self.perspective = row["projection"] == "perspective"

    def numbers(self):
        return self.position + self.target + self.up + [self.width, self.height]


class Mode:
    def __init__(self, code):
        hundreds, tens, units = code // 100, code // 10 % 10, code % 10
        self.hover = hundreds >= 1 or units == 4
        self.level = tens >= 1
        self.centre = 2 if units == 4 else units
        self.sign = -1.0 if self.centre in (2, 3) else 1.0


def shift(view, distance, axis, hovering):
    step = scale(axis, distance * math.sqrt(view.width * view.height))
    if hovering:
        step[2] = 0.0
    view.position, view.target = add(view.position, step), add(view.target, step)


def translate(view, cap, axes, mode):
    dx, dy, dz = [mode.sign * v / TRANSLATION_BASE for v in cap[0:3]]
    hovering = mode.hover and view.perspective
    if dx:
        shift(view, 5.0 * dx, axes[0], hovering)
    if dy:
        shift(view, -5.0 * dy, axes[1], hovering)
    if dz and hovering:
        shift(view, -5.0 * dz, axes[2], hovering)
    elif dz:
        factor = max(0.8, min(1.2, 1.0 + dz))
        view.width, view.height = view.width / factor, view.height / factor


def mode_centre(view, mode):
    if mode.centre == 2 and view.perspective:
        return view.position
    if mode.centre in (0, 3):
        return view.target
    return [0.0, 0.0, 0.0]


def turn(view, cap, axes, mode, selected):
    values = list(cap[3:6])
    if selected.line:
        axis = unit(sub(selected.line[1], selected.line[0]))
        values = [math.trunc(v * max(-1.0, min(1.0, dot(axis, a)))) for v, a in zip(values, axes)]
        axes, centre = [axis] * 3, selected.line[0]
    elif selected.centre:
        centre = selected.centre
    else:
        centre = mode_centre(view, mode)
    for index, sign in ((0, 1.0), (1, -1.0), (2, -1.0)):
        angle, axis = mode.sign * sign * values[index] / ROTATION_BASE, axes[index]
        if angle == 0.0 or (index == 2 and mode.level):
            continue
        if index == 1 and mode.level:
            angle, axis = (-angle if axis[2] < 0 else angle), [0.0, 0.0, 1.0]
        matrix = rotation(angle, axis)
        view.position = add(centre, turned(matrix, sub(view.position, centre)))
        view.target = add(centre, turned(matrix, sub(view.target, centre)))
        view.up = turned(matrix, view.up)


class Selected:
    """What the selection contributes; it counts as found on the first pass of a movement and stays so."""

    def __init__(self, centre, line):
        self.centre, self.line = centre, line


def step(view, cap, mode, selected):
    z_axis = sub(view.position, view.target)
    axes = [unit(cross(z_axis, view.up)), unit(view.up), unit(z_axis)]
    translate(view, cap, axes, mode)
    if any(cap[3:6]):
        turn(view, cap, axes, mode, selected)


def zoom_of_sheet(z):
    """A positive push shows less of the sheet; a fifth at most either way."""
    dz = -(z / TRANSLATION_BASE)
    return max(1.0 - abs(dz), 0.8) if dz < 0 else min(1.0 + abs(dz), 1.2)


class Sheet:
    """What is seen of a sheet. A pass shows itself by one row for its pan and one for its zoom."""

    def __init__(self, row):
        self.centre = [float(row["px"]), float(row["py"])]
        self.width, self.height = float(row["field_width"]), float(row["field_height"])
        self.zoom_due = None

    def numbers(self):
        return self.centre + [self.width, self.height]

    def step(self, cap):
        if self.zoom_due is not None:
            self.zoom(self.zoom_due)
        elif cap[0] or cap[1]:
            self.centre[0] -= cap[0] / TRANSLATION_BASE * self.width
            self.centre[1] -= cap[1] / TRANSLATION_BASE * self.height
            # The values are read once a pass: those of this row hold for its zoom too.
            self.zoom_due = cap[2] or None
        else:
            self.zoom(cap[2])

    def zoom(self, z):
        factor = zoom_of_sheet(z)
        self.width, self.height, self.zoom_due = self.width * factor, self.height * factor, None


class Session:
    """The events of a session that the motion depends on."""

    def __init__(self, path):
        self.modes, self.selections = [(-1, 0)], [(-1, False)]
        with open(path, encoding="utf-8") as lines:
            for line in lines:
                words = line.split("#")[0].split()
                if len(words) > 2 and words[1] == "rotmode":
                    self.modes.append((int(words[0]), int(words[2])))
                if len(words) > 2 and words[1] == "select":
                    self.selections.append((int(words[0]), words[2] != "none"))

    @staticmethod
    def last(entries, time):
        return [value for at, value in entries if at <= time][-1]

    def mode(self, time):
        return Mode(self.last(self.modes, time))

    def selected(self, time):
        return self.last(self.selections, time)


def compare(expected, row):
    actual = View(row)
    size = max(1.0, max(abs(v) for v in expected.numbers()))
    worst = max(abs(a - b) for a, b in zip(expected.numbers(), actual.numbers())) / size
    return worst if expected.perspective == actual.perspective else math.inf


def compare_sheet(expected, row):
    actual = Sheet(row)
    size = max(1.0, max(abs(v) for v in expected.numbers()))
    unused = [float(row[name]) for name in "pz tx ty tz ux uy uz".split()]
    worst = max(abs(a - b) for a, b in zip(expected.numbers(), actual.numbers())) / size
    return worst if not any(unused) else math.inf


def cap_of(row):
    return [int(row["cap_" + name]) for name in "x y z rx ry rz".split()]


def check(rows, session, centre, line, realtime=False):
    checked, worst, failures = 0, 0.0, []
    view, sheet, moving, selected = None, None, False, Selected(None, None)
    for number, row in enumerate(rows, start=2):
        if row["kind"] == "pass3d":
            cap, earlier = cap_of(row), cap_of(rows[number - 3])
            time = int(row["time_ms"])
            if not moving:
                found = session.selected(time)
                selected = Selected(centre if found else None, line if found else None)
            moving = True
            before = copy.deepcopy(view)
            step(view, cap, session.mode(time), selected)
            error = compare(view, row)
            if realtime and not error <= TOLERANCE and earlier != cap:
                step(before, earlier, session.mode(time), selected)
                error = min(error, compare(before, row))
            worst, checked = max(worst, error), checked + 1
            if not error <= TOLERANCE:
                failures.append(f"line {number}: off by {error:.3g}, expected {view.numbers()}")
        if row["kind"] == "pass2d":
            sheet.step(cap_of(row)[0:3])
            error = compare_sheet(sheet, row)
            worst, checked = max(worst, error), checked + 1
            if not error <= TOLERANCE:
                failures.append(f"line {number}: off by {error:.3g}, expected {sheet.numbers()}")
            due, sheet = sheet.zoom_due, Sheet(row)
            sheet.zoom_due = due
        elif row["viewport"] == SHEET:
            sheet = Sheet(row)
        else:
            view = View(row)
        if row["kind"] == "commit":
            moving = False
    return checked, worst, failures


def vector(text):
    return [float(v) for v in text.split(",")]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("trajectory")
    parser.add_argument("session")
    parser.add_argument("--centre", type=vector)
    parser.add_argument("--line", type=vector)
    parser.add_argument("--axis", action="store_true")
    parser.add_argument("--no-centre", action="store_true")
    parser.add_argument("--realtime", action="store_true")
    arguments = parser.parse_args()
    with open(arguments.trajectory, encoding="utf-8", newline="") as text:
        rows = list(csv.DictReader(text))
    centre = None if arguments.no_centre else arguments.centre
    line = [arguments.line[0:3], arguments.line[3:6]] if arguments.axis and arguments.line else None
    checked, worst, failures = check(rows, Session(arguments.session), centre, line, arguments.realtime)
    for failure in failures[:5]:
        print(failure)
    print(f"{checked} passes checked, {len(failures)} differ, largest relative difference {worst:.3g}")
    return 0 if checked and not failures else 1


if __name__ == "__main__":
    sys.exit(main())
