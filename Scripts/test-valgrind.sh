#!/usr/bin/env bash
# Runs the tests once under valgrind's memcheck, and the program wherever they run it. It also sees
# the use of bytes that nobody has set.
#
#     Scripts/test-valgrind.sh [CTEST-OPTION ...]    such as -R FileSystem
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/wrap-programs.sh

need_packages cmake g++ ninja-build libgtest-dev libeigen3-dev locales python3 valgrind

say_excluded
say "Building (in build/valgrind)"
# Linked dynamically, so that valgrind can put its own allocator in the place of the library's.
cmake -S . -B build/valgrind -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_FLAGS_RELEASE="-O1 -g" -DZEK_STATIC=OFF >/dev/null
cmake --build build/valgrind
# The tests' own operator new stays theirs: it counts, or fails on purpose.
wrap_programs "$PWD/build/valgrind" \
    "valgrind -q --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect \
     --suppressions='$PWD/Scripts/valgrind.supp' --soname-synonyms=somalloc=nouserintercepts"

say "Running the tests under memcheck"
test_wrapped build/valgrind "$@"
