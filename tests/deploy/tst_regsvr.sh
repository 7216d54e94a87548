#!/bin/sh
# Checks regSvr.sh, the registration the designer starts at every start.
#   tst_regsvr.sh <regSvr.sh>
# Every run gets a home, data and config folder of its own in a temporary
# folder; the real home is never touched.

script=$1
[ -f "$script" ] || { echo "FAIL: no registration script at '$script'"; exit 1; }

root=$(mktemp -d) || exit 1
trap 'rm -rf "$root"' EXIT
failures=0

fail() {
    echo "FAIL: $case_name: $*"
    failures=$((failures + 1))
}

# A program folder (with a blank in its name, as users' folders have) holding
# the script and a stand-in designer, and a fresh home.
new_case() {
    case_name=$1
    base="$root/$1"
    prog="$base/program folder"
    mkdir -p "$prog" "$base/home"
    cp "$script" "$prog/regSvr.sh"
    chmod 755 "$prog/regSvr.sh"
    printf '#!/bin/sh\nexit 0\n' >"$prog/ivr-designer"
    chmod 755 "$prog/ivr-designer"
    prog_abs=$(cd "$prog" && pwd -P)
    HOME="$base/home"
    XDG_DATA_HOME="$base/home/data"
    XDG_CONFIG_HOME="$base/home/config"
    export HOME XDG_DATA_HOME XDG_CONFIG_HOME
    unset XDG_CURRENT_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION DISPLAY WAYLAND_DISPLAY
}

# Runs the script as the designer does: from the program folder, as its
# working folder. Fails the case on any output or a non-zero exit.
run_regsvr() {
    out=$(cd "$prog" && ./regSvr.sh 2>&1)
    rc=$?
    [ "$rc" -eq 0 ] || fail "exit code $rc"
    [ -z "$out" ] || fail "wrote output: $out"
}

entry_file() {
    echo "$XDG_DATA_HOME/applications/brindlewave-ivr-designer.desktop"
}

filetype_of_script() {
    printf '{ "format": "brindlewave-ivr-script", "version": 1, "modules": [] }\n' >"$base/call flow.ivr"
    # The generic query asks file(1), which knows no globs; the GNOME one
    # asks the shared MIME database that the script updates.
    XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$base/call flow.ivr" 2>/dev/null
}

# --- registered-twice-stays-registered ---------------------------------------
new_case registered-twice-stays-registered
run_regsvr
run_regsvr
type=$(filetype_of_script)
[ "$type" = application/x-brindlewave-ivr ] || fail "script file type is '$type'"
default=$(xdg-mime query default application/x-brindlewave-ivr 2>/dev/null)
[ "$default" = brindlewave-ivr-designer.desktop ] || fail "default is '$default'"
expected="Exec=\"$prog_abs/ivr-designer\" %f"
grep -qxF "$expected" "$(entry_file)" || fail "entry lacks '$expected': $(cat "$(entry_file)")"
grep -qx 'MimeType=application/x-brindlewave-ivr;' "$(entry_file)" || fail "entry lacks MimeType"
if command -v desktop-file-validate >/dev/null 2>&1; then
    problems=$(desktop-file-validate "$(entry_file)" 2>&1) || fail "invalid entry: $problems"
fi

# --- second-start-rewrites-nothing -------------------------------------------
new_case second-start-rewrites-nothing
run_regsvr
before=$(stat -c %i "$(entry_file)" "$XDG_DATA_HOME/mime/mime.cache" "$XDG_CONFIG_HOME/mimeapps.list")
run_regsvr
after=$(stat -c %i "$(entry_file)" "$XDG_DATA_HOME/mime/mime.cache" "$XDG_CONFIG_HOME/mimeapps.list")
[ "$before" = "$after" ] || fail "files were written again on an unchanged registration"

# --- users-own-default-survives-restart --------------------------------------
new_case users-own-default-survives-restart
run_regsvr
printf '[Desktop Entry]\nType=Application\nName=Other\nExec=true %%f\nMimeType=application/x-brindlewave-ivr;\n' \
    >"$XDG_DATA_HOME/applications/other-editor.desktop"
xdg-mime default other-editor.desktop application/x-brindlewave-ivr
run_regsvr
default=$(xdg-mime query default application/x-brindlewave-ivr 2>/dev/null)
[ "$default" = other-editor.desktop ] || fail "the user's default became '$default'"

# --- moved-program-folder-updates-entry --------------------------------------
new_case moved-program-folder-updates-entry
run_regsvr
mv "$prog" "$base/moved"
prog="$base/moved"
prog_abs=$(cd "$prog" && pwd -P)
run_regsvr
grep -qxF "Exec=\"$prog_abs/ivr-designer\" %f" "$(entry_file)" || fail "entry still names the old folder"

# --- odd-characters-in-folder-are-quoted -------------------------------------
new_case odd-characters-in-folder-are-quoted
odd="$base/a \$b \"c\" 50%"
mv "$prog" "$odd"
prog=$odd
run_regsvr
grep -qxF 'Exec="'"$base"'/a \\$b \\"c\\" 50%%/ivr-designer" %f' "$(entry_file)" \
    || fail "Exec badly quoted: $(grep Exec= "$(entry_file)")"

# --- data-home-is-a-file -----------------------------------------------------
new_case data-home-is-a-file
echo "not a folder" >"$base/home/data"
run_regsvr
[ "$(cat "$base/home/data")" = "not a folder" ] || fail "the file in the way was changed"

# --- no-xdg-folders-falls-back-to-home ---------------------------------------
new_case no-xdg-folders-falls-back-to-home
unset XDG_DATA_HOME XDG_CONFIG_HOME
run_regsvr
[ -f "$HOME/.local/share/applications/brindlewave-ivr-designer.desktop" ] \
    || fail "no entry under HOME/.local/share"
grep -q '^application/x-brindlewave-ivr=' "$HOME/.config/mimeapps.list" \
    || fail "no default under HOME/.config"

# --- no-home-at-all ----------------------------------------------------------
new_case no-home-at-all
unset XDG_DATA_HOME XDG_CONFIG_HOME HOME
run_regsvr

# --- no-desktop-tools --------------------------------------------------------
new_case no-desktop-tools
# A PATH with the shell's basic tools but none of the freedesktop ones.
mkdir -p "$base/bin"
for tool in sh cat mkdir mv rm sed grep printf pwd; do
    p=$(command -v "$tool") && [ -x "$p" ] && ln -sf "$p" "$base/bin/$tool"
done
out=$(cd "$prog" && PATH="$base/bin" ./regSvr.sh 2>&1)
rc=$?
[ "$rc" -eq 0 ] || fail "exit code $rc"
[ -z "$out" ] || fail "wrote output: $out"
[ -f "$(entry_file)" ] || fail "no entry written"

if [ "$failures" -ne 0 ]; then
    echo "$failures failure(s)"
    exit 1
fi
echo "All registration cases passed"
