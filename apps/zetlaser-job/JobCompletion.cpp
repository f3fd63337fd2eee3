#include "JobCompletion.h"

#include "JobCommands.h"

#include <QCoreApplication>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! What a shell can complete a value or an argument with. */
struct Candidates {
    enum Kind { Nothing, Choice, List, File, Folder, Text }; //!< Nothing: there is no value; Text: it isn't known

    Kind kind;
    QStringList words = {}; //!< the choices, or the suffixes of files
};

Candidates GetCandidates(const JobSetting& option)
{
    switch (option.kind) {
    case JobSetting::Flag:
    case JobSetting::Switch:
        return {Candidates::Nothing};
    case JobSetting::Choice:
        return {Candidates::Choice, option.choices};
    case JobSetting::Choices:
        return {Candidates::List, option.choices};
    case JobSetting::File:
        return {Candidates::File, option.suffixes};
    case JobSetting::Folder:
        return {Candidates::Folder};
    default:
        return {option.choices.isEmpty() ? Candidates::Text : Candidates::Choice, option.choices};
    }
}

Candidates GetCandidates(const JobArgument& argument)
{
    if (argument.isCommand)
        return {Candidates::Choice, JobCommands::GetNames()};
    return {Candidates::File, argument.suffixes};
}

/*! \a text as one word of a shell, in which a quote is written as \a quote. */
QString Quote(QString text, const QString& quote)
{
    return u'\'' + text.replace(u'\'', quote) + u'\'';
}

/*! The frame of the script of a shell, whose places "@NAME@" are filled in. */
QString FillIn(const QString& shell, const QList<std::pair<QString, QString>>& places)
{
    QFile file(u":/completion/zetlaser-job."_s + shell);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no frame for the completion of %s", qPrintable(shell));
    QString text = QString::fromUtf8(file.readAll());
    text.replace(u"@NAMES@"_s, JobCommands::GetNames().join(u' '));
    for (auto [name, content] : places) {
        if (content.endsWith(u'\n')) // the frame has it
            content.chop(1);
        text.replace(u'@' + name + u'@', content);
    }
    return text;
}

namespace Bash
{
QString Format(const Candidates& candidates)
{
    static const QStringList kinds{QString(), u"choice"_s, u"list"_s, u"file"_s, u"folder"_s, u"text"_s};
    return (kinds[candidates.kind] + u' ' + candidates.words.join(u' ')).trimmed();
}

QString FormatCommand(const JobCommand& command)
{
    QStringList flags;
    for (const JobSetting& option : command.GetAllOptions())
        flags += option.GetFlags();
    QStringList arguments;
    for (const JobArgument& argument : command.arguments)
        arguments.append(u'"' + Format(GetCandidates(argument)) + u'"');
    QString text = u"        \"%1\")\n"_s.arg(command.name);
    text += u"            flags=\"%1\"\n"_s.arg(flags.join(u' '));
    text += u"            arguments=(%1)\n"_s.arg(arguments.join(u' '));
    if (!command.arguments.isEmpty() && command.arguments.last().count == JobArgument::OneOrMore)
        text += u"            isRepeated=1\n"_s;
    return text + u"            ;;\n"_s;
}

QString FormatOptions(const JobCommand& command)
{
    QString text;
    for (const JobSetting& option : command.GetAllOptions()) {
        const Candidates candidates = GetCandidates(option);
        if (candidates.kind == Candidates::Nothing)
            continue;
        const QString words = candidates.words.join(u' ');
        text += u"        \"%1 %2\") kind=%3 values=\"%4\" ;;\n"_s.arg(command.name, option.GetFlag(),
                                                                       Format({candidates.kind}), words);
    }
    return text;
}

QString Write()
{
    QString commands;
    QString options;
    for (const JobCommand& command : JobCommands::GetAll()) {
        commands += FormatCommand(command);
        options += FormatOptions(command);
    }
    return FillIn(u"bash"_s, {{u"COMMANDS"_s, commands}, {u"OPTIONS"_s, options}});
}
} // namespace Bash

namespace Zsh
{
QString QuoteWord(const QString& text)
{
    return Quote(text, u"'\\''"_s);
}

/*! A text within an argument of _arguments, in which some letters part fields. */
QString EscapeText(QString text)
{
    return text.replace(u'\\', u"\\\\"_s).replace(u':', u"\\:"_s).replace(u'[', u"\\["_s).replace(u']', u"\\]"_s);
}

QString FormatAction(const Candidates& candidates)
{
    const QString words = candidates.words.join(u' ');
    switch (candidates.kind) {
    case Candidates::Choice:
        return u'(' + words + u')';
    case Candidates::List:
        return u"_values -s , value "_s + words;
    case Candidates::File:
        return words.isEmpty() ? u"_files"_s : u"_files -g \"*.(#i)(%1)(-.)\""_s.arg(candidates.words.join(u'|'));
    case Candidates::Folder:
        return u"_files -/"_s;
    default:
        return u" "_s;
    }
}

QString FormatOption(const JobSetting& option)
{
    const QString help = u'[' + EscapeText(option.help) + u']';
    const Candidates candidates = GetCandidates(option);
    QString text;
    for (const QString& flag : option.GetFlags()) {
        if (candidates.kind == Candidates::Nothing) {
            text += u" \\\n                "_s + QuoteWord(flag + help);
            continue;
        }
        const QString lead = option.IsList() ? u"*"_s : QString(); // more than once
        text += u" \\\n                "_s +
                QuoteWord(lead + flag + u'=' + help + u':' + EscapeText(option.GetPlaceholder()) + u':' +
                          FormatAction(candidates));
    }
    return text;
}

QString FormatArgument(const JobCommand& command, const JobArgument& argument, qsizetype number)
{
    const QString place = argument.count == JobArgument::OneOrMore ? u"*"_s : QString::number(number);
    // A word at the first place may be a command as well.
    const QString action =
        command.name.isEmpty() && number == 1 ? u"_zetlaser_job_first"_s : FormatAction(GetCandidates(argument));
    return u" \\\n                "_s + QuoteWord(place + u':' + EscapeText(argument.noun) + u':' + action);
}

QString Write()
{
    QString commands;
    QString arguments;
    for (const JobCommand& command : JobCommands::GetAll()) {
        if (!command.name.isEmpty())
            commands += u"        "_s + QuoteWord(command.name + u':' + EscapeText(command.purpose)) + u'\n';
        arguments += u"        \"%1\")\n            _arguments -S"_s.arg(command.name);
        for (const JobSetting& option : command.GetAllOptions())
            arguments += FormatOption(option);
        for (qsizetype i = 0; i < command.arguments.size(); ++i)
            arguments += FormatArgument(command, command.arguments[i], i + 1);
        arguments += u"\n            ;;\n"_s;
    }
    const JobArgument& first = JobCommands::GetAll().first().arguments.first();
    return FillIn(
        u"zsh"_s,
        {{u"COMMANDS"_s, commands}, {u"ARGUMENTS"_s, arguments}, {u"FIRST"_s, FormatAction(GetCandidates(first))}});
}
} // namespace Zsh

namespace Fish
{
QString QuoteWord(QString text)
{
    return Quote(text.replace(u'\\', u"\\\\"_s), u"\\'"_s);
}

QString FormatAction(const Candidates& candidates)
{
    const QString words = candidates.words.join(u' ');
    switch (candidates.kind) {
    case Candidates::Choice:
        return QuoteWord(words);
    case Candidates::List:
        return u"'(__fish_append , %1)'"_s.arg(words);
    case Candidates::File: {
        QStringList suffixes;
        for (const QString& suffix : candidates.words)
            suffixes.append(u'.' + suffix);
        return u"'(__fish_complete_suffix %1)'"_s.arg(suffixes.join(u' '));
    }
    case Candidates::Folder:
        return u"'(__fish_complete_directories)'"_s;
    default:
        return {};
    }
}

/*! " -x -a ..." */
QString FormatValue(const Candidates& candidates)
{
    switch (candidates.kind) {
    case Candidates::Nothing:
        return {};
    case Candidates::Text:
        return u" -x"_s;
    case Candidates::File:
        return candidates.words.isEmpty() ? u" -r -F"_s : u" -x -k -a "_s + FormatAction(candidates);
    default:
        return u" -x -a "_s + FormatAction(candidates);
    }
}

QString FormatOption(const QString& lead, const JobSetting& option)
{
    QString text;
    for (const QString& flag : option.GetFlags()) {
        const QString form = flag.startsWith(u"--"_s) ? u" -l "_s + flag.mid(2) : u" -s "_s + flag.mid(1);
        text += lead + form + FormatValue(GetCandidates(option)) + u" -d "_s + QuoteWord(option.help) + u'\n';
    }
    return text;
}

QString Write()
{
    QString text;
    for (const JobCommand& command : JobCommands::GetAll()) {
        const QString lead = u"complete -c zetlaser-job -n '__zetlaser_job_calls \"%1\"'"_s.arg(command.name);
        if (!command.name.isEmpty())
            text += u"complete -c zetlaser-job -n __fish_is_first_token -a %1 -d %2\n"_s.arg(
                command.name, QuoteWord(command.purpose));
        for (const JobSetting& option : command.GetAllOptions())
            text += FormatOption(lead, option);
        for (const JobArgument& argument : command.arguments)
            text += lead + u" -k -a "_s + FormatAction(GetCandidates(argument)) + u'\n';
    }
    return FillIn(u"fish"_s, {{u"COMPLETIONS"_s, text}});
}
} // namespace Fish

QString WriteCompletion(const JobCommand&, const QVariant& shell)
{
    static constexpr QString (*writers[])(){Bash::Write, Zsh::Write, Fish::Write};
    return writers[shell.toInt()]();
}
} // namespace

JobSetting MakeCompletionOption(const QString& section)
{
    return {.key = u"completion"_s,
            .kind = JobSetting::Choice,
            .section = section,
            .help = Translate("Show the script with which that shell completes command lines of the tool."),
            .choices = {u"bash"_s, u"zsh"_s, u"fish"_s}, // in the order of the writers
            .answer = WriteCompletion};
}
