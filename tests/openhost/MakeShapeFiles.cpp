// Writes the shape files that the tests of zetlaser-job read, into the current folder: make-shape-files

#include "tests/openhost/TestShapes.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

#include <QString>

#include <cstdio>

namespace
{
using TestShapes::MakeCompound;
using TestShapes::MakePlate;
using TestShapes::MakeQuarter;

/*! The first face, edge or wire, counted from 0. */
TopoDS_Shape GetPart(const TopoDS_Shape& shape, TopAbs_ShapeEnum kind, int index = 0)
{
    TopTools_IndexedMapOfShape parts;
    TopExp::MapShapes(shape, kind, parts);
    return parts(index + 1);
}

/*! "name.step", "name.iges" and "name.brep". */
bool WriteAll(const TopoDS_Shape& shape, const QByteArray& name)
{
    return TestShapes::WriteStep(shape, (name + ".step").constData()) &&
           TestShapes::WriteIges(shape, (name + ".iges").constData()) &&
           TestShapes::WriteBrep(shape, (name + ".brep").constData());
}

/*! The plate in each unit: the same size, in other numbers. */
bool WriteUnits()
{
    const TopoDS_Face plate = MakePlate();
    return TestShapes::WriteStep(plate, "plate-in.step", "INCH") && TestShapes::WriteStep(plate, "plate-m.step", "M") &&
           TestShapes::WriteIges(plate, "plate-in.iges", "INCH") && TestShapes::WriteIges(plate, "plate-m.iges", "M");
}

/*! Two faces; on the plate the wire of its outline, that of the hole, and one edge have names. */
bool WriteNames()
{
    const TopoDS_Face plate = MakePlate();
    const TopoDS_Face quarter = MakeQuarter();
    const TestShapes::Names names{{plate, "Plate"},
                                  {quarter, "Quarter"},
                                  {GetPart(plate, TopAbs_WIRE, 0), "Outline"},
                                  {GetPart(plate, TopAbs_WIRE, 1), "Hole"},
                                  {GetPart(plate, TopAbs_EDGE, 0), "Side"}};
    const TopoDS_Compound both = MakeCompound({plate, quarter});
    return TestShapes::WriteNamedStep(both, "named.step", names) &&
           TestShapes::WriteNamedIges(both, "named.iges", names);
}

/*! Faces that close in themselves, without the flat faces at the ends of the cylinder. */
bool WriteClosed()
{
    const auto getFace = [](const TopoDS_Shape& shape) { return GetPart(shape, TopAbs_FACE); };
    return WriteAll(getFace(BRepPrimAPI_MakeCylinder(100.0, 200.0).Shape()), "cylinder") &&
           WriteAll(getFace(BRepPrimAPI_MakeSphere(100.0).Shape()), "sphere") &&
           WriteAll(getFace(BRepPrimAPI_MakeTorus(200.0, 50.0).Shape()), "torus");
}

/*! The quarter, and beside its four edges: 4 a chord half a millimetre under it in its middle, 5 a line 5 mm off. */
bool WriteLooseEdges()
{
    const double far = 105.0;
    const gp_Pnt start(100.0, 0.0, 50.0);
    // A chord of length 20 has its middle 0.5 mm under a circle of radius 100.
    const gp_Pnt end(98.0, 19.8997487421324, 50.0);
    return WriteAll(MakeCompound({MakeQuarter(), BRepBuilderAPI_MakeEdge(start, end),
                                  BRepBuilderAPI_MakeEdge(gp_Pnt(far, 0.0, 50.0), gp_Pnt(far, 0.0, 150.0))}),
                    "loose");
}

bool WriteFiles()
{
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 200.0, 300.0).Solid();
    gp_Trsf aside;
    aside.SetTranslation(gp_Vec(500.0, 0.0, 0.0));
    return WriteAll(MakePlate(), "plate") && WriteUnits() && WriteNames() &&
           WriteAll(MakePlate().Reversed(), "reversed") && WriteClosed() && WriteAll(box, "box") &&
           WriteAll(MakeCompound({box, box.Moved(aside)}), "twins") && WriteLooseEdges();
}
} // namespace

int main()
{
    TestShapes::SilenceKernel();
    try {
        if (WriteFiles())
            return 0;
        std::fputs("make-shape-files: a file can't be written\n", stderr);
    } catch (const Standard_Failure& failure) {
        std::fprintf(stderr, "make-shape-files: %s\n", failure.GetMessageString());
    }
    return 1;
}
