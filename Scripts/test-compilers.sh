#!/usr/bin/env bash
# Builds everything and runs all tests with the oldest g++ that is supported, 11, and with clang++ and
# its own C++ library, libc++.
#
#     Scripts/test-compilers.sh [CTEST-OPTION ...]    such as -R FileSystem
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/googletest.sh

need_packages "${test_packages[@]}" g++-11 clang libc++-dev libc++abi-dev googletest

say "Building GoogleTest for libc++ (in build/googletest-libcxx)"
build_googletest build/googletest-libcxx -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS=-stdlib=libc++

status=0
for preset in test-gcc-11 test-libcxx; do
    Scripts/test.sh --preset "$preset" "$@" || status=1
done
exit "$status"
