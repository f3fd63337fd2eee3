#include "JobSettings.h"

#include "JobError.h"

#include "laser/ZETLaserOptions.h"
#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSize>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Options = ZETLaserOptions;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

template <typename Got, typename Value>
JobSetting::Record Keep(Got (Options::*getter)() const, void (Options::*setter)(Value))
{
    using Plain = std::remove_cvref_t<Value>;
    return {[setter](Options& options, const QVariant& value) {
                if constexpr (std::is_enum_v<Plain>)
                    (options.*setter)(static_cast<Plain>(value.toInt()));
                else
                    (options.*setter)(value.value<Plain>());
            },
            [getter](const Options& options) {
                if constexpr (std::is_enum_v<Plain>)
                    return QVariant(static_cast<int>((options.*getter)()));
                else
                    return QVariant((options.*getter)());
            }};
}

/*! A switch that the record keeps as an int. */
JobSetting::Record KeepFlag(int (Options::*getter)() const, void (Options::*setter)(int))
{
    return {[setter](Options& options, const QVariant& value) { (options.*setter)(value.toBool() ? 1 : 0); },
            [getter](const Options& options) { return QVariant((options.*getter)() != 0); }};
}

JobSetting::Record KeepDxf(int (ZETLaserDXFOutputSettings::*getter)() const,
                           void (ZETLaserDXFOutputSettings::*setter)(int))
{
    return {[setter](Options& options, const QVariant& value) {
                ZETLaserDXFOutputSettings settings = options.GetDXFOutputSettings();
                (settings.*setter)(value.toInt());
                options.SetDXFOutputSettings(settings);
            },
            [getter](const Options& options) { return QVariant((options.GetDXFOutputSettings().*getter)()); }};
}

QList<JobSetting> MakeTable()
{
    const QString job = Translate("Job");
    const QString choice = Translate("What is output");
    const QString points = Translate("Points");
    const QString structure = Translate("Structure of the file");
    const QString guides = Translate("Normals and rosette");
    const QString nesting = Translate("DXF and nesting");
    const QString other = Translate("Other paths");
    const QString noEffect = Translate("Kept with the job; no writer reads it.");
    using Kind = JobSetting;
    return {
        {u"type"_s, Kind::Choice, job, Translate("What to write; see --list-types."), JobSettingTable::GetTypeNames(),
         Keep(&Options::GetFileType, &Options::SetFileType), false, u"TYPE"_s},
        {u"output"_s, Kind::File, job,
         Translate("The part file. Other files of the job are named after it. Its name may have macros that are the "
                   "same for all plies, such as %PART%.")},
        {.key = u"summary"_s,
         .kind = Kind::File,
         .section = job,
         .help =
             Translate("Also write what was read, set, told, thinned and written, as a JSON file. Its name may have "
                       "the same macros."),
         .suffixes = {u"json"_s}},
        {u"units"_s,
         Kind::Choice,
         job,
         Translate("Unit of the written lengths."),
         {u"mm"_s, u"in"_s},
         Keep(&Options::GetUnits, &Options::SetUnits)},
        {u"partName"_s,
         Kind::Text,
         job,
         Translate("Name of the part in the files. Default: the name of the model."),
         {},
         Keep(&Options::GetPartName, &Options::SetPartName),
         false,
         u"TEXT"_s},
        {u"configuration"_s,
         Kind::Text,
         job,
         Translate("Manufacturing configuration. Default: the active one of the model."),
         {},
         {}},
        {u"axisSystem"_s,
         Kind::Text,
         job,
         Translate("Rosette that the written coordinates refer to. Default: the model's own axes."),
         {},
         {}},
        {u"projectors"_s, Kind::List, job, Translate("Projectors, by name. Default: all."), {}, {}},
        {u"createLaserData"_s,
         Kind::Switch,
         job,
         Translate("Write the files; without them the job is read and counted only."),
         {},
         Keep(&Options::CreateLaserData, &Options::SetCreateLaserData)},
        {u"check"_s,
         Kind::Switch,
         job,
         Translate(
             "Read the files back and compare them with the model, point by point, before they are moved to their "
             "places. Default: on."),
         {},
         {}},

        {u"layups"_s, Kind::List, choice, Translate("Layups whose plies are output, by name. Default: all."), {}, {}},
        {u"plies"_s,
         Kind::List,
         choice,
         Translate("Plies and sub-plies to output, by name, or by sequence and name (S1/P3), or by layup, sequence and "
                   "name. Default: all."),
         {},
         {}},
        {u"outputType"_s,
         Kind::Choice,
         choice,
         Translate("Geometry of a ply: the boundary on the tool, the flat pattern, or the flat pattern for nesting."),
         {u"3d"_s, u"flat"_s, u"nesting"_s, u"nesting-embedded"_s},
         Keep(&Options::GetOutputType, &Options::SetOutputType),
         true},
        {u"outputExtraGeometry"_s,
         Kind::Switch,
         choice,
         Translate("Output extra geometry."),
         {},
         KeepFlag(&Options::GetOutputExtraGeometry, &Options::SetOutputExtraGeometry),
         true},
        {u"outputRosette"_s,
         Kind::Switch,
         choice,
         Translate("Output the rosette of each ply."),
         {},
         KeepFlag(&Options::GetOutputRosette, &Options::SetOutputRosette),
         true},
        {u"useSeedPoint"_s,
         Kind::Switch,
         choice,
         Translate("Place the rosette at the seed point."),
         {},
         KeepFlag(&Options::GetUseSeedPoint, &Options::SetUseSeedPoint),
         true},
        {u"useSeedCurve"_s,
         Kind::Switch,
         choice,
         Translate("Output the seed curve."),
         {},
         KeepFlag(&Options::GetUseSeedCurve, &Options::SetUseSeedCurve),
         true},
        {u"skipParentPlyWithSubPlies"_s,
         Kind::Switch,
         choice,
         Translate("Leave a ply out where its sub-plies are output."),
         {},
         KeepFlag(&Options::GetSkipParentPlyWithSubPlies, &Options::SetSkipParentPlyWithSubPlies),
         true},
        {u"outputSubPly"_s,
         Kind::Switch,
         choice,
         Translate("Say in the report that sub-plies are used."),
         {},
         KeepFlag(&Options::GetOutputSubPly, &Options::SetOutputSubPly)},
        {u"outputCourses"_s,
         Kind::Switch,
         choice,
         noEffect,
         {},
         KeepFlag(&Options::GetOutputCourses, &Options::SetOutputCourses)},
        {u"offsetMode"_s,
         Kind::Choice,
         choice,
         Translate("Ply offset that the boundary takes."),
         {u"complete"_s, u"layup"_s, u"none"_s, u"debulk"_s},
         Keep(&Options::GetOffsetMode, &Options::SetOffsetMode)},
        {u"materialThickness"_s,
         Kind::Choice,
         choice,
         Translate("Thickness that the report names."),
         {u"cured"_s, u"uncured"_s},
         Keep(&Options::GetMaterialThickness, &Options::SetMaterialThickness)},

        {u"useMinimizePointsTolerance"_s,
         Kind::Switch,
         points,
         Translate("Remove points that a line doesn't need."),
         {},
         Keep(&Options::GetUseMinimizePointsTolerance, &Options::SetUseMinimizePointsTolerance)},
        {u"minimizePointsTolerance"_s,
         Kind::Length,
         points,
         Translate("How far a removed point may lie off its line."),
         {},
         Keep(&Options::GetMinimizePointsTolerance, &Options::SetMinimizePointsTolerance)},
        {u"useMaxLength"_s,
         Kind::Switch,
         points,
         Translate("Limit the length of a line."),
         {},
         Keep(&Options::GetUseMaxLength, &Options::SetUseMaxLength)},
        {u"maxLength"_s,
         Kind::Length,
         points,
         Translate("That limit."),
         {},
         Keep(&Options::GetMaxLength, &Options::SetMaxLength)},
        {u"usePointOffset"_s,
         Kind::Switch,
         points,
         Translate("With the offset mode \"complete\": lift points by the plies beneath."),
         {},
         Keep(&Options::GetUsePointOffset, &Options::SetUsePointOffset)},
        {u"boundaryTolerance"_s,
         Kind::Length,
         points,
         Translate("How far outside a boundary a point is still lifted by that ply."),
         {},
         Keep(&Options::GetBoundaryTolerance, &Options::SetBoundaryTolerance)},

        {u"nestSequencesWithinLayup"_s,
         Kind::Switch,
         structure,
         Translate("A layer for each layup."),
         {},
         Keep(&Options::GetNestSequencesWithinLayup, &Options::SetNestSequencesWithinLayup)},
        {u"nestPliesWithinSequence"_s,
         Kind::Switch,
         structure,
         Translate("A layer for each sequence."),
         {},
         Keep(&Options::GetNestPliesWithinSequence, &Options::SetNestPliesWithinSequence)},
        {u"rosetteBeforePlyGeometry"_s,
         Kind::Switch,
         structure,
         Translate("Extra geometry, rosette and seed curve ahead of the boundary."),
         {},
         Keep(&Options::GetRosetteBeforePlyGeometry, &Options::SetRosetteBeforePlyGeometry)},

        {u"includeNormalVectors"_s,
         Kind::Switch,
         guides,
         Translate("Write the normals of points."),
         {},
         Keep(&Options::GetIncludeNormalVectors, &Options::SetIncludeNormalVectors),
         true},
        {u"rosetteSize"_s,
         Kind::Length,
         guides,
         Translate("Length of the rosette's long arm."),
         {},
         Keep(&Options::GetRosetteSize, &Options::SetRosetteSize),
         true},
        {u"rosetteSizeQuilmon"_s,
         Kind::Length,
         guides,
         Translate("The same for nesting."),
         {},
         Keep(&Options::GetRosetteSizeQuilmon, &Options::SetRosetteSizeQuilmon)},
        {u"normalVectorSize"_s,
         Kind::Length,
         guides,
         Translate("Length of normals on display."),
         {},
         Keep(&Options::GetNormalVectorSize, &Options::SetNormalVectorSize)},
        {u"normalVectorColor"_s,
         Kind::Color,
         guides,
         Translate("Colour of normals on display, as #RRGGBB or a name."),
         {},
         Keep(&Options::GetNormalVectorColor, &Options::SetNormalVectorColor)},

        {u"dxfFileMode"_s,
         Kind::Choice,
         nesting,
         Translate("How plies are spread over DXF files."),
         {u"single"_s, u"per-material"_s, u"per-ply"_s},
         Keep(&Options::GetDXFFileMode, &Options::SetDXFFileMode)},
        {u"shapeName"_s,
         Kind::Text,
         nesting,
         Translate("Pattern of the name of a shape, such as %SEQ%-%PLY%."),
         {},
         Keep(&Options::GetShapeName, &Options::SetShapeName),
         false,
         u"TEXT"_s},
        {u"useMaterialID"_s,
         Kind::Switch,
         nesting,
         Translate("Name materials by their id."),
         {},
         Keep(&Options::GetUseMaterialID, &Options::SetUseMaterialID)},
        {u"textLayer"_s,
         Kind::Integer,
         nesting,
         Translate("DXF layer of texts."),
         {},
         KeepDxf(&ZETLaserDXFOutputSettings::GetTextLayer, &ZETLaserDXFOutputSettings::SetTextLayer)},
        {u"textColor"_s,
         Kind::Integer,
         nesting,
         Translate("DXF colour of texts."),
         {},
         KeepDxf(&ZETLaserDXFOutputSettings::GetTextColor, &ZETLaserDXFOutputSettings::SetTextColor)},
        {u"geometryLayer"_s,
         Kind::Integer,
         nesting,
         Translate("DXF layer of geometry."),
         {},
         KeepDxf(&ZETLaserDXFOutputSettings::GetGeometryLayer, &ZETLaserDXFOutputSettings::SetGeometryLayer)},
        {u"geometryColor"_s,
         Kind::Integer,
         nesting,
         Translate("DXF colour of geometry."),
         {},
         KeepDxf(&ZETLaserDXFOutputSettings::GetGeometryColor, &ZETLaserDXFOutputSettings::SetGeometryColor)},
        {u"geometryLineStyle"_s,
         Kind::Integer,
         nesting,
         Translate("DXF line style of geometry."),
         {},
         KeepDxf(&ZETLaserDXFOutputSettings::GetGeometryLineStyle, &ZETLaserDXFOutputSettings::SetGeometryLineStyle)},

        {u"useSpecificPathForLaserFile"_s,
         Kind::Switch,
         other,
         Translate("LPT and FARO: write the tool file into the folder of targetFilePath."),
         {},
         Keep(&Options::GetUseSpecificPathForLaserFile, &Options::SetUseSpecificPathForLaserFile)},
        {u"targetFilePath"_s,
         Kind::Folder,
         other,
         Translate("That folder."),
         {},
         Keep(&Options::GetTargetFilePath, &Options::SetTargetFilePath)},
        {u"laserFilePath"_s,
         Kind::Folder,
         other,
         noEffect,
         {},
         Keep(&Options::GetLaserFilePath, &Options::SetLaserFilePath)},
        {u"useSpecificPathForQuilmonFile"_s,
         Kind::Switch,
         other,
         noEffect,
         {},
         Keep(&Options::GetUseSpecificPathForQuilmonFile, &Options::SetUseSpecificPathForQuilmonFile)},
        {u"quilmonFilePath"_s,
         Kind::Folder,
         other,
         noEffect,
         {},
         Keep(&Options::GetQuilmonFilePath, &Options::SetQuilmonFilePath)},
    };
}

QString GetExpected(const JobSetting& setting)
{
    switch (setting.kind) {
    case JobSetting::Switch:
        return Translate("true or false");
    case JobSetting::Choice:
        return Translate("one of %1").arg(setting.choices.join(u", "_s));
    case JobSetting::Length:
        return Translate("a length in mm, 0 or more");
    case JobSetting::Scale:
        return Translate("a number above 0");
    case JobSetting::Integer:
        return Translate("a whole number, 0 or more");
    case JobSetting::Color:
        return Translate("a colour such as #00FF00");
    case JobSetting::List:
        return Translate("at least one name");
    case JobSetting::Choices:
        return Translate("some of %1").arg(setting.choices.join(u", "_s));
    case JobSetting::PixelSize:
        return Translate("a size such as 1600x1000, from 200 to 10000 pixels");
    default:
        return Translate("a text that isn't empty");
    }
}

QVariant ParseColor(const QString& text)
{
    const QColor color(text);
    return color.isValid() ? QVariant(color) : QVariant();
}

QVariant ParseChoice(const JobSetting& setting, const QString& text)
{
    const auto index = setting.key == u"type"_s ? JobSettingTable::FindType(text) : setting.choices.indexOf(text);
    return index < 0 ? QVariant() : QVariant(static_cast<int>(index));
}

QVariant ParseChoices(const JobSetting& setting, const QString& text)
{
    const QStringList names = text.split(u',', Qt::SkipEmptyParts);
    const bool isKnown =
        std::all_of(names.begin(), names.end(), [&](const QString& name) { return setting.choices.contains(name); });
    return names.isEmpty() || !isKnown ? QVariant() : QVariant(names);
}

QVariant ParsePixelSize(const QString& text)
{
    static const QRegularExpression form(u"^([0-9]{3,5})x([0-9]{3,5})$"_s);
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const QSize least(200, 200);
    const QSize most(10000, 10000);
    return size.expandedTo(least) == size && size.boundedTo(most) == size ? QVariant(size) : QVariant();
}

QVariant CheckNumber(const JobSetting& setting, double number)
{
    if (!std::isfinite(number) || number < 0.0 || (setting.kind == JobSetting::Scale && number == 0.0))
        return {};
    if (setting.kind != JobSetting::Integer)
        return number;
    const bool isWhole = number == std::floor(number) && number <= std::numeric_limits<int>::max();
    return isWhole ? QVariant(static_cast<int>(number)) : QVariant();
}

/*! The settings among the keys of \a object, which may have \a otherKeys too. */
JobSettings ReadSettings(const ZETOpenJsonValue& object, const QDir& folder, const QStringList& otherKeys)
{
    QStringList keys = otherKeys;
    for (const JobSetting& setting : JobSettingTable::GetAll())
        keys.append(setting.key);
    object.CheckKeys(keys);
    JobSettings settings;
    for (const QString& key : object.GetKeys()) {
        const JobSetting* setting = JobSettingTable::FindByKey(key);
        if (!setting)
            continue; // one of the other keys
        QVariant value = JobSettingTable::ParseJson(*setting, *object.Find(key.toUtf8().constData()));
        if (setting->kind == JobSetting::File ||
            setting->kind == JobSetting::Folder) // relative to the file, as in the layup file
            value = folder.absoluteFilePath(value.toString());
        settings.Set(key, value);
    }
    return settings;
}

/*! By the key of a setting, that of the switch without which it has no effect. */
const QHash<QString, QString>& GetNeededSwitches()
{
    static const QHash<QString, QString> switches{{u"minimizePointsTolerance"_s, u"useMinimizePointsTolerance"_s},
                                                  {u"maxLength"_s, u"useMaxLength"_s},
                                                  {u"boundaryTolerance"_s, u"usePointOffset"_s},
                                                  {u"targetFilePath"_s, u"useSpecificPathForLaserFile"_s}};
    return switches;
}

bool IsOn(const QString& key, const JobSettings& settings)
{
    return settings.Has(key) ? settings.Get(key).toBool()
                             : JobSettingTable::FindByKey(key)->record.read(Options()).toBool();
}

/*! Throws where a flag has no effect on any of \a outputs, because its switch is off. In a settings file it may stand
 *  for the day that the switch is turned on. */
void CheckSwitches(const JobSettings& flags, const QList<JobSettings>& outputs)
{
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        const QString needed = GetNeededSwitches().value(setting.key);
        const auto isOn = [&](const JobSettings& output) { return IsOn(needed, output); };
        if (!needed.isEmpty() && flags.Has(setting.key) && std::none_of(outputs.begin(), outputs.end(), isOn))
            throw JobError(JobExit::WrongCall,
                           Translate("%1: expected %2 beside it, found none")
                               .arg(setting.GetFlag(), JobSettingTable::FindByKey(needed)->GetFlag()));
    }
}
} // namespace

void JobSettings::Complete(const JobSettings& other)
{
    for (auto it = other.values.constBegin(); it != other.values.constEnd(); ++it) {
        if (!values.contains(it.key()))
            values.insert(it.key(), it.value());
    }
}

QString JobSetting::GetFlag() const
{
    QString flag = u"--"_s;
    for (qsizetype i = 0; i < key.size(); ++i) {
        const bool beginsWord = key[i].isUpper() && i > 0 && !key[i - 1].isUpper();
        flag += beginsWord ? QString(u'-') + key[i].toLower() : QString(key[i].toLower());
    }
    return flag;
}

QString JobSetting::GetNegatedFlag() const
{
    return kind == Switch ? u"--no-"_s + GetFlag().mid(2) : QString();
}

QStringList JobSetting::GetFlags() const
{
    QStringList flags{GetFlag()};
    if (kind == Switch)
        flags.append(GetNegatedFlag());
    if (!letter.isEmpty())
        flags.append(u'-' + letter);
    return flags;
}

QString JobSetting::GetShownFlags() const
{
    if (kind == Switch)
        return u"--[no-]"_s + GetFlag().mid(2);
    return letter.isEmpty() ? GetFlag() : u'-' + letter + u", "_s + GetFlag();
}

QString JobSetting::GetPlaceholder() const
{
    if (!placeholder.isEmpty())
        return placeholder;
    switch (kind) {
    case Flag:
    case Switch:
        return {};
    case Choice:
        return choices.join(u'|');
    case Text:
        return u"NAME"_s;
    case File:
        return u"FILE"_s;
    case Folder:
        return u"FOLDER"_s;
    case List:
    case Choices:
        return u"NAME[,NAME...]"_s;
    case Length:
        return u"MM"_s;
    case Integer:
        return u"N"_s;
    case Scale:
        return u"NUMBER"_s;
    case Color:
        return u"COLOR"_s;
    case PixelSize:
        return u"WIDTHxHEIGHT"_s;
    }
    return {};
}

QString JobSetting::GetUsage() const
{
    return (GetShownFlags() + u' ' + GetPlaceholder()).trimmed();
}

const QList<JobSetting>& JobSettingTable::GetAll()
{
    static const QList<JobSetting> table = MakeTable();
    return table;
}

const JobSetting* JobSettingTable::FindByKey(const QString& key)
{
    for (const JobSetting& setting : GetAll()) {
        if (setting.key == key)
            return &setting;
    }
    return nullptr;
}

const QStringList& JobSettingTable::GetTypeNames()
{
    static const QStringList names{u"virtek"_s,
                                   u"lpt"_s,
                                   u"faro"_s,
                                   u"lap"_s,
                                   u"sl"_s,
                                   u"assembly-guidance"_s,
                                   u"aligned-vision"_s,
                                   u"general-scanning"_s,
                                   u"apt"_s,
                                   u"apt-2"_s,
                                   u"apt-sl"_s,
                                   u"dxf"_s,
                                   u"quilmon"_s};
    return names;
}

int JobSettingTable::FindType(const QString& name)
{
    for (int type = 0; type < GetTypeNames().size(); ++type) {
        const QString make = ZETLaserOptions::GetFileTypeString(static_cast<ZETLaserOptions::EOutputFileType>(type));
        if (name.compare(GetTypeNames()[type], Qt::CaseInsensitive) == 0 ||
            name.compare(make, Qt::CaseInsensitive) == 0)
            return type;
    }
    return -1;
}

QVariant JobSettingTable::ParseText(const JobSetting& setting, const QString& text, QString& expected)
{
    expected = GetExpected(setting);
    bool isNumber = false;
    switch (setting.kind) {
    case JobSetting::Choice:
        return ParseChoice(setting, text);
    case JobSetting::Length:
    case JobSetting::Scale:
    case JobSetting::Integer: {
        const double number = text.toDouble(&isNumber);
        return isNumber ? CheckNumber(setting, number) : QVariant();
    }
    case JobSetting::Color:
        return ParseColor(text);
    case JobSetting::Choices:
        return ParseChoices(setting, text);
    case JobSetting::PixelSize:
        return ParsePixelSize(text);
    case JobSetting::List: {
        const QStringList names = text.split(u',', Qt::SkipEmptyParts);
        return names.isEmpty() ? QVariant() : QVariant(names);
    }
    case JobSetting::Switch:
        if (text == u"true"_s || text == u"false"_s)
            return text == u"true"_s;
        return {};
    default:
        return text.isEmpty() ? QVariant() : QVariant(text);
    }
}

QVariant JobSettingTable::ParseJson(const JobSetting& setting, const ZETOpenJsonValue& value)
{
    QVariant parsed;
    switch (setting.kind) {
    case JobSetting::Switch:
        return value.ToBool();
    case JobSetting::Length:
    case JobSetting::Scale:
    case JobSetting::Integer:
        parsed = CheckNumber(setting, value.ToNumber(GetExpected(setting)));
        break;
    case JobSetting::List: {
        QStringList names;
        for (const ZETOpenJsonValue& name : value.GetElements(Translate("an array of names")))
            names.append(name.ToName());
        parsed = names.isEmpty() ? QVariant() : QVariant(names);
        break;
    }
    default: {
        QString expected;
        parsed = ParseText(setting, value.ToText(GetExpected(setting)), expected);
    }
    }
    if (!parsed.isValid())
        value.FailExpected(GetExpected(setting));
    return parsed;
}

JobSettings JobSettingsFile::GetCommon(const JobSettings& flags) const
{
    JobSettings settings = flags;
    settings.Complete(common);
    CheckSwitches(flags, {settings});
    return settings;
}

QList<JobSettings> JobSettingsFile::GetOutputs(const JobSettings& flags) const
{
    for (const QString& key : {u"type"_s, u"output"_s, u"summary"_s}) {
        if (!outputs.isEmpty() && flags.Has(key))
            throw JobError(JobExit::WrongCall, Translate("expected no %1 beside a settings file with \"outputs\"")
                                                   .arg(JobSettingTable::FindByKey(key)->GetFlag()));
    }
    QList<JobSettings> all;
    for (const JobSettings& own : outputs.isEmpty() ? QList<JobSettings>(1) : outputs) {
        JobSettings output = flags;
        output.Complete(own);
        output.Complete(common);
        all.append(output);
    }
    CheckSwitches(flags, all);
    return all;
}

JobSettingsFile JobSettingsFile::Read(const JobSettings& flags)
{
    if (!flags.Has(u"settings"_s))
        return {};
    const QString file = flags.GetText(u"settings"_s);
    try {
        const ZETOpenJsonDocument document(file);
        const QDir folder = QFileInfo(file).absoluteDir();
        const ZETOpenJsonValue root = document.GetRoot();
        JobSettingsFile settings;
        settings.common = ReadSettings(root, folder, {u"$schema"_s, u"outputs"_s});
        if (const auto outputs = root.Find("outputs")) {
            const QString expected = Translate("an array of at least one output");
            for (const ZETOpenJsonValue& output : outputs->GetElements(expected))
                settings.outputs.append(ReadSettings(output, folder, {}));
            if (settings.outputs.isEmpty())
                outputs->FailExpected(expected);
        }
        return settings;
    } catch (const ZETOpenJsonError& error) {
        throw JobError(JobExit::WrongInput, error.GetMessage());
    }
}
