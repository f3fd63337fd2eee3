#include "JobCommands.h"

#include "JobCheckCommand.h"
#include "JobCommandLine.h"
#include "JobConsole.h"
#include "JobConvertCommand.h"
#include "JobError.h"
#include "JobHelp.h"
#include "JobPreviewCommand.h"
#include "JobShapesCommand.h"
#include "JobWriteCommand.h"

#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

QList<JobCommand> MakeTable()
{
    QList<JobCommand> table{MakeWriteCommand(),   MakePreviewCommand(), MakeCheckCommand(),
                            MakeConvertCommand(), MakeShapesCommand(),  MakeHelpCommand()};
    for (JobCommand& command : table)
        command.options.prepend(MakeHelpOption(command));
    return table;
}

/*! A misspelt name of a command would else be told as a missing layup file. */
void CheckFirstWord(const QString& word)
{
    const bool looksLikeName = std::all_of(word.begin(), word.end(), [](QChar letter) { return letter.isLetter(); });
    if (!looksLikeName || QFileInfo::exists(word))
        return;
    const QString nearest = ZETOpenJsonDocument::GetNearest(word, JobCommands::GetNames());
    if (!nearest.isEmpty())
        throw JobError(
            JobExit::WrongCall,
            Translate("unknown command %1, did you mean %2? (zetlaser-job --help tells more)").arg(word, nearest));
}
} // namespace

QList<JobSetting> JobCommand::GetAllOptions() const
{
    QList<JobSetting> all = options;
    for (const JobSetting& shared : sharedOptions) {
        const bool isOwn = std::any_of(options.begin(), options.end(),
                                       [&](const JobSetting& option) { return option.key == shared.key; });
        if (!isOwn)
            all.append(shared);
    }
    return all;
}

const QList<JobCommand>& JobCommands::GetAll()
{
    static const QList<JobCommand> table = MakeTable();
    return table;
}

const QStringList& JobCommands::GetNames()
{
    static const QStringList names = [] {
        QStringList all;
        for (const JobCommand& command : GetAll().mid(1))
            all.append(command.name);
        return all;
    }();
    return names;
}

const JobCommand& JobCommands::GetCalled(const QString& word)
{
    for (const JobCommand& command : GetAll()) {
        if (command.name == word)
            return command;
    }
    return GetAll().first();
}

int JobCommands::Run(const QStringList& arguments)
{
    const QString word = arguments.value(0);
    const JobCommand& command = GetCalled(word);
    const bool isNamed = !command.name.isEmpty();
    if (!isNamed)
        CheckFirstWord(word);
    const JobCall call = ParseCommandLine(command, isNamed ? arguments.mid(1) : arguments);
    if (!call.answer)
        return command.run(call);
    JobConsole::WriteText(*call.answer);
    return static_cast<int>(JobExit::Written);
}
