#!/usr/bin/env bash
# Marks the models below a folder on several machines:
#
#     mark-on-machines.sh FOLDER WORK parallel SSHLOGIN,...     by GNU parallel over ssh
#     mark-on-machines.sh FOLDER WORK slurm [OPTION...]         as a Slurm job array
#
# FOLDER, WORK, which must not exist yet, and this script stand on a file system that all machines
# share, and each has zek in its PATH. An SSHLOGIN is a machine for parallel (worker1, 8/user@worker2
# for eight slices at a time, : for this one), an OPTION one of sbatch's. A slice is SLICE models,
# 1000 unless that variable says otherwise.
#
# WORK/results.jsonl then holds a line a model. The exit status is 0 when all models are marked, 1
# when some are not, each of which is named, and 2 when there was nothing to do.
set -uo pipefail
here=$(dirname "$(realpath "$0")")
folder=$(realpath -- "$1") && mkdir -- "$2" && work=$(realpath -- "$2") || exit 2
engine=$3
shift 3

# Do the slices of some numbers.
do_parallel() {
    printf '%s\n' "${missing[@]}" \
        | parallel --retries 3 --sshlogin "$machines" "$here/mark-slice.sh" "$work"
}
do_slurm() {
    sbatch --quiet --wait --array="$(IFS=, && echo "${missing[*]}")" --output="$work/%a.log" \
        "${options[@]}" "$here/mark-slice.sh" "$work"
}
machines=${1-}
options=("$@")

status=0
find -H "$folder" ! -type d -name '*.zek' -print0 >"$work/models" || status=1
[ -s "$work/models" ] || { echo "no models below $folder" >&2; exit 2; }
split -t '\0' -l "${SLICE:-1000}" -d -a 6 "$work/models" "$work/slice."

# A slice without a result was on a machine that died, and is done again: marking twice is harmless.
for _ in 1 2 3; do
    missing=()
    for slice in "$work"/slice.??????; do
        [ -e "$slice.jsonl" ] || missing+=("$((10#${slice##*.}))")
    done
    [ ${#missing[@]} -gt 0 ] || break
    "do_$engine"
done
"$here/summarise.sh" "$work" || status=1
exit "$status"
