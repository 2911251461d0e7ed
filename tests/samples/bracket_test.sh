#!/bin/sh
# bracket_test.sh PYTHON SAMPLES: the generator writes the committed drawing, byte for byte, each time it runs.
set -eu
made=$(mktemp)
trap 'rm -f "$made"' EXIT
for run in first second; do
  "$1" "$2/make_bracket.py" "$made"
  cmp "$made" "$2/bracket.dxf" || { echo "the $run run differs from bracket.dxf: run make_bracket.py"; exit 1; }
done
