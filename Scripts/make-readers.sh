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
# A Node.js that is not Debian's brings its own npm, and Debian's cannot be installed beside it.
command -v npm >/dev/null || need_packages nodejs npm
if [ Tests/Kaitai/package-lock.json -nt "$packages/node_modules/.package-lock.json" ]; then
    say "Installing from npm (in build/kaitai)"
    mkdir -p "$packages"
    cp Tests/Kaitai/package.json Tests/Kaitai/package-lock.json "$packages"
    npm ci --silent --prefix "$packages"
fi

mkdir -p "$folder"
NODE_PATH=$packages/node_modules node Tests/Kaitai/compile.js Documents/zek.ksy "$folder" "${2:-}"
