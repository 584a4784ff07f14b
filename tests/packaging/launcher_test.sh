#!/bin/bash
# Launchers that come and go around one real quote service. The window is a stand-in that stays
# until it is ended, so that no display is needed.
# Usage: launcher_test.sh FOLDER-OF-THE-PROGRAMS
set -u
programs=$(readlink -f "$1")
launcher=$(dirname "$(readlink -f "$0")")/../../scripts/launcher.sh
work=$(mktemp -d)
started=()
finish() {
  xargs kill -KILL "${started[@]}" <"$work/messages"
  wait
  umount "$work/full"
  rm -rf "$work"
}
trap 'finish 2>/dev/null' EXIT
mkdir -p "$work/programs" "$work/bin" "$work/full" "$work/config/quintara"
ln -s "$programs/quintara-quotes" "$work/programs/"
printf '#!/usr/bin/perl\nsleep 300\n' >"$work/programs/quintara"
# A message that nobody closes.
# shellcheck disable=SC2016
printf '#!/bin/sh\necho "$4" >>"%s/shown"; echo $$ >>"%s/messages"\nexec sleep 300\n' \
  "$work" "$work" >"$work/bin/zenity"
chmod +x "$work/programs/quintara" "$work/bin/zenity"
export PATH=$work/bin:$PATH DISPLAY=:none WAYLAND_DISPLAY=
export XDG_RUNTIME_DIR=$work XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data
messages=0

check() {  # check WHAT COMMAND...: holds now or within twelve seconds
  for ((tries = 120; tries > 0; tries--)); do
    "${@:2}" && return
    sleep 0.1
  done 2>/dev/null
  echo "FAILED: $1"
  cat "$work/log" "$XDG_RUNTIME_DIR/quintara/service.log"
  exit 1
}
# Also one that nobody has waited for yet: not every container's first process does.
gone() { ! kill -0 "$1" || grep -q "^State:.Z" "/proc/$1/status"; }
ask() { curl -q -s -m 2 -o /dev/null --unix-socket "$XDG_RUNTIME_DIR/quintara/$1" http://localhost/; }
up() { ask history && ask quotes; }
down() { flock -n "$XDG_RUNTIME_DIR/quintara/service.lock" true && ! ask history && ! ask quotes; }
background() { "$@" 2>>"$work/log" </dev/null & started+=("$!"); }
child_of() { pgrep -P "$1" -x "$2"; }
launch() {  # launch NAME [FILE...]: sets its launcher and its window to the processes
  local -n processes=$1
  background "$launcher" --programs "$work/programs" "${@:2}"
  processes["launcher"]=$!
  check "a window opens" child_of "$!" quintara >/dev/null
  processes["window"]=$(child_of "${processes["launcher"]}" quintara)
}
service() { lslocks -n -u -o PID,PATH | sed -n "s|^ *\([0-9]*\) *$work/quintara/service.lock$|\1|p"; }
close() { kill "$2" && wait "$1"; }  # close LAUNCHER PROCESS-TO-END
told() { [ "$(wc -l <"$work/messages")" = "$1" ]; }
refused() {  # refused WHAT WORDS: a launcher that ends at once with a message, which stays open
  timeout 20 "$launcher" --programs "$work/programs" 2>"$work/message" </dev/null
  check "$1 is refused" [ "$?$(grep -c -- "$2" "$work/message")" = 11 ]
  check "$1: a message is shown" told $((++messages))
}

# Two windows, closed, ended as a session manager does it, or killed so that none can clean up.
declare -A first second
for ending in "TERM window" "TERM launcher" "KILL launcher"; do
  read -r signal process <<<"$ending"
  launch first
  launch second
  kill "-$signal" "${first[$process]}"
  check "$ending: a window goes with its launcher" gone "${first[window]}"
  sleep 0.5
  check "$ending: the service stays with the second window" up
  kill "-$signal" "${second[$process]}"
  wait "${second[launcher]}" 2>/dev/null
  [ "$signal" = KILL ] || down || check "$ending: no launcher ends before its service" false
  check "$ending: the service does not outlive the windows" down
done

# A service that was killed, or that hangs, is replaced when a window is opened; nobody else's is.
launch first
for signal in KILL STOP; do
  kill -$signal "$(service)"
  launch second
  check "after SIG$signal: a new service answers" up
  close "${second[launcher]}" "${second[window]}"
done
close "${first[launcher]}" "${first[window]}"
check "it ends like any other" down

# A service that the user started is the user's to stop.
background "$programs/quintara-quotes"
own=$!
check "own service" up
launch first
close "${first[launcher]}" "${first[window]}"
sleep 0.5
check "it is left alone" up
close "$own" "$own"

# Settings of a provider that cannot be used are said when the service starts, and the window opens.
echo nonsense >"$work/config/quintara/provider.conf"
launch first
launch second
check "the line is named once" told $((++messages))
check "the line is named" grep -q "provider.conf: line 1" "$work/log"
close "${first[launcher]}" "${first[window]}"
close "${second[launcher]}" "${second[window]}"
rm "$work/config/quintara/provider.conf"

# Files of prices go into the folder of own prices, and a message says what came of each.
printf 'Date,Open,High,Low,Close\n2026-11-20,9,99,1,31\n' >"$work/GOOD (1).csv"
echo nonsense >"$work/BAD.csv"
launch first "$work/GOOD (1).csv" "$work/BAD.csv"
check "one message" told $((++messages))
check "what came of both" [ "$(tail -n 2 "$work/shown" | grep -c 'GOOD is in \|^BAD.csv is not')" = 2 ]
check "the file" [ -s "$work/data/quintara/prices/GOOD.csv" ]
close "${first[launcher]}" "${first[window]}"

# Two users at once, each with own prices for one ticker, and neither reaches the other's.
identity() {  # identity USER: sets `as` to what runs a command as this user
  as=(setpriv --reuid "$1" --regid "$1" --clear-groups env HOME="$work/$1"
    XDG_RUNTIME_DIR="$work/$1/run" XDG_CONFIG_HOME="$work/$1" XDG_DATA_HOME="$work/$1")
}
reads() {  # reads USER WHOSE PRICE: whether this price stands in the quote
  identity "$1"
  "${as[@]}" curl -q -s -m 5 --unix-socket "$work/$2/run/quintara/quotes" \
    "http://localhost/d/quotes.csv?s=SAME" | grep -q ",$3"
}
users=(65531 65532)
for user in "${users[@]}"; do
  mkdir -p "$work/$user/quintara/prices"
  mkdir -m 700 "$work/$user/run"
  printf 'Date,Open,High,Low,Close\n2026-11-20,9,99,1,%s\n' "${user#655}" \
    >"$work/$user/quintara/prices/SAME.csv"
done
if chmod 711 "$work" && chown -R 65531 "$work/65531" && chown -R 65532 "$work/65532" &&
  identity 65531 && "${as[@]}" "$programs/quintara-quotes" --version >/dev/null; then
  for user in "${users[@]}"; do
    identity "$user"
    background "${as[@]}" "$launcher" --programs "$work/programs"
  done
  for user in "${users[@]}"; do
    check "$user reads own prices" reads "$user" "$user" "${user#655}"
  done
  reads 65531 65532 . && check "the other's service is out of reach" false
else
  echo "skipped: two users need root"
fi 2>/dev/null

# No room to write anything.
if mount -t tmpfs -o size=16k none "$work/full" 2>/dev/null; then
  chmod 700 "$work/full"
  head -c 100k /dev/zero >"$work/full/everything" 2>/dev/null
  export XDG_RUNTIME_DIR=$work/full
  launch first
  check "a service without room" up
  close "${first[launcher]}" "${first[window]}"
  check "it does not outlive its window" down
  export XDG_RUNTIME_DIR=$work
else
  echo "skipped: a full runtime folder needs root"
fi

DISPLAY='' refused "no display" "no display"
chmod 755 "$work/quintara"
refused "a folder open to others" "$work/quintara: it is not open to its owner alone"
