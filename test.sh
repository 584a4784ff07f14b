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

# The tools' other versions lay out and find other things.
tools=14
held_to() {
  local version
  version=$("$1" --version | grep -oE '[0-9]+' | head -n 1)
  [ "$version" = "$tools" ] && return
  echo "skipped: this check is held to $1 $tools, and here is version $version"
  return 1
}

step "Format"
if held_to clang-format; then
  git ls-files '*.cpp' '*.hpp' | xargs clang-format --dry-run --Werror
fi

for preset in release asan; do
  step "Build: $preset"
  quietly cmake --preset "$preset"
  quietly cmake --build "build/$preset" -j "$jobs"
done

step "Static checks"
if held_to clang-tidy; then
  scripts/tidy.sh build/release
fi

step "Fuzzing"
scripts/fuzz.sh 10

# The release tests come last: their closing line is the one that counts.
step "Tests: asan"
ctest --preset asan -j "$jobs" --no-tests=error
step "Tests: release"
ctest --preset release -j "$jobs" --no-tests=error
