#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETHostGlobal.h>

class ZETOpenCurveOnSurface;

/*! Curves join, and a chain closes, where their ends are at most this far apart, in mm. */
constexpr double openJoinTolerance = 0.001;

/*! The chain that is \a curve from one end to the other: how a ply boundary is made from a curve. Initialized. */
ZETHOST_EXPORT ZETOpenRef<ZETGeoAssembledCurveOnSurface>
MakeAssembledCurve(const ZETOpenRef<ZETOpenCurveOnSurface>& curve);

/*! The chain of \a curves from one end to the other; the curve of the same index as a false in \a forward is walked
 *  against its own sense. Initialized; throws ZETSysException where they don't join. */
ZETHOST_EXPORT ZETOpenRef<ZETGeoAssembledCurveOnSurface>
MakeAssembledCurve(const QList<ZETOpenRef<ZETOpenCurveOnSurface>>& curves, const QList<bool>& forward);
