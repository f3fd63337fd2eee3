#include <ZETFeature/ZETFeatRoot.h>

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

ZETFeatRoot::ZETFeatRoot(ZETFeatContainer* container)
    : ZETFeatObject(container, nullptr)
{
}

ZETFeatRoot::ZETFeatRoot(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETFeatRoot::~ZETFeatRoot() = default;
