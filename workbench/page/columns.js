// Columns of numbers: base64 text as typed arrays, little-endian as on every machine with a browser.

function bytesOf(base64) {
  const binary = atob(base64), bytes = new Uint8Array(binary.length);
  for (let i = 0; i < bytes.length; i++) bytes[i] = binary.charCodeAt(i);
  return bytes.buffer;
}

/** The column as an array of `Type`, Float64Array for example. */
export const column = (Type, base64) => new Type(bytesOf(base64));

/** Index of the last of `count` numbers in ascending order that is not above `value`; -1 before the first. */
export function lastNotAbove(numbers, value, count = numbers.length) {
  let low = 0, high = count;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (numbers[middle] <= value) low = middle + 1;
    else high = middle;
  }
  return low - 1;
}
