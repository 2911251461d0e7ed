// Bundles the page in the folder PAGE into one script and one style sheet: build.mjs FOLDER PAGE

import { createRequire } from "node:module";
import { existsSync, readFileSync, readdirSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url)), [out, page] = process.argv.slice(2);
const esbuild = createRequire(join(out, "package.json"))("esbuild");

/** The packages whose files are in a bundle. */
function packagesIn(metafile) {
  const names = Object.keys(metafile.inputs).map((input) => /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(input)?.[1]);
  return [...new Set(names.filter(Boolean))].sort();
}

/** Name, version and licence of a package as a comment: a copy of it is to bring them along. */
function notice(name) {
  const folder = join(out, "node_modules", name), { version } = JSON.parse(readFileSync(join(folder, "package.json")));
  const file = readdirSync(folder).find((entry) => /^licen[cs]e/i.test(entry));
  if (!file) throw new Error(`${name} ${version} has no file with its licence`);
  const text = readFileSync(join(folder, file), "utf8");
  if (text.includes("*/")) throw new Error(`the licence of ${name} ${version} does not fit into a comment`);
  return `/*! ${name} ${version}\n\n${text.trim()}\n*/\n`;
}

/** A file with the same contents stays as it is, so that what depends on it is not made again. */
function write(file, text) {
  if (!existsSync(file) || readFileSync(file, "utf8") !== text) writeFileSync(file, text);
}

const { outputFiles, metafile } = await esbuild.build({
  entryPoints: { [page]: join(here, page, "main.js") },
  outdir: out,
  absWorkingDir: out,
  nodePaths: [join(out, "node_modules")],
  bundle: true,
  format: "iife",
  target: ["chrome105", "firefox115"],
  minifySyntax: true,
  minifyWhitespace: true,
  // Without a character that needs an encoding the script is the same wherever it is embedded.
  charset: "ascii",
  legalComments: "none",
  metafile: true,
  write: false,
});
const notices = packagesIn(metafile).map(notice).join("");
for (const { path, text } of outputFiles) write(path, path.endsWith(".js") ? notices + text : text);
