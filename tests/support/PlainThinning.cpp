#include "tests/support/PlainThinning.h"

#include "laser/ZETLaserPoint.h"

#include <ZETMathematics/ZETMathLine.h>

#include <algorithm>
#include <vector>

double PlainThinning::GetDeviation(const QList<ZETLaserPoint>& points, bool closed, int from, int to)
{
    const int count = static_cast<int>(points.size());
    const bool closing = closed && to >= count;
    const int end = closing ? 0 : to;
    const int last = closing ? count - 1 : to - 1;

    if (0.005 > points[from].GetDistanceTo(points[end].GetPosition()))
        return 0.0;
    ZETMathLine line;
    line.SetOrigin(points[from].GetPosition());
    line.SetVector(points[end].GetPosition() - points[from].GetPosition());
    double deviation = 0.0;
    for (int k = from + 1; k <= last; ++k)
        deviation = std::max(deviation, line.GetDistanceTo(points[k].GetPosition()));
    return deviation;
}

void PlainThinning::Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    const QList<ZETLaserPoint>& list = points;
    const int count = static_cast<int>(list.size());
    if (count < 2)
        return;
    std::vector<char> flags(static_cast<std::size_t>(count), 0);

    int anchor = 0;
    while (anchor < count - 2) {
        int probe = anchor + 2;
        while (probe < count) {
            if (!(tolerance > GetDeviation(list, closed, anchor, probe)))
                break;
            if (!(maxLength > list[probe].GetDistanceTo(list[anchor].GetPosition())))
                break;
            flags[static_cast<std::size_t>(probe - 1)] = 1;
            ++probe;
        }
        anchor = probe - 1;
    }
    if (closed) {
        int last = count - 2;
        while (flags[static_cast<std::size_t>(last)] != 0)
            --last;
        if (tolerance > GetDeviation(list, closed, last, count))
            flags[static_cast<std::size_t>(count - 1)] = 1;
    }
    for (int i = count - 1; i >= 1; --i) {
        if (flags[static_cast<std::size_t>(i)] != 0)
            points.removeAt(i);
    }
}
