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

constexpr double longestSpan = 10.0; // mm: short enough for the distance along one span to have a single minimum
constexpr int searchRounds = 40;     // of the golden section: what is left then is below a millionth of a millimetre

bool IsBoxNear(const ZETMathBoundingBox& box, const ZETMathPoint& point, double margin)
{
    const ZETMathPoint lower = box.GetLowerPoint();
    const ZETMathPoint upper = box.GetUpperPoint();
    return point.GetX() >= lower.GetX() - margin && point.GetX() <= upper.GetX() + margin &&
           point.GetY() >= lower.GetY() - margin && point.GetY() <= upper.GetY() + margin &&
           point.GetZ() >= lower.GetZ() - margin && point.GetZ() <= upper.GetZ() + margin;
}

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
    , parameters{0.0}
    , points{boundary.GetLocation(0).GetMathPoint()}
{
    for (int segment = 0; segment < boundary.GetNumSegments(); ++segment)
        AddSegment(segment);
    MakeBlocks();
}

// The kernel's parameters are whole numbers at the vertices, and to ask for a place by its parameter costs a fraction
// of what it costs to ask for one at an arc length.
ZETMathPoint ZETCompThicknessAnalyzerPrivate::Outline::GetPoint(double parameter) const
{
    return ZETGeoLocationOnCurve(curve, parameter).GetMathPoint();
}

void ZETCompThicknessAnalyzerPrivate::Outline::AddSegment(int segment)
{
    constexpr int probes = 4; // per span, to measure it
    const double length = curve->GetSegmentLength(segment);
    const int count = std::max(2, static_cast<int>(std::ceil(length / longestSpan)));
    for (int i = 0; i < count; ++i) {
        double measured = 0.0;
        ZETMathPoint last = points.back();
        for (int k = 1; k <= probes; ++k) {
            const ZETMathPoint next = GetPoint(segment + (i + static_cast<double>(k) / probes) / count);
            measured += next.GetDistanceTo(last);
            last = next;
        }
        parameters.push_back(segment + (i + 1.0) / count);
        points.push_back(last);
        lengths.push_back(1.01 * measured);
    }
}

void ZETCompThicknessAnalyzerPrivate::Outline::MakeBlocks()
{
    constexpr size_t blockSize = 32;
    for (size_t first = 0; first < lengths.size(); first += blockSize) {
        Block block{first, std::min(first + blockSize, lengths.size()), ZETMathBoundingBox(), 0.0};
        for (size_t span = block.first; span < block.last; ++span) {
            block.box.Expand(ZETMathBoundingBox(points[span], points[span + 1]));
            block.reach = std::max(block.reach, 0.5 * lengths[span]);
        }
        blocks.push_back(block);
    }
}

/*! Looks for the nearest place of one span by the golden section. What is left of the span can't come nearer than its
 *  ends by more than its length, so most searches end after a few rounds. */
bool ZETCompThicknessAnalyzerPrivate::Outline::IsSpanNear(size_t span, const ZETMathPoint& point, double margin) const
{
    const double ratio = (std::sqrt(5.0) - 1.0) / 2.0;
    double low = parameters[span];
    double high = parameters[span + 1];
    double left = 2.0 * lengths[span]; // twice: parameters needn't grow evenly along the span
    for (int round = 0; round < searchRounds; ++round) {
        const double a = high - ratio * (high - low);
        const double b = low + ratio * (high - low);
        const double atA = GetPoint(a).GetDistanceTo(point);
        const double atB = GetPoint(b).GetDistanceTo(point);
        if (std::min(atA, atB) <= margin)
            return true;
        if (std::min(atA, atB) - left > margin)
            return false;
        (atA < atB ? high : low) = atA < atB ? b : a;
        left *= ratio;
    }
    return false;
}

bool ZETCompThicknessAnalyzerPrivate::Outline::IsNear(const ZETMathPoint& point, double margin) const
{
    for (const Block& block : blocks) {
        if (!IsBoxNear(block.box, point, margin + block.reach))
            continue;
        double atStart = points[block.first].GetDistanceTo(point);
        for (size_t span = block.first; span < block.last; ++span) {
            const double atEnd = points[span + 1].GetDistanceTo(point);
            if (std::min(atStart, atEnd) <= margin)
                return true;
            // The way from one end to the other past a place at distance x is at least atStart - x + atEnd - x.
            const bool canBeNear = 0.5 * (atStart + atEnd - lengths[span]) <= margin;
            if (canBeNear && IsSpanNear(span, point, margin))
                return true;
            atStart = atEnd;
        }
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

bool ZETCompThicknessAnalyzerPrivate::Cover::Holds(const ZETGeoLocationOnSurface& location, double margin) const
{
    const auto contains = [&](const auto& region) { return region->Contains(location); };
    if (std::any_of(regions.begin(), regions.end(), contains))
        return true;
    const ZETMathPoint point = location.GetPoint();
    return std::any_of(outlines.begin(), outlines.end(),
                       [&](const Outline& outline) { return outline.IsNear(point, margin); });
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
