// What is drawn at each moment: the shapes of the drawing's beginning, and those that have changed since.

import { Shapes } from "./shapes.js";

export class Scene {
  constructor(data) {
    this.shapes = new Shapes(data.shapes);
    this.changes = new Shapes(data.changes);
    this.selections = data.selections.map((handles) => new Set(handles));
    this.moments = data.moments;
    this.desktops = data.desktops;
    this.isGone = new Uint8Array(this.shapes.count);
    this.groups = this.groupsByLook();
  }

  /** What is drawn in one colour and hidden together: a layer and a colour with its shapes in both lists. */
  groupsByLook() {
    const groups = [];
    const groupFor = ({ layer, colour }) => {
      let group = groups.find((g) => g.layer === layer && g.colour === colour);
      if (!group) groups.push(group = { layer, colour, from: 0, to: 0, changes: [] });
      return group;
    };
    for (const { layer, colour, from, to } of this.shapes.groups) Object.assign(groupFor({ layer, colour }), { from, to });
    for (const range of this.changes.groups)
      for (let i = range.from; i < range.to; i++) groupFor(range).changes.push(i);
    return groups;
  }

  /** Makes `isGone` and `current` what they are at a moment. */
  setMoment(moment) {
    if (this.moment === moment) return;
    this.moment = moment;
    const changed = moment?.changed || [], gone = moment?.gone || [];
    if (this.hasGone) this.isGone.fill(0);
    this.hasGone = changed.length > 0 || gone.length > 0;
    this.current = new Set(changed);
    // What has changed is drawn as it is now, in place of what it was.
    for (const handle of [...changed.map((i) => this.changes.handle(i)), ...gone])
      for (const i of this.shapes.withHandle(handle)) this.isGone[i] = 1;
  }

  /** Calls `see(shapes, index, group)` for each shape of the moment whose handle is among `handles`. */
  eachWithHandle(handles, see) {
    for (const handle of handles) {
      for (const i of this.shapes.withHandle(handle)) if (!this.isGone[i]) see(this.shapes, i, this.shapes.groupOf(i));
      for (const i of this.changes.withHandle(handle)) if (this.current.has(i)) see(this.changes, i, this.changes.groupOf(i));
    }
  }

  isEmpty() { return this.current.size === 0 && this.isGone.every((gone) => gone); }
}

/** Index of the last entry of a list, ordered by time, that is not later than `time`; -1 before the first. */
export function lastAt(list, time, timeOf) {
  let low = 0, high = list.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (timeOf(list[middle]) <= time) low = middle + 1;
    else high = middle;
  }
  return low - 1;
}
