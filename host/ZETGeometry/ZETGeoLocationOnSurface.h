#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>

class ZETGeoSurface;

/*! A place on a surface: the surface and two parameters, whose meaning is the surface's own. A value, which must not
 *  outlive the surface. */
class ZETHOST_EXPORT ZETGeoLocationOnSurface
{
public:
    ZETGeoLocationOnSurface() = default;
    ZETGeoLocationOnSurface(const ZETGeoSurface* onSurface, double atU, double atV)
        : surface(onSurface)
        , u(atU)
        , v(atV)
    {
    }
    ZETGeoLocationOnSurface(const ZETGeoLocationOnSurface&) = default;
    ZETGeoLocationOnSurface& operator=(const ZETGeoLocationOnSurface&) = default;
    virtual ~ZETGeoLocationOnSurface();

    /*! The place in model coordinates, in mm; the origin without a surface. */
    ZETMathPoint GetPoint() const;
    /*! The surface; may be null. */
    const ZETGeoSurface* GetSurface() const { return surface; }

    double GetU() const { return u; }
    double GetV() const { return v; }

private:
    const ZETGeoSurface* surface = nullptr;
    double u = 0.0;
    double v = 0.0;
};
