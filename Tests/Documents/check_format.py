#!/usr/bin/env python3
"""Holds Documents/Format.md to the code. Its tables are read as a grammar, by which models of every
version are taken apart: that must give the fields that the library lists, and every row and every
condition must have come to bear. Its history must name what its tables say of the versions, and its
annotated bytes must be those of the sample.

    check_format.py LIST-FIELDS WRITE-VERSIONS WRITE-SAMPLE ZEKTEXCOMP     the programs
"""

import itertools
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DOCUMENT = ROOT / "Documents/Format.md"
HEADER = ROOT / "Source/ZEKFormat/ZEKVersion.h"
OLDEST_ACCEPTED = 7
NEWEST = 10**9
SMALL_MODEL = 10000  # bytes
MAGIC_AND_VERSION = [("magic", "text", 1, 0, 4), ("version", "int", 1, 4, 4)]

CODES = {"byte": "B", "short": "h", "word": "H", "int": "i", "float": "f"}
# What the cells of a row may say.
TYPE = re.compile(
    r"(?:\[(?P<record>[\w ]+)\]\(#[\w-]+\)|(?P<value>\w+)(?:\[(?P<n>\d+)\])?)"
    r"(?: × `(?P<count>\w+)`)?$"
)
VERSIONS = re.compile(
    r"(?:all|(?P<from>\d+) on|to (?P<to>\d+)|(?P<first>\d+) to (?P<last>\d+))"
    r"(?:, if (?P<condition>.*))?$"
)
CONDITION = re.compile(
    r"`(?P<field>[\w.]+)` is (?P<how>not |at most |above |)(?P<values>-?\d+(?: or -?\d+)*)$"
)


class WrongDocument(Exception):
    pass


def match(pattern, text, what):
    found = pattern.match(text)
    if not found:
        raise WrongDocument(f"{what} is not understood: {text}")
    return found


def compare(told, actual, where):
    if told != actual:
        raise WrongDocument(f"{where}: the document has\n{told}\nthe program\n{actual}")


class Row:
    """A row of a table: a field, or a list of them, and where it is there."""

    def __init__(self, table, cells):
        self.table, self.name = table, cells[0].strip("`")
        self.type = match(TYPE, cells[1], f"the type of {table}, {self.name}")
        versions = match(VERSIONS, cells[2], f"the versions of {table}, {self.name}")
        self.first = int(versions["from"] or versions["first"] or 0)
        self.last = int(versions["to"] or versions["last"] or NEWEST)
        condition = versions["condition"]
        self.condition = condition and match(CONDITION, condition, "a condition")
        self.outcomes = set()

    def is_there(self, version, values):
        if not self.first <= version <= self.last:
            return False
        result = not self.condition or self.holds(values.get(self.condition["field"]))
        self.outcomes.add(result)
        return result

    def holds(self, value):
        """A condition on a field that is not there does not hold."""
        if value is None:
            return False
        numbers = [int(number) for number in self.condition["values"].split(" or ")]
        return {
            "": value in numbers,
            "not ": value not in numbers,
            "at most ": value <= numbers[0],
            "above ": value > numbers[0],
        }[self.condition["how"]]

    def check_coverage(self):
        if self.outcomes != ({True, False} if self.condition else {True}):
            raise WrongDocument(f"no model decides on {self.table}, {self.name}")


class Document:
    def __init__(self, text):
        self.tables, self.types, self.history = {}, {}, {}
        for heading, body in re.findall(r"^##+ (.*)\n((?:(?!##).*\n)*)", text, re.M):
            rows = re.findall(r"^\| (.*?) ?\|$", body, re.M)
            cells = [[cell.strip() for cell in row.split(" |")] for row in rows]
            if cells and cells[0][0] == "field":
                self.tables[heading] = [Row(heading, row) for row in cells[1:]]
            elif heading == "Values":
                self.types = {row[0]: (row[1], row[2]) for row in cells[1:]}
            elif heading == "History":
                self.history = {int(row[0]): row[1] for row in cells[1:]}
        self.bytes = re.search(r"^```\n(.*?)^```", text, re.M | re.S)[1].splitlines()

    def resolve(self, type_name, count):
        """Returns the basic type of a type, and how many values it is."""
        alias = re.match(r"(\w+)\[(\d+)\]:", self.types[type_name][1])
        return (alias[1], count * int(alias[2])) if alias else (type_name, count)

    def check_types(self):
        for name, (size, _) in self.types.items():
            value, count = self.resolve(name, 1)
            right = "length + 1" if value == "text" else str(count * struct.calcsize(CODES[value]))
            if size != right:
                raise WrongDocument(f"{name} is not of {size} bytes but of {right}")

    def check_history(self):
        """A version is in the history if the code has a name for it, and with what begins or has
        ended with it."""
        known = {int(number) for number in re.findall(r"= (\d+);", HEADER.read_text())}
        if known != set(self.history):
            odd = known ^ set(self.history)
            raise WrongDocument(f"in ZEKVersion.h or in the history alone: {odd}")
        for version, text in self.history.items():
            told = set()
            for table, names in re.findall(r"(?:^|\. )(\w[\w ]*): (.*?)(?=\. |$)", text):
                told |= {(table, name) for name in re.findall(r"`(.*?)`", names)}
            changed = {
                (row.table, row.name)
                for table in self.tables.values()
                for row in table
                if version in (row.first, row.last + 1)
            }
            if told != changed:
                odd = told ^ changed
                raise WrongDocument(f"in the tables or in the history of {version} alone: {odd}")


class Reader:
    """Takes a model file apart as the document says, and compares each field with those listed. Of
    versions that are refused for their age these have not paths but their own names, and elements
    none."""

    def __init__(self, document, version, image, listed):
        self.document, self.version, self.image = document, version, image
        is_accepted = version >= OLDEST_ACCEPTED
        self.has_paths = is_accepted
        self.listed = iter(listed if is_accepted else MAGIC_AND_VERSION + listed)
        self.offset = 0

    def read(self, table, path="", outer=None):
        values = dict(outer or {})
        for row in self.document.tables[table]:
            if row.is_there(self.version, values):
                self.read_row(row, path + row.name, values)

    def read_row(self, row, path, values):
        if row.type["count"]:
            for index in range(values[row.type["count"]]):
                self.read_one(row, f"{path}[{index}]", values)
        else:
            values[row.name] = self.read_one(row, path, values)

    def read_one(self, row, path, values):
        if row.type["record"]:
            return self.read(row.type["record"], path + ".", values)
        value, count = self.document.resolve(row.type["value"], int(row.type["n"] or 1))
        begin = self.offset
        if value == "text":
            self.offset = self.image.index(b"\0", begin) + 1
        else:
            self.offset += struct.calcsize(CODES[value]) * count
        own_name = "" if row.type["count"] else row.name
        name = path if self.has_paths else own_name
        self.expect((name, value, count, begin, self.offset - begin))
        is_number = value != "text" and count == 1
        return struct.unpack_from("<" + CODES[value], self.image, begin)[0] if is_number else None

    def expect(self, field):
        compare(field, next(self.listed, None), f"a model of version {self.version}")


def list_fields(program, path):
    run = subprocess.run([program, path], capture_output=True, text=True)
    if run.returncode != 0:
        raise WrongDocument(f"a model cannot be listed: {run.stderr}")
    rows = [line.split("\t") for line in run.stdout.splitlines()]
    return [(row[0], row[1], *map(int, row[2:])) for row in rows]


def format_value(field, image):
    _, type_name, count, offset, size = field
    if type_name == "text":
        return '"' + image[offset : offset + size - 1].decode() + '"'
    values = struct.unpack_from(f"<{count}{CODES[type_name]}", image, offset)
    return ", ".join(f"{value:g}" for value in values)


def annotate(fields, image):
    """Returns the lines of the bytes of fields, and below them marks what the program may write."""
    lines = []
    for field in fields:
        path, _, _, offset, size = field
        digits = image[offset : offset + size].hex(" ")
        lines.append(f"{offset:08x}  {digits:<48}  {path}: {format_value(field, image)}")
        marked = {"processedMarker": 1, "flags": size}.get(path.split(".")[-1], 0)
        if marked:
            lines.append(" " * 10 + " ".join(["^^"] * marked))
    return lines


class Facts:
    """What the programs say: models of every version with their fields, and the sample's bytes."""

    def __init__(self, lister, write_versions, write_sample, program):
        with tempfile.TemporaryDirectory() as scratch:
            folder = pathlib.Path(scratch)
            subprocess.run([write_versions, folder], check=True)
            self.models = [
                (int(path.stem.split("-")[0]), path.read_bytes(), list_fields(lister, path))
                for path in folder.glob("*.zek")
            ]
            # What is wrong shows soonest in a small model of a new version.
            self.models.sort(key=lambda model: (len(model[1]) > SMALL_MODEL, -model[0]))
            subprocess.run([write_sample, folder / "sample"], check=True)
            model = folder / "sample/model.zek"
            subprocess.run([program, model], check=True, stdout=subprocess.DEVNULL)
            self.sample = annotate(list_fields(lister, model), model.read_bytes())


def check_models(document, models):
    for version, image, listed in models:
        reader = Reader(document, version, image, listed)
        reader.read("File")
        reader.expect(None)
    for table in document.tables.values():
        for row in table:
            row.check_coverage()


def check(text, facts):
    """Raises WrongDocument unless the text agrees with the facts."""
    try:
        document = Document(text)
        document.check_types()
        document.check_history()
        shown = [line.split("; ")[0] for line in document.bytes]
        for told, actual in itertools.zip_longest(shown, facts.sample):
            compare(told, actual, "the sample")
        check_models(document, facts.models)
    except KeyError as error:
        raise WrongDocument(f"{error} is not described") from error


def main():
    try:
        check(DOCUMENT.read_text(encoding="utf-8"), Facts(*sys.argv[1:]))
    except WrongDocument as error:
        sys.exit(f"check_format: {error}")


if __name__ == "__main__":
    main()
