#!/usr/bin/env bash
# Builds ZEKTexComp and shows its main job: which flags it sets in a model, and what it prints.
#
#     Scripts/demo.sh          on a sample model, written for the purpose
#     Scripts/demo.sh MODEL    on a model of yours, which is rewritten in place
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."
. Scripts/packages.sh

if [ $# -gt 1 ]; then
    echo "usage: Scripts/demo.sh [MODEL]" >&2
    exit 2
fi

need_packages cmake g++ make

say "Building (in build/)"
cmake -S . -B build >build-demo.log 2>&1 \
    && cmake --build build --parallel --target ZEKTexComp WriteSample ShowFlags >>build-demo.log 2>&1 \
    || { cat build-demo.log; echo "The build failed: see above." >&2; exit 1; }
rm build-demo.log

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
if [ $# -eq 1 ]; then
    model=$(cd "$start" && realpath -- "$1")
    [ -f "$model" ] || { echo "There is no file $1: name a ZEK model." >&2; exit 1; }
else
    build/Examples/WriteSample "$scratch/sample"
    model=$scratch/sample/model.zek
    say "The sample folder"
    (cd "$scratch/sample" && find . -type f | sed 's,^\./,    ,' | sort)
fi
cp -- "$model" "$scratch/before"

say "What ZEKTexComp prints for $(basename -- "$model")"
status=0
build/ZEKTexComp "$model" | sed 's/^/    /' || status=$?
echo "    exit status $status"

if [ "$status" -eq 0 ]; then
    say "Its flags, before -> after"
    build/Examples/ShowFlags "$scratch/before" "$model" | sed 's/^/    /'
else
    say "The file is as it was: ZEKTexComp takes ZEK models of version 7 or later"
fi
exit "$status"
