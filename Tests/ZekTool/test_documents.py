#!/usr/bin/env python3
"""Holds the manual and the completion to the program."""

import re
import subprocess
import unittest

from program import PROGRAM, ROOT, run

COMMANDS = ("info", "dump", "check", "mark", "report")
MANUAL = (ROOT / "Documents/zek.1").read_text()
COMPLETION = ROOT / "Source/ZekTool/zek.bash"


def get_long_options(command):
    """Returns the long options of a command by its help."""
    return set(re.findall(r"--[a-z0-9-]+", run("help", command).stdout.decode().split("Options:")[1]))


def complete(*words):
    """Returns what the completion offers for the last of the words."""
    script = f"""
        source {COMPLETION}
        zek() {{ {PROGRAM} "$@"; }}
        compopt() {{ :; }}
        COMP_WORDS=("$@")
        COMP_CWORD=$(($# - 1))
        _zek
        printf '%s\\n' "${{COMPREPLY[@]}}"
    """
    result = subprocess.run(
        ["bash", "-c", script, "bash", "zek", *words], capture_output=True, check=True, text=True
    )
    return set(result.stdout.split())


class Manual(unittest.TestCase):
    def test_has_every_option_and_no_other(self):
        documented = {o.replace("\\", "") for o in re.findall(r"Fl -([a-z0-9-]+)", MANUAL)}
        options = set().union(*(get_long_options(command) for command in COMMANDS))
        self.assertEqual({o[2:] for o in options} - {"help"}, documented - {"version"})

    def test_says_of_exit_statuses_what_the_program_says(self):
        header = (ROOT / "Source/ZekTool/Output/EExitStatus.h").read_text()
        statuses = re.findall(r"= (\d+), +///< (.*)", header)
        self.assertEqual(4, len(statuses))
        section = MANUAL.split(".Sh EXIT STATUS")[1].split(".Sh ")[0]
        items = re.findall(r"\.It (\d+)\n([^.][^\n]*\n(?:[^.][^\n]*\n)*)", section)
        self.assertEqual(statuses, [(number, " ".join(text.split())) for number, text in items])


class Completion(unittest.TestCase):
    def test_offers_the_commands(self):
        self.assertEqual({*COMMANDS, "help", "--version"}, complete(""))
        self.assertEqual({"mark"}, complete("m"))
        self.assertEqual(set(COMMANDS), complete("help", ""))

    def test_offers_every_option_of_a_command(self):
        for command in COMMANDS:
            self.assertEqual(get_long_options(command), complete(command, "-"), command)

    def test_offers_values(self):
        self.assertEqual({"meshes"}, complete("dump", "--section", "me"))
        self.assertIn("not-marked", complete("check", "--ignore", ""))


if __name__ == "__main__":
    unittest.main()
