#!/bin/sh
# Makes the program's icon in its usual sizes out of the three drawings beside this script:
#
#   packaging/icons/make.sh        writes 16.png ... 512.png; needs rsvg-convert (Debian: librsvg2-bin)
#
# The pictures are committed, so that building needs no SVG renderer.
set -eu
cd "$(dirname "$0")"

lienzo() {
  rsvg-convert --width "$1" --height "$1" --output "$1.png" "$2"
}

lienzo 16 estructura-16.svg
lienzo 24 estructura-24.svg
lienzo 48 estructura-24.svg
sin_margen=$(mktemp)
trap 'rm -f "$sin_margen"' EXIT
sed 's/width="24" height="24" viewBox="0 0 24 24"/viewBox="1 1 22 22"/' estructura-24.svg > "$sin_margen"
lienzo 22 "$sin_margen"
for lado in 32 64 128 256 512; do
  lienzo "$lado" estructura.svg
done
