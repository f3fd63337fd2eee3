#pragma once

#include <QtCore/qglobal.h>

/*! Marks what a host library gives to others. A host that defines the classes declared here
 *  is compiled with ZETHOST_BUILD. */
#if defined(ZETHOST_BUILD)
#define ZETHOST_EXPORT Q_DECL_EXPORT
#else
#define ZETHOST_EXPORT Q_DECL_IMPORT
#endif
