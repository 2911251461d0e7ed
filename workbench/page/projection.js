// From the world to the picture: cameras, projection, clipping, SVG path text.

const minus = (a, b) => [a[0] - b[0], a[1] - b[1], a[2] - b[2]];
const dot = (a, b) => a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
const scaled = (a, s) => [a[0] * s, a[1] * s, a[2] * s];
const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
const norm = (a) => Math.hypot(a[0], a[1], a[2]);

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

/** A pen that writes straight pieces as SVG path text, each clipped to the picture and a margin around it. */
export class PathPen {
  constructor(width, height, margin = 20, left = 0, top = 0) {
    this.left = left - margin;
    this.top = top - margin;
    this.rightEdge = left + width + margin;
    this.bottom = top + height + margin;
    this.text = [];
    this.lastX = NaN;
    this.lastY = NaN;
  }

  segment(x1, y1, x2, y2) {
    const dx = x2 - x1, dy = y2 - y1;
    let from = 0, to = 1;
    // Clipping by parameter (Liang and Barsky): a coordinate far outside would overflow the renderer.
    const sides = [[-dx, x1 - this.left], [dx, this.rightEdge - x1], [-dy, y1 - this.top], [dy, this.bottom - y1]];
    for (const [speed, room] of sides) {
      if (speed === 0) {
        if (room < 0) return;
        continue;
      }
      const at = room / speed;
      if (speed < 0) from = Math.max(from, at);
      else to = Math.min(to, at);
    }
    if (!(from <= to)) return;
    this.line(x1 + from * dx, y1 + from * dy, x1 + to * dx, y1 + to * dy);
  }

  line(x1, y1, x2, y2) {
    // A tenth of a pixel is as fine as can be seen, and keeps the path text short.
    const ax = Math.round(x1 * 10) / 10, ay = Math.round(y1 * 10) / 10;
    const bx = Math.round(x2 * 10) / 10, by = Math.round(y2 * 10) / 10;
    const continues = ax === this.lastX && ay === this.lastY;
    if (continues && bx === ax && by === ay) return;
    this.text.push(continues ? "L" : `M${ax} ${ay}L`, bx, " ", by);
    this.lastX = bx;
    this.lastY = by;
  }
}

/** A pen for what a projection shows: all of the picture, or its part of it exactly. */
export function penFor({ width, height, box }) {
  return box ? new PathPen(box.width, box.height, 0, box.x, box.y) : new PathPen(width, height);
}

/** Draws one polyline (x y z x y z ...) with the pen, clipped at the near plane. */
export function drawPolyline(projection, pen, points) {
  const { camera, direction: d, right: r, up: u, distance, near, scale } = projection;
  const [tx, ty, tz] = camera.target;
  const { cx, cy } = projection;
  let x0 = 0, y0 = 0, z0 = 0;
  const emit = (xa, ya, za, xb, yb, zb) => {
    const sa = camera.isPerspective ? (scale * distance) / za : scale;
    const sb = camera.isPerspective ? (scale * distance) / zb : scale;
    // The screen's y axis points down, the camera's up.
    pen.segment(cx + xa * sa, cy - ya * sa, cx + xb * sb, cy - yb * sb);
  };
  for (let i = 0; i + 2 < points.length; i += 3) {
    const px = points[i] - tx, py = points[i + 1] - ty, pz = points[i + 2] - tz;
    const x = px * r[0] + py * r[1] + pz * r[2];
    const y = px * u[0] + py * u[1] + pz * u[2];
    const z = px * d[0] + py * d[1] + pz * d[2] + distance;
    if (points.length === 3) {
      if (!camera.isPerspective || z >= near) emit(x, y, z, x, y, z);
    } else if (i > 0) {
      if (!camera.isPerspective || (z0 >= near && z >= near)) {
        emit(x0, y0, z0, x, y, z);
      } else if (z0 >= near || z >= near) {
        const s = (near - z0) / (z - z0);
        const xn = x0 + s * (x - x0), yn = y0 + s * (y - y0);
        if (z0 >= near) emit(x0, y0, z0, xn, yn, near);
        else emit(xn, yn, near, x, y, z);
      }
    }
    x0 = x;
    y0 = y;
    z0 = z;
  }
}
