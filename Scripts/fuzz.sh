#!/usr/bin/env bash
# Builds all fuzzers and runs each for a while, from its committed corpus on.
#
#     Scripts/fuzz.sh [SECONDS]     for each fuzzer; 60 by default
#
# What is found is kept in build/fuzz/found/. An input that breaks a property belongs into
# Fuzz/Corpus/, where the ordinary tests run over it from then on.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

seconds=${1:-60}
need_packages "${build_packages[@]}" clang

say "Building the fuzzers (in build/fuzz)"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

# The models that a fuzzer writes to files stay in memory, where the system has a folder for that.
if [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi

status=0
for corpus in Fuzz/Corpus/*/; do
    fuzzer=$(basename "$corpus")
    found=build/fuzz/found/$fuzzer
    mkdir -p "$found"
    say "$fuzzer, $seconds seconds"
    dictionary=()
    case $fuzzer in
    ModelFuzz | WalkersFuzz | ZekFuzz) dictionary=(-dict=Fuzz/Model.dict) ;;
    esac
    # Memory and time of a single input are bounded as well.
    if "build/fuzz/Fuzz/$fuzzer" -max_total_time="$seconds" -max_len=16384 -timeout=10 \
        -rss_limit_mb=1024 -print_final_stats=1 "${dictionary[@]}" \
        -artifact_prefix="$found/" "$found" "$corpus" >"$found.log" 2>&1; then
        grep -E 'number_of_executed_units|new_units_added|peak_rss' "$found.log" | sed 's/^stat:://'
    else
        status=1
        tail -n 40 "$found.log"
        echo "The input that did it is kept in $found/; run build/fuzz/Fuzz/$fuzzer on it again."
    fi
done
exit "$status"
