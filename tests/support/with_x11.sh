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
export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
openbox >"$work/openbox.log" 2>&1 &
pids+=($!)
# Ready when it has said all of this on the root window: a program asks only once, when it starts.
for _ in $(seq 200); do
    said=$(xprop -root _NET_SUPPORTED _NET_ACTIVE_WINDOW _NET_CLIENT_LIST _NET_WORKAREA 2>/dev/null || true)
    [ "$(grep -cv 'not found' <<<"$said")" -eq 4 ] && break
    sleep 0.05
done
"$@"
