#include "openhost/ZETOpenHostVersion.h"

#include <Standard_Version.hxx>

using namespace Qt::Literals::StringLiterals;

QString GetOpenHostVersion()
{
    return u"%1 (Open CASCADE %2)"_s.arg(QLatin1StringView(ZETOPENHOST_VERSION),
                                         QLatin1StringView(OCC_VERSION_COMPLETE));
}
