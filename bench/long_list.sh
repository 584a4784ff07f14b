#!/usr/bin/env bash
# A watch list of ten thousand lines: whether the last thousand takes as long as the first and as
# much memory, and what a second process brings. Wants a quiet machine with two cores.
# Usage: long_list.sh FOLDER-OF-PROGRAMS [COUNT]
set -euo pipefail
bin=$(readlink -f "$1")
count=${2:-10000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export HOME=$work LC_ALL=C.UTF-8

{
  echo "Ticker,A1,B1,C1,Show,Targets"
  for ((i = 0; i < count; i++)); do echo "DEMO,82.59,93.6,86.5,A1,A1=1:1 1.618"; done
} >list.csv

say() { printf '%-36s %10s %s\n' "$1" "$2" "${3:-}"; }
picture() { echo "pictures/DEMO-$1.png"; }
written() { stat -c %.Y "$(picture "$1")"; }
# The most memory so far of the process that draws, in KB.
memory() { sed -n 's/^VmHWM:\s*\([0-9]*\) kB/\1/p' "/proc/$(pgrep -P "$1")/status"; }
seconds() { awk -v from="$1" -v to="$2" 'BEGIN { printf "%.2f", to - from }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f times", a / b }'; }
await() { until [ -e "$(picture "$1")" ] || ! kill -0 "$drawing"; do sleep 0.02; done; }
draw() { exec "$bin/quintara-chart" --quiet --jobs "$1" --list list.csv --into pictures; }

part=$((count / 10))
begun=$(date +%s.%N)
draw 1 &
drawing=$!
await "$part"
early=$(memory "$drawing")
await $((count - part / 2))
late=$(memory "$drawing")
wait "$drawing"
one=$(seconds "$begun" "$(date +%s.%N)")
first=$(seconds "$(written 2)" "$(written "$part")")
last=$(seconds "$(written $((count - part + 2)))" "$(written "$count")")
rm -r pictures
begun=$(date +%s.%N)
(draw 2)
two=$(seconds "$begun" "$(date +%s.%N)")

say "first tenth of $count lines" "$first s"
say "last tenth" "$last s" "$(ratio "$last" "$first")"
say "memory after the first tenth" "$early KB"
say "memory near the end" "$late KB" "$((late - early)) KB more"
say "one process" "$one s"
say "two processes" "$two s" "$(ratio "$one" "$two") as fast"
