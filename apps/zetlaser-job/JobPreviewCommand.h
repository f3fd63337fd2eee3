#pragma once

#include "JobCommand.h"

/*! "zetlaser-job preview": a page for the browser, and pictures. */
JobCommand MakePreviewCommand();
