#pragma once

#include <ZETFeature/ZETFeatObject.h>

/*! The type of a tree's root. */
class ZETHOST_EXPORT ZETFeatRoot : public ZETFeatObject
{
    Q_OBJECT

public:
    ~ZETFeatRoot() override;

protected:
    /*! Becomes the root of \a container. */
    explicit ZETFeatRoot(ZETFeatContainer* container);
    ZETFeatRoot(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
};
