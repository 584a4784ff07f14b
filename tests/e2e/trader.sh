#!/usr/bin/env bash
# A trader's session with the real program and the real quote service, by input events alone: draw,
# resize, spread, hover, drag swing points off the chart, calculate, show levels, change the chart
# type, clear. What it sees it reads from the screen and the clipboard.
# Usage: trader.sh FOLDER-OF-THE-PROGRAMS HISTORY-PORT QUOTES-PORT LOCALE [FOLDER-FOR-SCREENSHOTS]
set -u
if [ -z "${TRADER_DISPLAY:-}" ]; then
  TRADER_DISPLAY=1 exec xvfb-run -a -s "-screen 0 1280x1000x24" "$0" "$@"
fi
programs=$1
export QUINTARA_HISTORY_PORT=$2 QUINTARA_QUOTES_PORT=$3
locale=$4  # need not be generated on this machine: only the program is told
shots=${5:-$(mktemp -d)}
mkdir -p "$shots"
here=$(dirname "$0")
export XDG_RUNTIME_DIR=$shots/runtime XDG_DATA_HOME=$shots/data QT_QPA_PLATFORM=xcb
mkdir -p -m 700 "$XDG_RUNTIME_DIR"

green='#00FF00'
checks=0
failures=0
check() {  # check WHAT CONDITION...
  checks=$((checks + 1))
  if "${@:2}"; then return; fi
  failures=$((failures + 1))
  echo "FAILED: $1 (${*:2})"
}
between() { [ "$1" -ge "$2" ] && [ "$1" -le "$3" ]; }
same() { [ "$1" = "$2" ]; }
differs() { [ "$1" != "$2" ]; }

shot=0
look() {  # a new screenshot, for what is read next
  sleep 0.25
  shot=$((shot + 1))
  picture=$shots/$(printf '%02d' "$shot")-$1.png
  import -window "$window" "$picture"
}
# Pixels of a colour in a part of the last screenshot: count COLOUR [WIDTHxHEIGHT+LEFT+TOP [FUZZ]].
# Text is softened at its edges, so it is counted with a fuzz.
count() {
  convert "$picture" ${2:+-crop "$2" +repage} -fuzz "${3:-0%}" -fill black +opaque "$1" \
    -fill white -opaque "$1" -format '%[fx:round(mean*w*h)]' info:
}
# A fingerprint of a part of the last screenshot.
print_of() { convert "$picture" -crop "$1" +repage rgb:- | md5sum; }

click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
clear_box() { click "$1" "$2"; xdotool key ctrl+a Delete; }
text_of() {  # what stands in the text box at a place
  click "$1" "$2"
  printf none | xclip -selection clipboard -i >/dev/null 2>&1
  xdotool key ctrl+a ctrl+c
  sleep 0.2
  timeout 3 xclip -selection clipboard -o
}
# Presses on the chart, carries the price to a box and lets go there.
drag() {
  xdotool mousemove --window "$window" "$1" "$2" sleep 0.1 mousedown 1 sleep 0.1 \
    mousemove --window "$window" "$3" "$4" sleep 0.1 mouseup 1 sleep 0.1 \
    mousemove_relative 1 1 sleep 0.2
}

openbox >/dev/null 2>&1 &
LC_ALL=$locale setsid "$here/../../scripts/launcher.sh" "$programs" >"$shots/program.log" 2>&1 &
launcher=$!
trap 'kill "$launcher" 2>/dev/null; wait "$launcher" 2>/dev/null' EXIT
window=
for _ in $(seq 300); do
  window=$(xdotool search --onlyvisible --name '^Quintara - Version 2.00.01$' 2>/dev/null | head -n 1)
  [ -z "$window" ] || break
  sleep 0.2
done
if [ -z "$window" ]; then
  echo "FAILED: no window"
  cat "$shots/program.log"
  exit 1
fi
xdotool windowmove "$window" 20 30 windowfocus "$window"
sleep 0.5

look start
check "black chart area at start" between "$(count '#000000' 401x400+320+159)" 160000 160400

# Draw.
click 76 17
xdotool type DEMO
click 40 540
sleep 1
look chart
bars=$(count "$green" 401x511+320+48)
check "bars in green" between "$bars" 1500 20000
check "newest close shown" differs "$(text_of 170 17)" ""
close=$(text_of 170 17)
case $locale in
  de_*) check "comma in the close" same "${close//[!,]/}" "," ;;
  *) check "point in the close" same "${close//[!.]/}" "." ;;
esac

# Resize: more room, more bars.
xdotool windowsize "$window" 1100 700
sleep 0.5
look large
large=$(count "$green" 780x652+320+48)
check "more bars in a larger window" [ "$large" -gt "$bars" ]
xdotool windowsize "$window" 721 559
sleep 0.5
look restored
check "same chart in the old size" between "$(count "$green" 401x511+320+48)" \
  $((bars * 9 / 10)) $((bars * 11 / 10))

# Spread and pack.
before=$(print_of 401x400+320+159)
click 603 18
look spread
check "Expand changes the chart" differs "$(print_of 401x400+320+159)" "$before"
click 628 18
look packed
check "Suppress brings it back" same "$(print_of 401x400+320+159)" "$before"

# Hover: another bar, another readout; back to the newest one outside.
newest=$(print_of 60x72+357+48)
xdotool mousemove --window "$window" 500 300
look hover
check "readout follows the pointer" differs "$(print_of 60x72+357+48)" "$newest"
check "price at the pointer" between "$(count white 70x14+536+48 50%)" 30 900
xdotool mousemove --window "$window" 315 20
look left
check "newest bar again outside" same "$(print_of 60x72+357+48)" "$newest"
check "no price outside" same "$(count white 70x14+536+48 50%)" 0

# Swing points off the chart: A1 and C1 take lows, B1 a high.
drag 400 250 52 66
drag 600 250 205 66
drag 660 250 280 66
a=$(text_of 52 66)
b=$(text_of 205 66)
c=$(text_of 280 66)
for value in "$a" "$b" "$c"; do check "a price was dropped" between "${#value}" 3 8; done
case $locale in
  de_*)
    # Dropped as the user writes numbers; the boxes are read with a full stop, so type that.
    check "dropped with a comma" same "${b//[!,]/}" ","
    clear_box 52 66 && xdotool type "${a/,/.}"
    clear_box 205 66 && xdotool type "${b/,/.}"
    clear_box 280 66 && xdotool type "${c/,/.}"
    ;;
esac

# Calculate, show the levels.
click 110 540
look calculated
check "retracements in red" between "$(count '#FF0000' 260x20+32+120 40%)" 30 3000
check "targets in red" between "$(count '#FF0000' 260x20+32+208 40%)" 30 3000
check "nothing for A2" same "$(count '#0000FF' 260x20+32+144 40%)" 0
click 40 508
look shown
check "three solid lines" between "$(count '#FF0000' 401x511+320+48)" 700 1090
click 106 216
click 203 216
look targets
check "two dashed lines more" between "$(count '#FF0000' 401x511+320+48)" 1091 1700

# Change the chart type; the levels stay.
bars=$(count "$green" 401x511+320+48)
xdotool mousemove --window "$window" 360 18 click 1 sleep 0.4 key Down Return
look line
check "a line has less green" [ "$(count "$green" 401x511+320+48)" -lt "$bars" ]
check "levels survive the type" between "$(count '#FF0000' 401x511+320+48)" 1091 1700

# Clear.
click 183 540
look cleared
check "no levels on the chart" same "$(count '#FF0000' 401x511+320+48)" 0
check "empty results" same "$(count '#FF0000' 312x400+0+90 40%)" 0
check "empty box" same "$(text_of 52 66)" none

# Close: the program and the service it started end.
wmctrl -i -c "$window"
timeout 10 tail --pid="$launcher" -f /dev/null
check "the program has ended" differs "$(kill -0 "$launcher" 2>&1)" ""
check "so has the service it started" same \
  "$(curl -s --noproxy '*' -o /dev/null -w '%{http_code}' "http://127.0.0.1:$2/")" 000
echo "$((checks - failures)) passed, $failures failed"
[ "$failures" -eq 0 ]
