"""Prints what a generated reader finds in models, a line of JSON for each model: its fields, each as
path, offset, size and list of values.

    list_fields.py FOLDER MODEL...

The reader is FOLDER/zek.py, made with --debug (see compile.js). Of a damaged model, what stands before
the damage is printed.
"""

import enum
import inspect
import json
import pathlib
import sys

from kaitaistruct import KaitaiStream, KaitaiStruct, ValidationFailedError

sys.path.insert(0, sys.argv[1])
from zek import Zek  # noqa: E402


def keep_unfinished(read):
    """A reader puts an element into its list after reading it. Until then the parent shall know it."""

    def read_and_keep(record):
        record._parent.unfinished = record
        read(record)
        record._parent.unfinished = None

    return read_and_keep


for record_type in vars(Zek).values():
    if inspect.isclass(record_type) and issubclass(record_type, KaitaiStruct):
        record_type._read = keep_unfinished(record_type._read)
KaitaiStruct.unfinished = None


def list_record(path, record, fields):
    for name, place in record._debug.items():
        value = getattr(record, name, None)
        if isinstance(value, list):
            for i, element_place in enumerate(place.get("arr", [])):
                element = value[i] if i < len(value) else record.unfinished
                list_value(f"{path}{name}[{i}]", element_place, element, fields)
        else:
            list_value(path + name, place, value, fields)


def list_value(path, place, value, fields):
    if isinstance(value, KaitaiStruct):
        list_record(path + ".", value, fields)
    elif "end" in place and value is not None:
        if isinstance(value, enum.Enum):
            value = value.value
        values = list(value) if isinstance(value, bytes) else [value]
        fields.append([path, place["start"], place["end"] - place["start"], values])


def is_damage(error):
    """The exception of a text without an end is of no type of its own."""
    return isinstance(error, (EOFError, ValidationFailedError)) or type(error) is Exception


def list_model(path):
    model = Zek(KaitaiStream(path.open("rb")))
    try:
        model._read()
    except Exception as error:
        if not is_damage(error):
            raise
    fields = []
    list_record("", model, fields)
    return fields


for argument in sys.argv[2:]:
    print(json.dumps(list_model(pathlib.Path(argument))))
