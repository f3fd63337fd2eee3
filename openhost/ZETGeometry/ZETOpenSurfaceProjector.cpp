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
    nearest.SetAlgo(Extrema_ExtAlgo_Tree);
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
    const auto addSample = [&border](double parameter) {
        border.parameters.push_back(parameter);
        border.samples.push_back(border.curve->Value(parameter));
    };
    const double length = BRep_Tool::Degenerated(edge) ? 0.0 : GCPnts_AbscissaPoint::Length(*border.curve);
    addSample(first);
    if (length > 0.0) {
        const GCPnts_UniformAbscissa steps(*border.curve, samplesPerBorder);
        for (int i = 2; steps.IsDone() && i < steps.NbPoints(); ++i)
            addSample(steps.Parameter(i));
        addSample(last);
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
    for (const Border& border : borders)
        ProjectOnBorder(point, border, best);
}

/*! Searches those parts of the border whose samples don't rule them out. */
void ZETOpenSurfaceProjector::ProjectOnBorder(const gp_Pnt& point, const Border& border, Place& best) const
{
    std::vector<double> distances;
    distances.reserve(border.samples.size());
    for (const gp_Pnt& sample : border.samples)
        distances.push_back(sample.Distance(point));
    const auto nearestSample = std::min_element(distances.begin(), distances.end());
    if (*nearestSample - border.reach >= best.distance)
        return;
    const auto index = std::size_t(nearestSample - distances.begin());
    Take(point, border.curve->GetCurve()->Value(border.parameters[index]), best);
    const double limit = best.distance + border.reach;
    for (std::size_t from = 0; from < distances.size(); ++from) {
        if (distances[from] >= limit)
            continue;
        std::size_t to = from;
        while (to + 1 < distances.size() && distances[to + 1] < limit)
            ++to;
        ProjectBetween(point, border, from > 0 ? from - 1 : 0, std::min(to + 1, distances.size() - 1), best);
        from = to;
    }
}

void ZETOpenSurfaceProjector::ProjectBetween(const gp_Pnt& point, const Border& border, std::size_t from,
                                             std::size_t to, Place& best) const
{
    const double first = border.parameters[from];
    const double last = border.parameters[to];
    const auto& parameters = border.curve->GetCurve();
    Take(point, parameters->Value(first), best);
    Take(point, parameters->Value(last), best);
    if (last - first <= Precision::PConfusion())
        return;
    const Extrema_ExtPC search(point, *border.curve, first, last);
    for (int i = 1; search.IsDone() && i <= search.NbExt(); ++i)
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
