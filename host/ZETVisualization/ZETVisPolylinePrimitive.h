#pragma once

#include <ZETVisualization/ZETVisPrimitive.h>

/*! Lines. */
class ZETHOST_EXPORT ZETVisPolylinePrimitive : public ZETVisPrimitive
{
    Q_OBJECT

public:
    enum Structure : int {
        StructurePairs = 0, //!< each pair of points is a segment of its own
        StructureRun = 1    //!< the points are one connected run
    };

    ZETVisPolylinePrimitive(const ZETMathSetOfPoints& points, Structure structure);
    ~ZETVisPolylinePrimitive() override;

    Structure GetStructure() const { return structure; }

private:
    Structure structure;
};
