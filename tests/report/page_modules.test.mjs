// The page's modules that need no browser.

import assert from "node:assert/strict";
import { test } from "node:test";

import { lastNotAbove } from "../../workbench/page/columns.js";
import { turnedCamera, zoomedCamera } from "../../workbench/page/hand.js";
import { angleBetween } from "../../workbench/page/motion.js";
import { eachPiece, projectionOf, projector } from "../../workbench/page/projection.js";
import { Rotation } from "../../workbench/page/rotation.js";
import { TimeRange } from "../../workbench/page/time_range.js";
import { differences } from "../../workbench/page/report/comparison.js";

const camera = (isPerspective) => ({ position: [0, -20, 0], target: [0, 0, 0], up: [0, 0, 1], width: 40, height: 30, isPerspective });

/** The pieces of one polyline in a picture of 400 x 300 pixels. */
function pieces(xyz, isPerspective) {
  const found = [];
  const line = { xyz, lineStarts: [0, 1], pointStarts: [0, xyz.length / 3] };
  eachPiece(projectionOf(camera(isPerspective), 400, 300), line, 0, (...piece) => found.push(piece));
  return found;
}

function assertNear(actual, expected) {
  assert.ok(Math.abs(actual - expected) < 1e-9 * Math.max(1, Math.abs(expected)), `${actual} is not ${expected}`);
}

test("a parallel camera draws what is behind it, a perspective one does not", () => {
  const line = [1, -30, 2, 3, -25, 2];
  assert.deepEqual(pieces(line, false), [[210, 130, 230, 130]]);
  assert.deepEqual(pieces(line, true), []);
});

test("a line that passes a perspective camera is cut at the near plane", () => {
  // The near plane is at a thousandth of the distance, 0.02 before the camera: y = -19.98.
  const [[x1, y1, x2, y2]] = pieces([1, -30, 0, 3, 0, 0], true);
  // At depth 0.02 the scale is 10 * 20 / 0.02 pixels a unit.
  assert.ok(Math.abs(x1 - (200 + 10000 * (1 + (2 * 10.02) / 30))) < 1e-6, `${x1}`);
  assert.deepEqual([y1, x2, y2], [150, 230, 150]);
});

test("a point is a piece without length, and what is no number is drawn nowhere", () => {
  assert.deepEqual(pieces([1, 0, 2], false), [[210, 130, 210, 130]]);
  assert.ok(pieces([1, 0, 2, NaN, 0, 0], false).flat().some(Number.isNaN));
});

test("zooming by hand keeps what is at the pixel", () => {
  for (const isPerspective of [false, true]) {
    const before = projectionOf(camera(isPerspective), 400, 300), point = [5, 0, 3];
    const { x, y } = { ...projector(before)(...point) };
    const after = projectionOf(zoomedCamera(before, 0.5, x, y), 400, 300), now = projector(after)(...point);
    assertNear(now.x, x);
    assertNear(now.y, y);
    assertNear(after.scale, 2 * before.scale);
  }
});

test("dragging to the right brings the left side to the front", () => {
  const { position, up } = turnedCamera(projectionOf(camera(false), 400, 300), 50, 0);
  assert.ok(position[0] < -1, `the camera goes to the left, to ${position}`);
  assertNear(Math.hypot(...position), 20);
  assert.deepEqual(up, [0, 0, 1]);
});

test("the angle between two frames is exact when it is small", () => {
  const frame = (angle) => ({ d: [Math.sin(angle), Math.cos(angle), 0], up: [0, 0, 1] });
  for (const angle of [1e-8, 0.001, 1, 3])
    assert.ok(Math.abs(angleBetween(frame(0), frame(angle)) - angle) < 1e-12 + angle * 1e-7, `${angle}`);
});

test("the last number that is not above a value is found", () => {
  for (const [value, index] of [[0, -1], [1, 0], [2, 1], [3, 2], [9, 2]]) assert.equal(lastNotAbove([1, 2, 3], value), index);
  assert.equal(lastNotAbove([2, 2, 2], 2), 2, "of equals the last");
});

test("the time's range zooms around a time and stays within the run", () => {
  const range = new TimeRange(0, 1000);
  range.zoom(0.5, 250);
  assert.deepEqual([range.min, range.max], [125, 625]);
  range.pan(-500);
  assert.deepEqual([range.min, range.max], [0, 500]);
  range.zoom(1e-9, 100);
  assert.ok(range.span >= 20 && range.min <= 100 && range.max >= 100, "no further than a pass");
  range.follow(900);
  assert.ok(range.min < 900 && range.max > 900);
  range.zoom(1e9, 0);
  assert.ok(range.isAll);
});

test("values that differ are as short as tells them apart", () => {
  const listed = (values) => differences({ first: null, columns: [{ column: "px", rows: 1, largest: 1, line: 2, time_ms: [5, 5], values }],
    lines_only: [[], []], lines_moved: null, entities_only: [[], []], entities_changed: [], summary: [] });
  assert.deepEqual(listed([-1.7882990700816705, 30.25]), [[5, "px differs in 1 row, by at most 1: -1.7883 and 30.25"]]);
  assert.deepEqual(listed([0.1, 0.10000000000000002]), [[5, "px differs in 1 row, by at most 1: 0.1 and 0.10000000000000002"]]);
});

test("runs that are equal have no differences", () => {
  assert.deepEqual(differences({ first: null, columns: [], lines_only: [[], []], lines_moved: null, entities_only: [[], []],
    entities_changed: [], summary: [] }), []);
});

/** What a run turns about while a line from the origin to (2,4,6) is selected, in words and as a place. */
function turning(toggles, lines, ...times) {
  const line = { type: () => "LINE", points: () => [0, 0, 0, 2, 4, 6] };
  const scene = { selections: [new Set(["2A"])], eachWithHandle: (handles, see) => see(line, 0) };
  const rotation = new Rotation({ modes: [], toggles, lines }, scene);
  return times.map((time) => rotation.at(time, { camera: [0, 0, 9, 7, 7, 7, 0, 1, 0, 4, 3, 0], selection: 0 }))
    .map(({ words, centre }) => `${words.split(",")[0]} ${centre}`);
}

test("the view turns about the selection as the module's settings say, from each load on", () => {
  assert.deepEqual(turning([[0, true, false], [500, false, false], [800, false, true]], [], 0, 499, 500, 800),
    ["about the middle of the selection 1,2,3", "about the middle of the selection 1,2,3", "about the target 7,7,7",
      "about the selected line 1,2,3"]);
});

test("a toggle stays as it was switched until the module is loaded again", () => {
  const lines = [[200, "print", "\n=> Selection as Rotation Center:  off"], [300, "print", "\n=> Selected Line as Rotation Axis:  on"]];
  assert.deepEqual(turning([[0, true, false], [500, true, false]], lines, 199, 200, 300, 500).map((words) => words.slice(0, 24)),
    ["about the middle of the ", "about the target 7,7,7", "about the selected line ", "about the middle of the "]);
});
