#!/bin/bash
# Makes or ends the machine that the tests install on: a Wine installation of its own, without a screen.
#   machine.sh start SOURCE_FOLDER MACHINE_FOLDER
#   machine.sh end SOURCE_FOLDER MACHINE_FOLDER
set -euo pipefail
action=$1 source=$2 machine=$3
WINEPREFIX=$machine/prefix wineserver-stable --kill 2>/dev/null || true
[ "$action" = start ] || exit 0
mkdir -p "$machine"
env -u DISPLAY "$source/tools/run_in_wine.sh" "$machine" cmd /c exit </dev/null >"$machine.log" 2>&1
