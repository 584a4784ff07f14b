#!/usr/bin/env bash
# Installs the Debian packages that are missing; says nothing when there is nothing to do.
# Usage: setup.sh run|test [PROCESSOR]
# With a processor also what building for that one takes, and running what was built.
set -euo pipefail

# What building and running the programs takes.
packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools qt6-documentation-tools
  libgl-dev libvulkan-dev
  libqt6sql6-sqlite            # the help viewer's index is a database
  qt6-wayland                  # windows under Wayland; those under X11 come with the toolkit
  libfreetype-dev libfontconfig-dev libpng-dev libicu-dev  # pictures without a window
  libcurl4-openssl-dev libmicrohttpd-dev nlohmann-json3-dev libutf8proc-dev
  fonts-liberation             # the sans font the layout is drawn for
  fonts-dejavu-core            # what plain sans means to the help viewer
  ca-certificates              # whom the service trusts when it asks a provider
  curl util-linux              # the launcher: is the service there, locks
)
if [ "${1:-run}" = test ]; then
  packages+=(
    git libgtest-dev libgmock-dev libbenchmark-dev
    clang-format clang-tidy clang
    xvfb xauth x11-utils openbox wmctrl xdotool xclip imagemagick procps openssl
    at-spi2-core dbus dbus-x11 dbus-daemon python3 python3-gi gir1.2-atspi-2.0
    desktop-file-utils appstream file  # what the package is checked with
  )
fi

installed() { dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -q -x installed; }

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_install() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q \
    --no-install-recommends "${missing[@]}" >"$log" 2>&1
}

# Installs those of its arguments that are missing.
install() {
  local package missing=()
  for package in "$@"; do
    installed "$package" || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ ${#as_root[@]} -gt 0 ] && ! command -v sudo >/dev/null; then
    echo "Quintara needs these packages; install them as root: ${missing[*]}" >&2
    exit 1
  fi
  echo "Installing ${#missing[@]} packages: ${missing[*]}" >&2
  # A package list that is there may be good enough, and fetching a new one takes longer.
  if ! apt_install; then
    "${as_root[@]}" apt-get update -q >>"$log" 2>&1 || true
    apt_install || { tail -n 20 "$log" >&2; exit 1; }
  fi
}

install "${packages[@]}"
if [ $# -gt 1 ]; then
  if ! dpkg --print-foreign-architectures | grep -q -x "$2"; then
    "${as_root[@]}" dpkg --add-architecture "$2"
    "${as_root[@]}" apt-get update -q >"$log"
  fi
  mapfile -t libraries < <(printf '%s\n' "${packages[@]}" | grep -E '^(lib|qt6-).*-dev$')
  install "crossbuild-essential-$2" qemu-user-static "${libraries[@]/%/:$2}"
fi
if [ "${1:-run}" = test ]; then
  # The sanitizers' libraries of the release's own Clang, for the fuzz targets.
  install "libclang-rt-$(clang -dumpversion | cut -d. -f1)-dev"
fi
