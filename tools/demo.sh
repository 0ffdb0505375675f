#!/usr/bin/env bash
# demo.sh BUILD_TREE: the main job from end to end. A report with a picture and a video goes through
# the library to a report service on this machine; what arrived is compared and shown.
set -euo pipefail
tree=$1
picture=examples/media/screen.png
video=examples/media/clip.mp4
folder=$(mktemp -d)
service=""
trap '[ -z "$service" ] || kill "$service"; rm -rf "$folder"' EXIT

say() { printf '\n\033[1m%s\033[0m\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}
cli() { ZENVOR_TOKEN=demo-token "$tree/tools/cli/zenvor-cli" --service "$url" --bundle-id com.example.demo "$@"; }

say "1. A report service on this machine"
"$tree/tools/sandbox/zenvor-sandbox" --folder "$folder/inbox" --token demo-token=com.example.demo >"$folder/log" &
service=$!
for _ in $(seq 100); do
    url=$(sed -n 's/^Listening on //p' "$folder/log")
    [ -z "$url" ] || break
    kill -0 "$service" 2>/dev/null || fail "The sandbox has ended."
    sleep 0.1
done
[ -n "$url" ] || fail "The sandbox does not answer."
echo "$url"

say "2. Does the token belong to this app?"
cli validate

say "3. A report with $picture and $video"
cli report --category bug --frequency several_times --allow-contact --email demo@example.com \
    --message "The list keeps scrolling by itself, and the spinner does not stop." \
    --attach "$picture" --attach "$video"
echo "sent"

say "4. What arrived"
reports=("$folder"/inbox/reports/*)
[ ${#reports[@]} -eq 1 ] && [ -f "${reports[0]}/report.json" ] || fail "There is no report in the inbox."
cat "${reports[0]}/report.json"
cmp "$picture" "${reports[0]}/1-screenshot.png" && echo "1-screenshot.png: the picture, byte for byte"
cmp "$video" "${reports[0]}/2-video.mp4" && echo "2-video.mp4: the video, byte for byte"

say "5. What the service saw"
grep -E ' (POST|PUT) ' "$folder/log"

if [ -t 0 ] && [ -t 1 ]; then
    say "The inbox is at $url/ until you press Enter."
    read -r
fi
