#pragma once

#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETHostGlobal.h>

#include <QUrl>

#include <memory>

class ZETFeatContainerPrivate;

/*! The object that holds one model and knows where it came from. */
class ZETHOST_EXPORT ZETFeatContainer : public ZETGeoContainer
{
    Q_OBJECT

public:
    ZETFeatContainer();
    ~ZETFeatContainer() override;

    /*! Where the model came from; empty for a model that was made in memory. */
    QUrl GetProviderUrl() const;

private:
    friend class ZETFeatContainerPrivate;
    std::unique_ptr<ZETFeatContainerPrivate> d;
};
