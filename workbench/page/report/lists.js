// The lists of a run: log, command line, session, keys, functions. All follow the time, and a click on a row goes there.

import { lastNotAbove } from "../columns.js";
import { byId, html, plural, seconds, visibleText } from "../dom.js";
import { LongList } from "../long_list.js";
import { lastAt } from "../scene.js";

const cell = (name, ...contents) => html("span", { class: name }, ...contents);

/** Rows that begin with their time; `cells(entry)` gives the others. */
class TimedList {
  constructor(element, entries, { name, none, cells, goTo, timeAfter = (entry) => entry[0] }) {
    this.entries = entries;
    this.list = new LongList(element, {
      row: (i) => html("div", { class: name(entries[i]) }, cell("time", seconds(entries[i][0])), ...cells(entries[i])),
      use: (i) => goTo(timeAfter(entries[i])),
    });
    this.list.fill(entries.length, none);
  }

  show(time) { if (this.entries.length) this.list.setCurrent(lastAt(this.entries, time, (entry) => entry[0])); }
}

export const commandList = (element, lines, goTo) => new TimedList(element, lines, {
  none: "Nothing was sent or printed.", goTo, name: ([, kind]) => `row ${kind.replace(/[^a-z-]/g, "")}`,
  cells: ([, kind, text]) => [cell("kind", kind), cell("text", ...visibleText(text))],
});

/** Problems are among the session's events, at their time; those that only the end showed come last. */
export function eventList(element, { events, problems }, last, goTo) {
  const all = [...events.map(([time, line, text]) => [time, text, `line ${line}`, ""]),
    ...problems.map(([time, text]) => [time ?? last, text, time === null ? "at the end" : "first seen", "problem"])];
  // Stable: what happened at one time stays in its order.
  all.sort((a, b) => a[0] - b[0]);
  return new TimedList(element, all, { none: "Nothing happened.", goTo, name: ([, , , kind]) => `row ${kind}`,
    cells: ([, text, place]) => [cell("text", text), cell("source", place)] });
}

export const keyList = (element, keys, timeAfter, goTo) => new TimedList(element, keys, {
  none: "No key was pressed.", goTo, timeAfter: ([time]) => timeAfter(time), name: () => "row",
  cells: ([, name, sent, view]) => [cell("name", name),
    cell("texts", ...(sent.length ? sent.flatMap((text) => [cell("sent", ...visibleText(text)), " "]) : ["nothing"])),
    cell(view ? "view" : "view muted", view || "not changed")],
});

export function functionList(element, functions) {
  const list = new LongList(element, { row: (i) => html("div", { class: "row" }, cell("time", String(i)),
    cell("name", functions[i][0]), cell("macro", functions[i][1])) });
  list.fill(functions.length, "There is no menu file.");
}

/** hh:mm:ss.mmm of a time of day, for a log that does not run with the session. */
const timeOfDay = (ms) => new Date(ms).toISOString().slice(11, 23);

export class LogList {
  constructor(element, log, { follows, note, goTo }) {
    this.log = log;
    this.follows = follows;
    this.note = note || "The module wrote no log.";
    byId("log-note").textContent = [log.count ? note : "", log.leftOut ? `${log.leftOut} lines in the middle are left out.` : ""].join(" ").trim();
    this.list = new LongList(element, { row: (i) => this.row(this.found[i]),
      use: follows ? (i) => goTo(log.times[this.found[i]]) : null });
    this.level = byId("log-level");
    this.filter = byId("log-filter");
    log.levels.forEach((level, i) => this.level.append(html("option", { value: level }, `${level} (${log.counts[i + 1]})`)));
    this.level.disabled = this.filter.disabled = log.count === 0;
    this.level.addEventListener("change", () => this.fill());
    this.filter.addEventListener("input", () => this.fill());
    this.fill();
  }

  fill() {
    const { log } = this;
    this.found = log.find(this.level.value, this.filter.value.toLowerCase());
    this.foundTimes = this.found.length === log.count ? log.times : Uint32Array.from(this.found, (i) => log.times[i]);
    const all = plural(log.count, "line", "lines");
    byId("log-count").textContent = log.count === 0 ? "" : this.found.length === log.count ? all : `${this.found.length} of ${all}`;
    this.list.fill(this.found.length, log.count ? "No line of the log matches this filter." : this.note);
    if (this.time !== undefined) this.show(this.time);
  }

  row(i) {
    const { log } = this, { isEntry, text, source } = log.texts[log.textOf[i]], time = log.times[i];
    if (!isEntry) return html("div", { class: `row ${log.level(i) || "head"}` }, cell("text whole", text || "\u00a0"));
    return html("div", { class: `row ${log.level(i)}` }, cell("time", this.follows ? seconds(time) : timeOfDay(time)),
      cell("level", log.level(i)), cell("text", text), cell("source", source));
  }

  /** Marks the last line that had been logged at that time. */
  show(time) {
    this.time = time;
    if (this.follows && this.found.length) this.list.setCurrent(lastNotAbove(this.foundTimes, time));
  }
}
