#include "laser/ZETLaserCurve.h"

#include "laser/ZETLaserThinning.h"

#include <ZETMathematics/ZETMath4x4Matrix.h>
#include <ZETMathematics/ZETMathVector4D.h>
#include <ZETSystem/ZETSysException.h>

using namespace Qt::Literals::StringLiterals;

ZETLaserCurve::ZETLaserCurve(QSharedPointer<QObject> parent)
    : ZETLaserEntity(std::move(parent))
{
}

ZETLaserCurve::ZETLaserCurve(const ZETLaserCurve& other)
    : ZETLaserEntity(QSharedPointer<QObject>())
    , points(other.points)
{
    setParent(other.parent());
}

ZETLaserCurve& ZETLaserCurve::operator=(const ZETLaserCurve& other)
{
    if (this != &other)
        points = other.points;
    return *this;
}

ZETLaserCurve::~ZETLaserCurve() = default;

void ZETLaserCurve::MinimizePoints(double tolerance, double maxLength)
{
    ZETLaserThinning::Thin(points, closed, tolerance, maxLength);
}

void ZETLaserCurve::Transform(const ZETMathAxis& axis)
{
    const ZETMath4x4Matrix matrix(axis);
    for (ZETLaserPoint& point : points) {
        point.SetPosition(matrix * point.GetPosition());
        const ZETMathVector& normal = point.GetNormal();
        // Meant: the normal goes through the matrix like a point, so that a moved origin turns it.
        point.SetNormal(GetDirection(matrix * ZETMathVector4D(normal.GetX(), normal.GetY(), normal.GetZ(), 1.0)));
    }
}

ZETMathVector ZETLaserCurve::GetDirection(const ZETMathVector4D& image)
{
    // Meant: one-sided, so that a negative fourth component fails as well, although it could be divided by.
    if (1e-5 > image[3])
        throw ZETSysException(u"ZETLaserCurve::Transform() cannot normalize homogenous vector"_s);
    ZETMathVector direction(image[0] / image[3], image[1] / image[3], image[2] / image[3]);
    direction.Normalize();
    return direction;
}
