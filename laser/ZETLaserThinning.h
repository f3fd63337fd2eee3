#pragma once

#include <QList>

#include <vector>

class ZETLaserPoint;

/*! The reduction of points along a curve: see ZETLaserCurve::MinimizePoints. Lengths are mm. */
namespace ZETLaserThinning
{
/*! For each of the \a points whether the greedy pass removes it: 1 if so, otherwise 0. */
std::vector<char> FindRemovals(const QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength);

/*! Removes those from \a points. */
void Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength);
} // namespace ZETLaserThinning
