#!/bin/sh
# Drives the live page in a headless browser, before the real module: browser_test.sh FOLDER PAGE_FOLDER WORKBENCH SAMPLES
# Everything is made in FOLDER; the packages are those that the pages were bundled with, in PAGE_FOLDER. Without a
# browser the test is skipped (77), on a build server it fails.
set -u
here=$(cd "$(dirname "$0")" && pwd)

browser=${CHROMIUM:-$(command -v chromium)} || {
  if [ "${CI:-}" = true ]; then
    echo "failed: chromium is not installed"
    exit 1
  fi
  echo "skipped: chromium is not installed"
  exit 77
}
rm -rf "$1" && mkdir -p "$1" || exit 1
LIVE_FOLDER=$1 LIVE_PACKAGES=$2 LIVE_WORKBENCH=$3 LIVE_SAMPLES=$4 LIVE_BROWSER=$browser exec node --test "$here/live_browser.test.mjs"
