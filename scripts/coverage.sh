#!/usr/bin/env bash
# Builds without optimisation, runs the tests, and reports which lines and branches of the product
# they reached: a table here, and pages per file in build/coverage/report/index.html.
# Usage: coverage.sh [ctest arguments, such as -R faults]
set -euo pipefail
cd "$(dirname "$0")/.."

if ! command -v gcovr >/dev/null; then
  echo "coverage.sh needs Debian's package gcovr" >&2
  exit 1
fi
# Branches that only an exception takes are the compiler's, one for nearly every call.
cmake -S . -B build/coverage -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQUINTARA_BENCH=OFF \
  -DCMAKE_CXX_FLAGS="--coverage -fprofile-update=atomic" >/dev/null
cmake --build build/coverage -j "$(nproc)"
find build/coverage -name '*.gcda' -delete
failed=0
ctest --test-dir build/coverage --output-on-failure "$@" || failed=1
mkdir -p build/coverage/report
gcovr --root . --filter src/ --filter service/ --filter chartbook/ --exclude-throw-branches \
  --exclude-unreachable-branches --html-details build/coverage/report/index.html build/coverage
gcovr --root . --filter src/ --filter service/ --filter chartbook/ --exclude-throw-branches \
  --exclude-unreachable-branches --branches --print-summary build/coverage |
  tee build/coverage/report/branches.txt | tail -n 3
gcovr --root . --filter src/ --filter service/ --filter chartbook/ build/coverage | tee build/coverage/report/lines.txt
exit "$failed"
