// A list that builds only the rows in sight.

import { html } from "./dom.js";

/** A long list of rows of one height, of which only those in sight are built. `row(i)` makes the row `i`. */
export class LongList {
  static kShort = 400;

  constructor(element) {
    this.element = element;
    this.count = 0;
    this.height = 18;
    element.addEventListener("scroll", () => this.draw());
  }

  fill(count, row) {
    this.count = count;
    this.row = row;
    this.first = this.end = -1;
    this.draw();
  }

  draw() {
    const isShort = this.count <= LongList.kShort;
    const inSight = Math.ceil(this.element.clientHeight / this.height) + 40;
    const first = isShort ? 0 : Math.max(0, Math.floor(this.element.scrollTop / this.height) - 20);
    const end = isShort ? this.count : Math.min(this.count, first + inSight);
    if (first === this.first && end === this.end) return;
    this.first = first;
    this.end = end;
    const rows = [];
    for (let i = first; i < end; i++) rows.push(this.row(i));
    this.element.replaceChildren(...rows);
    if (isShort) return;
    this.element.prepend(html("li", { style: `height:${first * this.height}px`, "aria-hidden": "true" }));
    this.element.append(html("li", { style: `height:${(this.count - end) * this.height}px`, "aria-hidden": "true" }));
  }

  /** The row `i` when it is built. */
  built(i) {
    return i >= this.first && i < this.end ? this.element.children[i - this.first + (this.count > LongList.kShort ? 1 : 0)] : null;
  }

  /** Scrolls so that the row `i` is the last one in sight. */
  reveal(i) {
    const element = this.element, row = this.built(i);
    if (this.count <= LongList.kShort)
      element.scrollTop = row ? row.offsetTop - element.offsetTop - element.clientHeight + 2 * row.offsetHeight : 0;
    else element.scrollTop = (i + 2) * this.height - element.clientHeight;
    this.draw();
  }
}
