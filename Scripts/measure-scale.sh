#!/usr/bin/env bash
# Prints what marking and checking many models costs, as Documents/Scale.md has it:
#
#     Scripts/measure-scale.sh [NUMBER...]
#
# Without numbers: 1000, 10000 and 100000. Each model is the sample in a folder of its own with its
# variants, below FOLDER, which is /dev/shm unless that variable says otherwise. These are 23 names a
# model, and a tmpfs may allow too few for more models, unless it is mounted with nr_inodes=0.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
need_packages "${test_packages[@]}" time
. Scripts/checking.sh
[ $# -gt 0 ] || set -- 1000 10000 100000

say "Building (in build/test)"
quietly cmake --preset test
quietly cmake --build build/test --target zek WriteSample
zek=$PWD/build/test/zek
build/test/Examples/WriteSample "$scratch/sample"
models=$(mktemp -d -p "${FOLDER:-/dev/shm}")
trap 'rm -rf "$scratch" "$models"' EXIT

# Writes so many models. The variants, of which nothing is read, are links to a few files.
write_models() {
    python3 - "$scratch/sample" "$models/$1" "$1" <<'END'
import os, shutil, sys
sample, root, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
files = [os.path.relpath(os.path.join(folder, name), sample)
         for folder, _, names in os.walk(sample) for name in names if name != "model.zek"]
folders = sorted({os.path.dirname(file) for file in files})
source = None
for i in range(count):
    folder = f"{root}/{i // 1000}/{i}"
    for name in folders:
        os.makedirs(f"{folder}/{name}", exist_ok=True)
    shutil.copyfile(f"{sample}/model.zek", f"{folder}/model.zek")
    for file in files:
        if source and os.stat(source).st_nlink < 60000:
            os.link(source, f"{folder}/{file}")
        else:
            source = f"{folder}/{file}"
            open(source, "w").close()
END
}

# Prints what a command takes: time on the clock, a model's share of the processors' time in the
# program and in the system, and memory.
measure() {
    local title=$1 count=$2 elapsed user system kilobytes
    shift 2
    /usr/bin/time -f '%e %U %S %M' -o "$scratch/time" "$@" >"$scratch/output" 2>&1 || [ $? -eq 1 ]
    read -r elapsed user system kilobytes < <(tail -n 1 "$scratch/time")
    echo "$count $user $system $kilobytes $title" >>"$scratch/measured"
    awk -v n="$count" -v title="$title" -v e="$elapsed" -v u="$user" -v s="$system" -v k="$kilobytes" '
        BEGIN { printf "%8d  %-24s %8.2f s %6.1f us %6.1f us %7.1f MB\n",
                n, title, e, u / n * 1e6, s / n * 1e6, k / 1024 }'
}

say "Time and memory ($(nproc) threads, $(stat -f -c %T "$models"))"
printf '%8s  %-24s %10s %9s %9s %10s\n' models '' clock program system memory
for count in "$@"; do
    write_models "$count"
    measure "check, all stale" "$count" "$zek" check "$models/$count"
    measure "mark, all to change" "$count" "$zek" mark "$models/$count"
    measure "mark, nothing to change" "$count" "$zek" mark "$models/$count"
    find "$models/$count" -name '*.zek' -print0 >"$scratch/list"
    measure "the same, from a list" "$count" "$zek" mark --files0-from "$scratch/list"
    measure "check, nothing wrong" "$count" "$zek" check "$models/$count"
    rm -rf "${models:?}/$count"
done

say "What one more model costs, from $1 to ${!#}: program, system, memory"
awk -v first="$1" -v last="${!#}" '
    {
        count = $1; user = $2; kernel = $3; kilobytes = $4
        $1 = $2 = $3 = $4 = ""
        title = substr($0, 5)
    }
    count == first { users[title] = user; kernels[title] = kernel; memory[title] = kilobytes }
    count == last && last > first {
        more = last - first
        printf "%-24s %6.1f us %6.1f us %6.0f bytes\n", title, (user - users[title]) / more * 1e6,
            (kernel - kernels[title]) / more * 1e6, (kilobytes - memory[title]) / more * 1024
    }' "$scratch/measured"

# Prints the calls that a model costs: those of 20 models less those of 10, by ten.
count_calls() {
    local n
    for n in 10 20; do
        strace -f -c -U name,calls -o "$scratch/calls.$n" "$@" -j1 "$models/$n" >/dev/null 2>&1 || true
    done
    python3 - "$scratch"/calls.10 "$scratch"/calls.20 <<'END'
import sys
few, many = ({words[0]: int(words[1]) for words in map(str.split, open(path))
              if len(words) == 2 and words[1].isdigit()} for path in sys.argv[1:])
for name in sorted(many):
    calls = (many[name] - few.get(name, 0)) / 10
    if calls and name != "total":
        print(f"{calls:9.1f} {name}")
END
}

say "System calls a model: three textures, two probes, two lightmaps"
write_models 10
write_models 20
echo "mark, all to change"
count_calls "$zek" mark
echo "mark, nothing to change"
count_calls "$zek" mark
echo "check, nothing wrong"
count_calls "$zek" check
