// The report page in a browser: opened from a file, without a network.

import assert from "node:assert/strict";
import { after, afterEach, before, beforeEach, test } from "node:test";
import { createRequire } from "node:module";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const folder = process.env.REPORT_FOLDER;
const packages = createRequire(join(process.env.REPORT_PACKAGES, "package.json"));
const { chromium } = packages("playwright-core");
const axe = readFileSync(packages.resolve("axe-core"), "utf8");
const profile = mkdtempSync(join(folder, "profile-"));

let browser, page, complaints, requests, opened;

before(async () => {
  browser = await chromium.launchPersistentContext(profile, {
    executablePath: process.env.REPORT_BROWSER,
    headless: true,
    offline: true,
    viewport: { width: 1280, height: 800 },
    args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
      "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
});

after(async () => {
  await browser?.close();
  rmSync(profile, { recursive: true, force: true });
});

beforeEach(async () => {
  complaints = [];
  requests = [];
  opened = 0;
  page = await browser.newPage();
  await page.addInitScript(kCopy);
  page.on("console", (message) => complaints.push(message.text()));
  page.on("pageerror", (error) => complaints.push(String(error)));
  page.on("request", (request) => requests.push(request.url()));
});

afterEach(async () => {
  await page.close();
  assert.deepEqual(complaints, [], "the page complained");
  assert.equal(requests.length, opened, `asked for ${requests}`);
});

const open = (name) => {
  opened++;
  return page.goto(pathToFileURL(join(folder, "pages", name)).href);
};
const text = (selector) => page.locator(selector).innerText();

/** Moves the slider as a user does. */
const slideTo = (time) => page.locator("#slider").evaluate((slider, value) => {
  slider.value = value;
  slider.dispatchEvent(new Event("input", { bubbles: true }));
}, time);

const showTab = (name) => page.getByRole("tab", { name }).click();
const rows = (list, part = "") => page.locator(`#${list} .row ${part}`).allInnerTexts();

/** Shows one layer only. */
async function isolate(layer) {
  await page.click("#layers-none");
  await page.getByRole("checkbox", { name: layer }).check();
}

/** A copy of a canvas that can be read without the browser's advice on reading often. */
const kCopy = `globalThis.pixelsOf = (canvas) => {
  const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext("2d", { willReadFrequently: true });
  copy.drawImage(canvas, 0, 0);
  return copy.getImageData(0, 0, canvas.width, canvas.height).data;
};`;

/** What is painted on a canvas: the box around it relative to the middle, x right and y up, and a sum that differs
    whenever the picture does. */
const painted = (id = "view") => page.locator(`#${id}`).evaluate((canvas) => {
  const { width, height } = canvas, pixels = globalThis.pixelsOf(canvas);
  const box = { left: Infinity, right: -Infinity, top: Infinity, bottom: -Infinity };
  let count = 0, sum = 0;
  for (let y = 0; y < height; y++)
    for (let x = 0; x < width; x++) {
      const i = 4 * (y * width + x);
      if (pixels[i + 3] < 40) continue;
      count++;
      sum = (sum * 31 + i + pixels[i] + pixels[i + 1] * 3 + pixels[i + 2] * 7) % 1000000007;
      Object.assign(box, { left: Math.min(box.left, x), right: Math.max(box.right, x), top: Math.min(box.top, y), bottom: Math.max(box.bottom, y) });
    }
  return { count, sum, width, height, left: box.left - width / 2, right: box.right + 1 - width / 2, up: height / 2 - box.top, down: height / 2 - box.bottom - 1 };
});

/** The lower end of an upright line, as the probe is. */
async function beginOf(layer) {
  await isolate(layer);
  const { left, right, down, width, height, count } = await painted();
  assert.ok(count > 0, `${layer} is not painted`);
  return { x: (left + right) / 2, y: down, width, height };
}

function assertNear(actual, expected, what) {
  assert.ok(Math.abs(actual - expected) < 2, `${what} is ${actual}, not ${expected}`);
}

test("every layer with something in it is painted", async () => {
  await open("bundle.html");
  for (const layer of ["ACROSS", "CENTRE LINES", "HOLES", "OUTLINE", "POINTS", "PROBE", "SPRING"]) {
    await isolate(layer);
    assert.ok((await painted()).count > 2, layer);
  }
  await page.click("#layers-none");
  assert.equal((await painted()).count, 0);
});

test("a point is painted where a parallel camera puts it", async () => {
  await open("bundle.html");
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 40, begin.height / 30);
  // Camera at (10,-10,10): right is (1,1,0)/sqrt 2, up on the screen (-1,1,2)/sqrt 6; the point is (3,4,5).
  assertNear(begin.x, (7 / Math.sqrt(2)) * scale, "x");
  assertNear(begin.y, (11 / Math.sqrt(6)) * scale, "y");
});

test("a point is painted where a perspective camera puts it", async () => {
  await open("bundle.html");
  await slideTo(1000);
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 20, begin.height / 15);
  // Camera at (0,-20,0) looking along Y: the point (3,4,5) is 24 away, the plane of the field 20.
  assertNear(begin.x, ((3 * 20) / 24) * scale, "x");
  assertNear(begin.y, ((5 * 20) / 24) * scale, "y");
});

test("what is behind a perspective camera is not painted", async () => {
  await open("bundle.html");
  await isolate("BEHIND");
  assert.ok((await painted()).count > 0);
  await slideTo(1000);
  assert.equal((await painted()).count, 0);
  await isolate("ACROSS");
  assert.ok((await painted()).count > 50, "a line that passes the camera is cut there");
});

test("the slider changes the picture", async () => {
  await open("bundle.html");
  const first = await painted();
  await slideTo(700);
  assert.notEqual((await painted()).sum, first.sum);
  assert.equal(await text("#clock"), "0.70 / 2.00 s");
  await slideTo(0);
  assert.equal((await painted()).sum, first.sum);
});

test("the arrow keys go from moment to moment", async () => {
  await open("bundle.html");
  for (const [key, clock] of [["ArrowRight", "0.10"], ["ArrowRight", "0.20"], ["ArrowLeft", "0.10"], ["End", "2.00"],
    ["ArrowRight", "2.00"], ["Home", "0.00"], [".", "0.05"], [".", "0.10"], [",", "0.05"], ["ArrowLeft", "0.00"]]) {
    await page.keyboard.press(key);
    assert.equal(await text("#clock"), `${clock} / 2.00 s`, key);
  }
});

test("play runs to the end and stops there", async () => {
  await open("bundle.html");
  const first = await painted();
  await page.selectOption("#speed", "4");
  await page.click("#play");
  // The clock shows hundredths: it may say 2.00 in the last frame before the end. The button knows.
  await page.waitForFunction(() => document.getElementById("play").getAttribute("aria-label") === "Play");
  assert.equal(await page.inputValue("#slider"), "2000");
  assert.notEqual((await painted()).sum, first.sum);
});

test("the space bar plays and pauses", async () => {
  await open("bundle.html");
  await page.selectOption("#speed", "0.25");
  await page.locator("#slider").focus();
  await page.keyboard.press("Space");
  assert.equal(await page.getAttribute("#play", "aria-label"), "Pause");
  await page.waitForFunction(() => Number(document.getElementById("slider").value) > 0);
  await page.keyboard.press("Space");
  assert.equal(await page.getAttribute("#play", "aria-label"), "Play");
});

/** Number of pixels of a colour on a canvas, if not another one on that over the picture. */
const pixelsOf = (variable, id = "overlay") => page.locator(`#${id}`).evaluate((canvas, name) => {
  const hex = getComputedStyle(document.documentElement).getPropertyValue(name).trim();
  const colour = [1, 3, 5].map((i) => parseInt(hex.slice(i, i + 2), 16));
  const data = globalThis.pixelsOf(canvas);
  let count = 0;
  for (let i = 0; i < data.length; i += 4) if (data[i + 3] > 200 && colour.every((v, k) => Math.abs(data[i + k] - v) < 24)) count++;
  return count;
}, variable);

test("selected objects are highlighted while they are selected", async () => {
  await open("bundle.html");
  assert.equal(await pixelsOf("--accent"), 0);
  await slideTo(500);
  assert.ok((await pixelsOf("--accent")) > 5);
  await slideTo(1500);
  assert.equal(await pixelsOf("--accent"), 0);
});

test("an object that was moved is painted where it is", async () => {
  await open("bundle.html");
  await slideTo(1500);
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 20, begin.height / 15);
  // Camera at (2.5,-20,4) looking at the origin; the line now begins at (3,4,7).
  const distance = Math.hypot(2.5, 20, 4), direction = [-2.5 / distance, 20 / distance, -4 / distance];
  const flat = Math.hypot(direction[0], direction[1]), right = [direction[1] / flat, -direction[0] / flat, 0];
  const up = [right[1] * direction[2], -right[0] * direction[2], right[0] * direction[1] - right[1] * direction[0]];
  const dot = (a) => 3 * a[0] + 4 * a[1] + 7 * a[2], share = distance / (distance + dot(direction));
  assertNear(begin.y, dot(up) * share * scale, "y");
  assert.ok(Math.abs(begin.x - dot(right) * share * scale) < 6, "x of a line that leans");
});

test("a sheet is shown with its window, and the model only in it", async () => {
  await open("bundle.html");
  await slideTo(1900);
  assert.deepEqual(await page.locator("#readout dd").allInnerTexts(), ["1, paper space", "500 \u00d7 400", "200, 140"]);
  const sheet = await painted(), scale = Math.min(sheet.width / 500, sheet.height / 400);
  // The sheet is painted whole: 420 by 297 around (210, 148.5), seen around (200, 140).
  assertNear(sheet.right - sheet.left, 420 * scale + 1, "the sheet's width");
  assertNear(sheet.up - sheet.down, 297 * scale + 1, "the sheet's height");
  assertNear((sheet.left + sheet.right) / 2, 10 * scale, "the sheet's middle");
  await page.screenshot({ path: join(folder, "sheet.png") });
  await slideTo(1800);
  assert.match(await text("#readout"), /2, perspective/);
});

test("the desktop shows what is scrolled and where the pointer is", async () => {
  await open("bundle.html");
  const thumb = () => page.locator('#desktop [data-class="SysTreeView32"] .thumb.vertical').evaluate((t) => Number(t.getAttribute("y")));
  const pointed = () => page.locator("#desktop .is-pointed").evaluate((w) => w.parentNode.dataset.class);
  const first = await thumb();
  assert.equal(await text("#desktop-place"), "SysTreeView32\nrow 0 of 399");
  await slideTo(900);
  const bar = await page.locator('#desktop [data-class="SysTreeView32"] .bar').evaluate((t) => Number(t.getAttribute("height")));
  assertNear(await thumb(), first + bar * (90 / 400), "the thumb");
  assert.equal(await pointed(), "SysTreeView32");
  await slideTo(1000);
  assert.equal(await pointed(), "Edit");
  assert.equal(await text("#desktop-place"), "Edit\nrow 3 of 60\ncolumn 110 of 300");
});

test("the picture is turned, panned and zoomed by hand, and put back", async () => {
  await open("bundle.html");
  const first = await painted(), box = await page.locator("#view").boundingBox();
  const x = box.x + box.width / 2, y = box.y + box.height / 2, seen = new Set([first.sum]);
  const drag = async (button) => {
    await page.mouse.move(x, y);
    await page.mouse.down({ button });
    await page.mouse.move(x + 40, y + 25, { steps: 3 });
    await page.mouse.up({ button });
    seen.add((await painted()).sum);
  };
  await drag("left");
  await drag("right");
  await page.mouse.wheel(0, -100);
  await page.waitForFunction(() => !document.getElementById("put-back").hidden);
  seen.add((await painted()).sum);
  assert.equal(seen.size, 4, "each changes the picture");
  await slideTo(700);
  await slideTo(0);
  assert.ok(seen.has((await painted()).sum), "it stays as the time goes on");
  await page.click("#put-back");
  assert.equal((await painted()).sum, first.sum);
  await page.locator("#view").focus();
  for (const key of ["ArrowLeft", "Shift+ArrowUp", "+"]) await page.keyboard.press(key);
  assert.notEqual((await painted()).sum, first.sum);
  assert.equal(await text("#clock"), "0.00 / 2.00 s", "the arrows act where the focus is");
  await page.keyboard.press("Escape");
  assert.equal((await painted()).sum, first.sum);
});

test("zooming keeps what is under the pointer", async () => {
  await open("bundle.html");
  const begin = await beginOf("PROBE"), box = await page.locator("#view").boundingBox();
  await page.mouse.move(box.x + box.width / 2 + begin.x, box.y + box.height / 2 - begin.y);
  for (let i = 0; i < 3; i++) await page.mouse.wheel(0, -100);
  await page.waitForFunction(() => !document.getElementById("put-back").hidden);
  const after = await beginOf("PROBE");
  assertNear(after.x, begin.x, "x");
  assertNear(after.y, begin.y, "y");
});

test("an object that is clicked shows its handle, type and layer", async () => {
  await open("bundle.html");
  const begin = await beginOf("PROBE"), box = await page.locator("#view").boundingBox();
  await page.mouse.click(box.x + box.width / 2 + begin.x + 2, box.y + box.height / 2 - begin.y - 5);
  assert.deepEqual(await page.locator("#picked dd").allInnerTexts(), ["2A", "LINE", "PROBE", "6"]);
  assert.ok((await pixelsOf("--turning")) > 20, "it is marked");
  await page.mouse.click(box.x + 5, box.y + box.height - 5);
  assert.equal(await page.locator("#picked").isVisible(), false);
});

test("the rotation mode is named, and its centre is marked", async () => {
  await open("bundle.html");
  const turns = () => page.locator("#readout dd").last().innerText(), marked = await pixelsOf("--turning");
  assert.equal(await turns(), "about the target, mode 000");
  assert.ok(marked > 20);
  await slideTo(650);
  assert.equal(await turns(), "about the middle of the selection, level horizon, mode 011");
  await slideTo(1600);
  assert.equal(await turns(), "about the camera, hover, mode 004");
  assert.equal(await pixelsOf("--turning"), 0, "the camera does not see itself");
});

test("the functions are listed by number with label and macro", async () => {
  await open("bundle.html");
  assert.equal(await page.locator("#functions").isVisible(), false);
  await showTab("Functions");
  assert.equal(await page.locator("#log").isVisible(), false);
  assert.deepEqual(await rows("functions", ".time"), ["0", "1"]);
  assert.deepEqual(await rows("functions", ".name"), ["From above", ""]);
  assert.deepEqual(await rows("functions", ".macro"), ["_-VIEW;_TOP", 'M=$(getvar,"tilemode")']);
});

test("each key is listed with what it sent and what was looked at then", async () => {
  await open("bundle.html");
  await showTab("Keys");
  assert.deepEqual(await page.locator("#keys .row").nth(0).locator(".sent").evaluateAll((all) => all.map((s) => s.textContent)),
    ["'_-VIEW _FRONT ", "'_ZOOM _ALL "]);
  assert.deepEqual(await rows("keys", ".view"), ["from the front, 40 x 30", "not changed"]);
  assert.deepEqual(await rows("keys", ".name"), ["key front", "key top, function 1"]);
  await page.locator("#keys .row").first().click();
  assert.equal(await text("#clock"), "0.50 / 2.00 s", "the moment after the key");
  assert.equal(await text("#keys .is-last .name"), "key front");
});

test("the cap's six values are shown", async () => {
  await open("bundle.html");
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["0", "0", "0", "0", "\u2212350", "0"]);
  await slideTo(1200);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["40", "0", "\u221225", "0", "0", "0"]);
});

test("the camera's path is painted up to the moment", async () => {
  await open("bundle.html");
  const first = await pixelsOf("--accent", "path");
  await slideTo(1700);
  const later = await painted("path");
  assert.ok((await pixelsOf("--accent", "path")) > first + 20, "what is past is in full colour");
  await page.selectOption("#plane", "0,2");
  assert.notEqual((await painted("path")).sum, later.sum);
});

test("between two moments the camera is that of the last pass", async () => {
  await open("bundle.html");
  const first = (await painted()).sum;
  await slideTo(60);
  const between = (await painted()).sum;
  assert.notEqual(between, first);
  await slideTo(500);
  assert.equal((await painted()).sum, between, "the pass at 0.05 s has the camera of 0.5 s");
});

test("a push between two moments is shown at its time", async () => {
  await open("bundle.html");
  await slideTo(420);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["90", "0", "0", "0", "0", "0"]);
  await slideTo(440);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["0", "0", "0", "0", "\u2212350", "0"]);
});

/** Where a time is on the tracks, and the middle of a row. */
const trackPlace = async (title, time) => {
  const box = await page.locator(".track-body").boundingBox(), titles = await page.locator(".track-titles span").allInnerTexts();
  assert.ok(titles.includes(title), `no track ${title} in ${titles}`);
  return [box.x + (box.width * time) / 2000, box.y + (titles.indexOf(title) + 0.5) * 15];
};

test("a problem is a mark on the time axis that names it, and a click goes there", async () => {
  await open("bundle.html");
  const place = await trackPlace("Problems", 700);
  await page.mouse.move(...place);
  assert.equal(await text(".hint"), "0.70 s host: something that must not be");
  await page.mouse.click(place[0] + 3, place[1]);
  assert.equal(await text("#clock"), "0.70 / 2.00 s", "exactly there");
  await page.mouse.click(...(await trackPlace("Cap", 1500)));
  assert.equal(Math.round(Number(await page.inputValue("#slider")) / 10), 150, "elsewhere to the time itself");
});

test("the wheel zooms the time and a drag pans it", async () => {
  await open("bundle.html");
  const box = await page.locator(".track-body").boundingBox(), y = box.y + 5, sums = new Set();
  const see = async () => sums.add((await page.locator(".track-body canvas").screenshot()).toString("base64"));
  await see();
  await page.mouse.move(box.x + box.width * 0.25, y);
  for (let i = 0; i < 4; i++) await page.mouse.wheel(0, -100);
  await see();
  await page.mouse.click(box.x + box.width * 0.25, y);
  assert.equal(Math.round(Number(await page.inputValue("#slider")) / 10), 50, "what is under the pointer stays");
  await page.mouse.down();
  await page.mouse.move(box.x + box.width * 0.25 + 60, y, { steps: 3 });
  await page.mouse.up();
  await see();
  assert.equal(sums.size, 3);
  await page.click("#range-all");
  await page.mouse.click(...(await trackPlace("Cap", 1000)));
  assert.equal(Math.round(Number(await page.inputValue("#slider")) / 10), 100);
});

test("the cap and the view's motion are curves with their values", async () => {
  await open("bundle.html");
  const values = (chart) => page.locator(`[data-chart=${chart}] .value`).allInnerTexts();
  await slideTo(1200);
  assert.deepEqual(await values("cap"), ["40", "0", "\u221225", "0", "0", "0"]);
  // From 0.2 s on a pass every 0.1 s, each turned by 4.5 degrees about the vertical.
  await slideTo(300);
  assert.deepEqual(await values("turning"), ["45"]);
  await slideTo(2000);
  await slideTo(50);
  assert.deepEqual(await values("turning"), ["0"], "where nothing moved");
  await slideTo(300);
  for (const name of ["Panning", "Camera", "Target", "Field"]) await page.getByRole("button", { name, exact: true }).click();
  assert.equal(await page.locator("#curves canvas").count(), 6);
  const over = await page.locator("[data-chart=cap] .u-over").boundingBox(), now = await page.locator("[data-chart=cap] .now").boundingBox();
  assertNear(now.x - over.x, over.width * 0.15, "the line of the present");
  assert.deepEqual(await values("field"), ["40", "30"]);
  assert.deepEqual(await values("target"), ["0", "0", "0"]);
  await slideTo(1100);
  assert.deepEqual(await values("field"), ["20", "15"]);
  const lines = () => page.locator("[data-chart=cap] canvas").evaluate((c) => c.toDataURL());
  const linear = await lines();
  await page.selectOption("#curve-scale", "log");
  assert.notEqual(await lines(), linear);
  await page.screenshot({ path: join(folder, "curves.png") });
});

test("the session's events and problems are listed, and a click goes to one", async () => {
  await open("bundle.html");
  await showTab("Session");
  assert.deepEqual(await rows("events", ".text"), ["motion 0 0 0 0 -350 0", "motion 90 0 0 0 0 0", "key front",
    "host: something that must not be", "1 objects left open"]);
  await page.locator("#events .row").nth(1).click();
  assert.equal(await text("#clock"), "0.41 / 2.00 s");
  assert.equal(await text("#events .is-last .text"), "motion 90 0 0 0 0 0");
});

test("the command line shows what has happened by the moment", async () => {
  await open("bundle.html");
  await showTab("Command line");
  const ahead = () => page.locator("#commands .is-ahead .kind").allInnerTexts();
  assert.deepEqual(await ahead(), ["send", "send-activate", "host", "beep"]);
  await slideTo(1000);
  assert.deepEqual(await ahead(), ["host", "beep"]);
  assert.equal(await text("#commands .is-last .text"), "^[^[_ZOOM _ALL\u21b5");
  await page.locator("#commands .row").nth(1).click();
  assert.equal(await text("#clock"), "0.45 / 2.00 s");
});

test("an entry of the log has its time, level and text first", async () => {
  await open("bundle.html");
  const cells = await page.locator("#log .row.ERR span").allInnerTexts();
  assert.deepEqual(cells, ["07:05:10.000", "ERR", "Error rotate()", "AutoCadProxy::rotate  auto_cad_proxy.c:310  thread 1"]);
});

test("the log goes with the time, and a click on an entry goes there", async () => {
  await open("long.html");
  assert.equal(await text("#log-count"), "50000 lines");
  assert.ok((await page.locator("#log .row").count()) < 60, "only what is in sight is built");
  await slideTo(25000);
  assert.deepEqual(await page.locator("#log .is-last .time").allInnerTexts(), ["25.00"]);
  const before = page.locator("#log .row:has(+ .is-last)"), time = await before.locator(".time").innerText();
  await before.click();
  assert.equal(await text("#clock"), `${time} / 50.00 s`);
});

test("the log is filtered by text and by level", async () => {
  await open("bundle.html");
  assert.equal((await rows("log")).length, 11);
  await page.fill("#log-filter", "CAP ");
  assert.equal((await rows("log")).length, 2);
  assert.equal(await text("#log-count"), "2 of 11 lines");
  await page.selectOption("#log-level", "ERR");
  assert.equal(await text("#log"), "No line of the log matches this filter.");
  await page.fill("#log-filter", "");
  assert.deepEqual(await rows("log", ".text"), ["Error rotate()"]);
  await page.selectOption("#log-level", "TMP");
  assert.equal((await rows("log")).length, 2, "an entry and the line that belongs to it");
});

test("typing into the filter moves nothing", async () => {
  await open("bundle.html");
  await page.locator("#log-filter").pressSequentially("a b");
  await page.keyboard.press("ArrowLeft");
  assert.equal(await page.inputValue("#log-filter"), "a b");
  assert.equal(await text("#clock"), "0.00 / 2.00 s");
  assert.equal(await page.getAttribute("#play", "aria-label"), "Play");
});

test("a list is one tab stop, and the arrow keys go through it", async () => {
  await open("bundle.html");
  await showTab("Session");
  await page.keyboard.press("Tab");
  assert.equal(await page.evaluate(() => document.activeElement.id), "events");
  for (const key of ["ArrowDown", "ArrowDown", "Enter"]) await page.keyboard.press(key);
  assert.equal(await text("#clock"), "0.41 / 2.00 s");
  await page.keyboard.press("Tab");
  assert.notEqual(await page.evaluate(() => document.activeElement.closest("#events")?.id), "events");
  await page.getByRole("tab", { name: "Session" }).focus();
  await page.keyboard.press("ArrowRight");
  assert.equal(await page.locator("#keys").isVisible(), true, "so are the tabs");
});

test("a run that is not clean says so, and why", async () => {
  await open("bundle.html");
  assert.equal(await text("#verdict"), "\u2717 Not clean");
  assert.equal(await text("#verdict-reason"), "host: something that must not be (and 1 more problem)");
  await page.click("#verdict-reason");
  assert.match(await text("#summary"), /Objects left open\s+1/);
  assert.match(await text("#summary-problems"), /must not be, first at 0\.70 s\s+1 objects left open/);
  await page.screenshot({ path: join(folder, "bundle.png") });
});

test("the colours follow the colour scheme", async () => {
  await open("bundle.html");
  await isolate("OUTLINE");
  const brightness = () => page.locator("#view").evaluate((canvas) => {
    const data = globalThis.pixelsOf(canvas);
    for (let i = 0; i < data.length; i += 4) if (data[i + 3] > 250) return data[i];
    return -1;
  });
  const light = await brightness();
  await page.emulateMedia({ colorScheme: "dark" });
  await slideTo(100);
  assert.ok(light < 120 && (await brightness()) > 150, "ink on paper");
  await page.click("#layers-all");
  await slideTo(1200);
  await page.screenshot({ path: join(folder, "bundle-dark.png") });
});

test("a run of nothing says what is not there", async () => {
  await open("empty.html");
  assert.equal(await text("#verdict"), "\u2713 Clean");
  assert.equal(await text("#view-note"), "The drawing holds nothing that can be drawn.");
  assert.equal(await text("#log"), "The module wrote no log.");
  assert.deepEqual(await page.locator("#tabs button").allInnerTexts(), ["Log", "Command line", "Summary"]);
  assert.equal(await page.locator("#desktop-panel").isVisible(), false);
  await showTab("Command line");
  assert.equal(await text("#commands"), "Nothing was sent or printed.");
  assert.equal(await text("#run-length"), "0.00 s, 1 moment");
  assert.ok(await page.locator("#play").isDisabled());
  assert.ok(await page.locator("#slider").isDisabled());
  await page.screenshot({ path: join(folder, "empty.png") });
});

test("texts that look like markup are shown as they are", async () => {
  await open("hostile.html");
  const markup = "</script><script>document.title='taken'</script><!-- @@STYLE@@ &amp; \"' \\";
  assert.equal(await page.title(), `${markup} \u2013 ${markup}`);
  assert.equal(await text("#log .row"), markup);
  assert.equal(await text("#drawing-name"), markup);
  assert.equal(await text("#layers .name"), markup);
  assert.equal(await page.locator("#summary td").evaluate((c) => c.textContent), markup);
  assert.match(await page.locator("#desktop-place").evaluate((p) => p.textContent), /^<\/script><script>.*\nrow 0 of 9$/);
  for (const [tab, part] of [["Command line", "#commands .text"], ["Functions", "#functions .macro"], ["Keys", "#keys .name"]]) {
    await showTab(tab);
    assert.equal(await page.locator(part).evaluate((c) => c.textContent), markup, tab);
  }
});

test("two runs that are compared are shown over each other, with their differences", async () => {
  await open("compared.html");
  assert.equal(await text("#session-name"), "A: first, B: second");
  assert.deepEqual(await rows("differences", ".text"), ["trajectory: the first difference, line 3: field_width",
    "field_width differs in 21 rows, by at most 10: 40 and 30", 'command line, only A: 450 send "a"', "only B has LINE 2B",
    "LINE 2A differs in points, moved by at most 2", "passes_3d: 20 and 21"]);
  await page.locator("#differences .row").nth(2).click();
  assert.equal(await text("#clock"), "0.45 / 2.00 s");
  assert.ok((await pixelsOf("--series-3")) > 50, "the other run's field is in the picture");
  await page.getByRole("button", { name: "Field", exact: true }).click();
  await page.screenshot({ path: join(folder, "compared.png") });
  const drawn = () => page.locator("[data-chart=field] canvas").evaluate((canvas) => globalThis.pixelsOf(canvas).filter((v, i) => i % 4 === 3 && v > 200).length);
  const both = await drawn();
  await open("bundle.html");
  await page.getByRole("button", { name: "Field", exact: true }).click();
  assert.ok((await drawn()) < both, "the other run has curves of its own");
});

test("a narrow screen keeps the slider and the verdict's reason", async () => {
  await page.setViewportSize({ width: 390, height: 800 });
  await open("bundle.html");
  const slider = await page.locator("#slider").boundingBox();
  assert.ok(slider.width > 300 && slider.y + slider.height < 800, `the slider is ${slider.width} wide`);
  assert.ok(await page.locator("#verdict-reason").isVisible());
  assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 390, "nothing is wider than the screen");
  await page.screenshot({ path: join(folder, "narrow.png"), fullPage: true });
});

for (const scheme of ["light", "dark"])
  test(`the page has no barrier that axe finds, ${scheme}`, async () => {
    await page.emulateMedia({ colorScheme: scheme });
    await open("compared.html");
    await page.evaluate(axe);
    for (const tab of await page.locator("#tabs button").allInnerTexts()) {
      await showTab(tab);
      const { violations } = await page.evaluate(() => globalThis.axe.run());
      assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes.map((node) => node.html.slice(0, 120)).join(" ")}`), [], tab);
    }
  });

test("ten thousand lines are painted at every moment", async (context) => {
  await open("large.html");
  for (let time = 0, before; time < 6000; time += 100) {
    await slideTo(time);
    const { count, sum } = await painted();
    assert.ok(count > 9000, `${count} pixels at ${time} ms`);
    assert.notEqual(sum, before, `the picture at ${time} ms`);
    before = sum;
  }
  const spent = await page.evaluate(() => {
    const slider = document.getElementById("slider"), begin = performance.now();
    for (let time = 0; time < 6000; time += 100) {
      slider.value = time;
      slider.dispatchEvent(new Event("input", { bubbles: true }));
    }
    return performance.now() - begin;
  });
  context.diagnostic(`${(spent / 60).toFixed(1)} ms a moment`);
});
