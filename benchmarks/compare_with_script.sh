#!/bin/bash
# Measures the program in the real windows under Wine: against the macro walk_and_table.vbs, against
# notepad's start, and with a product of 20,000 instances. Prints a table; takes some minutes.
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/setup.sh"

need_packages "${windows_packages[@]}" "${wine_packages[@]}" "${screen_packages[@]}"
build windows Measure
make_wine_prefix
WINE_RUN_SECONDS=1500 scripts/wine-run.sh build/windows/tests/desktop/Measure.exe \
    "$(windows_path "$root/benchmarks/walk_and_table.vbs")"
