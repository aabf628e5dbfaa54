#!/usr/bin/env bash
# Builds everything for other processors and runs the tests there, under user-mode emulation; the
# 32-bit programs run as they are, for which this has to be an x86 processor.
#
#     Scripts/test-foreign.sh [TARGET ...]     of these three, or all of them:
#
#     s390x      big-endian
#     aarch64    Arm, whose plain char is unsigned
#     i686       32 bits
#
# Compilers, emulator and the sources of GoogleTest are Debian packages. It takes too long to run on
# every change; the last lines tell how long.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/googletest.sh
. Scripts/wrap-programs.sh

[ $# -gt 0 ] || set -- s390x aarch64 i686

# Puts the C library of a Debian architecture into a folder: the one of the cross compiler lacks the
# converters of character codes that iconv loads. The system's own lists of packages stay as they
# are. A list that cannot be had is no error as long as another has the package.
fetch_c_library() {
    local architecture=$1 folder=$PWD/$2
    local apt=(apt-get -qq -o "Dir::State=$folder" -o "Dir::State::status=$folder/status"
        -o "Dir::Cache=$folder" -o "APT::Architecture=$architecture"
        -o "APT::Architectures=$architecture" -o APT::Sandbox::User=root)
    mkdir -p "$folder"/lists/partial "$folder"/archives/partial
    touch "$folder/status"
    "${apt[@]}" update || echo "Going on with the lists that could be had."
    (cd "$folder" && "${apt[@]}" download libc6 && dpkg-deb -x libc6_*.deb .)
}

# Has CMake find the headers of fmt, which zek is built with: they are the same everywhere, but what
# the package has for CMake is for this processor alone.
write_fmt_package() {
    mkdir -p "$1"
    cat >"$1/fmt-config.cmake" <<'END'
add_library(fmt::fmt-header-only INTERFACE IMPORTED)
target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
END
}

test_target() {
    local target=$1 triple=$1-linux-gnu architecture launcher
    case $target in
    s390x) architecture=s390x launcher="qemu-s390x -L /usr/$triple" ;;
    aarch64) architecture=arm64 launcher="qemu-aarch64 -L /usr/$triple" ;;
    i686) architecture=i386 launcher="/usr/$triple/lib/ld-linux.so.2 --library-path /usr/$triple/lib" ;;
    *)
        echo "There is no target $target: s390x, aarch64 or i686." >&2
        return 2
        ;;
    esac
    local folder=$PWD/build/foreign/$target

    need_packages "${test_packages[@]}" googletest qemu-user "g++-$triple"
    [ -d "$folder/libc/usr" ] || fetch_c_library "$architecture" "build/foreign/$target/libc"

    say "$target: building GoogleTest and the tests (in build/foreign/$target)"
    local cross=(-DCMAKE_SYSTEM_PROCESSOR="$target" -DCMAKE_C_COMPILER="$triple-gcc"
        -DCMAKE_CXX_COMPILER="$triple-g++")
    build_googletest "$folder/googletest" -DCMAKE_SYSTEM_NAME=Linux "${cross[@]}"
    write_fmt_package "$folder/fmt"
    cmake --preset foreign -B "$folder/build" "${cross[@]}" -Dfmt_DIR="$folder/fmt" \
        -DGTest_DIR="$folder/googletest/prefix/lib/cmake/GTest" >/dev/null
    cmake --build "$folder/build"
    local converters
    converters=$(echo "$folder"/libc/usr/lib/*/gconv)
    wrap_programs "$folder/build" "env 'GCONV_PATH=$converters' $launcher"

    say "$target: running the tests"
    test_wrapped "$folder/build"
}

say_excluded

summary=()
status=0
for target in "$@"; do
    start=$SECONDS
    result=passed
    set +e
    (set -e; test_target "$target")
    [ $? -eq 0 ] || { result=FAILED; status=1; }
    set -e
    summary+=("$(printf '%-8s %-7s %4d s' "$target" "$result" $((SECONDS - start)))")
done
say "Summary"
printf '%s\n' "${summary[@]}"
exit "$status"
