#!/bin/bash
# The package's contents and promises, without installing it.
# Usage: package_test.sh BUILD-FOLDER CONFIGURATION
set -u
build=$(readlink -f "$1")
cd "$(dirname "$0")/../.." || exit 1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
check() {  # check WHAT COMMAND...
  "${@:2}" || { echo "FAILED: $1"; exit 1; }
}
{ cmake --install "$build" --prefix "$work/prefix" &&
  cpack --config "$build/CPackConfig.cmake" -B "$work"; } &>"$work/log" || tail "$work/log"
package=$(echo "$work"/quintara_*.deb)
check "a package" dpkg-deb -R "$package" "$work/root"

# Names, permissions and where links lead.
tree() { (cd "$1" && find . -printf '%P %M %l\n' | sort); }
check "cmake --install gives the package's tree" \
  diff <(tree "$work/prefix") <(tree "$work/root/usr")
check "nothing outside of /usr, no script run when it is removed" \
  [ "$(cd "$work/root" && echo * DEBIAN/?*)" = "DEBIAN usr DEBIAN/control DEBIAN/md5sums" ]

# The same again, a little later, and not a word about where it was built.
{ sleep 1.1 && cpack --config "$build/CPackConfig.cmake" -B "$work/again"; } &>>"$work/log"
check "the same package when it is made twice" cmp "$package" "$work"/again/quintara_*.deb

# What ends the program in place of a fault that could be used against the trader. Not every program
# has a place for the last two: they have to show up somewhere.
if [ "$2" = Release ]; then
  for program in "$work"/root/usr/lib/quintara/quintara*; do
    name=$(basename "$program")
    readelf -ldW "$program" >"$work/headers"
    objdump -T "$program" | tee -a "$work/symbols" >"$work/own-symbols"
    objdump -d "$program" | tee -a "$work/code" >"$work/own-code"
    check "$name: no table stays writable" [ "$(grep -c 'GNU_RELRO\|BIND_NOW' "$work/headers")" = 2 ]
    check "$name: its stack is guarded" grep -q __stack_chk_fail "$work/own-symbols"
    check "$name: no jump into a function's middle" \
      [ "$(uname -m)" != x86_64 -o "$(grep -c endbr64 "$work/own-code")" -gt 100 ]
    check "$name does not say where it was built" [ -z "$(grep -aF "$PWD" "$program")" ]
  done
  check "copying is fortified" grep -q '_chk$' <(grep -v __stack_chk_fail "$work/symbols")
  # shellcheck disable=SC2016
  check "large frames touch each page" \
    [ "$(uname -m)" != x86_64 -o "$(grep -c 'orq *$0x0,[0-9a-fx]*(%rsp)' "$work/code")" -gt 0 ]
fi

# Each library that a program or module is linked with or loads by name has its package among the
# dependencies.
depends=$(dpkg-deb -f "$package" Depends)
for program in "$work"/root/usr/lib/quintara/?*; do
  for library in $(objdump -p "$program" 2>/dev/null | awk '$1 == "NEEDED" { print $2 }'
                   strings "$program" | grep -xE 'lib[a-z]+\.so\.[0-9]+'); do
    path=$({ ldd "$program"; /sbin/ldconfig -p; } |
      awk -v library="$library" '$1 == library { print $NF ~ /^\(/ ? $3 : $NF; exit }')
    [ -n "$path" ] || continue  # the loader itself
    owner=$(dpkg-query -S "$path" "$(readlink -f "$path")" 2>/dev/null | sed 's/:.*//;q')
    check "$owner for $(basename "$program")" grep -qw -- "$owner" <<<"$depends"
  done
done

# One version everywhere.
version=$(dpkg-deb -f "$package" Version)
check "CHANGELOG.md begins with $version" grep -q "^## $version," <(grep -m 1 '^## ' CHANGELOG.md)
check "${version%-*} in the metainfo" \
  grep -q "<release version=\"${version%-*}\"" "$work"/root/usr/share/metainfo/?*.xml

# A manual page for each command, with each of its flags.
for command in "$work"/prefix/bin/?*; do
  page=$work/prefix/share/man/man1/$(basename "$command").1.gz
  for flag in $("$command" --help | grep -o -- '--[a-z][a-z-]*' | sort -u); do
    check "$flag in $(basename "$page")" grep -q -- "$flag" <(zcat "$page" | tr -d '\\')
  done
done

# What is installed draws the list that is installed, and its completion knows each flag.
check "the example's charts" "$work/prefix/bin/quintara-chart" --into "$work/evening" \
  --list "$work/prefix/share/doc/quintara/examples/watch.csv"
check "five pictures, levels and a page" [ "$(cd "$work/evening" && echo ?*)" = \
  "DEMO.png DOWN.png INDEX.png PENNY.png RANGE.png index.html levels.csv" ]
check "completion" diff <("$work/prefix/bin/quintara-chart" --help | grep -o -- '--[a-z]*' | sort -u) \
  <(bash -c '. "$1" && _init_completion() { cur=-- prev= words=(); } && _quintara_chart "$2" &&
    printf "%s\n" "${COMPREPLY[@]}"' bash "$work/prefix/share/bash-completion/completions/quintara-chart" \
    "$work/prefix/bin/quintara-chart")

# What the menu entry names is there.
entry=$(cat "$work"/root/usr/share/applications/?*.desktop)
check "the menu's command" [ -x "$work/root/usr/bin/$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' <<<"$entry")" ]
icon=$(sed -n 's/^Icon=//p' <<<"$entry")
for file in "16x16/apps/$icon.png" "32x32/apps/$icon.png" "scalable/apps/$icon.svg"; do
  check "icon $file" [ -s "$work/root/usr/share/icons/hicolor/$file" ]
done
