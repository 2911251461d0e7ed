// Curves over time: the cap and the motion of the view, a chart for each quantity, all over the same part of the time.

import uPlot from "uplot";
import "uplot/dist/uPlot.min.css";

import { lastNotAbove } from "./columns.js";
import { cssValue } from "./colour.js";
import { html, readable, seconds } from "./dom.js";
import { Motion, capSeries } from "./motion.js";
import { kAxes } from "./panels.js";

/** Width of what is beside the curves, so that tracks can line up with them. */
export const kLeft = 58, kRight = 10;

const xyz = ["X", "Y", "Z"];

/** The charts of a run; `data(run)` gives [times, values of each series]. */
const kCharts = [
  { id: "cap", title: "Cap", names: kAxes, isStepped: true, data: ({ history, first, last }) => {
    const series = kAxes.map((_, k) => capSeries(history, k, first, last));
    return [series[0].times, ...series.map(({ values }) => values)];
  } },
  { id: "turning", title: "Turning, \u00b0/s", names: ["turning"], isSpeed: true, data: ({ motion }) => [motion.times, motion.turning()] },
  { id: "panning", title: "Panning, fields/s", names: ["panning"], isSpeed: true, data: ({ motion }) => [motion.times, motion.panning()] },
  { id: "camera", title: "Camera", names: xyz, data: ({ motion }) => [motion.times, ...xyz.map((_, k) => motion.position(k))] },
  { id: "target", title: "Target", names: xyz, data: ({ motion }) => [motion.times, ...xyz.map((_, k) => motion.target(k))] },
  { id: "field", title: "Field", names: ["width", "height"], data: ({ motion }) => [motion.times, motion.field(0), motion.field(1)] },
];
const kShownAtFirst = ["cap", "turning"];

/** A number on an axis: as few digits as tell its neighbours apart. */
const onAxis = (u, splits) => splits.map((v) => (v === null ? "" : Math.abs(v) >= 1e5 || (v !== 0 && Math.abs(v) < 1e-3)
  ? v.toExponential(0) : String(Number(v.toPrecision(6)))));

/** On the logarithmic scale a value below this part of the largest one is near 0, where the scale is linear. */
const kLinearShare = 1000;

function largestOf(columns) {
  let largest = 0;
  for (const values of columns) for (const value of values) if (Math.abs(value) > largest) largest = Math.abs(value);
  return largest || 1;
}

/** The upper two powers of ten of the logarithmic scale, on both sides. */
function decades(largest) {
  const top = 10 ** Math.floor(Math.log10(largest)), powers = [top, top / 10];
  return [...powers.map((v) => -v), 0, ...powers.reverse()];
}

/** What a chart shows of its values: all of those in sight, and something where there is none. */
const rangeOf = (u, low, high) => (low === null ? [-1, 1] : uPlot.rangeNum(low, high, 0.08, true));

export class Curves {
  /** `runs` are {history, first, last, name}; those after the first are drawn dashed. */
  constructor(element, { chooser, scale, range, runs, goTo }) {
    Object.assign(this, { element, scale, range, goTo, time: 0 });
    this.runs = runs.map((run) => ({ ...run, motion: new Motion(run.history) }));
    this.charts = kCharts.map((chart) => ({ ...chart, isShown: kShownAtFirst.includes(chart.id), hidden: new Set() }));
    for (const chart of this.charts) chooser.append(this.choice(chart));
    scale.addEventListener("change", () => this.build());
    range.listen(() => this.showRange());
    new ResizeObserver(() => this.layOut()).observe(element);
    this.build();
  }

  choice(chart) {
    const button = html("button", { type: "button", "aria-pressed": chart.isShown }, chart.title.split(",")[0]);
    button.addEventListener("click", () => {
      chart.isShown = !chart.isShown;
      button.setAttribute("aria-pressed", chart.isShown);
      this.build();
    });
    return button;
  }

  get shown() { return this.charts.filter((chart) => chart.isShown); }

  /** Makes all charts anew, after a change of what is shown, of the scale or of the colours. */
  build() {
    for (const chart of this.charts) chart.plot?.destroy();
    this.element.replaceChildren(...this.shown.map((chart) => this.place(chart)));
    for (const chart of this.shown) this.plot(chart);
    this.layOut();
    this.showTime(this.time);
  }

  place(chart) {
    chart.body = html("div", { class: "curve-plot" });
    chart.values = [];
    chart.at = undefined;
    const legend = html("div", { class: "curve-legend" }, html("span", { class: "muted" }, chart.title),
      ...chart.names.map((name, k) => this.legendItem(chart, name, k)));
    return html("div", { class: "curve", "data-chart": chart.id }, legend, chart.body);
  }

  legendItem(chart, name, k) {
    const value = html("span", { class: "value" });
    chart.values.push(value);
    const item = html("button", { type: "button", class: `series series-${chart.names.length === 1 ? 0 : k}`, "aria-pressed": !chart.hidden.has(k),
      title: `Show or hide ${name}` }, html("i"), name, value);
    item.addEventListener("click", () => {
      const isShown = chart.hidden.delete(k);
      if (!isShown) chart.hidden.add(k);
      item.setAttribute("aria-pressed", isShown);
      this.runs.forEach((_, r) => chart.plot.setSeries(1 + r * chart.names.length + k, { show: isShown }));
    });
    return item;
  }

  plot(chart) {
    chart.columns ??= joined(this.runs.map((run) => chart.data(run)));
    const line = cssValue("--line"), text = cssValue("--muted"), font = "10px system-ui, sans-serif";
    const axis = { stroke: text, font, grid: { stroke: line, width: 1 }, ticks: { stroke: line, width: 1, size: 4 } };
    const isLog = this.scale.value === "log", largest = isLog ? largestOf(chart.columns.slice(1)) : 1;
    const isLast = chart === this.shown[this.shown.length - 1];
    chart.plot = new uPlot({
      width: 300, height: 100, padding: [6, kRight, isLast ? 0 : 4, 0],
      legend: { show: false },
      cursor: { drag: { x: false, y: false }, points: { size: 6 }, sync: { key: "time", setSeries: false } },
      // An inverse hyperbolic sine is linear around 0 and logarithmic beyond, on both sides.
      scales: { x: { time: false, range: () => [this.range.min, this.range.max] },
        y: { range: rangeOf, ...(isLog ? { distr: 4, asinh: largest / kLinearShare } : {}) } },
      series: [{}, ...this.runs.flatMap((run, r) => chart.names.map((name, k) => this.seriesOf(chart, k, r)))],
      axes: [{ ...axis, show: isLast, size: 20, gap: 2, values: (u, splits) => splits.map((v) => (v < 600000 ? String(v / 1000) : seconds(v).replace(/\.00$/, ""))) },
        { ...axis, size: kLeft, gap: 3, values: onAxis, ...(isLog ? { splits: (u, axisIndex, low, high) => decades(largest).filter((v) => v >= low && v <= high), filter: (u, splits) => splits } : {}) }],
    }, chart.columns, chart.body);
    chart.now = html("div", { class: "now" });
    chart.plot.over.append(chart.now);
    this.range.attach(chart.plot.over, (time) => this.goTo(time));
  }

  seriesOf(chart, k, run) {
    const colour = cssValue(`--series-${chart.names.length === 1 ? 0 : k}`);
    return { stroke: colour, width: run === 0 ? 1.3 : 1, dash: run === 0 ? undefined : [5, 4], show: !chart.hidden.has(k),
      // Each pass is a mark as soon as there is room for it.
      points: chart.isStepped ? { show: false } : { size: 4, space: 6, stroke: colour, fill: colour } };
  }

  layOut() {
    const width = this.element.clientWidth;
    if (width === 0) return;
    for (const { plot, body } of this.shown) if (body.clientHeight > 0) plot.setSize({ width, height: body.clientHeight });
    this.showTime(this.time);
  }

  showRange() {
    for (const { plot } of this.shown) plot.setScale("x", { min: this.range.min, max: this.range.max });
    this.showTime(this.time);
  }

  /** Moves the line of the present and writes the values there. */
  showTime(time) {
    this.time = time;
    const share = this.range.shareOf(time), isSeen = share >= 0 && share <= 1;
    for (const chart of this.shown) {
      if (!chart.plot) continue;
      chart.now.style.display = isSeen ? "" : "none";
      // In shares, since a new plot has no width yet.
      chart.now.style.left = `${share * 100}%`;
      const at = lastNotAbove(chart.columns[0], time);
      if (at === chart.at) continue;
      chart.at = at;
      chart.names.forEach((_, k) => { chart.values[k].textContent = inLegend(chart.columns[1 + k], at, chart.isSpeed); });
    }
  }
}

/** The value at a place in a column. In a pause nothing moves: a speed is 0, and any other value stays what it was. */
function inLegend(values, at, isSpeed) {
  if (isSpeed && at >= 0 && values[at] === null) return "0";
  while (at >= 0 && values[at] == null) at--;
  return at < 0 ? "" : readable(values[at], Math.abs(values[at]) || 1);
}

/** The columns of several runs over the times of all of them. */
function joined(tables) {
  // Where one run has no value of its own the line goes on: 1 spans what the joining leaves open, 2 keeps what was null.
  return tables.length === 1 ? tables[0] : uPlot.join(tables, tables.map((table) => table.map(() => 1)));
}
