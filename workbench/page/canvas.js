// A canvas that is as fine as the screen, in units of the page's pixels.

/** Sizes of canvases in the page. Asking for one after a change of the page would lay it out anew, in each picture. */
const sizes = new WeakMap();
const observer = new ResizeObserver((entries) => {
  for (const { target } of entries) measure(target);
});

function measure(canvas) {
  const size = { width: canvas.clientWidth, height: canvas.clientHeight };
  sizes.set(canvas, size);
  return size;
}

function sizeOf(canvas) {
  if (!sizes.has(canvas)) observer.observe(canvas);
  return sizes.get(canvas) ?? measure(canvas);
}

/** Fits the canvas to its place, clears it, and returns the context with the size. */
export function clearedContext(canvas) {
  const ratio = devicePixelRatio || 1, { width, height } = sizeOf(canvas);
  const w = Math.round(width * ratio), h = Math.round(height * ratio);
  // Setting a size clears the canvas, but costs more than clearing.
  if (canvas.width !== w || canvas.height !== h) [canvas.width, canvas.height] = [w, h];
  const context = canvas.getContext("2d");
  context.setTransform(ratio, 0, 0, ratio, 0, 0);
  context.clearRect(0, 0, width, height);
  return { context, width, height, ratio };
}
