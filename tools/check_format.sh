#!/usr/bin/env bash
# usage: check_format.sh CLANG-FORMAT PROJECT; skipped (status 77) without the tool, failed when CI is set.
set -u
tool=$1
cd "$2" || exit 1
if [ ! -x "$tool" ]; then
  echo "skipped: clang-format is not installed"
  [ "${CI:-}" = true ] && exit 1
  exit 77
fi
mapfile -t files < <(git ls-files '*.cpp' '*.h')
[ ${#files[@]} -gt 100 ] || { echo "expected the project's sources, found ${#files[@]} files"; exit 1; }
"$tool" --dry-run -Werror "${files[@]}"
