#pragma once

#include <ZETSystem/ZETSysException.h>

#include <QString>

/*! The text of the host exception that \a call throws; null if it throws none. */
template <typename Call>
QString Thrown(Call call)
{
    try {
        call();
    } catch (const ZETSysException& exception) {
        return exception.GetMessage();
    }
    return {};
}
