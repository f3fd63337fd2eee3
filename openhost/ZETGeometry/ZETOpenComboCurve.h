#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETGeometry/ZETGeoComboCurve.h>
#include <ZETHostGlobal.h>

#include <QList>

#include <memory>

class ZETOpenComboCurvePrivate;
class ZETOpenCurveOnSurface;

/*! The curve of an edge. It holds references on its images, and lives as long as somebody holds one on it.
 *
 *  The polyline of a closed curve ends at the point where it begins. The parameter of a location is the one that
 *  ZETOpenCurveOnSurface explains. */
class ZETHOST_EXPORT ZETOpenComboCurve final : public ZETGeoComboCurve
{
    Q_OBJECT

public:
    ~ZETOpenComboCurve() override;

    /*! A polyline through \a points with no image on any surface: the form of flat geometry. It is closed if its last
     *  point repeats its first. Throws ZETSysException for fewer than two points. */
    static ZETOpenRef<ZETOpenComboCurve> MakePolyline(const QList<ZETMathPoint>& points);
    /*! The curve in space that \a image is, from one end to the other, or against its sense with \a reversed. */
    static ZETOpenRef<ZETOpenComboCurve> MakeFromImage(const ZETOpenRef<ZETOpenCurveOnSurface>& image, bool reversed);

    /*! Adds an image on one more surface. \a reversed: it runs against this curve; \a range: its part that belongs to
     *  this curve, in the image's own sense. */
    void AddImage(const ZETOpenRef<ZETOpenCurveOnSurface>& image, bool reversed, const ZETGeoRangeOfCurve& range);
    QList<ZETOpenRef<ZETOpenCurveOnSurface>> GetImages() const;

    /*! The location of the place of the curve that is nearest to \a point. */
    ZETGeoLocationOnCurve Project(const ZETMathPoint& point) const;

    const ZETGeoCurveOnSurface* GetCurve(const ZETGeoSurface* surface, bool* reversed,
                                         ZETGeoRangeOfCurve* range) const override;
    ZETGeoLocationOnCurve GetLocation(double distance, const ZETGeoLocationOnCurve* from) const override;
    ZETMathVector GetTangent(const ZETGeoLocationOnCurve& location) const override;
    int GetNumPoints() const override;
    ZETMathPoint GetPoint(int index) const override;
    int GetNumSegments() const override;
    bool IsClosed() const override;
    double GetLength() const override;
    ZETGeoLocationOnCurve GetLocation(int index) const override;
    double GetSegmentLength(int index) const override;

private:
    ZETMathPoint EvaluatePoint(double parameter) const override;

    friend class ZETOpenComboCurvePrivate;
    explicit ZETOpenComboCurve(std::unique_ptr<ZETOpenComboCurvePrivate> record);
    std::unique_ptr<ZETOpenComboCurvePrivate> d;
};
