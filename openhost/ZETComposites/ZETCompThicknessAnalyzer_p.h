#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"
#include "openhost/ZETGeometry/ZETOpenRegion.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompThicknessAnalyzer.h>
#include <ZETGeometry/ZETGeoCurveOnSurface.h>

#include <QList>

#include <memory>
#include <unordered_map>
#include <vector>

class ZETCompThicknessAnalyzerPrivate
{
public:
    using Boundaries = QList<ZETOpenRef<const ZETGeoCurveOnSurface>>;

    /*! One boundary as a chain of places, each \a step behind the one before. The last one is the first again. */
    class Outline
    {
    public:
        explicit Outline(const ZETGeoCurveOnSurface& boundary);
        /*! Whether the boundary passes \a point within \a tolerance. */
        bool IsNear(const ZETMathPoint& point, double tolerance) const;

    private:
        bool IsBoxNear(const ZETMathPoint& point, double margin) const;
        double GetNearest(qsizetype span, const ZETMathPoint& point) const;

        const ZETGeoCurveOnSurface* curve;
        double step = 0.0; //!< arc length, in mm
        std::vector<ZETGeoLocationOnCurve> locations;
        std::vector<ZETMathPoint> points;
        ZETMathPoint lower; //!< of the box around the points
        ZETMathPoint upper;
    };

    /*! The places that one ply holds: those within its boundaries. */
    class Cover
    {
    public:
        explicit Cover(const Boundaries& closed);
        bool IsMadeOf(const Boundaries& other) const { return boundaries == other; }
        bool Holds(const ZETGeoLocationOnSurface& location, double tolerance) const;

    private:
        Boundaries boundaries; //!< held, so that one that is gone isn't taken for a new one at its address
        std::vector<std::unique_ptr<ZETOpenRegion>> regions; //!< one for each surface
        std::vector<Outline> outlines;
    };

    /*! A ply beneath the current one. */
    struct Layer {
        double thickness; //!< in mm
        const Cover* cover;
    };

    const Cover& GetCover(const ZETCompPly& ply);

    double tolerance = 0.0;
    std::vector<Layer> layers;                                            //!< beneath the current ply
    std::unordered_map<const ZETCompPly*, std::unique_ptr<Cover>> covers; //!< made anew when boundaries have changed
};
