#!/usr/bin/env bash
# Checks the directions of includes that docs/architecture.md describes: scripts/check-includes.sh
# Prints each include that is not allowed, and then exits with 1.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/../src"

# The folders whose headers each folder may include besides its own. A backend, in posix/ or qt/, may
# also include the headers of its parent. "text" stands for platform/text, and so on.
declare -A allowed=(
  [text]=""
  [files]="text"
  [files/posix]="text"
  [process]="text files"
  [process/posix]="text files files/posix"
  [net]="text files"
  [net/posix]="text"
  [net/qt]="text process"
  [ui]="text files"
  [ui/qt]="text files process net ui/qt/widgets"
  [ui/qt/widgets]="text files ui"
  [resources]="text ui"
  [inspection]="text files"
  [launch]="text files process ui"
  [online/http]="text files net"
  [online]="text ui online/http resources"
  [shell]="text files ui inspection launch online resources"
  [commands/inspect]="text files inspection"
  [commands/inspect/posix]="text"
  [commands/open]="text files files/posix process/posix"
  [main.cpp]="process/posix net/qt ui/qt resources shell"
)

status=0
refuse() {
  echo "src/$1 includes $2: $3"
  status=1
}

pattern='^([^:]*):[0-9]*: *# *include *(["<])([^">]*)[">]'
while read -r line; do
  [[ $line =~ $pattern ]] || continue
  file=${BASH_REMATCH[1]#./} form=${BASH_REMATCH[2]} name=${BASH_REMATCH[3]}
  room=${file%/*} target=${name%/*}
  room=${room#platform/} target=${target#platform/}
  if [[ $form == '"' ]]; then
    [[ " $room ${allowed[$room]-} " == *" $target "* ]] ||
      [[ $room == */* && $target == "${room%/*}" && $room == */@(posix|qt) ]] ||
      refuse "$file" "$name" "its folder may not"
  elif [[ $name == Q* || $name == xcb/* ]]; then
    [[ $room/ == */qt/* ]] || refuse "$file" "$name" "Qt and XCB belong in folders named qt"
  elif [[ $name == *.h ]]; then
    [[ $room == */posix || $room == commands/open ]] ||
      refuse "$file" "$name" "system headers belong in folders named posix"
  fi
done < <(grep -rnE '^ *# *include' . --include='*.cpp' --include='*.h' --include='*.in')
exit $status
