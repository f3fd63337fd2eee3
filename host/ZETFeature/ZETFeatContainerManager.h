#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

#include <memory>

class ZETFeatContainer;
class ZETFeatContainerManagerPrivate;
class ZETFeatContainerProvider;

/*! Knows the provider of each container. There is one manager, which is never null. */
class ZETHOST_EXPORT ZETFeatContainerManager
{
public:
    static ZETFeatContainerManager* GetManager();

    /*! The provider of \a container; null if the container has none or is null. */
    ZETFeatContainerProvider* GetProvider(const ZETFeatContainer* container) const;

private:
    friend class ZETFeatContainerManagerPrivate;
    ZETFeatContainerManager();
    ~ZETFeatContainerManager();
    Q_DISABLE_COPY_MOVE(ZETFeatContainerManager)
    std::unique_ptr<ZETFeatContainerManagerPrivate> d;
};
