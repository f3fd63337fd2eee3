#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <cmath>

/*! A right-handed local coordinate system: an origin and three unit directions at right angles, given in the space of
 *  its owner. A value; default-constructed as the global system.
 *
 *  `axis * p` gives the coordinates of p as seen in the axis system, `axis / q` takes such coordinates back. */
class ZETHOST_EXPORT ZETMathAxis
{
public:
    /*! The plane in which Tilt turns, named by the direction about which it does. */
    enum AxisPlane : int {
        PlaneSecondThird = 0, //!< turns the second direction towards the third, without moving the first
        PlaneFirstSecond = 1, //!< turns the first direction towards the second, without moving the third
        PlaneThirdFirst = 2   //!< turns the third direction towards the first, without moving the second
    };

    ZETMathAxis() = default;
    ZETMathAxis(const ZETMathAxis&) = default;
    ZETMathAxis& operator=(const ZETMathAxis&) = default;
    virtual ~ZETMathAxis() = default;

    void SetOrigin(const ZETMathPoint& value) { origin = value; }
    ZETMathPoint GetOrigin() const { return origin; }

    /*! Three unit vectors at right angles; the caller sees to that. */
    void SetDirections(const ZETMathVector& newFirst, const ZETMathVector& newSecond, const ZETMathVector& newThird)
    {
        first = newFirst;
        second = newSecond;
        third = newThird;
    }
    ZETMathVector GetFirstDirection() const { return first; }
    ZETMathVector GetSecondDirection() const { return second; }
    ZETMathVector GetThirdDirection() const { return third; }

    /*! Owner to local. */
    ZETMathPoint operator*(const ZETMathPoint& point) const
    {
        const ZETMathVector local = *this * (point - origin);
        return {local.GetX(), local.GetY(), local.GetZ()};
    }
    /*! Owner to local for a vector: rotation only. */
    ZETMathVector operator*(const ZETMathVector& vector) const
    {
        return {first * vector, second * vector, third * vector};
    }
    /*! Local to owner: origin + x * first + y * second + z * third. */
    ZETMathPoint operator/(const ZETMathPoint& point) const
    {
        return origin + (point.GetX() * first + point.GetY() * second + point.GetZ() * third);
    }

    /*! Turns the axis in place, about its origin, by \a angle radians in the given plane. */
    void Tilt(AxisPlane plane, double angle)
    {
        switch (plane) {
        case PlaneSecondThird:
            Turn(second, third, angle);
            break;
        case PlaneFirstSecond:
            Turn(first, second, angle);
            break;
        case PlaneThirdFirst:
            Turn(third, first, angle);
            break;
        }
    }

private:
    static void Turn(ZETMathVector& from, ZETMathVector& towards, double angle)
    {
        const double cosine = std::cos(angle);
        const double sine = std::sin(angle);
        const ZETMathVector turned = cosine * from + sine * towards;
        towards = cosine * towards - sine * from;
        from = turned;
    }

    ZETMathPoint origin;
    ZETMathVector first{1.0, 0.0, 0.0};
    ZETMathVector second{0.0, 1.0, 0.0};
    ZETMathVector third{0.0, 0.0, 1.0};
};
