#!/bin/sh
# Bundles a page: build.sh FOLDER NAME. FOLDER gets the packages of package-lock.json, NAME.js and NAME.css. All builds
# share one FOLDER, so that the packages are fetched once.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
cd "$1"
# Two builds may begin at once.
exec 9>lock
flock 9

for tool in node npm; do
  command -v "$tool" >/dev/null || {
    echo "$tool is not installed. Expected: Debian's packages nodejs and npm, or others of their kind." >&2
    exit 1
  }
done
if ! cmp -s "$here/package-lock.json" installed-lock.json; then
  cp "$here/package.json" "$here/package-lock.json" .
  # The packages need none of their install scripts.
  npm ci --ignore-scripts --no-audit --no-fund --no-update-notifier >npm.log 2>&1 || {
    echo "npm could not fetch the packages of $here/package-lock.json:" >&2
    cat npm.log >&2
    exit 1
  }
  cp package-lock.json installed-lock.json
fi
exec node "$here/build.mjs" "$PWD" "$2"
