// The reader of Assembly Guidance and Aligned Vision part files, on a whole file and on files that are wrong in one
// place.

#include "CheckDump.h"
#include "CheckFormat.h"
#include "CheckReport.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckAssemblyGuidance : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void readsTextsWithLineEndsThatAreKnown();
    void aPlyAheadOfItsSubPliesIsNotEmpty();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
};

namespace
{
const QString type = u"assembly-guidance"_s;
const QByteArray head = "$*PARTNO    Left_wing\n"
                        "$*DOSNAME   wing.PRT\n"
                        "$*UNITS     IN\n"
                        "$*SENSOR    1   1.000 -2.500 3.000 TE1\n"
                        "$*SENSOR    2   0.000 0.000 0.000 2\n"
                        "$*DISPLAYMODE WCAICT\n";
const QByteArray end = "$*PARTNO    Left_wing\n";
/*! A ply with one curve of two points: lines 7 to 12 behind the head. */
const QByteArray ply = "$*PLY       P1\n"
                       "PENUP\n"
                       "GOTO        0.000 -1.500 2.000  0.000 0.000 1.000\n"
                       "PENDWN\n"
                       "GOTO        3.000 0.000 0.125\n";
} // namespace

void TestCheckAssemblyGuidance::readsEachRecord()
{
    const CheckFile file = ReadChecked(type, head + "$*PLYGROUP  L1\n$*SEQ       S1\n" + ply +
                                                 "$*MSG one\n"
                                                 "$*DISPLAYGRAPHICS logo.bmp\n"
                                                 "$*RAW line\n"
                                                 "PENUP\n"
                                                 "GOTO        10.000 20.000 0.000\n"
                                                 "$*LASERTEXT 12.500 \"P1\"x\"\n"
                                                 "$*PLY       P2\n"
                                                 "PENUP\n"
                                                 "GOTO        1.000 1.000 1.000\n"
                                                 "PENDWN\n"
                                                 "$*SEQ       S2\n"
                                                 "$*PLYGROUP  L2\n" +
                                                 end);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"unit in"_s,
                                      u"part Left_wing"_s,
                                      u"file=wing.PRT"_s,
                                      u"projectors 1"_s,
                                      u"4 target TE1 projector 0 number 1 at 1 -2.5 3"_s,
                                      u"5 target 2 projector 0 number 2 at 0 0 0"_s,
                                      u"7 layer L1"_s,
                                      u"8 layer S1"_s,
                                      u"9 ply P1"_s,
                                      u"10 curve unknown: 2 points"_s,
                                      u"11 point 0 -1.5 2 / 0 0 1"_s,
                                      u"13 point 3 0 0.125"_s,
                                      u"14 message one"_s,
                                      u"15 graphic logo.bmp"_s,
                                      u"16 literal $*RAW line"_s,
                                      u"17 text P1\"x 10 20 0 12.5"_s,
                                      u"20 ply P2"_s,
                                      u"21 curve unknown: 1 points"_s,
                                      u"22 point 1 1 1"_s,
                                      u"24 layer S2"_s,
                                      u"25 layer L2"_s}));
    QCOMPARE(file.groups[2].parent, 1);
    QCOMPARE(file.groups[3].parent, 1);
    QCOMPARE(file.groups[4].parent, 0);
    QCOMPARE(file.groups[5].parent, -1);
}

void TestCheckAssemblyGuidance::readsTextsWithLineEndsThatAreKnown()
{
    CheckKnownTexts known;
    known.withLineEnds = {"one\ntwo"};
    known.literals = {"PENUP\nGOTO        0 0 0\nPENDWN"};
    CheckFile file;
    CheckFormats::Find(type)->read(head + ply + "$*MSG one\ntwo\nPENUP\nGOTO        0 0 0\nPENDWN\nPENUP\n" +
                                       "GOTO        1 2 3\n$*LASERTEXT 1.000 \"one\ntwo\"\n" + end,
                                   known, file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(file.curves.size(), 1U);
    QCOMPARE(file.parameters.size(), 2U);
    QCOMPARE(file.parameters[0].text, u"one\ntwo"_s);
    QCOMPARE(file.texts.front().text, u"one\ntwo"_s);
}

void TestCheckAssemblyGuidance::aPlyAheadOfItsSubPliesIsNotEmpty()
{
    const QByteArray square =
        "PENUP\nGOTO        0 0 0\nPENDWN\nGOTO        9 0 0\nGOTO        9 9 0\nGOTO        0 0 0\n";
    const CheckedFile file =
        CheckBytes(u"f"_s, *CheckFormats::Find(type), head + "$*PLY       P2\n$*PLY       P2a\n" + square + end);
    QCOMPARE(file.findings.size(), 0U);
}

void TestCheckAssemblyGuidance::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const QString noEnd = u"error: %1the file ends too early: expected \"$*PARTNO\" once more"_s;
    row("empty file", "", {u"1: "_s + noEnd.arg(QString())});
    row("first line alone", end, {u"1: "_s + noEnd.arg(QString())});
    row("no end", head + ply, {u"11: "_s + noEnd.arg(u"P1: "_s)});
    row("cut within a curve", head + ply.first(ply.indexOf("PENDWN")),
        {u"10: error: P1: expected \"PENDWN\", found \"\""_s, u"9: "_s + noEnd.arg(u"P1: "_s)});
    row("cut end", (head + end).chopped(1), {u"7: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", head + end + "x\n",
        {u"8: error: expected nothing behind the last \"$*PARTNO\", found \"x\""_s});
    row("another part at the end", head + "$*PARTNO    Right\n",
        {u"7: error: expected the name of the first line, found \"$*PARTNO    Right\""_s});
    row("no unit", QByteArray(head).replace("$*UNITS     IN\n", "") + end,
        {u"3: error: expected \"$*UNITS\", found \"$*SENSOR    1   1.000 -2.500 3.000 TE1\""_s});
    row("unit", QByteArray(head).replace(" IN\n", " FT\n") + end,
        {u"3: error: expected the unit MM or IN, found \"FT\""_s});
    row("blanks of a keyword", QByteArray(head).replace("$*DISPLAYMODE ", "DISPLAYMODE ") + end,
        {u"6: error: expected \"$*DISPLAYMODE\", found \"DISPLAYMODE WCAICT\""_s});
    row("a target without a name", QByteArray(head).replace(" TE1", "") + end,
        {u"4: error: expected a number, three coordinates and a name, found \"$*SENSOR    1   1.000 -2.500 3.000\""_s,
         u"5: error: expected the number 1, found \"2\""_s});
    row("coordinates of a target", QByteArray(head).replace("-2.500", "-2,5") + end,
        {u"4: error: expected a number, found \"-2,5\""_s});
    row("outside a ply", head + "hello\n" + end,
        {u"7: error: expected the begin of a layup, a sequence or a ply, found \"hello\""_s});
    row("no pen up", head + QByteArray(ply).replace("PENUP\n", "") + end,
        {u"8: error: P1: expected \"PENUP\", found \"GOTO        0.000 -1.500 2.000  0.000 0....\""_s,
         u"9: error: P1: expected \"PENUP\", found \"PENDWN\""_s,
         u"10: error: P1: expected \"PENUP\", found \"GOTO        3.000 0.000 0.125\""_s});
    row("no point behind pen up", head + "$*PLY       P1\nPENUP\nPENUP\nGOTO        1 2 3\nPENDWN\n" + end,
        {u"9: error: P1: expected \"GOTO\", found \"PENUP\""_s});
    row("not a number", head + QByteArray(ply).replace("0.125", "nan") + end,
        {u"11: error: P1: expected a number, found \"nan\""_s});
    row("columns", head + QByteArray(ply).replace(" 0.125", "") + end,
        {u"11: error: P1: expected three numbers of a point, or six with its normal, found \"3.000 0.000\""_s});
    row("a text without quotes", head + ply + "PENUP\nGOTO        1 2 3\n$*LASERTEXT 1.000 P1\n" + end,
        {u"14: error: P1: expected a size and a text in double quotes, found \"$*LASERTEXT 1.000 P1\""_s});
    row("the size of a text", head + ply + "PENUP\nGOTO        1 2 3\n$*LASERTEXT big \"P1\"\n" + end,
        {u"14: error: P1: expected a number, found \"big\""_s});
}

void TestCheckAssemblyGuidance::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(type, bytes)), findings);
}

QTEST_APPLESS_MAIN(TestCheckAssemblyGuidance)
#include "TestCheckAssemblyGuidance.moc"
