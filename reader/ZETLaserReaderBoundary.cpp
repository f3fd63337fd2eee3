#include "reader/ZETLaserReaderComposites.h"

#include "features/ZETLaserExtraGeometry.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "reader/ZETLaserReaderTools.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompThicknessAnalyzer.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETGeometry/ZETGeoComboCurve.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopNet.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace ZETLaserReaderTools;

namespace
{

constexpr double joinDistance = 0.001; // mm: an edge that begins closer than this to the last one's end joins it
const ZETMathPoint farAway(-10000000.0, -10000000.0, 10000000.0);

ZETLaserExtraGeometry::OutputFilter GetFilter(ZETLaserOptions::EOutputType type)
{
    switch (type) {
    case ZETLaserOptions::Output3D:
        return ZETLaserExtraGeometry::Filter3D;
    case ZETLaserOptions::OutputFlat:
        return ZETLaserExtraGeometry::FilterFlat;
    case ZETLaserOptions::OutputFlatNesting:
    case ZETLaserOptions::OutputFlatNestingEmbedded:
        return ZETLaserExtraGeometry::FilterFlatNesting;
    }
    return ZETLaserExtraGeometry::OutputFilter(0);
}

/*! The ends of \a count equal parts of the way from one point to another. */
void AppendParts(std::vector<ZETMathPoint>& points, const ZETMathPoint& from, const ZETMathPoint& to, int count)
{
    if (count < 1)
        return;
    ZETMathVector direction = to - from;
    direction.Normalize();
    const double step = to.GetDistanceTo(from) / count;
    for (int k = 1; k <= count; ++k)
        points.push_back(from + (k * step) * direction);
}

} // namespace

void ZETLaserReaderComposites::ReadPlyGeometry(QSharedPointer<ZETLaserGroup> group, ZETCompPlyBase* ply,
                                               const ExtraGeometries& extra)
{
    const auto contour = QSharedPointer<ZETLaserContour>::create(group);
    contour->SetName(ply->GetLabel());
    group->AddContour(contour);
    if (options->GetOutputType() == ZETLaserOptions::Output3D)
        ReadPly3D(group, contour, ply, extra);
    else
        ReadPlyFlat(group, contour, ply, extra);
}

void ZETLaserReaderComposites::ReadPly3D(QSharedPointer<ZETLaserGroup> group, QSharedPointer<ZETLaserContour> contour,
                                         ZETCompPlyBase* ply, const ExtraGeometries& extra)
{
    const bool rosetteFirst = options->GetRosetteBeforePlyGeometry();
    if (rosetteFirst)
        ReadFilteredExtra(extra, group);
    else
        ReadBoundaries(contour, ply);
    if (options->GetOutputRosette() != 0)
        ReadRosette(contour, ply);
    if (options->GetUseSeedCurve() != 0)
        ReadSeedCurve(contour, ply);
    if (rosetteFirst)
        ReadBoundaries(contour, ply);
    else
        ReadFilteredExtra(extra, group);
}

void ZETLaserReaderComposites::ReadPlyFlat(QSharedPointer<ZETLaserGroup> group, QSharedPointer<ZETLaserContour> contour,
                                           ZETCompPlyBase* ply, const ExtraGeometries& extra)
{
    const ZETMathAxis axis = ComputeFlatAxis(ply);
    ZETCompFlatPattern* const flatPattern = ply->GetFlatPattern(options->GetActiveConfiguration());
    if (!flatPattern) {
        AddWarning(tr("No flat pattern found for ply %1").arg(ply->GetLabel()));
        return;
    }
    const bool rosetteFirst = options->GetRosetteBeforePlyGeometry();
    if (rosetteFirst)
        ReadFilteredExtra(extra, group);
    else
        ReadFlatContours(contour, ply, flatPattern, axis);
    if (options->GetOutputRosette() != 0)
        ReadFlatRosette(contour, ply, flatPattern, axis);
    if (options->GetUseSeedCurve() != 0)
        ReadFlatSeedCurve(contour, ply, flatPattern, axis);
    if (rosetteFirst)
        ReadFlatContours(contour, ply, flatPattern, axis);
    else
        ReadFilteredExtra(extra, group);
}

void ZETLaserReaderComposites::ReadFilteredExtra(const ExtraGeometries& extra, QSharedPointer<ZETLaserGroup> group)
{
    const ZETLaserExtraGeometry::OutputFilter filter = GetFilter(options->GetOutputType());
    for (ZETLaserExtraGeometry* feature : extra) {
        if (feature->GetFilters() & filter)
            ReadExtraGeometry(feature, group);
    }
}

void ZETLaserReaderComposites::ReadBoundaries(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply)
{
    const QString label = ply->GetLabel();
    const bool complete = options->GetOffsetMode() == ZETLaserOptions::OffsetComplete;
    int number = 0;
    if (complete && !options->GetUsePointOffset()) {
        for (const ZETGeoCurveOnSurface* boundary : ply->GetUpdatedBoundaryCurves()) {
            if (boundary)
                ReadBoundaryCurve(contour, label, ++number, boundary);
            else
                AddWarning(tr("Found null updated boundary in ply %1").arg(label));
        }
        return;
    }
    for (const ZETGeoAssembledCurveOnSurface* boundary : ply->GetBoundaryCurves()) {
        if (!boundary)
            AddWarning(tr("Found null boundary in ply %1").arg(label));
        else if (complete)
            ReadOffsetBoundaryCurve(ply, contour, label, ++number, boundary, true);
        else
            ReadBoundaryCurve(contour, label, ++number, boundary);
    }
}

void ZETLaserReaderComposites::ReadBoundaryCurve(QSharedPointer<ZETLaserContour> contour, const QString& label,
                                                 const int& number, const ZETGeoCurveOnSurface* curve)
{
    const auto target = AddCurve(contour, tr("%1 boundary %2").arg(label).arg(number));
    ReadSurfacePoints(*target, *curve);
    target->SetClosed(curve->IsClosed());
}

void ZETLaserReaderComposites::ReadOffsetBoundaryCurve(ZETCompPlyBase* ply, QSharedPointer<ZETLaserContour> contour,
                                                       const QString& label, const int& number,
                                                       const ZETGeoCurveOnSurface* curve, bool applyThickness)
{
    const auto target = AddCurve(contour, tr("%1 boundary %2").arg(label).arg(number));
    thicknessAnalyzer->SetCurrentPly(FindSelfOrAncestor<ZETCompPly>(*ply));
    if (const ZETGeoSurface* const surface = curve->GetSurface()) {
        QList<ZETLaserPoint>& points = target->GetPoints();
        points.reserve(CountPoints(*curve));
        WalkCurve(*curve, [&](const ZETGeoLocationOnCurve& place) {
            const ZETGeoLocationOnSurface location = curve->GetLocationOnSurface(place);
            const ZETMathVector normal = GetSignedNormal(*surface, location);
            if (applyThickness)
                points.emplaceBack(place.GetMathPoint() + thicknessAnalyzer->ComputeThickness(location) * normal,
                                   normal);
            else
                points.emplaceBack(place.GetMathPoint(), normal);
        });
    }
    target->SetClosed(curve->IsClosed());
}

void ZETLaserReaderComposites::ReadSurfacePoints(ZETLaserCurve& target, const ZETGeoCurveOnSurface& curve) const
{
    const ZETGeoSurface* const surface = curve.GetSurface();
    if (!surface)
        return;
    QList<ZETLaserPoint>& points = target.GetPoints();
    points.reserve(CountPoints(curve));
    WalkCurve(curve, [&](const ZETGeoLocationOnCurve& place) {
        const ZETGeoLocationOnSurface location = curve.GetLocationOnSurface(place);
        points.emplaceBack(location.GetPoint(), GetSignedNormal(*surface, location));
    });
}

template <typename Visit>
void ZETLaserReaderComposites::WalkCurve(const ZETGeoCurveOnSurface& curve, Visit visit) const
{
    const int count = curve.GetNumSegments();
    for (int s = 0; s < count; ++s) {
        const ZETGeoLocationOnCurve start = curve.GetLocation(s);
        // Meant: the last segment ends at location 0 on an open curve too.
        const ZETGeoLocationOnCurve end = curve.GetLocation(s < count - 1 ? s + 1 : 0);
        if (s == 0 && !curve.IsClosed())
            visit(start);
        if (options->GetUseMaxLength()) {
            const double length = curve.GetSegmentLength(s);
            const int parts = GetPartCount(length);
            for (int k = 1; k <= parts; ++k)
                visit(curve.GetLocation(k * (length / parts), &start));
        }
        visit(end); // Meant: behind parts, the end of the segment stands twice.
    }
}

int ZETLaserReaderComposites::GetPartCount(double length) const
{
    const double parts = std::ceil(length / options->GetMaxLength());
    return parts >= 1.0 && parts <= std::numeric_limits<int>::max() ? static_cast<int>(parts) : 0;
}

qsizetype ZETLaserReaderComposites::CountPoints(const ZETGeoCurveOnSurface& curve) const
{
    const int segments = curve.GetNumSegments();
    qsizetype count = segments + (curve.IsClosed() ? 0 : 1);
    if (options->GetUseMaxLength()) {
        for (int s = 0; s < segments; ++s)
            count += GetPartCount(curve.GetSegmentLength(s));
    }
    return count;
}

ZETMathVector ZETLaserReaderComposites::GetSignedNormal(const ZETGeoSurface& surface,
                                                        const ZETGeoLocationOnSurface& location) const
{
    ZETMathVector normal = surface.GetNormal(location);
    normal.Normalize();
    if (!layupDirection)
        normal *= -1.0;
    return normal;
}

void ZETLaserReaderComposites::ReadFlatContours(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                                                ZETCompFlatPattern* flatPattern, const ZETMathAxis& axis)
{
    const QString pattern = tr("%1 flat contour %2");
    for (ZETFeatObject* feature : flatPattern->GetAllChildren()) {
        if (auto* const flatContour = qobject_cast<ZETCompFlatContour*>(feature)) {
            // Meant: each contour begins to count anew, so all flat curves of a ply are called by the number 1.
            QString number;
            ReadFlatCurves(contour, flatContour, pattern, ply->GetLabel(), number, axis);
        }
    }
}

void ZETLaserReaderComposites::ReadFlatCurves(QSharedPointer<ZETLaserContour> contour, ZETFeatGeometry* geometry,
                                              const QString& pattern, const QString& first, QString& second,
                                              const ZETMathAxis& axis)
{
    const ZETTopBody* const body = geometry->GetBody();
    if (!body)
        return;
    int number = 0;
    for (const ZETTopDomain* domain : body->GetDomains()) {
        const auto* const net = qobject_cast<const ZETTopNet*>(domain);
        if (!net)
            continue;
        if (second.isEmpty())
            second = QString::number(++number);
        const auto curve = AddCurve(contour, pattern.arg(first).arg(second));
        ReadNetPoints(*curve, *net, axis);
        curve->SetClosed(net->IsClosed());
    }
}

void ZETLaserReaderComposites::ReadNetPoints(ZETLaserCurve& target, const ZETTopNet& net, const ZETMathAxis& axis) const
{
    // The points are counted before the first one is made: to move one to a longer list would cost as much as making
    // it.
    std::vector<ZETMathPoint> flat;
    ZETMathPoint last = farAway;
    for (int e = 0; e < net.GetNumEdges(); ++e) {
        if (const ZETGeoComboCurve* const edge = net.GetEdge(e)->GetCurve())
            AppendEdge(flat, *edge, last);
    }
    QList<ZETLaserPoint>& points = target.GetPoints();
    points.reserve(static_cast<qsizetype>(flat.size()));
    for (const ZETMathPoint& point : flat)
        points.emplaceBack(axis / point, ZETMathVector());
}

void ZETLaserReaderComposites::AppendEdge(std::vector<ZETMathPoint>& points, const ZETGeoComboCurve& edge,
                                          ZETMathPoint& last) const
{
    const int count = edge.GetNumPoints();
    if (count < 1)
        return;
    ZETMathPoint previous = edge.GetPoint(0);
    if (last.GetDistanceTo(previous) > joinDistance)
        points.push_back(previous);
    for (int i = 1; i < count; ++i) {
        const ZETMathPoint point = edge.GetPoint(i);
        const double distance = point.GetDistanceTo(previous);
        if (options->GetUseMaxLength() && distance > options->GetMaxLength())
            AppendParts(points, previous, point, GetPartCount(distance));
        points.push_back(point); // Meant: behind parts, the end of the segment stands twice.
        previous = point;
        last = point;
    }
}
