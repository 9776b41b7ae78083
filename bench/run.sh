#!/usr/bin/env bash
# Sets up, builds and prints the figures of docs/benchmarks.md: bench/run.sh [CMAKE_OPTION…]
# Takes a minute or two, and 2.5 GB of space in TMPDIR.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

programs="$project/build/bench"
folder=$(mktemp -d)
server=
silence=

end() {
  for process in $server $silence; do kill "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$folder"
}
trap end EXIT

heading() { printf '\n== %s ==\n\n' "$*"; }

need_space() {
  local megabytes
  megabytes=$(df --output=avail --block-size=1M "$folder" | tail -n 1)
  [ "$megabytes" -ge 2500 ] || stop "needs 2500 MB in ${folder%/*}, which has only ${megabytes// /} MB free"
}

# Documents from examples/, extended to the given size as sparse files.
found_in_first_block() { lengthened "CC 2018 Macintosh.indd" "$1" "$2"; }
nothing_found() { lengthened "nothing found.indd" "$1" "$2"; }
lengthened() {
  cp "$project/examples/$1" "$2"
  truncate --size="$3" "$2"
}

# A document of 1 GB that is not sparse. It has no '.' after its header, and so no delimiter.
nothing_found_in_random_bytes() {
  local header="$project/examples/nothing found.indd"
  local body=$((2 ** 30 - $(stat --format=%s "$header")))
  { cat "$header" && head --bytes=$body /dev/urandom | tr . /; } >"$1"
}

reads() {
  local document="$folder/first block.indd"
  found_in_first_block "$document" 1G
  strace -f -e trace=openat,fstat,newfstatat,lseek,read,pread64,close,mmap -e signal=none \
    -P "$document" "$programs/vintrace-inspect" "$document" 2>&1 | sed "s|$folder/||"
}

# peak_of FILE: the peak memory of its inspection in KB.
peak_of() {
  command time --format=%M --output="$folder/peak" "$programs/vintrace-inspect" "$1" >/dev/null
  cat "$folder/peak"
}

memory() {
  nothing_found "$folder/small.indd" 100K
  nothing_found "$folder/large.indd" 4G
  local small large
  small=$(peak_of "$folder/small.indd")
  large=$(peak_of "$folder/large.indd")
  rm "$folder/large.indd"
  echo "100 KB: $small KB"
  echo "4 GB:   $large KB ($((large - small)) KB more)"
}

# microseconds COMMAND…: its run time.
microseconds() {
  local start=${EPOCHREALTIME/[.,]/}
  "$@" >/dev/null
  echo $((${EPOCHREALTIME/[.,]/} - start))
}

# median FILE: the median of its lines, which are numbers.
median() {
  sort --numeric-sort "$1" >"$folder/sorted"
  sed -n "$((($(wc -l <"$folder/sorted") + 1) / 2))p" "$folder/sorted"
}

worst_case() {
  local document="$folder/random.indd" inspect cat
  nothing_found_in_random_bytes "$document"
  cat "$document" >/dev/null  # Loads it into the page cache.
  for _ in 1 2 3 4 5 6 7 8 9; do
    microseconds "$programs/vintrace-inspect" "$document" >>"$folder/inspect times"
    microseconds cat "$document" >>"$folder/cat times"
  done
  inspect=$(median "$folder/inspect times")
  cat=$(median "$folder/cat times")
  echo "Medians of nine runs each, in turn:"
  echo "vintrace-inspect: $((inspect / 1000)) ms"
  echo "cat:              $((cat / 1000)) ms"
  awk "BEGIN { printf \"ratio: %.1f\\n\", $inspect / $cat }"
}

# A display without a window manager, whose work would distort the times.
start_display() {
  local number
  mkfifo "$folder/display"
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$folder/display" >"$folder/log" 2>&1 &
  server=$!
  read -r number <"$folder/display" || { cat "$folder/log" >&2; exit 1; }
  export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
  export XDG_RUNTIME_DIR="$folder/runtime" XDG_CACHE_HOME="$folder/cache" XDG_DATA_HOME="$folder/data"
  mkdir -m 700 "$XDG_RUNTIME_DIR"
}

start_to_window() {
  start_display
  cp "$project/examples/CC 2018 Macintosh.indd" "$folder/a.indd"
  (cd "$programs" && ./start_to_window -n 100 ./vintrace "$folder/a.indd" -- \
    ./smallest_program 日本語 -- ./smallest_program)
}

# Compares the program with a silent service to the program with one that refuses connections.
silent_service() {
  local port
  mkfifo "$folder/port"
  "$programs/silence" >"$folder/port" &
  silence=$!
  read -r port <"$folder/port"
  (cd "$programs" && ./start_to_window -n 100 \
    env VINTRACE_TEST_SERVICE="127.0.0.1:$port" ./vintrace_with_service "$folder/a.indd" -- \
    env VINTRACE_TEST_SERVICE=127.0.0.1:1 ./vintrace_with_service "$folder/a.indd")
  kill "$silence"
  silence=
}

# column FILE NUMBER: the median of that column.
column() { median <(awk "{ print \$$2 }" "$1"); }

many_documents() {
  local row=0 what ours plain
  for _ in 1 2 3 4 5; do
    "$programs/many_documents" 200 >>"$folder/ours"
    "$programs/many_documents" 200 plain >>"$folder/plain"
  done
  echo "Medians of five runs each, in turn, of the program's and of plain windows:"
  for what in "until the last is painted, us" "memory a window, KB" "copying all, us"; do
    row=$((row + 1))
    ours=$(column "$folder/ours" "$row")
    plain=$(column "$folder/plain" "$row")
    awk "BEGIN { printf \"%-30s %8d %8d  ratio %.2f\n\", \"$what\", $ours, $plain, $ours / $plain }"
  done
}

export LC_ALL=C.UTF-8
need_packages "${BUILD_PACKAGES[@]}" "${BENCH_PACKAGES[@]}"
need_space
(cd "$project" && cmake --preset bench "$@" && cmake --build --preset bench) >&2

heading "Reads of a document of 1 GB that has its build in the first block"
reads
heading "Peak memory of the inspection of a document in which nothing is found"
memory
heading "Worst case: 1 GB of random bytes in which nothing is found, against cat"
worst_case
heading "Start to first window, against the smallest program"
start_to_window
heading "The same, with a service that is silent and one that refuses"
silent_service
heading "200 documents at once, against as many plain windows"
many_documents
heading "Pages over TLS from this machine, against curl"
"$programs/fetch"
heading "The inspection by itself"
"$programs/inspection_bench"
