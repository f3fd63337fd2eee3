#pragma once

#include <ZETGeometry/ZETGeoLocationOnCurve.h>
#include <ZETHostGlobal.h>

/*! A point bound to a curve. A value that its vertex owns. */
class ZETHOST_EXPORT ZETGeoPointOnCurve
{
public:
    explicit ZETGeoPointOnCurve(const ZETGeoLocationOnCurve& at)
        : location(at)
    {
    }

    ZETGeoLocationOnCurve GetLocationOnCurve() const { return location; }
    /*! The curve; may be null. */
    const ZETGeoCurve* GetCurve() const { return location.GetCurve(); }

private:
    ZETGeoLocationOnCurve location;
};
