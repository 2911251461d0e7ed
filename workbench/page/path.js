// The small view: the camera's path around the drawing, seen along one of the world's axes.

import { clearedContext } from "./canvas.js";
import { cssValue, themeColour } from "./colour.js";
import { Pen, cameraOf, projectionOf } from "./projection.js";

const kNever = 0xffffffff, kMargin = 14;

export class PathView {
  constructor(canvas, note, scene, history) {
    this.canvas = canvas;
    this.scene = scene;
    this.bounds = scene.shapes.bounds() || [];
    this.axes = [0, 1];
    this.collect(history);
    note.hidden = this.times.length > 1;
    note.textContent = "The camera did not move.";
  }

  /** The camera's positions, those of the sheet left out. */
  collect(history) {
    const times = [], points = [];
    for (let i = 0; i < history.count; i++) {
      if (!history.isOfModel(i)) continue;
      times.push(history.times[i]);
      points.push(...history.position(i));
    }
    this.times = times;
    this.points = Float64Array.from(points);
  }

  /** Lays the picture out again, after a change of its size, of the colours or of the plane. */
  layOut() {
    const { width, height, ratio } = clearedContext(this.canvas);
    Object.assign(this, { width, height, ratio, shown: null, ink: cssValue("--ink") });
    if (!(width > 0 && height > 0)) return;
    this.placeAll();
    this.drawPlan();
    this.drawPath();
  }

  placeAll() {
    const [a, b] = this.axes, low = [Infinity, Infinity], high = [-Infinity, -Infinity];
    const see = (x, y) => {
      if (!Number.isFinite(x + y)) return;
      [low[0], low[1], high[0], high[1]] = [Math.min(low[0], x), Math.min(low[1], y), Math.max(high[0], x), Math.max(high[1], y)];
    };
    for (let i = 0; i < this.points.length; i += 3) see(this.points[i + a], this.points[i + b]);
    for (const corner of this.bounds) see(corner[a], corner[b]);
    for (const { camera } of this.scene.moments) if (camera) see(camera[a], camera[b]);
    const [left, bottom, right, top] = low[0] <= high[0] ? [...low, ...high] : [-1, -1, 1, 1];
    // A camera that never moves along an axis gives a range of 0, which must not become a divisor.
    this.scale = Math.min((this.width - 2 * kMargin) / (right - left || 1), (this.height - 2 * kMargin) / (top - bottom || 1));
    this.x0 = this.width / 2 - ((left + right) / 2) * this.scale;
    this.y0 = this.height / 2 + ((bottom + top) / 2) * this.scale;
  }

  at(p) { return [this.x0 + p[this.axes[0]] * this.scale, this.y0 - p[this.axes[1]] * this.scale]; }

  /** The drawing, seen along the axis, on a canvas of its own. */
  drawPlan() {
    this.plan = new OffscreenCanvas(this.canvas.width || 1, this.canvas.height || 1);
    const context = this.plan.getContext("2d"), { shapes } = this.scene, { xyz, pointStarts } = shapes;
    context.scale(this.ratio, this.ratio);
    context.strokeStyle = cssValue("--muted");
    context.globalAlpha = 0.45;
    context.lineWidth = 1 / this.ratio;
    const pen = new Pen(context, { x: 0, y: 0, width: this.width, height: this.height }, 20);
    for (let line = 0; line + 1 < pointStarts.length; line++)
      for (let p = pointStarts[line] + 1; p < pointStarts[line + 1]; p++)
        pen.segment(...this.at(xyz.subarray(3 * p - 3, 3 * p)), ...this.at(xyz.subarray(3 * p, 3 * p + 3)));
    pen.stroke();
  }

  /** Keeps for each pixel when the path first came there: so the path up to any time costs the same. */
  drawPath() {
    const w = this.canvas.width, h = this.canvas.height;
    this.first = new Uint32Array(w * h).fill(kNever);
    this.image = new ImageData(Math.max(1, w), Math.max(1, h));
    this.colour = themeColour("--accent");
    let x0 = NaN, y0 = NaN;
    for (let i = 0; i < this.times.length; i++) {
      const [x, y] = this.at(this.points.subarray(3 * i, 3 * i + 3)).map((v) => v * this.ratio);
      if (Number.isFinite(x0 + y0 + x + y)) this.mark(x0, y0, x, y, this.times[i], w, h);
      [x0, y0] = [x, y];
    }
  }

  mark(x0, y0, x1, y1, time, w, h) {
    // All positions are in the picture, so that no piece is longer than it.
    const steps = Math.max(1, Math.ceil(Math.max(Math.abs(x1 - x0), Math.abs(y1 - y0))));
    for (let s = 0; s <= steps; s++) {
      const x = Math.floor(x0 + ((x1 - x0) * s) / steps), y = Math.floor(y0 + ((y1 - y0) * s) / steps);
      if (x < 0 || y < 0 || x >= w || y >= h) continue;
      const at = y * w + x;
      if (time < this.first[at]) this.first[at] = time;
    }
  }

  show(moment, time) {
    if (!this.first) return;
    if (this.shown !== time) this.paint(time);
    this.shown = time;
    const { context } = clearedContext(this.canvas);
    context.save();
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.drawImage(this.plan, 0, 0);
    context.drawImage(this.painted, 0, 0);
    context.restore();
    const projection = moment && projectionOf(cameraOf(moment), 1, 1);
    if (projection) this.drawCamera(context, projection, Boolean(moment.window));
  }

  /** The path: what is past in full colour, what is ahead faint. */
  paint(time) {
    const { first, image, colour: [red, green, blue] } = this, pixels = new Uint32Array(image.data.buffer);
    // The bytes of a pixel are red, green, blue, alpha; the lowest of a number comes first.
    const colour = (blue << 16) | (green << 8) | red, past = (colour | 0xff000000) >>> 0, ahead = (colour | 0x66000000) >>> 0;
    for (let i = 0; i < first.length; i++) pixels[i] = first[i] === kNever ? 0 : first[i] <= time ? past : ahead;
    this.painted ??= new OffscreenCanvas(1, 1);
    if (this.painted.width !== image.width || this.painted.height !== image.height)
      [this.painted.width, this.painted.height] = [image.width, image.height];
    this.painted.getContext("2d").putImageData(image, 0, 0);
  }

  drawCamera(context, { camera, right, up }, isPaper) {
    const corner = (s, t) => camera.target.map((v, i) => v + (s * right[i] * camera.width + t * up[i] * camera.height) / 2);
    const corners = [[-1, -1], [1, -1], [1, 1], [-1, 1]].map(([s, t]) => this.at(corner(s, t)));
    const eye = this.at(camera.position), { ink } = this;
    // A perspective view sees along the edges of a pyramid, parallel projection along one direction.
    const ends = camera.isPerspective ? corners : [this.at(camera.target)];
    Object.assign(context, { strokeStyle: ink, fillStyle: ink, lineWidth: 1, font: "10px system-ui, sans-serif" });
    context.beginPath();
    corners.forEach((c, i) => (i === 0 ? context.moveTo(...c) : context.lineTo(...c)));
    context.closePath();
    context.globalAlpha = 0.1;
    context.fill();
    context.globalAlpha = 1;
    for (const end of ends) {
      context.moveTo(...eye);
      context.lineTo(...end);
    }
    context.stroke();
    context.beginPath();
    context.arc(...eye, 4, 0, 2 * Math.PI);
    context.fill();
    if (isPaper) context.fillText("sheet", 8, 16);
  }
}
