#include "CheckMeasures.h"

#include <algorithm>
#include <cmath>

namespace
{
using Vector = std::array<double, 3>;

Vector Subtract(const Vector& a, const Vector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}
} // namespace

void CheckBox::Add(const Vector& point)
{
    if (isEmpty)
        lower = upper = point;
    isEmpty = false;
    for (size_t i = 0; i < point.size(); ++i) {
        lower[i] = std::min(lower[i], point[i]);
        upper[i] = std::max(upper[i], point[i]);
    }
}

void CheckBox::Add(const CheckBox& box)
{
    if (box.isEmpty)
        return;
    Add(box.lower);
    Add(box.upper);
}

Vector CheckBox::GetSides() const
{
    return Subtract(upper, lower);
}

bool CheckMeasures::IsClosed(const CheckFile& file, const CheckCurve& curve)
{
    if (curve.closedByFlag)
        return *curve.closedByFlag;
    const auto points = file.GetPoints(curve);
    return points.size() > 1 && points.front().position == points.back().position;
}

double CheckMeasures::GetDistance(const Vector& from, const Vector& to)
{
    const Vector way = Subtract(to, from);
    return std::hypot(way[0], way[1], way[2]);
}

double CheckMeasures::GetLength(const CheckFile& file, const CheckCurve& curve)
{
    const auto points = file.GetPoints(curve);
    double length = 0.0;
    for (size_t i = 1; i < points.size(); ++i)
        length += GetDistance(points[i - 1].position, points[i].position);
    if (curve.closedByFlag.value_or(false) && !points.empty())
        length += GetDistance(points.back().position, points.front().position);
    return length;
}

double CheckMeasures::GetArea(const CheckFile& file, const CheckCurve& curve)
{
    const auto points = file.GetPoints(curve);
    Vector sum{}; // twice the area, along the normal of the plane that shows most of it
    for (size_t i = 2; i < points.size(); ++i) {
        const Vector a = Subtract(points[i - 1].position, points[0].position);
        const Vector b = Subtract(points[i].position, points[0].position);
        sum[0] += a[1] * b[2] - a[2] * b[1];
        sum[1] += a[2] * b[0] - a[0] * b[2];
        sum[2] += a[0] * b[1] - a[1] * b[0];
    }
    return std::hypot(sum[0], sum[1], sum[2]) / 2.0;
}

bool CheckMeasures::HasNormal(const CheckPoint& point)
{
    return point.hasNormal && point.normal != Vector{};
}

std::vector<CheckPly> CheckMeasures::GetPlies(const CheckFile& file)
{
    std::vector<CheckPly> plies;
    std::vector<size_t> places(file.groups.size());
    for (size_t group = 0; group < file.groups.size(); ++group) {
        places[group] = plies.size();
        if (file.groups[group].kind == CheckGroup::Ply)
            plies.emplace_back().group = static_cast<int>(group);
    }
    CheckPly outside;
    const auto find = [&](int group) -> CheckPly& {
        const int ply = file.GetPly(group);
        return ply < 0 ? outside : plies[places[static_cast<size_t>(ply)]];
    };
    for (size_t i = 0; i < file.curves.size(); ++i) {
        const CheckCurve& curve = file.curves[i];
        CheckPly& ply = find(curve.group);
        ply.curves.push_back(i);
        ply.points += curve.pointCount;
        ply.length += GetLength(file, curve);
        for (const CheckPoint& point : file.GetPoints(curve)) {
            ply.box.Add(point.position);
            ply.pointsWithNormal += HasNormal(point) ? 1 : 0;
        }
    }
    for (const CheckText& text : file.texts)
        ++find(text.group).texts;
    for (const CheckParameter& parameter : file.parameters)
        ++find(parameter.group).parameters;
    if (!outside.curves.empty() || outside.texts + outside.parameters > 0)
        plies.push_back(std::move(outside));
    return plies;
}
