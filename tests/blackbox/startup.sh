#!/bin/sh
# The designer starts from a program folder of its own, shows its frame with
# "IVR Script 1", and leaves a screenshot. Then a store with garbage in it
# ends the start with the message and exit code 1.
# Usage: startup.sh <make_program_folder> <artefact folder>
. "$(dirname "$0")/common.sh"
artefacts=$2
make_program "$1" "$work/program"

"$work/program/ivr-designer" >"$work/designer.log" 2>&1 &
pid=$!
frame=$(wait_for_window "Brindlewave IVR Script Designer") || fail "no main window"
xdotool search --name "IVR Script 1" >/dev/null || fail "no IVR Script 1"
xdotool windowfocus --sync "$frame" || true
sleep 1
import -window root "$artefacts/blackbox_startup.png" || fail "no screenshot"
stop_designer

# Garbage in the store: one message, then exit code 1.
mkdir -p "$XDG_CONFIG_HOME/Brindlewave"
printf '[Settings]\nMainLeft=far left\n' >"$XDG_CONFIG_HOME/Brindlewave/IVR Script Designer.conf"
"$work/program/ivr-designer" >"$work/designer.log" 2>&1 &
pid=$!
box=$(wait_for_window "^IVR Script Designer$") || fail "no message for the garbage"
import -window root "$artefacts/blackbox_garbage.png" || true
xdotool windowfocus --sync "$box" || true
xdotool key --window "$box" Return
i=0
while kill -0 "$pid" 2>/dev/null && [ $i -lt 100 ]; do sleep 0.1; i=$((i + 1)); done
kill -0 "$pid" 2>/dev/null && fail "the designer did not end after the message"
wait "$pid"
code=$?
pid=
[ "$code" -eq 1 ] || fail "exit code $code, expected 1"
echo "1 passed, 0 failed"
