#!/usr/bin/env python3
"""Measures in replays how fast controls scroll for a given deflection of the cap, and draws it.

usage: plot_scrolling.py WORKBENCH SVG
Each point is a run of its own: the cap is pushed in by so much while the pointer lies on the control, and rows per
second are counted over whole turns of the module's timer, 600 ms each: up to 500 ms of scrolling and 100 ms of rest.
Without third-party modules.
"""
import json
import math
import os
import subprocess
import sys
import tempfile

DRAWING = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples", "bracket.dxf")
# Name in a session, window class, colour, label; rows of the control: tree 2000, list 150, edit field 60.
CONTROLS = [("tree", "SysTreeView32", "#0a62bd", "tree of 2000 rows, 10 at a time"),
            ("list", "SysListView32", "#c2570c", "list of 150 rows, one at a time"),
            ("edit", "Edit", "#1b6f39", "field of 60 rows, one at a time")]
DEFLECTIONS = list(range(10, 351, 10))
BEGIN_MS, END_MS, MOMENTS = 100, 2500, 1201
WIDTH, HEIGHT, LEFT, RIGHT, TOP, BOTTOM = 760, 420, 64, 20, 24, 48
LOWEST, HIGHEST = 1.0, 10000.0  # rows per second


def positions(workbench, control, window_class, deflection):
    """(ms, row) of the control at each moment of a run."""
    with tempfile.TemporaryDirectory() as folder:
        session = os.path.join(folder, "scroll.session")
        with open(session, "w", encoding="ascii") as file:
            file.write(f"0 pointer {control}\n50 motion 0 0 {deflection} 0 0 0\n{END_MS} end\n")
        subprocess.run([workbench, "replay", "--quiet", "--drawing", DRAWING, "--session", session, "--out", folder,
                        "--frames", str(MOMENTS)], check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(folder, "index.html"), encoding="utf-8") as file:
            page = file.read()
    data = json.loads(page.split('id="data">')[1].split("</script>")[0])
    rows = []
    for moment in data["moments"]:
        windows = data["desktops"][moment["desktop"]]["windows"]
        vertical = next(w["vertical"] for w in windows if w["class"] == window_class)
        rows.append((moment["time"], vertical[3], vertical[1] - vertical[2]))
    return rows


def rows_per_second(run):
    """Over as many whole turns as the control does not come to its end in; within the first where it does."""
    begin = next(i for i, entry in enumerate(run) if entry[0] >= BEGIN_MS)
    start_ms, start_row, last_row = run[begin]
    moving = [(time, row) for time, row, _ in run[begin:] if row < last_row]
    turns = (moving[-1][0] - start_ms) // 600
    if turns >= 1:
        end_ms, end_row = min(moving, key=lambda entry: abs(entry[0] - (start_ms + 600 * turns)))
    else:
        end_ms, end_row = moving[-1]
    return 1000.0 * (end_row - start_row) / max(1, end_ms - start_ms)


def x_of(deflection):
    return LEFT + (WIDTH - LEFT - RIGHT) * deflection / 350


def y_of(speed):
    share = math.log(max(speed, LOWEST) / LOWEST) / math.log(HIGHEST / LOWEST)
    return HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * share


def text(x, y, content, anchor="middle", extra=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}"{extra}>{content}</text>'


def axes():
    parts = []
    for deflection in range(0, 351, 50):
        parts.append(f'<path class="grid" d="M{x_of(deflection):.1f} {TOP}V{HEIGHT - BOTTOM}"/>')
        parts.append(text(x_of(deflection), HEIGHT - BOTTOM + 16, deflection))
    for speed in (1, 10, 100, 1000, 10000):
        parts.append(f'<path class="grid" d="M{LEFT} {y_of(speed):.1f}H{WIDTH - RIGHT}"/>')
        parts.append(text(LEFT - 8, y_of(speed) + 4, speed, "end"))
    parts.append(text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 10, "deflection of the cap"))
    parts.append(text(0, 0, "rows per second", extra=f' transform="translate(16 {(TOP + HEIGHT - BOTTOM) / 2}) rotate(-90)"'))
    return parts


def curves(measured):
    parts = []
    for number, (_, _, colour, label) in enumerate(CONTROLS):
        points = " ".join(f"{x_of(d):.1f},{y_of(v):.1f}" for d, v in zip(DEFLECTIONS, measured[number]))
        parts.append(f'<polyline points="{points}" fill="none" stroke="{colour}" stroke-width="2"/>')
        y = TOP + 14 + 18 * number
        parts.append(f'<path d="M{LEFT + 14} {y - 4}h24" stroke="{colour}" stroke-width="2"/>')
        parts.append(text(LEFT + 44, y, label, "start"))
    return parts


def main():
    workbench, target = sys.argv[1:3]
    measured = [[rows_per_second(positions(workbench, name, kind, d)) for d in DEFLECTIONS] for name, kind, _, _ in CONTROLS]
    style = "text{font:12px sans-serif;fill:#333}.grid{stroke:#ddd}"
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}">',
             f"<style>{style}</style>", f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#fff"/>']
    with open(target, "w", encoding="ascii", newline="\n") as file:
        file.write("\n".join(lines + axes() + curves(measured) + ["</svg>", ""]))
    for number, control in enumerate(CONTROLS):
        picked = [(d, v) for d, v in zip(DEFLECTIONS, measured[number]) if d in (10, 100, 200, 300, 350)]
        print(control[0], " ".join(f"{d}:{v:.0f}" for d, v in picked))


if __name__ == "__main__":
    main()
