#include "JobCommandLine.h"

#include "JobError.h"

#include "laser/ZETLaserOptions.h"
#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int helpColumn = 4;
constexpr int helpWidth = 96;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void FailCall(const QString& text)
{
    throw JobError(JobExit::WrongCall, text + Translate(" (zetlaser-job --help tells more)"));
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

QStringList GetAllFlags()
{
    QStringList flags{u"--help"_s, u"--version"_s, u"--list-types"_s, u"--settings"_s};
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        flags.append(setting.GetFlag());
        if (setting.kind == JobSetting::Switch)
            flags.append(u"--no-"_s + setting.GetFlag().mid(2));
    }
    return flags;
}

[[noreturn]] void FailUnknown(const QString& name)
{
    const QString nearest = ZETOpenJsonDocument::GetNearest(name, GetAllFlags());
    FailCall(nearest.isEmpty() ? Translate("unknown option %1").arg(name)
                               : Translate("unknown option %1, did you mean %2?").arg(name, nearest));
}

/*! The switch that \a name turns off: "--no-output-rosette". */
const JobSetting* FindNegated(const QString& name)
{
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        if (setting.kind == JobSetting::Switch && name == u"--no-"_s + setting.GetFlag().mid(2))
            return &setting;
    }
    return nullptr;
}

const JobSetting* FindByFlag(const QString& name)
{
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        if (setting.GetFlag() == name)
            return &setting;
    }
    return nullptr;
}

/*! Walks through the arguments once. */
class Parser
{
public:
    explicit Parser(const QStringList& given)
        : arguments(given)
    {
    }

    JobCommandLine Parse()
    {
        bool isFlagsEnd = false;
        while (next < arguments.size()) {
            const QString argument = arguments[next++];
            if (!isFlagsEnd && argument == u"--"_s)
                isFlagsEnd = true;
            else if (!isFlagsEnd && argument.size() > 1 && argument.startsWith(u'-'))
                ParseFlag(SplitFlag(argument));
            else
                TakeLayupFile(argument);
        }
        return result;
    }

private:
    void TakeLayupFile(const QString& argument)
    {
        if (!result.layupFile.isEmpty())
            FailCall(Translate("expected one layup file, found a second one: %1").arg(argument));
        if (argument.isEmpty())
            FailCall(Translate("expected a layup file, found an empty argument"));
        result.layupFile = argument;
    }

    QString TakeValue(const Flag& flag)
    {
        if (flag.hasValue)
            return flag.value;
        if (next >= arguments.size())
            FailCall(Translate("expected a value behind %1, found none").arg(flag.name));
        return arguments[next++];
    }

    void ParseFlag(const Flag& flag)
    {
        if (flag.name == u"--help"_s || flag.name == u"-h"_s)
            result.action = JobCommandLine::ShowHelp;
        else if (flag.name == u"--version"_s)
            result.action = JobCommandLine::ShowVersion;
        else if (flag.name == u"--list-types"_s)
            result.action = JobCommandLine::ListTypes;
        else if (flag.name == u"--settings"_s)
            result.settingsFile = TakeValue(flag);
        else if (const JobSetting* negated = FindNegated(flag.name))
            TakeSwitch(*negated, flag, false);
        else if (const JobSetting* setting = FindByFlag(flag.name))
            TakeSetting(*setting, flag);
        else
            FailUnknown(flag.name);
    }

    void TakeSwitch(const JobSetting& setting, const Flag& flag, bool isOn)
    {
        if (flag.hasValue)
            FailCall(Translate("expected no value behind %1, found \"%2\"").arg(flag.name, flag.value));
        result.settings.Set(setting.key, isOn);
    }

    void TakeSetting(const JobSetting& setting, const Flag& flag)
    {
        if (setting.kind == JobSetting::Switch) {
            TakeSwitch(setting, flag, true);
            return;
        }
        const QString text = TakeValue(flag);
        QString expected;
        QVariant value = JobSettingTable::ParseText(setting, text, expected);
        if (!value.isValid())
            FailCall(Translate("%1: expected %2, found \"%3\"").arg(flag.name, expected, text));
        if (setting.kind == JobSetting::List) // a flag for each name is the same as one flag for all
            value = result.settings.GetList(setting.key) + value.toStringList();
        result.settings.Set(setting.key, value);
    }

    const QStringList& arguments;
    qsizetype next = 0;
    JobCommandLine result;
};

/*! \a text in lines of limited width, each indented. */
QString Wrap(const QString& text, int indentation)
{
    QString wrapped;
    QString line;
    for (const QString& word : text.split(u' ')) {
        if (!line.isEmpty() && indentation + line.size() + 1 + word.size() > helpWidth) {
            wrapped += QString(indentation, u' ') + line + u'\n';
            line.clear();
        }
        line += line.isEmpty() ? word : u' ' + word;
    }
    return wrapped + QString(indentation, u' ') + line + u'\n';
}

QString GetExitText()
{
    return Translate("Exit codes:\n"
                     "  0  all files are written\n"
                     "  1  nothing to write: no ply is selected\n"
                     "  2  the command line is wrong\n"
                     "  3  the layup file, a shape file or the settings file is wrong or can't be read\n"
                     "  4  the files can't be written: no permission, no room, no such folder\n"
                     "  5  the job failed\n"
                     "  128 + N  interrupted by the signal N (130: Ctrl-C)\n");
}
} // namespace

JobCommandLine ParseCommandLine(const QStringList& arguments)
{
    return Parser(arguments).Parse();
}

QString GetHelpText()
{
    QString text =
        Translate("Usage: zetlaser-job LAYUP --type TYPE --output FILE [options]\n"
                  "       zetlaser-job preview LAYUP --output BASE [options]   (preview --help tells more)\n"
                  "\n"
                  "Reads a layup file and writes its plies as a part file for a laser projector, with the files\n"
                  "that belong to it and a report. Files are written beside their place and moved over when all\n"
                  "of them are whole, so a job that fails or is interrupted leaves earlier files as they were.\n"
                  "\n"
                  "General:\n");
    const auto add = [&](const QString& usage, const QString& help) {
        text += u"  "_s + usage + u'\n' + Wrap(help, 2 + helpColumn);
    };
    add(u"-h, --help"_s, Translate("Show this text."));
    add(u"--version"_s, Translate("Show the version."));
    add(u"--list-types"_s, Translate("Show the types of files that can be written."));
    add(u"--settings FILE"_s,
        Translate("Take settings from a JSON file. Its keys are the names of the options below, written as in "
                  "\"minimizePointsTolerance\"; flags go before it."));
    QString section;
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        if (setting.section != section)
            text += u'\n' + setting.section + u":\n"_s;
        section = setting.section;
        add(setting.GetUsage(), setting.help);
    }
    text +=
        u'\n' + Wrap(Translate("Where an option isn't given, the manufacturing configuration decides about normals, "
                               "rosette, seeds, extra geometry and parent plies; all else has the library's default. "
                               "Lengths are in mm, whatever the unit of the written file."),
                     0);
    return text + u'\n' + GetExitText();
}

QString GetTypeListText()
{
    QString text;
    for (int type = 0; type < JobSettingTable::GetTypeNames().size(); ++type) {
        const auto value = static_cast<ZETLaserOptions::EOutputFileType>(type);
        text += JobSettingTable::GetTypeNames()[type].leftJustified(20) + ZETLaserOptions::GetFileTypeString(value) +
                u" (*"_s + ZETLaserOptions::GetFileTypeExtensionString(value) + u")\n"_s;
    }
    return text;
}
