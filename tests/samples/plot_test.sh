#!/bin/sh
# plot_test.sh PYTHON WORKBENCH DOCS: replays give the curves that the document shows, byte for byte.
set -eu
made=$(mktemp)
trap 'rm -f "$made"' EXIT
PYTHONDONTWRITEBYTECODE=1 "$1" "$3/plot_scrolling.py" "$2" "$made"
cmp "$made" "$3/scrolling.svg" || { echo "the plot differs from scrolling.svg: run plot_scrolling.py"; exit 1; }
