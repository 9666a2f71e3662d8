#!/bin/bash
# wine-run.sh PROGRAM.exe [ARGUMENT...]
# Runs a Windows program that leaves its exit code in the file named by RESULT_FILE (the desktop
# tests and the road player do): in the project's Wine prefix, on a Wine desktop of its own in a
# virtual screen of its own. Its exit code is the program's. Whatever the program started is ended
# with it, also after WINE_RUN_SECONDS (default 540) or an interruption.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

program=$(realpath "$1")
shift
windows_build=$(dirname "$(dirname "$(dirname "$program")")")
[[ $program == "$windows_build"/tests/desktop/* ]] || {
    echo "wine-run.sh: $program is not a desktop test" >&2
    exit 2
}

use_wine
result=$(mktemp)
cleanup() {
    end_wine
    end_screen
    rm -f "$result"
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

# In the background, so that a signal is handled at once. The desktop ends with its last program.
timeout -k 5 "${WINE_RUN_SECONDS:-540}" "${wine_command[@]}" \
    explorer "/desktop=run$$,1280x900" "$(windows_path "$program")" "$@" &
wait $! || true

if [[ -s $result ]]; then
    exit "$(tr -dc 0-9 <"$result")"
fi
echo "wine-run.sh: the program ended without a result" >&2
exit 1
