#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class ZETLaserOptions;
class ZETOpenJsonValue;
struct JobCommand;

/*! Everything that can be said of a job, by flag or in a settings file, as values by key. A key that was never set has
 *  no value, and the default of the library or of the model's configuration stands. */
class JobSettings
{
public:
    bool Has(const QString& key) const { return values.contains(key); }
    QVariant Get(const QString& key) const { return values.value(key); }
    QString GetText(const QString& key) const { return values.value(key).toString(); }
    QStringList GetList(const QString& key) const { return values.value(key).toStringList(); }
    void Set(const QString& key, const QVariant& value) { values.insert(key, value); }
    /*! Takes over the values of \a other that aren't set here. */
    void Complete(const JobSettings& other);

private:
    QHash<QString, QVariant> values;
};

/*! One option of a command: the row that its flag, its line in --help and its line in the documents are made of, and
 *  for a setting of a job its key in a settings file. */
struct JobSetting {
    /*! A Switch can be turned off, by "--no-"; a Flag can't. Choices are some of the choices, a List is any names,
     *  a Scale is above 0. */
    enum Kind { Flag, Switch, Text, File, Folder, List, Scale, Length, Integer, Choice, Choices, Color, PixelSize };

    /*! How the value gets into the library's record of options, and which one is in there. Both are null for what the
     *  tool itself does. */
    struct Record {
        std::function<void(ZETLaserOptions&, const QVariant&)> apply = {};
        std::function<QVariant(const ZETLaserOptions&)> read = {};
    };

    QString key; //!< in a settings file; the flag is the same in small letters with hyphens
    Kind kind;
    QString section;          //!< heading in --help
    QString help;             //!< one sentence
    QStringList choices = {}; //!< of a Choice in the order of the option's values; of a Text those that are offered
    Record record = {};
    /*! Has to be set again behind the configuration, which replaces it. */
    bool isBehindConfiguration = false;
    QString placeholder = {};  //!< of the value in --help; empty: that of the kind
    QStringList suffixes = {}; //!< of the files that are meant; none: any
    QString letter = {};       //!< short form of the flag, as in "-h"
    /*! Where the option asks for a text instead of a run of the command: that text, with its line ends. */
    std::function<QString(const JobCommand&, const QVariant&)> answer = {};

    /*! "--max-length" */
    QString GetFlag() const;
    /*! "--no-output-rosette"; empty but for a Switch. */
    QString GetNegatedFlag() const;
    /*! All that can be written: flag, negated flag, letter. */
    QStringList GetFlags() const;
    /*! The flags as they are shown: "--max-length", "--[no-]output-rosette", "-h, --help". */
    QString GetShownFlags() const;
    /*! "MM"; empty for an option without a value. */
    QString GetPlaceholder() const;
    /*! Shown flags and placeholder: "--max-length MM" */
    QString GetUsage() const;
    /*! Its value is a list, which the names of each further flag are added to. */
    bool IsList() const { return kind == List || kind == Choices; }
};

namespace JobSettingTable
{
/*! All settings of a job, in the order of --help. */
const QList<JobSetting>& GetAll();
/*! Null if there is none. */
const JobSetting* FindByKey(const QString& key);

/*! The short names of the file types, by their value. */
const QStringList& GetTypeNames();
/*! The value of a type's short name or of the make's own name; -1 if there is none. Case doesn't count. */
int FindType(const QString& name);

/*! The value of \a text for \a setting; an invalid one, with \a expected, if it is none. */
QVariant ParseText(const JobSetting& setting, const QString& text, QString& expected);
/*! The value of a settings file; throws ZETOpenJsonError. */
QVariant ParseJson(const JobSetting& setting, const ZETOpenJsonValue& value);
} // namespace JobSettingTable

/*! What a settings file says: a JSON object whose keys are those of the table, and "outputs", an array of such objects
 *  for several outputs of one model. Flags go before all of it, and an output's own keys before the common ones. */
struct JobSettingsFile {
    JobSettings common;         //!< what stands outside of "outputs"
    QList<JobSettings> outputs; //!< what each of them says for itself; empty in a file without "outputs"

    /*! Reads the file that the setting "settings" of \a flags names; without one, nothing is said. Throws JobError. */
    static JobSettingsFile Read(const JobSettings& flags);

    /*! For what isn't written as an output: the common settings, with those of \a flags. Throws JobError where one of
     *  \a flags has no effect. */
    JobSettings GetCommon(const JobSettings& flags) const;
    /*! The settings of each output, at least one. Throws JobError where \a flags would make several outputs the same,
     *  or where one of them has no effect. */
    QList<JobSettings> GetOutputs(const JobSettings& flags) const;
};
