#!/usr/bin/env python3
"""Tests of `zetlaser-job check`, as its users call it: test_check.py PROGRAM SOURCE_DIR [unittest arguments]"""

import json
import re

import json_schema
from tool_test import BLADE, PANEL, SOURCE, ToolTest, main

SCHEMA = json.loads((SOURCE / "schema" / "check.schema.json").read_text(encoding="utf-8"))
SQUARE = "P 5\n0 0 0\n100 0 0\n100 100 0\n0 100 0\n0 0 0\n"
GOOD = f"LAYER START S\nSTART A\n{SQUARE}END A\nLAYER END S\nEOD\n"


class CheckTest(ToolTest):
    def check(self, *arguments, code=0):
        result = self.run_tool("check", *arguments)
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        if "--json" in arguments and result.stdout:  # a wrong call tells nothing there
            json_schema.check(json.loads(result.stdout), SCHEMA, "check --json")
        return result


class Calls(CheckTest):
    def test_a_good_file_is_told_with_its_plies(self):
        self.write("part.ply", GOOD)
        result = self.check("part.ply")
        self.assertEqual(result.stderr, "")
        self.assertEqual(result.stdout.splitlines(), [
            "part.ply: Virtek",
            "  plies and sub-plies: 1, curves: 1, points: 5, texts: 0, parameters: 0",
            "  normals: 0 points have one",
            "  size: 100.0 mm x 100.0 mm x 0.0 mm, if it is written in mm; the file doesn't tell",
            "     line  curves  closed  points     length  size                           ply",
            "        2       1       1       5   400.0 mm  100.0 mm x 100.0 mm x 0.0 mm   S/A",
            "part.cal: there is no such file beside part.ply"])
        self.assertEqual(self.check("--quiet", "part.ply").stdout, "")

    def test_a_finding_is_one_line_with_file_line_and_ply(self):
        self.write("part.ply", GOOD.replace("P 5", "P 6"))
        result = self.check("--quiet", "part.ply", code=1)
        self.assertEqual(result.stdout, "part.ply:3: error: ply A: announces 6 points and holds 5\n")
        self.assertEqual(result.stderr, "")

    def test_units_that_the_file_does_not_tell_are_told_by_the_user(self):
        self.write("part.ply", GOOD)
        self.assertIn("  size: 2.5 m x 2.5 m x 0.0 m, as it is written in inches", self.check("part.ply", "--units=in").stdout)

    def test_the_calibration_file_beside_it_is_checked_too(self):
        self.write("part.ply", GOOD)
        self.write("part.cal", "2\nT a 0 0 0\n")
        result = self.check("part.ply", code=1)
        self.assertIn("part.cal: Calibration file\n  targets: 1, projectors: 1\n", result.stdout)
        self.assertTrue(result.stdout.endswith("part.cal:1: error: announces 2 targets and holds 1\n"))
        # Once, also where both are named, and alone.
        self.assertEqual(self.check("--quiet", "part.ply", "part.cal", code=1).stdout.count("\n"), 1)
        self.assertEqual(self.check("--quiet", "part.cal", code=1).stdout.count("\n"), 1)

    def test_json_tells_all_of_it(self):
        self.write("part.ply", GOOD.replace("END A", "L 1\nhello\nEND A").replace("100 0 0\n", "100 0 0\n100 0 0\n"))
        self.write("part.cal", "1\nT a D 1 2 3.5\n")
        result = self.check("part.ply", "gone.ply", "--json", code=2)
        part, calibration, gone = json.loads(result.stdout)["files"]
        self.assertEqual(part, {
            "file": "part.ply", "type": "virtek", "curves": 1, "points": 6, "texts": 0, "parameters": 1, "projectors": 0,
            "targets": [], "size": [100, 100, 0],
            "plies": [{"name": "A", "layers": ["S"], "line": 2, "curves": 1, "closedCurves": 1, "points": 6,
                       "pointsWithNormal": 0, "texts": 0, "parameters": 1, "length": 400, "size": [100, 100, 0]}],
            "findings": [
                {"severity": "warning", "line": 6, "ply": "A",
                 "text": "a point stands twice in a row, 1 times in the curve of line 3"},
                {"severity": "error", "line": 9, "ply": "A", "text": "more points than line 3 announces"}]})
        self.assertEqual(calibration["targets"],
                         [{"name": "a", "projector": 0, "drift": True, "at": [1, 2, 3.5], "line": 2}])
        self.assertEqual(calibration["findings"], [])
        self.assertEqual(gone, {"file": "gone.ply", "error": "there is no such file"})
        self.assertEqual(result.stdout, self.check("part.ply", "gone.ply", "--json", code=2).stdout)

    def test_lengths_beyond_all_numbers_are_null(self):
        self.write("part.ply", GOOD.replace("\n100 0 ", f"\n1{'0' * 308} 0 ").replace("\n0 100 ", f"\n-1{'0' * 308} 100 "))
        part, = json.loads(self.check("part.ply", "--json", code=1).stdout)["files"]
        self.assertEqual((part["plies"][0]["length"], part["size"]), (None, [None, 100, 0]))

    def test_the_schema_refuses_what_check_does_not_tell(self):
        self.write("part.ply", GOOD.replace("P 5", "P 6"))
        self.write("part.cal", "1\nT a 1 2 3\n")
        document = json.loads(self.check("part.ply", "gone.ply", "--json", code=2).stdout)
        for change in (lambda d: d["files"].clear(), lambda d: d["files"][0].pop("type"), lambda d: d.update(date="today"),
                       lambda d: d["files"][0].update(error="it is empty"), lambda d: d["files"][2].pop("error"),
                       lambda d: d["files"][0]["plies"][0].update(length=-1), lambda d: d["files"][0].update(unit="ft"),
                       lambda d: d["files"][0]["findings"][0].update(severity="note"),
                       lambda d: d["files"][0]["findings"][0].update(line=0),
                       lambda d: d["files"][1]["targets"][0].update(at=[1, 2])):
            broken = json.loads(json.dumps(document))
            change(broken)
            with self.assertRaises(AssertionError):
                json_schema.check(broken, SCHEMA, "broken")

    def test_files_that_cannot_be_read_are_told_and_the_others_are_checked(self):
        self.write("good.ply", GOOD)
        self.write("words.ply", "These are words.\n")
        self.write("empty.ply", "")
        self.write("words.txt", "These are words.\n")
        (self.folder / "folder.ply").mkdir()
        for name, text in (
                ("gone.ply", "can't read gone.ply: there is no such file"),
                ("folder.ply", "can't read folder.ply: it is no regular file"),
                ("/dev/zero", "can't read /dev/zero: it is no regular file"),
                ("/proc/self/mem", "can't read /proc/self/mem: Input/output error"),  # at its begin
                ("words.txt", "can't read words.txt: the type isn't known by its name or its content; --type tells it"),
                ("empty.ply", "can't read empty.ply: it is empty"),
                ("words.ply", "can't read words.ply: it is no file of the type Virtek: line 1: expected the begin of a "
                              'layer or of a ply, found "These are words."')):
            with self.subTest(name=name):
                result = self.check(name, "good.ply", code=2)
                self.assertEqual(result.stderr, f"error: {text}\n")
                self.assertTrue(result.stdout.startswith("good.ply: Virtek\n"))
                self.assertEqual(result.stdout.count("good.ply: Virtek"), 1)

    def test_the_type_is_known_by_content_and_can_be_told(self):
        self.write("part.dat", GOOD)
        self.check("part.dat")
        self.write("part.x", "0\n")
        self.check("part.x", code=2)
        self.check("part.x", "--type", "calibration")

    def test_options_without_effect_are_refused(self):
        self.write("part.ply", GOOD)
        for arguments, text in (
                (["--axis-system", "Rosette"], "--axis-system: expected --layup beside it, found none"),
                (["--max-distance", "5"], "--max-distance: expected --layup beside it, found none"),
                (["--quiet", "--json"], "expected --quiet or --json, found both"),
                (["--plies", "P1"], "--plies: expected --layup beside it, found none"),
                (["--summary", "s.json"], '--summary is an option of "zetlaser-job", not of "zetlaser-job check" '
                                    "(zetlaser-job check --help tells more)")):
            with self.subTest(arguments=arguments):
                result = self.check("part.ply", *arguments, code=2)
                self.assertEqual((result.stdout, result.stderr), ("", f"error: {text}\n"))

    def test_reports_are_passed_over(self):
        self.write("part.ply", GOOD)
        self.write("part.ply-report.htm", "<HTML>")
        self.assertNotIn("htm", self.check("part.ply", "part.ply-report.htm").stdout)
        # Nothing was checked, so nothing can be said to be in order.
        self.assertEqual(self.check("part.ply-report.htm", code=2).stderr,
                         "error: expected a part file, found reports alone\n")

    def test_a_calibration_file_that_is_not_there_is_told(self):
        self.write("part.ply", GOOD)
        self.assertEqual(self.check("part.ply").stdout.splitlines()[-1], "part.cal: there is no such file beside part.ply")
        self.assertEqual(self.check("--quiet", "part.ply").stdout, "")
        self.write("part.cal", "1\nT a 0 0 0\n")
        self.assertNotIn("there is no such file", self.check("part.ply").stdout)
        self.assertNotIn("there is no such file", self.check("part.ply", "part.cal").stdout)

    def test_a_target_that_was_moved_by_hand_is_found(self):
        self.write("part.ply", GOOD)
        self.write("part.cal", "2\nT a 0 0 0\nT b 9 0 0\n2\nT b 8 0 0\nT a 8 0 0\n")
        self.assertEqual(self.check("--quiet", "part.ply", code=1).stdout.splitlines(), [
            "part.cal:5: warning: target b: it stands elsewhere than the target of this name in line 3",
            "part.cal:6: warning: target a: it stands where the projector's target in line 5 does",
            "part.cal:6: warning: target a: it stands elsewhere than the target of this name in line 2"])

    def test_a_byte_order_mark_is_told_and_the_file_read_all_the_same(self):
        for name in ("part.ply", "part.dat"):
            (self.folder / name).write_text(GOOD, encoding="utf-8-sig")
            result = self.check(name, code=1)
            self.assertIn("  plies and sub-plies: 1, curves: 1, points: 5, ", result.stdout)
            self.assertIn(f"{name}:1: error: the file begins with a byte order mark, which no format has", result.stdout)

    def test_wrong_calls_are_told(self):
        for arguments, text in (([], "expected a part file, found none"),
                                (["part.ply", "--type", "vitrek"], "--type: expected one of apt, "),
                                (["part.ply", "--jsno"], "unknown option --jsno, did you mean --json?")):
            with self.subTest(arguments=arguments):
                result = self.check(*arguments, code=2)
                self.assertRegex(result.stderr, r"\Aerror: .+\n\Z")
                self.assertIn(text, result.stderr)
                self.assertEqual(result.stdout, "")


class Tool(CheckTest):
    """Files held against the tool that the layup file names."""

    def setUp(self):
        super().setUp()
        layup = json.loads(PANEL.read_text())
        layup["layups"] = [child for child in layup["layups"] if child["name"] == "Front"]
        self.write("front.json", layup)
        layup["layups"][0]["direction"] = "negative"
        self.write("back.json", layup)
        self.job("--output", "part.ply")
        self.good = (self.folder / "part.ply").read_text()

    def job(self, *arguments, layup="front.json"):
        result = self.run_tool(layup, "--type", "virtek", *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)

    def farthest(self, name, *arguments, layup="front.json", code=0):
        return json.loads(self.check(name, "--json", "--layup", layup, *arguments, code=code).stdout)["files"][0]["farthest"]

    def test_a_good_file_lies_on_the_tool(self):
        self.assertRegex(self.check("part.ply", "--layup", "front.json").stdout,
                         r"\n  farthest from the tool: 0\.000 mm \(line \d+, ply P\w+\)\n")
        self.assertLess(self.farthest("part.ply")["distance"], 1e-6)

    def test_axis_system_and_unit_are_those_of_the_file(self):
        self.job("--output", "axis.ply", "--units", "in", "--axis-system", "Rosette")
        self.assertLess(self.farthest("axis.ply", "--units", "in", "--axis-system", "Rosette")["distance"], 1e-4)
        # Taken for the model's axes, it lies in the plane of the table and beside it.
        self.assertGreater(self.farthest("axis.ply", "--units", "in", "--max-distance", "1e9", code=1)["distance"], 100)

    def test_a_point_that_is_farther_off_than_meant_is_told(self):
        corner = "400.000000 300.000000 "
        self.write("part.ply", self.good.replace(corner + "0.000000", corner + "-50.250000", 1))
        line = 1 + self.good[:self.good.index(corner)].count("\n")
        text = f"part.ply:{line}: warning: ply P1: a point is 50.250 mm off the boundary in the model\n"
        self.assertEqual(self.check("part.ply", "--quiet", "--layup", "front.json", code=1).stdout, text)
        self.assertEqual(self.farthest("part.ply", code=1), {"distance": 50.25, "line": line, "ply": "P1"})
        self.check("part.ply", "--quiet", "--layup", "front.json", "--max-distance", "50.5")
        self.check("part.ply", "--quiet", "--layup", "front.json", "--max-distance", "50.2", code=1)

    def test_a_point_that_bounds_no_ply_may_leave_the_tool(self):
        self.write("part.ply", self.good.replace("END P1\n", "P 2\n0 0 0\n0 0 900\nEND P1\n"))
        self.check("part.ply", "--quiet", "--layup", "front.json")

    def test_a_ply_that_the_model_does_not_have_is_held_against_the_tool(self):
        self.write("part.ply", self.good.replace("P2\n", "Q\n").replace("\n350.000000 50.000000 0.", "\n350.000000 50.000000 9."))
        result = self.check("part.ply", "--quiet", "--layup", "front.json", code=1)
        self.assertIn(": warning: ply Q: a point is 9.000 mm off the tool\n", result.stdout)
        self.assertNotIn("off the tool", self.check("part.ply", "--layup", "front.json", "--max-distance", "9.1", code=1).stdout)

    def test_normals_go_to_the_side_that_is_laid_on(self):
        plies = ["P1", "P2", "P3a", "P3b"]
        result = self.check("part.ply", "--quiet", "--layup", "back.json", code=1)
        wrong = "the normals go to the side of the tool that isn't laid on"
        self.assertEqual([line.split(": ", 2)[2] for line in result.stdout.splitlines()],
                         [f"ply {ply}: {wrong}" for ply in plies])
        self.job("--output", "back.ply", layup="back.json")
        self.check("back.ply", "--quiet", "--layup", "back.json")

    def test_a_normal_that_goes_to_the_other_side_is_told(self):
        self.write("part.ply", self.good.replace("0.000000 0.000000 1.000000\n", "0.000000 0.000000 -1.000000\n", 1))
        result = self.check("part.ply", "--quiet", "--layup", "front.json", code=1)
        self.assertIn(": warning: ply P1: of the normals 4 go to the side that is laid on and 1 to the other\n",
                      result.stdout)

    def test_a_layup_file_that_cannot_be_used_is_told(self):
        self.write("broken.json", "{")
        for arguments, text in ((["--layup", "gone.json"], "gone.json"), (["--layup", "broken.json"], "broken.json"),
                                (["--layup", "front.json", "--axis-system", "Rosete"],
                                 'the model has no rosette "Rosete", did you mean "Rosette"?')):
            with self.subTest(arguments=arguments):
                result = self.check("part.ply", *arguments, code=2)
                self.assertRegex(result.stderr, r"\Aerror: .+\n\Z")
                self.assertIn(text, result.stderr)
                self.assertEqual(result.stdout, "")


class Model(CheckTest):
    """Files held against the plies of the model, without the options of the job that wrote them."""

    UP, DOWN = "   0.000000 0.000000 1.000000\n", "   0.000000 0.000000 -1.000000\n"

    def setUp(self):
        super().setUp()
        self.job()
        self.good = (self.folder / "panel.ply").read_text()

    def job(self, *options, kind="virtek", name="panel.ply", layup=PANEL):
        result = self.run_tool(layup, "--type", kind, "--output", name, *options)
        self.assertEqual(result.returncode, 0, result.stderr)

    def ply(self, name):
        begin, end = f"START {name}\n", f"END {name}\n"
        return self.good[self.good.index(begin):self.good.index(end) + len(end)]

    def expect_findings(self, damaged, *expected, options=()):
        """Told for a file that a job with the usual options wrote, and for one whose options nobody knows."""
        self.assertNotEqual(damaged, self.good)
        self.write("panel.ply", damaged)
        for more in ([], ["--no-include-normal-vectors"]):
            result = self.check("--quiet", "panel.ply", "--layup", PANEL, *options, *more, code=1)
            self.assertEqual(result.stdout.splitlines(), [f"panel.ply:{line}" for line in expected])

    def test_what_was_compared_is_told(self):
        told = "\n  compared with the model: "
        self.assertIn(told + "all of it, point by point\n", self.check("panel.ply", "--layup", PANEL).stdout)
        result = self.check("panel.ply", "--layup", PANEL, "--no-include-normal-vectors")
        self.assertIn(told + "plies, boundaries, targets; the job had other options (line 5: ", result.stdout)
        files = json.loads(self.check("panel.ply", "--layup", PANEL, "--json").stdout)["files"]
        self.assertEqual([file["compared"] for file in files], ["everything", "everything"])
        self.assertNotIn("difference", files[0])
        part, _ = json.loads(self.check("panel.ply", "--layup", PANEL, "--no-include-normal-vectors", "--json").stdout)["files"]
        self.assertEqual((part["compared"], part["difference"]["line"]), ("boundaries", 5))
        self.assertNotIn(told, self.check("panel.ply").stdout)

    def test_plies_that_were_swapped(self):
        self.expect_findings(self.good.replace(self.ply("P1") + self.ply("P2"), self.ply("P2") + self.ply("P1")),
                             "22: warning: ply P1: the ply is number 2 in the file, and number 1 in the model")

    def test_plies_of_which_only_the_names_were_swapped(self):
        swapped = self.good.replace("P1\n", "P0\n").replace("P2\n", "P1\n").replace("P0\n", "P2\n")
        self.expect_findings(swapped, "4: warning: ply P2: the boundary is that of the ply P1 in the model",
                             "17: warning: ply P1: the ply is number 2 in the file, and number 1 in the model",
                             "18: warning: ply P1: the boundary is that of the ply P2 in the model")

    def test_a_ply_that_is_left_out(self):
        self.expect_findings(self.good.replace(self.ply("P2"), ""),
                             "16: warning: ply P2: the ply is missing here, it is number 2 in the model")
        self.expect_findings(self.good.replace(self.ply("P1"), ""),
                             "3: warning: ply P1: the ply is missing here, it is number 1 in the model")

    def test_plies_that_were_not_asked_for_may_be_missing(self):
        self.write("panel.ply", self.good.replace(self.ply("P2"), ""))
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--plies", "P1,P3,P4")
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--plies", "P1,P3", code=1)
        self.job("--layups", "Back")
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--layups", "Back")
        self.check("--quiet", "panel.ply", "--layup", PANEL, code=1)
        self.job("--configuration", "Whole plies")
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--configuration", "Whole plies")
        self.check("--quiet", "panel.ply", "--layup", PANEL, code=1)

    def test_a_ply_that_stands_there_twice_or_in_another_layer(self):
        self.expect_findings(self.good.replace(self.ply("P4"), "").replace(self.ply("P1"), self.ply("P1") + self.ply("P4")),
                             "17: warning: ply P4: the ply stands in Front/S1, and in the model in Back/S3")
        self.expect_findings(self.good.replace(self.ply("P1"), self.ply("P1") + self.ply("P4")),
                             "17: warning: ply P4: the model has no such ply to output here")

    def test_a_point_that_was_moved_within_the_tool(self):
        self.expect_findings(self.good.replace("350.000000 250.000000", "352.500000 250.000000", 1),
                             "20: warning: ply P2: a point is 2.500 mm off the boundary in the model")
        # Along the line that it ends, so that only the corner misses it.
        self.expect_findings(self.good.replace("350.000000 250.000000", "350.000000 249.000000", 1),
                             "18: warning: ply P2: a point of the boundary in the model is left out, by 1.000 mm")

    def test_a_boundary_that_was_moved_within_the_tool(self):
        ply = self.ply("P2").replace("\n350.", "\n340.").replace("\n50.", "\n40.")
        self.expect_findings(self.good.replace(self.ply("P2"), ply),
                             "21: warning: ply P2: 2 of 5 points are off the boundary in the model, this one by 10.000 mm")

    def test_a_boundary_that_is_not_there(self):
        lines = self.ply("P2").splitlines(keepends=True)
        self.assertEqual(lines[1], "P 5\n")
        self.expect_findings(self.good.replace(self.ply("P2"), "".join(lines[:1] + lines[7:])),
                             "17: warning: ply P2: no curve of the ply is closed",
                             "17: warning: ply P2: a boundary of the ply is missing")

    def test_a_ply_whose_normals_go_to_the_other_side_of_its_layup(self):
        # The panel is laid from both sides.
        self.expect_findings(self.good.replace(self.ply("P4"), self.ply("P4").replace(self.DOWN, self.UP)),
                             "71: warning: ply P4: the normals go to the side of the tool that isn't laid on")
        self.expect_findings(self.good.replace(self.ply("P1"), self.ply("P1").replace(self.UP, self.DOWN)),
                             "4: warning: ply P1: the normals go to the side of the tool that isn't laid on")

    def test_another_model(self):
        layup = json.loads(PANEL.read_text())
        for node in layup["layups"]:
            for sequence in node["children"]:
                for ply in sequence.get("children", []):
                    ply["name"] = "Other " + ply.get("name", "")
        layup["layups"][1]["children"][1]["children"][0].pop("children")
        self.write("other.json", layup)
        self.assertEqual(self.check("--quiet", "panel.ply", "--layup", "other.json", code=1).stdout,
                         "panel.ply: warning: none of the plies is one that the model has to output\n")

    def test_a_target_that_was_moved(self):
        targets = (self.folder / "panel.cal").read_text()
        self.write("panel.cal", targets.replace(" -50.000000", " -49.000000"))
        for files in (["panel.ply"], ["panel.cal"]):
            self.assertRegex(self.check("--quiet", *files, "--layup", PANEL, code=1).stdout,
                             r"\Apanel\.cal:2: warning: X of a target: expected -50\.0+, found -49\.0+\n\Z")
        self.job("--projectors", "Right")
        self.check("--quiet", "panel.ply", "--layup", PANEL, code=1)
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--projectors", "Right")

    def test_points_and_guides_that_the_options_decide_on_are_no_finding(self):
        blade = ["--use-max-length", "--max-length=500", "--minimize-points-tolerance=0.2", "--plies=P029"]
        for layup, options, told in ((PANEL, ["--no-output-rosette", "--rosette-before-ply-geometry"], []),
                                     (PANEL, ["--no-output-extra-geometry", "--no-include-normal-vectors"], []),
                                     (PANEL, ["--no-nest-sequences-within-layup", "--max-length=90", "--use-max-length"], []),
                                     (PANEL, ["--units=in", "--axis-system=Rosette"], ["--units=in", "--axis-system=Rosette"]),
                                     (BLADE, blade, ["--plies=P029"]),
                                     (BLADE, ["--output-type=flat", "--use-max-length", "--max-length=500"],
                                      ["--output-type=flat"])):
            for kind, name in (("virtek", "p.ply"), ("lap", "p.lpd"), ("dxf", "p.DXF")):
                with self.subTest(kind=kind, options=options):
                    self.job(*options, kind=kind, name=name, layup=layup)
                    result = self.check(name, "--layup", layup, *told)
                    if options != told:
                        self.assertIn("; the job had other options (line ", result.stdout)

    def test_a_file_in_inches_is_told_where_it_is_held_against_millimetres(self):
        self.job("--units=in")
        told = "panel.ply: warning: the part has the size of the model in inches: --units in compares it so"
        result = self.check("--quiet", "panel.ply", "--layup", PANEL, code=1)
        self.assertIn(told, result.stdout.splitlines())
        self.assertNotIn("boundary", result.stdout)
        self.check("--quiet", "panel.ply", "--layup", PANEL, "--units=in")

    def test_a_settings_file_tells_the_options(self):
        options = {"outputRosette": False, "minimizePointsTolerance": 0.3}
        self.write("settings.json", {**options, "outputs": [
            {"type": "virtek", "output": "%PART%.ply", "units": "in"}, {"type": "lap", "output": "lap.lpd"},
            {"type": "virtek", "output": "back.ply", "layups": ["Back"]}]})
        self.assertEqual(self.run_tool(PANEL, "--settings", "settings.json").returncode, 0)
        files = ["Panel.ply", "lap.lpd", "back.ply"]
        told = self.check("--json", *files, "--layup", PANEL, "--settings", "settings.json").stdout
        self.assertEqual({file["compared"] for file in json.loads(told)["files"]}, {"everything"})
        # What lies within the tolerance is a finding, too.
        good = (self.folder / "back.ply").read_text()
        self.write("back.ply", good.replace("\n300.000000 200.000000 ", "\n300.000002 200.000000 ", 1))
        self.check("--quiet", "back.ply", "--layup", PANEL, "--layups", "Back")
        self.assertRegex(self.check("--quiet", "back.ply", "--layup", PANEL, "--settings", "settings.json", code=1).stdout,
                         r"\Aback\.ply:\d+: warning: ply P4: X of point \d+: expected 300\.0+, found 300\.0000020\n\Z")
        self.job(kind="sl", name="panel.sl")
        self.assertEqual(self.check("panel.sl", "--layup", PANEL, "--settings", "settings.json", code=2).stderr,
                         "error: panel.sl: no output of settings.json is of the type SL Laser\n")


class AfterWriting(CheckTest):
    """What a job says of the files that it has just written."""

    def write_job(self, *arguments, code=0):
        result = self.run_tool("panel.json", "--type", "virtek", "--output", "panel.ply", *arguments)
        self.assertEqual(result.returncode, code, result.stderr)
        return result.stderr

    def test_what_is_doubtful_in_the_model_is_told_and_written(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][1]["children"][0]["children"][0]["boundary"] = [[50, 50, 0], [55, 50, 0], [55, 55, 0]]
        self.write("panel.json", layup)
        told = "warning: panel.ply:3: ply P1: the ply is tiny: it encloses 12.5 square millimetres\n"
        self.assertIn(told, self.write_job())
        self.assertNotIn("tiny", self.write_job("--no-check"))
        self.assertIn(told, self.write_job("--check"))
        self.write("settings.json", {"check": False})
        self.assertNotIn("tiny", self.write_job("--settings", "settings.json"))

    def test_names_that_lines_cannot_hold_are_told(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][1]["children"][0]["children"][0]["name"] = "P\n1"
        self.write("panel.json", layup)
        self.assertIn('warning: the name "P\\x0a1" holds a line end, so the files can\'t be compared with the model\n',
                      self.write_job())

    def test_texts_with_line_ends_and_literals_of_any_kind_are_compared(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][0]["children"] += [
            {"kind": "parameter", "type": "information", "text": "one\nEND P1\nI 7"},
            {"kind": "parameter", "type": "literal", "text": "P 2\n0 0 0\n1 1 1"},
            {"kind": "parameter", "type": "literal", "text": "EOD"}]
        self.write("panel.json", layup)
        warnings = re.findall("warning: (.*)", self.write_job())
        self.assertEqual(len(warnings), 5)
        for warning in warnings:
            self.assertRegex(warning, r": ply P\w+: a parameter's text has a line end in it: ")


    def test_texts_with_cr_are_compared_as_they_are(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][0]["children"] += [{"kind": "parameter", "type": kind, "text": text} for kind, text in (
            ("information", "one\r\ntwo"), ("message", "end\r"), ("note", "a\r\nb\r"), ("literal", "#c\r\n#d\r"))]
        self.write("panel.json", layup)
        for kind in ("virtek", "lap", "assembly-guidance", "lpt", "sl", "general-scanning"):
            with self.subTest(kind=kind):
                result = self.run_tool("panel.json", "--type", kind, "--output", kind)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertIn(b"#c\r\n#d\r\n", (self.folder / kind).read_bytes())
                # What is in the texts is told as theirs alone.
                self.assertNotIn("lines that end", result.stderr)


class Findings(CheckTest):
    """A part file as the tool writes it, damaged in each way that the eye passes over."""

    def setUp(self):
        super().setUp()
        self.assertEqual(self.run_tool(PANEL, "--type", "virtek", "--output", "panel.ply").returncode, 0)
        self.good = (self.folder / "panel.ply").read_text()
        self.check("--quiet", "panel.ply")

    def ply(self, name):
        begin, end = f"START {name}\n", f"END {name}\n"
        return self.good[self.good.index(begin):self.good.index(end) + len(end)]

    def expect_findings(self, damaged, *expected):
        self.assertNotEqual(damaged, self.good)
        self.write("panel.ply", damaged)
        result = self.check("--quiet", "panel.ply", code=1)
        self.assertEqual(result.stdout.splitlines(), [f"panel.ply:{line}" for line in expected])

    def test_a_boundary_that_is_open(self):
        self.expect_findings(self.good.replace("400.000000 0.000000", "400.000000 2.000000", 1),
                             "3: warning: ply P1: no curve of the ply is closed")
        self.expect_findings(self.good.replace("400.000000 0.000000", "400.000000 0.250000", 1),
                             "3: warning: ply P1: no curve of the ply is closed",
                             "4: warning: ply P1: a curve is nearly closed: 0.250 mm are missing")

    def test_a_ply_without_area_or_nearly_so(self):
        self.expect_findings(self.good.replace(self.ply("P1"), self.ply("P1").replace(" 300.000000 ", " 0.000000 ")),
                             "4: warning: ply P1: a closed curve of 5 points encloses no area",
                             "6: warning: ply P1: a point stands twice in a row, 2 times in the curve of line 4")
        self.expect_findings(self.good.replace(self.ply("P1"), self.ply("P1").replace(" 300.000000 ", " 0.200000 ")),
                             "3: warning: ply P1: the ply is tiny: it encloses 80.0 square millimetres")

    def test_a_point_that_repeats(self):
        self.expect_findings(self.good.replace("400.000000 300.000000", "400.000000 0.000000", 1),
                             "6: warning: ply P1: a point stands twice in a row, 1 times in the curve of line 4")

    def test_names_that_repeat_are_empty_or_beyond_ascii(self):
        self.expect_findings(self.good.replace("P3b\n", "P3a\n"),
                             "52: warning: ply P3a: has the same name as the ply in line 38")
        self.expect_findings(self.good.replace("LAYER START S3", "LAYER START ").replace("LAYER END S3", "LAYER END "),
                             "69: warning: a layer has no name")
        self.expect_findings(self.good.replace("P2\n", "\n"), "17: warning: a ply has no name")
        self.expect_findings(self.good.replace("P3b\n", "P3\u00df\n"),
                             "52: warning: ply P3\u00df: the ply's name has characters beyond ASCII, which projectors may "
                             'show as others: "P3\u00df"')

    def test_the_name_of_the_part_counts_where_the_file_has_it(self):
        for kind, name in (("lpt", "p.XML"), ("lap", "p.lpd"), ("quilmon", "p.CPD")):
            with self.subTest(kind=kind):
                call = [PANEL, "--type", kind, "--output", name, "--part-name", "Fl\u00fcgel"]
                self.assertEqual(self.run_tool(*call).returncode, 0)
                self.assertEqual(self.check("--quiet", name, code=1).stdout,
                                 f"{name}: warning: the part's name has characters beyond ASCII, which projectors may "
                                 'show as others: "Fl\u00fcgel"\n')

    def test_normals_that_are_missing_or_on_the_other_side(self):
        up, down = "   0.000000 0.000000 1.000000", "   0.000000 0.000000 -1.000000"
        self.expect_findings(self.good.replace(up, "", 1), "4: warning: ply P1: 4 of 5 points of a curve have a normal")
        self.expect_findings(self.good.replace(self.ply("P1"), self.ply("P1").replace(up, "")),
                             "3: warning: ply P1: the ply has no normals, though others have")
        self.expect_findings(self.good.replace(up, down, 1),
                             "6: warning: ply P1: the normal points to the other side than that of the point before")
        self.expect_findings(self.good.replace(self.ply("P3b"), self.ply("P3b").replace(up, down)),
                             "52: warning: ply P3b: the normals go to the other side than those of other plies at the "
                             "same places")

    def test_a_file_that_ends_too_early(self):
        self.expect_findings(self.good.replace("EOD\n", ""), '89: error: the file ends too early: expected "EOD"')


class Documents(CheckTest):
    def test_the_output_in_the_document_is_what_is_told(self):
        text = (SOURCE / "docs" / "check.md").read_text()
        blocks = [block for kind, block in re.findall(r"^```(.*)\n([^`]*)^```$", text, re.M) if not kind]
        self.assertEqual(len(blocks), 3)
        self.assertEqual(self.run_tool(PANEL, "--type", "virtek", "--output", "panel.ply").returncode, 0)
        self.assertEqual(self.check("panel.ply").stdout, blocks[0])
        good = (self.folder / "panel.ply").read_text()
        for damaged, block in ((good.replace("P3b\n", "P3a\n"), blocks[1]), (good.replace("P1\n", "P\n1\n"), blocks[2])):
            self.write("panel.ply", damaged)
            self.assertEqual(self.check("--quiet", "panel.ply", code=1).stdout, block)

    def test_every_key_of_the_json_is_told(self):
        text = (SOURCE / "docs" / "check.md").read_text(encoding="utf-8")
        keys = {key for rule in (SCHEMA, *SCHEMA["$defs"].values()) for key in rule.get("properties", {})}
        keys |= set(SCHEMA["$defs"]["read"]["properties"]["farthest"]["properties"])
        self.assertGreater(len(keys), 35)
        self.assertEqual([key for key in sorted(keys) if f"`{key}`" not in text], [])


if __name__ == "__main__":
    main()
