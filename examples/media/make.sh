#!/usr/bin/env bash
# Draws a picture and a video to send: an app screen with a list that scrolls and a spinner that does
# not stop. Needs ffmpeg; run it only to change them.
set -euo pipefail
cd "$(dirname "$0")"

rows=""
for i in 0 1 2 3 4 5 6 7; do
    rows+=",drawbox=x=20:y='mod($((i * 100 + 120))-40*t+800,800)+70':w=350:h=84:color=white:t=fill"
    rows+=",drawbox=x=36:y='mod($((i * 100 + 120))-40*t+800,800)+88':w=48:h=48:color=0x5B8DEF:t=fill"
    rows+=",drawbox=x=100:y='mod($((i * 100 + 120))-40*t+800,800)+94':w=$((150 + i * 11)):h=12:color=0x30343B:t=fill"
    rows+=",drawbox=x=100:y='mod($((i * 100 + 120))-40*t+800,800)+118':w=$((210 - i * 9)):h=10:color=0xB5BAC4:t=fill"
done
chrome=",drawbox=x=0:y=0:w=390:h=100:color=0x22304A:t=fill,drawbox=x=20:y=58:w=170:h=20:color=white:t=fill"
chrome+=",drawbox=x='330+12*sin(6*t)':y='60+12*cos(6*t)':w=12:h=12:color=0xFFC857:t=fill"

filter="color=c=0xEEF1F6:s=390x844:r=15:d=3${rows}${chrome}"
ffmpeg -loglevel error -y -f lavfi -i "$filter" -c:v libx264 -preset veryslow -crf 30 -pix_fmt yuv420p \
    -movflags +faststart -map_metadata -1 clip.mp4
ffmpeg -loglevel error -y -f lavfi -i "$filter" -frames:v 1 -map_metadata -1 screen.png
