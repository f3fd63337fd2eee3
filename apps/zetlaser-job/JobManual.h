#pragma once

#include "JobSettings.h"

/*! The option --man: the manual page of the whole tool, in the language of man(7). */
JobSetting MakeManualOption(const QString& section);
