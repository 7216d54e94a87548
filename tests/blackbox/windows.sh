#!/bin/sh
# Script windows keep their client area (535 x 420 pixels of light blue
# canvas) when not maximized: after Window > Cascade, after closing every
# window and making a new one; a horizontal tile of one window fills the
# area. Then F1 opens the help window, and File > Exit ends the process even
# with the help window open.
# Usage: windows.sh <make_program_folder> <artefact folder>
. "$(dirname "$0")/common.sh"
artefacts=$2
make_program "$1" "$work/program"
mkdir -p "$XDG_CONFIG_HOME/Brindlewave"
printf '[Settings]\nMainWidth=15000\nMainHeight=12000\n' \
    >"$XDG_CONFIG_HOME/Brindlewave/IVR Script Designer.conf"

# The pixels of the canvas colour on the screen.
canvas_pixels() {
    import -window root "$artefacts/blackbox_windows_$1.png" || fail "no screenshot"
    convert "$artefacts/blackbox_windows_$1.png" +transparent "rgb(192,192,255)" \
        -alpha extract -format "%[fx:round(mean*w*h)]" info:
}
# What the screen shows after keys, as the count of canvas pixels within bounds.
expect_canvas() {
    name=$1 low=$2 high=$3
    shift 3
    xdotool windowfocus --sync "$frame" || true
    for keys in "$@"; do
        xdotool key --window "$frame" $keys
        sleep 0.3
    done
    sleep 0.7
    count=$(canvas_pixels "$name")
    [ "$count" -ge "$low" ] && [ "$count" -le "$high" ] \
        || fail "$name: $count canvas pixels, expected $low to $high"
}

"$work/program/ivr-designer" >"$work/designer.log" 2>&1 &
pid=$!
frame=$(wait_for_window "Brindlewave IVR Script Designer") || fail "no main window"
sleep 0.5
# 535 x 420 less the two standing modules and their arrow.
expect_canvas cascade 150000 224700 alt+w c
expect_canvas tile 300000 2000000 alt+w h
expect_canvas new 150000 224700 alt+f c ctrl+n

xdotool key --window "$frame" F1
wait_for_window "Designer Help" >/dev/null || fail "F1 opened no help window"
import -window root "$artefacts/blackbox_windows_help.png" || true
xdotool windowfocus --sync "$frame" || true
xdotool key --window "$frame" alt+f x
i=0
while kill -0 "$pid" 2>/dev/null && [ $i -lt 100 ]; do sleep 0.1; i=$((i + 1)); done
kill -0 "$pid" 2>/dev/null && fail "the designer still runs after File > Exit"
wait "$pid"
pid=
echo "1 passed, 0 failed"
