#include "openhost/ZETGeometry/ZETOpenShapeFile_p.h"

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenEdgeProjection_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <Bnd_Box.hxx>
#include <BRep_Tool.hxx>
#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <ShapeAnalysis_FreeBounds.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopTools_HSequenceOfShape.hxx>

#include <algorithm>
#include <cmath>

QList<int> ZETOpenShapeFilePrivate::Shapes::Find(const QString& name) const
{
    QList<int> found;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (!name.isEmpty() && names[i] == name)
            found.append(int(i));
    }
    return found;
}

QStringList ZETOpenShapeFilePrivate::Shapes::GetDistinctNames() const
{
    QStringList distinct = names;
    distinct.removeAll(QString());
    distinct.removeDuplicates();
    return distinct;
}

void ZETOpenShapeFilePrivate::Fail(const QString& text) const
{
    throw ZETSysException(QStringLiteral("%1: %2").arg(path, text));
}

/*! What the shapes, which come in mm of the declared unit, are multiplied with. */
double ZETOpenShapeFilePrivate::GetFactor(const ZETOpenShapeContent& content, std::optional<double> scale) const
{
    if (!std::isfinite(content.unit) || content.unit < 0.0)
        Fail(tr("%1 mm is no unit of length").arg(content.unit));
    if (!scale && content.unit == 0.0)
        Fail(tr("the file declares no unit of length, so it needs a scale"));
    if (scale && content.hasOtherUnits)
        Fail(tr("the file has shapes in several units, so it can't have one scale"));
    return scale && content.unit > 0.0 ? *scale / content.unit : scale.value_or(1.0);
}

void ZETOpenShapeFilePrivate::SetShapes(const ZETOpenShapeContent& content, double factor)
{
    TopoDS_Shape shape = content.shape;
    if (factor != 1.0) {
        gp_Trsf scaling;
        scaling.SetScaleFactor(factor);
        shape = BRepBuilderAPI_Transform(shape, scaling, true).Shape();
    }
    // A scaled shape has the same structure, so its parts come in the same order as their names.
    const auto fill = [&shape](Shapes& shapes, TopAbs_ShapeEnum kind, const QStringList& names) {
        TopExp::MapShapes(shape, kind, shapes.map);
        shapes.names = names;
    };
    fill(faces, TopAbs_FACE, content.faceNames);
    fill(edges, TopAbs_EDGE, content.edgeNames);
    fill(wires, TopAbs_WIRE, content.wireNames);
    bodies = content.bodies;
}

/*! The faces of that name, else those of the bodies of that name. */
QList<int> ZETOpenShapeFilePrivate::FindFaces(const QString& name) const
{
    const QList<int> named = faces.Find(name);
    if (!named.isEmpty() || name.isEmpty())
        return named;
    QList<int> found;
    for (const auto& [body, indices] : bodies) {
        if (body == name)
            found.append(indices);
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

QString ZETOpenShapeFilePrivate::ListNames(const QStringList& names) const
{
    constexpr int most = 20;
    if (names.isEmpty())
        return tr("it has no names");
    const QString list = names.first(std::min(most, int(names.size()))).join(QStringLiteral(", "));
    return names.size() > most ? tr("its names are %1 and %2 more").arg(list, QString::number(names.size() - most))
                               : tr("its names are %1").arg(list);
}

/*! Refuses what lies out of any workshop, which a digit too many or a wrong unit gives: the kernel's searches would
 *  take hours for it. */
void ZETOpenShapeFilePrivate::CheckReach(const TopoDS_Shape& part) const
{
    constexpr double farthest = 1e7; // mm
    Bnd_Box box;
    BRepBndLib::Add(part, box, false);
    if (box.IsVoid())
        return;
    if (box.IsOpen())
        Fail(part.ShapeType() == TopAbs_FACE ? tr("the face has no bounds") : tr("the edge has no bounds"));
    double reach = 0.0;
    for (const gp_Pnt& corner : {box.CornerMin(), box.CornerMax()})
        reach = std::max({reach, std::abs(corner.X()), std::abs(corner.Y()), std::abs(corner.Z())});
    if (reach > farthest)
        Fail(tr("a coordinate of %1 mm is too large, at most 10 km are read").arg(reach));
}

/*! The edges of a wire of that name in order of travel; without such a wire, all edges of that name. */
QList<TopoDS_Edge> ZETOpenShapeFilePrivate::FindEdges(const QString& name) const
{
    const QList<int> namedWires = wires.Find(name);
    if (namedWires.size() == 1)
        return GetEdgesInOrder(TopoDS::Wire(wires.Get(namedWires.first())));
    if (namedWires.size() > 1)
        Fail(tr("%1 wires are called \"%2\"").arg(namedWires.size()).arg(name));
    const QList<int> named = edges.Find(name);
    if (named.isEmpty()) {
        Fail(tr("no edge or wire is called \"%1\"; %2")
                 .arg(name, ListNames(wires.GetDistinctNames() + edges.GetDistinctNames())));
    }
    QList<TopoDS_Edge> found;
    for (const int index : named)
        found.append(TopoDS::Edge(edges.Get(index).Oriented(TopAbs_FORWARD)));
    if (found.size() == 1)
        return found;
    Handle(TopTools_HSequenceOfShape) loose = new TopTools_HSequenceOfShape;
    for (const TopoDS_Edge& edge : found)
        loose->Append(edge);
    Handle(TopTools_HSequenceOfShape) joined = new TopTools_HSequenceOfShape;
    ShapeAnalysis_FreeBounds::ConnectEdgesToWires(loose, openJoinTolerance, false, joined);
    if (joined->Length() != 1)
        Fail(tr("the %1 edges called \"%2\" don't make one chain").arg(found.size()).arg(name));
    return GetEdgesInOrder(TopoDS::Wire(joined->First()));
}

QList<TopoDS_Edge> ZETOpenShapeFilePrivate::GetEdgesInOrder(const TopoDS_Wire& wire) const
{
    QList<TopoDS_Edge> ordered;
    for (BRepTools_WireExplorer explorer(wire); explorer.More(); explorer.Next())
        ordered.append(explorer.Current());
    int count = 0;
    for (TopExp_Explorer explorer(wire, TopAbs_EDGE); explorer.More(); explorer.Next())
        ++count;
    if (ordered.size() == count)
        return ordered;
    // The kernel goes from vertex to vertex; where the wire shares none, its own order is all there is.
    ordered.clear();
    for (TopExp_Explorer explorer(wire, TopAbs_EDGE); explorer.More(); explorer.Next())
        ordered.append(TopoDS::Edge(explorer.Current()));
    return ordered;
}

/*! None for an edge of no length. Where the edge is projected, \a distance grows to that of the projection. */
ZETOpenShapeFilePrivate::Segments
ZETOpenShapeFilePrivate::MakeSegments(const TopoDS_Edge& edge, const SurfaceRef& surface, double& distance) const
{
    if (BRep_Tool::Degenerated(edge))
        return {};
    const TopoDS_Face& face = ZETOpenSurfacePrivate::Of(*surface).face;
    for (TopExp_Explorer explorer(face, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        if (!explorer.Current().IsSame(edge))
            continue;
        if (auto own = MakeOwnSegment(edge, *surface))
            return {std::move(own)};
        break;
    }
    const ZETOpenEdgeProjection projection(edge, *surface);
    distance = std::max(distance, projection.GetMaxDistance());
    if (projection.GetPlaces().size() < 2)
        Fail(tr("an edge can't be projected to the surface, it becomes a point there"));
    const auto curve = ZETOpenCurveOnSurfacePrivate::MakeStraight(surface, projection.GetPlaces(), false);
    return ZETOpenCurveOnSurfacePrivate::Of(*curve).segments;
}

/*! Null for an edge that has no curve in the parameters of the face that it bounds. */
std::shared_ptr<const ZETOpenSurfaceSegment>
ZETOpenShapeFilePrivate::MakeOwnSegment(const TopoDS_Edge& edge, const ZETOpenSurface& surface) const
{
    double first = 0.0;
    double last = 0.0;
    const Handle(Geom2d_Curve) parameters =
        BRep_Tool::CurveOnSurface(edge, ZETOpenSurfacePrivate::Of(surface).face, first, last);
    if (parameters.IsNull() || !(last > first))
        return nullptr;
    if (edge.Orientation() == TopAbs_REVERSED)
        std::swap(first, last);
    return std::make_shared<ZETOpenSurfaceSegment>(surface, parameters, first, last);
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenShapeFilePrivate::MakeCurve(const QList<TopoDS_Edge>& edgesInOrder,
                                                                     const SurfaceRef& surface,
                                                                     const QString& name) const
{
    if (!surface)
        Fail(tr("a curve on a surface needs a surface"));
    return CallKernel(tr("%1: an edge can't be brought to the surface").arg(path), [&] {
        double widest = openJoinTolerance;
        for (const TopoDS_Edge& edge : edgesInOrder) {
            CheckReach(edge);
            widest = std::max(widest, 2.0 * BRep_Tool::Tolerance(edge));
        }
        Segments segments;
        double distance = 0.0;
        for (qsizetype i = 0; i < edgesInOrder.size(); ++i) {
            const Segments next = MakeSegments(edgesInOrder[i], surface, distance);
            const double gap = segments.empty() || next.empty()
                                   ? 0.0
                                   : segments.back()->GetPoint(1.0).Distance(next.front()->GetPoint(0.0));
            if (gap > widest)
                Fail(tr("edge %1 of \"%2\" begins %3 mm away from where the one before ends")
                         .arg(QString::number(i + 1), name, QString::number(gap)));
            segments.insert(segments.end(), next.begin(), next.end());
        }
        if (segments.empty())
            Fail(tr("a curve of no length"));
        const bool closed = segments.back()->GetPoint(1.0).Distance(segments.front()->GetPoint(0.0)) <= widest &&
                            (segments.size() > 1 || segments.front()->GetLength(0.0, 1.0) > 2.0 * widest);
        auto curve = ZETOpenCurveOnSurfacePrivate::Make(surface, std::move(segments), closed);
        ZETOpenCurveOnSurfacePrivate::Of(*curve).maxProjectionDistance = distance;
        curve->SetName(name);
        return curve;
    });
}

ZETOpenShapeFile::ZETOpenShapeFile(const QString& path, std::optional<double> scale)
    : d(std::make_unique<ZETOpenShapeFilePrivate>())
{
    d->path = path;
    if (scale && (!std::isfinite(*scale) || !(*scale > 0.0)))
        d->Fail(ZETOpenShapeFilePrivate::tr("%1 isn't a scale").arg(*scale));
    const ZETOpenShapeContent content = ZETOpenShapeContent::Read(path);
    d->format = content.format;
    d->unitName = content.unitName;
    d->unit = content.unit;
    const double factor = d->GetFactor(content, scale);
    CallKernel(ZETOpenShapeFilePrivate::tr("%1: the shapes can't be used").arg(path),
               [&] { d->SetShapes(content, factor); });
    if (d->edges.GetCount() == 0)
        d->Fail(ZETOpenShapeFilePrivate::tr("the file holds no faces and no edges"));
}

ZETOpenShapeFile::~ZETOpenShapeFile() = default;

QString ZETOpenShapeFile::GetPath() const
{
    return d->path;
}

QString ZETOpenShapeFile::GetFormat() const
{
    switch (d->format) {
    case ZETOpenShapeContent::FormatStep:
        return QStringLiteral("STEP");
    case ZETOpenShapeContent::FormatIges:
        return QStringLiteral("IGES");
    case ZETOpenShapeContent::FormatBrep:
        break;
    }
    return QStringLiteral("BREP");
}

QString ZETOpenShapeFile::GetUnitName() const
{
    return d->unitName;
}

double ZETOpenShapeFile::GetUnitInMillimetres() const
{
    return d->unit;
}

int ZETOpenShapeFile::GetNumFaces() const
{
    return d->faces.GetCount();
}

QString ZETOpenShapeFile::GetFaceName(int index) const
{
    return d->faces.names.value(index);
}

ZETOpenRef<ZETOpenSurface> ZETOpenShapeFile::GetFace(int index) const
{
    if (!d->faces.Has(index)) {
        d->Fail(ZETOpenShapeFilePrivate::tr("there is no face %1, the file holds %2 faces")
                    .arg(index)
                    .arg(d->faces.GetCount()));
    }
    const auto known = d->surfaces.find(index);
    if (known != d->surfaces.end())
        return known->second;
    const auto surface =
        CallKernel(ZETOpenShapeFilePrivate::tr("%1: face %2 can't be used").arg(d->path, QString::number(index)), [&] {
            d->CheckReach(d->faces.Get(index));
            return ZETOpenSurfacePrivate::Make(TopoDS::Face(d->faces.Get(index)), d->faces.names.value(index));
        });
    d->surfaces.emplace(index, surface);
    return surface;
}

ZETOpenRef<ZETOpenSurface> ZETOpenShapeFile::GetFace(const QString& name) const
{
    const QList<int> found = d->FindFaces(name);
    if (found.size() == 1)
        return GetFace(found.first());
    if (found.size() > 1)
        d->Fail(ZETOpenShapeFilePrivate::tr("\"%1\" stands for %2 faces").arg(name, QString::number(found.size())));
    d->Fail(ZETOpenShapeFilePrivate::tr("no face is called \"%1\"; %2").arg(name, d->ListNames(GetFaceNames())));
}

ZETOpenRef<ZETOpenSurface> ZETOpenShapeFile::GetSingleFace() const
{
    if (GetNumFaces() == 0)
        d->Fail(ZETOpenShapeFilePrivate::tr("the file holds no face"));
    if (GetNumFaces() > 1) {
        d->Fail(ZETOpenShapeFilePrivate::tr("the file holds %1 faces, so one has to be named; %2")
                    .arg(GetNumFaces())
                    .arg(d->ListNames(GetFaceNames())));
    }
    return GetFace(0);
}

int ZETOpenShapeFile::GetNumEdges() const
{
    return d->edges.GetCount();
}

QString ZETOpenShapeFile::GetEdgeName(int index) const
{
    return d->edges.names.value(index);
}

int ZETOpenShapeFile::GetNumWires() const
{
    return d->wires.GetCount();
}

QString ZETOpenShapeFile::GetWireName(int index) const
{
    return d->wires.names.value(index);
}

QStringList ZETOpenShapeFile::GetFaceNames() const
{
    QStringList names = d->faces.GetDistinctNames();
    for (const auto& body : d->bodies) {
        if (!names.contains(body.first))
            names.append(body.first);
    }
    return names;
}

QStringList ZETOpenShapeFile::GetCurveNames() const
{
    QStringList names = d->wires.GetDistinctNames() + d->edges.GetDistinctNames();
    names.removeDuplicates();
    return names;
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenShapeFile::GetEdge(int index, const ZETOpenRef<ZETOpenSurface>& surface) const
{
    if (!d->edges.Has(index)) {
        d->Fail(ZETOpenShapeFilePrivate::tr("there is no edge %1, the file holds %2 edges")
                    .arg(index)
                    .arg(d->edges.GetCount()));
    }
    return d->MakeCurve({TopoDS::Edge(d->edges.Get(index).Oriented(TopAbs_FORWARD))}, surface, GetEdgeName(index));
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenShapeFile::GetWire(int index, const ZETOpenRef<ZETOpenSurface>& surface) const
{
    if (!d->wires.Has(index)) {
        d->Fail(ZETOpenShapeFilePrivate::tr("there is no wire %1, the file holds %2 wires")
                    .arg(index)
                    .arg(d->wires.GetCount()));
    }
    return d->MakeCurve(d->GetEdgesInOrder(TopoDS::Wire(d->wires.Get(index))), surface, GetWireName(index));
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenShapeFile::GetCurve(const QString& name,
                                                             const ZETOpenRef<ZETOpenSurface>& surface) const
{
    return d->MakeCurve(d->FindEdges(name), surface, name);
}

QList<ZETOpenRef<ZETOpenComboCurve>> ZETOpenShapeFile::GetPolylines(const QString& name, double deflection) const
{
    if (!(deflection > 0.0))
        d->Fail(ZETOpenShapeFilePrivate::tr("%1 isn't a deflection").arg(deflection));
    constexpr double angle = 0.1;
    const QList<TopoDS_Edge> edges = d->FindEdges(name);
    return CallKernel(ZETOpenShapeFilePrivate::tr("%1: \"%2\" can't be made a polyline").arg(d->path, name), [&] {
        QList<ZETOpenRef<ZETOpenComboCurve>> polylines;
        for (const TopoDS_Edge& edge : edges) {
            if (BRep_Tool::Degenerated(edge))
                continue;
            d->CheckReach(edge);
            const BRepAdaptor_Curve curve(edge);
            const GCPnts_TangentialDeflection samples(curve, angle, deflection);
            QList<ZETMathPoint> points;
            for (int i = 1; i <= samples.NbPoints(); ++i)
                points.append(FromKernel(samples.Value(i)));
            if (edge.Orientation() == TopAbs_REVERSED)
                std::reverse(points.begin(), points.end());
            polylines.append(ZETOpenComboCurve::MakePolyline(points));
        }
        return polylines;
    });
}
