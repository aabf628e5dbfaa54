# Read by the other scripts, not run: running what was built under another program.

# Puts in the place of each program in a folder a script that runs it with a launcher, such as
# "valgrind -q". Tests that start programs of the build need not know.
wrap_programs() {
    local folder=$1 launcher=$2 program
    find "$folder" -type f -perm -u+x ! -path '*/CMakeFiles/*' ! -name '*.wrapped' \
        -exec sh -c 'head -c 4 "$1" | grep -q ELF' sh {} \; -print | while read -r program; do
        mv "$program" "$program.wrapped"
        printf '#!/bin/sh\nexec %s "%s" "$@"\n' "$launcher" "$program.wrapped" >"$program"
        chmod +x "$program"
    done
}

# Prints from lines of a pattern and a reason just the patterns, with a separator between them.
join_patterns() {
    local separator=$1
    shift
    printf '%s\n' "$@" | cut -d ' ' -f 1 | paste -sd "$separator"
}
