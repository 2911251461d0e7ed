#!/bin/sh
# Opens the sample reports in a headless browser: browser_test.sh FOLDER PAGE_FOLDER SAMPLE_PROGRAM
# Everything is made in FOLDER; the packages are those that the pages were bundled with, in PAGE_FOLDER. Without a
# browser the test is skipped (77), on a build server it fails.
set -u
here=$(cd "$(dirname "$0")" && pwd)
folder=$1
packages=$2
sample=$3

browser=${CHROMIUM:-$(command -v chromium)} || {
  if [ "${CI:-}" = true ]; then
    echo "failed: chromium is not installed"
    exit 1
  fi
  echo "skipped: chromium is not installed"
  exit 77
}

mkdir -p "$folder" && cd "$folder" || exit 1
rm -rf pages && mkdir pages && "$sample" pages || exit 1
REPORT_FOLDER=$folder REPORT_PACKAGES=$packages REPORT_BROWSER=$browser exec node --test "$here/report_browser.test.mjs"
