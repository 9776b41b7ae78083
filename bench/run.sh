#!/usr/bin/env bash
# Sets up, builds and prints the figures of docs/benchmarks.md: bench/run.sh [NAME…]
# Without a name, all of them: reads memory random false_starts holes many_files one_file start silent
# windows pages inspection. That takes some minutes, and 2.5 GB of space in TMPDIR. With a folder of
# real documents in VINTRACE_SAMPLES, many_files uses them.
set -euo pipefail
unset CDPATH
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$project/scripts/packages.sh"

programs="$project/build/bench"
inspect="$programs/vintrace-inspect"
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
  [ "$megabytes" -ge "$1" ] || stop "needs $1 MB in ${folder%/*}, which has only ${megabytes// /} MB free"
}

# median FILE: the median of its lines, which are numbers.
median() {
  sort --numeric-sort "$1" >"$folder/sorted"
  sed -n "$((($(wc -l <"$folder/sorted") + 1) / 2))p" "$folder/sorted"
}

# microseconds COMMAND…: its run time.
microseconds() {
  local start=${EPOCHREALTIME/[.,]/}
  "$@" >/dev/null 2>&1
  echo $((${EPOCHREALTIME/[.,]/} - start))
}

# compare TIMES OURS THEIRS: runs two shell functions in turn, so often, and prints their medians.
compare() {
  local ours theirs
  rm -f "$folder/ours" "$folder/theirs"
  for _ in $(seq "$1"); do
    microseconds "$2" >>"$folder/ours"
    microseconds "$3" >>"$folder/theirs"
  done
  ours=$(median "$folder/ours")
  theirs=$(median "$folder/theirs")
  awk "BEGIN { printf \"%s: %.2f ms, %s: %.2f ms, medians of $1 in turn; ratio %.3f\\n\", \
    \"$2\", $ours / 1000, \"$3\", $theirs / 1000, $ours / $theirs }"
}

# Documents from examples/, extended to the given size as sparse files.
found_in_first_block() { lengthened "CC 2018 Macintosh.indd" "$1" "$2"; }
nothing_found() { lengthened "nothing found.indd" "$1" "$2"; }
lengthened() {
  cp "$project/examples/$1" "$2"
  truncate --size="$3" "$2"
}

# The document of 1 GB that `inspected` and `concatenated` read: write_large SOURCE FROM TO, with the
# bytes of a device, of which one kind is replaced by another.
large="$folder/large.indd"
write_large() {
  need_space 2500
  local header="$project/examples/nothing found.indd"
  { cat "$header" && head --bytes=$((2 ** 30 - $(stat --format=%s "$header"))) "$1" | tr "$2" "$3"; } >"$large"
}
inspected() { "$inspect" "$large"; }
concatenated() { cat "$large"; }

bench_reads() {
  heading "Reads of a document of 1 GB that has its build in the first block"
  local document="$folder/first block.indd"
  found_in_first_block "$document" 1G
  strace -f -e trace=openat,fstat,newfstatat,lseek,read,pread64,close,mmap -e signal=none \
    -P "$document" "$inspect" "$document" 2>&1 | sed "s|$folder/||"
}

# peak_of FILE: the peak memory of its inspection in KB.
peak_of() {
  command time --format=%M --output="$folder/peak" "$inspect" "$1" >/dev/null
  cat "$folder/peak"
}

bench_memory() {
  heading "Peak memory of the inspection of a document in which nothing is found"
  nothing_found "$folder/small.indd" 100K
  write_large /dev/urandom . /
  echo "100 KB: $(peak_of "$folder/small.indd") KB"
  echo "1 GB:   $(peak_of "$large") KB"
}

# Without '.', and so without a delimiter.
bench_random() {
  heading "1 GB of random bytes in which nothing is found, against cat"
  write_large /dev/urandom . /
  compare 15 inspected concatenated
}

bench_false_starts() {
  heading "1 GB in which every byte looks like the start of the delimiter, against cat"
  write_large /dev/zero '\0' '\t'
  compare 15 inspected concatenated
}

inspected_sparse() { "$inspect" "$folder/sparse.indd"; }
nothing_done() { /bin/true; }
bench_holes() {
  heading "A sparse document of 4 GB in which nothing is found, against /bin/true"
  nothing_found "$folder/sparse.indd" 4G
  compare 101 inspected_sparse nothing_done
}

# Real documents if their folder is given, otherwise those in examples/, which tell exiftool nothing.
inspected_files() { "$inspect" "$folder"/files/*.indd; }
exiftool_files() { exiftool "$folder"/files/*.indd || true; }  # Fails for early releases.
bench_many_files() {
  heading "3,000 small documents through one process, against exiftool"
  local documents=("${VINTRACE_SAMPLES:-$project/examples}"/*.indd)
  need_space 2500
  mkdir -p "$folder/files"
  for number in $(seq 3000); do
    cp "${documents[number % ${#documents[@]}]}" "$folder/files/$number.indd"
  done
  compare 5 inspected_files exiftool_files
}

inspected_one() { "$inspect" "$project/examples/CS4 Windows.indd"; }
bench_one_file() {
  heading "One document, against /bin/true"
  compare 501 inspected_one nothing_done
}

# A display without a window manager, whose work would distort the times.
start_display() {
  [ -z "$server" ] || return 0
  local number
  mkfifo "$folder/display"
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$folder/display" >"$folder/log" 2>&1 &
  server=$!
  read -r number <"$folder/display" || { cat "$folder/log" >&2; exit 1; }
  export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
  export XDG_RUNTIME_DIR="$folder/runtime" XDG_CACHE_HOME="$folder/cache" XDG_DATA_HOME="$folder/data"
  mkdir -m 700 "$XDG_RUNTIME_DIR"
  cp "$project/examples/CC 2018 Macintosh.indd" "$folder/a.indd"
}

bench_start() {
  heading "Start to first window, against the smallest program"
  start_display
  (cd "$programs" && ./start_to_window -n 100 ./vintrace "$folder/a.indd" -- \
    ./smallest_program 日本語 -- ./smallest_program)
}

# Compares the program with a silent service to the program with one that refuses connections.
bench_silent() {
  heading "The same, with a service that is silent and one that refuses"
  start_display
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

bench_windows() {
  heading "200 documents at once, against as many plain windows"
  start_display
  local row=0 what ours plain
  for _ in $(seq 9); do
    "$programs/many_documents" 200 >>"$folder/documents" 2>/dev/null
    "$programs/many_documents" 200 plain >>"$folder/plain"
  done
  echo "Medians of nine runs each, in turn, of the program's and of plain windows:"
  for what in "until the last is painted, us" "memory a window, KB" "copying all, us"; do
    row=$((row + 1))
    ours=$(column "$folder/documents" "$row")
    plain=$(column "$folder/plain" "$row")
    awk "BEGIN { printf \"%-30s %8d %8d  ratio %.2f\n\", \"$what\", $ours, $plain, $ours / $plain }"
  done
}

bench_pages() {
  heading "Pages over TLS from this machine, against curl"
  "$programs/fetch"
}

bench_inspection() {
  heading "The inspection by itself"
  "$programs/inspection_bench"
}

export LC_ALL=C.UTF-8
names=("$@")
[ $# -gt 0 ] || names=(reads memory random false_starts holes many_files one_file start silent windows pages inspection)
for name in "${names[@]}"; do
  declare -F "bench_$name" >/dev/null || stop "there is no benchmark $name"
done
need_packages "${BUILD_PACKAGES[@]}" "${BENCH_PACKAGES[@]}"
(cd "$project" && cmake --preset bench && cmake --build --preset bench) >&2
for name in "${names[@]}"; do "bench_$name"; done
