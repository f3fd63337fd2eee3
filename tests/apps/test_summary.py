#!/usr/bin/env python3
"""Tests of what the built zetlaser-job says of targets and writes as a summary: test_summary.py PROGRAM SOURCE_DIR [unittest arguments]

Each test runs in a folder of its own below the current one."""

import hashlib
import json
import math
import os
import re
import subprocess
import sys

import json_schema
from tool_test import BLADE, EXTENSIONS, PANEL, PROGRAM, SOURCE, ToolTest, main

SCHEMA = json.loads((SOURCE / "schema" / "summary.schema.json").read_text(encoding="utf-8"))
FOUR = {"A": [0, 0, 0], "B": [1000, 0, 0], "C": [1000, 600, 0], "D": [0, 600, 0]}


class SummaryTest(ToolTest):
    def write_layup(self, targets, projectors, name="a.layup.json", boundary=None):
        """A table with one ply, targets by name and place, and projectors by name and their targets."""
        layup = {
            "format": "zetlaser-layup", "version": 1, "units": "mm", "name": "Table",
            "surfaces": [{"name": "Table", "plane": {"x": [1, 0, 0], "y": [0, 1, 0], "width": 400, "height": 300}}],
            "rosettes": [{"name": "Rosette", "origin": [200, 150, 0], "x": [1, 0, 0], "y": [0, 1, 0]}],
            "materials": [{"name": "Glass", "type": "Fabric", "id": "G-300", "thickness": 0.3}],
            "targets": [{"name": key, "at": place} for key, place in targets.items()],
            "projectors": [{"name": key, "targets": names} for key, names in projectors.items()],
            "layups": [{"name": "Front", "workpiece": "Table", "rosette": "Rosette", "children": [
                {"name": "S1", "children": [
                    {"name": "P1", "direction": 45, "material": "Glass",
                     "boundary": [[0, 0, 0], [400, 0, 0], [400, 300, 0], [0, 300, 0]]}]}]}]}
        if boundary:
            layup["layups"][0]["children"][0]["children"][0]["boundary"] = boundary
        return self.write(name, layup)


class Targets(SummaryTest):
    def look(self, targets, projectors, *more, kind="virtek"):
        """The warnings of targets, and the lines on projectors in the result. That a projector is empty is also told where
        the layup file is read, with its line there."""
        layup = self.write_layup(targets, projectors)
        result = self.run_tool(layup, "--type", kind, "--output", f"a.{EXTENSIONS[kind]}", *more)
        self.assertEqual(result.returncode, 0, result.stderr)
        return ([line for line in result.stderr.splitlines()
                 if line.startswith("warning: ") and not line.endswith(": There is no target in the projector.")],
                [line for line in result.stdout.splitlines() if line.startswith("projector ")])

    def test_four_targets_around_the_part_are_fine(self):
        # All lie in one plane, which is as it should be. The diagonal is the longest line; B and D lie off it by the
        # double area of the triangle over its length.
        diagonal = math.hypot(1000, 600)
        self.assertEqual(self.look(FOUR, {"Left": list("ABCD")}),
                         ([], [f"projector Left: 4 targets, spread {diagonal:.1f} mm x {600000 / diagonal:.1f} mm"]))

    def test_fewer_than_four_targets_are_warned_of(self):
        for names, words in (("ABC", "3 targets"), ("AB", "2 targets"), ("A", "1 target"), ("", "no targets")):
            with self.subTest(names=names):
                warnings, lines = self.look(FOUR, {"Left": list(names)})
                self.assertEqual(warnings, [f'warning: the projector "Left" has {words}, expected at least 4: three give '
                                            "a position, a fourth tells whether it is right"])
                self.assertRegex(lines[0], rf"\Aprojector Left: {words}(, spread .*)?\Z")

    def test_targets_at_one_place_count_once(self):
        targets = {**FOUR, "E": [1000.6, 600.6, 0.5]}  # 0.98 mm from C, that is one place
        self.assertLess(math.dist(targets["C"], targets["E"]), 1)
        warnings, lines = self.look(targets, {"Left": list("ABCE")})
        self.assertEqual(len(warnings), 1)
        self.assertIn('"Left" has 3 targets', warnings[0])
        targets["E"] = [1000.6, 600.6, 0.6]  # 1.04 mm
        self.assertGreater(math.dist(targets["C"], targets["E"]), 1)
        self.assertEqual(self.look(targets, {"Left": list("ABCE")})[0], [])

    def test_targets_on_a_line_are_warned_of_with_their_distance_from_it(self):
        def targets(off):  # on a slanted line of 1500 mm, two of them off it by 0.6 off and off
            along, across = (2 / 3, 2 / 3, 1 / 3), (1 / 3, -2 / 3, 2 / 3)
            return {name: [a * s + b * t for a, b in zip(along, across)]
                    for name, s, t in (("A", 0, 0), ("B", 500, 0.6 * off), ("C", 900, off), ("D", 1500, 0))}
        warnings, _ = self.look(targets(74.0), {"Left": list("ABCD")})
        self.assertEqual(warnings, ['warning: the projector "Left" has its targets on one line: none is farther than 74.0 '
                                    'mm off the line from "A" to "D", which is 1500.0 mm long'])
        self.assertEqual(len(self.look(targets(0.0), {"Left": list("ABCD")})[0]), 1)
        warnings, lines = self.look(targets(76.0), {"Left": list("ABCD")})  # a twentieth is 75 mm
        self.assertEqual((warnings, lines), ([], ["projector Left: 4 targets, spread 1500.0 mm x 76.0 mm"]))

    def test_three_targets_on_a_line_get_both_warnings_and_two_only_one(self):
        line = {"A": [0, 0, 0], "B": [1000, 0, 0], "C": [2000, 1, 0]}
        self.assertEqual(len(self.look(line, {"Left": list("ABC")})[0]), 2)
        self.assertEqual(len(self.look(line, {"Left": list("AB")})[0]), 1)

    def field(self, name, x, y):
        """Four targets of their own around x, y."""
        return {f"{name}{number}": [x + dx, y + dy, 0]
                for number, (dx, dy) in enumerate(((-400, -300), (400, -300), (400, 300), (-400, 300)))}

    def neighbours(self, fields, shared=()):
        """The pairs that are warned of, for fields by name and place; a pair in shared has a target between them."""
        targets, projectors = {}, {}
        for name, (x, y) in fields.items():
            own = self.field(name, x, y)
            targets.update(own)
            projectors[name] = list(own)
        for one, other in shared:
            between = [(a + b) / 2 for a, b in zip(fields[one], fields[other])]
            targets[one + other] = [*between, 10]
            projectors[one].append(one + other)
            projectors[other].append(one + other)
        warnings, _ = self.look(targets, projectors)
        for warning in warnings:
            self.assertRegex(warning, r'\Awarning: the projectors "\w" and "\w" are neighbours and share no target: what '
                                      r"they draw may not meet\Z")
        return [warning.split('"')[1] + warning.split('"')[3] for warning in warnings]

    def test_two_projectors_are_neighbours(self):
        fields = {"P": (0, 0), "Q": (5000, 0)}
        self.assertEqual(self.neighbours(fields), ["PQ"])
        self.assertEqual(self.neighbours(fields, ["PQ"]), [])

    def test_in_a_row_those_side_by_side_are_neighbours(self):
        fields = {"P": (0, 0), "R": (4000, 0), "Q": (2000, 300)}
        self.assertEqual(self.neighbours(fields), ["PQ", "RQ"])
        self.assertEqual(self.neighbours(fields, ["PQ"]), ["RQ"])
        self.assertEqual(self.neighbours(fields, ["PQ", "RQ"]), [])

    def test_in_a_grid_the_seams_are_between_neighbours_and_diagonals_are_not(self):
        fields = {"P": (0, 0), "Q": (2000, 0), "R": (0, 1800), "S": (2000, 1800)}
        self.assertEqual(self.neighbours(fields), ["PQ", "PR", "QS", "RS"])
        self.assertEqual(self.neighbours(fields, ["PQ", "QS", "PR"]), ["RS"])  # all hang together, and yet a seam is free

    def test_targets_of_two_names_at_one_place_are_shared(self):
        targets = {**self.field("P", 0, 0), **self.field("Q", 2000, 0), "Pm": [1000, 0, 0], "Qm": [1000, 0, 0.5]}
        projectors = {name: [target for target in targets if target.startswith(name)] for name in "PQ"}
        warnings, lines = self.look(targets, projectors)
        self.assertEqual(warnings, [])
        self.assertTrue(lines[0].endswith(", 1 shared with Q") and lines[1].endswith(", 1 shared with P"), lines)

    def test_a_projector_without_targets_is_nobodys_neighbour(self):
        warnings, lines = self.look(FOUR, {"Left": list("ABCD"), "Right": []})
        self.assertEqual(len(warnings), 1)
        self.assertIn('"Right" has no targets', warnings[0])
        self.assertEqual(lines[1], "projector Right: no targets")

    def test_chosen_projectors_alone_are_looked_at(self):
        targets = {**FOUR, **self.field("E", 5000, 0)}
        projectors = {"Left": list("ABCD"), "Right": ["E0", "E1", "E2"]}
        self.assertEqual(len(self.look(targets, projectors)[0]), 2)
        warnings, lines = self.look(targets, projectors, "--projectors", "Left")
        self.assertEqual((warnings, len(lines)), ([], 1))

    def test_without_projectors_all_targets_are_those_of_one(self):
        self.assertEqual(self.look({**FOUR, "E": [0, 300, 0]}, {})[1],
                         [f"projector (all targets): 5 targets, spread {math.hypot(1000, 600):.1f} mm x "
                          f"{600000 / math.hypot(1000, 600):.1f} mm"])
        warnings, lines = self.look({}, {})
        self.assertEqual(warnings, ["warning: the model, which has no projectors, has no targets, expected at least 4: "
                                    "three give a position, a fourth tells whether it is right"])
        self.assertEqual(lines, ["projector (all targets): no targets"])

    def test_types_without_targets_say_nothing_of_them(self):
        for kind in ("dxf", "quilmon", "apt", "apt-2", "apt-sl"):
            with self.subTest(kind=kind):
                self.assertEqual(self.look(FOUR, {"Left": ["A"]}, kind=kind), ([], []))
        for kind in ("lpt", "faro", "lap", "sl", "assembly-guidance", "aligned-vision", "general-scanning"):
            with self.subTest(kind=kind):
                warnings, lines = self.look(FOUR, {"Left": ["A"]}, kind=kind)
                self.assertEqual((len(warnings), len(lines)), (1, 1))

    def test_the_files_say_nothing_of_it(self):
        def written(names):
            self.look(FOUR, {"Left": names})
            return [(self.folder / name).read_text() for name in ("a.ply", "a.ply-report.htm")]
        few, enough = written(["A"]), written(list("ABCD"))
        self.assertEqual(few[0], enough[0])
        self.assertEqual(few[1].replace("Writing 1 targets", "Writing 4 targets"), enough[1])

    def test_the_examples_come_without_warnings(self):
        for layup in (PANEL, BLADE):
            with self.subTest(layup=layup.name):
                result = self.run_tool(layup, "--type", "lap", "--output", "a.lpd")
                self.assertNotIn("warning: ", result.stderr)
                self.assertEqual(result.stdout.count("\nprojector "), 2)


class Job(SummaryTest):
    def summarize(self, layup, *more, name="s.json", output="a.ply", kind="virtek"):
        result = self.run_tool(layup, "--type", kind, "--output", output, "--summary", name, *more)
        self.assertEqual(result.returncode, 0, result.stderr)
        return self.read(name)

    def read(self, name):
        summary = json.loads((self.folder / name).read_text(encoding="utf-8"))
        json_schema.check(summary, SCHEMA, name)
        return summary

    def table(self, boundary=None):
        return self.write_layup(FOUR, {"Left": list("ABCD")}, boundary=boundary)


class Content(Job):
    def test_the_schema_refuses_what_is_no_summary(self):
        summary = self.summarize(PANEL)
        for change in (lambda s: s.pop("tool"), lambda s: s["inputs"][0].update(file="/tmp/a"), lambda s: s.update(date="today"),
                       lambda s: s["files"][0].update(sha256="12"), lambda s: s["plies"][0].update(length=-1),
                       lambda s: s["plies"][0].pop("worstDeviation"), lambda s: s["projectors"][0]["targets"][0].update(at=[1]),
                       lambda s: s["messages"][0].update(severity="error")):
            broken = json.loads(json.dumps(summary))
            change(broken)
            with self.assertRaises(AssertionError):
                json_schema.check(broken, SCHEMA, "broken")

    def sums(self, *names):
        contents = [(self.folder / name).read_bytes() for name in names]
        return [(name, len(content), hashlib.sha256(content).hexdigest()) for name, content in zip(names, contents)]

    def test_what_was_read_and_written_is_told_with_its_sum(self):
        self.write("in/blade.layup.json", BLADE.read_bytes())
        self.write("in/tool_ss_r30_r40.step", (BLADE.parent / "tool_ss_r30_r40.step").read_bytes())
        self.write("in/s.json", {"plies": ["P003"]})
        summary = self.summarize("in/blade.layup.json", "--settings", "in/s.json")
        self.assertEqual([entry["kind"] for entry in summary["inputs"]], ["settings", "layup", "shape"])
        self.assertEqual([(entry["file"], entry["size"], entry["sha256"]) for entry in summary["inputs"]],
                         self.sums("in/s.json", "in/blade.layup.json", "in/tool_ss_r30_r40.step"))
        self.assertEqual([(entry["file"], entry["size"], entry["sha256"]) for entry in summary["files"]],
                         self.sums("a.cal", "a.ply", "a.ply-report.htm"))
        version = self.run_tool("--version").stdout.strip()
        self.assertEqual(summary["tool"], version)

    def test_files_are_named_as_seen_from_the_summary(self):
        for folder in ("parts", "tools", "notes/today"):
            (self.folder / folder).mkdir(parents=True)
        self.write("model.json", PANEL.read_bytes())
        summary = self.summarize("model.json", "--use-specific-path-for-laser-file", "--target-file-path", "tools", kind="lpt",
                                 output="parts/a.XML", name="notes/today/s.json")
        self.assertEqual([entry["file"] for entry in summary["inputs"] + summary["files"]],
                         ["../../model.json", "../../parts/a.XML", "../../parts/a.XML-report.htm", "../../tools/Tool-a.XML"])
        self.assertEqual({key: summary["options"][key] for key in ("output", "summary", "targetFilePath", "laserFilePath")},
                         {"output": "../../parts/a.XML", "summary": "s.json", "targetFilePath": "../../tools",
                          "laserFilePath": None})

    def test_a_pipe_can_be_read_but_once_and_has_no_sum(self):
        reader, writer = os.pipe()
        os.write(writer, b'{"units": "in"}')
        os.close(writer)
        result = subprocess.run([PROGRAM, PANEL, "--type", "virtek", "--output", "a.ply", "--summary", "s.json", "--settings",
                                 f"/dev/fd/{reader}"], cwd=self.folder, pass_fds=[reader], capture_output=True, check=False)
        os.close(reader)
        self.assertEqual(result.returncode, 0, result.stderr)
        summary = self.read("s.json")
        self.assertEqual((summary["inputs"][0]["kind"], summary["inputs"][0]["sha256"]), ("settings", None))
        self.assertEqual(summary["options"]["units"], "in")

    def test_every_option_is_told_with_what_was_in_force(self):
        keys = set(json.loads((SOURCE / "schema" / "settings.schema.json").read_text(encoding="utf-8"))["properties"])
        options = self.summarize(PANEL)["options"]
        self.assertEqual(set(options), keys - {"$schema", "outputs"})
        # Defaults of the library, of the configuration and of the model.
        for key, value in (("type", "virtek"), ("units", "mm"), ("minimizePointsTolerance", 0.01), ("maxLength", 1000000),
                           ("useMaxLength", False), ("offsetMode", "none"), ("normalVectorColor", "#00ff00"),
                           ("configuration", "Laser"), ("outputRosette", True), ("skipParentPlyWithSubPlies", True),
                           ("axisSystem", None), ("shapeName", None), ("partName", "Panel"), ("projectors", ["Left", "Right"]),
                           ("layups", ["Front", "Back"]), ("dxfFileMode", "per-material"), ("createLaserData", True), ("check", True),
                           ("plies", ["Front/S1/P1", "Front/S1/P2", "Front/S2/P3/P3a", "Front/S2/P3/P3b", "Back/S3/P4"])):
            self.assertEqual(options[key], value, key)
        self.assertEqual(self.summarize(PANEL, "--no-check")["options"]["check"], False)

    def test_the_options_repeat_the_job(self):
        (self.folder / "tools").mkdir()
        given = ["--units", "in", "--part-name", "Flap", "--configuration", "Whole plies", "--axis-system", "Rosette",
                 "--projectors", "Right", "--layups", "Front", "--plies", "P2,P3", "--no-output-extra-geometry",
                 "--no-output-rosette", "--offset-mode", "layup", "--material-thickness", "cured", "--no-nest-sequences-within-layup",
                 "--minimize-points-tolerance", "0.125", "--use-max-length", "--max-length", "77.5", "--no-include-normal-vectors",
                 "--normal-vector-color", "#102030", "--text-layer", "7", "--shape-name", "%PLY%",
                 "--use-specific-path-for-laser-file", "--target-file-path", "tools"]
        options = self.summarize(PANEL, *given, kind="sl", output="a.sl")["options"]
        self.assertEqual((options["plies"], options["layups"], options["projectors"], options["maxLength"], options["textLayer"]),
                         (["Front/S1/P2", "Front/S2/P3"], ["Front"], ["Right"], 77.5, 7))
        first = self.contents()
        first.update(self.contents("tools"))
        for name in first:
            (self.folder / name).unlink(missing_ok=True)
        self.write("again.json", {key: value for key, value in options.items() if value is not None})
        self.expect(self.run_tool(PANEL, "--settings", "again.json"), 0)
        second = {**self.contents(), **self.contents("tools")}
        for name in ("a.sl", "a.cp1", "a.sl-report.htm"):
            self.assertEqual(second[name], first[name], name)
        self.assertEqual(self.read("s.json")["options"], options)

    def test_messages_are_those_that_were_told(self):
        layup = json.loads(PANEL.read_text(encoding="utf-8").replace('"type": "information"', '"type": "note"'))
        layup["projectors"] = [{"name": "Left", "targets": ["T2"]}, {"name": "None", "targets": []}]
        path = self.write("a.json", layup)
        result = self.run_tool(path, "--type", "virtek", "--output", "a.ply", "--summary", "s.json")
        messages = self.read("s.json")["messages"]
        # Each is on standard error as well, once and where it came often with its count; the layup file was given with a
        # path of this machine, and is told as seen from the summary.
        told = []
        for message in messages:
            text = message["text"].replace("a.json:", f"{path}:").replace("\n", "\n  ")
            told.append(f"{message['severity']}: {text}\n")
            if message["count"] > 1:
                told.append(f"{message['severity']}: {text} ({message['count']} times in all)\n")
        self.assertEqual(sorted(told), sorted(re.split(r"(?m)(?<=\n)(?=\w)", result.stderr)))
        self.assertEqual([message["severity"] for message in messages], ["warning"] * 3 + ["note", "problem"])
        self.assertTrue(messages[0]["text"].startswith("a.json:1: "), messages[0])
        self.assertEqual(messages[4], {"severity": "problem", "text": "Unsupported laser parameter type Note for Virtek", "count": 5})

    def test_projectors_have_their_targets(self):
        targets = {**FOUR, "E": [0, 0, 0.25], "F": [0, 300, 9]}
        layup = self.write_layup(targets, {"Left": list("ABCDE"), "Right": list("EFC")})
        left, right = self.summarize(layup)["projectors"]
        self.assertEqual([(target["name"], target["at"], target["drift"]) for target in left["targets"]],
                         [(name, FOUR[name], False) for name in "ABCD"])
        self.assertAlmostEqual(left["spread"], math.hypot(1000, 600), places=5)
        self.assertAlmostEqual(left["width"], 600000 / math.hypot(1000, 600), places=5)
        self.assertEqual(left["shared"], [{"projector": "Right", "targets": ["A", "C"]}])
        self.assertEqual(right["shared"], [{"projector": "Left", "targets": ["E", "C"]}])
        self.assertEqual(self.summarize(self.write_layup({}, {}))["projectors"],
                         [{"name": None, "targets": [], "spread": 0, "width": 0, "shared": []}])


class Plies(Job):
    def test_a_ply_by_hand(self):
        # The third point lies 0.008 mm off the line from the second to the fourth, and goes.
        layup = self.table([[0, 0, 0], [400, 0, 0], [399.992, 150, 0], [400, 300, 0], [0, 300, 0]])
        ply, = self.summarize(layup, "--no-output-rosette")["plies"]
        self.assertEqual(ply, {"layup": "Front", "sequence": "S1", "parent": None, "name": "P1", "direction": 45,
                               "material": {"name": "Glass", "type": "Fabric", "id": "G-300"}, "curves": 1, "pointsBefore": 5,
                               "pointsAfter": 4, "worstDeviation": 0.008, "length": 1400})
        ply, = self.summarize(layup, "--no-output-rosette", "--no-use-minimize-points-tolerance")["plies"]
        self.assertEqual((ply["pointsBefore"], ply["pointsAfter"], ply["worstDeviation"]), (5, 5, 0))
        self.assertAlmostEqual(ply["length"], 2 * math.hypot(150, 0.008) + 1100, places=5)

    def test_the_last_points_of_a_closed_curve_count_against_its_closing_line(self):
        layup = self.table([[0, 0, 0], [400, 0, 0], [400, 300, 0], [0, 300, 0], [0.005, 200, 0]])
        ply, = self.summarize(layup, "--no-output-rosette")["plies"]
        self.assertEqual((ply["pointsBefore"], ply["pointsAfter"], ply["worstDeviation"], ply["length"]), (5, 4, 0.005, 1400))

    def test_units_and_axis_do_not_matter(self):
        mm = self.summarize(PANEL)
        other = self.summarize(PANEL, "--units", "in", "--axis-system", "Rosette")
        self.assertEqual(other["plies"], mm["plies"])
        self.assertEqual(other["projectors"], mm["projectors"])

    def test_without_groups_for_sequences_they_are_named_all_the_same(self):
        summary = self.summarize(PANEL, "--no-nest-plies-within-sequence")
        self.assertEqual([(ply["layup"], ply["sequence"], ply["parent"], ply["name"]) for ply in summary["plies"]],
                         [("Front", "S1", None, "P1"), ("Front", "S1", None, "P2"), ("Front", "S2", "P3", "P3a"),
                          ("Front", "S2", "P3", "P3b"), ("Back", "S3", None, "P4")])

    def test_what_thinning_takes_beyond_its_tolerance_is_warned_of(self):
        # A spike of 100 mm that comes back to within 0.004 mm: thinning doesn't look at a line that short.
        layup = self.table([[0, 0, 0], [300, 0, 0], [300, 100, 0], [400, 100.002, 0], [300, 100.004, 0], [300, 300, 0], [0, 300, 0]])
        result = self.run_tool(layup, "--type", "virtek", "--output", "a.ply", "--summary", "s.json", "--no-output-rosette")
        self.expect(result, 0)
        self.assertNotIn("400.000000", (self.folder / "a.ply").read_text())  # the spike is gone indeed
        text = 'thinning took a point of the ply "P1" away that lies 100.000 mm off the line drawn instead; the tolerance is ' \
               "0.01 mm (plies where that happened: 1)"
        self.assertIn(f"warning: {text}\n", result.stderr)
        summary = self.read("s.json")
        self.assertIn({"severity": "warning", "text": text, "count": 1}, summary["messages"])
        self.assertAlmostEqual(summary["plies"][0]["worstDeviation"], 100.0, places=5)
        self.assertNotIn("thinning", self.run_tool(layup, "--type", "virtek", "--output", "a.ply", "--no-output-rosette",
                                                   "--no-use-minimize-points-tolerance").stderr)

    def read_plies(self, name):
        """Ply name -> polylines of points, from a Virtek file."""
        plies, lines = {}, iter((self.folder / name).read_text().splitlines())
        for line in lines:
            if line.startswith("START "):
                current = plies.setdefault(line[6:], [])
            elif line.startswith("P "):
                current.append([[float(word) for word in next(lines).split()[:3]] for _ in range(int(line[2:]))])
        return plies

    @staticmethod
    def distance_to_segment(point, start, end):
        along = [b - a for a, b in zip(start, end)]
        square = sum(c * c for c in along)
        share = sum((p - a) * c for p, a, c in zip(point, start, along)) / square if square else 0.0
        foot = [a + min(1.0, max(0.0, share)) * c for a, c in zip(start, along)]
        return math.dist(point, foot)

    def worst(self, before, after):
        """The lines of the thinned file are walked one by one; what the other file has between their ends was removed."""
        worst, at = 0.0, 0
        self.assertEqual((before[0], before[-1]), (after[0], after[-1]))
        for number, (start, end) in enumerate(zip(after, after[1:]), 2):
            stop = len(before) - 1 if number == len(after) else before.index(end, at + 1)
            worst = max([worst, *(self.distance_to_segment(point, start, end) for point in before[at + 1:stop])])
            at = stop
        return worst

    def compare_with_files(self, layup, *thinning):
        summary = self.summarize(layup, *thinning)
        self.expect(self.run_tool(layup, "--type", "virtek", "--output", "all.ply", "--no-use-minimize-points-tolerance"), 0)
        thinned, full = self.read_plies("a.ply"), self.read_plies("all.ply")
        self.assertEqual([ply["name"] for ply in summary["plies"]], list(thinned))
        removed = 0
        for ply in summary["plies"]:
            before, after = full[ply["name"]], thinned[ply["name"]]

            def count(curves):  # a closed curve has its first point again
                return sum(len(curve) - (len(curve) > 1 and curve[0] == curve[-1]) for curve in curves)

            self.assertEqual((ply["curves"], ply["pointsBefore"], ply["pointsAfter"]), (len(after), count(before), count(after)))
            self.assertEqual(len(before), len(after))
            worst = max(self.worst(*curves) for curves in zip(before, after))
            self.assertAlmostEqual(ply["worstDeviation"], worst, delta=4e-6, msg=ply["name"])  # both files have six decimals
            length = sum(math.dist(a, b) for curve in after for a, b in zip(curve, curve[1:]))
            self.assertAlmostEqual(ply["length"], length, delta=2e-6 * count(after), msg=ply["name"])
            removed += count(before) - count(after)
        return removed

    def test_plies_of_the_blade_are_as_in_its_files(self):
        self.assertGreater(self.compare_with_files(BLADE, "--minimize-points-tolerance", "0.5"), 1000)

    def test_plies_of_the_panel_are_as_in_its_files(self):
        self.assertGreater(self.compare_with_files(PANEL), 0)


class Bytes(Job):
    def test_the_same_input_gives_the_same_bytes(self):
        found = []
        for folder, language, zone in (("one", "C", "UTC"), ("two/deep", "de_DE.UTF-8", "Asia/Tokyo")):
            self.write(f"{folder}/m.json", PANEL.read_bytes())
            environment = {**os.environ, "LANG": language, "LC_ALL": language, "TZ": zone}
            result = subprocess.run([PROGRAM, self.folder / folder / "m.json", "--type", "virtek", "--output", "a.ply", "--summary",
                                     "s.json", "--minimize-points-tolerance", "0.5"], cwd=self.folder / folder, env=environment,
                                    capture_output=True, check=False)
            self.assertEqual(result.returncode, 0, result.stderr)
            found.append((self.folder / folder / "s.json").read_bytes())
        self.assertEqual(found[0], found[1])
        self.assertIn(b"0.5", found[0])
        self.assertNotIn(str(self.folder).encode(), found[0])
        self.assertNotIn(b".zetlaser-job-", found[0])

    def test_no_type_but_those_with_a_date_changes_from_run_to_run(self):
        kinds = ["lap", "sl", "assembly-guidance", "aligned-vision", "general-scanning", "apt", "apt-2", "apt-sl", "dxf", "quilmon"]
        for kind in kinds:
            with self.subTest(kind=kind):
                self.summarize(PANEL, kind=kind, output="a.out")
                first = (self.folder / "s.json").read_bytes()
                self.summarize(PANEL, kind=kind, output="a.out")
                self.assertEqual((self.folder / "s.json").read_bytes(), first)
        for kind in ("lpt", "faro"):  # the part file has its date; all else is the same
            summaries = [self.summarize(PANEL, kind=kind, output="a.XML") for _ in range(2)]
            for summary in summaries:
                part, = [entry for entry in summary["files"] if entry["file"] == "a.XML"]
                part["sha256"] = ""
            self.assertEqual(summaries[0], summaries[1])


class Places(Job):
    def fail(self, *more, code=4, text=""):
        result = self.run_tool(PANEL, "--type", "virtek", "--output", "a.ply", *more)
        self.expect(result, code, text)

    def test_without_laser_data_the_summary_is_written_all_the_same(self):
        result = self.run_tool(PANEL, "--type", "virtek", "--no-create-laser-data", "--summary", "s.json")
        self.expect(result, 0, "written: s.json (")
        self.assertEqual(self.names(), ["s.json"])
        summary = self.read("s.json")
        self.assertEqual((summary["files"], summary["options"]["createLaserData"], len(summary["plies"])), ([], False, 5))

    def test_a_place_that_cannot_be_written_is_told_and_nothing_is_written(self):
        (self.folder / "folder").mkdir()
        self.write("a.ply", "previous")
        for name, text in (("none/s.json", "there is no such folder"), ("folder", "can't write "), ("folder/", "it is a folder"),
                           ("a.ply/s.json", "it is no folder"), ("/dev/null", "it is no regular file")):
            with self.subTest(name=name):
                self.fail("--summary", name, text=text)
                self.assertEqual(self.contents(), {"a.ply": b"previous"})
        self.fail("--summary=", code=2, text="--summary: expected a text that isn't empty")

    def test_the_summary_takes_no_place_of_another_file(self):
        self.write("panel.json", PANEL.read_bytes())
        self.write("set.json", {"units": "in"})
        before = self.contents()
        for name, text in (("a.ply", "the job writes another file there"), ("./a.cal", "the job writes another file there"),
                           ("../" + self.folder.name + "/a.ply-report.htm", "the job writes another file there"),
                           ("panel.json", "the job reads that file"), ("set.json", "the job reads that file")):
            with self.subTest(name=name):
                result = self.run_tool("panel.json", "--settings", "set.json", "--type", "virtek", "--output", "a.ply",
                                       "--summary", name)
                self.expect(result, 4, text)
                self.assertEqual(self.contents(), before)

    def test_no_output_takes_the_place_of_what_the_job_reads(self):
        self.write("panel.json", PANEL.read_bytes())
        before = self.contents()
        self.expect(self.run_tool("panel.json", "--type", "dxf", "--output", "panel.json"), 4, "the job reads that file")
        self.assertEqual(self.contents(), before)

    def test_a_job_that_fails_leaves_the_earlier_summary(self):
        self.write("s.json", "previous")
        self.fail("--summary", "s.json", "--output-type", "flat", code=1, text="nothing to write")
        self.assertEqual(self.contents(), {"s.json": b"previous"})
        (self.folder / "a.cal").mkdir()
        self.fail("--summary", "s.json", text="a.cal: it is a folder")
        self.assertEqual(self.contents(), {"s.json": b"previous"})

    def test_a_summary_that_cannot_come_to_its_place_leaves_the_earlier_files(self):
        (self.folder / "notes").mkdir()
        self.write("notes/s.json", "previous")
        os.chmod(self.folder / "notes/s.json", 0o444)
        self.write("a.ply", "previous")
        if os.access(self.folder / "notes/s.json", os.W_OK):  # root may write everywhere, so a full device has to do
            script = 'mount -t tmpfs -o size=32k none notes || exit 99; echo previous >notes/s.json; "$@"; code=$?; ' \
                     "cat notes/s.json; ls -A notes; exit $code"
            call = ["bash", "-c", script, "bash", PROGRAM, PANEL, "--type", "virtek", "--output", "a.ply", "--summary", "notes/s.json"]
            result = subprocess.run(["unshare", "--mount", "--", *map(str, call)], cwd=self.folder, capture_output=True, text=True,
                                    check=False)
            if result.returncode == 99 or "unshare failed" in result.stderr:
                print("no file system can be mounted here", file=sys.stderr)
                self.skipTest("no file system can be mounted here")
            self.assertEqual((result.returncode, result.stdout), (4, "previous\ns.json\n"), result.stderr)
            self.assertIn("no room left on the device", result.stderr)
        else:
            self.fail("--summary", "notes/s.json", text="it is write-protected")
        self.assertEqual(self.contents(), {"a.ply": b"previous"})

    def test_each_output_of_a_set_has_its_own(self):
        settings = {"summary": "%PART%.json", "outputs": [
            {"type": "virtek", "output": "a.ply", "summary": "%PART%-a.json", "plies": ["P1"]},
            {"type": "lap", "output": "b.lpd", "plies": ["P2"]}, {"type": "sl", "output": "none/c.sl", "summary": "c.json"}]}
        self.write("set.json", settings)
        result = self.run_tool(PANEL, "--settings", "set.json")
        self.assertEqual(result.returncode, 4, result.stderr)
        self.assertIn("error: 1 of 3 outputs failed\n", result.stderr)
        self.assertEqual(self.names(), ["Panel-a.json", "Panel.json", "a.cal", "a.ply", "a.ply-report.htm", "b.cal", "b.lpd",
                                        "b.lpd-report.htm", "set.json"])
        for name, ply, part, messages in (
                ("Panel-a.json", "P1", "a.ply", ["Virtek data have been successfully written to file:\n a.ply"]),
                ("Panel.json", "P2", "b.lpd", ["Disabled Nest Sequences Within Layup for LAP Laser",
                                               "LAP data have been successfully written to file:\n b.lpd"])):
            summary = self.read(name)
            self.assertEqual([entry["name"] for entry in summary["plies"]], [ply])
            self.assertEqual([message["text"] for message in summary["messages"] if message["severity"] == "note"], messages)
            self.assertEqual((summary["options"]["summary"], summary["options"]["output"]), (name, part))
        self.expect(self.run_tool(PANEL, "--settings", "set.json", "--summary", "all.json"), 2,
                    'expected no --summary beside a settings file with "outputs"')
        settings["outputs"][0].pop("summary")
        self.write("set.json", settings)
        self.expect(self.run_tool(PANEL, "--settings", "set.json"), 3, "would both write", "Panel.json; nothing is written")

    def test_a_warning_on_the_model_stands_in_the_summary_of_each_output(self):
        layup = json.loads(PANEL.read_text(encoding="utf-8"))
        layup["projectors"].append({"name": "Empty", "targets": []})
        self.write("a.json", layup)
        self.write("set.json", {"projectors": ["Left"], "outputs": [
            {"type": "virtek", "output": f"{name}.ply", "summary": f"{name}.json"} for name in "bc"]})
        self.expect(self.run_tool("a.json", "--settings", "set.json"), 0)
        for name in "bc":
            self.assertEqual([message["text"] for message in self.read(f"{name}.json")["messages"]],
                             ["a.json:1: projectors[2]: There is no target in the projector.",
                              f"Virtek data have been successfully written to file:\n {name}.ply"])


class Documents(Job):
    def setUp(self):
        super().setUp()
        self.text = (SOURCE / "docs" / "summary.md").read_text(encoding="utf-8")

    def block(self, language):
        block, = re.findall(rf"(?ms)^```{language}\n(.*?)^```$", self.text)
        return block

    def test_the_call_in_the_document_gives_the_ply_in_it(self):
        words = self.block("sh").split()
        self.expect(self.run_tool(*[SOURCE / word if word.startswith("examples/") else word for word in words[1:]]), 0)
        self.assertIn(json.loads(self.block("json")), self.read("panel.summary.json")["plies"])
        written = (self.folder / "panel.summary.json").read_text(encoding="utf-8")
        self.assertIn(self.block("json").strip().replace("\n", "\n        "), written)

    def test_every_key_is_told(self):
        keys = set(SCHEMA["properties"]) | set(SCHEMA["$defs"]["ply"]["properties"])
        self.assertEqual([key for key in sorted(keys) if not re.search(rf"\b{key}\b", self.text)], [])


if __name__ == "__main__":
    main()
