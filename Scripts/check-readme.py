#!/usr/bin/env python3
"""Runs the commands of the README's transcript, in a scratch folder, and compares what they print with
what stands there.

    Scripts/check-readme.py      after Scripts/demo.sh, which builds what they call
"""

import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
INDENT = "    "
PROMPT = "$ "


def read_transcript(text):
    """Returns the commands of the README, each with the lines that follow it."""
    commands = []
    for line in text.splitlines():
        if line.startswith(INDENT + PROMPT):
            commands.append((line[len(INDENT + PROMPT) :], []))
        elif line.startswith(INDENT) and commands:
            commands[-1][1].append(line[len(INDENT) :])
        elif line.startswith("#") and commands:
            break
    return commands


def is_as_written(command, expected, folder):
    run = subprocess.run(command, shell=True, cwd=folder, capture_output=True, text=True)
    printed = [line.rstrip() for line in run.stdout.splitlines()]
    is_same = printed == expected and run.returncode == 0
    print(f"{'as written' if is_same else 'DIFFERENT '}  {command}")
    if not is_same:
        print("\n".join(printed) + run.stderr)
    return is_same


def main():
    commands = read_transcript((ROOT / "README.md").read_text())
    if not commands:
        sys.exit("check-readme: the README has no transcript")
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "build").symlink_to(ROOT / "build")
        results = [is_as_written(command, expected, folder) for command, expected in commands]
    if not all(results):
        sys.exit("check-readme: correct the README, or what it shows")


if __name__ == "__main__":
    main()
