// Time: the slider, the play button, the keys, and the strip that shows when something happened.

class Timeline {
  /** `show(index, time)` is called whenever the moment or the time changes. */
  constructor(moments, lines, show) {
    this.moments = moments;
    this.lines = lines;
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
    const isTyping = event.target.closest("select, input:not([type=range]):not([type=checkbox])");
    const isPressing = event.target.closest("button, input[type=checkbox]");
    const actions = { ArrowLeft: () => this.step(-1), ArrowRight: () => this.step(1),
      Home: () => this.step(-Infinity), End: () => this.step(Infinity), " ": () => this.toggle() };
    const action = actions[event.key];
    if (!action || isTyping || (event.key === " " && isPressing)) return;
    event.preventDefault();
    action();
  }

  /** Bars where the cap was deflected (pushes above, turns below) and a tick for each line of the command line. */
  drawActivity() {
    const strip = byId("activity"), width = strip.clientWidth, height = 22, span = this.last - this.first;
    strip.setAttribute("viewBox", `0 0 ${width} ${height}`);
    strip.replaceChildren();
    if (!(span > 0)) return;
    // The thumb's middle runs from half its width to the slider's end less the same.
    const thumb = 16, at = (time) => thumb / 2 + ((time - this.first) / span) * (width - thumb);
    const lanes = [["push", 0, 3], ["turn", 3, 6]].map((lane) => [...lane, largestOf(this.moments, lane[1], lane[2])]);
    this.moments.forEach((moment, i) => {
      const from = at(moment.time), to = at(i + 1 < this.moments.length ? this.moments[i + 1].time : this.last);
      for (const [name, a, b, most] of lanes) {
        const tall = (Math.max(...moment.cap.slice(a, b).map(Math.abs)) / most) * 9;
        if (tall > 0)
          strip.append(svg("rect", { class: name, x: from, width: Math.max(1, to - from), height: tall, y: name === "push" ? 10 - tall : 11 }));
      }
    });
    const seen = new Set(this.lines.map(([time]) => Math.round(at(Math.min(Math.max(time, this.first), this.last)))));
    for (const x of seen) strip.append(svg("path", { class: "event", d: `M${x} 0V22` }));
  }
}
