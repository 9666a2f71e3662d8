#!/bin/bash
# Sets up, builds and runs every test: the native ones with sanitizers, a short run of each fuzzer,
# and the desktop tests, which drive the real programs under Wine. The last lines and the exit code
# are ctest's.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need_packages "${native_packages[@]}" "${windows_packages[@]}" "${wine_packages[@]}" \
    "${screen_packages[@]}" "${fuzz_packages[@]}"
build native
build fuzz
build windows
make_wine_prefix

# The tests of all builds in one run.
printf 'subdirs(native)\nsubdirs(fuzz)\nsubdirs(windows)\n' >build/CTestTestfile.cmake
trap end_wine EXIT
# A second try for a desktop whose services came up too late; what is wrong fails twice.
LC_ALL=C ctest --test-dir build --output-on-failure --repeat until-pass:2 "$@"
