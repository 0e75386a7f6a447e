#!/usr/bin/env bash
# Checks that the tests catch faults: applies each tests/mutations/*.patch in turn (one
# deliberate fault each), builds incrementally in one persistent build tree, runs the suite the
# patch names on its "Suite:" line, reverts the patch and reports whether the suite failed.
# Usage: scripts/mutation-check.sh [PATCH...]   (not part of CI; run it on demand)
set -uo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
build=${VELDTONE_MUTATION_BUILD:-build-mutation}
patches=("$@")
[ ${#patches[@]} -eq 0 ] && patches=(tests/mutations/*.patch)

if [ -n "$(git status --porcelain --untracked-files=no -- src tools)" ]; then
    echo "src/ or tools/ has uncommitted changes; commit or stash them first" >&2
    exit 2
fi
if [ ! -f "$build/build.ninja" ]; then
    CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
        -DVELDTONE_SANITIZE=ON >/dev/null || exit 2
fi

# The suites run as scripts/test.sh runs them: a private session bus and audio server.
scratch=$(mktemp -d)
applied=""
cleanup() {
    [ -n "$applied" ] && git apply -R "$applied"
    stop_test_env
    rm -rf "$scratch"
}
trap cleanup EXIT
. scripts/test-env.sh
export ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1

caught=0 missed=0 broken=0
for patch in "${patches[@]}"; do
    name=$(basename "$patch" .patch)
    suite=$(sed -n 's/^Suite: *//p' "$patch" | head -n 1)
    if [ -z "$suite" ] || ! git apply --check "$patch" 2>/dev/null; then
        echo "BROKEN  $name (no Suite: line, or the patch no longer applies)"
        broken=$((broken + 1))
        continue
    fi
    git apply "$patch" && applied=$patch
    if ! cmake --build "$build" --target "$suite" -j2 >"$scratch/build.log" 2>&1; then
        echo "BROKEN  $name (does not build)"
        broken=$((broken + 1))
    elif (cd "$build" && ctest -R "^$suite\$" --timeout 600 >"$scratch/test.log" 2>&1); then
        echo "MISSED  $name ($suite passed)"
        missed=$((missed + 1))
    else
        echo "CAUGHT  $name ($suite failed)"
        caught=$((caught + 1))
    fi
    git apply -R "$patch" && applied=""
done
echo "caught $caught, missed $missed, broken $broken of ${#patches[@]}"
[ $missed -eq 0 ] && [ $broken -eq 0 ]
