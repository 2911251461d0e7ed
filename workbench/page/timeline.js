// Time: the slider, the play button, the keys, and the strip that shows when something happened.

import { byId, seconds, svg } from "./dom.js";
import { lastAt } from "./scene.js";

export class Timeline {
  /** `show(index, time)` is called whenever the moment or the time changes. */
  constructor(moments, lines, history, problems, show) {
    this.moments = moments;
    this.lines = lines;
    this.history = history;
    this.problems = problems;
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
    const count = this.moments.length;
    const place = count ? `moment ${this.index() + 1} of ${count}` : "no moment";
    this.slider.setAttribute("aria-valuetext", `${seconds(this.time)} seconds, ${place}`);
    byId("clock").textContent = `${seconds(this.time)} / ${seconds(this.last)} s`;
    this.show(this.index(), this.time);
  }

  userSets(time) {
    this.pause();
    this.set(time);
  }

  step(by) {
    const index = Math.min(Math.max(this.index() + by, 0), this.moments.length - 1);
    if (index >= 0) this.userSets(this.moments[index].time);
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
    if (event.altKey || event.ctrlKey || event.metaKey) return;
    // Keys keep their usual meaning in fields and on buttons. The slider is no such field: its arrows step by moments.
    const isTyping = event.target.closest("select, input:not([type=range]):not([type=checkbox])");
    const isPressing = event.target.closest("button, input[type=checkbox]");
    const actions = { ArrowLeft: () => this.step(-1), ArrowRight: () => this.step(1),
      Home: () => this.step(-Infinity), End: () => this.step(Infinity), " ": () => this.toggle() };
    const action = actions[event.key];
    if (!action || isTyping || (event.key === " " && isPressing)) return;
    event.preventDefault();
    action();
  }

  /** Bars where the cap was deflected (pushes above, turns below), a tick for each line of the command line, and
      the problems. */
  drawActivity() {
    const strip = byId("activity"), width = strip.clientWidth, height = 22, span = this.last - this.first;
    strip.setAttribute("viewBox", `0 0 ${width} ${height}`);
    strip.replaceChildren();
    if (!(span > 0)) return;
    // The thumb's middle runs from half its width to the slider's end less the same.
    const thumb = 16, at = (time) => thumb / 2 + ((Math.min(Math.max(time, this.first), this.last) - this.first) / span) * (width - thumb);
    for (const [name, begin, end] of [["push", 0, 3], ["turn", 3, 6]]) strip.append(this.lane(name, begin, end, width, at));
    const seen = new Set(this.lines.map(([time]) => Math.round(at(time))));
    strip.append(svg("path", { class: "event", d: [...seen].map((x) => `M${x} 0V22`).join("") }));
    for (const [time, text] of this.problems)
      if (time !== null) strip.append(svg("path", { class: "problem", d: `M${at(time)} 0V22` }, svg("title", {}, text)));
  }

  /** One bar a pixel: the largest deflection in the time that it stands for. */
  lane(name, begin, end, width, at) {
    const { caps } = this.history, most = this.history.largest(begin, end, []), columns = new Float64Array(Math.ceil(width) + 1);
    for (let i = 0; i < caps.length; i += 7) {
      const size = Math.max(...caps.slice(i + 1 + begin, i + 1 + end).map(Math.abs));
      const until = i + 7 < caps.length ? caps[i + 7] : this.last;
      if (size > 0) for (let x = Math.floor(at(caps[i])); x <= Math.floor(at(until)); x++) columns[x] = Math.max(columns[x], size);
    }
    let d = "";
    columns.forEach((size, x) => {
      if (size > 0) d += `M${x} ${name === "push" ? 10 : 11}v${((name === "push" ? -1 : 1) * Math.max(1, (size / most) * 9)).toFixed(1)}`;
    });
    return svg("path", { class: name, d });
  }
}
