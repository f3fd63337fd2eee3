#!/usr/bin/env python3
"""make-blade-layup.py [OUTPUT]

Makes examples/blade/blade.layup.json of the plies and the tool beside it. The same input gives the same bytes.

What is made here, and isn't in the data:
- the normals of the layups point to the inside of the blade (-x), where the plies are laid and the projectors hang; a
  positive direction turns about that normal, so towards the trailing edge;
- glass_triax and glass_uni plies that are fabrics of several directions are split into one ply for each direction;
- the filler of the trailing edge is cut into three pieces at constant span;
- flat patterns: the point (y, z) of the tool goes to (z - z0, s), where s is the arc length along the cross section at z
  from the line y = 0. Lengths along each cross section and along the span are kept, shear is not; the pattern is then
  turned so that its own x axis is the ply's direction;
- seeds, targets, projectors, extra geometry.
"""

import functools
import json
import math
import pathlib
import re
import sys

FOLDER = pathlib.Path(__file__).resolve().parents[1] / "examples" / "blade"
SHAPE = "tool_ss_r30_r40.step"
Z_ROOT, Z_TIP = 35100.0, 46800.0
SEED_Y, SEED_Z = -40.0, 40950.0
SECTION_STEPS = 100  # pieces of a cross section whose chords stand for its arc
SPLIT = {"P001": (0, 45, -45), "P002": (0, -45, 45), "P031": (0, 45, -45)}


# ---- The tool ----

class Surface:
    """The one B-spline face of the tool. Its rows of control points are equally spaced in z, so z is linear in u."""

    def __init__(self, path):
        text = re.sub(r"\s+", "", path.read_text(encoding="ascii"))
        points = {number: tuple(float(c) for c in coordinates.split(","))
                  for number, coordinates in re.findall(r"#(\d+)=CARTESIAN_POINT\('',\(([^()]*,[^()]*,[^()]*)\)\)", text)}
        found = re.search(r"B_SPLINE_SURFACE_WITH_KNOTS\('',(\d+),(\d+),\(((?:\([#\d,]+\),?)+)\),[.\w]+,[.\w]+,[.\w]+,"
                          r"[.\w]+,\(([\d,]+)\),\(([\d,]+)\),\(([^()]*)\),\(([^()]*)\)", text)
        self.u_degree, self.v_degree = int(found[1]), int(found[2])
        self.rows = [[points[number] for number in re.findall(r"#(\d+)", row)]
                     for row in re.findall(r"\(([#\d,]+)\)", found[3])]
        self.u_knots, self.v_knots = (
            [float(knot) for count, knot in zip(found[counts].split(","), found[knots].split(","))
             for _ in range(int(count))] for counts, knots in ((4, 6), (5, 7)))

    @staticmethod
    def de_boor(knots, degree, controls, t):
        span = degree
        while span < len(controls) - 1 and t >= knots[span + 1]:
            span += 1
        d = [controls[span - degree + i] for i in range(degree + 1)]
        for level in range(1, degree + 1):
            for i in range(degree, level - 1, -1):
                low, high = knots[span - degree + i], knots[span + 1 + i - level]
                a = (t - low) / (high - low)
                d[i] = tuple((1.0 - a) * p + a * q for p, q in zip(d[i - 1], d[i]))
        return d[degree]

    @functools.lru_cache(maxsize=None)
    def section(self, z):
        """The control points of the cross section at z."""
        u = min(max((z - Z_ROOT) / (Z_TIP - Z_ROOT), 0.0), 1.0)
        return [self.de_boor(self.u_knots, self.u_degree, [row[j] for row in self.rows], u)
                for j in range(len(self.rows[0]))]

    def curve_point(self, section, v):
        return self.de_boor(self.v_knots, self.v_degree, section, v)

    def find_v(self, section, y):
        """Where the cross section has that y: it falls from the trailing to the leading edge."""
        low, high = 0.0, 1.0
        for _ in range(45):
            middle = 0.5 * (low + high)
            if self.curve_point(section, middle)[1] > y:
                low = middle
            else:
                high = middle
        return 0.5 * (low + high)

    def point(self, y, z, lift=0.0):
        """The point of the tool with that y and z; lift moves it off the tool, towards the inside."""
        section = self.section(z)
        v = self.find_v(section, y)
        x = self.curve_point(section, v)[0]
        return rounded((x - lift, y, z))

    def arc(self, y, z):
        """Arc length along the cross section at z from y = 0; positive towards the trailing edge."""
        section = self.section(z)
        v0, v1 = self.find_v(section, 0.0), self.find_v(section, y)
        length, last = 0.0, self.curve_point(section, v0)
        for i in range(1, SECTION_STEPS + 1):
            at = self.curve_point(section, v0 + (v1 - v0) * i / SECTION_STEPS)
            length += math.dist(at, last)
            last = at
        return math.copysign(length, y)


def rounded(point, digits=2):
    return [round(c, digits) + 0.0 for c in point]  # no negative zero


# ---- Plies ----

def develop(surface, points, direction):
    """The flat image of points of the tool, with the ply's direction as x axis."""
    a = math.radians(direction)
    flat = []
    for _, y, z in points:
        along, across = z - SEED_Z, surface.arc(y, z)
        flat.append(rounded((along * math.cos(a) + across * math.sin(a), across * math.cos(a) - along * math.sin(a))))
    return flat


def cut(surface, boundary, z_low, z_high):
    """The part of a boundary between two cross sections. The cuts follow the tool, with a point every 100 mm or so."""
    kept = []
    for bound, side in ((z_low, 1.0), (z_high, -1.0)):
        source, kept = (kept or boundary), []
        for p, q in zip(source, source[1:] + source[:1]):
            p_in, q_in = side * (p[2] - bound) >= 0.0, side * (q[2] - bound) >= 0.0
            if p_in:
                kept.append(p)
            if p_in != q_in:
                a = (bound - p[2]) / (q[2] - p[2])
                kept.append(surface.point(p[1] + a * (q[1] - p[1]), bound))
    filled = []
    for p, q in zip(kept, kept[1:] + kept[:1]):
        filled.append(p)
        if p[2] == q[2] and p[2] in (z_low, z_high):
            count = int(abs(q[1] - p[1]) // 100.0)
            filled += [surface.point(p[1] + (q[1] - p[1]) * i / (count + 1), p[2]) for i in range(1, count + 1)]
    return filled


def strategy(surface, boundary, direction, seed, with_pattern, **more):
    made = {"kind": "strategy", **more, "seedPoint": f"Seed {seed}", "seedCurve": f"Seed line {seed}"}
    if with_pattern:
        y = SEEDS[seed]
        made["flatPattern"] = {
            "contours": [{"points": develop(surface, boundary, direction)}],
            "curves": [{"points": develop(surface, seed_line(surface, y), direction), "source": f"Seed line {seed}"}],
            "points": [{"at": develop(surface, [surface.point(y, SEED_Z)], direction)[0], "source": f"Seed {seed}"}],
        }
    return made


SEEDS = {"cap": SEED_Y, "trailing edge": 1500.0, "leading edge": -1000.0, "edge strip": 2850.0}


def seed_line(surface, y):
    return [surface.point(y, z) for z in range(36400, 45501, 350)]


def seed_of(name, layer):
    if layer.startswith("TE_SS"):
        return "trailing edge"
    if layer.startswith("LE"):
        return "leading edge"
    return "edge strip" if layer.startswith("TE") else "cap"


def make_plies(surface, data, names, patterns=()):
    plies = []
    for source in (ply for ply in data["plies"] if ply["name"] in names):
        name, boundary = source["name"], source["boundary"]
        for direction in SPLIT.get(name, (source["direction_deg"],)):
            full = name if name not in SPLIT else f"{name}{direction:+d}"
            plies.append({
                "name": full, "direction": direction,
                "material": source["material"] if name not in SPLIT else f"{source['material']} {abs(direction)}",
                "boundary": boundary,
                "children": [strategy(surface, boundary, direction, seed_of(name, source["layer"]), name in patterns)],
            })
    return plies


def make_filler(surface, data):
    """The core of the trailing edge: in pieces for laying, whole for the flat output."""
    source = next(ply for ply in data["plies"] if ply["name"] == "P029")
    bounds = [Z_ROOT, 39000.0, 42900.0, Z_TIP]
    pieces = []
    for number, (low, high) in enumerate(zip(bounds, bounds[1:]), start=1):
        boundary = cut(surface, source["boundary"], low, high)
        pieces.append({
            "name": f"P029-{number}", "boundary": boundary,
            "children": [{
                "kind": "strategy", "seedPoint": f"Seed piece {number}",
                "flatPattern": {
                    "contours": [{"points": develop(surface, boundary, 0.0)}],
                    "points": [{"at": develop(surface, [surface.point(1500.0, 0.5 * (low + high))], 0.0)[0],
                                "source": f"Seed piece {number}"}]},
            }],
        })
    pieces[0]["children"].append(
        {"kind": "extra-geometry", "name": "First piece", "scope": "parent-only", "outputs": ["3d"],
         "children": [{"kind": "parameter", "type": "query", "text": "Is the web foam of %SUBPLY% dry?"}]})
    return {
        "name": "P029", "direction": 0, "material": source["material"], "boundary": source["boundary"],
        "children": [
            {"kind": "subdivision", "name": "Kit of three", "configurations": ["Laser"], "children": pieces},
            strategy(surface, source["boundary"], 0.0, "trailing edge", True, configurations=["Flat"]),
            {"kind": "extra-geometry", "name": "Butt joint", "scope": "plies-below", "outputs": ["3d"],
             "children": [{"kind": "parameter", "type": "information", "text": "Close butt joints of %PLY%"}]},
        ],
    }


# ---- The whole ----

def make(surface, data):
    name_of = [ply["name"] for ply in data["plies"]]
    stations = (35200.0, 39000.0, 43000.0, 46700.0)
    targets = []
    for number, z in enumerate(stations, start=1):
        section = surface.section(z)
        for side, v in (("TE", 0.02), ("LE", 0.93)):
            y = round(surface.curve_point(section, v)[1], 2)
            targets.append({"name": f"{side}{number}", "at": surface.point(y, z, lift=40.0)})
    targets[0]["drift"] = targets[7]["drift"] = True
    targets[0]["comment"] = "Root end of the mould, on the flange"

    points = [{"name": f"Seed {name}", "at": surface.point(y, SEED_Z), "on": "Tool"} for name, y in SEEDS.items()]
    points += [{"name": f"Seed piece {number}", "at": surface.point(1500.0, z), "on": "Tool"}
               for number, z in ((1, 37050.0), (2, 40950.0), (3, 44850.0))]
    points.append({"name": "Text anchor", "at": surface.point(600.0, 38000.0), "on": "Tool"})
    curves = [{"name": f"Seed line {name}", "points": seed_line(surface, y), "on": "Tool"} for name, y in SEEDS.items()]
    curves.append({"name": "Text line", "on": "Tool",
                   "points": [surface.point(600.0, z) for z in range(37000, 39001, 200)]})
    cross = [surface.point(y, 41000.0) for y in range(-1300, 2901, 100)]

    shell = {
        "name": "Outer skin and cap", "direction": "positive", "workpiece": "Tool", "rosette": "Rosette",
        "flatteningPlane": "Cutting table", "flatteningMode": "unturned",
        "children": [
            {"kind": "extra-geometry", "name": "Mid span", "scope": "parent-only", "outputs": ["3d"],
             "children": [{"kind": "curve", "name": "Cross section", "on": "Tool", "points": cross}]},
            {"name": "Shell_skin", "children": make_plies(surface, data, ["P001", "P002"], ["P001"])},
            {"name": "Spar_cap", "children":
                make_plies(surface, data, name_of[2:6], ["P003"])
                + [{"kind": "extra-geometry", "name": "Debulk", "scope": "plies-below", "outputs": ["3d", "flat"],
                    "children": [{"kind": "parameter", "type": "message", "text": "Debulk before %PLY%"}]},
                   {"kind": "extra-geometry", "name": "Lower cap", "scope": "until-next", "outputs": ["3d"],
                    "children": [{"kind": "parameter", "type": "literal", "text": "C lower cap"}]}]
                + make_plies(surface, data, name_of[6:12])
                + [{"kind": "extra-geometry", "name": "Upper cap", "scope": "until-next", "outputs": ["3d"],
                    "children": [{"kind": "parameter", "type": "graphic", "text": "cap.bmp"},
                                 {"kind": "curve", "name": "Datum", "line": {
                                     "from": surface.point(-40.0, 40900.0), "to": surface.point(-40.0, 41000.0)}}]}]
                + make_plies(surface, data, name_of[12:21])},
            {"name": "TE_reinforcement", "children": make_plies(surface, data, name_of[21:27], ["P022"])},
            {"name": "LE_reinforcement", "children": make_plies(surface, data, ["P028"])},
        ],
    }
    noted = make_plies(surface, data, ["P030"])
    noted[0]["children"].append(
        {"kind": "extra-geometry", "name": "Remark", "scope": "parent-only", "outputs": ["3d"],
         "children": [{"kind": "folder", "name": "Texts", "children": [
             {"kind": "parameter", "type": "note", "text": "Bevel the edge of %PLY%"},
             {"kind": "text", "name": "Ply name", "text": "%PLY% %MAT%", "size": 60, "anchor": "Text anchor",
              "support": "Tool", "along": "Text line"}]}]})
    core = {
        "name": "Core and inner skin", "direction": "positive", "workpiece": "Tool", "rosette": "Rosette",
        "flatteningPlane": "Cutting table", "flatteningMode": "by-direction",
        "children": [
            {"name": "Filler", "children": [make_filler(surface, data)] + noted},
            {"name": "Shell_skin_inner", "children": make_plies(surface, data, ["P031", "P032"], ["P031", "P032"])},
        ],
    }
    return {
        "$schema": "../../schema/layup.schema.json",
        "format": "zetlaser-layup", "version": 1, "units": "mm", "name": "Blade r30-r40 suction side",
        "projectionLimit": 1.0,
        "parameters": {"MOULD": "SS-30-40"},
        "shapes": [{"name": "Mould", "file": SHAPE}],
        "surfaces": [{"name": "Tool", "shape": "Mould", "reversed": REVERSED}],
        "curves": curves,
        "points": points,
        "axisSystems": [{"name": "Name plate", "origin": surface.point(0.0, 36000.0), "x": [0, 0, 1], "y": [0, 1, 0]}],
        "planes": [{"name": "Cutting table", "origin": [0, 0, 0], "x": [1, 0, 0], "y": [0, 1, 0]}],
        "rosettes": [{"name": "Rosette", "origin": surface.point(SEED_Y, SEED_Z), "x": [0, 0, 1], "y": [0, 1, 0]}],
        "materials": [
            {"name": "CarbonUD", "type": "UD prepreg", "id": "C-UD-600", "thickness": 5.1587,
             "packagings": [{"name": "Carbon roll", "width": 600, "length": 100000}]},
            {"name": "glass_triax", "type": "Glass triax", "id": "G-TX-1200", "thickness": 1.0},
            {"name": "glass_triax 0", "type": "Glass triax 0", "id": "G-UD-0", "thickness": 0.4},
            {"name": "glass_triax 45", "type": "Glass triax 45", "id": "G-BX-45", "thickness": 0.3},
            {"name": "glass_uni", "type": "Glass UD", "id": "G-UD-1000", "thickness": 5.0},
            {"name": "medium_density_foam", "type": "Core", "id": "F-130", "thickness": 25.0}],
        "configurations": [
            {"name": "Laser", "active": True, "use3D": True, "includeNormals": True, "skipParentPly": True,
             "seedPoint": True, "seedCurve": False, "laserExtraGeometry": True, "laserRosetteSize": 200},
            {"name": "Flat", "use3D": False, "includeNormals": False, "seedPoint": True, "seedCurve": True,
             "nestingRosette": True, "nestingRosetteSize": 150}],
        "targets": targets,
        "projectors": [
            {"name": "Projector root", "targets": ["TE1", "LE1", "TE2", "LE2", "TE3", "LE3"],
             "comment": "Hangs above station 37000"},
            {"name": "Projector tip", "targets": ["TE2", "LE2", "TE3", "LE3", "TE4", "LE4"],
             "comment": "Hangs above station 45000"}],
        "layups": [
            {"kind": "extra-geometry", "name": "Name plate", "scope": "all-plies", "outputs": ["3d"],
             "children": [
                 {"kind": "parameter", "type": "information", "text": "%PART% %MOULD%"},
                 {"kind": "parameter", "type": "information", "text": "%LAYUP% / %SEQ% / %PLY% %ORI% deg"},
                 {"kind": "text", "name": "Plate", "text": "%PLY%", "size": 80, "axis": "Name plate"}]},
            shell, core],
    }


REVERSED = True  # the face's own normal points to the outside of the blade


# ---- JSON that people can read: short arrays on one line, points several to a line ----

def dump(value, indent=0):
    pad, inner = "  " * indent, "  " * (indent + 1)
    flat = json.dumps(value, ensure_ascii=False)
    if not isinstance(value, (dict, list)) or len(flat) + 2 * indent <= 110:
        return flat
    if isinstance(value, dict):
        lines = [f"{inner}{json.dumps(key)}: {dump(item, indent + 1)}" for key, item in value.items()]
        return "{\n" + ",\n".join(lines) + f"\n{pad}}}"
    texts = [dump(item, indent + 1) for item in value]
    if any("\n" in text for text in texts) or isinstance(value[0], dict):
        return "[\n" + ",\n".join(inner + text for text in texts) + f"\n{pad}]"
    lines, line = [], ""
    for text in texts:
        if line and len(line) + len(text) + 2 + 2 * indent > 110:
            lines.append(line)
            line = ""
        line += (", " if line else "") + text
    lines.append(line)
    return "[\n" + ",\n".join(inner + text for text in lines) + f"\n{pad}]"


def main():
    output = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else FOLDER / "blade.layup.json"
    data = json.loads((FOLDER / "plies_ss_r30_r40.json").read_text(encoding="utf-8"))
    layup = make(Surface(FOLDER / SHAPE), data)
    output.write_text(dump(layup) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
