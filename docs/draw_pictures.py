#!/usr/bin/env python3
"""Draws the pictures of using.md: what the cap does to the view, as replays of the workbench show it.

usage: draw_pictures.py WORKBENCH FOLDER
Each panel is a run of its own: the drawing as it looked before is grey, as it looked after is dark. Without
third-party modules.
"""
import base64
import itertools
import json
import math
import os
import struct
import subprocess
import sys
import tempfile

DRAWING = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples", "bracket.dxf")
WIDTH, HEIGHT, CAPTION, GAP, COLUMNS = 250, 160, 44, 14, 3
STEPS = 4  # to a pixel
DETAIL, SMALLEST = 1.5, 7  # pixels: shorter steps, smaller shapes are left out
STYLE = ("text{font:12px sans-serif;fill:#333}.title{font-weight:bold}.frame{fill:#fff;stroke:#bbb}"
         ".before{fill:none;stroke:#c3c9cf;stroke-width:4}.after{fill:none;stroke:#1d4f80;stroke-width:4}"
         ".selected{fill:none;stroke:#d2691e;stroke-width:8}"
         ".cap{fill:#dfe5ea;stroke:#555}.push{fill:none;stroke:#d2691e;stroke-width:2}.head{fill:#d2691e}")

# What the hand does, drawn beside the caption: an arrow from and to, or a turn about an axis of the cap.
ARROWS = {
    "right": "M4 14H28", "up": "M16 26V4", "in": "M8 24L24 6",
    "tilt": "M16 25C30 22 30 8 18 5", "turn": "M4 12C6 24 26 24 28 13", "twist": "M6 20A11 11 0 1 1 27 17"}

# Title, text, arrow and session of each panel.
AXES = [("Push right", "pans", "right", "100 motion 40 0 0 0 0 0\n400 motion 0 0 0 0 0 0\n"),
        ("Push up", "pans", "up", "100 motion 0 25 0 0 0 0\n400 motion 0 0 0 0 0 0\n"),
        ("Push in", "zooms", "in", "100 motion 0 0 350 0 0 0\n500 motion 0 0 0 0 0 0\n"),
        ("Tilt", "turns about the screen's horizontal", "tilt", "100 motion 0 0 0 110 0 0\n550 motion 0 0 0 0 0 0\n"),
        ("Turn", "turns about the screen's vertical", "turn", "100 motion 0 0 0 0 110 0\n550 motion 0 0 0 0 0 0\n"),
        ("Twist", "rolls the picture", "twist", "100 motion 0 0 0 0 0 110\n550 motion 0 0 0 0 0 0\n")]
TURN = "100 motion 0 0 0 0 150 0\n600 motion 0 0 0 0 0 0\n"
CENTRES = [("Target of the view", "the default", "turn", "0 rotmode 000 zoom off\n" + TURN),
           ("Origin", "of the drawing", "turn", "0 rotmode 001 zoom off\n" + TURN),
           ("Camera", "looks around, in perspective", "turn",
            "0 projection perspective\n0 rotmode 002 zoom off\n100 motion 0 0 0 0 -40 0\n350 motion 0 0 0 0 0 0\n"),
           ("Selected objects", "their common centre", "turn", "0 select 106\n" + TURN),
           ("Selected line", "is the axis", "twist",
            "0 select 100\n50 command LM_Toggle_Rotation_Axis\n100 motion 0 0 0 0 0 150\n600 motion 0 0 0 0 0 0\n")]
FLIGHT = "0 projection perspective\n0 rotmode {} zoom off\n100 motion 0 0 60 0 0 0\n600 motion 0 0 0 0 0 0\n"
HORIZON = "0 rotmode {} zoom off\n100 motion 0 0 0 0 120 120\n600 motion 0 0 0 0 0 0\n"
MODES = [("Turned and twisted", "free", "turn", HORIZON.format("000")),
         ("Level horizon", "the same: Z stays upright", "turn", HORIZON.format("010")),
         ("Hover, pushed in", "flies at its own height", "in", FLIGHT.format("110"))]
PICTURES = {"cap_axes": AXES, "rotation_centres": CENTRES, "hover_and_horizon": MODES}


def replay(workbench, session):
    """The report's data: the shapes, and the camera at each moment."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "picture.session")
        with open(path, "w", encoding="ascii") as file:
            file.write(session + "900 end\n")
        subprocess.run([workbench, "replay", "--quiet", "--drawing", DRAWING, "--session", path, "--out", folder,
                        "--frames", "10"], check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(folder, "index.html"), encoding="utf-8") as file:
            page = file.read()
    return json.loads(page.split('id="data">')[1].split("</script>")[0])


def column(text, form):
    """The numbers of a column: `form` as the struct module names it."""
    return [value for value, in struct.iter_unpack("<" + form, base64.b64decode(text))]


def shapes_of(data):
    """Handle and flat polylines of each shape."""
    lines, points, xyz = (iter(column(data[name], form)) for name, form in (("lines", "I"), ("points", "I"), ("xyz", "d")))
    for handle, count in zip(column(data["handles"], "Q"), lines):
        yield [f"{handle:X}"] + [list(itertools.islice(xyz, 3 * next(points))) for _ in range(count)]


def minus(a, b):
    return [p - q for p, q in zip(a, b)]


def dot(a, b):
    return sum(p * q for p, q in zip(a, b))


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def unit(a):
    length = math.sqrt(dot(a, a))
    return [p / length for p in a]


class View:
    """From the world to a panel's pixels, as a camera sees it."""

    def __init__(self, camera):
        self.position, self.target, up = camera[0:3], camera[3:6], camera[6:9]
        self.sight = minus(self.target, self.position)
        self.distance = math.sqrt(dot(self.sight, self.sight))
        self.forward = unit(self.sight)
        self.right = unit(cross(self.forward, up))
        self.up = cross(self.right, self.forward)
        self.scale = min(WIDTH / camera[9], HEIGHT / camera[10])
        self.is_perspective = camera[11] == 1

    def pixel(self, point):
        """None for a point that the eye cannot see."""
        way = minus(point, self.position)
        depth = dot(way, self.forward)
        scale = self.scale
        if self.is_perspective:
            if depth <= self.distance * 1e-3:
                return None
            scale *= self.distance / depth
        return WIDTH / 2 + scale * dot(way, self.right), HEIGHT / 2 - scale * dot(way, self.up)


def runs(view, flat):
    """The polyline's pieces that can be seen, in steps; it begins anew after a point that cannot be seen or lies far off."""
    found, run = [], []
    for i in range(0, len(flat), 3):
        place = view.pixel(flat[i:i + 3])
        if place is None or max(abs(place[0]), abs(place[1])) > 4 * WIDTH:
            found.append(run)
            run = []
            continue
        is_last = i + 3 == len(flat)
        if not run or is_last or math.dist(run[-1], place) >= DETAIL:
            run.append(place)
    return [run for run in found + [run] if len(run) > 1]


def is_worth_drawing(run):
    return any(max(values) - min(values) >= SMALLEST for values in zip(*run))


def path_text(run):
    """Steps from point to point, in quarters of a pixel."""
    places = [(round(STEPS * x), round(STEPS * y)) for x, y in run]
    steps = " ".join(f"{x - px} {y - py}" for (px, py), (x, y) in zip(places, places[1:]))
    return f"M{places[0][0]} {places[0][1]}l{steps}".replace(" -", "-")


def drawing(data, moment, kind):
    view = View(moment["camera"])
    selected = set(data["selections"][moment["selection"]])
    parts = {kind: [], "selected": []}
    for shape in shapes_of(data["shapes"]):
        which = "selected" if shape[0] in selected and kind == "after" else kind
        for flat in shape[1:]:
            parts[which] += [path_text(run) for run in runs(view, flat) if is_worth_drawing(run)]
    return "".join(f'<path class="{name}" d="{"".join(paths)}"/>' for name, paths in parts.items() if paths)


def cross_at(view, point):
    x, y = (STEPS * value for value in view.pixel(point))
    return f'<path class="selected" d="M{x - 28:.0f} {y:.0f}h56M{x:.0f} {y - 28:.0f}v56"/>'


def centre(data, title):
    """A cross where what the view turns about is no object."""
    camera = data["moments"][0]["camera"]
    points = {"Target of the view": camera[3:6], "Origin": [0, 0, 0]}
    return cross_at(View(data["moments"][-1]["camera"]), points[title]) if title in points else ""


def panel(number, data, title, text, arrow):
    x = GAP + number % COLUMNS * (WIDTH + GAP)
    y = GAP + number // COLUMNS * (HEIGHT + CAPTION + GAP)
    before, after = data["moments"][0], data["moments"][-1]
    return (f'<g transform="translate({x} {y})"><svg width="{WIDTH}" height="{HEIGHT}">'
            f'<rect class="frame" width="{WIDTH}" height="{HEIGHT}"/><g transform="scale({1 / STEPS})">'
            f'{drawing(data, before, "before")}{drawing(data, after, "after")}{centre(data, title)}</g></svg>'
            f'<g transform="translate(2 {HEIGHT + 8})"><ellipse class="cap" cx="16" cy="15" rx="12" ry="7"/>'
            f'<path class="push" d="{ARROWS[arrow]}" marker-end="url(#head)"/></g>'
            f'<text class="title" x="42" y="{HEIGHT + 20}">{title}</text>'
            f'<text x="42" y="{HEIGHT + 36}">{text}</text></g>')


def picture(workbench, panels):
    rows = (len(panels) + COLUMNS - 1) // COLUMNS
    width, height = GAP + COLUMNS * (WIDTH + GAP), GAP + rows * (HEIGHT + CAPTION + GAP)
    parts = [panel(number, replay(workbench, session), title, text, arrow)
             for number, (title, text, arrow, session) in enumerate(panels)]
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}">',
        f'<style>{STYLE}</style><defs><marker id="head" viewBox="0 0 8 8" refX="5" refY="4" markerWidth="5" '
        'markerHeight="5" orient="auto"><path class="head" d="M0 0L8 4L0 8z"/></marker></defs>', *parts, "</svg>"]) + "\n"


def main():
    workbench, folder = sys.argv[1:3]
    for name, panels in PICTURES.items():
        with open(os.path.join(folder, name + ".svg"), "w", encoding="utf-8") as file:
            file.write(picture(workbench, panels))


if __name__ == "__main__":
    main()
