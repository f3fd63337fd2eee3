#!/usr/bin/env python3
"""Tests of several outputs from one settings file: test_sets.py PROGRAM SOURCE_DIR [unittest arguments]"""

import json
import re
import signal
import subprocess

from tool_test import BLADE, PANEL, PROGRAM, SOURCE, ToolTest, main

# Every make, with the keys that it needs beside its type.
MAKES = {
    "virtek": {}, "lpt": {}, "faro": {}, "lap": {}, "sl": {}, "assembly-guidance": {"units": "in"}, "aligned-vision": {},
    "general-scanning": {"configuration": "Whole plies"}, "apt": {}, "apt-2": {}, "apt-sl": {}, "dxf": {"layups": ["Back"]},
    "quilmon": {"plies": ["P3"], "axisSystem": "Rosette"}}


def flag(key):
    return "--" + re.sub(r"[A-Z]", lambda letter: "-" + letter[0].lower(), key)


class SetTest(ToolTest):
    tells_result_of_failure = True  # of the outputs that didn't fail

    def run_set(self, settings, *more, layup=PANEL):
        self.write("set.json", settings)
        return self.run_tool(layup, "--settings", "set.json", *more)

    def undated_contents(self, folder):
        """The files of a folder without the only field that tells the time."""
        return {name: re.sub(rb'FILEDATE="[^"]*"', b"", content) for name, content in self.contents(folder).items()}

    def headings(self, result):
        return re.findall(r"(?m)^output \d+ of \d+: .*$", result.stdout)


class Outputs(SetTest):
    def test_a_set_gives_the_files_that_single_jobs_give(self):
        outputs = []
        for kind, more in MAKES.items():
            outputs.append({"type": kind, "output": f"{kind}.out", **more})
            (self.folder / "single").mkdir(exist_ok=True)
            flags = [word for key, value in more.items()
                     for word in (flag(key), value if isinstance(value, str) else ",".join(value))]
            self.expect(self.run_tool(PANEL, "--type", kind, "--output", f"single/{kind}.out", *flags), 0)
        expected = self.undated_contents("single")
        self.assertGreater(len(expected), 2 * len(MAKES))
        (self.folder / "set").mkdir()
        for output in outputs:
            output["output"] = "set/" + output["output"]
        result = self.run_set({"outputs": outputs})
        self.expect(result, 0)
        self.assertEqual(self.headings(result),
                         [f"output {i} of 13: {kind}.out" for i, kind in enumerate(MAKES, 1)])
        written = self.undated_contents("set")
        self.assertEqual(sorted(written), sorted(expected))
        for name, content in expected.items():
            self.assertEqual(written[name], content, name)

    def test_the_model_is_read_once(self):
        # What a feature has to say when it is updated comes from reading, so it comes as often as the model is read.
        layup = json.loads(PANEL.read_text(encoding="utf-8"))
        layup["projectors"].append({"name": "Empty", "targets": []})
        self.write("a.json", layup)
        result = self.run_set({"outputs": [{"type": kind, "output": f"{kind}.out"} for kind in MAKES]}, layup="a.json")
        self.expect(result, 0)
        self.assertEqual(result.stderr.count("There is no target in the projector."), 1)

    def test_own_keys_go_before_common_ones_and_flags_before_both(self):
        settings = {"type": "virtek", "units": "in", "partName": "Common", "outputs": [
            {"output": "a.ply"}, {"output": "b.ply", "units": "mm", "partName": "Own"}]}
        self.expect(self.run_set(settings), 0)
        reports = [(self.folder / f"{name}.ply-report.htm").read_text() for name in "ab"]
        self.assertIn("Units: inch", reports[0])
        self.assertIn("Part Name: Common\n", reports[0])
        self.assertIn("Units: mm", reports[1])
        self.assertIn("Part Name: Own\n", reports[1])
        self.expect(self.run_set(settings, "--part-name", "Flag"), 0)
        for name in "ab":
            self.assertIn("Part Name: Flag\n", (self.folder / f"{name}.ply-report.htm").read_text())

    def test_an_output_without_a_configuration_has_that_of_the_model(self):
        self.expect(self.run_set({"type": "virtek", "outputs": [
            {"output": "a.ply", "configuration": "Whole plies"}, {"output": "b.ply"}]}), 0)
        starts = [re.findall(r"(?m)^START (.*)", (self.folder / f"{name}.ply").read_text()) for name in "ab"]
        self.assertEqual(starts, [["P1", "P2", "P3", "P4"], ["P1", "P2", "P3a", "P3b", "P4"]])

    def test_paths_are_relative_to_the_settings_file(self):
        self.write("deep/set.json", {"type": "virtek", "outputs": [{"output": "a.ply"}, {"output": "../b.ply"}]})
        self.expect(self.run_tool(PANEL, "--settings", "deep/set.json"), 0, "written: deep/a.ply (", "written: b.ply (")
        self.assertEqual(self.names(), ["b.cal", "b.ply", "b.ply-report.htm", "deep"])

    def test_an_output_can_be_counted_only(self):
        result = self.run_set({"outputs": [{"type": "virtek", "createLaserData": False}, {"type": "sl", "output": "a.sl"}]})
        self.expect(result, 0)
        self.assertEqual(self.headings(result), ["output 1 of 2: virtek", "output 2 of 2: a.sl"])
        self.assertEqual(result.stdout.count("plies: 3, sub-plies: 2, points: 36\n"), 2)
        self.assertEqual(self.names(), ["a.cp1", "a.sl", "a.sl-report.htm", "set.json"])

    def test_a_tool_file_can_have_a_folder_of_its_own(self):
        for name in ("parts", "tools"):
            (self.folder / name).mkdir()
        self.expect(self.run_set({"type": "faro", "useSpecificPathForLaserFile": True, "targetFilePath": "tools", "outputs": [
            {"output": "parts/a.XML"}, {"output": "parts/b.XML"}]}), 0)
        self.assertEqual(sorted(self.contents("tools")), ["Tool-a.XML", "Tool-b.XML"])
        self.assertIn(f" to file {self.folder}/tools/Tool-b.XML\n",
                      (self.folder / "parts" / "b.XML-report.htm").read_text())

    def test_the_report_tells_where_a_tool_file_stands(self):
        self.expect(self.run_tool(PANEL, "--type", "lpt", "--output", "a.XML"), 0)
        self.assertIn(" to file ./Tool-a.XML\n", (self.folder / "a.XML-report.htm").read_text())
        self.expect(self.run_tool(PANEL, "--type", "lpt", "--output", "b.XML", "--use-specific-path-for-laser-file"), 2,
                    "expected --target-file-path beside --use-specific-path-for-laser-file, found none\n")

    def test_one_output_is_told_like_a_job_without_a_set(self):
        result = self.run_set({"outputs": [{"type": "virtek", "output": "panel.ply"}]})
        self.assertEqual(result.stdout, self.run_tool(PANEL, "--type", "virtek", "--output", "panel.ply").stdout)


class Failures(SetTest):
    def test_one_failed_output_does_not_stop_the_others(self):
        for name in ("b.ply", "c.ply"):
            self.write(name, "previous")
        result = self.run_set({"type": "virtek", "outputs": [
            {"output": "a.ply"}, {"output": "b.ply", "outputType": "flat"}, {"output": "none/x.ply"},
            {"output": "c.ply", "plies": ["P9"]}, {"output": "d.ply"}]})
        self.expect(result, 4, "error: 3 of 5 outputs failed\n",
                    "error: output 2 of 5 failed with exit code 1: nothing to write: no ply with a flat pattern is selected\n",
                    'error: output 4 of 5 failed with exit code 2: the model has no ply to output called "P9", did you mean "P1"?\n')
        self.assertRegex(result.stderr, "(?m)^error: output 3 of 5 failed with exit code 4: can't write into the folder "
                                        ".*/none: there is no such folder$")
        # Once, and the result is of those that were written.
        self.assertEqual(len(re.findall("(?m)^error: ", result.stderr)), 4)
        self.assertEqual(self.headings(result), ["output 1 of 5: a.ply", "output 5 of 5: d.ply"])
        self.assertNotIn("failed", result.stdout)
        single = self.run_tool(PANEL, "--type", "virtek", "--output", "e.ply")
        self.assertIn(single.stdout.replace("e.", "d."), result.stdout)
        for name in ("b.ply", "c.ply"):
            self.assertEqual((self.folder / name).read_text(), "previous")
        self.assertEqual([name for name in self.names() if name[0] in "abcd."],
                         ["a.cal", "a.ply", "a.ply-report.htm", "b.ply", "c.ply", "d.cal", "d.ply", "d.ply-report.htm"])

    def test_a_place_that_is_taken_fails_its_output_whole(self):
        (self.folder / "b.cal").mkdir()
        result = self.run_set({"type": "virtek", "outputs": [{"output": "b.ply"}, {"output": "a.ply"}]})
        self.expect(result, 4, "error: output 1 of 2 failed with exit code 4: can't write ", "b.cal: it is a folder\n")
        self.assertEqual(self.names(), ["a.cal", "a.ply", "a.ply-report.htm", "b.cal", "set.json"])

    def test_the_exit_code_is_the_highest(self):
        for outputs, code in (([{"plies": ["P9"]}, {"outputType": "flat"}], 2), ([{"outputType": "flat"}, {}], 1)):
            settings = {"type": "virtek", "outputs": [{**output, "output": f"{i}.ply"} for i, output in enumerate(outputs)]}
            self.expect(self.run_set(settings), code)

    def test_where_all_outputs_fail_the_model_is_not_read(self):
        self.expect(self.run_set({"outputs": [{"output": "a.ply"}, {"type": "virtek"}]}, layup="none.json"), 2,
                    "output 1 of 2 failed with exit code 2: expected the option --type, found none",
                    "output 2 of 2 failed with exit code 2: expected the option --output, found none", "error: 2 of 2 outputs failed\n")

    def test_interruption_leaves_previous_files(self):
        self.write("a.ply", "previous")
        long = {"useMaxLength": True, "maxLength": 0.3, "useMinimizePointsTolerance": False}
        self.write("set.json", {"type": "virtek", "outputs": [{"output": "a.ply"}, {"output": "b.ply", **long}]})
        process = subprocess.Popen([str(PROGRAM), str(BLADE), "--settings", "set.json"], cwd=self.folder,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        line = b""
        while not line.startswith(b"output 2 of 2"):  # the first output is made, and waits for the second
            line = process.stderr.readline()
            self.assertTrue(line)
        process.send_signal(signal.SIGTERM)
        output, _ = process.communicate(timeout=60)
        self.assertEqual((process.returncode, output), (128 + signal.SIGTERM, b""))
        self.assertEqual(self.names(), ["a.ply", "set.json"])
        self.assertEqual((self.folder / "a.ply").read_text(), "previous")


class Clashes(SetTest):
    def refuse(self, outputs, text, **common):
        before = self.names()
        result = self.run_set({**common, "outputs": outputs})
        self.expect(result, 3, text)
        self.assertRegex(result.stderr, r"(?m)^error: .* would both write .*; nothing is written\n\Z")
        self.assertEqual(result.stdout, "")
        self.assertEqual(self.names(), sorted({*before, "set.json"}))
        return result

    def test_two_outputs_of_one_name_are_refused_before_anything_is_written(self):
        (self.folder / "link").symlink_to(".")
        for first, second in (("a.ply", "a.ply"), ("a.ply", "link/../a.ply"), ("a.ply", "link/a.ply"), ("a.ply", "A.PLY"),
                              ("%PART%.ply", "Panel.ply")):
            with self.subTest(second=second):
                result = self.refuse([{"output": first}, {"output": "b.ply"}, {"output": second}],
                                     "error: output 1 of 3 and output 3 of 3 would both write ", type="virtek")
                self.assertNotIn("successfully written", result.stderr)

    def test_further_files_that_meet_are_refused_before_anything_is_moved(self):
        self.write("a.cal", "previous")
        self.refuse([{"type": "virtek", "output": "a.ply"}, {"type": "lap", "output": "a.lpd"}], "/a.cal; nothing")
        self.assertEqual((self.folder / "a.cal").read_text(), "previous")
        self.refuse([{"type": "faro", "output": "a.XML"}, {"type": "virtek", "output": "Tool-a.XML"}], "/Tool-a.XML; nothing")
        self.refuse([{"type": "virtek", "output": "a.ply"}, {"type": "virtek", "output": "a.ply-report.htm"}],
                    "/a.ply-report.htm; nothing")

    def test_files_of_single_plies_that_meet_are_refused(self):
        nesting = {"type": "dxf", "outputType": "nesting", "dxfFileMode": "per-ply"}
        self.write("set.json", {"outputs": [{**nesting, "output": "a.DXF", "shapeName": "X"},
                                            {"type": "dxf", "output": "a__X.DXF"}]})
        result = self.run_tool(BLADE, "--settings", "set.json")
        self.expect(result, 3, "/a__X.DXF; nothing is written")
        self.assertEqual(self.names(), ["set.json"])

    def test_an_output_that_failed_clashes_with_none(self):
        result = self.run_set({"type": "virtek", "outputs": [{"output": "a.ply", "plies": ["P9"]}, {"output": "a.ply"}]})
        self.expect(result, 2, "1 of 2 outputs failed")
        self.assertIn("a.ply", self.names())


class FileNames(SetTest):
    def name_of(self, pattern, **more):
        result = self.run_set({"outputs": [{"type": "dxf", "output": pattern, **more}]})
        self.expect(result, 0)
        return next(name for name in self.names() if name.lower().endswith(".dxf"))

    def test_macros_that_are_the_same_for_all_plies_go_into_the_name(self):
        for pattern, more, name in (
                ("%PART%.DXF", {}, "Panel.DXF"),
                ("%PART%-%LAYUP%.DXF", {"layups": ["Back"]}, "Panel-Back.DXF"),
                ("%SEQ%_%PLY%%SUBPLY%.DXF", {"plies": ["P3a"]}, "S2_P3P3a.DXF"),
                ("%MAT%-%MAT_ID%-%ORI%.DXF", {"plies": ["P1"]}, "Glass-G-300-0.0.DXF"),
                ("50%.DXF", {}, "50%.DXF")):
            with self.subTest(pattern=pattern):
                self.assertEqual(self.name_of(pattern, **more), name)
                (self.folder / name).unlink()

    def test_parameters_of_the_model_are_macros_too(self):
        layup = json.loads(PANEL.read_text(encoding="utf-8"))
        layup["parameters"] = {"MOULD": "SS-30", "PLY": "all"}
        layup["name"] = "Left/right"
        self.write("a.json", layup)
        self.expect(self.run_tool("a.json", "--type", "virtek", "--output", "%MOULD% %PLY% %PART%.ply"), 0,
                    "written: SS-30 all Left_right.ply (")
        self.assertIn("SS-30 all Left_right.ply", (self.folder / "SS-30 all Left_right.ply-report.htm").read_text())

    def test_macros_that_make_no_name_are_refused(self):
        for pattern, text in (
                ("%PLY%.ply", 'the file name "%PLY%.ply" isn\'t the same for all plies of the output, found "P1.ply" and "P2.ply"'),
                ("%ORI%.ply", 'found "0.0.ply" and "45.0.ply"'),
                ("%SUBPLY%.ply", 'found ".ply" and "P3a.ply"'),
                ("%part%.ply", 'the file name "%part%.ply" has an unknown macro, known are %LAYUP%, %MAT%, %MAT_ID%, %ORI%, '
                               '%PART%, %PLY%, %SEQ%, %SUBPLY%\n'),
                ("%SOURCE%.ply", 'the file name "%SOURCE%.ply" has the macro %SOURCE%, which gives a path'),
                (".a.ply", 'expected a file name that doesn\'t begin with a dot, found ".a.ply"')):
            with self.subTest(pattern=pattern):
                self.expect(self.run_tool(PANEL, "--type", "virtek", "--output", pattern), 2, text)
                self.assertEqual(self.names(), [])


class Settings(SetTest):
    def test_faults_of_a_set_are_told_with_line_and_place(self):
        for text, fault in (
                ('{"outputs": []}', "s.json:1: outputs: expected an array of at least one output, found an array of 0"),
                ('{"outputs": {}}', "s.json:1: outputs: expected an array of at least one output, found an object"),
                ('{"outputs": [\n3]}', "s.json:2: outputs[0]: expected an object, found the number 3"),
                ('{"outputs": [{},\n{"tpye": "sl"}]}', 's.json:2: outputs[1]: unknown key "tpye", did you mean "type"?'),
                ('{"outputs": [\n{"units": "cm"}]}',
                 's.json:2: outputs[0].units: expected one of mm, in, found the text "cm"'),
                ('{"outputs": [{"outputs": []}]}', 's.json:1: outputs[0]: unknown key "outputs"')):
            with self.subTest(text=text):
                self.write("s.json", text)
                self.expect(self.run_tool(PANEL, "--settings", "s.json"), 3, fault)
                self.assertEqual(self.names(), ["s.json"])

    def test_type_and_output_go_with_one_output(self):
        for flags in (["--type", "sl"], ["--output", "b.sl"]):
            self.expect(self.run_set({"outputs": [{"type": "virtek", "output": "a.ply"}]}, *flags), 2,
                        f'expected no {flags[0]} beside a settings file with "outputs"')

    def test_a_preview_takes_what_stands_outside_of_the_outputs(self):
        self.write("set.json", {"plies": ["P1"], "outputs": [{"type": "virtek", "output": "a.ply", "plies": ["P2"]}]})
        self.expect(self.run_tool("preview", PANEL, "--settings", "set.json", "--output", "p", "--formats", "svg"), 0,
                    "shown: 1 plies")
        self.assertIn("P1", (self.folder / "p.svg").read_text())


class Documents(SetTest):
    def test_the_example_asks_for_every_make_in_one_folder(self):
        settings = json.loads((BLADE.parent / "makes.settings.json").read_text(encoding="utf-8"))
        self.assertEqual({output["type"] for output in settings["outputs"]}, set(MAKES))
        places = {output[key].rpartition("/")[0] for output in settings["outputs"] for key in ("output", "summary") if key in output}
        self.assertEqual(places, {"../../build/job"})

    def test_the_settings_file_of_the_document_works(self):
        text = (SOURCE / "docs" / "settings-file.md").read_text(encoding="utf-8")
        blocks = dict(re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", text))
        self.write("workshop.json", blocks["json"])
        result = self.run_tool(PANEL, "--settings", "workshop.json")
        self.expect(result, 0, *blocks[""].splitlines()[:2])
        self.assertEqual(self.headings(result), ["output 1 of 3: Panel.ply", "output 2 of 3: Panel-lap.lpd",
                                                 "output 3 of 3: Panel-Back.PRT"])
        layup = PANEL.read_text(encoding="utf-8").replace('"name": "Left"', '"name": "Other"')
        self.write("other.json", layup)
        result = self.run_tool("other.json", "--settings", "workshop.json")
        self.assertEqual(result.returncode, 2)
        for line in blocks[""].splitlines():
            if line != "...":
                self.assertIn(line + "\n", result.stderr if line.startswith("error: ") else result.stdout)


if __name__ == "__main__":
    main()
