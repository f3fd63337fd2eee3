#include "CheckPolyline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
using Vector = std::array<double, 3>;

constexpr size_t segmentsInRun = 32;

double GetDistance(const CheckBox& box, const Vector& point)
{
    Vector way{};
    for (size_t i = 0; i < way.size(); ++i)
        way[i] = std::max({box.GetLower()[i] - point[i], 0.0, point[i] - box.GetUpper()[i]});
    return std::hypot(way[0], way[1], way[2]);
}

/*! How far along the way from one end to the other the nearest place lies: from 0 to 1. */
double GetShare(const Vector& from, const Vector& to, const Vector& point)
{
    double product = 0.0;
    double square = 0.0;
    for (size_t i = 0; i < from.size(); ++i) {
        product += (to[i] - from[i]) * (point[i] - from[i]);
        square += (to[i] - from[i]) * (to[i] - from[i]);
    }
    return square > 0.0 ? std::clamp(product / square, 0.0, 1.0) : 0.0;
}

Vector GetBetween(const Vector& from, const Vector& to, double share)
{
    Vector between{};
    for (size_t i = 0; i < from.size(); ++i)
        between[i] = from[i] + share * (to[i] - from[i]);
    return between;
}
} // namespace

CheckPolyline::CheckPolyline(const CheckFile& file, const CheckCurve& curve)
    : points(file.GetPoints(curve))
{
    // A point alone is a segment of no length, from itself to itself.
    const bool isClosedByFlag = curve.closedByFlag.value_or(false);
    segmentCount = points.size() == 1 || isClosedByFlag ? points.size() : std::max<size_t>(points.size(), 1) - 1;
    AddRuns();
}

const CheckPoint& CheckPolyline::GetEnd(size_t segment) const
{
    return points[segment + 1 < points.size() ? segment + 1 : 0];
}

void CheckPolyline::AddRuns()
{
    for (size_t first = 0; first < segmentCount; first += segmentsInRun) {
        Run& run = runs.emplace_back(Run{first, std::min(first + segmentsInRun, segmentCount), {}});
        for (size_t segment = run.first; segment < run.end; ++segment) {
            run.box.Add(points[segment].position);
            run.box.Add(GetEnd(segment).position);
        }
        box.Add(run.box);
    }
}

CheckPolyline::Place CheckPolyline::GetNearest(const Vector& point) const
{
    Place nearest{std::numeric_limits<double>::infinity(), {}};
    for (const Run& run : runs) {
        if (GetDistance(run.box, point) >= nearest.distance)
            continue;
        for (size_t segment = run.first; segment < run.end; ++segment) {
            const CheckPoint& from = points[segment];
            const CheckPoint& to = GetEnd(segment);
            const double share = GetShare(from.position, to.position, point);
            const double distance = CheckMeasures::GetDistance(GetBetween(from.position, to.position, share), point);
            if (!(distance < nearest.distance)) // nor if there is no number for it
                continue;
            const bool hasNormal = CheckMeasures::HasNormal(from) && CheckMeasures::HasNormal(to);
            nearest = {distance, hasNormal ? GetBetween(from.normal, to.normal, share) : Vector{}};
        }
    }
    return nearest;
}
