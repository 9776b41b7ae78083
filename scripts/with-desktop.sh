#!/usr/bin/env bash
# Runs a command on an X server and window manager of its own: scripts/with-desktop.sh COMMAND [ARG…]
# Both end with the command, whose exit status it is.
set -euo pipefail
folder=$(mktemp -d)

end() {
  kill "${command:-}" "${manager:-}" "${server:-}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$folder"
}
trap end EXIT

mkfifo "$folder/display"
# Without -noreset, the server would start anew when the first tool that asks it has gone.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3>"$folder/display" >"$folder/log" 2>&1 &
server=$!
read -r number <"$folder/display" || { cat "$folder/log" >&2; exit 1; }
export DISPLAY=":$number"
export LC_ALL=C.UTF-8  # In the C locale, tools of the tests don't find a Japanese title.
unset WAYLAND_DISPLAY
export XDG_RUNTIME_DIR="$folder/runtime" XDG_CACHE_HOME="${XDG_CACHE_HOME:-$folder/cache}"
export XDG_DATA_HOME="$folder/data"
mkdir -m 700 "$XDG_RUNTIME_DIR"

openbox --sm-disable >/dev/null 2>&1 &
manager=$!
# The manager is there when it has put its mark on the root window.
managed() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
for _ in $(seq 200); do
  managed && break
  sleep 0.05
done
managed || { echo "${0##*/}: openbox doesn't come up" >&2; exit 1; }

dbus-run-session -- "$@" <&0 &
command=$!
wait "$command"
