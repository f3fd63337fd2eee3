// How the options take plies, projectors and defaults from a model.

#include "features/ZETLaserProjector.h"
#include "laser/ZETLaserOptions.h"
#include "tests/support/ZETTestModel.h"

#include <ZETFeature/ZETFeatFolder.h>
#include <ZETFeature/ZETFeatRoot.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

#include <QTest>

using namespace Qt::Literals::StringLiterals;
using Options = ZETLaserOptions;
using Settings = ZETOpenComposites::MfgConfigurationSettings;

namespace
{
/*! Layup L1 with S1 (P1, P2, which has a subdivision of A and B, P3) and S2 (P4), layup L2 with S3 (P5). */
class Blade : public ZETTestModel
{
public:
    ZETCompLayup* layup1 = AddLayup("L1");
    ZETCompSequence* sequence1 = AddSequence(layup1, "S1");
    ZETCompPly* ply1 = AddPly(sequence1, "P1");
    ZETCompPly* ply2 = AddPly(sequence1, "P2");
    ZETCompSubdivision* subdivision = AddSubdivision(ply2);
    ZETCompSubPly* subPlyA = AddSubPly(subdivision, "A");
    ZETCompSubPly* subPlyB = AddSubPly(subdivision, "B");
    ZETCompPly* ply3 = AddPly(sequence1, "P3");
    ZETCompSequence* sequence2 = AddSequence(layup1, "S2");
    ZETCompPly* ply4 = AddPly(sequence2, "P4");
    ZETCompLayup* layup2 = AddLayup("L2");
    ZETCompSequence* sequence3 = AddSequence(layup2, "S3");
    ZETCompPly* ply5 = AddPly(sequence3, "P5");

    QString Included(bool skipParents, ZETFeatObject* object = nullptr) const
    {
        return Labels(Options::GetIncludedPlies(configuration, skipParents, object));
    }
};

/*! The root of a model that isn't a composite one. */
class OtherRoot : public ZETFeatRoot
{
public:
    explicit OtherRoot(ZETFeatContainer* container)
        : ZETFeatRoot(container)
    {
    }
};

/*! Settings in which each value that is pulled differs from the default of the options. */
Settings OddSettings()
{
    Settings settings;
    settings.use3D = false;
    settings.includeNormalVectors = false;
    settings.skipParentPlyWithSubPlies = true;
    settings.seedPoint = true;
    settings.seedCurve = true;
    settings.laserDataExtraGeometry = false;
    settings.nestingDataExtraGeometry = false;
    settings.nestingDataRosette = true;
    settings.laserDataRosetteSize = 30.0;
    settings.nestingDataRosetteSize = 40.0;
    return settings;
}

const auto outputTypeEmbedded = Options::OutputFlatNestingEmbedded;
} // namespace

class TestLaserJobSetup : public QObject
{
    Q_OBJECT

private slots:
    void includedPliesStandInModelOrder();
    void parentPlyIsLeftOutForItsSubPlies();
    void includedPliesStartAtAnyLevel();
    void includedPliesOfAnotherClassAreNone();
    void includedPliesNeedAConfiguration();
    void includedPliesNeedACompositeModel();
    void disabledSequenceHidesItsPlies();
    void disabledLayupHidesItsPlies();
    void disabledRootHidesAll();
    void disabledPlyAndSubPlyAreLeftOut();
    void disabledSubdivisionLeavesThePlyUnlessParentsAreSkipped();
    void plyWithAStrategyIsOutputAsItself();
    void configurationDecidesBetweenPlyAndSubPlies();

    void rootBringsItsConfigurationButNoDefaults();
    void rootLeavesTheSelectionAlone();
    void nullRootTakesTheConfigurationAway();
    void goneModelReadsAsNull();
    void configurationBringsDefaultsForLaserData();
    void configurationBringsDefaultsForFlatOutput();
    void configurationBringsDefaultsForNesting();
    void outputTypeIsReplacedUnlessNesting_data();
    void outputTypeIsReplacedUnlessNesting();
    void flatOutputTakesNestingSizeButLaserSwitches();
    void switchesOfTheConfigurationAreReadOneByOne_data();
    void switchesOfTheConfigurationAreReadOneByOne();
    void configurationSelectsAllPlies();
    void nullConfigurationChangesNothingElse();

    void selectionOfAllKeepsPliesWithoutFlatPatternIn3D();
    void selectionOfAllDropsPliesWithoutFlatPatternOtherwise_data();
    void selectionOfAllDropsPliesWithoutFlatPatternOtherwise();
    void selectionOfAllHeedsTheArgumentOnly();
    void selectionOfAllAsksForFlatPatternsWithoutConfiguration();
    void selectionOfAllReplaces();
    void selectionWithoutConfigurationIsEmpty();
    void selectionWithAGoneConfigurationIsEmpty();
    void addedPliesStandInModelOrder();
    void addedPlyStandsOnce();
    void addedParentPlyIsDroppedWhileParentsAreSkipped();
    void addedPlyMakesOthersDropOut();
    void addedPlyOfAnotherModelIsDropped();
    void addedPlyNeedsNoFlatPattern();
    void addedPlyMayBeNull();
    void addedPlyWithoutConfigurationEmptiesTheSelection();

    void allProjectorsStandInModelOrder();
    void projectorsReplaceEarlierOnes();
    void addedProjectorsStandInModelOrderAndOnce();
    void addedProjectorOfAnotherModelIsDropped();
    void addedProjectorMayBeNull();
    void projectorsWithoutRootAreNone();
};

void TestLaserJobSetup::includedPliesStandInModelOrder()
{
    const Blade blade;
    QCOMPARE(blade.Included(false), u"P1 P2 A B P3 P4 P5"_s);
}

void TestLaserJobSetup::parentPlyIsLeftOutForItsSubPlies()
{
    const Blade blade;
    QCOMPARE(blade.Included(true), u"P1 A B P3 P4 P5"_s);
}

void TestLaserJobSetup::includedPliesStartAtAnyLevel()
{
    const Blade blade;
    QCOMPARE(blade.Included(false, blade.layup1), u"P1 P2 A B P3 P4"_s);
    QCOMPARE(blade.Included(false, blade.sequence1), u"P1 P2 A B P3"_s);
    QCOMPARE(blade.Included(false, blade.ply2), u"P2 A B"_s);
    QCOMPARE(blade.Included(true, blade.ply2), u"A B"_s);
    QCOMPARE(blade.Included(true, blade.subdivision), u"A B"_s);
    QCOMPARE(blade.Included(true, blade.subPlyB), u"B"_s);
}

void TestLaserJobSetup::includedPliesOfAnotherClassAreNone()
{
    Blade blade;
    auto* folder = ZETTestModel::Add<ZETFeatFolder>(blade.layup1, "Folder");
    QCOMPARE(blade.Included(false, folder), QString());
    QCOMPARE(blade.Included(false, blade.root), QString()); // only null stands for the whole model
    QCOMPARE(blade.Included(false, blade.configuration), QString());
    QCOMPARE(blade.Included(false, ZETTestModel::AddStrategy(blade.ply1)), QString());
}

void TestLaserJobSetup::includedPliesNeedAConfiguration()
{
    const Blade blade;
    QVERIFY(Options::GetIncludedPlies(nullptr, false, nullptr).isEmpty());
    QVERIFY(Options::GetIncludedPlies(nullptr, false, blade.ply1).isEmpty());
}

void TestLaserJobSetup::includedPliesNeedACompositeModel()
{
    ZETFeatContainer container;
    auto* lone = new ZETCompMfgConfiguration(&container, ZETGeoGeometryRef());
    QVERIFY(Options::GetIncludedPlies(lone, false, nullptr).isEmpty());
    auto* below = new ZETCompMfgConfiguration(new OtherRoot(&container));
    QVERIFY(below->GetRoot());
    QVERIFY(Options::GetIncludedPlies(below, false, nullptr).isEmpty());
}

void TestLaserJobSetup::disabledSequenceHidesItsPlies()
{
    const Blade blade;
    ZETTestModel::Disable(blade.sequence1);
    QCOMPARE(blade.Included(false), u"P4 P5"_s);
    QCOMPARE(blade.Included(false, blade.sequence1), QString());
    QCOMPARE(blade.Included(false, blade.ply1), QString()); // because an ancestor is disabled
}

void TestLaserJobSetup::disabledLayupHidesItsPlies()
{
    const Blade blade;
    ZETTestModel::Disable(blade.layup1);
    QCOMPARE(blade.Included(false), u"P5"_s);
}

void TestLaserJobSetup::disabledRootHidesAll()
{
    const Blade blade;
    ZETTestModel::Disable(blade.root);
    QCOMPARE(blade.Included(false), QString());
}

void TestLaserJobSetup::disabledPlyAndSubPlyAreLeftOut()
{
    const Blade blade;
    ZETTestModel::Disable(blade.ply1);
    ZETTestModel::Disable(blade.subPlyA);
    QCOMPARE(blade.Included(false), u"P2 B P3 P4 P5"_s);
    QCOMPARE(blade.Included(false, blade.subPlyA), QString());
    ZETTestModel::Disable(blade.ply2);
    QCOMPARE(blade.Included(false), u"P3 P4 P5"_s); // the sub-plies go with their ply
}

void TestLaserJobSetup::disabledSubdivisionLeavesThePlyUnlessParentsAreSkipped()
{
    const Blade blade;
    ZETTestModel::Disable(blade.subdivision);
    QCOMPARE(blade.Included(false, blade.ply2), u"P2"_s);
    QCOMPARE(blade.Included(true, blade.ply2), QString());
}

void TestLaserJobSetup::plyWithAStrategyIsOutputAsItself()
{
    const Blade blade;
    ZETTestModel::AddStrategy(blade.ply1);
    QCOMPARE(blade.Included(false, blade.ply1), u"P1"_s);
    QCOMPARE(blade.Included(true, blade.ply1), u"P1"_s);
}

void TestLaserJobSetup::configurationDecidesBetweenPlyAndSubPlies()
{
    Blade blade;
    auto* strategy = ZETTestModel::AddStrategy(blade.ply2);
    auto* other = ZETTestModel::Add<ZETCompMfgConfiguration>(blade.root, "Other");
    ZETOpenComposites::SetIncluded(*blade.configuration, *blade.ply2, blade.subdivision);
    ZETOpenComposites::SetIncluded(*other, *blade.ply2, strategy);
    QCOMPARE(blade.Included(true, blade.ply2), u"A B"_s);
    QCOMPARE(ZETTestModel::Labels(Options::GetIncludedPlies(other, true, blade.ply2)), u"P2"_s);
}

void TestLaserJobSetup::rootBringsItsConfigurationButNoDefaults()
{
    const Blade blade;
    ZETOpenComposites::SetSettings(*blade.configuration, OddSettings());
    Options options;
    options.SetCompRoot(blade.root);
    QCOMPARE(options.GetCompRoot().data(), blade.root);
    QCOMPARE(options.GetActiveConfiguration().data(), blade.configuration);
    QCOMPARE(options.GetOutputType(), Options::Output3D);
    QCOMPARE(options.GetRosetteSize(), 100.0);
    QCOMPARE(options.GetOutputExtraGeometry(), 1);
    QVERIFY(options.GetIncludeNormalVectors());
    QVERIFY(options.GetPlies().isEmpty());
}

void TestLaserJobSetup::rootLeavesTheSelectionAlone()
{
    const Blade blade;
    const Blade other;
    ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::Output3D);
    options.SelectAllProjectors();
    options.SetCompRoot(other.root);
    QCOMPARE(options.GetPlies().size(), 7);
    QCOMPARE(options.GetPlies().first(), blade.ply1);
    QCOMPARE(ZETTestModel::Labels(options.GetProjectors()), u"Left"_s);
}

void TestLaserJobSetup::nullRootTakesTheConfigurationAway()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SetCompRoot(nullptr);
    QVERIFY(options.GetCompRoot().isNull());
    QVERIFY(options.GetActiveConfiguration().isNull());
}

void TestLaserJobSetup::goneModelReadsAsNull()
{
    Options options;
    {
        const Blade blade;
        options.SetCompRoot(blade.root);
    }
    QVERIFY(options.GetCompRoot().isNull());
    QVERIFY(options.GetActiveConfiguration().isNull());
}

void TestLaserJobSetup::configurationBringsDefaultsForLaserData()
{
    const Blade blade;
    Settings settings = OddSettings();
    settings.use3D = true;
    settings.nestingDataExtraGeometry = true;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    Options options;
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(options.GetActiveConfiguration().data(), blade.configuration);
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 1);
    QCOMPARE(options.GetIncludeNormalVectors(), false);
    QCOMPARE(options.GetOutputType(), Options::Output3D);
    QCOMPARE(options.GetRosetteSize(), 30.0);
    QCOMPARE(options.GetUseSeedPoint(), 1);
    QCOMPARE(options.GetUseSeedCurve(), 1);
    QCOMPARE(options.GetOutputExtraGeometry(), 0);
    QCOMPARE(options.GetOutputRosette(), 0); // follows the extra geometry of laser data, not the rosette of nesting
    QCOMPARE(options.GetRosetteSizeQuilmon(), 100.0);
}

void TestLaserJobSetup::configurationBringsDefaultsForFlatOutput()
{
    const Blade blade;
    ZETOpenComposites::SetSettings(*blade.configuration, OddSettings());
    Options options;
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(options.GetOutputType(), Options::OutputFlat);
    QCOMPARE(options.GetRosetteSize(), 40.0);
}

void TestLaserJobSetup::configurationBringsDefaultsForNesting()
{
    const Blade blade;
    Settings settings = OddSettings();
    settings.skipParentPlyWithSubPlies = false;
    settings.laserDataExtraGeometry = true;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    Options options;
    options.SetOutputType(Options::OutputFlatNesting);
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), 1); // whatever the configuration says
    QCOMPARE(options.GetIncludeNormalVectors(), false);
    QCOMPARE(options.GetOutputType(), Options::OutputFlatNesting);
    QCOMPARE(options.GetRosetteSize(), 40.0);
    QCOMPARE(options.GetUseSeedPoint(), 1);
    QCOMPARE(options.GetUseSeedCurve(), 1);
    QCOMPARE(options.GetOutputExtraGeometry(), 0);
    QCOMPARE(options.GetOutputRosette(), 1);
}

void TestLaserJobSetup::outputTypeIsReplacedUnlessNesting_data()
{
    QTest::addColumn<Options::EOutputType>("type");
    QTest::addColumn<bool>("use3D");
    QTest::addColumn<Options::EOutputType>("expected");
    QTest::newRow("3D stays") << Options::Output3D << true << Options::Output3D;
    QTest::newRow("3D becomes flat") << Options::Output3D << false << Options::OutputFlat;
    QTest::newRow("flat becomes 3D") << Options::OutputFlat << true << Options::Output3D;
    QTest::newRow("flat stays") << Options::OutputFlat << false << Options::OutputFlat;
    QTest::newRow("nesting stays with 3D") << Options::OutputFlatNesting << true << Options::OutputFlatNesting;
    QTest::newRow("nesting stays with flat") << Options::OutputFlatNesting << false << Options::OutputFlatNesting;
    QTest::newRow("embedded nesting becomes 3D") << outputTypeEmbedded << true << Options::Output3D;
    QTest::newRow("embedded nesting becomes flat") << outputTypeEmbedded << false << Options::OutputFlat;
}

void TestLaserJobSetup::outputTypeIsReplacedUnlessNesting()
{
    QFETCH(Options::EOutputType, type);
    QFETCH(bool, use3D);
    const Blade blade;
    Settings settings;
    settings.use3D = use3D;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    Options options;
    options.SetOutputType(type);
    options.SetActiveConfiguration(blade.configuration);
    QTEST(options.GetOutputType(), "expected");
    QCOMPARE(options.GetSkipParentPlyWithSubPlies(), type == Options::OutputFlatNesting ? 1 : 0);
}

void TestLaserJobSetup::flatOutputTakesNestingSizeButLaserSwitches()
{
    const Blade blade;
    Settings settings;
    settings.use3D = false;
    settings.laserDataRosetteSize = 30.0;
    settings.nestingDataRosetteSize = 40.0;
    settings.laserDataExtraGeometry = true;
    settings.nestingDataExtraGeometry = false;
    settings.nestingDataRosette = false;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    Options options;
    options.SetOutputType(Options::OutputFlat);
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(options.GetRosetteSize(), 40.0);
    QCOMPARE(options.GetOutputExtraGeometry(), 1);
    QCOMPARE(options.GetOutputRosette(), 1);
}

void TestLaserJobSetup::switchesOfTheConfigurationAreReadOneByOne_data()
{
    QTest::addColumn<bool>("nesting");
    QTest::addColumn<int>("which"); // the one switch of the configuration that is on
    QTest::addColumn<QList<int>>("expected");
    // normals, seed point, seed curve, extra geometry, rosette, skip parents
    QTest::newRow("laser: none") << false << -1 << QList<int>{0, 0, 0, 0, 0, 0};
    QTest::newRow("laser: normals") << false << 0 << QList<int>{1, 0, 0, 0, 0, 0};
    QTest::newRow("laser: skip parents") << false << 1 << QList<int>{0, 0, 0, 0, 0, 1};
    QTest::newRow("laser: seed point") << false << 2 << QList<int>{0, 1, 0, 0, 0, 0};
    QTest::newRow("laser: seed curve") << false << 3 << QList<int>{0, 0, 1, 0, 0, 0};
    QTest::newRow("laser: extra geometry") << false << 4 << QList<int>{0, 0, 0, 1, 1, 0};
    QTest::newRow("laser: nesting extra geometry") << false << 5 << QList<int>{0, 0, 0, 0, 0, 0};
    QTest::newRow("laser: nesting rosette") << false << 6 << QList<int>{0, 0, 0, 0, 0, 0};
    QTest::newRow("nesting: none") << true << -1 << QList<int>{0, 0, 0, 0, 0, 1};
    QTest::newRow("nesting: seed point") << true << 2 << QList<int>{0, 1, 0, 0, 0, 1};
    QTest::newRow("nesting: extra geometry") << true << 4 << QList<int>{0, 0, 0, 0, 0, 1};
    QTest::newRow("nesting: nesting extra geometry") << true << 5 << QList<int>{0, 0, 0, 1, 0, 1};
    QTest::newRow("nesting: nesting rosette") << true << 6 << QList<int>{0, 0, 0, 0, 1, 1};
}

void TestLaserJobSetup::switchesOfTheConfigurationAreReadOneByOne()
{
    QFETCH(bool, nesting);
    QFETCH(int, which);
    const Blade blade;
    Settings settings;
    settings.includeNormalVectors = which == 0;
    settings.skipParentPlyWithSubPlies = which == 1;
    settings.seedPoint = which == 2;
    settings.seedCurve = which == 3;
    settings.laserDataExtraGeometry = which == 4;
    settings.nestingDataExtraGeometry = which == 5;
    settings.nestingDataRosette = which == 6;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    Options options;
    options.SetOutputType(nesting ? Options::OutputFlatNesting : Options::Output3D);
    // Check-box states other than 0 and 1, which must be overwritten.
    options.SetUseSeedPoint(2);
    options.SetUseSeedCurve(2);
    options.SetOutputExtraGeometry(2);
    options.SetOutputRosette(2);
    options.SetActiveConfiguration(blade.configuration);
    const QList<int> actual{options.GetIncludeNormalVectors(), options.GetUseSeedPoint(),
                            options.GetUseSeedCurve(),         options.GetOutputExtraGeometry(),
                            options.GetOutputRosette(),        options.GetSkipParentPlyWithSubPlies()};
    QTEST(actual, "expected");
}

void TestLaserJobSetup::configurationSelectsAllPlies()
{
    const Blade blade;
    ZETTestModel::AddFlatContour(blade.ply4, "C4");
    Options options;
    options.SetCompRoot(blade.root);
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 P2 A B P3 P4 P5"_s);

    Settings settings;
    settings.use3D = false;
    ZETOpenComposites::SetSettings(*blade.configuration, settings);
    options.SetActiveConfiguration(blade.configuration);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P4"_s); // by the new output type
}

void TestLaserJobSetup::nullConfigurationChangesNothingElse()
{
    const Blade blade;
    Options options;
    options.SetActiveConfiguration(blade.configuration);
    options.SetOutputRosette(1);
    options.SetOutputType(Options::OutputFlatNestingEmbedded);
    options.SetActiveConfiguration(nullptr);
    QVERIFY(options.GetActiveConfiguration().isNull());
    QCOMPARE(options.GetOutputRosette(), 1);
    QCOMPARE(options.GetOutputType(), Options::OutputFlatNestingEmbedded);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 P2 A B P3 P4 P5"_s);
}

void TestLaserJobSetup::selectionOfAllKeepsPliesWithoutFlatPatternIn3D()
{
    const Blade blade;
    ZETTestModel::AddFlatContour(blade.ply1, "C1");
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::Output3D);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 P2 A B P3 P4 P5"_s);
}

void TestLaserJobSetup::selectionOfAllDropsPliesWithoutFlatPatternOtherwise_data()
{
    QTest::addColumn<Options::EOutputType>("type");
    QTest::newRow("flat") << Options::OutputFlat;
    QTest::newRow("nesting") << Options::OutputFlatNesting;
    QTest::newRow("embedded nesting") << Options::OutputFlatNestingEmbedded;
}

void TestLaserJobSetup::selectionOfAllDropsPliesWithoutFlatPatternOtherwise()
{
    QFETCH(Options::EOutputType, type);
    const Blade blade;
    ZETTestModel::AddFlatContour(blade.ply1, "C1");
    ZETTestModel::AddFlatContour(blade.subPlyB, "CB");
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(type);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 B"_s);
}

void TestLaserJobSetup::selectionOfAllHeedsTheArgumentOnly()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SetOutputType(Options::OutputFlat);
    options.SelectAllPlies(Options::Output3D);
    QCOMPARE(options.GetPlies().size(), 7);
    options.SetOutputType(Options::Output3D);
    options.SelectAllPlies(Options::OutputFlat);
    QVERIFY(options.GetPlies().isEmpty());
}

void TestLaserJobSetup::selectionOfAllAsksForFlatPatternsWithoutConfiguration()
{
    const Blade blade;
    ZETTestModel::AddFlatContour(blade.ply1, "C1"); // in the first strategy, which counts without a configuration
    auto* bare = ZETTestModel::AddStrategy(blade.ply1);
    ZETOpenComposites::SetIncluded(*blade.configuration, *blade.ply1, bare);
    QVERIFY(!blade.ply1->GetFlatPattern(blade.configuration));
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::OutputFlat);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1"_s);
}

void TestLaserJobSetup::selectionOfAllReplaces()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::Output3D);
    options.SelectAllPlies(Options::Output3D);
    QCOMPARE(options.GetPlies().size(), 7);
    options.SetSkipParentPlyWithSubPlies(1);
    ZETTestModel::Disable(blade.sequence2);
    options.SelectAllPlies(Options::Output3D);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 A B P3 P5"_s);
}

void TestLaserJobSetup::selectionWithoutConfigurationIsEmpty()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::Output3D);
    options.SetActiveConfiguration(nullptr);
    options.SelectAllPlies(Options::Output3D);
    QVERIFY(options.GetPlies().isEmpty());
}

void TestLaserJobSetup::selectionWithAGoneConfigurationIsEmpty()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    {
        const Blade gone;
        options.SetActiveConfiguration(gone.configuration);
        QCOMPARE(options.GetPlies().size(), 7);
    }
    options.SelectAllPlies(Options::Output3D);
    QVERIFY(options.GetPlies().isEmpty());
}

void TestLaserJobSetup::addedPliesStandInModelOrder()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    for (ZETCompPlyBase* ply : QList<ZETCompPlyBase*>{blade.ply5, blade.subPlyA, blade.ply1, blade.ply2})
        options.AddPly(ply);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1 P2 A P5"_s);
}

void TestLaserJobSetup::addedPlyStandsOnce()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.AddPly(blade.ply1);
    options.AddPly(blade.ply1);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1"_s);
}

void TestLaserJobSetup::addedParentPlyIsDroppedWhileParentsAreSkipped()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SetSkipParentPlyWithSubPlies(1);
    options.AddPly(blade.ply1);
    options.AddPly(blade.ply2);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P1"_s);
}

void TestLaserJobSetup::addedPlyMakesOthersDropOut()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllPlies(Options::Output3D);
    ZETTestModel::Disable(blade.sequence1);
    options.AddPly(blade.ply1); // disabled with its sequence, so it isn't added either
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P4 P5"_s);
}

void TestLaserJobSetup::addedPlyOfAnotherModelIsDropped()
{
    const Blade blade;
    const Blade other;
    Options options;
    options.SetCompRoot(blade.root);
    options.AddPly(blade.ply3);
    options.AddPly(other.ply1);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P3"_s);
}

void TestLaserJobSetup::addedPlyNeedsNoFlatPattern()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.SetOutputType(Options::OutputFlat);
    options.AddPly(blade.ply3);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P3"_s);
}

void TestLaserJobSetup::addedPlyMayBeNull()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.AddPly(blade.ply3);
    options.AddPly(nullptr);
    QCOMPARE(ZETTestModel::Labels(options.GetPlies()), u"P3"_s);
}

void TestLaserJobSetup::addedPlyWithoutConfigurationEmptiesTheSelection()
{
    const Blade blade;
    Options options;
    options.SetCompRoot(blade.root);
    options.AddPly(blade.ply3);
    options.SetActiveConfiguration(nullptr);
    options.AddPly(blade.ply1);
    QVERIFY(options.GetPlies().isEmpty());
}

void TestLaserJobSetup::allProjectorsStandInModelOrder()
{
    const Blade blade;
    ZETTestModel::Add<ZETLaserProjector>(blade.root, "Last");
    auto* folder = ZETTestModel::Add<ZETFeatFolder>(blade.layup1, "Folder");
    auto* nested = ZETTestModel::Add<ZETLaserProjector>(folder, "Nested");
    ZETTestModel::Disable(nested); // a disabled projector is still a projector
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllProjectors();
    QCOMPARE(ZETTestModel::Labels(options.GetProjectors()), u"Nested Last"_s);
}

void TestLaserJobSetup::projectorsReplaceEarlierOnes()
{
    const Blade blade;
    ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    Options options;
    options.SetCompRoot(blade.root);
    options.SelectAllProjectors();
    options.SelectAllProjectors();
    QCOMPARE(options.GetProjectors().size(), 1);
    const Blade other;
    options.SetCompRoot(other.root);
    options.SelectAllProjectors();
    QVERIFY(options.GetProjectors().isEmpty());
}

void TestLaserJobSetup::addedProjectorsStandInModelOrderAndOnce()
{
    const Blade blade;
    auto* left = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    ZETTestModel::Add<ZETLaserProjector>(blade.root, "Middle");
    auto* right = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Right");
    Options options;
    options.SetCompRoot(blade.root);
    for (const ZETLaserProjector* projector : {right, left, right})
        options.AddProjector(projector);
    QCOMPARE(ZETTestModel::Labels(options.GetProjectors()), u"Left Right"_s);
}

void TestLaserJobSetup::addedProjectorOfAnotherModelIsDropped()
{
    const Blade blade;
    const Blade other;
    auto* left = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    auto* right = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Right");
    auto* foreign = ZETTestModel::Add<ZETLaserProjector>(other.root, "Foreign");
    Options options;
    options.SetCompRoot(blade.root);
    options.AddProjector(right);
    options.AddProjector(left);
    options.AddProjector(foreign);
    QCOMPARE(ZETTestModel::Labels(options.GetProjectors()), u"Left Right"_s);
}

void TestLaserJobSetup::addedProjectorMayBeNull()
{
    const Blade blade;
    auto* left = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    Options options;
    options.SetCompRoot(blade.root);
    options.AddProjector(left);
    options.AddProjector(nullptr);
    QCOMPARE(ZETTestModel::Labels(options.GetProjectors()), u"Left"_s);
}

void TestLaserJobSetup::projectorsWithoutRootAreNone()
{
    const Blade blade;
    auto* left = ZETTestModel::Add<ZETLaserProjector>(blade.root, "Left");
    Options options;
    options.AddProjector(left);
    QVERIFY(options.GetProjectors().isEmpty());
    options.SetCompRoot(blade.root);
    options.AddProjector(left);
    options.SetCompRoot(nullptr);
    options.SelectAllProjectors();
    QVERIFY(options.GetProjectors().isEmpty());
}

QTEST_GUILESS_MAIN(TestLaserJobSetup)
#include "TestLaserJobSetup.moc"
