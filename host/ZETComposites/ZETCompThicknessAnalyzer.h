#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

#include <memory>

class ZETCompPly;
class ZETCompThicknessAnalyzerPrivate;
class ZETGeoLocationOnSurface;

/*! Tells how high the plies beneath a ply have raised a place of the tool. A plain object, owned by whoever makes it.
 */
class ZETHOST_EXPORT ZETCompThicknessAnalyzer
{
public:
    ZETCompThicknessAnalyzer();
    ~ZETCompThicknessAnalyzer();

    /*! Distance, in mm, by which a place may lie outside a boundary and still count as held. To be set once, before
     *  use. */
    void SetBoundaryTolerance(double tolerance);
    /*! The ply whose lift is asked next; null is possible, and then the lift is 0. */
    void SetCurrentPly(ZETCompPly* ply);
    /*! The height, in mm, by which a boundary point of the current ply is lifted along its normal at \a location. */
    double ComputeThickness(const ZETGeoLocationOnSurface& location) const;

private:
    Q_DISABLE_COPY_MOVE(ZETCompThicknessAnalyzer)
    std::unique_ptr<ZETCompThicknessAnalyzerPrivate> d;
};
