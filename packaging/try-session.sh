#!/bin/bash
# A trader's first minutes with the installed program, by input events; for try-package.sh. Own
# prices become a chart, the help opens. Fails where something does not come.
# Usage: try-session.sh SYSTEM-FOLDER SCREENSHOT-FOLDER FOLDER-OF-PRICES
set -eu
root=$1 work=$2 prices=$3
ip link set lo up
mkdir -p "$root/tmp/.X11-unix"
mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
as_trader() {
  chroot --userspec=trader:trader "$root" env -i HOME=/home/trader PATH=/usr/bin:/bin \
    LANG=C.UTF-8 DISPLAY="$DISPLAY" XAUTHORITY=/tmp/key "$@"
}
as_trader tee /tmp/key <"$XAUTHORITY" >/dev/null
openbox >/dev/null 2>&1 &

# A service of its own makes up a file of prices.
socket=$(as_trader quintara-quotes --runtime-folder)/history
as_trader quintara-quotes 2>/dev/null &
as_trader curl -s -f --retry 10 --retry-all-errors --unix-socket "$socket" -o - \
  "http://localhost/table.csv?s=DEMO&a=1&b=1&c=$(($(date +%Y) - 1))&d=12&e=31&f=2099&g=d" >"$work/MINE.csv"
kill $!
as_trader mkdir -p "$prices"
as_trader tee "$prices/MINE.csv" <"$work/MINE.csv" >/dev/null

as_trader quintara 2>"$work/launcher.log" &
launcher=$!
window=$(timeout 60 xdotool search --sync --onlyvisible --name '^Quintara - Version 2.00.01$')
click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
sleep 0.5
click 76 17
xdotool type MINE
click 40 540
sleep 1.5
import -window "$window" "$work/chart.png"
green=$(convert "$work/chart.png" -fill black +opaque '#00FF00' -fill white -opaque '#00FF00' \
  -format '%[fx:round(mean*w*h)]' info:)
echo "green pixels in the chart of own prices: $green"
[ "$green" -gt 1500 ]

click 660 18
help=$(timeout 20 xdotool search --sync --onlyvisible --class quintara-help | head -n 1)
sleep 1
import -window "$help" "$work/help.png"
echo "the help is open"
wmctrl -i -c "$help"

wmctrl -i -c "$window"
wait "$launcher"
! as_trader curl -s --unix-socket "$socket" http://localhost/
echo "window closed, service stopped"
