#!/usr/bin/env bash
# Measures which lines and branches of Source the tests reach, and fails when a line is not reached.
# The report is build/coverage/report/index.html.
#
#     Scripts/coverage.sh
#
# Branches that the compiler adds for exceptions are not counted. Left out are the tests that trace
# or limit the program's system calls or read its headers: a program that counts its lines makes
# calls of its own, at its end, and is not built as it is delivered.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

need_packages cmake g++ gcovr ninja-build libgtest-dev libeigen3-dev locales python3

say "Building (in build/coverage)"
cmake -S . -B build/coverage -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="--coverage -O0" >/dev/null
cmake --build build/coverage

say "Running the tests"
find build/coverage -name '*.gcda' -delete
GTEST_FILTER='-SystemCallTest.*:MemoryLimitTest.*:HardeningTest.*' \
    ctest --test-dir build/coverage --parallel "$(nproc)" --output-on-failure "$@"

say "Lines and branches reached"
mkdir -p build/coverage/report
report() {
    gcovr --root . --filter Source/ --object-directory build/coverage build/coverage \
        --exclude-throw-branches --exclude-unreachable-branches "$@"
}
report --branches | sed -n '/^Source.*[0-9]$/p'
report --print-summary --html-details build/coverage/report/index.html --fail-under-line 100 \
    --txt build/coverage/report/lines.txt
