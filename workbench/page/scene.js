// The data of the page: groups of shapes (one for each layer and colour), moments, path, lines, log.

/** One shape: its handle and its polylines as flat arrays. A polyline with a coordinate that is not a number is left out. */
function readShape([handle, ...lines]) {
  const isWhole = (line) => line.every((v) => Number.isFinite(v));
  return { handle, lines: lines.filter(isWhole).map((line) => Float64Array.from(line)) };
}

export function readScene(data) {
  const groups = data.groups.map((g) => ({ layer: g.layer, colour: g.colour, shapes: g.shapes.map(readShape) }));
  const changes = data.changes.map((c) => ({ layer: c.layer, colour: c.colour, shape: readShape(c.shape) }));
  for (const change of changes) change.group = groupFor(groups, change);
  return { groups, changes, selections: data.selections.map((s) => new Set(s)), moments: data.moments,
    desktops: data.desktops };
}

/** The group that a changed shape is drawn with, made when the drawing began without it. */
function groupFor(groups, change) {
  const isIts = (g) => g.layer === change.layer && g.colour === change.colour;
  if (!groups.some(isIts)) groups.push({ layer: change.layer, colour: change.colour, shapes: [] });
  return groups.find(isIts);
}

/** The shapes of a group as they are at a moment. */
export function shapesAt(scene, moment, group) {
  const changed = (moment.changed || []).map((i) => scene.changes[i]);
  if (changed.length === 0 && !moment.gone) return group.shapes;
  const replaced = new Set([...changed.map((c) => c.shape.handle), ...(moment.gone || [])]);
  const kept = group.shapes.filter((s) => !replaced.has(s.handle));
  return kept.concat(changed.filter((c) => c.group === group).map((c) => c.shape));
}

/** Smallest box of all shapes as [min, max]; null for an empty drawing. */
export function boundsOf(groups) {
  const min = [Infinity, Infinity, Infinity], max = [-Infinity, -Infinity, -Infinity];
  for (const group of groups)
    for (const shape of group.shapes)
      for (const line of shape.lines)
        for (let i = 0; i < line.length; i++) {
          min[i % 3] = Math.min(min[i % 3], line[i]);
          max[i % 3] = Math.max(max[i % 3], line[i]);
        }
  return min[0] <= max[0] ? [min, max] : null;
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
