// From the world to the picture: cameras, projection, clipping, drawing on a canvas.

import { cross, minus, norm, scaled } from "./vector.js";

/** What is seen of a sheet, as a camera that looks down on it. */
export function sheetCamera([x, y, width, height]) {
  return { position: [x, y, 1], target: [x, y, 0], up: [0, 1, 0], width, height, isPerspective: false };
}

/** The camera that looks at the model: the current view's, or of the window in the sheet. */
export function cameraOf(moment) {
  const c = moment.camera || moment.window;
  return { position: c.slice(0, 3), target: c.slice(3, 6), up: c.slice(6, 9), width: c[9], height: c[10],
    isPerspective: c[11] === 1 };
}

/** Whether the camera can be drawn with: finite numbers and a field of some size. */
function isUsable(camera) {
  const all = [...camera.position, ...camera.target, ...camera.up, camera.width, camera.height];
  return all.every((v) => Number.isFinite(v)) && camera.width > 0 && camera.height > 0;
}

/** Frame of a camera in a picture of width x height pixels; null when the camera looks nowhere. */
export function projectionOf(camera, width, height) {
  const distance = isUsable(camera) ? norm(minus(camera.target, camera.position)) : 0;
  if (!(distance > 0)) return null;
  const direction = scaled(minus(camera.target, camera.position), 1 / distance);
  let right = cross(direction, camera.up);
  // An up vector along the line of sight does not define the roll, so one near the vertical is taken.
  if (!(norm(right) > 1e-9 * norm(camera.up)))
    right = cross(direction, Math.abs(direction[2]) < 0.9 ? [0, 0, 1] : [0, 1, 0]);
  right = scaled(right, 1 / norm(right));
  // `near` is relative to the distance, since drawings come in all sizes. The smaller scale wins: the whole field
  // stays in the picture, whatever its proportions.
  return { camera, direction, right, up: cross(right, direction), distance, near: distance * 1e-3,
    scale: Math.min(width / camera.width, height / camera.height), width, height, cx: width / 2, cy: height / 2 };
}

/** The same frame in a part of the picture: `box` has x, y, width and height in pixels. */
export function projectionInto(camera, box) {
  const projection = projectionOf(camera, box.width, box.height);
  return projection && { ...projection, cx: box.x + box.width / 2, cy: box.y + box.height / 2, box };
}

/** A pen that draws straight pieces on a canvas, each clipped to a box and a margin around it. */
export class Pen {
  constructor(context, { x, y, width, height }, margin) {
    this.context = context;
    this.left = x - margin;
    this.top = y - margin;
    this.right = x + width + margin;
    this.bottom = y + height + margin;
    this.begin();
  }

  begin() {
    this.lastX = this.lastY = NaN;
    this.drawnX = this.drawnY = NaN;
    this.count = 0;
    this.context.beginPath();
  }

  stroke() {
    this.context.stroke();
    this.begin();
  }

  isInside(x, y) { return x >= this.left && x <= this.right && y >= this.top && y <= this.bottom; }

  segment(x1, y1, x2, y2) {
    if (this.isInside(x1, y1) && this.isInside(x2, y2)) return this.line(x1, y1, x2, y2);
    const dx = x2 - x1, dy = y2 - y1;
    let from = 0, to = 1;
    // Clipping by parameter (Liang and Barsky): a coordinate far outside would overflow the renderer.
    const sides = [[-dx, x1 - this.left], [dx, this.right - x1], [-dy, y1 - this.top], [dy, this.bottom - y1]];
    for (const [speed, room] of sides) {
      if (speed === 0) {
        if (room < 0) return;
        continue;
      }
      const at = room / speed;
      if (speed < 0) from = Math.max(from, at);
      else to = Math.min(to, at);
    }
    if (from <= to) this.line(x1 + from * dx, y1 + from * dy, x1 + to * dx, y1 + to * dy);
  }

  line(x1, y1, x2, y2) {
    const isNew = x1 !== this.lastX || y1 !== this.lastY;
    this.lastX = x2;
    this.lastY = y2;
    // What is less than half a pixel away from the last point adds nothing that can be seen.
    if (!isNew && Math.abs(x2 - this.drawnX) + Math.abs(y2 - this.drawnY) < 0.5) return;
    if (isNew || this.count === 0) this.context.moveTo(x1, y1);
    this.context.lineTo(x2, y2);
    this.drawnX = x2;
    this.drawnY = y2;
    // A renderer's effort grows faster than the number of pieces in one path.
    if (++this.count === 500) this.stroke();
  }
}

/** A pen for what a projection shows: all of the picture, or its part of it exactly. */
export function penFor(context, { width, height, box }) {
  return box ? new Pen(context, box, 0) : new Pen(context, { x: 0, y: 0, width, height }, 20);
}

/** A function (x, y, z) that sets `at` to the place in the picture and the depth; the screen's y axis points down. */
export function projector({ camera, direction: d, right: r, up: u, distance, scale, cx, cy }) {
  const [tx, ty, tz] = camera.target, at = { x: 0, y: 0, depth: 0 };
  return (px, py, pz) => {
    const x = px - tx, y = py - ty, z = pz - tz;
    at.depth = x * d[0] + y * d[1] + z * d[2] + distance;
    const s = camera.isPerspective ? (scale * distance) / at.depth : scale;
    at.x = cx + (x * r[0] + y * r[1] + z * r[2]) * s;
    at.y = cy - (x * u[0] + y * u[1] + z * u[2]) * s;
    return at;
  };
}

/** Calls `piece(x1, y1, x2, y2)` for what is seen of the straight pieces of the shape `i`, cut at the near plane. A point
    is a piece without length. */
export function eachPiece({ camera, direction: d, right: r, up: u, distance, near, scale, cx, cy }, shapes, i, piece) {
  const { xyz, lineStarts, pointStarts } = shapes, [tx, ty, tz] = camera.target, isPerspective = camera.isPerspective;
  // The screen's y axis points down, the camera's up.
  const emit = (xa, ya, za, xb, yb, zb) => {
    const sa = isPerspective ? (scale * distance) / za : scale, sb = isPerspective ? (scale * distance) / zb : scale;
    piece(cx + xa * sa, cy - ya * sa, cx + xb * sb, cy - yb * sb);
  };
  for (let line = lineStarts[i]; line < lineStarts[i + 1]; line++) {
    const first = pointStarts[line], end = pointStarts[line + 1];
    let x0 = 0, y0 = 0, z0 = 0;
    for (let p = first; p < end; p++) {
      const px = xyz[3 * p] - tx, py = xyz[3 * p + 1] - ty, pz = xyz[3 * p + 2] - tz;
      const x = px * r[0] + py * r[1] + pz * r[2];
      const y = px * u[0] + py * u[1] + pz * u[2];
      const z = px * d[0] + py * d[1] + pz * d[2] + distance;
      if (end === first + 1) {
        if (!isPerspective || z >= near) emit(x, y, z, x, y, z);
      } else if (p > first) {
        if (!isPerspective || (z0 >= near && z >= near)) {
          emit(x0, y0, z0, x, y, z);
        } else if (z0 >= near || z >= near) {
          const s = (near - z0) / (z - z0), xn = x0 + s * (x - x0), yn = y0 + s * (y - y0);
          if (z0 >= near) emit(x0, y0, z0, xn, yn, near);
          else emit(xn, yn, near, x, y, z);
        }
      }
      x0 = x;
      y0 = y;
      z0 = z;
    }
  }
}
