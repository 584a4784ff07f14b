#!/usr/bin/env bash
# The real program as a screen reader meets it.
# Usage: accessibility.sh FOLDER-OF-THE-PROGRAMS
if [ -z "${READER_DISPLAY:-}" ]; then
  READER_DISPLAY=1 exec xvfb-run -a -s "-screen 0 1280x1000x24" dbus-run-session -- "$0" "$@"
fi
here=$(dirname "$0")
XDG_RUNTIME_DIR=$(mktemp -d)
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
export XDG_RUNTIME_DIR XDG_DATA_HOME=$XDG_RUNTIME_DIR XDG_CONFIG_HOME=$XDG_RUNTIME_DIR
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
openbox >/dev/null 2>&1 &
setsid "$here/../../scripts/launcher.sh" --programs "$1" & launcher=$!
trap 'kill "$launcher" 2>/dev/null; wait "$launcher" 2>/dev/null; rm -rf "$XDG_RUNTIME_DIR"' EXIT
# The bindings are a package of the system, for the system's own Python.
/usr/bin/python3 "$here/accessibility.py"
