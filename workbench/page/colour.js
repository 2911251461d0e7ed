// AutoCAD's colour index as RGB, kept legible on the page's paper.

const kFirstColours = [null, [255, 0, 0], [255, 255, 0], [0, 255, 0], [0, 255, 255], [0, 0, 255], [255, 0, 255], null,
  [128, 128, 128], [192, 192, 192]];
const kGreys = [51, 80, 105, 130, 190, 255];
const kShades = [255, 189, 129, 104, 79];

/** RGB of a colour index; null where the colour is the ink (7, by block, and what is no index). */
function indexedColour(index) {
  if (index >= 250 && index <= 255) return Array(3).fill(kGreys[index - 250]);
  if (!(index >= 10 && index < 250)) return kFirstColours[index] || null;
  // Indices 10 to 249: 24 hues of 15 degrees, each in five shades, plain and two-thirds washed out.
  const hue = (Math.floor(index / 10) - 1) / 4;
  const value = kShades[Math.floor((index % 10) / 2)];
  // Odd indices are the washed-out half: no channel falls below two thirds of the shade.
  const floor = index % 2 === 1 ? (value * 2) / 3 : 0;
  const channel = (n) => {
    const k = (n + hue) % 6;
    return Math.floor(value - (value - floor) * Math.max(0, Math.min(k, 4 - k, 1)));
  };
  return [channel(5), channel(3), channel(1)];
}

function luminance(rgb) {
  // Relative luminance and contrast as the accessibility guidelines define them, constants included.
  const linear = rgb.map((v) => (v / 255 <= 0.03928 ? v / 255 / 12.92 : ((v / 255 + 0.055) / 1.055) ** 2.4));
  return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2];
}

function contrast(a, b) {
  const [low, high] = [luminance(a), luminance(b)].sort((x, y) => x - y);
  return (high + 0.05) / (low + 0.05);
}

/** CSS colour of a group: the index's own, moved toward the ink until it can be told from the paper. */
export function cssColour(index, ink, paper) {
  const own = indexedColour(index);
  if (!own) return `rgb(${ink.join(" ")})`;
  let share = 0, rgb = own;
  // 3:1 is what those guidelines ask for graphics. The loop ends at the ink itself.
  while (contrast(rgb, paper) < 3 && share < 1) {
    share += 0.05;
    rgb = own.map((v, i) => Math.round(v + (ink[i] - v) * share));
  }
  return `rgb(${rgb.join(" ")})`;
}

/** A colour of the style sheet as RGB. */
export function themeColour(name) {
  const hex = getComputedStyle(document.documentElement).getPropertyValue(name).trim();
  return [1, 3, 5].map((i) => parseInt(hex.slice(i, i + 2), 16));
}

/** A value of the style sheet as it is written there. */
export const cssValue = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();
