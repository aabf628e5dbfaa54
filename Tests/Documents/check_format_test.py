#!/usr/bin/env python3
"""Changes Documents/Format.md in one place after the other, every row of it, and expects that
check_format.py notices each.

    check_format_test.py LIST-FIELDS WRITE-VERSIONS WRITE-SAMPLE ZEKTEXCOMP     the programs
"""

import re
import sys

import check_format

OTHER_TYPES = {
    "byte": "flags",
    "short": "word",
    "word": "short",
    "int": "float",
    "float": "int",
    "text": "int",
}


def change_version(versions, by):
    """Returns the versions of a row with the first number moved."""
    return re.sub(r"\d+", lambda number: str(int(number[0]) + by), versions, count=1)


def change_row(line):
    """Yields what a row of a table can be made into that is wrong."""
    yield ""
    yield line + "\n" + line
    name, value, versions, _ = line[2:].split(" | ", 3)
    yield line.replace(name, "`other`", 1)
    for type_name, other in OTHER_TYPES.items():
        if re.match(rf"{type_name}\b", value):
            yield line.replace(f"| {type_name}", f"| {other}", 1)
    if "[" in value and value[0] != "[":
        yield line.replace("[", "[1", 1)
    if " × " in value:
        yield line.replace(value, value.split(" × ")[0], 1)
        yield line.replace(value, value.split(" × ")[0] + " × `version`", 1)
    gate, _, condition = versions.partition(", if ")
    if gate != "all":
        for by in (-1, 1):
            yield line.replace(f"| {gate}", f"| {change_version(gate, by)}", 1)
        yield line.replace(f"| {gate}", "| all", 1)
    else:
        yield line.replace("| all", "| 9 on", 1)
    if condition:
        yield line.replace(", if " + condition, "", 1)
        number = re.search(r"-?\d+", condition)[0]
        yield line.replace(condition, condition.replace(number, str(int(number) + 1)), 1)
        opposite = condition.replace(" is ", " is not ").replace("not not ", "")
        yield line.replace(condition, opposite, 1)


def change_type(line):
    """Yields a row of the table of types with another size."""
    yield re.sub(r"\b(\d+) \|", r"1\1 |", line, count=1)


def change_history(line):
    yield ""
    yield change_version(line, 1)
    for name in re.findall(r"`[\w.]+`", line):
        yield line.replace(name, "`other`", 1)


def change_bytes(line):
    yield ""
    yield " " + line
    yield re.sub("[0-9a-f]", lambda digit: format(15 - int(digit[0], 16), "x"), line, count=1)
    yield line[:10] + "77" + line[12:]
    yield line.replace(": ", ": 7", 1)


CHANGES = {"| field": change_row, "| version": change_history, "| type": change_type}


def change(text):
    """Yields the number and text of a changed line, and the whole text with it."""
    lines = text.split("\n")
    changes = None
    for index, line in enumerate(lines):
        if line.startswith("```"):
            changes = None if changes else change_bytes
        elif line.startswith(tuple(CHANGES)):
            changes = CHANGES[line[: line.index(" ", 2)]]
        elif not line:
            changes = None
        elif changes and not line.startswith("|---"):
            for changed in set(changes(line)) - {line}:
                changed_lines = [changed] if changed else []
                rest = lines[:index] + changed_lines + lines[index + 1 :]
                yield index + 1, changed, "\n".join(rest)


def is_noticed(text, facts):
    try:
        check_format.check(text, facts)
    except check_format.WrongDocument:
        return True
    return False


def main():
    facts = check_format.Facts(*sys.argv[1:])
    text = check_format.DOCUMENT.read_text(encoding="utf-8")
    check_format.check(text, facts)
    changes = list(change(text))
    unnoticed = [change for change in changes if not is_noticed(change[2], facts)]
    for number, line, _ in unnoticed:
        print(f"line {number} may as well be: {line or 'left out'}")
    print(f"{len(changes)} changes, {len(unnoticed)} not noticed")
    sys.exit(1 if unnoticed or not changes else 0)


if __name__ == "__main__":
    main()
