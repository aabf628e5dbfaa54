#!/usr/bin/env bash
# Makes readers of models out of Documents/zek.ksy, in Python (zek.py) and JavaScript (Zek.js):
#
#     Scripts/make-readers.sh FOLDER
#     Scripts/make-readers.sh FOLDER --debug    that remember where each field lay
#
# Debian's python3 has the library that zek.py needs; npm has the compiler, and the library for Zek.js.
set -euo pipefail
folder=$(realpath "${1:?FOLDER}")
cd "$(dirname "$0")/.."
. Scripts/packages.sh
packages=$PWD/build/kaitai

need_packages python3 python3-kaitaistruct
need_npm_packages Tests/Kaitai "$packages"

mkdir -p "$folder"
NODE_PATH=$packages/node_modules node Tests/Kaitai/compile.js Documents/zek.ksy "$folder" "${2:-}"
