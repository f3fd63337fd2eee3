#pragma once

#include <ZETHostGlobal.h>

#include <array>
#include <cstddef>

/*! A homogeneous vector of four components. A value; default-constructed as zero. */
class ZETHOST_EXPORT ZETMathVector4D
{
public:
    ZETMathVector4D() = default;
    ZETMathVector4D(double x, double y, double z, double w)
        : components{x, y, z, w}
    {
    }
    ZETMathVector4D(const ZETMathVector4D&) = default;
    ZETMathVector4D& operator=(const ZETMathVector4D&) = default;
    virtual ~ZETMathVector4D() = default;

    /*! Component 0 to 3. */
    double operator[](int index) const { return components[static_cast<std::size_t>(index)]; }

private:
    std::array<double, 4> components{};
};
