#!/usr/bin/env bash
# Sets up, builds and runs Vintrace: scripts/run.sh [DOCUMENT.indd …]
# Without documents it opens those of examples/. Without a display it prints their rows instead.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

need_packages "${BUILD_PACKAGES[@]}"

(cd "$project" && cmake --preset release && cmake --build --preset release) >&2

documents=("$@")
[ $# -gt 0 ] || documents=("$project"/examples/*.indd)

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ] && [ "$(uname)" = Linux ]; then
  echo "There is no display. Printing rows instead of opening windows:" >&2
  exec "$project/build/release/vintrace-inspect" -- "${documents[@]}"
fi
program="$project/build/release/vintrace"
[ "$(uname)" != Darwin ] || program="$project/build/release/Vintrace.app/Contents/MacOS/Vintrace"
exec "$program" "${documents[@]}"
