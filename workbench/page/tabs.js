// Pages that share one place, as tabs: one tab stop, the arrow keys go from tab to tab.

import { byId, html } from "./dom.js";

export class Tabs {
  /** `pages` are {id, title}; what is not there has no tab. */
  constructor(list, pages) {
    this.pages = pages;
    list.setAttribute("role", "tablist");
    for (const page of this.pages) {
      page.tab = html("button", { type: "button", role: "tab", id: `tab-${page.id}`, "aria-controls": page.id }, page.title);
      page.tab.addEventListener("click", () => this.show(page.id));
      byId(page.id).setAttribute("aria-labelledby", page.tab.id);
      byId(page.id).setAttribute("role", "tabpanel");
      list.append(page.tab);
    }
    list.addEventListener("keydown", (event) => this.key(event));
    if (this.pages.length) this.show(this.pages[0].id);
  }

  key(event) {
    const by = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    if (!by) return;
    event.preventDefault();
    const at = this.pages.findIndex((page) => page.id === this.shown), count = this.pages.length;
    const page = this.pages[(at + by + count) % count];
    this.show(page.id);
    page.tab.focus();
  }

  show(id) {
    this.shown = id;
    for (const page of this.pages) {
      page.tab.setAttribute("aria-selected", page.id === id);
      page.tab.tabIndex = page.id === id ? 0 : -1;
      byId(page.id).hidden = page.id !== id;
    }
  }
}
