// The panels beside the picture. Each shows what the program reports, and sends what the user does.

import { byId, html } from "../dom.js";
import { kAxes } from "./cap.js";

const kKeys = ["front", "right", "top", "back", "left", "bottom", "fit"];
const kMostLines = 2000;
const kMostLogBytes = 400000;

/** Whether the list shows its end, so that it is to follow what comes. */
const isAtEnd = (element) => element.scrollHeight - element.scrollTop - element.clientHeight < 30;

export class AxesTable {
  constructor(element, cap) {
    this.rows = kAxes.map((name) => {
      const bar = html("i"), value = html("td", {}, "0");
      element.tBodies[0].append(html("tr", {}, html("th", { scope: "row" }, name), html("td", {}, html("span", { class: "meter" }, bar)), value));
      return { bar, value };
    });
    cap.listeners.push(this);
  }

  show(values, range) {
    values.forEach((value, i) => {
      const share = (Math.abs(value) / range) * 50, { bar, value: cell } = this.rows[i];
      bar.style.left = `${value < 0 ? 50 - share : 50}%`;
      bar.style.width = `${share}%`;
      cell.textContent = String(value);
    });
  }
}

export class CommandLine {
  constructor(link) {
    this.element = byId("lines");
    this.history = [];
    const input = byId("command");
    byId("command-form").addEventListener("submit", (event) => {
      event.preventDefault();
      this.type(link, input);
    });
    input.addEventListener("keydown", (event) => this.key(event, input, link));
    byId("escape").addEventListener("click", () => link.act("command \u001b"));
  }

  type(link, input) {
    const text = input.value;
    input.value = "";
    if (text.includes("#")) return showNote("A session cannot hold the character #.", true);
    link.act(text.trim() === "" ? "enter" : `command ${text}`);
    // The host does not repeat what is typed.
    this.add([[0, "typed", `Command: ${text}`]]);
    if (text) this.history.push(text);
    this.at = this.history.length;
  }

  key(event, input, link) {
    if (event.key === "Escape") link.act("command \u001b");
    if (event.key !== "ArrowUp" && event.key !== "ArrowDown") return;
    event.preventDefault();
    this.at = Math.max(0, Math.min(this.history.length, (this.at ?? this.history.length) + (event.key === "ArrowUp" ? -1 : 1)));
    input.value = this.history[this.at] ?? "";
  }

  add(lines) {
    const { element } = this, follows = isAtEnd(element);
    for (const [, kind, text] of lines) element.append(html("li", { class: kind, title: kind }, text.replace(/^\n/, "")));
    while (element.children.length > kMostLines) element.firstChild.remove();
    if (follows) element.scrollTop = element.scrollHeight;
  }
}

/** Levels of the log by what an entry has in its second column, the gravest first. */
const kLevels = [["all entries", null], ["errors", ["ERR"]], ["warnings", ["ERR", "WRN"]], ["information", ["ERR", "WRN", "INF"]]];

export class LogPane {
  constructor() {
    this.element = byId("log");
    this.text = "";
    byId("level").replaceChildren(...kLevels.map(([name], i) => html("option", { value: i }, name)));
    for (const id of ["level", "filter"]) byId(id).addEventListener("input", () => this.show());
  }

  add(text) {
    this.text = (this.text + text).slice(-kMostLogBytes);
    const added = this.kept(text), follows = isAtEnd(this.element);
    this.element.append(added);
    if (this.element.childNodes.length > 500) this.show();
    if (follows) this.element.scrollTop = this.element.scrollHeight;
  }

  kept(text) {
    const types = kLevels[byId("level").value || 0][1], filter = byId("filter").value.toLowerCase();
    const isKept = (line) => (!types || types.some((type) => line.includes(`|${type}|`))) && line.toLowerCase().includes(filter);
    return text.split("\n").filter((line) => line && isKept(line)).map((line) => `${line}\n`).join("");
  }

  show() {
    this.element.textContent = this.kept(this.text);
    this.element.scrollTop = this.element.scrollHeight;
  }
}

/** The seven keys, and the functions of the menu file. */
export class KeysPane {
  constructor(link) {
    byId("keys").replaceChildren(...kKeys.map((name) => {
      const button = html("button", {}, name);
      button.addEventListener("click", () => link.act(`key ${name}`));
      return button;
    }));
    byId("run-function").addEventListener("click", () => {
      if (byId("functions").value !== "") link.act(`function ${byId("functions").value}`);
    });
  }

  fill(functions) {
    byId("functions").replaceChildren(...functions.map(([label, macro], i) => html("option", { value: i, title: macro }, `${i}: ${label}`)));
  }
}

const kRotation = ["target", "origin", "camera", "camera target", "hover"];
/** The device's code of each: 3 is the target by another way. */
const kRotationCodes = [0, 1, 2, 3, 4];

export class ControlPanel {
  constructor(link) {
    byId("rotation").replaceChildren(...kRotation.map((name, i) => html("option", { value: kRotationCodes[i] }, name)));
    const announce = () => {
      const code = (byId("hover").checked ? 100 : 0) + (byId("horizon").checked ? 10 : 0) + Number(byId("rotation").value);
      link.act(`rotmode ${code} zoom ${byId("zoom").checked ? "on" : "off"}`);
    };
    for (const id of ["rotation", "hover", "horizon", "zoom"]) byId(id).addEventListener("change", announce);
    byId("device").addEventListener("change", () => link.act(`device ${byId("device").checked ? "up" : "down"}`));
  }

  show({ rotation, zoom, device }) {
    byId("rotation").value = rotation % 10;
    byId("horizon").checked = Math.floor(rotation / 10) % 10 === 1;
    byId("hover").checked = Math.floor(rotation / 100) === 1;
    byId("zoom").checked = zoom;
    byId("device").checked = device;
  }
}

const press = (button, isOn) => button.setAttribute("aria-pressed", String(isOn));

/** Tabs, viewports, projection, drawings, switches of the module. */
export class HostPane {
  constructor(link) {
    this.link = link;
    byId("tab-model").addEventListener("click", () => link.act("setvar TILEMODE 1"));
    byId("tab-layout").addEventListener("click", () => link.act("setvar TILEMODE 0"));
    byId("parallel").addEventListener("click", () => link.act("projection parallel"));
    byId("perspective").addEventListener("click", () => link.act("projection perspective"));
    byId("select-all").addEventListener("click", () => link.act("select all"));
    byId("drawings").addEventListener("change", () => link.send({ open: Number(byId("drawings").value) }));
  }

  fill({ drawings, toggles }) {
    byId("drawings").replaceChildren(...drawings.map((name, i) => html("option", { value: i }, name)));
    this.toggles = toggles.map((command) => {
      const button = html("button", { "aria-pressed": "false", title: command }, command.replace(/^LM_Toggle_/, "").replaceAll("_", " "));
      button.addEventListener("click", () => this.link.act(`command ${command}`));
      return button;
    });
    byId("toggles").replaceChildren(...this.toggles);
  }

  show(state) {
    press(byId("tab-model"), !state.layout);
    press(byId("tab-layout"), state.layout);
    press(byId("parallel"), !state.perspective);
    press(byId("perspective"), state.perspective);
    state.toggles.forEach((isOn, i) => press(this.toggles[i], isOn));
    byId("selected").textContent = state.selection.length === 0 ? "nothing selected" : `${state.selection.length} selected`;
    byId("viewports").replaceChildren(...(state.layout ? Array(state.viewports + 1).keys() : []).map((i) => this.viewport(i + 1, state.viewport)));
  }

  viewport(number, current) {
    const button = html("button", { "aria-pressed": String(number === current) }, number === 1 ? "Sheet" : `Window ${number}`);
    button.addEventListener("click", () => this.link.act(`viewport ${number}`));
    return button;
  }
}

/** The windows that the cap scrolls: pointing at one puts the host's mouse pointer there, a click keeps it there. */
const kPanes = [["SysTreeView32", "tree", "Tree"], ["SysListView32", "list", "List"], ["Edit", "edit", "Edit field"], ["QWidget", "qt", "Wheel pane"]];

export class Palette {
  constructor(link) {
    this.link = link;
    this.over = "canvas";
    this.panes = new Map(kPanes.map(([className, target, label]) => {
      const name = html("span", { class: "name" }, label), rows = html("span", { class: "rows", "aria-hidden": "true" });
      const thumb = html("i"), bar = html("span", { class: "bar" }, thumb);
      const button = html("button", { "aria-pressed": "false" }, name, rows, bar);
      button.addEventListener("pointerenter", () => this.point(target));
      button.addEventListener("click", () => this.keep(this.kept === target ? null : target));
      return [className, { button, name, rows, thumb, label, target }];
    }));
    byId("palette").replaceChildren(...[...this.panes.values()].map(({ button }) => button));
    byId("canvas").addEventListener("pointerenter", () => this.point("canvas"));
  }

  point(target) {
    if (this.kept || this.over === target) return;
    this.over = target;
    this.link.act(`pointer ${target}`);
  }

  keep(target) {
    this.kept = null;
    this.point(target || "canvas");
    this.kept = target;
    for (const pane of this.panes.values()) press(pane.button, pane.target === target);
  }

  show(bars) {
    for (const [className, vertical] of bars) {
      const pane = this.panes.get(className);
      if (!pane || !vertical || String(vertical) === pane.shown) continue;
      pane.shown = String(vertical);
      const [minimum, maximum, page, position] = vertical, whole = maximum - minimum + 1;
      pane.thumb.style.top = `${(100 * (position - minimum)) / whole}%`;
      pane.thumb.style.height = `${(100 * page) / whole}%`;
      pane.name.textContent = `${pane.label}, line ${position} of ${maximum}`;
      pane.rows.textContent = Array.from({ length: Math.min(page, 12) }, (_, i) => `line ${position + i}`).join("\n");
    }
  }
}

/** Units that the file's comments leave out. */
const kUnits = { transSensBase: "units of the cap", rotSensBase: "units of the cap for a radian", minThreshold: "units of the cap", maxContMoveTime: "ms", maxSize: "kB" };

export class SettingsPane {
  constructor(link) {
    byId("settings-form").addEventListener("submit", (event) => {
      event.preventDefault();
      const changed = Object.fromEntries(this.fields.filter(({ field, value }) => this.read(field) !== value).map(({ key, field }) => [key, this.read(field)]));
      if (Object.keys(changed).length === 0) return showNote("No setting was changed.");
      link.send({ settings: changed });
    });
  }

  read(field) { return field.type === "checkbox" ? (field.checked ? "on" : "off") : field.value; }

  show(settings) {
    const text = JSON.stringify(settings);
    // What the user is typing stays while something else changes.
    if (text === this.shown) return;
    this.shown = text;
    this.fields = settings.map(([, key, value, comment]) => {
      const isSwitch = value === "on" || value === "off", isNumber = /^-?\d+$/.test(value);
      const field = html("input", { type: isSwitch ? "checkbox" : isNumber ? "number" : "text", "data-key": key });
      if (isSwitch) field.checked = value === "on";
      else field.value = value;
      return { key, value, comment, field };
    });
    byId("settings").replaceChildren(...this.fields.map(({ key, comment, field }) => html("label", {}, html("span", {}, key), field,
      html("span", { class: "comment" }, comment + (kUnits[key] ? ` [${kUnits[key]}]` : "")))));
  }
}

export function showBreaches(texts) {
  for (const text of texts) byId("breaches").append(html("li", {}, text));
}

export function showMeters({ passes, pass, tick, latency }) {
  const rows = [["passes a second", passes.toFixed(0)], ["longest pass", `${pass.toFixed(1)} ms`], ["longest tick", `${tick.toFixed(0)} ms`],
    ["cap to picture", latency === null ? "-" : `${latency.toFixed(0)} ms`]];
  byId("meters").replaceChildren(...rows.flatMap(([name, value]) => [html("dt", {}, name), html("dd", {}, value)]));
}

export function showNote(text, isError = false) {
  const note = html("p", { class: isError ? "error" : "note" }, text);
  byId("notes").append(note);
  setTimeout(() => note.remove(), isError ? 12000 : 8000);
}
