#include "writers/ZETLaserWriterVirtek.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestTranslator.h"

#include <QFileInfo>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
TestOutput Write(TestJob& job, const QString& fileName = u"wing.ply"_s)
{
    return WriteOutput(job, fileName, fileName.left(qMax(qsizetype(0), fileName.size() - 3)) + u"cal"_s);
}

TestOutput Write(const QString& text)
{
    TestJob job(text);
    return Write(job);
}

/*! The part file alone. */
QByteArray Part(const QString& text)
{
    return Write(text).part;
}
} // namespace

class TestWriterVirtek : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void anEmptyTreeIsTheEndOfDataAlone_data();
    void anEmptyTreeIsTheEndOfDataAlone();
    void aPlyIsAPairOfLines();
    void aPlyWithSubPliesWritesNothingOfItsOwn();
    void withNestingLayupAndSequenceAreLayers();
    void withoutNestingTheLayupLeavesNoMark();
    void aLeafThatIsNoPlyHasBothPairs();
    void aNullInThePropertyStillMakesAPly();
    void namesStandAsTheyAre();

    void aClosedCurveRepeatsItsFirstPoint();
    void aClosedCurveOfOnePointDoesNot();
    void aClosedCurveOfTwoPointsDoes();
    void curvesWithoutPointsWriteNothing();
    void namesOfContoursAndCurvesDoNotShow();

    void numbersHaveSixDecimals();
    void normalsStandBehindThreeBlanks();
    void normalsCanBeLeftOut();
    void anOffsetPointTakesThePlaceOfThePosition();
    void inchesScalePointsAndNoNormals();
    void theAxisSystemMovesPointsNormalsTextsAndTargets();

    void informationComesFirstWhateverItsPlace();
    void informationIsCountedByParameter();
    void eachTypeOfParameterHasItsLines();
    void parameterTextsAreEvaluated();
    void unsupportedTypesAreToldOnceEach();
    void withoutAQueueUnsupportedTypesAreDropped();
    void parametersOfAGroupThatIsNoPlyKeepItAndAreNotWritten();
    void aTextHasThreePoints();
    void textsOfASubPlyAreEvaluatedAgainstIt();
    void textsNeverHaveNormals();
    void textsInInches();
    void parametersAndTextsFollowTheContours();
    void parametersAndTextsGoFirstIfToldSo();

    void withoutTargetsNoCalibrationFileIsMade();
    void withoutTargetsAnOldCalibrationFileStays();
    void withoutAModelThereAreNoTargets();
    void withoutProjectorsAllTargetsAreThoseOfOne();
    void eachProjectorHasItsCountAndTargets();
    void aNullTargetCountsAndUsesUpItsIndex();
    void projectorsWithoutTargetsHaveACountOfZero();
    void unnamedTargetsTakeTheirIndex();
    void blanksInTargetNamesAreReplaced();
    void driftTargetsAreMarked();
    void targetsInInches();
    void theCalibrationFileReplacesThreeCharacters_data();
    void theCalibrationFileReplacesThreeCharacters();
    void aFileNameWithAPlaceholderStaysWhole();
    void aFileNameWithAPlaceholderStaysWholeInTheListOfProjectors();

    void theReportCountsPliesAndSubPlies();
    void theWrittenMessageIsInTheReport();
    void messagesAreTranslatedAndKeywordsAreNot();
};

void TestWriterVirtek::init()
{
    ZETOpenMessageQueue::Install();
}

void TestWriterVirtek::cleanup()
{
    ZETOpenMessageQueue::Remove();
}

void TestWriterVirtek::anEmptyTreeIsTheEndOfDataAlone_data()
{
    QTest::addColumn<QString>("job");
    QTest::newRow("nothing") << u""_s;
    QTest::newRow("empty ply") << u"ply P { }"_s;
    QTest::newRow("empty layers") << u"layup L { sequence S { ply P { } } }"_s;
    QTest::newRow("curves without points") << u"ply P { contour { open closed } contour { } }"_s;
    QTest::newRow("texts alone") << u"ply P { text T 0,0,0 1,0,0 0,1,0 5 }"_s;
}

void TestWriterVirtek::anEmptyTreeIsTheEndOfDataAlone()
{
    QFETCH(QString, job);
    const auto written = Write(job);
    COMPARE_TEXT(written.part, "EOD\n"_ba);
    QVERIFY(written.report.contains("NO PLY DATA WRITTEN!"));
    QVERIFY(written.report.contains("   No plies, sub-plies, or courses written \n"));
}

void TestWriterVirtek::aPlyIsAPairOfLines()
{
    COMPARE_TEXT(Part(u"ply P1 { contour { open 0,0,0 } } ply P2 { contour { open 1,0,0 } }"_s),
                 "START P1\nP 1\n0.000000 0.000000 0.000000\nEND P1\n"
                 "START P2\nP 1\n1.000000 0.000000 0.000000\nEND P2\n"
                 "EOD\n"_ba);
}

void TestWriterVirtek::aPlyWithSubPliesWritesNothingOfItsOwn()
{
    const auto written = Write(u"ply P { subply A { contour { open 0,0,0 } } subply B { contour { open 1,0,0 } } }"_s);
    COMPARE_TEXT(written.part, "START A\nP 1\n0.000000 0.000000 0.000000\nEND A\n"
                               "START B\nP 1\n1.000000 0.000000 0.000000\nEND B\n"
                               "EOD\n"_ba);
    QVERIFY(written.report.contains("   Number of Plies = 1\n   Number of Sub-plies = 2\n"));
}

void TestWriterVirtek::withNestingLayupAndSequenceAreLayers()
{
    COMPARE_TEXT(Part(u"nestsequences on layup L { sequence S { ply P { contour { open 0,0,0 } } } }"_s),
                 "LAYER START L\nLAYER START S\n"
                 "START P\nP 1\n0.000000 0.000000 0.000000\nEND P\n"
                 "LAYER END S\nLAYER END L\nEOD\n"_ba);
}

void TestWriterVirtek::withoutNestingTheLayupLeavesNoMark()
{
    COMPARE_TEXT(Part(u"nestsequences off layup L { sequence S { ply P { contour { open 0,0,0 } } } }"_s),
                 "LAYER START S\n"
                 "START P\nP 1\n0.000000 0.000000 0.000000\nEND P\n"
                 "LAYER END S\nEOD\n"_ba);
}

void TestWriterVirtek::aLeafThatIsNoPlyHasBothPairs()
{
    const auto written = Write(u"group G { contour { open 0,0,0 } }"_s);
    COMPARE_TEXT(written.part, "LAYER START G\nSTART G\nP 1\n0.000000 0.000000 0.000000\nEND G\nLAYER END G\nEOD\n"_ba);
    QVERIFY(written.report.contains("NO PLY DATA WRITTEN!"));

    // A layup that opens no layer keeps the ply pair.
    COMPARE_TEXT(Part(u"nestsequences off layup L { contour { open 0,0,0 } }"_s),
                 "START L\nP 1\n0.000000 0.000000 0.000000\nEND L\nEOD\n"_ba);
}

void TestWriterVirtek::aNullInThePropertyStillMakesAPly()
{
    const auto written = Write(u"nullply P { contour { open 0,0,0 } parameter message M text T 0,0,0 1,0,0 0,1,0 5 } "
                               "nullsubply S { parameter message M }"_s);
    // The property decides layer and counter; without a model object in it there are no parameters and texts.
    COMPARE_TEXT(written.part, "START P\nP 1\n0.000000 0.000000 0.000000\nEND P\nSTART S\nEND S\nEOD\n"_ba);
    QVERIFY(written.report.contains("   Number of Plies = 1\n   Number of Sub-plies = 1\n"));
}

void TestWriterVirtek::namesStandAsTheyAre()
{
    COMPARE_TEXT(Part(u"group \" a  b \" { ply \"P\u00e41 <%1> \\q\" { contour { open 0,0,0 } } }"_s),
                 "LAYER START  a  b \nSTART P\xc3\xa4"
                 "1 <%1> \"\nP 1\n0.000000 0.000000 0.000000\nEND P\xc3\xa4"
                 "1 <%1> \"\nLAYER END  a  b \nEOD\n"_ba);
}

void TestWriterVirtek::aClosedCurveRepeatsItsFirstPoint()
{
    COMPARE_TEXT(Part(u"ply P { contour { closed 0,0,0 10,0,0 10,5,0 } }"_s), "START P\nP 4\n"
                                                                              "0.000000 0.000000 0.000000\n"
                                                                              "10.000000 0.000000 0.000000\n"
                                                                              "10.000000 5.000000 0.000000\n"
                                                                              "0.000000 0.000000 0.000000\n"
                                                                              "END P\nEOD\n"_ba);
}

void TestWriterVirtek::aClosedCurveOfOnePointDoesNot()
{
    COMPARE_TEXT(Part(u"ply P { contour { closed 1,2,3 } }"_s),
                 "START P\nP 1\n1.000000 2.000000 3.000000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::aClosedCurveOfTwoPointsDoes()
{
    COMPARE_TEXT(Part(u"ply P { contour { closed 1,0,0/0,0,1 2,0,0 } }"_s),
                 "START P\nP 3\n1.000000 0.000000 0.000000   0.000000 0.000000 1.000000\n"
                 "2.000000 0.000000 0.000000\n"
                 "1.000000 0.000000 0.000000   0.000000 0.000000 1.000000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::curvesWithoutPointsWriteNothing()
{
    COMPARE_TEXT(Part(u"ply P { contour { open closed } contour { closed open 1,0,0 } contour { } }"_s),
                 "START P\nP 1\n1.000000 0.000000 0.000000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::namesOfContoursAndCurvesDoNotShow()
{
    const QByteArray part = Part(u"ply P { contour Contour { open Curve 1,0,0 } }"_s);
    QVERIFY(!part.contains("Contour"));
    QVERIFY(!part.contains("Curve"));
}

void TestWriterVirtek::numbersHaveSixDecimals()
{
    // 1/128 and 3/128 lie exactly between two numbers of six decimals: they go away from zero.
    COMPARE_TEXT(Part(u"ply P { contour { open -1e-9,25000,-0.0078125 1234567.8901234,0.0234375,-0.0000004 } }"_s),
                 "START P\nP 2\n"
                 "-0.000000 25000.000000 -0.007813\n"
                 "1234567.890123 0.023438 -0.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::normalsStandBehindThreeBlanks()
{
    // A zero normal is no normal: the lines of one polyline differ in width.
    COMPARE_TEXT(Part(u"normals on ply P { contour { open 1,2,3/0.6,0,-0.8 4,5,6 7,8,9/0,0,0 1,1,1/0,0,1e-9 } }"_s),
                 "START P\nP 4\n"
                 "1.000000 2.000000 3.000000   0.600000 0.000000 -0.800000\n"
                 "4.000000 5.000000 6.000000\n"
                 "7.000000 8.000000 9.000000\n"
                 "1.000000 1.000000 1.000000   0.000000 0.000000 0.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::normalsCanBeLeftOut()
{
    COMPARE_TEXT(Part(u"normals off ply P { contour { open 1,2,3/0.6,0,-0.8 } }"_s),
                 "START P\nP 1\n1.000000 2.000000 3.000000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::anOffsetPointTakesThePlaceOfThePosition()
{
    COMPARE_TEXT(Part(u"ply P { contour { closed 1,2,3/0,0,1@1,2,13 4,5,6 } }"_s),
                 "START P\nP 3\n"
                 "1.000000 2.000000 13.000000   0.000000 0.000000 1.000000\n"
                 "4.000000 5.000000 6.000000\n"
                 "1.000000 2.000000 13.000000   0.000000 0.000000 1.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::inchesScalePointsAndNoNormals()
{
    COMPARE_TEXT(Part(u"units inch ply P { contour { open 25.4,-254,1/0.6,0,-0.8 } }"_s),
                 "START P\nP 1\n1.000000 -10.000000 0.039370   0.600000 0.000000 -0.800000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::theAxisSystemMovesPointsNormalsTextsAndTargets()
{
    // X of the axis system is Y of the model, Y is -X, its origin is at 10, 20, 30.
    const auto written = Write(u"axis 10,20,30 0,1,0 -1,0,0 target T 11,22,33 ply P { contour { open 11,22,33/1,0,0 } "
                               "text A 11,22,33 1,0,0 0,0,1 2 }"_s);
    COMPARE_TEXT(written.part, "START P\nP 1\n"
                               "2.000000 -1.000000 3.000000   0.000000 -1.000000 0.000000\n"
                               "T 3 A\n"
                               "2.000000 -1.000000 3.000000\n"
                               "2.000000 -3.000000 3.000000\n"
                               "2.000000 -1.000000 4.000000\n"
                               "END P\nEOD\n"_ba);
    COMPARE_TEXT(written.targets, "1\nT T 2.000000 -1.000000 3.000000\n"_ba);
}

void TestWriterVirtek::informationComesFirstWhateverItsPlace()
{
    COMPARE_TEXT(Part(u"ply P { parameter message M parameter information I1 parameter literal X "
                      "parameter information I2 }"_s),
                 "START P\nI 2\nI1\nI2\nL 1\nM\nX\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::informationIsCountedByParameter()
{
    COMPARE_TEXT(Part(u"ply P { parameter information \"a\\nb\" parameter information \"\" }"_s),
                 "START P\nI 2\na\nb\n\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::eachTypeOfParameterHasItsLines()
{
    COMPARE_TEXT(
        Part(u"ply P { parameter query Q1 parameter graphic \"logo left.bmp\" parameter message \"two\\nlines\" "
             "parameter literal \"  raw %\" parameter information I }"_s),
        "START P\nI 1\nI\nQ 1\nQ1\nG 0 logo left.bmp\nL 1\ntwo\nlines\n  raw %\nEND P\nEOD\n"_ba);
    QCOMPARE(QueuedMessages().size(), 1); // "written" alone
}

void TestWriterVirtek::parameterTextsAreEvaluated()
{
    COMPARE_TEXT(Part(u"layup L { sequence S { ply P { parameter message \"%LAYUP%/%SEQ%/%PLY%/%SUBPLY%/%NONE%/%\" } "
                      "ply Q { subply A { parameter information %PLY%-%SUBPLY% } } } }"_s),
                 "LAYER START L\nLAYER START S\nSTART P\nL 1\nL/S/P///%\nEND P\n"
                 "START A\nI 1\nQ-A\nEND A\n"
                 "LAYER END S\nLAYER END L\nEOD\n"_ba);
}

void TestWriterVirtek::unsupportedTypesAreToldOnceEach()
{
    COMPARE_TEXT(
        Part(u"ply P { parameter note N1 parameter message M parameter note N2 parameter 6 X parameter -1 Y }"_s),
        "START P\nL 1\nM\nEND P\nEOD\n"_ba);
    QCOMPARE(QueuedMessages(), QStringList({u"0 Virtek data have been successfully written to file:\n wing.ply"_s,
                                            u"2 Unsupported laser parameter type Note for Virtek"_s,
                                            u"2 Unsupported laser parameter type Note for Virtek"_s,
                                            u"2 Unsupported laser parameter type  for Virtek"_s,
                                            u"2 Unsupported laser parameter type  for Virtek"_s}));
}

void TestWriterVirtek::withoutAQueueUnsupportedTypesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Part(u"ply P { parameter note N }"_s), "START P\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::parametersOfAGroupThatIsNoPlyKeepItAndAreNotWritten()
{
    COMPARE_TEXT(Part(u"sequence S { parameter message M parameter note N }"_s),
                 "LAYER START S\nSTART S\nEND S\nLAYER END S\nEOD\n"_ba);
    QCOMPARE(QueuedMessages().size(), 1); // what isn't written isn't told as unsupported
}

void TestWriterVirtek::aTextHasThreePoints()
{
    // The base direction is stretched to the size. Meant: the up direction isn't.
    COMPARE_TEXT(Part(u"ply P { contour { open 0,0,0 } text \"%PLY% no. 1\" 10,20,30 0,1,0 0,0,1 2.5 }"_s),
                 "START P\nP 1\n0.000000 0.000000 0.000000\n"
                 "T 3 P no. 1\n"
                 "10.000000 20.000000 30.000000\n"
                 "10.000000 22.500000 30.000000\n"
                 "10.000000 20.000000 31.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::textsOfASubPlyAreEvaluatedAgainstIt()
{
    COMPARE_TEXT(Part(u"ply P { subply S { contour { open 0,0,0 } text %PLY%-%SUBPLY% 0,0,0 1,0,0 0,1,0 1 "
                      "text two 1,0,0 1,0,0 0,1,0 1 } }"_s),
                 "START S\nP 1\n0.000000 0.000000 0.000000\n"
                 "T 3 P-S\n0.000000 0.000000 0.000000\n1.000000 0.000000 0.000000\n0.000000 1.000000 0.000000\n"
                 "T 3 two\n1.000000 0.000000 0.000000\n2.000000 0.000000 0.000000\n1.000000 1.000000 0.000000\n"
                 "END S\nEOD\n"_ba);
}

void TestWriterVirtek::textsNeverHaveNormals()
{
    QVERIFY(!Part(u"normals on ply P { contour { open 0,0,0 } text T 0,0,0 1,0,0 0,1,0 1 }"_s).contains("   "));
}

void TestWriterVirtek::textsInInches()
{
    COMPARE_TEXT(Part(u"units inch ply P { parameter literal X text T 25.4,0,0 1,0,0 0,1,0 25.4 }"_s),
                 "START P\nX\nT 3 T\n"
                 "1.000000 0.000000 0.000000\n"
                 "2.000000 0.000000 0.000000\n"
                 "1.000000 0.039370 0.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::parametersAndTextsFollowTheContours()
{
    COMPARE_TEXT(Part(u"rosettefirst off ply P { text T 0,0,0 1,0,0 0,1,0 1 parameter message M "
                      "contour { open 5,0,0 } contour { open 6,0,0 } }"_s),
                 "START P\nP 1\n5.000000 0.000000 0.000000\nP 1\n6.000000 0.000000 0.000000\nL 1\nM\n"
                 "T 3 T\n0.000000 0.000000 0.000000\n1.000000 0.000000 0.000000\n0.000000 1.000000 0.000000\n"
                 "END P\nEOD\n"_ba);
}

void TestWriterVirtek::parametersAndTextsGoFirstIfToldSo()
{
    COMPARE_TEXT(
        Part(u"rosettefirst on ply P { text T 0,0,0 1,0,0 0,1,0 1 contour { open 5,0,0 } parameter message M }"_s),
        "START P\nL 1\nM\n"
        "T 3 T\n0.000000 0.000000 0.000000\n1.000000 0.000000 0.000000\n0.000000 1.000000 0.000000\n"
        "P 1\n5.000000 0.000000 0.000000\nEND P\nEOD\n"_ba);
}

void TestWriterVirtek::withoutTargetsNoCalibrationFileIsMade()
{
    const auto written = Write(u"projector A { }"_s);
    QVERIFY(!written.hasTargets);
    COMPARE_TEXT(ReportBody(written.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterVirtek::withoutTargetsAnOldCalibrationFileStays()
{
    QFile old(u"kept.cal"_s);
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    TestJob job(u""_s);
    QVERIFY(job.Write<ZETLaserWriterVirtek>(u"kept.ply"_s));
    QCOMPARE(ReadBytes(u"kept.cal"_s), "old"_ba);
}

void TestWriterVirtek::withoutAModelThereAreNoTargets()
{
    TestJob job(u"target A 0,0,0"_s);
    job.RemoveModel();
    const auto written = Write(job);
    QVERIFY(!written.hasTargets);
    COMPARE_TEXT(ReportBody(written.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterVirtek::withoutProjectorsAllTargetsAreThoseOfOne()
{
    const auto written = Write(u"target A 1,2,3 target B -4,5.5,1e-9 drift"_s);
    COMPARE_TEXT(written.targets, "2\nT A 1.000000 2.000000 3.000000\nT B D -4.000000 5.500000 0.000000\n"_ba);
    // Meant: the last text has no line end, the foot of the report goes on behind it.
    COMPARE_TEXT(ReportBody(written.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "\nWriting 2 targets to file wing.cal"_ba);
    QVERIFY(written.report.contains("to file wing.cal\n\nNO PLY DATA WRITTEN!\n"));
}

void TestWriterVirtek::eachProjectorHasItsCountAndTargets()
{
    const auto written = Write(u"target A 1,0,0 target B 2,0,0 target C 3,0,0 "
                               "projector Left { 2 1 } projector Right { 3 2 }"_s);
    COMPARE_TEXT(written.targets, "2\nT B 2.000000 0.000000 0.000000\nT A 1.000000 0.000000 0.000000\n"
                                  "2\nT C 3.000000 0.000000 0.000000\nT B 2.000000 0.000000 0.000000\n"_ba);
    COMPARE_TEXT(ReportBody(written.report), "\nWriting 4 targets in 2 projectors to file wing.cal"_ba);
}

void TestWriterVirtek::aNullTargetCountsAndUsesUpItsIndex()
{
    const auto written = Write(u"target \"\" 1,0,0 target \"\" 2,0,0 projector P { 1 null 2 }"_s);
    COMPARE_TEXT(written.targets, "3\nT 0 1.000000 0.000000 0.000000\nT 2 2.000000 0.000000 0.000000\n"_ba);
    COMPARE_TEXT(ReportBody(written.report), "\nWriting 2 targets in 1 projectors to file wing.cal"_ba);
}

void TestWriterVirtek::projectorsWithoutTargetsHaveACountOfZero()
{
    const auto written = Write(u"target A 1,0,0 projector P { } projector Q { }"_s);
    QVERIFY(written.hasTargets);
    COMPARE_TEXT(written.targets, "0\n0\n"_ba);
    COMPARE_TEXT(ReportBody(written.report), "\nWriting 0 targets in 2 projectors to file wing.cal"_ba);
}

void TestWriterVirtek::unnamedTargetsTakeTheirIndex()
{
    const auto written =
        Write(u"target \"\" 1,0,0 target B 2,0,0 target \"\" 3,0,0 projector P { 1 2 3 } projector Q { 3 }"_s);
    COMPARE_TEXT(written.targets, "3\nT 0 1.000000 0.000000 0.000000\nT B 2.000000 0.000000 0.000000\n"
                                  "T 2 3.000000 0.000000 0.000000\n1\nT 0 3.000000 0.000000 0.000000\n"_ba);
}

void TestWriterVirtek::blanksInTargetNamesAreReplaced()
{
    const auto written = Write(u"target \"Target  A\" 1,0,0 drift target \"T\tB\" 2,0,0 projector P { 1 2 }"_s);
    COMPARE_TEXT(written.targets,
                 "2\nT Target__A D 1.000000 0.000000 0.000000\nT T\tB 2.000000 0.000000 0.000000\n"_ba);
    COMPARE_TEXT(ReportBody(written.report), "Substituting spaces in target name 'Target  A' with underscore\n"
                                             "\nWriting 2 targets in 1 projectors to file wing.cal"_ba);
}

void TestWriterVirtek::driftTargetsAreMarked()
{
    COMPARE_TEXT(Write(u"target A 1,0,0 drift target B 2,0,0"_s).targets,
                 "2\nT A D 1.000000 0.000000 0.000000\nT B 2.000000 0.000000 0.000000\n"_ba);
}

void TestWriterVirtek::targetsInInches()
{
    COMPARE_TEXT(Write(u"units inch target A 25.4,-50.8,1"_s).targets, "1\nT A 1.000000 -2.000000 0.039370\n"_ba);
}

void TestWriterVirtek::theCalibrationFileReplacesThreeCharacters_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("calibration");
    QTest::newRow("ply") << u"part.ply"_s << u"part.cal"_s;
    QTest::newRow("other extension") << u"part.text"_s << u"part.tcal"_s;
    QTest::newRow("three characters") << u"abc"_s << u"cal"_s;
    QTest::newRow("two characters") << u"ab"_s << u"cal"_s;
}

void TestWriterVirtek::theCalibrationFileReplacesThreeCharacters()
{
    QFETCH(QString, fileName);
    QFETCH(QString, calibration);
    QFile::remove(calibration);
    TestJob job(u"target A 1,0,0"_s);
    QVERIFY(job.Write<ZETLaserWriterVirtek>(fileName));
    QCOMPARE(ReadBytes(calibration), "1\nT A 1.000000 0.000000 0.000000\n"_ba);
    QVERIFY(
        ReadBytes(fileName + u"-report.htm"_s).contains("Writing 1 targets to file " + calibration.toUtf8() + '\n'));
}

void TestWriterVirtek::aFileNameWithAPlaceholderStaysWhole()
{
    TestJob job(u"target A 1,0,0"_s);
    const auto written = Write(job, u"wing %1 %2 %3.ply"_s);
    QVERIFY(written.report.contains("\nWriting 1 targets to file wing %1 %2 %3.cal\n"));
    QCOMPARE(QueuedMessages().value(0), u"0 Virtek data have been successfully written to file:\n wing %1 %2 %3.ply"_s);
}

void TestWriterVirtek::aFileNameWithAPlaceholderStaysWholeInTheListOfProjectors()
{
    TestJob job(u"target A 1,0,0 projector P { 1 }"_s);
    const auto written = Write(job, u"wing %1 %3.ply"_s);
    QVERIFY(written.report.contains("\nWriting 1 targets in 1 projectors to file wing %1 %3.cal\n"));
}

void TestWriterVirtek::theReportCountsPliesAndSubPlies()
{
    const auto written =
        Write(u"sequence S { ply P { contour { open 0,0,0 } } ply Empty { } ply Q { "
              "subply A { contour { open 0,0,0 } } subply B { parameter message M } subply C { } } }"_s);
    QVERIFY(written.report.contains("\n\nPlies Written Report:\n"
                                    "   Number of Plies = 2\n"
                                    "   Number of Sub-plies = 2\n"
                                    "\nEnd of report.\n"));
}

void TestWriterVirtek::theWrittenMessageIsInTheReport()
{
    const auto written = Write(u"ply P { contour { open 0,0,0 } parameter note N }"_s);
    QVERIFY(written.report.contains("\n\nWarning & Error messages:\n"
                                    "Virtek data have been successfully written to file:\n wing.ply\n"
                                    "Unsupported laser parameter type Note for Virtek\n"
                                    "\n\nPlies Written Report:\n"));
}

void TestWriterVirtek::messagesAreTranslatedAndKeywordsAreNot()
{
    const TestTranslator translator("ZETLaserWriterVirtek");
    COMPARE_TEXT(ReportBody(Write(u""_s).report), "\n* No laser targets found in model.\n"_ba);
    COMPARE_TEXT(ReportBody(Write(u"target A 0,0,0"_s).report),
                 "\n* No laser projectors found in model, using all targets in one projector.\n"
                 "\n* Writing 1 targets to file wing.cal"_ba);
    ZETOpenMessageQueue::Clear();
    const auto written = Write(u"target \"A 1\" 0,0,0 projector P { 1 } ply P { parameter note N }"_s);
    COMPARE_TEXT(ReportBody(written.report), "Substituting spaces in target name 'A 1' with underscore\n"
                                             "\n* Writing 1 targets in 1 projectors to file wing.cal"_ba);
    COMPARE_TEXT(written.part, "START P\nEND P\nEOD\n"_ba);
    COMPARE_TEXT(written.targets, "1\nT A_1 0.000000 0.000000 0.000000\n"_ba);
    QCOMPARE(QueuedMessages(), QStringList({u"0 Virtek data have been successfully written to file:\n wing.ply"_s,
                                            u"2 * Unsupported laser parameter type Note for Virtek"_s}));
}

QTEST_GUILESS_MAIN(TestWriterVirtek)
#include "TestWriterVirtek.moc"
