#pragma once

#include "JobCommand.h"

/*! "zetlaser-job convert": a layup file from a ply list. */
JobCommand MakeConvertCommand();
