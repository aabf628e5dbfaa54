# Read by the scripts that check Examples/pipeline, not run: a folder of models with unfriendly names
# for the recipes, and what has to become of them.

# Root may read and write what is for nobody, unless it gives up the right to.
if [ "$(id -u)" -eq 0 ] && [ -z "${ZEK_IS_WITHOUT_OVERRIDE-}" ]; then
    ZEK_IS_WITHOUT_OVERRIDE=1 exec setpriv --bounding-set=-dac_override,-dac_read_search "$PWD/Scripts/${0##*/}"
fi

. Scripts/checking.sh
pipeline=$PWD/Examples/pipeline
export PATH="$PWD/build/test:$PATH"

# Nothing of these is to be executed: a command that is would write $PWNED.
export PWNED=$scratch/PWNED
good=('plain' 'with blanks' '$HOME $(touch $PWNED)' '`touch $PWNED`' '"double"' "it's" 'a;touch $PWNED'
    'a&touch $PWNED' '#hash' '100%' 'C:colon' $'new\nline' '-dash' '日本語' $'\xff\xfe' 'link'
    $'carriage\rreturn' $'tab\tstop' '[brackets]' '[open' 'closed]' '<angles>' 'back\slash' 'star*'
    'a?b' 'axb' 'caret^' 'a|touch $PWNED' '{plain,axb}' '~tilde' '!1')
bad=('broken' 'empty' 'read-only')
# As the reasons are given, in the order of the bad ones.
reasons=('text without an end' 'the file is empty' 'Permission denied')

say "Building (in build/test) and writing models"
quietly cmake --preset test
quietly cmake --build build/test --target ZEKTexComp WriteSample Source/all
sample=$scratch/sample
build/test/Examples/WriteSample "$sample"
mkdir "$scratch/models"
for name in "${good[@]}" "${bad[@]}"; do
    cp -r "$sample" "$scratch/models/$name"
done
mv "$scratch/models/link/model.zek" "$scratch/models/link/linked"
ln -s linked "$scratch/models/link/model.zek"
truncate -s 20 "$scratch/models/broken/model.zek"
truncate -s 0 "$scratch/models/empty/model.zek"
chmod a-w "$scratch/models/read-only/model.zek"
# What they have to become, by the other program.
cp -r "$sample" "$scratch/reference"
(cd "$scratch/reference" && quietly ZEKTexComp model.zek)
! cmp -s "$sample/model.zek" "$scratch/reference/model.zek" || fail "The sample needs no marking."

# Starts a recipe afresh: in a folder of its own, with models behind a link.
start() {
    recipe=$1
    mkdir "$scratch/$recipe"
    cd "$scratch/$recipe"
    cp -rp "$scratch/models" linked-models
    ln -s linked-models models
}

# Runs a recipe's command and sets status and the file output.
run() {
    status=0
    "$@" >output 2>&1 || status=$?
}

# Ends the script, with what the recipe printed.
fail_recipe() {
    tail -n 50 output >&2
    fail "$recipe: $*"
}

# Checks a file against another.
expect_same() { cmp -s -- "$1" "$2" || fail_recipe "$2 is not what it should be"; }

expect_output() { grep -aqF -- "$1" output || fail_recipe "does not say: $1"; }

expect_status() { [ "$status" -eq "$1" ] || fail_recipe "has status $status, not $1"; }

# Checks what must hold whatever the recipe: a status that tells of failures, none of the names
# executed, and models that failed as they were.
expect_failures() {
    local i
    [ "$status" -ne 0 ] || fail_recipe "has status 0"
    [ ! -e "$PWNED" ] || fail_recipe "executed a name"
    for ((i = 0; i < ${#bad[@]}; ++i)); do
        expect_same "$scratch/models/${bad[i]}/model.zek" "models/${bad[i]}/model.zek"
    done
}

# Checks that a bad model, of which the number is given, is named with its reason.
expect_reason() {
    grep -a "${bad[$1]}/model.zek" output | grep -aqF "${reasons[$1]}" \
        || fail_recipe "does not say that ${bad[$1]} failed: ${reasons[$1]}"
}

# Checks what a recipe made that marks in place.
expect_marked_in_place() {
    local i name
    expect_failures
    for name in "${good[@]}"; do
        expect_same "$scratch/reference/model.zek" "models/$name/model.zek"
    done
    for i in "${!bad[@]}"; do
        expect_reason "$i"
    done
    printf '%-24s %d models done, %d named with the reason, status %d\n' \
        "$recipe" ${#good[@]} ${#bad[@]} "$status"
}

# Where several machines work, and where their scripts stand. What shells, parallel and Slurm give a
# meaning of their own is in both names.
work='-work $(touch $PWNED) `touch $PWNED` {= `touch $ENV{PWNED}` =} {} %a "it'"'"'s";&'
mark_on_machines() {
    local scripts="$PWD/scripts${work#-work}"
    [ -d "$scripts" ] || cp -r "$pipeline/several-machines" "$scripts"
    run "$scripts/mark-on-machines.sh" models "$@"
}

# Puts before zek a program of its name that dies in the middle of its first slice, and of its second
# together with the script that called it.
write_mortal_zek() {
    mkdir "$scratch/bin"
    cat >"$scratch/bin/zek" <<END
#!/bin/sh
die_in_the_middle() {
    "$(command -v zek)" "\$@" | head -n 1
    kill -KILL \$victim
}
victim=\$\$
mkdir "$scratch/died-alone" 2>/dev/null && die_in_the_middle "\$@"
victim="\$PPID \$\$"
mkdir "$scratch/died-with-script" 2>/dev/null && die_in_the_middle "\$@"
exec "$(command -v zek)" "\$@"
END
    chmod +x "$scratch/bin/zek"
}

# Checks that both died, and that the results tell of every model once nevertheless.
expect_worker_died() {
    [ -d "$scratch/died-alone" ] && [ -d "$scratch/died-with-script" ] \
        || fail_recipe "no worker died"
    [ "$(jq -c .model "./$work/results.jsonl" | sort -u | wc -l)" -eq $((${#good[@]} + ${#bad[@]})) ] \
        && [ "$(wc -l <"$work/results.jsonl")" -eq $((${#good[@]} + ${#bad[@]})) ] \
        || fail_recipe "its results are not of every model once"
    echo "  although two workers died on the way, whose slices were done again"
}
