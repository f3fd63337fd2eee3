#pragma once

#include <ZETGeometry/ZETGeoCurve.h>
#include <ZETGeometry/ZETGeoRangeOfCurve.h>
#include <ZETHostGlobal.h>

class ZETGeoCurveOnSurface;
class ZETGeoSurface;

/*! A curve that exists as a polyline in space and, at the same time, on any number of surfaces: the curve of an edge.
 */
class ZETHOST_EXPORT ZETGeoComboCurve : public ZETGeoCurve
{
    Q_OBJECT

public:
    ~ZETGeoComboCurve() override;

    /*! The curve's image on \a surface; null if there is none, and then the arguments stay as they were.
     *  \a reversed tells whether the image runs against this curve, \a range which part of the image belongs to it. */
    virtual const ZETGeoCurveOnSurface* GetCurve(const ZETGeoSurface* surface, bool* reversed,
                                                 ZETGeoRangeOfCurve* range) const = 0;

protected:
    using ZETGeoCurve::ZETGeoCurve;
};
