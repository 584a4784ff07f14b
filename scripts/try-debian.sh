#!/usr/bin/env bash
# Runs a command on the committed tree in a new minimal Debian of another release: by default the
# test command, as root or as a user who may use sudo. Needs root and mmdebstrap; the system stays in
# the folder for the next time and takes some GB.
# Usage: try-debian.sh RELEASE [--folder FOLDER] [--as-user] [COMMAND...]
#   try-debian.sh trixie
#   try-debian.sh bookworm --as-user ./test.sh
#   try-debian.sh trixie sh -c 'scripts/setup.sh run && cmake --preset release && cmake --build build/release'
set -euo pipefail
usage() { sed -n 's/^# \{0,1\}//; 5,8p' "$0" >&2; exit 2; }

[ $# -ge 1 ] || usage
release=$1
shift
folder=${TMPDIR:-/tmp}/quintara-$release
user=root
while [[ ${1:-} == --* ]]; do
  case $1 in
    --folder) folder=${2:?$(usage)} && shift 2 ;;
    --as-user) user=trader && shift ;;
    *) usage ;;
  esac
done
[ $# -gt 0 ] || set -- ./test.sh
project=$(git -C "$(dirname "$0")" rev-parse --show-toplevel)

if [ -z "${TRY_DEBIAN:-}" ]; then
  [ -e "$folder/etc/debian_version" ] ||
    mmdebstrap --variant=minbase --include=ca-certificates,sudo,git "$release" "$folder"
  # What is mounted and started from here on ends with this script.
  TRY_DEBIAN=1 exec unshare --mount --pid --fork --mount-proc "$0" "$release" --folder "$folder" \
    $([ "$user" = root ] || echo --as-user) "$@"
fi
mount --bind "$folder" "$folder"  # the system's / is a mount of its own, as some programs expect
mount -t proc proc "$folder/proc"
mount -t tmpfs tmpfs "$folder/dev/shm" 2>/dev/null || mount -t tmpfs tmpfs "$folder/dev"
for device in null zero full random urandom tty; do
  [ -c "$folder/dev/$device" ] || mknod -m 666 "$folder/dev/$device" c $(stat -c '0x%t 0x%T' "/dev/$device")
done
mkdir -p "$folder/dev/pts" "$folder/dev/shm"
mount -t devpts -o ptmxmode=666,newinstance devpts "$folder/dev/pts"
ln -sf pts/ptmx "$folder/dev/ptmx"
in_root() {
  chroot "$folder" env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    LANG=C.UTF-8 HOME="$([ "$user" = root ] && echo /root || echo "/home/$user")" "$@"
}
if [ "$user" != root ] && ! in_root id "$user" >/dev/null 2>&1; then
  in_root useradd -m "$user"
  echo "$user ALL=(ALL) NOPASSWD: ALL" >"$folder/etc/sudoers.d/$user"
fi

tree=$folder/opt/quintara-$user
mkdir -p "$tree"
[ -d "$tree/.git" ] || git init -q "$tree"
git -c safe.directory='*' -C "$tree" fetch -q "$project" HEAD
git -c safe.directory='*' -C "$tree" checkout -q -f FETCH_HEAD
chroot "$folder" chown -R "$user:" "/opt/quintara-$user"
echo "== $(in_root sh -c '. /etc/os-release; echo "$PRETTY_NAME"'), as $user: $*"
# shellcheck disable=SC2016
in_root setpriv --reuid "$user" --regid "$user" --init-groups \
  sh -c 'cd "$0" && exec "$@"' "/opt/quintara-$user" "$@"
