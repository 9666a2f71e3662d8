#!/bin/bash
# installation.sh FOLDER: packs the programs of that build folder and an older version, and lets
# installation_tests install both under Wine.
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/setup.sh"

built=$1
into=$root/build/package-test
for version in "--version 0.9.0" "--built $built"; do
    # shellcheck disable=SC2086 # an option and its value
    scripts/package.sh $version --into "$into" >"$into.log" 2>&1 || {
        cat "$into.log"
        exit 1
    }
done
# Where Wine shows folders of the person who runs it, the desktop above all, the prefix gets its own.
make_wine_prefix
find "$WINEPREFIX/drive_c/users" -type l |
    while read -r link; do
        rm "$link"
        mkdir "$link"
    done
version=$(sed -n 's/^#define DORVAK_VERSION_TEXT "\(.*\)"$/\1/p' "$built/src/version/version.h")
SETUP_BEFORE=$(windows_path "$into/Dorvak-0.9.0-setup.exe")
SETUP=$(windows_path "$into/Dorvak-$version-setup.exe")
export SETUP_BEFORE SETUP
exec scripts/wine-run.sh "$built/tests/desktop/installation_tests.exe"
