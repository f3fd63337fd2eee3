#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETGeometry/ZETGeoSurface.h>

ZETGeoSurface::~ZETGeoSurface() = default;

ZETGeoComboPoint::~ZETGeoComboPoint() = default;

ZETGeoLocationOnSurface::~ZETGeoLocationOnSurface() = default;

ZETMathPoint ZETGeoLocationOnSurface::GetPoint() const
{
    return surface ? surface->EvaluatePoint(u, v) : ZETMathPoint();
}
