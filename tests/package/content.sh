#!/bin/bash
# content.sh FOLDER: packs the programs of that build folder twice, and looks into the results.
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/setup.sh"

built=$1
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0
check() { # WHAT COMMAND...
    local what=$1
    shift
    "$@" >"$scratch/answer" 2>&1 || {
        echo "FAILED: $what"
        cat "$scratch/answer"
        failures=$((failures + 1))
    }
}

version=$(sed -n 's/^project(Dorvak VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
name=Dorvak-$version
for time in first second; do
    scripts/package.sh --built "$built" --into "$scratch/$time" >"$scratch/log" 2>&1 || {
        cat "$scratch/log"
        exit 1
    }
done
check "the zip is the same the second time" cmp "$scratch"/{first,second}/"$name.zip"
check "the setup is the same the second time" cmp "$scratch"/{first,second}/"$name-setup.exe"

7z x -y "-o$scratch/unpacked" "$scratch/first/$name.zip" >"$scratch/log"
7z x -y "-o$scratch/setup" "$scratch/first/$name-setup.exe" >>"$scratch/log"
files_of() { (cd "$1" && find . -type f -printf '%P\n' | LC_ALL=C sort); }

cat >"$scratch/programs" <<'END'
CatiaSim.exe
Dorvak.exe
Hodnoty/Material.txt
Hodnoty/Poznamka.txt
Hodnoty/Velikost.txt
ZMENY.html
licence-tretich-stran.txt
samples/gearbox-assembly.txt
samples/gearbox-drawing.txt
samples/lists/prevodovka.tab
END
# A page for each of the guide's, and its pictures.
for page in docs/prirucka/*.md docs/prirucka/obrazky/*.png; do
    sed 's|^docs/||; s|\.md$|.html|' <<<"$page"
done | LC_ALL=C sort >"$scratch/guide"
files_of "$scratch/unpacked/$name" >"$scratch/zipped"
check "the zip's programs" diff "$scratch/programs" <(grep -v '^prirucka/' "$scratch/zipped")
check "the zip's guide" diff "$scratch/guide" <(grep '^prirucka/.*\.\(html\|png\)$' "$scratch/zipped")
check "nothing beside the zip's one folder" test "$(ls "$scratch/unpacked")" = "$name"

rm -r "$scratch/setup/\$PLUGINSDIR" "$scratch/setup/odinstalovat.exe"
mv "$scratch/setup/odinstalovat.dat" "$scratch/"
check "the setup's files are the zip's" diff -r "$scratch/unpacked/$name" "$scratch/setup"
check "the list of what is removed" \
    diff "$scratch/zipped" <(tr -d '\r' <"$scratch/odinstalovat.dat" | tr '\\' / | grep -v '/$')

for program in Dorvak.exe CatiaSim.exe "../../first/$name-setup.exe"; do
    path=$scratch/unpacked/$name/$program
    7z x -y -tPE "-o$scratch/parts-of-$(basename "$program")" "$path" >"$scratch/log"
    find "$scratch/parts-of-$(basename "$program")" -name version.txt -exec iconv -f utf-16 -t utf-8 {} + |
        tr -d '\0' >"$scratch/version-of"
    for line in "FILEVERSION +${version//./,},0" "PRODUCTVERSION +${version//./,},0" \
        "VALUE \"FileVersion\", +\"$version\"" "VALUE \"ProductVersion\", +\"$version\""; do
        check "$line of $program" grep -qE "$line" "$scratch/version-of"
    done
done
for part in gcc-mingw-w64-base mingw-w64-x86-64-dev nsis; do
    check "the licence of $part" \
        grep -q "^======== $part" "$scratch/unpacked/$name/licence-tretich-stran.txt"
done
check "the exception of the compiler's libraries" \
    grep -q 'GCC RUNTIME LIBRARY EXCEPTION' "$scratch/unpacked/$name/licence-tretich-stran.txt"
exit $((failures > 0))
