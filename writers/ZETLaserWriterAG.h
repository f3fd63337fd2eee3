#pragma once

#include "writers/ZETLaserWriter.h"

class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job as a part file for Assembly Guidance and Aligned Vision projectors (.PRT), targets included. The two
 *  makes get the same bytes; the make shows in the message about the writing alone.
 *
 *  The file is a sequence of lines with fixed keywords. A group is begun by its keyword and ended by the next one. No
 *  name and no text holds a blank: each becomes an underscore, and the report tells it. */
class ZETLaserWriterAG final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterAG)

public:
    ZETLaserWriterAG(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    /*! \a name with an underscore for each blank; the report has a line for each name that held one. */
    QString SafeCommandName(const QString& name);
    void WritePartNumber();
    void WriteFileName();
    void WriteUnits();
    void WriteTargets();
    void WriteTarget(const ZETLaserTarget& target, int number);

    // The walk. Groups have no end record, so nothing is ever open: what begins a group is written where it is asked.
    bool OpensLayer(const ZETLaserGroup& group);
    void BeginLayer(const ZETLaserGroup&) {}
    void EndLayer(const ZETLaserGroup&) {}
    void BeginLeaf(const ZETLaserGroup&) {}
    void EndLeaf(const ZETLaserGroup&) {}
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteParameter(const Parameter& parameter);
    void WriteTexts(const ZETLaserGroup& group);
};
