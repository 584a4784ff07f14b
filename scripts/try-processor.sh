#!/usr/bin/env bash
# Builds arithmetic, drawing and service for another processor in a Debian of its own, with Debian's
# cross compiler, and runs their tests under qemu-user. s390x keeps its numbers the other way round,
# highest byte first. Needs root and mmdebstrap; the system stays in the folder for the next time and
# takes some GB.
# Usage: try-processor.sh arm64|s390x [RELEASE [FOLDER]]
set -euo pipefail
processor=${1:-}
release=${2:-trixie}
folder=$(readlink -f "${3:-${TMPDIR:-/tmp}/quintara-processors-$release}")
case $processor in
  arm64) machine=aarch64 ;;
  s390x) machine=s390x ;;
  *) sed -n 's/^# //; 6p' "$0" >&2 && exit 2 ;;
esac
build=build/$processor
tests=(values_test logic_test runtime_test raster_test headless_test platform_test chartbook_test
  quote_service_tests)

# Where this system has its packages from.
mirror() { apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | head -n 1; }

case ${TRY_PROCESSOR:-} in
  build)  # in the system, on the processor that is there
    # The manuals of a package built for two processors may differ, and then cannot both be there.
    echo "path-exclude=/usr/share/man/*" >/etc/dpkg/dpkg.cfg.d/without-manuals
    scripts/setup.sh test "$processor"
    mkdir -p "$build"
    triplet=$machine-linux-gnu
    export PKG_CONFIG_LIBDIR=/usr/lib/$triplet/pkgconfig:/usr/share/pkgconfig
    [ -f "$build/build.ninja" ] ||
      cmake -G Ninja -B "$build" -DCMAKE_BUILD_TYPE=Release -DQUINTARA_BENCH=OFF \
        -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR="$machine" \
        -DCMAKE_C_COMPILER="$triplet-gcc" -DCMAKE_CXX_COMPILER="$triplet-g++" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -dumpmachine)/cmake"
    cmake --build "$build" --target "${tests[@]}"
    ;;
  test)
    # Tests start programs, so that the kernel has to know what runs those of another processor: until
    # the tests have ended.
    mount -t proc proc "$folder/proc"
    mount -t devpts -o ptmxmode=666,newinstance devpts "$folder/dev/pts"
    formats=/proc/sys/fs/binfmt_misc
    mount -t binfmt_misc binfmt_misc "$formats"
    sed "s|^:[^:]*|:quintara-$machine|; s|:/usr/libexec|:$folder/usr/libexec|" \
      "$folder/usr/lib/binfmt.d/qemu-$machine.conf" >"$formats/register"
    trap 'echo -1 >"$formats/quintara-$machine"' EXIT
    failed=()
    unfit=Program.SaysThatItMayNotHaveAsManyThreads  # the limit would be QEMU's
    for test in "${tests[@]}"; do
      echo "== $test on $machine"
      chroot "$folder" env -i PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 HOME=/root \
        GTEST_FILTER="-$unfit" GTEST_BRIEF=1 sh -c "cd /opt/quintara-root/$build/tests && ./$test" ||
        failed+=("$test")
    done
    [ "${#failed[@]}" -eq 0 ] || { echo "failed on $machine: ${failed[*]}"; exit 1; }
    ;;
  *)
    # Libraries for two processors have to be of one version, and later updates need not be made for both.
    [ -e "$folder/etc/debian_version" ] ||
      mmdebstrap --variant=minbase --include=ca-certificates,sudo,git "$release" "$folder" \
        "deb $(mirror) $release main"
    "$(dirname "$0")/try-debian.sh" "$release" --folder "$folder" \
      env TRY_PROCESSOR=build scripts/try-processor.sh "$processor"
    TRY_PROCESSOR="test" exec unshare --mount --pid --fork --mount-proc \
      "$0" "$processor" "$release" "$folder"
    ;;
esac
