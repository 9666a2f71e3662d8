#!/bin/bash
# Sets up, builds and runs the tests: the native ones with sanitizers, a short run of each fuzzer,
# and the desktop tests, which drive the real programs under Wine. The last lines and the exit code
# are ctest's.
#
#     scripts/test.sh [--slow] [CTEST_OPTION...]
#
# Without --slow the tests with the label "slow" are left out; with it all tests run. The other
# options go to ctest: `--slow -L slow` runs the slow ones alone, and `-R desktop --repeat
# until-fail:5` runs the desktop tests five times over, to see whether they hold.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

left_out=(-LE '^slow$')
options=()
for option in "$@"; do
    if [[ $option == --slow ]]; then
        left_out=()
    else
        options+=("$option")
    fi
done

need_packages "${native_packages[@]}" "${windows_packages[@]}" "${wine_packages[@]}" \
    "${screen_packages[@]}" "${fuzz_packages[@]}" "${package_packages[@]}" \
    "${package_test_packages[@]}"
build native
build fuzz
build windows
make_wine_prefix

# The tests of all builds in one run.
printf 'subdirs(native)\nsubdirs(fuzz)\nsubdirs(windows)\n' >build/CTestTestfile.cmake
trap end_wine EXIT
LC_ALL=C ctest --test-dir build --parallel "$(nproc)" --output-on-failure "${left_out[@]}" \
    "${options[@]}"
