#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"

#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"

ZETOpenRef<ZETGeoAssembledCurveOnSurface> MakeAssembledCurve(const ZETOpenRef<ZETOpenCurveOnSurface>& curve)
{
    return MakeAssembledCurve({curve}, {true});
}

ZETOpenRef<ZETGeoAssembledCurveOnSurface> MakeAssembledCurve(const QList<ZETOpenRef<ZETOpenCurveOnSurface>>& curves,
                                                             const QList<bool>& forward)
{
    QList<ZETGeoRangeOfCurve> ranges;
    for (const auto& curve : curves)
        ranges.append(curve ? curve->GetWholeRange() : ZETGeoRangeOfCurve());
    ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(new ZETGeoAssembledCurveOnSurface(ranges, forward, false));
    chain->Initialize();
    return chain;
}
