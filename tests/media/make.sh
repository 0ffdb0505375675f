#!/usr/bin/env bash
# Makes the videos that the tests read: red above blue, and from a tenth of a second on green in the middle.
# Needs ffmpeg; run it only to change them.
set -euo pipefail
cd "$(dirname "$0")"

picture() { # SIZE SECONDS
    printf 'color=c=red:s=%s:r=20:d=%s,drawbox=y=ih/2:w=iw:h=ih/2:color=blue:t=fill' "$1" "$2"
    printf ',drawbox=x=iw/4:y=ih/4:w=iw/2:h=ih/2:color=0x00C000:t=fill:enable=gte(t\\,0.1)'
}
make() { # FILE OPTION…
    ffmpeg -loglevel error -y "${@:2}" -map_metadata -1 -fflags +bitexact -flags:v +bitexact "$1"
}
h264=(-c:v libx264 -preset veryslow -crf 30 -pix_fmt yuv420p)

make upright.mp4 -f lavfi -i "$(picture 96x64 1)" "${h264[@]}"
# As a phone writes it that was not held upright: the picture lies on its side, and the file says so.
for degrees in 90 180 270; do # clockwise; ffmpeg counts the other way round
    case $degrees in
    90) turn=transpose=cclock ;;
    180) turn=hflip,vflip ;;
    270) turn=transpose=clock ;;
    esac
    make source.mp4 -f lavfi -i "$(picture 64x96 1),$turn" "${h264[@]}"
    make "turned_$degrees.mov" -i source.mp4 -c copy -metadata:s:v:0 rotate="$((360 - degrees))"
done
rm -f source.mp4
make upright.webm -f lavfi -i "$(picture 96x64 1)" -c:v libvpx-vp9 -crf 40 -b:v 0
make one_frame.mp4 -f lavfi -i "$(picture 96x64 0.05)" "${h264[@]}"
make sound_only.mp4 -f lavfi -i "sine=d=0.5" -c:a aac -b:a 16k
make with_sound.mp4 -f lavfi -i "$(picture 96x64 2)" -f lavfi -i "sine=d=2" "${h264[@]}" -c:a aac -b:a 16k
