#include "laser/ZETLaserContour.h"

#include "laser/ZETLaserCurve.h"

ZETLaserContour::ZETLaserContour(QSharedPointer<QObject> parent)
    : ZETLaserEntity(std::move(parent))
{
}

ZETLaserContour::~ZETLaserContour() = default;

void ZETLaserContour::AddCurve(QSharedPointer<ZETLaserCurve> curve)
{
    curves.append(std::move(curve));
}

int ZETLaserContour::GetPointCount() const
{
    int count = 0;
    for (const QSharedPointer<ZETLaserCurve>& curve : curves)
        count += curve->GetPointCount();
    return count;
}

void ZETLaserContour::MinimizePoints(double tolerance, double maxLength)
{
    for (const QSharedPointer<ZETLaserCurve>& curve : std::as_const(curves))
        curve->MinimizePoints(tolerance, maxLength);
}

void ZETLaserContour::Transform(const ZETMathAxis& axis)
{
    for (const QSharedPointer<ZETLaserCurve>& curve : std::as_const(curves))
        curve->Transform(axis);
}
