// Time: the slider, the play button, the keys.

import { byId, duration, seconds } from "./dom.js";
import { lastNotAbove } from "./columns.js";
import { lastAt } from "./scene.js";

export class Timeline {
  /** `show(index, time)` is called whenever the moment or the time changes. `stops` are the times of the passes. */
  constructor(moments, stops, show) {
    this.moments = moments;
    this.stops = stops;
    this.show = show;
    this.first = moments.length ? moments[0].time : 0;
    this.last = moments.length ? moments[moments.length - 1].time : 0;
    this.time = this.first;
    this.isPlaying = false;
    this.slider = byId("slider");
    this.slider.min = this.first;
    this.slider.max = this.last;
    this.slider.disabled = byId("play").disabled = byId("speed").disabled = moments.length < 2;
    this.slider.addEventListener("input", () => this.userSets(Number(this.slider.value)));
    byId("play").addEventListener("click", () => this.toggle());
    document.addEventListener("keydown", (event) => this.onKey(event));
  }

  index() { return Math.max(0, lastAt(this.moments, this.time, (m) => m.time)); }

  set(time) {
    this.time = Math.min(Math.max(time, this.first), this.last);
    this.slider.value = this.time;
    this.slider.setAttribute("aria-valuetext", `${seconds(this.time)} of ${duration(this.last)}`);
    byId("clock").textContent = `${seconds(this.time)} / ${duration(this.last)}`;
    this.show(this.index(), this.time);
  }

  userSets(time) {
    this.pause();
    this.set(time);
  }

  step(by) {
    const at = this.index(), isBetween = this.moments[at]?.time < this.time;
    // Back from between two moments is to the earlier of them.
    const index = Math.min(Math.max(at + by + (isBetween && by < 0 ? 1 : 0), 0), this.moments.length - 1);
    if (index >= 0) this.userSets(this.moments[index].time);
  }

  /** To the next pass or the one before. */
  stepPass(by) {
    const at = lastNotAbove(this.stops, this.time);
    // Several rows can have one time.
    const next = by > 0 ? at + 1 : lastNotAbove(this.stops, this.stops[Math.max(at, 0)] - 1);
    if (this.stops.length) this.userSets(this.stops[Math.min(Math.max(next, 0), this.stops.length - 1)]);
  }

  toggle() {
    if (this.isPlaying) return this.pause();
    if (this.moments.length < 2) return;
    if (this.time >= this.last) this.set(this.first);
    this.isPlaying = true;
    this.showButton();
    let before = performance.now();
    const frame = (now) => {
      if (!this.isPlaying) return;
      // The first frame's time can be before the click, and time must not run backwards.
      this.set(this.time + Math.max(0, now - before) * Number(byId("speed").value));
      before = now;
      if (this.time >= this.last) this.pause();
      else requestAnimationFrame(frame);
    };
    requestAnimationFrame(frame);
  }

  pause() {
    this.isPlaying = false;
    this.showButton();
  }

  showButton() {
    byId("play").setAttribute("aria-label", this.isPlaying ? "Pause" : "Play");
    byId("play-icon").setAttribute("d", this.isPlaying ? "M3 2h4v12H3zM9 2h4v12H9z" : "M4 2l10 6-10 6z");
  }

  onKey(event) {
    // What has the focus and uses a key itself has prevented its default.
    if (event.defaultPrevented || event.altKey || event.ctrlKey || event.metaKey) return;
    // Keys keep their usual meaning in fields and on buttons. The slider is no such field: its arrows step by moments.
    const isTyping = event.target.closest("select, input:not([type=range]):not([type=checkbox])");
    const isPressing = event.target.closest("button, summary, input[type=checkbox]");
    const actions = { ArrowLeft: () => this.step(-1), ArrowRight: () => this.step(1), ",": () => this.stepPass(-1), ".": () => this.stepPass(1),
      Home: () => this.step(-Infinity), End: () => this.step(Infinity), " ": () => this.toggle(), k: () => this.toggle() };
    const action = actions[event.key];
    if (!action || isTyping || (event.key === " " && isPressing)) return;
    event.preventDefault();
    action();
  }
}
