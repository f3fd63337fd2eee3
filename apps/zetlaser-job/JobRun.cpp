#include "JobRun.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobSelection.h"
#include "JobStaging.h"
#include "JobSteps.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatContainer.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! Goes to a folder, and back with its end. */
class FolderGuard
{
public:
    explicit FolderGuard(const QString& folder)
        : before(QDir::currentPath())
    {
        if (!QDir::setCurrent(folder))
            throw JobError(JobExit::CannotWrite, Translate("can't go to the folder %1").arg(folder));
    }
    ~FolderGuard() { QDir::setCurrent(before); }
    Q_DISABLE_COPY_MOVE(FolderGuard)

private:
    QString before;
};

/*! One job, from its settings to its files. */
class Job
{
public:
    Job(const QString& file, const JobSettings& jobSettings)
        : layupFile(file)
        , settings(jobSettings)
    {
    }

    void Run()
    {
        PrepareOutput();
        model = JobSteps::LoadModel(layupFile);
        FillOptions(options, *model.root, settings);
        JobSteps::ReadAndThin(options);
        if (options.CreateLaserData())
            WriteFiles();
        if (IsDxf())
            WarnOfLetters();
        JobConsole::TellRepeatedMessages();
        TellResult();
    }

private:
    void PrepareOutput()
    {
        if (!settings.Has(u"type"_s))
            throw JobError(JobExit::WrongCall,
                           Translate("expected the option --type, found none (--list-types shows the types)"));
        if (settings.Has(u"createLaserData"_s) && !settings.Get(u"createLaserData"_s).toBool())
            return;
        if (!settings.Has(u"output"_s))
            throw JobError(JobExit::WrongCall, Translate("expected the option --output, found none"));
        const QFileInfo output(settings.GetText(u"output"_s));
        if (output.fileName().isEmpty() || output.isDir())
            throw JobError(JobExit::CannotWrite, Translate("can't write %1: it is a folder").arg(output.filePath()));
        if (output.exists() && !output.isFile())
            throw JobError(JobExit::CannotWrite,
                           Translate("can't write %1: it is no regular file").arg(output.filePath()));
        outputName = output.fileName();
        partPlace = std::make_unique<JobStaging>(output.absolutePath());
        if (settings.Get(u"useSpecificPathForLaserFile"_s).toBool() && settings.Has(u"targetFilePath"_s))
            toolPlace = std::make_unique<JobStaging>(settings.GetText(u"targetFilePath"_s));
    }

    bool IsDxf() const { return options.GetFileType() == ZETLaserOptions::FileDXF; }

    /*! DXF is written as UTF-8 and names no code page, so readers of its old form show other letters. */
    void WarnOfLetters() const
    {
        QStringList told;
        for (const QString& file : files) {
            for (const QString& text : FindTextsBeyondAscii(file)) {
                if (told.contains(text))
                    continue;
                told.append(text);
                JobConsole::WriteMessage(
                    Translate("warning"),
                    Translate("the text \"%1\" has letters beyond ASCII; some readers of DXF show others").arg(text));
            }
        }
    }

    /*! The texts of a DXF file that are more than ASCII; none for any other file. */
    static QStringList FindTextsBeyondAscii(const QString& fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        const QByteArray bytes = file.readAll();
        const auto isBeyond = [](QByteArrayView text) {
            return std::any_of(text.begin(), text.end(), [](char c) { return uchar(c) >= 128; });
        };
        constexpr QByteArrayView textCode = "\n  1\n";
        QStringList texts;
        if (!bytes.startsWith("  0\nSECTION\n") || !isBeyond(bytes))
            return texts;
        for (qsizetype at = bytes.indexOf(textCode); at >= 0; at = bytes.indexOf(textCode, at)) {
            at += textCode.size();
            const QByteArray text = bytes.mid(at, bytes.indexOf('\n', at) - at);
            if (isBeyond(text))
                texts.append(QString::fromUtf8(text));
        }
        return texts;
    }

    void WriteFiles()
    {
        JobConsole::ShowProgress(Translate("writing %1").arg(outputName));
        // The library writes where it is, under the final name: what the files say of their names is then true, and
        // doesn't depend on the folder that they are written in.
        options.SetFileName(outputName);
        if (toolPlace)
            options.SetTargetFilePath(toolPlace->GetPath());
        bool isWritten = false;
        {
            const FolderGuard folder(partPlace->GetPath());
            JobSteps::Run([&] { isWritten = options.GetLaserProcesses()->WriteLaserData(); });
        }
        if (!isWritten)
            throw JobError(JobExit::Failed, Translate("the type %1 can't be written").arg(GetTypeName()));
        QList<JobStaging*> places{partPlace.get()};
        if (toolPlace)
            places.append(toolPlace.get());
        for (const JobStaging* place : places) {
            place->CheckWritten();
            place->CheckPlaces();
        }
        if (partPlace->GetNames().isEmpty())
            throw JobError(JobExit::CannotWrite, Translate("can't write %1: no file came about").arg(outputName));
        files = JobStaging::Commit(places);
    }

    void TellResult()
    {
        for (const QString& file : files) {
            const QFileInfo info(file);
            JobConsole::WriteResult(
                Translate("written: %1 (%2 bytes)")
                    .arg(QDir().relativeFilePath(file).startsWith(u".."_s) ? file : QDir().relativeFilePath(file))
                    .arg(info.size()));
        }
        for (const ZETLaserOptions::CreatedFile& created : options.GetCreatedFiles()) {
            JobConsole::WriteResult(Translate("  %1: shape %2, material %3")
                                        .arg(created.second.first, created.first,
                                             QString::fromUtf8(ZETOpenMaterial::GetKey(created.second.second))));
        }
        const auto* rosette = qobject_cast<const ZETCompRosette*>(options.GetAxisSystem().data());
        const auto statistics =
            options.GetLaserProcesses()->GetStatistics(rosette ? rosette->GetAxis() : ZETMathAxis());
        JobConsole::WriteResult(Translate("type: %1").arg(GetTypeName()));
        JobConsole::WriteResult(Translate("plies: %1, sub-plies: %2, points: %3")
                                    .arg(statistics.plies)
                                    .arg(statistics.subPlies)
                                    .arg(statistics.points));
        JobConsole::WriteResult(Translate("size: %1, written in %2").arg(DescribeSize(statistics.box), GetUnitWord()));
        JobConsole::WriteResult(
            Translate("axis system: %1").arg(rosette ? rosette->GetLabel() : Translate("of the model")));
        if (IsDxf() && !files.isEmpty())
            JobConsole::WriteResult(Translate(
                "extents: DXF has constants for them, so a viewer may need \"zoom all\" to show the drawing"));
    }

    QString GetTypeName() const { return ZETLaserOptions::GetFileTypeString(options.GetFileType()); }

    QString GetUnitWord() const
    {
        return options.GetUnits() == ZETLaserOptions::UnitsInches ? Translate("inches") : Translate("mm");
    }

    /*! "11.7 m x 5.0 m x 0.9 m": in metres from one metre on, in mm below. */
    static QString DescribeSize(const ZETMathBoundingBox& box)
    {
        const ZETMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
        const double sides[] = {size.GetX(), size.GetY(), size.GetZ()};
        double largest = 0.0;
        for (const double side : sides)
            largest = std::max(largest, side);
        constexpr double metre = 1000.0;
        QStringList words;
        for (const double side : sides) {
            words.append(largest < metre ? Translate("%1 mm").arg(side, 0, 'f', 1)
                                         : Translate("%1 m").arg(side / metre, 0, 'f', 1));
        }
        return words.join(u" x "_s);
    }

    QString layupFile;
    const JobSettings& settings;
    QString outputName;
    std::unique_ptr<JobStaging> partPlace;
    std::unique_ptr<JobStaging> toolPlace;
    ZETOpenLayupModel model;
    ZETLaserOptions options; // behind the model, so that it goes first
    QStringList files;
};
} // namespace

void RunJob(const QString& layupFile, const JobSettings& settings)
{
    Job(layupFile, settings).Run();
}
