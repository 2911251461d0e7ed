// The rotation mode in force, in words, and the centre that the view turns about.

import { lastAt } from "./scene.js";

const kCentres = ["the target", "the origin", "the camera", "the target, as the camera", "the camera"];
const kToggles = { centre: "=> Selection as Rotation Center:", axis: "=> Selected Line as Rotation Axis:" };

/** When a toggle was switched, and to what: the module says so on the command line. */
function switchings(lines, text) {
  const found = lines.filter(([, kind, line]) => kind === "print" && line.includes(text));
  return found.map(([time, , line]) => [time, /\bON\b/i.test(line.slice(line.indexOf(text) + text.length))]);
}

/** The states of a toggle: those that the module was loaded with, and what it was switched to since. */
function states(toggles, index, lines, text) {
  const loaded = toggles.map((entry) => [entry[0], entry[index]]);
  // The sort is stable: at one time the module is loaded before it is switched.
  return [...loaded, ...switchings(lines, text)].sort((a, b) => a[0] - b[0]);
}

const lastValue = (list, time, none) => list[lastAt(list, time, (entry) => entry[0])]?.[1] ?? none;

export class Rotation {
  // The module's defaults stand for a run of an earlier version, which has no toggles.
  constructor({ modes, toggles = [[0, true, false]], lines }, scene) {
    this.modes = modes;
    this.scene = scene;
    this.centres = states(toggles, 1, lines, kToggles.centre);
    this.axes = states(toggles, 2, lines, kToggles.axis);
  }

  /** {words, centre} at a time for what is shown then; the centre is null on a sheet, where nothing turns. */
  at(time, moment) {
    const code = lastValue(this.modes, time, 0), units = code % 10, ofSelection = this.bySelection(time, moment);
    const words = [`about ${ofSelection?.words || kCentres[units] || kCentres[1]}`, code % 100 >= 10 && "level horizon",
      (code >= 100 || units === 4) && "hover", `mode ${String(code).padStart(3, "0")}`];
    const centre = moment.window ? null : ofSelection?.centre || this.byMode(units, moment.camera || moment.window);
    return { words: words.filter(Boolean).join(", "), centre };
  }

  byMode(units, camera) {
    if (units === 0 || units === 3) return camera.slice(3, 6);
    // A parallel view has no place of the camera to turn about.
    return (units === 2 || units === 4) && camera[11] === 1 ? camera.slice(0, 3) : [0, 0, 0];
  }

  /** What is selected comes first where it is switched on: a single line as axis, then the middle of all. */
  bySelection(time, moment) {
    const handles = [...(this.scene.selections[moment.selection] || [])];
    if (handles.length === 0) return null;
    const boxes = handles.map((handle) => this.boxOf(handle)).filter(Boolean);
    if (boxes.length === 0) return null;
    const middle = [0, 1, 2].map((k) => boxes.reduce((sum, { min, max }) => sum + (min[k] + max[k]) / 2, 0) / boxes.length);
    if (lastValue(this.axes, time, false) && boxes.length === 1 && boxes[0].type === "LINE") return { words: "the selected line", centre: middle };
    return lastValue(this.centres, time, false) ? { words: "the middle of the selection", centre: middle } : null;
  }

  boxOf(handle) {
    const min = [Infinity, Infinity, Infinity], max = [-Infinity, -Infinity, -Infinity];
    let type = "";
    this.scene.eachWithHandle([handle], (shapes, i) => {
      type = shapes.type(i);
      shapes.points(i).forEach((v, n) => {
        min[n % 3] = Math.min(min[n % 3], v);
        max[n % 3] = Math.max(max[n % 3], v);
      });
    });
    return min[0] <= max[0] ? { min, max, type } : null;
  }
}
