#!/usr/bin/env bash
# Runs the two commands of the README on a bare Debian of another release, in a chroot of its own, as
# root: scripts/check-distribution.sh SUITE [MIRROR], for example scripts/check-distribution.sh trixie
# Ends with a summary: the versions of the compiler and Qt, the warnings, and how each command ended.
# The chroot needs about 4 GB in the folder of temporary files, and is removed at the end.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

suite=${1:?"Usage: scripts/check-distribution.sh SUITE [MIRROR]"}
mirror=${2:-http://deb.debian.org/debian}
[ "$(id -u)" = 0 ] || stop "a chroot needs root"

# In a mount namespace of its own, no mount outlives the script.
if [ -z "${VINTRACE_OWN_MOUNTS:-}" ]; then
  need_packages debootstrap
  exec env VINTRACE_OWN_MOUNTS=yes unshare --mount "$0" "$@"
fi

root=$(mktemp -d)
chmod 755 "$root"  # Servers of the tests run as other users.
trap 'umount --recursive --lazy "$root"/{proc,sys,dev} 2>/dev/null || true; rm -rf --one-file-system "$root"' EXIT
debootstrap --variant=minbase --include=ca-certificates "$suite" "$root" "$mirror" >"$root.log" ||
  { tail "$root.log"; exit 1; }
rm "$root.log"
mount --types proc proc "$root/proc"
mount --rbind --make-rslave /sys "$root/sys"
mount --rbind --make-rslave /dev "$root/dev"
cp /etc/hosts /etc/resolv.conf "$root/etc/"  # Which an installed system has.
mkdir "$root/vintrace"
(cd "$project" && git ls-files -z | xargs -0 tar --create) | tar --extract --directory "$root/vintrace"

# inside COMMAND…: runs it in the chroot, and shows and keeps what it prints.
inside() {
  chroot "$root" env --ignore-environment HOME=/root LC_ALL=C.UTF-8 \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "$@" 2>&1 | tee --append "$root/log"
}

run=passed tests=passed
inside /vintrace/scripts/run.sh || run=FAILED
inside /vintrace/scripts/test.sh || tests=FAILED

echo
echo "== $suite: $(inside g++ --version | head -n 1), Qt $(inside qmake6 -query QT_VERSION)"
echo "warnings: $(grep -c 'warning:' "$root/log" || true)"
echo "scripts/run.sh $run, scripts/test.sh $tests"
[ "$run$tests" = passedpassed ]
