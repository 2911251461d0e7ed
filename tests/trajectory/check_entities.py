"""Where objects end that the cap moves: the product of one matrix for each pass, out of a run's trajectory.csv.

Written apart from the module, from the description of the motion. Only lines and circles can be followed: the middle
of a line's box is the middle of its ends, the middle of a circle's box its centre.
"""
import csv
import math

from check_trajectory import View, add, cross, dot, rotation, scale, sub, turned, unit

UNITS_PER_PASS = 0.5
RADIANS_PER_PASS = 0.002
SHEET_UNITS_PER_PASS = 5e-5
WORLD_Y = [0.0, 1.0, 0.0]


def read_entities(path):
    """Points by handle."""
    with open(path, encoding="utf-8", newline="") as text:
        return {row["handle"]: [[float(v) for v in point.split()] for point in row["points"].split(";")]
                for row in csv.DictReader(text)}


def box_middle(points):
    return [(min(values) + max(values)) / 2 for values in zip(*points)]


def mean(points):
    return scale([sum(values) for values in zip(*points)], 1.0 / len(points))


def screen_axes(view):
    toward = sub(view.position, view.target)
    return [unit(cross(toward, view.up)), unit(view.up), unit(toward)]


def motion(view, cap, mode):
    """The displacement, and the turns in the order in which a point undergoes them."""
    x, y, z, rx, ry, rz = cap
    axes = screen_axes(view)
    shift = scale(add(add(scale(axes[0], -x), scale(axes[1], y)), scale(axes[2], z)), UNITS_PER_PASS)
    if mode.hover:
        shift[1] = 0.0
    if mode.level:
        axes[1], rz = WORLD_Y, 0
    turns = [(rz * RADIANS_PER_PASS, axes[2]), (ry * RADIANS_PER_PASS, axes[1]), (rx * -RADIANS_PER_PASS, axes[0])]
    return shift, [rotation(angle, axis) for angle, axis in turns if angle]


def moved(point, centre, shift, turns):
    for matrix in turns:
        point = add(centre, turned(matrix, sub(point, centre)))
    return add(point, shift)


def expected(rows, entities, selected, mode_at):
    """The entities after every pass in the model; the selection stays what it is all the while."""
    entities, passes = {handle: list(points) for handle, points in entities.items()}, 0
    for row in rows:
        if row["kind"] != "pass3d":
            continue
        cap = [int(row["cap_" + name]) for name in "x y z rx ry rz".split()]
        shift, turns = motion(View(row), cap, mode_at(int(row["time_ms"])))
        centre = mean([box_middle(entities[handle]) for handle in selected])
        for handle in selected:
            entities[handle] = [moved(point, centre, shift, turns) for point in entities[handle]]
        passes += 1
    return entities, passes


def largest_difference(actual, wanted):
    """Relative to the size of the scene; infinite when an entity is not there."""
    if actual.keys() != wanted.keys():
        return math.inf
    size = max(1.0, max(abs(v) for points in wanted.values() for point in points for v in point))
    return max(abs(a - b) for handle in wanted for p, q in zip(actual[handle], wanted[handle])
               for a, b in zip(p, q)) / size


def sheet_passes(before, after, x, y):
    """Number of equal moves on the sheet that lead from one point to the other; None when none does."""
    step = [x * SHEET_UNITS_PER_PASS, y * SHEET_UNITS_PER_PASS, 0.0]
    count = round(dot(sub(after, before), step) / dot(step, step))
    end = add(before, scale(step, count))
    return count if max(abs(a - b) for a, b in zip(end, after)) < 1e-9 * max(1, count) else None
