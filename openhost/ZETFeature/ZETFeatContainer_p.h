#pragma once

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatContainerProvider.h>

/*! Record of ZETFeatContainer. */
class ZETFeatContainerPrivate
{
public:
    static ZETFeatContainerPrivate& Of(ZETFeatContainer& container) { return *container.d; }
    static const ZETFeatContainerPrivate& Of(const ZETFeatContainer& container) { return *container.d; }

    QUrl url;
    std::unique_ptr<ZETFeatContainerProvider> provider;
};
