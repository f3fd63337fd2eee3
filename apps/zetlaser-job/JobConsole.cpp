#include "JobConsole.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"

#include <QCoreApplication>

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
} // namespace

void JobConsole::WriteResult(const QString& line)
{
    EndProgress();
    Write(stdout, line + u'\n');
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
    ZETOpenMessageQueue::Install(
        [](const ZETOpenMessage& message) { WriteMessage(GetSeverity(message.type), message.text); });
}
