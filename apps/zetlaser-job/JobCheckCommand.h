#pragma once

#include "JobCommand.h"

/*! "zetlaser-job check": reads written files back and says what is in them and what is wrong with them. */
JobCommand MakeCheckCommand();
