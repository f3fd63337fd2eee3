#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QDataStream>

/*! An origin and two in-plane directions, which are kept as they are given. A value; default-constructed as the XY
 *  plane at the origin. */
class ZETHOST_EXPORT ZETMathPlane
{
public:
    ZETMathPlane() = default;
    ZETMathPlane(const ZETMathPlane&) = default;
    ZETMathPlane& operator=(const ZETMathPlane&) = default;
    virtual ~ZETMathPlane() = default;

    void SetOrigin(const ZETMathPoint& value) { origin = value; }
    ZETMathPoint GetOrigin() const { return origin; }

    /*! Throws ZETMathZeroMagnitudeVectorException if a direction has zero length, and changes nothing then. */
    void SetDirections(const ZETMathVector& newFirst, const ZETMathVector& newSecond)
    {
        if (newFirst.GetSquaredMagnitude() == 0.0 || newSecond.GetSquaredMagnitude() == 0.0)
            throw ZETMathZeroMagnitudeVectorException();
        first = newFirst;
        second = newSecond;
    }
    ZETMathVector GetFirstDirection() const { return first; }
    ZETMathVector GetSecondDirection() const { return second; }

    /*! First direction cross second, of unit length. Throws ZETMathZeroMagnitudeVectorException if they are parallel.
     */
    ZETMathVector GetNormal() const
    {
        ZETMathVector normal = first ^ second;
        normal.Normalize();
        return normal;
    }

private:
    friend QDataStream& operator>>(QDataStream& stream, ZETMathPlane& plane);

    ZETMathPoint origin;
    ZETMathVector first{1.0, 0.0, 0.0};
    ZETMathVector second{0.0, 1.0, 0.0};
};

/*! Nine doubles: origin, first direction, second direction. */
inline QDataStream& operator<<(QDataStream& stream, const ZETMathPlane& plane)
{
    const ZETMathPoint origin = plane.GetOrigin();
    stream << origin.GetX() << origin.GetY() << origin.GetZ();
    for (const ZETMathVector& direction : {plane.GetFirstDirection(), plane.GetSecondDirection()})
        stream << direction.GetX() << direction.GetY() << direction.GetZ();
    return stream;
}

/*! Takes what was written as it stands, zero directions included. */
inline QDataStream& operator>>(QDataStream& stream, ZETMathPlane& plane)
{
    double values[9] = {};
    for (double& value : values)
        stream >> value;
    plane.origin = ZETMathPoint(values[0], values[1], values[2]);
    plane.first = ZETMathVector(values[3], values[4], values[5]);
    plane.second = ZETMathVector(values[6], values[7], values[8]);
    return stream;
}
