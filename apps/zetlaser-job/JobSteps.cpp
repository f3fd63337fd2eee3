#include "JobSteps.h"

#include "JobConsole.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! A length limit that is wrong by some digits would fill the memory, and then the system would end the program without
 *  a word. Counted on the boundaries in space, which are about as long as flat ones. */
void CheckPointCount(const ZETLaserOptions& options)
{
    constexpr double most = 5e7; // some 5 GB
    if (!options.GetUseMaxLength() || options.GetMaxLength() <= 0.0)
        return;
    double length = 0.0;
    for (const ZETCompPlyBase* ply : options.GetPlies()) {
        for (const ZETGeoAssembledCurveOnSurface* boundary : ply->GetBoundaryCurves())
            length += boundary ? boundary->GetLength() : 0.0;
    }
    if (length / options.GetMaxLength() > most)
        throw JobError(JobExit::WrongCall,
                       Translate("--max-length: expected at least %1 mm for boundaries of %2 m, found %3 mm")
                           .arg(length / most, 0, 'g', 3)
                           .arg(length / 1000.0, 0, 'f', 1)
                           .arg(options.GetMaxLength()));
}
} // namespace

ZETOpenLayupModel JobSteps::LoadModel(const QString& layupFile, const ZETOpenLayupFile::ShapeListener& beforeShape)
{
    JobConsole::ShowProgress(Translate("reading %1").arg(layupFile));
    ZETOpenLayupModel model;
    try {
        model = ZETOpenLayupFile::Load(layupFile, beforeShape);
    } catch (const ZETSysException& error) {
        throw JobError(JobExit::WrongInput, error.GetMessage());
    }
    for (const ZETOpenJsonError& warning : model.warnings)
        JobConsole::Warn(warning.GetMessage());
    return model;
}

void JobSteps::CheckSelection(const ZETLaserOptions& options)
{
    if (options.GetPlies().isEmpty())
        throw JobError(JobExit::NothingToDo, options.GetOutputType() == ZETLaserOptions::Output3D
                                                 ? Translate("nothing to write: no ply is selected")
                                                 : Translate("nothing to write: no ply with a flat pattern is "
                                                             "selected"));
}

void JobSteps::Read(ZETLaserOptions& options)
{
    CheckSelection(options);
    Run([&] { CheckPointCount(options); });
    JobConsole::ShowProgress(Translate("reading %1 plies").arg(options.GetPlies().size()));
    Run([&] {
        if (!options.GetLaserProcesses()->ReadLaserData())
            throw JobError(JobExit::NothingToDo, Translate("nothing to write: the selected plies gave no data"));
    });
}

void JobSteps::Thin(ZETLaserOptions& options)
{
    JobConsole::ShowProgress(Translate("thinning points"));
    Run([&] { options.GetLaserProcesses()->ProcessLaserData(); });
}
