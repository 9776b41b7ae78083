#!/usr/bin/env bash
# Opens a document as a double click does, checks that the installed program shows it, and quits:
# scripts/open-installed.sh DOCUMENT.indd
set -euo pipefail

# await COMMAND…: repeats it until it succeeds, for up to ten seconds.
await() {
  for _ in $(seq 100); do
    "$@" && return
    sleep 0.1
  done
  echo "${0##*/}: timed out: $*" >&2
  exit 1
}
window() { xdotool search --onlyvisible --name "^$(basename "$1")\$"; }
ended() { ! kill -0 "$program" 2>/dev/null; }

type=$(xdg-mime query filetype "$1")
[ "$type" = application/x-adobe-indesign ]
[ "$(xdg-mime query default "$type")" = vintrace.desktop ]
gio open "$1"
await window "$1" >/dev/null
xprop -id "$(window "$1")" WM_CLASS | grep --quiet '"vintrace"'
program=$(xdotool getwindowpid "$(window "$1")")
[ "$(readlink "/proc/$program/exe")" = /usr/bin/vintrace ]
xdotool windowactivate --sync "$(window "$1")" key ctrl+q
await ended
echo "the installed program opened $1, of type $type"
