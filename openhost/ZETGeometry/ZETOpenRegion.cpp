#include "openhost/ZETGeometry/ZETOpenRegion.h"

#include "openhost/ZETGeometry/ZETOpenChain_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>

#include <CSLib_Class2d.hxx>
#include <gp_Vec2d.hxx>
#include <TColgp_SequenceOfPnt2d.hxx>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{
constexpr double deflection = 0.01; // mm, with which a boundary becomes a polygon
constexpr double angle = 0.05;      // rad

QString GetTask()
{
    return QCoreApplication::translate("ZETOpenRegion", "the region within the boundaries can't be found");
}

/*! A closed boundary in the parameters of the surface. */
struct Ring {
    std::vector<gp_Pnt2d> places;
    double uMin = 0.0;
    double uMax = 0.0;
    double vMin = 0.0;
    double vMax = 0.0;
    std::unique_ptr<CSLib_Class2d> classifier;

    void Close();
    gp_Pnt2d GetMiddle() const { return gp_Pnt2d(0.5 * (uMin + uMax), 0.5 * (vMin + vMax)); }
    bool Contains(const gp_Pnt2d& place) const;
    bool HasArea() const;
};

void Ring::Close()
{
    const auto byU = [](const gp_Pnt2d& a, const gp_Pnt2d& b) { return a.X() < b.X(); };
    const auto byV = [](const gp_Pnt2d& a, const gp_Pnt2d& b) { return a.Y() < b.Y(); };
    uMin = std::min_element(places.begin(), places.end(), byU)->X();
    uMax = std::max_element(places.begin(), places.end(), byU)->X();
    vMin = std::min_element(places.begin(), places.end(), byV)->Y();
    vMax = std::max_element(places.begin(), places.end(), byV)->Y();
    if (!(uMax > uMin) || !(vMax > vMin))
        return;
    TColgp_SequenceOfPnt2d sequence;
    for (const gp_Pnt2d& place : places)
        sequence.Append(place);
    const double uTolerance = 1e-9 * (uMax - uMin);
    const double vTolerance = 1e-9 * (vMax - vMin);
    classifier = std::make_unique<CSLib_Class2d>(sequence, uTolerance, vTolerance, uMin, vMin, uMax, vMax);
}

/*! On the boundary counts as within. */
bool Ring::Contains(const gp_Pnt2d& place) const
{
    return classifier->SiDans(place) != -1;
}

/*! Measured in parts of the ring's box, because the parameters of a surface have no common unit. */
bool Ring::HasArea() const
{
    constexpr double smallest = 1e-9;
    double doubled = 0.0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const gp_Vec2d from(GetMiddle(), places[i]);
        doubled += from.Crossed(gp_Vec2d(GetMiddle(), places[(i + 1) % places.size()]));
    }
    return std::abs(0.5 * doubled) > smallest * (uMax - uMin) * (vMax - vMin);
}
} // namespace

class ZETOpenRegionPrivate
{
public:
    void AddBoundary(const ZETOpenChain& chain);
    bool ContainsPlace(const gp_Pnt2d& place) const;

    const ZETOpenSurface* surface = nullptr;
    const ZETOpenSurfacePrivate* record = nullptr;
    std::vector<Ring> rings;
    bool hasWinding = false;
};

void ZETOpenRegionPrivate::AddBoundary(const ZETOpenChain& chain)
{
    Ring ring;
    for (int i = 0; i < chain.GetCount(); ++i) {
        const auto& link = chain.GetLink(i);
        auto fractions =
            link.segment->GetPolyline(std::min(link.from, link.to), std::max(link.from, link.to), deflection, angle);
        if (link.to < link.from)
            std::reverse(fractions.begin(), fractions.end());
        fractions.insert(fractions.begin(), link.from);
        fractions.push_back(link.to);
        // Segments don't care in which turn they stand, so each is moved to the end of the one before.
        gp_Vec2d shift;
        if (!ring.places.empty()) {
            const gp_Pnt2d start = link.segment->GetPlace(link.from);
            shift = gp_Vec2d(start, record->Unwrap(ring.places.back(), start));
        }
        for (const double fraction : fractions)
            ring.places.push_back(link.segment->GetPlace(fraction).Translated(shift));
    }
    const gp_Pnt2d first = ring.places.front();
    const gp_Pnt2d last = ring.places.back();
    // A boundary that runs round the surface ends a turn away from its start.
    if ((record->uPeriod > 0.0 && std::abs(last.X() - first.X()) > 0.5 * record->uPeriod) ||
        (record->vPeriod > 0.0 && std::abs(last.Y() - first.Y()) > 0.5 * record->vPeriod)) {
        hasWinding = true;
        return;
    }
    ring.Close();
    if (ring.classifier)
        rings.push_back(std::move(ring));
}

bool ZETOpenRegionPrivate::ContainsPlace(const gp_Pnt2d& place) const
{
    bool inside = false;
    for (const Ring& ring : rings)
        inside ^= ring.Contains(record->Unwrap(ring.GetMiddle(), place));
    return inside;
}

ZETOpenRegion::ZETOpenRegion(const QList<const ZETGeoCurveOnSurface*>& boundaries)
    : d(std::make_unique<ZETOpenRegionPrivate>())
{
    CallKernel(GetTask(), [&] {
        for (const ZETGeoCurveOnSurface* boundary : boundaries) {
            const ZETOpenChain* const chain = ZETOpenChain::Of(boundary);
            const auto* const surface = qobject_cast<const ZETOpenSurface*>(boundary->GetSurface());
            if (!chain || !surface || !chain->IsClosed() || (d->surface && d->surface != surface))
                continue;
            d->surface = surface;
            d->record = &ZETOpenSurfacePrivate::Of(*surface);
            d->AddBoundary(*chain);
        }
    });
}

ZETOpenRegion::~ZETOpenRegion() = default;

bool ZETOpenRegion::Contains(const ZETGeoLocationOnSurface& location) const
{
    if (d->rings.empty() || !location.GetSurface())
        return false;
    const auto own = location.GetSurface() == d->surface ? location : d->surface->Project(location.GetPoint());
    return d->ContainsPlace(gp_Pnt2d(own.GetU(), own.GetV()));
}

bool ZETOpenRegion::IsEmpty() const
{
    return std::none_of(d->rings.begin(), d->rings.end(), [](const Ring& ring) { return ring.HasArea(); });
}

bool ZETOpenRegion::HasWinding() const
{
    return d->hasWinding;
}
