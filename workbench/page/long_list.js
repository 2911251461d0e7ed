// A list of any length that builds only the rows in sight. It is one tab stop: the arrow keys move its cursor, Enter and
// a click use a row.

import { html } from "./dom.js";

let lists = 0;

export class LongList {
  /** `row(i)` gives the contents of row `i`; `use(i)` is called for a row that is clicked or entered. */
  constructor(element, { row, use = null }) {
    this.element = element;
    this.name = `list${++lists}`;
    this.row = row;
    this.use = use;
    this.count = 0;
    this.cursor = this.current = -1;
    this.height = 18;
    this.inner = html("div", { role: "presentation" });
    element.classList.add("long-list");
    element.setAttribute("role", "listbox");
    element.tabIndex = 0;
    element.replaceChildren(this.inner);
    this.rows = new Map();
    this.top = this.shownHeight = 0;
    element.addEventListener("scroll", () => {
      this.top = element.scrollTop;
      this.draw();
    });
    element.addEventListener("keydown", (event) => this.key(event));
    element.addEventListener("click", (event) => this.click(event));
    // A list that was hidden had no size.
    new ResizeObserver(() => {
      this.shownHeight = element.clientHeight;
      this.top = element.scrollTop;
      this.draw();
    }).observe(element);
  }

  /** Shows `count` rows from now on, or a text when there is none. */
  fill(count, textForNone) {
    this.count = count;
    this.cursor = this.current = -1;
    this.hasCurrent = false;
    this.rows.clear();
    this.inner.replaceChildren();
    this.element.removeAttribute("aria-activedescendant");
    this.inner.style.height = count ? `${count * this.height}px` : "auto";
    if (count === 0) this.inner.replaceChildren(html("div", { class: "empty", role: "option", "aria-disabled": "true" }, textForNone));
    else this.draw();
  }

  /** Builds the rows that have come into sight, and removes those that have left it. */
  draw() {
    if (this.count === 0) return;
    const first = Math.max(0, Math.floor(this.top / this.height) - 8);
    const end = Math.min(this.count, Math.ceil((this.top + this.shownHeight) / this.height) + 8);
    for (const [i, row] of this.rows)
      if (i < first || i >= end) {
        row.remove();
        this.rows.delete(i);
      }
    for (let i = first; i < end; i++) if (!this.rows.has(i)) this.insert(i);
  }

  insert(i) {
    const row = this.build(i);
    this.rows.set(i, row);
    // In the order of the rows also where it is above those that are there.
    this.inner.insertBefore(row, this.rows.get(i + 1) ?? null);
    this.mark(i);
  }

  build(i) {
    const row = this.row(i);
    row.id = `${this.name}-${i}`;
    row.style.top = `${i * this.height}px`;
    row.setAttribute("role", "option");
    row.setAttribute("aria-posinset", i + 1);
    row.setAttribute("aria-setsize", this.count);
    return row;
  }

  mark(i) {
    const row = this.rows.get(i);
    if (!row) return;
    row.setAttribute("aria-selected", i === this.current);
    row.classList.toggle("is-last", i === this.current);
    row.classList.toggle("is-ahead", this.hasCurrent && i > this.current);
    row.classList.toggle("is-cursor", i === this.cursor);
  }

  /** Marks a row as what has happened last, and brings it into sight; -1 for none yet. */
  setCurrent(i) {
    if (i === this.current && this.hasCurrent) return;
    const isFirst = !this.hasCurrent, [low, high] = [Math.min(i, this.current), Math.max(i, this.current)];
    this.hasCurrent = true;
    this.current = i;
    this.reveal(Math.max(i, 0));
    // What is between is no longer ahead, or is so again.
    for (const k of this.rows.keys()) if (isFirst || (k >= low && k <= high)) this.mark(k);
  }

  reveal(i) {
    const top = i * this.height;
    if (top < this.top) this.scrollTo(top - this.height);
    else if (top + 2 * this.height > this.top + this.shownHeight) this.scrollTo(top + 2 * this.height - this.shownHeight);
  }

  scrollTo(top) {
    this.top = Math.max(0, Math.min(top, this.count * this.height - this.shownHeight));
    this.element.scrollTop = this.top;
    this.draw();
  }

  key(event) {
    if (event.altKey || event.ctrlKey || event.metaKey || this.count === 0) return;
    const from = this.cursor >= 0 ? this.cursor : Math.max(this.current, 0);
    const page = Math.max(1, Math.floor(this.shownHeight / this.height) - 1);
    const targets = { ArrowDown: this.cursor < 0 ? from : from + 1, ArrowUp: from - 1, PageDown: from + page, PageUp: from - page, Home: 0,
      End: this.count - 1 };
    if (event.key === "Enter") {
      if (this.cursor >= 0) this.use?.(this.cursor);
    } else if (event.key in targets) this.setCursor(Math.min(Math.max(targets[event.key], 0), this.count - 1));
    else return;
    event.preventDefault();
  }

  setCursor(i) {
    const before = this.cursor;
    this.cursor = i;
    this.reveal(i);
    for (const k of [before, i]) this.mark(k);
    this.element.setAttribute("aria-activedescendant", `${this.name}-${i}`);
  }

  click(event) {
    const row = event.target.closest('[role="option"]');
    if (!row || this.count === 0) return;
    const i = Number(row.getAttribute("aria-posinset")) - 1;
    this.setCursor(i);
    this.use?.(i);
  }
}
