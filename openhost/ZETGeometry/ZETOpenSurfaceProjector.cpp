#include "openhost/ZETGeometry/ZETOpenSurfaceProjector_p.h"

#include <Adaptor3d_CurveOnSurface.hxx>
#include <BRep_Tool.hxx>
#include <Extrema_ExtPC.hxx>
#include <Extrema_GenLocateExtPS.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GCPnts_UniformAbscissa.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <Precision.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double parameterTolerance = 1e-10;
constexpr int samplesPerBorder = 65;
} // namespace

ZETOpenSurfaceProjector::ZETOpenSurfaceProjector(const TopoDS_Face& face, const Handle(GeomAdaptor_Surface) & adaptor)
    : surface(adaptor)
    , classifier(std::make_unique<BRepTopAdaptor_FClass2d>(face, Precision::PConfusion()))
{
    nearest.SetFlag(Extrema_ExtFlag_MIN);
    nearest.Initialize(*surface, surface->FirstUParameter(), surface->LastUParameter(), surface->FirstVParameter(),
                       surface->LastVParameter(), parameterTolerance, parameterTolerance);
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next())
        AddBorder(face, TopoDS::Edge(edges.Current()));
}

ZETOpenSurfaceProjector::~ZETOpenSurfaceProjector() = default;

ZETOpenSurfaceProjector::Place ZETOpenSurfaceProjector::Project(const gp_Pnt& point)
{
    Place best;
    ProjectInside(point, nearest, best);
    if (!std::isfinite(best.distance)) {
        if (!every) {
            every = std::make_unique<Extrema_ExtPS>();
            every->Initialize(*surface, surface->FirstUParameter(), surface->LastUParameter(),
                              surface->FirstVParameter(), surface->LastVParameter(), parameterTolerance,
                              parameterTolerance);
        }
        ProjectInside(point, *every, best);
    }
    const double inside = best.distance;
    ProjectOnBorders(point, best);
    // The search inside samples the surface and can miss a place close to the border.
    if (best.distance < inside)
        Refine(point, best);
    return best;
}

void ZETOpenSurfaceProjector::AddBorder(const TopoDS_Face& face, const TopoDS_Edge& edge)
{
    double first = 0.0;
    double last = 0.0;
    const Handle(Geom2d_Curve) parameters = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (parameters.IsNull() || !(last > first))
        return;
    Border border;
    border.curve = new Adaptor3d_CurveOnSurface(new Geom2dAdaptor_Curve(parameters, first, last), surface);
    const double length = BRep_Tool::Degenerated(edge) ? 0.0 : GCPnts_AbscissaPoint::Length(*border.curve);
    border.samples.push_back(border.curve->Value(first));
    if (length > 0.0) {
        const GCPnts_UniformAbscissa steps(*border.curve, samplesPerBorder);
        if (steps.IsDone()) {
            for (int i = 2; i <= steps.NbPoints(); ++i)
                border.samples.push_back(border.curve->Value(steps.Parameter(i)));
        }
        border.samples.push_back(border.curve->Value(last));
        border.reach = steps.IsDone() ? length / (samplesPerBorder - 1) : length;
    }
    borders.push_back(std::move(border));
}

bool ZETOpenSurfaceProjector::IsOnFace(const gp_Pnt2d& parameters) const
{
    return classifier->Perform(parameters) != TopAbs_OUT;
}

void ZETOpenSurfaceProjector::Take(const gp_Pnt& point, const gp_Pnt2d& parameters, Place& best) const
{
    const double distance = surface->Value(parameters.X(), parameters.Y()).Distance(point);
    if (distance < best.distance)
        best = {parameters, distance};
}

void ZETOpenSurfaceProjector::ProjectInside(const gp_Pnt& point, Extrema_ExtPS& search, Place& best) const
{
    search.Perform(point);
    if (!search.IsDone())
        return;
    for (int i = 1; i <= search.NbExt(); ++i) {
        double u = 0.0;
        double v = 0.0;
        search.Point(i).Parameter(u, v);
        if (std::sqrt(search.SquareDistance(i)) < best.distance && IsOnFace(gp_Pnt2d(u, v)))
            Take(point, gp_Pnt2d(u, v), best);
    }
}

void ZETOpenSurfaceProjector::ProjectOnBorders(const gp_Pnt& point, Place& best) const
{
    for (const Border& border : borders) {
        double squared = std::numeric_limits<double>::infinity();
        for (const gp_Pnt& sample : border.samples)
            squared = std::min(squared, sample.SquareDistance(point));
        if (std::sqrt(squared) - border.reach < best.distance)
            ProjectOnBorder(point, border, best);
    }
}

void ZETOpenSurfaceProjector::ProjectOnBorder(const gp_Pnt& point, const Border& border, Place& best) const
{
    const auto& parameters = border.curve->GetCurve();
    const double first = border.curve->FirstParameter();
    const double last = border.curve->LastParameter();
    Take(point, parameters->Value(first), best);
    Take(point, parameters->Value(last), best);
    if (border.samples.size() < 2)
        return;
    const Extrema_ExtPC search(point, *border.curve, first, last);
    if (!search.IsDone())
        return;
    for (int i = 1; i <= search.NbExt(); ++i)
        Take(point, parameters->Value(search.Point(i).Parameter()), best);
}

void ZETOpenSurfaceProjector::Refine(const gp_Pnt& point, Place& best) const
{
    Extrema_GenLocateExtPS search(*surface, parameterTolerance, parameterTolerance);
    search.Perform(point, best.parameters.X(), best.parameters.Y());
    if (!search.IsDone())
        return;
    double u = 0.0;
    double v = 0.0;
    search.Point().Parameter(u, v);
    if (IsOnFace(gp_Pnt2d(u, v)))
        Take(point, gp_Pnt2d(u, v), best);
}
