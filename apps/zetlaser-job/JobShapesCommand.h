#pragma once

#include "JobCommand.h"

/*! "zetlaser-job shapes": what a shape file holds. */
JobCommand MakeShapesCommand();
