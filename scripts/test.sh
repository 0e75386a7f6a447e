#!/usr/bin/env bash
# Sets up a fresh Debian 12 machine and runs every test under AddressSanitizer and
# UndefinedBehaviorSanitizer, then the fuzzers for a bounded time.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
scripts/setup.sh

build=${VELDTONE_TEST_BUILD:-build-test}
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DVELDTONE_SANITIZE=ON -DVELDTONE_WERROR=ON -DVELDTONE_BUILD_FUZZ=ON >/dev/null
cmake --build "$build"

# A private session bus and audio server with a null sink, so nothing reaches the user's desktop.
scratch=$(mktemp -d)
cleanup() {
    stop_test_env || true
    rm -rf "$scratch"
}
trap cleanup EXIT
. scripts/test-env.sh

# Name the symbolizer outright: without it reports carry bare addresses and the suppressions
# that name functions match nothing. Should it be missing all the same, unwind every allocation
# fully (slower), so that the entries naming libraries still find them: the fast unwinder stops
# inside system libraries built without frame pointers.
symbolizer=/usr/lib/llvm-14/bin/llvm-symbolizer
[ -x "$symbolizer" ] || symbolizer=$(command -v llvm-symbolizer || true)
unwind=
if [ -n "$symbolizer" ]; then
    export ASAN_SYMBOLIZER_PATH=$symbolizer LSAN_SYMBOLIZER_PATH=$symbolizer
    export UBSAN_SYMBOLIZER_PATH=$symbolizer
else
    echo "test.sh: no llvm-symbolizer; leak reports will carry addresses only" >&2
    unwind=:fast_unwind_on_malloc=0
fi
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1$unwind
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
(cd "$build" && ctest --output-on-failure -j2 --timeout 600)

# Fuzz each parser for a bounded time; any crash, leak or sanitizer report fails the run.
for fuzzer in "$build"/fuzz/fuzz_*; do
    [ -f "$fuzzer" ] && [ -x "$fuzzer" ] || continue
    corpus="$scratch/corpus-$(basename "$fuzzer")"
    mkdir -p "$corpus"
    seeds="$root/fuzz/seeds/$(basename "$fuzzer")"
    [ -d "$seeds" ] && cp -r "$seeds"/. "$corpus"/
    echo "Fuzzing $(basename "$fuzzer") for ${VELDTONE_FUZZ_SECONDS:-45} s"
    "$fuzzer" -max_total_time="${VELDTONE_FUZZ_SECONDS:-45}" -max_len=65536 -print_final_stats=1 \
        "$corpus" 2>&1 | tail -n 12
done
echo "All tests passed."
