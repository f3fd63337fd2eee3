#pragma once

#include "ZETHostGlobal.h"

#include <QString>

/*! Version of the open host and of the CAD kernel beneath it, as text for people:
 *  "0.1.0 (Open CASCADE 7.6.3)". */
ZETHOST_EXPORT QString GetOpenHostVersion();
