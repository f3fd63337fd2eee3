#!/usr/bin/env python3
"""Tests of the built zetlaser-job, as its users call it: test_zetlaser_job.py PROGRAM SOURCE_DIR HOST_APPLICATION [unittest arguments]"""

import difflib
import json
import os
import pathlib
import pty
import re
import resource
import shutil
import signal
import subprocess
import sys
import time

import json_schema
from tool_test import BLADE, PANEL, PROGRAM, SOURCE, ToolTest, main, obey_permissions

HOST_APPLICATION = pathlib.Path(sys.argv[3])
GOLDEN = SOURCE / "tests" / "golden" / "job"
TYPES = ["virtek", "lpt", "faro", "lap", "sl", "assembly-guidance", "aligned-vision", "general-scanning", "apt", "apt-2",
         "apt-sl", "dxf", "quilmon"]


class CommandLine(ToolTest):
    def test_help_tells_each_option_and_the_exit_codes(self):
        result = self.run_tool("--help")
        self.expect(result, 0, "Usage: zetlaser-job LAYUP --type TYPE --output FILE", "--settings FILE")
        for flag in ("--[no-]output-rosette", "--max-length MM", "--offset-mode complete|layup|none|debulk",
                     "--plies NAME[,NAME...]", "--dxf-file-mode single|per-material|per-ply", "--axis-system NAME"):
            self.assertIn("\n  " + flag + "\n", result.stdout)
        for code in range(6):
            self.assertRegex(result.stdout, rf"(?m)^  {code}  \w")
        self.assertEqual(result.stderr, "")
        self.assertTrue(all(len(line) <= 100 for line in result.stdout.splitlines()))

    def test_each_option_of_the_record_has_a_flag(self):
        # The accessors of the record, but for what the tool itself sets or hands out.
        header = (SOURCE / "laser" / "ZETLaserOptions.h").read_text(encoding="utf-8")
        own = {"CompRoot", "Environment", "ActiveConfiguration", "FileName", "DXFOutputSettings"}
        setters = set(re.findall(r"void Set(\w+)\(", header)) - own
        header = (SOURCE / "laser" / "ZETLaserDXFOutputSettings.h").read_text(encoding="utf-8")
        setters |= set(re.findall(r"void Set(\w+)\(", header))
        self.assertGreater(len(setters), 40)
        settings = {re.sub(r"[^a-z]", "", flag.removeprefix("[no-]"))
                    for flag in re.findall(r"(?m)^  --(\S+)", self.run_tool("--help").stdout)}
        renamed = {"filetype": "type"}
        for setter in setters:
            flag = setter.lower()
            self.assertIn(renamed.get(flag, flag), settings)

    def test_version(self):
        self.assertRegex(self.run_tool("--version").stdout, r"\Azetlaser-job \d+\.\d+\.\d+\n\Z")

    def test_types_are_listed_with_make_and_extension(self):
        lines = self.run_tool("--list-types").stdout.splitlines()
        self.assertEqual([line.split()[0] for line in lines], TYPES)
        self.assertEqual(lines[0], "virtek              Virtek (*.ply)")
        self.assertEqual(lines[12], "quilmon             Quilmon Composites Part Data (*.CPD)")

    def test_wrong_calls_are_told(self):
        for arguments, text in (
                ([], "expected a layup file, found none"),
                (["a", "b"], "expected one layup file, found a second one: b"),
                ([PANEL], "expected the option --type, found none"),
                ([PANEL, "--type", "virtek"], "expected the option --output, found none"),
                ([PANEL, "--type", "vitrek"], '--type: expected one of virtek, lpt,'),
                ([PANEL, "--tpye", "virtek"], "unknown option --tpye, did you mean --type?"),
                ([PANEL, "--zzzzzzzzzzzzz"], "unknown option --zzzzzzzzzzzzz"),
                ([PANEL, "--type"], "expected a value behind --type, found none"),
                ([PANEL, "--max-length", "-1"], '--max-length: expected a length in mm, 0 or more, found "-1"'),
                ([PANEL, "--max-length", "nan"], '--max-length: expected a length in mm, 0 or more, found "nan"'),
                ([PANEL, "--max-length", "5"], "--max-length: expected --use-max-length beside it, found none"),
                ([PANEL, "--minimize-points-tolerance", "5", "--no-use-minimize-points-tolerance"],
                 "--minimize-points-tolerance: expected --use-minimize-points-tolerance beside it, found none"),
                ([PANEL, "--boundary-tolerance", "5"], "--boundary-tolerance: expected --use-point-offset beside it, found none"),
                ([PANEL, "--target-file-path", "."],
                 "--target-file-path: expected --use-specific-path-for-laser-file beside it, found none"),
                ([PANEL, "--ply-pictures"], '--ply-pictures is an option of "zetlaser-job preview", not of "zetlaser-job"'),
                ([PANEL, "--text-layer", "1.5"], '--text-layer: expected a whole number, 0 or more, found "1.5"'),
                ([PANEL, "--normal-vector-color", "grren"], "--normal-vector-color: expected a colour such as #00FF00"),
                ([PANEL, "--plies", ""], "--plies: expected at least one name"),
                ([PANEL, "--output-rosette=yes"], 'expected no value behind --output-rosette, found "yes"')):
            with self.subTest(arguments=arguments):
                self.expect(self.run_tool(*arguments), 2, text)
                self.assertEqual(self.names(), [])

    def test_help_of_a_command_comes_by_word_and_by_flag(self):
        for command in ("", "preview", "check", "help"):
            with self.subTest(command=command):
                by_flag = self.run_tool(*command.split(), "--help")
                self.expect(by_flag, 0, f"Usage: zetlaser-job {command}".strip())
                self.assertEqual(self.run_tool("help", *command.split()).stdout, by_flag.stdout)
                self.assertEqual(self.run_tool(*command.split(), "-h").stdout, by_flag.stdout)
        listed = self.run_tool("--help").stdout.partition("Commands ")[2].partition("General:")[0]
        self.assertEqual(re.findall(r"(?m)^  (\w+) ", listed), ["preview", "check", "convert", "shapes", "help"])
        self.expect(self.run_tool("help", "preveiw"), 2, "unknown command preveiw, did you mean preview?")
        self.expect(self.run_tool("help", "zzzzzzzz"), 2, "unknown command zzzzzzzz")
        self.expect(self.run_tool("help", "preview", "help"), 2, "expected one command, found a second one: help")

    def test_a_misspelt_command_is_told(self):
        self.expect(self.run_tool("preveiw", PANEL), 2, "unknown command preveiw, did you mean preview?")
        self.expect(self.run_tool("preveiw.json", "--type", "virtek", "--output", "a.ply"), 3,
                    "preveiw.json: there is no such file")
        shutil.copy(PANEL, self.folder / "preveiw")
        self.expect(self.run_tool("preveiw", "--type", "virtek", "--output", "a.ply"), 0, "written: a.ply ")

    def test_nothing_behind_two_hyphens_is_an_option(self):
        self.expect(self.run_tool("--type", "virtek", "--output", "a.ply", "--", "--help"), 3, "--help: there is no such file")
        self.expect(self.run_tool("--", PANEL, "--type=virtek"), 2, "expected one layup file, found a second one: --type=")

    def test_unknown_names_of_the_model_are_told(self):
        for flag, text in (
                ("--configuration=Lasr", 'the model has no configuration "Lasr", did you mean "Laser"?'),
                ("--axis-system=Corner", 'the model has no rosette "Corner"'),
                ("--projectors=Left,Middle", 'the model has no projector "Middle"'),
                ("--layups=Frnot", 'the model has no layup "Frnot", did you mean "Front"?'),
                ("--plies=P1,P9", 'the model has no ply to output called "P9", did you mean "P1"?')):
            with self.subTest(flag=flag):
                self.expect(self.run_tool(PANEL, "--type", "virtek", "--output", "a.ply", flag), 2, text)
                self.assertEqual(self.names(), [])


class Input(ToolTest):
    def job(self, layup, *more):
        return self.run_tool(layup, "--type", "virtek", "--output", "a.ply", *more)

    def test_faults_of_the_layup_file_are_told_with_line_and_path(self):
        text = PANEL.read_text(encoding="utf-8").replace('"$schema": "../../schema/layup.schema.json",', '"$schema": "",')
        def line_of(part):
            return text[:text.index(part)].count("\n") + 1
        for old, new, path, fault in (
                ('"material": "Carbon", "boundary"', '"material": "Carbn", "boundary"', "layups[2].S3.P4.material",
                 'unknown material "Carbn", did you mean "Carbon"?'),
                ('[300, 200, 0]],', '[300, 200, 9]],', "layups[2].S3.P4.boundary[2]",
                 'expected a point at most 1 mm from the surface "Table", found one at 9 mm'),
                ('"direction": 45', '"direction": "45"', "layups[1].S1.P2.direction",
                 'expected an angle in degrees, found the text "45"'),
                ('"drift": true', '"drfit": true', "targets[1]", 'unknown key "drfit", did you mean "drift"?'),
                ('"units": "mm"', '"units": "mils"', "units",
                 'expected one of "mm", "cm", "m", "in", found the text "mils"')):
            with self.subTest(path=path):
                self.assertIn(old, text)
                self.write("bad.json", text.replace(old, new, 1))
                self.expect(self.job("bad.json"), 3, f"error: bad.json:{line_of(old)}: {path}: {fault}\n")
                self.assertEqual(self.names(), ["bad.json"])

    def test_files_that_are_no_layup_are_told(self):
        self.expect(self.job("none.json"), 3, "error: none.json: there is no such file\n")
        self.expect(self.job("."), 3, "error: .: expected a file, found a folder\n")
        for name, text, line, fault in (("empty.json", "", 1, "the file is empty"),
                                        ("tool.step", "\nISO-10303-21;\nHEADER;\n", 2, 'expected "{", found "ISO-10303-21;"'),
                                        ("note.json", "// the panel, as it was released in the year 2024\n{}", 1,
                                         'expected "{", found "// the panel, as it was released in the "')):
            self.write(name, text)
            self.expect(self.job(name), 3, f"error: {name}:{line}: no valid JSON: {fault}\n")
        self.write("broken.json", "{")
        self.expect(self.job("broken.json"), 3, "error: broken.json:1: no valid JSON: ")
        self.write("nan.json", '{"format": "zetlaser-layup",\n"version": NaN}')
        self.expect(self.job("nan.json"), 3, "error: nan.json:2: no valid JSON: ")

    def test_a_layup_file_of_random_bytes_gives_one_line(self):
        import random
        source = random.Random(7)
        text = bytearray(PANEL.read_bytes())
        for number in range(40):
            mutant = bytearray(text)
            for _ in range(source.randint(1, 6)):
                mutant[source.randrange(len(mutant))] = source.randrange(256)
            (self.folder / "m.json").write_bytes(mutant)
            result = self.job("m.json")
            self.assertIn(result.returncode, (0, 1, 3), f"mutant {number}: {result.stderr}")
            if result.returncode:
                self.assertEqual(len([line for line in result.stderr.splitlines() if line.startswith("error: ")]), 1)

    def test_faults_of_the_settings_file_are_told(self):
        for text, fault in (
                ('{"maxLenght": 3}', 's.json:1: unknown key "maxLenght", did you mean "maxLength"?'),
                ('{\n"maxLength": "3"}', 's.json:2: maxLength: expected a length in mm, 0 or more, found the text "3"'),
                ('{\n"units": "cm"}', 's.json:2: units: expected one of mm, in, found the text "cm"'),
                ('{"plies": "P1"}', 's.json:1: plies: expected an array of names, found the text "P1"'),
                ('{"outputRosette": 1}', "s.json:1: outputRosette: expected true or false, found the number 1"),
                ("[]", "s.json:1: expected an object, found an array of 0")):
            with self.subTest(text=text):
                self.write("s.json", text)
                self.expect(self.job(PANEL, "--settings", "s.json"), 3, fault)
        self.expect(self.job(PANEL, "--settings", "none.json"), 3, "error: none.json: there is no such file")


class Output(ToolTest):
    def job(self, *more, layup=PANEL, kind="virtek", output="panel.ply", **rest):
        return self.run_tool(layup, "--type", kind, "--output", output, *more, **rest)

    def test_the_host_application_gives_the_same_files(self):
        result = subprocess.run([HOST_APPLICATION, PANEL, "panel.ply"], cwd=self.folder, capture_output=True, text=True,
                                check=False)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout, "Virtek data have been successfully written to file:\n panel.ply\n")
        self.compare(GOLDEN / "panel-virtek", self.folder)
        self.assertNotEqual(subprocess.run([HOST_APPLICATION, "none.json", "a.ply"], cwd=self.folder,
                                           capture_output=True, check=False).returncode, 0)

    def compare(self, golden, folder):
        expected = sorted(path.name for path in golden.iterdir())
        self.assertGreater(len(expected), 0)
        for name in expected:
            lines = [(path / name).read_bytes().decode().splitlines(keepends=True) for path in (golden, folder)]
            self.assertEqual(lines[0], lines[1],
                             "\n" + "".join(difflib.unified_diff(*lines, f"expected/{name}", f"written/{name}")))
        self.assertEqual(sorted(path.name for path in folder.iterdir()), expected)

    def test_panel_gives_the_files_derived_by_hand(self):
        self.expect(self.job(), 0, "plies: 3, sub-plies: 2, points: 36\n",
                    "size: 400.0 mm x 300.0 mm x 0.0 mm, written in mm\n", "type: Virtek\n", "axis system: of the model\n",
                    "written: panel.ply (", "written: panel.cal (", "written: panel.ply-report.htm (")
        self.compare(GOLDEN / "panel-virtek", self.folder)

    def test_names_of_files_are_told_as_they_are(self):
        self.expect(self.job(output="a%1.ply"), 0)
        self.assertRegex(self.job(output="a%1.ply").stdout, r"(?m)^written: a%1\.ply \(\d+ bytes\)$")

    def test_a_name_that_is_not_one_of_the_make_is_warned_of(self):
        for kind, name, extension, make in (("virtek", "panel", ".ply", "Virtek"), ("lap", "panel.ply", ".lpd", "LAP Laser"),
                                            ("dxf", "panel.DXF.old", ".DXF", "DXF")):
            result = self.run_tool(PANEL, "--type", kind, "--output", name)
            self.expect(result, 0)
            self.assertIn(f'warning: expected a file name that ends in "{extension}", as those of {make} do, found "{name}"\n',
                          result.stderr)
        for arguments in (["--output", "panel.dxf"], ["--output", "panel", "--no-create-laser-data"]):
            result = self.run_tool(PANEL, "--type", "dxf", *arguments)
            self.expect(result, 0)
            self.assertNotIn("expected a file name", result.stderr)

    def test_the_folder_does_not_show_in_the_files(self):
        (self.folder / "deep").mkdir()
        self.expect(self.job(output=self.folder / "deep" / "panel.ply"), 0)
        self.compare(GOLDEN / "panel-virtek", self.folder / "deep")

    def test_messages_go_to_standard_error_with_their_severity(self):
        result = self.job()
        self.assertEqual(result.stderr,
                         "note: Virtek data have been successfully written to file:\n   panel.ply\n")

    def test_a_message_that_comes_for_each_ply_is_told_once_and_counted(self):
        text = PANEL.read_text(encoding="utf-8").replace('"type": "information"', '"type": "note"')
        self.write("a.json", text)
        result = self.job(layup="a.json")
        line = "problem: Unsupported laser parameter type Note for Virtek"
        self.assertEqual([shown for shown in result.stderr.splitlines() if shown.startswith("problem")],
                         [line, line + " (5 times in all)"])
        self.assertEqual((self.folder / "panel.ply-report.htm").read_text().count(line.split(": ")[1]), 5)

    def test_nothing_is_shown_of_progress_in_a_pipe_and_something_on_a_terminal(self):
        self.assertNotIn("\x1b", self.job().stderr)
        leader, follower = pty.openpty()
        process = subprocess.Popen([str(PROGRAM), str(PANEL), "--type", "virtek", "--output", "panel.ply"],
                                   cwd=self.folder, stdout=subprocess.PIPE, stderr=follower)
        os.close(follower)
        shown = b""
        try:
            while chunk := os.read(leader, 4096):
                shown += chunk
        except OSError:
            pass
        os.close(leader)
        process.stdout.close()
        self.assertEqual(process.wait(), 0)
        self.assertIn(b"thinning points...", shown)
        self.assertTrue(shown.rstrip().endswith(b"\x1b[K"))

    def test_a_result_that_cannot_be_written_is_told(self):
        self.expect(self.job(), 0)
        calls = [["--help"], ["--list-types"], ["help", "check"], ["check", "panel.ply"], ["check", "--json", "panel.ply"],
                 ["shapes", SOURCE / "examples" / "blade" / "tool_ss_r30_r40.step"],
                 [PANEL, "--type", "virtek", "--output", "panel.ply"]]
        for call in calls:
            with self.subTest(call=call), open("/dev/full", "w", encoding="utf-8") as full:
                result = subprocess.run([PROGRAM, *call], cwd=self.folder, stdout=full, stderr=subprocess.PIPE, text=True,
                                        timeout=60, check=False)
                self.assertEqual(result.returncode, 4)
                self.assertEqual(result.stderr.splitlines()[-1],
                                 "error: the standard output can't be written: No space left on device")

    def test_a_reader_that_wants_no_more_is_no_fault(self):
        reading, writing = os.pipe()
        os.close(reading)
        result = subprocess.run([PROGRAM, "--help"], stdout=writing, stderr=subprocess.PIPE, text=True, timeout=60, check=False)
        os.close(writing)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_nothing_is_told_into_files_where_the_caller_closed_the_streams(self):
        result = subprocess.run([PROGRAM, PANEL, "--type", "virtek", "--output", "panel.ply"], cwd=self.folder,
                                stderr=subprocess.PIPE, text=True, timeout=60, check=False,
                                preexec_fn=lambda: (os.close(0), os.close(1)))
        self.assertEqual(result.returncode, 4)
        self.assertEqual(result.stderr.splitlines()[-1],
                         "error: the standard output can't be written: Bad file descriptor")
        self.compare(GOLDEN / "panel-virtek", self.folder)

    def test_inches_scale_the_numbers_and_are_named(self):
        self.expect(self.job("--units", "in"), 0, "size: 400.0 mm x 300.0 mm x 0.0 mm, written in inches\n")
        self.assertIn("15.748031 0.000000 0.000000   0.000000 0.000000 1.000000",
                      (self.folder / "panel.ply").read_text())
        self.assertIn("Units: inch", (self.folder / "panel.ply-report.htm").read_text())

    def starts(self):
        return re.findall(r"(?m)^START (.*)", (self.folder / "panel.ply").read_text())

    def test_plies_and_layups_can_be_chosen(self):
        for flags, plies in ((["--plies", "P1"], ["P1"]), (["--plies", "P4,P1"], ["P1", "P4"]),
                             (["--plies", "P4", "--plies", "S1/P2"], ["P2", "P4"]),
                             (["--plies", "P3"], ["P3a", "P3b"]), (["--plies", "P3b"], ["P3b"]),
                             (["--plies", "Front/S2/P3/P3a"], ["P3a"]), (["--layups", "Back"], ["P4"]),
                             (["--no-skip-parent-ply-with-sub-plies", "--plies", "P3"], ["P3", "P3a", "P3b"]),
                             (["--configuration", "Whole plies"], ["P1", "P2", "P3", "P4"])):
            with self.subTest(flags=flags):
                self.expect(self.job(*flags), 0, f"plies: {len([ply for ply in plies if ply[-1].isdigit()])}, ")
                self.assertEqual(self.starts(), plies)

    def test_a_selection_without_plies_writes_nothing(self):
        self.write("panel.ply", "old")
        self.expect(self.job("--layups", "Back", "--plies", "P1"), 1, "nothing to write: no ply is selected")
        self.expect(self.job("--output-type", "flat"), 1, "nothing to write: no ply with a flat pattern is selected")
        self.assertEqual((self.folder / "panel.ply").read_text(), "old")
        self.assertEqual(self.names(), ["panel.ply"])

    def test_projectors_can_be_chosen(self):
        self.expect(self.job("--projectors", "Right"), 0)
        lines = (self.folder / "panel.cal").read_text().splitlines()
        self.assertEqual((lines[0], lines[1].split()[1], len(lines)), ("4", "T2", 5))

    def test_the_axis_system_moves_the_points(self):
        self.expect(self.job("--axis-system", "Rosette", "--plies", "P1"), 0, "axis system: Rosette\n")
        self.assertIn("\n200.000000 -150.000000 0.000000   0.000000 0.000000 1.000000\n",
                      (self.folder / "panel.ply").read_text())

    def test_the_configuration_decides_what_is_not_said(self):
        self.expect(self.job("--configuration", "Whole plies"), 0)
        text = (self.folder / "panel.ply").read_text()
        self.assertNotIn("   0.000000 0.000000 1.000000", text)
        self.assertNotIn("P 3\n", text)
        self.expect(self.job("--configuration", "Whole plies", "--output-rosette", "--include-normal-vectors"), 0)
        text = (self.folder / "panel.ply").read_text()
        self.assertIn("   0.000000 0.000000 1.000000", text)
        self.assertIn("P 3\n", text)

    def test_flags_go_before_the_settings_file(self):
        self.write("s.json", {"type": "virtek", "output": "panel.ply", "units": "in", "plies": ["P1"],
                              "minimizePointsTolerance": 0.5, "outputRosette": False, "partName": "From settings"})
        self.expect(self.run_tool(PANEL, "--settings", "s.json", "--units", "mm"), 0, "written in mm")
        report = (self.folder / "panel.ply-report.htm").read_text()
        self.assertIn("Part Name: From settings\n", report)
        self.assertIn("Units: mm\n", report)
        self.assertIn("Points reduced with a tolerance of: 0.5\n", report)
        self.assertNotIn("Rosette used", report)
        self.assertEqual(self.starts(), ["P1"])

    def test_paths_of_a_settings_file_are_relative_to_it(self):
        (self.folder / "sub").mkdir()
        self.write("sub/s.json", {"type": "virtek", "output": "panel.ply"})
        self.expect(self.run_tool(PANEL, "--settings", "sub/s.json"), 0, "written: sub/panel.ply (")
        self.assertEqual(self.names(), ["sub"])

    def test_without_files_the_job_is_counted_only(self):
        self.expect(self.run_tool(PANEL, "--type", "virtek", "--no-create-laser-data"), 0, "plies: 3, sub-plies: 2")
        self.assertEqual(self.names(), [])

    def test_length_limit_and_thinning_reach_the_points(self):
        plain = ["--no-output-rosette", "--no-output-extra-geometry"]
        # Sides of 400 and 300 in pieces of 100, the end of each side twice.
        self.expect(self.job("--plies", "P1", "--use-max-length", "--max-length", "100",
                             "--no-use-minimize-points-tolerance", *plain), 0, "points: 18\n")
        # The point in the middle of a side goes, or stays.
        self.expect(self.job("--plies", "P2", *plain), 0, "points: 4\n")
        self.expect(self.job("--plies", "P2", "--no-use-minimize-points-tolerance", *plain), 0, "points: 5\n")

    def test_a_length_limit_that_would_fill_the_memory_is_told(self):
        self.expect(self.job("--use-max-length", "--max-length", "0.000001"), 2,
                    "--max-length: expected at least 9.85e-05 mm for boundaries of 4.9 m, found 1e-06 mm\n")
        self.assertEqual(self.names(), [])


class Atomicity(ToolTest):
    def job(self, *more, output="panel.ply", **rest):
        return self.run_tool(PANEL, "--type", "virtek", "--output", output, *more, **rest)

    def keep_previous(self):
        for name in ("panel.ply", "panel.cal", "panel.ply-report.htm"):
            self.write(name, f"previous {name}")

    def check_previous(self):
        for name in ("panel.ply", "panel.cal", "panel.ply-report.htm"):
            self.assertEqual((self.folder / name).read_text(), f"previous {name}")
        self.assertEqual([name for name in self.names() if name.startswith(".")], [])

    def test_a_job_replaces_what_was_there(self):
        self.keep_previous()
        self.expect(self.job(), 0)
        self.assertEqual(self.names(), ["panel.cal", "panel.ply", "panel.ply-report.htm"])
        self.assertTrue((self.folder / "panel.ply").read_text().endswith("EOD\n"))

    def test_a_failed_job_leaves_previous_files(self):
        self.keep_previous()
        self.expect(self.job("--plies", "none"), 2)
        self.check_previous()

    def test_one_place_that_is_taken_stops_all(self):
        self.keep_previous()
        (self.folder / "panel.cal").unlink()
        (self.folder / "panel.cal").mkdir()
        self.expect(self.job(), 4, "panel.cal: it is a folder\n")
        self.assertEqual((self.folder / "panel.ply").read_text(), "previous panel.ply")
        self.assertEqual((self.folder / "panel.ply-report.htm").read_text(), "previous panel.ply-report.htm")
        self.assertEqual(list((self.folder / "panel.cal").iterdir()), [])

    def test_no_folder_and_no_file_are_told(self):
        self.expect(self.job(output="none/panel.ply"), 4, "none: there is no such folder\n")
        self.expect(self.job(output="."), 4, "it is a folder\n")
        self.write("file", "")
        self.expect(self.job(output="file/panel.ply"), 4, "file: it is no folder\n")
        self.expect(self.job(output="/dev/full"), 4, "can't write /dev/full: it is no regular file\n")

    def test_a_folder_that_may_not_be_written_is_told(self):
        # The proc file system refuses new files to everybody, root included.
        self.expect(self.job(output="/proc/self/panel.ply"), 4, "error: can't write into the folder /proc/")

    def test_no_permission_is_told(self):
        closed = self.folder / "closed"
        closed.mkdir()
        closed.chmod(0o555)
        self.expect(self.job(output="closed/panel.ply", preexec_fn=obey_permissions), 4, "closed: no permission\n")
        protected = self.write("panel.ply", "previous")
        protected.chmod(0o444)
        self.expect(self.job(preexec_fn=obey_permissions), 4, "panel.ply: it is write-protected\n")
        self.assertEqual(protected.read_text(), "previous")

    def test_a_file_beyond_the_size_limit_is_told(self):
        self.keep_previous()
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000))
        self.expect(self.job(preexec_fn=limit), 4, "panel.ply: it is larger than the limit of 1000 bytes\n")
        self.check_previous()

    def test_interruption_leaves_previous_files(self):
        for number, delay in [(signal.SIGINT, 0.02), (signal.SIGTERM, 0.1), (signal.SIGINT, 0.2), (signal.SIGTERM, 0.35)]:
            with self.subTest(signal=number, delay=delay):
                self.keep_previous()
                process = self.start_long_job()
                time.sleep(delay)
                process.send_signal(number)
                _, error = process.communicate(timeout=60)
                self.assertIn(process.returncode, (128 + number, -number), error)
                self.check_previous()

    def test_killed_jobs_leave_previous_files_and_the_next_job_cleans_up(self):
        for delay in (0.01, 0.05, 0.1, 0.2, 0.3):
            self.keep_previous()
            process = self.start_long_job()
            time.sleep(delay)
            process.kill()
            process.communicate()
            for name in ("panel.ply", "panel.cal", "panel.ply-report.htm"):
                self.assertEqual((self.folder / name).read_text(), f"previous {name}")
        self.expect(self.job(), 0)
        self.assertEqual([name for name in self.names() if name.startswith(".")], [])

    def start_long_job(self):
        """A job that takes its time: some hundred points to a curve make some hundred thousand."""
        call = [str(PROGRAM), str(BLADE), "--type", "virtek", "--output", "panel.ply", "--use-max-length",
                "--max-length", "0.3", "--no-use-minimize-points-tolerance"]
        return subprocess.Popen(call, cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


class NoRoom(ToolTest):
    def test_a_full_device_is_told_and_leaves_previous_files(self):
        # A small file system of its own, in a name space of its own.
        script = 'mount -t tmpfs -o size=128k none "$1" || exit 99; cd "$1"; shift; echo previous >blade.ply; "$@"; ' \
                 'code=$?; cat blade.ply; ls -A; exit $code'
        call = ["--", "bash", "-c", script, "bash", self.folder, PROGRAM, BLADE, "--type", "virtek", "--output", "blade.ply"]
        for unshare in (["unshare", "--mount"], ["unshare", "--map-root-user", "--mount"]):
            result = subprocess.run([*unshare, *map(str, call)], capture_output=True, text=True, check=False)
            if result.returncode != 99 and "unshare failed" not in result.stderr:
                break
        else:
            print("no file system can be mounted here", file=sys.stderr)
            self.skipTest("no file system can be mounted here")
        self.assertEqual(result.returncode, 4, result.stderr)
        self.assertRegex(result.stderr, r"error: can't write into the folder .*: no room left on the device\n\Z")
        self.assertEqual(result.stdout, "previous\nblade.ply\n")


class Blade(ToolTest):
    def read_plies(self, name):
        """Ply name -> polylines of points, each three or six numbers."""
        plies, lines = {}, iter((self.folder / name).read_text().splitlines())
        for line in lines:
            if line.startswith("START "):
                current = plies.setdefault(line[6:], [])
            elif line.startswith("P "):
                current.append([[float(word) for word in next(lines).split()] for _ in range(int(line[2:]))])
        return plies

    def test_the_layup_is_what_the_script_makes(self):
        subprocess.run([sys.executable, SOURCE / "scripts" / "make-blade-layup.py", self.folder / "blade.layup.json"],
                       check=True)
        self.assertEqual((self.folder / "blade.layup.json").read_bytes(), BLADE.read_bytes())

    def test_plies_points_and_directions(self):
        result = self.run_tool(BLADE, "--type", "virtek", "--output", "blade.ply")
        # 32 plies; three of them are split into three, the filler is in three pieces instead of whole.
        self.expect(result, 0, "plies: 37, sub-plies: 3, ", "size: 0.8 m x 4.9 m x 11.7 m, written in mm\n")
        plies = self.read_plies("blade.ply")
        data = json.loads((BLADE.parent / "plies_ss_r30_r40.json").read_text())
        self.assertEqual(len(plies), 40)
        split = {"P001": ("+0", "+45", "-45"), "P002": ("+0", "-45", "+45"), "P031": ("+0", "+45", "-45"),
                 "P029": ("-1", "-2", "-3")}
        expected = [ply["name"] + end for ply in data["plies"] for end in split.get(ply["name"], ("",))]
        # The filler is laid ahead of the plies that are behind it in the list as well: that is the order of the data.
        self.assertEqual(list(plies), expected)
        sys.path.insert(0, str(SOURCE / "scripts"))
        import importlib.util
        script = importlib.util.spec_from_file_location("script", SOURCE / "scripts" / "make-blade-layup.py")
        module = importlib.util.module_from_spec(script)
        script.loader.exec_module(module)
        surface = module.Surface(BLADE.parent / "tool_ss_r30_r40.step")
        checked = 0
        for name, polylines in plies.items():
            boundary = polylines[0]
            self.assertEqual(boundary[0], boundary[-1])
            for x, y, z, *normal in boundary[:: max(1, len(boundary) // 12)]:
                tool = surface.point(y, z)
                # The distance from the tool is at most that along x times the normal's part in x.
                self.assertLess(abs(tool[0] - x) * abs(normal[0]), 1.0, name)
                self.assertAlmostEqual(sum(n * n for n in normal), 1.0, places=5)
                self.assertLess(normal[0], 0.0, "the normal points to the inside of the blade")
                checked += 1
        self.assertGreater(checked, 400)
        self.check_directions(plies)

    def check_directions(self, plies):
        """The rosette's long arm against the angle, worked out from the normal and the span."""
        import math
        for name, polylines in plies.items():
            angle = math.radians(45.0 if name.endswith("+45") else -45.0 if name.endswith("-45") else 0.0)
            tip, centre, side = polylines[1]
            n = tip[3:]
            span = [0.0 - n[2] * n[0], 0.0 - n[2] * n[1], 1.0 - n[2] * n[2]]
            length = math.sqrt(sum(c * c for c in span))
            u = [c / length for c in span]
            v = [n[1] * u[2] - n[2] * u[1], n[2] * u[0] - n[0] * u[2], n[0] * u[1] - n[1] * u[0]]
            for i in range(3):
                self.assertAlmostEqual(tip[i] - centre[i], 200.0 * (math.cos(angle) * u[i] + math.sin(angle) * v[i]), places=3)
            arm = [tip[i] - centre[i] for i in range(3)]
            short = [side[i] - centre[i] for i in range(3)]
            self.assertAlmostEqual(sum(a * b for a, b in zip(arm, short)), 0.0, places=2)
            self.assertAlmostEqual(math.dist(side[:3], centre[:3]), 100.0, places=3)

    def test_dxf_files_are_listed_with_shape_and_material(self):
        result = self.run_tool(BLADE, "--type", "dxf", "--output", "b.dxf", "--output-type", "nesting",
                               "--dxf-file-mode", "per-ply", "--shape-name", "%PLY%%SUBPLY%", "--plies", "P003,P029-1")
        self.expect(result, 0, "  b__P003.dxf: shape P003, material UD prepreg\n",
                    "  b__P029P029-1.dxf: shape P029P029-1, material Core\n", "plies: 1, sub-plies: 1, ",
                    "extents: DXF has constants for them, so a viewer may need \"zoom all\" to show the drawing\n")
        self.assertEqual(self.names(), ["b.dxf-report.htm", "b__P003.dxf", "b__P029P029-1.dxf"])

    def test_ezdxf_reads_all_that_dxf_is_written_for(self):
        nesting = ["--output-type", "nesting", "--dxf-file-mode"]
        for name, options in {"laser": [], "part": [*nesting, "single"], "material": [*nesting, "per-material"],
                              "ply": [*nesting, "per-ply"], "inch": [*nesting, "per-ply", "--units", "in"]}.items():
            self.expect(self.run_tool(BLADE, "--type", "dxf", "--output", f"{name}.dxf", *options), 0)
        names = [name for name in self.names() if name.endswith(".dxf")]
        for kind in ("laser.dxf", "part.dxf", "material__Core.dxf", "ply__", "inch__"):
            self.assertTrue(any(name.startswith(kind) for name in names), kind)
        # The packages of the system belong to its own interpreter, and another one may come first in the path.
        python = next(path for path in ("/usr/bin/python3", sys.executable) if os.path.exists(path))
        reader = subprocess.run([python, "-B", SOURCE / "tests" / "writers" / "read_dxf.py", self.folder],
                                capture_output=True, text=True, timeout=100, check=False)
        if reader.returncode == 77:
            self.skipTest(reader.stdout.strip())
        self.assertEqual((reader.returncode, reader.stdout, reader.stderr), (0, "", ""))

    def test_letters_that_readers_may_change_are_warned_of(self):
        text = PANEL.read_text(encoding="utf-8").replace('"name": "Panel"', '"name": "Paneel \u00e4"')
        self.write("a.json", text.replace('"name": "P1"', '"name": "P\u00f6"'))
        beyond = "has characters beyond ASCII, which projectors may show as others"
        result = self.run_tool("a.json", "--type", "dxf", "--output", "a.dxf")
        self.assertEqual(re.findall(r"(?m)^warning: .*", result.stderr),
                         [f'warning: a.dxf:85: a text {beyond}: "Paneel \u00e4"'])  # names of plies are no texts there
        result = self.run_tool("a.json", "--type", "virtek", "--output", "a.ply")
        self.assertIn(f'\nwarning: a.ply:3: ply P\u00f6: the ply\'s name {beyond}: "P\u00f6"\n', result.stderr)
        self.assertNotIn("warning", self.run_tool("a.json", "--type", "virtek", "--output", "a.ply", "--no-check").stderr)
        self.assertNotIn("warning", self.run_tool(PANEL, "--type", "dxf", "--output", "b.dxf").stderr)

    def test_flat_output_takes_the_flat_patterns(self):
        self.expect(self.run_tool(BLADE, "--type", "virtek", "--output", "blade.ply", "--configuration", "Flat"), 0)
        plies = self.read_plies("blade.ply")
        self.assertIn("P001+45", plies)
        self.assertNotIn("P004", plies)  # has none
        xs = [point[0] for point in plies["P001+0"][0]]
        self.assertAlmostEqual(max(xs) - min(xs), 11700.0, delta=1.0)


class Documents(ToolTest):
    def blocks(self, name, language):
        text = (SOURCE / name).read_text(encoding="utf-8")
        found = [block for of, block in re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", text) if of == language]
        self.assertGreater(len(found), 0)
        return found

    def test_the_layup_file_of_the_readme_works(self):
        self.write("a.layup.json", self.blocks("README.md", "json")[0])
        self.expect(self.run_tool("a.layup.json", "--type", "virtek", "--output", "a.ply"), 0, "plies: 1, ")

    def test_the_output_in_the_readme_is_what_is_written(self):
        shown = next(block for block in self.blocks("README.md", "") if "written: " in block)
        result = self.run_tool(PANEL, "--type", "virtek", "--output", "panel.ply")
        self.assertEqual(result.stdout, shown)

    def test_the_commands_in_the_readme_work(self):
        self.write("virtek.json", {"type": "virtek", "output": "panel.ply"})
        commands = [line for block in self.blocks("README.md", "sh")
                    for line in block.replace("\\\n", " ").splitlines()
                    if line.startswith("zetlaser-job examples/")]
        self.assertEqual(len(commands), 4)
        for command in commands:
            words = [SOURCE / word if word.startswith("examples/") else word for word in command.split()[1:]]
            self.expect(self.run_tool(*words), 0)

    def test_the_call_in_the_readme_stands_in_the_host_application(self):
        def squeeze(text):
            return re.sub(r"\s+", " ", text)
        program = squeeze((SOURCE / "examples" / "host-application" / "main.cpp").read_text(encoding="utf-8"))
        for statement in re.split(r"(?<=;)", self.blocks("README.md", "cpp")[0]):
            statement = squeeze(re.sub(r"//.*", "", statement)).strip()
            statement = statement.replace("(root", "(model.root").replace("root->", "model.root->").replace("model.model.", "model.")
            self.assertIn(statement.replace("(fileName)", "(QString::fromLocal8Bit(argv[2]))"), program)

    def test_the_keys_are_told(self):
        text = (SOURCE / "docs" / "layup-file.md").read_text(encoding="utf-8")
        schema = json.loads((SOURCE / "schema" / "layup.schema.json").read_text(encoding="utf-8"))
        keys = set(schema["properties"]) - {"$schema"}
        for name in ("layup", "ply", "strategy", "configuration", "target", "projector", "material", "text", "curve",
                     "extraGeometry", "flatPattern", "boundary"):
            keys |= set(schema["$defs"][name]["properties"])
        self.assertEqual([key for key in sorted(keys) if not re.search(rf"\b{key}\b", text)], [])


class Schema(ToolTest):
    def read(self, path):
        return json.loads((SOURCE / path).read_text(encoding="utf-8"))

    def check_faults(self, schema, whole, changes):
        """Each change makes a document that the schema refuses of one that it takes."""
        json_schema.check(whole, schema, "whole")
        for change in changes:
            broken = json.loads(json.dumps(whole))
            change(broken)
            with self.assertRaises(AssertionError, msg=broken):
                json_schema.check(broken, schema, "broken")

    def test_the_examples_follow_the_schema(self):
        schema = self.read("schema/layup.schema.json")
        for path in (PANEL, BLADE):
            json_schema.check(self.read(path), schema, path.name)

    def test_the_schema_of_settings_takes_the_example_and_finds_faults(self):
        self.check_faults(self.read("schema/settings.schema.json"), self.read("examples/blade/makes.settings.json"), [
            lambda s: s.update(outputs=[]), lambda s: s.update(unit="mm"), lambda s: s.update(maxLength=-1),
            lambda s: s["outputs"][0].update(type="vitrek"), lambda s: s["outputs"][1].update(unit="mm"),
            lambda s: s["outputs"][2].update(plies=[]), lambda s: s["outputs"][3].update({"$schema": "x"}),
            lambda s: s["outputs"][4].update(outputs=[{"type": "virtek"}])])

    def test_the_schema_of_layups_finds_faults(self):
        self.check_faults(self.read("schema/layup.schema.json"), self.read(PANEL), [
            lambda p: p.update(units="km"), lambda p: p["targets"][0].update(at=[1, 2]),
            lambda p: p["layups"][1]["children"][0]["children"][0].update(angle=3), lambda p: p.pop("format"),
            lambda p: p["surfaces"][0].update(sphere={"radius": 1})])


if __name__ == "__main__":
    main(paths=3)
