#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserProcesses_p.h"

#include <ZETMathematics/ZETMathAxis.h>

#include <QVariant>

namespace
{
void CountCurve(const ZETLaserCurve& curve, const ZETMathAxis& axis, ZETLaserProcesses::Statistics& statistics)
{
    statistics.points += curve.GetPointCount();
    for (const ZETLaserPoint& point : curve.GetPoints()) {
        const ZETMathPoint shown = axis * point.GetShownPoint();
        statistics.box.Expand(ZETMathBoundingBox(shown, shown));
    }
}

void CountGroup(ZETLaserGroup& group, const ZETMathAxis& axis, ZETLaserProcesses::Statistics& statistics)
{
    if (group.GetPointCount() < 1)
        return;
    if (group.property(ZETLaserEntityProperties::ply).isValid())
        ++statistics.plies;
    else if (group.property(ZETLaserEntityProperties::subPly).isValid())
        ++statistics.subPlies;
    for (const ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(group)) {
        for (const auto& curve : contour->GetCurves())
            CountCurve(*curve, axis, statistics);
    }
    for (ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group))
        CountGroup(*child, axis, statistics);
}
} // namespace

ZETLaserProcesses::Statistics ZETLaserProcesses::GetStatistics(const ZETMathAxis& axis) const
{
    Statistics statistics;
    for (ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(*d->root))
        CountGroup(*child, axis, statistics);
    return statistics;
}
