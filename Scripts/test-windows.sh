#!/usr/bin/env bash
# Builds everything for Windows and runs it under wine: the unit tests that concern any system or that
# one, and both programs on models with unfriendly names, against what the programs of this system
# make of the same models.
#
#     Scripts/test-windows.sh
#
# Compiler, wine and all that is compiled in are Debian packages.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/googletest.sh
. Scripts/wrap-programs.sh

header_packages=("${zek_packages[@]}" libeigen3-dev)
need_packages "${test_packages[@]}" googletest g++-mingw-w64-x86-64-posix wine wine64

export LC_ALL=C.UTF-8 WINEPREFIX=$PWD/build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='

# What is left out of the unit tests, and why. The first are not built: see the CMakeLists.txt there.
excluded_sources=(
    'Tests/EndToEnd, Tests/Reliability     start and watch programs as POSIX has it'
    'Tests/Documents, Fuzz                 hold documents and kept inputs, the same on any system'
    'Tests/Packaging                       there is no package for Windows'
    'other *Test.cpp below if(NOT WIN32)   make pipes, devices and links, or watch the heap'
)
excluded_tests=(
    'SModelInfo.SaysWhyAModelCannotBeRead                   the words of errors are that system'\''s'
    'ReportText.OfARefusedModelSaysWhy                      so they are here'
    'CPathReader.AListThatCannotBeReadIsAnError             and here'
    '*DeathTest.*                                           so are those of a failed assertion'
    '*LightmapCompression.BackslashInANameStaysAsItIs       backslashes are separators there'
    '*ProbeCompression.FacesInRealFoldersAreNotFound        backslashes are separators there'
    'CVariantSearch.MissesTheFacesOfFolders*                backslashes are separators there'
    '*Compression.MissingFolderAndUnopenableFileCount*      a folder cannot be opened there; makes a link'
    '*Check.FindsNamesThatDifferInCapitalLetters            capital and small letters are the same there'
    '*Compression.LinkToAFileCountsAsTheFile                makes a link'
)

# Puts packages that are headers alone where nothing else of this system is.
copy_headers() {
    rm -rf build/windows-packages
    mkdir -p build/windows-packages
    dpkg -L "$@" | grep -E '^/usr/include/|[.]cmake$' | grep -v 'targets-none' | while read -r file; do
        [ -d "$file" ] || cp --parents "$file" build/windows-packages
    done
}

say "Left out"
printf '%s\n' "${excluded_sources[@]}" "${excluded_tests[@]}"

say "Building for Windows (in build/windows)"
copy_headers "${header_packages[@]}"
[ -d build/googletest-windows/prefix ] \
    || build_googletest build/googletest-windows --toolchain "$PWD/CMake/windows.cmake"
cmake --preset windows -Dfmt_DIR="$(echo "$PWD"/build/windows-packages/usr/lib/*/cmake/fmt)" >/dev/null
cmake --build --preset windows

cmake -S . -B build/windows-install -G Ninja --toolchain CMake/windows.cmake >/dev/null
grep -q '/zek\.exe)' build/windows-install/ZEKTexCompConfig.cmake \
    || { echo "What is installed has no ZEKTexComp::zek." >&2; exit 1; }

say "Building for this system (in build/test)"
cmake --preset test >/dev/null
cmake --build --preset test --target zek

say "Running the unit tests under wine"
wine wineboot --init >/dev/null 2>&1
GTEST_FILTER="-$(join_patterns : "${excluded_tests[@]}")" ctest --test-dir build/windows \
    --output-on-failure --no-tests=error

say "Running the programs under wine"
ZEK_WINDOWS=$PWD/build/windows ZEK_PROGRAM=$PWD/build/test/zek WRITE_MODELS_PROGRAM= \
    python3 -B Tests/ZekTool/test_windows.py
