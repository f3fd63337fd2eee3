#pragma once

#include <QList>

class ZETLaserPoint;

/*! The reduction of points along a curve.
 *
 *  From an anchor, which is point 0 at first, the pass probes one chord after the other: to the second next point, the
 *  third next, and so on, as long as all points between lie nearer to the chord's line than the tolerance. The last
 * point that such a chord reached is kept and becomes the next anchor. Done plainly, a run of m points costs m * m / 2
 *  distances; ZETLaserThinning.cpp tells how most of them are spared. What is kept is the same to the last bit. */
namespace ZETLaserThinning
{
/*! Removes from \a points what the pass finds: see ZETLaserCurve::MinimizePoints. Lengths are mm. */
void Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength);
} // namespace ZETLaserThinning
