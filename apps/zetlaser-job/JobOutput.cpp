#include "JobOutput.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobFileName.h"
#include "JobInputs.h"
#include "JobReadBack.h"
#include "JobSelection.h"
#include "JobStaging.h"
#include "JobSteps.h"
#include "JobSummary.h"
#include "JobTargets.h"
#include "JobThinning.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"

#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

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
} // namespace

JobOutput::JobOutput(const JobSettings& jobSettings)
    : settings(jobSettings)
{
    // The default of this one isn't in the record of the job.
    if (!settings.Has(u"check"_s))
        settings.Set(u"check"_s, true);
}

JobOutput::~JobOutput() = default;

QString JobOutput::GetName() const
{
    if (!fileName.isEmpty())
        return fileName;
    return settings.Has(u"output"_s) ? QFileInfo(settings.GetText(u"output"_s)).fileName()
                                     : JobSettingTable::GetTypeNames().value(settings.Get(u"type"_s).toInt());
}

QString JobOutput::GetTypeName() const
{
    return ZETLaserOptions::GetFileTypeString(options->GetFileType());
}

void JobOutput::PreparePlaces()
{
    if (!settings.Has(u"type"_s))
        throw JobError(JobExit::WrongCall,
                       Translate("expected the option --type, found none (--list-types shows the types)"));
    if (settings.Has(u"summary"_s))
        summary = std::make_unique<JobSummary>(settings.GetText(u"summary"_s));
    if (settings.Has(u"createLaserData"_s) && !settings.Get(u"createLaserData"_s).toBool())
        return;
    if (!settings.Has(u"output"_s))
        throw JobError(JobExit::WrongCall, Translate("expected the option --output, found none"));
    const QString output = settings.GetText(u"output"_s);
    fileName = QFileInfo(output).fileName();
    partPlace = std::make_unique<JobStaging>(JobStaging::CheckFile(output));
    if (!settings.Get(u"useSpecificPathForLaserFile"_s).toBool())
        return;
    if (!settings.Has(u"targetFilePath"_s))
        throw JobError(JobExit::WrongCall,
                       Translate("expected --target-file-path beside --use-specific-path-for-laser-file, found none"));
    toolPlace = std::make_unique<JobStaging>(settings.GetText(u"targetFilePath"_s));
}

void JobOutput::SetUp(ZETCompRoot& modelRoot)
{
    root = &modelRoot;
    options = std::make_unique<ZETLaserOptions>();
    FillOptions(*options, modelRoot, settings);
    configuration = modelRoot.GetActiveMfgConfiguration();
    JobSteps::CheckSelection(*options);
    if (partPlace) {
        fileName = GetFileName(*options, fileName);
        settings.Set(u"output"_s, partPlace->GetFinalPath(fileName));
    }
    if (summary) {
        summary->SetName(GetFileName(*options, summary->GetName()));
        settings.Set(u"summary"_s, summary->GetFile());
    }
}

QStringList JobOutput::GetPartFile() const
{
    return partPlace ? QStringList{partPlace->GetFinalPath(fileName)} : QStringList();
}

void JobOutput::Make(const JobInputs& inputs)
{
    // Another output may have set its own since.
    if (root->GetActiveMfgConfiguration() != configuration)
        ZETOpenComposites::SetActiveMfgConfiguration(*root, configuration);
    for (const QString& warning : JobTargets(*options).GetWarnings())
        JobConsole::Warn(warning);
    WarnOfExtension();
    JobSteps::Read(*options);
    const JobThinning thinning(*options);
    for (const QString& warning : thinning.GetWarnings(*options))
        JobConsole::Warn(warning);
    if (partPlace)
        Write();
    if (summary)
        summary->Write(inputs, settings, *options, thinning, GetPlaces());
    inputs.CheckKept(GetFiles());
    DescribeResult();
    options.reset();
}

QList<const JobStaging*> JobOutput::GetPlaces() const
{
    QList<const JobStaging*> places{partPlace.get(), toolPlace.get(), summary ? &summary->GetPlace() : nullptr};
    places.removeAll(nullptr);
    return places;
}

QStringList JobOutput::GetFiles() const
{
    QStringList paths;
    for (const JobStaging* place : GetPlaces()) {
        for (const QString& name : place->GetNames())
            paths.append(place->GetFinalPath(name));
    }
    return paths;
}

/*! A projector doesn't find a file by another extension, and the type may be the one that isn't meant. The calibration
 *  file is found even less: its name is that of the part file with other letters in the place of the last three. */
void JobOutput::WarnOfExtension() const
{
    const QString extension = ZETLaserOptions::GetFileTypeExtensionString(options->GetFileType());
    if (partPlace && !fileName.endsWith(extension, Qt::CaseInsensitive))
        JobConsole::Warn(Translate("expected a file name that ends in \"%1\", as those of %2 do, found \"%3\"")
                             .arg(extension, GetTypeName(), fileName));
}

void JobOutput::Write()
{
    WriteFiles();
    for (const JobStaging* place : GetPlaces()) {
        place->CheckWritten();
        place->CheckPlaces();
    }
    CheckWhole();
    if (partPlace->GetNames().isEmpty())
        throw JobError(JobExit::CannotWrite, Translate("can't write %1: no file came about").arg(fileName));
    if (settings.Get(u"check"_s).toBool())
        ReadBack();
}

void JobOutput::WriteFiles()
{
    JobConsole::ShowProgress(Translate("writing %1").arg(fileName));
    // The library writes where it is, under the final name: what the files say of their names is then true, and
    // doesn't depend on the folder that they are written in.
    options->SetFileName(fileName);
    // The report names the folder of the tool file. Where it is that of the part file, it is told as seen from there.
    options->SetUseSpecificPathForLaserFile(true);
    options->SetTargetFilePath(toolPlace ? toolPlace->GetPath() : u"."_s);
    bool isWritten = false;
    {
        const FolderGuard folder(partPlace->GetPath());
        JobSteps::Run([&] { isWritten = options->GetLaserProcesses()->WriteLaserData(); });
    }
    options->SetUseSpecificPathForLaserFile(toolPlace != nullptr);
    options->SetTargetFilePath(settings.GetText(u"targetFilePath"_s));
    if (!isWritten)
        throw JobError(JobExit::Failed, Translate("the type %1 can't be written").arg(GetTypeName()));
    if (toolPlace)
        NameFinalToolFolder();
}

/*! Puts the final folder of the tool file into the report, where the temporary one stands. */
void JobOutput::NameFinalToolFolder() const
{
    for (const QString& name : partPlace->GetNames()) {
        if (!name.endsWith(u"-report.htm"_s))
            continue;
        QFile file(partPlace->GetPath() + u'/' + name);
        if (!file.open(QIODevice::ReadOnly))
            throw JobError(JobExit::CannotWrite, Translate("can't write %1: %2").arg(name, file.errorString()));
        partPlace->WriteFile(
            name, file.readAll().replace(toolPlace->GetPath().toUtf8(), toolPlace->GetFinalPath(QString()).toUtf8()));
    }
}

/*! The library goes on where it can't write, so a fault that is over by now shows neither on the device nor in the
 *  files that are there. */
void JobOutput::CheckWhole() const
{
    const QMap<QString, QString> faults = options->GetLaserProcesses()->GetUnwrittenFiles();
    if (!faults.isEmpty())
        throw JobError(JobExit::CannotWrite,
                       Translate("can't write %1: %2").arg(QFileInfo(faults.firstKey()).fileName(), faults.first()));
}

void JobOutput::ReadBack() const
{
    JobConsole::ShowProgress(Translate("reading %1 back").arg(fileName));
    const QString partFolder = partPlace->GetPath();
    const QStringList warnings =
        JobReadBack::Check(*options, partFolder, toolPlace ? toolPlace->GetPath() : partFolder);
    for (const QString& warning : warnings)
        JobConsole::Warn(warning);
}

void JobOutput::DescribeResult()
{
    for (const ZETLaserOptions::CreatedFile& created : options->GetCreatedFiles()) {
        result.append(Translate("  %1: shape %2, material %3")
                          .arg(created.second.first, created.first,
                               QString::fromUtf8(ZETOpenMaterial::GetKey(created.second.second))));
    }
    const auto* rosette = qobject_cast<const ZETCompRosette*>(options->GetAxisSystem().data());
    const auto statistics = options->GetLaserProcesses()->GetStatistics(rosette ? rosette->GetAxis() : ZETMathAxis());
    const bool isInches = options->GetUnits() == ZETLaserOptions::UnitsInches;
    result.append(Translate("type: %1").arg(GetTypeName()));
    result.append(Translate("plies: %1, sub-plies: %2, points: %3")
                      .arg(statistics.plies)
                      .arg(statistics.subPlies)
                      .arg(statistics.points));
    result.append(Translate("size: %1, written in %2")
                      .arg(JobConsole::DescribeSize(statistics.box), isInches ? Translate("inches") : Translate("mm")));
    result.append(Translate("axis system: %1").arg(rosette ? rosette->GetLabel() : Translate("of the model")));
    result += JobTargets(*options).GetLines();
    if (options->GetFileType() == ZETLaserOptions::FileDXF && partPlace)
        result.append(
            Translate("extents: DXF has constants for them, so a viewer may need \"zoom all\" to show the drawing"));
}

void JobOutput::Commit()
{
    files = JobStaging::Commit(GetPlaces());
}

void JobOutput::TellResult() const
{
    JobConsole::WriteWritten(files);
    for (const QString& line : result)
        JobConsole::WriteResult(line);
}
