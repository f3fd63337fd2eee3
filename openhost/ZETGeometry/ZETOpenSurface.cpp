#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenClosedSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"

#include <Bnd_Box.hxx>
#include <BRep_Tool.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <BSplSLib.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Plane.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <GeomLib.hxx>
#include <Poly_Triangulation.hxx>
#include <Precision.hxx>
#include <TColgp_Array2OfPnt.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopoDS.hxx>

#include <algorithm>
#include <numbers>
#include <vector>

namespace
{
using std::numbers::pi;

/*! Refuses a range that isn't one; a full turn may be told with the rounding of 2 * pi. */
void CheckRange(double minimum, double maximum, double largestSpan = std::numeric_limits<double>::infinity())
{
    if (!std::isfinite(minimum) || !std::isfinite(maximum) || !(maximum - minimum > Precision::PConfusion()) ||
        maximum - minimum > largestSpan + Precision::Angular()) {
        throw ZETSysException(ZETOpenSurface::tr("a surface can't reach from %1 to %2").arg(minimum).arg(maximum));
    }
}

void CheckRadius(double radius)
{
    if (!std::isfinite(radius) || !(radius > Precision::Confusion()))
        throw ZETSysException(ZETOpenSurface::tr("a surface can't have the radius %1").arg(radius));
}

ZETOpenRef<ZETOpenSurface> MakeFaceOf(const Handle(Geom_Surface) & surface, double uMin, double uMax, double vMin,
                                      double vMax)
{
    BRepBuilderAPI_MakeFace maker(surface, uMin, uMax, vMin, vMax, Precision::Confusion());
    if (!maker.IsDone())
        throw ZETSysException(ZETOpenSurface::tr("the surface can't be built within its limits"));
    return ZETOpenSurfacePrivate::Make(maker.Face());
}

/*! Parameters for the rows of a grid: the mean of the chord lengths across all of them, from 0 to 1. */
std::vector<double> GetGridParameters(const QList<QList<ZETMathPoint>>& rows, bool alongRow)
{
    const qsizetype count = alongRow ? rows.first().size() : rows.size();
    const qsizetype lines = alongRow ? rows.size() : rows.first().size();
    std::vector<double> parameters(std::size_t(count), 0.0);
    for (qsizetype i = 1; i < count; ++i) {
        double sum = 0.0;
        for (qsizetype line = 0; line < lines; ++line) {
            sum += alongRow ? rows[line][i].GetDistanceTo(rows[line][i - 1])
                            : rows[i][line].GetDistanceTo(rows[i - 1][line]);
        }
        parameters[std::size_t(i)] = parameters[std::size_t(i) - 1] + sum;
        if (!(sum > 0.0))
            throw ZETSysException(ZETOpenSurface::tr("two neighbouring lines of the grid of points are the same"));
    }
    const double length = parameters.back();
    for (double& parameter : parameters)
        parameter /= length;
    parameters.back() = 1.0;
    return parameters;
}

/*! Knots for an interpolation at \a parameters: each inner one is the mean of the parameters around it. */
std::vector<double> GetKnots(const std::vector<double>& parameters, int degree)
{
    std::vector<double> knots(std::size_t(degree) + 1, 0.0);
    for (std::size_t i = 1; i + std::size_t(degree) < parameters.size(); ++i) {
        double sum = 0.0;
        for (std::size_t k = i; k < i + std::size_t(degree); ++k)
            sum += parameters[k];
        knots.push_back(sum / degree);
    }
    knots.insert(knots.end(), std::size_t(degree) + 1, 1.0);
    return knots;
}

/*! The kernel's arrays of one direction of a B-spline. */
struct SplineDirection {
    SplineDirection(const std::vector<double>& at, int count)
        : degree(std::min(3, count - 1))
        , flat(GetKnots(at, degree))
        , parameters(1, count)
        , flatKnots(1, int(flat.size()))
    {
        std::copy(at.begin(), at.end(), &parameters.ChangeFirst());
        std::copy(flat.begin(), flat.end(), &flatKnots.ChangeFirst());
    }
    TColStd_Array1OfReal GetDistinctKnots() const
    {
        TColStd_Array1OfReal knots(1, int(flat.size()) - 2 * degree);
        for (int i = knots.Lower(); i <= knots.Upper(); ++i)
            knots(i) = flat[std::size_t(degree + i - 1)];
        return knots;
    }
    TColStd_Array1OfInteger GetMultiplicities() const
    {
        TColStd_Array1OfInteger multiplicities(1, int(flat.size()) - 2 * degree);
        multiplicities.Init(1);
        multiplicities.ChangeFirst() = degree + 1;
        multiplicities.ChangeLast() = degree + 1;
        return multiplicities;
    }

    int degree;
    std::vector<double> flat;
    TColStd_Array1OfReal parameters;
    TColStd_Array1OfReal flatKnots;
};

Handle(Geom_Surface) InterpolateGrid(const QList<QList<ZETMathPoint>>& rows)
{
    const int rowCount = int(rows.size());
    const int columnCount = int(rows.first().size());
    const SplineDirection u(GetGridParameters(rows, false), rowCount);
    const SplineDirection v(GetGridParameters(rows, true), columnCount);
    TColgp_Array2OfPnt poles(1, rowCount, 1, columnCount);
    for (int i = 0; i < rowCount; ++i) {
        for (int k = 0; k < columnCount; ++k)
            poles(i + 1, k + 1) = ToKernel(rows[i][k]);
    }
    int problem = 0;
    BSplSLib::Interpolate(u.degree, v.degree, u.flatKnots, v.flatKnots, u.parameters, v.parameters, poles, problem);
    if (problem != 0)
        throw ZETSysException(ZETOpenSurface::tr("no smooth surface goes through the grid of points"));
    return new Geom_BSplineSurface(poles, u.GetDistinctKnots(), v.GetDistinctKnots(), u.GetMultiplicities(),
                                   v.GetMultiplicities(), u.degree, v.degree);
}

void CheckGrid(const QList<QList<ZETMathPoint>>& rows)
{
    if (rows.size() < 2 || rows.first().size() < 2)
        throw ZETSysException(ZETOpenSurface::tr("a grid of points needs two rows of two points at least"));
    for (const QList<ZETMathPoint>& row : rows) {
        if (row.size() != rows.first().size())
            throw ZETSysException(ZETOpenSurface::tr("the rows of a grid of points must be equally long"));
        if (!std::all_of(row.begin(), row.end(), IsFinite))
            throw ZETSysException(ZETOpenSurface::tr("a point of the grid has a coordinate that isn't a number"));
    }
}

QString GetBuildTask()
{
    return ZETOpenSurface::tr("the surface can't be built");
}
} // namespace

// ---- the record

ZETOpenSurfacePrivate::ZETOpenSurfacePrivate(const TopoDS_Face& trimmedFace)
    : face(trimmedFace)
    , geometry(BRep_Tool::Surface(face))
{
    if (geometry.IsNull())
        throw ZETSysException(ZETOpenSurface::tr("the face has no surface"));
    BRepTools::UVBounds(face, uMin, uMax, vMin, vMax);
    if (!(uMax > uMin) || !(vMax > vMin) || Precision::IsInfinite(uMin) || Precision::IsInfinite(uMax) ||
        Precision::IsInfinite(vMin) || Precision::IsInfinite(vMax)) {
        throw ZETSysException(ZETOpenSurface::tr("the face has no bounds"));
    }
    const double gap = std::max(openJoinTolerance, BRep_Tool::Tolerance(face));
    const ZETOpenClosedSurface closed(geometry, uMin, uMax, vMin, vMax, gap);
    geometry = closed.GetGeometry();
    uPeriod = closed.GetUPeriod();
    vPeriod = closed.GetVPeriod();
    adaptor = new GeomAdaptor_Surface(geometry, uMin, uMax, vMin, vMax);
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurfacePrivate::Make(const TopoDS_Face& face, const QString& name)
{
    auto record = std::make_unique<ZETOpenSurfacePrivate>(face);
    record->name = name;
    return ZETOpenRef<ZETOpenSurface>(new ZETOpenSurface(std::move(record)));
}

std::unique_ptr<ZETOpenSurfaceProjector> ZETOpenSurfacePrivate::MakeProjector() const
{
    // In the form of the file: the searches stay within the bounds, and are slow at the seam of a periodic spline.
    const Handle(GeomAdaptor_Surface) own = new GeomAdaptor_Surface(BRep_Tool::Surface(face), uMin, uMax, vMin, vMax);
    return std::make_unique<ZETOpenSurfaceProjector>(face, own);
}

gp_Vec ZETOpenSurfacePrivate::GetNormal(double u, double v) const
{
    gp_Pnt point;
    gp_Vec alongU;
    gp_Vec alongV;
    adaptor->D1(u, v, point, alongU, alongV);
    gp_Vec normal = alongU.Crossed(alongV);
    const double size = normal.Magnitude();
    if (size > Precision::Angular() * alongU.Magnitude() * alongV.Magnitude() && size > gp::Resolution() &&
        alongU.Magnitude() > Precision::Confusion() && alongV.Magnitude() > Precision::Confusion()) {
        normal /= size;
    } else {
        gp_Dir estimate;
        if (GeomLib::NormEstim(geometry, gp_Pnt2d(u, v), Precision::Confusion(), estimate) < 2) {
            normal = gp_Vec(estimate);
        } else {
            // No limit, as at the apex of a cone: a place a little further inside has to do.
            constexpr double step = 1e-4;
            const double insideU = u + step * (0.5 * (uMin + uMax) - u);
            const double insideV = v + step * (0.5 * (vMin + vMax) - v);
            adaptor->D1(insideU, insideV, point, alongU, alongV);
            normal = alongU.Crossed(alongV);
            if (normal.Magnitude() > gp::Resolution())
                normal.Normalize();
        }
    }
    return face.Orientation() == TopAbs_REVERSED ? normal.Reversed() : normal;
}

gp_Pnt2d ZETOpenSurfacePrivate::Unwrap(const gp_Pnt2d& from, const gp_Pnt2d& to) const
{
    const auto shifted = [](double start, double end, double period) {
        return period > 0.0 ? end - period * std::round((end - start) / period) : end;
    };
    return gp_Pnt2d(shifted(from.X(), to.X(), uPeriod), shifted(from.Y(), to.Y(), vPeriod));
}

bool ZETOpenSurfacePrivate::IsDegenerateInU(const gp_Pnt2d& place) const
{
    gp_Pnt point;
    gp_Vec alongU;
    gp_Vec alongV;
    adaptor->D1(place.X(), place.Y(), point, alongU, alongV);
    return alongU.Magnitude() * (uMax - uMin) < Precision::Confusion();
}

bool ZETOpenSurfacePrivate::IsDegenerateInV(const gp_Pnt2d& place) const
{
    gp_Pnt point;
    gp_Vec alongU;
    gp_Vec alongV;
    adaptor->D1(place.X(), place.Y(), point, alongU, alongV);
    return alongV.Magnitude() * (vMax - vMin) < Precision::Confusion();
}

// ---- the builders

ZETOpenSurface::ZETOpenSurface(std::unique_ptr<ZETOpenSurfacePrivate> record)
    : d(std::move(record))
{
}

ZETOpenSurface::~ZETOpenSurface() = default;

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakePlane(const ZETMathAxis& axis, double firstMin, double firstMax,
                                                     double secondMin, double secondMax)
{
    CheckRange(firstMin, firstMax);
    CheckRange(secondMin, secondMax);
    return CallKernel(GetBuildTask(), [&] {
        return MakeFaceOf(new Geom_Plane(ToKernel(axis)), firstMin, firstMax, secondMin, secondMax);
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeCylinder(const ZETMathAxis& axis, double radius, double startAngle,
                                                        double endAngle, double heightMin, double heightMax)
{
    CheckRadius(radius);
    CheckRange(startAngle, endAngle, 2.0 * pi);
    CheckRange(heightMin, heightMax);
    return CallKernel(GetBuildTask(), [&] {
        return MakeFaceOf(new Geom_CylindricalSurface(ToKernel(axis), radius), startAngle, endAngle, heightMin,
                          heightMax);
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeCone(const ZETMathAxis& axis, double radius, double halfAngle,
                                                    double startAngle, double endAngle, double distanceMin,
                                                    double distanceMax)
{
    CheckRange(startAngle, endAngle, 2.0 * pi);
    CheckRange(distanceMin, distanceMax);
    const double narrowest = radius + std::min(distanceMin * std::sin(halfAngle), distanceMax * std::sin(halfAngle));
    if (!(radius >= 0.0) || !std::isfinite(radius) || !(narrowest >= -Precision::Confusion()))
        throw ZETSysException(tr("a cone can't reach beyond its apex"));
    return CallKernel(GetBuildTask(), [&] {
        return MakeFaceOf(new Geom_ConicalSurface(ToKernel(axis), halfAngle, radius), startAngle, endAngle, distanceMin,
                          distanceMax);
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeSphere(const ZETMathAxis& axis, double radius, double startLongitude,
                                                      double endLongitude, double startLatitude, double endLatitude)
{
    CheckRadius(radius);
    CheckRange(startLongitude, endLongitude, 2.0 * pi);
    CheckRange(startLatitude, endLatitude, pi);
    if (startLatitude < -pi / 2 - Precision::Angular() || endLatitude > pi / 2 + Precision::Angular())
        throw ZETSysException(tr("a latitude lies between -90 and 90 degrees"));
    return CallKernel(GetBuildTask(), [&] {
        return MakeFaceOf(new Geom_SphericalSurface(ToKernel(axis), radius), startLongitude, endLongitude,
                          std::max(startLatitude, -pi / 2), std::min(endLatitude, pi / 2));
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeTorus(const ZETMathAxis& axis, double majorRadius, double minorRadius,
                                                     double startAngle, double endAngle, double startTubeAngle,
                                                     double endTubeAngle)
{
    CheckRadius(majorRadius);
    CheckRadius(minorRadius);
    CheckRange(startAngle, endAngle, 2.0 * pi);
    CheckRange(startTubeAngle, endTubeAngle, 2.0 * pi);
    return CallKernel(GetBuildTask(), [&] {
        return MakeFaceOf(new Geom_ToroidalSurface(ToKernel(axis), majorRadius, minorRadius), startAngle, endAngle,
                          startTubeAngle, endTubeAngle);
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeBSpline(const QList<QList<ZETMathPoint>>& rows)
{
    CheckGrid(rows);
    return CallKernel(GetBuildTask(), [&] {
        const Handle(Geom_Surface) surface = InterpolateGrid(rows);
        return MakeFaceOf(surface, 0.0, 1.0, 0.0, 1.0);
    });
}

ZETOpenRef<ZETOpenSurface> ZETOpenSurface::MakeReversed() const
{
    return ZETOpenSurfacePrivate::Make(TopoDS::Face(d->face.Reversed()), d->name);
}

// ---- questions

QString ZETOpenSurface::GetName() const
{
    return d->name;
}

void ZETOpenSurface::SetName(const QString& name)
{
    d->name = name;
}

bool ZETOpenSurface::IsPlane() const
{
    return d->adaptor->GetType() == GeomAbs_Plane;
}

double ZETOpenSurface::GetDistanceTo(const ZETMathPoint& point) const
{
    return Project(point).GetPoint().GetDistanceTo(point);
}

ZETOpenTriangles ZETOpenSurface::Tessellate(double deflection, double angle) const
{
    if (!(deflection > 0.0) || !(angle > 0.0))
        throw ZETSysException(tr("triangles need a deflection and an angle above zero"));
    ZETOpenTriangles triangles;
    CallKernel(tr("the surface can't be divided into triangles"), [&] {
        // The mesh stays in the shape it is made for, so a copy that shares the geometry takes it.
        const TopoDS_Face copy = TopoDS::Face(BRepBuilderAPI_Copy(d->face, false, false).Shape());
        const BRepMesh_IncrementalMesh mesher(copy, deflection, false, angle);
        TopLoc_Location location;
        const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(copy, location);
        if (mesh.IsNull() || !mesh->HasUVNodes())
            throw ZETSysException(tr("the surface can't be divided into triangles"));
        for (int i = 1; i <= mesh->NbNodes(); ++i) {
            triangles.points.append(FromKernel(mesh->Node(i).Transformed(location.Transformation())));
            triangles.normals.append(FromKernel(d->GetNormal(mesh->UVNode(i).X(), mesh->UVNode(i).Y())));
        }
        for (int i = 1; i <= mesh->NbTriangles(); ++i) {
            int a = 0;
            int b = 0;
            int c = 0;
            mesh->Triangle(i).Get(a, b, c);
            if (d->face.Orientation() == TopAbs_REVERSED)
                std::swap(b, c);
            triangles.indices << a - 1 << b - 1 << c - 1;
        }
    });
    return triangles;
}

ZETMathVector ZETOpenSurface::GetNormal(const ZETGeoLocationOnSurface& location) const
{
    if (location.GetSurface() && location.GetSurface() != this)
        return GetNormal(Project(location.GetPoint()));
    return FromKernel(d->GetNormal(location.GetU(), location.GetV()));
}

ZETGeoLocationOnSurface ZETOpenSurface::Project(const ZETMathPoint& point) const
{
    if (!IsFinite(point))
        throw ZETSysException(tr("a point that has a coordinate that isn't a number can't be projected"));
    return CallKernel(tr("the point can't be projected to the surface"), [&] {
        if (!d->projector)
            d->projector = d->MakeProjector();
        const auto place = d->projector->Project(ToKernel(point));
        if (!std::isfinite(place.distance))
            throw ZETSysException(tr("the point can't be projected to the surface"));
        return ZETGeoLocationOnSurface(this, place.parameters.X(), place.parameters.Y());
    });
}

ZETMathBoundingBox ZETOpenSurface::GetBoundingBox() const
{
    if (!d->box) {
        d->box = CallKernel(tr("the surface's box can't be found"), [&] {
            Bnd_Box bounds;
            BRepBndLib::AddOptimal(d->face, bounds, false, false);
            if (bounds.IsVoid())
                return ZETMathBoundingBox();
            bounds.SetGap(0.0);
            return ZETMathBoundingBox(FromKernel(bounds.CornerMin()), FromKernel(bounds.CornerMax()));
        });
    }
    return *d->box;
}

ZETMathPoint ZETOpenSurface::EvaluatePoint(double u, double v) const
{
    return FromKernel(d->adaptor->Value(u, v));
}
