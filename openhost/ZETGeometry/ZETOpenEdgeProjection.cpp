#include "openhost/ZETGeometry/ZETOpenEdgeProjection_p.h"

#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSegment_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <GCPnts_TangentialDeflection.hxx>
#include <Precision.hxx>

#include <algorithm>

namespace
{
constexpr double deflection = 0.01; // mm
constexpr double angle = 0.1;       // rad
constexpr int mostBisections = 12;  // of a piece; reached only where the projection has a kink, as at a border
constexpr double probes[] = {0.25, 0.5, 0.75};
} // namespace

ZETOpenEdgeProjection::ZETOpenEdgeProjection(const TopoDS_Edge& edge, const ZETOpenSurface& targetSurface)
    : curve(edge)
    , surface(targetSurface)
{
    // What is smooth in space may not be on the surface, so the edge's own pieces are only the beginning.
    const GCPnts_TangentialDeflection pieces(curve, angle, deflection);
    Sample last = Take(pieces.Parameter(1));
    places.push_back(last.place);
    for (int i = 2; i <= pieces.NbPoints(); ++i) {
        const Sample next = Take(pieces.Parameter(i));
        AddUpTo(last, next, mostBisections);
        last = next;
    }
    const auto isSame = [](const gp_Pnt2d& a, const gp_Pnt2d& b) { return a.IsEqual(b, Precision::PConfusion()); };
    places.erase(std::unique(places.begin(), places.end(), isSame), places.end());
    if (edge.Orientation() == TopAbs_REVERSED)
        std::reverse(places.begin(), places.end());
}

ZETOpenEdgeProjection::Sample ZETOpenEdgeProjection::Take(double parameter)
{
    const gp_Pnt point = curve.Value(parameter);
    const auto location = surface.Project(FromKernel(point));
    const gp_Pnt projected = ToKernel(location.GetPoint());
    maxDistance = std::max(maxDistance, projected.Distance(point));
    return {parameter, gp_Pnt2d(location.GetU(), location.GetV()), projected};
}

/*! Whether what lies between the samples is near the line between them, however fast it is run through. */
bool ZETOpenEdgeProjection::IsStraight(const Sample& from, const Sample& to)
{
    const gp_Pnt2d end = ZETOpenSurfacePrivate::Of(surface).Unwrap(from.place, to.place);
    const ZETOpenSurfaceSegment line(surface, from.place, end);
    return std::all_of(std::begin(probes), std::end(probes), [&](double probe) {
        const Sample sample = Take(from.parameter + probe * (to.parameter - from.parameter));
        return line.Project(sample.point, 0.0, 1.0).distance <= deflection;
    });
}

void ZETOpenEdgeProjection::AddUpTo(const Sample& from, const Sample& to, int depth)
{
    if (depth > 0 && !IsStraight(from, to)) {
        const Sample middle = Take(0.5 * (from.parameter + to.parameter));
        AddUpTo(from, middle, depth - 1);
        AddUpTo(middle, to, depth - 1);
        return;
    }
    places.push_back(to.place);
}
