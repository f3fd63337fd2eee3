#include "JobSteps.h"

#include "JobConsole.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}
} // namespace

ZETOpenLayupModel JobSteps::LoadModel(const QString& layupFile)
{
    JobConsole::ShowProgress(Translate("reading %1").arg(layupFile));
    ZETOpenLayupModel model;
    try {
        model = ZETOpenLayupFile::Load(layupFile);
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
