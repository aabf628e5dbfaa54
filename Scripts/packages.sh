# Read by the other scripts, not run: installing from Debian's packages, and saying what goes on.

# What it takes to build, to build and run the tests, and to build the benchmarks.
zek_packages=(libcli11-dev libfmt-dev nlohmann-json3-dev)
build_packages=(cmake g++ ninja-build "${zek_packages[@]}")
test_packages=("${build_packages[@]}" binutils libeigen3-dev libgtest-dev locales python3
    python3-jsonschema strace)
benchmark_packages=("${build_packages[@]}" libbenchmark-dev libeigen3-dev libglm-dev)

# Prints what the script is at.
say() { printf '\n== %s\n' "$*"; }

# Installs those of the named packages that are missing, as root or through sudo. Says what it
# installs, and nothing when all are there.
need_packages() {
    local package missing=()
    for package in "$@"; do
        if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            printf 'Missing: %s\nInstall them as root, then run this again.\n' "${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Installs from npm, into a folder, what the package-lock.json of a folder of tests names.
# Says so, and nothing when all is there.
need_npm_packages() {
    local tests=$1 folder=$2
    # A Node.js that is not Debian's brings its own npm, and Debian's cannot be installed beside it.
    command -v npm >/dev/null || need_packages nodejs npm
    [ "$tests/package-lock.json" -nt "$folder/node_modules/.package-lock.json" ] || return 0

    say "Installing from npm (in ${folder#"$PWD"/})"
    mkdir -p "$folder"
    cp "$tests/package.json" "$tests/package-lock.json" "$folder"
    npm ci --silent --prefix "$folder"
}
