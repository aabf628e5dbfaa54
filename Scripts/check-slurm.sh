#!/usr/bin/env bash
# Runs the recipe of Examples/pipeline for Slurm on models with unfriendly names, on a cluster of this
# machine alone that the script starts for itself.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
need_packages "${build_packages[@]}" jq munge python3 slurm-wlm
[ "$(id -u)" -eq 0 ] || { echo "Slurm starts jobs for root alone: run this as root."; exit 1; }
. Scripts/pipeline-models.sh

free_port() { python3 -c 'import socket; print(socket.create_server(("", 0)).getsockname()[1])'; }

# Starts what a cluster takes, with ports, keys and state of its own.
start_cluster() {
    local folder=$scratch/cluster
    mkdir -m 755 "$folder" "$folder/munge" "$folder/state" "$folder/spool"
    head -c 1024 /dev/urandom >"$folder/munge.key"
    chmod 600 "$folder/munge.key"
    cat >"$folder/slurm.conf" <<END
ClusterName=check
SlurmctldHost=$(hostname -s)(127.0.0.1)
SlurmctldPort=$(free_port)
SlurmdPort=$(free_port)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$folder/munge/socket
StateSaveLocation=$folder/state
SlurmdSpoolDir=$folder/spool
SlurmctldPidFile=$folder/slurmctld.pid
SlurmdPidFile=$folder/slurmd.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
MpiDefault=none
ReturnToService=2
NodeName=$(hostname -s) NodeAddr=127.0.0.1 CPUs=$(nproc) State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES State=UP
END
    export SLURM_CONF=$folder/slurm.conf
    chmod 755 "$scratch"
    munged --force --foreground --num-threads=2 --socket="$folder/munge/socket" \
        --key-file="$folder/munge.key" --pid-file="$folder/munged.pid" \
        --seed-file="$folder/munge.seed" --log-file="$folder/munged.log" 2>"$folder/munged.err" &
    servers=($!)
    timeout 20 sh -c "until [ -S '$folder/munge/socket' ]; do sleep 0.2; done"
    slurmctld -D >"$folder/slurmctld.log" 2>&1 &
    servers+=($!)
    slurmd -D >"$folder/slurmd.log" 2>&1 &
    servers+=($!)
    timeout 60 sh -c 'until sinfo -h -o %t 2>/dev/null | grep -q idle; do sleep 0.5; done' \
        || fail "The cluster does not start:" "$(tail "$folder"/*.log "$folder"/*.err)"
}

say "On several machines, as a Slurm job array"
servers=()
trap 'kill "${servers[@]}"; wait "${servers[@]}" 2>/dev/null; rm -rf "$scratch"' EXIT
start_cluster
start slurm
write_mortal_zek
export PATH="$scratch/bin:$PATH"
mark_on_machines 'back\slash' slurm
expect_status 2
expect_output "no backslash"
SLICE=2 mark_on_machines "$work" slurm --time=5
expect_marked_in_place
expect_worker_died

printf '\nThe pipeline works.\n'
