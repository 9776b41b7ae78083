#!/usr/bin/env bash
# Builds the package twice and checks it. Then installs it on this machine, as root or with sudo,
# opens a document with it, and removes it: scripts/check-package.sh [DOCUMENT.indd]
# The package stays in build/package.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

document=${1:-"$project/examples/CS4 Windows.indd"}
[ -z "$(dpkg-query --show vintrace 2>/dev/null)" ] || stop "vintrace is installed; please remove it first"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# pack BUILD RESULT: builds in the folder BUILD and writes the package to the folder RESULT.
pack() {
  cmake -S "$project" -B "$1" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
  cmake --build "$1" >"$folder/log" || { cat "$folder/log"; exit 1; }
  (cd "$1" && cpack -B "$2" >/dev/null)
}

# The names of all files where packages install theirs, except the package manager's own.
names() {
  find /etc /opt /srv /usr /var \( -path "$project" -o -path /var/cache -o -path /var/lib/apt \
    -o -path /var/lib/dpkg -o -path /var/log -o -path /var/tmp \) -prune -o -print 2>/dev/null | sort
}

need_packages "${BUILD_PACKAGES[@]}" "${PACKAGE_PACKAGES[@]}"

SOURCE_DATE_EPOCH=$(date --utc --date=2026-11-23 +%s)
export SOURCE_DATE_EPOCH
result="$project/build/package"
rm -rf "$result"
pack "$project/build/release" "$result"
pack "$folder/again" "$folder/again/package"
package=$(echo "$result"/*.deb)
cmp "$package" "$folder"/again/package/*.deb

lintian --allow-root --fail-on error,warning "$package"
dpkg-deb --extract "$package" "$folder/root"
desktop-file-validate "$folder"/root/usr/share/applications/*.desktop
appstreamcli validate-tree --no-net "$folder/root"

names >"$folder/before"
trap 'as_root dpkg --purge vintrace >/dev/null 2>&1 || true; rm -rf "$folder"' EXIT
as_root apt-get install --yes --quiet --quiet --no-install-recommends "$package"
"$project/scripts/with-desktop.sh" "$project/scripts/open-installed.sh" "$document"
/usr/bin/vintrace-inspect "$document"
as_root apt-get purge --yes --quiet --quiet vintrace
names | diff "$folder/before" -
