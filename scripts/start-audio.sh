#!/usr/bin/env bash
# Starts a private PulseAudio server with a null sink, for the player tests.
# Usage: start-audio.sh STATE_DIR. Leaves STATE_DIR/pid behind; exits 0 even without audio.
set -u
state=$1
mkdir -p "$state"
command -v pulseaudio >/dev/null || exit 0
export PULSE_RUNTIME_PATH="$state"
pulseaudio --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disallow-exit -n \
    --load="module-null-sink sink_name=veldtone_null" \
    --load="module-native-protocol-unix auth-anonymous=1 socket=$state/native" \
    --log-target=file:"$state/log" >/dev/null 2>&1 &
echo $! >"$state/pid"
for _ in $(seq 1 50); do
    [ -S "$state/native" ] && break
    sleep 0.1
done
echo "export PULSE_SERVER=unix:$state/native" >"$state/env"
