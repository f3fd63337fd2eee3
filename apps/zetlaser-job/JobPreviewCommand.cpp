#include "JobPreviewCommand.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobPreview.h"
#include "JobPreviewPage.h"
#include "JobWriteCommand.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

const QStringList& GetFormats()
{
    static const QStringList formats{u"html"_s, u"png"_s, u"svg"_s};
    return formats;
}

QList<JobSetting> MakeOptions()
{
    const QString preview = Translate("Preview");
    return {
        {.key = u"formats"_s,
         .kind = JobSetting::Choices,
         .section = preview,
         .help = Translate("What to write: html, png, svg. Default: all of them."),
         .choices = GetFormats(),
         .placeholder = u"FORMAT[,FORMAT...]"_s},
        {.key = u"plyPictures"_s,
         .kind = JobSetting::Switch,
         .section = preview,
         .help = Translate("Also write a picture of each ply: BASE-001-NAME.png and so on. Default: off.")},
        {.key = u"side"_s,
         .kind = JobSetting::Choice,
         .section = preview,
         .help =
             Translate("The side that the part is seen from. Default: auto, the side that the plies are laid from."),
         .choices = QStringList{u"auto"_s} + ZETOpenView::GetSideNames()},
        {.key = u"size"_s,
         .kind = JobSetting::PixelSize,
         .section = preview,
         .help = Translate("Size of the pictures in pixels. Default: 1600x1000.")},
        {.key = u"threeJs"_s,
         .kind = JobSetting::Folder,
         .section = preview,
         .help = Translate("Where three.js stands, laid out as in Debian's package libjs-three, which the page is made "
                           "with. Default: %1.")
                     .arg(JobPreviewPage::Library::GetDefaultFolder())},
    };
}

/*! The settings of a job that tell what is shown. The others tell how files are written, so a preview takes them from a
 *  settings file alone, which serves both. */
const QStringList& GetShownKeys()
{
    static const QStringList keys{u"output"_s,
                                  u"partName"_s,
                                  u"configuration"_s,
                                  u"projectors"_s,
                                  u"layups"_s,
                                  u"plies"_s,
                                  u"outputType"_s,
                                  u"outputExtraGeometry"_s,
                                  u"outputRosette"_s,
                                  u"useSeedPoint"_s,
                                  u"useSeedCurve"_s,
                                  u"skipParentPlyWithSubPlies"_s,
                                  u"offsetMode"_s,
                                  u"useMinimizePointsTolerance"_s,
                                  u"minimizePointsTolerance"_s,
                                  u"useMaxLength"_s,
                                  u"maxLength"_s,
                                  u"usePointOffset"_s,
                                  u"boundaryTolerance"_s,
                                  u"rosetteSize"_s,
                                  u"rosetteSizeQuilmon"_s,
                                  u"normalVectorSize"_s,
                                  u"normalVectorColor"_s};
    return keys;
}

QList<JobSetting> GetSharedOptions()
{
    QList<JobSetting> options = GetJobOptions();
    options.removeIf([](const JobSetting& option) {
        return JobSettingTable::FindByKey(option.key) && !GetShownKeys().contains(option.key);
    });
    return options;
}

QString DescribeSharedOptions()
{
    QStringList flags;
    for (const QString& key : GetShownKeys())
        flags.append(JobSettingTable::FindByKey(key)->GetShownFlags());
    return Translate("Which plies are shown, and what of them, is told by these options of a job that writes: %1. "
                     "zetlaser-job --help tells them. Of a settings file counts what stands outside of \"outputs\".")
        .arg(flags.join(u", "_s));
}

/*! Throws where an option is of no use with the formats that are wanted. */
void CheckFormats(const JobSettings& flags, const QStringList& formats)
{
    const auto check = [&](const QString& key, const QString& flag, const QStringList& users) {
        const bool isUsed =
            std::any_of(users.begin(), users.end(), [&](const QString& format) { return formats.contains(format); });
        if (flags.Has(key) && !isUsed)
            throw JobError(JobExit::WrongCall, Translate("%1: expected %2 among the formats, found %3 alone")
                                                   .arg(flag, users.join(Translate(" or ")), formats.join(u", "_s)));
    };
    check(u"plyPictures"_s, u"--ply-pictures"_s, {u"png"_s, u"svg"_s});
    check(u"size"_s, u"--size"_s, {u"png"_s, u"svg"_s});
    check(u"threeJs"_s, u"--three-js"_s, {u"html"_s});
}

/*! The choice "auto" stands for no side, and is the first of them. */
std::optional<ZETOpenView::Side> GetSide(const JobSettings& settings)
{
    const int choice = settings.Get(u"side"_s).toInt();
    return choice == 0 ? std::nullopt : std::optional(static_cast<ZETOpenView::Side>(choice - 1));
}

JobPreviewOptions GetPreviewOptions(const JobSettings& settings)
{
    JobPreviewOptions options;
    options.side = GetSide(settings);
    options.formats = settings.Has(u"formats"_s) ? settings.GetList(u"formats"_s) : GetFormats();
    options.plyPictures = settings.Get(u"plyPictures"_s).toBool();
    options.libraryFolder =
        settings.Has(u"threeJs"_s) ? settings.GetText(u"threeJs"_s) : JobPreviewPage::Library::GetDefaultFolder();
    if (settings.Has(u"size"_s))
        options.size = settings.Get(u"size"_s).toSize();
    return options;
}

int RunPreviewCommand(const JobCall& call)
{
    const JobSettings settings = JobSettingsFile::Read(call.settings).GetCommon(call.settings);
    const JobPreviewOptions options = GetPreviewOptions(call.settings);
    CheckFormats(call.settings, options.formats);
    JobConsole::ListenToMessageQueue();
    RunPreview(call.arguments.first(), settings, options);
    return static_cast<int>(JobExit::Written);
}
} // namespace

JobCommand MakePreviewCommand()
{
    return {
        .name = u"preview"_s,
        .purpose = Translate("Shows what a projector will show: a page for the browser, and pictures."),
        .usage = {u"LAYUP --output BASE [options]"_s},
        .description = Translate("Shows what a projector will show: a page for the browser (BASE.html), which needs no "
                                 "network, and pictures "
                                 "of the whole part (BASE.png, BASE.svg)."),
        .arguments = GetLayupArguments(),
        .options = MakeOptions(),
        .sharedOptions = GetSharedOptions(),
        .notes = DescribeSharedOptions(),
        .examples = {{u"panel.layup.json --output panel"_s, Translate("Writes panel.html, panel.png and panel.svg.")},
                     {u"panel.layup.json --output plies --formats png --ply-pictures --side top"_s,
                      Translate("Writes a picture of each ply, seen from above.")}},
        .exitCodes = GetJobExitCodes(),
        .isDrawing = true,
        .run = RunPreviewCommand,
    };
}
