#!/usr/bin/env python3
"""Runs the programs for Windows under wine on folders of models, and holds what they do to what the
programs of this system make of the same models. Scripts/test-windows.sh starts it.

The words of the command line and the names in a folder are UTF-8 here and UTF-16 there."""

import filecmp
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import program
from program import make_model, run, write

WINDOWS = pathlib.Path(os.environ["ZEK_WINDOWS"])
WRITE_MODELS = str(WINDOWS / "Tests/Packaging/WriteModels.exe")
ZEK = str(WINDOWS / "zek.exe")
ZEKTEXCOMP = str(WINDOWS / "ZEKTexComp.exe")

NAMES = [" a", "$HOME `x` ;&#%", "'+", "-n", "[a,b]", "É", "日本語", "😀", "É" * 120]

# Names that only one of the systems can give to a file.
LEFT_OUT = [
    ('control characters and < > : " / \\ | ? *', "Windows has no such names"),
    ("bytes that are not UTF-8", "wine has no name for them"),
    ("blanks and dots at the end", "Windows drops them from a path"),
]


def wine(*arguments, **options):
    """Runs a program for Windows and returns what came of it, with both outputs as bytes."""
    return subprocess.run(["wine", *arguments], capture_output=True, timeout=300, **options)


def slashed(text):
    """Returns a path, or output with paths in it, with the separators of this system."""
    return text.replace("\\", "/")


def list_files(folder):
    """Returns the paths of all files below a folder, from it on."""
    paths = (path for path in pathlib.Path(folder).rglob("*") if path.is_file())
    return sorted(str(path.relative_to(folder)) for path in paths)


def get_times(folder):
    return {name: os.stat(os.path.join(folder, name)).st_mtime_ns for name in list_files(folder)}


class WindowsTest(unittest.TestCase):
    maxDiff = None

    def assert_same(self, one, other):
        """The same files with the same bytes are below two folders."""
        names = list_files(one)
        self.assertEqual(names, list_files(other))
        _, different, unreadable = filecmp.cmpfiles(one, other, names, shallow=False)
        self.assertEqual(([], []), (different, unreadable))

    def read_output(self, result):
        """Returns the output of a program that is to be UTF-8 with plain ends of lines."""
        self.assertNotIn(b"\r", result.stdout)
        return result.stdout.decode()


class Tree(WindowsTest):
    """Models of all versions in folders with unfriendly names."""

    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.scratch.cleanup)
        cls.original = os.path.join(cls.scratch.name, "original")
        # Written there, the faces of cubemaps are in folders.
        made = wine(WRITE_MODELS, cls.original)
        assert made.returncode == 0, made
        own = pathlib.Path(cls.original) / "own"
        for i, name in enumerate(NAMES):
            (own / f"{i:03}").rename(own / name)
        # Longer than 260 characters.
        deep = own / ("long" * 40) / ("path" * 40)
        deep.parent.mkdir()
        (own / f"{len(NAMES):03}").rename(deep)
        cls.deep = str(deep.relative_to(cls.original))

    def copy(self, name):
        path = os.path.join(self.scratch.name, f"{self._testMethodName}-{name}")
        shutil.copytree(self.original, path)
        return path

    def test_mark_writes_the_same_bytes(self):
        here, there = self.copy("here"), self.copy("there")
        native = run("mark", "--cubemap-folders", ".", cwd=here)
        windows = wine(ZEK, "mark", ".", cwd=there)
        self.assertEqual(0, native.returncode, native)
        self.assertEqual(0, windows.returncode, windows)
        self.assert_same(here, there)
        # The order is that of the bytes of the paths, of which the separator is one.
        lines = slashed(self.read_output(windows)).splitlines()
        self.assertEqual(sorted(native.stdout.decode().splitlines()), sorted(lines))
        self.assertIn("日本語/model.zek: changed", "\n".join(lines))

        times = get_times(there)
        again = wine(ZEK, "mark", "--cubemap-folders", ".", cwd=there)
        self.assertIn("200 models: 0 changed, 200 as they were", self.read_output(again))
        self.assertEqual(times, get_times(there))
        self.assert_same(here, there)

    def test_mark_writes_copies(self):
        here, there = self.copy("here"), self.copy("there")
        marked, out = here + "-out", f"..\\{os.path.basename(there)}-out"
        self.assertEqual(0, run("mark", "--cubemap-folders", "-o", marked, ".", cwd=here).returncode)
        # The second is in place of what is there.
        for words in ((out, "."), (out + "\\own", "own")):
            windows = wine(ZEK, "mark", "-o", *words, cwd=there)
            self.assertEqual(0, windows.returncode, windows)
            self.assert_same(marked, there + "-out")
            self.assert_same(here, there)

    def test_info_and_check_tell_the_same(self):
        for command, own, other in (("info", (), ()), ("check", (), ("--cubemap-folders",))):
            with self.subTest(command):
                native = run(command, "--json", *other, ".", cwd=self.original)
                windows = wine(ZEK, command, "--json", *own, ".", cwd=self.original)
                self.assertEqual(native.returncode, windows.returncode)
                self.assertEqual(
                    self.read_models(native.stdout.decode()),
                    self.read_models(self.read_output(windows)),
                )

    def read_models(self, output):
        """Returns the models of JSON Lines by their paths, without what the separators are in."""
        models = {}
        for line in output.splitlines():
            model = json.loads(line)
            for finding in model.get("findings", []):
                finding["message"] = slashed(finding["message"]["text"])
                finding["path"] = slashed(finding.get("path", {}).get("text", ""))
            models[slashed(model.pop("model")["text"])] = model
        return models

    def test_dump_tells_the_same(self):
        for name in ("own/日本語/model.zek", self.deep + "/model.zek"):
            native = run("dump", "--elements", name, cwd=self.original)
            windows = wine(ZEK, "dump", "--elements", name, cwd=self.original)
            self.assertEqual(0, windows.returncode, windows)
            self.assertEqual(native.stdout.decode(), self.read_output(windows))

    def test_paths_come_from_a_list(self):
        names = [f"own\\{name}\\model.zek" for name in NAMES] + [slashed(self.deep), "shared"]
        paths = os.path.join(self.scratch.name, "list")
        content = "\0".join(names).encode()
        pathlib.Path(paths).write_bytes(content)
        from_file = wine(ZEK, "info", "--files0-from", paths, cwd=self.original)
        from_pipe = wine(ZEK, "info", "--files0-from", "-", cwd=self.original, input=content)
        self.assertEqual(0, from_file.returncode, from_file)
        output = self.read_output(from_file)
        self.assertEqual(output, self.read_output(from_pipe))
        for name in names[: len(NAMES)]:
            self.assertIn(f"\n{name}: version" if name != names[0] else name, output)
        self.assertIn(f"{len(NAMES) + 1 + 40} models:", output)

    def test_zektexcomp_sets_the_same_bytes(self):
        one, other = self.copy("one"), self.copy("other")
        self.assertEqual(0, wine(ZEK, "mark", "own", cwd=one).returncode)
        # Two models of each version, as each start takes long.
        for index in range(100, 100 + 2 * 21):
            name = f"own/{index:03}"
            result = wine(ZEKTEXCOMP, "model.zek", cwd=os.path.join(other, name))
            self.assertEqual(0, result.returncode, result)
            # In the text mode of that system.
            self.assertTrue(result.stdout.endswith(b"\r\nSucceeded\r\n"), result)
            self.assert_same(os.path.join(one, name), os.path.join(other, name))


class Program(WindowsTest):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = temporary.name

    def write(self, name, content=None):
        return os.fsdecode(write(self.folder, name.encode(), content))

    def test_statuses(self):
        self.write("good/a.zek", make_model(marker=1))
        self.write("bad/a.zek", b"ZEK")
        self.write("empty/a.txt", b"")
        for status, words in (
            (0, ("info", "good")),
            (0, ("check", "good")),
            (1, ("info", "bad")),
            (1, ("check", "bad")),
            (1, ("mark", "bad", "good")),
            (2, ("info", "empty")),
            (2, ("info", "none")),
            (2, ("info", "--wrong", "good")),
            (2, ()),
        ):
            result = wine(ZEK, *words, cwd=self.folder)
            self.assertEqual(status, result.returncode, words)
        self.assertIn("é: ".encode(), wine(ZEK, "info", "é", cwd=self.folder).stderr)

    def test_what_is_no_file_fails_without_waiting(self):
        self.write("a.zek", make_model())
        for name, status in (("NUL", 1), ("CON", 1), ("\\\\.\\pipe\\none", 2)):
            self.assertEqual(status, wine(ZEK, "dump", name, cwd=self.folder).returncode, name)

    def test_depfile_has_slashes(self):
        self.write("models/a.zek", make_model())
        self.write("models/tex_dxt/000.dds", b"")
        words = ("mark", "-o", "out.zek", "--depfile", "out.d", "models\\a.zek")
        result = wine(ZEK, *words, cwd=self.folder)
        self.assertEqual(0, result.returncode, result)
        depfile = pathlib.Path(self.folder, "out.d").read_text(encoding="utf-8")
        self.assertEqual("out.zek: \\\n models/ \\\n models/tex_dxt/\n", depfile)

    @unittest.skipIf(os.getuid() == 0, "the administrator may write to every file")
    def test_a_model_that_is_read_only_is_left_alone(self):
        path = self.write("a.zek", make_model())
        os.chmod(path, 0o444)
        content = pathlib.Path(path).read_bytes()
        result = wine(ZEK, "mark", "a.zek", cwd=self.folder)
        self.assertEqual(1, result.returncode, result)
        self.assertEqual(content, pathlib.Path(path).read_bytes())

    def test_nobody_reads(self):
        many = [f"many/{i:05}.zek" for i in range(2000)]
        for name in many:
            self.write(name, make_model(names=[b"x" * 100]))
        words = ["wine", ZEK, "info", "many"]
        process = subprocess.Popen(
            words, cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE
        )
        process.stdout.close()
        errors = process.stderr.read()
        process.stderr.close()
        self.assertEqual(1, process.wait(timeout=300), errors)
        self.assertIn(b"standard output", errors)


if __name__ == "__main__":
    print("Left out:")
    for names, reason in LEFT_OUT:
        print(f"  names with {names}: {reason}")
    print("  links: wine shows them as what they lead to")
    print("  Ctrl-C: wine has no console to press it in", flush=True)
    unittest.main(verbosity=2)
