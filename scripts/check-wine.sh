#!/usr/bin/env bash
# Opens documents with hostile names in Windows programs under the real Wine, and prints what came of
# each: scripts/check-wine.sh
# Installs Wine, and its 32-bit part if the architecture i386 is enabled.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

packages=(wine wine64 gcc-mingw-w64-i686-win32 gcc-mingw-w64-x86-64-win32)
! dpkg --print-foreign-architectures | grep -qx i386 || packages+=(wine32:i386)
need_packages "${BUILD_PACKAGES[@]}" "${packages[@]}"
cmake -S "$project" --preset release >/dev/null
cmake --build "$project/build/release" --target open

folder=$(mktemp -d)
trap 'WINEPREFIX="$folder/prefix" wineserver -k || true; rm -rf "$folder"' EXIT
export WINEPREFIX="$folder/prefix" WINEDEBUG=-all
unset DISPLAY WAYLAND_DISPLAY
source=$project/tests/wine/ShowDocument.c
x86_64-w64-mingw32-gcc-win32 -municode -O1 "$source" -o "$folder/64.exe"
i686-w64-mingw32-gcc-win32 -municode -O1 "$source" -o "$folder/32.exe"
echo "$(wine --version), prefix $(wineboot --init 2>/dev/null && echo created)"
failed=0

# check PROGRAM DOCUMENT: opens a new document, and tells whether the program has read it.
check() {
  local text="contents of $RANDOM$RANDOM" errors result="$folder/$1.txt"
  mkdir -p "$(dirname "$2")"
  printf '%s' "$text" >"$2"
  rm -f "$result"
  if ! errors=$("$project/build/release/libexec/vintrace/open" -a "$folder/$1.exe" "$2" 2>&1); then
    printf 'REFUSED  %s.exe %q: %s\n' "$1" "${2#"$folder"/}" "${errors##*: }"
    return
  fi
  for _ in $(seq 300); do
    [ ! -e "$result" ] || break
    sleep 0.1
  done
  if [ "$(cat "$result" 2>/dev/null)" = "$text" ]; then
    printf 'opened   %s.exe %q\n' "$1" "${2#"$folder"/}"
  else
    printf 'FAILED   %s.exe %q: %s\n' "$1" "${2#"$folder"/}" "$(cat "$result" 2>/dev/null || echo no result)"
    failed=1
  fi
}

names=('plain.indd' '表紙 第2版.indd' "it's \$HOME %PATH%.indd" 'a"b.indd' 'a*.indd' 'a?.indd' 'a<b.indd'
  'a>b.indd' 'a|b.indd' 'a:b.indd' $'a\tb.indd' $'a\nb.indd' 'folder./a.indd' 'folder /a.indd'
  'CON.indd' 'nul/a.indd' 'com1.x.indd' '-a.indd' 'ends with a stop.indd.' 'a\b.indd')
for name in "${names[@]}"; do check 64 "$folder/$name"; done
check 64 "$WINEPREFIX/drive_c/users/on C.indd"
check 32 "$folder/plain.indd"
check 32 "$folder/a?.indd"
echo "In the locale C:"
export LC_ALL=C
check 64 "$folder/表紙 第2版.indd"
exit $failed
