// Puts the page together.

import "./report.css";
import { DesktopView } from "../desktop.js";
import { byId, plural, seconds } from "../dom.js";
import { History } from "../history.js";
import { CapPanel, CommandsPanel, EventsPanel, KeysPanel, LayersPanel, LogPanel, Tabs, showFunctions, showReadout, showSummary } from "../panels.js";
import { PathView } from "../path.js";
import { lastAt, readScene } from "../scene.js";
import { Timeline } from "../timeline.js";
import { DrawingView } from "../view.js";

const data = JSON.parse(byId("data").textContent);
const scene = readScene(data);
const history = new History(data);
const view = new DrawingView(byId("view"), byId("view-note"), scene);
const pathView = new PathView(byId("path"), byId("path-note"), scene, history);
const cap = new CapPanel(byId("cap"), history.largest(0, 6, scene.moments));
const commands = new CommandsPanel(byId("commands"), data.lines, (time) => timeline.userSets(time));

const keys = new KeysPanel(byId("keys"), data.keys, (time) => timeline.userSets(keyEnd(time)));
const desktop = new DesktopView(byId("desktop"), scene);

/** The first moment after a key and what it did: the next one of the report. */
function keyEnd(time) {
  const next = scene.moments[lastAt(scene.moments, time, (m) => m.time) + 1];
  return next ? next.time : time;
}

const events = new EventsPanel(byId("events"), data.events, (time) => timeline.userSets(time));
const log = new LogPanel(byId("log"), data, (time) => timeline.userSets(time));

let shownState = "";

function showMoment(index, time, isForced = false) {
  const moment = scene.moments[index], indices = history.indices(time);
  const state = `${index} ${indices.pass} ${indices.cap} ${indices.selected}`;
  const shown = moment && history.at(moment, indices);
  if (isForced || state !== shownState) {
    view.show(shown);
    cap.show(shown);
    desktop.show(moment);
    showReadout(byId("readout"), shown);
    shownState = state;
  }
  pathView.show(shown, time);
  commands.show(time);
  keys.show(time);
  events.show(time);
  log.show(time);
}

const timeline = new Timeline(scene.moments, data.lines, history, data.problems, showMoment);
const again = () => showMoment(timeline.index(), timeline.time, true);
const layers = new LayersPanel(byId("layers"), view, again);

function layOut() {
  pathView.layOut();
  desktop.layOut();
  timeline.drawActivity();
  again();
}

byId("drawing-name").textContent = data.drawing;
byId("session-name").textContent = data.session;
byId("run-length").textContent = `${seconds(timeline.last - timeline.first)} s, ${plural(scene.moments.length, "moment", "moments")}`;
byId("plane").addEventListener("change", (event) => {
  pathView.axes = event.target.value.split(",").map(Number);
  layOut();
});
showSummary(data);
showFunctions(byId("functions"), data.functions);
byId("desktop-panel").hidden = scene.desktops.length === 0;
new Tabs(byId("tabs"), [{ id: "page-summary", title: "Summary", isThere: true },
  { id: "page-events", title: "Session", isThere: data.events.length > 0 },
  { id: "page-keys", title: "Keys", isThere: data.keys.length > 0 },
  { id: "page-functions", title: "Functions", isThere: data.functions.length > 0 }]);
timeline.set(timeline.first);
// Called once at the start as well, which makes the first layout.
const sizes = new ResizeObserver(layOut);
for (const id of ["view", "path", "desktop", "activity"]) sizes.observe(byId(id));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  view.recolour();
  layers.recolour();
  again();
});
