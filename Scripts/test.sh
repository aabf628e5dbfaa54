#!/usr/bin/env bash
# Installs what is needed, builds everything and runs all tests.
#
#     Scripts/test.sh [--preset NAME] [CTEST-OPTION ...]
#
# NAME is one of the presets that `cmake --list-presets` shows, "test" by default. ctest's options
# choose among the tests, such as -R FileSystem.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

preset=test
if [ "${1-}" = --preset ]; then
    preset=$2
    shift 2
fi

need_packages "${test_packages[@]}"
case $preset in
*clang*) need_packages clang ;;
esac

say "Building (in build/$preset)"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"

say "Running the tests"
ctest --preset "$preset" "$@"
