#!/usr/bin/env bash
# Runs what Documents/Reading.md shows, with the libraries as they are installed.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh

need_packages "${build_packages[@]}" jq pkg-config
quietly Scripts/make-readers.sh "$scratch"

say "Building and installing (from build/install)"
quietly cmake --preset install
quietly cmake --build --preset install
quietly cmake --install build/install --prefix "$scratch/installed"
build/install/Examples/WriteSample "$scratch/sample"
(cd "$scratch/sample" && quietly "$OLDPWD/build/install/ZEKTexComp" model.zek)

say "What Documents/Reading.md shows"
PKG_CONFIG_PATH=$(dirname "$(find "$scratch/installed" -name zektexcomp.pc)") \
    PATH=$PWD/build/install:$PATH \
    Scripts/check-transcript.py Documents/Reading.md "$scratch/sample/model.zek" "$scratch/zek.py"
