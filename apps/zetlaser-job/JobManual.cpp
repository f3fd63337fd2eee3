#include "JobManual.h"

#include "JobCommands.h"
#include "JobPreviewPage.h"

#include "laser/ZETLaserOptions.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! \a text as it is to be read: hyphens and quotes that can be copied into a shell, and no line that is a request. */
QString Escape(QString text)
{
    text.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s).replace(u'\'', u"\\(aq"_s);
    return text.startsWith(u'.') ? u"\\&"_s + text : text;
}

QString Bold(const QString& text)
{
    return u"\\fB"_s + Escape(text) + u"\\fR"_s;
}

QString Italic(const QString& text)
{
    return u"\\fI"_s + Escape(text) + u"\\fR"_s;
}

/*! The page, as it grows. */
class Page
{
public:
    QString Write()
    {
        AddLine(u".TH ZETLASER\\-JOB 1 \"\" \"ZETLaser %1\" \"User Commands\""_s.arg(
            QCoreApplication::applicationVersion()));
        AddLine(u".nh\n.ad l"_s); // no word is parted: options are looked for, and copied
        AddSection(u"NAME"_s);
        AddLine(Escape(Translate("zetlaser-job - write part files for laser projectors from layup files")));
        AddSynopsis();
        const JobCommand& write = JobCommands::GetAll().first();
        AddSection(u"DESCRIPTION"_s);
        AddLine(Escape(write.description));
        AddSection(u"OPTIONS"_s);
        AddOptions(write);
        AddCommands();
        AddExitCodes();
        AddFiles();
        AddExamples();
        return page;
    }

private:
    void AddLine(const QString& line) { page += line + u'\n'; }
    void AddSection(const QString& name) { AddLine(u".SH "_s + name); }
    void AddSubsection(const QString& name) { AddLine(u".SS \"%1\""_s.arg(Escape(name))); }
    void AddParagraph(const QString& text) { AddLine(u".PP\n"_s + Escape(text)); }
    void AddItem(const QString& tag, const QString& text) { AddLine(u".TP\n"_s + tag + u'\n' + Escape(text)); }

    void AddSynopsis()
    {
        AddSection(u"SYNOPSIS"_s);
        AddLine(u".nf"_s);
        for (const JobCommand& command : JobCommands::GetAll()) {
            for (const QString& usage : command.usage)
                AddLine(Bold(command.GetCall()) + u' ' + Escape(usage));
        }
        AddLine(u".fi"_s);
    }

    void AddOption(const JobSetting& option)
    {
        const QString placeholder = option.GetPlaceholder();
        const QString flags = Bold(option.GetShownFlags());
        AddItem(placeholder.isEmpty() ? flags : flags + u' ' + Italic(placeholder), option.help);
    }

    /*! Those of the command without a name stand under the headings that they have in --help. */
    void AddOptions(const JobCommand& command)
    {
        QString section;
        for (const JobSetting& option : command.options) {
            if (command.name.isEmpty() && option.section != section)
                AddSubsection(option.section);
            section = option.section;
            AddOption(option);
        }
        if (!command.notes.isEmpty())
            AddParagraph(command.notes);
    }

    void AddCommands()
    {
        AddSection(u"COMMANDS"_s);
        for (const JobCommand& command : JobCommands::GetAll().mid(1)) {
            AddSubsection(command.GetCall());
            AddLine(Escape(command.description));
            AddOptions(command);
        }
    }

    /*! Commands that end alike are told together. */
    void AddExitCodes()
    {
        AddSection(u"EXIT STATUS"_s);
        const QList<JobCommand>& commands = JobCommands::GetAll();
        QStringList told;
        for (const JobCommand& command : commands) {
            if (told.contains(command.GetCall()))
                continue;
            QStringList alike;
            for (const JobCommand& other : commands) {
                if (other.exitCodes == command.exitCodes)
                    alike.append(other.GetCall());
            }
            told += alike;
            AddSubsection(alike.join(u", "_s));
            for (const JobExitCode& code : command.exitCodes)
                AddItem(Bold(code.code), code.meaning);
        }
    }

    void AddFiles()
    {
        AddSection(u"FILES"_s);
        AddItem(Italic(u"*.layup.json"_s),
                Translate("A layup file: the model, and the shape files that it stands on."));
        AddItem(Italic(u"*.json"_s), Translate("A settings file, for --settings."));
        for (int type = 0; type < JobSettingTable::GetTypeNames().size(); ++type) {
            const auto value = static_cast<ZETLaserOptions::EOutputFileType>(type);
            AddItem(Italic(u'*' + ZETLaserOptions::GetFileTypeExtensionString(value)),
                    Translate("A part file of the type %1 (--type %2).")
                        .arg(ZETLaserOptions::GetFileTypeString(value), JobSettingTable::GetTypeNames()[type]));
        }
        AddItem(Italic(JobPreviewPage::Library::GetDefaultFolder()),
                Translate("Where three.js stands, which the page of a preview is made with."));
    }

    void AddExamples()
    {
        AddSection(u"EXAMPLES"_s);
        for (const JobCommand& command : JobCommands::GetAll()) {
            for (const JobExample& example : command.examples)
                AddItem(Bold(command.GetCall() + u' ' + example.arguments), example.purpose);
        }
    }

    QString page;
};
} // namespace

JobSetting MakeManualOption(const QString& section)
{
    return {.key = u"man"_s,
            .kind = JobSetting::Flag,
            .section = section,
            .help = Translate("Show the manual page of the tool, as man(1) reads it: zetlaser-job --man | man -l -"),
            .answer = [](const JobCommand&, const QVariant&) { return Page().Write(); }};
}
