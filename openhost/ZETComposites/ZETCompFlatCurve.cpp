#include <ZETComposites/ZETCompFlatCurve.h>

ZETCompFlatCurve::ZETCompFlatCurve(ZETFeatObject* parent)
    : ZETCompFlatGeometry(parent)
{
}

ZETCompFlatCurve::ZETCompFlatCurve(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompFlatGeometry(container, reference)
{
}

ZETCompFlatCurve::~ZETCompFlatCurve() = default;
