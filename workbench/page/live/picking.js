// Which entities are under the pointer or in a window: their lines as they are on the screen.

const kReach = 6;

/** Place on the screen of a point, null when it is not in front of the camera. */
function place({ camera, direction: d, right: r, up: u, distance, near, scale, cx, cy }, line, i) {
  const px = line[i] - camera.target[0], py = line[i + 1] - camera.target[1], pz = line[i + 2] - camera.target[2];
  const z = px * d[0] + py * d[1] + pz * d[2] + distance;
  if (camera.isPerspective && z < near) return null;
  const s = camera.isPerspective ? (scale * distance) / z : scale;
  return [cx + (px * r[0] + py * r[1] + pz * r[2]) * s, cy - (px * u[0] + py * u[1] + pz * u[2]) * s];
}

function* segments(projection, shapes) {
  for (const { lines } of shapes)
    for (const line of lines) {
      let before = null;
      for (let i = 0; i + 2 < line.length; i += 3) {
        const at = place(projection, line, i);
        if (at && (before || line.length === 3)) yield [before || at, at];
        before = at;
      }
    }
}

function distanceTo([x, y], [[x1, y1], [x2, y2]]) {
  const dx = x2 - x1, dy = y2 - y1, t = Math.max(0, Math.min(1, ((x - x1) * dx + (y - y1) * dy) / (dx * dx + dy * dy || 1)));
  return Math.hypot(x - x1 - t * dx, y - y1 - t * dy);
}

/** Handle of the entity nearest to the point, within reach; null for none. */
export function entityAt(projections, drawing, point) {
  let best = null, least = kReach;
  for (const projection of projections)
    for (const [handle, shapes] of drawing.entities)
      for (const segment of segments(projection, shapes)) {
        const distance = distanceTo(point, segment);
        if (distance < least) [best, least] = [handle, distance];
      }
  return best;
}

/** Whether the segment has a part in the box, by clipping it. */
function touches([[x1, y1], [x2, y2]], [left, top, right, bottom]) {
  let from = 0, to = 1;
  for (const [speed, room] of [[x1 - x2, x1 - left], [x2 - x1, right - x1], [y1 - y2, y1 - top], [y2 - y1, bottom - y1]]) {
    if (speed === 0 && room < 0) return false;
    if (speed < 0) from = Math.max(from, room / speed);
    if (speed > 0) to = Math.min(to, room / speed);
  }
  return from <= to;
}

/** Handles of the entities that are wholly in the window; one drawn to the left also takes what it touches. */
export function entitiesIn(projections, drawing, [x1, y1, x2, y2]) {
  const box = [Math.min(x1, x2), Math.min(y1, y2), Math.max(x1, x2), Math.max(y1, y2)], isCrossing = x2 < x1;
  const isInside = ([x, y]) => x >= box[0] && x <= box[2] && y >= box[1] && y <= box[3];
  const handles = [];
  for (const projection of projections)
    for (const [handle, shapes] of drawing.entities) {
      const all = [...segments(projection, shapes)];
      const isTaken = isCrossing ? all.some((s) => touches(s, box)) : all.length > 0 && all.every((s) => s.every(isInside));
      if (isTaken && !handles.includes(handle)) handles.push(handle);
    }
  return handles;
}
