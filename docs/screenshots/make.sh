#!/bin/bash
# Takes the pictures of README and help anew, from the built program and the samples: ./make.sh [BUILD FOLDER]
# Needs the packages xvfb openbox xdotool imagemagick poppler-utils.
set -eu
cd "$(dirname "$0")/../.."
program=${1:-build}/bin/kestrane
out=docs/screenshots
home=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; wait 2>/dev/null; rm -rf "$home"' EXIT
export HOME=$home XDG_CONFIG_HOME=$home XDG_CACHE_HOME=$home XDG_RUNTIME_DIR=$home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb

mkfifo "$home/display"
Xvfb -screen 0 1200x780x24 -nolisten tcp -displayfd 3 2>/dev/null 3>"$home/display" &
DISPLAY=:$(head -n 1 "$home/display")
export DISPLAY
openbox >/dev/null 2>&1 &

key() { # one after the other, with time to draw
    for name in "$@"; do
        xdotool key "$name"
        sleep 0.3
    done
}

start() { # SAMPLE DOWN...: opens the sample and goes down its tree by so many nodes
    "$program" "samples/$1" &
    pid=$!
    window=$(xdotool search --sync --onlyvisible --name '^Kestrane - ' | tail -n 1)
    sleep 1
    xdotool mousemove 100 650 click 1 # the empty part of the tree
    key Home
    for ((i = 0; i < $2; ++i)); do key Down; done
    sleep 1
    key Tab # to the tabs
}

take() { # NAME [WINDOW]
    sleep 1
    import -window "${2:-$window}" png:- |
        convert - -strip +dither -colors 255 -define png:exclude-chunks=date,time "png8:$out/$1.png"
}

stop() {
    kill $pid
    wait $pid 2>/dev/null || true
}

start shift-dosimeter.xml 3
xdotool mousemove 760 400
take full-log
key Right
xdotool mousemove 760 400 click --repeat 119 --delay 5 5 # down to the overloads
take intervals-table
key Right Right Right
take cumulative-panel
key ctrl+comma alt+l
take settings "$(xdotool search --onlyvisible --name '^Settings$' | tail -n 1)"
key Escape
stop

start roadworks-selection.xml 3
key ctrl+t
xdotool mousemove 480 400 mousedown 1 mousemove 600 402 mousemove 880 402 mouseup 1
take zoom
stop

start machine-survey-octave.xml 3
key Right Right Right Right
xdotool mousemove 760 400
take noise-rating
stop

start machine-survey-octave.xml 9
key Right Right Right Right Right
take select-protector "$(xdotool search --onlyvisible --name '^Select a Hearing Protector$' | tail -n 1)"
key Return
xdotool mousemove 760 400
take compare-hpd
stop

# A page of a report on white paper with a thin edge.
"${program%/*}/kestrane-cli" report samples/machine-survey-octave.xml --form cumulative -o "$home/report.pdf"
pdftoppm -r 100 -singlefile -png "$home/report.pdf" "$home/report"
convert "$home/report.png" -bordercolor '#b8bec4' -border 1 -strip +dither -colors 255 \
    -define png:exclude-chunks=date,time "png8:$out/report.png"
