#!/bin/bash
# Starts or ends the screen that the Windows programs of a build folder are shown on: an X server of its own that
# nobody sees, and Wine's own server, which then need not be started anew by each program.
#   display.sh start BUILD_FOLDER   for the process that calls; waits while another one has it
#   display.sh end BUILD_FOLDER     the caller's own, or one whose owner is gone
set -eEuo pipefail
action=${1:-}
build=${2:-}

forget() { rm -f "$build"/display{,.pid,.owner,.number}; }

# The files first: with the X server goes the lock, and whoever waits for it writes files of its own.
end_servers() {
  local server
  server=$(cat "$build/display.pid" 2>/dev/null) || server=
  forget
  WINEPREFIX=$build/prefix wineserver-stable --kill 2>/dev/null || true
  [ -z "$server" ] || kill "$server" 2>/dev/null || true
}

# The process that the screen was started for, when it still runs.
owner() {
  local owner
  owner=$(cat "$build/display.owner" 2>/dev/null) && kill -0 "$owner" 2>/dev/null && echo "$owner"
}

start_server() {
  rm -f "$build/display.number"
  mkfifo "$build/display.number"
  setsid Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$build/display.number" \
    >"$build/display.log" 2>&1 </dev/null &
  echo $! >"$build/display.pid"
  local number
  read -r number <"$build/display.number"
  rm -f "$build/display.number"
  echo ":$number" >"$build/display"
}

case $action in
  start)
    command -v Xvfb >/dev/null || { echo "no Xvfb: install the package xvfb"; exit 1; }
    mkdir -p "$build"
    # Held by the X server as long as it lives.
    exec 9>"$build/display.lock"
    if ! flock --nonblock 9; then
      if other=$(owner); then
        echo "waiting for process $other, which has the screen"
      else
        end_servers
      fi
      flock --timeout 600 9 || { echo "the screen of $build is still in use"; exit 1; }
    fi
    echo "$PPID" >"$build/display.owner"
    trap 'echo "the screen could not be started:"; cat "$build/display.log"; end_servers' ERR
    start_server
    # The prefix is made, and its desktop is on this screen from now on.
    WINEPREFIX=$build/prefix wineserver-stable --kill 2>/dev/null || true
    "$(dirname "$0")/run_in_wine.sh" "$build" cmd /c exit </dev/null >>"$build/display.log" 2>&1 9>&-
    ;;
  end)
    # While nobody holds the lock there is no X server, and nothing to end.
    [ -e "$build/display.lock" ] || exit 0
    exec 9>"$build/display.lock"
    if flock --nonblock 9; then
      forget
      exit 0
    fi
    other=$(owner) || other=$PPID
    [ "$other" != "$PPID" ] || end_servers
    ;;
  *)
    echo "usage: display.sh start|end BUILD_FOLDER" >&2
    exit 2
    ;;
esac
