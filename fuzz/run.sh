#!/usr/bin/env bash
# Builds the fuzz targets and runs each over its corpus: fuzz/run.sh [SECONDS [TARGET…]]
# New inputs are kept in build/fuzz/found; a crash ends the script. After a long run, add them to the
# corpus with: build/fuzz/fuzz_TARGET -merge=1 fuzz/corpus/TARGET build/fuzz/found/TARGET
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

seconds=${1:-5}
shift $(($# > 0 ? 1 : 0))
targets=("$@")
[ $# -gt 0 ] || targets=(headers challenge reply inspection settings)

need_packages "${BUILD_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}"
cd "$project"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${targets[@]/#/fuzz_}"
for target in "${targets[@]}"; do
  found="build/fuzz/found/$target"
  log="build/fuzz/$target.log"
  mkdir -p "$found"
  if ! "build/fuzz/fuzz_$target" -max_total_time="$seconds" -max_len=4096 -timeout=10 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/$target-" "$found" "fuzz/corpus/$target" >"$log" 2>&1; then
    tail -n 60 "$log"
    stop "$target: found a fault"
  fi
  echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") runs, $(find "$found" -type f | wc -l) inputs kept"
done
