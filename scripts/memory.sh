#!/usr/bin/env bash
# A trader's whole run, from start to end and over again, under LeakSanitizer (the asan build) or
# under Valgrind. Fails for a block that nothing points to any more.
# Usage: memory.sh [leaks|valgrind] [ACTIONS]
set -euo pipefail
cd "$(dirname "$0")/.."

tool=${1:-leaks}
actions=${2:-1000}
case $tool in
  leaks)
    preset=asan
    run=(env ASAN_OPTIONS=detect_leaks=1:quarantine_size_mb=16)
    ;;
  valgrind)
    preset=release
    run=(valgrind --quiet --leak-check=full --errors-for-leak-kinds=definite --error-exitcode=1)
    ;;
  *)
    echo "memory.sh: leaks or valgrind" >&2
    exit 2
    ;;
esac
if ! command -v "${run[0]}" >/dev/null; then
  echo "memory.sh needs Debian's package $tool" >&2
  exit 1
fi
cmake --preset "$preset" >/dev/null
cmake --build "build/$preset" -j "$(nproc)" --target quintara-impatience
"${run[@]}" "build/$preset/tests/quintara-impatience" --seed 1 --actions "$actions"
