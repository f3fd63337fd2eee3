#!/usr/bin/env python3
"""`zetlaser-job check` on the files that zetlaser-job writes of the examples: test_check_formats.py PROGRAM SOURCE_DIR
[unittest arguments]"""

import json
import random

import json_schema
from tool_test import BLADE, EXTENSIONS, PANEL, SOURCE, ToolTest, main

SCHEMA = json.loads((SOURCE / "schema" / "check.schema.json").read_text(encoding="utf-8"))
# The types with geometry, without the makes whose files are the same to the byte.
FORMATS = ["virtek", "lap", "assembly-guidance", "lpt", "sl", "general-scanning", "quilmon", "dxf"]
# Those with a file for the targets beside the part file.
WITH_COMPANION = ["virtek", "lap", "lpt", "faro", "sl"]
# The type that `check --json` names a file by: the first of those that share a format.
READ_AS = {"aligned-vision": "assembly-guidance", "faro": "lpt", "quilmon": "general-scanning"}
VARIANTS = {"plain": [], "inches": ["--units=in"], "no-normals": ["--no-include-normal-vectors"],
            "rosette-first": ["--output-rosette", "--rosette-before-ply-geometry", "--use-seed-curve"],
            "not-nested": ["--no-nest-sequences-within-layup"], "not-thinned": ["--no-use-minimize-points-tolerance"]}


class FormatsTest(ToolTest):
    def write_files(self, layup, kind, name, *options):
        """The names of the files that the tool writes, without the report."""
        before = set(self.folder.iterdir())
        result = self.run_tool(layup, "--type", kind, "--output", f"{name}.{EXTENSIONS[kind]}", *options)
        self.assertEqual(result.returncode, 0, result.stderr)
        return sorted(path.name for path in set(self.folder.iterdir()) - before if not path.name.endswith(".htm"))

    def read(self, *arguments):
        """What check tells, by file."""
        told = json.loads(self.run_tool("check", "--json", *arguments).stdout)
        json_schema.check(told, SCHEMA, "check --json")
        return {document["file"]: document for document in told["files"]}

    def expect_good(self, names, kind, *options):
        documents = self.read(*names, *options)
        self.assertEqual(sorted(documents), sorted(names))
        for name in names:
            findings = documents[name]["findings"]
            if kind.startswith("apt"):  # the format isn't supported, so nothing of the part is in the file
                findings = [finding for finding in findings if finding["text"] != "the file holds no ply"]
            self.assertEqual(findings, [], name)
        return documents


class Written(FormatsTest):
    def test_the_panel_in_each_type_and_variant_is_good(self):
        for kind in EXTENSIONS:
            for variant, options in VARIANTS.items():
                with self.subTest(kind=kind, variant=variant):
                    names = self.write_files(PANEL, kind, f"{kind}-{variant}", *options)
                    # Most formats don't tell their unit.
                    units = [option for option in options if option.startswith("--units")]
                    documents = self.expect_good(names, kind, *units)
                    part = documents[f"{kind}-{variant}.{EXTENSIONS[kind]}"]
                    self.assertEqual(part["type"], READ_AS.get(kind, kind))
                    if kind.startswith("apt"):
                        continue
                    self.assertGreaterEqual(part["curves"], 6)
                    with_normals = sum(ply["pointsWithNormal"] for ply in part["plies"])
                    self.assertEqual(with_normals > 0, variant != "no-normals" and kind != "dxf")
                    self.assertEqual(len(names), 2 if kind in WITH_COMPANION else 1)


class Blade(FormatsTest):
    def test_the_blade_in_each_type_is_good_and_of_one_size(self):
        sizes = set()
        for kind in FORMATS:
            with self.subTest(kind=kind):
                documents = self.expect_good(self.write_files(BLADE, kind, kind), kind)
                part = documents[f"{kind}.{EXTENSIONS[kind]}"]
                self.assertGreater(part["points"], 9000)
                # LAP has a group for each of the 41 curves of extra geometry too, and DXF has no groups at all.
                names = [ply["name"] for ply in part["plies"] if "name" in ply]
                self.assertEqual(len(names), {"lap": 81, "dxf": 0}.get(kind, 40))
                sizes.add(tuple(round(side) for side in part["size"]))
        self.assertEqual(len(sizes), 1)


class Flat(FormatsTest):
    def test_flat_patterns_are_good(self):
        for kind in FORMATS:
            with self.subTest(kind=kind):
                self.expect_good(self.write_files(BLADE, kind, kind, "--output-type=flat"), kind)


class Nesting(FormatsTest):
    def test_nesting_data_are_good(self):
        for units in ("mm", "in"):
            for output in ("nesting", "nesting-embedded"):
                with self.subTest(units=units, output=output):
                    name = f"{output}-{units}"
                    documents = self.expect_good(
                        self.write_files(BLADE, "quilmon", name, f"--output-type={output}", f"--units={units}"), "quilmon")
                    self.assertEqual(documents[f"{name}.CPD"]["unit"], units)
                    self.assertEqual(len(documents[f"{name}.CPD"]["plies"]), 12)

    def test_each_file_of_dxf_is_good_in_each_mode(self):
        for units in ("mm", "in"):
            for mode, count in (("single", 1), ("per-material", 6), ("per-ply", 12)):
                with self.subTest(units=units, mode=mode):
                    names = self.write_files(BLADE, "dxf", f"{mode}-{units}", "--output-type=nesting",
                                             f"--dxf-file-mode={mode}", f"--units={units}")
                    self.assertEqual(len(names), count)
                    for document in self.expect_good(names, "dxf").values():
                        self.assertEqual(document["unit"], units)


class LineEnds(FormatsTest):
    def test_other_line_ends_are_one_warning_of_each_file(self):
        for kind in [*FORMATS, "apt"]:
            for name in self.write_files(PANEL, kind, kind):
                with self.subTest(name=name):
                    before = self.read(name)[name]
                    (self.folder / name).write_bytes((self.folder / name).read_bytes().replace(b"\n", b"\r\n"))
                    after = self.read(name)[name]
                    before["findings"].append(
                        {"severity": "warning", "text": "expected lines that end with LF, found CR LF"})
                    self.assertEqual(after, before)

    def test_a_name_with_a_line_end_is_told_once(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][1]["children"][0]["children"][0]["name"] = "P\n1"
        self.write("panel.json", layup)
        # Assembly Guidance takes the second line for the user's own record, and DXF shows no names of plies.
        for kind in sorted(set(FORMATS) - {"assembly-guidance", "dxf"}):
            with self.subTest(kind=kind):
                name = f"{kind}.{EXTENSIONS[kind]}"
                self.write_files(self.folder / "panel.json", kind, kind)
                first, *others = self.read(name)[name]["findings"]
                if kind == "lpt":
                    self.assertIn("has a line end in it", first["text"])
                    self.assertEqual(others, [])
                    continue
                self.assertEqual(first["severity"], "error")
                self.assertEqual([finding["text"].rpartition(":")[0] for finding in others],
                                 [f"further errors, which may come from that in line {first['line']}"])


class Model(FormatsTest):
    """Each file is the one that the model gives, when check is told what the job was told."""

    def expect_same(self, layup, kind, name, *options):
        names = self.write_files(layup, kind, name, *options)
        for document in self.expect_good(names, kind, "--layup", layup, *options).values():
            self.assertEqual(document["compared"], "everything")
            self.assertNotIn("difference", document)
        return names

    def test_the_panel_in_each_type_and_variant_is_that_of_the_model(self):
        for kind in EXTENSIONS:
            for variant, options in VARIANTS.items():
                with self.subTest(kind=kind, variant=variant):
                    self.expect_same(PANEL, kind, f"{kind}-{variant}", *options)

    def test_files_for_nesting_are_those_of_the_model(self):
        self.expect_same(BLADE, "quilmon", "nesting", "--output-type=nesting")
        for mode, count in (("single", 1), ("per-material", 6), ("per-ply", 12)):
            with self.subTest(mode=mode):
                self.assertEqual(len(self.expect_same(BLADE, "dxf", f"{mode}__b", "--output-type=nesting",
                                                      f"--dxf-file-mode={mode}")), count)

    def test_a_ply_that_is_left_out_is_told_in_each_type(self):
        for kind in FORMATS:
            with self.subTest(kind=kind):
                name = self.write_files(PANEL, kind, kind, "--plies=P1,P3,P4")[-1]
                result = self.run_tool("check", "--quiet", f"{kind}.{EXTENSIONS[kind]}", "--layup", PANEL)
                self.assertEqual(result.returncode, 1, result.stderr)
                told = "a boundary of the ply is missing" if kind == "dxf" else \
                    "the ply is missing here, it is number 2 in the model"
                self.assertRegex(result.stdout, rf"\A{kind}\S+ warning: ply P2: {told}\n\Z", name)

    def test_plies_in_another_order_are_told_in_each_type(self):
        layup = json.loads(PANEL.read_text())
        layup["layups"][1]["children"][0]["children"].reverse()
        self.write("other.json", layup)
        for kind in FORMATS:
            with self.subTest(kind=kind):
                self.write_files("other.json", kind, kind)
                result = self.run_tool("check", "--quiet", f"{kind}.{EXTENSIONS[kind]}", "--layup", PANEL)
                self.assertEqual(result.returncode, 1, result.stderr)
                told = "a boundary of the ply comes at another place than in the model" if kind == "dxf" else \
                    "the ply is number 2 in the file, and number 1 in the model"
                self.assertRegex(result.stdout, rf"\A{kind}\S+ warning: ply P1: {told}\n\Z")


class Cut(FormatsTest):
    def test_each_cut_is_found(self):
        names = {}
        for kind in [*FORMATS, "apt"]:
            for name in self.write_files(PANEL, kind, kind):
                names[name] = self.read(name)[name]["type"]
        for name in self.write_files(BLADE, "quilmon", "nesting", "--output-type=nesting", "--plies=P029,P003"):
            names[name] = "quilmon"
        self.assertEqual(len(names), 14)
        for name, kind in names.items():
            with self.subTest(name=name):
                lines = (self.folder / name).read_bytes().splitlines(keepends=True)
                cuts = [f"cut-{count}" for count in range(len(lines))]
                for count, cut in enumerate(cuts):
                    (self.folder / cut).write_bytes(b"".join(lines[:count]))
                documents = self.read("--type", kind, *cuts)
                self.assertEqual(sorted(documents), sorted(cuts))
                good = [cut for cut, document in documents.items()
                        if "error" not in document
                        and not any(finding["severity"] == "error" for finding in document["findings"])]
                # What is known at the end of a ply only isn't told of one without an end.
                told = [finding["text"] for document in documents.values() for finding in document.get("findings", [])]
                self.assertEqual([text for text in told if "plies so far" in text], [])
                # Nothing ends a calibration file, so one that ends behind the first projector, of four targets, is whole.
                self.assertEqual(good, ["cut-5"] if kind == "calibration" else [])

    def test_cuts_within_a_line_are_found(self):
        for kind in [*FORMATS, "apt"]:
            with self.subTest(kind=kind):
                name = self.write_files(PANEL, kind, kind)[-1]
                content = (self.folder / name).read_bytes()
                cuts = {f"cut-{size}": size for size in range(1, len(content), max(1, len(content) // 300))}
                cuts["cut-end"] = len(content) - 1
                for cut, size in cuts.items():
                    (self.folder / cut).write_bytes(content[:size])
                documents = self.read("--type", kind, *cuts)
                for cut, document in documents.items():
                    self.assertTrue("error" in document or document["findings"], cut)


class Changed(FormatsTest):
    def test_files_with_random_bytes_are_told(self):
        source = random.Random(7)
        for kind in [*FORMATS, "apt"]:
            for name in self.write_files(PANEL, kind, kind):
                with self.subTest(name=name):
                    type_name = self.read(name)[name]["type"]
                    content = (self.folder / name).read_bytes()
                    for count in range(25):
                        changed = bytearray(content)
                        for _ in range(1 + count % 5):
                            begin = source.randrange(len(changed))
                            end = begin + source.choice((0, 1, 1, 40))
                            changed[begin:end] = source.choice((b"", b"9" * 400, bytes([source.randrange(256)]), changed[end:end + 40]))
                        (self.folder / f"changed-{count}").write_bytes(changed)
                    names = [f"changed-{count}" for count in range(25)]
                    documents = self.read("--type", type_name, *names)
                    self.assertEqual(sorted(documents), sorted(names))
                    told = [document for document in documents.values() if "error" in document or document["findings"]]
                    self.assertGreater(len(told), 12)  # a digit that is another one can't be seen
                    result = self.run_tool("check", "--quiet", "--type", type_name, *names)
                    self.assertIn(result.returncode, (1, 2))
                    for line in result.stdout.split("\n")[:-1]:
                        self.assertRegex(line, r"\Achanged-\d+(:\d+)?: (error|warning): [^\x00-\x1f]+\Z")
                    for line in result.stderr.split("\n")[:-1]:
                        self.assertRegex(line, r"\Aerror: can't read changed-\d+: [^\x00-\x1f]+\Z")


if __name__ == "__main__":
    main()
