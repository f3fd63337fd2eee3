#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class ZETLaserOptions;
class ZETOpenJsonValue;

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

/*! One setting of a job: the row that its flag, its key in a settings file, its line in --help and its line in the
 *  documents are made of. */
struct JobSetting {
    enum Kind { Switch, Text, Path, List, Number, Length, Integer, Choice, Color };

    QString key; //!< in a settings file; the flag is the same in small letters with hyphens
    Kind kind;
    QString section;     //!< heading in --help
    QString help;        //!< one sentence
    QStringList choices; //!< of a Choice, in the order of the option's values
    /*! Puts the value into the record; null for what the tool itself does. */
    std::function<void(ZETLaserOptions&, const QVariant&)> apply;
    /*! Has to be set again behind the configuration, which replaces it. */
    bool isBehindConfiguration = false;

    /*! "--max-length" */
    QString GetFlag() const;
    /*! "--max-length MM", "--[no-]output-rosette" */
    QString GetUsage() const;
};

namespace JobSettingTable
{
/*! All settings, in the order of --help. */
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

/*! Reads a settings file: a JSON object whose keys are those of the table. Throws JobError. */
JobSettings ReadSettingsFile(const QString& file);
