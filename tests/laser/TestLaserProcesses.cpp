#include "laser/ZETLaserProcesses.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses_p.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestTranslator.h"
#include "tests/support/ZETTestModel.h"

#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETVisualization/ZETVisEnvironment.h>

#include <QFile>
#include <QLocale>
#include <QTest>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using Options = ZETLaserOptions;

namespace
{
const auto noSuchType = static_cast<Options::EOutputFileType>(13);

ZETLaserGroup& RootOf(Options& options)
{
    return *ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses()).root;
}

/*! Puts a group with one open curve through points on the x axis into the tree of the job. */
ZETLaserCurve& AddCurve(Options& options, const QList<double>& xs)
{
    const QSharedPointer<ZETLaserGroup> root = ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses()).root;
    const auto group = QSharedPointer<ZETLaserGroup>::create(root);
    const auto contour = QSharedPointer<ZETLaserContour>::create(group);
    const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    for (const double x : xs)
        curve->GetPoints().emplaceBack(ZETMathPoint(x, 0.0, 0.0), ZETMathVector());
    contour->AddCurve(curve);
    group->AddContour(contour);
    root->AddGroup(group);
    return *curve;
}

QList<double> XsOf(const ZETLaserCurve& curve)
{
    QList<double> xs;
    for (const ZETLaserPoint& point : curve.GetPoints())
        xs.append(point.GetPosition().GetX());
    return xs;
}

/*! One ply of a material, without a boundary. */
class Laminate : public ZETTestModel
{
public:
    ZETMatMaterial* material = Add<ZETMatMaterial>(root, "Carbon");
    ZETCompPly* ply = AddPly(AddSequence(AddLayup("L1"), "S1"), "P1");

    Laminate() { ZETOpenComposites::SetMaterials(*ply, {material}); }
};

} // namespace

class TestLaserProcesses : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nestFlagsAreCorrectedForLap_data();
    void nestFlagsAreCorrectedForLap();
    void nestFlagsAreLeftAloneForOtherTypes();
    void nestFlagsAreCorrectedOnceAtConstruction();
    void nestFlagsAreCorrectedWithoutMessageQueue();
    void nestFlagMessageIsTranslated();
    void freshDriverHasAnEmptyTree();

    void thinningTakesToleranceAndUnlimitedLength();
    void thinningTakesTheMaximumLengthIfItIsOn();
    void thinningIsOffWithoutItsSwitch();
    void thinningReadsTheOptionsLive();
    void thinningAnEmptyTreeSucceeds();

    void unknownTypeIsNotWrittenAndTheLocaleStays();
    void typesOfOneMakeShareTheirWriter();
    void aWrittenTypeIsWrittenAndTheSystemLocaleComesBack();
    void localeIsCWhileWriting();
    void exceptionOfAWriterLeavesTheCLocale();
    void typesOutsideOfTheEnumerationAreNotWritten();

    void modelIsReadIntoTheTree();
    void readingAgainGivesOneTreeAndKeepsMaterials();
    void readingNothingFails();
    void stepsOfAJobFollowEachOther();
    void filesThatAreNotWrittenAreToldUntilTheNextWriting();

    void nothingIsDisplayedBeforeTheFirstDisplay();
    void treeIsDisplayedAndErased();
    void rendererIsKept();
};

void TestLaserProcesses::init()
{
    ZETOpenMessageQueue::Install();
}

void TestLaserProcesses::cleanup()
{
    ZETOpenMessageQueue::Remove();
    QLocale::setDefault(QLocale::system());
}

void TestLaserProcesses::nestFlagsAreCorrectedForLap_data()
{
    QTest::addColumn<bool>("sequences");
    QTest::addColumn<bool>("plies");
    QTest::addColumn<bool>("sequencesThen");
    QTest::addColumn<bool>("pliesThen");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("both") << true << true << false << true
                          << QStringList{u"0 Disabled Nest Sequences Within Layup for LAP Laser"_s};
    QTest::newRow("none") << false << false << false << true
                          << QStringList{u"0 Enabled Nest Plies Within Sequence for LAP Laser"_s};
    QTest::newRow("sequences") << true << false << true << false << QStringList();
    QTest::newRow("plies") << false << true << false << true << QStringList();
}

void TestLaserProcesses::nestFlagsAreCorrectedForLap()
{
    QFETCH(bool, sequences);
    QFETCH(bool, plies);
    Options options;
    options.SetFileType(Options::FileLAP);
    options.SetNestSequencesWithinLayup(sequences);
    options.SetNestPliesWithinSequence(plies);
    options.GetLaserProcesses();
    QTEST(options.GetNestSequencesWithinLayup(), "sequencesThen");
    QTEST(options.GetNestPliesWithinSequence(), "pliesThen");
    QTEST(QueuedMessages(), "messages");
}

void TestLaserProcesses::nestFlagsAreLeftAloneForOtherTypes()
{
    for (int type = -1; type <= 13; ++type) {
        if (type == Options::FileLAP)
            continue;
        Options options;
        options.SetFileType(static_cast<Options::EOutputFileType>(type));
        options.GetLaserProcesses();
        QVERIFY(options.GetNestSequencesWithinLayup() && options.GetNestPliesWithinSequence());
    }
    QVERIFY(QueuedMessages().isEmpty());
}

void TestLaserProcesses::nestFlagsAreCorrectedOnceAtConstruction()
{
    Options late;
    late.GetLaserProcesses();
    late.SetFileType(Options::FileLAP);
    late.GetLaserProcesses();
    QVERIFY(late.GetNestSequencesWithinLayup() && late.GetNestPliesWithinSequence());
    QVERIFY(QueuedMessages().isEmpty());

    Options early;
    early.SetFileType(Options::FileLAP);
    early.GetLaserProcesses();
    early.SetNestSequencesWithinLayup(true);
    early.GetLaserProcesses();
    QVERIFY(early.GetNestSequencesWithinLayup());
    QCOMPARE(QueuedMessages().size(), 1);
}

void TestLaserProcesses::nestFlagsAreCorrectedWithoutMessageQueue()
{
    ZETOpenMessageQueue::Remove();
    Options both;
    both.SetFileType(Options::FileLAP);
    both.GetLaserProcesses();
    QVERIFY(!both.GetNestSequencesWithinLayup());
    Options none;
    none.SetFileType(Options::FileLAP);
    none.SetNestSequencesWithinLayup(false);
    none.SetNestPliesWithinSequence(false);
    none.GetLaserProcesses();
    QVERIFY(none.GetNestPliesWithinSequence());
}

void TestLaserProcesses::nestFlagMessageIsTranslated()
{
    const TestTranslator translator("ZETLaserProcesses");
    Options options;
    options.SetFileType(Options::FileLAP);
    options.GetLaserProcesses();
    QCOMPARE(QueuedMessages(), (QStringList{u"0 * Disabled Nest Sequences Within Layup for LAP Laser"_s}));
}

void TestLaserProcesses::freshDriverHasAnEmptyTree()
{
    Options options;
    const ZETLaserGroup& root = RootOf(options);
    QVERIFY(root.GetChildren().isEmpty());
    QCOMPARE(root.parent(), nullptr);
    QCOMPARE(options.GetLaserProcesses()->parent(), nullptr);
    QVERIFY(ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses()).materials.isEmpty());
}

void TestLaserProcesses::thinningTakesToleranceAndUnlimitedLength()
{
    Options options; // the default of the length, 1000000.0, isn't what limits chords while it is off
    const ZETLaserCurve& longer = AddCurve(options, {0.0, 1.0, 9999999.0});
    const ZETLaserCurve& tooLong = AddCurve(options, {0.0, 1.0, 10000000.0});
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
    QCOMPARE(XsOf(longer), (QList<double>{0.0, 9999999.0}));
    QCOMPARE(XsOf(tooLong), (QList<double>{0.0, 1.0, 10000000.0}));
}

void TestLaserProcesses::thinningTakesTheMaximumLengthIfItIsOn()
{
    Options options;
    options.SetMaxLength(5.0);
    options.SetUseMaxLength(true);
    const ZETLaserCurve& curve = AddCurve(options, {0.0, 2.0, 4.0, 6.0, 8.0});
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
    QCOMPARE(XsOf(curve), (QList<double>{0.0, 4.0, 8.0}));
}

void TestLaserProcesses::thinningIsOffWithoutItsSwitch()
{
    Options options;
    options.SetUseMinimizePointsTolerance(false);
    options.SetUseMaxLength(true);
    const ZETLaserCurve& curve = AddCurve(options, {0.0, 1.0, 2.0});
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
    QCOMPARE(XsOf(curve), (QList<double>{0.0, 1.0, 2.0}));
}

void TestLaserProcesses::thinningReadsTheOptionsLive()
{
    Options options;
    const ZETLaserCurve& curve = AddCurve(options, {0.0, 1.0, 2.0});
    options.SetMinimizePointsTolerance(0.0);
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
    QCOMPARE(curve.GetPointCount(), 3);
    options.SetMinimizePointsTolerance(0.01);
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
    QCOMPARE(curve.GetPointCount(), 2);
}

void TestLaserProcesses::thinningAnEmptyTreeSucceeds()
{
    Options options;
    QVERIFY(options.GetLaserProcesses()->ProcessLaserData());
}

void TestLaserProcesses::unknownTypeIsNotWrittenAndTheLocaleStays()
{
    const QLocale german(QLocale::German, QLocale::Germany);
    QLocale::setDefault(german);
    Options options;
    options.SetFileType(noSuchType);
    options.SetFileName(u"unknown.txt"_s);
    QVERIFY(!options.GetLaserProcesses()->WriteLaserData());
    QCOMPARE(QLocale(), german);
    QVERIFY(QueuedMessages().isEmpty());
    QVERIFY(!QFile::exists(u"unknown.txt"_s));
}

void TestLaserProcesses::typesOfOneMakeShareTheirWriter()
{
    const auto writerOf = [](Options::EOutputFileType type) { return ZETLaserFileType::Of(type).makeWriter; };
    QVERIFY(writerOf(Options::FileFARO) == writerOf(Options::FileLPT));
    QVERIFY(writerOf(Options::FileAlignedVision) == writerOf(Options::FileAssemblyGuidance));
    QVERIFY(writerOf(Options::FileQuilmonPartData) == writerOf(Options::FileGeneralScanning));
}

void TestLaserProcesses::aWrittenTypeIsWrittenAndTheSystemLocaleComesBack()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    Options options;
    options.SetFileType(Options::FileVirtek);
    options.SetFileName(u"written.ply"_s);
    AddCurve(options, {0.0, 1.5});
    QVERIFY(options.GetLaserProcesses()->WriteLaserData());
    QFile file(u"written.ply"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("\nP 2\n0.000000 0.000000 0.000000\n1.500000 0.000000 0.000000\n"));
    QVERIFY(QFile::exists(u"written.ply-report.htm"_s));
    // Meant: not the locale that the application had set.
    QCOMPARE(QLocale(), QLocale::system());
}

void TestLaserProcesses::localeIsCWhileWriting()
{
    QList<QLocale> seen;
    ZETOpenMessageQueue::Install([&](const ZETOpenMessage&) { seen.append(QLocale()); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    Options options;
    options.SetFileType(Options::FileVirtek);
    options.SetFileName(u"locale.ply"_s);
    QVERIFY(options.GetLaserProcesses()->WriteLaserData());
    QVERIFY(!seen.isEmpty()); // the writer told that it writes
    for (const QLocale& locale : seen)
        QCOMPARE(locale, QLocale(QLocale::C));
}

void TestLaserProcesses::exceptionOfAWriterLeavesTheCLocale()
{
    ZETOpenMessageQueue::Install([](const ZETOpenMessage&) { throw std::runtime_error("queue"); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    Options options;
    options.SetFileType(Options::FileVirtek);
    options.SetFileName(u"thrown.ply"_s);
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, options.GetLaserProcesses()->WriteLaserData());
    QCOMPARE(QLocale(), QLocale(QLocale::C));
}

void TestLaserProcesses::typesOutsideOfTheEnumerationAreNotWritten()
{
    for (int type = Options::FileVirtek; type <= Options::FileQuilmonPartData; ++type)
        QVERIFY2(ZETLaserFileType::Of(Options::EOutputFileType(type)).makeWriter, qPrintable(QString::number(type)));
    const QList<Options::EOutputFileType> types{Options::EOutputFileType(-1),
                                                Options::EOutputFileType(Options::FileQuilmonPartData + 1)};
    for (const Options::EOutputFileType type : types) {
        Options options;
        options.SetFileType(type);
        options.SetFileName(u"unwritten.txt"_s);
        AddCurve(options, {0.0, 1.0});
        QVERIFY(!options.GetLaserProcesses()->WriteLaserData());
        QVERIFY(!QFile::exists(u"unwritten.txt"_s));
    }
}

void TestLaserProcesses::modelIsReadIntoTheTree()
{
    const Laminate model;
    Options options;
    options.SetCompRoot(model.root);
    options.SelectAllPlies(Options::Output3D);
    QVERIFY(options.GetLaserProcesses()->ReadLaserData());
    const ZETLaserGroup& root = RootOf(options);
    QCOMPARE(root.GetName(), u"Part"_s);
    QCOMPARE(root.GetChildren().size(), 1);
    QCOMPARE(root.GetChildren().first()->GetName(), u"L1"_s);
    QCOMPARE(ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses()).materials,
             (QList<ZETMatMaterial*>{model.material}));
}

void TestLaserProcesses::readingAgainGivesOneTreeAndKeepsMaterials()
{
    const Laminate model;
    Options options;
    options.SetCompRoot(model.root);
    options.SelectAllPlies(Options::Output3D);
    const auto& record = ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses());
    QVERIFY(options.GetLaserProcesses()->ReadLaserData());
    QVERIFY(options.GetLaserProcesses()->ReadLaserData());
    QCOMPARE(record.root->GetChildren().size(), 1);
    QCOMPARE(record.materials, (QList<ZETMatMaterial*>{model.material}));

    options.SetActiveConfiguration(nullptr);
    options.SelectAllPlies(Options::Output3D);
    QVERIFY(!options.GetLaserProcesses()->ReadLaserData());
    QVERIFY(record.root->GetChildren().isEmpty());
    QCOMPARE(record.materials, (QList<ZETMatMaterial*>{model.material})); // of all reads
}

void TestLaserProcesses::readingNothingFails()
{
    const ZETTestModel model;
    Options options;
    options.SetCompRoot(model.root);
    QVERIFY(!options.GetLaserProcesses()->ReadLaserData());
}

void TestLaserProcesses::stepsOfAJobFollowEachOther()
{
    const Laminate model;
    Options options;
    options.SetCompRoot(model.root);
    options.SetActiveConfiguration(model.configuration);
    options.SetFileType(Options::FileVirtek);
    options.SetFileName(u"job.ply"_s);
    const QSharedPointer<ZETLaserProcesses> processes = options.GetLaserProcesses();
    QVERIFY(processes->ReadLaserData());
    QVERIFY(processes->ProcessLaserData());
    QVERIFY(processes->WriteLaserData());
    QVERIFY(QFile::exists(u"job.ply"_s));
}

void TestLaserProcesses::filesThatAreNotWrittenAreToldUntilTheNextWriting()
{
    Options options;
    options.SetFileType(Options::FileVirtek);
    const QSharedPointer<ZETLaserProcesses> processes = options.GetLaserProcesses();
    QVERIFY(processes->GetUnwrittenFiles().isEmpty());
    options.SetFileName(u"no such folder/job.ply"_s);
    QVERIFY(processes->WriteLaserData());
    QCOMPARE(processes->GetUnwrittenFiles().keys(),
             (QStringList{u"no such folder/job.ply"_s, u"no such folder/job.ply-report.htm"_s}));
    options.SetFileName(u"there.ply"_s);
    QVERIFY(processes->WriteLaserData());
    QVERIFY(processes->GetUnwrittenFiles().isEmpty());
}

void TestLaserProcesses::nothingIsDisplayedBeforeTheFirstDisplay()
{
    Options options;
    options.GetLaserProcesses()->EraseLaserData();
    QVERIFY(options.GetLaserProcesses()->GetRenderVisObjects().isEmpty());
}

void TestLaserProcesses::treeIsDisplayedAndErased()
{
    const Laminate model;
    ZETVisEnvironment scene;
    Options options;
    options.SetEnvironment(&scene);
    AddCurve(options, {0.0, 1.0});
    const auto group = RootOf(options).GetChildren().first();
    group->setProperty(ZETLaserEntityProperties::ply, QVariant::fromValue(model.ply));

    QVERIFY(options.GetLaserProcesses()->DisplayLaserData());
    const ZETLaserProcesses::VisObjects objects = options.GetLaserProcesses()->GetRenderVisObjects();
    QCOMPARE(objects.keys(), (QList<QPointer<ZETFeatObject>>{model.ply}));
    QCOMPARE(objects.first().keys(), (QList<Options::ELaserSourceType>{Options::SourcePly}));
    QCOMPARE(ZETOpenScene::GetObjects(scene), objects.first().values());

    options.GetLaserProcesses()->EraseLaserData();
    QVERIFY(options.GetLaserProcesses()->GetRenderVisObjects().isEmpty());
    QVERIFY(ZETOpenScene::GetObjects(scene).isEmpty());
}

void TestLaserProcesses::rendererIsKept()
{
    Options options;
    const auto& record = ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses());
    QVERIFY(!record.renderer);
    QVERIFY(options.GetLaserProcesses()->DisplayLaserData()); // an empty tree works
    const auto renderer = record.renderer;
    QVERIFY(renderer);
    options.GetLaserProcesses()->EraseLaserData();
    QVERIFY(options.GetLaserProcesses()->DisplayLaserData());
    QCOMPARE(record.renderer, renderer);
}

QTEST_GUILESS_MAIN(TestLaserProcesses)
#include "TestLaserProcesses.moc"
