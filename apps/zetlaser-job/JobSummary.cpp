#include "JobSummary.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobInputs.h"
#include "JobPly.h"
#include "JobSelection.h"
#include "JobSettings.h"
#include "JobTargets.h"
#include "JobThinning.h"

#include "laser/ZETLaserOptions.h"

#include <ZETMaterial/ZETMatMaterial.h>

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int formatVersion = 1;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

double Round(double value)
{
    constexpr double unit = 1e6;
    return std::round(value * unit) / unit;
}

QJsonArray ToJson(const ZETMathPoint& point)
{
    return {Round(point.GetX()), Round(point.GetY()), Round(point.GetZ())};
}

QJsonValue ToJson(const ZETMatMaterial* material)
{
    if (!material)
        return QJsonValue::Null;
    return QJsonObject{{u"name"_s, material->GetLabel()},
                       {u"type"_s, material->GetMaterialType()},
                       {u"id"_s, material->GetMaterialId()}};
}

QJsonObject ToJson(const JobThinnedPly& thinned)
{
    const JobPly ply(*thinned.feature);
    return {{u"layup"_s, ply.layup},
            {u"sequence"_s, ply.sequence},
            {u"parent"_s, ply.parent.isEmpty() ? QJsonValue() : ply.parent},
            {u"name"_s, ply.name},
            {u"material"_s, ToJson(ply.material)},
            {u"direction"_s, Round(ply.direction)},
            {u"curves"_s, thinned.curves},
            {u"pointsBefore"_s, thinned.pointsBefore},
            {u"pointsAfter"_s, thinned.pointsAfter},
            {u"worstDeviation"_s, Round(thinned.worstDeviation)},
            {u"length"_s, Round(thinned.length)}};
}

/*! An array of what \a toElement makes of each element of \a list. */
template <typename List, typename ToElement>
QJsonArray MakeArray(const List& list, ToElement toElement)
{
    QJsonArray array;
    for (const auto& element : list)
        array.append(toElement(element));
    return array;
}

QJsonObject ToJson(const JobTarget& target)
{
    return {{u"name"_s, target.name}, {u"at"_s, ToJson(target.place)}, {u"drift"_s, target.isDrift}};
}

QJsonObject ToJson(const JobSharedTargets& shared)
{
    return {{u"projector"_s, shared.projector}, {u"targets"_s, QJsonArray::fromStringList(shared.targets)}};
}

QJsonObject ToJson(const JobProjector& projector)
{
    return {{u"name"_s, projector.name.isEmpty() ? QJsonValue() : projector.name},
            {u"targets"_s, MakeArray(projector.targets, [](const auto& target) { return ToJson(target); })},
            {u"spread"_s, Round(projector.spread)},
            {u"width"_s, Round(projector.width)},
            {u"shared"_s, MakeArray(projector.shared, [](const auto& shared) { return ToJson(shared); })}};
}

/*! The words of a summary that depend on where it comes to. */
class Writer
{
public:
    explicit Writer(const QString& file)
        : folder(QFileInfo(file).absolutePath())
    {
    }

    QString GetName(const QString& file) const { return folder.relativeFilePath(QFileInfo(file).absoluteFilePath()); }

    QJsonObject WriteInput(const JobInputs::File& file) const
    {
        QJsonObject object = WriteFile(file.name, file.size, file.sha256);
        object.insert(u"kind"_s, file.kind);
        return object;
    }

    /*! The files of \a place, by the names that they come to. */
    void WriteFiles(const JobStaging& place, QJsonArray& files) const
    {
        for (const QString& name : place.GetNames()) {
            const QString file = place.GetPath() + u'/' + name;
            files.append(WriteFile(place.GetFinalPath(name), QFileInfo(file).size(), JobInputs::GetSha256(file)));
        }
    }

    QJsonValue WriteSetting(const JobSetting& setting, const QVariant& value) const
    {
        switch (setting.kind) {
        case JobSetting::Choice:
            return setting.choices.value(value.toInt());
        case JobSetting::Color:
            return value.value<QColor>().name();
        case JobSetting::File:
        case JobSetting::Folder:
            return value.toString().isEmpty() ? QJsonValue() : GetName(value.toString());
        case JobSetting::List:
            return value.toStringList().isEmpty() ? QJsonValue() : QJsonArray::fromStringList(value.toStringList());
        case JobSetting::Text:
            return value.toString().isEmpty() ? QJsonValue() : value.toString();
        default:
            return QJsonValue::fromVariant(value);
        }
    }

    /*! Where the text has an input file with a path of this machine, it gets the name that the summary has for it. */
    QJsonObject WriteMessage(const JobMessage& message, const JobInputs& inputs) const
    {
        QString text = message.text;
        for (const JobInputs::File& file : inputs.GetFiles()) {
            if (QDir::isAbsolutePath(file.name))
                text.replace(file.name, GetName(file.name));
        }
        return {{u"severity"_s, message.severity}, {u"text"_s, text}, {u"count"_s, message.count}};
    }

private:
    QJsonObject WriteFile(const QString& file, qint64 size, const QByteArray& sha256) const
    {
        return {{u"file"_s, GetName(file)},
                {u"size"_s, size},
                {u"sha256"_s, sha256.isEmpty() ? QJsonValue() : QString::fromLatin1(sha256)}};
    }

    QDir folder;
};

/*! The summary doesn't take the place of another file of the job. */
void CheckPlace(const QString& fileName, const QList<const JobStaging*>& places)
{
    for (const JobStaging* place : places) {
        for (const QString& name : place->GetNames()) {
            if (JobInputs::IsSame(place->GetFinalPath(name), fileName))
                throw JobError(
                    JobExit::CannotWrite,
                    Translate("can't write the summary %1: the job writes another file there").arg(fileName));
        }
    }
}
} // namespace

JobSummary::JobSummary(const QString& summaryFile)
    : name(QFileInfo(summaryFile).fileName())
    , place(JobStaging::CheckFile(summaryFile))
{
}

void JobSummary::Write(const JobInputs& inputs, const JobSettings& settings, const ZETLaserOptions& options,
                       const JobThinning& thinning, const QList<const JobStaging*>& places) const
{
    inputs.CheckUnchanged();
    CheckPlace(GetFile(), places);
    const Writer writer(GetFile());
    QJsonObject inForce;
    for (const JobSetting& setting : JobSettingTable::GetAll())
        inForce.insert(setting.key, writer.WriteSetting(setting, GetValueInForce(setting, settings, options)));
    QJsonArray files;
    for (const JobStaging* other : places)
        writer.WriteFiles(*other, files);
    const QJsonObject summary{
        {u"format"_s, u"zetlaser-summary"_s},
        {u"version"_s, formatVersion},
        {u"tool"_s, QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion()},
        {u"inputs"_s, MakeArray(inputs.GetFiles(), [&](const auto& file) { return writer.WriteInput(file); })},
        {u"options"_s, inForce},
        {u"messages"_s,
         MakeArray(JobConsole::GetMessages(), [&](const auto& told) { return writer.WriteMessage(told, inputs); })},
        {u"projectors"_s,
         MakeArray(JobTargets(options).GetProjectors(), [](const auto& projector) { return ToJson(projector); })},
        {u"plies"_s, MakeArray(thinning.GetPlies(), [](const auto& ply) { return ToJson(ply); })},
        {u"files"_s, files}};

    place.WriteFile(name, QJsonDocument(summary).toJson());
    place.CheckWritten();
    place.CheckPlaces();
}
