#!/usr/bin/env python3
"""Reads all DXF files below a folder with ezdxf, which knows nothing of this library.

usage: read_dxf.py FOLDER

Each file has to load, to pass the audit but for what its layout forces (see FORCED), and to hold polylines and texts
alone. Where a file NAME has NAME.expected.json beside it, its entities have to be those that it lists, in order:
    {"text": TEXT, "at": [X, Y, Z], "height": H, "layer": LAYER, "color": COLOR}
    {"points": [[X, Y, Z], ...], "closed": BOOL, "is3D": BOOL, "layer": LAYER, "color": COLOR, "lineStyle": STYLE}

Exits with 0 if all is well, with 1 and what is wrong on stdout, or with 77 if ezdxf isn't installed.
"""
import json
import pathlib
import sys

try:
    import ezdxf
    from ezdxf import recover
    from ezdxf.audit import AuditError, Auditor
except ImportError:
    print("ezdxf is not installed (Debian: python3-ezdxf), so no file was read with it")
    sys.exit(77)

# What the audit may find, and why the layout forces it. All else that one might miss is fine with it: a vertex without
# flags, an end of a sequence without a layer, layers that no table declares, a head without a version.
FORCED = {
    # A line style goes into the file as its number, and the table of line types has CONTINUOUS alone.
    AuditError.UNDEFINED_LINETYPE,
}
UNIT = 1.001e-6  # one unit of the last decimal, and what reading it as a double adds


def is_dxf(path):
    with open(path, "rb") as file:
        return file.read(12) == b"  0\nSECTION\n"


def describe(entity):
    if entity.dxftype() == "TEXT":
        return {"text": entity.dxf.text, "at": list(entity.dxf.insert), "height": entity.dxf.height,
                "layer": entity.dxf.layer, "color": entity.dxf.color}
    return {"points": [list(vertex.dxf.location) for vertex in entity.vertices],
            "closed": entity.is_closed, "is3D": entity.is_3d_polyline,
            "layer": entity.dxf.layer, "color": entity.dxf.color, "lineStyle": entity.dxf.linetype}


def is_same(found, expected):
    if isinstance(expected, dict):
        return found.keys() == expected.keys() and all(is_same(found[key], expected[key]) for key in expected)
    if isinstance(expected, list):
        return len(found) == len(expected) and all(map(is_same, found, expected))
    if isinstance(expected, float) or isinstance(found, float):
        return abs(found - expected) <= UNIT + 1e-15 * abs(expected)
    return found == expected


def check(path):
    """Yields what is wrong with the file."""
    try:
        audits = [recover.readfile(path)[1]]
        document = ezdxf.readfile(path, encoding="utf-8")  # the strict way, with the encoding that the file doesn't tell
    except (ezdxf.DXFError, UnicodeError) as error:
        yield f"not read: {error}"
        return
    entities = list(document.modelspace())
    found = [describe(entity) for entity in entities if entity.dxftype() in ("TEXT", "POLYLINE")]
    for polyline in document.modelspace().query("POLYLINE"):  # ahead of the audit, which mends it
        for vertex in polyline.vertices:
            if (vertex.dxf.layer, vertex.dxf.color) != (polyline.dxf.layer, polyline.dxf.color):
                yield "a vertex is not on the layer, or of the colour, of its polyline"
    audits.append(document.audit())
    audits.append(Auditor(document))  # line types of polylines, which the audit of this version passes over
    for entity in entities:
        audits[-1].check_entity_linetype(entity)
    for audit in audits:
        for error in audit.errors + audit.fixes:
            if error.code not in FORCED:
                yield f"audit: {error.code} {error.message}"
    for entity in entities:
        if entity.dxftype() not in ("TEXT", "POLYLINE"):
            yield f"an entity {entity.dxftype()}"
            return
    if document.header["$INSUNITS"] not in (1, 4):
        yield f"units {document.header['$INSUNITS']}"

    expectation = path.with_name(path.name + ".expected.json")
    if not expectation.exists():
        return
    expected = json.loads(expectation.read_text(encoding="utf-8"))
    if len(found) != len(expected):
        yield f"{len(found)} entities, expected {len(expected)}"
    for index, (left, right) in enumerate(zip(found, expected)):
        if not is_same(left, right):
            yield f"entity {index + 1}: found {left}, expected {right}"


def main():
    folder = pathlib.Path(sys.argv[1])
    files = [path for path in sorted(folder.rglob("*")) if path.is_file() and is_dxf(path)]
    faults = 0
    for path in files:
        for fault in check(path):
            print(f"{path.relative_to(folder)}: {fault}")
            faults += 1
    if not files:
        print(f"there is no DXF file below {folder}")
    return 0 if files and not faults else 1


sys.exit(main())
