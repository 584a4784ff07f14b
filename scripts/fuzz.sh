#!/usr/bin/env bash
# Builds the fuzz targets and runs each one for a while, as many at a time as there are processors.
# What a run learns is kept in build/fuzz/corpus and built upon by the next one; what it finds stays
# in build/fuzz/found and is tried first from then on, until it is mended.
# Usage: fuzz.sh [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."

export seconds=${1:-10}
export build=build/fuzz
mkdir -p "$build"
if ! { cmake --preset fuzz && cmake --build --preset fuzz -j "$(nproc)"; } >"$build/build.log" 2>&1; then
  echo "fuzz: the build failed; the end of $build/build.log:" >&2
  tail -n 30 "$build/build.log" >&2
  exit 1
fi

try() {
  local target=$1 corpus=$build/corpus/$1 found=$build/found/$1 log=$build/$1.log options=()
  mkdir -p "$corpus" "$found"
  [ ! -f "fuzz/$target.dict" ] || options+=("-dict=fuzz/$target.dict")
  [ ! -f "fuzz/$target.options" ] || mapfile -t -O "${#options[@]}" options <"fuzz/$target.options"
  if "$build/targets/$target" "$corpus" "fuzz/corpus/$target" "$found" "${options[@]}" \
    -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix="$found/" >"$log" 2>&1; then
    sed -n -E "s/^#([0-9]+)\s+DONE +cov: ([0-9]+).*/fuzz: $target: \1 inputs, coverage \2/p" "$log"
    return
  fi
  grep -a -E '^(Broken rule|SUMMARY|.*runtime error|==.*ERROR)' "$log" || tail -n 20 "$log"
  echo "fuzz: $target found a fault; see $log. To see it again:"
  sed -n "s|.*Test unit written to |  $build/targets/$target |p" "$log"
  return 1
} >&2
export -f try

find "$build/targets" -type f -executable -printf '%f\0' | sort -z |
  xargs -0 -n 1 -P "$(nproc)" bash -c 'try "$0" || exit 1'
