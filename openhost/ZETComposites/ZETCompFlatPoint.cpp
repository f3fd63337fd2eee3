#include <ZETComposites/ZETCompFlatPoint.h>

ZETCompFlatPoint::ZETCompFlatPoint(ZETFeatObject* parent)
    : ZETCompFlatGeometry(parent)
{
}

ZETCompFlatPoint::ZETCompFlatPoint(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompFlatGeometry(container, reference)
{
}

ZETCompFlatPoint::~ZETCompFlatPoint() = default;
