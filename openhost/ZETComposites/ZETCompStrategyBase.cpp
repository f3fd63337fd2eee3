#include <ZETComposites/ZETCompStrategyBase.h>

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETCompStrategyBase::ZETCompStrategyBase(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
{
}

ZETCompStrategyBase::ZETCompStrategyBase(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETCompStrategyBase::~ZETCompStrategyBase() = default;
