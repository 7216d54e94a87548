# Shared by the whole-program checks: a work folder removed at the end, the
# designer stopped if it still runs, a program folder of the check's own with
# HOME and the XDG folders inside it, and waiting for windows.
# Usage in a check: . "$(dirname "$0")/common.sh"; make_program <make_program_folder> [options]
set -u
work=$(mktemp -d)
pid=
cleanup() {
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*"
    # What the designer said, if anything, helps to tell a hang from a crash.
    [ -s "$work/designer.log" ] && sed 's/^/designer: /' "$work/designer.log"
    exit 1
}

make_program() {
    "$@" || fail "no program folder"
    [ -x "$work/program/ivr-designer" ] || fail "the designer was not copied"
    export HOME="$work/program/home"
    export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_CACHE_HOME="$HOME/.cache" XDG_RUNTIME_DIR="$work/runtime"
    mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
    unset QT_QPA_PLATFORM
}

# Repeats a command for up to ten seconds until it prints something.
wait_for() {
    i=0
    while [ $i -lt 100 ]; do
        found=$("$@" 2>/dev/null) && [ -n "$found" ] && { echo "$found"; return 0; }
        sleep 0.1
        i=$((i + 1))
    done
    return 1
}

window_named() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1; }
wait_for_window() { wait_for window_named "$1"; }

stop_designer() {
    kill "$pid"
    wait "$pid" 2>/dev/null
    pid=
}
