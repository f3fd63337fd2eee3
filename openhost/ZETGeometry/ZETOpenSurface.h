#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETHostGlobal.h>

#include <QList>

#include <memory>

class ZETMathAxis;
class ZETOpenSurfacePrivate;

/*! What a preview draws of a surface: triangles with a normal at each corner. */
struct ZETOpenTriangles {
    QList<ZETMathPoint> points;   //!< corners, in mm
    QList<ZETMathVector> normals; //!< unit normals of the surface, one for each corner
    QList<int> indices;           //!< three a triangle, counter-clockwise seen against the normal
};

/*! A surface of the kernel: one face, trimmed by its boundary. Lengths are mm, angles rad.
 *
 *  Surfaces belong to no container: they live as long as somebody holds a reference. The parameters of a location are
 *  those of the kernel: lengths along the first and second direction of a plane; angle and height of a cylinder;
 *  longitude and latitude of a sphere. Each builder throws ZETSysException for values that make no surface, and each
 *  surface that it makes has its normal where the comment says; MakeReversed gives the other side. */
class ZETHOST_EXPORT ZETOpenSurface final : public ZETGeoSurface
{
    Q_OBJECT

public:
    ~ZETOpenSurface() override;

    /*! A rectangle in the plane of the first and second direction of \a axis; the normal is the third. */
    static ZETOpenRef<ZETOpenSurface> MakePlane(const ZETMathAxis& axis, double firstMin, double firstMax,
                                                double secondMin, double secondMax);
    /*! A part of a cylinder about the third direction of \a axis, the angle counted from the first; the normal points
     *  away from the axis. */
    static ZETOpenRef<ZETOpenSurface> MakeCylinder(const ZETMathAxis& axis, double radius, double startAngle,
                                                   double endAngle, double heightMin, double heightMax);
    /*! A part of a cone about the third direction of \a axis; \a radius is the one at its origin, \a halfAngle the
     *  angle between axis and wall (positive: opens along the axis). Distances are measured along the wall. The normal
     *  points away from the axis. */
    static ZETOpenRef<ZETOpenSurface> MakeCone(const ZETMathAxis& axis, double radius, double halfAngle,
                                               double startAngle, double endAngle, double distanceMin,
                                               double distanceMax);
    /*! A part of a sphere about the origin of \a axis; longitude counts from the first direction about the third,
     *  latitude from -pi/2 to pi/2. The normal points outwards. */
    static ZETOpenRef<ZETOpenSurface> MakeSphere(const ZETMathAxis& axis, double radius, double startLongitude,
                                                 double endLongitude, double startLatitude, double endLatitude);
    /*! A part of a torus about the third direction of \a axis. The normal points out of the tube. */
    static ZETOpenRef<ZETOpenSurface> MakeTorus(const ZETMathAxis& axis, double majorRadius, double minorRadius,
                                                double startAngle, double endAngle, double startTubeAngle,
                                                double endTubeAngle);
    /*! A smooth surface through a grid of points: at least two rows of at least two points, all rows equally long. The
     *  normal is the direction along the rows' order cross the direction along a row. */
    static ZETOpenRef<ZETOpenSurface> MakeBSpline(const QList<QList<ZETMathPoint>>& rows);

    /*! The same face with its normal on the other side; locations have the same parameters on both. */
    ZETOpenRef<ZETOpenSurface> MakeReversed() const;

    /*! The name that the face has in its file, or that the model gave it; may be empty. */
    QString GetName() const;
    void SetName(const QString& name);

    /*! Whether the face is flat. */
    bool IsPlane() const;
    /*! Distance from \a point to the nearest place of the face. */
    double GetDistanceTo(const ZETMathPoint& point) const;

    /*! Triangles that leave the face by at most \a deflection, and from one to the next by at most \a angle. */
    ZETOpenTriangles Tessellate(double deflection, double angle) const;

    /*! Of unit length; on the side that the face's orientation tells. Where the parametrisation is degenerate (a pole)
     *  the limit; at the apex of a cone, the normal of a place near by. */
    ZETMathVector GetNormal(const ZETGeoLocationOnSurface& location) const override;
    /*! The nearest location of the trimmed face. */
    ZETGeoLocationOnSurface Project(const ZETMathPoint& point) const override;
    ZETMathBoundingBox GetBoundingBox() const override;

private:
    ZETMathPoint EvaluatePoint(double u, double v) const override;

    friend class ZETOpenSurfacePrivate;
    explicit ZETOpenSurface(std::unique_ptr<ZETOpenSurfacePrivate> record);
    std::unique_ptr<ZETOpenSurfacePrivate> d;
};
