#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

/*! A surface. Abstract: the host brings its kernel's surfaces. Lengths are mm. */
class ZETHOST_EXPORT ZETGeoSurface : public ZETGeoGeometry
{
    Q_OBJECT

public:
    ~ZETGeoSurface() override;

    /*! The surface's own normal at a location of this surface, of any length; callers normalise. */
    virtual ZETMathVector GetNormal(const ZETGeoLocationOnSurface& location) const = 0;
    /*! The location of this surface that is nearest to \a point. */
    virtual ZETGeoLocationOnSurface Project(const ZETMathPoint& point) const = 0;
    /*! The box that holds the surface. */
    virtual ZETMathBoundingBox GetBoundingBox() const = 0;

protected:
    using ZETGeoGeometry::ZETGeoGeometry;

private:
    friend class ZETGeoLocationOnSurface;
    /*! The point with the parameters \a u and \a v: what ZETGeoLocationOnSurface::GetPoint answers. */
    virtual ZETMathPoint EvaluatePoint(double u, double v) const = 0;
};
