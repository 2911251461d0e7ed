// The big picture: the drawing at a moment on one canvas, and on another one over it what changes more often.

import { clearedContext } from "./canvas.js";
import { cssColour, cssValue, themeColour } from "./colour.js";
import { cameraOf, eachPiece, penFor, projectionInto, projectionOf, projector, sheetCamera } from "./projection.js";

export class DrawingView {
  /** `canvas` and `overlay` lie over each other; `note` is shown in place of a picture. */
  constructor(canvas, overlay, note, scene) {
    this.canvas = canvas;
    this.overlay = overlay;
    this.note = note;
    this.scene = scene;
    this.hiddenLayers = new Set();
    /** A camera and a part of the sheet set by hand; null while the picture shows what was on the screen. */
    this.ownCamera = this.ownPaper = null;
    /** The camera of a run that this one is compared with, as moments have it. */
    this.otherCamera = null;
    /** The shape that was picked: its handle, or null. */
    this.picked = null;
    this.recolour();
  }

  recolour() {
    const ink = themeColour("--ink"), paper = themeColour("--paper");
    this.colours = this.scene.groups.map((group) => cssColour(group.colour, ink, paper));
    this.axisColours = [1, 3, 5].map((index) => cssColour(index, ink, paper));
    this.theme = Object.fromEntries(["ground", "paper", "sheet", "ink", "muted", "line", "accent", "turning", "series-3"]
      .map((name) => [name, cssValue(`--${name}`)]));
  }

  get isByHand() { return Boolean(this.moment && (this.moment.paper ? this.ownPaper : this.ownCamera)); }

  /** Shows a moment; `centre` is the centre of rotation, if there is one. */
  show(moment, centre = null) {
    this.moment = moment;
    this.centre = centre;
    this.scene.setMoment(moment);
    this.draw();
  }

  draw() {
    const { context, width, height } = clearedContext(this.canvas);
    const moment = this.moment, paper = moment && (moment.paper && (this.ownPaper || moment.paper));
    const camera = moment && ((!moment.paper && this.ownCamera) || cameraOf(moment));
    this.screen = moment ? projectionOf(paper ? sheetCamera(paper) : camera, width, height) : null;
    this.projection = this.screen && paper ? projectionInto(camera, this.boxOf(moment.place, this.screen)) : this.screen;
    this.say(this.noteFor(moment));
    if (this.projection) this.drawShapes(context);
    this.drawOverlay();
  }

  /** Shows a text in place of the picture; an empty one removes it. */
  say(text) {
    this.note.textContent = text;
    this.note.hidden = text === "";
  }

  noteFor(moment) {
    if (!moment) return "No moment was recorded: there is nothing to show.";
    if (!this.projection) return "The camera of this moment looks nowhere: its values cannot be drawn with.";
    return this.scene.isEmpty() ? "The drawing holds nothing that can be drawn." : "";
  }

  /** Place of a part of the sheet in the picture. */
  boxOf([x, y, width, height], { camera, scale, cx, cy }) {
    // Places are centres with y up; a box has its upper left corner with y down.
    return { x: cx + (x - width / 2 - camera.target[0]) * scale, y: cy - (y + height / 2 - camera.target[1]) * scale,
      width: width * scale, height: height * scale };
  }

  drawShapes(context) {
    const { shapes, changes, groups, isGone, current } = this.scene;
    if (this.moment.paper) this.drawSheet(context);
    const pen = penFor(context, this.projection);
    // A line of one device pixel is drawn several times as fast as a broader one.
    context.lineWidth = shapes.count > 20000 ? 1 / (devicePixelRatio || 1) : 1.1;
    context.lineJoin = "round";
    const piece = this.pieceWith(pen);
    groups.forEach((group, k) => {
      if (this.hiddenLayers.has(group.layer)) return;
      context.strokeStyle = this.colours[k];
      for (let i = group.from; i < group.to; i++) if (!isGone[i]) eachPiece(this.projection, shapes, i, piece);
      for (const i of group.changes) if (current.has(i)) eachPiece(this.projection, changes, i, piece);
      pen.stroke();
    });
  }

  /** Draws pieces with the pen, a point as a short line. */
  pieceWith(pen) {
    return (x1, y1, x2, y2) => (x1 === x2 && y1 === y2 ? pen.segment(x1 - 1.5, y1, x2 + 1.5, y2) : pen.segment(x1, y1, x2, y2));
  }

  drawSheet(context) {
    const { x, y, width, height } = this.boxOf(this.moment.sheet, this.screen);
    context.fillStyle = this.theme.sheet;
    context.strokeStyle = this.theme.muted;
    context.lineWidth = 1;
    context.fillRect(x, y, width, height);
    context.strokeRect(x, y, width, height);
  }

  drawOverlay() {
    const { context } = clearedContext(this.overlay);
    if (!this.projection) return;
    // Below the selection: the mark in its middle would hide a small object.
    if (this.centre && !this.moment.window) this.drawCentre(context);
    this.drawMarked(context, this.scene.selections[this.moment.selection] || [], this.theme.accent, [7, 4]);
    if (this.picked) this.drawMarked(context, [this.picked], this.theme.turning, []);
    if (this.moment.paper) this.drawWindow(context);
    this.drawFrame(context);
    if (this.otherCamera && !this.moment.paper) {
      context.strokeStyle = this.theme["series-3"];
      // From its own place the edges of what a camera sees are a cross over the picture.
      this.drawCamera(context, cameraOf({ camera: this.otherCamera }), this.isByHand);
    }
    this.drawTriad(context);
  }

  /** Draws the shapes of some handles again, broader. */
  drawMarked(context, handles, colour, dash) {
    context.save();
    context.strokeStyle = colour;
    context.lineWidth = 2.6;
    context.setLineDash(dash);
    const pen = penFor(context, this.projection), piece = this.pieceWith(pen);
    this.scene.eachWithHandle(handles, (shapes, i, { layer }) => {
      if (!this.hiddenLayers.has(layer)) eachPiece(this.projection, shapes, i, piece);
    });
    pen.stroke();
    context.restore();
  }

  /** The edge of the window in the sheet, heavy while it is the current one. */
  drawWindow(context) {
    const { x, y, width, height } = this.boxOf(this.moment.place, this.screen), isCurrent = !this.moment.window;
    context.strokeStyle = isCurrent ? this.theme.ink : this.theme.muted;
    context.lineWidth = isCurrent ? 3 : 1;
    context.strokeRect(x, y, width, height);
  }

  /** The field that was on the screen; what the picture shows beyond it is dimmed. By hand its outline in space. */
  drawFrame(context) {
    context.strokeStyle = this.isByHand ? this.theme.turning : this.theme.line;
    context.lineWidth = 1;
    if (this.isByHand) return this.moment.paper ? undefined : this.drawCamera(context, cameraOf(this.moment), true);
    const { camera, scale, width, height } = this.screen, w = camera.width * scale, h = camera.height * scale;
    const x = (width - w) / 2, y = (height - h) / 2;
    context.save();
    context.fillStyle = this.theme.ground;
    context.globalAlpha = 0.72;
    const outside = new Path2D();
    outside.rect(0, 0, width, height);
    outside.rect(x, y, w, h);
    context.fill(outside, "evenodd");
    context.restore();
    context.strokeRect(x, y, w, h);
  }

  /** The field that another camera saw, and on demand where the camera was. */
  drawCamera(context, shown, hasEye) {
    const projection = projectionOf(shown, 1, 1);
    if (!projection) return;
    const { camera, right, up } = projection;
    const corners = [[-1, -1], [1, -1], [1, 1], [-1, 1]].map(([s, t]) =>
      camera.target.map((v, i) => v + (s * right[i] * camera.width + t * up[i] * camera.height) / 2));
    const flat = [...corners, corners[0], ...corners.flatMap((corner) => [camera.position, corner])].flat();
    const lines = { xyz: flat, lineStarts: [0, hasEye ? 5 : 1], pointStarts: [0, 5, 7, 9, 11, 13] };
    const pen = penFor(context, this.projection);
    eachPiece(this.projection, lines, 0, (...piece) => pen.segment(...piece));
    pen.stroke();
  }

  drawCentre(context) {
    const { x, y, depth } = projector(this.projection)(...this.centre), reach = 9;
    if (!Number.isFinite(x + y) || (this.projection.camera.isPerspective && depth < this.projection.near)) return;
    context.save();
    context.strokeStyle = this.theme.turning;
    context.lineWidth = 2;
    context.beginPath();
    for (const [dx, dy] of [[reach, 0], [0, reach]]) {
      context.moveTo(x - dx, y - dy);
      context.lineTo(x + dx, y + dy);
    }
    context.moveTo(x + 5, y);
    context.arc(x, y, 5, 0, 2 * Math.PI);
    context.stroke();
    context.restore();
  }

  /** The world's axes as seen on the screen, in the lower left corner of what is seen of the model. */
  drawTriad(context) {
    const { right, up, direction, box } = this.projection, height = this.screen.height;
    const [x, y] = box ? [Math.max(box.x, 0) + 44, Math.min(box.y + box.height, height) - 44] : [44, height - 44];
    const axes = ["X", "Y", "Z"].map((name, i) => ({ name, colour: this.axisColours[i], x: right[i], y: up[i], z: direction[i] }));
    // Far axes first, so that near ones are drawn over them.
    axes.sort((a, b) => b.z - a.z);
    Object.assign(context, { lineWidth: 2, font: "600 11px system-ui, sans-serif", textAlign: "center", textBaseline: "middle" });
    for (const axis of axes) {
      context.strokeStyle = context.fillStyle = axis.colour;
      context.beginPath();
      context.moveTo(x, y);
      context.lineTo(x + axis.x * 26, y - axis.y * 26);
      context.stroke();
      // An axis that points at the viewer has no room for its letter.
      if (Math.hypot(axis.x, axis.y) > 0.3) context.fillText(axis.name, x + axis.x * 36, y - axis.y * 36);
    }
  }

  /** The shape within some pixels of a place: its handle, type, layer and colour; null when there is none. */
  pick(x, y) {
    if (!this.projection) return null;
    let nearest = 7, found = null;
    const { shapes, changes, groups, isGone, current } = this.scene;
    const look = (list, i, group) => eachPiece(this.projection, list, i, (x1, y1, x2, y2) => {
      const dx = x2 - x1, dy = y2 - y1, length = dx * dx + dy * dy;
      const share = length > 0 ? Math.max(0, Math.min(1, ((x - x1) * dx + (y - y1) * dy) / length)) : 0;
      const away = Math.hypot(x1 + share * dx - x, y1 + share * dy - y);
      if (away >= nearest) return;
      nearest = away;
      found = { handle: list.handle(i), type: list.type(i), layer: group.layer, colour: group.colour };
    });
    for (const group of groups) {
      if (this.hiddenLayers.has(group.layer)) continue;
      for (let i = group.from; i < group.to; i++) if (!isGone[i]) look(shapes, i, group);
      for (const i of group.changes) if (current.has(i)) look(changes, i, group);
    }
    return found;
  }
}
