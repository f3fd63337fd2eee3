#include "laser/ZETLaserOptions.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
TestOutput Write(const QString& text, const QString& fileName = u"wing.PRT"_s)
{
    return WriteOutput(u"filetype 5\n"_s + text, fileName);
}

/*! The lines of a part file behind the display mode, without the last one. */
QByteArray Groups(const QString& text)
{
    const QByteArray part = Write(text).part;
    const QByteArray begin = "$*DISPLAYMODE WCAICT\n";
    const QByteArray end = "$*PARTNO    \n";
    const qsizetype first = part.indexOf(begin) + begin.size();
    if (!part.startsWith(end) || !part.endsWith(end) || first < begin.size())
        qFatal("not a part file: %s", part.constData());
    return part.mid(first, part.size() - end.size() - first);
}

QByteArray Substituted(const QByteArray& name)
{
    return "Substituting spaces in command name '" + name + "' with underscore\n";
}
} // namespace

class TestWriterAG : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void anEmptyTreeHasTheFiveFixedLines();
    void bothMakesGetTheSameBytes();
    void theMakeShowsInTheMessage_data();
    void theMakeShowsInTheMessage();
    void theFileNameStartsBehindTheLastSeparatorOfEitherKind_data();
    void theFileNameStartsBehindTheLastSeparatorOfEitherKind();
    void theRootNameIsToldTwice();
    void aNameIsToldOnceForEachVisit();
    void otherWhiteSpaceIsLeftAlone();

    void groupsWithoutPointsWriteNothing();
    void aPlyOfOneParameterHasItsLine();
    void pliesAndSubPliesShareTheKeywordButNotTheCount();
    void aPropertyWithANullCountsAllTheSame();
    void aGroupOfNothingHasNoLineButItsNameIsMadeSafe();
    void nestingChangesNothing();

    void closedCurvesRepeatTheirFirstPoint();
    void aCurveOfOnePointEndsWithThePenDown();
    void curvesWithoutPointsWriteNothing();
    void numbersHaveThreeDecimals();
    void aZeroNormalIsLeftOut();
    void inchesScalePointsAndTextSizes();
    void allUnitsButInchesAreCalledMillimetres();
    void theOffsetPointCounts();

    void eachTypeOfParameterHasItsLine();
    void unsupportedTypesAreToldOnceEach();
    void withoutAQueueUnsupportedTypesAreDropped();
    void parametersAndTextsGoFirstIfToldSo();
    void aTextHasNoNormalAndNoPenDown();
    void quotesInATextAreNotEscaped();

    void withoutTargetsThereAreNoSensors();
    void withoutProjectorsTheReportTellsIt();
    void sensorsDoNotDependOnProjectors();
    void anUnnamedTargetIsNamedByItsNumber();
};

void TestWriterAG::anEmptyTreeHasTheFiveFixedLines()
{
    const auto output = Write(u"rootname R"_s);
    COMPARE_TEXT(output.part, "$*PARTNO    R\n$*DOSNAME   wing.PRT\n$*UNITS     MM\n$*DISPLAYMODE WCAICT\n"
                              "$*PARTNO    R\n"_ba);
    QVERIFY(output.report.contains("NO PLY DATA WRITTEN!"));
}

void TestWriterAG::bothMakesGetTheSameBytes()
{
    const QString job = u"rootname \"a b\" target T 1,2,3 ply P { contour { open 0,0,0/0,0,1 1,0,0 } "
                        "parameter message M text T 0,0,0 1,0,0 0,1,0 5 }"_s;
    const auto guidance = WriteOutput(u"filetype 5 "_s + job, u"wing.PRT"_s);
    const auto vision = WriteOutput(u"filetype 6 "_s + job, u"wing.PRT"_s);
    COMPARE_TEXT(vision.part, guidance.part);
    QVERIFY(guidance.part.contains("$*PLY       P\n"));
    QVERIFY(guidance.report.contains("Laser Projection Report for Assembly Guidance laser data file : wing.PRT\n"));
    QVERIFY(vision.report.contains("Laser Projection Report for Aligned Vision laser data file : wing.PRT\n"));
}

void TestWriterAG::theMakeShowsInTheMessage_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("make");
    QTest::newRow("Assembly Guidance") << u"filetype 5"_s << u"Assembly Guidance"_s;
    QTest::newRow("Aligned Vision") << u"filetype 6"_s << u"Aligned Vision"_s;
}

void TestWriterAG::theMakeShowsInTheMessage()
{
    QFETCH(QString, job);
    QFETCH(QString, make);
    WriteOutput(job, u"wing.PRT"_s);
    QCOMPARE(QueuedMessages(),
             QStringList(u"0 %1 data have been successfully written to file:\n wing.PRT"_s.arg(make)));
}

void TestWriterAG::theFileNameStartsBehindTheLastSeparatorOfEitherKind_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("none") << u"wing.PRT"_s << "wing.PRT"_ba;
    QTest::newRow("forward") << u"./wing.PRT"_s << "wing.PRT"_ba;
    QTest::newRow("backward") << u"a\\wing.PRT"_s << "wing.PRT"_ba;
    QTest::newRow("mixed, backward last") << u"./a\\wing.PRT"_s << "wing.PRT"_ba;
    QTest::newRow("two backward") << u"a\\b\\wing.PRT"_s << "wing.PRT"_ba;
    QTest::newRow("blank") << u"./a b.PRT"_s << "a_b.PRT"_ba;
    QTest::newRow("no extension") << u"./wing"_s << "wing"_ba;
}

void TestWriterAG::theFileNameStartsBehindTheLastSeparatorOfEitherKind()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, name);
    const auto output = Write(QString(), file);
    QCOMPARE(output.part.split('\n').at(1), "$*DOSNAME   " + name);
    QCOMPARE(output.report.count(Substituted("a b.PRT")), name == "a_b.PRT" ? 1 : 0);
}

void TestWriterAG::theRootNameIsToldTwice()
{
    const auto output = Write(u"rootname \"Left  wing\""_s);
    QVERIFY(output.part.startsWith("$*PARTNO    Left__wing\n"));
    QVERIFY(output.part.endsWith("$*PARTNO    Left__wing\n"));
    COMPARE_TEXT(ReportBody(output.report),
                 Substituted("Left  wing") + "\nNo laser targets found in model.\n" + Substituted("Left  wing"));
}

void TestWriterAG::aNameIsToldOnceForEachVisit()
{
    const auto output = Write(u"group \"A B\" { ply P { contour { open 0,0,0 } } } group \"A B\" { } "
                              "ply \"A B\" { contour { open 0,0,0 } }"_s);
    // The empty group isn't visited.
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser targets found in model.\n" + Substituted("A B") + Substituted("A B"));
}

void TestWriterAG::otherWhiteSpaceIsLeftAlone()
{
    const auto output = Write(u"ply P { parameter literal \"a\tb\\nc\u00a0d\" }"_s);
    QVERIFY(output.part.contains("$*PLY       P\na\tb\nc\xc2\xa0"
                                 "d\n$*PARTNO"));
    QVERIFY(!output.report.contains("Substituting"));
}

void TestWriterAG::groupsWithoutPointsWriteNothing()
{
    QCOMPARE(Groups(u"layup L { sequence S { ply P { text T 0,0,0 1,0,0 0,1,0 1 contour { open } } } }"_s), ""_ba);
}

void TestWriterAG::aPlyOfOneParameterHasItsLine()
{
    COMPARE_TEXT(Groups(u"ply P { parameter message M }"_s), "$*PLY       P\n$*MSG M\n"_ba);
}

void TestWriterAG::pliesAndSubPliesShareTheKeywordButNotTheCount()
{
    const auto output =
        Write(u"ply P { subply A { contour { open 0,0,0 } } subply B { parameter message M } } ply Q { }"_s);
    QVERIFY(output.part.contains("$*PLY       P\n$*PLY       A\nPENUP\nGOTO        0.000 0.000 0.000\nPENDWN\n"
                                 "$*PLY       B\n$*MSG M\n$*PARTNO"));
    QVERIFY(output.report.contains("   Number of Plies = 1\n   Number of Sub-plies = 2\n"));
}

void TestWriterAG::aPropertyWithANullCountsAllTheSame()
{
    const auto output = Write(u"nullply P { parameter message M } nullsubply S { parameter message M }"_s);
    QVERIFY(output.part.contains("WCAICT\n$*PLY       P\n$*PLY       S\n$*PARTNO"));
    QVERIFY(output.report.contains("   Number of Plies = 1\n   Number of Sub-plies = 1\n"));
}

void TestWriterAG::aGroupOfNothingHasNoLineButItsNameIsMadeSafe()
{
    const auto output = Write(u"group \"A B\" { contour { open 1,2,3 } parameter note N }"_s);
    QVERIFY(output.part.contains("WCAICT\nPENUP\nGOTO        1.000 2.000 3.000\nPENDWN\n$*PARTNO"));
    QCOMPARE(output.report.count(Substituted("A B")), 1);
    QCOMPARE(QueuedMessages().size(), 1); // the parameter isn't told, because it isn't looked at
}

void TestWriterAG::nestingChangesNothing()
{
    const QString job = u"layup L { sequence S { ply P { parameter message M } } }"_s;
    const QByteArray expected = "$*PLYGROUP  L\n$*SEQ       S\n$*PLY       P\n$*MSG M\n";
    COMPARE_TEXT(Groups(u"nestsequences on "_s + job), expected);
    COMPARE_TEXT(Groups(u"nestsequences off "_s + job), expected);
}

void TestWriterAG::closedCurvesRepeatTheirFirstPoint()
{
    const auto points = [](const QString& curve) {
        return Groups(u"group G { contour { "_s + curve + u" } }"_s).count("GOTO        ");
    };
    QCOMPARE(points(u"closed 0,0,0 1,0,0"_s), 3);
    QCOMPARE(points(u"open 0,0,0 1,0,0"_s), 2);
    COMPARE_TEXT(Groups(u"group G { contour { closed 1,0,0 2,0,0 3,0,0 } }"_s),
                 "PENUP\nGOTO        1.000 0.000 0.000\nPENDWN\nGOTO        2.000 0.000 0.000\n"
                 "GOTO        3.000 0.000 0.000\nGOTO        1.000 0.000 0.000\n"_ba);
}

void TestWriterAG::aCurveOfOnePointEndsWithThePenDown()
{
    const QByteArray expected = "PENUP\nGOTO        1.000 2.000 3.000\nPENDWN\n";
    COMPARE_TEXT(Groups(u"group G { contour { open 1,2,3 } }"_s), expected);
    COMPARE_TEXT(Groups(u"group G { contour { closed 1,2,3 } }"_s), expected);
}

void TestWriterAG::curvesWithoutPointsWriteNothing()
{
    COMPARE_TEXT(Groups(u"group G { contour { open closed } contour { open open 1,2,3 } }"_s),
                 "PENUP\nGOTO        1.000 2.000 3.000\nPENDWN\n"_ba);
}

void TestWriterAG::numbersHaveThreeDecimals()
{
    COMPARE_TEXT(Groups(u"normals on group G { contour { open 25000,-0.0004,0.9996/0.12345,-0.99235,1e-9 } }"_s),
                 "PENUP\nGOTO        25000.000 -0.000 1.000  0.123 -0.992 0.000\nPENDWN\n"_ba);
}

void TestWriterAG::aZeroNormalIsLeftOut()
{
    COMPARE_TEXT(Groups(u"normals on group G { contour { open 1,0,0/0,0,0 2,0,0/0,0,-1 } }"_s),
                 "PENUP\nGOTO        1.000 0.000 0.000\nPENDWN\n"
                 "GOTO        2.000 0.000 0.000  0.000 0.000 -1.000\n"_ba);
    COMPARE_TEXT(Groups(u"normals off group G { contour { open 1,0,0/0,0,1 } }"_s),
                 "PENUP\nGOTO        1.000 0.000 0.000\nPENDWN\n"_ba);
}

void TestWriterAG::inchesScalePointsAndTextSizes()
{
    const auto output = Write(u"units inch target T 25.4,0,-50.8 ply P { contour { open 25.4,254,0/0.6,0,0.8 } "
                              "text T 25.4,0,0 1,0,0 0,1,0 12.7 }"_s);
    COMPARE_TEXT(output.part, "$*PARTNO    \n$*DOSNAME   wing.PRT\n$*UNITS     IN\n"
                              "$*SENSOR    1   1.000 0.000 -2.000 T\n$*DISPLAYMODE WCAICT\n$*PLY       P\n"
                              "PENUP\nGOTO        1.000 10.000 0.000  0.600 0.000 0.800\nPENDWN\n"
                              "PENUP\nGOTO        1.000 0.000 0.000\n$*LASERTEXT 0.500 \"T\"\n$*PARTNO    \n"_ba);
}

void TestWriterAG::allUnitsButInchesAreCalledMillimetres()
{
    TestJob job(u"filetype 5 group G { contour { open 25.4,0,0 } }"_s);
    job.GetOptions().SetUnits(ZETLaserOptions::EUnits(2));
    const QByteArray part = WriteOutput(job, u"wing.PRT"_s).part;
    QVERIFY(part.contains("\n$*UNITS     MM\n"));
    QVERIFY(part.contains("\nGOTO        25.400 0.000 0.000\n"));
}

void TestWriterAG::theOffsetPointCounts()
{
    COMPARE_TEXT(Groups(u"group G { contour { open 1,2,3@1,2,13 } }"_s),
                 "PENUP\nGOTO        1.000 2.000 13.000\nPENDWN\n"_ba);
}

void TestWriterAG::eachTypeOfParameterHasItsLine()
{
    // Meant: all texts lose their blanks, those of literals too; and all stand in the order of the children.
    const auto output = Write(u"ply P { parameter literal \"a b\" parameter message \"m m\" parameter graphic \"g g\" "
                              "parameter information \"%PLY% i\" }"_s);
    QVERIFY(output.part.contains("$*PLY       P\na_b\n$*MSG m_m\n$*DISPLAYGRAPHICS g_g\n$*MSG P_i\n$*PARTNO"));
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n" + Substituted("a b") +
                                                Substituted("m m") + Substituted("g g") + Substituted("P i"));
}

void TestWriterAG::unsupportedTypesAreToldOnceEach()
{
    const auto output = Write(u"ply P { parameter query \"q q\" parameter note N parameter note M }"_s);
    QVERIFY(output.part.contains("$*PLY       P\n$*PARTNO"));
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Query for AG"_s,
                                                   u"2 Unsupported laser parameter type Note for AG"_s,
                                                   u"2 Unsupported laser parameter type Note for AG"_s}));
    QCOMPARE(output.report.count(Substituted("q q")), 1); // the text is made safe ahead of the question of its type
}

void TestWriterAG::withoutAQueueUnsupportedTypesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Groups(u"ply P { parameter note N }"_s), "$*PLY       P\n"_ba);
}

void TestWriterAG::parametersAndTextsGoFirstIfToldSo()
{
    const QString ply = u"ply P { contour { open 1,0,0 } text T 2,0,0 1,0,0 0,1,0 1 parameter message M }"_s;
    const QByteArray curve = "PENUP\nGOTO        1.000 0.000 0.000\nPENDWN\n";
    const QByteArray texts = "$*MSG M\nPENUP\nGOTO        2.000 0.000 0.000\n$*LASERTEXT 1.000 \"T\"\n";
    COMPARE_TEXT(Groups(u"rosettefirst on "_s + ply), "$*PLY       P\n" + texts + curve);
    COMPARE_TEXT(Groups(u"rosettefirst off "_s + ply), "$*PLY       P\n" + curve + texts);
}

void TestWriterAG::aTextHasNoNormalAndNoPenDown()
{
    // X of the axis system is Y of the model, Y is -X, its origin is at 10, 20, 30.
    COMPARE_TEXT(Groups(u"normals on axis 10,20,30 0,1,0 -1,0,0 "
                        "ply P { parameter literal L text \"%PLY% a\" 11,22,33 1,0,0 0,1,0 2.5 }"_s),
                 "$*PLY       P\nL\nPENUP\nGOTO        2.000 -1.000 3.000\n$*LASERTEXT 2.500 \"P_a\"\n"_ba);
}

void TestWriterAG::quotesInATextAreNotEscaped()
{
    COMPARE_TEXT(Groups(u"ply P { parameter literal L text \"a\\qb\" 0,0,0 1,0,0 0,1,0 1 }"_s),
                 "$*PLY       P\nL\nPENUP\nGOTO        0.000 0.000 0.000\n$*LASERTEXT 1.000 \"a\"b\"\n"_ba);
}

void TestWriterAG::withoutTargetsThereAreNoSensors()
{
    const auto output = Write(u"projector P { }"_s);
    QVERIFY(!output.part.contains("$*SENSOR"));
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterAG::withoutProjectorsTheReportTellsIt()
{
    const auto output = Write(u"target A 1,2,3 ply P { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.contains("$*SENSOR    1   1.000 2.000 3.000 A\n"));
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "\nWriting 1 targets"_ba);
}

void TestWriterAG::sensorsDoNotDependOnProjectors()
{
    const auto output = Write(u"target A 1,0,0 drift target B 2,0,0 target C 3,0,0 projector P { 3 null } "
                              "nullprojector ply \"P 1\" { contour { open 0,0,0 } }"_s);
    QVERIFY(output.part.contains("MM\n$*SENSOR    1   1.000 0.000 0.000 A\n$*SENSOR    2   2.000 0.000 0.000 B\n"
                                 "$*SENSOR    3   3.000 0.000 0.000 C\n$*DISPLAYMODE"));
    // The line about the targets stays open.
    COMPARE_TEXT(ReportBody(output.report), "\nWriting 3 targets" + Substituted("P 1"));
}

void TestWriterAG::anUnnamedTargetIsNamedByItsNumber()
{
    const auto output = Write(u"target A 0,0,0 target \"\" 0,0,0 target \"a %1\" 0,0,0"_s);
    QVERIFY(output.part.contains("$*SENSOR    2   0.000 0.000 0.000 2\n$*SENSOR    3   0.000 0.000 0.000 a_%1\n"));
    QCOMPARE(output.report.count(Substituted("a %1")), 1);
}

QTEST_GUILESS_MAIN(TestWriterAG)
#include "TestWriterAG.moc"
