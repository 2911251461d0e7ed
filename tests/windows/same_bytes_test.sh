#!/bin/bash
# Builds the module a second time, from sources in a folder of another name, and compares the two files byte for byte.
#   same_bytes_test.sh SOURCE_FOLDER MODULE
set -euo pipefail
module=$2
second=$(mktemp -d)
trap 'rm -rf "$second"' EXIT
source=$second/a_copy_of_the_sources
mkdir "$source"
tar -C "$1" --exclude=./build --exclude=./out --exclude=./.git -cf - . | tar -C "$source" -xf -
cmake -S "$source" -B "$second/built" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE="$source/cmake/microsoft_abi_toolchain.cmake" >/dev/null
cmake --build "$second/built" >/dev/null
cmp "$module" "$second/built/bin/LMTRAutoCAD2013.arx"
echo "the same bytes"
