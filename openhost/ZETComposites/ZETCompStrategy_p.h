#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETComposites/ZETCompStrategy.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETMaterial/ZETMatPackaging.h>

#include <QPointer>

class ZETCompStrategyPrivate
{
public:
    static ZETCompStrategyPrivate& Of(ZETCompStrategy& strategy) { return *strategy.d; }

    QPointer<ZETFeatGeometry> seedPoint;
    QPointer<ZETFeatGeometry> seedCurve;
    bool hasFinalSeed = false; //!< false: the seed point is projected onto the final surface
    ZETGeoLocationOnSurface finalSeed;
    ZETOpenRef<const ZETGeoSurface> finalSurface; //!< holds the surface of finalSeed
    ZETOpenRef<const ZETGeoCurveOnSurface> finalSeedCurve;
    QPointer<ZETMatPackaging> packaging;
};
