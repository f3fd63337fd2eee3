#include "JobConsole.h"

#include "check/CheckReport.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <ZETMathematics/ZETMathBoundingBox.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QList>

#include <cstdio>

#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
void Write(std::FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
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

/*! A message and how often it came. */
struct CountedMessage {
    ZETOpenMessage message;
    int count = 1;
};

QList<CountedMessage>& GetMessages()
{
    static QList<CountedMessage> messages; // in the order in which they first came
    return messages;
}

void TakeMessage(const ZETOpenMessage& message)
{
    for (CountedMessage& earlier : GetMessages()) {
        if (earlier.message.text == message.text && earlier.message.type == message.type) {
            ++earlier.count;
            return;
        }
    }
    GetMessages().append({message});
    JobConsole::WriteMessage(GetSeverity(message.type), message.text);
}
} // namespace

void JobConsole::WriteResult(const QString& line)
{
    EndProgress();
    Write(stdout, line + u'\n');
}

void JobConsole::WriteWritten(const QStringList& files)
{
    for (const QString& file : files) {
        const QString relative = QDir().relativeFilePath(file);
        WriteResult(QCoreApplication::translate("zetlaser-job", "written: %1 (%2 bytes)")
                        .arg(relative.startsWith(u".."_s) ? file : relative)
                        .arg(QFileInfo(file).size()));
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
    ZETOpenMessageQueue::Install(TakeMessage);
}

void JobConsole::TellRepeatedMessages()
{
    for (const CountedMessage& counted : std::as_const(GetMessages())) {
        if (counted.count > 1)
            WriteMessage(GetSeverity(counted.message.type),
                         QCoreApplication::translate("zetlaser-job", "%1 (%2 times in all)")
                             .arg(counted.message.text)
                             .arg(counted.count));
    }
    GetMessages().clear();
    ZETOpenMessageQueue::Clear();
}
