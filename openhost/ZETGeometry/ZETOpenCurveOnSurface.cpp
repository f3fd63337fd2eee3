#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <ElSLib.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Circle.hxx>
#include <Geom2dAPI_Interpolate.hxx>
#include <Precision.hxx>
#include <TColgp_HArray1OfPnt2d.hxx>
#include <TColStd_HArray1OfReal.hxx>

#include <algorithm>
#include <numbers>

namespace
{
QString GetBuildTask()
{
    return ZETOpenCurveOnSurface::tr("the curve can't be built");
}

void CheckCount(qsizetype count, bool closed)
{
    if (count < (closed ? 3 : 2)) {
        throw ZETSysException(closed ? ZETOpenCurveOnSurface::tr("a closed curve needs at least three different points")
                                     : ZETOpenCurveOnSurface::tr("a curve needs two points at least"));
    }
}

void CheckSurface(const ZETOpenRef<ZETOpenSurface>& surface)
{
    if (!surface)
        throw ZETSysException(ZETOpenCurveOnSurface::tr("a curve on a surface needs a surface"));
}

/*! Without a last point that repeats the first, if the curve is closed anyway. */
QList<ZETMathPoint> GetVertices(const QList<ZETMathPoint>& points, bool closed)
{
    if (!closed || points.size() < 2 || points.last().GetDistanceTo(points.first()) > openJoinTolerance)
        return points;
    return points.first(points.size() - 1);
}

struct ProjectedPoints {
    std::vector<gp_Pnt2d> places;
    double maxDistance = 0.0;
};

ProjectedPoints ProjectPoints(const ZETOpenSurface& surface, const QList<ZETMathPoint>& points)
{
    ProjectedPoints result;
    result.places.reserve(std::size_t(points.size()));
    for (const ZETMathPoint& point : points) {
        const ZETGeoLocationOnSurface location = surface.Project(point);
        result.places.emplace_back(location.GetU(), location.GetV());
        result.maxDistance = std::max(result.maxDistance, location.GetPoint().GetDistanceTo(point));
    }
    return result;
}

/*! The straight segment, which takes its longitude from the other end where an end lies on a pole. */
std::shared_ptr<const ZETOpenSurfaceSegment> MakeStraightSegment(const ZETOpenSurface& surface, gp_Pnt2d start,
                                                                 const gp_Pnt2d& target)
{
    const auto& record = ZETOpenSurfacePrivate::Of(surface);
    gp_Pnt2d end = record.Unwrap(start, target);
    if (!surface.IsPlane()) {
        if (record.IsDegenerateInU(start))
            start.SetX(end.X());
        else if (record.IsDegenerateInU(end))
            end.SetX(start.X());
        if (record.IsDegenerateInV(start))
            start.SetY(end.Y());
        else if (record.IsDegenerateInV(end))
            end.SetY(start.Y());
    }
    return std::make_shared<ZETOpenSurfaceSegment>(surface, start, end);
}

/*! Parameters for an interpolation: the chord lengths in space, so that they are the same in any parametrisation. */
Handle(TColStd_HArray1OfReal) GetChordParameters(const ZETOpenSurface& surface, const std::vector<gp_Pnt2d>& places)
{
    const auto& adaptor = ZETOpenSurfacePrivate::Of(surface).adaptor;
    Handle(TColStd_HArray1OfReal) parameters = new TColStd_HArray1OfReal(1, int(places.size()));
    parameters->SetValue(1, 0.0);
    for (int i = 2; i <= parameters->Upper(); ++i) {
        const gp_Pnt2d& from = places[std::size_t(i) - 2];
        const gp_Pnt2d& to = places[std::size_t(i) - 1];
        const double chord = adaptor->Value(from.X(), from.Y()).Distance(adaptor->Value(to.X(), to.Y()));
        if (!(chord > Precision::Confusion()))
            throw ZETSysException(ZETOpenCurveOnSurface::tr("two neighbouring points of a smooth curve are the same"));
        parameters->SetValue(i, parameters->Value(i - 1) + chord);
    }
    return parameters;
}

/*! The places without jumps where the surface closes; a closed curve gets its first place once more at the end. */
std::vector<gp_Pnt2d> UnwrapAll(const ZETOpenSurface& surface, std::vector<gp_Pnt2d> places, bool closed)
{
    if (closed)
        places.push_back(places.front());
    for (std::size_t i = 1; i < places.size(); ++i)
        places[i] = ZETOpenSurfacePrivate::Of(surface).Unwrap(places[i - 1], places[i]);
    return places;
}

Handle(Geom2d_Curve)
    Interpolate(const std::vector<gp_Pnt2d>& places, const Handle(TColStd_HArray1OfReal) & parameters, bool closed)
{
    // A curve that runs round the surface ends a period away from its start, and can't be periodic in the parameters.
    const bool periodic = closed && places.front().IsEqual(places.back(), Precision::PConfusion());
    const int count = int(places.size()) - (periodic ? 1 : 0);
    Handle(TColgp_HArray1OfPnt2d) points = new TColgp_HArray1OfPnt2d(1, count);
    for (int i = 1; i <= count; ++i)
        points->SetValue(i, places[std::size_t(i) - 1]);
    Geom2dAPI_Interpolate interpolation(points, parameters, periodic, Precision::PConfusion());
    interpolation.Perform();
    if (!interpolation.IsDone())
        throw ZETSysException(ZETOpenCurveOnSurface::tr("no smooth curve goes through the points"));
    return Handle(Geom2d_Curve)(interpolation.Curve());
}
} // namespace

// ---- the record

ZETOpenCurveOnSurfacePrivate::ZETOpenCurveOnSurfacePrivate(const ZETOpenRef<ZETOpenSurface>& surfaceOfCurve,
                                                           Segments segmentsInOrder, bool isClosed)
    : surface(surfaceOfCurve)
    , segments(std::move(segmentsInOrder))
{
    std::vector<ZETOpenChain::Link> links;
    links.reserve(segments.size());
    for (const auto& segment : segments)
        links.push_back({segment});
    chain = ZETOpenChain(std::move(links), isClosed);
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurfacePrivate::Make(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                     Segments segments, bool closed)
{
    return ZETOpenRef<ZETOpenCurveOnSurface>(new ZETOpenCurveOnSurface(
        std::make_unique<ZETOpenCurveOnSurfacePrivate>(surface, std::move(segments), closed)));
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurfacePrivate::MakeStraight(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                             const std::vector<gp_Pnt2d>& places,
                                                                             bool closed)
{
    Segments segments;
    segments.reserve(places.size());
    for (std::size_t i = 1; i < places.size(); ++i)
        segments.push_back(MakeStraightSegment(*surface, places[i - 1], places[i]));
    if (closed)
        segments.push_back(MakeStraightSegment(*surface, places.back(), places.front()));
    return Make(surface, std::move(segments), closed);
}

// ---- the builders

ZETOpenCurveOnSurface::ZETOpenCurveOnSurface(std::unique_ptr<ZETOpenCurveOnSurfacePrivate> record)
    : d(std::move(record))
{
}

ZETOpenCurveOnSurface::~ZETOpenCurveOnSurface() = default;

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurface::MakePolyline(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                      const QList<ZETMathPoint>& points, bool closed)
{
    CheckSurface(surface);
    const QList<ZETMathPoint> vertices = GetVertices(points, closed);
    CheckCount(vertices.size(), closed);
    return CallKernel(GetBuildTask(), [&] {
        const ProjectedPoints projected = ProjectPoints(*surface, vertices);
        auto curve = ZETOpenCurveOnSurfacePrivate::MakeStraight(surface, projected.places, closed);
        curve->d->maxProjectionDistance = projected.maxDistance;
        return curve;
    });
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurface::MakePolyline(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                      const QList<ZETGeoLocationOnSurface>& locations,
                                                                      bool closed)
{
    CheckSurface(surface);
    std::vector<gp_Pnt2d> places;
    for (const ZETGeoLocationOnSurface& location : locations) {
        const auto own = location.GetSurface() == surface.Get() ? location : surface->Project(location.GetPoint());
        if (!std::isfinite(own.GetU()) || !std::isfinite(own.GetV()))
            throw ZETSysException(tr("a place of a curve has a parameter that isn't a number"));
        places.emplace_back(own.GetU(), own.GetV());
    }
    if (closed && places.size() > 1 &&
        locations.last().GetPoint().GetDistanceTo(locations.first().GetPoint()) <= openJoinTolerance)
        places.pop_back();
    CheckCount(qsizetype(places.size()), closed);
    return CallKernel(GetBuildTask(),
                      [&] { return ZETOpenCurveOnSurfacePrivate::MakeStraight(surface, places, closed); });
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurface::MakeInterpolated(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                          const QList<ZETMathPoint>& points,
                                                                          bool closed)
{
    CheckSurface(surface);
    const QList<ZETMathPoint> vertices = GetVertices(points, closed);
    CheckCount(vertices.size(), closed);
    return CallKernel(GetBuildTask(), [&] {
        const ProjectedPoints projected = ProjectPoints(*surface, vertices);
        const std::vector<gp_Pnt2d> places = UnwrapAll(*surface, projected.places, closed);
        const auto parameters = GetChordParameters(*surface, places);
        const auto parameterCurve = Interpolate(places, parameters, closed);
        ZETOpenCurveOnSurfacePrivate::Segments segments;
        for (int i = 1; i < parameters->Upper(); ++i) {
            segments.push_back(std::make_shared<ZETOpenSurfaceSegment>(*surface, parameterCurve, parameters->Value(i),
                                                                       parameters->Value(i + 1)));
        }
        auto curve = ZETOpenCurveOnSurfacePrivate::Make(surface, std::move(segments), closed);
        curve->d->maxProjectionDistance = projected.maxDistance;
        return curve;
    });
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurface::MakeCircle(const ZETOpenRef<ZETOpenSurface>& surface,
                                                                    const ZETMathPoint& center, double radius,
                                                                    int segments)
{
    CheckSurface(surface);
    if (!surface->IsPlane())
        throw ZETSysException(tr("a circle needs a flat surface"));
    if (!std::isfinite(radius) || !(radius > Precision::Confusion()) || segments < 1 || !IsFinite(center))
        throw ZETSysException(tr("a circle needs a center, a radius above zero and one segment at least"));
    return CallKernel(GetBuildTask(), [&] {
        const auto& record = ZETOpenSurfacePrivate::Of(*surface);
        double u = 0.0;
        double v = 0.0;
        // Not the nearest place of the face: a circle may stand about a point that the face doesn't hold.
        ElSLib::Parameters(record.adaptor->Plane(), ToKernel(center), u, v);
        const bool counterClockwise = record.face.Orientation() != TopAbs_REVERSED;
        const Handle(Geom2d_Curve) circle =
            new Geom2d_Circle(gp_Ax2d(gp_Pnt2d(u, v), gp_Dir2d(1.0, 0.0)), radius, counterClockwise);
        ZETOpenCurveOnSurfacePrivate::Segments arcs;
        const double step = 2.0 * std::numbers::pi / segments;
        for (int i = 0; i < segments; ++i) {
            const double end = i + 1 < segments ? (i + 1) * step : 2.0 * std::numbers::pi;
            arcs.push_back(std::make_shared<ZETOpenSurfaceSegment>(*surface, circle, i * step, end));
        }
        return ZETOpenCurveOnSurfacePrivate::Make(surface, std::move(arcs), true);
    });
}

ZETOpenRef<ZETOpenCurveOnSurface> ZETOpenCurveOnSurface::MakeRefined(double deflection) const
{
    if (!(deflection > 0.0))
        throw ZETSysException(tr("a curve can't be refined to the deflection %1").arg(deflection));
    constexpr double angle = 0.1; // rad
    return CallKernel(GetBuildTask(), [&] {
        ZETOpenCurveOnSurfacePrivate::Segments segments;
        for (const auto& segment : d->segments) {
            double from = 0.0;
            for (const double to : segment->GetPolyline(0.0, 1.0, deflection, angle)) {
                segments.push_back(segment->MakePart(*d->surface, from, to));
                from = to;
            }
            segments.push_back(from > 0.0 ? segment->MakePart(*d->surface, from, 1.0) : segment);
        }
        auto curve = ZETOpenCurveOnSurfacePrivate::Make(d->surface, std::move(segments), d->chain.IsClosed());
        curve->d->maxProjectionDistance = d->maxProjectionDistance;
        curve->d->name = d->name;
        return curve;
    });
}

// ---- questions

double ZETOpenCurveOnSurface::GetMaxProjectionDistance() const
{
    return d->maxProjectionDistance;
}

ZETGeoRangeOfCurve ZETOpenCurveOnSurface::GetWholeRange() const
{
    return ZETGeoRangeOfCurve(ZETGeoLocationOnCurve(this, 0.0), ZETGeoLocationOnCurve(this, d->chain.GetCount()));
}

ZETGeoLocationOnCurve ZETOpenCurveOnSurface::Project(const ZETMathPoint& point) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Project(ToKernel(point)));
}

QString ZETOpenCurveOnSurface::GetName() const
{
    return d->name;
}

void ZETOpenCurveOnSurface::SetName(const QString& name)
{
    d->name = name;
}

ZETGeoLocationOnCurve ZETOpenCurveOnSurface::GetLocation(double distance, const ZETGeoLocationOnCurve* from) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Locate(distance, from ? from->GetParameter() : 0.0));
}

ZETMathVector ZETOpenCurveOnSurface::GetTangent(const ZETGeoLocationOnCurve& location) const
{
    return FromKernel(d->chain.GetTangent(location.GetParameter()));
}

int ZETOpenCurveOnSurface::GetNumPoints() const
{
    return int(d->chain.GetPolyline().size());
}

ZETMathPoint ZETOpenCurveOnSurface::GetPoint(int index) const
{
    const auto& points = d->chain.GetPolyline();
    return index >= 0 && index < int(points.size()) ? FromKernel(points[std::size_t(index)]) : ZETMathPoint();
}

int ZETOpenCurveOnSurface::GetNumSegments() const
{
    return d->chain.GetCount();
}

bool ZETOpenCurveOnSurface::IsClosed() const
{
    return d->chain.IsClosed();
}

double ZETOpenCurveOnSurface::GetLength() const
{
    return d->chain.GetLength();
}

ZETGeoLocationOnCurve ZETOpenCurveOnSurface::GetLocation(int index) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Normalize(index));
}

double ZETOpenCurveOnSurface::GetSegmentLength(int index) const
{
    return d->chain.GetLength(index);
}

const ZETGeoSurface* ZETOpenCurveOnSurface::GetSurface() const
{
    return d->surface.Get();
}

ZETGeoLocationOnSurface ZETOpenCurveOnSurface::GetLocationOnSurface(const ZETGeoLocationOnCurve& location) const
{
    const gp_Pnt2d place = d->chain.GetPlace(location.GetParameter());
    return ZETGeoLocationOnSurface(d->surface.Get(), place.X(), place.Y());
}

ZETMathPoint ZETOpenCurveOnSurface::EvaluatePoint(double parameter) const
{
    return FromKernel(d->chain.GetPoint(parameter));
}
