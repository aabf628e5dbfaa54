# Read by the scripts that run other scripts, not run: each is one check, which counts as one in the
# summary, and the next one runs whatever it says.

names=()
results=()
seconds=()
failed=0

# Runs a command as the check of a name.
check() {
    local name=$1
    shift
    printf '\n######## %s: %s\n' "$name" "$*"
    local start=$SECONDS result=passed
    "$@" </dev/null || { result=FAILED; failed=$((failed + 1)); }
    names+=("$name")
    results+=("$result")
    seconds+=($((SECONDS - start)))
}

# Prints what came of the checks, and fails if one has failed.
summarise() {
    printf '\n######## Summary\n'
    for i in "${!names[@]}"; do
        printf '%-24s %-8s %5d s\n' "${names[$i]}" "${results[$i]}" "${seconds[$i]}"
    done
    printf '\n%d passed, %d failed\n' $((${#names[@]} - failed)) "$failed"
    [ "$failed" -eq 0 ]
}
