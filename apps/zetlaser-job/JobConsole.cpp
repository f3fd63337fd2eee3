#include "JobConsole.h"

#include "check/CheckReport.h"
#include "JobError.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETMathematics/ZETMathBoundingBox.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QList>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <mutex>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Held while something is written, and for good behind the last message. */
std::recursive_mutex& GetMutex()
{
    static auto* mutex = new std::recursive_mutex; // outlives the threads that wait for it
    return *mutex;
}

/*! Why a result could not be written; 0 if all could. */
int& GetLoss()
{
    static int reason = 0;
    return reason;
}

void Write(std::FILE* stream, const QString& text)
{
    const std::lock_guard lock(GetMutex());
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    const bool isWritten = std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
    // Who closes a pipe wants to read no more.
    if (!isWritten && stream == stdout && GetLoss() == 0 && errno != EPIPE)
        GetLoss() = errno;
}

bool IsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

QString GetSeverity(ZETSysMessageQueue::Type type)
{
    switch (type) {
    case ZETSysMessageQueue::TypeNote:
        return QCoreApplication::translate("zetlaser-job", "note");
    case ZETSysMessageQueue::TypeWarning:
        return QCoreApplication::translate("zetlaser-job", "warning");
    default:
        return QCoreApplication::translate("zetlaser-job", "problem");
    }
}

struct Messages {
    QList<JobMessage> kept;
    QList<JobMessage> current;
};

Messages& GetStore()
{
    static Messages messages;
    return messages;
}

void Take(const QString& severity, const QString& text)
{
    for (JobMessage& earlier : GetStore().current) {
        if (earlier.text == text && earlier.severity == severity) {
            ++earlier.count;
            return;
        }
    }
    GetStore().current.append({severity, text});
    JobConsole::WriteMessage(severity, text);
}
} // namespace

void JobConsole::WriteResult(const QString& line)
{
    EndProgress();
    Write(stdout, line + u'\n');
}

void JobConsole::WriteText(const QString& text)
{
    Write(stdout, text);
}

void JobConsole::RequireResultsWritten()
{
    if (GetLoss() == 0)
        return;
    throw JobError(JobExit::CannotWrite,
                   QCoreApplication::translate("zetlaser-job", "the standard output can't be written: %1")
                       .arg(QString::fromLocal8Bit(std::strerror(GetLoss()))));
}

void JobConsole::WriteWritten(const QStringList& files)
{
    for (const QString& file : files) {
        const QString relative = QDir().relativeFilePath(file);
        WriteResult(QCoreApplication::translate("zetlaser-job", "written: %1 (%2 bytes)")
                        .arg(relative.startsWith(u".."_s) ? file : relative, QString::number(QFileInfo(file).size())));
    }
}

QString JobConsole::DescribeSize(const ZETMathBoundingBox& box)
{
    const ZETMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
    return CheckReport::DescribeSize({size.GetX(), size.GetY(), size.GetZ()});
}

void JobConsole::WriteMessage(const QString& severity, const QString& text)
{
    EndProgress();
    QString lines = text;
    Write(stderr, severity + u": "_s + lines.replace(u'\n', u"\n  "_s) + u'\n');
}

void JobConsole::WriteLastMessage(const QString& severity, const QString& text)
{
    GetMutex().lock();
    WriteMessage(severity, text);
}

void JobConsole::ShowProgress(const QString& step)
{
    if (IsTerminal())
        Write(stderr, u"\r\x1b[K"_s + step + u"..."_s);
}

void JobConsole::EndProgress()
{
    if (IsTerminal())
        Write(stderr, u"\r\x1b[K"_s);
}

void JobConsole::ListenToMessageQueue()
{
    ZETOpenMessageQueue::Install([](const ZETOpenMessage& message) { Take(GetSeverity(message.type), message.text); });
}

void JobConsole::Warn(const QString& text)
{
    Take(GetSeverity(ZETSysMessageQueue::TypeWarning), text);
}

QList<JobMessage> JobConsole::GetMessages()
{
    return GetStore().kept + GetStore().current;
}

void JobConsole::TellRepeatedMessages()
{
    for (const JobMessage& message : std::as_const(GetStore().current)) {
        if (message.count > 1)
            WriteMessage(message.severity, QCoreApplication::translate("zetlaser-job", "%1 (%2 times in all)")
                                               .arg(message.text, QString::number(message.count)));
    }
    GetStore().current.clear();
    ZETOpenMessageQueue::Clear();
}

void JobConsole::KeepMessages()
{
    GetStore().kept = GetMessages();
    TellRepeatedMessages();
}
