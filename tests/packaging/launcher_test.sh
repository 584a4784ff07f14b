#!/bin/bash
# Launchers that come and go around one real quote service. The window is a stand-in that stays
# until it is ended, so that no display is needed.
# Usage: launcher_test.sh FOLDER-OF-THE-PROGRAMS
set -u
programs=$(readlink -f "$1")
launcher=$(dirname "$(readlink -f "$0")")/../../scripts/launcher.sh
work=$(mktemp -d)
started=()
trap 'kill "${started[@]}" $(cat "$work/messages" 2>/dev/null) 2>/dev/null; wait; rm -rf "$work"' EXIT
mkdir "$work/programs" "$work/bin"
ln -s "$programs/quintara-quotes" "$work/programs/"
printf '#!/usr/bin/perl\nsleep 300\n' >"$work/programs/quintara"
# A message that nobody closes.
# shellcheck disable=SC2016
printf '#!/bin/sh\necho $$ >>"%s/messages"\nexec sleep 300\n' "$work" >"$work/bin/zenity"
chmod +x "$work/programs/quintara" "$work/bin/zenity"
export PATH=$work/bin:$PATH

listening() { (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }
history=$((21000 + $$ % 5000 * 2))
quotes=$((history + 1))
export QUINTARA_HISTORY_PORT=$history QUINTARA_QUOTES_PORT=$quotes
export XDG_RUNTIME_DIR=$work DISPLAY=:none WAYLAND_DISPLAY=
service=("$programs/quintara-quotes" --history-port "$history" --quotes-port "$quotes")

check() {  # check WHAT COMMAND...: holds now or within ten seconds
  for ((tries = 100; tries > 0; tries--)); do
    "${@:2}" && return
    sleep 0.1
  done 2>/dev/null
  echo "FAILED: $1"
  cat "$work/log"
  exit 1
}
# Also one that nobody has waited for yet: not every container's first process does.
gone() { ! kill -0 "$1" || grep -q "^State:.Z" "/proc/$1/status"; }
up() { listening "$history" && listening "$quotes"; }
down() { ! listening "$history" && ! listening "$quotes"; }
background() { "$@" 2>>"$work/log" & started+=("$!"); }
window_of() { pgrep -P "$1" -x quintara; }
launch() {  # launch NAME: sets its launcher and its window to the processes
  local -n processes=$1
  background "$launcher" --programs "$work/programs"
  processes["launcher"]=$!
  check "a window opens" window_of "$!" >/dev/null
  processes["window"]=$(window_of "${processes["launcher"]}")
}
close() { kill "$2" && wait "$1"; }  # close LAUNCHER PROCESS-TO-END
messages=0
refused() {  # refused WHAT WORDS: a launcher that ends at once with a message, which stays open
  timeout 20 "$launcher" --programs "$work/programs" 2>"$work/message" </dev/null
  check "$1 is refused" [ "$?$(grep -c -- "$2" "$work/message")" = 11 ]
  check "$1: a message is shown" [ "$(wc -l <"$work/messages")" = $((++messages)) ]
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

# A service that the user started is the user's to stop.
background "${service[@]}"
own=$!
check "own service" up
launch first
close "${first[launcher]}" "${first[window]}"
sleep 0.5
check "it is left alone" up
close "$own" "$own"

# Somebody else on the ports: one that speaks HTTP, one that says nothing.
for answer in $'HTTP/1.0 200 OK\r\nServer: other\r\n\r\n' ''; do
  # shellcheck disable=SC2016
  background perl -MIO::Socket::INET -e '
    my $s = IO::Socket::INET->new(Listen => 5, ReuseAddr => 1, LocalAddr => "127.0.0.1:$ARGV[0]");
    my @open; while (my $c = $s->accept) { $ARGV[1] ? print $c $ARGV[1] : push @open, $c }' \
    "$quotes" "$answer"
  other=$!
  check "another program listens" listening "$quotes"
  refused "another program's port" "another program uses port $quotes"
  listening "$history" && check "no service starts beside it" false
  close "$other" "$other"
done
if [ "$(id -u)" -eq 0 ]; then
  HOME=/ background setpriv --reuid 65534 --clear-groups "${service[@]}"
  other=$!
  check "another user's service" up
  refused "another user's service" "another user"
  close "$other" "$other"
fi
DISPLAY='' refused "no display" "no display"
