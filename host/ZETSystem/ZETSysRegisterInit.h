#pragma once

#include <ZETHostGlobal.h>

#include <functional>

/*! Registers a function that the host calls once when it initialises its libraries, or at once if it has done so
 *  already. True if the function was taken. Meant for static initialisers of libraries. */
ZETHOST_EXPORT bool ZETSysRegisterInit(const std::function<void()>& initFunction);
