#pragma once

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QObject>

/*! A point of a curve: a value of position, normal and an optional offset point, in mm and model coordinates.
 *
 *  It is a QObject without a parent, and is copied like a value all the same: a copy takes the geometric members and
 *  leaves the QObject part alone. Each point therefore costs an allocation of its own, so lists of points are filled in
 *  place and walked by reference. */
class ZETLaserPoint : public QObject
{
    Q_OBJECT

public:
    ZETLaserPoint();
    ZETLaserPoint(const ZETMathPoint& at, const ZETMathVector& direction);
    ZETLaserPoint(const ZETLaserPoint& other);
    ZETLaserPoint& operator=(const ZETLaserPoint& other);
    ~ZETLaserPoint() override;

    bool operator==(const ZETLaserPoint& other) const;
    bool operator!=(const ZETLaserPoint& other) const { return !(*this == other); }

    const ZETMathPoint& GetPosition() const { return position; }
    void SetPosition(const ZETMathPoint& value) { position = value; }

    /*! The surface normal at the position; the zero vector means that the point has none. */
    const ZETMathVector& GetNormal() const { return normal; }
    void SetNormal(const ZETMathVector& value) { normal = value; }
    /*! True when the squared magnitude of the normal is not exactly 0.0. */
    bool HasNormal() const { return normal.GetSquaredMagnitude() != 0.0; }

    /*! Where the point is shown instead of its position, if HasOffsetPoint; the normal stays that of the position.
     *  Setting it can't be taken back but by assignment from another point. */
    const ZETMathPoint& GetOffsetPoint() const { return offsetPoint; }
    void SetOffsetPoint(const ZETMathPoint& value);
    bool HasOffsetPoint() const { return hasOffsetPoint; }

    /*! Where the point is shown: the offset point if there is one, otherwise the position. */
    const ZETMathPoint& GetShownPoint() const { return hasOffsetPoint ? offsetPoint : position; }

    /*! Replaces position, normal and offset point by what \a axis sees of them: the offset point too where
     *  HasOffsetPoint is false. */
    void Transform(const ZETMathAxis& axis);

    /*! Euclidean distance from the position. */
    double GetDistanceTo(const ZETMathPoint& other) const { return position.GetDistanceTo(other); }

private:
    ZETMathPoint position;
    ZETMathVector normal;
    bool hasOffsetPoint = false;
    ZETMathPoint offsetPoint;
};
