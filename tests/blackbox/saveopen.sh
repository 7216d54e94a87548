#!/bin/sh
# The designer opens a script named on the command line by a path with
# blanks (given as separate arguments, which the program joins with single
# blanks), shows the path as its caption, saves it with Ctrl+S, and the file
# holds, key by key, what the original held.
# Usage: saveopen.sh <make_program_folder> <fixture> <artefact folder>
. "$(dirname "$0")/common.sh"
fixture=$2
artefacts=$3
make_program "$1" "$work/program"

mkdir -p "$work/my scripts"
script="$work/my scripts/every type.ivr"
cp "$fixture" "$script" || fail "no fixture"

"$work/program/ivr-designer" "$work/my" "scripts/every" "type.ivr" >"$work/designer.log" 2>&1 &
pid=$!
frame=$(wait_for_window "Brindlewave IVR Script Designer") || fail "no main window"
wait_for_window "every type\.ivr" >/dev/null || fail "the script's path is not a caption"
xdotool windowfocus --sync "$frame" || true
sleep 0.5
xdotool key --window "$frame" ctrl+s
i=0
while cmp -s "$fixture" "$script" && [ $i -lt 100 ]; do sleep 0.1; i=$((i + 1)); done
cmp -s "$fixture" "$script" && fail "Ctrl+S wrote nothing"
wait_for_window "every type[^.]*$" >/dev/null || fail "the caption did not lose its suffix"
import -window root "$artefacts/blackbox_saveopen.png" || true
stop_designer

python3 - "$fixture" "$script" <<'PY' || fail "the saved script differs"
import json, sys
old, new = (json.load(open(p)) for p in sys.argv[1:3])
assert new["format"] == old["format"], "format"
byname = lambda doc: {m["name"]: m for m in doc["modules"]}
a, b = byname(old), byname(new)
assert set(a) == set(b), "modules %s / %s" % (sorted(a), sorted(b))
for name, m in a.items():
    assert b[name]["type"] == m["type"], name
    for key, value in m["definition"].items():
        got = b[name]["definition"].get(key)
        assert got == value, "%s.%s: %r, expected %r" % (name, key, got, value)
assert new["modules"][-1]["type"] == 98, "CommonModule is not last"
PY
echo "1 passed, 0 failed"
