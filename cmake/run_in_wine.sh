#!/bin/bash
# Runs a Windows program under Wine, with a prefix of the build folder's own that is made once.
#   run_in_wine.sh BUILD_FOLDER PROGRAM ARGS...
set -euo pipefail
build=$1
shift
export WINEPREFIX=$build/prefix WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
if [ -z "${LM_DISPLAY_IS_OWN:-}" ] && [ -f "$build/display" ]; then
  DISPLAY=$(cat "$build/display")
  export DISPLAY
fi
if [ ! -f "$build/prefix/made" ]; then
  mkdir -p "$build"
  # Several programs may come first; one makes the prefix, and it needs no display for that.
  (
    flock 8
    [ -f "$build/prefix/made" ] && exit 0
    env -u DISPLAY wineboot-stable --init </dev/null >/dev/null 2>&1 8>&-
    env -u DISPLAY wineserver-stable --wait 8>&-
    touch "$build/prefix/made"
  ) 8>"$build/prefix.lock"
fi
# Wine's server outlives the program that starts it, and would keep that one's output open: whoever reads the output to
# its end would wait for it.
wineserver-stable --persistent=20 </dev/null >/dev/null 2>&1 || true
case " $* " in
  # CMake takes the lines of the list as they stand.
  *" --gtest_list_tests "*) wine-stable "$@" | tr -d '\r' ;;
  *) exec wine-stable "$@" ;;
esac
