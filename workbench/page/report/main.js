// Puts the report's page together.

import "./report.css";

import { Curves } from "../curves.js";
import { DesktopView } from "../desktop.js";
import { byId, duration, html, plural } from "../dom.js";
import { Hand } from "../hand.js";
import { History } from "../history.js";
import { Log } from "../log.js";
import { CapPanel, LayersPanel, Readout, viewInWords } from "../panels.js";
import { PathView } from "../path.js";
import { Rotation } from "../rotation.js";
import { Scene, lastAt } from "../scene.js";
import { Tabs } from "../tabs.js";
import { TimeRange } from "../time_range.js";
import { Timeline } from "../timeline.js";
import { Tracks } from "../tracks.js";
import { DrawingView } from "../view.js";
import { LogList, commandList, eventList, functionList, keyList } from "./lists.js";
import { differenceList, runNames } from "./comparison.js";
import { showHead, showSummary } from "./summary.js";

const data = JSON.parse(byId("data").textContent);
const scene = new Scene(data), history = new History(data), rotation = new Rotation(data, scene);
/** A second run that this one is compared with. */
const other = data.other ? new History({ ...data.other, selected: [] }) : null;
const view = new DrawingView(byId("view"), byId("overlay"), byId("view-note"), scene);
const pathView = new PathView(byId("path"), byId("path-note"), scene, history);
const cap = new CapPanel(byId("cap"), history.largest(0, 6, scene.moments));
const readout = new Readout(byId("readout"));
const desktop = new DesktopView(byId("desktop"), scene);
const timeline = new Timeline(scene.moments, history.times, showTime);
const goTo = (time) => timeline.userSets(time);

/** The first moment after a key and what it did: the next one of the report. */
const keyEnd = (time) => scene.moments[lastAt(scene.moments, time, (m) => m.time) + 1]?.time ?? time;

const lists = {
  log: new LogList(byId("log"), new Log(data.log), { follows: data.log_follows, note: data.log_note, goTo }),
  commands: commandList(byId("commands"), data.lines, goTo),
  events: eventList(byId("events"), data, timeline.last, goTo),
  keys: keyList(byId("keys"), data.keys, keyEnd, goTo),
};
functionList(byId("functions"), data.functions);

const otherLast = other ? Math.max(other.times[other.count - 1] ?? 0, other.capTimes[other.capTimes.length - 1] ?? 0) : 0;
const range = new TimeRange(timeline.first, Math.max(timeline.last, otherLast));
const isMotion = (text) => text.startsWith("motion ");
const tracks = new Tracks(byId("tracks"), { range, history, goTo, marks: [
  { title: "Session", colour: "--ink", entries: data.events.filter(([, , text]) => !isMotion(text)).map(([time, line, text]) => [time, `${text} (line ${line})`]) },
  { title: "Selection", colour: "--turning", entries: data.selected.map(([time, index]) =>
    [time, plural(scene.selections[index]?.size ?? 0, "object selected", "objects selected")]) },
  { title: "Commands", colour: "--muted", entries: data.lines.map(([time, kind, text]) => [time, `${kind}: ${text.trim()}`]) },
  { title: "Problems", colour: "--bad", entries: data.problems.map(([time, text]) => [time ?? timeline.last, text]).sort((a, b) => a[0] - b[0]) },
] });
const curves = new Curves(byId("curves"), { chooser: byId("curve-chooser"), scale: byId("curve-scale"), range, goTo,
  runs: [{ history, first: timeline.first, last: timeline.last }, ...(other ? [{ history: other, first: timeline.first, last: otherLast }] : [])] });
if (data.compared) differenceList(byId("differences"), data.compared, goTo);
range.attachKeys(tracks.body, () => timeline.time);
byId("range-all").addEventListener("click", () => range.showAll());

let shownState = "", shown = null;

/** Shows a time; what has not changed since the last one is not drawn again. */
function showTime(index, time, isForced = false) {
  const moment = scene.moments[index], indices = history.indices(time);
  const state = `${other?.indices(time).pass} ${index} ${indices.pass} ${indices.cap} ${indices.selected}`;
  if (isForced || state !== shownState) {
    shownState = state;
    shown = moment && history.at(moment, indices);
    showState(moment, time);
  }
  pathView.show(shown, time);
  if (timeline.isPlaying) range.follow(time);
  tracks.showTime(time);
  curves.showTime(time);
  showLists(time);
}

function showState(moment, time) {
  const turning = shown && rotation.at(time, shown), otherPass = other ? other.indices(time).pass : -1;
  view.otherCamera = otherPass >= 0 && other.isOfModel(otherPass) ? other.camera(otherPass) : null;
  view.show(shown, turning?.centre);
  cap.show(shown?.cap);
  desktop.show(moment);
  readout.show(shown ? [...viewInWords(shown), ...(turning.centre ? [["Turns", turning.words]] : [])] : []);
  byId("put-back").hidden = !view.isByHand;
}

/** Only lists that can be seen follow; one that comes into sight catches up. */
function showLists(time) {
  for (const list of Object.values(lists)) if (list.list.element.offsetParent) list.show(time);
}

const again = () => showTime(timeline.index(), timeline.time, true);
const layers = new LayersPanel(byId("layers"), view, again);
const hand = new Hand(view, byId("view"), () => again(), pick);
byId("put-back").addEventListener("click", () => hand.putBack());

function pick(shape) {
  view.picked = shape?.handle ?? null;
  byId("picked").hidden = !shape;
  if (shape) byId("picked").replaceChildren(...[["Handle", shape.handle], ["Type", shape.type], ["Layer", shape.layer], ["Colour", String(shape.colour)]]
    .flatMap(([name, value]) => [html("dt", {}, name), html("dd", {}, value)]));
  view.drawOverlay();
}

function layOut() {
  pathView.layOut();
  desktop.layOut();
  again();
}

byId("plane").addEventListener("change", (event) => {
  pathView.axes = event.target.value.split(",").map(Number);
  layOut();
});
showHead(data, { length: duration(timeline.last - timeline.first), moments: scene.moments.length });
showSummary(data);
if (data.compared) byId("session-name").textContent = runNames(data.compared);
byId("legend-other").hidden = !other;
byId("desktop-panel").hidden = scene.desktops.length === 0;
const tabs = new Tabs(byId("tabs"), [["page-differences", "Differences", data.compared], ["page-log", "Log", true], ["page-commands", "Command line", true],
  ["page-events", "Session", data.events.length + data.problems.length], ["page-keys", "Keys", data.keys.length],
  ["page-functions", "Functions", data.functions.length], ["page-summary", "Summary", true]]
  .filter(([, , isThere]) => isThere).map(([id, title]) => ({ id, title })));
byId("tabs").addEventListener("click", () => showLists(timeline.time));
byId("tabs").addEventListener("keydown", () => showLists(timeline.time));
byId("verdict-reason").addEventListener("click", () => tabs.show("page-summary"));
timeline.set(timeline.first);
// Called once at the start as well, which makes the first layout.
const sizes = new ResizeObserver(layOut);
for (const id of ["view", "path", "desktop"]) sizes.observe(byId(id));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  view.recolour();
  layers.recolour();
  tracks.draw();
  curves.build();
  layOut();
});
