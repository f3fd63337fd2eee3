#include <ZETComposites/ZETCompFlatPattern.h>

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETCompFlatPattern::ZETCompFlatPattern(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
{
}

ZETCompFlatPattern::ZETCompFlatPattern(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETCompFlatPattern::~ZETCompFlatPattern() = default;
