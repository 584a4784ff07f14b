#!/usr/bin/env bash
# Builds everything twice, plain and with sanitizers, and runs every check there is.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh test
jobs=$(nproc)
step() { printf '\n== %s\n' "$*"; }

quietly() {
  local log
  log=$(mktemp)
  "$@" >"$log" 2>&1 || { tail -n 60 "$log"; rm -f "$log"; exit 1; }
  rm -f "$log"
}

step "Format"
git ls-files '*.cpp' '*.hpp' | xargs clang-format --dry-run --Werror

for preset in release asan; do
  step "Build: $preset"
  quietly cmake --preset "$preset"
  quietly cmake --build "build/$preset" -j "$jobs"
done

step "Static checks"
scripts/tidy.sh build/release

step "Fuzzing"
scripts/fuzz.sh 10

# The release tests come last: their closing line is the one that counts.
step "Tests: asan"
ctest --preset asan -j "$jobs" --no-tests=error
step "Tests: release"
ctest --preset release -j "$jobs" --no-tests=error
