#include "JobHelp.h"

#include "JobCommands.h"
#include "JobConsole.h"
#include "JobError.h"

#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int itemColumn = 2;
constexpr int textColumn = 6;
constexpr int textWidth = 96;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! \a text in lines of limited width, each indented. */
QString Wrap(const QString& text, int indentation)
{
    QString wrapped;
    QString line;
    for (const QString& word : text.split(u' ')) {
        if (!line.isEmpty() && indentation + line.size() + 1 + word.size() > textWidth) {
            wrapped += QString(indentation, u' ') + line + u'\n';
            line.clear();
        }
        line += line.isEmpty() ? word : u' ' + word;
    }
    return wrapped + QString(indentation, u' ') + line + u'\n';
}

QString FormatItem(const QString& name, const QString& text)
{
    return QString(itemColumn, u' ') + name + u'\n' + Wrap(text, textColumn);
}

QString FormatUsage(const JobCommand& command)
{
    QString lead = Translate("Usage: ");
    QString text;
    for (const QString& usage : command.usage) {
        text += lead + command.GetCall() + u' ' + usage + u'\n';
        lead.fill(u' ');
    }
    return text;
}

QString FormatCommands()
{
    QString text = Translate("\nCommands (zetlaser-job COMMAND --help tells more):\n");
    for (const JobCommand& command : JobCommands::GetAll().mid(1))
        text += FormatItem(command.name + u' ' + command.usage.first(), command.purpose);
    return text;
}

QString FormatOptions(const QList<JobSetting>& options)
{
    QString text;
    QString section;
    for (const JobSetting& option : options) {
        if (option.section != section)
            text += u'\n' + option.section + u":\n"_s;
        section = option.section;
        text += FormatItem(option.GetUsage(), option.help);
    }
    return text;
}

QString FormatExamples(const JobCommand& command)
{
    QString text = Translate("\nExamples:\n");
    for (const JobExample& example : command.examples)
        text += FormatItem(command.GetCall() + u' ' + example.arguments, example.purpose);
    return text;
}

QString FormatExitCodes(const QList<JobExitCode>& codes)
{
    QString text = Translate("\nExit codes:\n");
    for (const JobExitCode& code : codes)
        text += QString(itemColumn, u' ') + code.code + u"  "_s + code.meaning + u'\n';
    return text;
}

QString GetHelpText(const JobCommand& command)
{
    QString text = FormatUsage(command) + u'\n' + Wrap(command.description, 0);
    if (command.name.isEmpty())
        text += FormatCommands();
    text += FormatOptions(command.options);
    if (!command.notes.isEmpty())
        text += u'\n' + Wrap(command.notes, 0);
    if (!command.examples.isEmpty())
        text += FormatExamples(command);
    if (!command.exitCodes.isEmpty())
        text += FormatExitCodes(command.exitCodes);
    return text;
}

int RunHelp(const JobCall& call)
{
    const QString name = call.arguments.value(0);
    const JobCommand& command = JobCommands::GetCalled(name);
    if (command.name != name) {
        const QString nearest = ZETOpenJsonDocument::GetNearest(name, JobCommands::GetNames());
        throw JobError(JobExit::WrongCall, nearest.isEmpty()
                                               ? Translate("unknown command %1").arg(name)
                                               : Translate("unknown command %1, did you mean %2?").arg(name, nearest));
    }
    JobConsole::WriteText(GetHelpText(command));
    return static_cast<int>(JobExit::Written);
}
} // namespace

JobSetting MakeHelpOption(const JobCommand& command)
{
    return {.key = u"help"_s,
            .kind = JobSetting::Flag,
            .section = command.options.isEmpty() ? Translate("Options") : command.options.first().section,
            .help = Translate("Show this text."),
            .letter = u"h"_s,
            .answer = [](const JobCommand& called, const QVariant&) { return GetHelpText(called); }};
}

JobCommand MakeHelpCommand()
{
    return {
        .name = u"help"_s,
        .purpose = Translate("Tells the options of a command."),
        .usage = {u"[COMMAND]"_s},
        .description = Translate("Tells the options of a command, or those of a call without one."),
        .arguments = {{.placeholder = u"COMMAND"_s,
                       .noun = Translate("command"),
                       .isCommand = true,
                       .count = JobArgument::Optional}},
        .options = {},
        .exitCodes = {{u"0"_s, Translate("the text is shown")},
                      {u"2"_s, Translate("the command line is wrong")},
                      {u"4"_s, Translate("the standard output can't be written")}},
        .run = RunHelp,
    };
}
