#!/bin/bash
# Makes the guide's pictures anew: goes its road in the real windows on a virtual screen.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages "${windows_packages[@]}" "${wine_packages[@]}" "${screen_packages[@]}" optipng
build windows GuidePictures
make_wine_prefix
pictures=docs/prirucka/obrazky
mkdir -p "$pictures"
rm -f "$pictures"/*.png
scripts/wine-run.sh build/windows/tests/desktop/GuidePictures.exe \
    "$(windows_path "$root/$pictures")"
optipng -quiet -strip all "$pictures"/*.png
ls "$pictures"
