#!/usr/bin/env bash
# Builds zek and ZEKTexComp and shows what they do.
#
#     Scripts/demo.sh          with a sample model, written for the purpose
#     Scripts/demo.sh PATH     with a model of yours, or all below a folder; their flags are set
set -euo pipefail

if [ $# -gt 1 ]; then
    echo "usage: Scripts/demo.sh [PATH]" >&2
    exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/Scripts/packages.sh"
. "$root/Scripts/checking.sh"

# Shows a command and what it prints. Its exit status is in status, and 2 ends the script: then there
# is nothing to work on.
show() {
    say "$*"
    status=0
    "$@" || status=$?
    echo "exit status $status"
    [ "$status" -ne 2 ] || exit 2
}

need_packages cmake g++ make "${zek_packages[@]}"

say "Building (in build/)"
quietly cmake -S "$root" -B "$root/build" -DZEK_BUILD_TOOL=ON
quietly cmake --build "$root/build" --parallel "$(nproc)" --target zek ZEKTexComp WriteSample
PATH=$root/build:$root/build/Examples:$PATH

path=${1-sample}
if [ $# -eq 0 ]; then
    cd "$scratch"
    WriteSample sample
    cp -r sample copy
    say "A sample: a model, and compressed variants of its textures"
    find sample -type f | sort
fi

show zek check --max-findings 5 -- "$path"
show zek mark -n -- "$path"
show zek mark -- "$path"
show zek check --max-findings 5 -- "$path"

if [ $# -eq 0 ]; then
    say "ZEKTexComp does that for one model, in whose folder it is run. A copy of the sample:"
    (cd copy && ZEKTexComp model.zek)
    cmp copy/model.zek sample/model.zek || fail "They have made different models."
    echo "It has made the same model as zek, byte for byte."
fi

checked=$status
report=$root/build/report.html
show zek report -o "$report" -- "$path"

if [ "$checked" -eq 0 ]; then
    printf '\nEvery flag is true: zek check finds no error any more.\n'
else
    printf '\nNot all is well: the errors above say what to do.\n'
fi
printf 'The report lies in %s: open it in a browser.\n' "$report"
exit "$checked"
