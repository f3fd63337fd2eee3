#pragma once

#include <ZETHostGlobal.h>

#include <exception>

/*! Thrown while loading when a valid reference leads to no object, or to an object of a wrong class. */
class ZETHOST_EXPORT ZETGeoGeometryNotFoundException : public std::exception
{
public:
    ZETGeoGeometryNotFoundException();
    ZETGeoGeometryNotFoundException(const ZETGeoGeometryNotFoundException& other);
    ~ZETGeoGeometryNotFoundException() override;

    const char* what() const noexcept override;
};
