#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"
#include "openhost/ZETGeometry/ZETOpenRegion.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompThicknessAnalyzer.h>
#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QList>

#include <memory>
#include <unordered_map>
#include <vector>

class ZETCompThicknessAnalyzerPrivate
{
public:
    using Boundaries = QList<ZETOpenRef<const ZETGeoCurveOnSurface>>;

    /*! A boundary of the kernel, cut into short spans. */
    class Outline
    {
    public:
        explicit Outline(const ZETGeoCurveOnSurface& boundary);
        /*! Whether the boundary passes \a point within \a margin. */
        bool IsNear(const ZETMathPoint& point, double margin) const;

    private:
        /*! A run of spans, so that most of them are left out at a glance. */
        struct Block {
            size_t first;
            size_t last;
            ZETMathBoundingBox box; //!< of the spans' ends
            double reach = 0.0;     //!< nothing of the spans lies farther outside the box, in mm
        };

        void AddSegment(int segment);
        void MakeBlocks();
        ZETMathPoint GetPoint(double parameter) const;
        bool IsSpanNear(size_t span, const ZETMathPoint& point, double margin) const;

        const ZETGeoCurveOnSurface* curve;
        std::vector<double> parameters;   //!< of the ends of spans: one more than there are spans
        std::vector<ZETMathPoint> points; //!< at these parameters
        std::vector<double> lengths;      //!< of the spans along the boundary, or a little more
        std::vector<Block> blocks;
    };

    /*! The places that one ply holds: those within its boundaries. */
    class Cover
    {
    public:
        explicit Cover(const Boundaries& closed);
        bool IsMadeOf(const Boundaries& other) const { return boundaries == other; }
        bool Holds(const ZETGeoLocationOnSurface& location, double margin) const;

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
