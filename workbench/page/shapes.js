// Many polylines in flat arrays: what is drawn of a drawing. A drawing of 200,000 entities would be a million small arrays
// otherwise.

import { column } from "./columns.js";

/** Where each of some parts begins, and where the last one ends, from their lengths. */
function startsOf(lengths) {
  const starts = new Uint32Array(lengths.length + 1);
  for (let i = 0; i < lengths.length; i++) starts[i + 1] = starts[i] + lengths[i];
  return starts;
}

export class Shapes {
  /** From the columns of the page's data: `groups` are [layer, colour, number of shapes], shapes in their order. */
  constructor({ groups, types, handles, type, lines, points, xyz }) {
    this.handles = column(BigUint64Array, handles);
    this.types = types;
    this.typeNumbers = column(Uint8Array, type);
    /** First polyline of each shape, first point of each polyline. */
    this.lineStarts = startsOf(column(Uint32Array, lines));
    this.pointStarts = startsOf(column(Uint32Array, points));
    this.xyz = column(Float64Array, xyz);
    let from = 0;
    this.groups = groups.map(([layer, colour, count]) => ({ layer, colour, from, to: (from += count) }));
  }

  get count() { return this.handles.length; }
  handle(i) { return this.handles[i].toString(16).toUpperCase(); }
  type(i) { return this.types[this.typeNumbers[i]]; }
  groupOf(i) { return this.groups.find((group) => i < group.to); }
  points(i) { return this.xyz.subarray(3 * this.pointStarts[this.lineStarts[i]], 3 * this.pointStarts[this.lineStarts[i + 1]]); }

  /** Indices of the shapes with a handle. */
  withHandle(handle) {
    this.places ??= this.indexHandles();
    return this.places.get(handle) || [];
  }

  indexHandles() {
    const places = new Map();
    // Parts of one entity on several layers are shapes of their own.
    for (let i = 0; i < this.count; i++) {
      const handle = this.handle(i), known = places.get(handle);
      if (known) known.push(i);
      else places.set(handle, [i]);
    }
    return places;
  }

  /** Smallest box of all shapes as [min, max]; null when there is none. */
  bounds() {
    const min = [Infinity, Infinity, Infinity], max = [-Infinity, -Infinity, -Infinity];
    for (let i = 0; i + 2 < this.xyz.length; i += 3)
      for (let k = 0; k < 3; k++) {
        const value = this.xyz[i + k];
        if (!Number.isFinite(value)) continue;
        if (value < min[k]) min[k] = value;
        if (value > max[k]) max[k] = value;
      }
    return min[0] <= max[0] ? [min, max] : null;
  }
}
