#pragma once

#include "writers/ZETLaserWriter.h"

class ZETCompPly;
class ZETCompSubPly;
class ZETLaserContour;
class ZETLaserCurve;

/*! Writes a job in a format of N-lines, for two users: as General Scanning laser data (.PRT), calibration targets
 *  included, and as part data of the nesting product Quilmon (.CPD).
 *
 *  In plain output comments frame groups, contours and curves; in nesting output each ply has a block of nesting data
 *  instead. The walk is this writer's own: it asks no group whether it is a leaf, knows no layers, and keeps the names
 *  of the model levels that it has passed. 3D texts aren't part of the format. */
class ZETLaserWriterGS final : public ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterGS)

public:
    ZETLaserWriterGS(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;

private:
    friend struct ZETLaserTreeWalk;

    bool IsNesting() const;
    bool IsGeneralScanning() const;
    /*! The running number of the ply in hand, as all its lines begin with it. */
    QString GetPlyNumberText() const;

    void WriteHead();
    /*! In plain output: a comment around a group, contour or curve; \a what is such as "GROUP START". */
    void WriteFrame(QLatin1StringView what, const QString& name);
    void WriteGroup(const ZETLaserGroup& group);
    /*! Takes the names of what the group stands for, and counts it if it is a ply or sub-ply. */
    void EnterLevel(const ZETLaserGroup& group);
    void EnterPly(const ZETLaserGroup& group);
    void EnterSubPly(const ZETLaserGroup& group);
    void WriteNestingData(const ZETLaserGroup& group);
    void WriteNestingLine(const QString& format, const QString& value);
    QString GetMaterialText(const ZETLaserGroup& group) const;
    void WriteContour(const ZETLaserContour& contour);
    void WriteCurve(const ZETLaserCurve& curve);
    void WriteCurveHead(const ZETLaserCurve& curve);
    void WritePoint(const ZETLaserPoint& point);
    void WriteParameters(const ZETLaserGroup& group);
    void AddUnsupportedParameterMessage(int type);

    void WriteTargets();
    void WriteTarget(const ZETLaserTarget& target, int index, int laser);

    int plyNumber = 0;               //!< running number of plies and sub-plies, from 1
    int curveNumber = 1;             //!< running number of the curves of one contour
    QString sequenceName;            //!< name of the last sequence group passed
    QString layupName;               //!< name of the last layup group passed
    QString plyName;                 //!< label of the current ply, with the sub-ply behind it
    QString subPlyName;              //!< label of the current sub-ply
    const ZETCompPly* ply = nullptr; //!< the current ply, or that of the current sub-ply; may be null
    QByteArray pointStart;           //!< how the point lines of the current curve begin
};
