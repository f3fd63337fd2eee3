#pragma once

#include <ZETHostGlobal.h>

#include <QChar>
#include <QString>

/*! Services around file names. */
class ZETHOST_EXPORT ZETSysFileUtilities
{
public:
    /*! \a name with each character that a file name can't hold, and each character of \a extra, replaced by
     *  \a replacement. */
    static QString CreateSafeFilename(const QString& name, const QChar& replacement, const QString& extra);
};
