#pragma once

#include "writers/ZETLaserWriter.h"

#include <QXmlStreamWriter>

class QDateTime;
class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job as an XML part file for LPT and FARO projectors and, if the model has targets, a second XML file beside
 *  it that describes the tool. The two makes get the same files.
 *
 *  In the part file PLY elements, nested, hold SUBPLY elements, one for each curve, and these POINT elements; TEXT,
 *  INSTRUCTIONS and NOTES stand beside them. The files have no XML declaration. Elements go through the XML writer,
 *  with two exceptions that go straight to the file: the points, because a large job has little else, and the lines of
 *  Literal parameters, which are the user's own XML. */
class ZETLaserWriterLPT final : public ZETLaserWriter
{
public:
    ZETLaserWriterLPT(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

    /*! \a time as the part file tells when it was written: "3/7/2024 09:05:02". */
    static QString GetFileDate(const QDateTime& time);

private:
    friend struct ZETLaserTreeWalk;

    void WritePart();
    void BeginPly(const ZETLaserGroup& group);

    // The walk: a layer and a leaf are both PLY elements, so a leaf that opens a layer has two of the same name.
    void BeginLayer(const ZETLaserGroup& group) { BeginPly(group); }
    void EndLayer(const ZETLaserGroup& group);
    void BeginLeaf(const ZETLaserGroup& group) { BeginPly(group); }
    void EndLeaf(const ZETLaserGroup& group) { EndLayer(group); }
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void WriteBlock(const QString& element, const TextBlock& block);
    void WriteParameter(const Parameter& parameter);
    void WriteTexts(const ZETLaserGroup& group);
    void WriteText(const Text& text);

    void WriteTargets();
    ZETLaserTargetCounts WriteTool(const QList<ZETLaserTarget*>& targets, const QString& name, QXmlStreamWriter& tool);
    void WriteTarget(const ZETLaserTarget& target, int index, int laser, QXmlStreamWriter& tool);

    QXmlStreamWriter xmlWriter; //!< on file
    int depth = 0;              //!< open elements of the part file
    QByteArray pointStart;      //!< how the lines of the points of the curve in hand begin
    int pointNumber = 0;        //!< of POINT and TARGET elements, from 1 in each curve and each projector
    int textNumber = 0;         //!< of TEXT elements, from 1 through the whole job
};
