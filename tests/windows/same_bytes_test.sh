#!/bin/bash
# Builds the module a second time, in a folder of another name, and compares the two files byte for byte.
#   same_bytes_test.sh SOURCE_FOLDER MODULE SECOND_BUILD_FOLDER
set -euo pipefail
source=$1
module=$2
second=$3
rm -rf "$second"
cmake -S "$source" -B "$second" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$source/cmake/windows_toolchain.cmake" >/dev/null
cmake --build "$second" --target LMTRAutoCAD2013 >/dev/null
cmp "$module" "$second/bin/LMTRAutoCAD2013.arx"
rm -rf "$second"
echo "the same bytes"
