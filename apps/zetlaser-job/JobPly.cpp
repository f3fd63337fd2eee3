#include "JobPly.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <numbers>

namespace
{
QString GetLabel(const ZETFeatObject* feature)
{
    return feature ? feature->GetLabel() : QString();
}
} // namespace

JobPly::JobPly(const ZETFeatObject& feature)
    : layup(GetLabel(FindAbove<ZETCompLayup>(&feature)))
    , sequence(GetLabel(FindAbove<ZETCompSequence>(&feature)))
    , name(feature.GetLabel())
{
    const auto* ply = FindAbove<ZETCompPly>(&feature);
    if (!ply)
        return;
    if (ply != &feature)
        parent = ply->GetLabel();
    direction = ply->GetDirection() * 180.0 / std::numbers::pi;
    material = ply->GetMaterials().value(0);
}
