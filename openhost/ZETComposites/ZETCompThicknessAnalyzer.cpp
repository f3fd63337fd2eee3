#include "openhost/ZETComposites/ZETCompThicknessAnalyzer_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QMap>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double longestStep = 10.0; // mm: short enough for the distance along one step to have a single minimum
constexpr int searchRounds = 60;     // of the golden section: more than a double can resolve

/*! Thickness of one ply as laid, in mm: that of its own material, which is the first. */
double ThicknessOf(const ZETCompPly& ply)
{
    const QList<ZETMatMaterial*> materials = ply.GetMaterials();
    return materials.isEmpty() ? 0.0 : materials.first()->GetThickness();
}

/*! The plies of the layup of \a ply that are laid before it. A disabled ply isn't laid. */
QList<ZETCompPly*> PliesBeneath(const ZETCompPly& ply)
{
    QList<ZETCompPly*> beneath;
    const auto* const layup = ZETModel::AncestorOfClass<ZETCompLayup>(ply);
    if (!layup)
        return beneath;
    for (const ZETCompSequence* sequence : layup->GetSequences()) {
        for (ZETCompPly* other : sequence->GetPlies()) {
            if (other == &ply)
                return beneath;
            if (other->IsEffectivelyEnabled())
                beneath.append(other);
        }
    }
    return beneath;
}

/*! The boundaries that can hold a place. */
ZETCompThicknessAnalyzerPrivate::Boundaries ClosedBoundaries(const ZETCompPly& ply)
{
    ZETCompThicknessAnalyzerPrivate::Boundaries closed;
    for (const ZETGeoAssembledCurveOnSurface* boundary : ply.GetBoundaryCurves()) {
        if (boundary && boundary->IsClosed() && boundary->GetSurface())
            closed.append(ZETOpenRef<const ZETGeoCurveOnSurface>(boundary));
    }
    return closed;
}

} // namespace

ZETCompThicknessAnalyzerPrivate::Outline::Outline(const ZETGeoCurveOnSurface& boundary)
    : curve(&boundary)
{
    const double length = boundary.GetLength();
    const int count = std::max(8, static_cast<int>(std::ceil(length / longestStep)));
    step = length / count;
    ZETGeoLocationOnCurve location = boundary.GetLocation(0);
    for (int i = 0; i <= count; ++i) {
        locations.push_back(location);
        points.push_back(location.GetMathPoint());
        location = boundary.GetLocation(step, &location);
    }
    const auto smallest = [this](auto coordinate) {
        return (*std::min_element(points.begin(), points.end(), [coordinate](const auto& a, const auto& b) {
            return (a.*coordinate)() < (b.*coordinate)();
        }).*coordinate)();
    };
    const auto largest = [this](auto coordinate) {
        return (*std::max_element(points.begin(), points.end(), [coordinate](const auto& a, const auto& b) {
            return (a.*coordinate)() < (b.*coordinate)();
        }).*coordinate)();
    };
    lower = ZETMathPoint(smallest(&ZETMathPoint::GetX), smallest(&ZETMathPoint::GetY), smallest(&ZETMathPoint::GetZ));
    upper = ZETMathPoint(largest(&ZETMathPoint::GetX), largest(&ZETMathPoint::GetY), largest(&ZETMathPoint::GetZ));
}

bool ZETCompThicknessAnalyzerPrivate::Outline::IsBoxNear(const ZETMathPoint& point, double margin) const
{
    return point.GetX() >= lower.GetX() - margin && point.GetX() <= upper.GetX() + margin &&
           point.GetY() >= lower.GetY() - margin && point.GetY() <= upper.GetY() + margin &&
           point.GetZ() >= lower.GetZ() - margin && point.GetZ() <= upper.GetZ() + margin;
}

/*! The smallest distance from \a point to the boundary between the places \a span and \a span + 1. */
double ZETCompThicknessAnalyzerPrivate::Outline::GetNearest(qsizetype span, const ZETMathPoint& point) const
{
    const ZETGeoLocationOnCurve& from = locations[static_cast<size_t>(span)];
    const auto distanceAt = [&](double along) {
        return curve->GetLocation(along, &from).GetMathPoint().GetDistanceTo(point);
    };
    const double ratio = (std::sqrt(5.0) - 1.0) / 2.0;
    double low = 0.0;
    double high = step;
    double nearest = std::min(distanceAt(low), distanceAt(high));
    for (int round = 0; round < searchRounds && high - low > 1e-9; ++round) {
        const double a = high - ratio * (high - low);
        const double b = low + ratio * (high - low);
        const double atA = distanceAt(a);
        const double atB = distanceAt(b);
        nearest = std::min({nearest, atA, atB});
        (atA < atB ? high : low) = atA < atB ? b : a;
    }
    return nearest;
}

bool ZETCompThicknessAnalyzerPrivate::Outline::IsNear(const ZETMathPoint& point, double tolerance) const
{
    const double margin = tolerance + step; // nothing between two places is farther from them than the step
    if (!IsBoxNear(point, margin))
        return false;
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        if (points[i].GetDistanceTo(point) > margin)
            continue;
        if (GetNearest(static_cast<qsizetype>(i), point) <= tolerance)
            return true;
    }
    return false;
}

ZETCompThicknessAnalyzerPrivate::Cover::Cover(const Boundaries& closed)
    : boundaries(closed)
{
    QMap<const ZETGeoSurface*, QList<const ZETGeoCurveOnSurface*>> bySurface;
    for (const auto& boundary : boundaries) {
        bySurface[boundary->GetSurface()].append(boundary.Get());
        outlines.emplace_back(*boundary);
    }
    for (const auto& ofOneSurface : bySurface)
        regions.push_back(std::make_unique<ZETOpenRegion>(ofOneSurface));
}

bool ZETCompThicknessAnalyzerPrivate::Cover::Holds(const ZETGeoLocationOnSurface& location, double tolerance) const
{
    const auto contains = [&](const auto& region) { return region->Contains(location); };
    if (std::any_of(regions.begin(), regions.end(), contains))
        return true;
    const ZETMathPoint point = location.GetPoint();
    return std::any_of(outlines.begin(), outlines.end(),
                       [&](const Outline& outline) { return outline.IsNear(point, tolerance); });
}

const ZETCompThicknessAnalyzerPrivate::Cover& ZETCompThicknessAnalyzerPrivate::GetCover(const ZETCompPly& ply)
{
    const Boundaries boundaries = ClosedBoundaries(ply);
    std::unique_ptr<Cover>& cover = covers[&ply];
    if (!cover || !cover->IsMadeOf(boundaries))
        cover = std::make_unique<Cover>(boundaries);
    return *cover;
}

ZETCompThicknessAnalyzer::ZETCompThicknessAnalyzer()
    : d(std::make_unique<ZETCompThicknessAnalyzerPrivate>())
{
}

ZETCompThicknessAnalyzer::~ZETCompThicknessAnalyzer() = default;

void ZETCompThicknessAnalyzer::SetBoundaryTolerance(double tolerance)
{
    d->tolerance = tolerance;
}

void ZETCompThicknessAnalyzer::SetCurrentPly(ZETCompPly* ply)
{
    d->layers.clear();
    if (!ply)
        return;
    for (const ZETCompPly* beneath : PliesBeneath(*ply)) {
        const double thickness = ThicknessOf(*beneath);
        if (thickness != 0.0)
            d->layers.push_back({thickness, &d->GetCover(*beneath)});
    }
}

double ZETCompThicknessAnalyzer::ComputeThickness(const ZETGeoLocationOnSurface& location) const
{
    double thickness = 0.0;
    if (!location.GetSurface())
        return thickness;
    for (const auto& layer : d->layers) {
        if (layer.cover->Holds(location, d->tolerance))
            thickness += layer.thickness;
    }
    return thickness;
}
