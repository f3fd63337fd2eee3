// The readers of SL part files and targets files, on whole files and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckSl : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void readsTextsWithLineEndsThatAreKnown();
    void takesDirectionsThatAreNoNumbers();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void readsTargetsFiles();
    void tellsWhatIsWrongWithTargetsFiles_data();
    void tellsWhatIsWrongWithTargetsFiles();
    void namesTheTargetsFile();
    void findsDamageOfEachLine();
};

namespace
{
const QByteArray curve = "BG P1 boundary 1\n"
                         "L 2 1\n"
                         "0.000 -1.500 2.000   0.000 0.000 1.000  1\n"
                         "3.000 0.000 0.125  0 0 0  1\n"
                         "E P1 boundary 1\n";
const QByteArray textLine =
    "T 10.000 20.000 0.000 0 12.500 0.000 0.000 1.000 1.000 0.000 0.000 0.000 1.000 0.000  1  0.0 "
    "0.0 0.0  ~P1  x\n";
const QByteArray rest = "BG NOTE\n"
                        "N 2\n"
                        "first\n"
                        "\n"
                        "E NOTE\n"
                        "BG GRAPHIC\n"
                        "BMP 0 logo left.bmp\n"
                        "E GRAPHIC\n"
                        "# raw\n"
                        "BG P1 Text\n" +
                        textLine + "E P1 Text\n";
/*! One ply in a layer: the curve from line 3 on, the rest from line 8 on. */
const QByteArray part = "GS S1\nGS P1\n" + curve + rest + "GE\nGE\nEOF\n";

const QByteArray table = "1 2 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n";
const QByteArray targets =
    "Left wing targets\n"
    "LaserUsage=" +
    table + "AssignedLaser=" + table +
    "TargetPoints=2 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n"
    "L=1\tP=1\tX=0.000000\tY=-0.500000\tZ=12.250000\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1\tL=1\tL=1\tT=Target_A\n"
    "L=1\tP=2\tX=1.000000\tY=2.000000\tZ=3.000000\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1\tL=1\tL=1\tT=1\n"
    "L=2\tP=1\tX=4.000000\tY=5.000000\tZ=6.000000\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1\tL=2\tL=2\tT=T\n";
} // namespace

void TestCheckSl::readsEachRecord()
{
    const QStringList held{u"1 layer S1"_s,
                           u"2 ply P1"_s,
                           u"3 curve boundary P1 boundary 1: 2 points"_s,
                           u"5 point 0 -1.5 2 / 0 0 1"_s,
                           u"6 point 3 0 0.125"_s,
                           u"10 note first"_s,
                           u"11 note "_s,
                           u"14 graphic logo left.bmp"_s,
                           u"16 literal # raw"_s,
                           u"18 text P1  x 10 20 0 12.5 0 0 1 1 0 0 0 1 0"_s,
                           u"20 end P1"_s,
                           u"21 end S1"_s};
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")}) {
        const CheckFile file = ReadChecked(u"sl"_s, QByteArray(part).replace("\n", lineEnd));
        QCOMPARE(DumpFindings(file), QStringList());
        QCOMPARE(Dump(file), held);
    }
    QCOMPARE(DumpFindings(ReadChecked(u"sl"_s, "EOF\n")), QStringList());
}

void TestCheckSl::readsTextsWithLineEndsThatAreKnown()
{
    const QByteArray bytes =
        "GS A\nB\n"
        "BG C\nD\nL 1 1\n1.000 2.000 3.000  0 0 0  1\nE C\nD\n"
        "BG NOTE\nN 1\none\ntwo\nE NOTE\n"
        "GE\nGS x\n"
        "BG A\nB Text\n"
        "T 0.000 0.000 0.000 0 1.000 0.000 0.000 0.000 0.000 0.000 0.000 0.000 0.000 0.000  1  0.0 "
        "0.0 0.0  ~A\nB\n"
        "E A\nB Text\n"
        "GE\nEOF\n";
    CheckKnownTexts known;
    known.withLineEnds = {"A\nB", "C\nD", "one\ntwo", "A\nB Text"};
    known.literals = {"GE\nGS x"};
    CheckFile file;
    CheckFormats::Find(u"sl"_s)->read(bytes, known, file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file),
             QStringList({u"1 ply A\nB"_s, u"3 curve other C\nD: 1 points"_s, u"6 point 1 2 3"_s, u"11 note one\ntwo"_s,
                          u"14 literal GE\nGS x"_s, u"18 text A\nB 0 0 0 1 0 0 0 0 0 0 0 0 0"_s, u"22 end A\nB"_s}));
}

void TestCheckSl::takesDirectionsThatAreNoNumbers()
{
    const CheckFile file =
        ReadChecked(u"sl"_s, Replaced(part, "12.500 0.000 0.000 1.000 1.000", "12.500 nan -nan inf -inf"));
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(file.texts.front().numbers.size(), size_t(13));
    QVERIFY(std::isnan(file.texts.front().numbers[4]));
    QVERIFY(std::isinf(file.texts.front().numbers[7]));
    // A place isn't a direction.
    QCOMPARE(
        DumpFindings(ReadChecked(u"sl"_s, Replaced(part, "T 10.000", "T nan"))),
        QStringList(u"18: error: P1: expected a number with 3 decimals, found \"nan 20.000 0.000 0 12.500 0.000 0.000 "
                    u"1....\""_s));
}

void TestCheckSl::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const auto change = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        row(name, Replaced(part, before, after), findings);
    };
    row("empty file", "", {u"1: error: the file ends too early: expected \"EOF\""_s});
    row("no end", "GS A\nGE\n", {u"2: error: the file ends too early: expected \"EOF\""_s});
    row("cut end", "GS A\nGE\nEOF", {u"3: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", "EOF\nGS A\n", {u"2: error: expected nothing behind \"EOF\", found \"GS A\""_s});
    change("fewer points", "L 2", "L 3", {u"4: error: P1: announces 3 points and holds 2"_s});
    change("more points", "L 2", "L 1", {u"4: error: P1: announces 1 points and holds 2"_s});
    change("no count", "L 2", "L two", {u"4: error: P1: expected a whole number, found \"two 1\""_s});
    change("a count beyond all", "L 2", "L 99999999999",
           {u"4: error: P1: expected a whole number, found \"99999999999 1\""_s});
    change("behind the count", "L 2 1", "L 2 2", {u"4: error: P1: expected \" 1\", found \" 2\""_s});
    change("letters in a number", "3.000", "3.0x0",
           {u"6: error: P1: expected a number with 3 decimals, found \"3.0x0 0.000 0.125  0 0 0  1\""_s});
    change("decimals", "3.000", "3.0000",
           {u"6: error: P1: expected a number with 3 decimals, found \"3.0000 0.000 0.125  0 0 0  1\""_s});
    change("not a number", "3.000", "nan",
           {u"6: error: P1: expected a number with 3 decimals, found \"nan 0.000 0.125  0 0 0  1\""_s});
    change("no normal", "  0 0 0  1", "  1", {u"6: error: P1: expected \"  0 0 0\", found \"  1\""_s});
    change("half a normal", "   0.000 0.000 1.000  1", "   0.000 0.000  1",
           {u"5: error: P1: expected a number with 3 decimals, found \" 1\""_s});
    change("no end of the point", "  0 0 0  1", "  0 0 0", {u"6: error: P1: expected \"  1\", found \"\""_s});
    change("behind a point", "  0 0 0  1", "  0 0 0  1 ",
           {u"6: error: P1: expected the end of the line, found \" \""_s});
    change("curve not ended", "E P1 boundary 1\n", "",
           {u"7: error: P1: expected \"E P1 boundary 1\", found \"BG NOTE\""_s});
    change("wrong name at a curve's end", "E P1 boundary 1\n", "E P1 boundary 2\n",
           {u"7: error: P1: expected \"E P1 boundary 1\", found \"E P1 boundary 2\""_s});
    change("no begin of a curve", "BG P1 boundary 1\n", "",
           {u"3: error: P1: expected the begin of a block, found \"L 2 1\""_s,
            u"4: error: P1: expected the begin of a block, found \"0.000 -1.500 2.000   0.000 0.000 1.000  ...\""_s,
            u"5: error: P1: expected the begin of a block, found \"3.000 0.000 0.125  0 0 0  1\""_s,
            u"6: error: P1: expected the begin of a block, found \"E P1 boundary 1\""_s});
    change("curve without a count", "L 2 1\n", "",
           {u"4: error: P1: expected what \"BG P1 boundary 1\" announces, found \"0.000 -1.500 2.000   0.000 0.000 "
            u"1.000  ...\""_s,
            u"4: error: P1: expected \"E P1 boundary 1\", found \"0.000 -1.500 2.000   0.000 0.000 1.000  ...\""_s,
            u"4: error: P1: expected the begin of a block, found \"0.000 -1.500 2.000   0.000 0.000 1.000  ...\""_s,
            u"5: error: P1: expected the begin of a block, found \"3.000 0.000 0.125  0 0 0  1\""_s,
            u"6: error: P1: expected the begin of a block, found \"E P1 boundary 1\""_s});
    change("fewer notes", "N 2", "N 3", {u"9: error: P1: announces 3 notes and holds 2"_s});
    change("more notes", "N 2", "N 1", {u"9: error: P1: announces 1 notes and holds 2"_s});
    change("graphic", "BMP 0 ", "BMP 1 ", {u"14: error: P1: expected \"BMP 0 \", found \"BMP 1 logo left.bmp\""_s});
    change("name of a text block", "BG P1 Text", "BG P2 Text",
           {u"17: error: P1: expected \"BG P1 Text\", found \"BG P2 Text\""_s,
            u"19: error: P1: expected \"E P2 Text\", found \"E P1 Text\""_s});
    change("text", " 0 12.500", " 1 12.500",
           {u"18: error: P1: expected \" 0 \", found \" 1 12.500 0.000 0.000 1.000 1.000 0.000 ...\""_s});
    change("text without its mark", "~", "",
           {u"18: error: P1: expected \"  1  0.0 0.0 0.0  ~\", found \"  1  0.0 0.0 0.0  P1  x\""_s});
    change("line end in a text", "P1  x\n", "P1\nx\n", {u"19: error: P1: expected \"T \", found \"x\""_s});
    change("group not ended", "GE\nGE\n", "GE\n",
           {u"21: error: expected the end of \"S1\", begun in line 1, found \"EOF\""_s});
    change("end without begin", "GE\nGE\n", "GE\nGE\nGE\n", {u"22: error: nothing is open that \"GE\" could end"_s});
    row("outside a group", "x\n" + curve + "EOF\n",
        {u"1: error: expected the begin of a group, found \"x\""_s,
         u"2: error: expected the begin of a group, found \"BG P1 boundary 1\""_s});
}

void TestCheckSl::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"sl"_s, bytes)), findings);
}

void TestCheckSl::readsTargetsFiles()
{
    const CheckFile file = ReadChecked(u"sl-targets"_s, targets);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file),
             QStringList(
                 {u"part Left wing"_s, u"projectors 2"_s, u"5 target Target_A projector 0 number 1 at 0 -0.5 12.25"_s,
                  u"6 target 1 projector 0 number 2 at 1 2 3"_s, u"7 target T projector 1 number 1 at 4 5 6"_s}));
}

void TestCheckSl::tellsWhatIsWrongWithTargetsFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto change = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        QTest::newRow(name) << Replaced(targets, before, after) << findings;
    };
    change("title", " targets\n", "\n",
           {u"1: error: expected a title that ends with \" targets\", found \"Left wing\""_s});
    change(
        "no use", "LaserUsage=1 2 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \n", "",
        {u"2: error: expected \"LaserUsage=\", found \"AssignedLaser=1 2 0 0 0 0 0 0 0 0 0 0 0 ...\""_s,
         u"3: error: expected \"AssignedLaser=\", found \"TargetPoints=2 1 0 0 0 0 0 0 0 0 0 0 0 0...\""_s,
         u"4: error: expected \"TargetPoints=\", found \"L=1\\x09P=1\\x09X=0.000000\\x09Y=-0.500000\\x09Z=12.2500...\""_s});
    change("use of a laser", "Usage=1 2 0", "Usage=1 2 4",
           {u"2: error: expected 0 or 3 for laser 3, found 4"_s, u"3: error: expected 4 for laser 3, found 0"_s});
    change("15 lasers", "Points=2 1 0 ", "Points=2 1 ", {u"4: error: expected a whole number, found \"\""_s});
    change("17 lasers", "Points=2 1 0 ", "Points=2 1 0 0 ",
           {u"4: error: expected the end of the line, found \"0 \""_s});
    change("fewer targets", "Points=2 1", "Points=3 1", {u"4: error: announces 3 targets of laser 1 and holds 2"_s});
    change("more targets", "Points=2 1", "Points=2 0", {u"4: error: announces 0 targets of laser 2 and holds 1"_s});
    change("number", "P=2", "P=3", {u"6: error: expected the point 2 of laser 1, found 3"_s});
    change("not a number", "X=1.000000", "X=1",
           {u"6: error: expected a number with 6 decimals, found "
            u"\"1\\x09Y=2.000000\\x09Z=3.000000\\x09XP=0\\x09YP=0\\x09G=1\\x09A=...\""_s});
    change("key", "\tXP=0", "\tXQ=0",
           {u"5: error: expected \"\\x09XP=0\\x09YP=0\\x09G=1\\x09A=1\\x09Q=1\\x09C=1\", found "
            u"\"\\x09XQ=0\\x09YP=0\\x09G=1\\x09A=1\\x09Q=1\\x09C=1\\x09L=1\\x09L=1\\x09T=Tar...\""_s});
    change("laser, the third time",
           "L=2\tL=2\tT=", "L=2\tL=1\tT=", {u"7: error: expected \"\\x09L=2\", found \"\\x09L=1\\x09T=T\""_s});
    QTest::newRow("laser beyond all") << Replaced(Replaced(targets, "L=2\tP", "L=17\tP"), "L=2\tL=2", "L=17\tL=17")
                                      << QStringList{u"7: error: expected a laser from 1 to 16, found 17"_s,
                                                     u"4: error: announces 1 targets of laser 2 and holds 0"_s};
    QTest::newRow("cut name") << targets.chopped(1)
                              << QStringList(u"7: error: the file ends too early: expected the end of the line"_s);
}

void TestCheckSl::tellsWhatIsWrongWithTargetsFiles()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"sl-targets"_s, bytes)), findings);
}

void TestCheckSl::namesTheTargetsFile()
{
    const auto getCompanion = CheckFormats::Find(u"sl"_s)->getCompanion;
    QCOMPARE(getCompanion(u"a/wing.sl"_s), u"a/wing.cp1"_s);
    QCOMPARE(getCompanion(u"wing.slx"_s), u"wing.scp1"_s); // two characters make room for three, whatever they are
}

void TestCheckSl::findsDamageOfEachLine()
{
    // Texts may be anything. Literals and texts aren't counted.
    QCOMPARE(FindSilentDamage(u"sl"_s, part),
             QStringList({u"wrong 10: first"_s, u"wrong 11: "_s, u"without 16: # raw"_s, u"wrong 16: # raw"_s,
                          u"without 18: "_s + QString::fromUtf8(textLine.chopped(1))}));
    QCOMPARE(FindSilentDamage(u"sl-targets"_s, targets), QStringList(u"wrong 1: Left wing targets"_s));
}

QTEST_APPLESS_MAIN(TestCheckSl)
#include "TestCheckSl.moc"
