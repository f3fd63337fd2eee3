#include "laser/ZETLaserOutline.h"
#include "laser/ZETLaserProcesses.h"

#include <ZETMathematics/ZETMathAxis.h>

namespace
{
void CountCurve(const ZETLaserOutline::Curve& curve, const ZETMathAxis& axis, ZETLaserProcesses::Statistics& statistics)
{
    statistics.points += curve.points.size();
    for (const ZETLaserOutline::Point& point : curve.points) {
        const ZETMathPoint shown = axis * point.GetShownPoint();
        statistics.box.Expand(ZETMathBoundingBox(shown, shown));
    }
}

void CountGroup(const ZETLaserOutline::Group& group, const ZETMathAxis& axis, ZETLaserProcesses::Statistics& statistics)
{
    if (group.pointCount < 1)
        return;
    if (group.kind == ZETLaserOutline::Kind::Ply)
        ++statistics.plies;
    else if (group.kind == ZETLaserOutline::Kind::SubPly)
        ++statistics.subPlies;
    for (const ZETLaserOutline::Contour& contour : group.contours) {
        for (const ZETLaserOutline::Curve& curve : contour.curves)
            CountCurve(curve, axis, statistics);
    }
    for (const ZETLaserOutline::Group& child : group.groups)
        CountGroup(child, axis, statistics);
}
} // namespace

ZETLaserProcesses::Statistics ZETLaserProcesses::GetStatistics(const ZETMathAxis& axis) const
{
    Statistics statistics;
    CountGroup(GetOutline(), axis, statistics);
    return statistics;
}
