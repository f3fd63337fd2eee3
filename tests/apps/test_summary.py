#!/usr/bin/env python3
"""Tests of what the built zetlaser-job says of targets and writes as a summary: test_summary.py PROGRAM SOURCE_DIR [unittest arguments]

Each test runs in a folder of its own below the current one."""

import json
import math
import pathlib
import shutil
import subprocess
import sys
import unittest

PROGRAM = pathlib.Path(sys.argv[1])
SOURCE = pathlib.Path(sys.argv[2])
PANEL = SOURCE / "examples" / "panel" / "panel.layup.json"
BLADE = SOURCE / "examples" / "blade" / "blade.layup.json"

FOUR = {"A": [0, 0, 0], "B": [1000, 0, 0], "C": [1000, 600, 0], "D": [0, 600, 0]}


class JobTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path.cwd() / self.id().split(".", 1)[1]
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()

    def run_tool(self, *arguments, folder=None):
        return subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=folder or self.folder, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60, check=False)

    def write_layup(self, targets, projectors, name="a.layup.json"):
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
        path = self.folder / name
        path.write_text(json.dumps(layup), encoding="utf-8")
        return path


class Targets(JobTest):
    def look(self, targets, projectors, *more, kind="virtek"):
        """The warnings of targets, and the lines on projectors in the result. That a projector is empty is also told where
        the layup file is read, with its line there."""
        layup = self.write_layup(targets, projectors)
        result = self.run_tool(layup, "--type", kind, "--output", "a.out", *more)
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
            return [(self.folder / name).read_text() for name in ("a.out", "a.out-report.htm")]
        few, enough = written(["A"]), written(list("ABCD"))
        self.assertEqual(few[0], enough[0])
        self.assertEqual(few[1].replace("Writing 1 targets", "Writing 4 targets"), enough[1])

    def test_the_examples_come_without_warnings(self):
        for layup in (PANEL, BLADE):
            with self.subTest(layup=layup.name):
                result = self.run_tool(layup, "--type", "lap", "--output", "a.lpd")
                self.assertNotIn("warning: ", result.stderr)
                self.assertEqual(result.stdout.count("\nprojector "), 2)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=1)
