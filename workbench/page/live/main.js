// Puts the live page together.

import "./live.css";
import { byId } from "../dom.js";
import { Cap, Keyboard, Puck } from "./cap.js";
import { Drawing } from "./drawing.js";
import { Gamepads } from "./gamepad.js";
import { Latency } from "./latency.js";
import { Link } from "./link.js";
import { AxesTable, CommandLine, ControlPanel, HostPane, KeysPane, LogPane, Palette, SettingsPane, showBreaches, showMeters, showNote } from "./panes.js";
import { PictureView } from "./picture.js";
import { Selecting } from "./selecting.js";

let drawing = null, picture = null, page = 0, isDriving = false, isDrawDue = false;
let meters = { passes: 0, pass: 0, tick: 0 };

const link = new Link({
  hello(message) {
    page = message.page;
    host.fill(message);
    keys.fill(message.functions);
    commandLine.add(message.lines);
    log.add(message.log);
    showBreaches(message.breaches);
  },
  state(state) {
    isDriving = state.driver === page;
    byId("connection").textContent = isDriving ? "You hold the cap" : state.driver === 0 ? "Nobody holds the cap" : "Another page holds the cap";
    byId("take").hidden = isDriving;
    document.body.classList.toggle("is-driving", isDriving);
    host.show(state);
    panel.show(state);
    settings.show(state.settings);
    view.selection = new Set(state.selection);
    drawSoon();
  },
  scene(scene) {
    drawing = new Drawing(scene);
    byId("drawing-name").textContent = scene.name;
    byId("no-drawing").hidden = scene.name !== "";
    drawSoon();
  },
  changed(message) {
    drawing?.change(message);
    drawSoon();
  },
  picture(message) {
    picture = message;
    palette.show(message.bars);
    drawSoon();
  },
  lines: ({ lines }) => commandLine.add(lines),
  log: ({ text }) => log.add(text),
  breaches: ({ texts }) => showBreaches(texts),
  meters(message) {
    meters = message;
    showMeters({ ...meters, latency: latency.median() });
  },
  loaded: ({ ms }) => showNote(`The module was unloaded, its settings written, and it is loaded again: ${ms} ms.`),
  saved: ({ text }) => showNote(`Session saved: ${text}`),
  report: ({ text }) => showNote(`Report: ${text}`),
  error: ({ text }) => showNote(text, true),
  closed() {
    byId("connection").textContent = "The program has ended, or the connection is lost. Load the page again.";
    byId("connection").classList.add("is-bad");
    cap.letGo();
  },
});

const latency = new Latency();
const cap = new Cap((values) => link.send({ do: `motion ${values.join(" ")}`, n: latency.sent(values) }), () => link.send({ awake: true }));
new Keyboard(cap);
new Puck(byId("puck"), cap);
new AxesTable(byId("axes"), cap);
new Gamepads(cap, (key) => link.act(`key ${key}`));
const commandLine = new CommandLine(link), log = new LogPane(), keys = new KeysPane(link), panel = new ControlPanel(link), host = new HostPane(link);
const palette = new Palette(link), settings = new SettingsPane(link);
const view = new PictureView(byId("canvas"), byId("gl"));
new Selecting(byId("canvas"), view, { drawing: () => drawing, link, redraw: () => drawSoon() });

function drawSoon() {
  if (isDrawDue) return;
  isDrawDue = true;
  requestAnimationFrame(draw);
}

function draw() {
  isDrawDue = false;
  view.draw(picture, drawing);
  if (!picture || picture.n === draw.seen) return;
  draw.seen = picture.n;
  latency.shown(picture);
  // Ready for the next one: the program sends no more than this page can draw.
  link.send({ seen: picture.n });
}

byId("take").addEventListener("click", () => link.send({ take: true }));
byId("save").addEventListener("click", () => link.send({ save: true }));
byId("report").addEventListener("click", () => link.send({ report: true }));
byId("full-range").addEventListener("change", ({ target }) => cap.setFullRange(target.checked));
byId("strength").addEventListener("input", ({ target }) => (cap.strength = target.value / 100));
showMeters({ ...meters, latency: null });
new ResizeObserver(drawSoon).observe(byId("canvas"));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => {
  view.recolour();
  drawSoon();
});
// For those who measure.
globalThis.live = { cap, latency, view, get picture() { return picture; }, get drawing() { return drawing; } };
