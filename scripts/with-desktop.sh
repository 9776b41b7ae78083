#!/usr/bin/env bash
# Runs a command on its own X server with a window manager: scripts/with-desktop.sh COMMAND [ARG…]
# Stops both when the command ends, and exits with the command's status.
set -euo pipefail
folder=$(mktemp -d)

end() {
  kill "${command:-}" "${manager:-}" "${server:-}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$folder"
}
trap end EXIT

mkfifo "$folder/display"
# Without -noreset, the server would reset when its last client disconnects.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$folder/display" >"$folder/log" 2>&1 &
server=$!
read -r number <"$folder/display" || { cat "$folder/log" >&2; exit 1; }
export DISPLAY=":$number"
export LC_ALL=C.UTF-8  # In the C locale, the tests' tools don't find Japanese titles.
unset WAYLAND_DISPLAY
export XDG_RUNTIME_DIR="$folder/runtime" XDG_CACHE_HOME="${XDG_CACHE_HOME:-$folder/cache}"
export XDG_DATA_HOME="$folder/data"
mkdir -m 700 "$XDG_RUNTIME_DIR"

openbox --sm-disable >/dev/null 2>&1 &
manager=$!
# A running window manager sets this property of the root window.
managed() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
for _ in $(seq 200); do
  managed && break
  sleep 0.05
done
managed || { echo "${0##*/}: openbox doesn't start" >&2; exit 1; }

dbus-run-session -- "$@" <&0 &
command=$!
wait "$command"
