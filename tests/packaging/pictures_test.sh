#!/bin/bash
# Draws the pictures of the help pages anew and compares them with those in docs/.
#   pictures_test.sh SOURCE_FOLDER WORKBENCH
set -euo pipefail
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
python3 "$1/docs/draw_pictures.py" "$2" "$folder"
for picture in "$folder"/*.svg; do
  cmp "$picture" "$1/docs/$(basename "$picture")" || { echo "draw it anew: docs/draw_pictures.py $2 docs"; exit 1; }
done
[ "$(ls "$folder" | wc -l)" -eq 3 ]
