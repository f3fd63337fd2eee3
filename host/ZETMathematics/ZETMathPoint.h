#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathVector.h>

#include <cmath>

/*! A position, in mm. A value; default-constructed at the origin. */
class ZETHOST_EXPORT ZETMathPoint
{
public:
    ZETMathPoint() = default;
    ZETMathPoint(double xValue, double yValue, double zValue)
        : x(xValue)
        , y(yValue)
        , z(zValue)
    {
    }
    ZETMathPoint(const ZETMathPoint&) = default;
    ZETMathPoint& operator=(const ZETMathPoint&) = default;
    virtual ~ZETMathPoint() = default;

    double GetX() const { return x; }
    double GetY() const { return y; }
    double GetZ() const { return z; }
    void GetCoord(double& outX, double& outY, double& outZ) const
    {
        outX = x;
        outY = y;
        outZ = z;
    }

    double GetDistanceTo(const ZETMathPoint& other) const { return std::sqrt((*this - other).GetSquaredMagnitude()); }

    /*! The vector from \a other to this point. */
    ZETMathVector operator-(const ZETMathPoint& other) const { return {x - other.x, y - other.y, z - other.z}; }
    /*! Each coordinate scaled: for unit scales and means of corners. */
    ZETMathPoint operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    ZETMathPoint operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
    void operator*=(double factor)
    {
        x *= factor;
        y *= factor;
        z *= factor;
    }

    /*! Exact comparison, without a tolerance. */
    bool operator==(const ZETMathPoint& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const ZETMathPoint& other) const { return !(*this == other); }

private:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/*! The point moved by the vector. */
inline ZETMathPoint operator+(const ZETMathPoint& point, const ZETMathVector& vector)
{
    return {point.GetX() + vector.GetX(), point.GetY() + vector.GetY(), point.GetZ() + vector.GetZ()};
}
