#!/usr/bin/env python3
"""Checks in the libraries' symbols that they neither print nor end the program.

    check-symbols.py NM LIBRARY.a ...

A function that writes to a stream the caller opened is told from one that writes to standard output
by the name of the stream: who does not refer to stdout has no such stream.
"""

import collections
import pathlib
import re
import subprocess
import sys

# To standard output or error without naming a stream, the streams' names, and what writes to a
# descriptor or makes a stream of one.
PRINTING = re.compile(
    r"v?printf|puts|putchar(_unlocked)?|perror|psignal|v?dprintf"
    r"|stdout|stderr|_ZSt4(cout|cerr|clog)|_ZSt5wcout|_ZSt5wcerr|_ZSt5wclog"
    r"|p?writev?|fdopen|syscall"
)
# To a stream that the caller names.
WRITING = re.compile(r"v?fprintf|fputs|fputc|putc|_IO_putc|fwrite(_unlocked)?|fputs_unlocked")
ENDING = re.compile(
    r"abort|_?exit|_Exit|quick_exit|raise|kill|_ZSt9terminatev|_ZSt10unexpectedv"
    r"|__assert_fail|__assert_perror_fail|_ZSt21__glibcxx_assert_fail.*"
)

# What an object may refer to, and must: a name that is gone would leave the list too long.
# debug::Output is there to print, so any function will do there.
EXPECTED = {
    ("libZEKOverwriter.a", "CZEKOverwriterCompression.cpp.o"): {"fputs", "stdout"},
    ("libZEKFileSystem.a", "CFile.cpp.o"): {"fwrite"},
    ("libZEKMath3D.a", "S3D.cpp.o"): {"__assert_fail"},
}
PRINTER = ("libZEKDebug.a", "LMsg.cpp.o")

# Clang's own way to std::terminate, for an exception that leaves a function which is noexcept.
CLANG_TERMINATE = "__clang_call_terminate"


def read_symbols(nm, library):
    """Returns for each object in the library the symbols that it defines and those that it wants."""
    text = subprocess.run([nm, "-A", library], check=True, capture_output=True, text=True).stdout
    defined = collections.defaultdict(set)
    wanted = collections.defaultdict(set)
    for line in text.splitlines():
        place, kind, symbol = re.fullmatch(r"(.*):[0-9a-f ]* (\w) (\S+)", line).groups()
        member = (pathlib.Path(library).name, place.rsplit(":", 1)[1])
        (wanted if kind == "U" else defined)[member].add(symbol)
    return defined, wanted


def remove_fortification(symbol):
    """Returns the name of the function that was replaced by one that checks its buffers."""
    return re.sub(r"^__(\w+)_chk$", r"\1", symbol)


def find_suspects(defined, wanted):
    """Returns the names that an object refers to of functions that print, write or end."""
    names = {remove_fortification(symbol) for symbol in wanted}
    groups = (PRINTING, WRITING, ENDING)
    suspects = {name for name in names if any(group.fullmatch(name) for group in groups)}
    if CLANG_TERMINATE in defined:
        suspects.discard("_ZSt9terminatev")
    return suspects


def main():
    nm, *libraries = sys.argv[1:]
    found = {}
    for library in libraries:
        defined, wanted = read_symbols(nm, library)
        if not wanted:
            print(f"{library}: nm found no symbol that is wanted", file=sys.stderr)
            return 1
        for member in wanted:
            suspects = find_suspects(defined[member], wanted[member])
            if suspects:
                found[member] = suspects

    faults = []
    if not any(PRINTING.fullmatch(name) for name in found.pop(PRINTER, ())):
        faults.append(f"{PRINTER[1]} in {PRINTER[0]} does not print")
    for member in sorted(found.keys() | EXPECTED.keys()):
        for name in sorted(found.get(member, set()) - EXPECTED.get(member, set())):
            faults.append(f"{member[1]} in {member[0]} refers to {name}")
        for name in sorted(EXPECTED.get(member, set()) - found.get(member, set())):
            faults.append(f"{member[1]} in {member[0]} does not refer to {name}, but is listed here")
    if faults:
        print("\n".join(faults), file=sys.stderr)
        return 1
    print(f"{len(libraries)} libraries: none prints or ends the program but where it is meant to")
    return 0


if __name__ == "__main__":
    sys.exit(main())
