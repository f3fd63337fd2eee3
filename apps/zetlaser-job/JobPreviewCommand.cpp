#include "JobPreviewCommand.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobPreview.h"
#include "JobPreviewPage.h"
#include "JobWriteCommand.h"

#include <QCoreApplication>

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
    JobConsole::ListenToMessageQueue();
    RunPreview(call.arguments.first(), settings, GetPreviewOptions(call.settings));
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
        .sharedOptions = GetJobOptions(),
        .notes = Translate(
            "Which plies are shown, and what of them, is told by the same options as for a job that writes, "
            "for example --plies, --configuration, --output-type, --output-rosette: zetlaser-job --help. Of a settings "
            "file counts what stands outside of \"outputs\"."),
        .examples = {{u"panel.layup.json --output panel"_s, Translate("Writes panel.html, panel.png and panel.svg.")},
                     {u"panel.layup.json --output plies --formats png --ply-pictures --side top"_s,
                      Translate("Writes a picture of each ply, seen from above.")}},
        .exitCodes = GetJobExitCodes(),
        .isDrawing = true,
        .run = RunPreviewCommand,
    };
}
