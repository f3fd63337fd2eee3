#!/usr/bin/env python3
"""Tests of `zetlaser-job convert`: test_convert.py PROGRAM SOURCE_DIR [unittest arguments]"""

import importlib.machinery
import json
import math
import random
import re
import shutil
import subprocess
import sys
import types

from tool_test import SOURCE, ToolTest, main

COVER = SOURCE / "examples" / "cover"
HEADER = "layup,sequence,ply,material,direction,boundary"
# The plies of the example, as somebody would write them into a layup file by hand.
PLIES = [("S1", "P1", "Glass", 0, "Outline"), ("S1", "P2", "Carbon", 45, "Base"), ("S1", "P3", "Carbon", -45, "Base"),
         ("S2", "P4", "Carbon", 0, "Strip"), ("S2", "P5", "Carbon", 90, "Patch left"),
         ("S2", "P6", "Carbon", 90, "Patch right"), ("S3", "P7", "Glass", 0, "Base")]


class ConvertTest(ToolTest):
    def setUp(self):
        super().setUp()
        shutil.copy(COVER / "cover.step", self.folder)

    def convert(self, plies, *more, output="cover.layup.json", tool="cover.step"):
        """Converts a list, given by name or by its content, and replaces what an earlier call has written."""
        if not isinstance(plies, str) or re.search("[,;\n]", plies):
            self.write("p.csv", plies)
            plies = "p.csv"
        return self.run_tool("convert", plies, "--tool", tool, "--output", output, "--force", *more)

    def layup(self, *arguments):
        self.expect(self.convert(*arguments), 0)
        return json.loads((self.folder / "cover.layup.json").read_text(encoding="utf-8"))

    def rows(self, *rows):
        return "\n".join([HEADER, *rows]) + "\n"

    def plies_of(self, layup):
        return [(one["name"], sequence["name"], ply["name"], ply["material"], ply["direction"], ply["boundary"])
                for one in layup["layups"] for sequence in one["children"] for ply in sequence["children"]]


class RoundTrip(ConvertTest):
    def run_job(self, layup, folder):
        (self.folder / folder).mkdir()
        self.expect(self.run_tool(layup, "--type", "virtek", "--output", f"{folder}/cover.ply"), 0, "plies: 7, ")
        return self.contents(folder)

    def test_the_list_gives_the_files_of_a_layup_file_written_by_hand(self):
        self.expect(self.convert(str(COVER / "plies.csv"), "--name", "Cover"), 0, "written: cover.layup.json (",
                    "layups: 1, sequences: 3, plies: 7, materials: 2\n", "tool: 600.0 mm x 547.2 mm x 48.2 mm\n")
        boundaries = sorted({ply[4] for ply in PLIES})
        sequences = {}
        for sequence, name, material, direction, boundary in PLIES:
            sequences.setdefault(sequence, []).append(
                {"kind": "ply", "boundary": {"curve": boundary + " on skin"}, "material": material, "direction": direction,
                 "name": name})
        self.write("hand.json", {
            "name": "Cover", "format": "zetlaser-layup", "version": 1, "units": "mm",
            "shapes": [{"name": "Mould", "file": "cover.step"}],
            "surfaces": [{"name": "Skin", "shape": "Mould", "face": "Skin"}],
            "curves": [{"name": name + " on skin", "on": "Skin", "shape": "Mould", "wire": name} for name in boundaries],
            "axisSystems": [], "rosettes": [{"name": "Zero", "x": [1, 0, 0], "y": [0, 1, 0]}],
            "materials": [{"name": "Carbon", "type": "Carbon"}, {"name": "Glass", "type": "Glass"}],
            "layups": [{"name": "Skin", "workpiece": "Skin", "rosette": "Zero", "children": [
                {"name": name, "children": plies} for name, plies in sequences.items()]}]})
        by_hand = self.run_job("hand.json", "hand")
        self.assertEqual(self.run_job("cover.layup.json", "converted"), by_hand)
        self.assertIn(b"START P5\n", by_hand["cover.ply"])

    def test_the_corners_of_a_ply_are_those_of_its_boundary(self):
        self.expect(self.convert(str(COVER / "plies.csv")), 0)
        self.run_job("cover.layup.json", "job")
        text = (self.folder / "job" / "cover.ply").read_text()
        points = [tuple(map(float, line.split()[:3])) for line in text.split("START P5\n")[1].split("END P5")[0].splitlines()
                  if len(line.split()) == 6]
        self.assertGreater(len(points), 4)
        for x in (-250, -100):
            for angle in (math.radians(-15), math.radians(15)):
                corner = (x, 800 * math.sin(angle), 800 * math.cos(angle) - 800)
                self.assertLess(min(math.dist(corner, point) for point in points), 2e-6)
        for x, y, z in points:
            self.assertLess(abs(math.hypot(y, z + 800) - 800), 2e-6)
        # A projector draws straight lines, and an arc has to stay one.
        self.assertEqual(points[0], points[-1])
        for (_, y0, z0), (_, y1, z1) in zip(points, points[1:]):
            self.assertLess(800 - math.hypot((y0 + y1) / 2, (z0 + z1) / 2 + 800), 0.05)

    def test_the_tool_is_what_the_script_makes(self):
        subprocess.run([sys.executable, SOURCE / "scripts" / "make-cover-tool.py", self.folder / "made.step"], check=True)
        self.assertEqual((self.folder / "made.step").read_bytes(), (COVER / "cover.step").read_bytes())

    def test_the_layup_file_finds_the_tool_from_its_own_folder(self):
        for name in ("tools", "lists", "layups"):
            (self.folder / name).mkdir()
        shutil.move(self.folder / "cover.step", self.folder / "tools")
        self.write("lists/p.csv", (COVER / "plies.csv").read_bytes())
        self.expect(self.run_tool("convert", "lists/p.csv", "--tool", "tools/cover.step", "--output", "layups/a.json"), 0,
                    "written: layups/a.json (")
        layup = json.loads((self.folder / "layups" / "a.json").read_text())
        self.assertEqual(layup["shapes"][0]["file"], "../tools/cover.step")
        self.assertEqual(layup["name"], "p")
        self.run_job("layups/a.json", "job")


class Lists(ConvertTest):
    def test_each_form_of_a_list_gives_the_same_layup_file(self):
        plain = self.rows("A,S1,P1,Glass,0.5,Base", "A,S1,P2,\"Carbon, UD\",-45,Strip", "B,S1,P1,Glass,90,Base")
        self.expect(self.convert(plain), 0)
        expected = (self.folder / "cover.layup.json").read_bytes()
        semicolons = plain.replace(",", ";").replace('"Carbon; UD"', "Carbon, UD")
        forms = {
            "byte order mark": b"\xef\xbb\xbf" + plain.encode(),
            "CR LF": plain.replace("\n", "\r\n"), "CR": plain.replace("\n", "\r"), "no last line end": plain.rstrip("\n"),
            "semicolons": semicolons, "decimal comma": semicolons.replace("0.5", "0,5"),
            "quotes": plain.replace("Glass", '"Glass"').replace(HEADER, '"layup","sequence","ply","material","direction","boundary"'),
            "blanks": plain.replace(",S1,", " , S1 ,\t"),
            "capitals": plain.replace(HEADER, HEADER.title()),
            "empty lines": plain.replace("\n", "\n\n") + ",,,,,\n",
            "values beyond the header": plain.replace("Base\n", "Base,,\n"),
            "order of columns": "boundary,direction,material,ply,sequence,layup\n"
                                'Base,0.5,Glass,P1,S1,A\nStrip,-45,"Carbon, UD",P2,S1,A\nBase,90,Glass,P1,S1,B\n',
            "signs": plain.replace("0.5", "+0.50").replace(",90,", ",9e1,"),
        }
        for name, form in forms.items():
            with self.subTest(form=name):
                (self.folder / "cover.layup.json").unlink()
                result = self.convert(form)
                self.expect(result, 0)
                self.assertEqual(result.stderr, "")
                self.assertEqual((self.folder / "cover.layup.json").read_bytes(), expected)

    def test_names_keep_their_letters(self):
        name = 'Lage "oben" \\ \u00e4\u4e2d; %1,%2'
        quoted = '"' + name.replace('"', '""') + '"'
        layup = self.layup(self.rows(f"{quoted},{quoted},{quoted},{quoted},0,Base"))
        self.assertEqual(self.plies_of(layup), [(name, name, name, name, 0, "Base")])
        self.assertEqual(layup["materials"], [{"name": name, "type": name}])

    def test_the_order_of_rows_is_the_order_of_laying(self):
        rows = [("B", "S2", "P9"), ("B", "S2", "P1"), ("B", "S1", "P1"), ("A", "S2", "P9")]
        layup = self.layup(self.rows(*[",".join(row) + ",Glass,0,Base" for row in rows]))
        self.assertEqual([ply[:3] for ply in self.plies_of(layup)], rows)

    def test_an_unknown_column_is_left_out_with_a_warning(self):
        plain = self.rows("A,S1,P1,Glass,0,Base")
        self.expect(self.convert(plain), 0)
        expected = (self.folder / "cover.layup.json").read_bytes()
        result = self.convert('layup,note,sequence,ply,material,direction,boundary\nA,"two\nlines",S1,P1,Glass,0,Base\n')
        self.expect(result, 0)
        self.assertEqual(result.stderr, "warning: p.csv:1: note: the column is unknown and left out\n")
        self.assertEqual((self.folder / "cover.layup.json").read_bytes(), expected)

    def test_a_boundary_may_be_called_as_the_surface(self):
        text = (self.folder / "cover.step").read_text().replace("'Base'", "'Tool'")
        self.write("cover.step", text)
        layup = self.layup(self.rows("A,S1,P1,Glass,0,Tool", "A,S1,P2,Glass,0,Strip"))
        self.assertEqual(layup["surfaces"][0]["name"], "Tool surface")
        self.assertEqual([curve["on"] for curve in layup["curves"]], ["Tool surface"] * 2)


class Faults(ConvertTest):
    def faults(self, plies, *expected, tool="cover.step"):
        before = self.names()
        result = self.convert(plies, tool=tool)
        self.expect(result, 3)
        lines = [line.removeprefix("error: p.csv:") for line in result.stderr.splitlines() if line.startswith("error: ")]
        if len(expected) > 1:
            self.assertEqual(lines.pop(), f" {len(expected)} faults, nothing is written")
        self.assertEqual(lines, list(expected))
        self.assertEqual(self.names(), sorted({*before, "p.csv"}))

    def test_faults_of_the_header_are_told(self):
        self.faults("layup,sequence,ply,material,direction,bundary,ply\nA,S1,P1,Glass,0,Base,P1\n",
                    "1: ply: expected this column once, found it twice",
                    '1: boundary: expected a column of this name, found "bundary"')
        self.faults("A,S1,P1,Glass,0,Base\n", *[f"1: {name}: expected a column of this name, found none"
                                                for name in HEADER.split(",")])
        self.faults('"lay\nup",sequence,ply,material,direction,boundary\n',
                    r'1: layup: expected a column of this name, found "lay\nup"')

    def test_an_empty_list_is_told_in_one_line(self):
        for content in ("", "\n", ",,,\n"):
            self.write("p.csv", content)
            self.expect(self.convert("p.csv"), 3, f"error: p.csv:1: expected a header row with {HEADER}, found none\n")
        self.write("p.csv", ";;\n")
        self.expect(self.convert("p.csv"), 3,
                    f"error: p.csv:1: expected a header row with {HEADER.replace(',', ';')}, found none\n")

    def test_a_list_without_plies_is_told(self):
        self.write("p.csv", HEADER + "\n,,,,,\n")
        self.expect(self.convert("p.csv"), 3, "error: p.csv: expected a row for each ply behind the header, found none\n")

    def test_a_list_of_wrong_rows_alone_is_not_called_empty(self):
        self.faults(self.rows("A,S1,P1,Glass,0", "A,S1,P2"), "2: expected 6 values as in the header, found 5",
                    "3: expected 6 values as in the header, found 3")

    def test_all_faults_of_the_rows_are_told_in_their_order(self):
        self.faults(self.rows("A,S1,P1,Glass,0,Base", "A,S1,,Glass,45,Base", "A,S1,P3,,4x5,Base", "A,S1,P1,Glass,0,Base",
                              "A,S1,P5,Glass,0,Bsae", "A,S1,P6,Glass,0", "A,S1,P7,Glass,0,Centre line", "A,S1,P8,Glass,450,Base",
                              "A,S1,P9,Glass,0,nothing like it", '"A","S1","P\n10",Glass,0,Base', "A,S1,P11,Glass,0,Base,more"),
                    "3: ply: expected a name, found nothing",
                    "4: material: expected a name, found nothing",
                    '4: direction: expected an angle from -360 to 360 degrees, found "4x5"',
                    '5: ply: expected a name that the sequence hasn\'t yet, found "P1" as on line 2',
                    '6: boundary: expected the name of an edge or wire of cover.step, found "Bsae", did you mean "Base"?',
                    "7: expected 6 values as in the header, found 5",
                    '8: boundary: expected a closed edge or wire, found the open "Centre line"',
                    '9: direction: expected an angle from -360 to 360 degrees, found "450"',
                    '10: boundary: expected the name of an edge or wire of cover.step, found "nothing like it"',
                    "11: ply: expected a name on one line, found a line end, a tab or the like",
                    "13: expected 6 values as in the header, found 7")

    def test_directions_that_are_none_are_told(self):
        for direction in ("", "nan", "inf", "1.5.2", "0x10", "-360.1", "45 deg"):
            with self.subTest(direction=direction):
                self.faults(self.rows(f"A,S1,P1,Glass,{direction},Base"),
                            f'2: direction: expected an angle from -360 to 360 degrees, found "{direction}"')
        for direction in ("1,5,2", "1.000,5"):
            self.faults(self.rows(f"A,S1,P1,Glass,{direction},Base").replace(",", ";").replace(direction.replace(",", ";"), direction),
                        f'2: direction: expected an angle from -360 to 360 degrees, found "{direction}"')
        self.faults(self.rows('A,S1,P1,Glass,"45,5",Base'),
                    '2: direction: expected an angle from -360 to 360 degrees, found "45,5"')

    def test_plies_of_a_sequence_or_layup_that_stand_apart_are_told(self):
        self.faults(self.rows("A,S1,P1,Glass,0,Base", "A,S2,P2,Glass,0,Base", "A,S1,P3,Glass,0,Base", "A,S1,P4,Glass,0,Base"),
                    '4: sequence: expected the plies of "S1" in one block, found one behind another sequence; '
                    "the last is on line 2")
        self.faults(self.rows("A,S1,P1,Glass,0,Base", "B,S1,P2,Glass,0,Base", "A,S2,P3,Glass,0,Base"),
                    '4: layup: expected the plies of "A" in one block, found one behind another layup; the last is on line 2')

    def test_what_is_no_list_is_told(self):
        quotes = 'expected quotes around a whole value, and "" for a quote in it'
        for content, fault in (
                (self.rows('A,S1,P"1,Glass,0,Base'), f"2: {quotes}"),
                (self.rows("A,S1,P1,Glass,0,Base", 'A,S1,"P"1,Glass,0,Base'), f"3: {quotes}"),
                (self.rows("A,S1,P1,Glass,0,Base", 'A,S1,"P1,Glass,0,Base', "A,S1,P1,Glass,0,Base"),
                 "3: expected a quote at the end of a value that begins with one, found the end of the file"),
                (self.rows("A,S1,P1,Glass,0,Base").encode() + b"A,S1,P\xe4,Glass,0,Base\n",
                 '3: expected UTF-8, found other bytes; spreadsheets call it "CSV UTF-8"'),
                (self.rows("A,S1,P1,Glass,0,Base").encode("utf-16"),
                 '1: expected UTF-8, found other bytes; spreadsheets call it "CSV UTF-8"')):
            with self.subTest(fault=fault):
                self.faults(content, fault)
        self.expect(self.convert("none.csv"), 3, "error: none.csv: there is no such file\n")
        self.expect(self.convert("."), 3, "error: .: expected a file, found a folder\n")
        self.expect(self.convert("/dev/zero"), 3, "error: /dev/zero: expected a regular file\n")

    def test_faults_of_the_tool_file_are_told_beside_those_of_the_list(self):
        self.write("bad.step", "no STEP")
        self.expect(self.convert(self.rows("A,S1,,Glass,0,Base"), tool="bad.step"), 3,
                    "error: bad.step: it is no STEP, IGES or BREP file\n", "error: p.csv:2: ply: expected a name, found nothing\n",
                    "error: p.csv: 2 faults, nothing is written\n")
        self.write("nameless.step", re.sub(r"(EDGE_LOOP|_CURVE|FACE)\('[^']*'", r"\1(''", (self.folder / "cover.step").read_text()))
        self.faults(self.rows("A,S1,P1,Glass,0,Base"),
                    '2: boundary: expected the name of an edge or wire of nameless.step, found "Base"; the file has none with a name',
                    tool="nameless.step")

    def write_tool_with_strip(self, *corners):
        """The tool of the example, whose boundary "Strip" goes straight from corner to corner."""
        loader = importlib.machinery.SourceFileLoader("maker", str(SOURCE / "scripts" / "make-cover-tool.py"))
        maker = types.ModuleType(loader.name)
        maker.__file__ = loader.path
        loader.exec_module(maker)
        add_boundary = maker.add_boundary

        def add_polygon(step, name, *_):
            points = [maker.on_tool(*corner) for corner in corners]
            sides = [step.trimmed("", step.line(*side), 0.0, math.dist(*side)) for side in zip(points, points[1:] + points[:1])]
            segments = maker.join(step.add(f"COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,{side})") for side in sides)
            return step.add(f"COMPOSITE_CURVE('{name}',{segments},.F.)")

        maker.add_boundary = lambda step, name, *more: (add_polygon if name == "Strip" else add_boundary)(step, name, *more)
        self.write("cover.step", maker.make())

    def test_boundaries_that_are_none_on_the_tool_are_told_with_their_lines(self):
        for corners, fault in (
                (((-280, -4), (280, -4)), "expected a boundary with an area, found one that encloses none"),
                # The middle of a chord of 8 degrees is 800 * (1 - cos(4 degrees)) away.
                (((-280, -4), (280, -4), (280, 4), (-280, 4)),
                 'expected a curve at most 1 mm from the surface "Tool", found one at 1.94876 mm')):
            with self.subTest(fault=fault):
                self.write_tool_with_strip(*corners)
                self.faults(self.rows("A,S1,P1,Glass,0,Base", "A,S1,P2,Glass,0,Strip"), f"3: boundary: {fault}")

    def test_a_list_of_random_bytes_gives_clear_lines(self):
        source = random.Random(11)
        text = (COVER / "plies.csv").read_bytes()
        for number in range(40):
            mutant = bytearray(text)
            for _ in range(source.randint(1, 6)):
                mutant[source.randrange(len(mutant))] = source.choice(b'",;\n\r\x00\xff0Pe')
            result = self.convert(bytes(mutant))
            self.assertIn(result.returncode, (0, 3), f"mutant {number}: {result.stderr}")
            if result.returncode:
                self.assertRegex(result.stderr, r"\A((error|warning): p\.csv:.+\n)+\Z", f"mutant {number}")


class Calls(ConvertTest):
    def test_wrong_calls_are_told(self):
        self.write("p.csv", self.rows("A,S1,P1,Glass,0,Base"))
        before = self.names()
        right = ["p.csv", "--tool", "cover.step", "--output", "a.json"]
        for arguments, text in (
                ([], "expected a ply list, found none"),
                (["p.csv", "--output", "a.json"], "expected the option --tool, found none"),
                (["p.csv", "--tool", "cover.step"], "expected the option --output, found none"),
                ([*right, "--tol", "x"], "unknown option --tol, did you mean --tool?"),
                ([*right, "--scale", "0"], '--scale: expected a number above 0, found "0"'),
                ([*right, "--rosette-x", "1,0"], '--rosette-x: expected three numbers as in 0,0,1, found "1,0"'),
                ([*right, "--rosette-y", "1,0,nan"], '--rosette-y: expected three numbers as in 0,0,1, found "1,0,nan"'),
                (["p.csv", "--tool", "cover.step", "--output", "./p.csv"],
                 "expected another file behind --output than p.csv, which is read"),
                (["p.csv", "--tool", "cover.step", "--output", "cover.step"],
                 "expected another file behind --output than cover.step, which is read")):
            with self.subTest(arguments=arguments):
                self.expect(self.run_tool("convert", *arguments), 2, text)
                self.assertEqual(self.names(), before)

    def test_faces_are_chosen_by_name_and_by_index(self):
        plies = self.rows("A,S1,P1,Glass,0,Base")
        self.assertEqual(self.layup(plies, "--face", "Skin")["surfaces"][0]["face"], "Skin")
        self.assertEqual(self.layup(plies, "--face", "0")["surfaces"][0]["face"], 0)
        self.expect(self.convert(plies, "--face", "Skn"), 3, 'no face is called "Skn"; its names are Skin')
        self.expect(self.convert(plies, "--face", "1"), 3, "there is no face 1, the file holds 1 faces")

    def test_side_scale_rosette_and_name_stand_in_the_layup_file(self):
        layup = self.layup(self.rows("A,S1,P1,Glass,0,Base"), "--reversed", "--scale", "0.1", "--name", "Cover 7",
                           "--rosette-origin", "1,2,-3.5", "--rosette-x", "0,1,0", "--rosette-y=-1,0,0")
        self.assertEqual(layup["surfaces"][0]["reversed"], True)
        self.assertEqual(layup["shapes"], [{"name": "Tool", "file": "cover.step", "scale": 0.1}])
        self.assertEqual(layup["name"], "Cover 7")
        self.assertEqual(layup["rosettes"], [{"name": "Rosette", "origin": [1, 2, -3.5], "x": [0, 1, 0], "y": [-1, 0, 0]}])
        self.expect(self.run_tool("cover.layup.json", "--type", "virtek", "--output", "a.ply", "--no-output-rosette"), 0,
                    "size: 56.0 mm x 49.4 mm x ")

    def test_what_was_added_by_hand_is_replaced_on_demand_only(self):
        call = ["convert", COVER / "plies.csv", "--tool", "cover.step", "--output", "cover.layup.json"]
        self.expect(self.run_tool(*call), 0)
        written = (self.folder / "cover.layup.json").read_text()
        added = written.replace('"name": "Carbon",', '"name": "Carbon", "thickness": 0.2,')
        self.assertNotEqual(added, written)
        self.write("cover.layup.json", added)
        self.expect(self.run_tool(*call), 4, "error: can't write cover.layup.json: it is there already, and may hold what was "
                                             "added by hand; --force replaces it\n")
        self.assertEqual((self.folder / "cover.layup.json").read_text(), added)
        self.expect(self.run_tool(*call, "--force"), 0, "written: cover.layup.json (")
        self.assertEqual((self.folder / "cover.layup.json").read_text(), written)

    def test_a_conversion_that_fails_leaves_the_previous_file(self):
        self.write("cover.layup.json", "previous")
        self.expect(self.convert(self.rows("A,S1,P1,Glass,x,Base")), 3)
        self.expect(self.convert(self.rows("A,S1,P1,Glass,0,Base"), output="none/a.json"), 4, "there is no such folder\n")
        self.expect(self.convert(self.rows("A,S1,P1,Glass,0,Base"), output="."), 4, "it is a folder\n")
        self.assertEqual((self.folder / "cover.layup.json").read_text(), "previous")
        self.assertEqual(self.names(), ["cover.layup.json", "cover.step", "p.csv"])

    def test_the_layup_file_is_written_for_people(self):
        self.expect(self.convert(str(COVER / "plies.csv")), 0)
        lines = (self.folder / "cover.layup.json").read_text().splitlines()
        self.assertEqual(lines[1], '  "format": "zetlaser-layup", "version": 1, "units": "mm", "name": "plies",')
        self.assertIn('        {"name": "P4", "direction": 0, "material": "Carbon", "boundary": "Strip"},', lines)
        self.assertTrue(all(len(line) < 100 for line in lines))


class Documents(ConvertTest):
    def block(self, language):
        text = (SOURCE / "docs" / "ply-list.md").read_text(encoding="utf-8")
        return dict(re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", text))[language]

    def test_the_commands_work(self):
        commands = self.block("sh").splitlines()
        self.assertEqual(len(commands), 2)
        for command in commands:
            words = [SOURCE / word if word.startswith("examples/") else word for word in command.split()[1:]]
            self.expect(self.run_tool(*words), 0, "plies: 7, ")

    def test_the_list_and_its_faults_are_as_told(self):
        example = (COVER / "plies.csv").read_text(encoding="utf-8")
        self.assertTrue(example.startswith(self.block("csv")))
        self.write("plies.csv", example.replace(",45,", ",4x5,").replace("Strip", "Strp"))
        result = self.convert("plies.csv")
        self.expect(result, 3)
        self.assertEqual(result.stderr, self.block(""))


if __name__ == "__main__":
    main()
