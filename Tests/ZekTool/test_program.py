#!/usr/bin/env python3
"""Runs the program as people and other programs do: statuses, unfriendly names, pipes, terminals,
Ctrl-C."""

import base64
import datetime
import fcntl
import os
import pty
import re
import resource
import select
import signal
import struct
import subprocess
import tempfile
import termios
import time
import unittest

import program
from program import PROGRAM, make_model, read_json, run, write

UNFRIENDLY = [
    b" ",
    b"$HOME `x` ;&#%:",
    b"'\"\\",
    b"++",
    b"--",
    b"-n",
    b"[a,b]",
    b"a\nb\x1b[2J",
    b"\xe6\x97\xa5\xe6\x9c\xac",
    b"\xff\xe9",
]


def start(*arguments, **options):
    return subprocess.Popen([PROGRAM, *arguments], **options)


class ProgramTest(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = temporary.name

    def write(self, name, content=None):
        return write(self.folder, name, content)

    def write_many(self, count):
        for i in range(count):
            self.write(b"many/%05d.zek" % i)
        return os.path.join(self.folder, "many")

    def read(self, path):
        with open(path, "rb") as file:
            return file.read()

    def read_all(self):
        files = [os.path.join(top, name) for top, _, names in os.walk(self.folder) for name in names]
        return {path: self.read(path) for path in files}


class Statuses(ProgramTest):
    def test_all_well(self):
        self.write(b"a.zek", make_model(marker=1))
        for command in ("info", "check", "mark"):
            self.assertEqual(0, run(command, self.folder).returncode, command)
        self.assertEqual(0, run("dump", self.folder + "/a.zek").returncode)

    def test_a_model_that_fails_does_not_keep_others_from_being_done(self):
        self.write(b"b.zek", b"no model")
        good = [self.write(name) for name in (b"a.zek", b"c.zek")]
        result = run("mark", self.folder)
        self.assertEqual(1, result.returncode)
        for path in good:
            self.assertEqual(make_model(marker=1), self.read(path))
        lines = result.stdout.decode().splitlines()
        self.assertEqual("3 models: 2 changed, 0 as they were, 1 failed", lines[-2])
        self.assertEqual(f"failed: {self.folder}/b.zek", lines[-1])

    def test_a_stale_flag_stops_a_build(self):
        self.write(b"a.zek", make_model(flags=b"\1\0\0\0", marker=1))
        result = run("check", self.folder)
        self.assertEqual(1, result.returncode)
        self.assertIn(b"flag-without-variant", result.stdout)
        self.assertEqual(0, run("check", "--ignore", "flag-without-variant", self.folder).returncode)

    def test_nothing_is_done_when_one_path_is_wrong(self):
        path = self.write(b"a.zek")
        os.mkdir(self.folder + "/empty")
        for wrong in ("none", "empty"):
            result = run("mark", "a.zek", wrong, cwd=self.folder)
            self.assertEqual(2, result.returncode)
            self.assertEqual(b"", result.stdout)
            self.assertIn(wrong.encode(), result.stderr)
            self.assertEqual(make_model(), self.read(path))

    def test_unknown_codes_are_wrong_usage(self):
        self.write(b"a.zek")
        for option in ("--ignore", "--error", "--explain"):
            result = run("check", option, "frob", self.folder)
            self.assertEqual(2, result.returncode)
            self.assertIn(b"not-marked", result.stderr)


class Variants(ProgramTest):
    def test_of_another_model_are_not_to_be_removed(self):
        self.write(b"hall.zek", make_model(flags=b"\0\0\0\1", marker=1))
        self.write(b"tex_dxt/000.dds", b"variant")
        self.write(b"tex_dxt/001.dds", b"variant")
        self.assertIn(b"[unused-variant]", run("check", self.folder).stdout)
        both = make_model((b"a.png", b"b.png"), b"\0\0\0\1", marker=1)
        self.write(b"hall.mdl", both)
        result = run("check", "--name", "*.zek", "--name", "*.mdl", self.folder)
        self.assertIn(b"2 models: ", result.stdout)
        self.assertNotIn(b"unused-variant", result.stdout)


class Order(ProgramTest):
    def test_is_that_of_the_list_with_any_number_of_threads(self):
        models = os.path.join(self.folder, "models")
        subprocess.run([program.WRITE_MODELS, models], check=True, stdout=subprocess.DEVNULL)
        for command in (["info"], ["check", "--json"], ["mark", "-n"]):
            outputs = {run(*command, "-j", str(n), models).stdout for n in (1, 2, 64)}
            self.assertEqual(1, len(outputs))
        lines = read_json("info", run("info", "--json", models).stdout)
        paths = [os.fsencode(line["model"]["text"]) for line in lines]
        self.assertEqual(200, len(paths))
        self.assertEqual(sorted(paths), paths)


class Names(ProgramTest):
    def setUp(self):
        super().setUp()
        self.paths = [self.write(name + b"/" + name + b".zek") for name in UNFRIENDLY]

    def decode(self, text):
        return text["text"].encode() if "text" in text else base64.b64decode(text["bytes"])

    def test_below_a_folder(self):
        result = run("mark", "--json", self.folder)
        self.assertEqual(0, result.returncode)
        objects = read_json("mark", result.stdout)
        self.assertEqual(sorted(self.paths), [self.decode(o["model"]) for o in objects])
        for path in self.paths:
            self.assertEqual(make_model(marker=1), self.read(path))

    def test_on_the_command_line(self):
        for command in ("info", "check", "mark"):
            result = run(command, "--json", "--", *UNFRIENDLY, cwd=self.folder)
            self.assertEqual(len(UNFRIENDLY), len(read_json(command, result.stdout)), command)
        for name in UNFRIENDLY:
            result = run("dump", "--json", "--", name + b"/" + name + b".zek", cwd=self.folder)
            self.assertEqual(0, result.returncode)
            read_json("dump", result.stdout)

    def test_in_text_each_model_has_one_line_of_clean_text(self):
        result = run("mark", self.folder)
        lines = result.stdout.decode().splitlines()
        self.assertEqual(len(UNFRIENDLY) + 1, len(lines))
        self.assertNotIn("\x1b", result.stdout.decode())

    def test_of_textures(self):
        names = UNFRIENDLY + [b"", b"<script>", b"x" * 10000]
        path = self.write(b"named.zek", make_model(names=names))
        for command in ("info", "dump", "check", "mark"):
            read_json(command, run(command, "--json", path).stdout)
            run(command, path).stdout.decode()
        objects = read_json("info", run("info", "--json", path).stdout)
        self.assertEqual(names, [self.decode(t["name"]) for t in objects[0]["textures"]])

    def test_of_a_texture_that_is_cut(self):
        for name in UNFRIENDLY:
            model = make_model(names=[name])
            path = self.write(b"cut.zek", model[: model.index(name) + len(name) + 1])
            for command in ("info", "dump", "check", "mark"):
                text = run(command, path).stdout.decode()
                self.assertIn("texture 0", text)
                self.assertNotIn("\x1b", text)


class Lists(ProgramTest):
    def setUp(self):
        super().setUp()
        self.paths = [self.write(name + b".zek") for name in UNFRIENDLY]
        self.list = b"\0".join(self.paths)

    def test_from_standard_input_and_from_a_file(self):
        for end in (b"", b"\0"):
            result = run("mark", "--json", "--files0-from", "-", input=self.list + end)
            self.assertEqual(0, result.returncode)
            self.assertEqual(len(self.paths), len(read_json("mark", result.stdout)))
        path = self.write(b"list", self.list)
        result = run("info", "--json", b"--files0-from=" + path)
        self.assertEqual(len(self.paths), len(read_json("info", result.stdout)))

    def test_what_is_wrong_in_it_fails_in_its_place(self):
        os.mkdir(self.folder + "/empty")
        listed = b"\0".join([self.paths[0], b"none", b"empty", b"", self.paths[1]])
        result = run("info", "--json", "--files0-from", "-", input=listed, cwd=self.folder)
        self.assertEqual(1, result.returncode)
        outcomes = [o["outcome"] for o in read_json("info", result.stdout)]
        self.assertEqual(["shown", "failed", "failed", "failed", "shown"], outcomes)
        self.assertIn(b"5 models: 2 shown, 3 failed", result.stderr)

    def test_one_that_is_empty_or_not_there_is_wrong_usage(self):
        self.assertEqual(2, run("info", "--files0-from", "-", input=b"").returncode)
        self.assertEqual(2, run("info", "--files0-from", self.folder + "/none").returncode)
        result = run("info", "--files0-from", self.folder)
        self.assertEqual(2, result.returncode)
        self.assertIn(b"it has to be a file of paths, each ended by a zero byte", result.stderr)

    def test_what_is_not_there_is_a_finding_of_a_check(self):
        for words, errors in (([], 1), (["--ignore", "cannot-open"], 0)):
            result = run("check", "--json", *words, "--files0-from", "-", input=b"none", cwd=self.folder)
            (model,) = read_json("check", result.stdout)
            self.assertEqual((errors, errors), (result.returncode, model["errors"]))
            self.assertEqual(["cannot-open"] * errors, [f["code"] for f in model["findings"]])

    def test_results_come_before_the_list_ends(self):
        process = start("info", "--files0-from", "-", stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        process.stdin.write(self.paths[0] + b"\0")
        process.stdin.flush()
        self.assertTrue(process.stdout.readline())
        process.communicate(timeout=60)
        self.assertEqual(0, process.returncode)


class Threads(ProgramTest):
    def test_are_as_many_as_there_is_room_for(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (300_000_000, 300_000_000))

        if run("--version", preexec_fn=limit).returncode != 0:
            self.skipTest("the program takes more memory, as it does with a sanitizer")
        result = run("info", "-j", "200", self.write_many(300), preexec_fn=limit)
        self.assertEqual((0, b""), (result.returncode, result.stderr))
        self.assertIn(b"300 models: 300 shown, 0 failed", result.stdout)

    def test_end_with_a_reason_when_memory_runs_out(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (size, size))

        folder = self.write_many(2000)
        size = 20_000_000
        if run("--version", preexec_fn=limit).returncode != 0:
            self.skipTest("the program takes more memory, as it does with a sanitizer")
        # Where it runs out, and how far the work then is, depends on how the threads take turns.
        for size in range(20_000_000, 300_000_000, 20_000_000):
            result = run("check", "-j", "100", folder, preexec_fn=limit)
            lines = result.stdout.decode().splitlines()
            summary = [line for line in lines if line.startswith("2000 models: ")]
            self.assertEqual(1, result.returncode, size)
            self.assertEqual([] if summary else [b"zek: not enough memory"], result.stderr.splitlines())
            models = {line.split(":")[0] for line in lines if line.startswith(folder)}
            self.assertEqual(2000, len(models), size)

    def test_that_have_too_few_descriptors_take_no_variant_for_missing(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_NOFILE, (4, 4))

        path = self.write(b"a.zek", make_model(flags=b"\0\0\0\1", marker=1))
        self.write(b"tex_dxt/000.dds", b"variant")
        self.assertIn(b"as it was", run("mark", path).stdout)
        if run("info", path, "-j", "1", preexec_fn=limit).returncode != 0:
            self.skipTest("the program has more files open, as it does with a sanitizer")
        for command in ("mark", "check", "report"):
            result = run(command, path, "-j", "1", preexec_fn=limit, cwd=self.folder)
            self.assertEqual(0 if command == "report" else 1, result.returncode)
            page = b"" if command != "report" else self.read(self.folder + "/report.html")
            self.assertIn(b"Too many open files", result.stdout + page)
        self.assertEqual(make_model(flags=b"\0\0\0\1", marker=1), self.read(path))


class Outputs(ProgramTest):
    def test_a_full_disk_is_a_failure(self):
        self.write(b"a.zek")
        for words in (["info", "."], ["dump", "a.zek"], ["check", "."], ["mark", "."], ["help"],
                      ["report", "--json", "."], ["report", "--csv", "."]):  # fmt: skip
            with open("/dev/full", "wb") as full:
                process = start(*words, cwd=self.folder, stdout=full, stderr=subprocess.PIPE)
                errors = process.communicate(timeout=60)[1]
            self.assertEqual(1, process.returncode, words)
            self.assertIn(b"No space left on device", errors)

    def run_on_full_disk(self, *words, **options):
        """Returns what comes to standard error."""
        with open("/dev/full", "wb") as full:
            result = subprocess.run([PROGRAM, *words], stdout=full, stderr=subprocess.PIPE,
                                    timeout=60, **options)  # fmt: skip
        self.assertEqual(1, result.returncode, words)
        return result.stderr.decode()

    def test_models_that_are_not_done_for_it_are_counted(self):
        folder = self.write_many(5000)
        for words in (["info"], ["info", "--json"], ["report", "--csv"], ["report", "--json"]):
            errors = self.run_on_full_disk(*words, folder)
            done, rest = re.search(r"^5000 models: (\d+) .*, (\d+) not done$", errors, re.M).groups()
            self.assertEqual(5000, int(done) + int(rest))
            self.assertGreater(int(rest), 0)
            self.assertIn("No space left on device", errors)

    def test_a_list_is_not_read_on_for_it(self):
        paths = self.write(b"a.zek") + b"\0"
        for words in (["info"], ["report", "--csv"]):
            errors = self.run_on_full_disk(*words, "--files0-from", "-", input=paths * 20000)
            self.assertIn("zek: -: no more of it is read", errors)
            done = re.search(r"^(\d+) models: ", errors, re.M).group(1)
            self.assertLess(int(done), 20000)

    def test_a_limit_of_file_sizes_is_a_failure_and_no_signal(self):
        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (20_000, 20_000))

        path = self.write(b"a.zek", make_model(names=[b"x"] * 5000))
        for words in (["mark", "a.zek", "-o", "out.zek"], ["report", "-o", "page", "a.zek"]):
            result = run(*words, cwd=self.folder, preexec_fn=limit)
            self.assertEqual(1, result.returncode, words)
            self.assertIn(b"File too large", result.stdout + result.stderr)
            self.assertEqual(["a.zek"], os.listdir(self.folder))
        with open(self.folder + "/log", "wb") as log:
            process = start("dump", path, stdout=log, stderr=subprocess.PIPE, preexec_fn=limit)
            self.assertIn(b"File too large", process.communicate(timeout=60)[1])
        self.assertEqual(1, process.returncode)

    def test_a_closed_pipe_is_a_failure_and_no_signal(self):
        folder = self.write_many(3000)
        for command in ("info", "mark"):
            process = start(command, folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            process.stdout.close()
            process.stderr.read()
            process.stderr.close()
            self.assertEqual(1, process.wait(timeout=60))

    def test_standard_error_that_goes_there_too_is_no_signal(self):
        folder = self.write_many(3000)
        for words in (["info", folder], ["mark", folder], ["help"], ["dump", "none"], ["frob"]):
            with open("/dev/full", "wb") as full:
                process = start(*words, stdout=full, stderr=subprocess.STDOUT)
                self.assertEqual(2 if words[-1] in ("none", "frob") else 1, process.wait(timeout=60))
        for words in (["info", folder], ["frob"]):
            reader, writer = os.pipe()
            os.close(reader)
            process = start(*words, stdout=writer, stderr=subprocess.STDOUT)
            os.close(writer)
            self.assertEqual(2 if words == ["frob"] else 1, process.wait(timeout=60))

    def test_a_closed_pipe_ends_a_dump(self):
        path = self.write(b"large.zek", make_model(names=[b"x"] * 200000))
        process = start("dump", path, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        process.stdout.readline()
        process.stdout.close()
        self.assertIn(b"Broken pipe", process.stderr.read())
        process.stderr.close()
        self.assertEqual(1, process.wait(timeout=60))


class Models(ProgramTest):
    def test_what_is_no_file_is_not_waited_for(self):
        os.mkfifo(self.folder + "/fifo.zek")
        os.symlink("/dev/zero", self.folder + "/device.zek")
        for command in ("info", "check", "mark"):
            result = run(command, self.folder)
            self.assertEqual(1, result.returncode)
            self.assertIn(b"2 models: ", result.stdout)
        self.assertEqual(1, run("dump", self.folder + "/fifo.zek").returncode)

    def test_that_share_a_folder_of_variants_do_not_each_go_through_all_files_in_it(self):
        models = self.write_many(100)
        self.write(b"many/tex_dxt/000.dds")

        def measure(first, last):
            for i in range(first, last):
                self.write(b"many/tex_dxt/%d.meta" % i)
            before = resource.getrusage(resource.RUSAGE_CHILDREN)
            run("check", "-j", "1", models)
            after = resource.getrusage(resource.RUSAGE_CHILDREN)
            return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime

        seconds = measure(0, 2000)
        self.assertLess(measure(2000, 14000), 3 * seconds)

    def test_go_below_an_output_folder_by_their_paths(self):
        originals = [self.write(b"in/" + name) for name in (b"a/1.zek", b"b/1.zek", b"1.zek")]
        out = self.folder + "/out"
        self.assertEqual(0, run("mark", "in", "-o", "out", cwd=self.folder).returncode)
        for path in originals:
            self.assertEqual(make_model(), self.read(path))
            written = path.replace(b"/in/", b"/out/")
            self.assertEqual(make_model(marker=1), self.read(written))
        self.assertEqual(0, run("mark", "in/1.zek", "-o", "one", cwd=self.folder).returncode)
        self.assertEqual(make_model(marker=1), self.read(self.folder + "/one"))
        os.remove(out + "/1.zek")
        self.assertEqual(0, run("mark", "in/1.zek", "-o", out, cwd=self.folder).returncode)
        self.assertEqual(make_model(marker=1), self.read(out + "/1.zek"))

    def test_never_go_over_each_other_or_over_themselves(self):
        for name in (b"a/1.zek", b"b/1.zek"):
            self.write(name)
        result = run("mark", "a", "b", "-o", "out", cwd=self.folder)
        self.assertEqual(2, result.returncode)
        self.assertFalse(os.path.exists(self.folder + "/out"))
        for out in ("a", "a/1.zek", "./a/../a/1.zek"):
            for words in ([], ["-n"]):
                result = run("mark", "a/1.zek", "-o", out, *words, cwd=self.folder)
                self.assertEqual(1, result.returncode)
                self.assertIn(b"the model itself", result.stdout)
        self.assertEqual(make_model(), self.read(self.folder + "/a/1.zek"))

    def test_never_go_over_a_model_of_the_list(self):
        for name in (b"src/gen/1.zek", b"out/gen/1.zek", b"out/1.zek", b"in/1.zek", b"in/2.zek"):
            self.write(name, make_model(names=[name]))
        os.mkdir(self.folder + "/links")
        os.symlink("../in/2.zek", self.folder + "/links/1.zek")
        os.mkdir(self.folder + "/pair")
        os.symlink("../out", self.folder + "/pair/gen")
        os.symlink("out/gen/1.zek", self.folder + "/link.zek")
        for words in (
            ["src", "out/gen", "-o", "out"],
            ["in", "-o", "links"],
            ["src", "out/1.zek", "-o", "pair"],
            ["src", "link.zek", "-o", "out"],
            ["src", "out/gen", "-o", "new/../out"],
            ["in", "-o", "new/../in/below"],
        ):
            before = self.read_all()
            result = run("mark", *words, cwd=self.folder)
            self.assertEqual(2, result.returncode, (words, result))
            self.assertEqual(before, self.read_all(), words)

    def test_are_not_where_the_output_of_the_program_goes(self):
        self.write(b"1.zek")
        for words in (["mark", "1.zek", "-o"], ["mark", "1.zek", "--depfile"], ["report", "1.zek", "-o"]):
            with open(self.folder + "/log", "wb") as log:
                log.write(b"before\n")
                log.flush()
                process = start(*words, "/dev/stdout", stdout=log, stderr=subprocess.STDOUT, cwd=self.folder)
                self.assertEqual(1, process.wait(timeout=60), words)
            text = self.read(self.folder + "/log")
            self.assertTrue(text.startswith(b"before\n"), text)
            self.assertIn(b"where the program's own output goes", text)
        self.assertEqual(make_model(), self.read(self.folder + "/1.zek"))

    def test_do_not_lie_where_the_next_run_looks_for_models(self):
        self.write(b"in/1.zek")
        for words in (["in", "-o", "in/out"], ["in", "-o", "in"], [".", "-o", "out"], ["in", "-o", "./in/a/b"]):
            result = run("mark", *words, cwd=self.folder)
            self.assertEqual(2, result.returncode, words)
            self.assertIn(b"name a folder outside", result.stderr)
            self.assertEqual(["1.zek"], os.listdir(self.folder + "/in"))
        self.assertEqual(make_model(), self.read(self.folder + "/in/1.zek"))

    def test_of_several_models_go_to_a_folder(self):
        for name in (b"1.zek", b"2.zek", b"out"):
            self.write(name)
        result = run("mark", "1.zek", "2.zek", "-o", "out", cwd=self.folder)
        self.assertEqual(2, result.returncode)
        self.assertIn(b"out is a file", result.stderr)
        self.assertEqual(make_model(), self.read(self.folder + "/out"))

    def test_an_option_whose_value_is_empty_is_wrong_usage(self):
        path = self.write(b"1.zek")
        for words in (["mark", "-o", ""], ["mark", "--output="], ["mark", "--depfile", ""],
                      ["check", "--explain", ""], ["info", "--files0-from", ""], ["report", "-o", ""]):  # fmt: skip
            result = run(*words, "1.zek", cwd=self.folder)
            self.assertEqual(2, result.returncode, words)
            self.assertIn(b"its value is empty", result.stderr)
        self.assertEqual((make_model(), ["1.zek"]), (self.read(path), os.listdir(self.folder)))

    def test_and_depfiles_are_different_files(self):
        path = self.write(b"1.zek")
        os.link(path, self.folder + "/link.zek")
        for words in (["--depfile", "1.zek"], ["--depfile", "./link.zek"], ["-o", "x", "--depfile", "x"]):
            result = run("mark", *words, "1.zek", cwd=self.folder)
            self.assertEqual(1, result.returncode, words)
            self.assertIn(b"the depfile is the model or its output", result.stdout)
            self.assertEqual(make_model(), self.read(path))
        other = self.write(b"2.zek")
        for words, reason in (
            (["-o", "x", "--depfile", "./x"], b"or its output"),
            (["--depfile", "2.zek"], b"another model"),
        ):
            for dry_run in ([], ["-n"]):
                result = run("mark", *words, *dry_run, "1.zek", cwd=self.folder)
                self.assertEqual(1, result.returncode, words)
                self.assertIn(reason, result.stdout)
        self.assertEqual((make_model(), make_model()), (self.read(path), self.read(other)))

    def test_a_dry_run_writes_nothing_anywhere(self):
        self.write(b"in/1.zek")
        for words in (["in"], ["in", "-o", "out"], ["in/1.zek", "--depfile", "1.d"]):
            result = run("mark", "-n", *words, cwd=self.folder)
            self.assertEqual(0, result.returncode)
            self.assertIn(b"processed marker: 0 -> 1", result.stdout)
            self.assertEqual(["in"], os.listdir(self.folder))
        self.assertEqual(make_model(), self.read(self.folder + "/in/1.zek"))

    def test_that_need_no_change_are_written_when_always_is_asked_for(self):
        path = self.write(b"a.zek")
        run("mark", path)
        os.utime(path, (1000, 1000))
        run("mark", path)
        self.assertEqual(1000, os.stat(path).st_mtime)
        run("mark", "--always", path)
        self.assertLess(1000, os.stat(path).st_mtime)

    def test_a_depfile_is_for_one(self):
        self.write(b"1.zek")
        self.assertEqual(2, run("mark", "--depfile", "d", ".", cwd=self.folder).returncode)
        self.assertEqual(0, run("mark", "--depfile", "d", "1.zek", cwd=self.folder).returncode)
        self.assertIn(b"1.zek:", self.read(self.folder + "/d"))


class Reports(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write(b"models/a.zek", make_model(flags=b"\1\0\0\0"))
        self.write(b"models/b.zek", b"no model")

    def report(self, *words):
        return run("report", *words, "models", cwd=self.folder)

    def test_go_to_a_page_in_the_working_folder_and_succeed_whatever_the_models(self):
        result = self.report()
        self.assertEqual((0, b""), (result.returncode, result.stderr))
        lines = result.stdout.decode().splitlines()
        self.assertEqual("2 models: 1 read, 1 refused, 1 stale; 4 of 4 variants are missing", lines[0])
        self.assertEqual(["failed: models/b.zek", "written: report.html"], lines[1:])
        page = self.read(self.folder + "/report.html")
        self.assertTrue(page.startswith(b"<!DOCTYPE html>") and page.endswith(b"</html>\n"))

    def test_name_the_time_of_the_run(self):
        before = int(time.time())
        self.report()
        text = re.search(rb'"time":"([^"]*)Z"', self.read(self.folder + "/report.html"))[1].decode()
        named = datetime.datetime.fromisoformat(text + "+00:00").timestamp()
        self.assertLessEqual(before, named)
        self.assertLessEqual(named, time.time())

    def test_go_where_they_are_to_go(self):
        for words in (["--csv"], ["--json"]):
            printed = self.report(*words)
            self.assertEqual(0, printed.returncode)
            self.assertIn(b"2 models: 1 read, 1 refused", printed.stderr)
            written = self.report(*words, "-o", "out")
            self.assertEqual(printed.stdout, self.read(self.folder + "/out"))
            self.assertIn(b"written: out", written.stdout)

    def test_are_the_same_with_any_number_of_threads(self):
        self.write_many(300)
        for words in ([], ["--csv"], ["--json"]):
            reports = set()
            for threads in ("1", "8"):
                run("report", *words, "-j", threads, "-o", "out", "many", "models", cwd=self.folder)
                report = self.read(self.folder + "/out")
                reports.add(re.sub(rb'"time":"[^"]*"', b"", report))
            self.assertEqual(1, len(reports))

    def test_count_the_errors_that_a_check_does(self):
        listed = b"none\0models/a.zek\0\0models/b.zek"
        objects = {}
        for command in ("check", "report"):
            result = run(command, "--json", "--files0-from", "-", input=listed, cwd=self.folder)
            objects[command] = read_json(command, result.stdout)
        *models, last = objects["report"]
        errors = [model["errors"] for model in objects["check"]]
        self.assertEqual(errors, [model["errors"] for model in models])
        self.assertEqual(sum(errors), last["total"]["errors"])
        self.assertEqual({"cannot-open": 1}, models[0]["codes"])

    def test_do_not_replace_a_model(self):
        result = self.report("-o", "models/a.zek")
        self.assertEqual(2, result.returncode)
        self.assertEqual(make_model(flags=b"\1\0\0\0"), self.read(self.folder + "/models/a.zek"))

    def test_leave_what_stood_there_when_they_fail(self):
        self.write(b"out", b"before")
        before = sorted(os.listdir(self.folder))
        self.assertEqual(2, run("report", "-o", "out", "none", cwd=self.folder).returncode)
        result = self.report("-o", "none/out")
        self.assertEqual(1, result.returncode)
        self.assertIn(b"none/out: No such file or directory", result.stderr)
        process = start("report", "-o", "out", "--files0-from", "-", cwd=self.folder,
                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)  # fmt: skip
        while sorted(os.listdir(self.folder)) == before and process.poll() is None:
            time.sleep(0.01)
        process.send_signal(signal.SIGINT)
        output = process.communicate(timeout=60)[0]
        self.assertEqual((130, b"not written: out"), (process.returncode, output.splitlines()[-1]))
        self.assertEqual(b"before", self.read(self.folder + "/out"))
        self.assertEqual(before, sorted(os.listdir(self.folder)))


class Interrupts(ProgramTest):
    """Models wait behind a pipe that nobody reads."""

    def start_blocked(self, *words):
        folder = self.write_many(5000)
        process = start(*words, folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.stdout.close)
        select.select([process.stdout], [], [], 60)
        time.sleep(0.3)
        self.assertIsNone(process.poll())
        return process

    def test_the_first_finishes_what_is_in_work_and_names_the_rest(self):
        process = self.start_blocked("info")
        process.send_signal(signal.SIGINT)
        time.sleep(0.2)
        self.assertIsNone(process.poll())
        lines = process.communicate(timeout=60)[0].decode().splitlines()
        self.assertEqual(130, process.returncode)
        labels = [line for line in lines if "/many/" in line]
        self.assertEqual(5000, len(labels))
        not_done = sum(line.endswith(": not done") for line in labels)
        self.assertGreater(not_done, 1000)
        summary = f"5000 models: {5000 - not_done} shown, 0 failed, {not_done} not done"
        self.assertEqual(summary, lines[-1])

    def test_the_first_leaves_an_object_of_each_model(self):
        for command in ("info", "check", "mark"):
            process = self.start_blocked(command, "--json")
            process.send_signal(signal.SIGINT)
            lines = process.communicate(timeout=60)[0].splitlines(keepends=True)
            self.assertEqual((130, 5000), (process.returncode, len(lines)))
            first, last = read_json(command, lines[0] + lines[-1])
            self.assertNotEqual("not done", first["outcome"])
            self.assertEqual("not done", last["outcome"])

    def test_the_rest_of_a_list_is_named_too(self):
        folder = self.write_many(5000).encode()
        paths = b"".join(folder + b"/%05d.zek\0" % i for i in range(5000))
        process = start("info", "--files0-from", self.write(b"list", paths), stdout=subprocess.PIPE)
        self.addCleanup(process.stdout.close)
        select.select([process.stdout], [], [], 60)
        time.sleep(0.3)
        process.send_signal(signal.SIGINT)
        lines = process.communicate(timeout=60)[0].decode().splitlines()
        self.assertEqual(130, process.returncode)
        self.assertTrue(lines[-1].startswith("5000 models: "), lines[-1])
        self.assertTrue(lines[-2].endswith("/many/04999.zek: not done"), lines[-2])

    def test_the_second_ends_it_at_once(self):
        process = self.start_blocked("info")
        process.send_signal(signal.SIGINT)
        time.sleep(0.2)
        process.send_signal(signal.SIGINT)
        self.assertEqual(130, process.wait(timeout=10))

    def test_a_list_that_does_not_come_is_not_waited_for(self):
        path = self.write(b"a.zek")
        process = start("mark", "--files0-from", "-", stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        process.stdin.write(path + b"\0")
        process.stdin.flush()
        process.stdout.readline()
        process.send_signal(signal.SIGINT)
        self.assertEqual(130, process.wait(timeout=10))
        process.stdin.close()
        process.stdout.close()
        self.assertEqual(make_model(marker=1), self.read(path))

    def test_one_that_was_ignored_stays_so(self):
        path = self.write(b"a.zek")
        process = start(
            "info", "--files0-from", "-", stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_IGN),
        )
        process.stdin.write(path + b"\0")
        process.stdin.flush()
        process.stdout.readline()
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=60)
        self.assertEqual(0, process.returncode)


class Progress(ProgramTest):
    def run_on_terminal(self, environment, seconds=0, lines=0, widths=(0,)):
        """Returns what comes to the terminal while one model of a list is done and the next is
        waited for, so long and until so many lines have come at each of the terminal's widths."""
        path = self.write(b"a.zek", b"no model")
        main, terminal = pty.openpty()
        self.addCleanup(os.close, main)
        process = start(
            "info", "--files0-from", "-", stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=terminal, env=dict(os.environ, **environment),
        )
        os.close(terminal)
        process.stdin.write(path + b"\0")
        process.stdin.flush()
        time.sleep(seconds)
        shown = b""
        for width in widths:
            fcntl.ioctl(main, termios.TIOCSWINSZ, struct.pack("4H", 24, width, 0, 0))
            start_of_width = len(shown)
            while shown.count(b"done", start_of_width) < lines:
                self.assertTrue(select.select([main], [], [], 60)[0])
                shown += os.read(main, 65536)
        process.communicate(timeout=60)
        while select.select([main], [], [], 0.1)[0]:
            try:
                shown += os.read(main, 65536)
            except OSError:
                break
        return shown

    def test_is_shown_on_a_terminal_and_gone_when_done(self):
        begin = time.monotonic()
        shown = self.run_on_terminal({"TERM": "xterm"}, lines=5)
        self.assertRegex(shown, rb"1 done, 1 failed, \d+ a second")
        self.assertLessEqual(shown.count(b"done"), 10 * (time.monotonic() - begin) + 1)
        self.assertTrue(shown.endswith(b"\r\033[K"), shown)

    def test_never_takes_a_second_row_of_the_terminal(self):
        shown = self.run_on_terminal({"TERM": "xterm"}, lines=5, widths=(10, 17, 80))
        lines = re.findall(rb"\r([^\r\033]+)\033", shown)
        self.assertIn(b"1 done, 1", lines)
        self.assertIn(b"1 done, 1 failed", lines)
        self.assertRegex(lines[-1], rb"^1 done, 1 failed, \d+ a second$")

    def test_is_not_shown_where_the_cursor_cannot_go_back(self):
        self.assertEqual(b"", self.run_on_terminal({"TERM": "dumb"}, seconds=1))

    def test_is_not_shown_in_a_file(self):
        process = start(
            "info", "--files0-from", "-", stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, env=dict(os.environ, TERM="xterm"),
        )
        process.stdin.write(self.write(b"a.zek") + b"\0")
        process.stdin.flush()
        time.sleep(0.3)
        self.assertEqual(b"", process.communicate(timeout=60)[1])


if __name__ == "__main__":
    unittest.main()
