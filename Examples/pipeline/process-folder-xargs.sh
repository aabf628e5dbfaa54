#!/usr/bin/env bash
# Processes the models below a folder, several at a time:
#
#     process-folder-xargs.sh FOLDER [JOBS]
#
# JOBS is the number of processors unless given.
set -euo pipefail
process_model=$(dirname "$(realpath "$0")")/process-model.sh

find "$1" -type f -name '*.zek' -print0 \
    | xargs -0 --no-run-if-empty -n 1 -P "${2:-$(nproc)}" "$process_model"
