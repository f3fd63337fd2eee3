#include "JobThinning.h"

#include "JobSteps.h"

#include "laser/ZETLaserProcesses.h"

#include <ZETFeature/ZETFeatObject.h>

#include <algorithm>

using namespace ZETLaserOutline;

namespace
{
constexpr double smallestExcess = 1e-6; //!< mm: less than the last decimal of any file

double GetDistanceToSegment(const ZETMathPoint& point, const ZETMathPoint& from, const ZETMathPoint& to)
{
    const ZETMathVector along = to - from;
    const double square = along.GetSquaredMagnitude();
    const double share = square > 0.0 ? std::clamp(((point - from) * along) / square, 0.0, 1.0) : 0.0;
    return point.GetDistanceTo(from + along * share);
}

/*! The points of \a after are some of those of \a before, in their order, and the first of both is the same. */
double GetWorstDeviation(const Curve& before, const Curve& after)
{
    if (after.points.isEmpty())
        return 0.0;
    double worst = 0.0;
    qsizetype kept = 1; // points of the thinned curve that were met so far
    for (qsizetype i = 1; i < before.points.size(); ++i) {
        const bool isBehindLast = kept == after.points.size();
        // The end of an open curve stays, so that a point ahead of it and at the same place is another one.
        const bool isEnd = !after.closed && kept == after.points.size() - 1;
        const ZETMathPoint& position = before.points[i].position;
        const ZETMathPoint& next = after.points[isBehindLast ? 0 : kept].position;
        if (!isBehindLast && position == next && (!isEnd || i == before.points.size() - 1))
            ++kept;
        else
            worst = std::max(worst, GetDistanceToSegment(position, after.points[kept - 1].position, next));
    }
    return worst;
}

double GetLength(const Curve& curve)
{
    double length = 0.0;
    for (qsizetype i = 1; i < curve.points.size(); ++i)
        length += curve.points[i].GetShownPoint().GetDistanceTo(curve.points[i - 1].GetShownPoint());
    if (curve.closed && curve.points.size() > 1)
        length += curve.points.first().GetShownPoint().GetDistanceTo(curve.points.last().GetShownPoint());
    return length;
}

JobThinnedPly ComparePly(const Group& before, const Group& after)
{
    JobThinnedPly ply;
    ply.feature = after.feature;
    for (qsizetype contour = 0; contour < after.contours.size(); ++contour) {
        for (qsizetype i = 0; i < after.contours[contour].curves.size(); ++i) {
            const Curve& full = before.contours[contour].curves[i];
            const Curve& thinned = after.contours[contour].curves[i];
            ply.curves += thinned.points.isEmpty() ? 0 : 1;
            ply.pointsBefore += full.points.size();
            ply.pointsAfter += thinned.points.size();
            ply.worstDeviation = std::max(ply.worstDeviation, GetWorstDeviation(full, thinned));
            ply.length += GetLength(thinned);
        }
    }
    return ply;
}

void CollectPlies(const Group& before, const Group& after, QList<JobThinnedPly>& plies)
{
    if (after.feature && (after.kind == Kind::Ply || after.kind == Kind::SubPly))
        plies.append(ComparePly(before, after));
    for (qsizetype i = 0; i < after.groups.size(); ++i)
        CollectPlies(before.groups[i], after.groups[i], plies);
}
} // namespace

JobThinning::JobThinning(ZETLaserOptions& options)
{
    const Group before = options.GetLaserProcesses()->GetOutline();
    JobSteps::Thin(options);
    CollectPlies(before, options.GetLaserProcesses()->GetOutline(), plies);
}

QStringList JobThinning::GetWarnings(const ZETLaserOptions& options) const
{
    const double tolerance = options.GetMinimizePointsTolerance();
    const JobThinnedPly* worst = nullptr;
    int count = 0;
    for (const JobThinnedPly& ply : plies) {
        if (ply.worstDeviation <= tolerance + smallestExcess)
            continue;
        ++count;
        if (!worst || ply.worstDeviation > worst->worstDeviation)
            worst = &ply;
    }
    if (!worst)
        return {};
    return {QCoreApplication::translate(
                "zetlaser-job",
                "thinning took a point of the ply \"%1\" away that lies %2 mm off the line drawn instead; "
                "the tolerance is %3 mm (plies where that happened: %4)")
                .arg(worst->feature->GetLabel(), QString::number(worst->worstDeviation, 'f', 3),
                     QString::number(tolerance), QString::number(count))};
}
