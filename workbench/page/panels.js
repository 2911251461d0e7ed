// The lists and tables around the picture.

import { byId, html, plural, readable, seconds } from "./dom.js";
import { LongList } from "./long_list.js";
import { cameraOf } from "./projection.js";
import { lastAt } from "./scene.js";

export class CapPanel {
  constructor(element, range) {
    this.range = range;
    this.rows = ["x", "y", "z", "rx", "ry", "rz"].map((name, i) => {
      const bar = html("i"), value = html("b");
      element.append(html("span", { class: "muted" }, name), html("span", { class: i < 3 ? "meter" : "meter turn" }, bar), value);
      return { bar, value };
    });
  }

  show(moment) {
    this.rows.forEach(({ bar, value }, i) => {
      const v = moment ? moment.cap[i] : 0;
      const share = (Math.abs(v) / this.range) * 50;
      bar.style.left = `${v < 0 ? 50 - share : 50}%`;
      bar.style.width = `${share}%`;
      value.textContent = moment ? String(v).replace("-", "\u2212") : "\u2013";
    });
  }
}

/** The camera in words, in the corner of the picture. */
export function showReadout(element, moment) {
  const rows = [];
  if (moment) {
    const camera = cameraOf(moment);
    const triple = (p) => p.map(readable).join(", ");
    const isSheet = Boolean(moment.window);
    const kind = isSheet ? "paper space" : camera.isPerspective ? "perspective" : "parallel";
    const [width, height] = isSheet ? moment.paper.slice(2) : [camera.width, camera.height];
    rows.push(["Viewport", `${moment.viewport}, ${kind}`], ["Field", `${readable(width)} \u00d7 ${readable(height)}`]);
    if (isSheet) rows.push(["Centre", triple(moment.paper.slice(0, 2))]);
    else rows.push(["Camera", triple(camera.position)], ["Target", triple(camera.target)]);
  }
  element.replaceChildren(...rows.flatMap(([name, value]) => [html("dt", {}, name), html("dd", {}, value)]));
}

export class LayersPanel {
  constructor(element, view, changed) {
    this.view = view;
    this.changed = changed;
    this.layers = new Map();
    view.scene.groups.forEach((group, i) => {
      const layer = this.layers.get(group.layer) || { count: 0, groups: [] };
      layer.count += group.shapes.length;
      layer.groups.push(i);
      this.layers.set(group.layer, layer);
    });
    for (const [name, layer] of this.layers) element.append(this.row(name, layer));
    if (this.layers.size === 0) element.append(html("li", { class: "empty" }, "No layer holds anything."));
    byId("layers-all").addEventListener("click", () => this.setAll(true));
    byId("layers-none").addEventListener("click", () => this.setAll(false));
    this.recolour();
  }

  row(name, layer) {
    layer.box = html("input", { type: "checkbox" });
    layer.box.checked = true;
    layer.box.addEventListener("change", () => this.set(name, layer.box.checked));
    layer.swatches = layer.groups.slice(0, 4).map(() => html("span", { class: "swatch" }));
    const colours = layer.groups.map((i) => this.view.scene.groups[i].colour);
    const hint = `${name}: colour ${colours.join(", ")}`;
    return html("li", {}, html("label", { title: hint }, layer.box, ...layer.swatches, html("span", { class: "name" }, name),
      html("span", { class: "muted" }, String(layer.count))));
  }

  recolour() {
    for (const layer of this.layers.values())
      layer.swatches.forEach((swatch, k) => (swatch.style.background = this.view.colours[layer.groups[k]]));
  }

  set(name, isShown) {
    if (isShown) this.view.hiddenLayers.delete(name);
    else this.view.hiddenLayers.add(name);
    this.changed();
  }

  setAll(isShown) {
    for (const [name, layer] of this.layers) {
      layer.box.checked = isShown;
      this.set(name, isShown);
    }
  }
}

const kSymbols = { "\n": "\u21b5", "\r": "\u2190", "\t": "\u21e5", "\u001b": "^[", "\u0003": "^C" };

/** Text with its control characters shown as symbols: they matter on a command line. */
function visibleText(text) {
  return text.split(/([\u0000-\u001f])/).map((piece) =>
    /^[\u0000-\u001f]$/.test(piece)
      ? html("span", { class: "symbol" }, kSymbols[piece] || `\\x${piece.charCodeAt(0).toString(16).padStart(2, "0")}`)
      : piece);
}

export class CommandsPanel {
  constructor(element, lines, jump) {
    this.lines = lines;
    this.jump = jump;
    this.last = -1;
    byId("commands-count").textContent = lines.length ? plural(lines.length, "line", "lines") : "";
    if (!lines.length) return element.append(html("li", { class: "empty" }, "Nothing was sent or printed."));
    this.list = new LongList(element);
    this.list.fill(lines.length, (i) => this.row(i));
  }

  row(i) {
    const [time, kind, text] = this.lines[i];
    const button = html("button", { type: "button", class: kind, title: `Show the moment at ${seconds(time)} s` },
      html("span", { class: "time" }, seconds(time)), html("span", { class: "kind" }, kind),
      html("span", { class: "text" }, ...visibleText(text)));
    button.addEventListener("click", () => this.jump(time));
    const row = html("li", {}, button);
    this.mark(row, i);
    return row;
  }

  mark(row, i) {
    row.firstChild.classList.toggle("is-past", i <= this.last);
    row.firstChild.classList.toggle("is-last", i === this.last);
  }

  show(time) {
    const last = lastAt(this.lines, time, (line) => line[0]);
    if (last === this.last || !this.list) return;
    this.last = last;
    this.list.reveal(Math.max(last, 0));
    for (let i = this.list.first; i < this.list.end; i++) this.mark(this.list.built(i), i);
  }
}

const kLogEntry = /^(\d\d):(\d\d):(\d\d)\.(\d{3})\|(\w{3})\|/;
const kLogHead = /^(-{12}|Lumetra logfile '| {4}Time {4}\|)/;
const kDayMs = 24 * 3600 * 1000;

/** The log's lines, each with the level and time of the entry it belongs to; the header's lines have none. */
function readLog(text) {
  let level = "", time = 0, day = 0;
  return text.replace(/\n$/, "").split("\n").map((line) => {
    const entry = kLogEntry.exec(line);
    if (entry) {
      const [hours, minutes, secs, ms] = entry.slice(1, 5).map(Number);
      const ofDay = ((hours * 60 + minutes) * 60 + secs) * 1000 + ms;
      if (ofDay + day < time - kDayMs / 2) day += kDayMs;
      time = ofDay + day;
      level = entry[5];
    } else if (kLogHead.test(line)) level = "";
    return { level, line, time, isEntry: Boolean(entry) };
  });
}

export class LogPanel {
  constructor(element, data, jump) {
    this.element = element;
    this.jump = jump;
    this.note = data.log_note || "The module wrote no log.";
    byId("log-note").textContent = data.log === "" ? "" : data.log_note;
    this.lines = data.log === "" ? [] : readLog(data.log);
    this.follows = data.log_follows;
    this.list = new LongList(element);
    this.level = byId("log-level");
    this.filter = byId("log-filter");
    const counts = new Map();
    for (const l of this.lines) if (l.level !== "") counts.set(l.level, (counts.get(l.level) || 0) + (l.isEntry ? 1 : 0));
    for (const [level, count] of counts) this.level.append(html("option", { value: level }, `${level} (${count})`));
    this.level.disabled = this.filter.disabled = this.lines.length === 0;
    this.level.addEventListener("change", () => this.fill());
    this.filter.addEventListener("input", () => this.fill());
    this.fill();
  }

  fill() {
    const wanted = this.filter.value.toLowerCase(), level = this.level.value;
    this.found = this.lines.filter((l) => (!level || l.level === level) && l.line.toLowerCase().includes(wanted));
    this.last = -1;
    const all = plural(this.lines.length, "line", "lines");
    byId("log-count").textContent = this.lines.length === 0 ? "" : this.found.length === this.lines.length ? all : `${this.found.length} of ${all}`;
    if (this.found.length) return this.list.fill(this.found.length, (i) => this.row(i));
    this.list.count = 0;
    this.element.replaceChildren(html("li", { class: "empty" }, this.lines.length ? "No line of the log matches this filter." : this.note));
  }

  row(i) {
    const { level, line, time } = this.found[i];
    const row = html("li", { class: level || "head" }, line || "\u00a0");
    row.classList.toggle("is-last", i === this.last);
    if (this.follows && level) row.addEventListener("click", () => this.jump(time));
    return row;
  }

  /** Marks the last line that had been logged at that time. */
  show(time) {
    if (!this.follows || !this.found.length) return;
    const last = lastAt(this.found, time, (l) => l.time);
    if (last === this.last) return;
    const before = this.list.built(this.last);
    if (before) before.classList.remove("is-last");
    this.last = last;
    if (last < 0) return;
    this.list.reveal(last);
    const row = this.list.built(last);
    if (row) row.classList.add("is-last");
  }
}

/** The session's events; a click goes to the time of one. */
export class EventsPanel {
  constructor(element, events, jump) {
    this.events = events;
    this.jump = jump;
    this.last = -1;
    this.list = new LongList(element);
    this.list.fill(events.length, (i) => this.row(i));
  }

  row(i) {
    const [time, line, text] = this.events[i];
    const button = html("button", { type: "button", title: `Line ${line} of the session` },
      html("span", { class: "time" }, seconds(time)), html("span", { class: "text" }, text));
    button.addEventListener("click", () => this.jump(time));
    const row = html("li", {}, button);
    button.classList.toggle("is-last", i === this.last);
    return row;
  }

  show(time) {
    const last = lastAt(this.events, time, (event) => event[0]);
    if (last === this.last) return;
    const before = this.list.built(this.last);
    if (before) before.firstChild.classList.remove("is-last");
    this.last = last;
    const row = this.list.built(last);
    if (row) row.firstChild.classList.add("is-last");
  }
}

/** Rows of a table: the keys that were pressed and their effects; a click shows the moment after one. */
export class KeysPanel {
  constructor(element, keys, jump) {
    this.keys = keys;
    this.rows = keys.map(([time, name, sent, view]) => {
      const button = html("button", { type: "button", title: "Show the view after this key" }, seconds(time));
      button.addEventListener("click", () => jump(time));
      const texts = sent.length ? sent.flatMap((text) => [html("span", { class: "sent" }, ...visibleText(text)), " "]) : ["nothing"];
      return html("tr", {}, html("td", {}, button), html("td", {}, name), html("td", {}, ...texts),
        html("td", { class: view ? "" : "muted" }, view || "not changed"));
    });
    element.append(...this.rows);
  }

  show(time) {
    const last = lastAt(this.keys, time, (key) => key[0]);
    if (last === this.last) return;
    if (this.rows[this.last]) this.rows[this.last].classList.remove("is-last");
    if (this.rows[last]) this.rows[last].classList.add("is-last");
    this.last = last;
  }
}

export function showFunctions(element, functions) {
  functions.forEach(([label, macro], number) => element.append(html("tr", {}, html("td", { class: "number" }, String(number)),
    html("td", {}, label), html("td", { class: "macro" }, macro))));
}

/** Pages that share one place. A page without contents has no tab. */
export class Tabs {
  constructor(list, pages) {
    this.pages = pages.filter((page) => page.isThere);
    for (const page of this.pages) {
      page.tab = html("button", { type: "button", role: "tab", id: `tab-${page.id}`, "aria-controls": page.id }, page.title);
      page.tab.addEventListener("click", () => this.show(page.id));
      byId(page.id).setAttribute("aria-labelledby", page.tab.id);
      list.append(page.tab);
    }
    this.show(this.pages[0].id);
  }

  show(id) {
    for (const page of this.pages) {
      page.tab.setAttribute("aria-selected", page.id === id);
      byId(page.id).hidden = page.id !== id;
    }
  }
}

export function showSummary(data) {
  const verdict = data.clean ? "\u2713 Clean" : "\u2717 Not clean";
  const meaning = data.clean ? "\u2713 Clean: no rule was broken" : "\u2717 Not clean: a rule was broken";
  for (const [id, text] of [["verdict", verdict], ["summary-verdict", meaning]]) {
    byId(id).textContent = text;
    byId(id).classList.add(data.clean ? "is-clean" : "is-not-clean");
  }
  for (const [what, howMuch] of data.summary)
    byId("summary").append(html("tr", {}, html("th", { scope: "row" }, what), html("td", {}, howMuch)));
}
