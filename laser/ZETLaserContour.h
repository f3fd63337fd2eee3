#pragma once

#include "laser/ZETLaserEntity.h"

#include <QList>

class ZETLaserCurve;

/*! An ordered list of curves. */
class ZETLaserContour : public ZETLaserEntity
{
    Q_OBJECT

public:
    explicit ZETLaserContour(QSharedPointer<QObject> parent);
    ~ZETLaserContour() override;

    /*! Appends \a curve, whatever it is. */
    void AddCurve(QSharedPointer<ZETLaserCurve> curve);
    /*! The list itself. The constant one is for walking: it never detaches. */
    QList<QSharedPointer<ZETLaserCurve>>& GetCurves() { return curves; }
    const QList<QSharedPointer<ZETLaserCurve>>& GetCurves() const { return curves; }
    /*! The sum of the curves' point counts. */
    int GetPointCount() const;

    void MinimizePoints(double tolerance, double maxLength) override;
    void Transform(const ZETMathAxis& axis) override;

private:
    QList<QSharedPointer<ZETLaserCurve>> curves;
};
