#!/bin/sh
# Draws the program's icons. Needs ImageMagick; the drawn files are kept beside this script, so it
# runs only when a drawing changes. Every size is drawn for itself from shapes on a grid of 16.
set -eu
cd "$(dirname "$0")"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# draw NAME "SIZES" SHAPES...: one .ico with all sizes, drawn eight times as large and scaled down.
draw() {
    name=$1
    sizes=$2
    shift 2
    files=
    for size in $sizes; do
        scale=$(awk "BEGIN { print $size * 8 / 16 }")
        large=$((size * 8))
        convert -size "${large}x${large}" xc:none -draw "scale $scale,$scale $*" \
            -filter Box -resize "${size}x${size}" "PNG32:$folder/$name-$size.png"
        files="$files $folder/$name-$size.png"
    done
    # shellcheck disable=SC2086
    convert $files "$name.ico"
}

part="
    fill #9a5b00 polygon 8,1.5 14,4.8 14,11.2 8,14.5 2,11.2 2,4.8
    fill #ffd98a polygon 8,2.6 12.9,5.2 8,7.9 3.1,5.2
    fill #f2b134 polygon 3,6.2 7.5,8.7 7.5,13.1 3,10.7
    fill #d98e12 polygon 13,6.2 8.5,8.7 8.5,13.1 13,10.7"

assembly="
    fill #1f4e79 polygon 5,5.5 9.5,8 9.5,12.8 5,15.3 0.5,12.8 0.5,8
    fill #a9cdf0 polygon 5,6.6 8.5,8.5 5,10.4 1.5,8.5
    fill #6aa5dc polygon 1.4,9.4 4.6,11.2 4.6,14 1.4,12.3
    fill #3f7fbd polygon 8.6,9.4 5.4,11.2 5.4,14 8.6,12.3
    fill #1f4e79 polygon 10.5,0.7 15.5,3.5 15.5,9 10.5,11.8 5.5,9 5.5,3.5
    fill #a9cdf0 polygon 10.5,1.8 14.4,4 10.5,6.2 6.6,4
    fill #6aa5dc polygon 6.5,5 10,7 10,10.4 6.5,8.4
    fill #3f7fbd polygon 14.5,5 11,7 11,10.4 14.5,8.4"

apply="
    fill none stroke #2e7d32 stroke-width 2.4 stroke-linecap round stroke-linejoin round
    polyline 3,8.6 6.4,12 13,4.4"

running="
    fill #1f4e79 circle 8,8 8,1 fill #ffffff circle 8,8 8,2.6
    fill none stroke #1f4e79 stroke-width 1.8 stroke-linecap round
    line 8,4.4 8,8 line 8,8 10.8,9.6"

done="
    fill #2e7d32 circle 8,8 8,1
    fill none stroke #ffffff stroke-width 2 stroke-linecap round stroke-linejoin round
    polyline 4.4,8.4 7,11 11.6,5.6"

failed="
    fill #b3261e circle 8,8 8,1
    fill none stroke #ffffff stroke-width 2 stroke-linecap round
    line 5.3,5.3 10.7,10.7 line 10.7,5.3 5.3,10.7"

# A drawing sheet with a parts list table in its lower part and a part above it.
program="
    fill #1f4e79 roundrectangle 1,0.5 15,15.5 1.2,1.2
    fill #ffffff roundrectangle 1.9,1.4 14.1,14.6 0.5,0.5
    fill #9a5b00 polygon 8,2 11.2,3.7 11.2,7 8,8.7 4.8,7 4.8,3.7
    fill #ffd98a polygon 8,2.7 10.5,4 8,5.4 5.5,4
    fill #f2b134 polygon 5.5,4.7 7.7,5.9 7.7,7.9 5.5,6.7
    fill #d98e12 polygon 10.5,4.7 8.3,5.9 8.3,7.9 10.5,6.7
    fill #3f7fbd rectangle 3,9.6 13,10.8
    fill #9bb8d3 rectangle 3,11.3 6,12 rectangle 6.6,11.3 10.4,12 rectangle 11,11.3 13,12
    fill #9bb8d3 rectangle 3,12.7 6,13.4 rectangle 6.6,12.7 10.4,13.4 rectangle 11,12.7 13,13.4"

draw assembly "16 20 24 32" "$assembly"
draw part "16 20 24 32" "$part"
draw apply "16 20 24 32" "$apply"
draw running "16 20 24 32" "$running"
draw done "16 20 24 32" "$done"
draw failed "16 20 24 32" "$failed"
draw dorvak "16 20 24 32 48 64 256" "$program"

# Beside the setup's first and last page, in the size that it has there at 96 dpi.
convert -size 164x314 gradient:'#2f6db5'-'#163a68' \
    \( -size 768x768 xc:none -draw "scale 48,48 $program" -filter Box -resize 96x96 \) \
    -gravity center -geometry +0-40 -composite BMP3:../../../packaging/wizard.bmp
