#!/usr/bin/env bash
# Builds the Debian package and checks it as a user meets it: lintian, the
# desktop-entry and metainfo validators, an installation with apt, two starts
# of the installed command by a user who is not root, and the removal.
#
# It changes the machine it runs on: it installs and removes the package and
# adds and deletes the user "ivr-check". Run it as root (or through sudo) on
# a machine or container that may be changed so, as CI does.
set -euo pipefail
cd "$(dirname "$0")/.."
started=$(date +%s)
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
package=brindlewave-ivr-designer
checker=ivr-check

bash scripts/setup.sh lintian
deb=$(bash scripts/package.sh)
[ -f "$deb" ] || { echo "FAIL: cpack made no package"; exit 1; }
echo "== $deb"
dpkg-deb --info "$deb" | sed -n '/Package:/,$p'

work=$(mktemp -d)
chmod 755 "$work"
cleanup() {
    # The screenshots and the designer's output stay for a look afterwards.
    rm -rf build/package-check && cp -r "$work/artefacts" build/package-check 2>/dev/null || true
    $SUDO userdel "$checker" >/dev/null 2>&1 || true
    if dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
        $SUDO env DEBIAN_FRONTEND=noninteractive apt-get remove -y -q "$package" >/dev/null || true
    fi
    $SUDO rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*"
    exit 1
}

echo "== lintian"
lintian --fail-on error,warning --display-info "$deb" || fail "lintian"

echo "== desktop-file-validate, appstreamcli validate"
dpkg-deb -x "$deb" "$work/tree"
out=$(desktop-file-validate "$work/tree/usr/share/applications/$package.desktop" 2>&1) \
    && [ -z "$out" ] || fail "desktop-file-validate: $out"
appstreamcli validate --no-net --pedantic \
    "$work/tree/usr/share/metainfo/com.brindlewave.ivrdesigner.metainfo.xml" \
    || fail "appstreamcli validate"

echo "== apt-get install ./$deb"
if dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "ok installed"; then
    fail "$package is installed already: remove it first"
fi
$SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y -q "./$deb" >"$work/apt.log" 2>&1 \
    || { cat "$work/apt.log"; fail "apt-get install"; }
[ "$(readlink -f "$(command -v ivr-designer)")" = "/usr/lib/$package/ivr-designer" ] \
    || fail "the command ivr-designer is not the installed designer"
[ "$(stat -c %U /usr/lib/$package)" = root ] || fail "the program folder is not root's"
# The dpkg triggers brought the system's script type and menu entry up to date.
printf '{ "format": "brindlewave-ivr-script", "version": 1, "modules": [] }\n' >"$work/flow.ivr"
type=$(XDG_DATA_HOME="$work/none" XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$work/flow.ivr")
[ "$type" = application/x-brindlewave-ivr ] || fail "an .ivr file is '$type' after installing"
opener=$(XDG_DATA_HOME="$work/none" XDG_CONFIG_HOME="$work/none" \
    xdg-mime query default application/x-brindlewave-ivr)
[ "$opener" = "$package.desktop" ] || fail "an .ivr file opens with '$opener'"

echo "== two starts as $checker"
$SUDO userdel "$checker" >/dev/null 2>&1 || true
$SUDO useradd --no-create-home --home-dir "$work/home" --shell /bin/sh "$checker"
mkdir -p "$work/home" "$work/runtime" "$work/artefacts"
cp tests/package/installed.sh "$work/installed.sh"
$SUDO chown "$checker:" "$work/home" "$work/runtime" "$work/artefacts"
chmod 700 "$work/runtime"
touch "$work/marker"
sleep 1
$SUDO runuser -u "$checker" -- env -i PATH=/usr/local/bin:/usr/bin:/bin \
    HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share" \
    XDG_CACHE_HOME="$work/home/.cache" XDG_RUNTIME_DIR="$work/runtime" \
    xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" sh "$work/installed.sh" "$work/artefacts" \
    || fail "the installed designer"
written=$(find /usr -xdev \( -newer "$work/marker" -o -cnewer "$work/marker" \) -print)
[ -z "$written" ] || fail "written under /usr: $written"
[ "$(sqlite3 "$work/home/.local/share/ivr-designer/CallLog.db" 'select show_reg_form from flags')" = 1 ] \
    || fail "the user's answer is not in the user's own CallLog.db"
[ "$(sqlite3 "/usr/lib/$package/CallLog.db" 'select count(*) from flags')" = 0 ] \
    || fail "the installed CallLog.db was changed"
[ -z "$(find "$work/home/.local/share" -name '*.desktop' -o -name '*.xml')" ] \
    || fail "regSvr.sh registered the installed designer a second time for the user"

echo "== apt-get remove $package"
dpkg-deb --fsys-tarfile "$deb" | tar -t | sed 's|^\./|/|; s|/$||' >"$work/contents"
$SUDO env DEBIAN_FRONTEND=noninteractive apt-get remove -y -q "$package" >"$work/apt.log" 2>&1 \
    || { cat "$work/apt.log"; fail "apt-get remove"; }
# Shared folders such as /usr/share/icons stay; the package's own go.
left=$(while read -r path; do
    if [ -e "$path" ] || [ -L "$path" ]; then
        case "$path" in
        /usr/lib/$package* | /usr/share/doc/$package*) echo "$path" ;;
        *) [ -d "$path" ] || echo "$path" ;;
        esac
    fi
done <"$work/contents")
[ -z "$left" ] || fail "left after removal: $left"
type=$(XDG_DATA_HOME="$work/none" XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype "$work/flow.ivr")
[ "$type" != application/x-brindlewave-ivr ] || fail "the system still knows the script type"
[ -f "$work/home/.local/share/ivr-designer/CallLog.db" ] || fail "the user's own data went too"

echo "package check passed in $(($(date +%s) - started)) s"
