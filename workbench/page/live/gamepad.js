// Any gamepad: which of its axes and buttons push which axis of the cap and press which key. Kept in the browser.

import { byId, html } from "../dom.js";
import { kAxes } from "./cap.js";

const kKeys = ["front", "right", "top", "back", "left", "bottom", "fit"];
const kStore = "gamepad";
/** Two sticks, triggers and shoulder buttons of the standard layout. */
const kDefault = { axes: ["+a0", "-a1", "b7-b6", "-a3", "+a2", "b5-b4"], keys: [13, 15, 12, 14, 2, 3, 0] };
const kAxisSources = ["none", ...[0, 1, 2, 3].flatMap((i) => [`+a${i}`, `-a${i}`]), "b7-b6", "b6-b7", "b5-b4", "b4-b5", "b15-b14", "b12-b13"];
/** A stick at rest is not exactly in the middle. */
const kDeadZone = 0.12;

function stored() {
  try {
    const mapping = JSON.parse(localStorage.getItem(kStore));
    return mapping && mapping.axes.length === 6 && mapping.keys.length === kKeys.length ? mapping : kDefault;
  } catch {
    return kDefault;
  }
}

const withoutRest = (v) => (Math.abs(v) < kDeadZone ? 0 : (v - Math.sign(v) * kDeadZone) / (1 - kDeadZone));

function read(pad, source) {
  const axis = /^([+-])a(\d)$/.exec(source), buttons = /^b(\d+)-b(\d+)$/.exec(source);
  if (axis) return (axis[1] === "-" ? -1 : 1) * withoutRest(pad.axes[axis[2]] || 0);
  if (buttons) return (pad.buttons[buttons[1]]?.value || 0) - (pad.buttons[buttons[2]]?.value || 0);
  return 0;
}

export class Gamepads {
  constructor(cap, press) {
    this.cap = cap;
    this.press = press;
    this.mapping = structuredClone(stored());
    this.held = new Set();
    this.showMapping();
    addEventListener("gamepadconnected", ({ gamepad }) => this.begin(gamepad));
    addEventListener("gamepaddisconnected", () => this.end());
  }

  showMapping() {
    const choice = (label, options, value, set) => {
      const select = html("select", { "aria-label": `${label} by` }, ...options.map((o) => html("option", { value: o }, String(o))));
      select.value = value;
      select.addEventListener("change", () => {
        set(select.value);
        localStorage.setItem(kStore, JSON.stringify(this.mapping));
      });
      return [html("span", {}, label), select, html("span")];
    };
    byId("gamepad").replaceChildren(
      ...kAxes.flatMap((name, i) => choice(name, kAxisSources, this.mapping.axes[i], (v) => (this.mapping.axes[i] = v))),
      ...kKeys.flatMap((name, i) => choice(`key ${name}`, ["none", ...Array(17).keys()], this.mapping.keys[i],
        (v) => (this.mapping.keys[i] = v === "none" ? v : Number(v)))));
  }

  begin(gamepad) {
    byId("gamepad-state").textContent = gamepad.id;
    this.index = gamepad.index;
    if (!this.isRunning) this.look();
  }

  end() {
    this.index = undefined;
    byId("gamepad-state").textContent = "The gamepad is gone.";
    this.cap.push("gamepad", [0, 0, 0, 0, 0, 0]);
  }

  look() {
    const pad = this.index === undefined ? null : navigator.getGamepads()[this.index];
    this.isRunning = pad !== null;
    if (!pad) return;
    // A page in the background does not drive.
    if (document.hasFocus()) {
      this.cap.push("gamepad", this.mapping.axes.map((source) => read(pad, source)));
      this.mapping.keys.forEach((button, i) => this.key(kKeys[i], pad.buttons[button]?.pressed));
    }
    requestAnimationFrame(() => this.look());
  }

  key(name, isPressed) {
    if (isPressed && !this.held.has(name)) this.press(name);
    if (isPressed) this.held.add(name);
    else this.held.delete(name);
  }
}
