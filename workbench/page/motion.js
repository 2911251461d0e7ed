// The motion of the view as series over time: where the camera is, and how fast it turns and pans.

/** Times of the passes with a break (a time of its own, whose values are null) wherever the motion paused. */
export class Motion {
  constructor(history) {
    this.history = history;
    const { times, count } = history;
    this.longest = 4 * Motion.median(times, count);
    this.rows = [];
    this.times = [];
    for (let i = 0; i < count; i++) {
      if (i > 0 && times[i] - times[i - 1] > this.longest) this.add(-1, times[i - 1] + 1);
      this.add(i, times[i]);
    }
    if (count > 0) this.add(-1, times[count - 1] + 1);
  }

  add(row, time) {
    this.rows.push(row);
    this.times.push(time);
  }

  /** The usual time between two passes. */
  static median(times, count) {
    const steps = [];
    for (let i = 1; i < count; i++) if (times[i] > times[i - 1]) steps.push(times[i] - times[i - 1]);
    steps.sort((a, b) => a - b);
    return steps.length ? steps[steps.length >> 1] : 16;
  }

  series(valueOf) {
    return this.rows.map((i) => {
      const value = i < 0 ? null : valueOf(i);
      return Number.isFinite(value) ? value : null;
    });
  }

  position(k) { return this.series((i) => this.history.targets[3 * i + k] + this.history.eyes[3 * i + k]); }
  target(k) { return this.series((i) => this.history.targets[3 * i + k]); }
  field(k) { return this.series((i) => this.history.fields[2 * i + k]); }

  /** Whether the view of the pass `i` was moved from that of the pass before it, and in how many seconds. */
  step(i) {
    const { history } = this;
    if (i === 0 || !history.isDrawn(i) || history.states[i] >> 4 !== history.states[i - 1] >> 4) return NaN;
    const ms = history.times[i] - history.times[i - 1];
    return ms > 0 && ms <= this.longest ? ms / 1000 : NaN;
  }

  /** Degrees a second. */
  turning() {
    let before = null;
    return this.series((i) => {
      const now = this.history.isOfModel(i) ? this.frame(i) : null, angle = before && now ? angleBetween(before, now) : NaN;
      before = now;
      return (angle * 180) / Math.PI / this.step(i);
    });
  }

  /** Fields a second: how much of the picture's width the target moves. */
  panning() {
    const { targets, eyes, fields } = this.history;
    // A sheet is panned by its camera; its target stays at 0.
    const at = (i, k) => targets[3 * i + k] + (this.history.isOfModel(i) ? 0 : eyes[3 * i + k]);
    return this.series((i) => {
      if (i === 0) return NaN;
      const way = Math.hypot(at(i, 0) - at(i - 1, 0), at(i, 1) - at(i - 1, 1), at(i, 2) - at(i - 1, 2));
      return way / fields[2 * i] / this.step(i);
    });
  }

  /** Direction and up vector of the camera, both of length 1 and at right angles. */
  frame(i) {
    const e = this.history.eyes.subarray(3 * i, 3 * i + 3), u = this.history.ups.subarray(3 * i, 3 * i + 3), away = Math.hypot(...e);
    const d = [e[0] / away, e[1] / away, e[2] / away], along = d[0] * u[0] + d[1] * u[1] + d[2] * u[2];
    const up = [u[0] - along * d[0], u[1] - along * d[1], u[2] - along * d[2]], length = Math.hypot(...up);
    return { d, up: up.map((v) => v / length) };
  }
}

/** Angle of the rotation that takes one frame to another. */
export function angleBetween(a, b) {
  const cross = ({ d, up }) => [d[1] * up[2] - d[2] * up[1], d[2] * up[0] - d[0] * up[2], d[0] * up[1] - d[1] * up[0]];
  const pairs = [[a.d, b.d], [a.up, b.up], [cross(a), cross(b)]];
  let squares = 0;
  for (const [p, q] of pairs) for (let k = 0; k < 3; k++) squares += (p[k] - q[k]) ** 2;
  // The squares of a rotation's three differences add up to 8 sin^2 of half its angle. Unlike the arc cosine of the
  // trace this is exact for the small angles of a pass.
  return 2 * Math.asin(Math.min(1, Math.sqrt(squares / 8)));
}

/** The cap's axis `k` over time as the corners of a line with steps: it holds from each of its times on. */
export function capSeries(history, k, first, last) {
  const { capTimes, capAxes } = history, times = [first], values = [0];
  for (let i = 0; i < capTimes.length; i++) {
    // Just before it and at it: two corners at one time would be one where runs are joined.
    times.push(Math.max(times[times.length - 1], capTimes[i] - 1e-3), capTimes[i]);
    values.push(values[values.length - 1], capAxes[6 * i + k]);
  }
  times.push(last);
  values.push(values[values.length - 1]);
  return { times, values };
}
