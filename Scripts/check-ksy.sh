#!/usr/bin/env bash
# Compares Documents/zek.ksy with the walk: has readers that are made of it and zek read models of
# every version, whole, cut short and damaged.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages "${test_packages[@]}"
quietly Scripts/make-readers.sh "$scratch/readers" --debug

say "Building (in build/test)"
quietly cmake --preset test
quietly cmake --build --preset test --target zek WriteVersions
mkdir "$scratch/models"
build/test/Tests/Documents/WriteVersions "$scratch/models"

say "Comparing"
NODE_PATH=$PWD/build/kaitai/node_modules \
    /usr/bin/python3 Tests/Kaitai/compare.py build/test/zek "$scratch/readers" "$scratch/models"
