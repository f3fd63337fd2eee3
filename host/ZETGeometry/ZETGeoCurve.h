#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>
#include <ZETGeometry/ZETGeoLocationOnCurve.h>
#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

/*! A curve that runs through numbered vertices, with one segment between each pair of neighbours. Abstract: the host
 *  brings its kernel's curves. Lengths are mm.
 *
 *  An open curve of n segments has n + 1 vertices, a closed one has n: its last segment ends at vertex 0. */
class ZETHOST_EXPORT ZETGeoCurve : public ZETGeoGeometry
{
    Q_OBJECT

public:
    ~ZETGeoCurve() override;

    /*! The location at an arc length of \a distance behind \a from, forward along the curve. A closed curve goes on
     *  behind its end; on an open one the end is where it stops. Null for \a from stands for the start. */
    virtual ZETGeoLocationOnCurve GetLocation(double distance, const ZETGeoLocationOnCurve* from) const = 0;
    /*! The derivative at \a location, in the curve's own sense, of any length. */
    virtual ZETMathVector GetTangent(const ZETGeoLocationOnCurve& location) const = 0;
    /*! Number of points of the curve's polyline. */
    virtual int GetNumPoints() const = 0;
    /*! Point \a index of that polyline, in the curve's own coordinates: the plane of the flat pattern for flat
     *  geometry, model coordinates for all other. */
    virtual ZETMathPoint GetPoint(int index) const = 0;
    virtual int GetNumSegments() const = 0;
    virtual bool IsClosed() const = 0;
    /*! Arc length of the whole curve. */
    virtual double GetLength() const = 0;

    /*! The location of vertex \a index, from 0. */
    virtual ZETGeoLocationOnCurve GetLocation(int index) const = 0;
    /*! Arc length of segment \a index, from 0. */
    virtual double GetSegmentLength(int index) const = 0;

protected:
    using ZETGeoGeometry::ZETGeoGeometry;

private:
    friend class ZETGeoLocationOnCurve;
    /*! The point with the given parameter: what ZETGeoLocationOnCurve::GetMathPoint answers. */
    virtual ZETMathPoint EvaluatePoint(double parameter) const = 0;
};
