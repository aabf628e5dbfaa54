#!/usr/bin/env bash
# Follows the recipe of Documents/Architecture.md for a field that a new version brings, in a copy of
# the sources: with the whole patch that is kept for it all tests must pass, and without its change of
# any one file those that hold the format's descriptions to each other must not.
#
#     Scripts/check-recipe.sh
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages "${test_packages[@]}" git

patch=$PWD/Tests/Recipes/field-of-a-new-version.patch
copy=$PWD/build/recipe
targets=(ZEKFormatTest ListFields WriteVersions WriteSample ZEKTexComp)
tests='^(ZEKFormatTest|FormatDocument)$'

build_and_test() {
    cmake --build "$copy/build/test" --target "${targets[@]}" \
        && ctest --test-dir "$copy/build/test" --output-on-failure --no-tests=error -R "$tests"
}

mapfile -t files < <(sed -n 's,^+++ b/,,p' "$patch")
recipe=$(sed -n '/^\*\*A field that a new version brings/,/^\*\*A section/p' Documents/Architecture.md)
for file in "${files[@]}"; do
    grep -qF "${file##*/}" <<<"$recipe" || fail "The recipe does not name $file."
done

say "With the whole patch (in build/recipe)"
# What a copy of an earlier run has in common with the sources is not built again.
[ -d "$copy" ] || git clone -q --shared . "$copy"
git -C "$copy" fetch -q origin HEAD
git -C "$copy" reset -q --hard FETCH_HEAD
git diff --binary HEAD | git -C "$copy" apply --allow-empty
git -C "$copy" apply "$patch"
quietly cmake -S "$copy" --preset test -B "$copy/build/test"
quietly cmake --build "$copy/build/test"
quietly ctest --test-dir "$copy/build/test" --parallel "$(nproc)" --output-on-failure
echo "built, and all tests passed"

for file in "${files[@]}"; do
    say "Without its change of $file"
    git -C "$copy" apply --reverse --include="$file" "$patch"
    if build_and_test >"$scratch/output" 2>&1; then
        fail "Nobody notices that it is missing."
    fi
    grep -m1 -E 'error: |^check_format: |^\[  FAILED  \]' "$scratch/output" \
        || fail "$(cat "$scratch/output")"
    git -C "$copy" apply --include="$file" "$patch"
done
