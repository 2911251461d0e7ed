// Elements, and values as texts.

export function html(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

export const byId = (id) => document.getElementById(id);
export const seconds = (ms) => (ms / 1000).toFixed(2);
export const plural = (n, one, many) => `${n} ${n === 1 ? one : many}`;

/** A number of the readout: short, but a value other than zero never appears as zero. */
export function readable(value) {
  if (!Number.isFinite(value)) return "not a number";
  const size = Math.abs(value);
  return size !== 0 && (size < 0.01 || size >= 1e7) ? value.toExponential(2) : String(Number(value.toFixed(2)));
}

const kSvg = "http://www.w3.org/2000/svg";

export function svg(name, attributes = {}, ...children) {
  const element = document.createElementNS(kSvg, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}
