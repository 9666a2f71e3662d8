#!/bin/sh
# Draws the simulated session's icon: a gear on a drawing sheet. Needs ImageMagick; the drawn file is
# kept beside this script, so it runs only when the drawing changes.
set -eu
cd "$(dirname "$0")"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

teeth=
for angle in 0 45 90 135; do
    teeth="$teeth push graphic-context translate 8,7.4 rotate $angle
        rectangle -1.1,-5.2 1.1,5.2 pop graphic-context"
done
files=
for size in 16 24 32 48; do
    scale=$(awk "BEGIN { print $size * 8 / 16 }")
    large=$((size * 8))
    convert -size "${large}x${large}" xc:none -draw "scale $scale,$scale
        fill #5a6b96 roundrectangle 1,0.6 15,15.4 1,1
        fill #f7f9fd rectangle 2,1.6 14,14.4
        fill #2f5fb3 $teeth circle 8,7.4 8,3.5
        fill #f7f9fd circle 8,7.4 8,5.6
        fill #e87400 rectangle 8.5,12.6 13,13.6" \
        -filter Box -resize "${size}x${size}" "PNG32:$folder/$size.png"
    files="$files $folder/$size.png"
done
# shellcheck disable=SC2086
convert $files catia_sim.ico
