# Read by the check scripts, not run: a scratch folder that goes with the script, and how to fail.

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Says what is wrong and ends the script.
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# Runs a command, and shows what it printed only if it fails, which ends the script.
quietly() {
    "$@" >"$scratch/output" 2>&1 || { cat "$scratch/output" >&2; fail "failed: $*"; }
}
