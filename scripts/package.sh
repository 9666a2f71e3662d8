#!/bin/bash
# Makes what is given to the designers: Dorvak-<version>-setup.exe and Dorvak-<version>.zip, in the
# folder build/package. The same commit gives the same files.
#
#     scripts/package.sh [--version X.Y.Z] [--built FOLDER] [--into FOLDER]
#
# --version makes another version than the project's own, to try updates with; --built takes the
# programs from a build folder as they are; --into names another folder for the results.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

version= built= into=$root/build/package
while (($#)); do
    case $1 in
    --version) version=$2 ;;
    --built) built=$2 ;;
    --into) into=$(realpath -m "$2") ;;
    *)
        echo "package.sh: unknown option $1" >&2
        exit 2
        ;;
    esac
    shift 2
done

need_packages "${windows_packages[@]}" "${package_packages[@]}"
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct || stat -c %Y CMakeLists.txt)}
export SOURCE_DATE_EPOCH TZ=UTC

if [[ ! $built ]]; then
    # A build of its own, always compiled in the same way.
    built=build/package-programs${version:+-$version}
    mkdir -p "$built"
    say "Building the programs: $built"
    cmake --preset windows -B "$built" -DDORVAK_TESTS=OFF -DCMAKE_UNITY_BUILD=ON \
        "-DDORVAK_VERSION=$version" >"$built/configure.log" 2>&1 || {
        cat "$built/configure.log" >&2
        exit 1
    }
    cmake --build "$built" --target Dorvak CatiaSim
fi
version=$(sed -n 's/^#define DORVAK_VERSION_TEXT "\(.*\)"$/\1/p' "$built/src/version/version.h")
scripts/guide.sh

# The folder as it is unpacked and installed.
name=Dorvak-$version
rm -rf "$into/$name" "$into/$name".*
content=$into/$name
mkdir -p "$content/samples/lists"
cp "$built/src/win32/Dorvak.exe" "$built/simulator/CatiaSim.exe" "$content/"
cp -r packaging/Hodnoty "$content/"
cp samples/*.txt "$content/samples/"
cp samples/lists/prevodovka.tab "$content/samples/lists/"
cp -r build/guide "$content/prirucka"
pandoc --standalone --metadata lang=cs --metadata pagetitle="Dorvak: změny" \
    --output "$content/ZMENY.html" CHANGES.md
{
    cat packaging/licence-tretich-stran.txt
    for part in gcc-mingw-w64-base mingw-w64-x86-64-dev nsis; do
        printf '\n%s\n\n' "======== $part"
        cat "/usr/share/doc/$part/copyright"
    done
} | sed 's/\r*$/\r/' >"$content/licence-tretich-stran.txt"
find "$content" -type d -exec chmod 755 {} +
find "$content" -type f -exec chmod 644 {} +
find "$content" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +

# list_of FIND_OPTION...: paths in the folder, sorted.
list_of() { (cd "$content" && find . -mindepth 1 "$@" -printf '%P\n' | LC_ALL=C sort); }

# What the setup installs as the program itself, and the list of all that it may have installed.
scratch=$into/$name.scratch
mkdir -p "$scratch"
{
    list_of -type f
    list_of -type d | LC_ALL=C sort -r | sed 's|$|/|'
} | sed 's|/|\\|g; s|$|\r|' >"$scratch/odinstalovat.dat"
touch -d "@$SOURCE_DATE_EPOCH" "$scratch/odinstalovat.dat"
if LC_ALL=C grep -n '[^ -~]' <(tr -d '\r' <"$scratch/odinstalovat.dat") >&2; then
    echo "package.sh: the uninstaller would not find these: it reads names without Czech letters" >&2
    exit 1
fi
{
    printf 'SetOutPath "$INSTDIR"\nFile "%s"\n' "$scratch/odinstalovat.dat"
    list_of -type f ! -name CatiaSim.exe | while read -r file; do
        folder=$(dirname "$file")
        folder=${folder#.}
        printf 'SetOutPath "$INSTDIR%s"\nFile "%s"\n' \
            "${folder:+\\${folder//\//\\}}" "$content/$file"
    done
} >"$scratch/files.nsh"

say "Packing: $name"
makensis -V2 -WX -INPUTCHARSET UTF8 "-DVERSION=$version" "-DCONTENT=$content" \
    "-DFILES=$scratch/files.nsh" "-DSIZE=$(du -sk --apparent-size "$content" | cut -f1)" \
    "-DPICTURES=$root/src/win32/images" "-DOUTPUT=$into/$name-setup.exe" \
    "-XTarget amd64-unicode" packaging/dorvak.nsi
(cd "$into" && find "$name" -type f | LC_ALL=C sort | zip -X -9 -q -@ "$name.zip")
rm -r "$scratch"
ls -l "$into/$name-setup.exe" "$into/$name.zip"
