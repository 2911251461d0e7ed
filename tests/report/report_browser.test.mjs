// The report page in a browser: opened from a file, without a network.

import assert from "node:assert/strict";
import { after, afterEach, before, beforeEach, test } from "node:test";
import { createRequire } from "node:module";
import { mkdtempSync, rmSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const folder = process.env.REPORT_FOLDER;
const { chromium } = createRequire(join(process.env.REPORT_PACKAGES, "package.json"))("playwright-core");
const profile = mkdtempSync(join(folder, "profile-"));

let browser, page, complaints, requests;

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
  page = await browser.newPage();
  page.on("console", (message) => complaints.push(message.text()));
  page.on("pageerror", (error) => complaints.push(String(error)));
  page.on("request", (request) => requests.push(request.url()));
});

afterEach(async () => {
  await page.close();
  assert.deepEqual(complaints, [], "the page complained");
  assert.equal(requests.length, 1, `asked for ${requests}`);
});

const open = (name) => page.goto(pathToFileURL(join(folder, "pages", name)).href);
const text = (selector) => page.locator(selector).innerText();
const pathOf = (layer) => page.locator(`#view path[data-layer="${layer}"]`);
const drawn = (layer) => pathOf(layer).getAttribute("d");

/** Moves the slider as a user does. */
const slideTo = (time) => page.locator("#slider").evaluate((slider, value) => {
  slider.value = value;
  slider.dispatchEvent(new Event("input", { bubbles: true }));
}, time);

/** Where the path of a layer begins on the screen, relative to the middle of the view; x right, y up. */
const beginOf = (layer) => pathOf(layer).evaluate((path) => {
  const at = path.getPointAtLength(0).matrixTransform(path.getScreenCTM());
  const box = path.ownerSVGElement.getBoundingClientRect();
  return { x: at.x - box.x - box.width / 2, y: box.y + box.height / 2 - at.y, width: box.width, height: box.height };
});

function assertNear(actual, expected, what) {
  assert.ok(Math.abs(actual - expected) < 1, `${what} is ${actual}, not ${expected}`);
}

test("every layer with something in it has a path", async () => {
  await open("bundle.html");
  for (const layer of ["ACROSS", "CENTRE LINES", "HOLES", "OUTLINE", "POINTS", "PROBE", "SPRING"])
    assert.match(await drawn(layer), /^M[-\d.]+ [-\d.]+L/, layer);
});

test("a point is drawn where a parallel camera puts it", async () => {
  await open("bundle.html");
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 40, begin.height / 30);
  // Camera at (10,-10,10): right is (1,1,0)/sqrt 2, up on the screen (-1,1,2)/sqrt 6; the point is (3,4,5).
  assertNear(begin.x, (7 / Math.sqrt(2)) * scale, "x");
  assertNear(begin.y, (11 / Math.sqrt(6)) * scale, "y");
});

test("a point is drawn where a perspective camera puts it", async () => {
  await open("bundle.html");
  await slideTo(1000);
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 20, begin.height / 15);
  // Camera at (0,-20,0) looking along Y: the point (3,4,5) is 24 away, the plane of the field 20.
  assertNear(begin.x, ((3 * 20) / 24) * scale, "x");
  assertNear(begin.y, ((5 * 20) / 24) * scale, "y");
});

test("what is behind a perspective camera is not drawn", async () => {
  await open("bundle.html");
  assert.notEqual(await drawn("BEHIND"), "");
  await slideTo(1000);
  assert.equal(await drawn("BEHIND"), "");
  const numbers = (await drawn("ACROSS")).match(/-?[\d.]+/g).map(Number);
  assert.ok(numbers.length >= 4 && numbers.every((n) => n >= -21 && n <= 1300), `clipped to ${numbers}`);
});

test("the slider changes the picture", async () => {
  await open("bundle.html");
  const first = await drawn("SPRING");
  await slideTo(700);
  assert.notEqual(await drawn("SPRING"), first);
  assert.equal(await text("#clock"), "0.70 / 2.00 s");
  await slideTo(0);
  assert.equal(await drawn("SPRING"), first);
});

test("the arrow keys go from moment to moment", async () => {
  await open("bundle.html");
  for (const [key, clock] of [["ArrowRight", "0.10"], ["ArrowRight", "0.20"], ["ArrowLeft", "0.10"], ["End", "2.00"],
    ["ArrowRight", "2.00"], ["Home", "0.00"]]) {
    await page.keyboard.press(key);
    assert.equal(await text("#clock"), `${clock} / 2.00 s`, key);
  }
});

test("play runs to the end and stops there", async () => {
  await open("bundle.html");
  const first = await drawn("SPRING");
  await page.selectOption("#speed", "4");
  await page.click("#play");
  await page.waitForFunction((d) => document.querySelector('#view path[data-layer="SPRING"]').getAttribute("d") !== d, first);
  // The clock shows hundredths: it may say 2.00 in the last frame before the end. The button knows.
  await page.waitForFunction(() => document.getElementById("play").getAttribute("aria-label") === "Play");
  assert.equal(await page.inputValue("#slider"), "2000");
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

test("selected objects are highlighted while they are selected", async () => {
  await open("bundle.html");
  const selection = () => page.getAttribute("#view .selection", "d");
  assert.equal(await selection(), "");
  await slideTo(500);
  assert.equal(await selection(), await drawn("PROBE"));
  await slideTo(1500);
  assert.equal(await selection(), "");
});

test("an object that was moved is drawn where it is", async () => {
  await open("bundle.html");
  await slideTo(1500);
  const begin = await beginOf("PROBE");
  const scale = Math.min(begin.width / 20, begin.height / 15);
  // Camera at (2.5,-20,4) looking at the origin; the line now begins at (3,4,7).
  const distance = Math.hypot(2.5, 20, 4), direction = [-2.5 / distance, 20 / distance, -4 / distance];
  const flat = Math.hypot(direction[0], direction[1]), right = [direction[1] / flat, -direction[0] / flat, 0];
  const up = [right[1] * direction[2], -right[0] * direction[2], right[0] * direction[1] - right[1] * direction[0]];
  const dot = (a) => 3 * a[0] + 4 * a[1] + 7 * a[2], share = distance / (distance + dot(direction));
  assertNear(begin.x, dot(right) * share * scale, "x");
  assertNear(begin.y, dot(up) * share * scale, "y");
});

/** The picture's scale in the sample's sheet moments. */
const sheetScale = ({ width, height }) => Math.min(width / 500, height / 400);

test("a sheet is shown with its window, and the model in it", async () => {
  await open("bundle.html");
  await slideTo(1900);
  const begin = await beginOf("PROBE");
  const scale = sheetScale(begin);
  // In the window the camera at (4.5,-20,7.2) looks at the origin; the probe begins at (3,4,7).
  const distance = Math.hypot(4.5, 20, 7.2), direction = [-4.5 / distance, 20 / distance, -7.2 / distance];
  const flat = Math.hypot(direction[0], direction[1]), right = [direction[1] / flat, -direction[0] / flat, 0];
  const up = [right[1] * direction[2], -right[0] * direction[2], right[0] * direction[1] - right[1] * direction[0]];
  const dot = (a) => 3 * a[0] + 4 * a[1] + 7 * a[2], share = distance / (distance + dot(direction));
  const inWindow = Math.min(380 / 20, 257 / 15) * scale;
  assertNear(begin.x, 10 * scale + dot(right) * share * inWindow, "x");
  assertNear(begin.y, 8.5 * scale + dot(up) * share * inWindow, "y");
  assertNear(Number(await page.getAttribute("#view .sheet", "width")), 420 * scale, "the sheet's width");
  assertNear(Number(await page.getAttribute("#view .window", "height")), 257 * scale, "the window's height");
  assert.match(await text("#readout"), /1, paper space\s+Field\s+500 \u00d7 400\s+Centre\s+200, 140/);
  await page.screenshot({ path: join(folder, "sheet.png") });
});

test("the window of a sheet has a heavy edge while it is the current one", async () => {
  await open("bundle.html");
  const isCurrent = () => page.locator("#view .window").evaluate((w) => w.classList.contains("is-current"));
  await slideTo(1800);
  assert.equal(await isCurrent(), true);
  assert.match(await text("#readout"), /2, perspective/);
  await slideTo(1900);
  assert.equal(await isCurrent(), false);
  await slideTo(1700);
  assert.equal(await page.locator("#view .window").isVisible(), false, "in the model there is none");
});

test("nothing of the model is drawn beyond the window of a sheet", async () => {
  await open("bundle.html");
  await slideTo(1900);
  const edge = await page.locator("#view .window").evaluate((w) => ["x", "y", "width", "height"].map((n) => Number(w.getAttribute(n))));
  const numbers = (await drawn("ACROSS")).match(/-?[\d.]+/g).map(Number);
  assert.ok(numbers.length >= 4, "the line crosses the window");
  numbers.forEach((n, i) => assert.ok(n >= edge[i % 2] - 0.1 && n <= edge[i % 2] + edge[2 + (i % 2)] + 0.1, `${n} is outside`));
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

test("a run that has nothing to do with the desktop shows none", async () => {
  await open("empty.html");
  assert.equal(await page.locator("#desktop-panel").isVisible(), false);
  assert.equal(await page.locator("#tabs button").count(), 1, "neither keys nor functions");
});

test("the functions are listed by number with label and macro", async () => {
  await open("bundle.html");
  assert.equal(await page.locator("#page-functions").isVisible(), false);
  await page.getByRole("tab", { name: "Functions" }).click();
  assert.equal(await page.locator("#page-summary").isVisible(), false);
  const rows = await page.locator("#functions tr").evaluateAll((all) => all.map((row) => [...row.cells].map((cell) => cell.textContent)));
  assert.deepEqual(rows, [["0", "From above", "_-VIEW;_TOP"], ["1", "", 'M=$(getvar,"tilemode")']]);
});

test("each key is listed with what it sent and what was looked at then", async () => {
  await open("bundle.html");
  await page.getByRole("tab", { name: "Keys" }).click();
  const cells = (row) => page.locator("#keys tr").nth(row).locator("td").allInnerTexts();
  assert.deepEqual(await page.locator("#keys tr").nth(0).locator(".sent").evaluateAll((all) => all.map((s) => s.textContent)),
    ["'_-VIEW _FRONT ", "'_ZOOM _ALL "]);
  assert.equal((await cells(0))[3], "from the front, 40 x 30");
  assert.deepEqual(await cells(1), ["1.00", "key top, function 1", "^[^[", "not changed"]);
  await page.locator("#keys button").first().click();
  assert.equal(await text("#clock"), "0.50 / 2.00 s", "the moment after the key");
  assert.equal(await page.locator("#keys .is-last td").nth(1).innerText(), "key front");
});

test("the cap's six values are shown", async () => {
  await open("bundle.html");
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["0", "0", "0", "0", "\u2212350", "0"]);
  await slideTo(1200);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["40", "0", "\u221225", "0", "0", "0"]);
});

test("the camera's path is drawn up to the moment", async () => {
  await open("bundle.html");
  const eye = () => page.locator("#path circle").evaluate((c) => `${c.getAttribute("cx")} ${c.getAttribute("cy")}`);
  const [before, behind] = [await eye(), await page.getAttribute("#path .behind", "d")];
  assert.equal(behind, "");
  await slideTo(900);
  assert.notEqual(await eye(), before);
  const ahead = await page.getAttribute("#path .ahead", "d");
  assert.ok(ahead.startsWith(await page.getAttribute("#path .behind", "d")));
  await page.selectOption("#plane", "0,2");
  assert.notEqual(await page.getAttribute("#path .ahead", "d"), ahead);
});

test("between two moments the camera is that of the last pass", async () => {
  await open("bundle.html");
  const first = await drawn("SPRING");
  await slideTo(60);
  const between = await drawn("SPRING");
  assert.notEqual(between, first);
  await slideTo(500);
  assert.equal(await drawn("SPRING"), between, "the pass at 0.05 s has the camera of 0.5 s");
});

test("a push between two moments is in the strip and at its time", async () => {
  await open("bundle.html");
  const bars = (name) => page.getAttribute(`#activity .${name}`, "d");
  assert.ok((await bars("push")).split("M").length > 10, "the pushes have bars");
  await slideTo(420);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["90", "0", "0", "0", "0", "0"]);
  await slideTo(400);
  assert.deepEqual(await page.locator("#cap b").allInnerTexts(), ["0", "0", "0", "0", "\u2212350", "0"]);
});

test("problems are marked at their time with their text", async () => {
  await open("bundle.html");
  assert.equal(await page.locator("#activity .problem").count(), 1);
  assert.equal(await page.locator("#activity .problem title").evaluate((t) => t.textContent), "host: something that must not be");
});

test("the session's events are listed, and a click goes to one", async () => {
  await open("bundle.html");
  await page.getByRole("tab", { name: "Session" }).click();
  assert.deepEqual(await page.locator("#events .text").allInnerTexts(), ["motion 0 0 0 0 -350 0", "motion 90 0 0 0 0 0", "key front"]);
  await page.locator("#events button").nth(1).click();
  assert.equal(await text("#clock"), "0.41 / 2.00 s");
  assert.equal(await page.locator("#events .is-last .text").innerText(), "motion 90 0 0 0 0 0");
});

test("the command line shows what has happened by the moment", async () => {
  await open("bundle.html");
  const past = () => page.locator("#commands .is-past .kind").allInnerTexts();
  assert.deepEqual(await past(), ["print"]);
  await slideTo(1000);
  assert.deepEqual(await past(), ["print", "send", "send-activate"]);
  assert.equal(await text("#commands .is-last .text"), "^[^[_ZOOM _ALL\u21b5");
  await page.locator("#commands button").nth(1).click();
  assert.equal(await text("#clock"), "0.45 / 2.00 s");
});

test("the log is filtered by text and by level", async () => {
  await open("bundle.html");
  const rows = () => page.locator("#log li").count();
  assert.equal(await rows(), 11);
  await page.fill("#log-filter", "CAP ");
  assert.equal(await rows(), 2);
  assert.equal(await text("#log-count"), "2 of 11 lines");
  await page.selectOption("#log-level", "ERR");
  assert.equal(await text("#log"), "No line of the log matches this filter.");
  await page.fill("#log-filter", "");
  assert.match(await text("#log"), /^07:05:10\.000\|ERR\|.*Error rotate\(\)$/);
  await page.selectOption("#log-level", "TMP");
  assert.equal(await rows(), 2, "an entry and the line that belongs to it");
});

test("typing into the filter moves nothing", async () => {
  await open("bundle.html");
  await page.locator("#log-filter").pressSequentially("a b");
  await page.keyboard.press("ArrowLeft");
  assert.equal(await page.inputValue("#log-filter"), "a b");
  assert.equal(await text("#clock"), "0.00 / 2.00 s");
  assert.equal(await page.getAttribute("#play", "aria-label"), "Play");
});

test("a layer can be hidden and shown", async () => {
  await open("bundle.html");
  const box = page.getByRole("checkbox", { name: "SPRING" });
  await box.uncheck();
  assert.equal(await pathOf("SPRING").isVisible(), false);
  assert.equal(await pathOf("HOLES").isVisible(), true);
  await box.check();
  assert.equal(await pathOf("SPRING").isVisible(), true);
  await page.click("#layers-none");
  assert.equal(await page.locator("#view path[data-layer]:visible").count(), 0);
});

test("a run that is not clean says so", async () => {
  await open("bundle.html");
  assert.equal(await text("#verdict"), "\u2717 Not clean");
  assert.match(await text("#summary"), /Objects left open\s+1/);
  await page.screenshot({ path: join(folder, "bundle.png") });
});

test("the ink follows the colour scheme", async () => {
  await open("bundle.html");
  const ink = () => pathOf("OUTLINE").evaluate((path) => getComputedStyle(path).stroke);
  const own = () => page.evaluate(() => getComputedStyle(document.body).color);
  await page.emulateMedia({ colorScheme: "dark" });
  const dark = await page.waitForFunction((light) => {
    const stroke = getComputedStyle(document.querySelector('#view path[data-layer="OUTLINE"]')).stroke;
    return stroke !== light && stroke;
  }, "rgb(28, 33, 39)");
  assert.equal(await dark.jsonValue(), await own());
  assert.equal(await ink(), await own());
  await slideTo(1200);
  await page.screenshot({ path: join(folder, "bundle-dark.png") });
});

test("a run of nothing says what is not there", async () => {
  await open("empty.html");
  assert.equal(await text("#verdict"), "\u2713 Clean");
  assert.equal(await text("#view-note"), "The drawing holds nothing that can be drawn.");
  assert.equal(await text("#log"), "The module wrote no log.");
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
  assert.equal(await text("#log"), markup);
  assert.equal(await text("#commands .text"), markup);
  assert.equal(await text("#drawing-name"), markup);
  assert.equal(await text("#layers .name"), markup);
  assert.equal(await text("#summary td"), markup);
  assert.match(await page.locator("#desktop-place").evaluate((p) => p.textContent), /^<\/script><script>.*\nrow 0 of 9$/);
  assert.equal(await page.locator("#functions td").nth(1).evaluate((c) => c.textContent), markup);
  assert.equal(await page.locator("#keys td").nth(1).evaluate((c) => c.textContent), markup);
});

test("ten thousand lines are drawn at every moment", async (context) => {
  await open("large.html");
  const count = await page.evaluate(() => {
    const lines = [...document.querySelectorAll("#view path[data-layer]")].map((path) => path.getAttribute("d"));
    return lines.join("").split("M").length - 1;
  });
  assert.ok(count > 9000, `${count} lines are drawn`);
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
