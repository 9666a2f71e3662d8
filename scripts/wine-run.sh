#!/bin/bash
# wine-run.sh PROGRAM.exe [ARGUMENT...]
# Runs a Windows program that leaves its exit code in the file named by RESULT_FILE (the desktop
# tests, the road player and the benchmarks do): in the project's Wine prefix, on a Wine desktop of
# its own in a virtual screen of its own. Its exit code is the program's; where that is not 0, Wine's
# messages follow the program's output. Whatever the program started is ended with it, also after
# WINE_RUN_SECONDS (default 540) or an interruption.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

program=$(realpath "$1")
shift
windows_build=$(dirname "$(dirname "$(dirname "$program")")")
[[ $program == "$windows_build"/@(tests|benchmarks)/desktop/* && -f $program ]] || {
    echo "wine-run.sh: $program is neither a desktop test nor a benchmark" >&2
    exit 2
}

# On one processor: a call between two programs wakes each of them, and waking one on another
# processor takes several times the call.
if command -v taskset >/dev/null; then
    taskset -cp "$(taskset -cp $$ | sed 's/.*[ ,-]//')" $$ >/dev/null
fi

use_wine
export WINEDEBUG=-all,err+all
result=$(mktemp)
messages=$(mktemp)
launcher=
small_disk=
cleanup() {
    # First what may not have reached Wine's server yet.
    [[ -z $launcher ]] || kill "$launcher" 2>/dev/null || true
    end_wine
    end_screen
    [[ -z $small_disk ]] || { umount "$small_disk" && rmdir "$small_disk"; }
    rm -f "$result" "$messages"
}
trap cleanup EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

end_wine # whatever an interrupted run may have left
start_screen

export DORVAK_EXE CATIASIM_EXE SAMPLES RESULT_FILE
DORVAK_EXE=$(windows_path "$windows_build/src/win32/Dorvak.exe")
CATIASIM_EXE=$(windows_path "$windows_build/simulator/CatiaSim.exe")
SAMPLES=$(windows_path "$root/samples")
RESULT_FILE=$(windows_path "$result")

# Where the test wants a disk that is soon full and this system lets one be mounted.
if [[ -n ${SMALL_DISK_NEEDED:-} ]]; then
    folder=$(mktemp -d)
    if mount -t tmpfs -o size=256k tmpfs "$folder" 2>/dev/null; then
        small_disk=$folder
        SMALL_DISK=$(windows_path "$folder")
        export SMALL_DISK
    else
        rmdir "$folder"
    fi
fi

# The prefix's processes that are there now, a line each.
wine_processes() {
    local folder
    for folder in /proc/[0-9]*; do
        if [[ $(readlink "$folder/exe") == */wine* ]] &&
            grep -qzxF "WINEPREFIX=$WINEPREFIX" "$folder/environ"; then
            echo "    ${folder#/proc/} $(tr -s '\0' ' ' <"$folder/cmdline")"
        fi
    done 2>/dev/null
}

# In the background, so that a signal is handled at once. The desktop ends with its last program.
# When the time is up, only the launcher is ended, so that the others can be listed.
limit=${WINE_RUN_SECONDS:-540}
timeout --foreground -k 5 "$limit" "${wine_command[@]}" \
    explorer "/desktop=run$$,1280x900" "$(windows_path "$program")" "$@" 2>"$messages" &
launcher=$!
ended=0
wait "$launcher" || ended=$?
launcher=

if [[ -s $result ]]; then
    code=$(tr -dc 0-9 <"$result")
else
    code=1
    {
        echo "wine-run.sh: the program ended without a result after $SECONDS s"
        if ((ended == 124 || ended == 137)); then
            echo "Its time was up: $limit s"
        else
            echo "Exit code of its desktop: $ended"
        fi
        kill -0 "$screen_process" 2>/dev/null || echo "The virtual screen $DISPLAY has ended, too"
        echo "Wine's processes that are still there:"
        wine_processes
    } >&2
fi
if ((code != 0)) && [[ -s $messages ]]; then
    echo "Wine's messages, the last ones:" >&2
    tail -n 60 "$messages" >&2
fi
exit "$code"
