// Elements, and values as texts.

export function html(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

const kSvg = "http://www.w3.org/2000/svg";

export function svg(name, attributes = {}, ...children) {
  const element = document.createElementNS(kSvg, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

export const byId = (id) => document.getElementById(id);
const kLongMs = 600000;

/** A time of the run: seconds, from ten minutes on h:mm:ss.cc. */
export function seconds(ms) {
  if (ms < kLongMs) return (ms / 1000).toFixed(2);
  const two = (value) => String(value).padStart(2, "0"), hundredths = Math.round(ms / 10);
  return `${Math.floor(hundredths / 360000)}:${two(Math.floor(hundredths / 6000) % 60)}:${two(Math.floor(hundredths / 100) % 60)}.${two(hundredths % 100)}`;
}

/** The same with its unit. */
export const duration = (ms) => seconds(ms) + (ms < kLongMs ? " s" : "");
export const plural = (n, one, many) => `${n} ${n === 1 ? one : many}`;

/** A number as fine as matters where `size` is the size of things: about five digits of it. What is smaller is 0. */
export function readable(value, size) {
  if (!Number.isFinite(value)) return "not a number";
  if (Math.abs(value) >= 1e7) return value.toExponential(3);
  const digits = Math.min(9, Math.max(0, Math.ceil(4 - Math.log10(size || 1))));
  // Adding zero turns minus zero into zero.
  return String(Number(value.toFixed(digits)) + 0).replace("-", "\u2212");
}

const kSymbols = { "\n": "\u21b5", "\r": "\u2190", "\t": "\u21e5", "\u001b": "^[", "\u0003": "^C" };

/** Text with its control characters shown as symbols: they matter on a command line. */
export function visibleText(text) {
  return text.split(/([\u0000-\u001f])/).map((piece) =>
    /^[\u0000-\u001f]$/.test(piece)
      ? html("span", { class: "symbol" }, kSymbols[piece] || `\\x${piece.charCodeAt(0).toString(16).padStart(2, "0")}`)
      : piece);
}
