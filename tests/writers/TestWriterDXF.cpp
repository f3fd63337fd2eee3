#include "writers/ZETLaserWriterDXF.h"

#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserProcesses.h"
#include "laser/ZETLaserProcesses_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "tests/support/TestDxf.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestThrown.h"
#include "tests/support/TestTranslator.h"
#include "tests/support/ZETTestModel.h"

#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>

#include <QDir>
#include <QFileInfo>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;
using Options = ZETLaserOptions;

namespace
{
/*! A square of 10 with a corner at x,y: 0 and 0, 10 and so on. Its centre is 5 off. */
const QString square = u"contour { closed 0,0,0 10,0,0 10,10,0 0,10,0 }"_s;
const QString squareVertices = u"0,0,0 10,0,0 10,10,0 0,10,0"_s;

/*! Two plies of two materials, and a material without a ply. Labels are 2 high. */
const QString twoPlies = u"rootname Wing labelsize 4 type 2 "
                         "material Carbon Twill C-17 material Glass Plain G.4 material Foam Core F/1 "
                         "layup L1 { sequence S1 { "
                         "ply P1 { of Carbon contour { open 0,0,0 10,0,0 } } "
                         "ply P2 { of Glass contour { closed 0,0,0 20,0,0 20,8,0 } } } } "_s;

void Write(TestJob& job, const QString& fileName = u"wing.DXF"_s)
{
    if (!job.Write<ZETLaserWriterDXF>(fileName))
        qFatal("Write() returned false");
}

TestDxf Dxf(const QString& fileName = u"wing.DXF"_s)
{
    return TestDxf(ReadBytes(fileName));
}

/*! The entities of the one file of a job. */
QStringList Entities(const QString& text)
{
    TestJob job(text);
    Write(job);
    return Dxf().entities;
}

QStringList Entities(TestJob& job)
{
    Write(job);
    return Dxf().entities;
}

QByteArray Report()
{
    return ReadBytes(u"wing.DXF-report.htm"_s);
}

/*! The files of DXF in the working folder, by name. */
QStringList Files()
{
    return QDir().entryList({u"wing*.DXF"_s}, QDir::Files, QDir::Name);
}

/*! "NAME FILE KEY" of each created file. */
QStringList Created(Options& options)
{
    QStringList texts;
    for (const Options::CreatedFile& created : options.GetCreatedFiles())
        texts += created.first + u' ' + created.second.first + u' ' +
                 QString::fromUtf8(ZETOpenMaterial::GetKey(created.second.second));
    return texts;
}

/*! The first ply or sub-ply of that label in the model. */
ZETCompPlyBase* PlyNamed(TestJob& job, const QString& label)
{
    const auto features = job.GetModel()->GetAllChildren();
    for (auto* feature : features) {
        if (feature->GetLabel() == label)
            if (auto* ply = qobject_cast<ZETCompPlyBase*>(feature))
                return ply;
    }
    qFatal("no ply %s", qPrintable(label));
}

/*! Appends a group with a line to the root that stands for \a ply. */
void AddPlyGroup(TestJob& job, ZETCompPly* ply)
{
    const auto other = ParseTree(u"ply X { contour { open 0,0,0 1,0,0 } }"_s);
    const auto group = other->GetChildren().first().staticCast<ZETLaserGroup>();
    group->setProperty("ZETCompPly", QVariant::fromValue(ply));
    job.GetTree()->AddGroup(group);
}
} // namespace

class TestWriterDXF : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { home = QDir::currentPath(); }
    void init();
    void cleanup();

    // laser
    void laserFileIsOne3DFileWithTheRootNameAsLabel();
    void laserFileWithoutPliesHasItsLabelAtTheOrigin();
    void flatLaserOutputIsIn3DToo();
    void laserFileHeedsNoFileMode();
    void laserFileFiltersNothing();
    void laserMessageComesAheadOfWriting();

    // entities
    void closedCurvesHaveTheFlagAndNoPointTwice();
    void curvesWithoutPointsWriteNothing();
    void groupsOfNeitherKindArePassedThrough();
    void groupsWithoutPointsAreSkippedAndNotCounted();
    void nullInThePropertyCountsAsPly();
    void offsetPointsAndAxisSystemMoveGeometryAndNoLabels();
    void rosetteIsOnLayerFour();
    void otherSourcesAreOnTheLayerOfGeometry();
    void settingsOfLayersAndColoursAreTaken();
    void parametersHaveNoFormAndAreTold();
    void parametersWithoutQueueAreDropped();
    void textsFollowTheContoursOrGoFirst();
    void textsAreEvaluatedAndNeedAPly();
    void namesOutsideAsciiAreUtf8();

    // labels
    void labelIsAtTheFlatSeedPoint();
    void strategyWithoutSeedTakesTheFlatPointWithoutSource();
    void firstFlatPointOfTheSeedCountsAloneEvenWithoutVertex();
    void labelWithoutSeedIsAtTheCentreOfTheFirstContour();
    void centreTakesAllCurvesAndEmptyOnesAddNothing();
    void contourWithoutPointsHasItsCentreAtTheOrigin();
    void labelOfAPlyWithoutContourIsSoughtFurther();
    void labelOfTheFirstPlyCountsEvenWithoutOutput();

    // inches
    void inchesScaleGeometryAndLabels();
    void inchesScaleALabelAtACentreTwice();
    void inchesLeaveThe3DTextInMillimetres();

    // nesting, one file
    void nestingInOneFileIsFlatWithOneLabelAboveTheTextPoint();
    void embeddedNestingIsNestingToo();
    void reportOfTheOneFileTellsPartFileAndCounts();
    void unknownFileModeWritesNothingMore();

    // nesting, materials
    void eachMaterialHasAFile();
    void materialThatNoPlyUsesHasAFileAndACountLineOfZero();
    void firstMaterialWithoutPliesHasNoCountLine();
    void materialsCanGoByTheirId();
    void materialLabelIsAtTheFirstPlyThatHasItFirst();
    void materialLabelMayBeThatOfASubPly();
    void subPliesAreFilteredByTheirMaterial();
    void nullMaterialIsPassedOver();

    // nesting, plies
    void eachPlyHasAFile();
    void plyOfSeveralGroupsHasOneFile();
    void reportOfThePliesHasNoCounts();
    void plyWithoutMaterialHasNoFile();
    void subPlyHasAFileAndItsLabelInTheName();
    void plyTakesItsSubPliesOutWithIt();
    void shapeNameIsEvaluatedForEachEntry();
    void shapeNameThatIsNotValidFallsBack();
    void shapeNameThatIsEmptyFallsBack();
    void labelIsTheShapeNameAndTheFileTakesTheSafeOne();
    void materialIdIsInTheLabelAndNotInTheKey();
    void namesThatAreNotUniqueAreTold();
    void namesThatDifferInCaseAreNotUnique();
    void oneMessageForEachEarlierEntryOfAName();
    void sameFileStandsInTheListOnce();
    void secondRunFindsTheNamesOfTheFirst();
    void equalEntriesGoTogether();
    void otherEntriesOfTheFileStay();
    void createdFilesHaveTheDefinitionOfTheMaterial();
    void materialOfTheShapeIsThatOfThePackaging();
    void packagingWithoutMaterialFallsBackToThePly();
    void contourWithoutStrategyTakesTheMaterialOfItsPly();
    void subPlyIsAskedForItsOwnContour();
    void configurationOfTheMaterialIsTheRootsAndThatOfTheTextPointTheOptions();
    void extraParametersOfTheContainerAreKnown();

    // names of files
    void fileNameWithoutDotTakesTheSuffixAtItsEnd();
    void lastDotCountsWhereverItStands();
    void fileThatCannotBeOpenedStopsNothing();

    // exceptions
    void plyOutsideASequenceThrows();
    void sequenceOutsideALayupThrows();
    void exceptionLeavesWhatWasWrittenAndTheCLocale();

    void textsAreTranslated();
    void withoutAQueueNothingIsTold();

    void cleanupTestCase();

private:
    QString home;
};

void TestWriterDXF::init()
{
    // A folder for each test, so that what it leaves can be looked at and read by others.
    QDir folder(home + u'/' + QLatin1StringView(QTest::currentTestFunction()));
    folder.removeRecursively();
    QVERIFY(folder.mkpath(u"."_s) && QDir::setCurrent(folder.path()));
    ZETOpenMessageQueue::Install();
}

void TestWriterDXF::cleanup()
{
    ZETOpenMessageQueue::Remove();
    QLocale::setDefault(QLocale::system());
    QDir::setCurrent(home);
}

void TestWriterDXF::cleanupTestCase()
{
    QString skipped;
    const QString faults = TestDxf::ReadWithEzdxf(home, &skipped);
    if (!skipped.isEmpty())
        QSKIP(qPrintable(skipped));
    QVERIFY2(faults.isEmpty(), qPrintable(faults));
}

void TestWriterDXF::laserFileIsOne3DFileWithTheRootNameAsLabel()
{
    TestJob job(u"rootname Wing type 0 layup L { sequence S { ply P1 { "_s + square + u" } } }"_s);
    Write(job);
    const TestDxf dxf = Dxf();
    QCOMPARE(dxf.units, 4);
    QCOMPARE(dxf.entities,
             (QStringList{u"text 0/0 at 5,5,0 high 50: Wing"_s, u"polyline 1/0/0 flags 9: "_s + squareVertices}));
    QCOMPARE(Files(), QStringList{u"wing.DXF"_s});
    QCOMPARE(ReportBody(Report()), QByteArray());
    QVERIFY(Report().contains("   Number of Plies = 1\n"));
    QVERIFY(job.GetOptions().GetCreatedFiles().isEmpty());
}

void TestWriterDXF::laserFileWithoutPliesHasItsLabelAtTheOrigin()
{
    TestJob job(u"rootname Wing group G { }"_s);
    QCOMPARE(Entities(job), QStringList{u"text 0/0 at 0,0,0 high 50: Wing"_s});
    QVERIFY(Report().contains("\n\nNO PLY DATA WRITTEN!\n\n"));
}

void TestWriterDXF::flatLaserOutputIsIn3DToo()
{
    QCOMPARE(Entities(u"type 1 ply P { contour { open 1,2,3 } }"_s).last(), u"polyline 1/0/0 flags 8: 1,2,3"_s);
}

void TestWriterDXF::laserFileHeedsNoFileMode()
{
    TestJob job(twoPlies + u"type 0 filemode ply"_s);
    QCOMPARE(Entities(job).size(), 3);
    QCOMPARE(Files(), QStringList{u"wing.DXF"_s});
    QVERIFY(job.GetOptions().GetCreatedFiles().isEmpty());
}

void TestWriterDXF::laserFileFiltersNothing()
{
    // The default of the mode is one file for each material, which a laser doesn't heed.
    const auto entities = Entities(u"ply P { contour { open 1,0,0 } } subply S { contour { open 2,0,0 } } "
                                   "group G { contour { open 3,0,0 } }"_s);
    QCOMPARE(entities.mid(1), (QStringList{u"polyline 1/0/0 flags 8: 1,0,0"_s, u"polyline 1/0/0 flags 8: 2,0,0"_s,
                                           u"polyline 1/0/0 flags 8: 3,0,0"_s}));
}

void TestWriterDXF::laserMessageComesAheadOfWriting()
{
    TestJob job(u"ply P { "_s + square + u" }"_s);
    Write(job);
    QCOMPARE(QueuedMessages(), QStringList{u"0 DXF ply geometry have been successfully written to file:\n wing.DXF"_s});
    QVERIFY(Report().contains("DXF ply geometry have been successfully written to file:\n wing.DXF\n"));
}

void TestWriterDXF::closedCurvesHaveTheFlagAndNoPointTwice()
{
    const auto entities = Entities(u"ply P { contour { open 0,0,0 1,0,0 closed 0,0,0 1,0,0 closed 5,5,5 } }"_s);
    QCOMPARE(entities.mid(1),
             (QStringList{u"polyline 1/0/0 flags 8: 0,0,0 1,0,0"_s, u"polyline 1/0/0 flags 9: 0,0,0 1,0,0"_s,
                          u"polyline 1/0/0 flags 9: 5,5,5"_s}));
}

void TestWriterDXF::curvesWithoutPointsWriteNothing()
{
    const auto entities = Entities(u"ply P { contour { open closed open 1,0,0 } contour { } contour { open } }"_s);
    QCOMPARE(entities.mid(1), QStringList{u"polyline 1/0/0 flags 8: 1,0,0"_s});
}

void TestWriterDXF::groupsOfNeitherKindArePassedThrough()
{
    TestJob job(twoPlies + u"filemode ply group G { contour { open 7,0,0 } }"_s);
    Write(job);
    for (const auto& name : Files())
        QCOMPARE(Dxf(name).entities.last(), u"polyline 1/0/0 flags 0: 7,0,0"_s);
    QCOMPARE(Files().size(), 2);
    QVERIFY(Report().contains("   Number of Plies = 2\n"));
}

void TestWriterDXF::groupsWithoutPointsAreSkippedAndNotCounted()
{
    TestJob job(u"type 2 filemode single ply P1 { text T 0,0,0 1,0,0 0,1,0 1 } ply P2 { contour { open } } "
                "ply P3 { "_s +
                square + u" }"_s);
    QCOMPARE(Entities(job).size(), 2);
    QVERIFY(Report().contains("   Number of Plies = 1\n"));
}

void TestWriterDXF::nullInThePropertyCountsAsPly()
{
    TestJob job(
        u"type 2 filemode single nullply A { contour { open 1,0,0 } } nullsubply B { contour { open 2,0,0 } }"_s);
    QCOMPARE(Entities(job).size(), 3);
    QVERIFY(ReportBody(Report()).endsWith("   Number of Plies = 1\n   Number of Sub-plies = 1\n"));
}

void TestWriterDXF::offsetPointsAndAxisSystemMoveGeometryAndNoLabels()
{
    TestJob job(u"axis 100,0,0 1,0,0 0,1,0 ply P { contour { open 0,0,0@0,0,5 2,0,0 } }"_s);
    // The label keeps to the model: it is at the centre of the positions.
    QCOMPARE(Entities(job),
             (QStringList{u"text 0/0 at 1,0,0 high 50: "_s, u"polyline 1/0/0 flags 8: -100,0,5 -98,0,0"_s}));
}

void TestWriterDXF::rosetteIsOnLayerFour()
{
    const auto entities =
        Entities(u"dxf 7 2 9 3 5 ply P { contour { open 1,0,0 rosettecurve open 2,0,0 rosettecurve closed 3,0,0 } }"_s);
    QCOMPARE(entities.mid(1), (QStringList{u"polyline 9/3/5 flags 8: 1,0,0"_s, u"polyline 4/3/5 flags 8: 2,0,0"_s,
                                           u"polyline 4/3/5 flags 9: 3,0,0"_s}));
}

void TestWriterDXF::otherSourcesAreOnTheLayerOfGeometry()
{
    TestJob job(u"ply P { contour { rosettecurve open 1,0,0 } }"_s);
    const auto group = job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>();
    const auto contour = group->GetChildren().first().staticCast<ZETLaserContour>();
    for (int source : {0, 1, 3, 4}) {
        contour->GetCurves().first()->setProperty(ZETLaserEntityProperties::sourceType, source);
        QCOMPARE(Entities(job).last(), u"polyline 1/0/0 flags 8: 1,0,0"_s);
    }
}

void TestWriterDXF::settingsOfLayersAndColoursAreTaken()
{
    const auto entities =
        Entities(u"rootname W dxf 7 2 9 3 5 ply P { contour { open 1,0,0 } text T 4,0,0 1,0,0 0,1,0 6 }"_s);
    QCOMPARE(entities, (QStringList{u"text 7/2 at 1,0,0 high 50: W"_s, u"polyline 9/3/5 flags 8: 1,0,0"_s,
                                    u"text 7/2 at 4,0,0 high 6: T"_s}));
}

void TestWriterDXF::parametersHaveNoFormAndAreTold()
{
    TestJob job(u"ply P { contour { open 1,0,0 } parameter information A parameter message B parameter graphic C "
                "parameter query D parameter literal E parameter note F } group G { parameter note G }"_s);
    QCOMPARE(Entities(job).size(), 2);
    QStringList expected{u"0 DXF ply geometry have been successfully written to file:\n wing.DXF"_s};
    for (int type = 0; type <= 5; ++type)
        expected += u"2 Unsupported laser parameter type "_s +
                    ZETLaserParameter::GetParameterTypeString(ZETLaserParameter::ParameterType(type)) + u" for DXF"_s;
    QCOMPARE(QueuedMessages(), expected);
}

void TestWriterDXF::parametersWithoutQueueAreDropped()
{
    ZETOpenMessageQueue::Remove();
    QCOMPARE(Entities(u"ply P { contour { open 1,0,0 } parameter note A }"_s).size(), 2);
}

void TestWriterDXF::textsFollowTheContoursOrGoFirst()
{
    const QString ply = u"ply P { contour { open 1,0,0 } text T 4,5,6 1,0,0 0,1,0 7 }"_s;
    const QString line = u"polyline 1/0/0 flags 8: 1,0,0"_s;
    const QString text = u"text 0/0 at 4,5,6 high 7: T"_s;
    QCOMPARE(Entities(ply).mid(1), (QStringList{line, text}));
    QCOMPARE(Entities(u"rosettefirst on "_s + ply).mid(1), (QStringList{text, line}));
}

void TestWriterDXF::textsAreEvaluatedAndNeedAPly()
{
    const QString body = u" { contour { open 1,0,0 } text %SEQ%/%PLY%/%SUBPLY% 4,5,6 1,0,0 0,1,0 7 } "_s;
    const auto entities = Entities(u"layup L { sequence S { ply P"_s + body + u"ply Q { subply R"_s + body +
                                   u"} } } group G"_s + body + u"nullply N"_s + body);
    QCOMPARE(entities.filter(u"text "_s).mid(1),
             (QStringList{u"text 0/0 at 4,5,6 high 7: S/P/"_s, u"text 0/0 at 4,5,6 high 7: S/Q/R"_s}));
}

void TestWriterDXF::namesOutsideAsciiAreUtf8()
{
    TestJob job(u"rootname Flügel"_s);
    Write(job);
    QVERIFY(ReadBytes(u"wing.DXF"_s).contains("  1\nFl\xc3\xbcgel\n  0\nENDSEC\n"));
}

void TestWriterDXF::labelIsAtTheFlatSeedPoint()
{
    QCOMPARE(Entities(u"rootname W ply P { seed 30,40,2 "_s + square + u" }"_s).first(),
             u"text 0/0 at 30,40,2 high 50: W"_s);
}

void TestWriterDXF::strategyWithoutSeedTakesTheFlatPointWithoutSource()
{
    TestJob job(u"ply P { seed 30,40,2 "_s + square + u" }"_s);
    const auto features = job.GetModel()->GetAllChildren();
    for (auto* feature : features) {
        if (auto* strategy = qobject_cast<ZETCompStrategy*>(feature))
            ZETOpenComposites::SetSeedPoint(*strategy, nullptr);
        if (auto* image = qobject_cast<ZETCompFlatPoint*>(feature))
            ZETOpenComposites::SetSource(*image, nullptr);
    }
    QCOMPARE(Entities(job).first(), u"text 0/0 at 30,40,2 high 50: "_s);
}

void TestWriterDXF::firstFlatPointOfTheSeedCountsAloneEvenWithoutVertex()
{
    TestJob job(u"ply P { seed 30,40,2 "_s + square + u" }"_s);
    const auto features = job.GetModel()->GetAllChildren();
    for (auto* feature : features) {
        auto* image = qobject_cast<ZETCompFlatPoint*>(feature);
        if (!image)
            continue;
        auto* second = ZETTestModel::Add<ZETCompFlatPoint>(image->GetParent(), "Second");
        ZETOpenComposites::SetSource(*second, image->GetSource());
        ZETOpenComposites::SetBody(*second, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(9.0, 9.0, 9.0)));
        ZETOpenComposites::SetBody(*image, nullptr);
    }
    QCOMPARE(Entities(job).first(), u"text 0/0 at 5,5,0 high 50: "_s);
}

void TestWriterDXF::labelWithoutSeedIsAtTheCentreOfTheFirstContour()
{
    QCOMPARE(Entities(u"ply P { contour { open 2,4,6@0,0,100 4,8,10 } contour { open 100,0,0 } }"_s).first(),
             u"text 0/0 at 3,6,8 high 50: "_s);
}

void TestWriterDXF::centreTakesAllCurvesAndEmptyOnesAddNothing()
{
    QCOMPARE(Entities(u"ply P { contour { open open 10,10,10 open open 30,20,10 closed 12,24,10 } }"_s).first(),
             u"text 0/0 at 20,17,10 high 50: "_s);
}

void TestWriterDXF::contourWithoutPointsHasItsCentreAtTheOrigin()
{
    QCOMPARE(Entities(u"ply P { contour { open } contour { open 10,10,10 } }"_s).first(),
             u"text 0/0 at 0,0,0 high 50: "_s);
}

void TestWriterDXF::labelOfAPlyWithoutContourIsSoughtFurther()
{
    // The ply's own group has groups and no contour; another group stands for the same ply.
    TestJob job(u"ply P { subply S { contour { open 10,0,0 } } } group G { contour { open 4,0,0 } }"_s);
    const auto children = job.GetTree()->GetChildren();
    const auto property = children.first()->property("ZETCompPly");
    QCOMPARE(Entities(job).first(), u"text 0/0 at 0,0,0 high 50: "_s);
    children.last()->setProperty("ZETCompPly", property);
    QCOMPARE(Entities(job).first(), u"text 0/0 at 4,0,0 high 50: "_s);
}

void TestWriterDXF::labelOfTheFirstPlyCountsEvenWithoutOutput()
{
    // A text point is asked of a ply whether it is written or not.
    QCOMPARE(Entities(u"ply P1 { seed 8,9,0 } ply P2 { "_s + square + u" }"_s).first(),
             u"text 0/0 at 8,9,0 high 50: "_s);
}

void TestWriterDXF::inchesScaleGeometryAndLabels()
{
    TestJob job(u"rootname W units inch type 2 filemode single labelsize 254 "
                "ply P { seed 50.8,0,25.4 contour { open 25.4,-12.7,2.54 } }"_s);
    Write(job);
    QCOMPARE(Dxf().units, 1);
    QCOMPARE(Dxf().entities, (QStringList{u"text 0/0 at 2,5,1 high 5: W"_s, u"polyline 1/0/0 flags 0: 1,-0.5,0.1"_s}));
}

void TestWriterDXF::inchesScaleALabelAtACentreTwice()
{
    // Meant: a centre is in inches already when it is scaled like a seed point. 645.16 is 25.4 * 25.4.
    QCOMPARE(Entities(u"units inch ply P { contour { open 645.16,1290.32,0 } }"_s).first(),
             u"text 0/0 at 1,2,0 high 1.968504: "_s);
}

void TestWriterDXF::inchesLeaveThe3DTextInMillimetres()
{
    // Meant: neither the place nor the size of a 3D text is scaled.
    QCOMPARE(Entities(u"units inch ply P { contour { open 25.4,0,0 } text T 25.4,50.8,0 1,0,0 0,1,0 12.7 }"_s).last(),
             u"text 0/0 at 25.4,50.8,0 high 12.7: T"_s);
}

void TestWriterDXF::nestingInOneFileIsFlatWithOneLabelAboveTheTextPoint()
{
    TestJob job(u"rootname Wing type 2 filemode single ply P1 { "_s + square +
                u" } ply P2 { contour { open 1,2,3 } }"_s);
    Write(job);
    QCOMPARE(Dxf().units, 4);
    QCOMPARE(Dxf().entities,
             (QStringList{u"text 0/0 at 5,55,0 high 50: Wing"_s, u"polyline 1/0/0 flags 1: "_s + squareVertices,
                          u"polyline 1/0/0 flags 0: 1,2,3"_s}));
    QCOMPARE(Files(), QStringList{u"wing.DXF"_s});
    QVERIFY(job.GetOptions().GetCreatedFiles().isEmpty());
    QCOMPARE(QueuedMessages(), QStringList{u"0 DXF nesting data have been successfully written to file:\n wing.DXF"_s});
}

void TestWriterDXF::embeddedNestingIsNestingToo()
{
    QCOMPARE(Entities(u"type 3 filemode single ply P { contour { open 1,2,3 } }"_s).last(),
             u"polyline 1/0/0 flags 0: 1,2,3"_s);
}

void TestWriterDXF::reportOfTheOneFileTellsPartFileAndCounts()
{
    TestJob job(u"rootname Wing type 2 filemode single ply P1 { "_s + square + u" } ply P2 { subply S { "_s + square +
                u" } subply T { "_s + square + u" } }"_s);
    Write(job);
    QCOMPARE(ReportBody(Report()), "\n\nPart Wing Written to file:wing.DXF\n"
                                   "\n\nPlies Written for part Wing:\n"
                                   "   Number of Plies = 2\n   Number of Sub-plies = 2\n"_ba);
    TestJob empty(u"rootname Wing type 2 filemode single"_s);
    Write(empty);
    QCOMPARE(ReportBody(Report()), "\n\nPart Wing Written to file:wing.DXF\n\n\nPlies Written for part Wing:\n"_ba);
}

void TestWriterDXF::unknownFileModeWritesNothingMore()
{
    TestJob job(twoPlies);
    job.GetOptions().SetDXFFileMode(Options::EDXFFileMode(3));
    Write(job);
    QCOMPARE(Files(), QStringList());
    QCOMPARE(QueuedMessages(), QStringList{u"0 DXF nesting data have been successfully written to file:\n wing.DXF"_s});
    QVERIFY(Report().endsWith("End of report.\n</PRE>\n<HR>\n</BODY>\n</HTML>\n"));
}

void TestWriterDXF::eachMaterialHasAFile()
{
    TestJob job(twoPlies);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__Core.DXF"_s, u"wing__Plain.DXF"_s, u"wing__Twill.DXF"_s}));
    QCOMPARE(Dxf(u"wing__Twill.DXF"_s).entities,
             (QStringList{u"text 0/0 at 5,2,0 high 2: Wing"_s, u"text 0/0 at 5,0,0 high 2: Twill"_s,
                          u"polyline 1/0/0 flags 0: 0,0,0 10,0,0"_s}));
    QCOMPARE(Dxf(u"wing__Plain.DXF"_s).entities,
             (QStringList{u"text 0/0 at 10,6,0 high 2: Wing"_s, u"text 0/0 at 10,4,0 high 2: Plain"_s,
                          u"polyline 1/0/0 flags 1: 0,0,0 20,0,0 20,8,0"_s}));
    QVERIFY(job.GetOptions().GetCreatedFiles().isEmpty());
    QCOMPARE(QueuedMessages(), (QStringList{u"0 DXF nesting data have been successfully written to file:\n wing.DXF"_s,
                                            u"0 There are 3 materials"_s}));
}

void TestWriterDXF::materialThatNoPlyUsesHasAFileAndACountLineOfZero()
{
    TestJob job(twoPlies + u"units inch"_s);
    Write(job);
    // 0.157480 is 4 * 0.5 / 25.4, doubled for nothing: the label is one height above the origin.
    QCOMPARE(Dxf(u"wing__Core.DXF"_s).entities,
             (QStringList{u"text 0/0 at 0,0.07874,0 high 0.07874: Wing"_s, u"text 0/0 at 0,0,0 high 0.07874: Core"_s}));
    // Meant: the line is there because the job has plies, and tells those of the file.
    QCOMPARE(ReportBody(Report()), "\n\nMaterial Twill Written to file:wing__Twill.DXF\n"
                                   "\n\nPlies Written for material Twill:\n   Number of Plies = 1\n"
                                   "\n\nMaterial Plain Written to file:wing__Plain.DXF\n"
                                   "\n\nPlies Written for material Plain:\n   Number of Plies = 1\n"
                                   "\n\nMaterial Core Written to file:wing__Core.DXF\n"
                                   "\n\nPlies Written for material Core:\n   Number of Plies = 0\n"_ba);
    QVERIFY(Report().contains("Plies Written Report:\n   Number of Plies = 2\n"));
}

void TestWriterDXF::firstMaterialWithoutPliesHasNoCountLine()
{
    TestJob job(twoPlies);
    std::reverse(job.GetMaterials().begin(), job.GetMaterials().end());
    Write(job);
    QVERIFY(ReportBody(Report()).startsWith("\n\nMaterial Core Written to file:wing__Core.DXF\n"
                                            "\n\nPlies Written for material Core:\n"
                                            "\n\nMaterial Plain Written"));
}

void TestWriterDXF::materialsCanGoByTheirId()
{
    TestJob job(twoPlies + u"usematerialid on"_s);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__C-17.DXF"_s, u"wing__F_1.DXF"_s, u"wing__G_4.DXF"_s}));
    QCOMPARE(Dxf(u"wing__G_4.DXF"_s).entities[1], u"text 0/0 at 10,4,0 high 2: G.4"_s);
    QVERIFY(ReportBody(Report()).contains("\n\nMaterial F/1 Written to file:wing__F_1.DXF\n"));
}

void TestWriterDXF::materialLabelIsAtTheFirstPlyThatHasItFirst()
{
    TestJob job(u"type 2 material A a 1 material B b 2 "
                "ply P1 { of A of B contour { open 1,0,0 } } ply P2 { of B contour { open 2,0,0 } } "
                "ply P3 { of B contour { open 3,0,0 } }"_s);
    Write(job);
    QVERIFY(Dxf(u"wing__a.DXF"_s).entities[1].startsWith(u"text 0/0 at 1,0,0 "_s));
    QVERIFY(Dxf(u"wing__b.DXF"_s).entities[1].startsWith(u"text 0/0 at 2,0,0 "_s));
}

void TestWriterDXF::materialLabelMayBeThatOfASubPly()
{
    // The tree has the sub-ply alone, and its ply has the material.
    TestJob job(u"type 2 material A a 1 subply S { contour { open 7,0,0 } }"_s);
    auto* ply = qobject_cast<ZETCompPly*>(PlyNamed(job, u"S"_s)->GetParent()->GetParent());
    ZETOpenComposites::SetMaterials(*ply, {job.GetMaterials().first()});
    Write(job);
    QVERIFY(Dxf(u"wing__a.DXF"_s).entities[1].startsWith(u"text 0/0 at 7,0,0 "_s));
}

void TestWriterDXF::subPliesAreFilteredByTheirMaterial()
{
    TestJob job(u"type 2 material A a 1 material B b 2 "
                "ply P1 { of A subply S1 { of A contour { open 1,0,0 } } subply S2 { of B contour { open 2,0,0 } } } "
                "ply P2 { of B subply S3 { of A contour { open 3,0,0 } } } ply P3 { contour { open 4,0,0 } }"_s);
    Write(job);
    QCOMPARE(Dxf(u"wing__a.DXF"_s).entities.mid(2), QStringList{u"polyline 1/0/0 flags 0: 1,0,0"_s});
    QCOMPARE(Dxf(u"wing__b.DXF"_s).entities.mid(2), QStringList()); // a ply filtered out takes its sub-plies with it
    QVERIFY(ReportBody(Report()).endsWith("\n\nPlies Written for material b:\n"
                                          "   Number of Plies = 1\n   Number of Sub-plies = 0\n"));
}

void TestWriterDXF::nullMaterialIsPassedOver()
{
    TestJob job(twoPlies);
    job.GetMaterials().prepend(nullptr);
    Write(job);
    QCOMPARE(Files().size(), 3);
}

void TestWriterDXF::eachPlyHasAFile()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__L1_S1_P1.DXF"_s, u"wing__L1_S1_P2.DXF"_s}));
    QCOMPARE(Dxf(u"wing__L1_S1_P1.DXF"_s).entities,
             (QStringList{u"text 0/0 at 5,2,0 high 2: Wing"_s, u"text 0/0 at 5,0,0 high 2: L1_S1_P1"_s,
                          u"text 0/0 at 5,-2,0 high 2: Twill"_s, u"polyline 1/0/0 flags 0: 0,0,0 10,0,0"_s}));
    QCOMPARE(Dxf(u"wing__L1_S1_P2.DXF"_s).entities,
             (QStringList{u"text 0/0 at 10,6,0 high 2: Wing"_s, u"text 0/0 at 10,4,0 high 2: L1_S1_P2"_s,
                          u"text 0/0 at 10,2,0 high 2: Plain"_s, u"polyline 1/0/0 flags 1: 0,0,0 20,0,0 20,8,0"_s}));
    QCOMPARE(Created(job.GetOptions()),
             (QStringList{u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s, u"L1_S1_P2 wing__L1_S1_P2.DXF Plain"_s}));
    QCOMPARE(QueuedMessages(), (QStringList{u"0 DXF nesting data have been successfully written to file:\n wing.DXF"_s,
                                            u"0 There are 2 plies"_s}));
}

void TestWriterDXF::plyOfSeveralGroupsHasOneFile()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    AddPlyGroup(job, qobject_cast<ZETCompPly*>(PlyNamed(job, u"P1"_s)));
    Write(job);
    QCOMPARE(Dxf(u"wing__L1_S1_P1.DXF"_s).entities.mid(3),
             (QStringList{u"polyline 1/0/0 flags 0: 0,0,0 10,0,0"_s, u"polyline 1/0/0 flags 0: 0,0,0 1,0,0"_s}));
    QCOMPARE(QueuedMessages().mid(1), QStringList{u"0 There are 2 plies"_s});
}

void TestWriterDXF::reportOfThePliesHasNoCounts()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    Write(job);
    QCOMPARE(ReportBody(Report()), "\n\nPly L1_S1_P1 Written to file:wing__L1_S1_P1.DXF\n"
                                   "\n\nPly L1_S1_P2 Written to file:wing__L1_S1_P2.DXF\n"_ba);
    QVERIFY(Report().contains("Plies Written Report:\n   Number of Plies = 2\n"));
}

void TestWriterDXF::plyWithoutMaterialHasNoFile()
{
    TestJob job(twoPlies + u"filemode ply ply P3 { contour { open 1,0,0 } }"_s);
    Write(job);
    QCOMPARE(Files().size(), 2);
    QCOMPARE(job.GetOptions().GetCreatedFiles().size(), 2);
    QVERIFY(QueuedMessages().contains(u"0 There are 3 plies"_s));
}

void TestWriterDXF::subPlyHasAFileAndItsLabelInTheName()
{
    TestJob job(u"rootname W type 2 filemode ply labelsize 4 material A a 1 "
                "layup L { sequence S { ply P { of A subply Q { contour { open 1,0,0 } } } } }"_s);
    Write(job);
    QCOMPARE(Created(job.GetOptions()), (QStringList{u"L_S_P wing__L_S_P.DXF a"_s, u"L_S_P_Q wing__L_S_P_Q.DXF a"_s}));
    QCOMPARE(Dxf(u"wing__L_S_P_Q.DXF"_s).entities.first(3),
             (QStringList{u"text 0/0 at 1,2,0 high 2: W"_s, u"text 0/0 at 1,0,0 high 2: L_S_P_Q"_s,
                          u"text 0/0 at 1,-2,0 high 2: a"_s}));
}

void TestWriterDXF::plyTakesItsSubPliesOutWithIt()
{
    // In the file of a ply its sub-plies are filtered out, and in that of a sub-ply the ply around it is.
    TestJob job(u"type 2 filemode ply material A a 1 "
                "layup L { sequence S { ply P { of A subply Q { contour { open 1,0,0 } } } "
                "subply R { contour { open 2,0,0 } } } }"_s);
    auto* ply = qobject_cast<ZETCompPly*>(PlyNamed(job, u"R"_s)->GetParent()->GetParent());
    ZETOpenComposites::SetMaterials(*ply, {job.GetMaterials().first()});
    Write(job);
    QCOMPARE(Dxf(u"wing__L_S_P.DXF"_s).entities.size(), 3);
    QCOMPARE(Dxf(u"wing__L_S_P_Q.DXF"_s).entities.size(), 3);
    QCOMPARE(Dxf(job.GetOptions().GetCreatedFiles().last().second.first).entities.mid(3),
             QStringList{u"polyline 1/0/0 flags 0: 2,0,0"_s});
    QVERIFY(Report().contains("Plies Written Report:\n   Number of Plies = 1\n   Number of Sub-plies = 1\n"));
}

void TestWriterDXF::shapeNameIsEvaluatedForEachEntry()
{
    TestJob job(twoPlies + u"filemode ply shapename %PLY%-%MAT_ID%"_s);
    Write(job);
    QCOMPARE(Created(job.GetOptions()),
             (QStringList{u"P1-C-17 wing__P1-C-17.DXF Twill"_s, u"P2-G_4 wing__P2-G_4.DXF Plain"_s}));
}

void TestWriterDXF::shapeNameThatIsNotValidFallsBack()
{
    TestJob job(twoPlies + u"filemode ply shapename %PLY%%XYZ%"_s);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__L1_S1_P1.DXF"_s, u"wing__L1_S1_P2.DXF"_s}));
}

void TestWriterDXF::shapeNameThatIsEmptyFallsBack()
{
    // Of a plain ply the name of the sub-ply is empty.
    TestJob job(twoPlies + u"filemode ply shapename %SUBPLY%"_s);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__L1_S1_P1.DXF"_s, u"wing__L1_S1_P2.DXF"_s}));
}

void TestWriterDXF::labelIsTheShapeNameAndTheFileTakesTheSafeOne()
{
    TestJob job(twoPlies + u"filemode ply shapename \"%PLY% 1/2.a\""_s);
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__P1 1_2_a.DXF"_s, u"wing__P2 1_2_a.DXF"_s}));
    QCOMPARE(Dxf(u"wing__P1 1_2_a.DXF"_s).entities[1], u"text 0/0 at 5,0,0 high 2: P1 1/2.a"_s);
    QCOMPARE(job.GetOptions().GetCreatedFiles().first().first, u"P1 1_2_a"_s);
    QVERIFY(ReportBody(Report()).startsWith("\n\nPly P1 1_2_a Written to file:wing__P1 1_2_a.DXF\n"));
}

void TestWriterDXF::materialIdIsInTheLabelAndNotInTheKey()
{
    TestJob job(twoPlies + u"filemode ply usematerialid on"_s);
    Write(job);
    QCOMPARE(Dxf(u"wing__L1_S1_P2.DXF"_s).entities[2], u"text 0/0 at 10,2,0 high 2: G.4"_s);
    QCOMPARE(Created(job.GetOptions()).last(), u"L1_S1_P2 wing__L1_S1_P2.DXF Plain"_s);
}

void TestWriterDXF::namesThatAreNotUniqueAreTold()
{
    TestJob job(twoPlies + u"filemode ply shapename one"_s);
    Write(job);
    QCOMPARE(QueuedMessages().mid(2), QStringList{u"2 Shape name one is not unique, fix your model"_s});
    QCOMPARE(Files(), QStringList{u"wing__one.DXF"_s});
    QCOMPARE(Dxf(u"wing__one.DXF"_s).entities.last(), u"polyline 1/0/0 flags 1: 0,0,0 20,0,0 20,8,0"_s);
}

void TestWriterDXF::namesThatDifferInCaseAreNotUnique()
{
    TestJob job(u"type 2 filemode ply shapename %PLY% material A a 1 layup L { sequence S { "
                "ply p1 { of A contour { open 1,0,0 } } ply P1 { of A contour { open 2,0,0 } } } }"_s);
    Write(job);
    QCOMPARE(QueuedMessages().mid(2), QStringList{u"2 Shape name P1 is not unique, fix your model"_s});
    QCOMPARE(Created(job.GetOptions()), (QStringList{u"p1 wing__p1.DXF a"_s, u"P1 wing__P1.DXF a"_s}));
}

void TestWriterDXF::oneMessageForEachEarlierEntryOfAName()
{
    TestJob job(u"type 2 filemode ply shapename %PLY% material A a 1 layup L { sequence S { "
                "ply pp { of A contour { open 1,0,0 } } ply Pp { of A contour { open 2,0,0 } } "
                "ply PP { of A contour { open 3,0,0 } } } }"_s);
    Write(job);
    QCOMPARE(QueuedMessages().mid(2), (QStringList{u"2 Shape name Pp is not unique, fix your model"_s,
                                                   u"2 Shape name PP is not unique, fix your model"_s,
                                                   u"2 Shape name PP is not unique, fix your model"_s}));
}

void TestWriterDXF::sameFileStandsInTheListOnce()
{
    TestJob job(twoPlies + u"filemode ply shapename one"_s);
    Write(job);
    // What the first ply said of the file is gone, its material too.
    QCOMPARE(Created(job.GetOptions()), QStringList{u"one wing__one.DXF Plain"_s});
}

void TestWriterDXF::secondRunFindsTheNamesOfTheFirst()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    Write(job);
    const auto first = Created(job.GetOptions());
    const QStringList told = QueuedMessages();
    Write(job);
    QCOMPARE(Created(job.GetOptions()), first);
    QCOMPARE(QueuedMessages().mid(told.size()),
             told + (QStringList{u"2 Shape name L1_S1_P1 is not unique, fix your model"_s,
                                 u"2 Shape name L1_S1_P2 is not unique, fix your model"_s}));
}

void TestWriterDXF::equalEntriesGoTogether()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    Write(job);
    auto& created = job.GetOptions().GetCreatedFiles();
    created = {created[0], created[1], created[0]};
    Write(job);
    QCOMPARE(Created(job.GetOptions()),
             (QStringList{u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s, u"L1_S1_P2 wing__L1_S1_P2.DXF Plain"_s}));
}

void TestWriterDXF::otherEntriesOfTheFileStay()
{
    // The first entry of a file goes, and those that are equal to it in all; one of another name stays.
    TestJob job(twoPlies + u"filemode ply"_s);
    ZETMatDefinition definition;
    definition.SetKey("Old");
    definition.Commit();
    auto& created = job.GetOptions().GetCreatedFiles();
    created.append({u"old"_s, {u"wing__L1_S1_P1.DXF"_s, definition}});
    created.append({u"old"_s, {u"wing__L1_S1_P1.DXF"_s, ZETMatDefinition()}});
    created.append({u"older"_s, {u"wing__L1_S1_P1.DXF"_s, definition}});
    created.append({u"old"_s, {u"wing__L1_S1_P1.DXF"_s, definition}});
    created.append({u"old"_s, {u"WING__L1_S1_P1.DXF"_s, definition}});
    Write(job);
    QCOMPARE(
        Created(job.GetOptions()),
        (QStringList{u"old wing__L1_S1_P1.DXF "_s, u"older wing__L1_S1_P1.DXF Old"_s, u"old WING__L1_S1_P1.DXF Old"_s,
                     u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s, u"L1_S1_P2 wing__L1_S1_P2.DXF Plain"_s}));
}

void TestWriterDXF::createdFilesHaveTheDefinitionOfTheMaterial()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    auto* material = job.GetMaterials().first();
    ZETOpenMaterial::SetThickness(*material, 0.25);
    ZETOpenMaterial::SetMaterialType(*material, u"Köper"_s);
    Write(job);
    const ZETMatDefinition definition = job.GetOptions().GetCreatedFiles().first().second.second;
    QCOMPARE(ZETOpenMaterial::GetKey(definition), "K\xc3\xb6per"_ba);
    QCOMPARE(ZETOpenMaterial::GetValue(definition, "", "materialId"), QVariant(u"C-17"_s));
    QCOMPARE(ZETOpenMaterial::GetValue(definition, "", "thickness"), QVariant(0.25));
    const auto names = material->GetAllProperties();
    QVERIFY(names.size() >= 3);
    for (const auto& name : names)
        QCOMPARE(ZETOpenMaterial::GetValue(definition, "", name), material->property(name.constData()));
}

namespace
{
/*! Two plies of Twill and Plain, the configuration that counts for materials, and a roll of Core. */
struct Packaged {
    TestJob job{twoPlies + u"filemode ply"_s};
    ZETCompMfgConfiguration* configuration =
        ZETTestModel::Add<ZETCompMfgConfiguration>(job.GetModel(), "Configuration");
    ZETMatPackaging* roll = ZETTestModel::Add<ZETMatPackaging>(job.GetMaterials().last(), "Roll");
    ZETCompPlyBase* ply = PlyNamed(job, u"P1"_s);

    Packaged() { ZETOpenComposites::SetActiveMfgConfiguration(*job.GetModel(), configuration); }

    QString WriteFirst()
    {
        Write(job);
        return Created(job.GetOptions()).first();
    }
    ZETCompStrategy* AddContour(ZETCompPlyBase* entry)
    {
        auto* contour = ZETTestModel::AddFlatContour(entry, "Contour");
        return qobject_cast<ZETCompStrategy*>(contour->GetParent()->GetParent());
    }
};
} // namespace

void TestWriterDXF::materialOfTheShapeIsThatOfThePackaging()
{
    Packaged model;
    ZETOpenComposites::SetPackaging(*model.AddContour(model.ply), model.roll);
    QCOMPARE(model.WriteFirst(), u"L1_S1_P1 wing__L1_S1_P1.DXF Core"_s);
    // The label keeps to the ply's own material.
    QVERIFY(Dxf(u"wing__L1_S1_P1.DXF"_s).entities[2].endsWith(u": Twill"_s));
}

void TestWriterDXF::packagingWithoutMaterialFallsBackToThePly()
{
    Packaged without;
    without.AddContour(without.ply);
    QCOMPARE(without.WriteFirst(), u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s);
    Packaged elsewhere;
    auto* roll = ZETTestModel::Add<ZETMatPackaging>(elsewhere.job.GetModel(), "Roll");
    ZETOpenComposites::SetPackaging(*elsewhere.AddContour(elsewhere.ply), roll);
    QCOMPARE(elsewhere.WriteFirst(), u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s);
}

void TestWriterDXF::contourWithoutStrategyTakesTheMaterialOfItsPly()
{
    Packaged model;
    auto* pattern = ZETTestModel::Add<ZETCompFlatPattern>(model.ply, "Pattern");
    ZETTestModel::Add<ZETCompFlatContour>(pattern, "Contour");
    QCOMPARE(model.WriteFirst(), u"L1_S1_P1 wing__L1_S1_P1.DXF Twill"_s);
}

void TestWriterDXF::subPlyIsAskedForItsOwnContour()
{
    TestJob job(u"type 2 filemode ply material A a 1 material B b 2 "
                "layup L { sequence S { ply P { of A subply Q { contour { open 1,0,0 } } } } }"_s);
    auto* configuration = ZETTestModel::Add<ZETCompMfgConfiguration>(job.GetModel(), "Configuration");
    ZETOpenComposites::SetActiveMfgConfiguration(*job.GetModel(), configuration);
    auto* roll = ZETTestModel::Add<ZETMatPackaging>(job.GetMaterials().last(), "Roll");
    auto* contour = ZETTestModel::AddFlatContour(PlyNamed(job, u"Q"_s), "Contour");
    ZETOpenComposites::SetPackaging(*qobject_cast<ZETCompStrategy*>(contour->GetParent()->GetParent()), roll);
    Write(job);
    QCOMPARE(Created(job.GetOptions()), (QStringList{u"L_S_P wing__L_S_P.DXF a"_s, u"L_S_P_Q wing__L_S_P_Q.DXF b"_s}));
}

void TestWriterDXF::configurationOfTheMaterialIsTheRootsAndThatOfTheTextPointTheOptions()
{
    Packaged model;
    auto& options = model.job.GetOptions();
    // The ply has two strategies: one that the root's configuration takes, and one that the options' does.
    auto* ofRoot = model.AddContour(model.ply);
    ZETOpenComposites::SetPackaging(*ofRoot, model.roll);
    auto* ofOptions = model.AddContour(model.ply);
    auto* pattern = ofOptions->GetFlatPattern();
    auto* image = ZETTestModel::Add<ZETCompFlatPoint>(pattern, "Seed"); // neither it nor the strategy has a seed point
    ZETOpenComposites::SetBody(*image, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(70.0, 80.0, 0.0)));
    auto* other = ZETTestModel::Add<ZETCompMfgConfiguration>(model.job.GetModel(), "Other");
    ZETOpenComposites::SetIncluded(*model.configuration, *model.ply, ofRoot);
    ZETOpenComposites::SetIncluded(*other, *model.ply, ofOptions);
    options.SetActiveConfiguration(other);
    options.SetOutputType(Options::OutputFlatNesting);
    options.SetRosetteSizeQuilmon(4.0);
    QCOMPARE(model.WriteFirst(), u"L1_S1_P1 wing__L1_S1_P1.DXF Core"_s);
    QCOMPARE(Dxf(u"wing__L1_S1_P1.DXF"_s).entities[1], u"text 0/0 at 70,80,0 high 2: L1_S1_P1"_s);
}

void TestWriterDXF::extraParametersOfTheContainerAreKnown()
{
    TestJob job(twoPlies + u"filemode ply shapename %PLY%-%Order%"_s);
    auto* container = qobject_cast<ZETFeatContainer*>(job.GetModel()->GetContainer());
    ZETOpenModel::SetTextParameters(*container, {{u"Order"_s, u"4711"_s}});
    Write(job);
    QCOMPARE(Files(), (QStringList{u"wing__P1-4711.DXF"_s, u"wing__P2-4711.DXF"_s}));
}

void TestWriterDXF::fileNameWithoutDotTakesTheSuffixAtItsEnd()
{
    TestJob job(twoPlies);
    Write(job, u"wing"_s);
    QCOMPARE(QDir().entryList(QDir::Files, QDir::Name),
             (QStringList{u"wing-report.htm"_s, u"wing__Core"_s, u"wing__Plain"_s, u"wing__Twill"_s}));
}

void TestWriterDXF::lastDotCountsWhereverItStands()
{
    // Meant: the name is taken as it was given, so a dot of a folder counts when the file has none.
    QVERIFY(QDir().mkpath(u"a.b"_s) && QDir().mkpath(u"a__Twill.b"_s));
    TestJob job(twoPlies);
    Write(job, u"a.b/wing"_s);
    QVERIFY(QFileInfo::exists(u"a__Twill.b/wing"_s));
    QVERIFY(!QFileInfo::exists(u"a__Plain.b/wing"_s)); // there is no such folder
    Write(job, u"a.b/left.wing.DXF"_s);
    QVERIFY(QFileInfo::exists(u"a.b/left.wing__Twill.DXF"_s));
}

void TestWriterDXF::fileThatCannotBeOpenedStopsNothing()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    QVERIFY(QDir().mkpath(u"wing__L1_S1_P1.DXF"_s)); // a folder in the place of the file
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u".*device not open"_s));
    Write(job);
    QCOMPARE(Created(job.GetOptions()).size(), 2);
    QCOMPARE(Dxf(u"wing__L1_S1_P2.DXF"_s).entities.size(), 4);
}

void TestWriterDXF::plyOutsideASequenceThrows()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    AddPlyGroup(job, new ZETCompPly(job.GetModel()));
    QCOMPARE(Thrown([&] { job.Write<ZETLaserWriterDXF>(u"wing.DXF"_s); }), u"Ply is not in a sequence"_s);
}

void TestWriterDXF::sequenceOutsideALayupThrows()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    AddPlyGroup(job, new ZETCompPly(new ZETCompSequence(job.GetModel())));
    QCOMPARE(Thrown([&] { job.Write<ZETLaserWriterDXF>(u"wing.DXF"_s); }), u"Sequence is not in a layup"_s);
}

void TestWriterDXF::exceptionLeavesWhatWasWrittenAndTheCLocale()
{
    TestJob job(twoPlies + u"filemode ply"_s);
    AddPlyGroup(job, new ZETCompPly(job.GetModel()));
    auto& options = job.GetOptions();
    options.SetFileType(Options::FileDXF);
    options.SetFileName(u"wing.DXF"_s);
    auto& record = ZETLaserProcessesPrivate::Of(*options.GetLaserProcesses());
    record.materials = job.GetMaterials();
    for (const auto& child : job.GetTree()->GetChildren())
        record.root->AddGroup(child.staticCast<ZETLaserGroup>());
    QLocale::setDefault(QLocale(u"de_DE"_s));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, options.GetLaserProcesses()->WriteLaserData());
    QCOMPARE(QLocale(), QLocale(QLocale::C));
    // The plies ahead of the fault have their files and entries, and the report has no foot.
    QCOMPARE(Files(), (QStringList{u"wing__L1_S1_P1.DXF"_s, u"wing__L1_S1_P2.DXF"_s}));
    QCOMPARE(Dxf(u"wing__L1_S1_P2.DXF"_s).entities.size(), 4);
    QCOMPARE(Created(options).size(), 2);
    QVERIFY(Report().endsWith("\n\nPly L1_S1_P2 Written to file:wing__L1_S1_P2.DXF\n"));
}

void TestWriterDXF::textsAreTranslated()
{
    const TestTranslator translator("ZETLaserWriterDXF");
    TestJob perPly(twoPlies + u"filemode ply shapename one"_s);
    Write(perPly);
    TestJob single(twoPlies + u"filemode single"_s);
    Write(single);
    QVERIFY(Report().contains("\n\n* Part Wing*  Written to file:wing.DXF\n\n\n* Plies Written for part Wing:\n"
                              "*    Number of Plies = 2\n"));
    TestJob perMaterial(twoPlies);
    Write(perMaterial);
    QVERIFY(Report().contains("\n\n* Material Twill*  Written to file:wing__Twill.DXF\n\n\n"
                              "* Plies Written for material Twill:\n"));
    TestJob laser(twoPlies + u"type 0"_s);
    Write(laser);
    const auto messages = QueuedMessages();
    QCOMPARE(messages.size(), 7);
    for (const auto& message : messages)
        QVERIFY2(message.mid(2).startsWith(u"* "_s), qPrintable(message));
}

void TestWriterDXF::withoutAQueueNothingIsTold()
{
    ZETOpenMessageQueue::Remove();
    for (const auto& mode : {u"single"_s, u"material"_s, u"ply shapename one"_s}) {
        TestJob job(twoPlies + u"filemode "_s + mode);
        Write(job);
        QVERIFY(!Report().contains("messages"));
    }
}

QTEST_GUILESS_MAIN(TestWriterDXF)
#include "TestWriterDXF.moc"
