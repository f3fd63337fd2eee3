#include "openhost/ZETGeometry/ZETOpenShapeFile.h"

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenShapeReader_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <BRep_Tool.hxx>
#include <BRepAdaptor_Curve.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepTools_WireExplorer.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2dAPI_Interpolate.hxx>
#include <Precision.hxx>
#include <ShapeAnalysis_FreeBounds.hxx>
#include <TColgp_HArray1OfPnt2d.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Wire.hxx>
#include <TopTools_HSequenceOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

#include <QCoreApplication>

#include <map>

class ZETOpenShapeFilePrivate
{
    Q_DECLARE_TR_FUNCTIONS(ZETOpenShapeFile)

public:
    using Segment = std::shared_ptr<const ZETOpenSurfaceSegment>;

    /*! The shapes of one kind, in order, and their names. */
    struct Shapes {
        TopTools_IndexedMapOfShape map;
        QStringList names;

        int GetCount() const { return map.Extent(); }
        bool Has(int index) const { return index >= 0 && index < GetCount(); }
        const TopoDS_Shape& Get(int index) const { return map(index + 1); }
        QList<int> Find(const QString& name) const;
        QStringList GetDistinctNames() const;
    };

    [[noreturn]] void Fail(const QString& text) const;
    void SetShapes(const ZETOpenShapeContent& content, double factor);
    QList<int> FindFaces(const QString& name) const;
    QString ListNames(const QStringList& names) const;
    QList<TopoDS_Edge> FindEdges(const QString& name) const;

    Segment MakeSegment(const TopoDS_Edge& edge, const ZETOpenSurface& surface) const;
    Segment MakeOwnSegment(const TopoDS_Edge& edge, const ZETOpenSurface& surface) const;
    Segment MakeProjectedSegment(const TopoDS_Edge& edge, const ZETOpenSurface& surface) const;
    ZETOpenRef<ZETOpenCurveOnSurface> MakeCurve(const QList<TopoDS_Edge>& edges,
                                                const ZETOpenRef<ZETOpenSurface>& surface, const QString& name) const;
    QList<TopoDS_Edge> GetEdgesInOrder(const TopoDS_Wire& wire) const;

    QString path;
    ZETOpenShapeContent::Format format = ZETOpenShapeContent::FormatBrep;
    QString unitName;
    double unit = 1.0;
    Shapes faces;
    Shapes edges;
    Shapes wires;
    std::vector<std::pair<QString, QList<int>>> bodies; //!< names of groups of faces
    std::map<int, ZETOpenRef<ZETOpenSurface>> surfaces; //!< that were asked for
};

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

void ZETOpenShapeFilePrivate::SetShapes(const ZETOpenShapeContent& content, double factor)
{
    TopoDS_Shape shape = content.shape;
    if (factor != 1.0) {
        gp_Trsf scaling;
        scaling.SetScaleFactor(factor);
        shape = BRepBuilderAPI_Transform(shape, scaling, true).Shape();
    }
    // A scaled shape has the same structure, so its parts come in the same order as the ones that have the names.
    const auto fill = [&](Shapes& shapes, TopAbs_ShapeEnum kind) {
        TopTools_IndexedMapOfShape named;
        TopExp::MapShapes(content.shape, kind, named);
        TopExp::MapShapes(shape, kind, shapes.map);
        for (int i = 1; i <= named.Extent(); ++i)
            shapes.names.append(content.GetName(named(i)));
    };
    fill(faces, TopAbs_FACE);
    fill(edges, TopAbs_EDGE);
    fill(wires, TopAbs_WIRE);
    TopTools_IndexedMapOfShape original;
    TopExp::MapShapes(content.shape, TopAbs_FACE, original);
    for (const auto& [name, body] : content.bodies) {
        QList<int> indices;
        for (TopExp_Explorer explorer(body, TopAbs_FACE); explorer.More(); explorer.Next()) {
            // Instances of a body differ in their places, so the faces are compared without them.
            for (int i = 1; i <= original.Extent(); ++i) {
                if (original(i).IsPartner(explorer.Current()) && !indices.contains(i - 1))
                    indices.append(i - 1);
            }
        }
        if (!indices.isEmpty())
            bodies.emplace_back(name, indices);
    }
}

QList<int> ZETOpenShapeFilePrivate::FindFaces(const QString& name) const
{
    QList<int> found = faces.Find(name);
    for (std::size_t i = 0; found.isEmpty() && i < bodies.size(); ++i) {
        if (bodies[i].first == name)
            found = bodies[i].second;
    }
    return found;
}

QString ZETOpenShapeFilePrivate::ListNames(const QStringList& names) const
{
    constexpr int most = 20;
    if (names.isEmpty())
        return tr("it has no names");
    const QString list = names.first(std::min(most, int(names.size()))).join(QStringLiteral(", "));
    return names.size() > most ? tr("its names are %1 and %2 more").arg(list).arg(names.size() - most)
                               : tr("its names are %1").arg(list);
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

/*! Null for an edge of no length. */
ZETOpenShapeFilePrivate::Segment ZETOpenShapeFilePrivate::MakeSegment(const TopoDS_Edge& edge,
                                                                      const ZETOpenSurface& surface) const
{
    if (BRep_Tool::Degenerated(edge))
        return nullptr;
    const TopoDS_Face& face = ZETOpenSurfacePrivate::Of(surface).face;
    for (TopExp_Explorer explorer(face, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        if (explorer.Current().IsSame(edge))
            return MakeOwnSegment(edge, surface);
    }
    return MakeProjectedSegment(edge, surface);
}

ZETOpenShapeFilePrivate::Segment ZETOpenShapeFilePrivate::MakeOwnSegment(const TopoDS_Edge& edge,
                                                                         const ZETOpenSurface& surface) const
{
    double first = 0.0;
    double last = 0.0;
    const Handle(Geom2d_Curve) parameters =
        BRep_Tool::CurveOnSurface(edge, ZETOpenSurfacePrivate::Of(surface).face, first, last);
    if (parameters.IsNull() || !(last > first))
        return MakeProjectedSegment(edge, surface);
    if (edge.Orientation() == TopAbs_REVERSED)
        std::swap(first, last);
    return std::make_shared<ZETOpenSurfaceSegment>(surface, parameters, first, last);
}

ZETOpenShapeFilePrivate::Segment ZETOpenShapeFilePrivate::MakeProjectedSegment(const TopoDS_Edge& edge,
                                                                               const ZETOpenSurface& surface) const
{
    constexpr double deflection = 0.01;
    constexpr double angle = 0.1;
    const BRepAdaptor_Curve curve(edge);
    const GCPnts_TangentialDeflection points(curve, angle, deflection);
    const auto& record = ZETOpenSurfacePrivate::Of(surface);
    std::vector<gp_Pnt2d> places;
    for (int i = 1; i <= points.NbPoints(); ++i) {
        const auto location = surface.Project(FromKernel(points.Value(i)));
        const gp_Pnt2d place(location.GetU(), location.GetV());
        places.push_back(places.empty() ? place : record.Unwrap(places.back(), place));
    }
    const auto isSame = [](const gp_Pnt2d& a, const gp_Pnt2d& b) { return a.IsEqual(b, Precision::PConfusion()); };
    places.erase(std::unique(places.begin(), places.end(), isSame), places.end());
    if (edge.Orientation() == TopAbs_REVERSED)
        std::reverse(places.begin(), places.end());
    if (places.size() < 2)
        Fail(tr("an edge can't be projected to the surface, it becomes a point there"));
    if (places.size() == 2)
        return std::make_shared<ZETOpenSurfaceSegment>(surface, places.front(), places.back());
    Handle(TColgp_HArray1OfPnt2d) array = new TColgp_HArray1OfPnt2d(1, int(places.size()));
    for (std::size_t i = 0; i < places.size(); ++i)
        array->SetValue(int(i) + 1, places[i]);
    Geom2dAPI_Interpolate interpolation(array, false, Precision::PConfusion());
    interpolation.Perform();
    if (!interpolation.IsDone())
        Fail(tr("an edge can't be projected to the surface"));
    const Handle(Geom2d_Curve) parameters(interpolation.Curve());
    return std::make_shared<ZETOpenSurfaceSegment>(surface, parameters, parameters->FirstParameter(),
                                                   parameters->LastParameter());
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenShapeFilePrivate::MakeCurve(const QList<TopoDS_Edge>& edgesInOrder,
                                                                     const ZETOpenRef<ZETOpenSurface>& surface,
                                                                     const QString& name) const
{
    if (!surface)
        Fail(tr("a curve on a surface needs a surface"));
    return CallKernel(tr("%1: an edge can't be brought to the surface").arg(path), [&] {
        ZETOpenCurveOnSurfacePrivate::Segments segments;
        double widest = openJoinTolerance;
        for (const TopoDS_Edge& edge : edgesInOrder) {
            widest = std::max(widest, 2.0 * BRep_Tool::Tolerance(edge));
            if (auto segment = MakeSegment(edge, *surface))
                segments.push_back(std::move(segment));
        }
        if (segments.empty())
            Fail(tr("a curve of no length"));
        for (std::size_t i = 1; i < segments.size(); ++i) {
            const double gap = segments[i - 1]->GetPoint(1.0).Distance(segments[i]->GetPoint(0.0));
            if (gap > widest)
                Fail(tr("edge %1 of \"%2\" begins %3 mm away from where the one before ends")
                         .arg(i + 1)
                         .arg(name)
                         .arg(gap));
        }
        const bool closed = segments.back()->GetPoint(1.0).Distance(segments.front()->GetPoint(0.0)) <= widest &&
                            (segments.size() > 1 || segments.front()->GetLength(0.0, 1.0) > 2.0 * widest);
        auto curve = ZETOpenCurveOnSurfacePrivate::Make(surface, std::move(segments), closed);
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
    CallKernel(ZETOpenShapeFilePrivate::tr("%1: the shapes can't be used").arg(path),
               [&] { d->SetShapes(content, scale ? *scale / content.unit : 1.0); });
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
        CallKernel(ZETOpenShapeFilePrivate::tr("%1: face %2 can't be used").arg(d->path).arg(index), [&] {
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
        d->Fail(ZETOpenShapeFilePrivate::tr("\"%1\" stands for %2 faces").arg(name).arg(found.size()));
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
