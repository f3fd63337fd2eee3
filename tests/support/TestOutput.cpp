#include "tests/support/TestOutput.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

TestOutput WriteOutput(TestJob& job, const QString& partFile, const QString& targetsFile)
{
    // A file system that looks after data waits for the disk when a file is cut and written again, so files start anew.
    for (const auto& file : {partFile, partFile + u"-report.htm"_s, targetsFile}) {
        if (!file.isEmpty())
            QFile::remove(file);
    }
    if (!job.WriteFileType(partFile))
        qFatal("Write() returned false");
    TestOutput output{ReadBytes(partFile), ReadBytes(partFile + u"-report.htm"_s), {}, QFileInfo::exists(targetsFile)};
    if (output.hasTargets)
        output.targets = ReadBytes(targetsFile);
    return output;
}

TestOutput WriteOutput(const QString& jobText, const QString& partFile, const QString& targetsFile)
{
    TestJob job(jobText);
    return WriteOutput(job, partFile, targetsFile);
}

QByteArray ReportBody(const QByteArray& report)
{
    const QByteArray head = "Extra Geometry used\n\n";
    const qsizetype begin = report.indexOf(head);
    qsizetype end = report.indexOf("\n\nNO PLY DATA WRITTEN!");
    if (end < 0)
        end = report.indexOf("\n\nWarning & Error messages:");
    return begin < 0 || end < 0 ? report : report.mid(begin + head.size(), end - begin - head.size());
}

QStringList QueuedMessages()
{
    QStringList texts;
    const auto messages = ZETOpenMessageQueue::GetMessages();
    for (const auto& message : messages)
        texts += QString::number(message.type) + u' ' + message.text;
    return texts;
}
