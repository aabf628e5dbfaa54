#!/usr/bin/env python3
"""Compares what every command prints with the files in Golden. With --update it writes them.

The models are those of WriteModels: every version, some of them marked wrongly.
"""

import difflib
import pathlib
import shutil
import subprocess
import sys
import tempfile

import program

GOLDEN = pathlib.Path(__file__).resolve().parent / "Golden"

OLD, FULL, NEW = "own/000/model.zek", "own/018/model.zek", "own/019/model.zek"
CUT = "cut.zek"

# The commands of a line are run one after the other on a fresh copy of the models.
CASES = {
    "help": [["help"]],
    "help-info": [["help", "info"]],
    "help-dump": [["help", "dump"]],
    "help-check": [["help", "check"]],
    "help-mark": [["help", "mark"]],
    "help-report": [["help", "report"]],
    "version": [["--version"]],
    "usage": [[], ["walk"], ["info"], ["mark", "--frob", "x"], ["info", "none"], ["check", "empty"]],
    "info": [["info", OLD, FULL, NEW, CUT]],
    "info-one": [["info", NEW]],
    "info-json": [["info", "--json", OLD, FULL, NEW, CUT]],
    "dump": [["dump", FULL]],
    "dump-cut": [["dump", CUT]],
    "dump-elements": [["dump", "--elements", "--section", "meshes", FULL]],
    "dump-json": [["dump", "--json", NEW]],
    "dump-elements-json": [["dump", "--json", "--elements", "--section", "meshes", FULL]],
    "dump-cut-json": [["dump", "--json", CUT]],
    "check": [["check", OLD, FULL, NEW, CUT]],
    "check-json": [["check", "--json", OLD, FULL, NEW, CUT]],
    "check-deep-json": [["check", "--deep", "--cubemap-folders", "--json", FULL]],
    "check-few": [["check", "--max-findings", "1", NEW]],
    "check-choice": [["check", "--ignore", "variant-without-flag", "--error", "partial-family", OLD]],
    "explain": [["check", "--explain", "not-marked"]],
    "mark": [["mark", OLD, FULL, NEW, CUT], ["mark", "shared"], ["mark", "shared"]],
    "mark-dry-run": [["mark", "-n", OLD, FULL, NEW, CUT]],
    "mark-json": [["mark", "--json", OLD, FULL, NEW, CUT], ["mark", "--json", NEW]],
    "mark-output-json": [["mark", "--json", "-o", "out.zek", NEW]],
    "mark-dry-run-json": [["mark", "--json", "-n", NEW]],
    "report": [["report", OLD, FULL, NEW, CUT], ["report", "-o", "none/page.html", NEW]],
    "report-csv": [["report", "--csv", OLD, FULL, NEW, CUT]],
    "report-json": [["report", "--json", OLD, FULL, NEW, CUT]],
}


def make_models(folder):
    """Writes those models that the commands name, with their variants."""
    with tempfile.TemporaryDirectory() as parent:
        models = pathlib.Path(parent) / "models"
        subprocess.run([program.WRITE_MODELS, models], check=True, stdout=subprocess.DEVNULL)
        for path in (OLD, FULL, NEW, "shared/0/model0.zek"):
            name = pathlib.Path(path).parent
            shutil.copytree(models / name, folder / name)
    (folder / "empty").mkdir()
    (folder / CUT).write_bytes((folder / FULL).read_bytes()[:1000])


def run_case(models, commands):
    """Returns the commands with what they print and their statuses."""
    text = ""
    with tempfile.TemporaryDirectory() as parent:
        folder = pathlib.Path(parent) / "models"
        shutil.copytree(models, folder)
        for words in commands:
            result = program.run(*words, cwd=folder)
            text += f"$ zek {' '.join(words)}\n{result.stdout.decode()}"
            text += f"-- standard error\n{result.stderr.decode()}" if result.stderr else ""
            text += f"-- status {result.returncode}\n"
            if "--json" in words:
                program.read_json(words[0], result.stdout)
    return text


def main():
    with tempfile.TemporaryDirectory() as parent:
        models = pathlib.Path(parent) / "models"
        make_models(models)
        return compare(models, "--update" in sys.argv)


def compare(models, is_update):
    """Compares the outputs, or writes them anew, and returns the exit status."""
    differences = 0
    for name, commands in CASES.items():
        path = GOLDEN / f"{name}.txt"
        text = run_case(models, commands)
        if is_update:
            path.write_text(text)
            continue
        expected = path.read_text() if path.exists() else ""
        if text != expected:
            differences += 1
            lines = difflib.unified_diff(
                expected.splitlines(), text.splitlines(), str(path), "now", lineterm=""
            )
            print("\n".join(lines))
    for path in GOLDEN.glob("*.txt"):
        if path.stem not in CASES:
            differences += 1
            print(f"{path}: of no command")
    print(f"{len(CASES)} outputs, {differences} differ from Golden")
    if differences:
        print("If that is wanted: Scripts/update-golden.sh")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
