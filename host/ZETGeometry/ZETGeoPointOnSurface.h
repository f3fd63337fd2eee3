#pragma once

#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETHostGlobal.h>

/*! A point bound to a surface. A value that its vertex or combo point owns. */
class ZETHOST_EXPORT ZETGeoPointOnSurface
{
public:
    explicit ZETGeoPointOnSurface(const ZETGeoLocationOnSurface& at)
        : location(at)
    {
    }

    ZETGeoLocationOnSurface GetLocationOnSurface() const { return location; }
    /*! The surface; may be null. */
    const ZETGeoSurface* GetSurface() const { return location.GetSurface(); }

private:
    ZETGeoLocationOnSurface location;
};
