// The part of the run's time that tracks and curves show. Wheel and pinch zoom, a drag pans, the keyboard does both.

const kZoomPerStep = 1.25, kShortestMs = 20;

export class TimeRange {
  constructor(first, last) {
    this.first = first;
    this.last = Math.max(last, first + 1);
    this.listeners = [];
    this.showAll();
  }

  get span() { return this.max - this.min; }
  get isAll() { return this.min === this.first && this.max === this.last; }

  /** Calls `changed()` after each change. */
  listen(changed) { this.listeners.push(changed); }

  set(min, max) {
    const span = Math.min(Math.max(max - min, kShortestMs), this.last - this.first);
    this.min = Math.min(Math.max(min, this.first), this.last - span);
    this.max = this.min + span;
    for (const changed of this.listeners) changed();
  }

  showAll() { this.set(this.first, this.last); }
  pan(by) { this.set(this.min + by, this.max + by); }

  /** Shows `factor` times as much; the time `at` stays where it is. */
  zoom(factor, at) {
    // The span may end at a limit, and `at` has to stay in its place all the same.
    const span = Math.min(Math.max(this.span * factor, kShortestMs), this.last - this.first), share = (at - this.min) / this.span;
    this.set(at - share * span, at + (1 - share) * span);
  }

  /** Turns the page when `time` has left the range. */
  follow(time) {
    if (time < this.min || time > this.max) this.set(time - this.span * 0.1, time + this.span * 0.9);
  }

  /** Share of the range's width at which a time is; its inverse is timeAt. */
  shareOf(time) { return (time - this.min) / this.span; }
  timeAt(share) { return this.min + share * this.span; }

  /** Lets `element`, which is as wide as the range, be zoomed and panned; `clicked(time, event)` without a drag. */
  attach(element, clicked) {
    const timeOf = (event) => {
      const box = element.getBoundingClientRect();
      return this.timeAt((event.clientX - box.x) / box.width);
    };
    element.addEventListener("wheel", (event) => {
      event.preventDefault();
      const isSideways = event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY);
      if (isSideways) this.pan(Math.sign(event.deltaX || event.deltaY) * this.span * 0.1);
      else this.zoom(kZoomPerStep ** Math.sign(event.deltaY), timeOf(event));
    }, { passive: false });
    const pointers = new Map();
    let way = 0;
    element.addEventListener("pointerdown", (event) => {
      element.setPointerCapture(event.pointerId);
      pointers.set(event.pointerId, event.clientX);
      way = 0;
    });
    element.addEventListener("pointermove", (event) => {
      const before = pointers.get(event.pointerId);
      if (before === undefined) return;
      const now = event.clientX, perPixel = this.span / element.clientWidth, [other] = [...pointers].filter(([id]) => id !== event.pointerId);
      way += Math.abs(now - before);
      if (way < 4) return;
      pointers.set(event.pointerId, now);
      if (!other) return this.pan((before - now) * perPixel);
      const box = element.getBoundingClientRect(), fixed = this.timeAt((other[1] - box.x) / box.width);
      this.zoom(Math.max(8, Math.abs(before - other[1])) / Math.max(8, Math.abs(now - other[1])), fixed);
    });
    element.addEventListener("pointerup", (event) => {
      if (pointers.delete(event.pointerId) && way < 4 && event.button === 0) clicked(timeOf(event), event);
    });
    element.addEventListener("pointercancel", (event) => pointers.delete(event.pointerId));
  }

  /** Keys of an element that has the focus: arrows pan, + and - zoom around the time `now()`, 0 shows all. */
  attachKeys(element, now) {
    element.addEventListener("keydown", (event) => {
      if (event.altKey || event.ctrlKey || event.metaKey || event.target !== element) return;
      const at = () => Math.min(Math.max(now(), this.min), this.max);
      const actions = { ArrowLeft: () => this.pan(-this.span * 0.1), ArrowRight: () => this.pan(this.span * 0.1),
        "+": () => this.zoom(1 / kZoomPerStep, at()), "=": () => this.zoom(1 / kZoomPerStep, at()), "-": () => this.zoom(kZoomPerStep, at()),
        0: () => this.showAll() };
      if (!actions[event.key]) return;
      event.preventDefault();
      actions[event.key]();
    });
  }
}
