// What happened between the moments: every pass, every deflection of the cap, every change of the selection.

import { lastAt } from "./scene.js";

const kPassNumbers = 13;
const kPerspective = 1, kSheet = 2, kLayout = 4, kViewportStep = 8;

/** The 64-bit numbers that base64 text holds, little-endian as on every machine with a browser. */
function numbersOf(base64) {
  const binary = atob(base64), bytes = new Uint8Array(binary.length);
  for (let i = 0; i < bytes.length; i++) bytes[i] = binary.charCodeAt(i);
  return new Float64Array(bytes.buffer);
}

export class History {
  constructor(data) {
    this.count = data.passes.count;
    this.passes = numbersOf(data.passes.data);
    this.caps = data.caps;
    this.selected = data.selected;
    this.findLayoutPasses();
  }

  /** For each pass the last one up to it that showed a sheet, and the last that showed the window in it. */
  findLayoutPasses() {
    this.lastSheet = new Int32Array(this.count);
    this.lastWindow = new Int32Array(this.count);
    for (let i = 0, sheet = -1, inside = -1; i < this.count; i++) {
      const state = this.state(i);
      if (state & kSheet) sheet = i;
      // In the model tab neither changes: a layout is shown again as it was left.
      else if (state & kLayout) inside = i;
      this.lastSheet[i] = sheet;
      this.lastWindow[i] = inside;
    }
  }

  time(i) { return this.passes[i * kPassNumbers]; }
  state(i) { return this.passes[i * kPassNumbers + 1]; }
  isOfModel(i) { return !(this.state(i) & kSheet); }
  position(i) { return this.passes.subarray(i * kPassNumbers + 2, i * kPassNumbers + 5); }

  camera(i) {
    const from = i * kPassNumbers + 2;
    return [...this.passes.subarray(from, from + 11), this.state(i) & kPerspective];
  }

  paper(i) {
    const at = i * kPassNumbers, p = this.passes;
    return [p[at + 2], p[at + 3], p[at + 11], p[at + 12]];
  }

  /** Index of the last of `count` records of `step` numbers, ordered by time, that is not later than `time`. */
  static last(numbers, count, step, time) {
    let low = 0, high = count;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (numbers[middle * step] <= time) low = middle + 1;
      else high = middle;
    }
    return low - 1;
  }

  indices(time) {
    return { pass: History.last(this.passes, this.count, kPassNumbers, time),
      cap: History.last(this.caps, this.caps.length / 7, 7, time), selected: lastAt(this.selected, time, (s) => s[0]) };
  }

  /** The moment as it was at these indices. */
  at(moment, { pass, cap, selected }) {
    const shown = { ...moment, ...(pass < 0 ? {} : this.viewOf(moment, pass)) };
    if (cap >= 0) shown.cap = this.caps.slice(cap * 7 + 1, cap * 7 + 7);
    else if (this.caps.length) shown.cap = [0, 0, 0, 0, 0, 0];
    if (selected >= 0) shown.selection = this.selected[selected][1];
    return shown;
  }

  viewOf(moment, pass) {
    // The flags are below kViewportStep, so the division drops them.
    const state = this.state(pass), viewport = Math.floor(state / kViewportStep);
    if (!(state & kLayout))
      return { viewport, camera: this.camera(pass), paper: undefined, window: undefined, sheet: undefined, place: undefined };
    // Where the windows are is known at the moments only.
    if (!moment.place) return {};
    const sheet = this.lastSheet[pass], inside = this.lastWindow[pass];
    const paper = sheet >= 0 ? this.paper(sheet) : moment.paper;
    if (!(state & kSheet)) return { viewport, paper, camera: this.camera(pass), window: undefined };
    const camera = moment.window || (inside >= 0 ? this.camera(inside) : moment.camera);
    return { viewport, paper, window: camera, camera: undefined };
  }

  /** The largest deflection of the axes from `begin` up to before `end`; at least 1. */
  largest(begin, end, moments) {
    let most = 1;
    for (let i = 0; i < this.caps.length; i += 7)
      for (let k = begin; k < end; k++) most = Math.max(most, Math.abs(this.caps[i + 1 + k]));
    return moments.reduce((m, moment) => Math.max(m, ...moment.cap.slice(begin, end).map(Math.abs)), most);
  }
}
