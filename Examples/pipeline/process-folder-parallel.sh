#!/usr/bin/env bash
# Processes the models below a folder on several machines:
#
#     process-folder-parallel.sh FOLDER SSHLOGIN,...
#
# An SSHLOGIN is a machine for GNU parallel, such as worker1, 8/user@worker2 for eight at a time
# there, or : for this one. Every machine must see the folder, this script's own and ZEKTexComp
# under the same paths as this one, as on a shared file system, and must let ssh in without asking.
set -euo pipefail
process_model=$(dirname "$(realpath "$0")")/process-model.sh

find "$(realpath "$1")" -type f -name '*.zek' -print0 \
    | parallel --null --sshlogin "$2" --env ZEKTEXCOMP "$process_model" {}
