#include "JobConvertCommand.h"

#include "JobConvert.h"
#include "JobError.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void FailCall(const QString& text)
{
    throw JobError(JobExit::WrongCall, Translate("%1 (zetlaser-job convert --help tells more)").arg(text));
}

QList<JobSetting> MakeOptions()
{
    const QString files = Translate("Files");
    const QString model = Translate("Model");
    return {
        {.key = u"tool"_s,
         .kind = JobSetting::File,
         .section = files,
         .help = Translate("The tool: a STEP, IGES or BREP file whose edges and wires have names."),
         .suffixes = {u"step"_s, u"stp"_s, u"iges"_s, u"igs"_s, u"brep"_s}},
        {.key = u"output"_s,
         .kind = JobSetting::File,
         .section = files,
         .help = Translate("The layup file to write."),
         .suffixes = {u"json"_s}},
        {.key = u"force"_s,
         .kind = JobSetting::Flag,
         .section = files,
         .help = Translate("Replace a layup file that is there already, with all that was added to it by hand.")},
        {.key = u"name"_s,
         .kind = JobSetting::Text,
         .section = model,
         .help = Translate("Name of the part. Default: the name of the ply list.")},
        {.key = u"face"_s,
         .kind = JobSetting::Text,
         .section = model,
         .help =
             Translate("Face that the plies are laid on, by name or by index from 0. Needed where the tool file has "
                       "several."),
         .placeholder = u"NAME|N"_s},
        {.key = u"reversed"_s,
         .kind = JobSetting::Switch,
         .section = model,
         .help = Translate("The plies are laid on the other side of the face. Default: off.")},
        {.key = u"scale"_s,
         .kind = JobSetting::Scale,
         .section = model,
         .help = Translate("Millimetres a unit of the tool file, where the unit that it declares is wrong.")},
        {.key = u"rosetteOrigin"_s,
         .kind = JobSetting::Text,
         .section = model,
         .help = Translate("Where the rosette stands, in mm. Default: 0,0,0."),
         .placeholder = u"X,Y,Z"_s},
        {.key = u"rosetteX"_s,
         .kind = JobSetting::Text,
         .section = model,
         .help = Translate("The direction that plies of direction 0 have. Default: 1,0,0."),
         .placeholder = u"X,Y,Z"_s},
        {.key = u"rosetteY"_s,
         .kind = JobSetting::Text,
         .section = model,
         .help = Translate("The direction on whose side positive directions are. Default: 0,1,0."),
         .placeholder = u"X,Y,Z"_s},
    };
}

void TakeNumbers(const JobSettings& settings, const QString& key, const QString& flag, QList<double>& numbers)
{
    if (!settings.Has(key))
        return;
    QList<double> given;
    bool areNumbers = true;
    for (const QString& word : settings.GetText(key).split(u',')) {
        bool isNumber = false;
        given.append(word.toDouble(&isNumber));
        areNumbers = areNumbers && isNumber && std::isfinite(given.last());
    }
    if (!areNumbers || given.size() != numbers.size())
        FailCall(Translate("%1: expected three numbers as in 0,0,1, found \"%2\"").arg(flag, settings.GetText(key)));
    numbers = given;
}

JobLayupFrame GetFrame(const JobSettings& settings, const QString& plyList)
{
    JobLayupFrame frame;
    frame.name = settings.Has(u"name"_s) ? settings.GetText(u"name"_s) : QFileInfo(plyList).completeBaseName();
    frame.face = settings.GetText(u"face"_s);
    frame.isReversed = settings.Get(u"reversed"_s).toBool();
    std::ignore = frame.face.toUInt(&frame.isFaceIndex);
    if (settings.Has(u"scale"_s))
        frame.scale = settings.Get(u"scale"_s).toDouble();
    TakeNumbers(settings, u"rosetteOrigin"_s, u"--rosette-origin"_s, frame.rosetteOrigin);
    TakeNumbers(settings, u"rosetteX"_s, u"--rosette-x"_s, frame.rosetteX);
    TakeNumbers(settings, u"rosetteY"_s, u"--rosette-y"_s, frame.rosetteY);
    return frame;
}

int RunConvertCommand(const JobCall& call)
{
    for (const QString& key : {u"tool"_s, u"output"_s}) {
        if (!call.settings.Has(key))
            FailCall(Translate("expected the option --%1, found none").arg(key));
    }
    const QString& plyList = call.arguments.first();
    RunConvert({plyList, call.settings.GetText(u"tool"_s), call.settings.GetText(u"output"_s),
                call.settings.Get(u"force"_s).toBool(), GetFrame(call.settings, plyList)});
    return static_cast<int>(JobExit::Written);
}
} // namespace

JobCommand MakeConvertCommand()
{
    return {
        .name = u"convert"_s,
        .purpose = Translate("Makes a layup file of a ply list (CSV) and a tool with named boundaries."),
        .usage = {u"PLIES --tool FILE --output LAYUP [options]"_s},
        .description = Translate(
            "Makes a layup file of a ply list and the tool's shape file, whose named edges and wires are the "
            "boundaries "
            "of the plies. The list is a CSV file with commas or semicolons, with a row for each ply in the order of "
            "laying, and with a header row that names the columns in any order: layup, sequence, ply, material, "
            "direction (in degrees), boundary (the name of an edge or wire). All faults of the list are told with "
            "their lines, and then nothing is written."),
        .arguments = {{.placeholder = u"PLIES"_s, .noun = Translate("ply list"), .suffixes = {u"csv"_s}}},
        .options = MakeOptions(),
        .notes =
            Translate("The layup file has no targets and projectors, and no thickness of materials: a list tells "
                      "none. They are written into it by hand, so one that is there is replaced with --force only."),
        .examples = {{u"plies.csv --tool cover.step --output cover.layup.json"_s,
                      Translate("Makes a layup file of the plies in plies.csv, on the face of cover.step.")}},
        .exitCodes = {{u"0"_s, Translate("the layup file is written")},
                      {u"2"_s, Translate("the command line is wrong")},
                      {u"3"_s, Translate("the ply list or the tool file is wrong or can't be read")},
                      {u"4"_s,
                       Translate(
                           "the file can't be written: it is there already, no permission, no room, no such folder")},
                      {u"5"_s, Translate("the conversion failed")},
                      {u"128 + N"_s, Translate("interrupted by the signal N (130: Ctrl-C)")}},
        .run = RunConvertCommand,
    };
}
