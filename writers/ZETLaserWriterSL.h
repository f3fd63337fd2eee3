#pragma once

#include "writers/ZETLaserWriter.h"

class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job as an SL Laser part file (.sl) and, if the model has targets, a targets file beside it.
 *
 *  Groups ("GS" to "GE") nest; each block within ("BG" to "E") is a polyline, the notes, a graphic or the texts of a
 *  leaf. The targets file has a table of the lasers and one line for each target. */
class ZETLaserWriterSL final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterSL)

public:
    ZETLaserWriterSL(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    // The walk: a layer and a leaf are both groups, so a leaf that opens a layer is two of the same name.
    void BeginLayer(const ZETLaserGroup& group);
    void EndLayer(const ZETLaserGroup& group);
    void BeginLeaf(const ZETLaserGroup& group) { BeginLayer(group); }
    void EndLeaf(const ZETLaserGroup& group) { EndLayer(group); }
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteParameter(const Parameter& parameter);
    void WriteTexts(const ZETLaserGroup& group);
    void WriteText(const Text& text);

    void WriteTargets();
    /*! The job's projectors as far as the format holds them; the report tells of those that are left out. */
    QList<const ZETLaserProjector*> GetWrittenProjectors();
    void WriteTargetsHead(qsizetype targetCount, const QList<const ZETLaserProjector*>& projectors,
                          ZETLaserTextStream& out);
    void WriteTarget(const ZETLaserTarget& target, int laser, int point, ZETLaserTextStream& out);
};
