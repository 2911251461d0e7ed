// What two runs have not in common: a list of the differences, and names for both.

import { html, plural, seconds } from "../dom.js";
import { LongList } from "../long_list.js";

const kRuns = ["A", "B"];

/** Two values as short as tells them apart. */
function both(values) {
  const short = values.map((value) => (typeof value === "number" ? Number(value.toPrecision(6)) : value));
  return (short[0] === short[1] ? values : short).join(" and ");
}

/** The differences as [time in ms or null, text]. */
export function differences(compared) {
  const found = [], add = (time, text) => found.push([time ?? null, text]);
  const { first } = compared;
  if (first) add(first.time_ms[0] ?? first.time_ms[1], `trajectory: the first difference, line ${first.line}${first.columns.length ? `: ${first.columns.join(", ")}` : ""}`);
  for (const { column, rows, largest, values, time_ms: times } of compared.columns)
    add(times[0] ?? times[1], `${column} differs in ${plural(rows, "row", "rows")}${largest === null ? "" : `, by at most ${Number(largest.toPrecision(4))}`}: ${both(values)}`);
  compared.lines_only.forEach((lines, run) => {
    for (const { text } of lines) add(parseInt(text, 10), `command line, only ${kRuns[run]}: ${text}`);
  });
  if (compared.lines_moved) add(parseInt(compared.lines_moved.text, 10), `command line, the same in another order from ${compared.lines_moved.text}`);
  compared.entities_only.forEach((entities, run) => {
    for (const { handle, type } of entities) add(null, `only ${kRuns[run]} has ${type} ${handle}`);
  });
  for (const { handle, type, columns, moved } of compared.entities_changed)
    add(null, `${type} ${handle} differs in ${columns.join(", ")}${moved ? `, moved by at most ${Number(moved.toPrecision(4))}` : ""}`);
  for (const { key, values } of compared.summary) add(null, `${key}: ${values.map((value) => value || "nothing").join(" and ")}`);
  return found;
}

export function differenceList(element, compared, goTo) {
  const found = differences(compared), at = (i) => found[i][0];
  const list = new LongList(element, {
    row: (i) => html("div", { class: "row" }, html("span", { class: "time" }, Number.isFinite(at(i)) ? seconds(at(i)) : ""),
      html("span", { class: "text" }, found[i][1])),
    use: (i) => { if (Number.isFinite(at(i))) goTo(at(i)); },
  });
  list.fill(found.length, "The two runs are equal.");
}

/** Which run is which: "A: name, B: name". */
export const runNames = ({ runs }) => runs.map((name, i) => `${kRuns[i]}: ${name}`).join(", ");
