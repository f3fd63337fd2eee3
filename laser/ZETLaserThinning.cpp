#include "laser/ZETLaserThinning.h"

#include "laser/ZETLaserPoint.h"

#include <ZETMathematics/ZETMathLine.h>

#include <algorithm>
#include <vector>

namespace
{
/*! A chord shorter than this is no line: whatever lies between its ends counts as straight. */
constexpr double degenerateChord = 0.005;

/*! The largest distance of the points strictly between \a from and \a to from the line of the chord. Behind the last
 *  point stands the first one again: that is the closing chord of a closed curve. */
double GetDeviation(const QList<ZETLaserPoint>& points, int from, int to)
{
    const int count = static_cast<int>(points.size());
    const ZETMathPoint& start = points[from].GetPosition();
    const ZETMathPoint& end = points[to < count ? to : 0].GetPosition();
    if (degenerateChord > end.GetDistanceTo(start))
        return 0.0;
    ZETMathLine line;
    line.SetOrigin(start);
    line.SetVector(end - start);
    double deviation = 0.0;
    for (int i = from + 1; i < to; ++i)
        deviation = std::max(deviation, line.GetDistanceTo(points[i].GetPosition()));
    return deviation;
}

std::vector<char> FindRemovals(const QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    const int count = static_cast<int>(points.size());
    std::vector<char> removed(static_cast<size_t>(count), 0);
    for (int anchor = 0; anchor < count - 2;) {
        int probe = anchor + 2;
        while (probe < count && tolerance > GetDeviation(points, anchor, probe) &&
               maxLength > points[probe].GetDistanceTo(points[anchor].GetPosition())) {
            removed[static_cast<size_t>(probe - 1)] = 1;
            ++probe;
        }
        anchor = probe - 1;
    }
    if (closed) {
        int last = count - 2;
        while (removed[static_cast<size_t>(last)] != 0)
            --last;
        // Meant: the length of the closing chord isn't limited.
        if (tolerance > GetDeviation(points, last, count))
            removed[static_cast<size_t>(count - 1)] = 1;
    }
    return removed;
}
} // namespace

void ZETLaserThinning::Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    if (points.size() < 2)
        return;
    const std::vector<char> removed = FindRemovals(std::as_const(points), closed, tolerance, maxLength);
    size_t index = 0;
    points.removeIf([&](const ZETLaserPoint&) { return removed[index++] != 0; });
}
