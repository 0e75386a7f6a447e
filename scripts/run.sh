#!/usr/bin/env bash
# Sets up a fresh Debian 12 machine, builds Veldtone (Release) and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DVELDTONE_BUILD_TESTS=OFF >/dev/null
cmake --build build-release
exec build-release/src/veldtone "$@"
