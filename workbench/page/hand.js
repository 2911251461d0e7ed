// Turning, panning and zooming the picture by hand: mouse, touch and keyboard.

import { cross, dot, minus, norm, scaled } from "./vector.js";

const kTurnPerPixel = 0.008, kZoomPerStep = 1.2, kKeyPixels = 40;

const plus = (a, b) => a.map((v, i) => v + b[i]);

/** `v` turned by `angle` about the unit vector `axis`. */
export function turned(v, axis, angle) {
  const c = Math.cos(angle), s = Math.sin(angle), along = dot(axis, v) * (1 - c), across = cross(axis, v);
  return v.map((value, i) => value * c + across[i] * s + axis[i] * along);
}

/** The camera after a drag by (dx, dy) pixels that turns the model about the target: about the vertical and the
    screen's horizontal. */
export function turnedCamera({ camera, right }, dx, dy) {
  const turn = (v) => turned(turned(v, right, -dy * kTurnPerPixel), [0, 0, 1], -dx * kTurnPerPixel);
  const eye = minus(camera.position, camera.target);
  return { ...camera, position: plus(camera.target, turn(eye)), up: turn(camera.up) };
}

/** The camera after a drag by (dx, dy) pixels that takes the model along. */
export function pannedCamera({ camera, right, up, scale }, dx, dy) {
  const way = plus(scaled(right, -dx / scale), scaled(up, dy / scale));
  return { ...camera, position: plus(camera.position, way), target: plus(camera.target, way) };
}

/** The camera that shows `factor` times as much; what is at the pixel (x, y) stays there. */
export function zoomedCamera(projection, factor, x, y) {
  const { cx, cy } = projection, camera = pannedCamera(projection, (cx - x) * (1 - factor), (cy - y) * (1 - factor));
  // A perspective camera goes nearer: a narrower field alone would flatten what it sees.
  const eye = scaled(minus(camera.position, camera.target), factor);
  return { ...camera, position: plus(camera.target, eye), width: camera.width * factor, height: camera.height * factor };
}

/** Lets a DrawingView be moved by hand; `changed()` is called after each change. `picked(shape)` after a click. */
export class Hand {
  constructor(view, element, changed, picked) {
    this.view = view;
    this.changed = changed;
    this.picked = picked;
    this.pointers = new Map();
    element.addEventListener("pointerdown", (event) => this.press(event, element));
    element.addEventListener("pointermove", (event) => this.move(event));
    for (const name of ["pointerup", "pointercancel"]) element.addEventListener(name, (event) => this.release(event));
    element.addEventListener("contextmenu", (event) => event.preventDefault());
    element.addEventListener("wheel", (event) => this.wheel(event), { passive: false });
    element.addEventListener("keydown", (event) => this.key(event));
  }

  /** Where the pointer is in the picture. */
  static place(event) {
    const box = event.currentTarget.getBoundingClientRect();
    return { x: event.clientX - box.x, y: event.clientY - box.y };
  }

  press(event, element) {
    element.setPointerCapture(event.pointerId);
    this.pointers.set(event.pointerId, Hand.place(event));
    this.way = 0;
    this.isPan = event.button !== 0 || event.shiftKey;
  }

  move(event) {
    const before = this.pointers.get(event.pointerId);
    if (!before) return;
    const now = Hand.place(event), others = [...this.pointers].filter(([id]) => id !== event.pointerId);
    this.pointers.set(event.pointerId, now);
    const dx = now.x - before.x, dy = now.y - before.y;
    this.way += Math.abs(dx) + Math.abs(dy);
    // A hand that clicks trembles.
    if (this.way < 4) return;
    if (others.length === 0) return this.isPan ? this.pan(dx, dy) : this.turn(dx, dy);
    // Two fingers: their distance zooms, their middle pans.
    const other = others[0][1], away = (p) => Math.max(1, Math.hypot(p.x - other.x, p.y - other.y));
    this.zoom(away(before) / away(now), (now.x + other.x) / 2, (now.y + other.y) / 2);
    this.pan(dx / 2, dy / 2);
  }

  release(event) {
    if (!this.pointers.delete(event.pointerId) || event.type === "pointercancel") return;
    const { x, y } = Hand.place(event);
    if (this.way < 4 && event.button === 0) this.picked(this.view.pick(x, y));
  }

  wheel(event) {
    event.preventDefault();
    const { x, y } = Hand.place(event);
    this.zoom(kZoomPerStep ** Math.sign(event.deltaY), x, y);
  }

  key(event) {
    if (event.altKey || event.ctrlKey || event.metaKey) return;
    const arrows = { ArrowLeft: [1, 0], ArrowRight: [-1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };
    const { clientWidth: width, clientHeight: height } = event.currentTarget;
    const zooms = { "+": 1 / kZoomPerStep, "=": 1 / kZoomPerStep, "-": kZoomPerStep };
    if (arrows[event.key]) {
      const [dx, dy] = scaled([...arrows[event.key], 0], kKeyPixels);
      if (event.shiftKey) this.pan(dx, dy);
      else this.turn(dx, dy);
    } else if (zooms[event.key]) this.zoom(zooms[event.key], width / 2, height / 2);
    else if (event.key === "Escape") this.putBack();
    else return;
    event.preventDefault();
  }

  turn(dx, dy) {
    // A sheet has no other side.
    if (this.view.moment?.paper) return this.pan(dx, dy);
    this.change((projection) => turnedCamera(projection, dx, dy));
  }

  pan(dx, dy) { this.change((projection) => pannedCamera(projection, dx, dy)); }
  zoom(factor, x, y) { this.change((projection) => zoomedCamera(projection, factor, x, y)); }

  change(changedCamera) {
    const { view } = this;
    if (!view.screen) return;
    const camera = changedCamera(view.screen);
    if (!(norm(minus(camera.position, camera.target)) > 0)) return;
    if (view.moment.paper) view.ownPaper = [camera.target[0], camera.target[1], camera.width, camera.height];
    else view.ownCamera = camera;
    this.changed();
  }

  putBack() {
    this.view.ownCamera = this.view.ownPaper = null;
    this.changed();
  }
}
