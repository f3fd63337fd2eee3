#pragma once

#include "writers/ZETLaserWriter.h"

class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job as a LAP Laser projection file (.lpd) and, if the model has targets, a calibration file (.cal) beside
 *  it.
 *
 *  A drawing holds layers, contours are its groups and curves its entities; plies have no record of their own. Names
 *  stand in double quotes, as they are. Texts don't exist in this format, and of the parameters only Literal ones do.
 */
class ZETLaserWriterLAP final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterLAP)

public:
    ZETLaserWriterLAP(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    void WriteOpening();
    void WriteClosing();
    void BeginLayer(const ZETLaserGroup& group);
    void EndLayer(const ZETLaserGroup& group);
    void BeginLeaf(const ZETLaserGroup&) {}
    void EndLeaf(const ZETLaserGroup&) {}
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteTexts(const ZETLaserGroup&) {}
    void WriteTargets();
    void WriteTarget(const ZETLaserTarget& target, int number, ZETLaserTextStream& calibration);
};
