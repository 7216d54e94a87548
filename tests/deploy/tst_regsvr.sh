#!/bin/sh
# Checks regSvr.sh, the registration the designer starts at every start.
#   tst_regsvr.sh <regSvr.sh>
# Every case gets home, data and config folders of its own; the real home is
# never touched.
script=$1
[ -f "$script" ] || { echo "FAIL: no registration script at '$script'"; exit 1; }
root=$(mktemp -d) || exit 1
trap 'rm -rf "$root"' EXIT
failures=0
mime=application/x-brindlewave-ivr

fail() { echo "FAIL: $case_name: $*"; failures=$((failures + 1)); }

# A program folder with a blank in its name, holding the script and a
# stand-in designer, and a fresh home.
new_case() {
    case_name=$1
    base="$root/$1"
    prog="$base/program folder"
    mkdir -p "$prog" "$base/home"
    cp "$script" "$prog/regSvr.sh"
    printf '#!/bin/sh\nexit 0\n' >"$prog/ivr-designer"
    chmod 755 "$prog/regSvr.sh" "$prog/ivr-designer"
    export HOME="$base/home" XDG_DATA_HOME="$base/home/data" XDG_CONFIG_HOME="$base/home/config"
    unset XDG_CURRENT_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION DISPLAY WAYLAND_DISPLAY
    entry="$XDG_DATA_HOME/applications/brindlewave-ivr-designer.desktop"
}

# Runs the script as the designer does, from the program folder; any output
# or a non-zero exit fails the case.
run_regsvr() {
    out=$(cd "$prog" && ./regSvr.sh 2>&1) || fail "exit code $?"
    [ -z "$out" ] || fail "wrote output: $out"
}

new_case registered-twice-not-registered
run_regsvr
run_regsvr
printf '{ "format": "brindlewave-ivr-script", "version": 1, "modules": [] }\n' >"$base/call flow.ivr"
# The generic query asks file(1), which knows no globs; the GNOME one asks the
# shared MIME database that the script updates.
type=$(XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$base/call flow.ivr" 2>/dev/null)
[ "$type" = $mime ] || fail "script file type is '$type'"
default=$(xdg-mime query default $mime 2>/dev/null)
[ "$default" = brindlewave-ivr-designer.desktop ] || fail "default is '$default'"
expected="Exec=\"$(cd "$prog" && pwd -P)/ivr-designer\" %f"
grep -qxF "$expected" "$entry" || fail "entry lacks '$expected': $(cat "$entry")"

new_case second-start-rewrites-files
written="$entry $XDG_DATA_HOME/mime/mime.cache $XDG_CONFIG_HOME/mimeapps.list"
run_regsvr
before=$(stat -c %i $written)
run_regsvr
[ "$before" = "$(stat -c %i $written)" ] || fail "files were written again on an unchanged registration"

new_case data-home-is-a-file
echo "not a folder" >"$base/home/data"
run_regsvr
[ "$(cat "$base/home/data")" = "not a folder" ] || fail "the file in the way was changed"

[ "$failures" -eq 0 ] || { echo "$failures failure(s)"; exit 1; }
echo "All registration cases passed"
