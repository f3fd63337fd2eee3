#pragma once

#include <Adaptor3d_CurveOnSurface.hxx>
#include <Geom2d_Curve.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>
#include <gp_Vec.hxx>

#include <memory>
#include <optional>
#include <vector>

class ZETOpenSurface;

/*! One piece of a curve between two neighbouring vertices, over the fraction 0 to 1 of its own parameter. It doesn't
 *  change once it is made, so curves share segments; what they hold keeps the surface alive. */
class ZETOpenSegment
{
public:
    struct Nearest {
        double fraction = 0.0;
        double distance = 0.0;
    };

    virtual ~ZETOpenSegment();

    virtual gp_Pnt GetPoint(double fraction) const = 0;
    /*! The derivative by the fraction. */
    virtual gp_Vec GetTangent(double fraction) const = 0;
    /*! Parameters on the surface, without jumps along the segment; the origin for a segment in space. */
    virtual gp_Pnt2d GetPlace(double fraction) const = 0;
    /*! Arc length between two fractions, \a from not above \a to. */
    double GetLength(double from, double to) const;
    /*! The fraction at the arc length \a distance behind \a from, ahead of it if negative; stays between 0 and 1. */
    virtual double GetFraction(double from, double distance) const = 0;
    /*! The place between two fractions, \a from not above \a to, that is nearest to \a point. */
    virtual Nearest Project(const gp_Pnt& point, double from, double to) const = 0;
    /*! Fractions strictly between \a from and \a to, rising, so that a polyline through their points keeps to the
     *  deflection (mm) and the angle (rad) between its pieces. */
    virtual std::vector<double> GetPolyline(double from, double to, double deflection, double angle) const = 0;

private:
    virtual double ComputeLength(double from, double to) const = 0;

    mutable std::optional<double> wholeLength;
};

/*! A straight segment in space. */
class ZETOpenSpaceLine : public ZETOpenSegment
{
public:
    ZETOpenSpaceLine(const gp_Pnt& startPoint, const gp_Pnt& endPoint);

    gp_Pnt GetPoint(double fraction) const override;
    gp_Vec GetTangent(double fraction) const override;
    gp_Pnt2d GetPlace(double fraction) const override;
    double GetFraction(double from, double distance) const override;
    Nearest Project(const gp_Pnt& point, double from, double to) const override;
    std::vector<double> GetPolyline(double from, double to, double deflection, double angle) const override;

private:
    double ComputeLength(double from, double to) const override;

    gp_Pnt start;
    gp_Pnt end;
};

/*! A segment on a surface. */
class ZETOpenSurfaceSegment : public ZETOpenSegment
{
public:
    /*! Straight in the surface's parameters, from \a startPlace to \a endPlace. The surface must outlive the segment.
     *  Both throw ZETSysException for what goes round a period a thousand times. */
    ZETOpenSurfaceSegment(const ZETOpenSurface& surface, const gp_Pnt2d& startPlace, const gp_Pnt2d& endPlace);
    /*! The part of \a parameterCurve from \a first to \a last, backwards if \a first is above \a last. */
    ZETOpenSurfaceSegment(const ZETOpenSurface& surface, const Handle(Geom2d_Curve) & parameterCurve, double first,
                          double last);

    gp_Pnt GetPoint(double fraction) const override;
    gp_Vec GetTangent(double fraction) const override;
    gp_Pnt2d GetPlace(double fraction) const override;
    double GetFraction(double from, double distance) const override;
    Nearest Project(const gp_Pnt& point, double from, double to) const override;
    std::vector<double> GetPolyline(double from, double to, double deflection, double angle) const override;

    /*! What lies between two fractions, \a from below \a to. */
    std::shared_ptr<const ZETOpenSurfaceSegment> MakePart(const ZETOpenSurface& surfaceOfSegment, double from,
                                                          double to) const;

    /*! For storage: the curve in the surface's parameters, null for a straight segment, and its limits. */
    const Handle(Geom2d_Curve) & GetParameterCurve() const { return geometry; }
    double GetFirst() const { return firstParameter; }
    double GetLast() const { return lastParameter; }

private:
    double ComputeLength(double from, double to) const override;
    double ToParameter(double fraction) const;
    double ToFraction(double parameter) const;
    gp_Pnt Evaluate(const gp_Pnt2d& place) const;

    Handle(Geom2d_Curve) geometry;
    double firstParameter = 0.0;
    double lastParameter = 1.0;
    gp_Pnt2d start; //!< straight segments: exact at both ends
    gp_Pnt2d end;
    Handle(Adaptor3d_Surface) surface;
    Handle(Adaptor3d_CurveOnSurface) curve; //!< null for a segment of no extent
    std::optional<ZETOpenSpaceLine> line;   //!< a straight segment on a plane, where everything is exact
};
