#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>

class ZETGeoCurve;

/*! A place on a curve: the curve and a parameter, which grows along the curve and whose meaning is the curve's own. A
 *  value, which must not outlive the curve. */
class ZETHOST_EXPORT ZETGeoLocationOnCurve
{
public:
    ZETGeoLocationOnCurve() = default;
    ZETGeoLocationOnCurve(const ZETGeoCurve* onCurve, double at)
        : curve(onCurve)
        , parameter(at)
    {
    }
    ZETGeoLocationOnCurve(const ZETGeoLocationOnCurve&) = default;
    ZETGeoLocationOnCurve& operator=(const ZETGeoLocationOnCurve&) = default;
    virtual ~ZETGeoLocationOnCurve();

    /*! The place in model coordinates, in mm; the origin without a curve. */
    ZETMathPoint GetMathPoint() const;
    /*! The curve; may be null. */
    const ZETGeoCurve* GetCurve() const { return curve; }

    double GetParameter() const { return parameter; }

private:
    const ZETGeoCurve* curve = nullptr;
    double parameter = 0.0;
};
