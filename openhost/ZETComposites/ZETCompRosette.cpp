#include <ZETComposites/ZETCompRosette.h>

ZETCompRosette::ZETCompRosette(ZETFeatObject* parent)
    : ZETWFAxisSystem(parent)
{
}

ZETCompRosette::ZETCompRosette(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETWFAxisSystem(container, reference)
{
}

ZETCompRosette::~ZETCompRosette() = default;
