// The head of the page and the summary: what was run, whether it was clean, and if not, why.

import { byId, duration, html, plural } from "../dom.js";

/** The first problem in a line, and how many more there are. */
function reason(problems) {
  if (problems.length === 0) return "";
  const more = problems.length > 1 ? ` (and ${plural(problems.length - 1, "more problem", "more problems")})` : "";
  return problems[0][1] + more;
}

export function showHead(data, { length, moments }) {
  byId("drawing-name").textContent = data.drawing;
  byId("session-name").textContent = data.session;
  byId("run-length").textContent = `${length}, ${plural(moments, "moment", "moments")}`;
  byId("verdict").textContent = data.clean ? "\u2713 Clean" : "\u2717 Not clean";
  byId("verdict").classList.add(data.clean ? "is-clean" : "is-not-clean");
  byId("verdict-reason").textContent = reason(data.problems);
  byId("verdict-reason").hidden = data.problems.length === 0;
  byId("notes").replaceChildren(...data.notes.map((note) => html("li", {}, note)));
  byId("notes").hidden = data.notes.length === 0;
}

export function showSummary({ clean, problems, summary }) {
  byId("summary-verdict").textContent = clean ? "\u2713 Clean: no rule was broken" : "\u2717 Not clean: a rule was broken";
  byId("summary-verdict").classList.add(clean ? "is-clean" : "is-not-clean");
  byId("summary-problems").replaceChildren(...problems.map(([time, text]) =>
    html("li", {}, time === null ? text : `${text}, first at ${duration(time)}`)));
  for (const [what, howMuch] of summary)
    byId("summary").append(html("tr", {}, html("th", { scope: "row" }, what), html("td", {}, howMuch)));
}
