"""Compares the fields that generated readers find in models with those that `zek dump` lists: every
offset, size, value and name, both ways.

    compare.py ZEK FOLDER MODELS

ZEK is the program, FOLDER has the readers (see compile.js), and MODELS is a folder of whole models,
named after their versions. These are also cut short, and damaged field by field.
"""

import base64
import json
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
MODELS_AT_ONCE = 500

# A cut after each so many bytes of a model. The first cut differs from version to version.
CUT_STEP = 101

# The newest with everything, and the newest.
DAMAGED_VERSIONS = (25, 26)

# What the readers call otherwise, for all letters small and without underscores: groups that have
# no counterpart in the listing, a name that is a keyword in some languages, and a list that stands
# in place of another.
RENAMED = {
    "body.": "",
    "header.": "",
    "indexlist.": "",
    "uvlist.uv": "uv",
    "collider.kind": "collidertype",
    "longindices": "indices",
}


def make_name(path):
    name = path.lower().replace("_", "")
    for theirs, ours in RENAMED.items():
        name = name.replace(theirs, ours)
    return name.replace(".", "")


def make_values(listed):
    """Returns the numbers of a listed value; of a text its bytes with the zero byte."""
    if isinstance(listed, dict):
        text = base64.b64decode(listed["bytes"]) if "bytes" in listed else listed["text"].encode()
        return list(text) + [0]
    return listed if isinstance(listed, list) else [listed]


def dump(zek, model):
    """Returns the listed fields as name, offset, size, values, whether a text; and why the model is
    refused, or ""."""
    run = subprocess.run(
        [zek, "dump", "--json", "--elements", model], stdout=subprocess.PIPE, check=False
    )
    fields = []
    for line in run.stdout.splitlines():
        field = json.loads(line)
        if "error" in field:
            return fields, bytes(make_values(field["error"])[:-1]).decode(errors="replace")
        values = make_values(field["value"])
        is_text = field["type"] == "text"
        fields.append((make_name(field["path"]), field["offset"], field["size"], values, is_text))
    if run.returncode != 0:
        sys.exit(f"compare: {zek} fails on {model}")
    return fields, ""


def read_all(command, models):
    """Returns for each model the fields that a reader finds, as name, offset, size, values."""
    readings = []
    for i in range(0, len(models), MODELS_AT_ONCE):
        run = subprocess.run(
            command + models[i : i + MODELS_AT_ONCE], stdout=subprocess.PIPE, check=False
        )
        if run.returncode != 0:
            sys.exit(f"compare: {command} fails")
        for line in run.stdout.splitlines():
            fields = json.loads(line)
            readings.append([(make_name(path), *rest) for path, *rest in fields])
    return readings


def is_same_number(ours, theirs):
    """Tells whether two numbers are the same; NaN is the same as NaN."""
    return struct.pack("<d", float(ours)) == struct.pack("<d", float(theirs))


def find_difference(listed, read, may_read_more):
    """Returns what differs, or "". A listed field may be several read ones."""
    position = 0
    for name, offset, size, values, is_text in listed:
        parts = []
        while position < len(read) and sum(part[2] for part in parts) < size:
            parts.append(read[position])
            position += 1
        read_values = [value for part in parts for value in part[3]]
        if is_text and len(read_values) < size:
            read_values.append(0)  # a text's end, which readers leave out
        if (
            not parts
            or parts[0][1] != offset
            or sum(part[2] for part in parts) != size
            or not all(part[0].startswith(name) for part in parts)
            or len(values) != len(read_values)
            or not all(map(is_same_number, values, read_values))
        ):
            return f"{name} at {offset}, {size} bytes: {values}, but the reader: {parts}"
    if position < len(read) and not may_read_more:
        return f"only the reader has {read[position]}"
    return ""


def make_cuts(model, folder):
    """Writes the model cut short in many places, and returns the files, each with its length."""
    image = model.read_bytes()
    cuts = []
    for length in range(int(model.stem) % CUT_STEP, len(image), CUT_STEP):
        path = pathlib.Path(folder, f"{model.stem}-{length}.zek")
        path.write_bytes(image[:length])
        cuts.append((str(path), length))
    return cuts


def make_damaged(model, fields, folder):
    """Writes the model with all bits set in the first field of each name, and returns the files: counts
    are below zero, switches are neither on nor off, floats are no numbers, texts are of no code."""
    image = model.read_bytes()
    files = {}
    for name, offset, size, _, is_text in fields:
        name = re.sub(r"\[\d+\]", "", name)
        end = offset + size - is_text  # a text keeps its end
        path = str(pathlib.Path(folder, f"{model.stem}-{name}.zek"))
        if path not in files:
            files[path] = image[:offset] + b"\xff" * (end - offset) + image[end:]
    for path, damaged in files.items():
        pathlib.Path(path).write_bytes(damaged)
    return list(files)


def compare(name, command, cuts, listings):
    """Prints the differences between the listings and a reader, and returns their number."""
    differences = []
    readings = dict(zip(listings, read_all(command, list(listings))))
    for model, (listed, refusal) in listings.items():
        # The listing ends where bytes are demanded that lack; the reader goes on to the last field.
        differences.append((model, find_difference(listed, readings[model], "needed" in refusal)))
    for whole, files in cuts.items():
        for model, length in files:
            before_the_cut = [field for field in readings[whole] if field[1] + field[2] <= length]
            difference = "" if readings[model] == before_the_cut else "not as before it was cut"
            differences.append((model, difference))
    found = [(model, difference) for model, difference in differences if difference]
    for model, difference in found[:10]:
        print(f"{name}, {model}: {difference}")
    field_count = sum(map(len, readings.values()))
    print(f"{name}: {len(listings)} models, {field_count} fields, {len(found)} differences")
    return len(found)


def main():
    zek, readers, folder = sys.argv[1:]
    models = sorted(pathlib.Path(folder).iterdir())
    commands = {
        "Python": [sys.executable, str(HERE / "list_fields.py"), readers],
        "JavaScript": ["node", str(HERE / "list_fields.js"), readers],
    }
    with tempfile.TemporaryDirectory() as scratch:
        cuts = {
            str(model): make_cuts(model, scratch) for model in models if model.stem.isdecimal()
        }
        listings = {str(model): dump(zek, model) for model in models}
        files = [path for paths in cuts.values() for path, _ in paths]
        for version in DAMAGED_VERSIONS:
            model = pathlib.Path(folder, f"{version}.zek")
            files += make_damaged(model, listings[str(model)][0], scratch)
        listings.update((path, dump(zek, path)) for path in files)
        counts = [
            compare(name, command, cuts, listings) for name, command in commands.items()
        ]
    if any(counts):
        sys.exit("compare: the description and the listing differ")


if __name__ == "__main__":
    main()
