#!/bin/sh
# pulsefixture.sh start|stop <folder>: one private PulseAudio daemon for the
# audio tests, a null sink and a socket in <folder>, every file it writes under
# <folder> (never the real home). Works as root and without a display.
set -u
dir=$2
pidfile="$dir/run/pulse/pid"

stop_daemon() {
    pid=$(cat "$pidfile" 2>/dev/null) && kill "$pid" 2>/dev/null
    for i in $(seq 50); do [ -n "${pid:-}" ] && kill -0 "$pid" 2>/dev/null && sleep 0.1; done
    [ -n "${pid:-}" ] && kill -0 "$pid" 2>/dev/null && kill -9 "$pid"
    rm -f "$pidfile" "$dir/native"
}

stop_daemon
[ "$1" = stop ] && exit 0
mkdir -p "$dir/run" "$dir/home" && chmod 700 "$dir/run"
export XDG_RUNTIME_DIR="$dir/run" HOME="$dir/home" XDG_CONFIG_HOME="$dir/home/.config"
unset DBUS_SESSION_BUS_ADDRESS
cat >"$dir/default.pa" <<PA
load-module module-null-sink sink_name=ivr_null rate=8000 channels=1
set-default-sink ivr_null
set-default-source ivr_null.monitor
load-module module-native-protocol-unix auth-anonymous=1 socket=$dir/native
PA
pulseaudio -n --daemonize=yes --use-pid-file=yes --system=no --exit-idle-time=-1 \
    --disallow-exit --disable-shm=yes --realtime=no --high-priority=no \
    -F "$dir/default.pa" --log-target="file:$dir/pulseaudio.log" || { cat "$dir/pulseaudio.log" >&2; exit 1; }
for i in $(seq 100); do
    PULSE_SERVER="unix:$dir/native" pactl info >/dev/null 2>&1 && exit 0
    sleep 0.1
done
echo "pulseaudio does not answer on $dir/native" >&2
stop_daemon
exit 1
