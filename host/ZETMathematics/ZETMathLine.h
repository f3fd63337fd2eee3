#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <cmath>

/*! The infinite line through an origin along a vector, which needn't be of unit length. A value; default-constructed
 *  as the X axis. */
class ZETHOST_EXPORT ZETMathLine
{
public:
    ZETMathLine() = default;
    ZETMathLine(const ZETMathLine&) = default;
    ZETMathLine& operator=(const ZETMathLine&) = default;
    virtual ~ZETMathLine() = default;

    void SetOrigin(const ZETMathPoint& value) { origin = value; }
    void SetVector(const ZETMathVector& value) { vector = value; }

    /*! Perpendicular distance to the infinite line: |vector x (point - origin)| / |vector|. Throws
     *  ZETMathZeroMagnitudeVectorException for a zero vector. */
    double GetDistanceTo(const ZETMathPoint& point) const
    {
        const double square = vector.GetSquaredMagnitude();
        if (square == 0.0)
            throw ZETMathZeroMagnitudeVectorException();
        const ZETMathVector across = vector ^ (point - origin);
        return std::sqrt(across.GetSquaredMagnitude()) / std::sqrt(square);
    }

private:
    ZETMathPoint origin;
    ZETMathVector vector{1.0, 0.0, 0.0};
};
