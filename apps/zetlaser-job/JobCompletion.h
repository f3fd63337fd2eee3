#pragma once

#include "JobSettings.h"

/*! The option --completion: the script that lets a shell complete command lines of the tool. */
JobSetting MakeCompletionOption(const QString& section);
