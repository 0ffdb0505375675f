#!/usr/bin/env bash
# demo.sh BUILD_TREE quick|widgets window|driven: an app with the library in it, and a report service on this
# machine.
# In a window it is the user's until he closes it. Driven, it is led through the whole flow by real events,
# light and then dark; what arrived is compared with what was typed, and shown.
set -euo pipefail
tree=$1
host=$2
mode=$3
sandbox=$tree/tools/sandbox/zenvor-sandbox
pids=()
end_all() {
    local status=$? pid
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait
    exit "$status"
}
trap end_all EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

start_sandbox() {
    : >"$folder/service.log" # it is read before the service has opened it
    "$sandbox" --folder "$folder/inbox" --token demo-token=com.example.demo "$@" >"$folder/service.log" &
    local service=$!
    pids+=("$service")
    for _ in $(seq 100); do
        url=$(sed -n 's/^Listening on //p' "$folder/service.log")
        [ -z "$url" ] || return 0
        kill -0 "$service" 2>/dev/null || fail "The sandbox does not start."
        sleep 0.1
    done
    fail "The sandbox does not answer."
}

# The app with the options that it has of the demo, and with more; it leaves nothing in the user's own folders.
run_app() {
    local status=0
    XDG_DATA_HOME=$folder/data "$@" --service "$url" --token demo-token --bundle-id com.example.demo &
    pids+=($!)
    wait "${pids[-1]}" || status=$?
    unset 'pids[-1]'
    case $status in
    0) ;;
    124) fail "The app hangs: it was ended after three minutes." ;;
    1 | 2) fail "The app has ended with an error (exit code $status)." ;;
    *) fail "The app has crashed or was killed (exit code $status)." ;;
    esac
}

in_window() {
    say "A report service on this machine"
    start_sandbox
    printf 'Its inbox shows what arrives: %s/\n' "$url"
    say "The app: give feedback from its menu, or by Ctrl+Shift+S. Close its window to end the demo."
    tail -n +2 -f "$folder/service.log" &
    pids+=($!)
    run_app "$app"
}

driven() {
    say "1. A report service on this machine"
    # Slow enough that the form can be seen while it sends.
    start_sandbox --fault '{"path": "/v1/sdk/reports", "delayMs": 500, "times": 0}'
    echo "$url"

    say "2. The app, led through the flow by real events"
    mkdir -p "$folder/home/Pictures"
    cp examples/media/screen.png "$folder/home/Pictures/list.png"
    cp examples/media/clip.mp4 "$folder/home/Pictures/scrolling.mp4"
    cp examples/media/screen.png "$folder/home/Pictures/list-again.png"
    touch -d "1 hour ago" "$folder/home/Pictures/scrolling.mp4"
    touch -d "2 hours ago" "$folder/home/Pictures/list-again.png"
    run_app env -u XDG_CONFIG_HOME HOME="$folder/home" timeout -k 5 180 "$app" --inbox "$folder/inbox" --pictures "$folder"

    say "3. What arrived"
    for report in "$folder"/inbox/reports/*; do
        cat "$report/report.json"
        printf '\nwith %s\n' "$(cd "$report" && ls -m ./[0-9]*)"
    done

    say "4. What the service saw"
    grep -E ' (GET|POST|PUT) ' "$folder/service.log"
    if grep -qE ' (GET|POST|PUT) [^ ]+ [45]' "$folder/service.log"; then
        fail "The service has refused a request."
    fi

    say "5. A picture of every screen, in $folder"
    (cd "$folder" && ls ./*.png)

    if [ -t 0 ] && [ -t 1 ]; then
        say "The inbox is at $url/ until you press Enter."
        read -r
    fi
}

case $host in
quick) folder=$PWD/build/demo ;;
widgets) folder=$PWD/build/demo-widgets ;;
*) fail "demo.sh BUILD_TREE quick|widgets window|driven" ;;
esac
app=$tree/examples/$host-host/$host-host
case $mode in
window) folder+=-window ;; # what the user has sent stays in the inbox
driven) app+=-driver ;;
*) fail "demo.sh BUILD_TREE quick|widgets window|driven" ;;
esac
for program in "$sandbox" "$app"; do
    [ -x "$program" ] || fail "$program is missing; ./dev demo builds it."
done
[ "$mode" = window ] || rm -rf "$folder"
mkdir -p "$folder"
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    mkdir -p "$folder/run"
    chmod 700 "$folder/run"
    export XDG_RUNTIME_DIR=$folder/run # Qt says so on the console otherwise
fi
case $mode in
window) in_window ;;
driven) driven ;;
esac
