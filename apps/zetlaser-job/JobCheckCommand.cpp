#include "JobCheckCommand.h"

#include "check/CheckReport.h"
#include "JobCheckModel.h"
#include "JobConsole.h"
#include "JobError.h"
#include "JobWriteCommand.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <memory>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! About what a projector's line is wide, and half of what the edge of a ply may be off. No digit or thinning that is
 * of use takes a point as far. */
constexpr double defaultLimit = 0.5; // mm

/*! What `check` tells the shell. */
enum CheckExit { ExitClean = 0, ExitFindings = 1, ExitUnreadable = 2 };

/*! One call of `check`, over all its files. */
class CheckRun
{
public:
    explicit CheckRun(const JobCall& call)
        : paths(call.arguments)
        , type(call.settings.GetText(u"type"_s))
        , unit(GetUnit(call.settings))
        , isJson(call.settings.Get(u"json"_s).toBool())
        , isQuiet(call.settings.Get(u"quiet"_s).toBool())
        , limit(call.settings.Has(u"maxDistance"_s) ? call.settings.Get(u"maxDistance"_s).toDouble() : defaultLimit)
    {
        if (call.settings.Has(u"layup"_s))
            Guarded([&] { model = std::make_unique<JobCheckModel>(call.settings); });
    }

    int Run()
    {
        if (std::all_of(paths.begin(), paths.end(), IsReport))
            throw JobError(JobExit::WrongCall, Translate("expected a part file, found reports alone"));
        for (const QString& path : paths)
            CheckWithCompanion(path);
        if (isJson)
            JobConsole::WriteResult(
                QString::fromUtf8(QJsonDocument(QJsonObject{{u"files"_s, documents}}).toJson()).chopped(1));
        return exit;
    }

private:
    /*! A model that can't be read ends the call as a file does. */
    template <typename Step>
    static void Guarded(Step step)
    {
        try {
            step();
        } catch (const JobError& error) {
            throw JobError(JobExit::WrongCall, error.GetText());
        }
    }

    static CheckFile::Unit GetUnit(const JobSettings& settings)
    {
        if (!settings.Has(u"units"_s))
            return CheckFile::UnknownUnit;
        return settings.Get(u"units"_s).toInt() == 1 ? CheckFile::Inches : CheckFile::Millimetres;
    }

    static bool IsReport(const QString& path) { return path.endsWith(u"-report.htm"_s); }

    void CheckWithCompanion(const QString& path)
    {
        if (IsReport(path))
            return; // a shell's * brings the reports of the jobs along
        const CheckFormat* const format = CheckOne(path, type, nullptr);
        if (!format || !format->getCompanion)
            return;
        const QString companion = format->getCompanion(path);
        if (paths.contains(companion))
            return;
        if (QFileInfo(companion).isFile())
            CheckOne(companion, format->companionType, format);
        else if (!isJson &&
                 !isQuiet) // a model without targets has none, and tool files may stand in a folder of theirs
            JobConsole::WriteResult(Translate("%1: there is no such file beside %2").arg(companion, path));
    }

    /*! Null if the file can't be read. \a part is the format of the part file that it stands beside, if it does. */
    const CheckFormat* CheckOne(const QString& path, const QString& formatType, const CheckFormat* part)
    {
        const std::optional<QByteArray> bytes = ReadFile(path);
        if (!bytes)
            return nullptr;
        const CheckFormat* const format =
            formatType.isEmpty() ? CheckFormats::Recognise(path, *bytes) : CheckFormats::Find(formatType);
        if (!format) {
            TellUnreadable(path, Translate("the type isn't known by its name or its content; --type tells it"));
            return nullptr;
        }
        CheckedFile file = CheckBytes(path, *format, *bytes, unit);
        if (const CheckFinding* const error = file.GetUnreadable()) {
            TellUnreadable(path, Translate("it is no file of the type %1: line %2: %3")
                                     .arg(format->name)
                                     .arg(error->line)
                                     .arg(error->text));
            return nullptr;
        }
        if (model)
            Guarded([&] { model->Check(file, *bytes, limit, part); });
        Tell(file);
        return format;
    }

    std::optional<QByteArray> ReadFile(const QString& path)
    {
        QFile file(path);
        if (!QFileInfo::exists(path)) {
            TellUnreadable(path, Translate("there is no such file"));
            return {};
        }
        if (!QFileInfo(path).isFile()) {
            TellUnreadable(path, Translate("it is no regular file"));
            return {};
        }
        if (!file.open(QIODevice::ReadOnly)) {
            TellUnreadable(path, file.errorString());
            return {};
        }
        QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError) {
            TellUnreadable(path, file.errorString());
            return {};
        }
        if (bytes.isEmpty()) {
            TellUnreadable(path, Translate("it is empty"));
            return {};
        }
        return bytes;
    }

    void TellUnreadable(const QString& path, const QString& why)
    {
        exit = ExitUnreadable;
        JobConsole::WriteMessage(Translate("error"), Translate("can't read %1: %2").arg(path, why));
        documents.append(QJsonObject{{u"file"_s, path}, {u"error"_s, why}});
    }

    void Tell(const CheckedFile& file)
    {
        if (!file.findings.empty() && exit == ExitClean)
            exit = ExitFindings;
        if (isJson) {
            documents.append(CheckReport::GetJson(file));
            return;
        }
        if (!isQuiet) {
            for (const QString& line : CheckReport::GetSummary(file))
                JobConsole::WriteResult(line);
        }
        for (const CheckFinding& finding : file.findings)
            JobConsole::WriteResult(CheckReport::GetLine(file.path, finding));
    }

    QStringList paths;
    QString type;
    CheckFile::Unit unit;
    bool isJson;
    bool isQuiet;
    double limit; //!< mm
    std::unique_ptr<JobCheckModel> model;
    int exit = ExitClean;
    QJsonArray documents;
};

QStringList GetTypes()
{
    QStringList types;
    for (const CheckFormat& format : CheckFormats::GetAll())
        types += format.types;
    return types;
}

QList<JobSetting> MakeOptions()
{
    const QString section = Translate("Check");
    return {
        {.key = u"type"_s,
         .kind = JobSetting::Text,
         .section = section,
         .help =
             Translate("What the files are: %1. Default: what content and name tell.").arg(GetTypes().join(u", "_s)),
         .choices = GetTypes(),
         .placeholder = u"TYPE"_s},
        {.key = u"units"_s,
         .kind = JobSetting::Choice,
         .section = section,
         .help = Translate("Unit of files that don't tell it. Default: mm."),
         .choices = {u"mm"_s, u"in"_s}},
        {.key = u"layup"_s,
         .kind = JobSetting::File,
         .section = section,
         .help = Translate("A layup file: compares plies, boundaries, normals and targets with its model."),
         .suffixes = {u"json"_s}},
        {.key = u"maxDistance"_s,
         .kind = JobSetting::Length,
         .section = section,
         .help = Translate("With --layup: a point farther off its boundary than this is a finding. Default: %1.")
                     .arg(defaultLimit)},
        {.key = u"quiet"_s,
         .kind = JobSetting::Flag,
         .section = section,
         .help = Translate("Show the findings alone.")},
        {.key = u"json"_s,
         .kind = JobSetting::Flag,
         .section = section,
         .help = Translate("Show all of it as JSON, for scripts. Lengths are in mm, those of targets as written.")},
    };
}

/*! What a job is told of the model, its plies and their points. The less of it is known, the less can be compared. */
QList<JobSetting> GetKnownOptions()
{
    static const QStringList others{u"type"_s,
                                    u"output"_s,
                                    u"summary"_s,
                                    u"units"_s, // there is one of `check` itself
                                    u"createLaserData"_s,
                                    u"check"_s,
                                    u"outputSubPly"_s,
                                    u"outputCourses"_s,
                                    u"materialThickness"_s,
                                    u"normalVectorSize"_s,
                                    u"normalVectorColor"_s,
                                    u"useSpecificPathForLaserFile"_s,
                                    u"targetFilePath"_s,
                                    u"laserFilePath"_s,
                                    u"useSpecificPathForQuilmonFile"_s,
                                    u"quilmonFilePath"_s};
    QList<JobSetting> options = GetJobOptions();
    options.removeIf([](const JobSetting& option) {
        const bool isOfJob = option.key == u"settings"_s || JobSettingTable::FindByKey(option.key);
        return !isOfJob || others.contains(option.key);
    });
    return options;
}

/*! Throws for what is of use with a model alone. */
void CheckNeedsLayup(const JobSettings& settings)
{
    if (settings.Has(u"layup"_s))
        return;
    for (const JobSetting& option : MakeOptions() + GetKnownOptions()) {
        const bool needsLayup = option.key == u"maxDistance"_s || option.section != Translate("Check");
        if (needsLayup && settings.Has(option.key))
            throw JobError(JobExit::WrongCall,
                           Translate("%1: expected --layup beside it, found none").arg(option.GetFlag()));
    }
}

int RunCheckCommand(const JobCall& call)
{
    const QString type = call.settings.GetText(u"type"_s);
    if (!type.isEmpty() && !CheckFormats::Find(type))
        throw JobError(JobExit::WrongCall,
                       Translate("--type: expected one of %1, found \"%2\"").arg(GetTypes().join(u", "_s), type));
    CheckNeedsLayup(call.settings);
    if (call.settings.Has(u"quiet"_s) && call.settings.Has(u"json"_s))
        throw JobError(JobExit::WrongCall, Translate("expected --quiet or --json, found both"));
    return CheckRun(call).Run();
}
} // namespace

JobCommand MakeCheckCommand()
{
    return {
        .name = u"check"_s,
        .purpose = Translate("Reads written files back: what is in them, and what is wrong with them."),
        .usage = {u"FILE... [options]"_s},
        .description = Translate(
            "Reads part files of any type back, each with the calibration, target or tool file beside it, and tells "
            "what "
            "they hold and what is doubtful: a line for each finding, FILE:LINE: severity: ply NAME: text. The readers "
            "share no code with the writers."),
        .arguments = {{.placeholder = u"FILE"_s, .noun = Translate("part file"), .count = JobArgument::OneOrMore}},
        .options = MakeOptions(),
        .sharedOptions = GetKnownOptions(),
        .notes = Translate(
            "With --layup, tell check what the job was told that wrote the files: its options --plies, --layups, "
            "--configuration, --projectors, --axis-system, --output-type and so on, which zetlaser-job --help lists, "
            "or its settings file. A file that such a job writes is the same point by point. Of one that isn't, plies, "
            "boundaries and targets are compared; with --settings any difference is a finding."),
        .examples = {{u"panel.ply"_s, Translate("Tells what panel.ply and its calibration file panel.cal hold.")},
                     {u"panel.ply --layup panel.layup.json"_s, Translate("Compares it with the model, too.")},
                     {u"panel.ply --json"_s, Translate("Tells it to a script.")}},
        .exitCodes = {{u"0"_s, Translate("nothing was found")},
                      {u"1"_s, Translate("something was found")},
                      {u"2"_s, Translate("a file can't be read, or the command line is wrong")},
                      {u"4"_s, Translate("the standard output can't be written")}},
        .run = RunCheckCommand,
    };
}
