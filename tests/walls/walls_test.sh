#!/usr/bin/env bash
# Every room can include its own headers and those of the rooms it links, directly or not, and no
# other header of the project.
# Usage: walls_test.sh BUILD-FOLDER COMPILER, from the project's folder
set -euo pipefail
export LC_ALL=C
build=$1 compiler=$2
failed=0
fail() {
  echo "walls: $*" >&2
  failed=1
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

declare -A links sees headers reach
project=$PWD
for room in "$build"/walls/*; do
  [ -f "$room" ] || continue
  name=${room##*/}
  links[$name]=$(sed -n 's/^links //p' "$room" | tr ';' ' ')
  sees[$name]=$(sed -n 's/^sees //p' "$room" | sed 's/^/-I/; s/;/ -I/g')
  headers[$name]=$(cd "$build/doors/$name" && find . -name '*.hpp' -printf '%P\n')
done
all=$(printf '%s\n' "${headers[@]}" | sort)
odd=$(comm -3 <(find src service chartbook -name '*.hpp' | sed 's#^src/##' | sort) <(echo "$all"))
[ -z "$odd" ] || fail "in no room, or in two: $odd"

# The rooms that one room reaches, itself included.
reached() {
  local below
  [ -z "${reach[$1]:-}" ] || return 0
  reach[$1]=$1
  for below in ${links[$1]}; do
    [ -n "${headers[$below]+there}" ] || continue  # a library from outside
    reached "$below"
    reach[$1]+=" ${reach[$below]}"
  done
}

# Compiles a line; prints what the compiler says. A compiler also looks where the file lies.
compile() {
  echo "$2" >"$work/file.cpp"
  # shellcheck disable=SC2086
  (cd "$work" && "$compiler" -std=c++20 -fsyntax-only ${sees[$1]} file.cpp 2>&1)
}

upward=0
for name in "${!headers[@]}"; do
  reached "$name"
  open=$(for below in ${reach[$name]}; do echo "${headers[$below]}"; done | sort -u)
  closed=$(comm -13 <(echo "$open") <(echo "$all"))
  probe=$(sed 's/.*/#if !__has_include("&")\n#error "& is not in reach"\n#endif/' <<<"$open")
  [ -z "$closed" ] || probe+=$'\n'$(sed 's/.*/#if __has_include("&")\n#error "& is in reach"\n#endif/' <<<"$closed")
  compile "$name" "$probe" || fail "$name sees other headers than its links say"
  [ -n "$closed" ] || continue
  upward=$((upward + 1))
  above=$(head -n 1 <<<"$closed")
  said=$(compile "$name" "#include \"$above\"") && fail "$name can include $above"
  [[ $said == *"$above: No such file"* ]] || fail "$name: the compiler said: $said"
done
[ "$upward" -ge 10 ] || fail "only $upward rooms had anything above them"

# Full paths leave a compiler nothing to find beside the file that includes, nor above it.
included() { grep -rhoE --include='*.[ch]pp' '^#include "[^"]*' "$@" | sed 's/.*"//' | sort -u; }
partial=$(included src service chartbook | comm -23 - <(echo "$all"))
[ -z "$partial" ] || fail "included, but not by a full path: $partial"

# Tests, benchmark and the like include rooms through their doors alone, and otherwise what lies
# beside them.
[ "$(find "$build/walls/outside" -type f | wc -l)" -ge 8 ] || fail "hardly a program was looked at"
past=$(cat "$build"/walls/outside/* | grep "^$project/" | grep -v "^$(realpath "$build")/" || true)
[ -z "$past" ] || fail "include directories past the doors: $past"
partial=$(included tests bench fuzz | grep / | grep -v '^support/' | comm -23 - <(echo "$all"))
[ -z "$partial" ] || fail "included, but not through a door: $partial"
exit "$failed"
