#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>

ZETGeoGeometryNotFoundException::ZETGeoGeometryNotFoundException() = default;

ZETGeoGeometryNotFoundException::ZETGeoGeometryNotFoundException(const ZETGeoGeometryNotFoundException& other) =
    default;

ZETGeoGeometryNotFoundException::~ZETGeoGeometryNotFoundException() = default;

const char* ZETGeoGeometryNotFoundException::what() const noexcept
{
    return "A reference leads to no object, or to an object of another class.";
}
