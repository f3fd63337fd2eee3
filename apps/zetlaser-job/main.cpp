#include "JobCommands.h"
#include "JobConsole.h"
#include "JobError.h"
#include "JobStaging.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <exception>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

void TellFatalOnly(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtFatalMsg || type == QtCriticalMsg)
        std::fputs(qPrintable(qFormatLogMessage(type, context, text) + u'\n'), stderr);
}

/*! The first file that is opened would stand in for a stream that the caller has closed, and take what is told to the
 *  user. */
void OccupyClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // the other way round: it stays unusable
    }
}

/*! Qt draws texts with a platform only. The one without a screen works everywhere. */
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv)
{
    const QString word = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (!JobCommands::GetCalled(word).isDrawing)
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt warns of run-time folders that a build server doesn't have, and that a picture doesn't need.
    const QtMessageHandler before = qInstallMessageHandler(TellFatalOnly);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(before);
    return application;
}
} // namespace

int main(int argc, char** argv)
{
    OccupyClosedStreams();
    JobStaging::WatchForInterruption(); // ahead of everything that might make threads
    // The library's log is for its developers, who set QT_LOGGING_RULES; what a user has to know is in the messages.
    QLoggingCategory::setFilterRules(u"default.debug=false"_s);
    const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
    QCoreApplication::setApplicationName(u"zetlaser-job"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZETLASER_JOB_VERSION));
    try {
        const int exit = JobCommands::Run(QCoreApplication::arguments().mid(1));
        JobConsole::RequireResultsWritten();
        return exit;
    } catch (const std::exception&) {
        const JobError error = JobError::OfCurrentException();
        JobConsole::WriteMessage(Translate("error"), error.GetText());
        return static_cast<int>(error.GetExit());
    }
}
