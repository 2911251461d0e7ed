// Time from a deflection of the cap to the first picture that it has changed.

const kKept = 200;

export class Latency {
  constructor() {
    this.number = 0;
    this.waiting = [];
    this.times = [];
  }

  /** A deflection is sent; returns its number. */
  sent() {
    this.waiting.push({ number: ++this.number, at: performance.now() });
    // The host may be at rest, so that no picture changes.
    if (this.waiting.length > kKept) this.waiting.shift();
    return this.number;
  }

  /** A picture is on the screen. */
  shown({ done, camera, paper, windows }) {
    const view = JSON.stringify([camera, paper, windows]), now = performance.now();
    if (view === this.view) return;
    this.view = view;
    while (this.waiting.length && this.waiting[0].number <= done) this.times.push(now - this.waiting.shift().at);
    this.times.splice(0, this.times.length - kKept);
  }

  /** Half of the last ones took no longer; null before the first. */
  median() { return this.share(0.5); }

  share(part) {
    const sorted = [...this.times].sort((a, b) => a - b);
    return sorted.length ? sorted[Math.min(sorted.length - 1, Math.floor(part * sorted.length))] : null;
  }
}
