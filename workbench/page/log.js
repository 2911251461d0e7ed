// The module's log: entries in columns, each the time and the number of its text.

import { column } from "./columns.js";

const kEntry = /^\|(\w{3})\|\s*(\d+)\|\s*(.*?)\s*\|\s*(\d+)\|\s*(.*?)\s*\| ?(.*)$/s;
const kHead = /^(-{12}|Lumetra logfile '| {4}Time {4}\|)/;

/** A text of the log in its parts. A line that is no entry belongs to the one before it, or is part of the head. */
function partsOf(line) {
  const entry = kEntry.exec(line);
  if (entry) {
    const [, level, thread, file, number, method, text] = entry;
    return { isEntry: true, level, text, source: `${method}  ${file}:${number}  thread ${thread}` };
  }
  return { isEntry: false, isHead: kHead.test(line), level: "", text: line, source: "" };
}

export class Log {
  constructor({ count, time, text, texts, gap, left_out: leftOut }) {
    this.count = count;
    this.times = column(Uint32Array, time);
    this.textOf = column(Uint32Array, text);
    this.texts = texts.map(partsOf);
    this.levels = [...new Set(this.texts.map((part) => part.level).filter(Boolean))];
    this.gap = gap;
    this.leftOut = leftOut;
    this.readLevels();
  }

  /** The level of each line; one that continues an entry has the entry's. */
  readLevels() {
    this.levelOf = new Uint8Array(this.count);
    this.counts = new Array(this.levels.length + 1).fill(0);
    const numbers = this.texts.map(({ level }) => this.levels.indexOf(level) + 1);
    for (let i = 0, level = 0; i < this.count; i++) {
      const { isEntry, isHead } = this.texts[this.textOf[i]];
      if (isEntry) this.counts[level = numbers[this.textOf[i]]]++;
      else if (isHead) level = 0;
      this.levelOf[i] = level;
    }
  }

  level(i) { return this.levels[this.levelOf[i] - 1] || ""; }

  /** Numbers of the lines with a level (any for "") that have `wanted`, in small letters, in them. */
  find(level, wanted) {
    // Each text is compared once, however often it was logged.
    const has = this.texts.map(({ text, source }) => wanted === "" || `${text} ${source}`.toLowerCase().includes(wanted));
    const number = this.levels.indexOf(level) + 1, found = new Uint32Array(this.count);
    let length = 0;
    for (let i = 0; i < this.count; i++)
      if (has[this.textOf[i]] && (level === "" || this.levelOf[i] === number)) found[length++] = i;
    return found.subarray(0, length);
  }
}
