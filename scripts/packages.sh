# shellcheck shell=bash disable=SC2034
# Sourced: makes sure that Debian packages are installed.

# The packages for building and running the programs, and those that the tests, the benchmarks, the
# fuzz targets, the package checks and the code checks need besides.
BUILD_PACKAGES=(cmake g++ libxcb1-dev ninja-build nlohmann-json3-dev pkg-config qt6-base-dev qt6-translations-l10n qt6-wayland fonts-ipaexfont-gothic libglib2.0-bin xdg-utils)
TEST_PACKAGES=(dbus-daemon fonts-ipafont-gothic fonts-takao-gothic fonts-vlgothic libgtest-dev libssl-dev nginx-light openbox squid x11-utils xclip xdotool xvfb)
BENCH_PACKAGES=(curl libbenchmark-dev libimage-exiftool-perl libssl-dev nginx-light strace time xvfb)
FUZZ_PACKAGES=(clang libclang-rt-dev)
PACKAGE_PACKAGES=(appstream desktop-file-utils dpkg-dev libfile-mimeinfo-perl libglib2.0-bin lintian openbox shared-mime-info x11-utils xdg-utils xdotool xvfb)
CHECK_PACKAGES=(clang-format clang-tidy shellcheck)

missing_packages() {
  local package
  for package in "$@"; do
    [ "$(dpkg-query --show --showformat '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      echo "$package"
  done
}

# need_packages PACKAGE…: installs those that are missing, as root or with sudo. If it can't, it names
# them and ends the script.
need_packages() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    need_commands
    return
  fi
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  [ "$(id -u)" = 0 ] || command -v sudo >/dev/null ||
    stop "please install, as root: apt-get install ${missing[*]}"
  echo "Installing ${missing[*]}" >&2
  as_root sh -c "$INSTALL" sh "${missing[@]}" >&2
}

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  else
    sudo "$@"
  fi
}

# Keeps installed servers from starting as services, since the tests start their own.
# shellcheck disable=SC2016  # Expanded by the shell that runs it.
INSTALL='
set -e
policy=/usr/sbin/policy-rc.d
if [ ! -e "$policy" ]; then
  trap "rm -f $policy" EXIT
  trap "exit 130" INT TERM HUP
  printf "#!/bin/sh\nexit 101\n" >"$policy"
  chmod +x "$policy"
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update --quiet --quiet
apt-get install --yes --quiet --quiet --no-install-recommends "$@"
'

# On a system without Debian's packages: ends the script if a part that the build needs is missing.
need_commands() {
  local command
  for command in cmake ninja c++; do
    command -v "$command" >/dev/null || stop_for_needs "$command"
  done
  for command in qtpaths6 qmake6 qtpaths qmake; do
    command -v "$command" >/dev/null && return
  done
  stop_for_needs "Qt 6"
}

stop_for_needs() {
  stop "$1 is missing, and this system has no apt-get. Please install CMake 3.25, Ninja, a C++20 compiler," \
    "Qt 6.4 with Widgets, nlohmann-json, a Japanese font and, except on macOS, libxcb and pkg-config. The tests also need" \
    "GoogleTest."
}

stop() {
  echo "${0##*/}: $*" >&2
  exit 1
}
