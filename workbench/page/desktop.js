// The desktop beside the drawing: windows as rectangles, what is scrolled in them as rows, and the mouse pointer.

import { byId, svg } from "./dom.js";

const kBarWidth = 5;
const kPointerShape = "l0 12l3.2 -2.6l2 4.8l2.2 -0.9l-2 -4.7l4 -0.2z";

/** Length of a row, a share of the width. A fixed function of its number, so that rows are recognisable as they scroll. */
function rowLength(number) {
  return 0.25 + 0.6 * (((number * 2654435761) >>> 8) % 1000) / 1000;
}

const holds = ([left, top, right, bottom], [x, y]) => x >= left && x < right && y >= top && y < bottom;

/** The smallest window with a scroll bar under the pointer; -1 for none. */
function pointedAt({ windows, pointer }) {
  const area = ([left, top, right, bottom]) => (right - left) * (bottom - top);
  let best = -1;
  windows.forEach((w, i) => {
    const isBetter = best < 0 || area(w.rect) < area(windows[best].rect);
    if ((w.vertical || w.horizontal) && holds(w.rect, pointer) && isBetter) best = i;
  });
  return best;
}

export class DesktopView {
  constructor(element, scene) {
    this.element = element;
    this.desktops = scene.desktops;
    const rects = this.desktops.flatMap((d) => d.windows.map((w) => w.rect));
    const range = (i, better) => rects.reduce((most, r) => better(most, r[i]), rects.length ? rects[0][i] : 0);
    this.bounds = [range(0, Math.min), range(1, Math.min), range(2, Math.max), range(3, Math.max)];
  }

  layOut() {
    const [left, top, right, bottom] = this.bounds, margin = 8;
    const width = this.element.clientWidth, height = this.element.clientHeight;
    this.element.setAttribute("viewBox", `0 0 ${width} ${height}`);
    // Only the controls matter, so what is to the left of them is narrowed.
    const controls = this.controlsOf(this.desktops[0]).map((w) => w.rect);
    const from = controls.length ? Math.min(...controls.map((r) => r[0])) - 40 : left;
    this.left = Math.max(left, from);
    this.scale = Math.max(0, Math.min((width - 2 * margin) / (right - this.left), (height - 2 * margin) / (bottom - top)));
    const x = (width - (right - this.left) * this.scale) / 2, y = (height - (bottom - top) * this.scale) / 2;
    this.at = (px, py) => [x + (Math.max(px, this.left) - this.left) * this.scale, y + (py - top) * this.scale];
  }

  controlsOf(desktop) {
    return desktop ? desktop.windows.filter((w) => w.vertical || w.horizontal) : [];
  }

  show(moment) {
    const desktop = moment && this.desktops[moment.desktop];
    if (!desktop || !this.at) return;
    const pointed = pointedAt(desktop);
    this.element.replaceChildren(...desktop.windows.map((w, i) => this.windowGroup(w, i === pointed)), this.pointer(desktop));
    byId("desktop-place").textContent = pointed < 0 ? "" : this.inWords(desktop.windows[pointed]);
  }

  inWords(window) {
    const bars = [["row", window.vertical], ["column", window.horizontal]].filter(([, bar]) => bar);
    return [window.class, ...bars.map(([name, [, maximum, , position]]) => `${name} ${position} of ${maximum}`)].join("\n");
  }

  windowGroup(window, isPointed) {
    const [x, y] = this.at(window.rect[0], window.rect[1]), [right, bottom] = this.at(window.rect[2], window.rect[3]);
    const box = { x, y, width: Math.max(0, right - x), height: Math.max(0, bottom - y) };
    const isControl = window.vertical || window.horizontal;
    const group = svg("g", { "data-class": window.class },
      svg("rect", { ...box, class: `${isControl ? "control" : "pane"}${isPointed ? " is-pointed" : ""}` }));
    if (window.vertical) group.append(svg("path", { class: "rows", d: this.rows(window, box) }));
    for (const bar of this.bars(window, box)) group.append(bar);
    return group;
  }

  /** The rows in view; each keeps its look while it moves. */
  rows({ vertical: [, , page, position], horizontal }, { x, y, width, height }) {
    const count = Math.max(1, Math.min(page, Math.floor(height / 3))), pitch = height / count;
    const shift = horizontal ? horizontal[3] / Math.max(1, horizontal[1]) : 0;
    const lines = [];
    for (let i = 0; i < count; i++) {
      const left = x + 3 + 8 * ((position + i) % 5 === 0 ? 0 : 1) - shift * width;
      const right = Math.min(x + width - kBarWidth - 2, left + rowLength(position + i) * width * (horizontal ? 2 : 1));
      if (right > x + 3) lines.push(`M${Math.max(left, x + 3).toFixed(1)} ${(y + pitch * (i + 0.5)).toFixed(1)}H${right.toFixed(1)}`);
    }
    return lines.join("");
  }

  bars({ vertical, horizontal }, { x, y, width, height }) {
    const span = ([minimum, maximum, page, position], length) => {
      const whole = Math.max(1, maximum - minimum + 1), size = Math.max(4, (Math.min(page, whole) / whole) * length);
      const share = (position - minimum) / Math.max(1, whole - page);
      return [Math.min(1, Math.max(0, share)) * (length - size), size];
    };
    const parts = [];
    if (vertical) {
      const [from, size] = span(vertical, height), at = { x: x + width - kBarWidth, width: kBarWidth };
      parts.push(svg("rect", { class: "bar", y, height, ...at }), svg("rect", { class: "thumb vertical", y: y + from, height: size, ...at }));
    }
    if (horizontal) {
      const [from, size] = span(horizontal, width), at = { y: y + height - kBarWidth, height: kBarWidth };
      parts.push(svg("rect", { class: "bar", x, width, ...at }), svg("rect", { class: "thumb horizontal", x: x + from, width: size, ...at }));
    }
    return parts;
  }

  /** Nothing when the pointer is outside all windows. */
  pointer({ windows, pointer }) {
    const isSeen = windows.some((w) => holds(w.rect, pointer));
    const [x, y] = this.at(Math.max(pointer[0], this.left + 12), pointer[1]);
    return svg("path", { class: "pointer", d: isSeen ? `M${x.toFixed(1)} ${y.toFixed(1)}${kPointerShape}` : "" });
  }
}
