#include "openhost/ZETGeometry/ZETOpenChain_p.h"

#include "openhost/ZETGeometry/ZETGeoAssembledCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve_p.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"

#include <algorithm>
#include <cmath>

namespace
{
// The end of a segment is met when as much is left of the way as rounding can leave.
double GetSnap(double length)
{
    return 1e-9 + 1e-12 * length;
}

constexpr double polylineDeflection = 0.01; // mm
constexpr double polylineAngle = 0.1;       // rad
} // namespace

ZETOpenChain::ZETOpenChain(std::vector<Link> linksInOrder, bool isClosed)
    : links(std::move(linksInOrder))
    , closed(isClosed)
{
}

const ZETOpenChain* ZETOpenChain::Of(const ZETGeoCurve* curve)
{
    if (const auto* const onSurface = qobject_cast<const ZETOpenCurveOnSurface*>(curve))
        return &ZETOpenCurveOnSurfacePrivate::Of(*onSurface).chain;
    if (const auto* const assembled = qobject_cast<const ZETGeoAssembledCurveOnSurface*>(curve))
        return &ZETGeoAssembledCurveOnSurfacePrivate::Of(*assembled).chain;
    if (const auto* const combo = qobject_cast<const ZETOpenComboCurve*>(curve))
        return &ZETOpenComboCurvePrivate::Of(*combo).chain;
    return nullptr;
}

ZETOpenChain ZETOpenChain::GetReversed() const
{
    std::vector<Link> reversed(links.rbegin(), links.rend());
    for (Link& link : reversed)
        std::swap(link.from, link.to);
    return ZETOpenChain(std::move(reversed), closed);
}

std::vector<ZETOpenChain::Link> ZETOpenChain::GetPart(double start, double end) const
{
    std::vector<Link> part;
    if (links.empty())
        return part;
    if (closed && !(end > start))
        end += GetCount();
    const double last = closed ? start + GetCount() : double(GetCount());
    end = std::min(end, last);
    // Each round takes what lies before the next whole number.
    for (double at = std::max(start, 0.0); at < end;) {
        const double whole = std::floor(at);
        const double next = std::min(whole + 1.0, end);
        const Link& link = links[std::size_t(whole) % links.size()];
        const auto toSegment = [&](double fraction) { return link.from + fraction * (link.to - link.from); };
        const double to = next - whole == 1.0 ? link.to : toSegment(next - whole);
        part.push_back({link.segment, toSegment(at - whole), to});
        at = next;
    }
    return part;
}

gp_Pnt ZETOpenChain::GetPoint(double parameter) const
{
    if (links.empty())
        return gp_Pnt();
    const Position position = GetPosition(parameter);
    return links[std::size_t(position.link)].segment->GetPoint(GetSegmentFraction(position));
}

gp_Vec ZETOpenChain::GetTangent(double parameter) const
{
    if (links.empty())
        return gp_Vec();
    const Position position = GetPosition(parameter);
    const Link& link = links[std::size_t(position.link)];
    // Of unit length: texts take the tangent of their line for the direction that their size is measured along.
    const gp_Vec tangent = link.segment->GetTangent(GetSegmentFraction(position)) * (link.to - link.from);
    const double length = tangent.Magnitude();
    return length > 0.0 ? tangent / length : tangent;
}

gp_Pnt2d ZETOpenChain::GetPlace(double parameter) const
{
    if (links.empty())
        return gp_Pnt2d();
    const Position position = GetPosition(parameter);
    return links[std::size_t(position.link)].segment->GetPlace(GetSegmentFraction(position));
}

double ZETOpenChain::GetLength() const
{
    double length = 0.0;
    for (const Link& link : links)
        length += GetLinkLength(link, 0.0, 1.0);
    return length;
}

double ZETOpenChain::GetLength(int index) const
{
    return index >= 0 && index < GetCount() ? GetLinkLength(links[std::size_t(index)], 0.0, 1.0) : 0.0;
}

double ZETOpenChain::GetLength(double start, double end) const
{
    double length = 0.0;
    for (const Link& link : GetPart(start, end))
        length += GetLinkLength(link, 0.0, 1.0);
    return length;
}

double ZETOpenChain::Locate(double distance, double from) const
{
    if (links.empty() || std::isnan(distance))
        return Normalize(from);
    if (closed) {
        const double length = GetLength();
        if (!(length > 0.0) || !std::isfinite(distance))
            return Normalize(from);
        if (std::abs(distance) > length)
            distance = std::fmod(distance, length);
    }
    const Position start = GetPosition(from);
    return Normalize(distance < 0.0 ? LocateBackward(-distance, start) : LocateForward(distance, start));
}

double ZETOpenChain::LocateForward(double distance, Position position) const
{
    // Two rounds are enough: no distance is longer than a closed chain.
    for (int step = 0; step <= 2 * GetCount(); ++step) {
        const Link& link = links[std::size_t(position.link)];
        const double rest = GetLinkLength(link, position.fraction, 1.0);
        if (distance < rest - GetSnap(rest)) {
            if (!(distance > 0.0))
                return position.link + position.fraction;
            const bool backwards = link.to < link.from;
            const double at = link.segment->GetFraction(GetSegmentFraction(position), backwards ? -distance : distance);
            return position.link + std::clamp((at - link.from) / (link.to - link.from), 0.0, 1.0);
        }
        distance = std::max(0.0, distance - rest);
        if (distance <= GetSnap(rest) || (!closed && position.link + 1 == GetCount()))
            return position.link + 1.0;
        position = {(position.link + 1) % GetCount(), 0.0};
    }
    return position.link + position.fraction;
}

double ZETOpenChain::LocateBackward(double distance, Position position) const
{
    const ZETOpenChain reversed = GetReversed();
    const double from = GetCount() - (position.link + position.fraction);
    return GetCount() - reversed.LocateForward(distance, reversed.GetPosition(from));
}

double ZETOpenChain::Project(const gp_Pnt& point, double* distance) const
{
    double parameter = 0.0;
    double best = std::numeric_limits<double>::infinity();
    for (int i = 0; i < GetCount(); ++i) {
        const Link& link = links[std::size_t(i)];
        const auto nearest = link.segment->Project(point, std::min(link.from, link.to), std::max(link.from, link.to));
        if (nearest.distance < best) {
            best = nearest.distance;
            parameter = link.to == link.from ? i : i + (nearest.fraction - link.from) / (link.to - link.from);
        }
    }
    if (distance)
        *distance = best;
    return Normalize(parameter);
}

const std::vector<gp_Pnt>& ZETOpenChain::GetPolyline() const
{
    if (polyline.empty())
        polyline = GetPolyline(polylineDeflection, polylineAngle);
    return polyline;
}

std::vector<gp_Pnt> ZETOpenChain::GetPolyline(double deflection, double angle) const
{
    std::vector<gp_Pnt> points;
    if (links.empty())
        return points;
    for (int i = 0; i < GetCount(); ++i) {
        const Link& link = links[std::size_t(i)];
        points.push_back(GetPoint(i));
        auto fractions =
            link.segment->GetPolyline(std::min(link.from, link.to), std::max(link.from, link.to), deflection, angle);
        if (link.to < link.from)
            std::reverse(fractions.begin(), fractions.end());
        for (const double fraction : fractions)
            points.push_back(link.segment->GetPoint(fraction));
    }
    points.push_back(GetPoint(GetCount()));
    return points;
}

bool ZETOpenChain::IsVertex(int index) const
{
    return index >= 0 && (closed ? index < GetCount() : index <= GetCount());
}

double ZETOpenChain::Normalize(double parameter) const
{
    const double count = GetCount();
    if (links.empty() || std::isnan(parameter))
        return 0.0;
    if (!closed)
        return std::clamp(parameter, 0.0, count);
    if (parameter >= 0.0 && parameter < count)
        return parameter;
    if (!std::isfinite(parameter))
        return 0.0;
    const double wrapped = parameter - count * std::floor(parameter / count);
    return wrapped < count ? wrapped : 0.0;
}

ZETOpenChain::Position ZETOpenChain::GetPosition(double parameter) const
{
    const double normal = Normalize(parameter);
    if (normal >= GetCount())
        return {GetCount() - 1, 1.0};
    const double whole = std::floor(normal);
    return {int(whole), normal - whole};
}

double ZETOpenChain::GetSegmentFraction(const Position& position) const
{
    const Link& link = links[std::size_t(position.link)];
    if (position.fraction >= 1.0)
        return link.to;
    return link.from + position.fraction * (link.to - link.from);
}

double ZETOpenChain::GetLinkLength(const Link& link, double from, double to) const
{
    const auto toSegment = [&](double fraction) {
        return fraction <= 0.0 ? link.from : fraction >= 1.0 ? link.to : link.from + fraction * (link.to - link.from);
    };
    const double start = toSegment(from);
    const double end = toSegment(to);
    return link.segment->GetLength(std::min(start, end), std::max(start, end));
}
