// The lists and tables around the picture.

function html(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

const byId = (id) => document.getElementById(id);
const seconds = (ms) => (ms / 1000).toFixed(2);
const plural = (n, one, many) => `${n} ${n === 1 ? one : many}`;

/** A number of the readout: short, but never so short that it says zero of what is not. */
function readable(value) {
  if (!Number.isFinite(value)) return "not a number";
  const size = Math.abs(value);
  return size !== 0 && (size < 0.01 || size >= 1e7) ? value.toExponential(2) : String(Number(value.toFixed(2)));
}

/** The largest deflection of the axes from `begin` up to before `end` in all moments; at least 1. */
function largestOf(moments, begin, end) {
  return moments.reduce((most, m) => Math.max(most, ...m.cap.slice(begin, end).map(Math.abs)), 1);
}

class CapPanel {
  constructor(element, moments) {
    this.range = largestOf(moments, 0, 6);
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
function showReadout(element, moment) {
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

class LayersPanel {
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

class CommandsPanel {
  constructor(element, lines, jump) {
    this.element = element;
    this.lines = lines;
    this.rows = lines.map(([time, kind, text]) => {
      const button = html("button", { type: "button", class: kind, title: `Show the moment at ${seconds(time)} s` },
        html("span", { class: "time" }, seconds(time)), html("span", { class: "kind" }, kind),
        html("span", { class: "text" }, ...visibleText(text)));
      button.addEventListener("click", () => jump(time));
      element.append(html("li", {}, button));
      return button;
    });
    byId("commands-count").textContent = lines.length ? plural(lines.length, "line", "lines") : "";
    if (!lines.length) element.append(html("li", { class: "empty" }, "Nothing was sent or printed."));
  }

  show(time) {
    const last = lastAt(this.lines, time, (line) => line[0]);
    if (last === this.last) return;
    this.last = last;
    this.rows.forEach((row, i) => {
      row.classList.toggle("is-past", i <= last);
      row.classList.toggle("is-last", i === last);
    });
    const row = this.rows[Math.max(last, 0)];
    if (row) this.element.scrollTop = row.offsetTop - this.element.offsetTop - this.element.clientHeight + 2 * row.offsetHeight;
  }
}

const kLogEntry = /^\d\d:\d\d:\d\d\.\d{3}\|(\w{3})\|/;
const kLogHead = /^(-{12}|Lumetra logfile '| {4}Time {4}\|)/;
const kLogRows = 1000;

/** The log's lines with the level of the entry each belongs to; the header's lines have none. */
function readLog(text) {
  let level = "";
  return text.replace(/\n$/, "").split("\n").map((line) => {
    const entry = kLogEntry.exec(line);
    if (entry) level = entry[1];
    else if (kLogHead.test(line)) level = "";
    return { level, line };
  });
}

class LogPanel {
  constructor(element, text, note) {
    this.element = element;
    this.note = note;
    byId("log-note").textContent = text === "" ? "" : note;
    this.lines = text === "" ? [] : readLog(text);
    this.level = byId("log-level");
    this.filter = byId("log-filter");
    this.more = byId("log-more");
    const levels = [...new Set(this.lines.map((l) => l.level))].filter((l) => l !== "");
    for (const level of levels) {
      const count = this.lines.filter((l) => l.level === level && kLogEntry.test(l.line)).length;
      this.level.append(html("option", { value: level }, `${level} (${count})`));
    }
    this.level.disabled = this.filter.disabled = this.lines.length === 0;
    this.level.addEventListener("change", () => this.show(kLogRows));
    this.filter.addEventListener("input", () => this.show(kLogRows));
    this.more.addEventListener("click", () => this.show(Infinity));
    this.show(kLogRows);
  }

  show(limit) {
    const wanted = this.filter.value.toLowerCase(), level = this.level.value;
    const found = this.lines.filter((l) => (!level || l.level === level) && l.line.toLowerCase().includes(wanted));
    const rows = found.slice(0, limit).map((l) => html("li", { class: l.level || "head" }, l.line || "\u00a0"));
    if (this.lines.length === 0) rows.push(html("li", { class: "empty" }, this.note));
    else if (found.length === 0) rows.push(html("li", { class: "empty" }, "No line of the log matches this filter."));
    this.element.replaceChildren(...rows);
    this.more.hidden = found.length <= limit;
    this.more.textContent = `Show all ${found.length} lines`;
    const all = plural(this.lines.length, "line", "lines");
    byId("log-count").textContent = this.lines.length === 0 ? "" : found.length === this.lines.length ? all : `${found.length} of ${all}`;
  }
}

/** Rows of a table: the keys that were pressed, and what came of each; a click shows the moment after it. */
class KeysPanel {
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
    this.rows.forEach((row, i) => row.classList.toggle("is-last", i === last));
  }
}

function showFunctions(element, functions) {
  functions.forEach(([label, macro], number) => element.append(html("tr", {}, html("td", { class: "number" }, String(number)),
    html("td", {}, label), html("td", { class: "macro" }, macro))));
}

/** Pages that share a place; those that have nothing to show have no tab. */
class Tabs {
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

function showSummary(data) {
  const verdict = data.clean ? "\u2713 Clean" : "\u2717 Not clean";
  const meaning = data.clean ? "\u2713 Clean: no rule was broken" : "\u2717 Not clean: a rule was broken";
  for (const [id, text] of [["verdict", verdict], ["summary-verdict", meaning]]) {
    byId(id).textContent = text;
    byId(id).classList.add(data.clean ? "is-clean" : "is-not-clean");
  }
  for (const [what, howMuch] of data.summary)
    byId("summary").append(html("tr", {}, html("th", { scope: "row" }, what), html("td", {}, howMuch)));
}
