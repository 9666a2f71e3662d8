#!/bin/bash
# Checks the layout of all sources with clang-format, and the sources themselves with clang-tidy,
# which compiles them with clang: for this system, and for Windows what is for Windows.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages "${native_packages[@]}" "${fuzz_packages[@]}" "${windows_packages[@]}" \
    clang-format clang-tidy
mapfile -t sources < <(find src simulator tests benchmarks -name '*.[ch]pp' | sort)
clang-format --dry-run -Werror "${sources[@]}"

# Most of clang-tidy's time goes into the system's headers, so that it gets the sources of a library
# as one. The analyzer looks into such a file's parts only where its path says "UnifiedSource", as
# the names of the presets' folders do.
for preset in lint lint-windows; do
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || {
        cat "build/$preset.log" >&2
        exit 1
    }
done
# What is built for both systems is checked for this one.
sed -n 's/^ *"file": "\(.*\.c[px][px]\)".*/\1/p' build/UnifiedSource{,-windows}/compile_commands.json |
    grep -v /googletest/ |
    awk -F '/UnifiedSource[^/]*/' '!seen[$2]++' |
    xargs -P "$(nproc)" -n 1 clang-tidy --quiet
say "clang-format and clang-tidy: clean"
