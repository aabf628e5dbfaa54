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

# What cannot or need not run there: tests by pattern, programs by name, and why.
excluded_tests=(
    'SystemCallTest.*      valgrind would be traced'
    'MemoryLimitTest.*     valgrind would be limited'
    'HostileProgramTest.*  the memory of valgrind would be measured'
    '*NastyProgramTest.*   the memory of valgrind would be measured'
    'HardeningTest.*       this is not the build that is delivered'
)
excluded_programs=(
    'LibrarySymbols        this is not the build that is delivered'
)
say "Left out"
printf '%s\n' "${excluded_tests[@]}" "${excluded_programs[@]}"

say "Building (in build/valgrind)"
# Linked dynamically, so that valgrind can put its own allocator in the place of the library's.
cmake -S . -B build/valgrind -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_CXX_FLAGS_RELEASE="-O1 -g" -DZEK_STATIC=OFF >/dev/null
cmake --build build/valgrind
wrap_programs "$PWD/build/valgrind" \
    "valgrind -q --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite,indirect"

say "Running the tests under memcheck"
GTEST_FILTER="-$(join_patterns : "${excluded_tests[@]}")" ctest --test-dir build/valgrind \
    --parallel "$(nproc)" --output-on-failure \
    --exclude-regex "$(join_patterns '|' "${excluded_programs[@]}")" "$@"
