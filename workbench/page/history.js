// What happened between the moments: every pass, every deflection of the cap, every change of the selection.

import { column, lastNotAbove } from "./columns.js";
import { lastAt } from "./scene.js";

const kPerspective = 1, kSheet = 2, kLayout = 4, kDrawn = 8, kViewportStep = 16;

export class History {
  constructor(data) {
    this.count = data.passes.count;
    this.times = column(Uint32Array, data.passes.time);
    this.states = column(Int32Array, data.passes.state);
    this.targets = column(Float64Array, data.passes.target);
    /** The camera's position relative to its target, and its up vector. */
    this.eyes = column(Float32Array, data.passes.eye);
    this.ups = column(Float32Array, data.passes.up);
    this.fields = column(Float32Array, data.passes.field);
    this.capTimes = column(Uint32Array, data.caps.time);
    this.capAxes = column(Int16Array, data.caps.axes);
    this.selected = data.selected;
    this.modes = data.modes;
    this.findLayoutPasses();
  }

  /** For each pass the last one up to it that showed a sheet, and the last that showed the window in it. */
  findLayoutPasses() {
    this.lastSheet = new Int32Array(this.count);
    this.lastWindow = new Int32Array(this.count);
    for (let i = 0, sheet = -1, inside = -1; i < this.count; i++) {
      const state = this.states[i];
      if (state & kSheet) sheet = i;
      // In the model tab neither changes: a layout is shown again as it was left.
      else if (state & kLayout) inside = i;
      this.lastSheet[i] = sheet;
      this.lastWindow[i] = inside;
    }
  }

  isOfModel(i) { return !(this.states[i] & kSheet); }
  /** Whether the module moved the view, and not a command or an event. */
  isDrawn(i) { return (this.states[i] & kDrawn) !== 0; }
  viewport(i) { return Math.floor(this.states[i] / kViewportStep); }

  position(i) {
    return [0, 1, 2].map((k) => this.targets[3 * i + k] + this.eyes[3 * i + k]);
  }

  camera(i) {
    return [...this.position(i), ...this.targets.subarray(3 * i, 3 * i + 3), ...this.ups.subarray(3 * i, 3 * i + 3),
      this.fields[2 * i], this.fields[2 * i + 1], this.states[i] & kPerspective];
  }

  paper(i) {
    const [x, y] = this.position(i);
    return [x, y, this.fields[2 * i], this.fields[2 * i + 1]];
  }

  indices(time) {
    return { pass: lastNotAbove(this.times, time), cap: lastNotAbove(this.capTimes, time),
      selected: lastAt(this.selected, time, (s) => s[0]) };
  }

  cap(i) { return [...this.capAxes.subarray(6 * i, 6 * i + 6)]; }

  /** The moment as it was at these indices. */
  at(moment, { pass, cap, selected }) {
    const shown = { ...moment, ...(pass < 0 ? {} : this.viewOf(moment, pass)) };
    if (cap >= 0) shown.cap = this.cap(cap);
    else if (this.capTimes.length) shown.cap = [0, 0, 0, 0, 0, 0];
    if (selected >= 0) shown.selection = this.selected[selected][1];
    return shown;
  }

  viewOf(moment, pass) {
    const state = this.states[pass], viewport = this.viewport(pass);
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
  largest(begin, end, moments = []) {
    let most = 1;
    for (let i = 0; i < this.capAxes.length; i += 6)
      for (let k = begin; k < end; k++) most = Math.max(most, Math.abs(this.capAxes[i + k]));
    for (const moment of moments) for (let k = begin; k < end; k++) most = Math.max(most, Math.abs(moment.cap[k]));
    return most;
  }
}
