#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/*! The files that a job reads, with what they held when they were read. */
class JobInputs
{
public:
    struct File {
        QString kind; //!< "layup", "settings" or "shape"
        QString name; //!< as it was given
        qint64 size = 0;
        QByteArray sha256; //!< in hexadecimal; empty for what is no regular file, which can be read but once
    };

    /*! To be called when the file is about to be read. */
    void Add(const QString& kind, const QString& name);
    const QList<File>& GetFiles() const { return files; }
    /*! Throws JobError if one of them holds something else by now: nobody knows then which of both was read. */
    void CheckUnchanged() const;

    /*! Throws JobError if a job that writes \a paths would write over one of them. */
    void CheckKept(const QStringList& paths) const;

    /*! Whether two names mean the same place, of a file that may be there or not. */
    static bool IsSame(const QString& one, const QString& other);
    /*! That of the whole file; empty if it can't be read. */
    static QByteArray GetSha256(const QString& name);

private:
    QList<File> files;
};
