#pragma once

#include "writers/ZETLaserWriter.h"

class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job as a Virtek part file (.ply) and, if the model has targets, a calibration file (.cal) beside it.
 *
 *  The part file has no header. Layers ("LAYER START" to "LAYER END") hold plies ("START" to "END"), which hold
 *  polylines ("P"), parameters ("I", "L", "G", "Q" and literal lines) and texts ("T"); "EOD" ends it. Names and texts
 *  are written as they stand. */
class ZETLaserWriterVirtek final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterVirtek)

public:
    ZETLaserWriterVirtek(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    void BeginLayer(const ZETLaserGroup& group);
    void EndLayer(const ZETLaserGroup& group);
    void BeginLeaf(const ZETLaserGroup& group);
    void EndLeaf(const ZETLaserGroup& group);
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WritePoint(const ZETMathPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteParameter(const Parameter& parameter);
    void WriteTexts(const ZETLaserGroup& group);
    void WriteTargets();
    void WriteTarget(const ZETLaserTarget& target, int index, ZETLaserTextStream& calibration);
};
