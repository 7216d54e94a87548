#!/bin/sh
# pulsefixture.sh start|stop <folder>
# One private PulseAudio daemon for the audio tests: a null sink (so no sound
# card is needed), the native protocol on a socket in <folder>, and every
# file it writes (runtime folder, cookie, log) under <folder>, never in the
# real home. Works as root and without a display.
set -u
action=$1
dir=$2
pidfile="$dir/run/pulse/pid"

stop_daemon() {
    if [ -f "$pidfile" ]; then
        pid=$(cat "$pidfile")
        if [ -n "$pid" ] && kill -0 "$pid" 2>/dev/null; then
            kill "$pid" 2>/dev/null
            i=0
            while kill -0 "$pid" 2>/dev/null && [ $i -lt 50 ]; do
                sleep 0.1
                i=$((i + 1))
            done
            kill -9 "$pid" 2>/dev/null
        fi
        rm -f "$pidfile"
    fi
    rm -f "$dir/native"
}

case "$action" in
start)
    stop_daemon
    mkdir -p "$dir/run" "$dir/home"
    chmod 700 "$dir/run"
    export XDG_RUNTIME_DIR="$dir/run" HOME="$dir/home" XDG_CONFIG_HOME="$dir/home/.config"
    unset DBUS_SESSION_BUS_ADDRESS
    cat > "$dir/default.pa" <<PA
load-module module-null-sink sink_name=ivr_null rate=8000 channels=1
set-default-sink ivr_null
set-default-source ivr_null.monitor
load-module module-native-protocol-unix auth-anonymous=1 socket=$dir/native
PA
    pulseaudio -n --daemonize=yes --use-pid-file=yes --system=no --exit-idle-time=-1 \
        --disallow-exit --disable-shm=yes --realtime=no --high-priority=no \
        -F "$dir/default.pa" --log-target="file:$dir/pulseaudio.log" || {
        echo "pulseaudio did not start; see $dir/pulseaudio.log" >&2
        cat "$dir/pulseaudio.log" >&2
        exit 1
    }
    i=0
    while ! PULSE_SERVER="unix:$dir/native" pactl info >/dev/null 2>&1; do
        i=$((i + 1))
        if [ $i -gt 100 ]; then
            echo "pulseaudio does not answer on $dir/native" >&2
            stop_daemon
            exit 1
        fi
        sleep 0.1
    done
    ;;
stop)
    stop_daemon
    ;;
*)
    echo "usage: $0 start|stop <folder>" >&2
    exit 2
    ;;
esac
