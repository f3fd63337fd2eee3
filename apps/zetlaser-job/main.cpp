#include "JobCommandLine.h"
#include "JobConsole.h"
#include "JobError.h"
#include "JobRun.h"
#include "JobStaging.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>
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
    if (commandLine.layupFile.isEmpty())
        throw JobError(JobExit::WrongCall,
                       Translate("expected a layup file, found none (zetlaser-job --help tells more)"));
    JobSettings settings = commandLine.settings;
    if (!commandLine.settingsFile.isEmpty())
        settings.Complete(ReadSettingsFile(commandLine.settingsFile));
    JobConsole::ListenToMessageQueue();
    RunJob(commandLine.layupFile, settings);
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
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"zetlaser-job"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZETLASER_JOB_VERSION));
    try {
        Run(ParseCommandLine(QCoreApplication::arguments().mid(1)));
        return static_cast<int>(JobExit::Written);
    } catch (const JobError& error) {
        return Fail(error.GetExit(), error.GetText());
    } catch (const std::bad_alloc&) {
        return Fail(JobExit::Failed, Translate("not enough memory"));
    } catch (const std::exception& error) {
        return Fail(JobExit::Failed, Translate("the job failed: %1").arg(QString::fromUtf8(error.what())));
    }
}
