#!/usr/bin/env python3
"""Tests of shape files through `zetlaser-job shapes` and through jobs on them:
test_shapes.py PROGRAM SOURCE_DIR MAKE_SHAPE_FILES [unittest arguments]

The shape files are those of make-shape-files, which the kernel's own writers write, and the kernel's samples, which Debian's
package occt-misc holds."""

import concurrent.futures
import functools
import math
import os
import pathlib
import random
import re
import resource
import shutil
import subprocess
import sys

from tool_test import PROGRAM, SOURCE, ToolTest, main

MAKER = pathlib.Path(sys.argv[3])
SAMPLES = pathlib.Path("/usr/share/opencascade/data")
FORMATS = ("step", "iges", "brep")
SQUARE = [[10, 10, 0], [90, 10, 0], [90, 25, 0], [10, 25, 0]]  # on the plate, beside its hole
WALK = ["--use-max-length", "--max-length", "2", "--no-use-minimize-points-tolerance"]  # what lies between the vertices


@functools.cache
def make_files():
    """The folder with the files of make-shape-files."""
    folder = pathlib.Path.cwd() / "made"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    subprocess.run([MAKER], cwd=folder, check=True, timeout=60)
    return folder


class ShapesTest(ToolTest):
    def setUp(self):
        super().setUp()
        self.made = make_files()

    def shapes(self, file, *more, code=0):
        """The lines that tell of a file."""
        result = self.run_tool("shapes", self.made / file, *more)
        self.expect(result, code)
        return result.stdout.splitlines()

    def layup(self, file, boundary, shape=None, surface=None, curves=(), **top):
        """A layup file of one ply on the tool, which is the file's only face unless `surface` says otherwise."""
        return self.write("l.json", {
            "format": "zetlaser-layup", "version": 1, "units": "mm", **top,
            "shapes": [{"name": "S", "file": str(self.made / file), **(shape or {})}],
            "surfaces": [{"name": "Tool", "shape": "S", **(surface or {})}],
            "curves": list(curves),
            "rosettes": [{"name": "R", "x": [1, 0, 0], "y": [0, 1, 0]}],
            "materials": [{"name": "Glass"}],
            "configurations": [{"name": "C", "includeNormals": True}],
            "layups": [{"name": "L", "workpiece": "Tool", "rosette": "R", "children": [{"name": "S1", "children": [
                {"name": "P1", "direction": 0, "material": "Glass", "boundary": boundary}]}]}]})

    def job(self, *arguments, more=(), **rest):
        self.layup(*arguments, **rest)
        return self.run_tool("l.json", "--type", "virtek", "--output", "a.ply", "--no-output-rosette", *more)

    def points(self, *arguments, **rest):
        """The points of the ply that a job writes: three coordinates and the normal."""
        self.expect(self.job(*arguments, **rest), 0)
        lines = (self.folder / "a.ply").read_text(encoding="ascii").splitlines()
        starts = [i for i, line in enumerate(lines) if re.fullmatch(r"P \d+", line)]
        self.assertEqual(len(starts), 1)
        count = int(lines[starts[0]].split()[1])
        return [tuple(map(float, line.split())) for line in lines[starts[0] + 1:starts[0] + 1 + count]]

    def refuse(self, text, *arguments, **rest):
        self.expect(self.job(*arguments, **rest), 3, text)

    def curve(self, **which):
        return {"name": "B", "shape": "S", "on": "Tool", **which}

    def assert_points(self, points, expected):
        """The same places in the same order, whichever comes first; a closed curve ends where it began."""
        places = [point[:3] for point in points]
        self.assertEqual(places[0], places[-1])
        self.assertEqual(len(places) - 1, len(expected))
        start = min(range(len(expected)), key=lambda i: math.dist(expected[i], places[0]))
        for i, place in enumerate(places[:-1]):
            self.assertLess(math.dist(place, expected[(start + i) % len(expected)]), 1e-5)


def length_of(points):
    return sum(math.dist(a[:3], b[:3]) for a, b in zip(points, points[1:]))


class Listing(ShapesTest):
    def test_faces_wires_and_edges_are_told_with_kind_size_and_name(self):
        self.assertEqual(self.shapes("named.step"), [
            "format: STEP",
            "unit: millimetre, 1 mm",
            "faces: 2, wires: 3, edges: 9",
            'body "COMPOUND": faces 0-1',
            'face 0 "Plate": plane, 100 x 100 x 0 mm',
            'face 1 "Quarter": cylinder, 100 x 100 x 200 mm',
            'wire 0 "Outline": closed, edges: 4, 400 mm, bounds face 0',
            'wire 1 "Hole": closed, edges: 1, 125.664 mm, bounds face 0',
            "wire 2: closed, edges: 4, 714.159 mm, bounds face 1",
            'edge 0 "Side": line, 100 mm, bounds face 0',
            "edge 1: line, 100 mm, bounds face 0",
            "edge 2: line, 100 mm, bounds face 0",
            "edge 3: line, 100 mm, bounds face 0",
            "edge 4: circle, 125.664 mm, bounds face 0",
            "edge 5: line, 200 mm, bounds face 1",
            "edge 6: circle, 157.08 mm, bounds face 1",
            "edge 7: line, 200 mm, bounds face 1",
            "edge 8: circle, 157.08 mm, bounds face 1"])

    def test_edges_of_no_face_and_edges_of_two_are_told(self):
        lines = self.shapes("loose.brep")
        self.assertEqual(lines[1], "unit: mm, 1 mm")
        self.assertEqual(lines[-2:], ["edge 4: line, 20 mm", "edge 5: line, 100 mm"])
        box = self.shapes("box.step")
        self.assertEqual(sum(re.search(r"^edge \d+: line, \d00 mm, bounds faces \d(-|, )\d$", line) is not None for line in box), 12)

    def test_a_scale_is_told_with_what_it_makes(self):
        lines = self.shapes("plate-in.step", "--scale", "1")
        self.assertEqual(lines[1], "unit: INCH, 25.4 mm; read as 1 mm")
        self.assertIn("face 0: plane, 3.93701 x 3.93701 x 0 mm", lines)

    def test_a_face_that_cant_be_used_is_told_beside_the_others(self):
        step = (self.made / "named.step").read_text(encoding="ascii")
        corner = re.search(r"CARTESIAN_POINT\('',\((100\.),", step)
        self.write("far.step", step[:corner.start(1)] + "1.E+93" + step[corner.end(1):])
        result = self.run_tool("shapes", "far.step")
        self.expect(result, 0, 'face 1 "Quarter": cylinder, 100 x 100 x 200 mm\n')
        self.assertRegex(result.stdout, r'(?m)^edge \d+( "Side")?: can\'t be used: far.step: a coordinate of .+ mm is too large')

    def test_wrong_calls_and_files_are_told(self):
        self.write("text.step", "hello\n")
        for arguments, code, text in (
                ([], 2, "expected a shape file, found none"),
                (["none.step"], 3, "error: none.step: there is no such file\n"),
                (["."], 3, "error: .: it isn't a file\n"),
                (["text.step"], 3, "error: text.step: it is no STEP, IGES or BREP file\n"),
                (["text.step", "--scale", "0"], 2, '--scale: expected a number above 0, found "0"'),
                (["text.step", "--scale", "inf"], 2, '--scale: expected a number above 0, found "inf"')):
            with self.subTest(arguments=arguments):
                self.expect(self.run_tool("shapes", *arguments), code, text)


class Units(ShapesTest):
    def test_lengths_are_those_of_the_declared_unit(self):
        expected = self.points("plate.step", SQUARE)
        self.assert_points(expected, SQUARE)
        for name, unit in (("plate-in.step", "INCH, 25.4 mm"), ("plate-m.step", "metre, 1000 mm"), ("plate.iges", "MM, 1 mm"),
                           ("plate-in.iges", "INCH, 25.4 mm"), ("plate-m.iges", "M, 1000 mm"), ("plate.brep", "mm, 1 mm")):
            with self.subTest(file=name):
                lines = self.shapes(name)
                self.assertIn("unit: " + unit, lines)
                self.assertIn("face 0: plane, 100 x 100 x 0 mm", lines)
                self.assertEqual(self.points(name, SQUARE), expected)

    def test_a_scale_overrides_the_unit(self):
        # The numbers of the file are those of inches: 3.937 for the side of 100 mm.
        small = [[0.5, 0.5, 0], [3.5, 0.5, 0], [3.5, 0.9, 0]]
        for name in ("plate-in.step", "plate-in.iges"):
            self.assert_points(self.points(name, small, shape={"scale": 1}), small)
            self.refuse('boundary[1]: expected a point at most 1 mm from the surface "Tool", found one at 86.0', name,
                        [[0.5, 0.5, 0], [90, 0.5, 0], [90, 0.9, 0]], shape={"scale": 1})
        large = [[100, 100, 0], [2500, 100, 0], [2500, 700, 0]]
        self.assert_points(self.points("plate.brep", large, shape={"scale": 25.4}), large)
        self.refuse("found one at 2400 mm", "plate.brep", large)

    def test_a_step_file_without_a_unit_needs_a_scale(self):
        step = (self.made / "plate.step").read_text(encoding="ascii")
        bare, count = re.subn(r"(GLOBAL_UNIT_ASSIGNED_CONTEXT\s*\(\s*\()#\d+,", r"\1", step)
        self.assertEqual(count, 1)
        path = self.write("bare.step", bare)
        fault = ": the file declares no unit of length, so it needs a scale\n"
        self.expect(self.run_tool("shapes", "bare.step"), 3, "error: bare.step" + fault)
        self.expect(self.run_tool("shapes", "bare.step", "--scale", "25.4"), 0, "unit: none is declared; read as 25.4 mm\n",
                    "face 0: plane, 2540 x 2540 x 0 mm\n")
        self.refuse(f"error: l.json:1: shapes[0].file: {path}{fault}", path, SQUARE)
        self.assert_points(self.points(path, SQUARE, shape={"scale": 1}), SQUARE)


class Names(ShapesTest):
    def test_faces_are_taken_by_name_and_by_index(self):
        for name in ("named.step", "named.iges"):
            self.assert_points(self.points(name, SQUARE, surface={"face": "Plate"}), SQUARE)
            self.assert_points(self.points(name, SQUARE, surface={"face": 0}), SQUARE)
            path = self.made / name
            self.refuse(f"surfaces[0].shape: {path}: the file holds 2 faces, so one has to be named; its names are Plate, "
                        "Quarter, COMPOUND\n", name, SQUARE)
            self.refuse(f'surfaces[0].face: {path}: no face is called "plate"; its names are Plate, Quarter, COMPOUND\n', name,
                        SQUARE, surface={"face": "plate"})
            self.refuse(f'surfaces[0].face: {path}: "COMPOUND" stands for 2 faces\n', name, SQUARE, surface={"face": "COMPOUND"})
            self.refuse("surfaces[0].face: expected the index of a face, 0 to 1, found the number 2\n", name, SQUARE,
                        surface={"face": 2})

    def test_wires_and_edges_are_taken_by_name_and_by_index(self):
        corners = [[0, 0, 0], [100, 0, 0], [100, 100, 0], [0, 100, 0]]
        for which in ({"wire": "Outline"}, {"edge": "Outline"}, {"wire": 0}):
            self.assert_points(self.points("named.step", "B", surface={"face": "Plate"}, curves=[self.curve(**which)]), corners)
        path = self.made / "named.step"
        for which, fault in (
                ({"edge": "Side"}, 'layups[0].S1.P1.boundary: expected a closed boundary, found the open curve "B"'),
                ({"edge": "side"}, f'curves[0].edge: {path}: no edge or wire is called "side"; its names are Outline, Hole, Side'),
                ({"wire": 3}, "curves[0].wire: expected the index of a curve, 0 to 2, found the number 3"),
                ({"edge": 9}, "curves[0].edge: expected the index of a curve, 0 to 8, found the number 9")):
            with self.subTest(which=which):
                self.refuse(f"error: l.json:1: {fault}\n", "named.step", "B", surface={"face": "Plate"},
                            curves=[self.curve(**which)])

    def test_a_curved_edge_has_points_enough(self):
        for which in ({"wire": "Hole"}, {"edge": 4}):
            points = self.points("named.step", "B", surface={"face": "Plate"}, curves=[self.curve(**which)])
            # Chords that leave a circle by 0.01 mm make 99.3 sides of it; thinning may take out every second one.
            self.assertGreater(len(points), 50)
            for a, b in zip(points, points[1:]):
                self.assertAlmostEqual(math.dist(a[:2], (50, 50)), 20, 5)
                middle = [(x + y) / 2 for x, y in zip(a[:2], b[:2])]
                self.assertLess(20 - math.dist(middle, (50, 50)), 0.021)

    def test_iges_curves_of_a_face_have_no_names(self):
        self.refuse('no edge or wire is called "Outline"; it has no names\n', "named.iges", "B", surface={"face": "Plate"},
                    curves=[self.curve(wire="Outline")])


class Faces(ShapesTest):
    def test_each_face_of_a_solid_points_outwards(self):
        for name in ("box.step", "box.brep"):
            faces = [line for line in self.shapes(name) if line.startswith("face ")]
            for axis, size in enumerate((100, 200, 300)):
                flat = [i for i, line in enumerate(faces) if line.split(": plane, ")[1].split()[2 * axis] == "0"]
                self.assertEqual(len(flat), 2)
                for side, sign in ((0, -1), (size, 1)):
                    boundary = [[20, 30, 40], [20, 30, 40], [20, 30, 40]]
                    boundary[1][(axis + 1) % 3] += 50
                    boundary[2][(axis + 2) % 3] += 50
                    for point in boundary:
                        point[axis] = side
                    fitting = [face for face in flat if self.job(name, boundary, surface={"face": face}).returncode == 0]
                    self.assertEqual(len(fitting), 1)
                    normal = tuple(sign if i == axis else 0 for i in range(3))
                    points = self.points(name, boundary, surface={"face": fitting[0]})
                    self.assert_points(points, boundary)
                    self.assertEqual({point[3:] for point in points}, {normal})

    def test_two_places_of_one_part_are_two_sets_of_faces(self):
        for name in ("twins.step", "twins.brep"):
            sizes = [line.split(": ")[1] for line in self.shapes(name) if line.startswith("face ")]
            self.assertEqual(len(sizes), 12)
            self.assertEqual(sizes[:6], sizes[6:])
            for first, offset in ((0, 0), (6, 500)):
                boundary = [[offset + 20, 30, 0], [offset + 70, 30, 0], [offset + 70, 90, 0]]
                flat = [face for face, size in enumerate(sizes) if size == "plane, 100 x 200 x 0 mm"]
                fitting = [face for face in flat if self.job(name, boundary, surface={"face": face}).returncode == 0]
                self.assertEqual([face // 6 for face in fitting], [first // 6])

    def test_what_lies_beside_a_trimmed_face_is_refused_with_its_distance(self):
        fault = 'expected a point at most 1 mm from the surface "Tool", found one at %s mm\n'
        for suffix in FORMATS:
            self.refuse("boundary[1]: " + fault % 20, "plate." + suffix, [[10, 10, 0], [50, 50, 0], [10, 90, 0]])
            self.refuse("boundary[1]: " + fault % 30, "plate." + suffix, [[10, 10, 0], [130, 10, 0], [10, 90, 0]])
            self.refuse("boundary[2]: " + fault % 5, "plate." + suffix, [[10, 10, 0], [90, 10, 0], [10, 90, 5]])

    def test_what_lies_a_little_beside_a_trimmed_face_goes_to_its_border(self):
        for suffix in FORMATS:
            points = self.points("plate." + suffix, [[100.5, 10, 0], [69.5, 50, 0], [-0.5, -0.5, 0.5]])
            self.assert_points(points, [[100, 10, 0], [70, 50, 0], [0, 0, 0]])

    def test_an_edge_beside_the_face_is_projected_or_refused(self):
        for suffix in FORMATS:
            self.refuse('curves[0].edge: expected a curve at most 1 mm from the surface "Tool", found one at 5 mm\n',
                        "loose." + suffix, [[100, 0, 10], [0, 100, 10], [0, 100, 90]], curves=[self.curve(edge=5)])
            self.expect(self.job("loose." + suffix, [[100, 0, 10], [0, 100, 10], [0, 100, 90]],
                                 curves=[self.curve(edge=5, limit=6)]), 0)
            # A chord, half a millimetre under the surface in its middle. Joined with nothing, so looked at as extra geometry.
            layup = self.layup("loose." + suffix, [[100, 0, 10], [0, 100, 10], [0, 100, 90]])
            text = layup.read_text(encoding="utf-8")
            chord = '{"kind": "curve", "name": "Chord", "shape": "S", "on": "Tool", "edge": 4}'
            layup.write_text(text.replace('"layups": [', '"layups": [{"kind": "extra-geometry", "name": "E", "outputs": ["3d"], '
                                          f'"children": [{chord}]}}, ', 1), encoding="utf-8")
            self.expect(self.run_tool("l.json", "--type", "virtek", "--output", "a.ply", "--no-output-rosette",
                                      "--no-use-minimize-points-tolerance"), 0)
            lines = (self.folder / "a.ply").read_text(encoding="ascii").splitlines()
            places = [tuple(map(float, line.split()[:3])) for line in lines if re.fullmatch(r"(-?[\d.]+ *){3,6}", line)]
            chord = [place for place in places if place[2] == 50]
            self.assertEqual(len(chord), 9)  # 8 chords of 0.01 mm reach round 0.2003 rad of a radius of 100
            for x, y, _ in chord:
                self.assertAlmostEqual(math.hypot(x, y), 100, 4)
            self.assertAlmostEqual(max(math.degrees(math.atan2(y, x)) for x, y, _ in chord), 2 * math.degrees(math.asin(0.1)), 4)

    def test_the_normals_of_a_reversed_face_follow(self):
        for suffix in FORMATS:
            for name, sign in (("plate", 1), ("reversed", -1)):
                for reversed_again in (False, True):
                    points = self.points(f"{name}.{suffix}", SQUARE, surface={"reversed": reversed_again})
                    self.assertEqual({point[3:] for point in points}, {(0, 0, -sign if reversed_again else sign)})


def on_cylinder(angle, height):
    return [100 * math.cos(math.radians(angle)), 100 * math.sin(math.radians(angle)), height]


def on_sphere(longitude, latitude):
    radius = math.cos(math.radians(latitude))
    x, y, _ = on_cylinder(longitude, 0)
    return [radius * x, radius * y, 100 * math.sin(math.radians(latitude))]


def on_torus(angle, tube):
    radius = 2 + 0.5 * math.cos(math.radians(tube))
    x, y, _ = on_cylinder(angle, 0)
    return [radius * x, radius * y, 50 * math.sin(math.radians(tube))]


class Seams(ShapesTest):
    def check(self, name, boundary, length, normal_at, widest):
        """A boundary across a seam: its corners as they stand, and a walk along it that never leaves its surroundings."""
        for suffix in FORMATS:
            with self.subTest(file=f"{name}.{suffix}"):
                points = self.points(f"{name}.{suffix}", boundary)
                self.assert_points(points, boundary)
                walk = self.points(f"{name}.{suffix}", boundary, more=WALK)
                self.assertGreater(len(walk), 100)
                self.assertLess(abs(length_of(walk) - length), 1e-3 * length)
                for point in walk:
                    self.assertLessEqual(abs(math.degrees(math.atan2(point[1], point[0]))), widest)
                    for found, expected in zip(point[3:], normal_at(point)):
                        self.assertAlmostEqual(found, expected, 5)

    def test_cylinder(self):
        self.check("cylinder", [on_cylinder(-20, 50), on_cylinder(20, 50), on_cylinder(20, 150), on_cylinder(-20, 150)],
                   2 * 100 + 2 * 100 * math.radians(40), lambda p: (p[0] / 100, p[1] / 100, 0), 20.001)

    def test_cylinder_with_a_corner_on_the_seam(self):
        self.check("cylinder", [on_cylinder(0, 50), on_cylinder(30, 50), on_cylinder(0, 150)],
                   100 * math.radians(30) + math.hypot(100, 100 * math.radians(30)) + 100,
                   lambda p: (p[0] / 100, p[1] / 100, 0), 30.001)

    def test_sphere(self):
        parallel = 100 * math.cos(math.radians(20)) * math.radians(40)
        self.check("sphere", [on_sphere(-20, -20), on_sphere(20, -20), on_sphere(20, 20), on_sphere(-20, 20)],
                   2 * parallel + 2 * 100 * math.radians(40), lambda p: (p[0] / 100, p[1] / 100, p[2] / 100), 20.001)

    def test_torus_across_its_outer_seam_and_both_inner_ones(self):
        def normal_at(point):
            ring = math.hypot(point[0], point[1])
            return [(coordinate - 200 * coordinate / ring) / 50 for coordinate in point[:2]] + [point[2] / 50]
        for middle in (0, 180):
            corners = [(-20, middle - 20), (20, middle - 20), (20, middle + 20), (-20, middle + 20)]
            rim = (200 + 50 * math.cos(math.radians(middle + 20))) * math.radians(40)
            self.check("torus", [on_torus(*corner) for corner in corners], 2 * rim + 2 * 50 * math.radians(40), normal_at, 20.001)

    def test_round_a_pole(self):
        for suffix in FORMATS:
            cap = [on_sphere(longitude, 60) for longitude in range(0, 360, 30)]
            self.assert_points(self.points("sphere." + suffix, cap), cap)
            corner = [on_sphere(0, 90), on_sphere(0, 45), on_sphere(90, 45)]
            self.assert_points(self.points("sphere." + suffix, corner), corner)

    def test_all_round_a_tube(self):
        for suffix in FORMATS:
            around = [on_cylinder(angle, 50) for angle in range(10, 371, 40)]
            back = [on_cylinder(angle, 150) for angle in range(370, 9, -40)]
            self.assert_points(self.points("cylinder." + suffix, around + back), around + back)
            walk = self.points("cylinder." + suffix, "B", curves=[self.curve(wire=0)], more=WALK)
            self.assertLess(abs(length_of(walk) - (2 * 200 * math.pi + 2 * 200)), 0.2)
            for point in walk:
                self.assertAlmostEqual(math.hypot(point[0], point[1]), 100, 4)

    def test_a_boundary_that_runs_back_on_itself_has_no_area(self):
        there = [on_cylinder(-30, 50), on_cylinder(0, 60), on_cylinder(30, 70)]
        for suffix in FORMATS:
            self.refuse("layups[0].S1.P1.boundary: expected a boundary with an area, found one that encloses none\n",
                        "cylinder." + suffix, there + there[1:2])


class Samples(ShapesTest):
    """The kernel's own samples: each is read, and told face by face."""

    # Some as the files themselves tell them: ADVANCED_FACE of STEP, entity 144 of IGES, "Fa" of BREP.
    FACES = {"screw.step": 10, "linkrods.step": 37, "hammer.iges": 45, "bearing.iges": 213, "wing.brep": 4, "face2.brep": 1,
             "bottle.brep": 71, "Motor-c.brep": 223}

    def setUp(self):
        if not SAMPLES.is_dir():
            self.skipTest("occt-misc is not installed")
        super().setUp()

    def find_samples(self):
        return sorted(path for path in SAMPLES.glob("*/*") if path.suffix in (".step", ".iges", ".brep", ".rle"))

    def test_each_is_told(self):
        samples = self.find_samples()
        self.assertGreaterEqual(len(samples), 40)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            results = list(pool.map(lambda path: run_limited(["shapes", path], self.folder), samples))
        for path, result in zip(samples, results):
            with self.subTest(file=path.name):
                self.expect(result, 0)
                self.assertEqual(result.stderr, "")
                lines = result.stdout.splitlines()
                self.assertRegex(lines[0], r"^format: (STEP|IGES|BREP)$")
                self.assertRegex(lines[1], r"^unit: \S+, 1 mm$")
                faces, wires, edges = map(int, re.fullmatch(r"faces: (\d+), wires: (\d+), edges: (\d+)", lines[2]).groups())
                self.assertGreater(edges, 0)
                if path.name in self.FACES:
                    self.assertEqual(faces, self.FACES[path.name])
                for kind, count in (("face", faces), ("wire", wires), ("edge", edges)):
                    places = [re.match(kind + r" (\d+)( \".*\")?: [a-z]", line) for line in lines]
                    self.assertEqual([int(place.group(1)) for place in places if place], list(range(count)))
                self.assertNotIn("can't be used", result.stdout)

    def test_a_ply_is_laid_on_one(self):
        # The flat end of the screw's head, all of it: the wire that bounds it.
        screw = SAMPLES / "step" / "screw.step"
        result = self.run_tool("shapes", screw)
        self.expect(result, 0)
        plane = re.search(r"(?m)^face (\d+): plane, (\S+) x (\S+) x (\S+) mm$", result.stdout)
        wire = re.search(rf"(?m)^wire (\d+): closed, edges: \d+, (\S+) mm, bounds face {plane.group(1)}$", result.stdout)
        points = self.points(screw, "B", surface={"face": int(plane.group(1))}, curves=[self.curve(wire=int(wire.group(1)))])
        self.assertLess(abs(length_of(points) - float(wire.group(2))), 2e-3 * float(wire.group(2)))
        self.assertEqual(len({point[3:] for point in points}), 1)
        for axis in range(3):
            size = max(point[axis] for point in points) - min(point[axis] for point in points)
            self.assertLess(abs(size - float(plane.group(2 + axis))), 0.03)


def can_limit_memory():
    """False for a program whose instruments take more address space than any limit allows."""
    return run_limited(["--version"], pathlib.Path.cwd(), 2 << 30).returncode == 0


def run_limited(arguments, folder, memory=None):
    """Runs the tool with a limit on its memory, and on its time."""
    def limit():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        if memory:
            resource.setrlimit(resource.RLIMIT_AS, (memory, memory))
    return subprocess.run([str(PROGRAM), *map(str, arguments)], cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, timeout=60, check=False, preexec_fn=limit)


class DamagedTest(ShapesTest):
    def setUp(self):
        super().setUp()
        self.memory = (2 << 30) if can_limit_memory() else None

    def sources(self, made, samples):
        """Whole files, by name."""
        paths = [self.made / name for name in made]
        if SAMPLES.is_dir():
            paths += [SAMPLES / name for name in samples]
        return {path.name: path.read_bytes() for path in paths}

    def read(self, damaged):
        """What the tool says to each of the damaged files, which are pairs of a name and bytes."""
        def run(numbered):
            number, (name, content) = numbered
            path = self.folder / f"{number}.dat"
            path.write_bytes(content)
            result = run_limited(["shapes", path.name], self.folder, self.memory)
            path.unlink()
            return name, path.name, result
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            return list(pool.map(run, enumerate(damaged)))

    def assert_one_line(self, what, name, result):
        self.assertEqual((result.returncode, result.stdout), (3, ""), what)
        self.assertTrue(result.stderr.startswith(f"error: {name}: "), f"{what}: {result.stderr}")
        self.assertEqual(result.stderr.count("\n"), 1, f"{what}: {result.stderr}")


class Cut(DamagedTest):
    def test_a_file_cut_short_is_refused_in_one_line(self):
        made = ["plate.step", "named.step", "plate.iges", "torus.iges", "plate.brep", "box.brep"]
        sources = self.sources(made, ["step/screw.step", "iges/hammer.iges", "occ/wing.brep", "occ/face2.brep"])
        cuts = []
        for name, content in sources.items():
            # The blank behind the last number of a BREP file counts; a line with a zero, which may follow, doesn't.
            end = len(re.sub(rb"(\n0)?\s*\Z", b"", content))
            pieces = 50 if name in made else 25
            # At even steps, and close to the end, where little is missing.
            lengths = [end * k // pieces for k in range(1, pieces)] + [end - k for k in (2, 3, 5, 9, 17, 80)]
            cuts += [(f"{name} cut at {length} of {end}", content[:length]) for length in lengths]
        for what, name, result in self.read(cuts):
            self.assert_one_line(what, name, result)


class Changed(DamagedTest):
    """Changed within: what comes out may still be a shape file."""

    def mutate(self, source, content):
        content = bytearray(content)
        kind = source.choice(["bytes", "digits", "letters", "hole", "lines", "swap"])
        if kind in ("bytes", "digits", "letters"):
            digits = [i for i, byte in enumerate(content) if 48 <= byte <= 57]
            for _ in range(source.randint(1, 4)):
                if kind == "digits":
                    content[source.choice(digits)] = source.randrange(48, 58)
                else:
                    content[source.randrange(len(content))] = source.randrange(256) if kind == "bytes" else source.randrange(32, 127)
        elif kind == "hole":
            start = source.randrange(len(content))
            del content[start:start + source.choice([1, 10, 100, 1000])]
        else:
            lines = bytes(content).split(b"\n")
            first, second = source.randrange(len(lines)), source.randrange(len(lines))
            if kind == "lines":
                del lines[first]
            else:
                lines[first], lines[second] = lines[second], lines[first]
            content = bytearray(b"\n".join(lines))
        return kind, bytes(content)

    def test_a_changed_file_is_told_or_refused_in_one_line(self):
        sources = self.sources(["named.step", "sphere.step", "named.iges", "cylinder.iges", "loose.brep", "torus.brep"],
                               ["step/screw.step", "occ/wing.brep", "occ/wedge_ok.brep"])
        source = random.Random(5)
        changed = []
        for name, content in sources.items():
            for number in range(30):
                kind, mutant = self.mutate(source, content)
                changed.append((f"{name}, {kind} {number}", mutant))
        refused = 0
        for what, name, result in self.read(changed):
            if result.returncode == 0:
                self.assertTrue(result.stdout.startswith("format: "), what)
                self.assertEqual(result.stderr, "", what)
            else:
                self.assert_one_line(what, name, result)
                refused += 1
        self.assertGreater(refused, len(changed) // 4)

    def test_files_that_make_the_kernel_crash_are_refused(self):
        brep = (self.made / "plate.brep").read_text(encoding="ascii")
        curves = brep.index("\nCurves ")
        line = brep.index("\n1 ", curves)
        damaged = [
            # A curve that is trimmed of one that isn't there.
            ("trimmed", brep[:line] + "\n8 " + brep[line + 3:]),
        ]
        if SAMPLES.is_dir():
            # The parameter curve of an edge becomes an entity of another kind.
            screw = (SAMPLES / "step" / "screw.step").read_text(encoding="ascii")
            wrong = screw.replace("DEFINITIONAL_REPRESENTATION('',(#791),#795)", "DEFINITIONAL_REPRESENTATION('',(#741),#795)")
            self.assertNotEqual(wrong, screw)
            damaged.append(("reference", wrong))
        for what, name, result in self.read([(what, text.encode()) for what, text in damaged]):
            self.assert_one_line(what, name, result)
            self.assertIn("the CAD kernel crashes on it, so it is likely damaged", result.stderr, what)

    def test_a_layup_file_tells_the_crash_with_its_own_place(self):
        brep = (self.made / "plate.brep").read_text(encoding="ascii")
        line = brep.index("\n1 ", brep.index("\nCurves "))
        path = self.write("crash.brep", brep[:line] + "\n8 " + brep[line + 3:])
        self.refuse(f"error: l.json:1: shapes[0].file: {path}: the CAD kernel crashes on it, so it is likely damaged\n", path, SQUARE)
        self.assertEqual(self.names(), ["crash.brep", "l.json"])


class Documents(ShapesTest):
    def test_the_commands_and_answers_are_as_told(self):
        text = (SOURCE / "docs" / "shape-files.md").read_text(encoding="utf-8")
        blocks = re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", text)
        commands = [command for language, block in blocks if language == "sh" for command in block.splitlines()]
        answers = [block for language, block in blocks if not language]
        self.assertEqual(len(commands), 1)
        words = [SOURCE / word if word.startswith("examples/") else word for word in commands[0].split()[1:]]
        result = self.run_tool(*words)
        self.expect(result, 0)
        told = iter(result.stdout.splitlines())
        for line in answers[0].splitlines():
            if line != "...":
                self.assertIn(line, told)


if __name__ == "__main__":
    main(paths=3)
