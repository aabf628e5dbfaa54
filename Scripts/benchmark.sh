#!/usr/bin/env bash
# Builds the benchmarks and prints how fast everything is, as ratios to the fastest rival or to a
# program that does the least. Absolute times on a shared machine mean nothing, ratios do.
#
#     Scripts/benchmark.sh [--quick | --plot]
#
# The figures are also written into build/benchmark/figures.tsv. --plot puts those of the last run
# into Documents/Performance.md, as tables and pictures, and measures only when there are none.
# --quick runs everything once with little work, to see that it still runs; its figures mean nothing
# and are not kept.
#
# The models lie in TMPDIR, or /tmp, while it runs, which is best a tmpfs: TMPDIR=/dev/shm. It takes
# 1.5 GB there, 0.2 GB below build, and ten minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
kept=build/benchmark/figures.tsv
if [ "${1-}" = --plot ] && [ -e "$kept" ]; then
    exec Scripts/plot-figures.sh "$kept"
fi
. Scripts/checking.sh

runs=15 megabytes=100 items=20000 hundreds=100 probes=2000 sizes="1 10 100 1000" counts="10 100 1000 10000 100000"
options=()
case ${1-} in
    --quick)
        runs=1 megabytes=1 items=20 hundreds=1 probes=5 sizes=1 counts=10
        options=(--benchmark_repetitions=1 --benchmark_min_time=0.0001) ;;
    --plot | '') ;;
    *) fail "usage: Scripts/benchmark.sh [--quick | --plot]" ;;
esac
few_runs=$(((runs + 4) / 5))
kinds="large-meshes small-meshes morphs indices-16-bit indices-32-bit nodes materials"
models=${hundreds}00

need_packages "${benchmark_packages[@]}" manpages-ja python3 skkdic strace
say "Building (in build/benchmark)"
quietly cmake --preset benchmark
quietly cmake --build --preset benchmark
tools=$PWD/build/benchmark/Benchmarks
# Copies, as after an installation: in how large pieces the system keeps a program in memory, and so
# how fast it starts, depends on how its file was written.
program=$scratch/ZEKTexComp
cp build/benchmark/{ZEKTexComp,zek} "$tools"/Floor{OpenClose,ReadWrite,Zek} "$scratch"
disk=$(mktemp -d -p build/benchmark)
trap 'rm -rf "$scratch" "$disk"' EXIT

figures=$scratch/figures.tsv
get_file_system() { stat -f -c %T "$1"; }
printf '# %s\n' "$(date +%F): $(sed -n 's/^model name.*: //p' /proc/cpuinfo | head -n 1), $(nproc) \
processors, Linux $(uname -r | cut -d - -f 1), g++ $(g++ -dumpfullversion), models on $(get_file_system "$scratch")" \
    "table	work	median	least	most	target" >"$figures"

# Begins a table, of which there is a name in the file of the figures.
begin_table() {
    table=$1
    say "$2"
    printf '%-50s %6s %6s %6s   %s\n' work median least most target
}

# Prints a row, and keeps it: what is done, the median, least and greatest ratio, the target.
print_row() {
    printf '%-50s %6s %6s %6s   %s\n' "$@"
    keep_row "$@"
}
keep_row() { printf '%s\t%s\t%s\t%s\t%s\t%s\n' "$table" "$@" >>"$figures"; }

# Prints the row of two commands that are run so many times in turn: "COMMAND... against COMMAND...".
compare() {
    local work=$1 target=$2 count=$3 ratio least most rest
    shift 3
    read -r ratio least most rest < <("$tools/CompareRuns" "$count" "$@")
    print_row "$work" "$ratio" "$least" "$most" "$target"
}

# Writes a model of so many megabytes of a kind, or of 100 bytes of a version (as an octal number).
write_model() { quietly "$tools/WriteModel" "$1" "$megabytes" "$2"; }
write_smallest() {
    printf "ZEK\\0\\$1\\0\\0\\0" >"$2"
    head -c 92 /dev/zero >>"$2"
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

begin_table floor "Whole runs, against the least that does the same (on $(get_file_system "$scratch"))"
model=$scratch/model.zek
for kind in $kinds; do
    target=1.15
    case $kind in nodes | materials) target=1.3 ;; esac
    write_model "$kind" "$model"
    compare "$megabytes MB of ${kind//-/ }" $target "$runs" \
        "$program" "$model" against "$scratch/FloorReadWrite" "$model"
done
write_smallest 7 "$model"
compare "a model of 100 bytes" 1.15 $((runs * 40)) \
    "$program" "$model" against "$scratch/FloorReadWrite" "$model"

mkdir -p "$scratch"/{none,all}/tex_{pvrtc,etc,astc,dxt} "$scratch/cubemaps"
for folder in none all; do
    quietly "$tools/WriteModel" textures "$items" "$scratch/$folder/model.zek"
done
list_textures "$scratch/all" "$items" | xargs touch
quietly "$tools/WriteModel" probes "$probes" "$scratch/cubemaps/model.zek"
list_probes "$scratch/cubemaps" "$probes" | tr '\n' '\0' | xargs -0 touch
compare "$items textures, no variant" 1.15 "$runs" "$program" "$scratch/none/model.zek" \
    against "$scratch/FloorOpenClose" textures "$scratch/none/" "$items"
compare "$items textures, all variants" 1.15 "$runs" "$program" "$scratch/all/model.zek" \
    against "$scratch/FloorOpenClose" textures "$scratch/all/" "$items"
compare "$probes probes, all faces" 1.15 "$runs" "$program" "$scratch/cubemaps/model.zek" \
    against "$scratch/FloorOpenClose" probes "$scratch/cubemaps/" "$probes"
rm -rf "$scratch/all" "$scratch/cubemaps"

# Small models, whose variants have something in them: check has nothing to say of them.
mkdir -p "$scratch"/hundred/model/tex_{pvrtc,etc,astc,dxt} "$scratch/models"
quietly "$tools/WriteModel" textures 2 "$scratch/hundred/model/model.zek"
for variant in $(list_textures "$scratch/hundred/model" 2); do
    echo variant >"$variant"
done
for i in $(seq 2 100); do
    cp -r "$scratch/hundred/model" "$scratch/hundred/model$i"
done
for i in $(seq "$hundreds"); do
    cp -r "$scratch/hundred" "$scratch/models/$i"
done
rm -rf "$scratch/hundred"
list=$scratch/list
find "$scratch/models" -name '*.zek' -print0 | sort -z >"$list"

# Prints what makes the models of a list ones that were never marked, for the shell. After a change a
# mark waits 20 milliseconds, which is not what is measured.
unmark() { echo "'$scratch/unmark' '$1'; sleep 0.05"; }
cat >"$scratch/unmark" <<'END'
#!/usr/bin/env python3
import os, sys
for path in open(sys.argv[1], "rb").read().split(b"\0")[:-1]:
    descriptor = os.open(path, os.O_WRONLY)
    os.pwrite(descriptor, b"\0", 8)
    os.close(descriptor)
END
chmod +x "$scratch/unmark"
printf '%s\0' "$model" >"$scratch/one"

begin_table zek "zek, against ZEKTexComp"
for kind in $kinds; do
    target=0.05
    case $kind in nodes | materials) target=0.6 ;; esac
    write_model "$kind" "$model"
    quietly "$scratch/zek" mark "$model"
    for command in mark check; do
        compare "zek $command, $megabytes MB of ${kind//-/ }" $target "$runs" \
            "$scratch/zek" $command "$model" against "$program" "$model"
    done
    [ "$kind" = large-meshes ] || continue
    compare "zek mark, the same, something to change" $target "$runs" before "$(unmark "$scratch/one")" \
        "$scratch/zek" mark "$model" against "$program" "$model"
done
write_model wrong-nodes "$model"
quietly "$scratch/zek" mark "$model"
compare "zek check, $megabytes MB of nodes, all wrong" "" "$runs" \
    "$scratch/zek" check "$model" against "$program" "$model"
quietly "$scratch/zek" mark --files0-from "$list"
for command in mark check; do
    compare "zek $command, $models models of 2 textures" 0.3 "$few_runs" \
        "$scratch/zek" $command --files0-from "$list" \
        against xargs -0 -a "$list" -P "$(nproc)" -n 1 "$program"
done
compare "zek report, $models models of 2 textures" 0.3 "$few_runs" \
    "$scratch/zek" report -o "$scratch/report.html" --files0-from "$list" \
    against xargs -0 -a "$list" -P "$(nproc)" -n 1 "$program"

cp -r "$scratch/models" "$scratch/new"
sed -z "s,^$scratch/models/,$scratch/new/," "$list" >"$scratch/new-list"
compare "zek mark, the same again, against the first time" 1 "$runs" \
    before "$(unmark "$scratch/new-list")" "$scratch/zek" mark --files0-from "$list" \
    against "$scratch/zek" mark --files0-from "$scratch/new-list"
rm -rf "$scratch/new"

begin_table zek-floor "zek, against a program that does the same opens, reads, listings and closes"
for command in mark check; do
    compare "zek $command, $models models of 2 textures" 1.3 "$runs" \
        "$scratch/zek" $command --files0-from "$list" \
        against "$scratch/FloorZek" $command "$list" "$(nproc)"
done
compare "zek report, $models models of 2 textures" "" "$runs" \
    "$scratch/zek" report -o "$scratch/report.html" --files0-from "$list" \
    against "$scratch/FloorZek" check "$list" "$(nproc)"

begin_table threads "zek on $models models, against one thread ($(nproc) processors)"
for command in mark check; do
    for threads in 1 2 4 8; do
        compare "zek $command -j $threads" "" "$runs" \
            "$scratch/zek" $command -j $threads --files0-from "$list" \
            against "$scratch/zek" $command -j 1 --files0-from "$list"
    done
done
rm -rf "$scratch/models"

# Compares two commands on a model, each with the flush of the model to the disk.
compare_flushed() {
    local work=$1 before=$2
    shift 2
    compare "$work" "" "$runs" before "$before" sh -c "$1 \"\$0\" && sync \"\$0\"" "$disk/model.zek" \
        against sh -c "$2 \"\$0\" && sync \"\$0\"" "$disk/model.zek"
}

begin_table disk "$megabytes MB of large meshes on a disk ($(get_file_system "$disk"))"
if [ "$(get_file_system "$disk")" = tmpfs ]; then
    echo "skipped: build is on a tmpfs"
else
    write_model large-meshes "$disk/model.zek"
    printf '%s\0' "$disk/model.zek" >"$scratch/one-on-disk"
    compare "ZEKTexComp against the floor" "" "$runs" \
        "$program" "$disk/model.zek" against "$scratch/FloorReadWrite" "$disk/model.zek"
    compare_flushed "ZEKTexComp against the floor, and sync" : "$program" "$scratch/FloorReadWrite"
    compare_flushed "zek mark against ZEKTexComp, and sync" "$(unmark "$scratch/one-on-disk")" \
        "$scratch/zek mark" "$program"
    compare_flushed "the same, nothing to change" : "$scratch/zek mark" "$program"
fi
rm -rf "$disk"

# Prints what a run over the model costs for each of its bytes or items, in nanoseconds and as a ratio
# to the size before, when what a run over an empty model takes is left out. Of a short run little is
# left then, for which there are more of them.
print_growth() {
    local ratio microseconds rest cost
    read -r ratio _ _ microseconds rest < <("$tools/CompareRuns" $((runs * ($3 ? 10 : 1))) \
        "$program" "$model" against "$program" "$scratch/empty.zek")
    cost=$(awk -v n="$2" -v r="$ratio" -v t="$microseconds" \
        'BEGIN { printf "%.3f", 1000 * t * (1 - 1 / r) / n }')
    printf '%-50s %10s %6s\n' "$1" "$cost" \
        "$(awk -v c="$cost" -v p="$previous" 'BEGIN { if (p) printf "%.2f", c / p }')"
    keep_row "$1" "$cost" "" "" ""
    previous=$cost
}

say "Growth: nanoseconds a byte or an item, and the ratio to the size before"
table=growth
write_smallest 31 "$scratch/empty.zek"
for kind in small-meshes large-meshes; do
    previous=
    for size in $sizes; do
        [ "$size $kind" = "1 large-meshes" ] && continue # one of them has 5 MB
        read -r bytes < <("$tools/WriteModel" $kind "$size" "$model")
        print_growth "$size MB of ${kind//-/ }" "$bytes" $((size < 100))
    done
done
model=$scratch/none/model.zek
previous=
for count in $counts; do
    quietly "$tools/WriteModel" textures "$count" "$model"
    print_growth "$count textures, no variant" "$count" $((count < 10000))
done

model=$scratch/model.zek

begin_table memory "Peak memory against the size of the file"
read -r bytes < <("$tools/WriteModel" large-meshes "$megabytes" "$model")
read -r _ _ _ _ peak < <("$tools/CompareRuns" 1 "$program" "$model" against "$program" "$model")
print_row "$megabytes MB of large meshes" \
    "$(awk -v p="$peak" -v b="$bytes" 'BEGIN { printf "%.3f", 1024 * p / b }')" "" "" ""

begin_table calls "System calls for a model of 100 bytes, its one write to standard output included"
write_smallest 7 "$model"
for command in "$program" "$scratch/FloorReadWrite"; do
    if strace -o "$scratch/calls" "$command" "$model" >"$scratch/output" 2>&1; then
        print_row "$(basename "$command")" "$(grep -vc '^+++' "$scratch/calls")" "" "" ""
    else
        echo "$(basename "$command"): skipped, strace may not trace here"
    fi
done

# Prints a table of functions and their rivals, and keeps its rows.
print_functions() {
    table=functions
    "$@" "${options[@]}" | tee "$scratch/functions"
    sed 's/ *| */\t/g' "$scratch/functions" | tail -n +2 \
        | while IFS=$'\t' read -r work _ rival _ ratio _; do
            keep_row "$work against $rival" "$ratio" "" "" ""
        done
}

say "Math, against the faster of GLM and Eigen"
print_functions "$tools/MathBenchmark"

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
cd "$scratch/texts"
print_functions "$tools/CharacterCodeBenchmark" "${texts[@]}"
cd "$OLDPWD"

[ "${1-}" != --quick ] || exit 0
mv "$figures" "$kept"
[ "${1-}" != --plot ] || Scripts/plot-figures.sh "$kept"
