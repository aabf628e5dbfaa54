#!/usr/bin/env bash
# Checks what needs no run of the program: layout, who includes whom, and mistakes that clang-tidy
# finds.
#
#     Scripts/check-style.sh [--analyse]
#
# With --analyse clang-tidy also follows the paths that a function may take, and looks for parameters
# that need not be copied, for three times the time.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

checks=-clang-analyzer-*,-performance-unnecessary-value-param
if [ "${1-}" = --analyse ]; then
    checks=
fi

need_packages "${build_packages[@]}" clang-format clang-tidy clang

say "Layout of the sources"
git ls-files '*.h' '*.cpp' '*.c' | xargs clang-format --dry-run -Werror \
    || { echo "Run clang-format -i on the files above." >&2; exit 1; }
echo "as .clang-format says"

say "Includes"
# A library may include its own headers and those of the libraries that its CMakeLists.txt names.
python3 Scripts/check-includes.py

say "clang-tidy (the whole of Source and Examples but for what is built for Windows alone)"
cmake --preset tidy >/dev/null
git ls-files 'Source/*.cpp' 'Examples/*.cpp' | grep -v '^Examples/consumer\|Windows' \
    | xargs -P "$(nproc)" -n 4 clang-tidy -p build/tidy --quiet --checks="$checks" \
        2>build/tidy/errors.log \
    || { grep -v 'warnings generated' build/tidy/errors.log >&2; exit 1; }
echo "nothing found"
