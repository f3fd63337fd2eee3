#include "openhost/ZETGeometry/ZETOpenSegment_p.h"

#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <ZETSystem/ZETSysException.h>

#include <Bnd_Box2d.hxx>
#include <BndLib_Add2dCurve.hxx>
#include <CPnts_AbscissaPoint.hxx>
#include <Extrema_ExtPC.hxx>
#include <GCE2d_MakeSegment.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GCPnts_TangentialDeflection.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_OffsetCurve.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <Precision.hxx>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double lengthTolerance = 1e-9; // mm

template <typename Point>
Point Interpolate(const Point& start, const Point& end, double fraction)
{
    return Point(start.XYZ() * (1.0 - fraction) + end.XYZ() * fraction);
}

template <>
gp_Pnt2d Interpolate(const gp_Pnt2d& start, const gp_Pnt2d& end, double fraction)
{
    return gp_Pnt2d(start.XY() * (1.0 - fraction) + end.XY() * fraction);
}

void TakeIfNearer(const gp_Pnt& point, const gp_Pnt& candidate, double fraction, ZETOpenSegment::Nearest& nearest)
{
    const double distance = candidate.Distance(point);
    if (distance < nearest.distance)
        nearest = {fraction, distance};
}

/*! The texts of this file, in one context. */
struct Text {
    Q_DECLARE_TR_FUNCTIONS(ZETOpenSegment)
};

/*! The kernel brings parameters back into a period turn by turn, so that one from a damaged file would keep it busy
 *  without end. No curve of a part goes round as often as this. */
constexpr double mostTurns = 1000.0;

void CheckTurns(double parameter, double start, double period)
{
    if (!(std::abs(parameter - start) <= mostTurns * period))
        throw ZETSysException(Text::tr("a curve on a surface goes round more than %1 times").arg(mostTurns));
}

void CheckTurns(const Handle(Geom2d_Curve) & curve, double first, double last)
{
    if (const auto trimmed = Handle(Geom2d_TrimmedCurve)::DownCast(curve)) {
        CheckTurns(trimmed->BasisCurve(), first, last);
    } else if (const auto offset = Handle(Geom2d_OffsetCurve)::DownCast(curve)) {
        CheckTurns(offset->BasisCurve(), first, last);
    } else if (curve->IsPeriodic()) {
        CheckTurns(first, curve->FirstParameter(), curve->Period());
        CheckTurns(last, curve->FirstParameter(), curve->Period());
    }
}

void CheckTurns(const Geom_Surface& surface, const gp_Pnt2d& place)
{
    double uMin = 0.0;
    double uMax = 0.0;
    double vMin = 0.0;
    double vMax = 0.0;
    surface.Bounds(uMin, uMax, vMin, vMax);
    if (surface.IsUPeriodic())
        CheckTurns(place.X(), uMin, surface.UPeriod());
    if (surface.IsVPeriodic())
        CheckTurns(place.Y(), vMin, surface.VPeriod());
}

/*! Returns the curve itself, for an initializer. */
const Handle(Geom2d_Curve) &
    GetChecked(const Geom_Surface& surface, const Handle(Geom2d_Curve) & curve, double first, double last)
{
    CheckTurns(curve, first, last);
    if (surface.IsUPeriodic() || surface.IsVPeriodic()) {
        Bnd_Box2d box;
        BndLib_Add2dCurve::Add(curve, std::min(first, last), std::max(first, last), 0.0, box);
        double uMin = 0.0;
        double uMax = 0.0;
        double vMin = 0.0;
        double vMax = 0.0;
        box.Get(uMin, vMin, uMax, vMax);
        CheckTurns(surface, gp_Pnt2d(uMin, vMin));
        CheckTurns(surface, gp_Pnt2d(uMax, vMax));
    }
    return curve;
}
} // namespace

// ---- what segments have in common

ZETOpenSegment::~ZETOpenSegment() = default;

double ZETOpenSegment::GetLength(double from, double to) const
{
    if (!(to > from))
        return 0.0;
    if (from > 0.0 || to < 1.0)
        return ComputeLength(from, to);
    if (!wholeLength)
        wholeLength = ComputeLength(0.0, 1.0);
    return *wholeLength;
}

// ---- straight in space

ZETOpenSpaceLine::ZETOpenSpaceLine(const gp_Pnt& startPoint, const gp_Pnt& endPoint)
    : start(startPoint)
    , end(endPoint)
{
}

gp_Pnt ZETOpenSpaceLine::GetPoint(double fraction) const
{
    return Interpolate(start, end, fraction);
}

gp_Vec ZETOpenSpaceLine::GetTangent(double) const
{
    return gp_Vec(start, end);
}

gp_Pnt2d ZETOpenSpaceLine::GetPlace(double) const
{
    return gp_Pnt2d();
}

double ZETOpenSpaceLine::GetFraction(double from, double distance) const
{
    const double length = start.Distance(end);
    return length > 0.0 ? std::clamp(from + distance / length, 0.0, 1.0) : from;
}

ZETOpenSegment::Nearest ZETOpenSpaceLine::Project(const gp_Pnt& point, double from, double to) const
{
    const gp_Vec along(start, end);
    const double squared = along.SquareMagnitude();
    const double foot = squared > 0.0 ? gp_Vec(start, point).Dot(along) / squared : from;
    const double fraction = std::clamp(foot, from, to);
    return {fraction, GetPoint(fraction).Distance(point)};
}

std::vector<double> ZETOpenSpaceLine::GetPolyline(double, double, double, double) const
{
    return {};
}

double ZETOpenSpaceLine::ComputeLength(double from, double to) const
{
    return start.Distance(end) * (to - from);
}

// ---- on a surface

ZETOpenSurfaceSegment::ZETOpenSurfaceSegment(const ZETOpenSurface& surfaceOfSegment, const gp_Pnt2d& startPlace,
                                             const gp_Pnt2d& endPlace)
    : start(startPlace)
    , end(endPlace)
    , surface(ZETOpenSurfacePrivate::Of(surfaceOfSegment).adaptor)
{
    CheckTurns(*ZETOpenSurfacePrivate::Of(surfaceOfSegment).geometry, start);
    CheckTurns(*ZETOpenSurfacePrivate::Of(surfaceOfSegment).geometry, end);
    if (surface->GetType() == GeomAbs_Plane) {
        line.emplace(Evaluate(start), Evaluate(end));
    } else if (start.Distance(end) > Precision::PConfusion()) {
        // The kernel's line has the distance as parameter.
        const gp_Dir2d direction(gp_Vec2d(start, end));
        curve = new Adaptor3d_CurveOnSurface(
            new Geom2dAdaptor_Curve(new Geom2d_Line(start, direction), 0.0, start.Distance(end)), surface);
        lastParameter = start.Distance(end);
    }
}

ZETOpenSurfaceSegment::ZETOpenSurfaceSegment(const ZETOpenSurface& surfaceOfSegment,
                                             const Handle(Geom2d_Curve) & parameterCurve, double first, double last)
    : geometry(GetChecked(*ZETOpenSurfacePrivate::Of(surfaceOfSegment).geometry, parameterCurve, first, last))
    , firstParameter(first)
    , lastParameter(last)
    , start(parameterCurve->Value(first))
    , end(parameterCurve->Value(last))
    , surface(ZETOpenSurfacePrivate::Of(surfaceOfSegment).adaptor)
{
    if (std::abs(last - first) > Precision::PConfusion()) {
        curve = new Adaptor3d_CurveOnSurface(
            new Geom2dAdaptor_Curve(parameterCurve, std::min(first, last), std::max(first, last)), surface);
    }
}

gp_Pnt ZETOpenSurfaceSegment::GetPoint(double fraction) const
{
    return Evaluate(GetPlace(fraction));
}

gp_Vec ZETOpenSurfaceSegment::GetTangent(double fraction) const
{
    if (line)
        return line->GetTangent(fraction);
    if (curve.IsNull())
        return gp_Vec();
    gp_Pnt point;
    gp_Vec derivative;
    curve->D1(ToParameter(fraction), point, derivative);
    return derivative * (lastParameter - firstParameter);
}

gp_Pnt2d ZETOpenSurfaceSegment::GetPlace(double fraction) const
{
    if (fraction <= 0.0)
        return start;
    if (fraction >= 1.0)
        return end;
    return geometry.IsNull() ? Interpolate(start, end, fraction) : geometry->Value(ToParameter(fraction));
}

double ZETOpenSurfaceSegment::GetFraction(double from, double distance) const
{
    if (line)
        return line->GetFraction(from, distance);
    const bool forward = lastParameter >= firstParameter;
    const double there = distance < 0.0 ? 0.0 : 1.0;
    const double left = distance < 0.0 ? GetLength(0.0, from) : GetLength(from, 1.0);
    if (curve.IsNull() || !(left > 0.0) || std::abs(distance) >= left)
        return there;
    const double guess = from + (there - from) * std::abs(distance) / left;
    const GCPnts_AbscissaPoint search(*curve, forward ? distance : -distance, ToParameter(from), ToParameter(guess),
                                      lengthTolerance);
    if (!search.IsDone())
        return guess;
    return std::clamp(ToFraction(search.Parameter()), 0.0, 1.0);
}

ZETOpenSegment::Nearest ZETOpenSurfaceSegment::Project(const gp_Pnt& point, double from, double to) const
{
    if (line)
        return line->Project(point, from, to);
    Nearest nearest{from, GetPoint(from).Distance(point)};
    TakeIfNearer(point, GetPoint(to), to, nearest);
    if (curve.IsNull() || !(to > from))
        return nearest;
    const double first = ToParameter(from);
    const double last = ToParameter(to);
    if (std::abs(last - first) <= Precision::PConfusion())
        return nearest;
    const Extrema_ExtPC search(point, *curve, std::min(first, last), std::max(first, last));
    for (int i = 1; search.IsDone() && i <= search.NbExt(); ++i) {
        const double fraction = std::clamp(ToFraction(search.Point(i).Parameter()), from, to);
        TakeIfNearer(point, GetPoint(fraction), fraction, nearest);
    }
    return nearest;
}

std::vector<double> ZETOpenSurfaceSegment::GetPolyline(double from, double to, double deflection, double angle) const
{
    std::vector<double> fractions;
    if (line || curve.IsNull() || !(to > from))
        return fractions;
    const double first = ToParameter(from);
    const double last = ToParameter(to);
    if (std::abs(last - first) <= Precision::PConfusion())
        return fractions;
    const GCPnts_TangentialDeflection points(*curve, std::min(first, last), std::max(first, last), angle, deflection);
    for (int i = 2; i < points.NbPoints(); ++i)
        fractions.push_back(std::clamp(ToFraction(points.Parameter(i)), from, to));
    std::sort(fractions.begin(), fractions.end());
    return fractions;
}

std::shared_ptr<const ZETOpenSurfaceSegment> ZETOpenSurfaceSegment::MakePart(const ZETOpenSurface& surfaceOfSegment,
                                                                             double from, double to) const
{
    return geometry.IsNull() ? std::make_shared<ZETOpenSurfaceSegment>(surfaceOfSegment, GetPlace(from), GetPlace(to))
                             : std::make_shared<ZETOpenSurfaceSegment>(surfaceOfSegment, geometry, ToParameter(from),
                                                                       ToParameter(to));
}

double ZETOpenSurfaceSegment::ComputeLength(double from, double to) const
{
    if (line)
        return line->GetLength(from, to);
    if (curve.IsNull())
        return 0.0;
    const double first = ToParameter(from);
    const double last = ToParameter(to);
    return GCPnts_AbscissaPoint::Length(*curve, std::min(first, last), std::max(first, last), lengthTolerance);
}

double ZETOpenSurfaceSegment::ToParameter(double fraction) const
{
    return fraction <= 0.0   ? firstParameter
           : fraction >= 1.0 ? lastParameter
                             : firstParameter + fraction * (lastParameter - firstParameter);
}

double ZETOpenSurfaceSegment::ToFraction(double parameter) const
{
    return (parameter - firstParameter) / (lastParameter - firstParameter);
}

gp_Pnt ZETOpenSurfaceSegment::Evaluate(const gp_Pnt2d& place) const
{
    return surface->Value(place.X(), place.Y());
}
