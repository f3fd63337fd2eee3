#include "openhost/ZETGeometry/ZETOpenChain_p.h"

#include <ZETGeometry/ZETGeoComboCurve.h>
#include <ZETGeometry/ZETGeoCurve.h>
#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoLocationOnCurve.h>
#include <ZETGeometry/ZETGeoRangeOfCurve.h>

ZETGeoCurve::~ZETGeoCurve() = default;

ZETGeoCurveOnSurface::~ZETGeoCurveOnSurface() = default;

ZETGeoComboCurve::~ZETGeoComboCurve() = default;

ZETGeoLocationOnCurve::~ZETGeoLocationOnCurve() = default;

ZETMathPoint ZETGeoLocationOnCurve::GetMathPoint() const
{
    return curve ? curve->EvaluatePoint(parameter) : ZETMathPoint();
}

ZETGeoRangeOfCurve::~ZETGeoRangeOfCurve() = default;

bool ZETGeoRangeOfCurve::IsInside(const ZETGeoLocationOnCurve& location) const
{
    if (!GetCurve() || location.GetCurve() != GetCurve())
        return false;
    const double at = location.GetParameter();
    const double from = start.GetParameter();
    const double to = end.GetParameter();
    if (GetCurve()->IsClosed()) {
        // The range may go on behind the end of the curve, and its end may be told either way.
        const double count = GetCurve()->GetNumSegments();
        const double last = to > from ? to : to + count;
        return (at >= from && at <= last) || (at + count >= from && at + count <= last);
    }
    return at >= from && at <= to;
}

bool ZETGeoRangeOfCurve::IsOutside(const ZETGeoLocationOnCurve& location) const
{
    return !IsInside(location);
}

double ZETGeoRangeOfCurve::GetLength() const
{
    const ZETOpenChain* const chain = ZETOpenChain::Of(GetCurve());
    return chain ? chain->GetLength(start.GetParameter(), end.GetParameter()) : 0.0;
}

const ZETGeoCurve* ZETGeoRangeOfCurve::GetCurve() const
{
    return start.GetCurve();
}
