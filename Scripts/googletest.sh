# Read by the other scripts, not run: GoogleTest for compilers that the library of the Debian package
# is not for. Needs the package googletest, its sources.

# Builds GoogleTest in a folder, with options of cmake, and installs it in the folder's prefix.
build_googletest() {
    local folder=$1
    shift
    cmake -S /usr/src/googletest -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_GMOCK=OFF \
        -DCMAKE_INSTALL_PREFIX="$folder/prefix" "$@" >/dev/null
    cmake --build "$folder" --target install >/dev/null
}
