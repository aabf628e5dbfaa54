#!/usr/bin/env bash
# Prints a build.ninja that processes the models below a folder and packs them, when one has changed,
# into models.tar:
#
#     write-build.sh FOLDER >build.ninja
set -euo pipefail
here=$(dirname "$(realpath "$0")")

# Blanks, colons and dollars have a meaning in Ninja's language.
escape() { sed 's/[$ :]/$&/g'; }
models=$(find "$1" -type f -name '*.zek' | LC_ALL=C sort | escape)

printf 'process_model = %s/process-model.sh\n' "$(dirname "$here" | sed 's/\$/$$/g')"
printf 'include %s/process-models.ninja\n' "$(escape <<<"$here")"
sed 's/.*/build &.stamp: process-model & | always-look/' <<<"$models"
cat <<END
rule pack
    command = tar -cf \$out --exclude='*.stamp' $1
build models.tar: pack | $(sed 's/$/.stamp/' <<<"$models" | tr '\n' ' ')
END
