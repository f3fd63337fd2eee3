#include "JobCommandLine.h"

#include "JobCommands.h"
#include "JobError.h"

#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! One flag as it was written, and what it stands for. */
struct Flag {
    QString name;  //!< "--max-length"
    QString value; //!< behind "="
    bool hasValue = false;
};

Flag SplitFlag(const QString& argument)
{
    const auto at = argument.indexOf(u'=');
    if (at < 0)
        return {argument, QString(), false};
    return {argument.left(at), argument.mid(at + 1), true};
}

/*! Walks through the arguments once. */
class Parser
{
public:
    Parser(const JobCommand& called, const QStringList& given)
        : command(called)
        , options(called.GetAllOptions())
        , words(given)
    {
    }

    JobCall Parse()
    {
        bool isFlagsEnd = false;
        while (next < words.size()) {
            const QString word = words[next++];
            if (!isFlagsEnd && word == u"--"_s)
                isFlagsEnd = true;
            else if (!isFlagsEnd && word.size() > 1 && word.startsWith(u'-'))
                ParseFlag(SplitFlag(word));
            else
                TakeArgument(word);
        }
        if (!result.answer)
            CheckArguments();
        return result;
    }

private:
    [[noreturn]] void Fail(const QString& text) const
    {
        throw JobError(JobExit::WrongCall, Translate("%1 (%2 --help tells more)").arg(text, command.GetCall()));
    }

    [[noreturn]] void FailUnknown(const QString& name) const
    {
        for (const JobCommand& other : JobCommands::GetAll()) {
            for (const JobSetting& option : other.GetAllOptions()) {
                if (option.GetFlags().contains(name))
                    Fail(Translate("%1 is an option of \"%2\", not of \"%3\"")
                             .arg(name, other.GetCall(), command.GetCall()));
            }
        }
        QStringList flags;
        for (const JobSetting& option : options)
            flags += option.GetFlags();
        const QString nearest = ZETOpenJsonDocument::GetNearest(name, flags);
        Fail(nearest.isEmpty() ? Translate("unknown option %1").arg(name)
                               : Translate("unknown option %1, did you mean %2?").arg(name, nearest));
    }

    void TakeArgument(const QString& word)
    {
        const QList<JobArgument>& expected = command.arguments;
        const bool isOneMore = !expected.isEmpty() && expected.last().count == JobArgument::OneOrMore;
        if (result.arguments.size() >= expected.size() && !isOneMore) {
            Fail(expected.size() == 1
                     ? Translate("expected one %1, found a second one: %2").arg(expected.first().noun, word)
                     : Translate("expected %1 arguments, found one more: %2").arg(expected.size()).arg(word));
        }
        if (word.isEmpty()) {
            const qsizetype at = std::min(result.arguments.size(), expected.size() - 1);
            Fail(Translate("expected a %1, found an empty argument").arg(expected[at].noun));
        }
        result.arguments.append(word);
    }

    void CheckArguments() const
    {
        const qsizetype given = result.arguments.size();
        if (given < command.arguments.size() && command.arguments[given].count != JobArgument::Optional)
            Fail(Translate("expected a %1, found none").arg(command.arguments[given].noun));
    }

    void ParseFlag(const Flag& flag)
    {
        for (const JobSetting& option : options) {
            if (option.GetFlags().contains(flag.name)) {
                TakeOption(option, flag);
                return;
            }
        }
        FailUnknown(flag.name);
    }

    void TakeOption(const JobSetting& option, const Flag& flag)
    {
        QVariant value;
        if (option.kind == JobSetting::Switch || option.kind == JobSetting::Flag) {
            if (flag.hasValue)
                Fail(Translate("expected no value behind %1, found \"%2\"").arg(flag.name, flag.value));
            value = flag.name != option.GetNegatedFlag();
        } else {
            value = ParseValue(option, flag);
        }
        if (option.answer)
            result.answer = option.answer(command, value);
        result.settings.Set(option.key, value);
    }

    QVariant ParseValue(const JobSetting& option, const Flag& flag)
    {
        const QString text = TakeText(flag);
        QString expected;
        const QVariant value = JobSettingTable::ParseText(option, text, expected);
        if (!value.isValid())
            Fail(Translate("%1: expected %2, found \"%3\"").arg(flag.name, expected, text));
        if (!option.IsList())
            return value;
        // A flag for each name is the same as one flag for all.
        return result.settings.GetList(option.key) + value.toStringList();
    }

    QString TakeText(const Flag& flag)
    {
        if (flag.hasValue)
            return flag.value;
        if (next >= words.size())
            Fail(Translate("expected a value behind %1, found none").arg(flag.name));
        return words[next++];
    }

    const JobCommand& command;
    const QList<JobSetting> options;
    const QStringList& words;
    qsizetype next = 0;
    JobCall result;
};
} // namespace

JobCall ParseCommandLine(const JobCommand& command, const QStringList& arguments)
{
    return Parser(command, arguments).Parse();
}
