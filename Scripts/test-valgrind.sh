#!/usr/bin/env bash
# Runs the tests once under valgrind's memcheck, and the program wherever they run it. It also sees
# the use of bytes that nobody has set.
#
#     Scripts/test-valgrind.sh [CTEST-OPTION ...]    such as -R FileSystem
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/wrap-programs.sh

need_packages "${test_packages[@]}" valgrind

say_excluded
say "Building (in build/valgrind)"
cmake --preset valgrind >/dev/null
cmake --build --preset valgrind
# The tests' own operator new stays theirs: it counts, or fails on purpose.
wrap_programs "$PWD/build/valgrind" \
    "valgrind -q --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect \
     --suppressions='$PWD/Scripts/valgrind.supp' --soname-synonyms=somalloc=nouserintercepts"

say "Running the tests under memcheck"
test_wrapped build/valgrind "$@"
