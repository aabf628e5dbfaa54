#!/bin/sh
# Marks the models of a slice, for mark-on-machines.sh:
#
#     mark-slice.sh WORK [NUMBER]
#
# A job of a Slurm array has its number from there. The result, a line a model, is there as a whole
# or not at all.
slice=$1/slice.$(printf %06d "${2-$SLURM_ARRAY_TASK_ID}")
result=$slice.$(hostname).$$
zek mark --json --files0-from "$slice" >"$result"
# Of zek's own status only that of Ctrl-C counts: the result tells of a model that failed.
if [ $? -eq 130 ] || [ "$(tr -cd '\0' <"$slice" | wc -c)" -ne "$(wc -l <"$result")" ]; then
    rm -f "$result"
    exit 1
fi
mv "$result" "$slice.jsonl"
