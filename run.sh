#!/usr/bin/env bash
# Builds Quintara if need be and starts it with its quote service.
set -euo pipefail
cd "$(dirname "$0")"

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "There is no display to open the window on.
Log in to a desktop and start ./run.sh there, or give it a virtual display:
  apt-get install xvfb && xvfb-run -a ./run.sh" >&2
  exit 1
fi

scripts/setup.sh run
build=build/release
log=$build/build.log
mkdir -p "$build"
if ! {
  # Tests and benchmark stay out unless a test run has put them in already.
  [ -f "$build/build.ninja" ] ||
    cmake --preset release -DQUINTARA_TESTS=OFF -DQUINTARA_BENCH=OFF -DQUINTARA_WERROR=OFF
  cmake --build "$build" --target programs
} >"$log" 2>&1; then
  echo "The build failed; the end of $log:" >&2
  tail -n 30 "$log" >&2
  exit 1
fi
exec scripts/launcher.sh --programs "$build/bin"
