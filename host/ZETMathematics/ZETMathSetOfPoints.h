#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QList>

/*! An ordered list of points. A value. */
class ZETHOST_EXPORT ZETMathSetOfPoints
{
public:
    ZETMathSetOfPoints() = default;
    ZETMathSetOfPoints(const ZETMathSetOfPoints&) = default;
    ZETMathSetOfPoints& operator=(const ZETMathSetOfPoints&) = default;
    virtual ~ZETMathSetOfPoints() = default;

    /*! The box of all points; empty without any. */
    ZETMathBoundingBox GetBoundingBox() const
    {
        ZETMathBoundingBox box;
        for (const ZETMathPoint& point : points)
            box.Expand(ZETMathBoundingBox(point, point));
        return box;
    }

    QList<ZETMathPoint> points; //!< public: callers append to it and index it directly
};
