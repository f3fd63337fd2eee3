#pragma once

#include "openhost/ZETGeometry/ZETOpenChain_p.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"

#include <vector>

class ZETOpenComboCurvePrivate
{
public:
    struct Image {
        ZETOpenRef<ZETOpenCurveOnSurface> curve;
        bool reversed = false;
        ZETGeoRangeOfCurve range;
    };

    static ZETOpenComboCurvePrivate& Of(const ZETOpenComboCurve& curve) { return *curve.d; }

    QList<ZETMathPoint> vertices; //!< of a polyline in space; empty for a curve that is its first image
    ZETOpenChain chain;
    std::vector<Image> images;
};
