#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>

#include <cmath>

/*! A direction with magnitude. A value; default-constructed as the zero vector. */
class ZETHOST_EXPORT ZETMathVector
{
public:
    ZETMathVector() = default;
    ZETMathVector(double xValue, double yValue, double zValue)
        : x(xValue)
        , y(yValue)
        , z(zValue)
    {
    }
    ZETMathVector(const ZETMathVector&) = default;
    ZETMathVector& operator=(const ZETMathVector&) = default;
    virtual ~ZETMathVector() = default;

    double GetX() const { return x; }
    double GetY() const { return y; }
    double GetZ() const { return z; }

    double GetSquaredMagnitude() const { return x * x + y * y + z * z; }

    /*! Scales to length 1. Throws ZETMathZeroMagnitudeVectorException on a zero vector. */
    void Normalize()
    {
        const double magnitude = std::sqrt(GetSquaredMagnitude());
        if (magnitude == 0.0)
            throw ZETMathZeroMagnitudeVectorException();
        x /= magnitude;
        y /= magnitude;
        z /= magnitude;
    }

    /*! Dot product. */
    double operator*(const ZETMathVector& other) const { return x * other.x + y * other.y + z * other.z; }
    /*! Cross product, this vector first. */
    ZETMathVector operator^(const ZETMathVector& other) const
    {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
    ZETMathVector operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    void operator*=(double factor)
    {
        x *= factor;
        y *= factor;
        z *= factor;
    }
    ZETMathVector operator+(const ZETMathVector& other) const { return {x + other.x, y + other.y, z + other.z}; }
    ZETMathVector operator-(const ZETMathVector& other) const { return {x - other.x, y - other.y, z - other.z}; }

    /*! True for parallel or opposite directions, within an angle of 1e-9 rad; the zero vector is parallel to all. */
    bool IsParallel(const ZETMathVector& other) const
    {
        constexpr double angularTolerance = 1e-9;
        const double sine = (*this ^ other).GetSquaredMagnitude();
        return sine <= angularTolerance * angularTolerance * GetSquaredMagnitude() * other.GetSquaredMagnitude();
    }

    /*! Exact comparison, without a tolerance. */
    bool operator==(const ZETMathVector& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const ZETMathVector& other) const { return !(*this == other); }

private:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline ZETMathVector operator*(double factor, const ZETMathVector& vector)
{
    return vector * factor;
}
