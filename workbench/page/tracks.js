// Tracks over time: what the cap did, each pass, what happened in the session and on the command line, problems.

import { clearedContext } from "./canvas.js";
import { cssValue } from "./colour.js";
import { duration, html } from "./dom.js";

const kRow = 15, kReach = 5;

export class Tracks {
  /** `marks` are rows of {title, colour, entries: [[time, text], ...]}, in order of time. */
  constructor(element, { range, history, marks, goTo }) {
    Object.assign(this, { range, history, marks: marks.filter(({ entries }) => entries.length), goTo });
    const titles = ["Cap", "Passes", ...this.marks.map(({ title }) => title)];
    this.canvas = html("canvas", { "aria-hidden": "true", style: `height:${titles.length * kRow}px` });
    this.now = html("div", { class: "now" });
    this.hint = html("div", { class: "hint", hidden: "" });
    this.body = html("div", { class: "track-body", tabindex: "0", role: "group",
      "aria-label": "Tracks over time: arrow keys pan, plus and minus zoom, 0 shows all" }, this.canvas, this.now, this.hint);
    element.replaceChildren(html("div", { class: "track-titles" }, ...titles.map((title) => html("span", {}, title))), this.body);
    range.attach(this.body, (time, event) => this.click(time, event));
    this.body.addEventListener("pointermove", (event) => this.point(event));
    this.body.addEventListener("pointerleave", () => { this.hint.hidden = true; });
    range.listen(() => this.draw());
    new ResizeObserver(() => this.draw()).observe(this.body);
  }

  draw() {
    const { context, width } = clearedContext(this.canvas);
    this.width = width;
    if (width === 0) return;
    this.drawCap(context);
    this.drawPasses(context);
    this.marks.forEach(({ entries, colour }, k) => this.drawMarks(context, entries, cssValue(colour), (2 + k) * kRow));
    this.showTime(this.time);
  }

  x(time) { return this.range.shareOf(time) * this.width; }

  /** Calls `see(x from, x to, index)` for the entries in sight; `timeOf(i)` in order of time, each lasts to the next. */
  eachSeen(count, timeOf, see) {
    let low = 0, high = count;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (timeOf(middle) <= this.range.min) low = middle + 1;
      else high = middle;
    }
    for (let i = Math.max(0, low - 1); i < count && timeOf(i) <= this.range.max; i++)
      see(this.x(timeOf(i)), i + 1 < count ? this.x(timeOf(i + 1)) : this.width, i);
  }

  /** Pushes above the middle, turns below. */
  drawCap(context) {
    const { capTimes, capAxes } = this.history, middle = kRow / 2, columns = [new Float64Array(this.width + 1), new Float64Array(this.width + 1)];
    this.most ??= [this.history.largest(0, 3), this.history.largest(3, 6)];
    this.eachSeen(capTimes.length, (i) => capTimes[i], (from, to, i) => {
      columns.forEach((column, half) => {
        let size = 0;
        for (let k = 3 * half; k < 3 * half + 3; k++) size = Math.max(size, Math.abs(capAxes[6 * i + k]) / this.most[half]);
        if (size > 0) for (let x = Math.max(0, Math.floor(from)); x <= Math.min(to, this.width - 1); x++) column[x] = Math.max(column[x], size);
      });
    });
    columns.forEach((column, half) => {
      context.fillStyle = cssValue(half ? "--turning" : "--accent");
      column.forEach((size, x) => {
        const height = size > 0 ? Math.max(1, size * (middle - 1)) : 0;
        if (height) context.fillRect(x, half ? middle : middle - height, 1, height);
      });
    });
  }

  /** A mark for each pass; they grow together to a bar where there are more than pixels. */
  drawPasses(context) {
    const { times, count } = this.history, fine = new Uint8Array(Math.ceil(this.width) * 2 + 2);
    this.eachSeen(count, (i) => times[i], (x, _, i) => {
      if (x >= 0 && this.history.isDrawn(i)) fine[Math.round(x * 2)] = 1;
    });
    context.fillStyle = cssValue("--ink");
    fine.forEach((isThere, half) => { if (isThere) context.fillRect(half / 2, kRow + 3, 0.5, kRow - 5); });
  }

  drawMarks(context, entries, colour, top) {
    context.fillStyle = colour;
    let last = -Infinity;
    this.eachSeen(entries.length, (i) => entries[i][0], (x) => {
      if (x < 0 || x - last < 1) return;
      context.fillRect(x - 1, top + 2, 2, kRow - 4);
      last = x;
    });
  }

  /** The mark at a place: its time and text; null when there is none. */
  markAt(x, y) {
    const row = this.marks[Math.floor(y / kRow) - 2];
    if (!row) return null;
    let found = null, nearest = kReach;
    this.eachSeen(row.entries.length, (i) => row.entries[i][0], (at, _, i) => {
      if (Math.abs(at - x) >= nearest) return;
      nearest = Math.abs(at - x);
      found = row.entries[i];
    });
    return found;
  }

  placeOf(event) {
    const box = this.body.getBoundingClientRect();
    return [event.clientX - box.x, event.clientY - box.y];
  }

  click(time, event) {
    const mark = this.markAt(...this.placeOf(event));
    this.goTo(mark ? mark[0] : time);
  }

  point(event) {
    const [x, y] = this.placeOf(event), mark = this.markAt(x, y);
    this.hint.hidden = !mark;
    this.body.style.cursor = mark ? "pointer" : "";
    if (!mark) return;
    this.hint.textContent = `${duration(mark[0])}  ${mark[1]}`;
    this.hint.style.cssText = x < this.width / 2 ? `left:${x + 8}px;top:${y + 14}px` : `right:${this.width - x + 8}px;top:${y + 14}px`;
  }

  showTime(time) {
    this.time = time;
    const share = this.range.shareOf(time);
    this.now.style.display = share >= 0 && share <= 1 ? "" : "none";
    this.now.style.transform = `translateX(${share * this.width}px)`;
  }
}
