#include <ZETComposites/ZETCompFlatContour.h>

ZETCompFlatContour::ZETCompFlatContour(ZETFeatObject* parent)
    : ZETCompFlatGeometry(parent)
{
}

ZETCompFlatContour::ZETCompFlatContour(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompFlatGeometry(container, reference)
{
}

ZETCompFlatContour::~ZETCompFlatContour() = default;
