#pragma once

#include "JobCommand.h"

/*! Reads the arguments behind the program's name and that of the command. Throws JobError that tells the first fault.
 */
JobCall ParseCommandLine(const JobCommand& command, const QStringList& arguments);
