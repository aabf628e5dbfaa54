#!/usr/bin/env bash
# Puts the results of mark-on-machines.sh together in WORK/results.jsonl and says what came of it:
#
#     summarise.sh WORK
#
# The exit status is 1 when a model failed or was not done.
set -euo pipefail
cd -- "$1"
find . -name 'slice.*.jsonl' | sort | xargs -r cat >results.jsonl
failed=$(jq -r 'def text: .text // "base64 " + .bytes | gsub("[[:cntrl:]]"; "?");
    select(.outcome == "failed") | "failed: \(.model | text): \(.error | text)"' results.jsonl)
models=$(tr -cd '\0' <models | wc -c)
lost=$((models - $(wc -l <results.jsonl)))

printf '%d models: %d not done' "$models" "$lost"
jq -r .outcome results.jsonl | sort | uniq -c | while read -r count outcome; do
    printf ', %d %s' "$count" "$outcome"
done
printf '\n%s' "${failed:+$failed$'\n'}"
[ "$lost" -eq 0 ] && [ -z "$failed" ]
