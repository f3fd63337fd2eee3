#include "laser/ZETLaserPoint.h"

ZETLaserPoint::ZETLaserPoint()
    : QObject(nullptr)
{
}

ZETLaserPoint::ZETLaserPoint(const ZETMathPoint& at, const ZETMathVector& direction)
    : QObject(nullptr)
    , position(at)
    , normal(direction)
{
}

ZETLaserPoint::ZETLaserPoint(const ZETLaserPoint& other)
    : QObject(nullptr)
    , position(other.position)
    , normal(other.normal)
    , hasOffsetPoint(other.hasOffsetPoint)
    , offsetPoint(other.offsetPoint)
{
}

ZETLaserPoint& ZETLaserPoint::operator=(const ZETLaserPoint& other)
{
    position = other.position;
    normal = other.normal;
    hasOffsetPoint = other.hasOffsetPoint;
    offsetPoint = other.offsetPoint;
    return *this;
}

ZETLaserPoint::~ZETLaserPoint() = default;

bool ZETLaserPoint::operator==(const ZETLaserPoint& other) const
{
    return position == other.position && normal == other.normal && hasOffsetPoint == other.hasOffsetPoint &&
           offsetPoint == other.offsetPoint;
}

void ZETLaserPoint::SetOffsetPoint(const ZETMathPoint& value)
{
    offsetPoint = value;
    hasOffsetPoint = true;
}

void ZETLaserPoint::Transform(const ZETMathAxis& axis)
{
    position = axis * position;
    normal = axis * normal;
    offsetPoint = axis * offsetPoint;
}
