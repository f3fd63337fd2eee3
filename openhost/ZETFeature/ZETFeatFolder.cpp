#include <ZETFeature/ZETFeatFolder.h>

#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

namespace
{
const ZETOpenTypes::Registration<ZETFeatFolder> registration;
} // namespace

ZETFeatFolder::ZETFeatFolder(ZETFeatObject* parent)
    : ZETFeatObject(parent ? qobject_cast<ZETFeatContainer*>(parent->GetContainer()) : nullptr, parent)
{
}

ZETFeatFolder::ZETFeatFolder(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETFeatFolder::~ZETFeatFolder() = default;

bool ZETFeatFolder::IsChildAllowed(const QMetaObject* type) const
{
    for (const ZETFeatObject* folder = this; folder; folder = qobject_cast<const ZETFeatFolder*>(folder->GetParent())) {
        if (folder->ZETFeatObject::IsChildAllowed(type))
            return true;
    }
    return false;
}
