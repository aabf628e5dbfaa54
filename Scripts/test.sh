#!/usr/bin/env bash
# Installs what is needed, builds everything and runs all tests.
#
#     Scripts/test.sh [CTEST-OPTION ...]    such as -R FileSystem
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

need_packages cmake g++ ninja-build libgtest-dev libeigen3-dev locales python3 strace

say "Building (in build/test)"
cmake --preset test >/dev/null
cmake --build --preset test

say "Running the tests"
ctest --preset test "$@"
