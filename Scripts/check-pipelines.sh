#!/usr/bin/env bash
# Runs everything in Examples/pipeline on 200 models and compares the results with those of a plain
# serial run.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh
pipeline=$PWD/Examples/pipeline

need_packages "${test_packages[@]}" make parallel

say "Building (in build/test)"
quietly cmake --preset test
quietly cmake --build --preset test --target ZEKTexComp WriteModels
build/test/Tests/Packaging/WriteModels "$scratch/original"

# A ZEKTexComp that also takes down which models it is run on.
real=$PWD/build/test/ZEKTexComp
mkdir "$scratch/bin"
cat >"$scratch/bin/ZEKTexComp" <<END
#!/bin/sh
echo "\$PWD/\$1" >>$scratch/log
exec "$real" "\$1"
END
chmod +x "$scratch/bin/ZEKTexComp"
export ZEKTEXCOMP=$scratch/bin/ZEKTexComp

# Runs ZEKTexComp on every model below a folder, one after the other, and on all of them.
run_serially() {
    find "$1" -name '*.zek' | while read -r model; do
        (cd "$(dirname "$model")" && "$real" "$(basename "$model")" >/dev/null) || true
    done
}

# Runs the way under test on the folder models and sets status.
run() {
    : >"$scratch/log"
    status=0
    (cd "$scratch/$way" && "run_$way") >"$scratch/output" 2>&1 || status=$?
}

run_cmake_ninja() {
    cmake -S "$pipeline/cmake" -B build -G Ninja -DZEKTEXCOMP="$ZEKTEXCOMP" \
        -DMODELS_FOLDER="$PWD/models" && cmake --build build -- -k 0
}
run_cmake_make() {
    cmake -S "$pipeline/cmake" -B build -G "Unix Makefiles" -DZEKTEXCOMP="$ZEKTEXCOMP" \
        -DMODELS_FOLDER="$PWD/models" && cmake --build build --parallel 2 -- -k
}
run_make() { make -f "$pipeline/make/Makefile" MODELS_FOLDER=models -j2 -k; }
run_ninja() { "$pipeline/ninja/write-build.sh" models >build.ninja && ninja -k 0; }
run_xargs() { "$pipeline/process-folder-xargs.sh" models 2; }
run_parallel() { "$pipeline/process-folder-parallel.sh" models "$machines"; }

# Checks which models ZEKTexComp was run on: those named, relative to the folder models.
expect_processed() {
    printf '%s\n' "$@" | sed "/^\$/d; s,^,$scratch/$way/models/," | sort >"$scratch/expected"
    sort "$scratch/log" | diff "$scratch/expected" - >"$scratch/difference" \
        || fail "$way: ran ZEKTexComp on other models than it should (>):" "$(cat "$scratch/difference")"
}

expect_status_zero() { [ "$status" -eq 0 ] || fail "$way: exit status $status:" "$(cat "$scratch/output")"; }

# Checks that the models are as a serial run leaves them.
expect_same_as() {
    diff -rq --exclude='*.stamp' "$1" "$scratch/$way/models" >"$scratch/difference" \
        || fail "$way: differs from the serial run:" "$(cat "$scratch/difference")"
}

# Prints the time and the place on the disk of each model, stamp, variant and archive.
list_files() {
    find "$scratch/$way/models" "${archive[@]}" -type f -printf '%p %T@ %i\n' | sort
}

# Makes the same changes below a folder of models: a variant comes, one goes, a model is replaced by
# an older file, and two come that other models of the same folder see as well.
change() {
    mkdir -p "$1/own/007/tex_etc"
    touch "$1/own/007/tex_etc/000.pvr"
    rm "$1/own/008/tex_dxt/000.dds"
    cp -p "$scratch/original/own/021/model.zek" "$1/own/009/model.zek"
    touch -d 2001-01-01 "$1/own/009/model.zek"
    touch "$1/shared/3/tex_reflection_cube_dxt\\0\\reflection_cube_0.dds"
}
changed=(own/007/model.zek own/008/model.zek own/009/model.zek
    shared/3/model{0,1,2,3}.zek)

# Spoils three models of different folders, one of which shares its folder with others.
bad=(own/000/model.zek own/100/model.zek shared/5/model2.zek)
spoil() { for model in "${bad[@]}"; do truncate -s 20 "$1/$model"; done; }

check_way() {
    way=$1
    mkdir "$scratch/$way"
    cp -rp "$scratch/original" "$scratch/$way/models"

    run
    expect_status_zero
    expect_processed "${all[@]}"
    expect_same_as "$scratch/serial"

    archive=()
    case $way in
    cmake_*) archive=("$scratch/$way/build/models.tar") ;;
    make | ninja) archive=("$scratch/$way/models.tar") ;;
    esac
    list_files >"$scratch/before"
    run
    expect_status_zero
    expect_processed
    list_files | cmp -s "$scratch/before" - || fail "$way: the second run wrote files"

    change "$scratch/$way/models"
    run
    expect_status_zero
    expect_processed "${changed[@]}"
    expect_same_as "$scratch/serial-changed"
    [ ${#archive[@]} -eq 0 ] || [ "${archive[0]}" -nt "$scratch/before" ] \
        || fail "$way: the archive was not made again"

    rm -rf "$scratch/$way/models"
    cp -rp "$scratch/original" "$scratch/$way/models"
    spoil "$scratch/$way/models"
    run
    [ "$status" -ne 0 ] || fail "$way: a bad model did not fail the batch"
    first_status=$status
    expect_processed "${all[@]}"
    expect_same_as "$scratch/serial-bad"
    run
    [ "$status" -ne 0 ] || fail "$way: a bad model did not fail the second batch"
    expect_processed "${bad[@]}"

    for model in "${bad[@]}"; do
        cp "$scratch/original/$model" "$scratch/$way/models/$model"
    done
    run
    expect_status_zero
    expect_same_as "$scratch/serial"
    printf '%-11s as the serial run; then nothing to do; then %d of %d; bad models: exit status %d\n' \
        "$way" "${#changed[@]}" "${#all[@]}" "$first_status"
}

# Starts an ssh server for this script alone, on the loopback interface, with keys of its own. Two
# names of it are two machines to GNU parallel. Without a server at hand, or where it may not start,
# parallel runs the jobs here by itself.
start_machines() {
    local program=${SSHD:-/usr/sbin/sshd} folder=$scratch/ssh port
    machines=2/:
    [ -x "$program" ] && command -v ssh >/dev/null || return 0
    mkdir -m 700 "$folder"
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
END
    cat >"$folder/client" <<END
Host near far
    HostName 127.0.0.1
    Port $port
    IdentityFile $folder/key
    IdentitiesOnly yes
    UserKnownHostsFile $folder/known-hosts
    StrictHostKeyChecking no
    BatchMode yes
    LogLevel ERROR
    ControlMaster auto
    ControlPath $folder/%n
    ControlPersist 10
END
    "$program" -D -f "$folder/server" 2>"$folder/log" &
    server=$!
    export PARALLEL_SSH="ssh -F $folder/client"
    for _ in 1 2 3 4 5 6 7 8 9 10; do
        if $PARALLEL_SSH near true 2>/dev/null; then
            machines=1/near,1/far
            return 0
        fi
        kill -0 "$server" 2>/dev/null || break
        sleep 0.2
    done
    kill "$server" 2>/dev/null || true
    server=
}

say "The serial run"
mapfile -t all < <(cd "$scratch/original" && find . -name '*.zek' | sed 's,^\./,,')
cp -rp "$scratch/original" "$scratch/serial"
run_serially "$scratch/serial"
cp -rp "$scratch/serial" "$scratch/serial-changed"
change "$scratch/serial-changed"
run_serially "$scratch/serial-changed"
cp -rp "$scratch/original" "$scratch/serial-bad"
spoil "$scratch/serial-bad"
run_serially "$scratch/serial-bad"
differing=$({ diff -rq "$scratch/original" "$scratch/serial" || true; } | wc -l)
[ "${#all[@]}" -eq 200 ] || fail "There are ${#all[@]} models."
[ "$differing" -gt 0 ] || fail "The serial run changed nothing."
echo "${#all[@]} models, $differing of which it changed"

say "The same in parallel"
server=
trap '[ -z "$server" ] || kill "$server"; rm -rf "$scratch"' EXIT
start_machines
for way in cmake_ninja cmake_make make ninja xargs parallel; do
    check_way "$way"
done
if [ -n "$server" ]; then
    echo "GNU parallel ran on two names of an ssh server on the loopback interface."
else
    echo "GNU parallel ran without ssh (there is no ssh server at hand): --sshlogin $machines"
fi

printf '\nThe pipelines work.\n'
