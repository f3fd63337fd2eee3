#pragma once

#include "JobCommand.h"

/*! The command without a name: writes the part files of a layup file. */
JobCommand MakeWriteCommand();

/*! What other commands that read a layup file share with it. */
QList<JobArgument> GetLayupArguments();
QList<JobSetting> GetJobOptions();
QList<JobExitCode> GetJobExitCodes();
