#pragma once

#include <ZETHostGlobal.h>

#include <QString>
#include <QUrl>

/*! Services around URLs. */
class ZETHOST_EXPORT ZETSysUrlUtility
{
public:
    /*! The local file path of \a url; empty if it has none. */
    static QString GetFilePathFromURL(const QUrl& url);
};
