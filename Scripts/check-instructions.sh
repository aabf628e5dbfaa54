#!/usr/bin/env bash
# Counts the processor instructions of some runs and fails when one takes a tenth more than it did
# when its limit was set. Unlike times, the counts are the same on a busy machine; compilers and
# processors change them by some hundredths.
#
#     Scripts/check-instructions.sh
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages "${benchmark_packages[@]}" valgrind
say "Building (in build/benchmark)"
quietly cmake --preset benchmark
quietly cmake --build --preset benchmark --target ZEKTexComp WriteModel

# Prints a row: what is done, and its instructions against those when the limit was set. Counts the
# rows above the limit in failed.
failed=0
check() {
    local count verdict=passed
    # Without an environment, which a program reads at its start however large it is.
    quietly env -i valgrind --tool=callgrind --callgrind-out-file="$scratch/callgrind" \
        build/benchmark/ZEKTexComp "$scratch/model.zek"
    count=$(awk '/^(summary|totals):/ { print $2; exit }' "$scratch/callgrind")
    if [ "$count" -gt $(($2 + $2 / 10)) ]; then
        verdict="FAILED: more than a tenth above $2"
        failed=$((failed + 1))
    fi
    printf '%-32s %12d   %s\n' "$1" "$count" "$verdict"
}

write_model() { quietly build/benchmark/Benchmarks/WriteModel "$1" "$2" "$scratch/model.zek"; }

say "Instructions of a run"
printf 'ZEK\0\7\0\0\0' >"$scratch/model.zek"
head -c 92 /dev/zero >>"$scratch/model.zek"
check "a model of 100 bytes" 55634
write_model large-meshes 10
check "10 MB of large meshes" 59362
write_model morphs 10
check "10 MB of morphs" 59887
write_model nodes 10
check "10 MB of nodes" 11921446
write_model materials 10
check "10 MB of materials" 9757873
write_model textures 1000
check "1,000 textures" 2448521

if [ "$failed" -gt 0 ]; then
    fail "$failed above the limit: make it as fast as before, or set the limit here and say why."
fi
