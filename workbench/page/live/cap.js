// The cap: what the puck, the keyboard and the gamepad push together, as six whole numbers.

export const kAxes = ["x", "y", "z", "rx", "ry", "rz"];
/** What a real cap reaches, and what 16 bits hold. */
const kUsualRange = 350, kFullRange = 32767;
/** A page that drives is silent for no longer than this while the cap is deflected. */
const kSignOfLifeMs = 100;

export class Cap {
  /** `send(values)` is called when the values have changed, at most once for each picture of the screen. */
  constructor(send, stayAwake) {
    this.send = send;
    this.sources = new Map();
    this.values = [0, 0, 0, 0, 0, 0];
    this.sent = this.values;
    this.range = kUsualRange;
    this.strength = 1;
    this.listeners = [];
    setInterval(() => this.isDeflected() && stayAwake(), kSignOfLifeMs);
    // Somebody who looks elsewhere does not see what moves.
    for (const name of ["blur", "pagehide"]) addEventListener(name, () => this.letGo());
    document.addEventListener("visibilitychange", () => document.hidden && this.letGo());
  }

  setFullRange(isFull) {
    this.range = isFull ? kFullRange : kUsualRange;
    this.update();
  }

  /** What one source pushes: six numbers from -1 to 1. */
  push(source, amounts) {
    this.sources.set(source, amounts);
    this.update();
  }

  letGo() {
    this.sources.clear();
    for (const listener of this.listeners) listener.letGo?.();
    this.update();
  }

  isDeflected() { return this.values.some((value) => value !== 0); }

  update() {
    const sums = kAxes.map((_, i) => [...this.sources.values()].reduce((sum, amounts) => sum + amounts[i], 0));
    this.values = sums.map((sum) => Math.round(Math.max(-1, Math.min(1, sum)) * this.strength * this.range) || 0);
    for (const listener of this.listeners) listener.show(this.values, this.range);
    if (this.isDue) return;
    this.isDue = true;
    // A release is not kept waiting: pictures stop while the page is hidden.
    if (!this.isDeflected()) this.flush();
    else requestAnimationFrame(() => this.flush());
  }

  flush() {
    this.isDue = false;
    if (this.values.every((value, i) => value === this.sent[i])) return;
    this.sent = this.values;
    this.send(this.values);
  }
}

/** Axis and direction of each key of the keyboard. */
const kKeyboard = { KeyD: [0, 1], KeyA: [0, -1], KeyW: [1, 1], KeyS: [1, -1], KeyR: [2, 1], KeyF: [2, -1], KeyI: [3, 1], KeyK: [3, -1],
  KeyL: [4, 1], KeyJ: [4, -1], KeyO: [5, 1], KeyU: [5, -1] };

const isTyping = ({ target }) => /^(INPUT|SELECT|TEXTAREA)$/.test(target.tagName) && !/^(checkbox|range)$/.test(target.type);

export class Keyboard {
  constructor(cap) {
    this.cap = cap;
    this.pressed = new Set();
    cap.listeners.push({ show() {}, letGo: () => this.pressed.clear() });
    addEventListener("keydown", (event) => {
      if (!kKeyboard[event.code] || isTyping(event) || event.ctrlKey || event.altKey || event.metaKey) return;
      this.pressed.add(event.code);
      this.update();
    });
    addEventListener("keyup", (event) => this.pressed.delete(event.code) && this.update());
  }

  update() {
    const amounts = [0, 0, 0, 0, 0, 0];
    for (const code of this.pressed) amounts[kKeyboard[code][0]] += kKeyboard[code][1];
    this.cap.push("keyboard", amounts);
  }
}

const kPuckKeys = { ArrowRight: [0, 1], ArrowLeft: [0, -1], ArrowUp: [1, 1], ArrowDown: [1, -1], PageUp: [2, 1], PageDown: [2, -1],
  Home: [5, -1], End: [5, 1] };
const kTravel = 68, kRing = 76;

/** The puck on the screen. */
export class Puck {
  constructor(element, cap) {
    this.element = element;
    this.cap = cap;
    this.amounts = [0, 0, 0, 0, 0, 0];
    this.pointers = new Map();
    this.pressed = new Map();
    cap.listeners.push(this);
    element.addEventListener("pointerdown", (event) => this.begin(event));
    element.addEventListener("pointermove", (event) => this.drag(event));
    for (const name of ["pointerup", "pointercancel", "lostpointercapture"]) element.addEventListener(name, (event) => this.end(event));
    element.addEventListener("wheel", (event) => this.wheel(event), { passive: false });
    element.addEventListener("keydown", (event) => this.key(event, true));
    element.addEventListener("keyup", (event) => this.key(event, false));
    element.addEventListener("contextmenu", (event) => event.preventDefault());
  }

  /** Place in the puck's own units, from its centre, y up. */
  at({ clientX, clientY }) {
    const { left, top, width, height } = this.element.getBoundingClientRect();
    return [((clientX - left) / width) * 200 - 100, 100 - ((clientY - top) / height) * 200];
  }

  begin(event) {
    const at = this.at(event);
    this.element.setPointerCapture(event.pointerId);
    this.element.focus();
    this.pointers.set(event.pointerId, { at, isRing: Math.hypot(...at) > kRing });
    event.preventDefault();
  }

  drag(event) {
    const from = this.pointers.get(event.pointerId);
    if (!from) return;
    const at = this.at(event), limited = (v) => Math.max(-1, Math.min(1, v));
    const [dx, dy] = [limited((at[0] - from.at[0]) / kTravel), limited((at[1] - from.at[1]) / kTravel)];
    this.amounts.fill(0);
    // Clockwise is a twist to the right; a third of a turn is all of it.
    if (from.isRing) this.amounts[5] = limited(turned(from.at, at) / ((2 * Math.PI) / 3));
    else if (event.shiftKey || this.pointers.size > 1) [this.amounts[4], this.amounts[3]] = [dx, dy];
    else [this.amounts[0], this.amounts[1]] = [dx, dy];
    this.cap.push("puck", [...this.amounts]);
  }

  end(event) {
    if (!this.pointers.delete(event.pointerId)) return;
    this.amounts.fill(0);
    this.cap.push("puck", [...this.amounts]);
  }

  /** Each notch presses a little further; without another the cap springs back. */
  wheel(event) {
    event.preventDefault();
    this.pressure = Math.max(-1, Math.min(1, (this.pressure || 0) - Math.sign(event.deltaY) * 0.25));
    this.cap.push("wheel", [0, 0, this.pressure, 0, 0, 0]);
    clearTimeout(this.spring);
    this.spring = setTimeout(() => this.springBack(), 250);
  }

  springBack() {
    this.pressure = 0;
    this.cap.push("wheel", [0, 0, 0, 0, 0, 0]);
  }

  key(event, isDown) {
    const effect = kPuckKeys[event.key];
    if (!effect) return;
    event.preventDefault();
    // Shift may be let go before the arrow: the arrow remembers what it began.
    if (isDown && !this.pressed.has(event.key)) {
      const [axis, sign] = effect;
      this.pressed.set(event.key, event.shiftKey && axis < 2 ? [axis === 0 ? 4 : 3, sign] : effect);
    } else if (!isDown) this.pressed.delete(event.key);
    const amounts = [0, 0, 0, 0, 0, 0];
    for (const [axis, sign] of this.pressed.values()) amounts[axis] += sign;
    this.cap.push("arrows", amounts);
  }

  letGo() {
    this.pointers.clear();
    this.pressed.clear();
    this.pressure = 0;
  }

  show(values, range) {
    const [x, y, z, rx, ry, rz] = values.map((value) => value / range), knob = this.element.querySelector("#knob");
    knob.setAttribute("transform", `translate(${x * 30} ${-y * 30}) scale(${(1 - 0.2 * z) * (1 - 0.3 * Math.abs(ry))} ${(1 - 0.2 * z) * (1 - 0.3 * Math.abs(rx))})`);
    this.element.querySelector("#ring-mark").setAttribute("transform", `rotate(${rz * 120})`);
  }
}

/** Angle from one place to another about the centre, clockwise positive, at most half a turn. */
function turned(from, to) {
  const angle = Math.atan2(from[1], from[0]) - Math.atan2(to[1], to[0]);
  return Math.atan2(Math.sin(angle), Math.cos(angle));
}
