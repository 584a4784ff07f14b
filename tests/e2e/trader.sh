#!/usr/bin/env bash
# A trader's session with the real program and the real quote service, by input events alone: draw,
# resize, drag swing points off the chart, calculate, show levels, change the chart type, clear, help.
# What it sees it reads from the screen and the clipboard.
# Usage: trader.sh FOLDER-OF-THE-PROGRAMS LOCALE [FOLDER-FOR-SCREENSHOTS]
set -u
if [ -z "${TRADER_DISPLAY:-}" ]; then
  TRADER_DISPLAY=1 exec xvfb-run -a -s "-screen 0 1280x1000x24" "$0" "$@"
fi
programs=$1
locale=$2  # need not be generated on this machine: only the program is told
shots=${3:-$(mktemp -d)}
mkdir -p "$shots"
here=$(dirname "$0")
XDG_RUNTIME_DIR=$(mktemp -d)  # a short name: a socket's has to be
export XDG_RUNTIME_DIR XDG_DATA_HOME=$shots/data XDG_CONFIG_HOME=$shots/config
export QT_QPA_PLATFORM=xcb

check() {  # check WHAT CONDITION...
  "${@:2}" || { echo "FAILED: $1 (${*:2})"; exit 1; }
}
between() { [ "$1" -ge "$2" ] && [ "$1" -le "$3" ]; }
written() { [ "${1//[!.,]/}" = "$separator" ]; }  # as this locale writes a price
case $locale in de_*) separator=, ;; *) separator=. ;; esac

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

click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }
fill() { click "$1" "$2" && xdotool key ctrl+a type "$3"; }
text_of() {  # what stands in the text box at a place
  click "$1" "$2"
  printf none | xclip -selection clipboard -i >/dev/null 2>&1
  xdotool key ctrl+a ctrl+c
  sleep 0.2
  timeout 3 xclip -selection clipboard -o
}

openbox >/dev/null 2>&1 &
LC_ALL=$locale setsid "$here/../../scripts/launcher.sh" --programs "$programs" >"$shots/program.log" 2>&1 &
launcher=$!
trap 'kill "$launcher" 2>/dev/null; wait "$launcher" 2>/dev/null; rm -rf "$XDG_RUNTIME_DIR"' EXIT
window=$(timeout 60 xdotool search --sync --onlyvisible --name '^Quintara - Version 2.00.01$')
[ -n "$window" ] || cat "$shots/program.log"
check "a window opens" [ -n "$window" ]
xdotool windowmove "$window" 20 30 windowfocus "$window"
sleep 0.5

# Draw.
click 76 17
xdotool type DEMO
click 40 540
sleep 1
look chart
bars=$(count '#00FF00' 401x511+320+48)
check "bars in green" between "$bars" 1500 20000
check "newest close" written "$(text_of 170 17)"

# Resize: more room, more bars.
xdotool windowsize "$window" 1100 700
sleep 0.5
look large
check "more bars" [ "$(count '#00FF00' 780x652+320+48)" -gt "$bars" ]
xdotool windowsize "$window" 721 559

# Swing points off the chart: A1 and C1 take lows, B1 a high.
for point in 400-52 600-205 660-280; do
  box=${point#*-}
  xdotool mousemove --window "$window" "${point%-*}" 250 sleep 0.1 mousedown 1 sleep 0.1 \
    mousemove --window "$window" "$box" 66 sleep 0.1 mouseup 1 sleep 0.1 mousemove_relative 1 1
  sleep 0.2
  price=$(text_of "$box" 66)
  check "a price was dropped" written "$price"
  fill "$box" 66 "${price/,/.}"  # the boxes are read with a full stop
done

# Calculate, show the levels.
click 110 540
look calculated
check "retracements in red" between "$(count '#FF0000' 260x20+32+120 40%)" 30 3000
check "targets in red" between "$(count '#FF0000' 260x20+32+208 40%)" 30 3000
check "nothing for A2" [ "$(count '#0000FF' 260x20+32+144 40%)" -eq 0 ]
click 40 508
look shown
check "three solid lines" between "$(count '#FF0000' 401x511+320+48)" 700 1090
click 106 216
click 203 216
look targets
check "two dashed lines more" between "$(count '#FF0000' 401x511+320+48)" 1091 1700

# Change the chart type; the levels stay.
bars=$(count '#00FF00' 401x511+320+48)
xdotool mousemove --window "$window" 360 18 click 1 sleep 0.4 key Down Return
look line
check "a line has less green" [ "$(count '#00FF00' 401x511+320+48)" -lt "$bars" ]
check "levels survive the type" between "$(count '#FF0000' 401x511+320+48)" 1091 1700

# Clear.
click 183 540
look cleared
check "no levels on the chart" [ "$(count '#FF0000' 401x511+320+48)" -eq 0 ]
check "empty box" [ "$(text_of 52 66)" = none ]

# Help: a window of its own, which Escape leaves.
click 660 18
help=$(timeout 20 xdotool search --sync --onlyvisible --class quintara-help | head -n 1)
check "the help opens" [ -n "$help" ]
sleep 0.5
xdotool windowfocus --sync "$help" key Escape sleep 0.5
check "and closes" [ -z "$(xdotool search --onlyvisible --class quintara-help)" ]

# Close: the program and the service it started end.
wmctrl -i -c "$window"
timeout 10 tail --pid="$launcher" -f /dev/null
! kill -0 "$launcher" 2>/dev/null || check "the program has ended" false
check "so has the service it started" flock -n "$XDG_RUNTIME_DIR/quintara/service.lock" true
