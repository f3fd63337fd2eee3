#include "features/ZETLaserFlatGeometry.h"

#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopVertex.h>

namespace
{

ZETCompStrategy* FindStrategy(const ZETCompFlatPattern& flatPattern)
{
    for (ZETFeatObject* ancestor = flatPattern.GetParent(); ancestor; ancestor = ancestor->GetParent()) {
        if (auto* const strategy = qobject_cast<ZETCompStrategy*>(ancestor))
            return strategy;
    }
    return nullptr;
}

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
    const ZETCompStrategy* const strategy = flatPattern ? FindStrategy(*flatPattern) : nullptr;
    if (!strategy)
        return false;
    const ZETCompFlatPoint* const flatPoint = FindImage(*flatPattern, strategy->GetSeedPoint());
    const ZETTopBody* const body = flatPoint ? flatPoint->GetBody() : nullptr;
    const QList<const ZETTopEntity*> vertices = body ? body->GetEntities(0) : QList<const ZETTopEntity*>();
    const auto* const vertex = vertices.isEmpty() ? nullptr : qobject_cast<const ZETTopVertex*>(vertices.first());
    if (!vertex)
        return false;
    point = vertex->GetPoint()->GetPosition();
    return true;
}
