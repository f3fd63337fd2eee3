#pragma once

#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoRangeOfCurve.h>
#include <ZETHostGlobal.h>

#include <QList>

class ZETGeoAssembledCurveOnSurfacePrivate;

/*! A chain of ranges of curves on one surface, walked as one curve; also the type of ply boundaries.
 *
 *  The ranges' curves must outlive the chain; the chain holds a reference on each. */
class ZETHOST_EXPORT ZETGeoAssembledCurveOnSurface : public ZETGeoCurveOnSurface
{
    Q_OBJECT

public:
    /*! The chain of \a ranges in their order; \a senses of the same index tells whether a range is walked in its own
     *  curve's sense (true) or against it (false). \a reverse walks the finished chain from its end. Initialize must be
     *  called next, and before anything else is asked. */
    ZETGeoAssembledCurveOnSurface(const QList<ZETGeoRangeOfCurve>& ranges, const QList<bool>& senses, bool reverse);
    ~ZETGeoAssembledCurveOnSurface() override;

    /*! Joins the ranges. Throws ZETSysException if they don't form one chain on one surface. */
    void Initialize() override;

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

    friend class ZETGeoAssembledCurveOnSurfacePrivate;
    std::unique_ptr<ZETGeoAssembledCurveOnSurfacePrivate> d;
};
