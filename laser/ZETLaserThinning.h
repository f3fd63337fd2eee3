#pragma once

#include <QList>

class ZETLaserPoint;

/*! The reduction of points along a curve. */
namespace ZETLaserThinning
{
/*! Removes from \a points what the greedy pass removes: see ZETLaserCurve::MinimizePoints. Lengths are mm. */
void Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength);
} // namespace ZETLaserThinning
