#!/bin/sh
# A first start with an empty flags table shows the enquiry form before the
# main window. Ticking "Never show this message again" and pressing "&Hide"
# stores the flag, the main window follows, and the next start goes straight
# to the main window.
# Usage: enquiry.sh <make_program_folder> <artefact folder>
. "$(dirname "$0")/common.sh"
artefacts=$2
make_program "$1" "$work/program" --empty-flags

frame_window() { window_named "Brindlewave IVR Script Designer"; }

# The form has no title bar and no caption: it is the visible window of the
# designer that is 477 by 424 pixels (7155 by 6360 twips).
form_window() {
    for w in $(xdotool search --onlyvisible --pid "$pid" 2>/dev/null); do
        if xdotool getwindowgeometry "$w" 2>/dev/null | grep -q "Geometry: 477x424"; then
            echo "$w"
            return 0
        fi
    done
    return 1
}

flag() { sqlite3 "$work/program/CallLog.db" "select show_reg_form from flags"; }

"$work/program/ivr-designer" >"$work/designer.log" 2>&1 &
pid=$!
form=$(wait_for form_window) || fail "no enquiry form at the first start"
sleep 0.5
[ -z "$(frame_window)" ] || fail "the main window came before the form was closed"
import -window root "$artefacts/blackbox_enquiry.png" || fail "no screenshot"

# Escape leaves the form up.
xdotool windowfocus --sync "$form" || true
xdotool key --window "$form" Escape
sleep 0.3
[ -n "$(form_window)" ] || fail "Escape closed the form"

# Tick the box (left 120, top 5760 twips) and press Hide with its mnemonic.
xdotool mousemove --window "$form" 20 398 click 1
sleep 0.2
xdotool key --window "$form" alt+h
frame=$(wait_for frame_window) || fail "no main window after Hide"
[ "$(flag)" = "1" ] || fail "show_reg_form is '$(flag)', expected 1"
stop_designer

# The next start shows no form.
"$work/program/ivr-designer" >"$work/designer.log" 2>&1 &
pid=$!
wait_for frame_window >/dev/null || fail "no main window at the second start"
[ -z "$(form_window)" ] || fail "the form came back although it was turned off"
echo "1 passed, 0 failed"
