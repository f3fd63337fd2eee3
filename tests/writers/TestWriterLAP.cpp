#include "writers/ZETLaserWriterLAP.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"

#include <QFileInfo>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QByteArray opening = "#switch to red if any error occurs\n"
                           "ALERT red\n"
                           "#Identification\n"
                           "ID_START\n"
                           "ID_SYNTAX \"1.5\"\n"
                           "ID_END\n"
                           "#Source: Vantrell Norvale\n"
                           "PROJECTION_SCALE mm\n"
                           "PROJECTION_START \"Projection\"\n"
                           "DRAWING_START \"\"\n";
const QByteArray closing = "DRAWING_END\nPROJECTION_END\n";

TestOutput Write(const QString& text)
{
    return WriteOutput(u"filetype 3\n"_s + text, u"wing.lpd"_s, u"wing.cal"_s);
}

/*! What stands in the part file between its opening and its closing lines. */
QByteArray Drawing(const QString& text)
{
    const QByteArray part = Write(text).part;
    if (!part.startsWith(opening) || !part.endsWith(closing))
        return part;
    return part.mid(opening.size(), part.size() - opening.size() - closing.size());
}

QByteArray Entity(const QByteArray& lines)
{
    return "GROUP_START \"\"\nGROUP_COLOR Green\nENTITY_START \"\"\nENTITY_COLOR Green\n" + lines +
           "ENTITY_END\nGROUP_END\n";
}
} // namespace

class TestWriterLAP : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void anEmptyTreeIsOpeningAndClosing();
    void theDrawingHasThePartName();
    void allUnitsButMillimetresAreCalledInches();

    void aPlyHasNoRecordOfItsOwn();
    void layersEncloseTheirPlies();
    void withoutNestingTheLayupLeavesNoMark();
    void contoursAreGroupsAndCurvesEntities();
    void contoursAndCurvesWithoutPointsWriteNothing();
    void namesStandInQuotesAsTheyAre();
    void aClosedCurveRepeatsItsFirstPoint();
    void aClosedCurveOfOnePointDoesNot();

    void pointsHaveThreeDecimalsAndTargetsSix();
    void normalsStandBehindThreeBlanks();
    void normalsCanBeLeftOut();
    void anOffsetPointTakesThePlaceOfThePosition();
    void inchesScalePointsAndTargetsAndNoNormals();
    void theAxisSystemMovesPointsNormalsAndTargets();

    void onlyLiteralParametersAreWritten();
    void parametersFollowTheContours();
    void parametersGoFirstIfToldSo();
    void parametersOfAGroupThatIsNoPlyAreNotTold();
    void withoutAQueueNothingIsTold();
    void textsLeaveNoTrace();

    void withoutTargetsNoCalibrationFileIsMade();
    void withoutProjectorsNumbersAreFromZero();
    void withProjectorsOneNumberRunsThroughFromOne();
    void aNullTargetUsesUpAnIndexButNoRunningNumber();
    void projectorsWithoutTargetsHaveACountOfZero();
    void namesThatAreNoNumberAreToldInTheReport();
    void driftLeavesNoTrace();
    void theWrittenMessageNamesTheMake();
    void theReportCountsPliesAndSubPlies();
};

void TestWriterLAP::anEmptyTreeIsOpeningAndClosing()
{
    COMPARE_TEXT(Write(u""_s).part, opening + closing);
    COMPARE_TEXT(Write(u"layup L { ply P { contour { open } } }"_s).part, opening + closing);
}

void TestWriterLAP::theDrawingHasThePartName()
{
    QVERIFY(Write(u"partname \"Left  \\qwing\\q\""_s).part.contains("\nDRAWING_START \"Left  \"wing\"\"\n"));
}

void TestWriterLAP::allUnitsButMillimetresAreCalledInches()
{
    QVERIFY(Write(u"units inch"_s).part.contains("\nPROJECTION_SCALE in\n"));
    TestJob job(u"ply P { contour { open 25.4,0,0 } }"_s);
    job.GetOptions().SetUnits(ZETLaserOptions::EUnits(2));
    QVERIFY(job.Write<ZETLaserWriterLAP>(u"units.lpd"_s));
    QVERIFY(ReadBytes(u"units.lpd"_s).contains("\nPROJECTION_SCALE in\n"));
    QVERIFY(ReadBytes(u"units.lpd"_s).contains("\n25.400 0.000 0.000\n")); // and only inches are scaled
}

void TestWriterLAP::aPlyHasNoRecordOfItsOwn()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { open 1,2,3 } } ply Q { subply S { contour { open 4,5,6 } } }"_s),
                 Entity("1.000 2.000 3.000\n") + Entity("4.000 5.000 6.000\n"));
}

void TestWriterLAP::layersEncloseTheirPlies()
{
    COMPARE_TEXT(
        Drawing(u"layup L { sequence S { ply P { contour { open 1,2,3 } } } } group G { contour { open 4,5,6 } }"_s),
        "LAYER_START \"L\"\nLAYER_COLOR Green\nLAYER_START \"S\"\nLAYER_COLOR Green\n" + Entity("1.000 2.000 3.000\n") +
            "LAYER_END\nLAYER_END\nLAYER_START \"G\"\nLAYER_COLOR Green\n" + Entity("4.000 5.000 6.000\n") +
            "LAYER_END\n");
}

void TestWriterLAP::withoutNestingTheLayupLeavesNoMark()
{
    COMPARE_TEXT(Drawing(u"nestsequences off layup L { sequence S { ply P { contour { open 1,2,3 } } } }"_s),
                 "LAYER_START \"S\"\nLAYER_COLOR Green\n" + Entity("1.000 2.000 3.000\n") + "LAYER_END\n");
}

void TestWriterLAP::contoursAreGroupsAndCurvesEntities()
{
    COMPARE_TEXT(
        Drawing(u"ply P { contour Boundary { open A 1,0,0 2,0,0 open B 3,0,0 } contour Extra { open C 4,0,0 } }"_s),
        "GROUP_START \"Boundary\"\nGROUP_COLOR Green\n"
        "ENTITY_START \"A\"\nENTITY_COLOR Green\n1.000 0.000 0.000\n2.000 0.000 0.000\nENTITY_END\n"
        "ENTITY_START \"B\"\nENTITY_COLOR Green\n3.000 0.000 0.000\nENTITY_END\n"
        "GROUP_END\n"
        "GROUP_START \"Extra\"\nGROUP_COLOR Green\n"
        "ENTITY_START \"C\"\nENTITY_COLOR Green\n4.000 0.000 0.000\nENTITY_END\n"
        "GROUP_END\n"_ba);
}

void TestWriterLAP::contoursAndCurvesWithoutPointsWriteNothing()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { open closed } contour { } contour { closed open 1,2,3 } }"_s),
                 Entity("1.000 2.000 3.000\n"));
}

void TestWriterLAP::namesStandInQuotesAsTheyAre()
{
    COMPARE_TEXT(Drawing(u"group \"a \\q%1\\q\" { contour \"<\u00e4>\" { open \" c \" 1,2,3 } }"_s),
                 "LAYER_START \"a \"%1\"\"\nLAYER_COLOR Green\n"
                 "GROUP_START \"<\xc3\xa4>\"\nGROUP_COLOR Green\n"
                 "ENTITY_START \" c \"\nENTITY_COLOR Green\n1.000 2.000 3.000\nENTITY_END\nGROUP_END\nLAYER_END\n"_ba);
}

void TestWriterLAP::aClosedCurveRepeatsItsFirstPoint()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { closed 0,0,0 10,0,0 10,5,0 0,5,0 } }"_s),
                 Entity("0.000 0.000 0.000\n10.000 0.000 0.000\n10.000 5.000 0.000\n0.000 5.000 0.000\n"
                        "0.000 0.000 0.000\n"));
}

void TestWriterLAP::aClosedCurveOfOnePointDoesNot()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { closed 1,2,3 } }"_s), Entity("1.000 2.000 3.000\n"));
}

void TestWriterLAP::pointsHaveThreeDecimalsAndTargetsSix()
{
    const auto written = Write(u"target \"\" 25000,0.00025,-1e-9 ply P { contour { open 25000,0.0625,-1e-9 } }"_s);
    QVERIFY(written.part.contains("\n25000.000 0.063 -0.000\n"));
    COMPARE_TEXT(written.targets, "1\nT 0 25000.000000 0.000250 -0.000000\n"_ba);
}

void TestWriterLAP::normalsStandBehindThreeBlanks()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { open 1,2,3/0.6,0,-0.8 4,5,6 7,8,9/0,0,0 } }"_s),
                 Entity("1.000 2.000 3.000   0.600 0.000 -0.800\n4.000 5.000 6.000\n7.000 8.000 9.000\n"));
}

void TestWriterLAP::normalsCanBeLeftOut()
{
    COMPARE_TEXT(Drawing(u"normals off ply P { contour { open 1,2,3/0.6,0,-0.8 } }"_s), Entity("1.000 2.000 3.000\n"));
}

void TestWriterLAP::anOffsetPointTakesThePlaceOfThePosition()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { open 1,2,3/0,0,1@1,2,13 } }"_s),
                 Entity("1.000 2.000 13.000   0.000 0.000 1.000\n"));
}

void TestWriterLAP::inchesScalePointsAndTargetsAndNoNormals()
{
    const auto written =
        Write(u"units inch target \"\" 25.4,-50.8,1 ply P { contour { open 25.4,-254,1/0.6,0,-0.8 } }"_s);
    QVERIFY(written.part.contains("\n1.000 -10.000 0.039   0.600 0.000 -0.800\n"));
    COMPARE_TEXT(written.targets, "1\nT 0 1.000000 -2.000000 0.039370\n"_ba);
}

void TestWriterLAP::theAxisSystemMovesPointsNormalsAndTargets()
{
    // X of the axis system is Y of the model, Y is -X, its origin is at 10, 20, 30.
    const auto written = Write(u"axis 10,20,30 0,1,0 -1,0,0 target \"\" 11,22,33 "
                               "ply P { contour { open 11,22,33/1,0,0 } }"_s);
    QVERIFY(written.part.contains("\n2.000 -1.000 3.000   0.000 -1.000 0.000\n"));
    COMPARE_TEXT(written.targets, "1\nT 0 2.000000 -1.000000 3.000000\n"_ba);
}

void TestWriterLAP::onlyLiteralParametersAreWritten()
{
    COMPARE_TEXT(Drawing(u"ply P { parameter information I parameter message M parameter graphic G parameter query Q "
                         "parameter literal \"RAW %PLY%\" parameter note N parameter 6 X }"_s),
                 "RAW P\n"_ba);
    QCOMPARE(QueuedMessages(), QStringList({u"0 LAP data have been successfully written to file:\n wing.lpd"_s,
                                            u"2 Unsupported laser parameter type Information for LAP"_s,
                                            u"2 Unsupported laser parameter type Message for LAP"_s,
                                            u"2 Unsupported laser parameter type Graphic for LAP"_s,
                                            u"2 Unsupported laser parameter type Query for LAP"_s,
                                            u"2 Unsupported laser parameter type Note for LAP"_s,
                                            u"2 Unsupported laser parameter type  for LAP"_s}));
}

void TestWriterLAP::parametersFollowTheContours()
{
    COMPARE_TEXT(Drawing(u"ply P { parameter literal RAW contour { open 1,2,3 } }"_s),
                 Entity("1.000 2.000 3.000\n") + "RAW\n");
}

void TestWriterLAP::parametersGoFirstIfToldSo()
{
    COMPARE_TEXT(Drawing(u"rosettefirst on subply P { contour { open 1,2,3 } parameter literal RAW }"_s),
                 "RAW\n" + Entity("1.000 2.000 3.000\n"));
}

void TestWriterLAP::parametersOfAGroupThatIsNoPlyAreNotTold()
{
    COMPARE_TEXT(Drawing(u"sequence S { parameter literal RAW parameter note N }"_s),
                 "LAYER_START \"S\"\nLAYER_COLOR Green\nLAYER_END\n"_ba);
    COMPARE_TEXT(Drawing(u"nullply P { parameter literal RAW parameter note N }"_s), ""_ba);
    QCOMPARE(QueuedMessages().size(), 2); // "written" of both jobs
}

void TestWriterLAP::withoutAQueueNothingIsTold()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Drawing(u"ply P { parameter note N }"_s), ""_ba);
}

void TestWriterLAP::textsLeaveNoTrace()
{
    COMPARE_TEXT(Drawing(u"ply P { contour { open 1,2,3 } text %PLY% 0,0,0 1,0,0 0,1,0 5 }"_s),
                 Entity("1.000 2.000 3.000\n"));
    QCOMPARE(QueuedMessages().size(), 1);
}

void TestWriterLAP::withoutTargetsNoCalibrationFileIsMade()
{
    const auto written = Write(u""_s);
    QVERIFY(!written.hasTargets);
    QVERIFY(written.report.contains("\n\nNo laser targets found in model.\n\n\nNO PLY DATA WRITTEN!"));
}

void TestWriterLAP::withoutProjectorsNumbersAreFromZero()
{
    const auto written = Write(u"target \"\" 1,0,0 target \"\" 2,0,0"_s);
    COMPARE_TEXT(written.targets, "2\nT 0 1.000000 0.000000 0.000000\nT 1 2.000000 0.000000 0.000000\n"_ba);
    QVERIFY(written.report.contains("\nNo laser projectors found in model, using all targets in one projector.\n"
                                    "\nWriting 2 targets to file wing.cal\n\nNO PLY DATA WRITTEN!"));
}

void TestWriterLAP::withProjectorsOneNumberRunsThroughFromOne()
{
    const auto written = Write(u"target \"\" 1,0,0 target \"\" 2,0,0 projector P { 2 1 } projector Q { 1 }"_s);
    COMPARE_TEXT(written.targets, "2\nT 1 2.000000 0.000000 0.000000\nT 2 1.000000 0.000000 0.000000\n"
                                  "1\nT 3 1.000000 0.000000 0.000000\n"_ba);
    QVERIFY(written.report.contains("\nWriting 3 targets in 2 projectors to file wing.cal\n\nNO PLY DATA WRITTEN!"));
}

void TestWriterLAP::aNullTargetUsesUpAnIndexButNoRunningNumber()
{
    COMPARE_TEXT(Write(u"target \"\" 1,0,0 target \"\" 2,0,0 projector P { 1 null 2 }"_s).targets,
                 "3\nT 1 1.000000 0.000000 0.000000\nT 2 2.000000 0.000000 0.000000\n"_ba);
}

void TestWriterLAP::projectorsWithoutTargetsHaveACountOfZero()
{
    COMPARE_TEXT(Write(u"target \"\" 1,0,0 projector P { } projector Q { }"_s).targets, "0\n0\n"_ba);
}

void TestWriterLAP::namesThatAreNoNumberAreToldInTheReport()
{
    const auto written = Write(u"target 0 1,0,0 target 7 2,0,0 target \"Tar get\" 3,0,0"_s);
    COMPARE_TEXT(written.targets, "3\nT 0 1.000000 0.000000 0.000000\nT 1 2.000000 0.000000 0.000000\n"
                                  "T 2 3.000000 0.000000 0.000000\n"_ba);
    QVERIFY(written.report.contains("\nTarget name '7' saved with LAP number 1\n"
                                    "Target name 'Tar get' saved with LAP number 2\n\nWriting 3 targets"));
    QVERIFY(!written.report.contains("Target name '0'"));
    QVERIFY(!Write(u"target 1 1,0,0 projector P { 1 }"_s).report.contains("Target name"));
}

void TestWriterLAP::driftLeavesNoTrace()
{
    COMPARE_TEXT(Write(u"target \"\" 1,0,0 drift"_s).targets, "1\nT 0 1.000000 0.000000 0.000000\n"_ba);
}

void TestWriterLAP::theWrittenMessageNamesTheMake()
{
    QVERIFY(Write(u""_s).report.contains("LAP data have been successfully written to file:\n wing.lpd\n"));
}

void TestWriterLAP::theReportCountsPliesAndSubPlies()
{
    QVERIFY(Write(u"ply P { contour { open 1,2,3 } } ply Q { subply S { parameter note N } }"_s)
                .report.contains("   Number of Plies = 2\n   Number of Sub-plies = 1\n"));
}

QTEST_GUILESS_MAIN(TestWriterLAP)
#include "TestWriterLAP.moc"
