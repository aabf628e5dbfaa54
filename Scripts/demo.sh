#!/usr/bin/env bash
# Builds ZEKTexComp and shows its main job: which flags it sets in a model, and what it prints.
#
#     Scripts/demo.sh          on a sample model, written for the purpose
#     Scripts/demo.sh MODEL    on a model of yours, which is rewritten in place
set -euo pipefail

# Says why there is nothing to show and ends the script.
refuse() {
    echo "$*" >&2
    exit 1
}

if [ $# -gt 1 ]; then
    echo "usage: Scripts/demo.sh [MODEL]" >&2
    exit 2
fi
if [ $# -eq 1 ]; then
    [ ! -d "$1" ] || refuse "$1 is a folder: name a ZEK model."
    [ -f "$1" ] || refuse "There is no regular file $1: name a ZEK model."
    [ -r "$1" ] || refuse "$1 cannot be read."
    folder=$(cd -- "$(dirname -- "$1")" && pwd)
    name=$(basename -- "$1")
fi
cd "$(dirname "$0")/.."
. Scripts/packages.sh
programs=$PWD/build

need_packages cmake g++ make

say "Building (in build/)"
cmake -S . -B build >build-demo.log 2>&1 \
    && cmake --build build --parallel --target ZEKTexComp WriteSample ShowFlags >>build-demo.log 2>&1 \
    || { cat build-demo.log; echo "The build failed: see above." >&2; exit 1; }
rm build-demo.log

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
if [ $# -eq 0 ]; then
    "$programs/Examples/WriteSample" "$scratch/sample"
    folder=$scratch/sample
    name=model.zek
    say "The sample folder"
    (cd "$folder" && find . -type f | sed 's,^\./,    ,' | sort)
fi
# In the model's own folder, so that no name on the way there is misread as Shift_JIS.
cd -- "$folder"
cp -- "$name" "$scratch/before"

say "What ZEKTexComp prints for $name"
status=0
"$programs/ZEKTexComp" "$name" >"$scratch/output" || status=$?
sed 's/^/    /' "$scratch/output"
echo "    exit status $status"

if [ "$status" -eq 0 ]; then
    say "Its flags, before -> after"
    "$programs/Examples/ShowFlags" "$scratch/before" "$name" | sed 's/^/    /'
elif ! grep -q '^Exist' "$scratch/output"; then
    say "The file is as it was, since ZEKTexComp does not take it"
    "$programs/Examples/ShowFlags" "$name" || true
elif cmp -s -- "$name" "$scratch/before"; then
    say "The file is as it was: it could not be written"
else
    trap - EXIT
    say "The file is cut short: it could not be written whole. $scratch/before is as it was"
fi
exit "$status"
