#!/bin/bash
# Runs a Windows program under Wine, with a prefix of the build folder's own that is made once.
#   run_in_wine.sh BUILD_FOLDER PROGRAM ARGS...
set -euo pipefail
build=$(realpath -m "$1")
shift
# No menu entries for the user's own desktop, no offers to install more, and the same code page for everybody.
export WINEPREFIX=$build/prefix WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
export LC_ALL=C.UTF-8
if [ -f "$build/display" ]; then
  DISPLAY=$(cat "$build/display")
  export DISPLAY
fi
if [ ! -f "$build/prefix/made" ]; then
  mkdir -p "$build"
  # Several programs may come first; one makes the prefix, and it needs no display for that.
  (
    flock 8
    [ -f "$build/prefix/made" ] && exit 0
    {
      env -u DISPLAY wineboot-stable --init </dev/null 8>&- && env -u DISPLAY wineserver-stable --wait 8>&-
    } >"$build/prefix.log" 2>&1 || {
      echo "Wine could not make its prefix $build/prefix:"
      cat "$build/prefix.log"
      exit 1
    } >&2
    touch "$build/prefix/made"
  ) 8>"$build/prefix.lock"
fi
# Wine's server outlives the program that starts it, and would keep that one's output open: whoever reads the output to
# its end would wait for it.
wineserver-stable --persistent=20 </dev/null >/dev/null 2>&1 || true
case " $* " in
  *" --gtest_"*)
    # The first program that shows a window starts Wine's desktop, which keeps that program's output open as well. And
    # CMake takes the lines of the list of tests as they stand.
    output=$(mktemp "$build/output.XXXXXX")
    trap 'rm -f "$output"' EXIT
    errors=$output
    [[ " $* " == *" --gtest_list_tests "* ]] && errors=/dev/null
    status=0
    wine-stable "$@" </dev/null >"$output" 2>>"$errors" || status=$?
    # On a busy machine Wine sometimes ends before the program begins, which would have printed at least its name.
    if [ "$status" -ne 0 ] && [ ! -s "$output" ]; then
      status=0
      wine-stable "$@" </dev/null >"$output" 2>>"$errors" || status=$?
    fi
    tr -d '\r' <"$output"
    exit "$status"
    ;;
  *) exec wine-stable "$@" ;;
esac
