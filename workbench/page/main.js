// Puts the page together.

const data = JSON.parse(byId("data").textContent);
const scene = readScene(data);
const view = new DrawingView(byId("view"), byId("view-note"), scene);
const pathView = new PathView(byId("path"), byId("path-note"), scene, data.path);
const cap = new CapPanel(byId("cap"), scene.moments);
const commands = new CommandsPanel(byId("commands"), data.lines, (time) => timeline.userSets(time));

let shownIndex = -1;

function showMoment(index, time, isForced = false) {
  const moment = scene.moments[index];
  if (isForced || index !== shownIndex) {
    view.show(moment);
    cap.show(moment);
    showReadout(byId("readout"), moment);
    shownIndex = index;
  }
  pathView.show(moment, time);
  commands.show(time);
}

const timeline = new Timeline(scene.moments, data.lines, showMoment);
const again = () => showMoment(timeline.index(), timeline.time, true);
const layers = new LayersPanel(byId("layers"), view, again);

function layOut() {
  pathView.layOut();
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
new LogPanel(byId("log"), data.log);
timeline.set(timeline.first);
const sizes = new ResizeObserver(layOut);
for (const id of ["view", "path", "activity"]) sizes.observe(byId(id));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  view.recolour();
  layers.recolour();
  again();
});
