#include "JobInputs.h"

#include "JobError.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace
{
JobInputs::File Look(const QString& kind, const QString& name)
{
    const QFileInfo info(name);
    return info.isFile() ? JobInputs::File{kind, name, info.size(), JobInputs::GetSha256(name)}
                         : JobInputs::File{kind, name, 0, {}};
}

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! The path without links in its folder; a link in the place of the file is a file of its own. */
QString GetPlace(const QString& name)
{
    const QFileInfo file(name);
    return QFileInfo(file.absolutePath()).canonicalFilePath() + u'/' + file.fileName();
}
} // namespace

void JobInputs::Add(const QString& kind, const QString& name)
{
    files.append(Look(kind, name));
}

void JobInputs::CheckUnchanged() const
{
    for (const File& file : files) {
        if (Look(file.kind, file.name).sha256 != file.sha256)
            throw JobError(JobExit::WrongInput,
                           Translate("%1 was changed while the job ran; run it again").arg(file.name));
    }
}

void JobInputs::CheckKept(const QStringList& paths) const
{
    for (const QString& path : paths) {
        for (const File& file : files) {
            if (IsSame(path, file.name))
                throw JobError(JobExit::CannotWrite, Translate("can't write %1: the job reads that file").arg(path));
        }
    }
}

bool JobInputs::IsSame(const QString& one, const QString& other)
{
    return GetPlace(one) == GetPlace(other);
}

QByteArray JobInputs::GetSha256(const QString& name)
{
    QFile file(name);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}
