#pragma once

#include <ZETGeometry/ZETGeoCurve.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETHostGlobal.h>

class ZETGeoSurface;

/*! A curve that lies on a surface. Its lengths are measured along the surface. */
class ZETHOST_EXPORT ZETGeoCurveOnSurface : public ZETGeoCurve
{
    Q_OBJECT

public:
    ~ZETGeoCurveOnSurface() override;

    /*! The supporting surface; null is possible. */
    virtual const ZETGeoSurface* GetSurface() const = 0;
    /*! The place of a location of this curve on the surface. */
    virtual ZETGeoLocationOnSurface GetLocationOnSurface(const ZETGeoLocationOnCurve& location) const = 0;

protected:
    using ZETGeoCurve::ZETGeoCurve;
};
