#!/usr/bin/env bash
# Runs under the thread sanitizer what zek does on several threads: the tests of its parts and of the
# program, and eight threads that check and mark a folder of models.
#
#     Scripts/test-threads.sh
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages "${test_packages[@]}"

say "Building (in build/thread)"
cmake --preset thread >/dev/null
cmake --build --preset thread --target zek WriteModels ZekToolTest MarkConcurrencyTest

# A program in which the sanitizer sees a race ends with this status, which zek never has.
export TSAN_OPTIONS=exitcode=66

say "Running the tests of zek"
ctest --test-dir build/thread --output-on-failure --no-tests=error \
    --tests-regex '^(ZekToolTest|MarkConcurrencyTest|Zek_program)$'

say "Eight threads on 200 models"
build/thread/Tests/Packaging/WriteModels "$scratch/models"
for command in "info" "check --deep" "mark -n" "mark" "mark" "check --json"; do
    status=0
    # The words of the command are its own.
    build/thread/zek $command -j 8 "$scratch/models" >"$scratch/output" 2>&1 || status=$?
    # 1 is for models that a check finds something wrong with.
    [ "$status" -le 1 ] || { cat "$scratch/output" >&2; fail "zek $command: status $status"; }
    echo "zek $command: status $status, no race"
done
