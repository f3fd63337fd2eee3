#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>

#include "openhost/ZETGeometry/ZETGeoAssembledCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"

#include <ZETGeometry/ZETGeoSurface.h>

#include <algorithm>

namespace
{
using Links = std::vector<ZETOpenChain::Link>;

/*! The range's curve as one on a surface. \a number counts from 1, for people. */
const ZETGeoCurveOnSurface& GetCurveOnSurface(const ZETGeoRangeOfCurve& range, qsizetype number)
{
    const auto* const curve = qobject_cast<const ZETGeoCurveOnSurface*>(range.GetCurve());
    if (!curve || range.GetEnd().GetCurve() != curve) {
        throw ZETSysException(
            ZETGeoAssembledCurveOnSurface::tr("part %1 of the chain isn't a part of a curve on a surface").arg(number));
    }
    if (!curve->GetSurface()) {
        throw ZETSysException(ZETGeoAssembledCurveOnSurface::tr("part %1 of the chain lies on no surface").arg(number));
    }
    return *curve;
}

/*! The range's links in walking direction. */
Links GetLinks(const ZETGeoRangeOfCurve& range, bool forward, qsizetype number)
{
    const ZETOpenChain* const chain = ZETOpenChain::Of(range.GetCurve());
    if (!chain) {
        throw ZETSysException(
            ZETGeoAssembledCurveOnSurface::tr("part %1 of the chain is of an unknown kind").arg(number));
    }
    Links links = chain->GetPart(range.GetStart().GetParameter(), range.GetEnd().GetParameter());
    if (links.empty())
        throw ZETSysException(ZETGeoAssembledCurveOnSurface::tr("part %1 of the chain is empty").arg(number));
    if (!forward) {
        std::reverse(links.begin(), links.end());
        for (auto& link : links)
            std::swap(link.from, link.to);
    }
    return links;
}

gp_Pnt GetStart(const Links& links)
{
    return links.front().segment->GetPoint(links.front().from);
}

gp_Pnt GetEnd(const Links& links)
{
    return links.back().segment->GetPoint(links.back().to);
}

void CheckJoin(const Links& before, const Links& after, qsizetype number)
{
    const double gap = GetEnd(before).Distance(GetStart(after));
    if (gap > openJoinTolerance) {
        throw ZETSysException(
            ZETGeoAssembledCurveOnSurface::tr("part %1 of the chain begins %2 mm away from where part %3 ends")
                .arg(number)
                .arg(gap)
                .arg(number - 1));
    }
}

bool IsRing(const Links& links)
{
    if (GetEnd(links).Distance(GetStart(links)) > openJoinTolerance)
        return false;
    // A chain so short that its ends meet anyway isn't a ring.
    double length = 0.0;
    for (const auto& link : links)
        length += link.segment->GetLength(std::min(link.from, link.to), std::max(link.from, link.to));
    return length > 2.0 * openJoinTolerance;
}
} // namespace

ZETGeoAssembledCurveOnSurfacePrivate::ZETGeoAssembledCurveOnSurfacePrivate(
    const QList<ZETGeoRangeOfCurve>& rangesInOrder, const QList<bool>& sensesInOrder, bool walkReversed)
    : ranges(rangesInOrder)
    , senses(sensesInOrder)
    , reverse(walkReversed)
{
    held.reserve(std::size_t(ranges.size()));
    for (const ZETGeoRangeOfCurve& range : ranges)
        held.emplace_back(range.GetCurve());
}

ZETGeoAssembledCurveOnSurface::ZETGeoAssembledCurveOnSurface(const QList<ZETGeoRangeOfCurve>& ranges,
                                                             const QList<bool>& senses, bool reverse)
    : d(std::make_unique<ZETGeoAssembledCurveOnSurfacePrivate>(ranges, senses, reverse))
{
}

ZETGeoAssembledCurveOnSurface::~ZETGeoAssembledCurveOnSurface() = default;

void ZETGeoAssembledCurveOnSurface::Initialize()
{
    if (d->ranges.isEmpty())
        throw ZETSysException(tr("a chain of curves needs one part at least"));
    if (d->ranges.size() != d->senses.size()) {
        throw ZETSysException(
            tr("a chain of %1 parts can't have %2 senses").arg(d->ranges.size()).arg(d->senses.size()));
    }
    const ZETGeoSurface* const surface = GetCurveOnSurface(d->ranges.first(), 1).GetSurface();
    Links links;
    Links before;
    for (qsizetype i = 0; i < d->ranges.size(); ++i) {
        if (GetCurveOnSurface(d->ranges[i], i + 1).GetSurface() != surface)
            throw ZETSysException(tr("part %1 of the chain lies on another surface than part 1").arg(i + 1));
        Links part = GetLinks(d->ranges[i], d->senses[i], i + 1);
        if (i > 0)
            CheckJoin(before, part, i + 1);
        links.insert(links.end(), part.begin(), part.end());
        before = std::move(part);
    }
    const bool closed = IsRing(links);
    const ZETOpenChain chain(std::move(links), closed);
    d->chain = d->reverse ? chain.GetReversed() : chain;
    d->surface = ZETOpenRef<const ZETGeoSurface>(surface);
}

ZETGeoLocationOnCurve ZETGeoAssembledCurveOnSurface::GetLocation(double distance,
                                                                 const ZETGeoLocationOnCurve* from) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Locate(distance, from ? from->GetParameter() : 0.0));
}

ZETMathVector ZETGeoAssembledCurveOnSurface::GetTangent(const ZETGeoLocationOnCurve& location) const
{
    return FromKernel(d->chain.GetTangent(location.GetParameter()));
}

int ZETGeoAssembledCurveOnSurface::GetNumPoints() const
{
    return int(d->chain.GetPolyline().size());
}

ZETMathPoint ZETGeoAssembledCurveOnSurface::GetPoint(int index) const
{
    const auto& points = d->chain.GetPolyline();
    return index >= 0 && index < int(points.size()) ? FromKernel(points[std::size_t(index)]) : ZETMathPoint();
}

int ZETGeoAssembledCurveOnSurface::GetNumSegments() const
{
    return d->chain.GetCount();
}

bool ZETGeoAssembledCurveOnSurface::IsClosed() const
{
    return d->chain.IsClosed();
}

double ZETGeoAssembledCurveOnSurface::GetLength() const
{
    return d->chain.GetLength();
}

ZETGeoLocationOnCurve ZETGeoAssembledCurveOnSurface::GetLocation(int index) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Normalize(index));
}

double ZETGeoAssembledCurveOnSurface::GetSegmentLength(int index) const
{
    return d->chain.GetLength(index);
}

const ZETGeoSurface* ZETGeoAssembledCurveOnSurface::GetSurface() const
{
    return d->surface.Get();
}

ZETGeoLocationOnSurface ZETGeoAssembledCurveOnSurface::GetLocationOnSurface(const ZETGeoLocationOnCurve& location) const
{
    const gp_Pnt2d place = d->chain.GetPlace(location.GetParameter());
    return ZETGeoLocationOnSurface(d->surface.Get(), place.X(), place.Y());
}

ZETMathPoint ZETGeoAssembledCurveOnSurface::EvaluatePoint(double parameter) const
{
    return FromKernel(d->chain.GetPoint(parameter));
}
