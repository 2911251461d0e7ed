// Puts the page together.

const data = JSON.parse(byId("data").textContent);
const scene = readScene(data);
const view = new DrawingView(byId("view"), byId("view-note"), scene);
const pathView = new PathView(byId("path"), byId("path-note"), scene, data.path);
const cap = new CapPanel(byId("cap"), scene.moments);
const commands = new CommandsPanel(byId("commands"), data.lines, (time) => timeline.userSets(time));

const keys = new KeysPanel(byId("keys"), data.keys, (time) => timeline.userSets(keyEnd(time)));
const desktop = new DesktopView(byId("desktop"), scene);

/** The first moment after a key and what it did: the next one of the report. */
function keyEnd(time) {
  const next = scene.moments[lastAt(scene.moments, time, (m) => m.time) + 1];
  return next ? next.time : time;
}

let shownIndex = -1;

function showMoment(index, time, isForced = false) {
  const moment = scene.moments[index];
  if (isForced || index !== shownIndex) {
    view.show(moment);
    cap.show(moment);
    desktop.show(moment);
    showReadout(byId("readout"), moment);
    shownIndex = index;
  }
  pathView.show(moment, time);
  commands.show(time);
  keys.show(time);
}

const timeline = new Timeline(scene.moments, data.lines, showMoment);
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
  { id: "page-keys", title: "Keys", isThere: data.keys.length > 0 },
  { id: "page-functions", title: "Functions", isThere: data.functions.length > 0 }]);
new LogPanel(byId("log"), data.log, data.log_note);
timeline.set(timeline.first);
const sizes = new ResizeObserver(layOut);
for (const id of ["view", "path", "desktop", "activity"]) sizes.observe(byId(id));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  view.recolour();
  layers.recolour();
  again();
});
