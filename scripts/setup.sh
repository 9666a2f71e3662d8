# Sourced by the other scripts: the Debian packages that they need, the project's own Wine prefix,
# and a virtual screen. Sets `root`, the project's folder, and works from there.

set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

native_packages=(cmake ninja-build g++ libgtest-dev)
fuzz_packages=(clang libclang-rt-14-dev)
windows_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest)
# The preloader keeps free the addresses where Windows has fixed data. Without it a process has its
# heap there once in some thousand starts, and ends before it has begun.
wine_packages=(wine wine64 wine64-preloader fonts-wine locales)
screen_packages=(xvfb)
package_packages=(nsis zip)
package_test_packages=(p7zip-full)

say() { printf '== %s\n' "$*"; }

# Installs those of the named Debian packages that are missing. Ends the script with a message that
# names them where that is not possible.
need_packages() {
    command -v dpkg-query >/dev/null || {
        say "Not a Debian system: taking it that these are there: $*"
        return
    }
    local package missing=()
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if ((EUID != 0)); then
        as_root=(sudo -n)
        sudo -n true 2>/dev/null || {
            echo "These packages are missing, and installing them needs root:" >&2
            echo "    sudo apt-get install --no-install-recommends ${missing[*]}" >&2
            exit 1
        }
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get -qq update
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Compiler output is kept between builds where ccache is there.
if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi

# build PRESET [TARGET...]: configures and builds. With UNITY_BUILD=ON several sources at a time are
# compiled as one, which is quicker where all of them are to be compiled.
build() {
    local preset=$1
    shift
    say "Building: $preset"
    cmake --preset "$preset" "-DCMAKE_UNITY_BUILD=${UNITY_BUILD:-OFF}" >"build/$preset.log" 2>&1 || {
        cat "build/$preset.log" >&2
        return 1
    }
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
mkdir -p build

# The Wine prefix stands in the build folder. Wine takes the code page from the locale: a Czech one
# gives 1250, as on the users' computers. It is made here, since few systems carry it.
use_wine() {
    export WINEPREFIX=$root/build/wine WINEARCH=win64 WINEDEBUG=-all
    # Neither .NET nor a browser is wanted, nor entries in the person's menus.
    export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe=d'
    # The wine command under the Czech locale, or the one that WINE_LOCALE names.
    wine_command=(env "LOCPATH=$root/build/locale" "LC_ALL=${WINE_LOCALE:-cs_CZ.UTF-8}" wine)
}

# Makes the prefix where it is not there yet.
make_wine_prefix() {
    if [[ ! -d build/locale/cs_CZ.UTF-8 ]]; then
        mkdir -p build/locale
        localedef -i cs_CZ -f UTF-8 build/locale/cs_CZ.UTF-8
    fi
    use_wine
    [[ -e $WINEPREFIX/ready ]] && return
    say "Making the Wine prefix"
    rm -rf "$WINEPREFIX"
    # To its end and alone: a program started meanwhile would find no COM services.
    DISPLAY= "${wine_command[@]}" wineboot -i >build/wineboot.log 2>&1
    wineserver -w
    # A program that crashes ends with a stack trace, and not in a box that nobody closes.
    "${wine_command[@]}" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog \
        /t REG_DWORD /d 0 /f >>build/wineboot.log 2>&1
    wineserver -w
    # Debian's Wine does not find its own fonts; this one draws the title bars' buttons.
    local font=/usr/share/wine/fonts/marlett.ttf
    [[ -e $font ]] && cp "$font" "$WINEPREFIX/drive_c/windows/Fonts/"
    touch "$WINEPREFIX/ready"
}

# Ends every program of the prefix, and waits until they are gone.
end_wine() {
    wineserver -k 2>/dev/null || true # fails where none runs
    timeout 20 wineserver -w || echo "The programs of the Wine prefix do not end." >&2
}

# Starts a virtual screen on a free display number and sets DISPLAY; end_screen ends it.
screen_process=
start_screen() {
    local number_file log
    number_file=$(mktemp)
    log=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$number_file" 2>"$log" &
    screen_process=$!
    local tries
    for ((tries = 0; tries < 200; ++tries)); do
        [[ -s $number_file ]] && break
        kill -0 "$screen_process" 2>/dev/null || break
        sleep 0.05
    done
    DISPLAY=:$(<"$number_file")
    if [[ $DISPLAY == : ]]; then
        echo "The virtual screen does not start:" >&2
        cat "$log" >&2
    fi
    rm -f "$number_file" "$log"
    [[ $DISPLAY != : ]] || return 1
    export DISPLAY
}
end_screen() {
    [[ $screen_process ]] || return 0
    kill "$screen_process" 2>/dev/null || true
    wait "$screen_process" 2>/dev/null || true
    screen_process=
}

# The name under which Wine's programs know a file or folder.
windows_path() {
    local path=$1
    printf 'Z:%s' "${path//\//\\}"
}
