#!/bin/bash
# Sets up, builds Dorvak and the simulated CATIA session, and starts both: in the person's display,
# or, where there is none, in a virtual screen, where the road from the product to the drawing's
# table is played and left in out/ as pictures and text.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages "${windows_packages[@]}" "${wine_packages[@]}"
if [[ -z ${DISPLAY:-} ]]; then
    need_packages "${screen_packages[@]}"
    build windows PlayRoad
    make_wine_prefix
    rm -rf out
    mkdir out
    say "No display: playing the road in a virtual screen"
    scripts/wine-run.sh build/windows/tests/desktop/PlayRoad.exe "$(windows_path "$root/out")"
    say "Pictures of the steps, of the finished sheet and the table's text are in out/:"
    ls out
    exit
fi

build windows Dorvak CatiaSim
make_wine_prefix
trap end_wine EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP
say "Starting Dorvak and the simulated session; closing both windows ends the run"
shopt -s nullglob
samples=()
for sample in samples/*.txt; do
    samples+=("$(windows_path "$root/$sample")")
done
"${wine_command[@]}" build/windows/simulator/CatiaSim.exe "${samples[@]}" &
session=$!
"${wine_command[@]}" build/windows/src/win32/Dorvak.exe &
dorvak=$!
result=0
wait "$session" || result=$?
wait "$dorvak" || result=$?
exit "$result"
