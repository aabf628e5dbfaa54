#!/usr/bin/env bash
# Compiles each installed header alone, with both compilers and in each C++ since C++17.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages clang cmake g++ ninja-build

say "Installing the headers (from build/install)"
quietly cmake -S . -B build/install -G Ninja -DZEK_BUILD_TESTS=OFF
quietly cmake --build build/install
quietly cmake --install build/install --component dev --prefix "$scratch"

warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
cd "$scratch/include/ZEKTexComp"
for compiler in g++ clang++; do
    for standard in c++17 c++20; do
        say "$compiler -std=$standard"
        find . -name '*.h' -printf '%P\n' | sort \
            | xargs -P "$(nproc)" -I HEADER "$compiler" -std=$standard "${warnings[@]}" -I. \
                -fsyntax-only -include HEADER -x c++ /dev/null
        echo "$(find . -name '*.h' | wc -l) headers compile alone"
    done
done

printf '\nEvery installed header stands alone.\n'
