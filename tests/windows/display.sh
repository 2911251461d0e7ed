#!/bin/bash
# Starts or ends the screen that the Windows programs of a build folder are shown on: an X server of its own that
# nobody sees, and Wine's own server, which then need not be started anew by each program.
#   display.sh start|end BUILD_FOLDER
set -euo pipefail
action=$1
build=$2
export WINEPREFIX=$build/prefix

end_server() {
  WINEPREFIX=$build/prefix wineserver-stable --kill 2>/dev/null || true
  [ ! -f "$build/display.pid" ] || kill "$(cat "$build/display.pid")" 2>/dev/null || true
  rm -f "$build/display" "$build/display.pid"
}

case $action in
  start)
    command -v Xvfb >/dev/null || { echo "no Xvfb: install the package xvfb"; exit 1; }
    # Held by the X server as long as it lives: a second run waits for the first.
    exec 9>"$build/display.lock"
    flock --timeout 600 9
    rm -f "$build/display" "$build/display.number"
    mkfifo "$build/display.number"
    setsid Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$build/display.number" \
      >/dev/null 2>&1 </dev/null &
    echo $! >"$build/display.pid"
    read -r number <"$build/display.number"
    rm -f "$build/display.number"
    echo ":$number" >"$build/display"
    # The prefix is made, and its desktop is on this screen from now on.
    WINEPREFIX=$build/prefix wineserver-stable --kill 2>/dev/null || true
    "$(dirname "$0")/../../cmake/run_in_wine.sh" "$build" cmd /c exit </dev/null >/dev/null 2>&1 9>&-
    ;;
  end)
    end_server
    ;;
  *)
    echo "usage: display.sh start|end BUILD_FOLDER" >&2
    exit 2
    ;;
esac
