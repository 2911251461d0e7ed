#!/usr/bin/env python3
"""Holds the cap for two seconds and counts the passes, against a model of the polling loop on the replay clock.

The model, written apart from the module: a tick handles the cap until half a second has gone by on the tick count,
read once a pass before it; a pass takes a frame; the tick count moves by itself when it is read twice at one time; the
next tick comes 10 ms later while the cap moves, else 100 ms later.

usage: pass_count_test.py WORKBENCH
"""
import csv
import os
import subprocess
import sys
import tempfile

PUSHED, RELEASED, END = 1000, 3000, 4000
LIMIT, MOVING, IDLE = 500, 10, 100
DRAWING = "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n0\n 20\n0\n 30\n0\n 11\n9\n 21\n9\n 31\n9\n  0\nENDSEC\n  0\nEOF\n"


def modelled_times(frame):
    """Times of the passes, in ms."""
    times, tick = [], IDLE
    while tick < END:
        now, elapsed, moving, first = tick, 0, False, True
        while elapsed < LIMIT:
            now += 1 if first else 0  # read right after the start was read: nothing had advanced
            first = False
            elapsed = now - tick
            moving = PUSHED <= now < RELEASED
            if not moving:
                break
            times.append(now)
            now += frame
        tick = now + (MOVING if moving else IDLE)
    return times


def replayed_times(workbench, frame):
    with tempfile.TemporaryDirectory() as folder:
        drawing, session = (os.path.join(folder, name) for name in ("d.dxf", "s.session"))
        with open(drawing, "w", encoding="ascii") as file:
            file.write(DRAWING)
        with open(session, "w", encoding="ascii") as file:
            file.write(f"{PUSHED} motion 0 0 0 20 0 0\n{RELEASED} motion 0 0 0 0 0 0\n{END} end\n")
        subprocess.run([workbench, "replay", "--drawing", drawing, "--session", session, "--out", folder,
                        "--frame-ms", str(frame), "--quiet"], check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(folder, "trajectory.csv"), encoding="ascii", newline="") as file:
            return [int(row["time_ms"]) for row in csv.DictReader(file) if row["kind"] == "pass3d"]


def main():
    failed = 0
    for frame in (16, 1, 7, 40, 600):
        expected, found = modelled_times(frame), replayed_times(sys.argv[1], frame)
        print(f"{frame} ms a frame: {len(found)} passes in {RELEASED - PUSHED} ms, {len(expected)} expected")
        failed += expected != found
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
