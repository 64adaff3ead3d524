#!/bin/sh
# Makes the program's icon in its usual sizes out of the three drawings beside this script:
#
#   packaging/icons/make.sh        writes 16.png ... 512.png; needs rsvg-convert (Debian: librsvg2-bin)
#
# The pictures are committed, so that building needs no SVG renderer.
set -eu
cd "$(dirname "$0")"

draw() {
  rsvg-convert --width "$1" --height "$1" --output "$1.png" "$2"
}

draw 16 estructura-16.svg
draw 24 estructura-24.svg
draw 48 estructura-24.svg
without_margin=$(mktemp)
trap 'rm -f "$without_margin"' EXIT
sed 's/width="24" height="24" viewBox="0 0 24 24"/viewBox="1 1 22 22"/' estructura-24.svg > "$without_margin"
draw 22 "$without_margin"
for size in 32 64 128 256 512; do
  draw "$size" estructura.svg
done
