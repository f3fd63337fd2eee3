#include "tests/support/TestGolden.h"

#include "tests/support/TestFiles.h"

#include <QDir>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString jobFile = u"job.txt"_s;

QStringList FilesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

/*! The bytes of a file in \a folder, with a mark for the folder's absolute path. */
QByteArray ReadMarked(const QString& folder, const QString& file)
{
    return ReadBytes(folder + u'/' + file).replace(folder.toUtf8(), "@FOLDER@");
}
} // namespace

TestGolden::TestGolden(const QString& formatName)
    : format(formatName)
    , expectedFolder(QStringLiteral(ZET_SOURCE_DIR) + u"/tests/golden/"_s + formatName)
    , outputFolder(QDir::current().absoluteFilePath(formatName))
{
}

QStringList TestGolden::GetCases() const
{
    const QStringList cases = QDir(expectedFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (cases.isEmpty())
        qFatal("no cases in %s", qPrintable(expectedFolder));
    return cases;
}

QString TestGolden::Run(const QString& name, const QString& partFile) const
{
    const Folder folder(*this, name);
    TestJob job(ReadJob(name));
    if (!job.WriteFileType(partFile))
        return u"Write() returned false"_s;
    return Compare(name);
}

QString TestGolden::ReadJob(const QString& name) const
{
    const QByteArray job = ReadBytes(expectedFolder + u'/' + name + u'/' + jobFile);
    if (job.isEmpty())
        qFatal("no job in case %s", qPrintable(name));
    return QString::fromUtf8(job);
}

QString TestGolden::Compare(const QString& name) const
{
    const QString expected = expectedFolder + u'/' + name;
    const QString output = outputFolder + u'/' + name;
    QStringList expectedFiles = FilesIn(expected);
    expectedFiles.removeAll(jobFile);
    const QStringList outputFiles = FilesIn(output);

    QString differences;
    if (expectedFiles.isEmpty())
        differences += u"the case expects no files\n"_s;
    for (const auto& file : expectedFiles) {
        if (!outputFiles.contains(file)) {
            differences += file + u" was not written\n"_s;
            continue;
        }
        QString difference;
        if (!IsSameText(ReadMarked(output, file), ReadBytes(expected + u'/' + file), &difference))
            differences += file + u": "_s + difference;
    }
    for (const auto& file : outputFiles) {
        if (!expectedFiles.contains(file))
            differences += file + u" is not expected\n"_s;
    }
    return differences;
}

TestGolden::Folder::Folder(const TestGolden& golden, const QString& name)
    : previous(QDir::currentPath())
{
    QDir folder(golden.outputFolder + u'/' + name);
    folder.removeRecursively();
    if (!folder.mkpath(u"."_s) || !QDir::setCurrent(folder.path()))
        qFatal("can't make %s", qPrintable(folder.path()));
}

TestGolden::Folder::~Folder()
{
    QDir::setCurrent(previous);
}
