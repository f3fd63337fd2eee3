#pragma once

#include "openhost/ZETGeometry/ZETOpenChain_p.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <QString>

#include <memory>
#include <vector>

class ZETOpenCurveOnSurfacePrivate
{
public:
    using Segments = std::vector<std::shared_ptr<const ZETOpenSurfaceSegment>>;

    ZETOpenCurveOnSurfacePrivate(const ZETOpenRef<ZETOpenSurface>& surfaceOfCurve, Segments segmentsInOrder,
                                 bool isClosed);

    static ZETOpenCurveOnSurfacePrivate& Of(const ZETOpenCurveOnSurface& curve) { return *curve.d; }
    /*! The curve of \a segments, which join. */
    static ZETOpenRef<ZETOpenCurveOnSurface> Make(const ZETOpenRef<ZETOpenSurface>& surface, Segments segments,
                                                  bool closed);
    /*! The curve through \a places, straight in the surface's parameters between them. */
    static ZETOpenRef<ZETOpenCurveOnSurface> MakeStraight(const ZETOpenRef<ZETOpenSurface>& surface,
                                                          const std::vector<gp_Pnt2d>& places, bool closed);

    ZETOpenRef<ZETOpenSurface> surface;
    Segments segments;
    ZETOpenChain chain;
    double maxProjectionDistance = 0.0;
    QString name;
};
