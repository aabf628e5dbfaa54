#!/usr/bin/env bash
# Builds the benchmarks and prints how fast everything is, as ratios to the fastest rival or to a
# program that does the least. Absolute times on a shared machine mean nothing, ratios do.
#
#     Scripts/benchmark.sh [--quick]
#
# --quick runs everything once with little work, to see that it still runs; its figures mean nothing.
# The models lie in TMPDIR, or /tmp, while it runs; it takes 1.5 GB there and some minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

runs=15 megabytes=100 items=20000 hundreds=100 probes=2000 sizes="1 10 100 1000" counts="10 100 1000 10000 100000"
options=()
if [ "${1-}" = --quick ]; then
    runs=1 megabytes=1 items=20 hundreds=1 probes=5 sizes=1 counts=10
    options=(--benchmark_repetitions=1 --benchmark_min_time=0.0001)
fi

need_packages "${benchmark_packages[@]}" manpages-ja skkdic strace
say "Building (in build/benchmark)"
quietly cmake --preset benchmark
quietly cmake --build --preset benchmark
tools=$PWD/build/benchmark/Benchmarks
# Copies, as after an installation: in how large pieces the system keeps a program in memory, and so
# how fast it starts, depends on how its file was written.
program=$scratch/ZEKTexComp
cp build/benchmark/{ZEKTexComp,zek} "$tools"/Floor{Mark,OpenClose,ReadWrite} "$scratch"

# Prints a row: what is done, the median, least and greatest ratio, the target.
print_row() { printf '%-44s %6s %6s %6s   %s\n' "$@"; }

# Compares a run over a model with the least that rewrites it.
compare_rewrite() {
    local ratio least greatest rest
    read -r ratio least greatest rest < <("$tools/CompareRuns" "$1" "$program" "$3" \
        against "$scratch/FloorReadWrite" "$3")
    print_row "$2" "$ratio" "$least" "$greatest" "$4"
}

# Compares a run over a model with opening and closing the files that it looks for.
compare_open() {
    local ratio least greatest rest
    read -r ratio least greatest rest < <("$tools/CompareRuns" "$runs" "$program" "$2/model.zek" \
        against "$scratch/FloorOpenClose" "$3" "$2/" "$4")
    print_row "$1" "$ratio" "$least" "$greatest" "$5"
}

# Lists the paths of the variants of so many textures, or probes, below a folder.
list_textures() {
    awk -v n="$2" -v d="$1" 'BEGIN { split("pvrtc etc astc dxt", f); for (i = 0; i < n; ++i)
        for (k = 1; k <= 4; ++k) printf "%s/tex_%s/%03d.%s\n", d, f[k], i, k < 4 ? "pvr" : "dds" }'
}
list_probes() {
    awk -v n="$2" -v d="$1" 'BEGIN { split("pvrtc etc astc dxt", f); for (i = 0; i < n; ++i)
        for (j = 0; j < 6; ++j) for (k = 1; k <= 4; ++k)
            printf "%s/tex_reflection_cube_%s\\%d\\reflection_cube_%d.%s\n", d, f[k], i, j,
                k < 4 ? "pvr" : "dds" }'
}

say "Whole runs, as a ratio to the least that does the same (on $(stat -f -c %T "$scratch"))"
print_row work median least most target
for kind in large-meshes small-meshes morphs indices-16-bit indices-32-bit nodes materials; do
    quietly "$tools/WriteModel" $kind "$megabytes" "$scratch/model.zek"
    compare_rewrite "$runs" "$megabytes MB of $kind" "$scratch/model.zek" 1.25
done
printf 'ZEK\0\7\0\0\0' >"$scratch/model.zek"
head -c 92 /dev/zero >>"$scratch/model.zek"
compare_rewrite $((runs * 40)) "a model of 100 bytes" "$scratch/model.zek" 1.15

mkdir -p "$scratch"/{none,all}/tex_{pvrtc,etc,astc,dxt} "$scratch/cubemaps"
for folder in none all; do
    quietly "$tools/WriteModel" textures "$items" "$scratch/$folder/model.zek"
done
list_textures "$scratch/all" "$items" | xargs touch
compare_open "$items textures, no variant" "$scratch/none" textures "$items" 1.2
compare_open "$items textures, all variants" "$scratch/all" textures "$items" 1.2
quietly "$tools/WriteModel" probes "$probes" "$scratch/cubemaps/model.zek"
list_probes "$scratch/cubemaps" "$probes" | tr '\n' '\0' | xargs -0 touch
compare_open "$probes probes, all faces" "$scratch/cubemaps" probes "$probes" 1.2
rm -rf "$scratch/all" "$scratch/cubemaps"

# Compares a run of zek mark on a list of models with another command.
compare_mark() {
    local what=$1 target=$2 count=$3 list=$4 ratio least greatest rest
    shift 4
    read -r ratio least greatest rest < <("$tools/CompareRuns" "$count" \
        "$scratch/zek" mark --files0-from "$list" against "$@")
    print_row "$what" "$ratio" "$least" "$greatest" "$target"
}

say "zek mark, as a ratio to ZEKTexComp, and to a program that does the same opens, reads and closes"
printf '%s\0' "$scratch/model.zek" >"$scratch/list"
for kind in large-meshes small-meshes morphs indices-16-bit indices-32-bit nodes materials; do
    target=0.05
    case $kind in nodes | materials) target=0.6 ;; esac
    quietly "$tools/WriteModel" $kind "$megabytes" "$scratch/model.zek"
    compare_mark "$megabytes MB of $kind" $target "$runs" "$scratch/list" \
        "$program" "$scratch/model.zek"
done

mkdir -p "$scratch"/hundred/model/tex_{pvrtc,etc,astc,dxt} "$scratch/models"
quietly "$tools/WriteModel" textures 2 "$scratch/hundred/model/model.zek"
list_textures "$scratch/hundred/model" 2 | xargs touch
for i in $(seq 2 100); do
    cp -r "$scratch/hundred/model" "$scratch/hundred/model$i"
done
for i in $(seq "$hundreds"); do
    cp -r "$scratch/hundred" "$scratch/models/$i"
done
find "$scratch/models" -name '*.zek' -print0 | sort -z >"$scratch/list"
compare_mark "${hundreds}00 models of 2 textures, ZEKTexComp" 0.3 $(((runs + 4) / 5)) \
    "$scratch/list" xargs -0 -a "$scratch/list" -P "$(nproc)" -n 1 "$program"
compare_mark "${hundreds}00 models of 2 textures, floor" 1.3 "$runs" "$scratch/list" \
    "$scratch/FloorMark" "$scratch/list" "$(nproc)"
rm -rf "$scratch/hundred" "$scratch/models"

# Prints what a run over a model costs for each of its bytes or items, in nanoseconds and as a ratio
# to the size before, when what a run over an empty model takes is left out.
print_growth() {
    local ratio microseconds rest
    read -r ratio _ _ microseconds rest < <("$tools/CompareRuns" "$runs" \
        "$program" "$3" against "$program" "$scratch/empty.zek")
    previous=$(awk -v w="$1" -v n="$2" -v r="$ratio" -v t="$microseconds" -v p="$previous" 'BEGIN {
        cost = 1000 * t * (1 - 1 / r) / n
        printf "%-44s %10.3f %6s\n", w, cost, p ? sprintf("%.2f", cost / p) : "" >"/dev/stderr"
        print cost }')
}

say "Growth: nanoseconds a byte or an item, and the ratio to the size before"
printf 'ZEK\0\31\0\0\0' >"$scratch/empty.zek"
head -c 92 /dev/zero >>"$scratch/empty.zek"
for kind in small-meshes large-meshes; do
    previous=
    for size in $sizes; do
        [ "$size $kind" = "1 large-meshes" ] && continue # one of them has 5 MB
        read -r bytes rest < <("$tools/WriteModel" $kind "$size" "$scratch/model.zek")
        print_growth "$size MB of $kind" "$bytes" "$scratch/model.zek" 2>&1
    done
done
previous=
for count in $counts; do
    quietly "$tools/WriteModel" textures "$count" "$scratch/none/model.zek"
    print_growth "$count textures, no variant" "$count" "$scratch/none/model.zek" 2>&1
done

say "Peak memory against the image and the lists of the largest mesh, in kilobytes"
read -r image lists < <("$tools/WriteModel" large-meshes "$megabytes" "$scratch/model.zek")
read -r _ _ _ _ peak < <("$tools/CompareRuns" 1 "$program" "$scratch/model.zek" against \
    "$scratch/FloorReadWrite" "$scratch/model.zek")
sum=$(((image + lists) / 1024))
awk -v p="$peak" -v s="$sum" 'BEGIN { printf "peak %d, sum %d, ratio %.3f\n", p, s, p / s }'

say "System calls for a model of 100 bytes, its one write to standard output included"
printf 'ZEK\0\7\0\0\0' >"$scratch/model.zek"
head -c 92 /dev/zero >>"$scratch/model.zek"
for command in "$program" "$scratch/FloorReadWrite"; do
    if strace -o "$scratch/calls" "$command" "$scratch/model.zek" >"$scratch/output" 2>&1; then
        echo "$(basename "$command") $(grep -vc '^+++' "$scratch/calls")"
    else
        echo "$(basename "$command"): skipped, strace may not trace here"
    fi
done

say "Math, against the faster of GLM and Eigen"
"$tools/MathBenchmark" "${options[@]}"

say "Character codes, against iconv"
mkdir "$scratch/texts"
find /usr/share/man/ja -name '*.gz' 2>/dev/null | sort | xargs -r zcat >"$scratch/texts/manual pages"
iconv -f EUC-JP -t UTF-8 /usr/share/skk/SKK-JISYO.L >"$scratch/texts/dictionary" 2>/dev/null || true
find Source -name 'S*.h' | sort | xargs cat >"$scratch/texts/ASCII"
texts=()
for text in "$scratch"/texts/*; do
    if [ -s "$text" ]; then
        texts+=("$(basename "$text")")
    else
        echo "skipped: $(basename "$text"), whose package installs no text here"
    fi
done
(cd "$scratch/texts" && "$tools/CharacterCodeBenchmark" "${texts[@]}" "${options[@]}")
