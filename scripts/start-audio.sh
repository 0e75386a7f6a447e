#!/usr/bin/env bash
# Starts a private PulseAudio server with a null sink, for the player tests.
# Usage: start-audio.sh STATE_DIR. Leaves STATE_DIR/pid behind, and STATE_DIR/env only once the
# server listens; exits 0 even without audio (the player tests then skip).
set -u
state=$1
mkdir -p "$state"
rm -f "$state/env"
command -v pulseaudio >/dev/null || exit 0
export PULSE_RUNTIME_PATH="$state"
pulseaudio --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disallow-exit -n \
    --load="module-null-sink sink_name=veldtone_null" \
    --load="module-native-protocol-unix auth-anonymous=1 socket=$state/native" \
    --log-target=file:"$state/log" >/dev/null 2>&1 &
echo $! >"$state/pid"
for _ in $(seq 1 100); do
    [ -S "$state/native" ] && break
    sleep 0.1
done
if [ ! -S "$state/native" ]; then
    echo "start-audio.sh: the audio server did not start; player tests will skip" >&2
    tail -n 5 "$state/log" >&2 2>/dev/null
    kill "$(cat "$state/pid")" 2>/dev/null
    rm -f "$state/pid"
    exit 0
fi
echo "export PULSE_SERVER=unix:$state/native" >"$state/env"
