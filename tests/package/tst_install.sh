#!/bin/sh
# Checks the installation in a staged tree (cmake --install into a temporary
# folder, prefix /usr): what the Debian package carries, without packing it.
#   tst_install.sh <build folder> <program folder> <project version>
build=$1
program=$2
version=$3
root=$(mktemp -d) || exit 1
trap 'rm -rf "$root"' EXIT
failures=0
stage=$root/stage
usr=$stage/usr
lib=$usr/lib/brindlewave-ivr-designer
share=$usr/share
mime=application/x-brindlewave-ivr

fail() {
    echo "FAIL: $case_name: $*"
    failures=$((failures + 1))
}

# Every query below sees the staged tree only, never the real home.
export HOME="$root/home" XDG_DATA_HOME="$root/home/data" XDG_CONFIG_HOME="$root/home/config"
unset XDG_CURRENT_DESKTOP DESKTOP_SESSION KDE_FULL_SESSION DISPLAY WAYLAND_DISPLAY
mkdir -p "$HOME"

DESTDIR=$stage cmake --install "$build" --prefix /usr >"$root/install.log" 2>&1 \
    || { cat "$root/install.log"; echo "FAIL: cmake --install"; exit 1; }

case_name=program-folder-file-left-behind
(cd "$program" && find . -type f ! -name VorelRun ! -name '*.log' ! -name '*.partial') \
    >"$root/built"
[ -s "$root/built" ] || fail "nothing in $program"
while read -r file; do
    [ -f "$lib/$file" ] || fail "$file is not installed"
done <"$root/built"
[ -x "$lib/ivr-designer" ] && [ -x "$lib/regSvr.sh" ] || fail "a program lost its execute bit"

case_name=installed-calllog-holds-builders-answer
rows=$(sqlite3 "$lib/CallLog.db" "select count(*) from flags" 2>&1)
[ "$rows" = 0 ] || fail "the installed flags table holds '$rows'"

case_name=command-not-the-program
[ "$(readlink -f "$usr/bin/ivr-designer")" = "$(readlink -f "$lib/ivr-designer")" ] \
    || fail "usr/bin/ivr-designer leads to '$(readlink -f "$usr/bin/ivr-designer")'"
case $(readlink "$usr/bin/ivr-designer") in
/*) fail "the link is absolute: it would lead out of a staged tree" ;;
esac

case_name=desktop-entry-invalid
entry=$share/applications/brindlewave-ivr-designer.desktop
out=$(desktop-file-validate "$entry" 2>&1) || fail "$out"
[ -z "$out" ] || fail "$out"
command=$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$entry")
[ -x "$usr/bin/$command" ] || fail "Exec names '$command', which is not installed"
icon=$(sed -n 's/^Icon=//p' "$entry")
[ -f "$share/icons/hicolor/scalable/apps/$icon.svg" ] || fail "no icon '$icon'"

# A double click asks the shared MIME database what a file is, then the
# desktop-entry cache which program opens it.
case_name=script-type-not-found-by-name
update-mime-database "$share/mime" >/dev/null 2>&1 || fail "update-mime-database failed"
update-desktop-database "$share/applications" >/dev/null 2>&1 || fail "update-desktop-database failed"
printf '{ "format": "brindlewave-ivr-script", "version": 1, "modules": [] }\n' >"$root/call flow.ivr"
printf 'just notes\n' >"$root/notes.txt"
type_of() {
    XDG_DATA_DIRS=$share XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$1" 2>/dev/null
}
[ "$(type_of "$root/call flow.ivr")" = $mime ] || fail "a script is '$(type_of "$root/call flow.ivr")'"
[ "$(type_of "$root/notes.txt")" != $mime ] || fail "a text file is taken for a script"
[ -f "$share/icons/hicolor/scalable/mimetypes/application-x-brindlewave-ivr.svg" ] \
    || fail "the script type has no icon"

case_name=script-not-opened-by-designer
default=$(XDG_DATA_DIRS=$share xdg-mime query default $mime 2>/dev/null)
[ "$default" = brindlewave-ivr-designer.desktop ] || fail "scripts open with '$default'"

case_name=metainfo-invalid
metainfo=$share/metainfo/com.brindlewave.ivrdesigner.metainfo.xml
out=$(appstreamcli validate --no-net --pedantic "$metainfo" 2>&1) || fail "$out"
[ "$(printf '%s\n' "$out" | grep -v '^$')" = "✔ Validation was successful." ] || fail "$out"
grep -q "<release version=\"$version\"" "$metainfo" || fail "the newest release is not $version"

case_name=changelog-not-this-version
head=$(gzip -dc "$share/doc/brindlewave-ivr-designer/changelog.gz" 2>&1 | head -n 1)
[ "$head" = "brindlewave-ivr-designer ($version) unstable; urgency=medium" ] || fail "'$head'"
[ -f "$share/doc/brindlewave-ivr-designer/copyright" ] || fail "no copyright"

case_name=manual-page-broken
page=$share/man/man1/ivr-designer.1.gz
out=$(man --warnings -l "$page" 2>&1 >/dev/null) || fail "man failed"
[ -z "$out" ] || fail "$out"
gzip -dc "$page" | grep -q '^ivr-designer \\- ' || fail "no NAME line for the command"

# The installed registration script leaves the user's folders alone while
# the desktop reads the installation's own entry and type, and registers
# the folder for the user as before when it does not.
case_name=regsvr-writes-over-installation
XDG_DATA_DIRS=$share:/usr/share sh "$lib/regSvr.sh"
[ -z "$(ls -A "$HOME")" ] || fail "it wrote $(cd "$HOME" && find . -type f)"
case_name=regsvr-skips-uninstalled-folder
XDG_DATA_DIRS=/usr/share sh "$lib/regSvr.sh"
[ -f "$XDG_DATA_HOME/applications/brindlewave-ivr-designer.desktop" ] \
    || fail "no registration for a folder the desktop does not know"

[ "$failures" -eq 0 ] || { echo "$failures failure(s)"; exit 1; }
echo "All installation cases passed"
