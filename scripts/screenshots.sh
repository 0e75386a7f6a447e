#!/usr/bin/env bash
# Takes screenshots of every screen and state, light and dark, under a virtual X server.
# Usage: scripts/screenshots.sh OUTPUT_FOLDER [BUILD_FOLDER]
# BUILD_FOLDER defaults to the test build (scripts/test.sh's, configured here when missing).
# The PNGs are rendered by veldtone-shots (real services in a temporary home); one more shot
# is of the real program as it starts, taken with ImageMagick's import.
set -euo pipefail
cd "$(dirname "$0")/.."
out=$(realpath -m "${1:?usage: screenshots.sh OUTPUT_FOLDER [BUILD_FOLDER]}")
build=${2:-${VELDTONE_TEST_BUILD:-build-test}}
mkdir -p "$out"
if [ ! -f "$build/CMakeCache.txt" ]; then
    scripts/setup.sh
    CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
        -DVELDTONE_SANITIZE=ON -DVELDTONE_WERROR=ON -DVELDTONE_BUILD_FUZZ=ON >/dev/null
fi
cmake --build "$build" --target veldtone veldtone-shots >/dev/null

scratch=$(mktemp -d)
cleanup() {
    # The audio server goes too when a shot fails.
    [ -f "$scratch/pulse/pid" ] && kill "$(cat "$scratch/pulse/pid")" 2>/dev/null
    rm -rf "$scratch"
}
trap cleanup EXIT
export XDG_RUNTIME_DIR="$scratch/runtime"
mkdir -m 700 -p "$XDG_RUNTIME_DIR"
# Playback needs an audio server; a private one with a null sink stays silent.
scripts/start-audio.sh "$scratch/pulse"
[ -f "$scratch/pulse/env" ] && . "$scratch/pulse/env"
export ASAN_OPTIONS=detect_leaks=0

for scheme in light dark; do
    xvfb-run -a -s "-screen 0 1280x900x24" "$build/tests/shots/veldtone-shots" "$out" "$scheme"
done

# The real program, started like a user would, in an empty home.
mkdir -p "$scratch/home"
for scheme in light dark; do
    HOME="$scratch/home" XDG_CONFIG_HOME="$scratch/home/.config" \
    XDG_DATA_HOME="$scratch/home/.local/share" VELDTONE_COLOR_SCHEME=$scheme \
        xvfb-run -a -s "-screen 0 1280x900x24" bash -c '
            "$1" & app=$!
            id=$(xdotool search --sync --onlyvisible --name "^Veldtone$" | head -n 1)
            sleep 1.5
            import -window "$id" "$2"
            kill $app' _ "$build/src/veldtone" "$out/$scheme-app-start.png"
    echo "$out/$scheme-app-start.png"
done
