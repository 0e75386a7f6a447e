# Sourced by scripts/test.sh and scripts/mutation-check.sh: a private session bus and audio
# server with a null sink in the folder $scratch, so no test reaches the user's desktop.
# Defines stop_test_env, which the caller runs on exit.
export XDG_RUNTIME_DIR="$scratch/runtime"
mkdir -m 700 -p "$XDG_RUNTIME_DIR"
if command -v dbus-daemon >/dev/null; then
    eval "$(dbus-daemon --session --fork --print-address=1 --print-pid=1 |
        { read -r addr; read -r pid; echo "export DBUS_SESSION_BUS_ADDRESS=$addr; dbus_pid=$pid"; })"
fi
scripts/start-audio.sh "$scratch/pulse"
pulse_pid=$(cat "$scratch/pulse/pid" 2>/dev/null || true)
[ -f "$scratch/pulse/env" ] && . "$scratch/pulse/env"

stop_test_env() {
    [ -n "${pulse_pid:-}" ] && kill "$pulse_pid" 2>/dev/null
    [ -n "${dbus_pid:-}" ] && kill "$dbus_pid" 2>/dev/null
    return 0
}
