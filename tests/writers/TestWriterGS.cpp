#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestTranslator.h"
#include "writers/ZETLaserWriterGS.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSubPly.h>

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! A General Scanning job in plain output. */
TestOutput Write(const QString& text)
{
    return WriteOutput(u"filetype 7 normals off\n"_s + text, u"wing.PRT"_s, u"wing.cal"_s);
}

/*! What stands between the opening and the last line. */
QByteArray DataOf(const QByteArray& part)
{
    const QByteArray opening = "N000-00-02M19(2-1)\n";
    const qsizetype begin = part.indexOf(opening) + opening.size();
    const qsizetype end = part.lastIndexOf('\n', -2) + 1;
    if (begin < opening.size() || !part.endsWith("-01-01M30\n"))
        qFatal("not a part file: %s", part.constData());
    return part.mid(begin, end - begin);
}

QByteArray Data(const QString& text)
{
    return DataOf(Write(text).part);
}

/*! The same in nesting output, without the lines of the nesting data. */
QByteArray NestingCurves(const QString& text)
{
    QByteArray lines;
    for (const auto& line : DataOf(Write(u"type 2 "_s + text).part).split('\n')) {
        if (!line.isEmpty() && !line.contains("M19("))
            lines += line + '\n';
    }
    return lines;
}

/*! The curve heads of a job in nesting output. */
QByteArrayList Heads(const QString& text)
{
    QByteArrayList heads;
    for (const auto& line : NestingCurves(text).split('\n')) {
        if (line.contains("M11("))
            heads += line;
    }
    return heads;
}
} // namespace

class TestWriterGS : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void anEmptyTreeHasThreeLines();
    void theMakeShowsInTheMessage();
    void theFirstLineHoldsThePartName();
    void nestingOutputHasItsUnits_data();
    void nestingOutputHasItsUnits();
    void allUnitsButInchesAreCalledMillimetres();

    void plainOutputHasCommentsAndNoNestLines();
    void nestingOutputHasNestLinesAndNoComments();
    void parametersGoAheadOfContours();
    void groupsWithoutPointsWriteNothing();
    void contoursOfTheRootArePassedOver();
    void nestFlagsChangeNothing();
    void thePlyNumberCountsPliesAndSubPlies();
    void theThousandthPlyIsWider();
    void aPlyWithSubPliesEndsWithTheirLastNumber();

    void aSubPlyIsLabelledWithItsPly();
    void headsHaveLabelsOfTheModelAndPartsNamesOfTheTree();
    void aSubPlyWithoutAPlyKeepsTheNameBefore();
    void nullPliesAreNamedByTheirGroups();
    void namesStayFromTheLevelBefore();
    void aLayupIsNoSequence();
    void aPlyThatIsASequenceTooIsAPly();

    void theMaterialIsNamedByTypeOrById();
    void theDirectionHasSixDigits();

    void aRosetteUsesUpNoNumber();
    void aRosetteIsKnownByItsTranslatedName();
    void curveNumbersRestartInEachContour();
    void aClosedCurveOfOnePointIsClosed();
    void curvesWithoutPointsUseUpNoNumber();
    void placeholdersInNamesTakeTheNextArgument();
    void zeroNormalsAreWritten();
    void inchesScalePointsAndNoNormals();
    void theOffsetPointCounts();

    void informationIsWrittenAndTold();
    void parametersHaveOnePlace();
    void unsupportedTypesAreToldByMake();
    void otherFileTypesTellNothing();
    void withoutAQueueUnsupportedTypesAreDropped();
    void textsAreNotPartOfTheFormat();

    void withoutTargetsThereIsNoCalibration();
    void withoutProjectorsTheTargetsAreThoseOfLaserOne();
    void theLineGoesOnBehindAProjectorsEnd();
    void projectorsNeedNoSelection();
    void projectorsMayStandAnywhereInTheModel();
    void aNullTargetUsesUpItsIndex();
    void moreThan99TargetsGrowTheIndex();
    void quilmonHasNoCalibration();
};

void TestWriterGS::anEmptyTreeHasThreeLines()
{
    const auto output = Write(u"partname Wing"_s);
    COMPARE_TEXT(output.part, "N000-00-01M19(Wing,1-1,,TOOL0,NEW)\nN000-00-02M19(2-1)\nN000-01-01M30\n"_ba);
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n"_ba);
    QVERIFY(output.report.contains("NO PLY DATA WRITTEN!"));
}

void TestWriterGS::theMakeShowsInTheMessage()
{
    WriteOutput(u"filetype 7"_s, u"wing.PRT"_s);
    WriteOutput(u"filetype 12"_s, u"wing.CPD"_s);
    QCOMPARE(QueuedMessages(),
             QStringList({u"0 General Scanning data have been successfully written to file:\n wing.PRT"_s,
                          u"0 Quilmon data have been successfully written to file:\n wing.CPD"_s}));
}

void TestWriterGS::theFirstLineHoldsThePartName()
{
    QVERIFY(Write(u"partname \"a %1 (b)\""_s).part.startsWith("N000-00-01M19(a %1 (b),1-1,,TOOL0,NEW)\n"));
}

void TestWriterGS::nestingOutputHasItsUnits_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("nesting, mm") << u"type 2"_s << "N000-00-01M19(UNITS=MM)\n"_ba;
    QTest::newRow("nesting, inch") << u"type 2 units inch"_s << "N000-00-01M19(UNITS=INCH)\n"_ba;
    QTest::newRow("embedded, inch") << u"type 3 units inch"_s << "N000-00-01M19(UNITS=INCH)\n"_ba;
    QTest::newRow("3D, inch") << u"type 0 units inch"_s << ""_ba;
    QTest::newRow("flat, mm") << u"type 1"_s << ""_ba;
}

void TestWriterGS::nestingOutputHasItsUnits()
{
    QFETCH(QString, job);
    QFETCH(QByteArray, line);
    COMPARE_TEXT(Write(job).part, "N000-00-01M19(,1-1,,TOOL0,NEW)\n" + line + "N000-00-02M19(2-1)\nN000-01-01M30\n");
    COMPARE_TEXT(WriteOutput(u"filetype 12 "_s + job, u"wing.CPD"_s).part,
                 "N000-00-01M19(,1-1,,TOOL0,NEW)\n" + line + "N000-00-02M19(2-1)\nN000-01-01M30\n");
}

void TestWriterGS::allUnitsButInchesAreCalledMillimetres()
{
    TestJob job(u"filetype 7 type 2"_s);
    job.GetOptions().SetUnits(ZETLaserOptions::EUnits(2));
    QVERIFY(WriteOutput(job, u"wing.PRT"_s).part.contains("\nN000-00-01M19(UNITS=MM)\n"));
}

void TestWriterGS::plainOutputHasCommentsAndNoNestLines()
{
    const QString ply = u"ply \"P 1\" { contour \"C 1\" { open \"K 1\" 1,2,3 } }"_s;
    const QByteArray expected = "N000-00-01M19(GROUP START P 1)\nN000-00-01M19(CONTOUR START C 1)\n"
                                "N000-00-01M19(CURVE START K 1)\nN001-01-01M11(;P 1-1)\n"
                                "N001-01-01G01X1.000000Y2.000000Z3.000000\nN000-00-01M19(CURVE END K 1)\n"
                                "N000-00-01M19(CONTOUR END C 1)\nN000-00-01M19(GROUP END P 1)\nN001-00-01M01\n";
    COMPARE_TEXT(Data(u"type 0 "_s + ply), expected);
    COMPARE_TEXT(Data(u"type 1 "_s + ply), expected);
}

void TestWriterGS::nestingOutputHasNestLinesAndNoComments()
{
    const QString tree = u"layup L { sequence S { ply P { contour C { open K 1,2,3 } } } }"_s;
    const QByteArray expected = "N001-01-01M19(NESTSUBA=S)\nN001-01-01M19(NESTPART=P)\nN001-01-01M19(LAYUP=L)\n"
                                "N001-01-01M19(MATERIAL=)\nN001-01-01M19(DIRECTION=0)\n"
                                "N001-01-01M19(NESTROTATION=0;NONE)\nN001-01-01M11(S;P;1)\n"
                                "N001-01-01G01X1.000000Y2.000000Z3.000000\nN001-00-01M01\n";
    COMPARE_TEXT(Data(u"type 2 "_s + tree), expected);
    COMPARE_TEXT(Data(u"type 3 "_s + tree), expected);
}

void TestWriterGS::parametersGoAheadOfContours()
{
    COMPARE_TEXT(Data(u"ply P { contour { open 1,0,0 } parameter literal L contour { open 2,0,0 } }"_s),
                 "N000-00-01M19(GROUP START P)\nL\n"
                 "N000-00-01M19(CONTOUR START )\nN000-00-01M19(CURVE START )\nN001-01-01M11(;P-1)\n"
                 "N001-01-01G01X1.000000Y0.000000Z0.000000\n"
                 "N000-00-01M19(CURVE END )\nN000-00-01M19(CONTOUR END )\n"
                 "N000-00-01M19(CONTOUR START )\nN000-00-01M19(CURVE START )\nN001-01-01M11(;P-1)\n"
                 "N001-01-01G01X2.000000Y0.000000Z0.000000\n"
                 "N000-00-01M19(CURVE END )\nN000-00-01M19(CONTOUR END )\n"
                 "N000-00-01M19(GROUP END P)\nN001-00-01M01\n"_ba);
}

void TestWriterGS::groupsWithoutPointsWriteNothing()
{
    const auto output = Write(u"layup L { sequence S { ply P { contour { open } text T 0,0,0 1,0,0 0,1,0 1 } } }"_s);
    COMPARE_TEXT(DataOf(output.part), ""_ba);
    QVERIFY(output.part.endsWith("\nN000-01-01M30\n"));
}

void TestWriterGS::contoursOfTheRootArePassedOver()
{
    TestJob job(u"filetype 7"_s);
    const auto contour = QSharedPointer<ZETLaserContour>::create(job.GetTree());
    const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    curve->GetPoints().append(ZETLaserPoint());
    contour->AddCurve(curve);
    job.GetTree()->AddContour(contour);
    QCOMPARE(job.GetTree()->GetPointCount(), 1);
    COMPARE_TEXT(DataOf(WriteOutput(job, u"wing.PRT"_s).part), ""_ba);
}

void TestWriterGS::nestFlagsChangeNothing()
{
    const QString tree = u"layup L { sequence S { ply P { contour { open 0,0,0 } } } }"_s;
    const QByteArray nested = Data(u"nestsequences on "_s + tree);
    QVERIFY(nested.startsWith("N000-00-01M19(GROUP START L)\nN000-00-01M19(GROUP START S)\n"));
    COMPARE_TEXT(Data(u"nestsequences off "_s + tree), nested);
}

void TestWriterGS::thePlyNumberCountsPliesAndSubPlies()
{
    const auto output =
        Write(u"type 2 ply P { contour { open 1,0,0 } } ply Empty { } ply Q { contour { open 2,0,0 } }"_s);
    COMPARE_TEXT(NestingCurves(u"ply P { contour { open 1,0,0 } } ply Empty { } ply Q { contour { open 2,0,0 } }"_s),
                 "N001-01-01M11(;P;1)\nN001-01-01G01X1.000000Y0.000000Z0.000000\nN001-00-01M01\n"
                 "N002-01-01M11(;Q;1)\nN002-01-01G01X2.000000Y0.000000Z0.000000\nN002-00-01M01\n"_ba);
    for (const char* line :
         {"N002-01-01M19(NESTSUBA=)\n", "N002-01-01M19(NESTPART=Q)\n", "N002-01-01M19(LAYUP=)\n",
          "N002-01-01M19(MATERIAL=)\n", "N002-01-01M19(DIRECTION=0)\n", "N002-01-01M19(NESTROTATION=0;NONE)\n"})
        QVERIFY2(output.part.contains(line), line);
    QVERIFY(output.part.endsWith("\nN002-01-01M30\n")); // that of the last ply, not one more
    QVERIFY(output.report.contains("   Number of Plies = 2\n"));
}

void TestWriterGS::theThousandthPlyIsWider()
{
    QString job;
    for (int i = 0; i < 1000; ++i)
        job += u"nullply P { contour { open 0,0,0 } } "_s;
    const QByteArray part = Write(job).part;
    QVERIFY(part.contains("\nN099-00-01M01\n"));
    QVERIFY(part.contains("\nN999-00-01M01\n"));
    QVERIFY(part.endsWith("\nN1000-00-01M01\nN1000-01-01M30\n"));
}

void TestWriterGS::aPlyWithSubPliesEndsWithTheirLastNumber()
{
    COMPARE_TEXT(Data(u"ply P { subply A { parameter literal a } subply B { parameter literal b } }"_s),
                 "N000-00-01M19(GROUP START P)\n"
                 "N000-00-01M19(GROUP START A)\na\nN000-00-01M19(GROUP END A)\nN002-00-01M01\n"
                 "N000-00-01M19(GROUP START B)\nb\nN000-00-01M19(GROUP END B)\nN003-00-01M01\n"
                 "N000-00-01M19(GROUP END P)\nN003-00-01M01\n"_ba);
}

void TestWriterGS::aSubPlyIsLabelledWithItsPly()
{
    QCOMPARE(Heads(u"sequence S { ply P { subply A { contour { open 0,0,0 } } subply B { contour { open 0,0,0 } } } "
                   "ply Q { subply C { contour { open 0,0,0 } } } }"_s),
             QByteArrayList({"N002-01-01M11(S;P;A;1)", "N003-01-01M11(S;P;B;1)", "N005-01-01M11(S;Q;C;1)"}));
}

void TestWriterGS::headsHaveLabelsOfTheModelAndPartsNamesOfTheTree()
{
    TestJob job(u"filetype 7 type 2 ply Group { contour { open 0,0,0 } } "
                "ply Parent { subply Child { contour { open 0,0,0 } } }"_s);
    const auto groups = job.GetTree()->GetChildren();
    const auto child = groups[1].staticCast<ZETLaserGroup>()->GetChildren().first();
    ZETOpenModel::SetLabel(*ObjectIn<ZETFeatObject>(*groups[0], ZETLaserEntityProperties::ply), u"P"_s);
    ZETOpenModel::SetLabel(*ObjectIn<ZETFeatObject>(*groups[1], ZETLaserEntityProperties::ply), u"Q"_s);
    ZETOpenModel::SetLabel(*ObjectIn<ZETFeatObject>(*child, ZETLaserEntityProperties::subPly), u"S"_s);
    const QByteArray part = WriteOutput(job, u"wing.PRT"_s).part;
    for (const char* line :
         {"\nN001-01-01M19(NESTPART=Group)\n", "\nN001-01-01M11(;P;1)\n", "\nN002-01-01M19(NESTPART=Parent)\n",
          "\nN003-01-01M19(NESTPART=Child)\n", "\nN003-01-01M11(;Q;S;1)\n"})
        QVERIFY2(part.contains(line), line);
}

void TestWriterGS::aSubPlyWithoutAPlyKeepsTheNameBefore()
{
    TestJob job(u"filetype 7 type 2 ply P { contour { open 0,0,0 } } nullsubply S { contour { open 0,0,0 } }"_s);
    auto* orphan = new ZETCompSubPly(job.GetModel());
    job.GetTree()->GetChildren().last()->setProperty(ZETLaserEntityProperties::subPly, QVariant::fromValue(orphan));
    const QByteArray part = WriteOutput(job, u"wing.PRT"_s).part;
    QVERIFY(part.contains("\nN001-01-01M11(;P;1)\n"));
    QVERIFY(part.contains("\nN002-01-01M11(;P;1)\n"));
    QVERIFY(part.contains("\nN002-01-01M19(NESTPART=S)\n"));
    QVERIFY(!part.contains("N002-01-01M19(DIRECTION="));
}

void TestWriterGS::nullPliesAreNamedByTheirGroups()
{
    // Meant: a null sub-ply adds to the name as it stands, so the second has the first in its name.
    QCOMPARE(Heads(u"sequence S { nullply P { contour { open 0,0,0 } } nullsubply A { contour { open 0,0,0 } } "
                   "nullsubply B { contour { open 0,0,0 } } }"_s),
             QByteArrayList({"N001-01-01M11(S;P;1)", "N002-01-01M11(S;P;A;1)", "N003-01-01M11(S;P;A;B;1)"}));
    // A null has no direction, nor that of the ply before.
    const QByteArray part = Write(u"type 2 ply P { contour { open 0,0,0 } } nullsubply S { contour { open 0,0,0 } } "
                                  "ply Q { contour { open 0,0,0 } } nullply N { contour { open 0,0,0 } }"_s)
                                .part;
    QVERIFY(part.contains("\nN001-01-01M19(DIRECTION=0)\n"));
    QVERIFY(!part.contains("\nN002-01-01M19(DIRECTION="));
    QVERIFY(part.contains("\nN003-01-01M19(DIRECTION=0)\n"));
    QVERIFY(!part.contains("\nN004-01-01M19(DIRECTION="));
}

void TestWriterGS::namesStayFromTheLevelBefore()
{
    QCOMPARE(Heads(u"layup L { sequence S { ply P { contour { open 0,0,0 } } } } "
                   "layup M { ply Q { contour { open 0,0,0 } } } group G { contour { open 0,0,0 } } "
                   "sequence T { contour { open 0,0,0 } }"_s),
             QByteArrayList(
                 {"N001-01-01M11(S;P;1)", "N002-01-01M11(S;Q;1)", "N002-01-01M11(S;Q;1)", "N002-01-01M11(T;Q;1)"}));
    const QByteArray part = Write(u"type 2 layup L { ply P { contour { open 0,0,0 } } } "
                                  "sequence S { ply Q { contour { open 0,0,0 } } }"_s)
                                .part;
    QVERIFY(part.contains("N001-01-01M19(NESTSUBA=)\n"));
    QVERIFY(part.contains("N002-01-01M19(NESTSUBA=S)\n"));
    QVERIFY(part.contains("N002-01-01M19(LAYUP=L)\n"));
}

void TestWriterGS::aLayupIsNoSequence()
{
    TestJob job(u"filetype 7 type 2 layup L { ply P { contour { open 0,0,0 } } }"_s);
    // A group that stands for both is a sequence.
    job.GetTree()->GetChildren().first()->setProperty(ZETLaserEntityProperties::sequence, 1);
    const QByteArray part = WriteOutput(job, u"wing.PRT"_s).part;
    QVERIFY(part.contains("(NESTSUBA=L)"));
    QVERIFY(part.contains("(LAYUP=)"));
}

void TestWriterGS::aPlyThatIsASequenceTooIsAPly()
{
    TestJob job(u"filetype 7 type 2 ply P { contour { open 0,0,0 } }"_s);
    job.GetTree()->GetChildren().first()->setProperty(ZETLaserEntityProperties::sequence, 1);
    QVERIFY(WriteOutput(job, u"wing.PRT"_s).part.contains("(NESTSUBA=)"));
}

void TestWriterGS::theMaterialIsNamedByTypeOrById()
{
    const QString ply = u"type 2 ply P { material \"Fabric 1\" 4711 contour { open 0,0,0 } }"_s;
    QVERIFY(Write(ply).part.contains("\nN001-01-01M19(MATERIAL=Fabric 1)\n"));
    QVERIFY(Write(u"usematerialid on "_s + ply).part.contains("\nN001-01-01M19(MATERIAL=4711)\n"));
    QVERIFY(Write(u"usematerialid on type 2 ply P { contour { open 0,0,0 } }"_s).part.contains("(MATERIAL=)\n"));
}

void TestWriterGS::theDirectionHasSixDigits()
{
    const auto direction = [](const QString& degrees) {
        const QByteArray part = Write(u"type 2 ply P { direction %1 contour { open 0,0,0 } }"_s.arg(degrees)).part;
        const qsizetype begin = part.indexOf("DIRECTION=") + 10;
        return part.mid(begin, part.indexOf(')', begin) - begin);
    };
    QCOMPARE(direction(u"45"_s), "45"_ba);
    QCOMPARE(direction(u"-90"_s), "-90"_ba);
    QCOMPARE(direction(u"33.3333333"_s), "33.3333"_ba);
    QCOMPARE(direction(u"0.5"_s), "0.5"_ba);
    QCOMPARE(direction(u"0.0000125"_s), "1.25e-05"_ba);
    // A sub-ply has the direction of its ply.
    QVERIFY(Write(u"type 2 ply P { direction 30 subply A { contour { open 0,0,0 } } }"_s)
                .part.contains("\nN002-01-01M19(DIRECTION=30)\n"));
}

void TestWriterGS::aRosetteUsesUpNoNumber()
{
    QCOMPARE(Heads(u"ply P { contour { open A 0,0,0 open Rosette 0,0,0 open \"P1 Rosette\" 0,0,0 open B 0,0,0 "
                   "open \"Rosette 1\" 0,0,0 open rosette 0,0,0 } }"_s),
             QByteArrayList({"N001-01-01M11(;P;1)", "N001-01-01M11(;P;ROSETTE)", "N001-01-01M11(;P;ROSETTE)",
                             "N001-01-01M11(;P;2)", "N001-01-01M11(;P;3)", "N001-01-01M11(;P;4)"}));
    QVERIFY(Data(u"ply P { contour { open Rosette 0,0,0 } }"_s).contains("\nN001-01-01M11(;P-ROSETTE)\n"));
}

void TestWriterGS::aRosetteIsKnownByItsTranslatedName()
{
    const TestTranslator translator("ZETLaserWriterGS");
    QCOMPARE(Heads(u"ply P { contour { open Rosette 0,0,0 open \"P1* Rosette\" 0,0,0 } }"_s),
             QByteArrayList({"N001-01-01M11(;P;1)", "N001-01-01M11(;P;ROSETTE)"}));
}

void TestWriterGS::curveNumbersRestartInEachContour()
{
    QCOMPARE(Heads(u"ply P { contour { open 0,0,0 open 0,0,0 } contour { open 0,0,0 } }"_s),
             QByteArrayList({"N001-01-01M11(;P;1)", "N001-01-01M11(;P;2)", "N001-01-01M11(;P;1)"}));
}

void TestWriterGS::aClosedCurveOfOnePointIsClosed()
{
    COMPARE_TEXT(NestingCurves(u"ply P { contour { closed 1,2,3 closed 4,5,6 7,8,9 open 0,0,1 } }"_s),
                 "N001-01-01M11(;P;1)\nN001-01-01G01X1.000000Y2.000000Z3.000000\n"
                 "N001-01-01G01X1.000000Y2.000000Z3.000000\n"
                 "N001-01-01M11(;P;2)\nN001-01-01G01X4.000000Y5.000000Z6.000000\n"
                 "N001-01-01G01X7.000000Y8.000000Z9.000000\nN001-01-01G01X4.000000Y5.000000Z6.000000\n"
                 "N001-01-01M11(;P;3)\nN001-01-01G01X0.000000Y0.000000Z1.000000\nN001-00-01M01\n"_ba);
}

void TestWriterGS::curvesWithoutPointsUseUpNoNumber()
{
    QCOMPARE(Heads(u"ply P { contour { open A closed B open C 0,0,0 } contour { open } }"_s),
             QByteArrayList({"N001-01-01M11(;P;1)"}));
    QVERIFY(!Data(u"ply P { contour A { open B open C 0,0,0 } contour D { open } }"_s).contains(" B)"));
    QVERIFY(!Data(u"ply P { contour A { open B open C 0,0,0 } contour D { open } }"_s).contains(" D)"));
}

void TestWriterGS::placeholdersInNamesTakeTheNextArgument()
{
    // Meant: the placeholders are filled one after the other, lowest first, so one in a name comes ahead of the own.
    QCOMPARE(Heads(u"sequence S%1 { ply P { contour { open 0,0,0 } } }"_s), QByteArrayList({"N001-01-01M11(S1;P;%4)"}));
    // In lines whose last argument is the name nothing is left to take.
    QVERIFY(Write(u"type 2 sequence S%1 { ply P%2 { contour { open 0,0,0 } } }"_s)
                .part.contains("N001-01-01M19(NESTSUBA=S%1)\nN001-01-01M19(NESTPART=P%2)\n"));
}

void TestWriterGS::zeroNormalsAreWritten()
{
    const QString ply = u" ply P { contour { open 1,0,0/0,0.6,-0.8 2,0,0 } }"_s;
    QVERIFY(Write(u"normals on"_s + ply)
                .part.contains("\nN001-01-01G01X1.000000Y0.000000Z0.000000I0.000000J0.600000K-0.800000\n"
                               "N001-01-01G01X2.000000Y0.000000Z0.000000I0.000000J0.000000K0.000000\n"));
    QVERIFY(
        Write(u"normals off"_s + ply).part.contains("\nN001-01-01G01X1.000000Y0.000000Z0.000000\nN001-01-01G01X2.0"));
}

void TestWriterGS::inchesScalePointsAndNoNormals()
{
    QVERIFY(Write(u"units inch normals on axis 10,20,30 0,1,0 -1,0,0 target T 35.4,45.4,-20.8 "
                  "ply P { contour { open 35.4,45.4,30/0,1,0 } }"_s)
                .part.contains("\nN001-01-01G01X1.000000Y-1.000000Z0.000000I1.000000J0.000000K0.000000\n"));
    QVERIFY(Write(u"units inch axis 10,20,30 0,1,0 -1,0,0 target T 35.4,45.4,-20.8"_s)
                .part.contains("\nN000-01-01G07X1.000000Y-1.000000Z-2.000000\n"));
}

void TestWriterGS::theOffsetPointCounts()
{
    QVERIFY(
        Data(u"ply P { contour { open 1,2,3@1,2,13 } }"_s).contains("\nN001-01-01G01X1.000000Y2.000000Z13.000000\n"));
}

void TestWriterGS::informationIsWrittenAndTold()
{
    COMPARE_TEXT(Data(u"ply P { parameter literal L parameter information \"%PLY%\\nb\" parameter information c }"_s),
                 "N000-00-01M19(GROUP START P)\nI 2\nP\nb\nc\nL\nN000-00-01M19(GROUP END P)\nN001-00-01M01\n"_ba);
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Information for GS"_s,
                                                   u"2 Unsupported laser parameter type Information for GS"_s}));
}

void TestWriterGS::parametersHaveOnePlace()
{
    const QString ply = u" ply P { contour { open 0,0,0 } parameter literal L }"_s;
    const QByteArray last = Data(u"rosettefirst off"_s + ply);
    QVERIFY(last.startsWith("N000-00-01M19(GROUP START P)\nL\n"));
    COMPARE_TEXT(Data(u"rosettefirst on"_s + ply), last);
    // In nesting output they stand behind the nesting data.
    QVERIFY(Write(u"type 2"_s + ply).part.contains("(NESTROTATION=0;NONE)\nL\nN001-01-01M11("));
}

void TestWriterGS::unsupportedTypesAreToldByMake()
{
    const QString ply = u" ply P { parameter query Q parameter note N parameter message M parameter graphic G } "
                        "group H { parameter note N }"_s;
    WriteOutput(u"filetype 7"_s + ply, u"wing.PRT"_s);
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Query for GS"_s,
                                                   u"2 Unsupported laser parameter type Note for GS"_s,
                                                   u"2 Unsupported laser parameter type Message for GS"_s,
                                                   u"2 Unsupported laser parameter type Graphic for GS"_s}));
    ZETOpenMessageQueue::Clear();
    WriteOutput(u"filetype 12"_s + ply, u"wing.CPD"_s);
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Query for CPD"_s,
                                                   u"2 Unsupported laser parameter type Note for CPD"_s,
                                                   u"2 Unsupported laser parameter type Message for CPD"_s,
                                                   u"2 Unsupported laser parameter type Graphic for CPD"_s}));
}

void TestWriterGS::otherFileTypesTellNothing()
{
    TestJob job(u"filetype 0 ply P { parameter note N }"_s);
    QVERIFY(job.Write<ZETLaserWriterGS>(u"wing.PRT"_s));
    QCOMPARE(QueuedMessages(), QStringList());
}

void TestWriterGS::withoutAQueueUnsupportedTypesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Data(u"ply P { parameter note N }"_s),
                 "N000-00-01M19(GROUP START P)\nN000-00-01M19(GROUP END P)\nN001-00-01M01\n"_ba);
}

void TestWriterGS::textsAreNotPartOfTheFormat()
{
    COMPARE_TEXT(Data(u"ply P { parameter literal L text TEXT 0,0,0 1,0,0 0,1,0 1 }"_s),
                 "N000-00-01M19(GROUP START P)\nL\nN000-00-01M19(GROUP END P)\nN001-00-01M01\n"_ba);
    QCOMPARE(QueuedMessages().size(), 1);
}

void TestWriterGS::withoutTargetsThereIsNoCalibration()
{
    const auto output = Write(u"projector P { } "_s);
    COMPARE_TEXT(output.part, "N000-00-01M19(,1-1,,TOOL0,NEW)\nN000-00-02M19(2-1)\nN000-01-01M30\n"_ba);
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterGS::withoutProjectorsTheTargetsAreThoseOfLaserOne()
{
    const auto output = Write(u"target \"A B\" 1,0,0 drift target B 2,0,0 ply P { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.startsWith("N000-00-01M19(,1-1,,TOOL0,NEW)\nN000-00-02M19(1-1)\n"
                                   "N000-00-00M17(CALIBRATION TARGETS)\n"
                                   "N000-01-01G07X1.000000Y0.000000Z0.000000\n"
                                   "N000-01-02G07X2.000000Y0.000000Z0.000000\n"
                                   "N000-01-00M02N000-00-02M19(2-1)\n"));
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "\nWriting 2 targets"_ba);
    QVERIFY(!output.hasTargets);
}

void TestWriterGS::theLineGoesOnBehindAProjectorsEnd()
{
    const auto output = Write(u"target A 1,0,0 projector P { 1 } projector Q { } projector R { 1 } "
                              "ply P { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.contains("M17(CALIBRATION TARGETS)\nN000-01-01G07X1.000000Y0.000000Z0.000000\n"
                                 "N000-01-00M02N000-02-00M02N000-03-01G07X1.000000Y0.000000Z0.000000\n"
                                 "N000-03-00M02N000-00-02M19(2-1)\n"));
    COMPARE_TEXT(ReportBody(output.report), "\nWriting 2 targets in 3 projectors"_ba);
}

void TestWriterGS::projectorsNeedNoSelection()
{
    const auto output = Write(
        u"target A 1,0,0 target B 2,0,0 idleprojector P { 1 } projector Q { 2 } ply P { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.contains("TARGETS)\nN000-01-01G07X1.000000Y0.000000Z0.000000\n"
                                 "N000-01-00M02N000-02-01G07X2.000000Y0.000000Z0.000000\nN000-02-00M02N000"));
    COMPARE_TEXT(ReportBody(output.report), "\nWriting 2 targets in 2 projectors"_ba);
    COMPARE_TEXT(ReportBody(Write(u"target A 1,0,0 idleprojector P { 1 } ply P { contour { open 0,0,0 } }"_s).report),
                 "\nWriting 1 targets in 1 projectors"_ba);
}

void TestWriterGS::projectorsMayStandAnywhereInTheModel()
{
    TestJob job(u"filetype 7 target A 1,0,0 ply P { contour { open 0,0,0 } }"_s);
    ZETOpenModel::Create("ZETLaserProjector", *job.GetTargets().first(), ZETOpenModel::ParentCheck::None);
    COMPARE_TEXT(ReportBody(WriteOutput(job, u"wing.PRT"_s).report), "\nWriting 0 targets in 1 projectors"_ba);
}

void TestWriterGS::aNullTargetUsesUpItsIndex()
{
    const auto output = Write(u"target A 1,0,0 projector P { null 1 null 1 } ply P { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.contains("TARGETS)\nN000-01-02G07X1.000000Y0.000000Z0.000000\n"
                                 "N000-01-04G07X1.000000Y0.000000Z0.000000\nN000-01-00M02N"));
    COMPARE_TEXT(ReportBody(output.report), "\nWriting 2 targets in 1 projectors"_ba);
}

void TestWriterGS::moreThan99TargetsGrowTheIndex()
{
    QString job;
    for (int i = 0; i < 101; ++i)
        job += u"target A 1,0,0 "_s;
    const QByteArray part = Write(job).part;
    QVERIFY(part.contains("\nN000-01-09G07X"));
    QVERIFY(part.contains("\nN000-01-99G07X"));
    QVERIFY(part.contains("\nN000-01-101G07X1.000000Y0.000000Z0.000000\nN000-01-00M02N000-00-02M19(2-1)\n"));
}

void TestWriterGS::quilmonHasNoCalibration()
{
    for (const auto* type : {"0", "2"}) {
        const auto output =
            WriteOutput(u"filetype 12 type %1 target A 1,0,0 projector P { 1 }"_s.arg(QLatin1String(type)),
                        u"wing.CPD"_s, u"wing.cal"_s);
        QVERIFY(!output.part.contains("G07"));
        QVERIFY(!output.part.contains("CALIBRATION"));
        QVERIFY(!output.part.contains("M02"));
        QVERIFY(!output.hasTargets);
        QVERIFY(!output.report.contains("targets"));
    }
}

QTEST_GUILESS_MAIN(TestWriterGS)
#include "TestWriterGS.moc"
