#!/usr/bin/env bash
# Runs clang-tidy over the programs. A file that passed is not checked again until
# it, a header or the settings change.
# Usage: tidy.sh BUILD-FOLDER
set -euo pipefail
build=$1
stamps=$build/tidy
mkdir -p "$stamps"

common=$(cat .clang-tidy $(git ls-files 'src/*.hpp' 'service/*.hpp' 'chartbook/*.hpp') | sha256sum | cut -c1-16)
todo=()
files=$(git ls-files 'src/*.cpp' 'service/*.cpp' 'chartbook/*.cpp')
[ -f "$build/compile_commands.json" ] || { echo "tidy: $build is not configured" >&2; exit 1; }
for file in $files; do
  key=$(sha256sum <"$file" | cut -c1-16)-$common
  [ -f "$stamps/${file//\//_}-$key" ] || todo+=("$file")
done
[ ${#todo[@]} -gt 0 ] || exit 0

check() {
  local file=$1 key
  key=$(sha256sum <"$file" | cut -c1-16)-$common
  # Warnings of system headers are counted on stderr; findings go to stdout.
  clang-tidy -p "$build" --quiet "$file" 2>/dev/null || { echo "tidy: $file failed"; return 1; }
  rm -f "$stamps/${file//\//_}"-*
  : >"$stamps/${file//\//_}-$key"
}
export -f check
export build stamps common
printf '%s\0' "${todo[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'check "$0"'
