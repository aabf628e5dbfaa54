#!/bin/sh
# Runs ZEKTexComp on a model, unless neither the model nor its variants changed since it last did:
#
#     process-model.sh MODEL
#
# What the model and its variants were then stands in MODEL.stamp. The exit status is 1 when
# ZEKTexComp fails, whose own 255 would end a run of xargs or look like a failure of ssh. ZEKTexComp
# is found in PATH, or by its absolute path in the variable ZEKTEXCOMP.
set -eu
model=$1
# In the model's own folder, so that no name on the way there is misread as Shift_JIS.
cd -- "$(dirname -- "$model")"
name=$(basename -- "$model")

# The model counts by its contents as ZEKTexComp left them, not by its time, which every run
# changes; a variant counts by its name alone, since ZEKTexComp looks no further.
print_state() {
    sha256sum <"$name"
    printf '%s\n' "$variants"
}
variants=$(find -L ./tex_* -type f -readable 2>/dev/null | LC_ALL=C sort)

if [ -f "$name.stamp" ] && print_state | cmp -s - "$name.stamp"; then
    exit 0
fi

if ! output=$("${ZEKTEXCOMP:-ZEKTexComp}" "$name"); then
    printf 'failed: %s\n%s\n' "$model" "$output" >&2
    exit 1
fi
print_state >"$name.stamp.new"
mv -- "$name.stamp.new" "$name.stamp"
printf 'processed: %s\n' "$model"
