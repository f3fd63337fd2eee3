#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>

#include <QList>

class ZETCompPlyBasePrivate
{
public:
    static ZETCompPlyBasePrivate& Of(ZETCompPlyBase& ply) { return *ply.d; }

    QList<ZETOpenRef<ZETGeoAssembledCurveOnSurface>> boundaries; //!< an element may be null
    bool hasUpdatedBoundaries = false;                           //!< false: the boundaries are the updated ones
    QList<ZETOpenRef<const ZETGeoCurveOnSurface>> updatedBoundaries;
};
