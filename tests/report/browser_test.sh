#!/bin/sh
# Opens the sample reports in a headless browser: browser_test.sh FOLDER SAMPLE_PROGRAM
# Everything is made in FOLDER. Without a browser or npm the test is skipped (77), on a build server it fails.
set -u
here=$(cd "$(dirname "$0")" && pwd)
folder=$1
sample=$2

give_up() {
  if [ "${CI:-}" = true ]; then
    echo "failed: $1"
    exit 1
  fi
  echo "skipped: $1"
  exit 77
}

browser=${CHROMIUM:-$(command -v chromium)} || give_up "chromium is not installed"
command -v node >/dev/null || give_up "node is not installed"
command -v npm >/dev/null || give_up "npm is not installed"

mkdir -p "$folder" && cd "$folder" || exit 1
if ! cmp -s "$here/package-lock.json" installed-lock.json; then
  cp "$here/package.json" "$here/package-lock.json" .
  npm ci --ignore-scripts --no-audit --no-fund >npm.log 2>&1 || give_up "npm ci failed, see $folder/npm.log"
  cp package-lock.json installed-lock.json
fi
rm -rf pages && mkdir pages && "$sample" pages || exit 1
REPORT_FOLDER=$folder REPORT_BROWSER=$browser exec node --test "$here/report_browser.test.mjs"
