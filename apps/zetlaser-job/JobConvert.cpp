#include "JobConvert.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobFaults.h"
#include "JobStaging.h"

#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenShapeFile.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETSystem/ZETSysException.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! One conversion, from its options to its file. */
class Conversion
{
public:
    explicit Conversion(const JobConvertOptions& given)
        : options(given)
        , output(given.output)
        , faults(given.plyList)
    {
    }

    void Run()
    {
        CheckOutput();
        const JobStaging place(output.absolutePath());
        JobConsole::ShowProgress(Translate("reading %1").arg(options.plyList));
        plies = JobPlyTable::Read(options.plyList, faults);
        ReadTool();
        faults.Throw();
        JobLayupFrame frame = options.frame;
        frame.toolFile = output.absoluteDir().relativeFilePath(QFileInfo(options.toolFile).absoluteFilePath());
        const JobLayupText text(frame, plies, curveKinds);
        Check(text);
        faults.Throw();
        Write(place, text.GetBytes());
        TellResult();
    }

private:
    void CheckOutput() const
    {
        if (output.fileName().isEmpty() || output.isDir())
            throw JobError(JobExit::CannotWrite, Translate("can't write %1: it is a folder").arg(output.filePath()));
        for (const QString& input : {options.plyList, options.toolFile}) {
            if (output.exists() && output.canonicalFilePath() == QFileInfo(input).canonicalFilePath())
                throw JobError(JobExit::WrongCall,
                               Translate("expected another file behind --output than %1, which is read").arg(input));
        }
        // Unlike a part file, it isn't made anew from what else there is.
        if (output.exists() && !options.isForced)
            throw JobError(JobExit::CannotWrite,
                           Translate("can't write %1: it is there already, and may hold what was added by hand; "
                                     "--force replaces it")
                               .arg(output.filePath()));
    }

    /*! Looks up the boundaries in the tool file. */
    void ReadTool()
    {
        JobConsole::ShowProgress(Translate("reading %1").arg(options.toolFile));
        try {
            const ZETOpenShapeFile file(options.toolFile, options.frame.scale);
            const auto surface = GetSurface(file);
            size = JobConsole::DescribeSize(surface->GetBoundingBox());
            for (const JobPlyRow& ply : std::as_const(plies)) {
                if (!ply.boundary.isEmpty())
                    CheckBoundary(file, surface, ply);
            }
        } catch (const ZETSysException& error) {
            faults.Add(error.GetMessage());
        }
    }

    ZETOpenRef<ZETOpenSurface> GetSurface(const ZETOpenShapeFile& file) const
    {
        const QString& face = options.frame.face;
        if (face.isEmpty())
            return file.GetSingleFace();
        return options.frame.isFaceIndex ? file.GetFace(face.toInt()) : file.GetFace(face);
    }

    void CheckBoundary(const ZETOpenShapeFile& file, const ZETOpenRef<ZETOpenSurface>& surface, const JobPlyRow& ply)
    {
        QString& fault = boundaryFaults[ply.boundary];
        if (fault.isNull())
            fault = FindFault(file, surface, ply.boundary);
        if (!fault.isEmpty())
            faults.Add(ply.line, u"boundary"_s, fault);
    }

    /*! What is wrong with a boundary; empty but not null where nothing is. */
    QString FindFault(const ZETOpenShapeFile& file, const ZETOpenRef<ZETOpenSurface>& surface, const QString& name)
    {
        const QStringList known = file.GetCurveNames();
        const QString toolName = QFileInfo(options.toolFile).fileName();
        if (!known.contains(name)) {
            const QString text =
                Translate("expected the name of an edge or wire of %1, found \"%2\"").arg(toolName, name);
            const QString nearest = ZETOpenJsonDocument::GetNearest(name, known);
            if (known.isEmpty())
                return text + Translate("; the file has none with a name");
            return nearest.isEmpty() ? text : text + Translate(", did you mean \"%1\"?").arg(nearest);
        }
        for (int i = 0; i < file.GetNumWires(); ++i) {
            if (file.GetWireName(i) == name)
                curveKinds.insert(name, u"wire"_s);
        }
        if (!curveKinds.contains(name))
            curveKinds.insert(name, u"edge"_s);
        try {
            if (!file.GetCurve(name, surface)->IsClosed())
                return Translate("expected a closed edge or wire, found the open \"%1\"").arg(name);
        } catch (const ZETSysException& error) {
            return error.GetMessage();
        }
        return u""_s;
    }

    /*! Reads the layup file as a job does, before there is one. */
    void Check(const JobLayupText& text)
    {
        try {
            ZETOpenLayupFile::Load(output.absoluteFilePath(), text.GetBytes());
        } catch (const ZETOpenJsonError& error) {
            const int line = text.FindLine(error.GetPath());
            if (line > 0)
                faults.Add(line, u"boundary"_s, error.GetText()); // nothing else of a row can be wrong still
            else
                faults.Add(error.GetMessage());
        }
    }

    void Write(const JobStaging& place, const QByteArray& bytes) const
    {
        place.WriteFile(output.fileName(), bytes);
        place.CheckWritten();
        place.CheckPlaces();
        JobConsole::WriteWritten(JobStaging::Commit({&place}));
    }

    void TellResult() const
    {
        QSet<QString> layups;
        QSet<QString> sequences;
        QSet<QString> materials;
        for (const JobPlyRow& ply : plies) {
            layups.insert(ply.layup);
            sequences.insert(ply.layup + u'\n' + ply.sequence);
            materials.insert(ply.material);
        }
        JobConsole::WriteResult(Translate("layups: %1, sequences: %2, plies: %3, materials: %4")
                                    .arg(layups.size())
                                    .arg(sequences.size())
                                    .arg(plies.size())
                                    .arg(materials.size()));
        JobConsole::WriteResult(Translate("tool: %1").arg(size));
    }

    const JobConvertOptions& options;
    const QFileInfo output;
    JobFaults faults;
    QList<JobPlyRow> plies;
    QString size;                           //!< of the tool, in words
    QHash<QString, QString> boundaryFaults; //!< by the name of the boundary
    QHash<QString, QString> curveKinds;     //!< likewise
};
} // namespace

void RunConvert(const JobConvertOptions& options)
{
    Conversion(options).Run();
}
