"""What the tests of the program share: models, running it, and checking its JSON."""

import json
import os
import pathlib
import struct
import subprocess

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PROGRAM = os.environ["ZEK_PROGRAM"]
WRITE_MODELS = os.environ["WRITE_MODELS_PROGRAM"]


def run(*arguments, **options):
    """Runs the program and returns what came of it, with both outputs as bytes."""
    return subprocess.run([PROGRAM, *arguments], capture_output=True, timeout=60, **options)


def make_model(names=(b"wall.png",), flags=b"\0\0\0\0", marker=0):
    """Returns a model of version 26 with textures of these names."""
    header = b"ZEK\0" + struct.pack("<4i", 26, marker, 0, len(names))
    textures = b"".join(name + b"\0" + struct.pack("<i", 1) + flags for name in names)
    return header + textures + struct.pack("<4i", 0, 0, 1, 2)


def write(folder, name, content=None):
    """Writes a file below a folder, both named by bytes, and returns its path."""
    path = os.path.join(os.fsencode(folder), name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(make_model() if content is None else content)
    return path


def read_json(command, output):
    """Returns the objects of JSON Lines after holding each to the command's schema."""
    schema = json.loads((ROOT / f"Documents/schemas/zek-{command}.json").read_text())
    validator = jsonschema.Draft202012Validator(schema)
    objects = [json.loads(line) for line in output.decode().splitlines()]
    for value in objects:
        validator.validate(value)
    return objects
