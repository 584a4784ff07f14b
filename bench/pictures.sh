#!/usr/bin/env bash
# Pictures of charts by quintara-chart, matplotlib and gnuplot, one after the other in one run:
# 480 bars and 24 level lines at 1440x900, as PNG files. Needs python3-matplotlib and gnuplot-nox,
# and skips what is not installed. Speed is a ratio: look at the last column.
# Usage: pictures.sh FOLDER-OF-PROGRAMS [COUNT]
set -euo pipefail
bin=$(readlink -f "$1")
count=${2:-100}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
export HOME=$work LC_ALL=C.UTF-8

say() { printf '%-42s %10s %s\n' "$1" "$2" "${3:-}"; }
# Milliseconds for each of a command's pictures, the least of five runs: of processor time, which is
# what a core does in a second also while others use the machine, or by the clock.
each() {  # each COUNT COMMAND...
  local TIMEFORMAT=${clock-%U %S} run
  for run in 1 2 3 4 5; do
    { time "${@:2}" >/dev/null 2>&1; } 2>&1
  done | awk -v n="$1" '{ ms = ($1 + $2) * 1000 / n; if (NR == 1 || ms < least) least = ms }
    END { printf "%.2f", least }'
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.1f times as long", a / b }'; }

list() {  # list COUNT
  echo "Ticker,Span,A1,A2,B1,C1,A3,A4,B2,C2,Show,Targets"
  for ((i = 0; i < $1; i++)); do
    echo "DEMO,24,82.59,80.1,93.6,86.5,93.1,94.2,80.7,85.3,A1 A2 A3 A4,A1=1:1 1.382 1.618 A2=1:1 1.382 1.618 A3=1:1 1.382 1.618 A4=1:1 1.382 1.618"
  done
}
list "$count" >list.csv
chart() { "$bin/quintara-chart" --quiet --jobs 1 --size "$1" --list list.csv --into pictures; }
one() { "$bin/quintara-chart" DEMO --size 1440x900; }

# The same number of bars for the others: a walk up and down.
awk 'BEGIN { srand(7); close_ = 80
  for (i = 0; i < 480; i++) {
    open = close_; close_ = open + rand() * 2 - 1
    high = (open > close_ ? open : close_) + rand(); low = (open < close_ ? open : close_) - rand()
    printf "%d %.2f %.2f %.2f %.2f\n", i, open, low, high, close_
  } }' >bars.txt

cat >chart.py <<'PY'
import sys
import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt
from matplotlib.collections import LineCollection, PolyCollection

bars = [[float(word) for word in line.split()] for line in open("bars.txt")]
for number in range(int(sys.argv[1])):
    figure, axes = plt.subplots(figsize=(14.4, 9), dpi=100, facecolor="black")
    axes.set_facecolor("black")
    axes.add_collection(LineCollection([[(i, low), (i, high)] for i, _, low, high, _ in bars],
                                       colors="lime", linewidths=0.8, antialiaseds=False))
    axes.add_collection(PolyCollection(
        [[(i - .3, a), (i - .3, b), (i + .3, b), (i + .3, a)] for i, a, _, _, b in bars],
        facecolors=["black" if b >= a else "lime" for _, a, _, _, b in bars],
        edgecolors="lime", linewidths=0.8, antialiaseds=False))
    axes.autoscale_view()
    low, high = axes.get_ylim()
    axes.hlines([low + (high - low) * k / 25 for k in range(1, 25)], 0, 479,
                colors=["red", "blue", "magenta", "yellow"] * 6, linewidths=0.8)
    axes.grid(True, color="gray", linestyle=":")
    axes.tick_params(colors="white")
    figure.savefig("matplotlib.png", facecolor="black")
    plt.close(figure)
PY
cat >chart.gp <<'GP'
set terminal pngcairo size 1440,900 background rgb "black"
set boxwidth 0.6
set grid ytics xtics linecolor rgb "gray"
set border linecolor rgb "white"
set key off
set style fill empty
do for [number = 1:pictures] {
  set output "gnuplot.png"
  plot [-1:480] "bars.txt" using 1:2:3:4:5 with candlesticks linecolor rgb "green", \
    for [k = 1:24] 60 + k * 2 with lines linecolor (k % 4)
}
GP

say "" "ms"
ours=$(each "$count" chart 1440x900)
say "quintara-chart 1440x900" "$ours"
say "quintara-chart 3840x2160" "$(each "$count" chart 3840x2160)"
start=$(clock=%R each 1 one)
say "quintara-chart, start to one file, by clock" "$start"
if /usr/bin/python3 -c 'import matplotlib' 2>/dev/null; then
  both=$(each 1 /usr/bin/python3 chart.py 21)
  once=$(each 1 /usr/bin/python3 chart.py 1)
  theirs=$(awk -v a="$both" -v b="$once" 'BEGIN { printf "%.2f", (a - b) / 20 }')
  once=$(clock=%R each 1 /usr/bin/python3 chart.py 1)
  say "matplotlib 1440x900" "$theirs" "$(ratio "$theirs" "$ours")"
  say "matplotlib, start to one file, by clock" "$once" "$(ratio "$once" "$start")"
else
  say "matplotlib" "skipped" "not installed"
fi
if command -v gnuplot >/dev/null; then
  both=$(each 1 gnuplot -e pictures=21 chart.gp)
  once=$(each 1 gnuplot -e pictures=1 chart.gp)
  theirs=$(awk -v a="$both" -v b="$once" 'BEGIN { printf "%.2f", (a - b) / 20 }')
  say "gnuplot 1440x900" "$theirs" "$(ratio "$theirs" "$ours")"
  once=$(clock=%R each 1 gnuplot -e pictures=1 chart.gp)
  say "gnuplot, start to one file, by clock" "$once" "$(ratio "$once" "$start")"
else
  say "gnuplot" "skipped" "not installed"
fi
