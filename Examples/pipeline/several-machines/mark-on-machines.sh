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
# when some are not, each of which is named, and 2 when there was nothing that could be done.
set -uo pipefail
case ${3-} in
    parallel | slurm) engine=$3 ;;
    *) echo "usage: ${0##*/} FOLDER WORK parallel|slurm ..." >&2 && exit 2 ;;
esac
here=$(dirname "$(realpath "$0")")
folder=$(realpath -- "$1") && work=$(realpath -m -- "$2") || exit 2
if [[ $engine == slurm && $work == *\\* ]]; then
    echo "Slurm takes no backslash in a path: $work" >&2 && exit 2
fi
mkdir -- "$work" || exit 2
shift 3

# Do the slices of some numbers. Parallel quotes what it puts in for {1}, and nothing else.
do_parallel() {
    printf '%s\0' "${missing[@]}" \
        | parallel --null --retries 3 --sshlogin "$machines" exec {1} {2} {3} \
            ::: "$here/mark-slice.sh" ::: "$work" :::: -
}
do_slurm() {
    sbatch --quiet --wait --array="$(IFS=, && echo "${missing[*]}")" \
        --output="${work//%/%%}/%a.log" "${options[@]}" "$here/mark-slice.sh" "$work"
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
