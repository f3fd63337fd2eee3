#include <ZETComposites/ZETCompSubdivision.h>

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <ZETComposites/ZETCompSubPly.h>

ZETCompSubdivision::ZETCompSubdivision(ZETFeatObject* parent)
    : ZETCompStrategyBase(parent)
{
}

ZETCompSubdivision::ZETCompSubdivision(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompStrategyBase(container, reference)
{
}

ZETCompSubdivision::~ZETCompSubdivision() = default;

QList<ZETCompSubPly*> ZETCompSubdivision::GetSubPlies() const
{
    return ZETModel::ChildrenOfClass<ZETCompSubPly>(*this);
}
