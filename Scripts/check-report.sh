#!/usr/bin/env bash
# Looks at the page that zek report writes, in Debian's chromium: what it shows against what zek
# prints, what a reader can do with it, and names that would like to be more than text.
#
#     Scripts/check-report.sh             also 10,000 models: how large the page is, how fast it opens
#     Scripts/check-report.sh --quick     without those
#
# Pictures of the page are left in build/report/pictures.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh
packages=$PWD/build/report
pictures=$packages/pictures

need_packages "${build_packages[@]}" python3 chromium fonts-dejavu-core
need_npm_packages Tests/Report "$packages"

say "Building (in build/test)"
quietly cmake --preset test
quietly cmake --build build/test --target zek
PATH=$PWD/build/test:$PATH

# Runs a test on the page of the models that write_models.py writes when it is given the words.
test_page() {
    local test=$1 folder=$scratch/$2
    shift
    mkdir "$folder"
    python3 Tests/Report/write_models.py "$1" "$folder/models" "${@:2}"
    (
        cd "$folder"
        zek report models
        zek report --json models >report.jsonl 2>/dev/null
        zek report --csv models >report.csv 2>/dev/null
        zek info --json models >info.jsonl 2>/dev/null || [ $? -eq 1 ]
        zek check --json --max-findings 100000 models >check.jsonl 2>/dev/null || [ $? -eq 1 ]
    ) >"$folder/output" || fail "zek report has failed" "$(cat "$folder/output")"
    tail -n 1 "$folder/output"
    NODE_PATH=$packages/node_modules ZEK_REPORT_FOLDER=$folder ZEK_PICTURES=$pictures \
        node --test "Tests/Report/$test"
}

mkdir -p "$pictures"
say "A library of models in every state"
test_page page_test.js library
[ "${1-}" = --quick ] && exit
say "10,000 models"
test_page many_test.js many 10000
