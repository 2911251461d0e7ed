// What is beside the picture: the cap, the view in numbers, the layers.

import { byId, html, readable } from "./dom.js";
import { cameraOf } from "./projection.js";
import { norm } from "./vector.js";

export const kAxes = ["x", "y", "z", "rx", "ry", "rz"];

export class CapPanel {
  constructor(element, range) {
    this.range = range;
    this.rows = kAxes.map((name, i) => {
      const bar = html("i"), value = html("b");
      element.append(html("span", { class: "muted" }, name), html("span", { class: i < 3 ? "meter" : "meter turn" }, bar), value);
      return { bar, value };
    });
  }

  show(cap) {
    this.rows.forEach(({ bar, value }, i) => {
      const v = cap ? cap[i] : 0, share = (Math.abs(v) / this.range) * 50;
      // Moved and scaled, which needs no new layout.
      bar.style.transform = `translateX(${v < 0 ? -share : 0}%) scaleX(${share / 100})`;
      value.textContent = cap ? String(v).replace("-", "\u2212") : "\u2013";
    });
  }
}

/** Rows of names and values that keep their elements while the values change. */
export class Readout {
  constructor(element) {
    this.element = element;
    this.names = "";
  }

  show(rows) {
    const names = rows.map(([name]) => name).join();
    if (names !== this.names) {
      this.names = names;
      this.values = rows.map(() => html("dd"));
      this.element.replaceChildren(...rows.flatMap(([name], i) => [html("dt", {}, name), this.values[i]]));
    }
    rows.forEach(([, value], i) => {
      if (this.values[i].textContent !== value) this.values[i].textContent = value;
    });
  }
}

/** The camera in words. */
export function viewInWords(moment) {
  const camera = cameraOf(moment), isSheet = Boolean(moment.window);
  const kind = isSheet ? "paper space" : camera.isPerspective ? "perspective" : "parallel";
  const [width, height] = isSheet ? moment.paper.slice(2) : [camera.width, camera.height];
  // A coordinate matters in relation to what the view shows.
  const triple = (p) => p.map((v) => readable(v, width)).join(", ");
  const rows = [["Viewport", `${moment.viewport}, ${kind}`], ["Field", `${readable(width, width)} \u00d7 ${readable(height, height)}`]];
  if (isSheet) rows.push(["Centre", triple(moment.paper.slice(0, 2))]);
  else rows.push(["Camera", triple(camera.position)], ["Target", triple(camera.target)]);
  return rows;
}

export class LayersPanel {
  constructor(element, view, changed) {
    this.view = view;
    this.changed = changed;
    this.layers = new Map();
    view.scene.groups.forEach((group, i) => {
      const layer = this.layers.get(group.layer) || { count: 0, groups: [] };
      layer.count += group.to - group.from;
      layer.groups.push(i);
      this.layers.set(group.layer, layer);
    });
    for (const [name, layer] of this.layers) element.append(this.row(name, layer));
    if (this.layers.size === 0) element.append(html("li", { class: "empty" }, "No layer holds anything."));
    byId("layers-all").addEventListener("click", () => this.setAll(true));
    byId("layers-none").addEventListener("click", () => this.setAll(false));
    element.addEventListener("keydown", (event) => this.key(event));
    this.recolour();
  }

  row(name, layer) {
    layer.box = html("input", { type: "checkbox" });
    layer.box.checked = true;
    // The list is one tab stop.
    layer.box.tabIndex = this.boxes.length === 1 ? 0 : -1;
    layer.box.addEventListener("change", () => this.set(name, layer.box.checked));
    layer.swatches = layer.groups.slice(0, 4).map(() => html("span", { class: "swatch" }));
    const colours = layer.groups.map((i) => this.view.scene.groups[i].colour);
    const hint = `${name}: colour ${colours.join(", ")}`;
    return html("li", {}, html("label", { title: hint }, layer.box, ...layer.swatches, html("span", { class: "name" }, name),
      html("span", { class: "muted" }, String(layer.count))));
  }

  get boxes() { return [...this.layers.values()].map((layer) => layer.box).filter(Boolean); }

  key(event) {
    const by = { ArrowUp: -1, ArrowDown: 1 }[event.key], { boxes } = this, at = boxes.indexOf(document.activeElement);
    if (!by || at < 0) return;
    event.preventDefault();
    const next = boxes[Math.min(Math.max(at + by, 0), boxes.length - 1)];
    boxes.forEach((box) => (box.tabIndex = box === next ? 0 : -1));
    next.focus();
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
      if (isShown) this.view.hiddenLayers.delete(name);
      else this.view.hiddenLayers.add(name);
    }
    this.changed();
  }
}
