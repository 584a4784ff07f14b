#!/bin/bash
# Starts Quintara with its quote service and stops what was started when the window closes. The
# installed command and run.sh are this one script.
#
# Several windows share one service. Every launcher holds a shared lock while its window is open;
# whoever gets that lock for itself knows that no window is left, and stops the service if a
# launcher started it. That is the last launcher to end, or a guard if the last one was killed.
set -u

usage() {
  echo "Usage: quintara [--programs FOLDER]
Opens the window of Quintara and starts its quote service unless that runs already.

  --programs FOLDER   where the programs lie, if not where they were installed
  --help              show this text

Environment: QUINTARA_HISTORY_PORT (8470) and QUINTARA_QUOTES_PORT (8471) name the ports of the
quote service for a window that was built to ask on others."
}

# A message in a window, by whichever tool the desktop brings.
show() {
  if command -v zenity; then
    zenity --error --no-markup --title=Quintara --text="$1"
  elif command -v kdialog; then
    kdialog --title Quintara --error "$1"
  elif command -v xmessage; then
    xmessage -center "$1"
  fi
}

fail() {
  echo "quintara: $*" >&2
  # Started from a menu, nobody reads standard error. The locks are for as long as the launcher
  # works, not until somebody has read the message.
  [ -t 0 ] || [ -t 2 ] || { exec 8>&- 9>&- </dev/null >/dev/null 2>&1; show "$*"; } &
  exit 1
}

folder=$(dirname "$(readlink -f "$0")")/../lib/quintara
while [ $# -gt 0 ]; do
  case $1 in
    --help) usage; exit ;;
    --programs) [ -n "${2:-}" ] || { usage >&2; exit 2; }; folder=$2; shift 2 ;;
    *) usage >&2; exit 2 ;;
  esac
done
programs=$(readlink -f "$folder")
for program in quintara quintara-quotes; do
  [ -x "$programs/$program" ] || fail "$program is not in the folder $folder"
done
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || fail "there is no display to open the window on.
Log in to a desktop and start Quintara there, or give it a virtual display:
  apt-get install xvfb && xvfb-run -a $0"

history_port=${QUINTARA_HISTORY_PORT:-8470}
quotes_port=${QUINTARA_QUOTES_PORT:-8471}
me=$(id -u)

# Locks and the service's process number, in a folder of this user's own.
runtime=${XDG_RUNTIME_DIR:-/run/user/$me}
[ -d "$runtime" ] && [ -w "$runtime" ] || runtime=/tmp
state=$runtime/quintara-$me-$history_port
mkdir -m 700 "$state" 2>/dev/null
if [ ! -d "$state" ] || [ -L "$state" ] || [ ! -O "$state" ]; then
  fail "cannot use the folder $state"
fi
service_log=$state/service.log
windows_lock=$state/windows.lock

# The name in the Server header of whatever answers on a port: nothing if nothing listens, "?" if
# it gives none.
server_on() {
  local reply
  # -q: the user's own settings for curl are not meant for this.
  reply=$(curl -q -s -o /dev/null -D - --noproxy '*' --max-time 2 "http://127.0.0.1:$1/" 2>/dev/null)
  case $? in
    0) ;;
    7) return ;;            # connection refused
    *) echo "?"; return ;;  # something listens but does not speak HTTP
  esac
  reply=$(printf '%s' "$reply" | tr -d '\r' | sed -n 's/^[Ss]erver: *//p' | head -n 1)
  echo "${reply:-?}"
}

# Whether this user is the one who listens on a port.
is_mine() {
  local port fields
  printf -v port ':%04X' "$1"
  while read -ra fields; do
    # Local address, state (0A is listening), owner.
    [[ ${fields[1]} == *"$port" && ${fields[3]} == 0A && ${fields[7]} == "$me" ]] && return
  done </proc/net/tcp
  return 1
}

# Whether our service answers on both ports; anything else on one of them ends the launcher.
service_runs() {
  local port server found=0
  for port in "$history_port" "$quotes_port"; do
    server=$(server_on "$port")
    case $server in
      "") continue ;;
      quintara-quotes/*) found=$((found + 1)) ;;
      *) fail "another program uses port $port of this computer, where the quote service belongs.
Stop that program and start Quintara again." ;;
    esac
    is_mine "$port" || fail "the quote service on port $port belongs to another user of this
computer and shows that user's prices. Ask for it to be stopped, then start Quintara again."
  done
  [ "$found" -eq 2 ]
}

# The process that a launcher started, if it is still our service.
started_service() {
  local pid
  pid=$(cat "$state/service.pid" 2>/dev/null) || return
  # An upgrade replaces the file of a running program: its name then ends in " (deleted)".
  [[ $(readlink "/proc/$pid/exe" 2>/dev/null) == */quintara-quotes* ]] && echo "$pid"
}

# Only for whoever holds the windows' lock alone.
stop_service() {
  local pid tries
  pid=$(started_service) && kill "$pid" 2>/dev/null && for ((tries = 100; tries > 0; tries--)); do
    kill -0 "$pid" 2>/dev/null || break
    sleep 0.05
  done
  rm -f "$state/service.pid"
}

# Waits, in the background, until no launcher is left, be it that the last one was killed. A lock
# belongs to an open file, so that the guard needs a new one: the launcher's would hold itself up.
guard_service() {
  trap '' INT TERM HUP
  exec 8>&- 9>"$windows_lock" </dev/null >/dev/null 2>&1
  flock -x 9
  stop_service
}

start_service() {
  setsid "$programs/quintara-quotes" --history-port "$history_port" --quotes-port "$quotes_port" \
    >"$service_log" 2>&1 8>&- 9>&- </dev/null &
  local service=$! tries
  echo "$service" >"$state/service.pid"
  guard_service &
  for ((tries = 200; tries > 0; tries--)); do
    service_runs && return
    kill -0 "$service" 2>/dev/null || fail "the quote service did not start:
$(tail -n 5 "$service_log")"
    sleep 0.05
  done
  fail "the quote service does not answer; see $service_log"
}

finish() {
  trap - EXIT
  trap '' INT TERM HUP
  [ -n "${window:-}" ] && kill "$window" 2>/dev/null && wait "$window" 2>/dev/null
  flock 8  # no other launcher looks for the service meanwhile
  flock -u 9
  if flock -n -x 9; then
    stop_service
  else
    flock -s 9  # another window is open, or the guard is at it and done in a moment
  fi
  exit "$1"
}

exec 8>"$state/start.lock" 9>"$windows_lock"
trap 'finish 129' HUP
trap 'finish 130' INT
trap 'finish 143' TERM
trap 'finish $?' EXIT
flock 8
flock -s 9
service_runs || start_service
flock -u 8

# The window goes with its launcher: without one, the service may end under it.
setpriv --pdeathsig TERM "$programs/quintara" 8>&- 9>&- &
window=$!
wait "$window"
result=$?
window=
finish "$result"
