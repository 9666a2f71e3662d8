#!/bin/bash
# Measures the program in its real window under Wine, on the simulated session: against a bare client
# that makes the same calls, against the macro walk_and_table.vbs, against notepad's start; long
# lists, the preview and large trees. Prints tables in Markdown. All of it takes half an hour; a
# section alone some minutes.
#
#     benchmarks/measure.sh [PAIRS] [SECTION...]
#
# PAIRS is the number of interleaved pairs of runs, 10 where nothing is said. The sections are
# start, walk, table, read, update, sheets, macro, lists, preview, trees and large.
#
# All of it runs on one processor, as the tests do: waking a process on another one takes longer than
# the call itself, and how long varies from run to run.
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/setup.sh"

need_packages "${windows_packages[@]}" "${wine_packages[@]}" "${screen_packages[@]}"
build windows Measure
make_wine_prefix
say "$(nproc) processors, busy with $(cut -d ' ' -f 1 /proc/loadavg) before the start"
WINE_RUN_SECONDS=7200 scripts/wine-run.sh build/windows/benchmarks/desktop/Measure.exe \
    "$(windows_path "$root/benchmarks/walk_and_table.vbs")" "$@"
