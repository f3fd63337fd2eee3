#include "openhost/layup/ZETOpenLayupBuilder_p.h"

#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETTopology/ZETTopBody.h>

#include <cmath>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double radiansPerDegree = std::numbers::pi / 180.0;
constexpr double fullTurn = 360.0;
constexpr double curveDeflection = 0.01; // mm; far below what a projector resolves, and what thinning takes away
constexpr int defaultCorners = 72;       // a corner every five degrees

/*! The one of \a keys that \a object has; throws unless there is exactly one. */
QString GetOnlyKey(const ZETOpenJsonValue& object, const QStringList& keys, const QString& manyText,
                   const QString& noneText)
{
    QString only;
    for (const QString& key : keys) {
        if (!object.Has(key.toUtf8().constData()))
            continue;
        if (!only.isEmpty())
            object.Fail(manyText.arg(only, key));
        only = key;
    }
    if (only.isEmpty())
        object.Fail(noneText.arg(keys.join(u"\", \""_s)));
    return only;
}
} // namespace

void ZETOpenLayupBuilder::AddGeometry(const Value& object, const QString& name, Geometry geometry,
                                      std::unique_ptr<ZETTopBody> body)
{
    geometry.feature = new ZETOpenGeometryFeature(model.root);
    SetUp(*geometry.feature, object);
    geometry.feature->SetBody(std::move(body));
    Register(geometries, object, name, std::move(geometry), tr("surface, curve or point"));
}

void ZETOpenLayupBuilder::ReadSurface(const Value& object)
{
    object.CheckKeys(KeysOf("surface"));
    const QString name = ReadRequiredName(object);
    Geometry geometry;
    geometry.kind = Geometry::Surface;
    geometry.surface = MakeSurface(object);
    geometry.surface->SetName(name);
    auto body = ZETOpenBodyBuilder::MakeFace(geometry.surface);
    AddGeometry(object, name, std::move(geometry), std::move(body));
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeSurface(const Value& object)
{
    const QStringList forms{u"shape"_s, u"plane"_s, u"cylinder"_s, u"cone"_s, u"sphere"_s, u"bspline"_s};
    const QString form = GetOnlyKey(object, forms, tr("expected one form of surface, found \"%1\" and \"%2\""),
                                    tr("expected one of the keys \"%1\", found none"));
    if (object.Has("face") && form != u"shape"_s)
        object.Get("face", QString()).Fail(tr("expected \"face\" beside \"shape\" only"));
    SurfaceRef (ZETOpenLayupBuilder::*const makers[])(const Value&)
        const = {&ZETOpenLayupBuilder::MakeShapeSurface,    &ZETOpenLayupBuilder::MakePlaneSurface,
                 &ZETOpenLayupBuilder::MakeCylinderSurface, &ZETOpenLayupBuilder::MakeConeSurface,
                 &ZETOpenLayupBuilder::MakeSphereSurface,   &ZETOpenLayupBuilder::MakeBSplineSurface};
    const auto make = makers[forms.indexOf(form)];
    const Value source = form == u"shape"_s ? object : object.Get(form.toUtf8().constData(), QString());
    SurfaceRef surface = Guard(source, [&] { return (this->*make)(source); });
    const auto reversed = object.Find("reversed");
    return reversed && reversed->ToBool() ? surface->MakeReversed() : surface;
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeShapeSurface(const Value& object) const
{
    const Value reference = object.Get("shape", tr("the name of a shape"));
    const ZETOpenShapeFile& file = *Resolve(shapes, reference, tr("shape")).file;
    const auto face = object.Find("face");
    if (!face)
        return Guard(reference, [&] { return file.GetSingleFace(); });
    if (face->IsNumber()) {
        const QString range = tr("the index of a face, 0 to %1").arg(file.GetNumFaces() - 1);
        return Guard(*face, [&] { return file.GetFace(face->ToInteger(0, file.GetNumFaces() - 1, range)); });
    }
    return Guard(*face, [&] { return file.GetFace(face->ToName(tr("the name or the index of a face"))); });
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakePlaneSurface(const Value& object) const
{
    object.CheckKeys(KeysOf("planeSurface"));
    const double width = ToPositiveLength(object.Get("width", tr("a length")), tr("a width above 0"));
    const double height = ToPositiveLength(object.Get("height", tr("a length")), tr("a height above 0"));
    return ZETOpenSurface::MakePlane(ToAxis(object), 0.0, width, 0.0, height);
}

ZETMathAxis ZETOpenLayupBuilder::ToTurnedAxis(const Value& object) const
{
    const auto origin = object.Find("origin");
    const auto axisValue = object.Find("axis");
    const auto xValue = object.Find("x");
    const ZETMathVector third = axisValue ? ToDirection(*axisValue) : ZETMathVector(0.0, 0.0, 1.0);
    ZETMathVector first = xValue ? ToDirection(*xValue) : ZETMathVector(1.0, 0.0, 0.0);
    constexpr double parallel = 1e-9;
    first = first - (first * third) * third;
    if (first.GetSquaredMagnitude() < parallel * parallel)
        (xValue ? *xValue : object).Fail(tr("expected a direction \"x\" that isn't parallel to \"axis\""));
    first.Normalize();
    ZETMathAxis axis;
    axis.SetOrigin(origin ? ToPoint(*origin) : ZETMathPoint());
    axis.SetDirections(first, third ^ first, third);
    return axis;
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeCylinderSurface(const Value& object) const
{
    object.CheckKeys(KeysOf("cylinderSurface"));
    const ZETMathAxis axis = ToTurnedAxis(object);
    const double radius = ToPositiveLength(object.Get("radius", tr("a length")), tr("a radius above 0"));
    const double height = ToPositiveLength(object.Get("height", tr("a length")), tr("a height above 0"));
    const auto start = object.Find("startAngle");
    const auto angle = object.Find("angle");
    const double from = start ? start->ToNumber() : 0.0;
    const double turn = angle ? angle->ToPositiveNumber(tr("an angle above 0")) : fullTurn;
    return ZETOpenSurface::MakeCylinder(axis, radius, from * radiansPerDegree, (from + turn) * radiansPerDegree, 0.0,
                                        height);
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeConeSurface(const Value& object) const
{
    object.CheckKeys(KeysOf("coneSurface"));
    const ZETMathAxis axis = ToTurnedAxis(object);
    const double radius = ToLength(object.Get("radius", tr("a length")));
    const double halfAngle = object.Get("halfAngle", tr("an angle")).ToNumber();
    const double length = ToPositiveLength(object.Get("length", tr("a length")), tr("a length above 0"));
    const auto start = object.Find("startAngle");
    const auto angle = object.Find("angle");
    const double from = start ? start->ToNumber() : 0.0;
    const double turn = angle ? angle->ToPositiveNumber(tr("an angle above 0")) : fullTurn;
    return ZETOpenSurface::MakeCone(axis, radius, halfAngle * radiansPerDegree, from * radiansPerDegree,
                                    (from + turn) * radiansPerDegree, 0.0, length);
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeSphereSurface(const Value& object) const
{
    object.CheckKeys(KeysOf("sphereSurface"));
    const ZETMathAxis axis = ToTurnedAxis(object);
    const double radius = ToPositiveLength(object.Get("radius", tr("a length")), tr("a radius above 0"));
    double longitude[2] = {0.0, fullTurn};
    double latitude[2] = {-90.0, 90.0};
    if (const auto value = object.Find("longitude"))
        value->ToNumbers(longitude, 2, tr("two angles, from and to"));
    if (const auto value = object.Find("latitude"))
        value->ToNumbers(latitude, 2, tr("two angles, from and to"));
    return ZETOpenSurface::MakeSphere(axis, radius, longitude[0] * radiansPerDegree, longitude[1] * radiansPerDegree,
                                      latitude[0] * radiansPerDegree, latitude[1] * radiansPerDegree);
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::MakeBSplineSurface(const Value& object) const
{
    object.CheckKeys(KeysOf("bsplineSurface"));
    QList<QList<ZETMathPoint>> rows;
    const Value points = object.Get("points", tr("an array of rows of points"));
    for (const Value& row : points.GetElements(tr("an array of rows of points"))) {
        rows.append(ToPoints(row));
        if (rows.last().size() != rows.first().size())
            row.Fail(
                tr("expected a row of %1 points, found one of %2").arg(rows.first().size()).arg(rows.last().size()));
    }
    return ZETOpenSurface::MakeBSpline(rows);
}

const ZETOpenLayupBuilder::Geometry& ZETOpenLayupBuilder::ResolveGeometry(const Value& reference,
                                                                          Geometry::Kind kind) const
{
    const QString words[] = {tr("surface"), tr("curve"), tr("point")};
    const Geometry& geometry = Resolve(geometries, reference, words[kind]);
    if (geometry.kind != kind)
        reference.Fail(tr("expected the name of a %1, found the %2 \"%3\"")
                           .arg(words[kind], words[geometry.kind], reference.ToText()));
    return geometry;
}

ZETOpenLayupBuilder::SurfaceRef ZETOpenLayupBuilder::FindSurface(const Value& object) const
{
    const auto on = object.Find("on");
    return on ? ResolveGeometry(*on, Geometry::Surface).surface : SurfaceRef();
}

double ZETOpenLayupBuilder::GetLimit(const Value& object) const
{
    const auto limit = object.Find("limit");
    return limit ? ToPositiveLength(*limit, tr("a length above 0")) : projectionLimit;
}

void ZETOpenLayupBuilder::CheckDistance(const Value& place, const ZETMathPoint& point, const SurfaceRef& surface,
                                        double limit) const
{
    const double distance = surface->GetDistanceTo(point);
    if (!(distance <= limit))
        place.Fail(tr("expected a point at most %1 mm from the surface \"%2\", found one at %3 mm")
                       .arg(QString::number(limit, 'g', 6), surface->GetName(), QString::number(distance, 'g', 6)));
}

void ZETOpenLayupBuilder::CheckDistances(const Value& points, const QList<ZETMathPoint>& coordinates,
                                         const SurfaceRef& surface, double limit) const
{
    const QList<Value> elements = points.IsArray() ? points.GetElements(QString()) : QList<Value>();
    for (qsizetype i = 0; i < coordinates.size(); ++i)
        CheckDistance(i < elements.size() ? elements[i] : points, coordinates[i], surface, limit);
}

ZETOpenLayupBuilder::CurveRef ZETOpenLayupBuilder::MakeCurveOnSurface(const Value& points,
                                                                      const QList<ZETMathPoint>& coordinates,
                                                                      const SurfaceRef& surface, bool isClosed,
                                                                      bool isSmooth, double limit) const
{
    const int fewest = isClosed ? 3 : 2;
    if (coordinates.size() < fewest)
        points.Fail(tr("expected at least %1 points, found %2").arg(fewest).arg(coordinates.size()));
    CurveRef curve = Guard(points, [&] {
        return isSmooth ? ZETOpenCurveOnSurface::MakeInterpolated(surface, coordinates, isClosed)
                              ->MakeRefined(curveDeflection)
                        : ZETOpenCurveOnSurface::MakePolyline(surface, coordinates, isClosed);
    });
    if (curve->GetMaxProjectionDistance() > limit)
        CheckDistances(points, coordinates, surface, limit);
    return curve;
}

ZETOpenLayupBuilder::Curve ZETOpenLayupBuilder::MakeCurve(const Value& object) const
{
    const QStringList forms{u"points"_s, u"edges"_s, u"line"_s, u"circle"_s, u"shape"_s};
    const QString form = GetOnlyKey(object, forms, tr("expected one form of curve, found \"%1\" and \"%2\""),
                                    tr("expected one of the keys \"%1\", found none"));
    if (object.Has("closed") && form != u"points"_s)
        object.Get("closed", QString()).Fail(tr("expected \"closed\" beside \"points\" only"));
    if (form == u"edges"_s)
        return MakeCurveOfEdges(object);
    if (form == u"shape"_s)
        return MakeCurveOfShape(object);
    if (form == u"circle"_s) {
        const Value circle = object.Get("circle", QString());
        return MakeCurveOfPoints(circle, object, MakeCircle(circle), true);
    }
    if (form == u"line"_s) {
        const Value line = object.Get("line", QString());
        line.CheckKeys(KeysOf("line"));
        return MakeCurveOfPoints(
            line, object, {ToPoint(line.Get("from", tr("a point"))), ToPoint(line.Get("to", tr("a point")))}, false);
    }
    const Value points = object.Get("points", QString());
    const auto closed = object.Find("closed");
    return MakeCurveOfPoints(points, object, ToPoints(points), closed && closed->ToBool());
}

ZETOpenLayupBuilder::Curve ZETOpenLayupBuilder::MakeCurveOfPoints(const Value& where, const Value& object,
                                                                  const QList<ZETMathPoint>& points,
                                                                  bool isClosed) const
{
    Curve curve;
    curve.isClosed = isClosed;
    curve.surface = FindSurface(object);
    const auto smooth = object.Find("smooth");
    const bool isSmooth = smooth && smooth->ToBool();
    if (curve.surface) {
        curve.edges.append(MakeCurveOnSurface(where, points, curve.surface, isClosed, isSmooth, GetLimit(object)));
        curve.senses.append(true);
        return curve;
    }
    if (isSmooth)
        smooth->Fail(tr("expected \"smooth\" for a curve on a surface (\"on\") only"));
    if (points.size() < 2)
        where.Fail(tr("expected at least %1 points, found %2").arg(2).arg(points.size()));
    curve.points = points;
    return curve;
}

ZETOpenLayupBuilder::Curve ZETOpenLayupBuilder::MakeCurveOfEdges(const Value& object) const
{
    object.Get("on", tr("the name of the surface that the edges lie on"));
    Curve curve;
    curve.surface = FindSurface(object);
    const Value edges = object.Get("edges", QString());
    for (const Value& edge : edges.GetElements(tr("an array of edges"))) {
        edge.CheckKeys(KeysOf("edge"));
        const Value points = edge.Get("points", tr("an array of points"));
        const auto smooth = edge.Find("smooth");
        const auto reversed = edge.Find("reversed");
        curve.edges.append(MakeCurveOnSurface(points, ToPoints(points), curve.surface, false,
                                              smooth && smooth->ToBool(), GetLimit(object)));
        curve.senses.append(!(reversed && reversed->ToBool()));
    }
    if (curve.edges.isEmpty())
        edges.FailExpected(tr("an array of at least one edge"));
    curve.isClosed = Guard(edges, [&] { return MakeAssembledCurve(curve.edges, curve.senses)->IsClosed(); });
    return curve;
}

ZETOpenLayupBuilder::Curve ZETOpenLayupBuilder::MakeCurveOfShape(const Value& object) const
{
    const Value reference = object.Get("shape", QString());
    object.Get("on", tr("the name of the surface that the curve lies on"));
    const ZETOpenShapeFile& file = *Resolve(shapes, reference, tr("shape")).file;
    const QString key = GetOnlyKey(object, {u"edge"_s, u"wire"_s}, tr("expected one curve, found \"%1\" and \"%2\""),
                                   tr("expected one of the keys \"%1\" beside \"shape\", found none"));
    const Value which = object.Get(key.toUtf8().constData(), QString());
    const bool isEdge = key == u"edge"_s;
    Curve curve;
    curve.surface = FindSurface(object);
    CurveRef only = Guard(which, [&]() -> CurveRef {
        if (!which.IsNumber())
            return file.GetCurve(which.ToName(tr("the name or the index of a curve")), curve.surface);
        const int count = isEdge ? file.GetNumEdges() : file.GetNumWires();
        const int index = which.ToInteger(0, count - 1, tr("the index of a curve, 0 to %1").arg(count - 1));
        return isEdge ? file.GetEdge(index, curve.surface) : file.GetWire(index, curve.surface);
    });
    const double limit = GetLimit(object);
    if (only->GetMaxProjectionDistance() > limit)
        which.Fail(tr("expected a curve at most %1 mm from the surface \"%2\", found one at %3 mm")
                       .arg(QString::number(limit, 'g', 6), curve.surface->GetName(),
                            QString::number(only->GetMaxProjectionDistance(), 'g', 6)));
    curve.isClosed = only->IsClosed();
    curve.edges.append(Guard(which, [&] { return only->MakeRefined(curveDeflection); }));
    curve.senses.append(true);
    return curve;
}

QList<ZETMathPoint> ZETOpenLayupBuilder::MakeCircle(const Value& object) const
{
    object.CheckKeys(KeysOf("circle"));
    ZETMathAxis axis = ToTurnedAxis(object);
    axis.SetOrigin(ToPoint(object.Get("center", tr("a point"))));
    const double radius = ToPositiveLength(object.Get("radius", tr("a length")), tr("a radius above 0"));
    const auto cornersValue = object.Find("corners");
    const int corners =
        cornersValue ? cornersValue->ToInteger(3, 1000000, tr("a number of corners, at least 3")) : defaultCorners;
    QList<ZETMathPoint> points;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners;
        points.append(axis / ZETMathPoint(radius * std::cos(angle), radius * std::sin(angle), 0.0));
    }
    return points;
}

std::unique_ptr<ZETTopBody> ZETOpenLayupBuilder::MakeBody(const Value& object, const Curve& curve) const
{
    return Guard(object, [&]() -> std::unique_ptr<ZETTopBody> {
        if (!curve.surface)
            return ZETOpenBodyBuilder::MakePolyline(curve.points, curve.isClosed);
        ZETOpenBodyBuilder builder;
        QList<ZETOpenBodyBuilder::Side> sides;
        for (qsizetype i = 0; i < curve.edges.size(); ++i)
            sides.append({ZETOpenComboCurve::MakeFromImage(curve.edges[i], false), !curve.senses[i]});
        builder.AddNet(sides);
        return builder.Build();
    });
}

void ZETOpenLayupBuilder::ReadNamedCurve(const Value& object)
{
    object.CheckKeys(KeysOf("curve"));
    const QString name = ReadRequiredName(object);
    Geometry geometry;
    geometry.kind = Geometry::CurveKind;
    geometry.curve = MakeCurve(object);
    auto body = MakeBody(object, geometry.curve);
    AddGeometry(object, name, std::move(geometry), std::move(body));
}

std::unique_ptr<ZETTopBody> ZETOpenLayupBuilder::MakePointBody(const Value& object, ZETMathPoint& position,
                                                               SurfaceRef& surface) const
{
    const Value at = object.Get("at", tr("three coordinates"));
    position = ToPoint(at);
    surface = FindSurface(object);
    if (surface) {
        CheckDistance(at, position, surface, GetLimit(object));
        position = Guard(at, [&] { return surface->Project(position).GetPoint(); });
    }
    return Guard(at, [&] { return ZETOpenBodyBuilder::MakePoint(position, surface); });
}

void ZETOpenLayupBuilder::ReadNamedPoint(const Value& object)
{
    object.CheckKeys(KeysOf("point"));
    const QString name = ReadRequiredName(object);
    Geometry geometry;
    geometry.kind = Geometry::Point;
    auto body = MakePointBody(object, geometry.point, geometry.surface);
    AddGeometry(object, name, std::move(geometry), std::move(body));
}
