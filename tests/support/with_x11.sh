#!/usr/bin/env bash
# Runs a command on an X server of its own with a window manager: real windows that take the focus in turns.
set -euo pipefail

work=$(mktemp -d)
pids=()
trap 'for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done; wait; rm -rf "$work"' EXIT

mkfifo "$work/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>"$work/xvfb.log" &
pids+=($!)
read -r -t 30 number <"$work/display" || { cat "$work/xvfb.log" >&2; exit 1; }
# A machine may have no OpenGL to offer.
export DISPLAY=":$number" QT_QPA_PLATFORM=xcb QT_QUICK_BACKEND="${QT_QUICK_BACKEND:-software}"
openbox >"$work/openbox.log" 2>&1 &
pids+=($!)
# Ready when it lists the windows that it manages: one that is shown earlier never gets the focus.
for _ in $(seq 200); do
    xprop -root _NET_CLIENT_LIST 2>/dev/null | grep -q '(WINDOW)' && break
    sleep 0.05
done
"$@"
