#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QPointF>
#include <QStringList>

/*! A look at the model from one side, without perspective. A value. */
class ZETHOST_EXPORT ZETOpenView
{
public:
    /*! Where the eye stands. The model's third axis points up in all of them but Top and Bottom, where the second axis
     *  points up and down. Oblique is from the front, the right and above. */
    enum Side : int { Top, Bottom, Front, Back, Left, Right, Oblique };

    explicit ZETOpenView(Side side);
    /*! The same look with the head leaned so that the picture is turned clockwise by a quarter. */
    ZETOpenView GetTurned() const;

    /*! "top", "bottom" and so on, by value. */
    static const QStringList& GetSideNames();
    /*! The side from which a surface with that mean normal is seen best: one of the six straight ones. */
    static Side GetSideFacing(const ZETMathVector& normal);

    Side GetSide() const { return side; }
    /*! The place of \a point in the picture, in mm: x to the right, y up. */
    QPointF Project(const ZETMathPoint& point) const;
    /*! The larger, the nearer to the eye. */
    double GetDepth(const ZETMathPoint& point) const;
    /*! Unit vectors of the model: to the right in the picture, up in it, and out of it to the eye. */
    const ZETMathVector& GetRight() const { return right; }
    const ZETMathVector& GetUp() const { return up; }
    ZETMathVector GetToEye() const { return right ^ up; }

private:
    Side side;
    ZETMathVector right;
    ZETMathVector up;
};
