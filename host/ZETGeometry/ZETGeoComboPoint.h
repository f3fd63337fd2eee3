#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>
#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>

class ZETGeoPointOnSurface;
class ZETGeoSurface;

/*! A point that exists in space and, at the same time, on any number of surfaces: the point of a vertex. */
class ZETHOST_EXPORT ZETGeoComboPoint : public ZETGeoGeometry
{
    Q_OBJECT

public:
    ~ZETGeoComboPoint() override;

    /*! The point's image on \a surface, owned by this point; null if there is none. */
    virtual const ZETGeoPointOnSurface* GetPoint(const ZETGeoSurface* surface) const = 0;
    /*! The position, in mm, in the point's own coordinates: the plane of the flat pattern for flat points, model
     *  coordinates for all other. */
    virtual ZETMathPoint GetPosition() const = 0;

protected:
    using ZETGeoGeometry::ZETGeoGeometry;
};
