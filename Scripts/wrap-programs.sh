# Read by the other scripts, not run: finding the programs that were built, and running them under a
# launcher, another program such as valgrind or an emulator.

# Prints the programs in a folder of a build that have not been wrapped.
list_programs() {
    find "$1" -type f -perm -u+x ! -path '*/CMakeFiles/*' ! -name '*.wrapped' \
        -exec sh -c 'head -c 4 "$1" | grep -q ELF' sh {} \; -print
}

# Puts in the place of each program in a folder a script that runs it with a launcher, given with its
# options. Tests that start programs of the build need not know.
wrap_programs() {
    local folder=$1 launcher=$2 program
    list_programs "$folder" | while read -r program; do mv "$program" "$program.wrapped"; done
    find "$folder" -name '*.wrapped' | while read -r program; do
        printf '#!/bin/sh\nexec %s "%s" "$@"\n' "$launcher" "$program" >"${program%.wrapped}"
        chmod +x "${program%.wrapped}"
    done
}

# What says nothing there: tests by pattern, programs by name, and why.
excluded_tests=(
    '*SystemCallTest.*                     the launcher would be traced'
    'MemoryLimitTest.*                     the launcher would be limited'
    'DiskFaultTest.AFileSizeLimitIsAn*     the launcher would be limited'
    'HostileProgramTest.*                  the memory of the launcher would be measured'
    'ZekMemoryTest.*                       the memory of the launcher would be measured'
    '*NastyProgramTest.*                   the memory of the launcher would be measured'
    'HardeningTest.*                       this is not the build that is delivered'
)
excluded_programs=(
    'LibrarySymbols                        this is not the build that is delivered'
)

# Prints from lines of a pattern and a reason just the patterns, with a separator between them.
join_patterns() {
    local separator=$1
    shift
    printf '%s\n' "$@" | cut -d ' ' -f 1 | paste -sd "$separator"
}

# Prints what is left out.
say_excluded() {
    say "Left out"
    printf '%s\n' "${excluded_tests[@]}" "${excluded_programs[@]}"
}

# Runs the tests of a build folder but for those; takes options of ctest.
test_wrapped() {
    local folder=$1
    shift
    GTEST_FILTER="-$(join_patterns : "${excluded_tests[@]}")" ctest --test-dir "$folder" \
        --parallel "$(nproc)" --output-on-failure \
        --exclude-regex "$(join_patterns '|' "${excluded_programs[@]}")" "$@"
}
