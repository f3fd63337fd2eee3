#pragma once

#include "openhost/ZETGeometry/ZETOpenChain_p.h"
#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>

#include <vector>

class ZETGeoAssembledCurveOnSurfacePrivate
{
public:
    ZETGeoAssembledCurveOnSurfacePrivate(const QList<ZETGeoRangeOfCurve>& rangesInOrder,
                                         const QList<bool>& sensesInOrder, bool walkReversed);

    static ZETGeoAssembledCurveOnSurfacePrivate& Of(const ZETGeoAssembledCurveOnSurface& curve) { return *curve.d; }

    QList<ZETGeoRangeOfCurve> ranges;
    QList<bool> senses;
    bool reverse = false;
    std::vector<ZETOpenRef<const ZETGeoCurve>> held; //!< the ranges' curves

    // What Initialize works out.
    ZETOpenChain chain;
    ZETOpenRef<const ZETGeoSurface> surface;
};
