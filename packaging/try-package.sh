#!/bin/bash
# Tries a package where nothing else is installed: a new Debian system of this release in a folder, no
# recommended packages, a display and a network of its own. Needs root, mmdebstrap, iproute2 and what
# `scripts/setup.sh test` installs; takes a few minutes, less if the folder has the system already.
# Usage: try-package.sh PACKAGE.deb [FOLDER-FOR-SYSTEM-AND-SCREENSHOTS]
set -eu
package=$(readlink -f "$1")
work=$(readlink -f "${2:-$(mktemp -d)}")
root=$work/root
mkdir -p "$work"

if [ -z "${TRY_SESSION:-}" ]; then
  [ -d "$root" ] ||
    mmdebstrap --variant=minbase "$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)" "$root"
  # What is mounted and started from here on ends with this script.
  TRY_SESSION=1 exec unshare --mount --pid --fork --mount-proc "$0" "$package" "$work"
fi
mount -t proc proc "$root/proc"
mount -t tmpfs tmpfs "$root/tmp"
mount -t devpts devpts "$root/dev/pts"  # apt writes its log through it
in_root() {
  chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive "$@"
}
apt() { in_root apt-get -y -q "$@" >>"$work/apt.log" 2>&1 || { tail "$work/apt.log"; exit 1; }; }
prices=/home/trader/.local/share/quintara/prices

echo "== Install $(basename "$package")"
cp "$package" "$root/tmp/quintara.deb"
apt update
apt install --no-install-recommends /tmp/quintara.deb
in_root id trader >/dev/null 2>&1 || in_root useradd -m trader

echo "== Draw a list, without a display"
in_root quintara-chart --list /usr/share/doc/quintara/examples/watch.csv --into /tmp/evening
ls -l "$root/tmp/evening"

echo "== Run"
unshare --net xvfb-run -a -s "-screen 0 1280x1000x24" \
  "$(dirname "$0")/try-session.sh" "$root" "$work" "$prices"

echo "== Remove"
apt purge quintara
left=$(find "$root/usr" "$root/etc" "$root/var/lib" -iname '*quintara*')
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
cmp "$work/MINE.csv" "$root$prices/MINE.csv"
echo "nothing left behind, own prices untouched; the system and screenshots are in $work"
