#!/usr/bin/env python3
"""Tests of the built zetlaser-job while the system fails it: test_faults.py PROGRAM SOURCE_DIR FAULTY_CALLS [unittest arguments]

FAULTY_CALLS is the library of FaultyCalls.cpp. Whatever happens, each finished file is the one before or the new one, and
a job that isn't done says so in one line."""

import errno
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time

from tool_test import BLADE, PANEL, PROGRAM, ToolTest, main, obey_permissions

FAULTY_CALLS = sys.argv[3]
CALLS = ["mkdir", "create", "write", "fsync", "link", "rename", "unlink"]
ALL = 0  # the number that stands for each call
VIRTEK = [PANEL, "--type", "virtek", "--output", "panel.ply", "--summary", "panel.json"]
# Several makes in one run, which have no name in common.
SET = [{"type": "virtek", "output": "a.ply"}, {"type": "sl", "output": "b.sl"}, {"type": "lap", "output": "c.lpd"},
       {"type": "assembly-guidance", "output": "d.PRT"}, {"type": "dxf", "output": "e.DXF"}]

# Those that hold points.
PART_FILES = [("virtek", "ply"), ("lap", "lpd"), ("lpt", "XML"), ("faro", "XML"), ("sl", "sl"), ("assembly-guidance", "PRT"),
              ("aligned-vision", "PRT"), ("general-scanning", "PRT"), ("quilmon", "CPD"), ("dxf", "DXF")]


class FaultTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.inputs = set()
        self.new = {}

    def make_reference(self, *arguments):
        """Runs the job while nothing goes wrong: what it makes is what all other runs may make."""
        self.inputs = set(self.names())
        self.arguments = arguments
        self.expect(self.run_tool(*self.arguments), 0)
        self.new = {path: self.read(path) for path in self.files()}
        self.assertGreater(len(self.new), 1)

    def files(self):
        """All files but those that the job reads, and those of its own folders."""
        return sorted(path for path in self.folder.rglob("*") if path.is_file() and path.name not in self.inputs
                      and not any(part.startswith(".") for part in path.relative_to(self.folder).parts))

    def read(self, path):
        return re.sub(rb'FILEDATE="[^"]*"', b"", path.read_bytes())  # the one clock of all formats

    def left_folders(self):
        return [path for path in self.folder.rglob(".zetlaser-job-*")]

    def put_previous(self):
        for path in self.new:
            path.write_bytes(self.get_previous(path))

    def get_previous(self, path):
        return f"previous {path.name}\n".encode()

    sanitizer_options = ""

    def environment(self, call, number, effect):
        # The sanitizers' own library wants to come first, and says so.
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0" + self.sanitizer_options
        return {**os.environ, "LD_PRELOAD": FAULTY_CALLS, "ZETLASER_FAULT": f"{call} {number} {effect}",
                "ASAN_OPTIONS": sanitizer}

    def run_with(self, call, number, effect):
        return self.run_tool(*self.arguments, env=self.environment(call, number, effect))

    def start_stopped(self, call, number, **more):
        """A job that has stopped ahead of a call, until it is continued."""
        process = subprocess.Popen([str(PROGRAM), *map(str, self.arguments)], cwd=self.folder, text=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=self.environment(call, number, -signal.SIGSTOP), **more)
        _, status = os.waitpid(process.pid, os.WUNTRACED)
        self.assertTrue(os.WIFSTOPPED(status), (call, number))
        return process

    def go_on(self, process):
        process.send_signal(signal.SIGCONT)
        output, error = process.communicate(timeout=60)
        return subprocess.CompletedProcess(process.args, process.returncode, output, error)

    def check_all_new(self):
        self.assertEqual({path: self.read(path) for path in self.files()}, self.new)

    def check_all_previous(self):
        self.assertEqual({path: self.read(path) for path in self.files()},
                         {path: self.get_previous(path) for path in self.new})

    def check_each_whole(self):
        """Each file is one of the two."""
        contents = {path: self.read(path) for path in self.new}
        for path, content in contents.items():
            self.assertIn(content, (self.new[path], self.get_previous(path)), path.name)

    def check_next_job(self):
        self.expect(self.run_tool(*self.arguments), 0)
        self.check_all_new()
        self.assertEqual(self.left_folders(), [])


class Calls(FaultTest):
    """Each call of each kind goes wrong once, and then all of them."""

    def count_calls(self, call):
        """How many there are, by killing the job ahead of each: the files are whole then, too."""
        number = 1
        while True:
            self.put_previous()
            result = self.run_with(call, number, -signal.SIGKILL)
            if result.returncode == 0:
                self.check_all_new()
                return number - 1
            self.assertEqual(result.returncode, -signal.SIGKILL)
            self.check_each_whole()
            number += 1

    def try_fault(self, call, number, error):
        self.put_previous()
        result = self.run_with(call, number, error)
        if number == ALL:
            # What can't be cleaned up is cleaned up by the next job, and what can't be linked is copied.
            self.assertEqual(result.returncode, 0 if call in ("link", "unlink") else 4, result.stderr)
        if result.returncode == 0:
            self.check_all_new()
        else:
            self.expect(result, 4)
            self.check_all_previous()
        self.assertTrue(call == "unlink" or not self.left_folders())

    def try_all(self, calls, error, *arguments):
        self.make_reference(*arguments)
        for call in calls:
            count = self.count_calls(call)
            self.assertGreater(count, 0, call)
            for number in (ALL, *range(1, count + 1)):
                with self.subTest(call=call, number=number):
                    self.try_fault(call, number, error)
        self.check_next_job()

    def test_a_call_that_fails_leaves_all_files_as_they_were(self):
        self.try_all(CALLS, errno.ENOSPC, *VIRTEK)

    def test_a_file_that_cannot_be_moved_takes_those_before_it_back(self):
        (self.folder / "tools").mkdir()
        self.try_all(["rename", "link"], errno.EPERM, PANEL, "--type", "lpt", "--output", "part.XML",
                     "--use-specific-path-for-laser-file", "--target-file-path", "tools")

    def test_a_previous_file_that_can_be_neither_linked_nor_copied_is_told_with_the_reason(self):
        self.make_reference(*VIRTEK)
        self.put_previous()
        large = b"previous\n" * 100000
        (self.folder / "panel.ply").write_bytes(large)
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (500000, 500000))
        result = self.run_tool(*self.arguments, env=self.environment("link", ALL, errno.EPERM), preexec_fn=limit)
        self.expect(result, 4, "panel.ply: File too large\n")
        self.assertEqual((self.folder / "panel.ply").read_bytes(), large)
        (self.folder / "panel.ply").write_bytes(self.get_previous(self.folder / "panel.ply"))
        self.check_all_previous()
        self.assertEqual(self.left_folders(), [])

    def test_what_cannot_be_taken_back_is_told(self):
        self.make_reference(*VIRTEK)
        self.put_previous()
        process = self.start_stopped("rename", 2)
        (self.folder / "panel.ply").unlink()
        (self.folder / "panel.ply").mkdir()  # a file can't go over a folder
        kept = next(self.folder.glob(".zetlaser-job-*/.previous/panel.cal"))
        kept.unlink()
        (self.folder / "panel.cal").unlink()
        (self.folder / "panel.cal").mkdir()  # and a folder is not taken away
        self.expect(self.go_on(process), 4, "panel.ply: ", "; ", "panel.cal is new and can't be put back\n")

    def test_pictures_come_all_or_none(self):
        self.sanitizer_options = ":detect_leaks=0"  # Qt loses a buffer where a PNG can't be written
        self.try_all(["create", "write", "rename"], errno.ENOSPC, "preview", PANEL, "--output", "panel", "--formats", "svg,png",
                     "--plies", "P1")  # of several plies the order differs from run to run


class Altered(FaultTest):
    """A digit that isn't the one that was written: the job reads its files back before they come to their places."""

    def make_altered(self, kind, extension, *options, digit=rb"(3)00\.000"):
        """The part file's path, the place of the digit, and what the job says."""
        self.make_reference(PANEL, "--type", kind, "--output", f"{kind}.{extension}", *options)
        path = self.folder / f"{kind}.{extension}"
        place = re.search(digit, path.read_bytes()).start(1)
        self.put_previous()
        return path, place, self.run_with("alter", ALL, place)

    def test_the_job_fails_and_the_previous_files_stay(self):
        for kind, extension in PART_FILES:
            with self.subTest(kind=kind):
                path, _, result = self.make_altered(kind, extension)
                self.expect(result, 5)
                [error] = [line for line in result.stderr.splitlines() if line.startswith("error: ")]
                self.assertRegex(error, rf"isn't kept: {path.name}:\d+: .*: expected 300\.0+, found 200\.0+$")
                self.check_all_previous()
                self.assertEqual(self.left_folders(), [])

    def test_the_last_decimal_counts(self):
        for kind, extension in PART_FILES:
            with self.subTest(kind=kind):
                path, _, result = self.make_altered(kind, extension, digit=rb"300\.0+(0)(?!\d)")
                self.expect(result, 5)
                # Told with a decimal more than the file has.
                self.assertRegex(result.stderr, rf"isn't kept: {path.name}:\d+: .*: expected 300\.0+, found 300\.0+10\n")
                self.check_all_previous()

    def test_no_check_leaves_it_to_the_user(self):
        for kind, extension in PART_FILES:
            with self.subTest(kind=kind):
                path, place, result = self.make_altered(kind, extension, "--no-check")
                self.expect(result, 0)
                self.assertEqual(path.read_bytes()[place:].split(b".")[0], b"200")


class Places(FaultTest):
    """The places of the files change while the job runs."""

    def setUp(self):
        super().setUp()
        self.make_reference(*VIRTEK)
        self.put_previous()

    def test_a_file_that_vanishes_is_made_anew(self):
        for call, number in (("create", 2), ("fsync", 1), ("rename", 2)):
            self.put_previous()
            process = self.start_stopped(call, number)
            for path in self.new:
                path.unlink(missing_ok=True)
            self.expect(self.go_on(process), 0)
            if call != "rename":  # the first file was moved before it vanished
                self.check_all_new()

    def test_a_folder_that_vanishes_is_told(self):
        for call, number in (("create", 2), ("write", 1), ("fsync", 1), ("link", 1), ("rename", 1), ("rename", 3)):
            with self.subTest(call=call, number=number):
                self.folder.mkdir(exist_ok=True)
                process = self.start_stopped(call, number)
                shutil.rmtree(self.folder)
                self.expect(self.go_on(process), 4, "error: ")
                self.assertFalse(self.folder.exists())

    def test_a_folder_in_the_place_of_a_file_stops_all(self):
        for call, number in (("create", 2), ("fsync", 1), ("rename", 2), ("rename", 3)):
            with self.subTest(call=call, number=number):
                self.put_previous()
                process = self.start_stopped(call, number)
                place = self.folder / ("panel.ply-report.htm" if number == 3 else "panel.ply")
                place.unlink()
                place.mkdir()
                self.expect(self.go_on(process), 4, f"{place.name}: ")
                place.rmdir()
                place.write_bytes(self.get_previous(place))
                self.check_all_previous()

    def test_a_folder_that_is_closed_meanwhile_stops_all(self):
        for call, number in (("create", 2), ("fsync", 1), ("rename", 1)):
            process = self.start_stopped(call, number, preexec_fn=obey_permissions)
            self.folder.chmod(0o555)
            result = self.go_on(process)
            self.folder.chmod(0o755)
            self.expect(result, 4, "no permission\n")
            self.check_all_previous()

    def test_the_layup_file_may_vanish_once_it_is_read(self):
        for path in self.new:
            path.unlink()
        layup = self.write("own.json", PANEL.read_bytes())
        self.make_reference(layup, *VIRTEK[1:5])
        process = self.start_stopped("write", 1)
        layup.unlink()
        self.expect(self.go_on(process), 0)
        self.expect(self.run_tool(*self.arguments), 3, "own.json: there is no such file\n")
        self.check_all_new()


class NoRoom(FaultTest):
    """The device is full at each stage of the job, in room and in number of files."""

    def test_a_device_of_any_size_takes_all_files_or_none(self):
        self.make_reference(BLADE, "--type", "virtek", "--output", "blade.ply")
        # Small file systems of their own, in a name space of its own: "taken" or the exit code, once for each.
        script = """
            place=$1; shift; reference=$1; shift
            for options in "$@"; do
                mount -t tmpfs -o "$options" none "$place" || exit 99
                cd "$place"; echo previous >blade.ply
                "$PROGRAM" "$BLADE" --type virtek --output blade.ply 2>errors >/dev/null; code=$?
                rm -f errors # it is in the way of the comparison, and empty where there was no room for it
                if [ $code -eq 0 ] && diff -r . "$reference" >/dev/null; then echo "$options all"
                elif [ $code -eq 4 ] && [ "$(ls -A)" = blade.ply ] && [ "$(cat blade.ply)" = previous ]; then echo "$options none"
                else echo "$options broken: exit code $code, $(ls -A | tr '\n' ' ')"; fi
                cd /; umount "$place"
            done"""
        options = [f"size={size}k" for size in (8, 16, 64, 120, 160, 200, 240, 280, 400)]
        options += [f"size=1m,nr_inodes={count}" for count in range(3, 11)]
        place = self.folder / "place"
        reference = self.folder / "reference"
        place.mkdir()
        reference.mkdir()
        for path in self.new:
            path.rename(reference / path.name)
        for unshare in (["unshare", "--mount"], ["unshare", "--map-root-user", "--mount"]):
            result = subprocess.run([*unshare, "bash", "-c", script, "bash", place, reference, *options], text=True,
                                    capture_output=True, check=False,
                                    env={**os.environ, "PROGRAM": str(PROGRAM), "BLADE": str(BLADE)})
            if result.returncode != 99 and "unshare failed" not in result.stderr:
                break
        else:
            print("no file system can be mounted here", file=sys.stderr)
            self.skipTest("no file system can be mounted here")
        outcomes = dict(line.rsplit(" ", 1) for line in result.stdout.splitlines())
        self.assertEqual(sorted(outcomes), sorted(options), result.stdout + result.stderr)
        self.assertEqual(set(outcomes.values()), {"all", "none"}, result.stdout)


class Killed(FaultTest):
    """The job is killed a hundred times, at moments that are spread over its duration."""

    def check_kills(self, number, check):
        self.write("set.json", {"outputs": SET})
        self.make_reference(PANEL, "--settings", "set.json")
        duration = min(self.measure() for _ in range(3))
        moments = random.Random(20257)
        killed = 0
        for i in range(100):
            self.put_previous()
            process = subprocess.Popen([str(PROGRAM), *map(str, self.arguments)], cwd=self.folder,
                                       stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            time.sleep(duration * (i + moments.random()) / 100)
            process.send_signal(number)
            _, error = process.communicate(timeout=60)
            check(process.returncode, error.decode())
            killed += process.returncode != 0
        self.assertGreater(killed, 0)
        self.check_next_job()

    def measure(self):
        begin = time.monotonic()
        self.expect(self.run_tool(*self.arguments), 0)
        return time.monotonic() - begin

    def test_a_killed_job_leaves_each_file_whole(self):
        def check(code, error):
            self.assertIn(code, (0, -signal.SIGKILL), error)
            self.check_each_whole()
            # Each job takes away what the one before left: a folder for each output.
            self.assertLessEqual(len(self.left_folders()), len(SET))
        self.check_kills(signal.SIGKILL, check)

    def test_an_interrupted_job_leaves_all_files_as_they_were(self):
        def check(code, error):
            self.assertIn(code, (0, -signal.SIGTERM, 128 + signal.SIGTERM), error)
            if code == 0 or error.endswith("error: interrupted; the new files are in their places already\n"):
                self.check_all_new()
            else:
                self.assertTrue(code < 0 or error.endswith("error: interrupted; earlier files are as they were\n"), error)
                self.check_all_previous()
            self.assertEqual(self.left_folders(), [])
        self.check_kills(signal.SIGTERM, check)


if __name__ == "__main__":
    main(paths=3)
