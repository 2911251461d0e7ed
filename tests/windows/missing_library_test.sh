#!/bin/bash
# The workbench without the client library: it starts, and says which library is missing.
#   missing_library_test.sh SOURCE_FOLDER BUILD_FOLDER
set -euo pipefail
source=$1
build=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$build"/bin/{workbench.exe,LMTRAutoCAD2013.arx,standin_objectarx.dll,standin_adapter.dll,ac{core,db19,ge19,1st19}.dll} "$folder"
status=0
told=$("$source/tools/run_in_wine.sh" "$build" "$folder/workbench.exe" replay --drawing "$source/samples/bracket.dxf" \
  --session "$source/samples/keys.session" --out "$folder" 2>&1 | tr -d '\r') || status=$?
expected="workbench: Z:${folder//\//\\}\\LMTRAutoCAD2013.arx: expected a module for host interface 0x130000, found one \
that needs lmt_ctrlr_64.dll, which is missing"
if [ "$status" -ne 2 ] || [ "$told" != "$expected" ]; then
  printf 'status %s, expected 2\ntold     %s\nexpected %s\n' "$status" "$told" "$expected"
  exit 1
fi
