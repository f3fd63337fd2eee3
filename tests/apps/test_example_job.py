#!/usr/bin/env python3
"""The job of `make job`, through its script: test_example_job.py PROGRAM SOURCE_DIR [unittest arguments]"""

import pathlib
import re
import shutil
import subprocess

from tool_test import PROGRAM, SOURCE, ToolTest, main

SCRIPT = "scripts/run-example-job.sh"
PREVIEW = [f"preview/blade.{extension}" for extension in ("html", "png", "svg")
           if extension != "html" or pathlib.Path("/usr/share/javascript/three").is_dir()]
# Stands in the place of the program: damages a file ahead of the check.
DAMAGING = """#!/bin/sh
[ "$1" != check ] || sed -i '$ d' build/job/{name}
exec {program} "$@"
"""


class ExampleJob(ToolTest):
    def setUp(self):
        super().setUp()
        self.program = self.folder / "build" / "release" / "bin" / "zetlaser-job"
        self.program.parent.mkdir(parents=True)
        self.program.symlink_to(PROGRAM)
        (self.folder / "scripts").mkdir()
        shutil.copy(SOURCE / SCRIPT, self.folder / SCRIPT)
        shutil.copytree(SOURCE / "examples", self.folder / "examples")

    def run_script(self):
        return subprocess.run(["bash", SCRIPT], cwd=self.folder, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=300, check=False)

    def test_it_ends_with_the_check_of_all_that_it_wrote(self):
        result = self.run_script()
        self.assertEqual(result.returncode, 0, result.stderr)
        _, _, end = result.stdout.rpartition("\n$ ")
        self.assertRegex(end, r"\A\S*zetlaser-job check ")
        written = re.findall(r"(?m)^written: build/job/(.+) \(\d+ bytes\)$", result.stdout.replace(f"{self.folder}/", ""))
        checked = [name for name in written if name.startswith("blade-") and "-apt" not in name]
        stubs = [name for name in written if re.fullmatch(r"blade-.*\.APT", name)]
        self.assertIn(f"Nothing was found in the {len(checked)} files", end)
        self.assertEqual(sorted(re.findall(r"(?m)^build/job/(\S+): warning: the file holds no ply$", end)), sorted(stubs))
        self.assertEqual(len(stubs), 3)
        # The tool files are read with their part files, as the test below shows. All else isn't for a projector.
        self.assertEqual(sorted(name for name in written if not name.startswith("blade-")),
                         ["Tool-blade-faro.XML", "Tool-blade-lpt.XML", *PREVIEW, "summary.json"])

    def test_a_file_that_is_damaged_fails_it(self):
        for name in ("blade-virtek.ply", "blade-lap.cal", "Tool-blade-lpt.XML", "blade-sl.cp1"):
            with self.subTest(name=name):
                self.program.unlink()
                self.program.write_text(DAMAGING.format(name=name, program=PROGRAM), encoding="utf-8")
                self.program.chmod(0o755)
                result = self.run_script()
                self.assertEqual(result.returncode, 1, result.stdout)
                self.assertRegex(result.stdout, rf"build/job/{re.escape(name)}:\d+: error: ")


if __name__ == "__main__":
    main()
