#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
TestOutput Write(const QString& text, const QString& fileName = u"wing.sl"_s, const QString& targets = u"wing.cp1"_s)
{
    return WriteOutput(u"filetype 4\n"_s + text, fileName, targets);
}

QByteArray Part(const QString& text)
{
    return Write(text).part;
}

/*! The line of a text in a ply, from its key to the tilde. */
QByteArray TextLine(const QString& text)
{
    const QByteArray part = Part(u"ply P { parameter literal L "_s + text + u" }"_s);
    const qsizetype begin = part.indexOf("\nT ") + 1;
    return part.mid(begin, part.indexOf('~', begin) + 1 - begin);
}

/*! A line of a targets file; the target is at x,0,0. */
QByteArray TargetLine(int laser, int point, const QByteArray& x, const QByteArray& name)
{
    const QByteArray number = "L=" + QByteArray::number(laser);
    return number + "\tP=" + QByteArray::number(point) + "\tX=" + x +
           "\tY=0.000000\tZ=0.000000\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1\t" + number + '\t' + number + "\tT=" + name + '\n';
}

/*! The entries of a line of the table, which has 16 of them and a blank behind each. */
QByteArray Table(const QByteArray& key, const QByteArray& targets)
{
    for (const auto& line : targets.split('\n')) {
        if (line.startsWith(key + '=') && line.endsWith(' ') && line.count(' ') == 16)
            return line.mid(key.size() + 1).trimmed();
    }
    return "no such line";
}

const QString pointPly = u"ply P { contour { open 0,0,0 } }"_s;
} // namespace

class TestWriterSL : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void anEmptyTreeIsTheEndOfTheFileAlone();
    void layersAndLeavesAreGroups();
    void withoutNestingTheLayupLeavesNoMark();
    void aLeafThatIsNoPlyIsTwoGroups();

    void aClosedCurveOfThreePointsCountsFour();
    void aClosedCurveOfOnePointIsNotClosed();
    void curvesWithoutPointsWriteNothing();
    void pointsWithoutNormalEndInFixedText();
    void normalsAreNotScaled();

    void informationAndNotesShareABlock();
    void graphicsAndLiteralsFollowInOrder();
    void unsupportedTypesAreToldOnceEach();
    void withoutAQueueUnsupportedTypesAreDropped();
    void parametersAndTextsGoFirstIfToldSo();

    void everyPlyLeafHasATextBlock();
    void theMatrixStandsByRows();
    void directionsAreNormalisedAndTheSizeIsNot();
    void theUpDirectionEndsInModelCoordinates();
    void parallelDirectionsGiveAZeroNormal();
    void zeroDirectionsGiveNotANumber();
    void textsInInches();

    void withoutTargetsNoFileIsMade();
    void theFileNameLosesTwoCharactersForThree_data();
    void theFileNameLosesTwoCharactersForThree();
    void withoutProjectorsPointsCountFromZero();
    void withProjectorsPointsCountFromOne();
    void aNullTargetUsesUpNoNumber();
    void aNullProjectorKeepsItsNumberAsItsCount();
    void seventeenProjectorsAreOneTooMany();
    void theLimitIsToldAheadOfTheTargets();
    void sixteenProjectorsAreNot();
    void unnamedTargetsTakeTheNumberOfTheirLaser();
    void blanksInTargetNamesAreReplaced();
    void targetsInInchesOnAnAxis();
    void theTitleIsThePartName();
};

void TestWriterSL::anEmptyTreeIsTheEndOfTheFileAlone()
{
    COMPARE_TEXT(Part(u"layup L { sequence S { ply P { text T 0,0,0 1,0,0 0,1,0 1 contour { open } } } }"_s),
                 "EOF\n"_ba);
    QCOMPARE(QueuedMessages(), QStringList(u"0 SL data have been successfully written to file:\n wing.sl"_s));
}

void TestWriterSL::layersAndLeavesAreGroups()
{
    const auto output = Write(u"nestsequences on layup L { sequence S { ply P { parameter literal p } "
                              "ply Q { subply A { parameter literal a } } } }"_s);
    COMPARE_TEXT(output.part, "GS L\nGS S\nGS P\np\nBG P Text\nE P Text\nGE\n"
                              "GS A\na\nBG A Text\nE A Text\nGE\nGE\nGE\nEOF\n"_ba);
    QVERIFY(output.report.contains("   Number of Plies = 2\n   Number of Sub-plies = 1\n"));
}

void TestWriterSL::withoutNestingTheLayupLeavesNoMark()
{
    COMPARE_TEXT(Part(u"nestsequences off layup L { sequence S { ply P { parameter literal p } } }"_s),
                 "GS S\nGS P\np\nBG P Text\nE P Text\nGE\nGE\nEOF\n"_ba);
}

void TestWriterSL::aLeafThatIsNoPlyIsTwoGroups()
{
    // Without a model object there are neither parameters nor the block of texts.
    COMPARE_TEXT(Part(u"group G { parameter literal p text T 0,0,0 1,0,0 0,1,0 1 }"_s), "GS G\nGS G\nGE\nGE\nEOF\n"_ba);
    COMPARE_TEXT(Part(u"nullply G { parameter literal p }"_s), "GS G\nGE\nEOF\n"_ba);
}

void TestWriterSL::aClosedCurveOfThreePointsCountsFour()
{
    COMPARE_TEXT(Part(u"group G { contour { closed \"C 1\" 0,0,0 1,0,0 1,1,0 } }"_s),
                 "GS G\nGS G\nBG C 1\nL 4 1\n0.000 0.000 0.000  0 0 0  1\n1.000 0.000 0.000  0 0 0  1\n"
                 "1.000 1.000 0.000  0 0 0  1\n0.000 0.000 0.000  0 0 0  1\nE C 1\nGE\nGE\nEOF\n"_ba);
}

void TestWriterSL::aClosedCurveOfOnePointIsNotClosed()
{
    COMPARE_TEXT(Part(u"group G { contour { closed 1,2,3 } }"_s),
                 "GS G\nGS G\nBG \nL 1 1\n1.000 2.000 3.000  0 0 0  1\nE \nGE\nGE\nEOF\n"_ba);
}

void TestWriterSL::curvesWithoutPointsWriteNothing()
{
    COMPARE_TEXT(Part(u"group G { contour { open A closed B } contour { open C open D 1,2,3 } }"_s),
                 "GS G\nGS G\nBG D\nL 1 1\n1.000 2.000 3.000  0 0 0  1\nE D\nGE\nGE\nEOF\n"_ba);
}

void TestWriterSL::pointsWithoutNormalEndInFixedText()
{
    const QString group = u"group G { contour { open 1,0,0/0,0,-1 2,0,0/0,0,0 } }"_s;
    QVERIFY(Part(u"normals on "_s + group)
                .contains("L 2 1\n1.000 0.000 0.000   0.000 0.000 -1.000  1\n2.000 0.000 0.000  0 0 0  1\n"));
    QVERIFY(
        Part(u"normals off "_s + group).contains("L 2 1\n1.000 0.000 0.000  0 0 0  1\n2.000 0.000 0.000  0 0 0  1\n"));
}

void TestWriterSL::normalsAreNotScaled()
{
    QVERIFY(Part(u"units inch group G { contour { open 25.4,-0.0004,254/0.6,0,0.8@254,-0.01,2.54 } }"_s)
                .contains("\n10.000 -0.000 0.100   0.600 0.000 0.800  1\n"));
}

void TestWriterSL::informationAndNotesShareABlock()
{
    COMPARE_TEXT(Part(u"ply P { parameter note N1 parameter literal L parameter information \"a\\nb\" "
                      "parameter note \"\" }"_s),
                 "GS P\nBG NOTE\nN 3\nN1\na\nb\n\nE NOTE\nL\nBG P Text\nE P Text\nGE\nEOF\n"_ba);
    QCOMPARE(QueuedMessages().size(), 1);
}

void TestWriterSL::graphicsAndLiteralsFollowInOrder()
{
    COMPARE_TEXT(Part(u"ply P { parameter literal \"a  b\" parameter graphic \"%PLY% g.bmp\" parameter literal c }"_s),
                 "GS P\na  b\nBG GRAPHIC\nBMP 0 P g.bmp\nE GRAPHIC\nc\nBG P Text\nE P Text\nGE\nEOF\n"_ba);
}

void TestWriterSL::unsupportedTypesAreToldOnceEach()
{
    COMPARE_TEXT(Part(u"ply P { parameter query Q parameter message M parameter message N }"_s),
                 "GS P\nBG P Text\nE P Text\nGE\nEOF\n"_ba);
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Query for SL"_s,
                                                   u"2 Unsupported laser parameter type Message for SL"_s,
                                                   u"2 Unsupported laser parameter type Message for SL"_s}));
}

void TestWriterSL::withoutAQueueUnsupportedTypesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Part(u"ply P { parameter query Q }"_s), "GS P\nBG P Text\nE P Text\nGE\nEOF\n"_ba);
}

void TestWriterSL::parametersAndTextsGoFirstIfToldSo()
{
    const QString ply = u"ply P { contour { open C 1,0,0 } parameter literal L }"_s;
    const QByteArray curve = "BG C\nL 1 1\n1.000 0.000 0.000  0 0 0  1\nE C\n";
    const QByteArray texts = "L\nBG P Text\nE P Text\n";
    COMPARE_TEXT(Part(u"rosettefirst on "_s + ply), "GS P\n" + texts + curve + "GE\nEOF\n");
    COMPARE_TEXT(Part(u"rosettefirst off "_s + ply), "GS P\n" + curve + texts + "GE\nEOF\n");
}

void TestWriterSL::everyPlyLeafHasATextBlock()
{
    COMPARE_TEXT(Part(u"ply \"P 1\" { parameter literal L text \"%PLY% a~b\" 1,2,3 1,0,0 0,1,0 4 "
                      "text \"\" 0,0,0 1,0,0 0,1,0 1 }"_s),
                 "GS P 1\nL\nBG P 1 Text\n"
                 "T 1.000 2.000 3.000 0 4.000 1.000 0.000 0.000 0.000 1.000 0.000 0.000 0.000 1.000"
                 "  1  0.0 0.0 0.0  ~P 1 a~b\n"
                 "T 0.000 0.000 0.000 0 1.000 1.000 0.000 0.000 0.000 1.000 0.000 0.000 0.000 1.000"
                 "  1  0.0 0.0 0.0  ~\n"
                 "E P 1 Text\nGE\nEOF\n"_ba);
}

void TestWriterSL::theMatrixStandsByRows()
{
    // d = 0 1 0, u = 0 0 -1, n = d x u = -1 0 0: the rows hold d.x u.x n.x, d.y u.y n.y, d.z u.z n.z.
    COMPARE_TEXT(TextLine(u"text T 1,2,3 0,1,0 0,0,-1 4"_s),
                 "T 1.000 2.000 3.000 0 4.000 0.000 0.000 -1.000 1.000 0.000 0.000 0.000 -1.000 0.000"
                 "  1  0.0 0.0 0.0  ~"_ba);
}

void TestWriterSL::directionsAreNormalisedAndTheSizeIsNot()
{
    COMPARE_TEXT(TextLine(u"text T 1,2,3 30,40,0 0,0,0.5 4"_s),
                 "T 1.000 2.000 3.000 0 4.000 0.600 0.000 0.800 0.800 0.000 -0.600 0.000 1.000 0.000"
                 "  1  0.0 0.0 0.0  ~"_ba);
}

void TestWriterSL::theUpDirectionEndsInModelCoordinates()
{
    // X of the axis system is Y of the model, Y is -X, its origin is at 3, 0, 0. The text at 3 0 0 is at 0 0 0 there.
    // Its base direction 0 1 0 is 1 0 0 there. Its up direction ends at 3 0 4 in the model, which is 5 away: 0.6 0 0.8.
    // n = d x u = 1 0 0 x 0.6 0 0.8 = 0 -0.8 0.
    const QByteArray part = Part(u"axis 3,0,0 0,1,0 -1,0,0 ply P { parameter literal L text T 3,0,0 0,1,0 0,0,4 2 }"_s);
    QVERIFY2(part.contains("\nT 0.000 0.000 0.000 0 2.000 1.000 0.600 0.000 0.000 0.000 -0.800 0.000 0.800 0.000"
                           "  1  0.0 0.0 0.0  ~T\n"),
             part);
}

void TestWriterSL::parallelDirectionsGiveAZeroNormal()
{
    COMPARE_TEXT(TextLine(u"text T 0,0,0 0,0,2 0,0,3 1"_s),
                 "T 0.000 0.000 0.000 0 1.000 0.000 0.000 0.000 0.000 0.000 0.000 1.000 1.000 0.000"
                 "  1  0.0 0.0 0.0  ~"_ba);
}

void TestWriterSL::zeroDirectionsGiveNotANumber()
{
    COMPARE_TEXT(TextLine(u"text T 0,0,0 0,0,0 0,0,1 1"_s),
                 "T 0.000 0.000 0.000 0 1.000 nan 0.000 nan nan 0.000 nan nan 1.000 nan  1  0.0 0.0 0.0  ~"_ba);
    COMPARE_TEXT(TextLine(u"text T 0,0,0 1,0,0 0,0,0 1"_s),
                 "T 0.000 0.000 0.000 0 1.000 1.000 nan nan 0.000 nan nan 0.000 nan nan  1  0.0 0.0 0.0  ~"_ba);
}

void TestWriterSL::textsInInches()
{
    // The matrix isn't scaled.
    QVERIFY(Part(u"units inch ply P { parameter literal L text T 25.4,0,-50.8 1,0,0 0,1,0 12.7 }"_s)
                .contains("\nT 1.000 0.000 -2.000 0 0.500 1.000 0.000 0.000 0.000 1.000 0.000 0.000 0.000 1.000  1"));
}

void TestWriterSL::withoutTargetsNoFileIsMade()
{
    const auto output = Write(u"projector P { } "_s + pointPly);
    QVERIFY(!output.hasTargets);
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterSL::theFileNameLosesTwoCharactersForThree_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("targets");
    QTest::newRow("sl") << u"wing.sl"_s << u"wing.cp1"_s;
    QTest::newRow("longer extension") << u"wing.text"_s << u"wing.tecp1"_s;
    QTest::newRow("two characters") << u"sl"_s << u"cp1"_s;
    QTest::newRow("one character") << u"s"_s << u"cp1"_s;
}

void TestWriterSL::theFileNameLosesTwoCharactersForThree()
{
    QFETCH(QString, part);
    QFETCH(QString, targets);
    const auto output = Write(u"target A 1,0,0 "_s + pointPly, part, targets);
    QVERIFY(output.hasTargets);
    QVERIFY(output.targets.endsWith(TargetLine(1, 0, "1.000000", "A")));
    QVERIFY(output.report.contains("\nWriting 1 targets to file " + targets.toUtf8() + "\n\nWarning"));
}

void TestWriterSL::withoutProjectorsPointsCountFromZero()
{
    const auto output = Write(u"partname \"Left wing\" target A 1,0,0 target B 2,0,0 "_s + pointPly);
    COMPARE_TEXT(output.targets, "Left wing targets\n"
                                 "LaserUsage=1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n"
                                 "AssignedLaser=1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n"
                                 "TargetPoints=2 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n" +
                                     TargetLine(1, 0, "1.000000", "A") + TargetLine(1, 1, "2.000000", "B"));
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "\nWriting 2 targets to file wing.cp1"_ba);
}

void TestWriterSL::withProjectorsPointsCountFromOne()
{
    const auto output = Write(u"target A 1,0,0 target B 2,0,0 drift projector P { 1 2 } projector Q { 2 } "
                              "projector R { } "_s +
                              pointPly);
    COMPARE_TEXT(output.targets, " targets\n"
                                 "LaserUsage=1 2 3 0 0 0 0 0 0 0 0 0 0 0 0 0 \n"
                                 "AssignedLaser=1 2 3 0 0 0 0 0 0 0 0 0 0 0 0 0 \n"
                                 "TargetPoints=2 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n" +
                                     TargetLine(1, 1, "1.000000", "A") + TargetLine(1, 2, "2.000000", "B") +
                                     TargetLine(2, 1, "2.000000", "B"));
    COMPARE_TEXT(ReportBody(output.report), "\nWriting 3 targets in 3 projectors to file wing.cp1"_ba);
}

void TestWriterSL::aNullTargetUsesUpNoNumber()
{
    const auto output = Write(u"target A 1,0,0 target B 2,0,0 projector P { null 1 null 2 }"_s);
    QCOMPARE(Table("TargetPoints", output.targets), "4 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"_ba); // nulls included
    QVERIFY(output.targets.endsWith("0 \n" + TargetLine(1, 1, "1.000000", "A") + TargetLine(1, 2, "2.000000", "B")));
    QVERIFY(output.report.contains("\nWriting 2 targets in 1 projectors to file wing.cp1"));
}

void TestWriterSL::aNullProjectorKeepsItsNumberAsItsCount()
{
    const auto output = Write(u"target A 1,0,0 nullprojector projector P { 1 1 1 1 } nullprojector"_s);
    QCOMPARE(Table("LaserUsage", output.targets), "1 2 3 0 0 0 0 0 0 0 0 0 0 0 0 0"_ba);
    QCOMPARE(Table("AssignedLaser", output.targets), "1 2 3 0 0 0 0 0 0 0 0 0 0 0 0 0"_ba);
    QCOMPARE(Table("TargetPoints", output.targets), "1 4 3 0 0 0 0 0 0 0 0 0 0 0 0 0"_ba);
    QCOMPARE(output.targets.count("\tP="), 4);
    QVERIFY(output.targets.endsWith(TargetLine(2, 4, "1.000000", "A")));
    QVERIFY(output.report.contains("\nWriting 4 targets in 1 projectors to file wing.cp1"));
}

void TestWriterSL::seventeenProjectorsAreOneTooMany()
{
    QString job = u"target A 1,0,0 target B 2,0,0 "_s;
    for (int i = 0; i < 17; ++i)
        job += i < 16 ? u"projector P { 1 } "_s : u"projector P { 2 2 } "_s;
    const auto output = Write(job + pointPly);
    QCOMPARE(Table("LaserUsage", output.targets), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"_ba);
    QCOMPARE(Table("AssignedLaser", output.targets), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16"_ba);
    QCOMPARE(Table("TargetPoints", output.targets), "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1"_ba);
    QCOMPARE(output.targets.count('\n'), 4 + 16);
    QVERIFY(!output.targets.contains("T=B"));
    QVERIFY(output.targets.endsWith(TargetLine(16, 1, "1.000000", "A")));
    COMPARE_TEXT(ReportBody(output.report), "SL data only supports 16 Laser projectors\n"
                                            "\nWriting 16 targets in 16 projectors to file wing.cp1"_ba);
}

void TestWriterSL::theLimitIsToldAheadOfTheTargets()
{
    const QString job = u"target \"A 1\" 1,0,0 projector P { 1 } "_s + u"projector Q { } "_s.repeated(16) + pointPly;
    COMPARE_TEXT(ReportBody(Write(job).report), "SL data only supports 16 Laser projectors\n"
                                                "Substituting spaces in target name 'A 1' with underscore\n"
                                                "\nWriting 1 targets in 16 projectors to file wing.cp1"_ba);
}

void TestWriterSL::sixteenProjectorsAreNot()
{
    QString job = u"target A 1,0,0 "_s;
    for (int i = 0; i < 16; ++i)
        job += u"projector P { 1 } "_s;
    COMPARE_TEXT(ReportBody(Write(job + pointPly).report), "\nWriting 16 targets in 16 projectors to file wing.cp1"_ba);
}

void TestWriterSL::unnamedTargetsTakeTheNumberOfTheirLaser()
{
    const auto output = Write(u"target \"\" 1,0,0 projector P { } projector Q { 1 1 }"_s);
    QVERIFY(output.targets.endsWith(TargetLine(2, 1, "1.000000", "2") + TargetLine(2, 2, "1.000000", "2")));
}

void TestWriterSL::blanksInTargetNamesAreReplaced()
{
    const auto output = Write(u"target \"Target  A\" 1,0,0 target \"B\tC\" 2,0,0 "_s + pointPly);
    QVERIFY(output.targets.endsWith(TargetLine(1, 0, "1.000000", "Target__A") + TargetLine(1, 1, "2.000000", "B\tC")));
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "Substituting spaces in target name 'Target  A' with underscore\n"
                 "\nWriting 2 targets to file wing.cp1"_ba);
}

void TestWriterSL::targetsInInchesOnAnAxis()
{
    const auto output = Write(u"units inch axis 10,20,30 0,1,0 -1,0,0 target T 35.4,45.4,-20.8"_s);
    QVERIFY(output.targets.contains("\tX=1.000000\tY=-1.000000\tZ=-2.000000\t"));
}

void TestWriterSL::theTitleIsThePartName()
{
    QVERIFY(Write(u"partname \"a %1 b\" target T 0,0,0"_s).targets.startsWith("a %1 b targets\n"));
}

QTEST_GUILESS_MAIN(TestWriterSL)
#include "TestWriterSL.moc"
