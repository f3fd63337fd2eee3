#include "JobPreview.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobPreviewPage.h"
#include "JobPreviewScene.h"
#include "JobSelection.h"
#include "JobStaging.h"
#include "JobSteps.h"

#include "openhost/ZETVisualization/ZETOpenScenePainter.h"

#include <ZETComposites/ZETCompRoot.h>

#include <QBuffer>
#include <QFileInfo>
#include <QRegularExpression>

#include <memory>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! \a text as a part of a file name. */
QString ForFileName(QString text)
{
    static const QRegularExpression odd(u"[^\\w.+-]+"_s, QRegularExpression::UseUnicodePropertiesOption);
    return text.replace(odd, u"_"_s).left(60);
}

/*! One preview, from its settings to its files. */
class Preview
{
public:
    Preview(const QString& file, const JobSettings& jobSettings, const JobPreviewOptions& previewOptions)
        : layupFile(file)
        , settings(jobSettings)
        , wanted(previewOptions)
    {
    }

    void Run()
    {
        PrepareOutput();
        model = JobSteps::LoadModel(layupFile);
        FillOptions(options, *model.root, settings);
        JobSteps::Read(options);
        JobSteps::Thin(options);
        JobConsole::ShowProgress(Translate("drawing"));
        JobPreviewScene scene(options);
        side = wanted.side.value_or(scene.GetLayingSide());
        // Counted ahead of the pictures of single plies, which hide the others.
        const ZETOpenScenePainter::Content content = ZETOpenScenePainter::Count(scene.GetScene());
        WriteFiles(scene);
        const QStringList files = Commit();
        JobConsole::TellRepeatedMessages();
        JobConsole::WriteWritten(files);
        JobConsole::WriteResult(Translate("shown: %1 plies, %2 targets, %3 segments, %4 markers")
                                    .arg(scene.GetPlies().size())
                                    .arg(scene.GetTargets().size())
                                    .arg(content.segments)
                                    .arg(content.markers));
        JobConsole::WriteResult(Translate("seen from: %1").arg(ZETOpenView::GetSideNames().at(side)));
    }

private:
    bool IsWanted(const QString& format) const { return wanted.formats.contains(format); }

    void PrepareOutput()
    {
        if (!settings.Has(u"output"_s))
            throw JobError(JobExit::WrongCall, Translate("expected the option --output, found none"));
        const QFileInfo output(settings.GetText(u"output"_s));
        baseName = output.fileName();
        for (const QString& format : wanted.formats) {
            if (baseName.endsWith(u'.' + format)) // it is put behind the name
                baseName.chop(format.size() + 1);
        }
        if (baseName.isEmpty())
            throw JobError(
                JobExit::WrongCall,
                Translate("--output: expected a file name without extension, found \"%1\"").arg(output.filePath()));
        if (IsWanted(u"html"_s))
            library.emplace(wanted.libraryFolder);
        place = std::make_unique<JobStaging>(output.absolutePath());
    }

    void WriteFiles(JobPreviewScene& scene)
    {
        if (IsWanted(u"html"_s))
            place->WriteFile(baseName + u".html"_s,
                             JobPreviewPage::Write(scene, options.GetPartName(), side, *library));
        ZETOpenPicture picture;
        picture.side = side;
        picture.size = wanted.size;
        picture.lineScale = 0.5; // the widths of the scene are made for a screen on a wall
        picture.surfaces = scene.GetSurfaces();
        picture.title = options.GetPartName();
        picture.captions = {Translate("%1 plies, seen from: %2")
                                .arg(scene.GetPlies().size())
                                .arg(ZETOpenView::GetSideNames().at(side))};
        WritePictures(scene, picture, baseName);
        if (wanted.plyPictures)
            WritePlyPictures(scene, picture);
    }

    void WritePlyPictures(JobPreviewScene& scene, ZETOpenPicture& picture)
    {
        const QList<JobPreviewPly>& plies = scene.GetPlies();
        for (const JobPreviewPly& ply : plies)
            ply.SetVisible(false);
        for (qsizetype i = 0; i < plies.size(); ++i) {
            const JobPreviewPly& ply = plies[i];
            ply.SetVisible(true);
            picture.title = ply.Describe();
            picture.captions = {Translate("%1: ply %2 of %3 (%4, %5), seen from: %6")
                                    .arg(options.GetPartName(), QString::number(i + 1), QString::number(plies.size()),
                                         ply.layup, ply.sequence, ZETOpenView::GetSideNames().at(side))};
            const QString number = u"%1"_s.arg(i + 1, 3, 10, QChar(u'0'));
            WritePictures(scene, picture, baseName + u'-' + number + u'-' + ForFileName(ply.name));
            ply.SetVisible(false);
        }
    }

    void WritePictures(JobPreviewScene& scene, const ZETOpenPicture& picture, const QString& name)
    {
        if (IsWanted(u"svg"_s))
            place->WriteFile(name + u".svg"_s, ZETOpenScenePainter::WriteSvg(scene.GetScene(), picture));
        if (!IsWanted(u"png"_s))
            return;
        QBuffer image;
        if (!ZETOpenScenePainter::PaintImage(scene.GetScene(), picture).save(&image, "PNG"))
            throw JobError(JobExit::Failed, Translate("not enough memory for a picture of this size"));
        place->WriteFile(name + u".png"_s, image.data());
    }

    QStringList Commit() const
    {
        place->CheckWritten();
        place->CheckPlaces();
        return JobStaging::Commit({place.get()});
    }

    QString layupFile;
    const JobSettings& settings;
    const JobPreviewOptions& wanted;
    QString baseName;
    ZETOpenView::Side side = ZETOpenView::Top;
    std::optional<JobPreviewPage::Library> library; //!< where a page is wanted
    std::unique_ptr<JobStaging> place;
    ZETOpenLayupModel model;
    ZETLaserOptions options; // behind the model, so that it goes first
};
} // namespace

void RunPreview(const QString& layupFile, const JobSettings& settings, const JobPreviewOptions& previewOptions)
{
    Preview(layupFile, settings, previewOptions).Run();
}
