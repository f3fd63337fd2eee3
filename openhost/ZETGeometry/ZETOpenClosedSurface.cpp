#include "openhost/ZETGeometry/ZETOpenClosedSurface_p.h"

#include <Geom_BezierSurface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <GeomConvert.hxx>
#include <gp_Pnt.hxx>

#include <algorithm>
#include <cmath>

namespace
{
/*! Bounds in one direction. */
struct Range {
    double from;
    double to;

    double At(double fraction) const { return from + fraction * (to - from); }
    bool IsWhole(double first, double last) const
    {
        const double rounding = 1e-9 * (last - first);
        return std::abs(from - first) <= rounding && std::abs(to - last) <= rounding;
    }
};

/*! Whether both ends of \a along are the same line, and not all of the surface one. \a evaluate takes a parameter along
 *  and one across. */
template <typename Evaluate>
bool IsClosed(const Range& along, const Range& across, double gap, Evaluate evaluate)
{
    constexpr int samples = 8;
    double widestGap = 0.0;
    double widest = 0.0;
    for (int i = 0; i <= samples; ++i) {
        const double place = across.At(double(i) / samples);
        const gp_Pnt start = evaluate(along.from, place);
        widestGap = std::max(widestGap, start.Distance(evaluate(along.to, place)));
        for (const double fraction : {0.25, 0.5, 0.75})
            widest = std::max(widest, start.Distance(evaluate(along.At(fraction), place)));
    }
    return widestGap <= gap && widest > 2.0 * gap;
}

// Copies of splines that end where they begin; the kernel drops the last poles, which the first ones stand for then.

Handle(Geom_BSplineCurve) MakePeriodic(const Handle(Geom_BSplineCurve) & curve)
{
    Handle(Geom_BSplineCurve) copy = Handle(Geom_BSplineCurve)::DownCast(curve->Copy());
    copy->SetPeriodic();
    return copy;
}

Handle(Geom_BSplineSurface) MakeUPeriodic(const Handle(Geom_BSplineSurface) & surface)
{
    Handle(Geom_BSplineSurface) copy = Handle(Geom_BSplineSurface)::DownCast(surface->Copy());
    copy->SetUPeriodic();
    return copy;
}

Handle(Geom_BSplineSurface) MakeVPeriodic(const Handle(Geom_BSplineSurface) & surface)
{
    Handle(Geom_BSplineSurface) copy = Handle(Geom_BSplineSurface)::DownCast(surface->Copy());
    copy->SetVPeriodic();
    return copy;
}

/*! The same surface, for the same parameters, in a form that can have a period. */
Handle(Geom_Surface) Simplify(const Handle(Geom_Surface) & surface)
{
    if (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface); !trimmed.IsNull())
        return Simplify(trimmed->BasisSurface());
    if (surface->IsKind(STANDARD_TYPE(Geom_BezierSurface)))
        return GeomConvert::SurfaceToBSplineSurface(surface);
    return surface;
}

/*! \a surface, which closes over the whole of \a range in u, with a period in u; null if it can't have one. */
Handle(Geom_Surface) CloseInU(const Handle(Geom_Surface) & surface, const Range& range)
{
    if (surface->IsUPeriodic())
        return surface;
    double bounds[4];
    surface->Bounds(bounds[0], bounds[1], bounds[2], bounds[3]);
    if (!range.IsWhole(bounds[0], bounds[1]))
        return nullptr;
    if (const auto spline = Handle(Geom_BSplineSurface)::DownCast(surface); !spline.IsNull())
        return MakeUPeriodic(spline);
    const auto extrusion = Handle(Geom_SurfaceOfLinearExtrusion)::DownCast(surface);
    if (extrusion.IsNull())
        return nullptr;
    const auto profile = Handle(Geom_BSplineCurve)::DownCast(extrusion->BasisCurve());
    if (profile.IsNull())
        return nullptr;
    return new Geom_SurfaceOfLinearExtrusion(MakePeriodic(profile), extrusion->Direction());
}

/*! The same in v. */
Handle(Geom_Surface) CloseInV(const Handle(Geom_Surface) & surface, const Range& range)
{
    if (surface->IsVPeriodic())
        return surface;
    double bounds[4];
    surface->Bounds(bounds[0], bounds[1], bounds[2], bounds[3]);
    if (!range.IsWhole(bounds[2], bounds[3]))
        return nullptr;
    if (const auto spline = Handle(Geom_BSplineSurface)::DownCast(surface); !spline.IsNull())
        return MakeVPeriodic(spline);
    const auto revolution = Handle(Geom_SurfaceOfRevolution)::DownCast(surface);
    if (revolution.IsNull())
        return nullptr;
    const auto profile = Handle(Geom_BSplineCurve)::DownCast(revolution->BasisCurve());
    if (profile.IsNull())
        return nullptr;
    return new Geom_SurfaceOfRevolution(MakePeriodic(profile), revolution->Axis());
}
} // namespace

ZETOpenClosedSurface::ZETOpenClosedSurface(const Handle(Geom_Surface) & surface, double uMin, double uMax, double vMin,
                                           double vMax, double gap)
    : geometry(Simplify(surface))
{
    const Range u{uMin, uMax};
    const Range v{vMin, vMax};
    if (IsClosed(u, v, gap, [&](double along, double across) { return surface->Value(along, across); })) {
        if (const Handle(Geom_Surface) closed = CloseInU(geometry, u); !closed.IsNull()) {
            geometry = closed;
            uPeriod = geometry->UPeriod();
        }
    }
    if (IsClosed(v, u, gap, [&](double along, double across) { return surface->Value(across, along); })) {
        if (const Handle(Geom_Surface) closed = CloseInV(geometry, v); !closed.IsNull()) {
            geometry = closed;
            vPeriod = geometry->VPeriod();
        }
    }
}
