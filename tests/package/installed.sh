#!/bin/sh
# Two starts of the installed command, by a user who is not root, under a
# virtual X server (scripts/package-check.sh starts it). The first start shows
# the enquiry form; "Never show this message again" and Hide keep it away, so
# the second start goes straight to the main window. Each start ends through
# File > Exit.
# Usage: installed.sh <artefact folder>
set -u
artefacts=$1
log=$artefacts/designer.log
pid=
trap '[ -n "$pid" ] && kill "$pid" 2>/dev/null' EXIT
fail() {
    echo "FAIL: $*"
    [ -s "$log" ] && sed 's/^/designer: /' "$log"
    import -window root "$artefacts/failure.png" 2>/dev/null
    exit 1
}

# Repeats a command for up to twenty seconds until it prints something.
wait_for() {
    i=0
    while [ $i -lt 200 ]; do
        found=$("$@" 2>/dev/null) && [ -n "$found" ] && { echo "$found"; return 0; }
        sleep 0.1
        i=$((i + 1))
    done
    return 1
}
frame_window() { xdotool search --onlyvisible --name "Brindlewave IVR Script Designer" | head -n 1; }
# The form has neither title bar nor caption: the designer's 477 x 424 window.
form_window() {
    for w in $(xdotool search --onlyvisible --pid "$pid" 2>/dev/null); do
        xdotool getwindowgeometry "$w" 2>/dev/null | grep -q "Geometry: 477x424" && echo "$w" && return 0
    done
    return 1
}
gone() { kill -0 "$pid" 2>/dev/null || echo gone; }

start() {
    ivr-designer >>"$log" 2>&1 &
    pid=$!
}
quit() {
    xdotool windowfocus --sync "$1" 2>/dev/null || true
    xdotool key --window "$1" alt+f
    sleep 0.5
    xdotool key x
    wait_for gone >/dev/null || fail "the designer did not end through File > Exit"
    wait "$pid"
    status=$?
    pid=
    [ "$status" -eq 0 ] || fail "the designer ended with $status"
}

[ "$(id -u)" -ne 0 ] || fail "run as a user who is not root"
start
form=$(wait_for form_window) || fail "no enquiry form at the first start"
import -window root "$artefacts/first-start.png"
xdotool windowfocus --sync "$form" 2>/dev/null || true
# Tick the box (left 120, top 5760 twips) and press Hide with its mnemonic.
xdotool mousemove --window "$form" 20 398 click 1
sleep 0.3
xdotool key --window "$form" alt+h
frame=$(wait_for frame_window) || fail "no main window after Hide"
quit "$frame"

start
frame=$(wait_for frame_window) || fail "no main window at the second start"
sleep 1
[ -z "$(form_window)" ] || fail "the enquiry form came back although it was turned off"
import -window root "$artefacts/second-start.png"
quit "$frame"
echo "installed designer: form answered, second start straight to the main window"
