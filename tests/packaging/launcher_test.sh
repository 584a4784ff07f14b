#!/bin/bash
# Launchers that come and go around one real quote service. The window is a stand-in that stays
# until it is ended, so that no display is needed.
# Usage: launcher_test.sh FOLDER-OF-THE-PROGRAMS
set -u
programs=$(readlink -f "$1")
launcher=$(dirname "$(readlink -f "$0")")/../../scripts/launcher.sh
work=$(mktemp -d)
started=()
trap 'kill "${started[@]}" 2>/dev/null; wait; rm -rf "$work"' EXIT
mkdir "$work/programs"
ln -s "$programs/quintara-quotes" "$work/programs/"
# A name of its own: the launcher itself sleeps, too, while its service starts.
ln -s "$(command -v sleep)" "$work/programs/stand-in-window"
printf '#!/bin/sh\nexec "%s/programs/stand-in-window" 300\n' "$work" >"$work/programs/quintara"
chmod +x "$work/programs/quintara"

listening() { (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }
for ((history = 21000 + $$ % 5000 * 2; ; history += 2)); do
  quotes=$((history + 1))
  listening "$history" || listening "$quotes" || break
done
ports=(--history-port "$history" --quotes-port "$quotes")
export QUINTARA_HISTORY_PORT=$history QUINTARA_QUOTES_PORT=$quotes
export XDG_RUNTIME_DIR=$work DISPLAY=:none WAYLAND_DISPLAY=

failures=0
check() {  # check WHAT COMMAND...: holds now or within ten seconds
  for ((tries = 100; tries > 0; tries--)); do
    "${@:2}" && return
    sleep 0.1
  done 2>/dev/null
  failures=$((failures + 1))
  echo "FAILED: $1"
}
gone() { ! kill -0 "$1"; }
up() { listening "$history" && listening "$quotes"; }
down() { ! listening "$history" && ! listening "$quotes"; }
background() { "$@" 2>>"$work/log" & started+=("$!"); }
window_of() { pgrep -P "$1" -x stand-in-window; }
launch() {  # sets `launched` and `window` to the processes
  background "$launcher" "$work/programs"
  launched=$!
  check "a window opens" window_of "$launched" >/dev/null
  window=$(window_of "$launched")
}
close() { kill "$2" && wait "$1"; }  # close LAUNCHER PROCESS-TO-END
refused() {  # refused WHAT WORDS: a launcher that ends at once with a message
  timeout 20 "$launcher" "$work/programs" 2>"$work/message"
  check "$1 is refused" [ "$?$(grep -c -- "$2" "$work/message")" = 11 ]
}

# Two windows, closed one after the other.
launch; first=("$launched" "$window")
launch; second=("$launched" "$window")
check "one service for both" up
close "${first[@]}"
check "the service stays with the second window" up
close "${second[@]}"
listening "$history" && check "the service is down when the last launcher has ended" false

# Killed launchers clean up nothing themselves.
launch; first=("$launched" "$window")
launch; second=("$launched" "$window")
kill -KILL "${first[0]}"
check "a killed launcher takes its window along" gone "${first[1]}"
sleep 0.5
check "its service stays for the other window" up
kill -KILL "${second[0]}"
check "the last one, too" gone "${second[1]}"
check "the service does not outlive them" down

# A request to end, as a session manager sends it.
launch
close "$launched" "$launched"
check "the window ends with its launcher" gone "$window"
check "and so does the service" down

# A service that the user started is the user's to stop.
background "$programs/quintara-quotes" "${ports[@]}"
own=$!
check "own service" up
launch
close "$launched" "$window"
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
  HOME=/ background setpriv --reuid 65534 --clear-groups "$programs/quintara-quotes" "${ports[@]}"
  other=$!
  check "another user's service" up
  refused "another user's service" "another user"
  close "$other" "$other"
fi
DISPLAY='' refused "no display" "no display"

[ "$failures" -eq 0 ] || { cat "$work/log"; exit 1; }
