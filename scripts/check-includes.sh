#!/usr/bin/env bash
# Checks that includes run one way, as docs/architecture.md says: scripts/check-includes.sh
# Prints each include that runs back or leaves its layer, and then exits with 1.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The folders whose headers each folder may include, besides its own.
declare -A allowed=(
  [platform]=""
  [platform/posix]="platform"
  [platform/qt]="platform"
  [platform/linux]="platform platform/posix"
  [resources]="platform"
  [inspection]="resources platform"
  [launch]="resources platform"
  [online]="resources platform"
  [shell]="inspection launch online resources platform"
  [inspect]="inspection resources platform"
  [.]="shell resources platform platform/posix platform/qt"
)

# folder_of PATH: the layer of a file below src/.
folder_of() {
  case $1 in
    platform/*/*) echo "${1%/*}" ;;
    */*) echo "${1%%/*}" ;;
    *) echo . ;;
  esac
}

status=0
refuse() {
  echo "$1 includes $2: $3"
  status=1
}

while IFS=: read -r file _ include; do
  path=${file#src/}
  from=$(folder_of "$path")
  name=$(sed -E 's/^ *# *include *["<]([^">]*)[">].*/\1/' <<<"$include")
  case $include in
    *\"*)
      to=$(folder_of "$name")
      [[ " $from ${allowed[$from]-} " == *" $to "* ]] || refuse "$file" "$name" "the layer is not below"
      ;;
    *'<xcb/'*) [ "$from" = platform/qt ] || refuse "$file" "$name" "X11 belongs to src/platform/qt" ;;
    *'<Q'*) [ "$from" = platform/qt ] || refuse "$file" "$name" "Qt belongs to src/platform/qt" ;;
    *'<'*/*'>' | *.h'>')
      [[ $from == platform/posix || $from == platform/linux ]] ||
        refuse "$file" "$name" "system headers belong to src/platform/posix and src/platform/linux"
      ;;
  esac
done < <(grep -rnE '^ *# *include' src --include='*.cpp' --include='*.h' --include='*.in')
exit $status
