#include "JobCommandLine.h"
#include "JobConsole.h"
#include "JobError.h"
#include "JobPreview.h"
#include "JobRun.h"
#include "JobStaging.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <new>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

void Print(const QString& text)
{
    std::fputs(text.toUtf8().constData(), stdout);
}

/*! The settings of the flags and of the settings file. */
JobSettings GetSettings(const JobCommandLine& commandLine)
{
    if (commandLine.layupFile.isEmpty())
        throw JobError(JobExit::WrongCall,
                       Translate("expected a layup file, found none (zetlaser-job --help tells more)"));
    JobSettings settings = commandLine.settings;
    if (!commandLine.settingsFile.isEmpty())
        settings.Complete(ReadSettingsFile(commandLine.settingsFile));
    return settings;
}

void Run(const JobCommandLine& commandLine)
{
    switch (commandLine.action) {
    case JobCommandLine::ShowHelp:
        Print(GetHelpText());
        return;
    case JobCommandLine::ShowVersion:
        Print(u"zetlaser-job "_s + QCoreApplication::applicationVersion() + u'\n');
        return;
    case JobCommandLine::ListTypes:
        Print(GetTypeListText());
        return;
    case JobCommandLine::Write:
        break;
    }
    const JobSettings settings = GetSettings(commandLine);
    JobConsole::ListenToMessageQueue();
    RunJob(commandLine.layupFile, settings);
}

void Preview(const JobPreviewCommandLine& commandLine)
{
    if (commandLine.isHelp) {
        Print(GetPreviewHelpText());
        return;
    }
    if (commandLine.job.action != JobCommandLine::Write) {
        Run(commandLine.job);
        return;
    }
    const JobSettings settings = GetSettings(commandLine.job);
    JobConsole::ListenToMessageQueue();
    RunPreview(commandLine, settings);
}

bool IsPreview(int argc, char** argv)
{
    return argc > 1 && std::strcmp(argv[1], "preview") == 0;
}

void TellFatalOnly(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtFatalMsg || type == QtCriticalMsg)
        std::fputs(qPrintable(qFormatLogMessage(type, context, text) + u'\n'), stderr);
}

/*! A preview draws texts, which Qt does with a platform only. The one without a screen works everywhere. */
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv)
{
    if (!IsPreview(argc, argv))
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt warns of run-time folders that a build server doesn't have, and that a picture doesn't need.
    const QtMessageHandler before = qInstallMessageHandler(TellFatalOnly);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(before);
    return application;
}

int Fail(JobExit exit, const QString& text)
{
    JobConsole::WriteMessage(Translate("error"), text);
    return static_cast<int>(exit);
}
} // namespace

int main(int argc, char** argv)
{
    JobStaging::WatchForInterruption(); // ahead of everything that might make threads
    const bool isPreview = IsPreview(argc, argv);
    const std::unique_ptr<QCoreApplication> application = MakeApplication(argc, argv);
    QCoreApplication::setApplicationName(u"zetlaser-job"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZETLASER_JOB_VERSION));
    try {
        const QStringList arguments = QCoreApplication::arguments();
        if (isPreview)
            Preview(ParsePreviewCommandLine(arguments.mid(2)));
        else
            Run(ParseCommandLine(arguments.mid(1)));
        return static_cast<int>(JobExit::Written);
    } catch (const JobError& error) {
        return Fail(error.GetExit(), error.GetText());
    } catch (const std::bad_alloc&) {
        return Fail(JobExit::Failed, Translate("not enough memory"));
    } catch (const std::exception& error) {
        return Fail(JobExit::Failed, Translate("the job failed: %1").arg(QString::fromUtf8(error.what())));
    }
}
