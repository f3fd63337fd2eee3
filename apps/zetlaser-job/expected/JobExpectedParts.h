#pragma once

#include "check/CheckFile.h"
#include "laser/ZETLaserOutline.h"

class ZETLaserOptions;

/*! What the part file of each format holds. */
namespace JobExpectedParts
{
CheckFile MakeVirtek(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeLap(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeSl(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeLpt(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeAssemblyGuidance(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeNLines(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
CheckFile MakeApt(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);

/*! What a DXF file holds of the tree. */
struct DxfContent {
    QStringList labels;                       //!< in their order
    const ZETMatMaterial* material = nullptr; //!< only plies of it
    const ZETFeatObject* ply = nullptr;       //!< only this ply or sub-ply
};
CheckFile MakeDxf(const ZETLaserOptions& options, const ZETLaserOutline::Group& root, const DxfContent& content);
} // namespace JobExpectedParts
