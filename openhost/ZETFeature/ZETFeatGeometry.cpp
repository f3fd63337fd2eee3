#include <ZETFeature/ZETFeatGeometry.h>

#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

namespace
{
const ZETOpenTypes::Registration<ZETFeatGeometry> registration;
} // namespace

ZETFeatGeometry::ZETFeatGeometry(ZETFeatObject* parent)
    : ZETFeatObject(parent ? qobject_cast<ZETFeatContainer*>(parent->GetContainer()) : nullptr, parent)
{
}

ZETFeatGeometry::ZETFeatGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETFeatGeometry::~ZETFeatGeometry() = default;

ZETTopBody* ZETFeatGeometry::GetBody() const
{
    return nullptr;
}
