#pragma once

#include <QList>

class ZETLaserPoint;

/*! The reduction of points as it is defined, step by step and at its full cost: every point between anchor and probe is
 *  measured for every probe, and points are removed one by one. It is what the library's way is compared with, and
 *  shares nothing with it but the host's line. */
namespace PlainThinning
{
/*! The largest distance of the points strictly between \a from and \a to from the line of the chord between them. Of a
 *  \a closed curve, point 0 stands behind the last one. */
double GetDeviation(const QList<ZETLaserPoint>& points, bool closed, int from, int to);

/*! Removes points as the greedy pass does. */
void Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength);
} // namespace PlainThinning
