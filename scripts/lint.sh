#!/bin/bash
# Checks the layout of all sources with clang-format, and the portable ones with clang-tidy.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages "${native_packages[@]}" clang-format clang-tidy
mapfile -t sources < <(find src simulator tests benchmarks -name '*.[ch]pp' | sort)
clang-format --dry-run -Werror "${sources[@]}"

cmake --preset native >build/native.log # for the compile commands
mapfile -t portable < <(find src simulator -name '*.cpp' -not -path '*/win32/*' | sort)
printf '%s\n' "${portable[@]}" |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build/native --quiet \
        --extra-arg=-Wno-unknown-warning-option
say "clang-format and clang-tidy: clean"
