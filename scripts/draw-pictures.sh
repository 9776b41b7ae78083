#!/usr/bin/env bash
# Draws the PNG pictures from src/resources/pictures/pictures.svg, each at its
# own size and at twice that size (NAME.png, NAME@2x.png), and the program's
# icons for the desktop.
#
# The results are kept in the repository, so the build does not need this
# script: run it after a change to the drawing.
set -euo pipefail

pictures=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../src/resources/pictures" && pwd)
source=$pictures/pictures.svg

releases=(cs cs2 cs3 cs4 cs5 cs55 cs6 cc cc2014 cc2015 cc2017 cc2018 cc2019 und)

fail() {
  printf 'draw-pictures: %s\n' "$1" >&2
  exit 1
}

command -v rsvg-convert >/dev/null \
  || fail 'rsvg-convert not found, install the Debian package librsvg2-bin'

command -v png2icns >/dev/null \
  || fail 'png2icns not found, install the Debian package icnsutils'

# Without this font, rsvg-convert would silently use another one with other widths.
if command -v fc-list >/dev/null && [[ -z $(fc-list 'DejaVu Sans:bold') ]]; then
  fail 'font DejaVu Sans Bold not found, install the Debian package fonts-dejavu-core'
fi

# draw NAME WIDTH HEIGHT
draw() {
  local name=$1 width=$2 height=$3
  rsvg-convert --export-id="$name" --width="$width" --height="$height" \
    --output="$pictures/$name.png" "$source"
  rsvg-convert --export-id="$name" --width=$((2 * width)) --height=$((2 * height)) \
    --output="$pictures/$name@2x.png" "$source"
}

for name in "${releases[@]}" icon48; do
  draw "$name" 48 48
done
draw splash 460 300

icons=$(cd -- "$pictures/../../../packaging/icons" && pwd)
rsvg-convert --export-id=icon48 --format=svg --width=48 --height=48 --output="$icons/vintrace.svg" "$source"
for size in 48 128 256; do
  rsvg-convert --export-id=icon48 --width=$size --height=$size --output="$icons/$size.png" "$source"
done
png2icns "$icons/../macos/vintrace.icns" "$icons"/{48,128,256}.png >/dev/null
