#!/usr/bin/env bash
# Writes anew what the commands of zek are expected to print. Look at the difference before you
# commit it.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh

need_packages "${test_packages[@]}"

cmake --preset test >/dev/null
cmake --build build/test --target zek WriteModels
ZEK_PROGRAM=$PWD/build/test/zek WRITE_MODELS_PROGRAM=$PWD/build/test/Tests/Packaging/WriteModels \
    python3 Tests/ZekTool/test_golden.py --update
git status --short Tests/ZekTool/Golden
