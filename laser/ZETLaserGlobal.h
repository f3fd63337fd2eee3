#pragma once

#include <QtCore/qglobal.h>

/*! Marks what ZETLaser gives to its clients. All else is hidden in the shared library. */
#if defined(ZETLASER_BUILD)
#define ZETLASER_EXPORT Q_DECL_EXPORT
#else
#define ZETLASER_EXPORT Q_DECL_IMPORT
#endif

/*! True once the library has told the host of its types, which it does by itself when it is loaded. */
ZETLASER_EXPORT extern bool _ZETLaserLoaded;
