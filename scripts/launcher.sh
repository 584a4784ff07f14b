#!/bin/bash
# Starts Quintara with its quote service and stops what was started when the window closes. The
# installed command and run.sh are this one script.
#
# Several windows share one service. Every launcher holds a shared lock while its window is open. A
# guard, started together with a service, waits until it gets that lock for itself: then no window
# is left, be it that the last launcher was killed, and the guard stops its service.
set -u

usage() {
  echo "Usage: quintara [--programs FOLDER] [FILE...]
Opens the window of Quintara and starts its quote service unless that runs already. Files of prices
that are named go into the folder of own prices first, as quintara-quotes --add puts them there.

  --programs FOLDER   where the programs lie, if not where they were installed
  --help              show this text"
}

# A message in a window, by whichever tool the desktop brings: show KIND TEXT, error or info.
show() {
  if command -v zenity; then
    zenity "--$1" --no-markup --title=Quintara --text="$2"
  elif command -v kdialog; then
    if [ "$1" = info ]; then set -- msgbox "$2"; fi
    kdialog --title Quintara "--$1" "$2"
  elif command -v xmessage; then
    xmessage -center "$(fold -s -w 72 <<<"$2")"  # it wraps nothing itself
  fi
}

# tell KIND TEXT [SHORTER]: started from a menu, nobody reads standard error. The locks are for as
# long as the launcher works, not until somebody has read the message.
tell() {
  echo "quintara: $2" >&2
  if ! [ -t 0 ] && ! [ -t 2 ]; then
    { exec 7>&- 8>&- 9>&- </dev/null >/dev/null 2>&1; show "$1" "${3:-$2}"; } &
  fi
}

fail() {
  tell error "$*"
  exit 1
}

folder=$(dirname "$(readlink -f "$0")")/../lib/quintara
while [ $# -gt 0 ]; do
  case $1 in
    --help) usage; exit ;;
    --programs) [ -n "${2:-}" ] || { usage >&2; exit 2; }; folder=$2; shift 2 ;;
    --) shift; break ;;
    -*) usage >&2; exit 2 ;;
    *) break ;;
  esac
done
programs=$(readlink -f "$folder")
for program in quintara quintara-quotes; do
  [ -x "$programs/$program" ] || fail "$program is not in the folder $folder"
done

if [ $# -gt 0 ]; then
  if report=$("$programs/quintara-quotes" --add -- "$@" 2>&1); then kind=info; else kind=error; fi
  # How each file was read, and behind an empty line what came of it.
  tell "$kind" "$report" "$(awk -v RS='' 'END { print }' <<<"$report" | head -n 20)"
fi

[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || fail "there is no display to open the window on.
Log in to a desktop and start Quintara there, or give it a virtual display:
  apt-get install xvfb && xvfb-run -a $0"

# Locks, the service's sockets and its log.
state=$("$programs/quintara-quotes" --runtime-folder 2>&1) || fail "${state#quintara-quotes: error: }"
service_log=$state/service.log
windows_lock=$state/windows.lock

# Whether the service answers on both sockets; one that hangs is given five seconds.
answers() {
  local name
  for name in history quotes; do
    # -q: the user's own settings for curl are not meant for this.
    curl -q -s -o /dev/null --noproxy '*' --max-time 5 --unix-socket "$state/$name" \
      http://localhost/ || return
  done
}

# The process that holds the service's own lock.
service_process() {
  local lock process path
  lock=$(readlink -f "$state/service.lock")
  while read -r process path; do
    [ "$path" != "$lock" ] || { echo "$process"; return; }
  done < <(lslocks -n -u -o PID,PATH)
  return 1
}

# Whether the service runs, be it that the user started it. One that hangs is ended.
service_runs() {
  local end=$((SECONDS + 5)) process
  until answers; do
    process=$(service_process) || return
    [ "$SECONDS" -lt "$end" ] || kill -KILL "$process"
    [ "$SECONDS" -lt $((end + 5)) ] || fail "the quote service, process $process, hangs."
    sleep 0.05
  done
}

# The service and, around it, the guard. A lock belongs to an open file, so that the guard needs a
# new one for the windows: the launcher's would hold itself up. The guard's own lock says that it is
# still at it. Whatever becomes of the guard, the service goes with it.
guard_service() {
  setsid setpriv --pdeathsig TERM "$programs/quintara-quotes" >"$service_log" 2>&1 \
    7>&- 8>&- 9>&- </dev/null &
  local service=$!
  trap '' INT TERM HUP
  exec 8>&- 9>"$windows_lock" </dev/null >/dev/null 2>&1
  flock -x 9 7>&- &
  local windows=$!
  wait -n
  kill "$windows"
  kill "$service" && ! timeout 5 tail --pid="$service" -s 0.02 -f /dev/null && kill -KILL "$service"
}

start_service() {
  local guard end=$((SECONDS + 10))
  # The guard of an earlier service ends with it.
  flock -w 10 7 || fail "the quote service that runs does not answer; see $service_log"
  guard_service &
  guard=$!
  exec 7>&-
  until answers; do
    kill -0 "$guard" 2>/dev/null || fail "the quote service did not start:
$(tail -n 5 "$service_log")"
    [ "$SECONDS" -lt "$end" ] || fail "the quote service does not answer; see $service_log"
    sleep 0.05
  done
  # Settings of a provider that cannot be used stop neither service nor window.
  local problem
  problem=$(sed -n 's/^quintara-quotes: provider: //p' "$service_log" | head -n 1)
  [ -z "$problem" ] || tell error "Prices come without the provider, whose settings cannot be used.
$problem"
}

finish() {
  trap - EXIT
  trap '' INT TERM HUP
  [ -n "${window:-}" ] && kill "$window" 2>/dev/null && wait "$window" 2>/dev/null
  flock 8  # no other launcher looks for the service meanwhile
  flock -u 9
  if flock -n -x 9; then
    flock -u 9
    exec 7>"$state/guard.lock"
    flock 7  # the guard stops the service now
  else
    flock -s 9  # another window is open, or the guard is at it and done in a moment
  fi
  exit "$1"
}

{ exec 7>"$state/guard.lock" 8>"$state/start.lock" 9>"$windows_lock"; } 2>/dev/null ||
  fail "cannot write to the folder $state"
trap 'finish 129' HUP
trap 'finish 130' INT
trap 'finish 143' TERM
trap 'finish $?' EXIT
flock -w 60 8 || fail "another start of Quintara hangs"
flock -s 9
service_runs || start_service
flock -u 8

# The window goes with its launcher: without one, the service may end under it.
setpriv --pdeathsig TERM "$programs/quintara" 7>&- 8>&- 9>&- &
window=$!
wait "$window"
result=$?
window=
finish "$result"
