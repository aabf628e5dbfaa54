#!/usr/bin/env python3
"""Runs the commands that a document shows, in a scratch folder, and compares what they print with what
stands there.

    Scripts/check-transcript.py README.md      after Scripts/demo.sh, which builds what they call
    Scripts/check-transcript.py DOCUMENT FILE...

Copies of the FILEs are in the folder, as are the files whose text the document shows: "This is `NAME`"
and a fenced block.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
INDENT = "    "
PROMPT = "$ "


def read_transcript(text):
    """Returns the commands of a document, each with the lines that it prints."""
    commands = []
    is_printing = False
    for line in text.splitlines():
        if line.startswith(INDENT + PROMPT):
            commands.append((line[len(INDENT + PROMPT) :], []))
            is_printing = True
        elif line.startswith(INDENT) and is_printing:
            commands[-1][1].append(line[len(INDENT) :])
        else:
            is_printing = False
    return commands


def read_files(text):
    """Returns the files that a document shows, name and text."""
    return re.findall(r"This is `([^`/]+)`.*?```\w+\n(.*?)```", text, re.DOTALL)


def is_as_written(command, expected, folder):
    run = subprocess.run(command, shell=True, cwd=folder, capture_output=True, text=True)
    printed = [line.rstrip() for line in run.stdout.splitlines()]
    is_same = printed == expected and run.returncode == 0
    print(f"{'as written' if is_same else 'DIFFERENT '}  {command}")
    if not is_same:
        print("\n".join(printed) + run.stderr)
    return is_same


def main():
    if len(sys.argv) < 2:
        sys.exit("usage: Scripts/check-transcript.py DOCUMENT [FILE...]")
    document, *needed = sys.argv[1:]
    text = pathlib.Path(document).read_text()
    commands = read_transcript(text)
    if not commands:
        sys.exit(f"check-transcript: {document} has no transcript")
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "build").symlink_to(ROOT / "build")
        for file in needed:
            shutil.copy(file, folder)
        for name, content in read_files(text):
            pathlib.Path(folder, name).write_text(content)
        results = [is_as_written(command, expected, folder) for command, expected in commands]
    if not all(results):
        sys.exit(f"check-transcript: correct {document}, or what it shows")


if __name__ == "__main__":
    main()
