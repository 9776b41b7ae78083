#!/usr/bin/env bash
# Sets up, builds with the sanitizers and runs the tests: scripts/test.sh [CMAKE_OPTION…]
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

need_packages "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

cd "$project"
cmake --preset debug "$@"
cmake --build --preset debug
ctest --preset debug --parallel "$(getconf _NPROCESSORS_ONLN)"
