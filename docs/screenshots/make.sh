#!/bin/bash
# Takes the pictures of README and help anew, from the built program and the samples: ./make.sh [BUILD FOLDER] [PART...]
# The parts are the functions below whose names begin with "of_"; without any, all are taken.
# Needs the packages xvfb openbox xdotool imagemagick poppler-utils.
set -eu
cd "$(dirname "$0")/../.."
bin=$(realpath "${1:-build}/bin")
out=docs/screenshots
home=$(mktemp -d)
samples=/tmp/samples # which can be read in some pictures
mkdir "$samples"
trap 'kill $(jobs -p) 2>/dev/null; wait 2>/dev/null; rm -rf "$home" "$samples"' EXIT
cp samples/*.xml samples/*.kxa "$samples"
export HOME=$home XDG_CONFIG_HOME=$home/config XDG_STATE_HOME=$home/state XDG_DATA_HOME=$home/data XDG_CACHE_HOME=$home \
    XDG_RUNTIME_DIR=$home LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
chmod 700 "$home"
mkdir "$XDG_CONFIG_HOME"

mkfifo "$home/display"
Xvfb -screen 0 900x640x24 -nolisten tcp -displayfd 3 2>/dev/null 3>"$home/display" &
DISPLAY=:$(head -n 1 "$home/display")
export DISPLAY
openbox >/dev/null 2>&1 &

key() { # one after the other, with time to draw
    for name in "$@"; do
        xdotool key "$name"
        sleep 0.3
    done
}

open() { # FILE...
    "$bin/kestrane" "$@" &
    pid=$!
    xdotool search --sync --onlyvisible --name '^Kestrane' >/dev/null
    sleep 2
}

start() { # SAMPLE DOWN...: opens the sample, goes down its tree by so many nodes, and on to the tabs
    open "$samples/$1"
    xdotool mousemove 100 560 click 1 # the empty part of the tree
    sleep 0.5
    key Home
    for ((i = 0; i < $2; ++i)); do key Down; done
    sleep 1
    key Tab
}

back() { # closes a dialog, and waits until the window behind it has the keys again
    key Escape
    xdotool windowfocus --sync "$(xdotool search --onlyvisible --name '^Kestrane' | head -n 1)" || true
    sleep 0.5
}

small() { convert - "${@:2}" -strip +dither -colors 64 -define png:exclude-chunks=date,time "png8:$1"; }

take() { # NAME [WINDOW TITLE]: the screen, or a window
    sleep 1
    window=root
    [ $# = 1 ] || window=$(xdotool search --onlyvisible --name "$2" | tail -n 1)
    import -window "$window" png:- | small "$out/$1.png"
}

tour() { # NAME: the screen in the size of the tour
    import -window root png:- | small "src/resources/pictures/tour-$1.png" -gravity north -crop 900x585+0+0 +repage \
        -filter Lanczos -resize 640x416!
}

stop() {
    kill -9 $pid
    wait $pid 2>/dev/null || true
    rm -rf "$XDG_STATE_HOME" # what was not saved
}

mark() { # a range on the time chart, of the hammering
    xdotool mousemove 700 300 keydown Shift mousedown 1 sleep 0.2 mousemove 720 302 sleep 0.2 mousemove 742 302 sleep 0.2 \
        mouseup 1 keyup Shift
    sleep 0.5
}

of_start() {
    open
    take start
    key alt+h Down Down Return Right # Tour
    take tour
    back
    key alt+h Up Return # About, the last
    take about '^About'
    stop
}

of_shift() {
    start shift-dosimeter.xml 3
    xdotool mousemove 560 300
    take full-log
    tour open
    mark
    tour range
    key ctrl+shift+l
    take worst-window
    key ctrl+shift+v
    take events
    back
    key ctrl+shift+d
    take distribution
    back
    key ctrl+i Return
    take intervals
    back
    key ctrl+e
    take exposure-time
    back
    key ctrl+f
    take find
    back
    key ctrl+shift+t
    take chart-table
    back
    key ctrl+shift+p
    take picture
    back
    key Menu Up Return # Display Options, the last
    take display-options
    stop
}

of_tabs() {
    start shift-dosimeter.xml 3
    key Right
    xdotool mousemove 560 400 click --repeat 119 --delay 5 5 # down to the overloads
    take intervals-table
    key Right Right Right
    take cumulative-panel
    tour figures
    key Right Right
    take criteria
    key ctrl+shift+e
    take export
    back
    key ctrl+comma alt+l
    take settings '^Settings$'
    back
    key ctrl+F1
    take shortcuts
    back
    key alt+f Up Up Return # Print Preview, above Exit
    sleep 1
    take preview
    tour report
    stop
}

of_roadworks() {
    start roadworks-selection.xml 3
    key ctrl+t
    xdotool mousemove 420 340 mousedown 1 sleep 0.2 mousemove 520 342 sleep 0.2 mousemove 700 342 sleep 0.2 mouseup 1
    take zoom
    key ctrl+t
    key Menu Up Up Up Up Up Up Up Up Up Return # Edit Note, the ninth from the end
    take note
    back
    xdotool mousemove 100 560 click 1
    key F2
    xdotool type --delay 40 "Road works, east"
    key Return ctrl+shift+h
    take history
    stop
    start roadworks-selection.xml 3
    key Right Right Right Right Right
    take dose
    stop
}

of_bands() {
    start machine-survey-octave.xml 3
    key Right Right
    take interval-graph
    key Right
    take cumulative-graph
    key Right
    xdotool mousemove 560 400
    take noise-rating
    stop
    start machine-survey-octave.xml 9
    key Right Right Right Right Right
    take select-protector '^Select a Hearing Protector$'
    key Return
    xdotool mousemove 560 400
    take compare-hpd
    key ctrl+h
    take protectors
    stop
    start machine-survey-octave.xml 3
    key ctrl+shift+g Down space
    take comparison
    stop
    printf '[Preferences]\nChartStyle=1\n' >"$XDG_CONFIG_HOME/Velmora.ini"
    start machine-survey-octave.xml 3
    key Right Right
    xdotool mousemove 560 400
    take chart3d
    stop
    rm "$XDG_CONFIG_HOME/Velmora.ini"
}

of_spectrogram() {
    start third-octave-2000.xml 3
    key ctrl+shift+o
    sleep 2
    xdotool mousemove 300 300
    take spectrogram
    key Escape # hides the reading
    back
    key ctrl+shift+b
    xdotool type $'94\t94.6\t'
    take calibration
    stop
}

# The same in the dark, beside the pictures of the others
of_dark() {
    printf '[Settings]\nAppearance=Dark\n' >"$XDG_CONFIG_HOME/Velmora.ini"
    start shift-dosimeter.xml 3
    xdotool mousemove 560 300
    take full-log-dark
    stop
    open "$samples/welder-tasks.kxa"
    take assessment-dark
    stop
    rm "$XDG_CONFIG_HOME/Velmora.ini"
}

of_protectors() {
    start protector-ac.xml 3
    key Right Right Right Right Return
    sleep 1
    key alt+r
    take rank
    stop
}

of_files() {
    open "$samples/machine-survey-octave.xml" "$samples/roadworks-selection.xml"
    take tree
    stop
    "$bin/kestrane-cli" merge samples/night-environment.xml samples/roadworks-selection.xml -o "$home/merged.xml" >/dev/null
    open "$home/merged.xml"
    take merge
    stop
    open "$samples/welder-tasks.kxa"
    take assessment
    stop
    # Work that is not saved when the program ends
    cp samples/night-environment.xml "$home/night.xml"
    open "$home/night.xml"
    xdotool mousemove 100 560 click 1
    key Home Down F2
    xdotool type --delay 40 "Mill Lane, garden"
    key Return
    sleep 32 # a copy is kept after 30 s at the latest
    kill -9 $pid
    open
    take recovery
    stop
}

of_download() {
    "$bin/kestrane-sim" --family brevik --speed 4800 --from samples/brevik-short-form.xml >"$home/line" &
    sleep 1
    printf '[SerialPorts]\nCOM3=%s\n' "$(cat "$home/line")" >"$XDG_CONFIG_HOME/Velmora.ini"
    open
    key ctrl+d
    sleep 6
    take download
    key Return
    sleep 2
    take download-progress '^Downloading'
    stop
    rm "$XDG_CONFIG_HOME/Velmora.ini"
}

# A page of a report on white paper with a thin edge
of_report() {
    "$bin/kestrane-cli" report samples/machine-survey-octave.xml --form cumulative -o "$home/report.pdf"
    pdftoppm -r 100 -singlefile -png "$home/report.pdf" "$home/report"
    convert "$home/report.png" -bordercolor '#b8bec4' -border 1 png:- | small "$out/report.png"
}

parts=("${@:2}")
[ ${#parts[@]} != 0 ] || parts=(start shift tabs roadworks bands spectrogram dark protectors files download report)
for part in "${parts[@]}"; do "of_$part"; done
