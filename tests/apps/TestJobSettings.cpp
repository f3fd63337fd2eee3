#include "apps/zetlaser-job/JobSettings.h"

#include "laser/ZETLaserOptions.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! All that the record holds of plain values, by the key of the setting that is for it. */
QMap<QString, QVariant> TakeSnapshot(const ZETLaserOptions& options)
{
    const ZETLaserDXFOutputSettings dxf = options.GetDXFOutputSettings();
    return {
        {u"type"_s, int(options.GetFileType())},
        {u"units"_s, int(options.GetUnits())},
        {u"partName"_s, options.GetPartName()},
        {u"createLaserData"_s, options.CreateLaserData()},
        {u"outputType"_s, int(options.GetOutputType())},
        {u"outputExtraGeometry"_s, options.GetOutputExtraGeometry() != 0},
        {u"outputRosette"_s, options.GetOutputRosette() != 0},
        {u"useSeedPoint"_s, options.GetUseSeedPoint() != 0},
        {u"useSeedCurve"_s, options.GetUseSeedCurve() != 0},
        {u"skipParentPlyWithSubPlies"_s, options.GetSkipParentPlyWithSubPlies() != 0},
        {u"outputSubPly"_s, options.GetOutputSubPly() != 0},
        {u"outputCourses"_s, options.GetOutputCourses() != 0},
        {u"offsetMode"_s, int(options.GetOffsetMode())},
        {u"materialThickness"_s, int(options.GetMaterialThickness())},
        {u"useMinimizePointsTolerance"_s, options.GetUseMinimizePointsTolerance()},
        {u"minimizePointsTolerance"_s, options.GetMinimizePointsTolerance()},
        {u"useMaxLength"_s, options.GetUseMaxLength()},
        {u"maxLength"_s, options.GetMaxLength()},
        {u"usePointOffset"_s, options.GetUsePointOffset()},
        {u"boundaryTolerance"_s, options.GetBoundaryTolerance()},
        {u"nestSequencesWithinLayup"_s, options.GetNestSequencesWithinLayup()},
        {u"nestPliesWithinSequence"_s, options.GetNestPliesWithinSequence()},
        {u"rosetteBeforePlyGeometry"_s, options.GetRosetteBeforePlyGeometry()},
        {u"includeNormalVectors"_s, options.GetIncludeNormalVectors()},
        {u"rosetteSize"_s, options.GetRosetteSize()},
        {u"rosetteSizeQuilmon"_s, options.GetRosetteSizeQuilmon()},
        {u"normalVectorSize"_s, options.GetNormalVectorSize()},
        {u"normalVectorColor"_s, options.GetNormalVectorColor()},
        {u"dxfFileMode"_s, int(options.GetDXFFileMode())},
        {u"shapeName"_s, options.GetShapeName()},
        {u"useMaterialID"_s, options.GetUseMaterialID()},
        {u"textLayer"_s, dxf.GetTextLayer()},
        {u"textColor"_s, dxf.GetTextColor()},
        {u"geometryLayer"_s, dxf.GetGeometryLayer()},
        {u"geometryColor"_s, dxf.GetGeometryColor()},
        {u"geometryLineStyle"_s, dxf.GetGeometryLineStyle()},
        {u"useSpecificPathForLaserFile"_s, options.GetUseSpecificPathForLaserFile()},
        {u"targetFilePath"_s, options.GetTargetFilePath()},
        {u"laserFilePath"_s, options.GetLaserFilePath()},
        {u"useSpecificPathForQuilmonFile"_s, options.GetUseSpecificPathForQuilmonFile()},
        {u"quilmonFilePath"_s, options.GetQuilmonFilePath()},
    };
}

/*! What the tool does itself: there is nothing in the record for it but lists and pointers into the model. */
const QStringList ownSettings{u"output"_s,     u"check"_s,      u"summary"_s, u"configuration"_s,
                              u"axisSystem"_s, u"projectors"_s, u"layups"_s,  u"plies"_s};

/*! A text that stands for another value than \a before. */
QString GetOtherText(const JobSetting& setting, const QVariant& before)
{
    switch (setting.kind) {
    case JobSetting::Switch:
        return before.toBool() ? u"false"_s : u"true"_s;
    case JobSetting::Choice:
        return setting.choices[before.toInt() == 0 ? 1 : 0];
    case JobSetting::Length:
    case JobSetting::Scale:
        return u"12.5"_s;
    case JobSetting::Integer:
        return u"7"_s;
    case JobSetting::Color:
        return u"#102030"_s;
    default:
        return u"other"_s;
    }
}

/*! What a JSON Schema says of the values of \a setting. */
QJsonObject MakeSchema(const JobSetting& setting)
{
    const QJsonObject text{{u"type"_s, u"string"_s}, {u"minLength"_s, 1}};
    QJsonObject schema = text;
    switch (setting.kind) {
    case JobSetting::Switch:
        schema = {{u"type"_s, u"boolean"_s}};
        break;
    case JobSetting::Length:
        schema = {{u"type"_s, u"number"_s}, {u"minimum"_s, 0}};
        break;
    case JobSetting::Integer:
        schema = {{u"type"_s, u"integer"_s}, {u"minimum"_s, 0}};
        break;
    case JobSetting::Choice:
        schema = {{u"enum"_s, QJsonArray::fromStringList(setting.choices)}};
        break;
    case JobSetting::List:
        schema = {{u"type"_s, u"array"_s}, {u"items"_s, text}, {u"minItems"_s, 1}};
        break;
    default:
        break;
    }
    schema.insert(u"description"_s, setting.help);
    return schema;
}
} // namespace

class TestJobSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachSettingSetsItsOptionAndNoOther_data();
    void eachSettingSetsItsOptionAndNoOther();
    void choicesStandInTheOrderOfTheirValues();
    void typesAreFoundByTheirShortNameAndByTheMake();
    void flagsAreMadeOfKeys();
    void refusesWhatIsNoValue();
    void theSchemaSaysOfEachSettingWhatTheTableSays();
};

void TestJobSettings::eachSettingSetsItsOptionAndNoOther_data()
{
    QTest::addColumn<QString>("key");
    for (const JobSetting& setting : JobSettingTable::GetAll())
        QTest::newRow(qPrintable(setting.key)) << setting.key;
}

void TestJobSettings::eachSettingSetsItsOptionAndNoOther()
{
    QFETCH(QString, key);
    const JobSetting* setting = JobSettingTable::FindByKey(key);
    QVERIFY(setting);
    if (ownSettings.contains(key)) {
        QVERIFY(!setting->record.apply && !setting->record.read);
        return;
    }
    ZETLaserOptions options;
    const auto before = TakeSnapshot(options);
    QVERIFY(before.contains(key));
    QString expected;
    const QVariant value = JobSettingTable::ParseText(*setting, GetOtherText(*setting, before[key]), expected);
    QVERIFY2(value.isValid(), qPrintable(expected));
    QCOMPARE(setting->record.read(options), before[key]);
    setting->record.apply(options, value);
    QCOMPARE(setting->record.read(options), value);
    const auto after = TakeSnapshot(options);
    for (auto it = after.constBegin(); it != after.constEnd(); ++it)
        QCOMPARE(it.value() != before[it.key()], it.key() == key);
    QCOMPARE(after[key], value);
}

void TestJobSettings::choicesStandInTheOrderOfTheirValues()
{
    const auto choices = [](const char* key) { return JobSettingTable::FindByKey(QString::fromLatin1(key))->choices; };
    QCOMPARE(choices("units").indexOf(ZETLaserOptions::GetUnitsString(ZETLaserOptions::UnitsInches)), 1);
    for (int mode = 0; mode < 4; ++mode) {
        const QString name = ZETLaserOptions::GetOffsetModeString(ZETLaserOptions::EOffsetMode(mode));
        QCOMPARE(choices("offsetMode")[mode], name.toLower());
    }
    for (int thickness = 0; thickness < 2; ++thickness) {
        const auto value = ZETLaserOptions::EMaterialThickness(thickness);
        QCOMPARE(choices("materialThickness")[thickness], ZETLaserOptions::GetMaterialThicknessString(value).toLower());
    }
    QCOMPARE(choices("outputType"), (QStringList{u"3d"_s, u"flat"_s, u"nesting"_s, u"nesting-embedded"_s}));
    QCOMPARE(choices("dxfFileMode"), (QStringList{u"single"_s, u"per-material"_s, u"per-ply"_s}));
}

void TestJobSettings::typesAreFoundByTheirShortNameAndByTheMake()
{
    QCOMPARE(JobSettingTable::GetTypeNames().size(), ZETLaserOptions::FileQuilmonPartData + 1);
    QCOMPARE(JobSettingTable::FindType(u"virtek"_s), int(ZETLaserOptions::FileVirtek));
    QCOMPARE(JobSettingTable::FindType(u"LAP"_s), int(ZETLaserOptions::FileLAP));
    QCOMPARE(JobSettingTable::FindType(u"lap laser"_s), int(ZETLaserOptions::FileLAP));
    QCOMPARE(JobSettingTable::FindType(u"APT_2"_s), int(ZETLaserOptions::FileAPT_2));
    QCOMPARE(JobSettingTable::FindType(u"apt-sl"_s), int(ZETLaserOptions::FileAPT_SL));
    QCOMPARE(JobSettingTable::FindType(u"dxf"_s), int(ZETLaserOptions::FileDXF));
    QCOMPARE(JobSettingTable::FindType(u"quilmon"_s), int(ZETLaserOptions::FileQuilmonPartData));
    QCOMPARE(JobSettingTable::FindType(u"Unknown"_s), -1);
    QCOMPARE(JobSettingTable::FindType(QString()), -1);
}

void TestJobSettings::flagsAreMadeOfKeys()
{
    QCOMPARE(JobSettingTable::FindByKey(u"maxLength"_s)->GetFlag(), u"--max-length"_s);
    QCOMPARE(JobSettingTable::FindByKey(u"useMaterialID"_s)->GetFlag(), u"--use-material-id"_s);
    QCOMPARE(JobSettingTable::FindByKey(u"outputRosette"_s)->GetUsage(), u"--[no-]output-rosette"_s);
    QCOMPARE(JobSettingTable::FindByKey(u"units"_s)->GetUsage(), u"--units mm|in"_s);
    QSet<QString> flags;
    for (const JobSetting& setting : JobSettingTable::GetAll())
        flags.insert(setting.GetFlag());
    QCOMPARE(flags.size(), JobSettingTable::GetAll().size());
}

void TestJobSettings::refusesWhatIsNoValue()
{
    const auto parse = [](const char* key, const char* text) {
        QString expected;
        const auto value = JobSettingTable::ParseText(*JobSettingTable::FindByKey(QString::fromLatin1(key)),
                                                      QString::fromUtf8(text), expected);
        return value.isValid();
    };
    QVERIFY(parse("maxLength", "0"));
    QVERIFY(!parse("maxLength", "-0.1"));
    QVERIFY(!parse("maxLength", "inf"));
    QVERIFY(!parse("maxLength", ""));
    QVERIFY(!parse("maxLength", "1,5"));
    QVERIFY(!parse("textLayer", "2147483648"));
    QVERIFY(parse("textLayer", "2147483647"));
    QVERIFY(!parse("plies", ","));
    QVERIFY(!parse("partName", ""));
}

void TestJobSettings::theSchemaSaysOfEachSettingWhatTheTableSays()
{
    QFile file(QStringLiteral(ZET_SOURCE_DIR "/schema/settings.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject schema = QJsonDocument::fromJson(file.readAll()).object();
    QJsonObject properties = schema.value(u"properties"_s).toObject();
    QCOMPARE(schema.value(u"additionalProperties"_s), QJsonValue(false));
    // What belongs to the file, and not to an output.
    QVERIFY(!properties.take(u"$schema"_s).isUndefined());
    QVERIFY(!properties.take(u"outputs"_s).isUndefined());
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        QVERIFY2(properties.contains(setting.key), qPrintable(setting.key));
        QCOMPARE(properties.take(setting.key).toObject(), MakeSchema(setting));
    }
    QCOMPARE(properties.keys(), QStringList());
}

QTEST_GUILESS_MAIN(TestJobSettings)
#include "TestJobSettings.moc"
