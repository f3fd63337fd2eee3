#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenShapeFile_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <BRep_Tool.hxx>
#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

namespace
{
using Part = ZETOpenShapeFile::Part;

QString Translate(const char* text)
{
    return ZETOpenShapeFilePrivate::tr(text);
}

QString GetKind(GeomAbs_SurfaceType type)
{
    switch (type) {
    case GeomAbs_Plane:
        return Translate("plane");
    case GeomAbs_Cylinder:
        return Translate("cylinder");
    case GeomAbs_Cone:
        return Translate("cone");
    case GeomAbs_Sphere:
        return Translate("sphere");
    case GeomAbs_Torus:
        return Translate("torus");
    case GeomAbs_BezierSurface:
    case GeomAbs_BSplineSurface:
        return Translate("spline");
    case GeomAbs_SurfaceOfRevolution:
        return Translate("revolution");
    case GeomAbs_SurfaceOfExtrusion:
        return Translate("extrusion");
    case GeomAbs_OffsetSurface:
        return Translate("offset");
    case GeomAbs_OtherSurface:
        break;
    }
    return Translate("surface");
}

QString GetKind(GeomAbs_CurveType type)
{
    switch (type) {
    case GeomAbs_Line:
        return Translate("line");
    case GeomAbs_Circle:
        return Translate("circle");
    case GeomAbs_Ellipse:
        return Translate("ellipse");
    case GeomAbs_Hyperbola:
        return Translate("hyperbola");
    case GeomAbs_Parabola:
        return Translate("parabola");
    case GeomAbs_BezierCurve:
    case GeomAbs_BSplineCurve:
        return Translate("spline");
    case GeomAbs_OffsetCurve:
        return Translate("offset");
    case GeomAbs_OtherCurve:
        break;
    }
    return Translate("curve");
}

/*! The faces that each of \a shapes, which are of \a kind, bounds. */
QList<QList<int>> GetFacesOf(const TopTools_IndexedMapOfShape& shapes, TopAbs_ShapeEnum kind,
                             const TopTools_IndexedMapOfShape& faces)
{
    QList<QList<int>> facesOf(shapes.Extent());
    for (int face = 1; face <= faces.Extent(); ++face) {
        TopTools_IndexedMapOfShape own;
        TopExp::MapShapes(faces(face), kind, own);
        for (int i = 1; i <= own.Extent(); ++i)
            facesOf[shapes.FindIndex(own(i)) - 1].append(face - 1);
    }
    return facesOf;
}

/*! Has \a fill tell what is of the kind of each shape alone; what that throws is the fault of the part. */
template <typename Fill>
QList<Part> Describe(const ZETOpenShapeFilePrivate::Shapes& shapes, Fill fill)
{
    QList<Part> parts;
    for (int i = 0; i < shapes.GetCount(); ++i) {
        Part part;
        part.name = shapes.names.value(i);
        try {
            CallKernel(Translate("it can't be used"), [&] { fill(i, part); });
        } catch (const ZETSysException& exception) {
            part.fault = exception.GetMessage();
        }
        parts.append(part);
    }
    return parts;
}
} // namespace

/*! 0 for an edge that is a point. */
double ZETOpenShapeFilePrivate::GetLength(const TopoDS_Edge& edge) const
{
    if (BRep_Tool::Degenerated(edge))
        return 0.0;
    CheckReach(edge);
    return GCPnts_AbscissaPoint::Length(BRepAdaptor_Curve(edge));
}

QList<Part> ZETOpenShapeFile::DescribeFaces() const
{
    return Describe(d->faces, [this](int index, Part& part) {
        part.kind = GetKind(BRepAdaptor_Surface(TopoDS::Face(d->faces.Get(index)), false).GetType());
        part.box = GetFace(index)->GetBoundingBox();
    });
}

QList<Part> ZETOpenShapeFile::DescribeEdges() const
{
    const auto facesOf = GetFacesOf(d->edges.map, TopAbs_EDGE, d->faces.map);
    return Describe(d->edges, [&](int index, Part& part) {
        const TopoDS_Edge& edge = TopoDS::Edge(d->edges.Get(index));
        part.faces = facesOf[index];
        part.kind = BRep_Tool::Degenerated(edge) ? Translate("point") : GetKind(BRepAdaptor_Curve(edge).GetType());
        part.length = d->GetLength(edge);
    });
}

QList<Part> ZETOpenShapeFile::DescribeWires() const
{
    const auto facesOf = GetFacesOf(d->wires.map, TopAbs_WIRE, d->faces.map);
    return Describe(d->wires, [&](int index, Part& part) {
        const TopoDS_Shape& wire = d->wires.Get(index);
        part.faces = facesOf[index];
        part.kind = BRep_Tool::IsClosed(wire) ? Translate("closed") : Translate("open");
        for (TopExp_Explorer edges(wire, TopAbs_EDGE); edges.More(); edges.Next()) {
            ++part.numEdges;
            part.length += d->GetLength(TopoDS::Edge(edges.Current()));
        }
    });
}

QList<std::pair<QString, QList<int>>> ZETOpenShapeFile::GetBodies() const
{
    return d->bodies;
}
