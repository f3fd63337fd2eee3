#pragma once

#include "JobCommand.h"

/*! The option --help of a command, in the section that its other options begin with. */
JobSetting MakeHelpOption(const JobCommand& command);

/*! "zetlaser-job help [COMMAND]" */
JobCommand MakeHelpCommand();
