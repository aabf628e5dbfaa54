#!/usr/bin/env python3
"""Makes mistakes in the sources on purpose, one at a time, and looks whether the tests find them.

    Scripts/mutate.py [--count N] [--seed N] [--only TEXT] [--again] [--list]

The mistakes are chosen by the seed among all that mutations.py finds; --only takes those whose file or
line has the text, --again those that the last run did not find, --list only prints them.

One build in build/mutation has all of them, and ZEK_MUTATION says which one a run makes; what does not
compile that way is built by itself. The tests that reach a mistake are run, quick ones first, until
one fails. Fails when a mistake is not found that Scripts/mutations-not-found.txt has no line for: write
a test, or the line, whose last part says in a sentence why no test needs to find it. Fails at once when
a line is for a mistake that there is not any more.
"""

import argparse
import collections
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

from mutations import ROOT, choose, find_all

FOLDER = ROOT / "build/mutation"
TREE = FOLDER / "tree"
BUILD = FOLDER / "build"
LEFT = FOLDER / "not-found"
REFUSED = FOLDER / "refused"
REASONS = ROOT / "Scripts/mutations-not-found.txt"
CHUNK = 3  # seconds that tests take which are run together
PROGRAMS = {
    "ZEKFormatTest": "Tests/ZEKFormat/ZEKFormatTest",
    "ZEKOverwriterTest": "Tests/ZEKOverwriter/ZEKOverwriterTest",
    "ZekToolTest": "Tests/ZekTool/ZekToolTest",
    "ReliabilityTest": "Tests/Reliability/ReliabilityTest",
    "MarkDifferenceTest": "Tests/ZekTool/MarkDifferenceTest",
    "MarkConcurrencyTest": "Tests/ZekTool/MarkConcurrencyTest",
    "MarkSystemCallTest": "Tests/ZekTool/MarkSystemCallTest",
    "test_golden": "Tests/ZekTool/test_golden.py",
    "test_program": "Tests/ZekTool/test_program.py",
}
TARGETS = [name for name in PROGRAMS if name.endswith("Test")] + ["zek", "WriteModels"]


def build():
    """Builds the tree; returns what the compiler said, nothing if it was content."""
    made = subprocess.run(["ninja", "-C", BUILD, "-j", "2", "-k", "0", *TARGETS], capture_output=True, text=True)
    return made.stdout if made.returncode else ""


def copy_tree(mutations):
    """Brings the tree up to date but for the files that mutations are written into."""
    mutated = {mutation.file.path for mutation in mutations}
    command = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    names = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=True).stdout
    for name in map(pathlib.Path, names.split("\0")[:-1]):
        source, target = ROOT / name, TREE / name
        target.parent.mkdir(parents=True, exist_ok=True)
        if not target.exists() or name not in mutated and target.read_bytes() != source.read_bytes():
            shutil.copy(source, target)


def build_all(mutations):
    """Builds a tree with all mutations; returns those for which that does not work."""
    copy_tree(mutations)
    flags = ["-DZEK_BUILD_TESTS=ON", "-DZEK_BUILD_TOOL=ON", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -w",
             "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON",
             f"-DCMAKE_CXX_FLAGS=-D_GLIBCXX_ASSERTIONS -include {ROOT}/Scripts/mutation.h"]  # fmt: skip
    subprocess.run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, *flags], check=True, stdout=subprocess.DEVNULL)
    known = REFUSED.read_text().splitlines() if REFUSED.exists() else []
    refused = [mutation for mutation in mutations if str(mutation) in known]
    while True:
        for file in {mutation.file for mutation in mutations}:
            file.write(TREE, [m for m in mutations if m.file is file and m not in refused])
        said = build()
        REFUSED.write_text("".join(f"{mutation}\n" for mutation in refused))
        if not said:
            return refused
        at_fault = set(re.findall(r"tree/(Source/[\w/.]+):(\d+):\d+: +(?:error|required from)", said))
        bad = [mutation for mutation in mutations if mutation not in refused and mutation.is_at(at_fault)]
        if not bad:
            sys.exit(said)
        refused += bad


def run(program, tests, **environment):
    """Runs some tests of a program; returns whether they passed, and the seconds."""
    path = PROGRAMS[program]
    command = ["python3", TREE / path]
    if program.endswith("Test"):
        command = [BUILD / path, "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=" + ":".join(tests)]
    variables = {"ZEK_PROGRAM": str(BUILD / "zek"), "PYTHONDONTWRITEBYTECODE": "1",
                 "WRITE_MODELS_PROGRAM": str(BUILD / "Tests/Packaging/WriteModels")}  # fmt: skip
    start = time.monotonic()
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True,
                               env={**os.environ, **variables, **environment})  # fmt: skip
    try:
        status = process.wait(sum(DURATIONS.get((program, test), 60) for test in tests) * 3 + 10)
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, 9)
        status = process.wait()
    return status == 0, time.monotonic() - start


DURATIONS, REACHED = {}, {}  # of a program and a test


def list_tests(program):
    if not program.endswith("Test"):
        return [program]
    lines = subprocess.check_output([BUILD / PROGRAMS[program], "--gtest_list_tests"], text=True).splitlines()
    tests = []
    for line in (line.split("#")[0].rstrip() for line in lines):
        if line.startswith("  "):
            tests.append(suite + line.strip())
        elif line.endswith("."):
            suite = line
    return tests


def try_test(program, test):
    """Finds out which mutations a test reaches, and that it passes without one."""
    log = FOLDER / f"reached-{program}-{test.replace('/', '-')}"
    log.unlink(missing_ok=True)
    passed, DURATIONS[program, test] = run(program, [test], ZEK_MUTATION_REACHED=str(log))
    if not passed:
        sys.exit(f"{test} fails without a mistake")
    REACHED[program, test] = {int(line) for line in log.read_text().split()} if log.exists() else set()


def find(mutation, is_alone=False):
    """Returns the program that finds a mutation, or nothing. Quick tests come first, some at a time,
    so that one that hangs is not waited for as long as all of them take."""
    tests = [test for test, reached in REACHED.items() if is_alone or mutation.id in reached]
    chunks = collections.defaultdict(list)
    total = 0
    for program, test in sorted(tests, key=DURATIONS.get):
        total += DURATIONS[program, test]
        chunks[int(total / CHUNK), program].append(test)
    for (_, program), names in chunks.items():
        if not run(program, names, ZEK_MUTATION=str(mutation.id))[0]:
            return program
    return None


def report(mutation, outcome, results, reasons):
    results[outcome][mutation.file.path.parent.as_posix()] += 1
    if outcome == "not found":
        with LEFT.open("a") as left:
            left.write(f"{mutation}\n")
    print(f"{outcome:16} {mutation}", flush=True)
    if outcome == "not found" and mutation.key not in reasons:
        print("    no reason in Scripts/mutations-not-found.txt", flush=True)
        results["unexplained"]["all"] += 1


def try_all(mutations, everything, refused, reasons):
    results = collections.defaultdict(collections.Counter)
    LEFT.write_text("")
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        chosen = [mutation for mutation in mutations if mutation not in refused]
        for mutation, name in zip(chosen, pool.map(find, chosen)):
            report(mutation, "found" if name else "not found", results, reasons)
    for mutation in (mutation for mutation in mutations if mutation in refused):
        others = [other for other in everything if other.file is mutation.file and other not in refused]
        mutation.file.write(TREE, others, mutation)
        outcome = "does not compile"
        if not build():
            outcome = "found" if find(mutation, is_alone=True) else "not found"
        report(mutation, outcome, results, reasons)
        mutation.file.write(TREE, others)
    return results


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=450)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", default="")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()

    all_mutations = find_all()
    mutations = choose(all_mutations, options.count, options.seed)
    mutations = [mutation for mutation in mutations if options.only in str(mutation)]
    for number, mutation in enumerate(mutations):
        mutation.id = number
    if options.list:
        for mutation in mutations:
            print(mutation)
        print(f"{len(mutations)} of {len(all_mutations)}")
        return 0

    reasons = {tuple(line.split("\t")[:3]) for line in REASONS.read_text().splitlines()}
    for reason in sorted(reasons - {mutation.key for mutation in all_mutations}):
        sys.exit("a reason for a mistake that there is not: " + " | ".join(reason))
    refused = build_all(mutations)
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        tests = [(program, test) for program in PROGRAMS for test in list_tests(program)]
        list(pool.map(lambda test: try_test(*test), tests))
    print(f"{len(tests)} tests, {sum(DURATIONS.values()):.0f} s", flush=True)
    tried = mutations
    if options.again:
        tried = [mutation for mutation in mutations if str(mutation) in LEFT.read_text().splitlines()]
    results = try_all(tried, mutations, refused, reasons)
    folders = sorted({mutation.file.path.parent.as_posix() for mutation in tried})
    print("| folder | mistakes | found | not found | do not compile |\n|---|---|---|---|---|")
    for folder in folders:
        counts = [results[outcome][folder] for outcome in ("found", "not found", "does not compile")]
        print(f"| {folder} | {sum(counts)} | " + " | ".join(map(str, counts)) + " |")
    return 1 if results["unexplained"]["all"] else 0


if __name__ == "__main__":
    sys.exit(main())
