#include "openhost/ZETFeature/ZETFeatContainer_p.h"

#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

#include <ZETFeature/ZETFeatContainerManager.h>

/*! Nothing to keep: each container has its provider with it. */
class ZETFeatContainerManagerPrivate
{
};

ZETFeatContainer::ZETFeatContainer()
    : d(std::make_unique<ZETFeatContainerPrivate>())
{
}

ZETFeatContainer::~ZETFeatContainer()
{
    // Here and not in the base, because on their way out features may ask their container what it is.
    ZETGeoContainerPrivate::Clear(*this);
}

QUrl ZETFeatContainer::GetProviderUrl() const
{
    return d->url;
}

ZETFeatContainerProvider::~ZETFeatContainerProvider() = default;

ZETFeatContainerManager::ZETFeatContainerManager() = default;

ZETFeatContainerManager::~ZETFeatContainerManager() = default;

ZETFeatContainerManager* ZETFeatContainerManager::GetManager()
{
    static ZETFeatContainerManager manager;
    return &manager;
}

ZETFeatContainerProvider* ZETFeatContainerManager::GetProvider(const ZETFeatContainer* container) const
{
    return container ? ZETFeatContainerPrivate::Of(*container).provider.get() : nullptr;
}
