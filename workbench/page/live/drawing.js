// The drawing on the page: what the program sent first, and every change since.

/** Coordinates are relative to `origin`, which keeps them exact as 32-bit floats. */
export class Drawing {
  constructor({ name, origin, shapes }) {
    this.name = name;
    this.origin = origin;
    this.entities = new Map();
    this.version = 0;
    this.segments = 0;
    for (const shape of shapes) this.add(shape);
  }

  add(shape) {
    const entity = this.entities.get(shape.handle);
    if (entity) entity.push(shape);
    else this.entities.set(shape.handle, [shape]);
    for (const line of shape.lines) this.segments += Math.max(1, line.length / 3 - 1);
  }

  change({ shapes, gone }) {
    for (const handle of [...gone, ...shapes.map(([handle]) => handle)]) this.entities.delete(handle);
    for (const [handle, layer, colour, lines] of shapes)
      this.add({ handle, layer, colour, lines: lines.map((line) => Float32Array.from(line, (v, i) => v - this.origin[i % 3])) });
    this.version++;
  }

  /** Shapes by colour, made anew after a change. */
  byColour() {
    if (this.groups && this.groupsVersion === this.version) return this.groups;
    this.groups = new Map();
    for (const shapes of this.entities.values())
      for (const shape of shapes) {
        const group = this.groups.get(shape.colour);
        if (group) group.push(shape);
        else this.groups.set(shape.colour, [shape]);
      }
    this.groupsVersion = this.version;
    return this.groups;
  }
}
