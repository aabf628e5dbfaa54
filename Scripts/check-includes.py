#!/usr/bin/env python3
"""Checks that each library includes only what its CMakeLists.txt says it builds on.

The linker finds a wrong include of code, but not one of a header that is inline as a whole.
"""

import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent / "Source"


def read_libraries():
    """Returns the folder of each library and the names of the libraries that it builds on."""
    libraries = {}
    for path in SOURCE.glob("*/**/CMakeLists.txt"):
        call = re.search(r"zek_add_library\(([^)]*)\)", path.read_text())
        if call is None:
            continue
        words = call.group(1).split()
        others = words[words.index("BUILDS_ON") + 1 :] if "BUILDS_ON" in words else []
        libraries[words[0]] = (path.parent.relative_to(SOURCE), others)
    return libraries


def main():
    libraries = read_libraries()
    faults = []
    for name, (folder, others) in sorted(libraries.items()):
        allowed = {str(libraries[other][0]) for other in [name, *others]}
        for path in sorted((SOURCE / folder).glob("*.*")):
            for included in re.findall(r'#include "([^"]+)"', path.read_text()):
                if str(pathlib.Path(included).parent) not in allowed:
                    faults.append(f"{path.relative_to(SOURCE)}: {name} does not build on {included}")
    if faults:
        print("\n".join(faults), file=sys.stderr)
        print("Name the library after BUILDS_ON, or include something lower.", file=sys.stderr)
        return 1
    for name, (folder, others) in sorted(libraries.items(), key=lambda item: str(item[1][0])):
        print(f"{name:<14} builds on {', '.join(others) or 'nothing'}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
