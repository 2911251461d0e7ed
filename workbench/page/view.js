// The big picture: the drawing at a moment, one SVG path for each layer and colour.

import { cssColour, themeColour } from "./colour.js";
import { svg } from "./dom.js";
import { cameraOf, drawPolyline, penFor, projectionInto, projectionOf, sheetCamera } from "./projection.js";
import { shapesAt } from "./scene.js";

export class DrawingView {
  constructor(element, note, scene) {
    this.element = element;
    this.note = note;
    this.scene = scene;
    this.hiddenLayers = new Set();
    this.paths = scene.groups.map((group) => svg("path", { "data-layer": group.layer, "data-colour": group.colour }));
    this.selection = svg("path", { class: "selection" });
    this.sheet = svg("rect", { class: "sheet" });
    this.window = svg("rect", { class: "window" });
    this.outside = svg("path", { class: "outside" });
    this.frame = svg("rect", { class: "frame" });
    this.triad = svg("g", { class: "triad" });
    element.append(this.sheet, ...this.paths, this.selection, this.window, this.outside, this.frame, this.triad);
    this.recolour();
  }

  recolour() {
    const ink = themeColour("--ink"), paper = themeColour("--paper");
    this.colours = this.scene.groups.map((group) => cssColour(group.colour, ink, paper));
    this.paths.forEach((path, i) => path.setAttribute("stroke", this.colours[i]));
  }

  /** Shows a text in place of the picture; an empty one removes it. */
  say(text) {
    this.note.textContent = text;
    this.note.hidden = text === "";
  }

  show(moment) {
    const width = this.element.clientWidth, height = this.element.clientHeight;
    this.element.setAttribute("viewBox", `0 0 ${width} ${height}`);
    const screen = moment && projectionOf(moment.paper ? sheetCamera(moment.paper) : cameraOf(moment), width, height);
    const projection = screen && moment.paper ? projectionInto(cameraOf(moment), this.boxOf(moment.place, screen)) : screen;
    this.say(this.noteFor(moment, projection));
    for (const part of this.element.children) part.style.display = projection ? "" : "none";
    if (!projection) return;
    const selected = this.scene.selections[moment.selection] || new Set();
    const selectionPen = penFor(projection);
    this.scene.groups.forEach((group, i) => this.drawGroup(moment, projection, group, i, selected, selectionPen));
    this.selection.setAttribute("d", selectionPen.text.join(""));
    this.drawLayout(moment, screen);
    this.drawFrame(screen);
    this.drawTriad(projection, screen);
  }

  /** Place of a part of the sheet in the picture. */
  boxOf([x, y, width, height], { camera, scale, cx, cy }) {
    // Places are centres with y up; a box has its upper left corner with y down.
    return { x: cx + (x - width / 2 - camera.target[0]) * scale, y: cy - (y + height / 2 - camera.target[1]) * scale,
      width: width * scale, height: height * scale };
  }

  /** The sheet and the window in it; the window's edge is heavy while it is the current one. */
  drawLayout(moment, screen) {
    for (const [part, place] of [[this.sheet, moment.sheet], [this.window, moment.place]]) {
      part.style.display = moment.paper ? "" : "none";
      if (!moment.paper) continue;
      for (const [key, value] of Object.entries(this.boxOf(place, screen))) part.setAttribute(key, value);
    }
    this.window.setAttribute("class", moment.window ? "window" : "window is-current");
  }

  noteFor(moment, projection) {
    if (!moment) return "No moment was recorded: there is nothing to show.";
    if (!projection) return "The camera of this moment looks nowhere: its values cannot be drawn with.";
    const isEmpty = this.scene.groups.every((group) => shapesAt(this.scene, moment, group).length === 0);
    return isEmpty ? "The drawing holds nothing that can be drawn." : "";
  }

  drawGroup(moment, projection, group, i, selected, selectionPen) {
    const isHidden = this.hiddenLayers.has(group.layer);
    this.paths[i].style.display = isHidden ? "none" : "";
    if (isHidden) return;
    const pen = penFor(projection);
    for (const shape of shapesAt(this.scene, moment, group)) {
      const pens = selected.has(shape.handle) ? [pen, selectionPen] : [pen];
      for (const line of shape.lines) for (const p of pens) drawPolyline(projection, p, line);
    }
    this.paths[i].setAttribute("d", pen.text.join(""));
  }

  /** The field that was on the screen; what the picture shows beyond it is dimmed. */
  drawFrame({ camera, scale, width, height }) {
    const w = camera.width * scale, h = camera.height * scale, x = (width - w) / 2, y = (height - h) / 2;
    this.outside.setAttribute("d", `M0 0H${width}V${height}H0ZM${x} ${y}h${w}v${h}h${-w}Z`);
    for (const [key, value] of Object.entries({ x, y, width: w, height: h })) this.frame.setAttribute(key, value);
  }

  /** The world's axes as seen on the screen. */
  drawTriad({ right, up, direction, height, box }, screen) {
    const axes = [["X", 1], ["Y", 3], ["Z", 5]].map(([name, index], i) => ({ name, index, x: right[i], y: up[i], z: direction[i] }));
    // Far axes first, so that near ones are drawn over them.
    axes.sort((a, b) => b.z - a.z);
    const ink = themeColour("--ink"), paper = themeColour("--paper");
    // In the lower left corner of what is seen of the model.
    const corner = box ? [Math.max(box.x, 0) + 44, Math.min(box.y + box.height, screen.height) - 44] : [44, height - 44];
    this.triad.replaceChildren(...axes.flatMap((a) => {
      const colour = cssColour(a.index, ink, paper), at = corner;
      const label = svg("text", { x: at[0] + a.x * 36, y: at[1] - a.y * 36, fill: colour }, a.name);
      const line = svg("path", { d: `M${at[0]} ${at[1]}l${a.x * 26} ${-a.y * 26}`, stroke: colour, "stroke-width": 2 });
      // An axis that points at the viewer has no room for its letter.
      return Math.hypot(a.x, a.y) > 0.3 ? [line, label] : [line];
    }));
  }
}
