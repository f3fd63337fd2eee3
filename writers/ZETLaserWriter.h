#pragma once

#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserOutputFile.h"
#include "writers/ZETLaserTextStream.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>
#include <ZETSystem/ZETSysMessageQueue.h>

#include <QCoreApplication>
#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QTextStream>

#include <functional>
#include <initializer_list>
#include <memory>

class ZETCompPlyBase;
class ZETFeatObject;
class ZETLaser3DText;
class ZETLaserGroup;
class ZETLaserOptions;
class ZETLaserParameterProvider;
class ZETLaserProjector;
class ZETLaserTarget;
struct ZETLaserTargetCounts;

/*! Abstract base of the output writers: what one job needs whatever its format is.
 *
 *  A writer lives for one job. It is made from the job's options and the root of the laser tree, Write() is called
 *  once, and it is destroyed. The options aren't owned and must outlive the writer; the tree is shared with the
 *  pipeline, and only read. Model objects that the options and the tree point to belong to the host.
 *
 *  The tree is in millimetres and model coordinates. What is written is in outputAxis, lengths times unitScale.
 *
 *  A concrete writer is final, brings the words of its format, and keeps to this order in Write(): OpenFiles,
 *  WriteReportHeader, AddWrittenMessage, the format's text with its targets, WriteReportFooter, CloseFiles. The walk
 *  over the tree that most of them share is in ZETLaserTreeWalk.h. The report's head and foot are in
 *  ZETLaserReport.cpp, all else is in ZETLaserWriter.cpp.
 *
 *  Nobody deletes through this class: the pipeline's shared pointer is made with the concrete type. */
class ZETLaserWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriter)

public:
    /*! Writes everything. Concrete writers return true, whatever came of it: what can't be written is told in the
     *  message queue and in the report. */
    virtual bool Write() = 0;

    /*! Files that couldn't be opened or written whole; complete behind Write(). */
    const ZETLaserOutputFile::Faults& GetFaults() const { return faults; }

protected:
    ZETLaserWriter(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);
    /*! Closes what is still open; what was written until then is in the files. */
    ~ZETLaserWriter();
    Q_DISABLE_COPY_MOVE(ZETLaserWriter)

    /*! How all files of a job are opened. */
    static constexpr QIODevice::OpenMode fileMode = QIODevice::WriteOnly | QIODevice::Text;

    // Files. Whether a file could be opened isn't looked at: a stream on a closed file writes nothing. GetFaults()
    // tells it afterwards.

    /*! Opens the part file under the name of the options, and the report. Always true. */
    bool OpenFiles();
    /*! Opens the part file under \a fileName and puts the stream on it; the report is left alone. */
    void OpenPartFile(const QString& fileName);
    /*! Opens the report beside the file name of the options. */
    void OpenReportFile();
    /*! Closes the part file, with all that went into the stream. */
    void ClosePartFile();
    /*! Closes part file and report. Always true. */
    bool CloseFiles();

    // Report: ZETLaserReport.cpp.

    /*! Writes the report's head: what is written, and with which settings. Once, ahead of all other report lines. */
    void WriteReportHeader();
    /*! Writes the report's foot: messages and counts. Once, behind all other report lines. */
    void WriteReportFooter();
    void WriteReportSettings();
    void WriteReportGeometrySettings();
    void WriteReportMessages();
    /*! Writes a line end, \a text and a line end. */
    void WriteReportParagraph(const QString& text);
    /*! Writes a line end and \a text. Meant: the line stays open, and what comes next in the report continues on it. */
    void WriteOpenReportParagraph(const QString& text);

    // Messages. Without a message queue they are dropped.

    /*! Queues that the data of \a makeName were written. Called ahead of the writing, so that the report has it. */
    void AddWrittenMessage(const QString& makeName, ZETSysMessageQueue::Type type);
    /*! Queues that a parameter of \a type, a value of ZETLaserParameter::ParameterType, has no form in the format.
     *  \a text is the translated text with a %1 for the type's name. */
    static void AddUnsupportedMessage(const QString& text, int type);

    // Tree.

    /*! Counts \a group if it stands for a ply or sub-ply, and tells whether it opens a layer: plies, sub-plies and,
     *  unless sequences nest in layups, layups don't. */
    bool OpensLayer(const ZETLaserGroup& group);
    /*! Whether parameters and texts of a leaf go ahead of its contours. */
    bool WritesTextsFirst() const;
    /*! Whether \a group stands for the kind of model object that the dynamic property \a name tells
     *  (ZETLaserEntityProperties). The property counts even when the pointer in it is null. */
    static bool StandsFor(const ZETLaserGroup& group, const char* name);
    /*! The ply of \a group, else its sub-ply; null if it has neither. Texts are evaluated against it. */
    static const ZETCompPlyBase* GetPly(const ZETLaserGroup& group);

    // Points.

    /*! Where \a point is in the file: output axis, output units. The offset point counts, if there is one. */
    ZETMathPoint GetOutputPoint(const ZETLaserPoint& point) const { return GetOutputPoint(point.GetShownPoint()); }
    /*! The same for a point of the model and for a target. */
    ZETMathPoint GetOutputPoint(const ZETMathPoint& point) const { return (outputAxis * point) * unitScale; }
    ZETMathPoint GetOutputPoint(const ZETLaserTarget& target) const;
    /*! Whether normals are asked for and \a point has one. */
    bool WritesNormal(const ZETLaserPoint& point) const;
    /*! The normal of \a point in the output axis; never scaled. */
    ZETMathVector GetOutputNormal(const ZETLaserPoint& point) const { return outputAxis * point.GetNormal(); }

    // Parameters and texts of a leaf, in the order of the children. Both are empty for a group without GetPly().

    struct Parameter {
        int type;     //!< a value of ZETLaserParameter::ParameterType, or one outside of it
        QString text; //!< evaluated
    };
    QList<Parameter> EvaluateParameters(const ZETLaserGroup& group) const;

    /*! The texts of several parameters. */
    struct TextBlock {
        int count = 0; //!< parameters, which may have several lines each
        QString lines; //!< the texts, each with a line end
    };
    /*! Collects the texts of those \a parameters that are of one of the \a types. */
    static TextBlock CollectTexts(const QList<Parameter>& parameters, std::initializer_list<int> types);

    struct Text {
        const ZETLaser3DText* feature; //!< never null
        QString text;                  //!< evaluated
    };
    QList<Text> EvaluateTexts(const ZETLaserGroup& group) const;

    // Targets.

    /*! All targets below \a modelRoot, in model order; none if it is null. */
    static QList<ZETLaserTarget*> CollectTargets(ZETFeatObject* modelRoot);
    /*! What the report says of targets, in the writer's own translation. */
    struct TargetTexts {
        QString noTargets;
        QString noProjectors;
        QString written{};             //!< of a job without projectors: %1 targets, %2 file name
        QString writtenInProjectors{}; //!< %1 targets, %2 projectors, %3 file name
    };
    /*! The targets of the model. Tells the report when there are none, and otherwise when the job has no projectors. */
    QList<ZETLaserTarget*> FindTargets(const TargetTexts& texts);
    /*! Tells the report what was written to \a fileName. Leaves the line open. */
    void ReportWrittenTargets(const TargetTexts& texts, const ZETLaserTargetCounts& counts, const QString& fileName);

    /*! Writes the line of a target; the index is that among the targets of its projector, from 0. */
    using WriteTargetLine = std::function<void(const ZETLaserTarget& target, int index, ZETLaserTextStream& lines)>;
    /*! Finds the targets, writes them to the part file's name with "cal" for its last three characters, and reports it.
     *  For each projector the file has a line with the count of its targets, and then their lines. Without targets no
     *  file is made, and one of an earlier job stays as it was. */
    void WriteCalibrationFile(const TargetTexts& texts, const WriteTargetLine& writeTargetLine);
    /*! The file name of the options with its last \a count characters, or what there is of them, replaced by \a tail.
     */
    QString GetFileNameWithTail(int count, QStringView tail) const;
    /*! \a name with an underscore for each blank; the report tells it if there was one. \a kind is what is named. */
    QString SubstituteBlanks(const QString& name, QLatin1StringView kind);

    // Members in the order of their construction: a stream goes ahead of its file, and flushes into it.

    ZETLaserOptions* options;
    QSharedPointer<ZETLaserGroup> root;
    ZETLaserOutputFile::Faults faults;
    ZETLaserOutputFile file{faults};
    ZETLaserTextStream stream; //!< on file
    ZETLaserOutputFile reportFile{faults};
    QTextStream reportStream; //!< on reportFile
    double unitScale = 1.0;   //!< from millimetres to output units
    int plyCount = 0;         //!< plies written
    int subPlyCount = 0;      //!< sub-plies written
    int courseCount = 0;      //!< courses written; no format has courses yet
    ZETMathAxis outputAxis;   //!< the axis system of the options, otherwise the identity
    std::unique_ptr<ZETLaserParameterProvider> parameterProvider;
};
