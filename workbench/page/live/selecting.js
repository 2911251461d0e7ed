// Selection by click and by window: the handles become the host's pre-selection.

import { entitiesIn, entityAt } from "./picking.js";

const kStill = 4;

export class Selecting {
  constructor(canvas, view, { drawing, link, redraw }) {
    Object.assign(this, { canvas, view, drawing, link, redraw });
    canvas.addEventListener("pointerdown", (event) => this.begin(event));
    canvas.addEventListener("pointermove", (event) => this.drag(event));
    canvas.addEventListener("pointerup", (event) => this.end(event));
    canvas.addEventListener("pointercancel", () => this.forget());
    canvas.addEventListener("keydown", (event) => event.key === "Escape" && this.clear());
  }

  at({ offsetX, offsetY }) { return [offsetX, offsetY]; }

  begin(event) {
    if (event.button !== 0) return;
    this.from = this.at(event);
    this.canvas.setPointerCapture(event.pointerId);
  }

  drag(event) {
    if (!this.from) return;
    const to = this.at(event);
    this.view.marquee = this.isStill(to) ? null : [...this.from, ...to];
    this.redraw();
  }

  end(event) {
    if (!this.from) return;
    const to = this.at(event), window = [...this.from, ...to], isClick = this.isStill(to);
    this.forget();
    const drawing = this.drawing();
    if (!drawing) return;
    const found = isClick ? [entityAt(this.view.shown, drawing, to)].filter(Boolean) : entitiesIn(this.view.shown, drawing, window);
    if (found.length) this.select(found, event.shiftKey);
  }

  isStill([x, y]) { return Math.hypot(x - this.from[0], y - this.from[1]) < kStill; }

  forget() {
    this.from = null;
    this.view.marquee = null;
    this.redraw();
  }

  /** Adds to the selection, or with Shift removes from it. */
  select(handles, isRemoved) {
    const selection = new Set(this.view.selection);
    for (const handle of handles) selection[isRemoved ? "delete" : "add"](handle);
    this.link.act(selection.size ? `select ${[...selection].join(" ")}` : "select none");
  }

  clear() { this.link.act("select none"); }
}
