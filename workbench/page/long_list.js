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
    element.addEventListener("scroll", () => this.draw());
    element.addEventListener("keydown", (event) => this.key(event));
    element.addEventListener("click", (event) => this.click(event));
    // A list that was hidden had no size.
    new ResizeObserver(() => this.draw(true)).observe(element);
  }

  /** Shows `count` rows from now on, or a text when there is none. */
  fill(count, textForNone) {
    this.count = count;
    this.cursor = this.current = -1;
    this.element.removeAttribute("aria-activedescendant");
    this.inner.style.height = count ? `${count * this.height}px` : "auto";
    if (count === 0) this.inner.replaceChildren(html("div", { class: "empty", role: "option", "aria-disabled": "true" }, textForNone));
    else this.draw(true);
  }

  draw(isForced = false) {
    if (this.count === 0) return;
    const { scrollTop, clientHeight } = this.element;
    const first = Math.max(0, Math.floor(scrollTop / this.height) - 8);
    const end = Math.min(this.count, Math.ceil((scrollTop + clientHeight) / this.height) + 8);
    if (!isForced && first === this.first && end === this.end) return;
    [this.first, this.end] = [first, end];
    const rows = [];
    for (let i = first; i < end; i++) rows.push(this.build(i));
    this.inner.replaceChildren(...rows);
    this.mark();
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

  mark() {
    [...this.inner.children].forEach((row, k) => {
      const i = this.first + k;
      row.setAttribute("aria-selected", i === this.current);
      row.classList.toggle("is-last", i === this.current);
      row.classList.toggle("is-ahead", this.hasCurrent && i > this.current);
      row.classList.toggle("is-cursor", i === this.cursor);
    });
  }

  /** Marks a row as what has happened last, and brings it into sight; -1 for none yet. */
  setCurrent(i) {
    if (i === this.current && this.hasCurrent) return;
    this.hasCurrent = true;
    this.current = i;
    this.reveal(Math.max(i, 0));
    this.mark();
  }

  reveal(i) {
    const { scrollTop, clientHeight } = this.element, top = i * this.height;
    if (top < scrollTop) this.element.scrollTop = top - this.height;
    else if (top + 2 * this.height > scrollTop + clientHeight) this.element.scrollTop = top + 2 * this.height - clientHeight;
    this.draw();
  }

  key(event) {
    if (event.altKey || event.ctrlKey || event.metaKey || this.count === 0) return;
    const from = this.cursor >= 0 ? this.cursor : Math.max(this.current, 0);
    const page = Math.max(1, Math.floor(this.element.clientHeight / this.height) - 1);
    const targets = { ArrowDown: this.cursor < 0 ? from : from + 1, ArrowUp: from - 1, PageDown: from + page, PageUp: from - page, Home: 0,
      End: this.count - 1 };
    if (event.key === "Enter") {
      if (this.cursor >= 0) this.use?.(this.cursor);
    } else if (event.key in targets) this.setCursor(Math.min(Math.max(targets[event.key], 0), this.count - 1));
    else return;
    event.preventDefault();
  }

  setCursor(i) {
    this.cursor = i;
    this.reveal(i);
    this.mark();
    this.element.setAttribute("aria-activedescendant", `${this.name}-${i}`);
  }

  click(event) {
    const row = event.target.closest('[role="option"]');
    if (!row || this.count === 0) return;
    const i = this.first + [...this.inner.children].indexOf(row);
    this.setCursor(i);
    this.use?.(i);
  }
}
