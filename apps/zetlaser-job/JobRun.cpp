#include "JobRun.h"

#include "JobConsole.h"
#include "JobOutput.h"
#include "JobSteps.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>

void RunJob(const QString& layupFile, const JobSettings& settings)
{
    ZETOpenLayupModel model;
    JobOutput output(settings); // behind the model, so that it goes first
    output.PreparePlaces();
    model = JobSteps::LoadModel(layupFile);
    output.Read(*model.root);
    output.Write();
    output.Commit();
    JobConsole::TellRepeatedMessages();
    output.TellResult();
}
