#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoRangeOfCurve.h>
#include <ZETHostGlobal.h>

#include <QList>

#include <memory>

class ZETOpenCurveOnSurfacePrivate;
class ZETOpenSurface;

/*! A curve on a surface of the kernel, through numbered vertices. It holds a reference on its surface, and lives as
 *  long as somebody holds one on it.
 *
 *  The parameter of a location is the number of its segment plus the fraction of the segment's own parameter that lies
 *  behind it, so whole numbers are vertices, exactly. The end of a closed curve is its vertex 0. Lengths are arc
 *  lengths along the surface, and exact distances between the vertices of straight segments on a plane. They are
 *  worked out when they are first asked for, so a curve must not be used by two threads at once. */
class ZETHOST_EXPORT ZETOpenCurveOnSurface final : public ZETGeoCurveOnSurface
{
    Q_OBJECT

public:
    ~ZETOpenCurveOnSurface() override;

    /*! The curve through \a points, each projected to its nearest place on \a surface; each segment is straight in the
     *  surface's parameters, and takes the short way round where the surface closes. With \a closed the last point is
     *  joined to the first; a last point that repeats the first is dropped then. Throws ZETSysException for fewer than
     *  two points (three for a closed curve) and for coordinates that aren't finite. */
    static ZETOpenRef<ZETOpenCurveOnSurface> MakePolyline(const ZETOpenRef<ZETOpenSurface>& surface,
                                                          const QList<ZETMathPoint>& points, bool closed);
    /*! The same through places of \a surface. */
    static ZETOpenRef<ZETOpenCurveOnSurface> MakePolyline(const ZETOpenRef<ZETOpenSurface>& surface,
                                                          const QList<ZETGeoLocationOnSurface>& locations, bool closed);
    /*! A smooth curve through \a points, projected as above, with one segment between each pair of neighbours. */
    static ZETOpenRef<ZETOpenCurveOnSurface> MakeInterpolated(const ZETOpenRef<ZETOpenSurface>& surface,
                                                              const QList<ZETMathPoint>& points, bool closed);
    /*! A circle about \a center on a flat \a surface, counter-clockwise seen against its normal, beginning in the
     *  direction of the plane's first parameter, in \a segments equal segments. */
    static ZETOpenRef<ZETOpenCurveOnSurface> MakeCircle(const ZETOpenRef<ZETOpenSurface>& surface,
                                                        const ZETMathPoint& center, double radius, int segments);

    /*! The same curve with further vertices, so that straight lines between neighbours leave it by \a deflection (mm)
     *  at most. The vertices are what a job writes. */
    ZETOpenRef<ZETOpenCurveOnSurface> MakeRefined(double deflection) const;

    /*! The largest distance that a point given to a builder had from the surface; 0 for other curves. */
    double GetMaxProjectionDistance() const;
    /*! From vertex 0 to the end. */
    ZETGeoRangeOfCurve GetWholeRange() const;
    /*! The location of the place of the curve that is nearest to \a point. */
    ZETGeoLocationOnCurve Project(const ZETMathPoint& point) const;
    /*! The curve's name in its file; may be empty. */
    QString GetName() const;
    void SetName(const QString& name);

    ZETGeoLocationOnCurve GetLocation(double distance, const ZETGeoLocationOnCurve* from) const override;
    ZETMathVector GetTangent(const ZETGeoLocationOnCurve& location) const override;
    int GetNumPoints() const override;
    ZETMathPoint GetPoint(int index) const override;
    int GetNumSegments() const override;
    bool IsClosed() const override;
    double GetLength() const override;
    ZETGeoLocationOnCurve GetLocation(int index) const override;
    double GetSegmentLength(int index) const override;
    const ZETGeoSurface* GetSurface() const override;
    ZETGeoLocationOnSurface GetLocationOnSurface(const ZETGeoLocationOnCurve& location) const override;

private:
    ZETMathPoint EvaluatePoint(double parameter) const override;

    friend class ZETOpenCurveOnSurfacePrivate;
    explicit ZETOpenCurveOnSurface(std::unique_ptr<ZETOpenCurveOnSurfacePrivate> record);
    std::unique_ptr<ZETOpenCurveOnSurfacePrivate> d;
};
