#include "laser/ZETLaserOptions.h"

#include "laser/ZETLaserDXFOutputSettings.h"
#include "laser/ZETLaserProcesses.h"
#include "tests/support/TestTranslator.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETVisualization/ZETVisEnvironment.h>

#include <QTest>

#include <limits>
#include <memory>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;
using Options = ZETLaserOptions;

namespace
{
template <typename Enum>
Enum As(int value)
{
    return static_cast<Enum>(value);
}

/*! Where the data of \a settings are: the object is a pointer to its virtual table and a pointer to the data. */
const void* DataOf(const ZETLaserDXFOutputSettings& settings)
{
    static_assert(sizeof(settings) == 2 * sizeof(void*));
    return reinterpret_cast<const void* const*>(&settings)[1];
}

/*! What is set is read back unchanged, also what makes no sense. */
template <typename Value, typename Set, typename Get>
void CompareStored(const QList<Value>& values, Set set, Get get)
{
    Options options;
    for (const Value& value : values) {
        (options.*set)(value);
        QCOMPARE((options.*get)(), value);
    }
}
} // namespace

class TestLaserOptions : public QObject
{
    Q_OBJECT

private slots:
    void isNeitherCopiedNorAnObject();
    void enumeratorsHaveTheirValues();
    void freshRecordHasTheDefaults();
    void freshRecordTellsItsDefaultsInWords();
    void fileTypeHasItsStrings_data();
    void fileTypeHasItsStrings();
    void unitsHaveTheirStrings();
    void materialThicknessesHaveTheirStrings();
    void offsetModesHaveTheirStrings();
    void wordsAreTranslatedButNotTheRest();
    void settersStoreTheValueUnchanged();
    void skipParentPlyReadsZeroOrOne();
    void settersTouchNothingElse();
    void gettersReturnCopies();
    void createdFilesIsTheListItself();
    void goneObjectsReadAsNull();
    void driverIsMadeOnce();
    void driverIsReleasedWithTheRecord();
    void dxfSettingsHaveTheirDefaults();
    void dxfSettingsShareUntilSet();
    void dxfSettingsAreHandedOutAsCopy();
};

void TestLaserOptions::isNeitherCopiedNorAnObject()
{
    QVERIFY(!std::is_copy_constructible_v<Options>);
    QVERIFY(!std::is_copy_assignable_v<Options>);
    QVERIFY(std::is_default_constructible_v<Options>);
    QVERIFY(std::has_virtual_destructor_v<Options>);
    QVERIFY((!std::is_base_of_v<QObject, Options>));
}

void TestLaserOptions::enumeratorsHaveTheirValues()
{
    const QList<int> fileTypes{Options::FileVirtek,
                               Options::FileLPT,
                               Options::FileFARO,
                               Options::FileLAP,
                               Options::FileSL,
                               Options::FileAssemblyGuidance,
                               Options::FileAlignedVision,
                               Options::FileGeneralScanning,
                               Options::FileAPT,
                               Options::FileAPT_2,
                               Options::FileAPT_SL,
                               Options::FileDXF,
                               Options::FileQuilmonPartData};
    QCOMPARE(fileTypes, (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    QCOMPARE((QList<int>{Options::Output3D, Options::OutputFlat, Options::OutputFlatNesting,
                         Options::OutputFlatNestingEmbedded}),
             (QList<int>{0, 1, 2, 3}));
    QCOMPARE((QList<int>{Options::OffsetComplete, Options::OffsetLayup, Options::OffsetNone, Options::OffsetDebulk}),
             (QList<int>{0, 1, 2, 3}));
    QCOMPARE((QList<int>{Options::ThicknessCured, Options::ThicknessUncured}), (QList<int>{0, 1}));
    QCOMPARE((QList<int>{Options::UnitsMillimeters, Options::UnitsInches}), (QList<int>{0, 1}));
    QCOMPARE((QList<int>{Options::DXFSingleFile, Options::DXFFilePerMaterial, Options::DXFFilePerPly}),
             (QList<int>{0, 1, 2}));
    QCOMPARE((QList<int>{Options::SourcePly, Options::SourceExtraGeometry, Options::SourceRosette,
                         Options::SourceNormals, Options::SourceSeedCurve}),
             (QList<int>{0, 1, 2, 3, 4}));
    QCOMPARE(sizeof(Options::EOutputFileType), sizeof(int));
    QCOMPARE(sizeof(Options::ELaserSourceType), sizeof(int));
}

void TestLaserOptions::freshRecordHasTheDefaults()
{
    const Options options;
    QVERIFY(options.GetCompRoot().isNull());
    QVERIFY(options.GetEnvironment().isNull());
    QVERIFY(options.GetActiveConfiguration().isNull());
    QCOMPARE(options.GetPartName(), QString());
    QCOMPARE(options.GetFileName(), QString());
    QCOMPARE(int(options.GetFileType()), 7);
    QCOMPARE(int(options.GetUnits()), 0);
    QVERIFY(options.GetPlies().isEmpty());
    QVERIFY(options.GetAxisSystem().isNull());
    QVERIFY(options.GetProjectors().isEmpty());
    QCOMPARE(int(options.GetOffsetMode()), 2);
    QCOMPARE(int(options.GetMaterialThickness()), 1);
    QCOMPARE(options.GetUseMaxLength(), false);
    QCOMPARE(options.GetMaxLength(), 1000000.0);
    QCOMPARE(options.GetUseMinimizePointsTolerance(), true);
    QCOMPARE(options.GetMinimizePointsTolerance(), 0.01);
    QCOMPARE(int(options.GetOutputType()), 0);
    QCOMPARE(options.GetOutputCourses(), 0);
    QCOMPARE(options.GetOutputSubPly(), 1);
    QCOMPARE(options.GetOutputExtraGeometry(), 1);
    QCOMPARE(options.GetOutputRosette(), 0);
    QCOMPARE(options.GetUseSeedPoint(), 0);
    QCOMPARE(options.GetUseSeedCurve(), 0);
    QCOMPARE(options.GetUseSpecificPathForLaserFile(), false);
    QCOMPARE(options.GetLaserFilePath(), QString());
    QCOMPARE(options.GetTargetFilePath(), QString());
    QCOMPARE(options.GetNestPliesWithinSequence(), true);
    QCOMPARE(options.GetNestSequencesWithinLayup(), true);
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 0);
    QCOMPARE(options.GetRosetteBeforePlyGeometry(), false);
    QCOMPARE(options.GetIncludeNormalVectors(), true);
    QCOMPARE(options.GetNormalVectorSize(), 20.0);
    QCOMPARE(options.GetNormalVectorColor(), QColor(0, 255, 0, 255));
    QCOMPARE(options.GetRosetteSize(), 100.0);
    QCOMPARE(options.GetUseSpecificPathForQuilmonFile(), false);
    QCOMPARE(options.GetQuilmonFilePath(), QString());
    QCOMPARE(options.GetUseMaterialID(), false);
    QCOMPARE(options.GetRosetteSizeQuilmon(), 100.0);
    QCOMPARE(int(options.GetDXFFileMode()), 1);
    QVERIFY(options.GetCreatedFiles().isEmpty());
    QCOMPARE(options.CreateLaserData(), true);
    QCOMPARE(options.GetUsePointOffset(), false);
    QCOMPARE(options.GetBoundaryTolerance(), 0.01);
    QCOMPARE(options.GetShapeName(), QString());
    QCOMPARE(options.GetDXFOutputSettings().GetGeometryLayer(), 1);
}

void TestLaserOptions::freshRecordTellsItsDefaultsInWords()
{
    const Options options;
    QCOMPARE(Options::GetFileTypeString(options.GetFileType()), u"General Scanning"_s);
    QCOMPARE(Options::GetUnitsString(options.GetUnits()), u"mm"_s);
    QCOMPARE(Options::GetOffsetModeString(options.GetOffsetMode()), u"None"_s);
    QCOMPARE(Options::GetMaterialThicknessString(options.GetMaterialThickness()), u"Uncured"_s);
}

void TestLaserOptions::fileTypeHasItsStrings_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("filter");

    const auto row = [](int type, const char* name, const char* extension, const char* filter) {
        QTest::addRow("%d", type) << type << QString::fromLatin1(name) << QString::fromLatin1(extension)
                                  << QString::fromLatin1(filter);
    };
    row(0, "Virtek", ".ply", "Virtek (*.ply)");
    row(1, "LPT", ".XML", "LPT (*.XML)");
    row(2, "FARO", ".XML", "FARO (*.XML)");
    row(3, "LAP Laser", ".lpd", "LAP Laser (*.lpd)");
    row(4, "SL Laser", ".sl", "SL Laser (*.sl)");
    row(5, "Assembly Guidance", ".PRT", "Assembly Guidance (*.PRT)");
    row(6, "Aligned Vision", ".PRT", "Aligned Vision (*.PRT)");
    row(7, "General Scanning", ".PRT", "General Scanning (*.PRT)");
    row(8, "APT", ".APT", "APT (*.APT)");
    row(9, "APT_2", ".APT", "APT_2 (*.APT)");
    row(10, "SL APT", ".APT", "SL APT (*.APT)");
    row(11, "DXF", ".DXF", "DXF (*.DXF)");
    row(12, "Quilmon Composites Part Data", ".CPD", "Quilmon Composites Part Data (*.CPD)");
    row(13, "Unknown", ".txt", "Unknown (*.txt)");
    row(-1, "Unknown", ".txt", "Unknown (*.txt)");
    row(std::numeric_limits<int>::min(), "Unknown", ".txt", "Unknown (*.txt)");
    row(std::numeric_limits<int>::max(), "Unknown", ".txt", "Unknown (*.txt)");
}

void TestLaserOptions::fileTypeHasItsStrings()
{
    QFETCH(int, type);
    const auto fileType = As<Options::EOutputFileType>(type);
    QTEST(Options::GetFileTypeString(fileType), "name");
    QTEST(Options::GetFileTypeExtensionString(fileType), "extension");
    QTEST(Options::GetFileDialogFilterString(fileType), "filter");
}

void TestLaserOptions::unitsHaveTheirStrings()
{
    QCOMPARE(Options::GetUnitsString(Options::UnitsMillimeters), u"mm"_s);
    QCOMPARE(Options::GetUnitsString(Options::UnitsInches), u"in"_s);
    QCOMPARE(Options::GetUnitsString(As<Options::EUnits>(2)), u"unset"_s);
    QCOMPARE(Options::GetUnitsString(As<Options::EUnits>(-1)), u"unset"_s);
}

void TestLaserOptions::materialThicknessesHaveTheirStrings()
{
    QCOMPARE(Options::GetMaterialThicknessString(Options::ThicknessCured), u"Cured"_s);
    QCOMPARE(Options::GetMaterialThicknessString(Options::ThicknessUncured), u"Uncured"_s);
    QCOMPARE(Options::GetMaterialThicknessString(As<Options::EMaterialThickness>(2)), u"unset"_s);
    QCOMPARE(Options::GetMaterialThicknessString(As<Options::EMaterialThickness>(-1)), u"unset"_s);
}

void TestLaserOptions::offsetModesHaveTheirStrings()
{
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetComplete), u"Complete"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetLayup), u"Layup"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetNone), u"None"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetDebulk), u"Debulk"_s);
    QCOMPARE(Options::GetOffsetModeString(As<Options::EOffsetMode>(4)), u"unset"_s);
    QCOMPARE(Options::GetOffsetModeString(As<Options::EOffsetMode>(-1)), u"unset"_s);
}

void TestLaserOptions::wordsAreTranslatedButNotTheRest()
{
    const TestTranslator translator("ZETLaserOptions");

    QCOMPARE(Options::GetOffsetModeString(Options::OffsetComplete), u"* Complete"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetLayup), u"* Layup"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetNone), u"* None"_s);
    QCOMPARE(Options::GetOffsetModeString(Options::OffsetDebulk), u"* Debulk"_s);
    QCOMPARE(Options::GetOffsetModeString(As<Options::EOffsetMode>(4)), u"unset"_s);
    QCOMPARE(Options::GetMaterialThicknessString(Options::ThicknessCured), u"* Cured"_s);
    QCOMPARE(Options::GetMaterialThicknessString(Options::ThicknessUncured), u"* Uncured"_s);
    QCOMPARE(Options::GetMaterialThicknessString(As<Options::EMaterialThickness>(2)), u"unset"_s);
    QCOMPARE(Options::GetUnitsString(Options::UnitsMillimeters), u"mm"_s);
    QCOMPARE(Options::GetUnitsString(As<Options::EUnits>(2)), u"unset"_s);
    QCOMPARE(Options::GetFileTypeString(Options::FileLAP), u"LAP Laser"_s);
    QCOMPARE(Options::GetFileTypeString(As<Options::EOutputFileType>(13)), u"Unknown"_s);
}

void TestLaserOptions::settersStoreTheValueUnchanged()
{
    const QList<QString> texts{u"a"_s, u" with blanks\n"_s, QString()};
    CompareStored(texts, &Options::SetPartName, &Options::GetPartName);
    CompareStored(texts, &Options::SetFileName, &Options::GetFileName);
    CompareStored(texts, &Options::SetLaserFilePath, &Options::GetLaserFilePath);
    CompareStored(texts, &Options::SetTargetFilePath, &Options::GetTargetFilePath);
    CompareStored(texts, &Options::SetQuilmonFilePath, &Options::GetQuilmonFilePath);
    CompareStored(texts, &Options::SetShapeName, &Options::GetShapeName);

    const QList<double> numbers{0.0, -1.5, 1e300, std::numeric_limits<double>::infinity()};
    CompareStored(numbers, &Options::SetMaxLength, &Options::GetMaxLength);
    CompareStored(numbers, &Options::SetMinimizePointsTolerance, &Options::GetMinimizePointsTolerance);
    CompareStored(numbers, &Options::SetNormalVectorSize, &Options::GetNormalVectorSize);
    CompareStored(numbers, &Options::SetRosetteSize, &Options::GetRosetteSize);
    CompareStored(numbers, &Options::SetRosetteSizeQuilmon, &Options::GetRosetteSizeQuilmon);
    CompareStored(numbers, &Options::SetBoundaryTolerance, &Options::GetBoundaryTolerance);

    const QList<int> switches{0, 1, 2, -1};
    CompareStored(switches, &Options::SetOutputCourses, &Options::GetOutputCourses);
    CompareStored(switches, &Options::SetOutputSubPly, &Options::GetOutputSubPly);
    CompareStored(switches, &Options::SetOutputExtraGeometry, &Options::GetOutputExtraGeometry);
    CompareStored(switches, &Options::SetOutputRosette, &Options::GetOutputRosette);
    CompareStored(switches, &Options::SetUseSeedPoint, &Options::GetUseSeedPoint);
    CompareStored(switches, &Options::SetUseSeedCurve, &Options::GetUseSeedCurve);

    const QList<bool> flags{true, false, true};
    CompareStored(flags, &Options::SetUseMaxLength, &Options::GetUseMaxLength);
    CompareStored(flags, &Options::SetUseMinimizePointsTolerance, &Options::GetUseMinimizePointsTolerance);
    CompareStored(flags, &Options::SetUseSpecificPathForLaserFile, &Options::GetUseSpecificPathForLaserFile);
    CompareStored(flags, &Options::SetNestPliesWithinSequence, &Options::GetNestPliesWithinSequence);
    CompareStored(flags, &Options::SetNestSequencesWithinLayup, &Options::GetNestSequencesWithinLayup);
    CompareStored(flags, &Options::SetRosetteBeforePlyGeometry, &Options::GetRosetteBeforePlyGeometry);
    CompareStored(flags, &Options::SetIncludeNormalVectors, &Options::GetIncludeNormalVectors);
    CompareStored(flags, &Options::SetUseSpecificPathForQuilmonFile, &Options::GetUseSpecificPathForQuilmonFile);
    CompareStored(flags, &Options::SetUseMaterialID, &Options::GetUseMaterialID);
    CompareStored(flags, &Options::SetCreateLaserData, &Options::CreateLaserData);
    CompareStored(flags, &Options::SetUsePointOffset, &Options::GetUsePointOffset);

    CompareStored<Options::EOutputFileType>({Options::FileSL, As<Options::EOutputFileType>(13)}, &Options::SetFileType,
                                            &Options::GetFileType);
    CompareStored<Options::EUnits>({Options::UnitsInches, As<Options::EUnits>(7)}, &Options::SetUnits,
                                   &Options::GetUnits);
    CompareStored<Options::EOffsetMode>({Options::OffsetDebulk, As<Options::EOffsetMode>(-3)}, &Options::SetOffsetMode,
                                        &Options::GetOffsetMode);
    CompareStored<Options::EMaterialThickness>({Options::ThicknessCured, As<Options::EMaterialThickness>(9)},
                                               &Options::SetMaterialThickness, &Options::GetMaterialThickness);
    CompareStored<Options::EOutputType>({Options::OutputFlatNestingEmbedded, As<Options::EOutputType>(4)},
                                        &Options::SetOutputType, &Options::GetOutputType);
    CompareStored<Options::EDXFFileMode>({Options::DXFFilePerPly, As<Options::EDXFFileMode>(3)},
                                         &Options::SetDXFFileMode, &Options::GetDXFFileMode);
    CompareStored<QColor>({QColor(1, 2, 3, 4), QColor()}, &Options::SetNormalVectorColor,
                          &Options::GetNormalVectorColor);
}

void TestLaserOptions::skipParentPlyReadsZeroOrOne()
{
    Options options;
    for (const int value : {1, 2, -1}) {
        options.SetSkipParentPlyWithSubPlies(value);
        QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 1);
    }
    options.SetSkipParentPlyWithSubPlies(0);
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 0);
}

void TestLaserOptions::settersTouchNothingElse()
{
    Options options;
    options.SetFileType(Options::FileLAP); // the nest flags are the driver's business
    QVERIFY(options.GetNestPliesWithinSequence() && options.GetNestSequencesWithinLayup());
    options.SetOutputType(Options::OutputFlatNesting);
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 0);
    options.SetMaxLength(5.0);
    QVERIFY(!options.GetUseMaxLength());
    options.SetRosetteSize(7.0);
    QCOMPARE(options.GetRosetteSizeQuilmon(), 100.0);
}

void TestLaserOptions::gettersReturnCopies()
{
    Options options;
    options.SetPartName(u"part"_s);
    QString name = options.GetPartName();
    name += u" changed"_s;
    QCOMPARE(options.GetPartName(), u"part"_s);
    QColor color = options.GetNormalVectorColor();
    color.setRed(200);
    QCOMPARE(options.GetNormalVectorColor().red(), 0);
}

void TestLaserOptions::createdFilesIsTheListItself()
{
    Options options;
    options.GetCreatedFiles().append({u"a.dxf"_s, {u"carbon"_s, ZETMatDefinition()}});
    options.GetCreatedFiles().append({u"b.dxf"_s, {u"glass"_s, ZETMatDefinition()}});
    QCOMPARE(options.GetCreatedFiles().size(), 2);
    QCOMPARE(std::as_const(options).GetCreatedFiles().at(1).second.first, u"glass"_s);
    QCOMPARE(&options.GetPlies(), &options.GetPlies());
    QCOMPARE(&options.GetProjectors(), &options.GetProjectors());
}

void TestLaserOptions::goneObjectsReadAsNull()
{
    Options options;
    {
        ZETVisEnvironment environment;
        ZETFeatContainer container;
        auto* axisSystem = new ZETFeatFolder(&container, ZETGeoGeometryRef());
        options.SetEnvironment(&environment);
        options.SetAxisSystem(axisSystem);
        QCOMPARE(options.GetEnvironment().data(), &environment);
        QCOMPARE(options.GetAxisSystem().data(), axisSystem);
    }
    QVERIFY(options.GetEnvironment().isNull());
    QVERIFY(options.GetAxisSystem().isNull());
}

void TestLaserOptions::driverIsMadeOnce()
{
    Options options;
    const QSharedPointer<ZETLaserProcesses> processes = options.GetLaserProcesses();
    QVERIFY(processes);
    QCOMPARE(options.GetLaserProcesses(), processes);
}

void TestLaserOptions::driverIsReleasedWithTheRecord()
{
    auto options = std::make_unique<Options>();
    const QPointer<ZETLaserProcesses> processes = options->GetLaserProcesses().data();
    QVERIFY(processes);
    options.reset();
    QVERIFY(processes.isNull());
}

void TestLaserOptions::dxfSettingsHaveTheirDefaults()
{
    const ZETLaserDXFOutputSettings settings;
    QCOMPARE(settings.GetTextLayer(), 0);
    QCOMPARE(settings.GetTextColor(), 0);
    QCOMPARE(settings.GetGeometryLayer(), 1);
    QCOMPARE(settings.GetGeometryColor(), 0);
    QCOMPARE(settings.GetGeometryLineStyle(), 0);
    QVERIFY(std::has_virtual_destructor_v<ZETLaserDXFOutputSettings>);
}

void TestLaserOptions::dxfSettingsShareUntilSet()
{
    ZETLaserDXFOutputSettings original;
    original.SetTextLayer(11);
    original.SetTextColor(12);
    original.SetGeometryLayer(13);
    original.SetGeometryColor(14);
    original.SetGeometryLineStyle(-15);
    ZETLaserDXFOutputSettings copy = original;
    QCOMPARE(DataOf(copy), DataOf(original));
    copy.SetTextLayer(21);
    QVERIFY(DataOf(copy) != DataOf(original));
    copy.SetTextColor(22);
    copy.SetGeometryLayer(23);
    copy.SetGeometryColor(24);
    copy.SetGeometryLineStyle(25);
    const auto values = [](const ZETLaserDXFOutputSettings& settings) {
        return QList<int>{settings.GetTextLayer(), settings.GetTextColor(), settings.GetGeometryLayer(),
                          settings.GetGeometryColor(), settings.GetGeometryLineStyle()};
    };
    QCOMPARE(values(original), (QList<int>{11, 12, 13, 14, -15}));
    QCOMPARE(values(copy), (QList<int>{21, 22, 23, 24, 25}));
    original = copy;
    QCOMPARE(values(original), values(copy));
    QCOMPARE(DataOf(copy), DataOf(original));
    original.SetTextLayer(31);
    QCOMPARE(copy.GetTextLayer(), 21);
}

void TestLaserOptions::dxfSettingsAreHandedOutAsCopy()
{
    Options options;
    ZETLaserDXFOutputSettings settings;
    settings.SetTextColor(5);
    options.SetDXFOutputSettings(settings);
    settings.SetTextColor(6);
    options.GetDXFOutputSettings().SetTextColor(7);
    QCOMPARE(options.GetDXFOutputSettings().GetTextColor(), 5);
}

QTEST_GUILESS_MAIN(TestLaserOptions)
#include "TestLaserOptions.moc"
