#!/usr/bin/env bash
# Runs the tests under the address, undefined-behaviour and leak sanitizers, and measures which lines
# and branches of Source they reach. Fails at a line or branch of the libraries or ZEKTexComp that they
# do not reach and for which Documents/Reliability.md gives no reason, and below a share of zek's
# branches. The report to look at is build/coverage/report/index.html.
#
#     Scripts/coverage.sh
#
# Left out are the tests that trace or limit the program's system calls or read its headers: a
# program that counts its lines makes calls of its own, at its end, and is not built as it is
# delivered. So are those that measure memory, and, for the time that they take, most versions in the
# tests of all versions and comparisons of planes with double precision;
# `Scripts/test.sh --preset sanitize` runs these.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/wrap-programs.sh

need_packages "${test_packages[@]}" clang llvm

folder=$PWD/build/coverage

say "Building (in build/coverage)"
cmake --preset coverage >/dev/null
cmake --build --preset coverage

say "Running the tests"
rm -rf "$folder/profiles"
left_out='SystemCallTest.*:MemoryLimitTest.*:HardeningTest.*:MemoryRatioTest.*:*Hostile*:ZekMemoryTest.*'
left_out+=':SPlane.*BarycentricCoordinates'
# Of versions 7 to 27 that leaves 7, 11, 17, 21 and 27, and of 0 to 27 only 0, 4, 10, 14, 20 and 24.
for digit in 1 2 3 5 6 7 8 9; do
    left_out+=":Version/*/*$digit"
done
left_out+=':*NastyValuesTest.*/*0' # which leaves 11 and 21, each of which takes the longest
# Four files for each program, into which all of its runs are added up.
LLVM_PROFILE_FILE=$folder/profiles/%4m.profraw GTEST_FILTER=-$left_out \
    ctest --test-dir "$folder" --parallel "$(nproc)" --output-on-failure

say "Lines and branches reached"
llvm-profdata merge -sparse "$folder"/profiles/*.profraw -o "$folder/all.profdata"
mapfile -t programs < <(list_programs "$folder" | sed '2,$s/^/-object=/')
# Its remarks are about functions that a program has and does not call.
read_profile() {
    llvm-cov "$@" -instr-profile "$folder/all.profdata" "${programs[@]}" Source/ 2>"$folder/remarks"
}
read_profile show -format=html -show-branches=count -output-dir "$folder/report"
read_profile export -format=lcov >"$folder/record.lcov"
Scripts/find-uncovered.py "$folder/record.lcov"
