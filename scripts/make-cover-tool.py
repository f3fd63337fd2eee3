#!/usr/bin/env python3
"""make-cover-tool.py [OUTPUT]

Makes examples/cover/cover.step: a tool as a CAD system exports it for a ply list, with names on what plies are cut to. It
gives the same bytes each time.

The tool is a piece of a cylinder of radius 800 mm about an axis along x, 600 mm long and 40 degrees wide, with its top at the
origin and its normal upwards. The face is called "Skin", the wire round it "Outline". On it lie the boundaries of plies, each
a closed wire of two lines along the cylinder and two arcs across it, and a centre line, which is open."""

import math
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parents[1] / "examples" / "cover"
RADIUS = 800.0
# x and angle (degrees) of two corners that lie across from one another.
FACE = (-300, -20, 300, 20)
PLIES = {"Base": (-280, -18, 280, 18), "Strip": (-280, -4, 280, 4),
         "Patch left": (-250, -15, -100, 15), "Patch right": (100, -15, 250, 15)}


class Step:
    """The entities of a STEP file; what adds one gives its reference."""

    def __init__(self):
        self.entities = []

    def add(self, text):
        self.entities.append(text)
        return f"#{len(self.entities)}"

    def vector(self, kind, numbers):
        return self.add(f"{kind}('',({','.join(real(number) for number in numbers)}))")

    def point(self, place):
        return self.vector("CARTESIAN_POINT", place)

    def placement(self, origin, z, x):
        directions = ",".join(self.vector("DIRECTION", direction) for direction in (z, x))
        return self.add(f"AXIS2_PLACEMENT_3D('',{self.point(origin)},{directions})")

    def line(self, start, end):
        """A line whose parameter is the distance from its start."""
        length = math.dist(start, end)
        direction = self.vector("DIRECTION", [(b - a) / length for a, b in zip(start, end)])
        vector = self.add(f"VECTOR('',{direction},1.)")
        return self.add(f"LINE('',{self.point(start)},{vector})")

    def round(self, kind, x):
        """A circle across the cylinder at x, or the cylinder itself: the angle turns from z to y."""
        return self.add(f"{kind}('',{self.placement((x, 0, -RADIUS), (-1, 0, 0), (0, 0, 1))},{real(RADIUS)})")

    def trimmed(self, name, curve, start, end):
        forward = ".T." if start < end else ".F."
        ends = ",".join(f"(PARAMETER_VALUE({real(parameter)}))" for parameter in (start, end))
        return self.add(f"TRIMMED_CURVE('{name}',{curve},{ends},{forward},.PARAMETER.)")


def real(number):
    return f"{number + 0.0:.9f}"


def join(references):
    return f"({','.join(references)})"


def on_tool(x, angle):
    return (x, RADIUS * math.sin(math.radians(angle)), RADIUS * math.cos(math.radians(angle)) - RADIUS)


def add_face(step, x0, angle0, x1, angle1):
    corners = [on_tool(x0, angle0), on_tool(x1, angle0), on_tool(x1, angle1), on_tool(x0, angle1)]
    vertices = [step.add(f"VERTEX_POINT('',{step.point(corner)})") for corner in corners]
    sides = [(step.line(corners[0], corners[1]), ".T."), (step.round("CIRCLE", x1), ".T."),
             (step.line(corners[2], corners[3]), ".T."), (step.round("CIRCLE", x0), ".F.")]
    edges = [step.add(f"EDGE_CURVE('',{vertices[i]},{vertices[(i + 1) % 4]},{curve},{sense})")
             for i, (curve, sense) in enumerate(sides)]
    loop = step.add(f"EDGE_LOOP('Outline',{join(step.add(f'''ORIENTED_EDGE('',*,*,{edge},.T.)''') for edge in edges)})")
    bound = step.add(f"FACE_OUTER_BOUND('',{loop},.T.)")
    face = step.add(f"ADVANCED_FACE('Skin',({bound}),{step.round('CYLINDRICAL_SURFACE', 0)},.T.)")
    return step.add(f"SHELL_BASED_SURFACE_MODEL('',({step.add(f'''OPEN_SHELL('',({face}))''')}))")


def add_boundary(step, name, x0, angle0, x1, angle1):
    def line(start_x, end_x, angle):
        start, end = on_tool(start_x, angle), on_tool(end_x, angle)
        return step.trimmed("", step.line(start, end), 0.0, math.dist(start, end))

    def arc(x, start, end):
        return step.trimmed("", step.round("CIRCLE", x), math.radians(start), math.radians(end))

    sides = [line(x0, x1, angle0), arc(x1, angle0, angle1), line(x1, x0, angle1), arc(x0, angle1, angle0)]
    segments = join(step.add(f"COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,{side})") for side in sides)
    return step.add(f"COMPOSITE_CURVE('{name}',{segments},.F.)")


def add_curves(step):
    curves = [add_boundary(step, name, *corners) for name, corners in PLIES.items()]
    start, end = on_tool(-280, 0), on_tool(280, 0)
    curves.append(step.trimmed("Centre line", step.line(start, end), 0.0, math.dist(start, end)))
    return step.add(f"GEOMETRIC_CURVE_SET('Plies',{join(curves)})")


def add_context(step):
    length = step.add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))")
    angle = step.add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))")
    solid_angle = step.add("(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())")
    uncertainty = step.add(f"UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-5),{length},'distance_accuracy_value','')")
    return step.add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)"
                    f"GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT(({uncertainty}))"
                    f"GLOBAL_UNIT_ASSIGNED_CONTEXT(({length},{angle},{solid_angle}))REPRESENTATION_CONTEXT('',''))")


def add_product(step, shape, curves):
    application = step.add("APPLICATION_CONTEXT('core data for automotive mechanical design processes')")
    step.add(f"APPLICATION_PROTOCOL_DEFINITION('international standard','automotive_design',2000,{application})")
    product_context = step.add(f"PRODUCT_CONTEXT('',{application},'mechanical')")
    product = step.add(f"PRODUCT('cover','cover','',({product_context}))")
    formation = step.add(f"PRODUCT_DEFINITION_FORMATION('','',{product})")
    definition_context = step.add(f"PRODUCT_DEFINITION_CONTEXT('part definition',{application},'design')")
    definition = step.add(f"PRODUCT_DEFINITION('design','',{formation},{definition_context})")
    definition_shape = step.add(f"PRODUCT_DEFINITION_SHAPE('','',{definition})")
    step.add(f"SHAPE_DEFINITION_REPRESENTATION({definition_shape},{shape})")
    step.add(f"SHAPE_REPRESENTATION_RELATIONSHIP('','',{shape},{curves})")


def make():
    step = Step()
    context = add_context(step)
    axes = step.placement((0, 0, 0), (0, 0, 1), (1, 0, 0))
    shape = step.add(f"MANIFOLD_SURFACE_SHAPE_REPRESENTATION('',({axes},{add_face(step, *FACE)}),{context})")
    curves = step.add(f"GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION('',({axes},{add_curves(step)}),{context})")
    add_product(step, shape, curves)
    entities = "".join(f"#{number}={text};\n" for number, text in enumerate(step.entities, 1))
    return ("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
            "FILE_NAME('cover.step','',(''),(''),'','','');\n"
            "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\n"
            f"DATA;\n{entities}ENDSEC;\nEND-ISO-10303-21;\n")


if __name__ == "__main__":
    output = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else FOLDER / "cover.step"
    output.write_text(make(), encoding="ascii")
