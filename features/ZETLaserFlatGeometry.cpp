#include "features/ZETLaserFlatGeometry.h"

#include "features/ZETLaserModelTree.h"

#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETGeometry/ZETGeoComboPoint.h>

namespace
{

ZETCompFlatPoint* FindImage(const ZETCompFlatPattern& flatPattern, const ZETFeatGeometry* source)
{
    for (ZETFeatObject* feature : flatPattern.GetAllChildren()) {
        auto* const flatPoint = qobject_cast<ZETCompFlatPoint*>(feature);
        if (flatPoint && flatPoint->GetSource() == source)
            return flatPoint;
    }
    return nullptr;
}

} // namespace

bool GetFlattenedSeedPoint(ZETCompFlatPattern* flatPattern, ZETMathPoint& point)
{
    const ZETCompStrategy* const strategy = flatPattern ? FindAncestor<ZETCompStrategy>(*flatPattern) : nullptr;
    if (!strategy)
        return false;
    const ZETCompFlatPoint* const flatPoint = FindImage(*flatPattern, strategy->GetSeedPoint());
    const ZETTopVertex* const vertex = flatPoint ? GetFirstVertex(flatPoint->GetBody()) : nullptr;
    if (!vertex)
        return false;
    point = vertex->GetPoint()->GetPosition();
    return true;
}
