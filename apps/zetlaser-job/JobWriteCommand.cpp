#include "JobWriteCommand.h"

#include "JobCompletion.h"
#include "JobConsole.h"
#include "JobError.h"
#include "JobManual.h"
#include "JobRun.h"

#include "laser/ZETLaserOptions.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

QString GetVersionText()
{
    return u"zetlaser-job "_s + QCoreApplication::applicationVersion() + u'\n';
}

QString GetTypeListText()
{
    QString text;
    for (int type = 0; type < JobSettingTable::GetTypeNames().size(); ++type) {
        const auto value = static_cast<ZETLaserOptions::EOutputFileType>(type);
        text += JobSettingTable::GetTypeNames()[type].leftJustified(20) + ZETLaserOptions::GetFileTypeString(value) +
                u" (*"_s + ZETLaserOptions::GetFileTypeExtensionString(value) + u")\n"_s;
    }
    return text;
}

int RunWrite(const JobCall& call)
{
    const QList<JobSettings> outputs = JobSettingsFile::Read(call.settings).GetOutputs(call.settings);
    JobConsole::ListenToMessageQueue();
    RunJob(call.arguments.first(), outputs);
    return static_cast<int>(JobExit::Written);
}
} // namespace

JobCommand MakeWriteCommand()
{
    return {
        .name = {},
        .purpose = Translate("Writes the part files of a layup file."),
        .usage = {u"LAYUP --type TYPE --output FILE [options]"_s},
        .description = Translate(
            "Reads a layup file and writes its plies as a part file for a laser projector, with the files that "
            "belong to it and a report. Files are written beside their place and moved over when all of them "
            "are whole, so a job that fails or is interrupted leaves earlier files as they were. Of several outputs, "
            "one that fails doesn't stop the others, and the exit code is the highest of those that failed."),
        .arguments = GetLayupArguments(),
        .options = GetJobOptions(),
        .notes =
            Translate("Where an option isn't given, the manufacturing configuration decides about normals, rosette, "
                      "seeds, extra geometry and parent plies; all else has the library's default. Lengths are in "
                      "mm, whatever the unit of the written file."),
        .examples =
            {{u"panel.layup.json --type virtek --output panel.ply"_s,
              Translate("Writes panel.ply, its calibration file panel.cal and the report panel.ply-report.htm.")},
             {u"panel.layup.json --type lap --output plies.lpd --units in --plies S1/P1,P2"_s,
              Translate("Writes two of the plies, in inches.")},
             {u"panel.layup.json --settings virtek.json"_s, Translate("Takes type, output and all else from a file.")}},
        .exitCodes = GetJobExitCodes(),
        .run = RunWrite,
    };
}

QList<JobArgument> GetLayupArguments()
{
    return {{.placeholder = u"LAYUP"_s, .noun = Translate("layup file"), .suffixes = {u"json"_s}}};
}

QList<JobSetting> GetJobOptions()
{
    const QString general = Translate("General");
    return QList<JobSetting>{
               {.key = u"version"_s,
                .kind = JobSetting::Flag,
                .section = general,
                .help = Translate("Show the version."),
                .answer = [](const JobCommand&, const QVariant&) { return GetVersionText(); }},
               {.key = u"listTypes"_s,
                .kind = JobSetting::Flag,
                .section = general,
                .help = Translate("Show the types of files that can be written."),
                .answer = [](const JobCommand&, const QVariant&) { return GetTypeListText(); }},
               MakeManualOption(general),
               MakeCompletionOption(general),
               {.key = u"settings"_s,
                .kind = JobSetting::File,
                .section = general,
                .help =
                    Translate("Take settings from a JSON file. Its keys are the names of the options below, written as "
                              "in \"minimizePointsTolerance\"; flags go before it, and paths are relative to it. Its "
                              "key \"outputs\", an array of objects with such keys, asks for several outputs."),
                .suffixes = {u"json"_s}}} +
           JobSettingTable::GetAll();
}

QList<JobExitCode> GetJobExitCodes()
{
    return {{u"0"_s, Translate("all files are written")},
            {u"1"_s, Translate("nothing to write: no ply is selected")},
            {u"2"_s, Translate("the command line is wrong")},
            {u"3"_s, Translate("the layup file, a shape file or the settings file is wrong or can't be read")},
            {u"4"_s, Translate("the files can't be written: no permission, no room, no such folder")},
            {u"5"_s, Translate("the job failed")},
            {u"128 + N"_s, Translate("interrupted by the signal N (130: Ctrl-C)")}};
}
