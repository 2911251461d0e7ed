// What the host shows: the drawing from the camera of the last picture, in the model tab or through a layout's windows.

import { cssColour, cssValue, themeColour } from "../colour.js";
import { projectionInto, projectionOf, sheetCamera } from "../projection.js";
import { GlLines } from "./gl_lines.js";

/** More segments than this take the 2D canvas longer than a picture may take. */
const kMostFor2d = 20000;

function cameraFrom(c, origin) {
  const [x, y, z] = origin;
  return { position: [c[0] - x, c[1] - y, c[2] - z], target: [c[3] - x, c[4] - y, c[5] - z], up: c.slice(6, 9), width: c[9], height: c[10],
    isPerspective: c[11] === 1 };
}

/** Adds the shapes' lines to the canvas's path, clipped at the near plane. */
function trace(context, projection, shapes) {
  const { camera, direction: d, right: r, up: u, distance, near, scale, cx, cy } = projection;
  const [tx, ty, tz] = camera.target;
  for (const { lines } of shapes)
    for (const line of lines) {
      let isOpen = false, x0 = 0, y0 = 0, z0 = 0;
      for (let i = 0; i + 2 < line.length; i += 3) {
        const px = line[i] - tx, py = line[i + 1] - ty, pz = line[i + 2] - tz;
        const x = px * r[0] + py * r[1] + pz * r[2], y = px * u[0] + py * u[1] + pz * u[2];
        const z = px * d[0] + py * d[1] + pz * d[2] + distance;
        const isSeen = !camera.isPerspective || z >= near;
        if (!isSeen && isOpen) context.lineTo(...cut(x0, y0, z0, x, y, z));
        else if (isSeen) {
          const s = camera.isPerspective ? (scale * distance) / z : scale, sx = cx + x * s, sy = cy - y * s;
          if (!isOpen && i > 0) context.moveTo(...cut(x, y, z, x0, y0, z0));
          if (isOpen || i > 0) context.lineTo(sx, sy);
          else context.moveTo(sx, sy);
          if (line.length === 3) context.lineTo(sx + 1, sy);
        }
        isOpen = isSeen;
        x0 = x; y0 = y; z0 = z;
      }
    }
  /** Where the line from a seen point to one that is not meets the near plane. */
  function cut(xa, ya, za, xb, yb, zb) {
    const t = (near - za) / (zb - za), s = (scale * distance) / near;
    return [cx + (xa + t * (xb - xa)) * s, cy - (ya + t * (yb - ya)) * s];
  }
}

export class PictureView {
  constructor(canvas, glCanvas) {
    this.canvas = canvas;
    this.context = canvas.getContext("2d");
    this.gl = new GlLines(glCanvas);
    this.selection = new Set();
    this.marquee = null;
    this.recolour();
  }

  recolour() {
    this.ink = themeColour("--ink");
    this.paper = themeColour("--paper");
    this.accent = cssValue("--accent");
    this.sheetColour = cssValue("--sheet");
    this.lineColour = cssValue("--muted");
    this.colours = new Map();
    this.gl.forget();
  }

  colour(index) {
    if (!this.colours.has(index)) this.colours.set(index, cssColour(index, this.ink, this.paper));
    return this.colours.get(index);
  }

  /** The projections of what is shown, each with the part of the picture it fills. */
  projections(picture, drawing) {
    const width = this.canvas.clientWidth, height = this.canvas.clientHeight;
    if (picture.camera) return [projectionOf(cameraFrom(picture.camera, drawing.origin), width, height)];
    if (!picture.paper) return [];
    const screen = projectionOf(sheetCamera(picture.paper), width, height);
    if (!screen) return [];
    this.screen = screen;
    return picture.windows.map(({ place, camera }) => projectionInto(cameraFrom(camera, drawing.origin), this.boxOf(place)));
  }

  boxOf([x, y, width, height]) {
    const { camera, scale, cx, cy } = this.screen;
    return { x: cx + (x - width / 2 - camera.target[0]) * scale, y: cy - (y + height / 2 - camera.target[1]) * scale,
      width: width * scale, height: height * scale };
  }

  draw(picture, drawing) {
    const { canvas, context } = this, ratio = devicePixelRatio || 1;
    const width = Math.round(canvas.clientWidth * ratio), height = Math.round(canvas.clientHeight * ratio);
    if (canvas.width !== width || canvas.height !== height) Object.assign(canvas, { width, height });
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.clearRect(0, 0, canvas.clientWidth, canvas.clientHeight);
    this.shown = [];
    const isGl = drawing !== null && drawing.segments > kMostFor2d && this.gl.isThere;
    this.gl.clear(canvas.clientWidth, canvas.clientHeight, ratio);
    if (!picture || !drawing) return;
    const projections = this.projections(picture, drawing);
    if (picture.paper && this.screen) this.drawSheet(picture);
    projections.forEach((projection, i) => {
      if (!projection) return;
      this.shown.push(projection);
      context.save();
      if (projection.box) this.clip(projection.box);
      if (isGl) this.gl.draw(projection, drawing, (index) => this.colour(index));
      else this.drawShapes(projection, drawing);
      this.drawSelection(projection, drawing);
      context.restore();
      if (projection.box) this.outline(projection.box, picture.viewport === i + 2);
    });
    if (picture.camera && projections[0]) this.drawAxes(projections[0]);
    this.drawMarquee();
  }

  drawShapes(projection, drawing) {
    const { context } = this;
    context.lineWidth = 1;
    for (const [index, shapes] of drawing.byColour()) {
      context.beginPath();
      trace(context, projection, shapes);
      context.strokeStyle = this.colour(index);
      context.stroke();
    }
  }

  drawSelection(projection, drawing) {
    if (this.selection.size === 0) return;
    const { context } = this;
    context.beginPath();
    for (const handle of this.selection) trace(context, projection, drawing.entities.get(handle) || []);
    context.strokeStyle = this.accent;
    context.lineWidth = 2.5;
    context.stroke();
  }

  drawSheet(picture) {
    const { x, y, width, height } = this.boxOf(picture.sheet);
    this.context.fillStyle = this.sheetColour;
    this.context.fillRect(x, y, width, height);
    this.outline({ x, y, width, height }, picture.onSheet);
  }

  clip({ x, y, width, height }) {
    this.context.beginPath();
    this.context.rect(x, y, width, height);
    this.context.clip();
  }

  outline({ x, y, width, height }, isCurrent) {
    this.context.strokeStyle = isCurrent ? this.accent : this.lineColour;
    this.context.lineWidth = isCurrent ? 2 : 1;
    this.context.strokeRect(x, y, width, height);
  }

  /** The world's axes in the lower left corner. */
  drawAxes({ right, up }) {
    const { context } = this, at = [40, this.canvas.clientHeight - 40];
    context.font = "11px system-ui, sans-serif";
    [["X", 1], ["Y", 3], ["Z", 5]].forEach(([name, index], i) => {
      context.strokeStyle = context.fillStyle = this.colour(index);
      context.lineWidth = 2;
      context.beginPath();
      context.moveTo(...at);
      context.lineTo(at[0] + right[i] * 26, at[1] - up[i] * 26);
      context.stroke();
      if (Math.hypot(right[i], up[i]) > 0.3) context.fillText(name, at[0] + right[i] * 35 - 4, at[1] - up[i] * 35 + 4);
    });
  }

  drawMarquee() {
    if (!this.marquee) return;
    const [x1, y1, x2, y2] = this.marquee;
    this.context.strokeStyle = this.accent;
    this.context.lineWidth = 1;
    // As in CAD programs: to the left it catches what it touches, drawn dashed.
    this.context.setLineDash(x2 < x1 ? [5, 4] : []);
    this.context.strokeRect(Math.min(x1, x2), Math.min(y1, y2), Math.abs(x2 - x1), Math.abs(y2 - y1));
    this.context.setLineDash([]);
  }
}
