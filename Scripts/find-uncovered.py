#!/usr/bin/env python3
"""Prints how many lines and branches of Source the tests reached, and the lines that they did not
reach or did not leave by every branch.

    Scripts/find-uncovered.py RECORD      in the format of lcov, as llvm-cov writes it

Fails at one of the libraries or of ZEKTexComp for which Documents/Reliability.md gives no reason: a
line there that has both the name of the file and the text of the line in it. Of a function that was
not called at all, and of lines that follow one another, only the first is looked for. Fails as well at
a reason for a line that is in no source.

Of zek, which listens to signals, terminals and other programs, the lines are listed and the share of
the branches is held.
"""

import collections
import pathlib
import re
import sys

# Threads that count at the same time lose counts. A branch is counted as the difference of two
# counters, which then may come out below 0, and is written as one that is larger than this.
MOST_COUNTED = 1 << 31

# What is held to a share, and the least share of its branches.
TOOL = "Source/ZekTool/"
LEAST_TOOL_SHARE = 0.93

ROOT = pathlib.Path(__file__).resolve().parent.parent


class File:
    def __init__(self):
        self.lines = {}  # number -> how often it was run
        self.branches = collections.defaultdict(list)  # number -> how often each was taken
        self.starts = {}  # name of a function -> its first line

    def count_instances(self, line):
        """Returns how many functions were made of the source of a line, such as of a template."""
        starts = list(self.starts.values())
        start = max((start for start in starts if start <= line), default=None)
        return max(starts.count(start), 1)

    def fold_branches(self, line):
        """Returns how often each branch of a line was taken, those of all instances added up if each
        instance has them."""
        counts = self.branches[line]
        size, rest = divmod(len(counts), self.count_instances(line))
        return counts if rest else [sum(counts[i::size]) for i in range(size)]

    def find_uncovered_lines(self):
        """Returns the numbers of the first lines of each stretch that was not covered."""
        missed = {line for line, count in self.lines.items() if count == 0}
        missed |= {
            line
            for line, counts in list(self.branches.items())
            if 0 in self.fold_branches(line) and max(counts) < MOST_COUNTED
        }
        return sorted(line for line in missed if line - 1 not in missed)


def read_record(path):
    files = collections.defaultdict(File)
    for record in path.read_text().splitlines():
        kind, _, value = record.partition(":")
        if kind == "SF":
            file = files[value[max(value.rfind("Source/"), 0) :]]
        elif kind == "DA":
            line, count = map(int, value.split(",")[:2])
            file.lines[line] = count
        elif kind == "BRDA":
            line, _, _, count = value.split(",")
            file.branches[int(line)].append(0 if count == "-" else int(count))
        elif kind == "FN":
            line, name = value.split(",", 1)
            file.starts[name] = int(line)
    return {name: file for name, file in files.items() if name.startswith("Source/")}


def print_share(what, counts):
    """Prints how many of the counts are not 0, and returns their share."""
    reached = sum(count > 0 for count in counts)
    print(f"{reached:5} of {len(counts):5} {what:8} {100 * reached / len(counts):6.2f} %")
    return reached / len(counts)


def print_shares(what, files):
    """Prints the shares of lines and branches of some files, and returns that of the branches."""
    print(f"{what}:")
    print_share("lines", [count for file in files.values() for count in file.lines.values()])
    return print_share(
        "branches",
        [
            count
            for file in files.values()
            for line in list(file.branches)
            for count in file.fold_branches(line)
        ],
    )


def find_dead_reasons(reasons):
    """Returns the reasons that are given for a line that no source of the name has."""
    lines = collections.defaultdict(set)
    for path in (ROOT / "Source").rglob("*.*"):
        lines[path.name] |= {line.strip() for line in path.read_text().splitlines()}
    rows = [re.fullmatch(r"\| `([^`]+)` \| `(.+)` \| .+ \|", reason) for reason in reasons]
    return [row[0] for row in rows if row and row[2] not in lines[row[1]]]


def main():
    files = read_record(pathlib.Path(sys.argv[1]))
    tool = {name: file for name, file in files.items() if name.startswith(TOOL)}
    rest = {name: file for name, file in files.items() if name not in tool}
    print_shares("libraries and ZEKTexComp", rest)
    tool_share = print_shares("zek", tool)

    reasons = (ROOT / "Documents/Reliability.md").read_text().splitlines()
    unexplained = []
    for name in sorted(files):
        source = (ROOT / name).read_text().splitlines()
        for line in files[name].find_uncovered_lines():
            text = source[line - 1].strip()
            if text == "{":
                text = source[line - 2].strip()
            is_explained = any(pathlib.Path(name).name in reason and text in reason for reason in reasons)
            print(f"{name}:{line}: {text}")
            if not is_explained and name not in tool:
                unexplained.append(f"{name}:{line}: {text}")
    if unexplained:
        print("\nNot covered, add a test, or the reason to Documents/Reliability.md:")
        print(*unexplained, sep="\n")
    dead = find_dead_reasons(reasons)
    if dead:
        print("\nReasons in Documents/Reliability.md for lines that there are not:", *dead, sep="\n")
    if tool_share < LEAST_TOOL_SHARE:
        print(f"zek: below {100 * LEAST_TOOL_SHARE} % of the branches: add tests.")
    return 1 if unexplained or dead or tool_share < LEAST_TOOL_SHARE else 0


if __name__ == "__main__":
    sys.exit(main())
