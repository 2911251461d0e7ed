// The small view: the camera's path around the drawing, seen along one of the world's axes.

import { svg } from "./dom.js";
import { PathPen, cameraOf, projectionOf } from "./projection.js";
import { boundsOf, lastAt } from "./scene.js";

export class PathView {
  constructor(element, note, scene, history) {
    this.element = element;
    this.scene = scene;
    this.times = [];
    this.points = [];
    for (let i = 0; i < history.count; i++) {
      if (!history.isOfModel(i)) continue;
      this.times.push(history.time(i));
      this.points.push(history.position(i));
    }
    this.axes = [0, 1];
    this.plan = svg("path", { class: "plan" });
    this.ahead = svg("path", { class: "ahead" });
    this.behind = svg("path", { class: "behind" });
    this.field = svg("path", { class: "field" });
    this.sight = svg("path", { class: "sight" });
    this.eye = svg("circle", { r: 4 });
    this.label = svg("text", { x: 8, y: 16 });
    element.append(this.plan, this.ahead, this.behind, this.field, this.sight, this.eye, this.label);
    note.hidden = this.points.length > 1;
    note.textContent = "The camera did not move.";
  }

  /** Lays the picture out again, after a change of its size or of the plane. */
  layOut() {
    const [a, b] = this.axes;
    const width = this.element.clientWidth, height = this.element.clientHeight, margin = 14;
    const box = boundsOf(this.scene.groups);
    const all = this.points.concat(box || []).concat(this.scene.moments.filter((m) => m.camera).map((m) => m.camera.slice(0, 3)))
      .filter((p) => Number.isFinite(p[a]) && Number.isFinite(p[b]));
    const range = (i) => all.reduce(([l, h], p) => [Math.min(l, p[i]), Math.max(h, p[i])], [Infinity, -Infinity]);
    const [[left, right], [bottom, top]] = all.length ? [range(a), range(b)] : [[-1, 1], [-1, 1]];
    // A camera that never moves along an axis gives a range of 0, which must not become a divisor.
    const scale = Math.min((width - 2 * margin) / (right - left || 1), (height - 2 * margin) / (top - bottom || 1));
    this.at = (p) => [width / 2 + (p[a] - (left + right) / 2) * scale, height / 2 - (p[b] - (bottom + top) / 2) * scale];
    this.width = width;
    this.height = height;
    this.element.setAttribute("viewBox", `0 0 ${width} ${height}`);
    this.drawPlan();
    this.thin();
    this.ahead.setAttribute("d", this.lineOf(this.drawn.length));
  }

  drawPlan() {
    const pen = new PathPen(this.width, this.height);
    for (const group of this.scene.groups)
      for (const shape of group.shapes)
        for (const line of shape.lines)
          for (let i = 3; i < line.length; i += 3)
            pen.segment(...this.at(line.subarray(i - 3, i)), ...this.at(line.subarray(i, i + 3)));
    this.plan.setAttribute("d", pen.text.join(""));
  }

  /** Leaves out what is less than a pixel away: an hour of motion has more points than a screen can show. */
  thin() {
    this.drawn = [];
    this.drawnTimes = [];
    let last = [Infinity, Infinity];
    this.points.forEach((point, i) => {
      const at = this.at(point);
      if (Math.hypot(at[0] - last[0], at[1] - last[1]) < 1 && i + 1 < this.points.length) return;
      this.drawn.push(at);
      this.drawnTimes.push(this.times[i]);
      last = at;
    });
  }

  lineOf(count) {
    const pen = new PathPen(this.width, this.height);
    for (let i = 1; i < count; i++) pen.segment(...this.drawn[i - 1], ...this.drawn[i]);
    return pen.text.join("");
  }

  show(moment, time) {
    const projection = moment && this.at ? projectionOf(cameraOf(moment), 1, 1) : null;
    for (const part of [this.field, this.sight, this.eye]) part.style.display = projection ? "" : "none";
    if (!this.at) return;
    const count = lastAt(this.drawnTimes, time, (t) => t) + 1;
    if (count !== this.count || this.drawn !== this.countedIn) this.behind.setAttribute("d", this.lineOf(count));
    this.count = count;
    this.countedIn = this.drawn;
    if (projection) this.drawCamera(projection.camera, projection, Boolean(moment.window));
  }

  drawCamera(camera, { right, up }, isPaper) {
    const corner = (s, t) => camera.target.map((v, i) => v + (s * right[i] * camera.width + t * up[i] * camera.height) / 2);
    const corners = [[-1, -1], [1, -1], [1, 1], [-1, 1]].map(([s, t]) => this.at(corner(s, t)));
    const eye = this.at(camera.position);
    // A perspective view sees along the edges of a pyramid, parallel projection along one direction.
    const ends = camera.isPerspective ? corners : [this.at(camera.target)];
    this.field.setAttribute("d", `M${corners.map((c) => c.join(" ")).join("L")}Z`);
    this.sight.setAttribute("d", ends.map((c) => `M${eye.join(" ")}L${c.join(" ")}`).join(""));
    this.eye.setAttribute("cx", eye[0]);
    this.eye.setAttribute("cy", eye[1]);
    this.label.textContent = isPaper ? "sheet" : "";
  }
}
