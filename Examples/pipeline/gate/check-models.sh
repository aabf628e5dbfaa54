#!/usr/bin/env bash
# Checks models on a build server, with the findings in its log and, for programs, in a file:
#
#     check-models.sh FOLDER FINDINGS.jsonl
#
# The exit status is zek's, which is 1 when a model has an error, such as a flag that is stale, or that
# of what did not show or keep the findings.
set -uo pipefail
zek check --json -- "$1" | tee -- "$2" | jq -r '
    def text: .text // "base64 " + .bytes | gsub("[[:cntrl:]]"; "?");
    (.model | text) as $model
    | .findings[]
    | "\($model): \(.severity): \(.section) \(.index // "") \(.name | text): \(.message | text)",
        "    \(.code): \(.remedy)"'
