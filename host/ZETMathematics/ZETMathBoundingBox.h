#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <algorithm>

/*! An axis-aligned box. A value; default-constructed as an empty box, which holds no point. */
class ZETHOST_EXPORT ZETMathBoundingBox
{
public:
    ZETMathBoundingBox() = default;
    /*! The box of two opposite corners, in any order. */
    ZETMathBoundingBox(const ZETMathPoint& a, const ZETMathPoint& b)
        : empty(false)
        , lower(Lower(a, b))
        , upper(Upper(a, b))
    {
    }
    ZETMathBoundingBox(const ZETMathBoundingBox&) = default;
    ZETMathBoundingBox& operator=(const ZETMathBoundingBox&) = default;
    virtual ~ZETMathBoundingBox() = default;

    bool IsEmpty() const { return empty; }

    /*! Grows to hold the other box as well; an empty one changes nothing. */
    void Expand(const ZETMathBoundingBox& other)
    {
        if (other.empty)
            return;
        lower = empty ? other.lower : Lower(lower, other.lower);
        upper = empty ? other.upper : Upper(upper, other.upper);
        empty = false;
    }

    /*! Minimum and maximum corner; the origin for an empty box. */
    ZETMathPoint GetLowerPoint() const { return lower; }
    ZETMathPoint GetUpperPoint() const { return upper; }

private:
    static ZETMathPoint Lower(const ZETMathPoint& a, const ZETMathPoint& b)
    {
        return {std::min(a.GetX(), b.GetX()), std::min(a.GetY(), b.GetY()), std::min(a.GetZ(), b.GetZ())};
    }
    static ZETMathPoint Upper(const ZETMathPoint& a, const ZETMathPoint& b)
    {
        return {std::max(a.GetX(), b.GetX()), std::max(a.GetY(), b.GetY()), std::max(a.GetZ(), b.GetZ())};
    }

    bool empty = true;
    ZETMathPoint lower;
    ZETMathPoint upper;
};
