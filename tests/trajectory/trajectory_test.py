#!/usr/bin/env python3
"""Plays sessions through every rotation code, projection and kind of selection, and checks each trajectory.

usage: trajectory_test.py [--broken] WORKBENCH
  --broken  falsifies one number of a trajectory and expects the check to see it
Status 0 when every trajectory follows the formulas.
"""
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
LINE = ((1.0, 1.0, 0.0), (4.0, 5.0, 12.0))
CIRCLE = ((20.0, -4.0, 3.0), 2.5)
CENTRE = [((a + b) / 2 + c) / 2 for a, b, c in zip(LINE[0], LINE[1], CIRCLE[0])]
CODES = [100 * hundreds + 10 * tens + units for hundreds in (0, 1) for tens in (0, 1) for units in range(10)]
CODES += [100 * digit for digit in range(2, 10)] + [10 * digit for digit in range(2, 10)] + [999]
MOTIONS = ["7 -4 25 60 -40 30", "-7 4 -25 -60 40 -30", "3 0 0 0 90 0", "0 -3 -2 -90 0 0", "0 0 40 0 -90 20"]


def drawing():
    pairs = [(0, "SECTION"), (2, "ENTITIES"), (0, "LINE"), (5, "A1"), (8, "0")]
    pairs += [(code, value) for index, code in enumerate((10, 20, 30)) for value in [LINE[0][index]]]
    pairs += [(code, value) for index, code in enumerate((11, 21, 31)) for value in [LINE[1][index]]]
    pairs += [(0, "CIRCLE"), (5, "A2"), (8, "0"), (10, CIRCLE[0][0]), (20, CIRCLE[0][1]), (30, CIRCLE[0][2])]
    pairs += [(40, CIRCLE[1]), (0, "ENDSEC"), (0, "EOF")]
    return "".join(f"{code:3d}\n{value}\n" for code, value in pairs)


def session(projection, selection, axis):
    lines, time = [f"0 projection {projection}"], 10
    if selection:
        lines.append(f"{time} select {selection}")
    if axis:
        lines.append(f"{time} command LM_Toggle_Rotation_Axis")
    for code in CODES:
        lines.append(f"{time} rotmode {code:03d} zoom off")
        for motion in MOTIONS:
            time += 120
            lines.append(f"{time} motion {motion}")
        lines.append(f"{time + 100} motion 0 0 0 0 0 0")
        time += 300
    return "\n".join(lines + [f"{time} end", ""])


def sheet_session():
    """Pan, zoom and both on the sheet, up to the limits of one pass, with turns that must have no effect."""
    lines, time = ["0 setvar TILEMODE 0"], 100
    for motion in ("400 0 0", "-300 250 0", "0 -400 0", "0 0 300", "0 0 -500", "120 -80 200", "-120 80 -200",
                   "0 0 9000", "0 0 -9000", "1 0 -32768", "-1 0 32767", "10000 0 0", "-10000 0 0", "0 1 0"):
        lines.append(f"{time} motion {motion} 90 -90 90")
        time += 150
        if time % 400 < 150:
            lines.append(f"{time} motion 0 0 0 0 0 0")
            time += 200
    lines += [f"{time} motion 0 0 0 0 0 0", f"{time + 200} setvar CVPORT 2", f"{time + 300} motion 5 0 9 40 0 0"]
    lines += [f"{time + 500} setvar CVPORT 1", f"{time + 900} motion 0 0 0 0 0 0"]
    return "\n".join(lines + [f"{time + 1200} end", ""])


def play(workbench, folder, text):
    paths = [os.path.join(folder, name) for name in ("d.dxf", "s.session")]
    for path, content in zip(paths, (drawing(), text)):
        with open(path, "w", encoding="ascii") as file:
            file.write(content)
    subprocess.run([workbench, "replay", "--drawing", paths[0], "--session", paths[1], "--out", folder, "--quiet"],
                   check=True, stdout=subprocess.DEVNULL)
    return os.path.join(folder, "trajectory.csv"), paths[1]


def check(trajectory, session_file, options):
    return subprocess.run([sys.executable, os.path.join(HERE, "check_trajectory.py"), trajectory, session_file]
                          + options, stdout=subprocess.PIPE, text=True, check=False)


def falsify(trajectory):
    """Changes one coordinate in the middle by some ten-millionths."""
    with open(trajectory, encoding="ascii") as file:
        rows = file.read().splitlines()
    middle = next(i for i in range(len(rows) // 3, len(rows)) if ",pass" in rows[i])
    fields = rows[middle].split(",")
    fields[9] = repr(float(fields[9]) * (1 + 1e-7) + 1e-7)
    rows[middle] = ",".join(fields)
    with open(trajectory, "w", encoding="ascii") as file:
        file.write("\n".join(rows) + "\n")


def judge(trajectory, session_file, options, broken, name):
    """1 when the check did not come out as it should."""
    if broken:
        falsify(trajectory)
    result = check(trajectory, session_file, options)
    print(f"{name}: {result.stdout.strip()}")
    return int((result.returncode == 0) == broken)


def main():
    broken, workbench = "--broken" in sys.argv, sys.argv[-1]
    centre = "--centre=" + ",".join(map(str, CENTRE))
    line_centre = "--centre=" + ",".join(str((a + b) / 2) for a, b in zip(*LINE))
    line = "--line=" + ",".join(map(str, LINE[0] + LINE[1]))
    kinds = [("", False, []), ("A1 A2", False, [centre]), ("A1", True, ["--axis", line]),
             ("A1 A2", True, [centre]), ("A1", False, [line_centre])]
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        trajectory, session_file = play(workbench, folder, sheet_session())
        with open(trajectory, encoding="ascii") as rows:
            if rows.read().count(",pass2d,") < 40:
                print("the session hardly moved the sheet")
                failed += 1
        failed += judge(trajectory, session_file, [], broken, "sheet")
    for projection in ("parallel", "perspective"):
        for selection, axis, options in kinds:
            with tempfile.TemporaryDirectory() as folder:
                trajectory, session_file = play(workbench, folder, session(projection, selection, axis))
                name = f"{projection}, selected '{selection}', axis {axis}"
                failed += judge(trajectory, session_file, options, broken, name)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
