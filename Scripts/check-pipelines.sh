#!/usr/bin/env bash
# Runs the recipes of Examples/pipeline, but for Slurm's, on models with unfriendly names.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
need_packages "${build_packages[@]}" git jq make openssh-client openssh-server parallel python3
. Scripts/pipeline-models.sh

quietly cmake --install build/test --prefix "$scratch/installed"

# Tells whether a word is among others.
is_among() {
    local word=$1 other
    shift
    for other; do
        [ "$word" != "$other" ] || return 0
    done
    return 1
}

# Checks what a recipe made that leaves the models alone and marks them below the folder $1. The
# names that follow are those that the build cannot name.
expect_marked_below() {
    local marked=$1 name
    shift
    expect_failures
    for name in "${good[@]}"; do
        expect_same "$sample/model.zek" "models/$name/model.zek"
        if is_among "$name" "$@"; then
            expect_output "${name##*[;\\$'\n']}/model.zek"
            [ ! -e "$marked/$name/model.zek" ] || fail_recipe "names $name after all"
        else
            expect_same "$scratch/reference/model.zek" "$marked/$name/model.zek"
        fi
    done
    # To be read is all that is asked of a model here, so that the third is none of the bad ones.
    expect_same "$scratch/reference/model.zek" "$marked/read-only/model.zek"
    expect_reason 0
    expect_reason 1
    [ ! -e "$marked/broken/model.zek" ] && [ ! -e "$marked/empty/model.zek" ] \
        || fail_recipe "made something of a bad model"
    printf '%-24s %d models done, %d bad and %d that it cannot name reported, status %d\n' \
        "$recipe" $((${#good[@]} + 1 - $#)) 2 $# "$status"
}

# Runs the recipe's build once more, and checks that it marks just the models of the named folders.
expect_rebuilt() {
    run build
    expect_status 0
    { grep -ao '[^/]*/model.zek: changed' output || true; } | sed 's,/.*,,' | LC_ALL=C sort >rebuilt
    printf '%s\n' "$@" | sed '/^$/d' | diff - rebuilt >&2 \
        || fail_recipe "marks the models after >, not those after <"
}

# Checks that the build has packed just the models of the named folders.
expect_packed() {
    printf './%s/model.zek\n' "$@" | diff - <(tar -tf "$(find . -name models.tar)" | LC_ALL=C sort) >&2 \
        || fail_recipe "packs the models after >, not those after <"
}

# Checks which models a build marks again, of six.
check_increments() {
    local i
    start "$recipe-increments"
    rm -r models
    mkdir models
    for i in 0 1 2 3 4; do cp -r "$sample" "models/$i"; done
    mkdir models/5
    cp "$sample/model.zek" models/5
    prepare
    expect_rebuilt 0 1 2 3 4 5
    expect_rebuilt
    touch models/0/tex_dxt/001.dds
    expect_rebuilt 0
    rm models/1/tex_dxt/000.dds
    expect_rebuilt 1
    echo compressed anew >models/2/tex_dxt/000.dds
    expect_rebuilt
    rm -r models/3/tex_dxt
    expect_rebuilt 3
    expect_rebuilt
    cp -r "$sample" models/-6
    expect_rebuilt -6
    touch models/4/model.zek
    expect_rebuilt 4
    mkdir models/5/tex_etc
    expect_rebuilt 5
    touch models/5/tex_etc/000.pvr
    expect_rebuilt 5
    expect_rebuilt
    expect_packed -6 0 1 2 3 4 5
    rm -r models/1
    expect_rebuilt
    expect_packed -6 0 2 3 4 5
    cp -r "$sample" models/closed
    chmod 0 models/closed
    run build
    chmod 755 models/closed
    [ "$status" -ne 0 ] || fail_recipe "has status 0"
    expect_output models/closed
    expect_rebuilt closed
    expect_packed -6 0 2 3 4 5 closed
    echo "  and then just those whose model changed, or beside which a variant came or went"
}

say "On one machine"
start mark
run zek mark models
expect_marked_in_place

say "In a build"
prepare() {
    run cmake -S "$pipeline/cmake" -B build -G Ninja -DMODELS="$PWD/models" \
        -DCMAKE_PREFIX_PATH="$scratch/installed"
    expect_status 0
}
build() { ninja -C build -k 0; }
start cmake
prepare
run build
expect_marked_below build/marked 'a;touch $PWNED' '#hash' $'new\nline' $'carriage\rreturn' \
    $'tab\tstop' '[brackets]' '[open' 'closed]' '<angles>' 'back\slash' 'a?b' 'a|touch $PWNED' \
    '{plain,axb}'
recipe=cmake
check_increments

# Builds afresh by a command that makes the file out and a depfile.
build_by() {
    echo "$1" >make-out.sh
    rm -rf build
    run cmake -S . -B build -G Ninja
    expect_status 0
    run ninja -C build
    expect_status 0
}
expect_work() {
    run ninja -C build
    ! grep -q "no work to do" output || fail_recipe "has nothing to do"
}
expect_no_work() {
    run ninja -C build
    expect_output "no work to do"
}

# Of the two kinds of depfiles that are out of date for ever, zek writes none.
start depfiles
cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(Depfiles LANGUAGES NONE)
add_custom_command(OUTPUT out COMMAND sh ../make-out.sh DEPFILE out.d)
add_custom_target(make-out ALL DEPENDS out)
END
build_by 'echo "out:" >out.d; touch out'
expect_work
build_by 'echo "out: $PWD/gone/" >out.d; touch out'
expect_work
mkdir models/bare
cp "$sample/model.zek" models/bare
build_by 'zek mark -o out --depfile out.d ../models/bare/model.zek'
expect_no_work
build_by 'zek mark -o out --depfile out.d ../models/plain/model.zek'
expect_no_work
rm -r models/plain/tex_dxt
expect_work
expect_no_work
echo "no depfile of zek is without inputs or names what is gone: that would never be up to date"

start cmake-in-place
cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.25)
project(Models LANGUAGES NONE)
find_package(ZEKTexComp REQUIRED)
zek_mark_models(TARGET mark FOLDER models)
END
run cmake -S . -B build -DCMAKE_PREFIX_PATH="$scratch/installed"
expect_status 0
run cmake --build build
expect_marked_in_place

# Checks that zek_mark_models refuses folders, with a reason.
expect_refused() {
    local reason=$1
    shift
    cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.25)
project(Models LANGUAGES NONE)
find_package(ZEKTexComp REQUIRED)
zek_mark_models(TARGET mark $*)
END
    run cmake -S . -B refused -G Ninja -DCMAKE_PREFIX_PATH="$scratch/installed"
    expect_status 1
    expect_output "$reason"
}
for name in 'a;b' 'm[1]' 'a?b' '*'; do
    cp -r models/plain "$name"
    expect_refused "cannot name the folder" FOLDER "\"$name\""
    expect_refused "cannot name the folder" FOLDER models OUTPUT "\"$name\""
done
expect_refused "must not stand below" FOLDER . OUTPUT marked
expect_refused "must not stand below" FOLDER models OUTPUT "$PWD/models"
echo "  and folders refused that a build cannot name, and copies below the models"

prepare() { :; }
build() { make -f "$pipeline/make/Makefile" -k -j2 MODELS=models/; }
start make
run build
expect_marked_below marked 'with blanks' '$HOME $(touch $PWNED)' '`touch $PWNED`' '"double"' "it's" \
    'a;touch $PWNED' 'a&touch $PWNED' '#hash' '100%' 'C:colon' $'new\nline' $'carriage\rreturn' \
    $'tab\tstop' '[brackets]' '[open' 'closed]' '<angles>' 'back\slash' 'star*' 'a?b' 'caret^' \
    'a|touch $PWNED' '{plain,axb}' '!1'
for name in models models/marked; do
    run make -f "$pipeline/make/Makefile" MODELS=models MARKED=$name
    expect_status 2
    expect_output "must not stand below"
done
recipe=make
check_increments

say "Where there are no models"
start empty
rm -r models/*
run zek mark models
expect_status 2
run cmake -S "$pipeline/cmake" -B build -G Ninja -DMODELS="$PWD/models" \
    -DCMAKE_PREFIX_PATH="$scratch/installed"
expect_status 1
expect_output "no models below"
run build
expect_status 2
expect_output "no models below"
mark_on_machines work parallel :
expect_status 2
expect_output "no models below"
mark_on_machines work batch
expect_status 2
expect_output "usage:"
echo "each says so, and fails"

say "A build of 1,000 models with nothing to do"
start null-build
rm -r models
mkdir models
for i in {001..999} 1000; do cp -r "$sample" "models/$i"; done
run cmake -S "$pipeline/cmake" -B build -G Ninja -DMODELS="$PWD/models" \
    -DCMAKE_PREFIX_PATH="$scratch/installed"
run ninja -C build
expect_status 0
python3 - <<'END' || fail "A build with nothing to do takes too long."
import statistics, subprocess, time
def seconds(*options):
    start = time.perf_counter()
    printed = subprocess.run(["ninja", "-C", "build", *options], capture_output=True, check=True).stdout
    assert b"no work to do" in printed, printed
    return time.perf_counter() - start
pairs = [(seconds(), seconds("-n")) for _ in range(15)]
real, dry = map(statistics.median, zip(*pairs))
print(f"ninja {real * 1000:.0f} ms, ninja -n {dry * 1000:.0f} ms (medians of 15)")
raise SystemExit(real > 2 * dry)
END

say "As a gate"
start gate
cp -r "$scratch/reference" models/marked
mkdir "$scratch/without-jq"
ln -s "$(command -v zek)" "$(command -v tee)" "$scratch/without-jq"
run "$pipeline/gate/check-models.sh" models findings.jsonl
expect_status 1
expect_failures
for text in plain {broken,empty,read-only}/model.zek 'new?line' base64; do expect_output "$text"; done
[ "$(wc -l <findings.jsonl)" -eq $((${#good[@]} + ${#bad[@]} + 1)) ] || fail_recipe "leaves models out"
run "$pipeline/gate/check-models.sh" models/marked /dev/full
expect_status 1
run env PATH="$scratch/without-jq" "$(command -v bash)" "$pipeline/gate/check-models.sh" models/marked \
    /dev/null
expect_status 127
cp -r models/ ./-models
run "$pipeline/gate/check-models.sh" -models -findings
expect_status 1
[ "$(wc -l <./-findings)" -eq "$(wc -l <findings.jsonl)" ] || fail_recipe "leaves models out"
rm models
mv linked-models models
git init -q .
git config user.name Check
git config user.email check@zektexcomp.invalid
cp "$pipeline/gate/pre-commit" .git/hooks/
rm -r ./-*
mv models later
touch without-models
git add without-models
run git commit -qm "No models yet"
expect_status 0
mv later models
run zek mark models
git add models
run git commit -qm "Models that are right, and bad ones between them"
expect_status 1
expect_failures
for name in "${bad[@]}"; do expect_output "models/$name/model.zek: error"; done
rm -r models/{broken,empty,read-only}
run "$pipeline/gate/check-models.sh" models findings.jsonl
expect_status 0
git add models
run git commit -qm "Models that are right"
expect_status 0
touch models/plain/tex_dxt/001.dds
git add models
run git commit -qm "A variant that the model does not know"
expect_status 1
expect_output "models/plain/model.zek: error"
zek mark models >/dev/null
git add models
run git commit -qm "A variant that the model knows"
expect_status 0
echo "stale models stop the build and the commit; marked ones do not"

# Starts an ssh server for this script alone, on the loopback interface, with keys of its own. Two
# names of it are two machines to GNU parallel; a third does not answer.
start_machines() {
    local folder=$scratch/ssh port
    mkdir -m 700 "$folder"
    mkdir -p /run/sshd
    ssh-keygen -q -t ed25519 -N '' -f "$folder/host-key"
    ssh-keygen -q -t ed25519 -N '' -f "$folder/key"
    port=$(python3 -c 'import socket; print(socket.create_server(("127.0.0.1", 0)).getsockname()[1])')
    cat >"$folder/server" <<END
ListenAddress 127.0.0.1
Port $port
HostKey $folder/host-key
PidFile none
AuthorizedKeysFile $folder/key.pub
StrictModes no
UsePAM no
MaxStartups 100
SetEnv PATH=$scratch/bin:$PATH PWNED=$PWNED
END
    cat >"$folder/client" <<END
Host near far
    Port $port
Host dead
    Port 1
Host *
    HostName 127.0.0.1
    IdentityFile $folder/key
    IdentitiesOnly yes
    UserKnownHostsFile $folder/known-hosts
    StrictHostKeyChecking no
    BatchMode yes
    LogLevel ERROR
END
    /usr/sbin/sshd -D -f "$folder/server" 2>"$folder/log" &
    server=$!
    trap 'kill "$server"; rm -rf "$scratch"' EXIT
    export PARALLEL_SSH="ssh -F $folder/client"
    timeout 20 sh -c "until $PARALLEL_SSH near true 2>/dev/null; do sleep 0.2; done" \
        || fail "The ssh server does not answer:" "$(cat "$folder/log")"
}

say "On several machines, by GNU parallel over ssh"
start_machines
start parallel
write_mortal_zek
SLICE=2 mark_on_machines "$work" parallel 1/near,1/far,1/dead
expect_marked_in_place
expect_worker_died
model_count=$((${#good[@]} + ${#bad[@]}))
mark_on_machines again parallel 1/dead
expect_status 1
expect_output "$model_count models: $model_count not done"
echo "  and with no machine that answers, status 1 and all models not done"

printf '\nThe pipelines work.\n'
