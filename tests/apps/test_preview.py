#!/usr/bin/env python3
"""Tests of `zetlaser-job preview`: test_preview.py PROGRAM SOURCE_DIR [unittest arguments]

Those of the page steer a real browser, and are skipped, with a line that says so, where chromium isn't installed."""

import itertools
import json
import pathlib
import re
import resource
import struct
import unittest
import xml.etree.ElementTree as ElementTree

from browser import Browser, find_chromium
from tool_test import BLADE, PANEL, SOURCE, ToolTest, main

# One rectangle: 4 sides, a normal at each corner. Nothing else is asked for.
PLAIN = ["--plies", "S1/P1", "--no-output-rosette", "--no-output-extra-geometry"]
SVG = "{http://www.w3.org/2000/svg}"


class PreviewTest(ToolTest):
    def run_tool(self, *arguments, **more):
        return super().run_tool("preview", *arguments, **more)

    def preview(self, layup, *arguments):
        """Runs the tool; what it says that it showed: plies, targets, segments, markers."""
        result = self.run_tool(layup, "--output", "part", *arguments)
        self.expect(result, 0, "shown: ")
        return [int(number) for number in re.search(
            r"(?m)^shown: (\d+) plies, (\d+) targets, (\d+) segments, (\d+) markers$", result.stdout).groups()]


def count_svg(path):
    """Segments and markers of a picture, and the labels of its objects."""
    root = ElementTree.parse(path).getroot()
    segments = sum(line.get("d").count("L") for line in root.iterfind(f".//{SVG}path[@class='lines']"))
    markers = [node for node in root.iter() if node.get("class") in ("dot", "target")]
    labels = [group.get("data-label") for group in root.iterfind(f"{SVG}g[@class='object']")]
    return segments, len(markers), labels


class Pictures(PreviewTest):
    def test_a_rectangle_has_four_sides_and_four_normals(self):
        self.assertEqual(self.preview(PANEL, *PLAIN, "--formats", "svg"), [1, 4, 8, 4])
        segments, markers, labels = count_svg(self.folder / "part.svg")
        self.assertEqual((segments, markers), (8, 4))
        self.assertEqual(sorted(labels), ["Front/S1/P1: boundary", "Front/S1/P1: normals", "T2", "T3", "T4", "Target 1"])
        self.assertEqual(self.names(), ["part.svg"])

    def test_pictures_hold_the_whole_scene(self):
        for layup in (PANEL, BLADE):
            with self.subTest(layup=layup):
                _, _, segments, markers = self.preview(layup, "--formats", "svg")
                self.assertGreater(segments, 50)
                self.assertEqual(count_svg(self.folder / "part.svg")[:2], (segments, markers))

    def test_pictures_show_plies_in_the_order_of_laying(self):
        names = [ply["name"] for layup in json.loads(BLADE.read_bytes())["layups"]
                 for sequence in layup.get("children", []) for ply in sequence.get("children", [])
                 if ply.get("kind", "ply") == "ply"]
        self.assertGreater(len(names), 5)
        self.preview(BLADE, "--formats", "svg")
        labels = [label for label in count_svg(self.folder / "part.svg")[2] if label.endswith(": boundary")]
        shown = [label.removesuffix(": boundary").split("/")[2].strip() for label in labels]
        self.assertEqual([name for name, _ in itertools.groupby(shown)], names)  # sub-plies show the name of their ply

    def test_pictures_of_single_plies_add_up_to_the_whole(self):
        plies, targets, segments, markers = self.preview(PANEL, "--formats", "svg", "--ply-pictures")
        names = [name for name in self.names() if name != "part.svg"]
        self.assertEqual(names, ["part-001-P1.svg", "part-002-P2.svg", "part-003-P3_P3a.svg", "part-004-P3_P3b.svg",
                                 "part-005-P4.svg"])
        counts = [count_svg(self.folder / name) for name in names]
        self.assertEqual(sum(count[0] for count in counts), segments)
        self.assertEqual(sum(count[1] for count in counts), markers + targets * (plies - 1))
        for count, ply in zip(counts, ("S1/P1", "S1/P2", "S2/P3 / P3a", "S2/P3 / P3b", "S3/P4")):
            self.assertTrue(all(ply + ": " in label for label in count[2] if ":" in label), count[2])

    def test_pictures_tell_the_ply(self):
        self.preview(PANEL, "--formats", "svg", "--ply-pictures", "--plies", "P2")
        texts = [text.text for text in ElementTree.parse(self.folder / "part-001-P2.svg").iterfind(f".//{SVG}text")]
        self.assertIn("P2, Carbon, 45°", texts)
        self.assertIn("T3", texts)

    def test_images_have_the_size_that_was_asked_for(self):
        self.preview(PANEL, "--formats", "png", "--size", "800x600")
        head = (self.folder / "part.png").read_bytes()[:24]
        self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual(struct.unpack(">II", head[16:]), (800, 600))

    def test_the_side_is_the_one_that_plies_are_laid_from(self):
        self.assertIn("seen from: top", self.run_tool(PANEL, "--output", "a", "--formats", "svg").stdout)
        self.assertIn("seen from: bottom",
                      self.run_tool(PANEL, "--output", "b", "--formats", "svg", "--layups", "Back").stdout)
        self.assertIn("seen from: front",
                      self.run_tool(PANEL, "--output", "c", "--formats", "svg", "--side", "front").stdout)

    def test_flat_output_lies_on_no_tool(self):
        self.preview(BLADE, "--formats", "svg", "--output-type", "flat")
        root = ElementTree.parse(self.folder / "part.svg").getroot()
        self.assertIsNone(root.find(f"{SVG}g[@class='surfaces']"))
        self.assertGreater(count_svg(self.folder / "part.svg")[0], 50)

    def test_nothing_but_the_messages_goes_to_standard_error(self):
        for layup in (PANEL, BLADE):
            self.assertEqual(self.run_tool(layup, "--output", "part").stderr, "")


class Calls(PreviewTest):
    def test_help_tells_each_option(self):
        result = self.run_tool("--help")
        self.expect(result, 0, "Usage: zetlaser-job preview LAYUP --output BASE")
        for flag in ("--formats", "--[no-]ply-pictures", "--side", "--size", "--three-js"):
            self.assertIn("\n  " + flag + " ", result.stdout.replace("\n", " \n"))
        self.assertTrue(all(len(line) <= 100 for line in result.stdout.splitlines()))

    def test_wrong_calls_are_told(self):
        for arguments, text in (
                ([], "expected a layup file, found none"),
                ([PANEL], "expected the option --output, found none"),
                ([PANEL, "--output", "a", "--side", "above"], "--side: expected one of auto, top, bottom,"),
                ([PANEL, "--output", "a", "--size", "100x100"], "--size: expected a size such as 1600x1000"),
                ([PANEL, "--output", "a", "--formats", "gif"], "--formats: expected some of html, png, svg"),
                ([PANEL, "--output", "a", "--formats"], "expected a value behind --formats, found none"),
                ([PANEL, "--output", "a", "--sides=top"], "unknown option --sides, did you mean --side?"),
                ([PANEL, "--output", "a", "--formats", ","], "--formats: expected some of html, png, svg"),
                ([PANEL, "--output", "a", "--size", "10001x1000"], "--size: expected a size such as 1600x1000"),
                ([PANEL, "--output", "a", "--summary", "s.json"],
                 'error: --summary is an option of "zetlaser-job", not of "zetlaser-job preview"'),
                ([PANEL, "--output", "a", "--no-check"], '--no-check is an option of "zetlaser-job", not of '),
                ([PANEL, "--output", "a", "--units", "in"], '--units is an option of "zetlaser-job", not of '),
                ([PANEL, "--output", "a", "--max-length", "5"], "--max-length: expected --use-max-length beside it, found none"),
                ([PANEL, "--output", "a", "--formats", "html", "--ply-pictures"],
                 "--ply-pictures: expected png or svg among the formats, found html alone"),
                ([PANEL, "--output", "a", "--formats", "html", "--size", "800x600"],
                 "--size: expected png or svg among the formats, found html alone"),
                ([PANEL, "--output", "a", "--formats", "png,svg", "--three-js", "."],
                 "--three-js: expected html among the formats, found png, svg alone"),
                ([PANEL, "--output", "a", "--plies", "P9"], 'the model has no ply to output called "P9"')):
            with self.subTest(arguments=arguments):
                self.expect(self.run_tool(*arguments), 2, text)
                self.assertEqual(self.names(), [])

    def test_missing_library_is_told_ahead_of_the_job(self):
        result = self.run_tool(PANEL, "--output", "part", "--three-js", self.folder)
        self.expect(result, 5, "install Debian's package libjs-three")
        self.assertEqual(self.names(), [])

    def test_a_settings_file_may_say_how_files_are_written(self):
        self.write("set.json", {"type": "virtek", "units": "in", "summary": "s.json", "check": False, "maxLength": 5})
        self.expect(self.run_tool(PANEL, "--settings", "set.json", "--output", "part", "--formats", "svg"), 0, "shown: 5 plies")
        self.assertEqual(self.names(), ["part.svg", "set.json"])

    def test_help_names_all_options_of_a_job_that_are_taken(self):
        text = self.run_tool("--help").stdout.replace("\n", " ").partition("these options of a job that writes:")[2]
        listed = re.findall(r"--(?:\[no-\])?([a-z-]+)", text.partition(". ")[0])
        self.assertIn("plies", listed)
        flags = re.findall(r"(?m)^  --(?:\[no-\])?([a-z-]+)", ToolTest.run_tool(self, "--help").stdout.partition("\nJob:\n")[2])
        self.assertGreater(len(flags), len(listed))
        for flag in flags:
            is_refused = "is an option of" in self.run_tool(f"--{flag}").stderr
            self.assertEqual(is_refused, flag not in listed, flag)

    def test_the_reason_why_a_picture_is_not_written_is_told(self):
        limit = 4096  # bytes of a file, which no picture keeps to
        result = self.run_tool(PANEL, "--output", "part", "--formats", "png",
                               preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit)))
        self.expect(result, 4, f"can't write {self.folder}/part.png: File too large")
        self.assertEqual(self.names(), [])

    def test_the_extension_is_not_put_behind_the_name_twice(self):
        self.expect(self.run_tool(PANEL, "--output", "part.svg", "--formats", "svg"), 0)
        self.expect(self.run_tool(PANEL, "--output", "part.html", "--formats", "svg"), 0)
        self.assertEqual(self.names(), ["part.html.svg", "part.svg"])
        self.expect(self.run_tool(PANEL, "--output", ".svg", "--formats", "svg"), 2,
                    '--output: expected a file name without extension, found ".svg"\n')

    def test_missing_folder_is_told(self):
        self.expect(self.run_tool(PANEL, "--output", "none/part"), 4)

    def test_a_page_is_written_whole_and_needs_no_other_file(self):
        self.preview(PANEL, "--formats", "html")
        page = (self.folder / "part.html").read_text(encoding="utf-8")
        self.assertNotRegex(page, r"<(script|img|link|iframe)[^>]*\s(src|href)=")
        self.assertIn("Permission is hereby granted, free of charge", page)
        self.assertIn("three.js authors", page)


@unittest.skipUnless(find_chromium(), "chromium is not installed, so the page is tested in no browser")
class Page(PreviewTest):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser(pathlib.Path.cwd())
        cls.addClassCleanup(cls.browser.close)

    def open(self, layup, *arguments):
        self.shown = self.preview(layup, "--formats", "html", *arguments)
        self.browser.open(self.folder / "part.html")

    def text(self, selector):
        return self.browser.evaluate(f"document.querySelector({json.dumps(selector)}).textContent")

    def drawn(self):
        """Segments and markers that WebGL was given for the last picture."""
        self.browser.evaluate("void preview.scene.draw()")
        return tuple(self.browser.evaluate("[preview.scene.getDrawn().segments, preview.scene.getDrawn().markers]"))

    def click(self, selector):
        self.browser.evaluate(f"document.querySelector({json.dumps(selector)}).click()")

    def whole(self):
        _, targets, segments, markers = self.shown
        return segments, markers - targets  # targets aren't drawn by WebGL, but as elements with their names

    def assert_quiet(self):
        self.assertEqual(self.browser.console, [])
        self.assertEqual(self.browser.requests, ["file://" + str(self.folder / "part.html")])

    def test_each_segment_of_the_scene_is_drawn(self):
        self.open(PANEL)
        self.assertEqual(self.drawn(), self.whole())
        self.assertEqual(self.text("#ply"), "All plies")
        self.assertEqual(self.text("#part"), "Panel")
        self.assert_quiet()

    def test_a_large_part_is_drawn_whole(self):
        self.open(BLADE)
        self.assertGreater(self.whole()[0], 10000)
        self.assertEqual(self.drawn(), self.whole())
        self.assert_quiet()

    def test_keys_step_through_the_plies(self):
        self.open(PANEL)
        steps = []
        for _ in range(6):
            self.browser.press("ArrowRight")
            steps.append((self.text("#ply"), self.text("#details"), *self.drawn()))
        self.assertEqual([step[0] for step in steps], ["P1", "P2", "P3 / P3a", "P3 / P3b", "P4", "P4"])
        self.assertEqual(steps[0][1:], ("Glass (Fabric, G-300, 0.3 mm), 0°", 10, 3))  # the rosette: two axes, three dots
        self.assertEqual(steps[1][1], "Carbon (UD, C-200, 0.2 mm), 45°")
        self.assertEqual(self.text("#number"), "Ply 5 of 5 · Back · S3")
        self.assertEqual(sum(step[2] for step in steps[:5]), self.whole()[0])
        self.assertEqual(sum(step[3] for step in steps[:5]), self.whole()[1])
        for key, ply in (("ArrowLeft", "P3 / P3b"), ("Home", "P1"), ("ArrowUp", "P1"), ("ArrowDown", "P2"), ("End", "P4"),
                         ("a", "All plies")):
            self.browser.press(key)
            self.assertEqual(self.text("#ply"), ply)
        self.assertEqual(self.drawn(), self.whole())
        self.assert_quiet()

    def test_a_click_in_the_list_shows_the_ply(self):
        self.open(PANEL)
        names = self.browser.evaluate("[...document.querySelectorAll('#plies .name')].map((name) => name.textContent)")
        self.assertEqual(names, ["P1", "P2", "P3 / P3a", "P3 / P3b", "P4"])
        self.browser.evaluate("document.querySelectorAll('#plies .name')[1].click()")
        self.assertEqual(self.text("#ply"), "P2")
        self.assertEqual(self.text("#plies .current .name"), "P2")

    def test_kinds_of_lines_are_shown_and_hidden(self):
        self.open(PANEL, "--plies", "S1/P1", "--no-output-extra-geometry")
        self.assertEqual(self.drawn(), (10, 3))
        for kind, left in (("3", (6, 3)), ("2", (4, 0)), ("0", (0, 0))):  # normals, rosette, boundary
            self.click("#show-" + kind)
            self.assertEqual(self.drawn(), left)
        self.click("#show-0")
        self.assertEqual(self.drawn(), (4, 0))
        self.click("#show-surface")
        self.assertEqual(self.drawn(), (4, 0))
        self.assertFalse(self.browser.evaluate("preview.scene.surface.visible"))
        self.assert_quiet()

    def test_texts_are_shown_and_hidden(self):
        self.open(PANEL, "--plies", "P4")
        self.assertGreater(self.drawn()[0], 8)
        self.click("#show-1")
        self.assertEqual(self.drawn(), (8, 3))  # a triangle with its normals, and the rosette: two axes, three dots
        self.assert_quiet()

    def test_seed_curves_are_shown_and_hidden(self):
        without = self.preview(BLADE, "--plies", "P003", "--no-use-seed-curve", "--formats", "svg")
        self.open(BLADE, "--plies", "P003", "--use-seed-curve")
        self.assertGreater(self.shown[2], without[2])
        self.click("#show-4")
        self.assertEqual(self.drawn(), (without[2], without[3] - without[1]))
        self.assert_quiet()

    def test_the_tool_is_drawn_as_a_mesh(self):
        triangles = "(preview.scene.draw(), preview.scene.renderer.info.render.triangles)"
        self.open(BLADE, *PLAIN[2:], "--plies", "P003")
        both = self.browser.evaluate(triangles)
        self.click("#show-surface")
        self.assertGreater(both - self.browser.evaluate(triangles), 100)  # it is curved

    def test_plies_beneath_are_shown_when_asked_for(self):
        self.open(PANEL)
        self.browser.press("End")
        alone = self.drawn()
        self.assertLess(alone, self.whole())
        self.click("#show-beneath")
        self.assertEqual(self.drawn(), self.whole())
        self.browser.press("Home")
        self.assertEqual(self.drawn(), (10, 3))

    def test_targets_are_at_their_places_with_their_names(self):
        self.open(PANEL)
        marks = self.browser.evaluate("""[...document.querySelectorAll('#targets div')].map((mark) => {
            const box = mark.getBoundingClientRect(); return [mark.textContent, box.x, box.y]; })""")
        places = {name: (x, y) for name, x, y in marks}
        self.assertEqual(sorted(places), ["T2", "T3", "T4", "Target 1"])
        self.assertLess(places["Target 1"][0], places["T2"][0])  # seen from above: x to the right,
        self.assertGreater(places["Target 1"][1], places["T4"][1])  # y up
        self.assertLess(places["T4"][0], places["T3"][0])
        self.click("#show-targets")
        self.assertTrue(self.browser.evaluate("document.querySelector('#targets div').hidden"))

    def test_the_mouse_rotates_and_zooms(self):
        self.open(PANEL)
        place = "preview.scene.camera.position.toArray()"
        distance = "preview.scene.camera.position.distanceTo(preview.scene.controls.target)"
        before, far = self.browser.evaluate(place), self.browser.evaluate(distance)
        self.browser.mouse("mousePressed", 700, 400, button="left", clickCount=1)
        self.browser.mouse("mouseMoved", 800, 300, button="left", buttons=1)
        self.browser.mouse("mouseReleased", 800, 300, button="left", clickCount=1)
        self.assertNotEqual(self.browser.evaluate(place), before)
        self.assertAlmostEqual(self.browser.evaluate(distance), far, places=3)
        self.browser.mouse("mouseWheel", 700, 400, deltaX=0, deltaY=-300)
        self.assertLess(self.browser.evaluate(distance), 0.99 * far)
        self.browser.press("r")
        for now, then in zip(self.browser.evaluate(place), before):
            self.assertAlmostEqual(now, then, delta=1e-6 * far)
        self.assert_quiet()

    def test_something_green_is_on_the_screen(self):
        """Counts alone would also hold for lines of no width, or of the width of the window."""
        self.open(PANEL, *PLAIN)
        share = """(() => { preview.scene.draw();
            const gl = preview.scene.renderer.getContext(), pixels = new Uint8Array(4 * gl.drawingBufferWidth * gl.drawingBufferHeight);
            gl.readPixels(0, 0, gl.drawingBufferWidth, gl.drawingBufferHeight, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
            let green = 0;
            for (let i = 0; i < pixels.length; i += 4) green += pixels[i] < 60 && pixels[i + 1] > 200 && pixels[i + 2] < 60;
            return green / pixels.length * 4; })()"""
        self.assertGreater(self.browser.evaluate(share), 0.0005)
        self.assertLess(self.browser.evaluate(share), 0.02)

    def test_names_are_shown_and_not_run(self):
        layup = json.loads(PANEL.read_text(encoding="utf-8"))
        odd = "</script><script>document.title='run'</script><b>& %1 \u2028'\""
        layup["name"] = odd
        layup["layups"][1]["children"][0]["children"][0]["name"] = odd
        layup["targets"][1]["name"] = layup["projectors"][0]["targets"][1] = layup["projectors"][1]["targets"][0] = odd
        path = self.folder / "odd.layup.json"
        path.write_text(json.dumps(layup), encoding="utf-8")
        self.open(path, "--no-output-extra-geometry")
        self.browser.press("ArrowRight")
        for selector in ("#part", "#ply", "#plies .current .name", "title"):
            self.assertEqual(self.text(selector), odd)
        self.assertIn(odd, self.browser.evaluate(
            "[...document.querySelectorAll('#targets span')].map((mark) => mark.textContent)"))
        self.assert_quiet()

    def test_a_browser_without_3d_graphics_says_so(self):
        self.preview(PANEL, "--formats", "html")
        with Browser(self.folder, "--disable-3d-apis") as browser:
            browser.open(self.folder / "part.html")
            problem = browser.evaluate("document.getElementById('problem').innerText")
            self.assertEqual(problem, "This browser can't show 3D graphics (WebGL).")
            self.assertNotEqual(browser.console, [])  # and what failed is in the console


if __name__ == "__main__":
    main()
