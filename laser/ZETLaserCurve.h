#pragma once

#include "laser/ZETLaserEntity.h"
#include "laser/ZETLaserPoint.h"

#include <QList>

class ZETMathVector4D;

/*! A run of points, in order of travel. A closed curve doesn't repeat its first point: closing is the writers' work. */
class ZETLaserCurve : public ZETLaserEntity
{
    Q_OBJECT

public:
    explicit ZETLaserCurve(QSharedPointer<QObject> parent);
    /*! A curve with the QObject parent and the points of \a other; name and closed flag are not copied. For the
     *  meta-type system: the tree doesn't copy curves. */
    ZETLaserCurve(const ZETLaserCurve& other);
    /*! Copies the points only. */
    ZETLaserCurve& operator=(const ZETLaserCurve& other);
    ~ZETLaserCurve() override;

    /*! The list itself. The constant one is for walking: it never detaches. */
    QList<ZETLaserPoint>& GetPoints() { return points; }
    const QList<ZETLaserPoint>& GetPoints() const { return points; }
    int GetPointCount() const { return static_cast<int>(points.size()); }

    /*! DEFAULT: false */
    bool IsClosed() const { return closed; }
    void SetClosed(bool value) { closed = value; }

    /*! Removes points that lie within \a tolerance (mm) of a chord, in one greedy pass forward from point 0, as long as
     *  the chord stays shorter than \a maxLength (mm). The first point always stays, and the last one of an open curve.
     *  Only positions take part. */
    void MinimizePoints(double tolerance, double maxLength) override;

    /*! Brings each point into the axis system. Normals go through the matrix as points, so that a translation reaches
     *  them; offset points stay. Throws what GetDirection throws at the first normal that can't be brought back; the
     *  points ahead of it stay transformed. */
    void Transform(const ZETMathAxis& axis) override;
    /*! The unit vector that a homogeneous vector stands for. Throws ZETSysException if its fourth component is not
     *  above zero, and ZETMathZeroMagnitudeVectorException if it stands for the origin. */
    static ZETMathVector GetDirection(const ZETMathVector4D& image);

private:
    QList<ZETLaserPoint> points;
    bool closed = false;
};
