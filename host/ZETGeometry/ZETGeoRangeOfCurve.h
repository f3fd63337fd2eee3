#pragma once

#include <ZETGeometry/ZETGeoLocationOnCurve.h>
#include <ZETHostGlobal.h>

class ZETGeoCurve;

/*! A part of one curve, from a start to an end location, both on that curve. A value, which must not outlive the
 *  curve. */
class ZETHOST_EXPORT ZETGeoRangeOfCurve
{
public:
    /*! A range of no curve. */
    ZETGeoRangeOfCurve() = default;
    ZETGeoRangeOfCurve(const ZETGeoLocationOnCurve& from, const ZETGeoLocationOnCurve& to)
        : start(from)
        , end(to)
    {
    }
    ZETGeoRangeOfCurve(const ZETGeoRangeOfCurve&) = default;
    ZETGeoRangeOfCurve& operator=(const ZETGeoRangeOfCurve&) = default;
    virtual ~ZETGeoRangeOfCurve();

    /*! Whether \a location lies in the range, ends included. */
    virtual bool IsInside(const ZETGeoLocationOnCurve& location) const;
    /*! Whether \a location lies outside the range. */
    virtual bool IsOutside(const ZETGeoLocationOnCurve& location) const;
    /*! Arc length of the range, in mm. */
    virtual double GetLength() const;
    /*! The curve; null for the default range. */
    virtual const ZETGeoCurve* GetCurve() const;

    const ZETGeoLocationOnCurve& GetStart() const { return start; }
    const ZETGeoLocationOnCurve& GetEnd() const { return end; }

private:
    ZETGeoLocationOnCurve start;
    ZETGeoLocationOnCurve end;
};
