// The reader of General Scanning and Quilmon files, on whole files and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckNLines : public QObject
{
    Q_OBJECT

private slots:
    void readsPlainOutput();
    void readsNestingOutput();
    void readsEmptyJobs();
    void readsTextsWithLineEndsThatAreKnown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void findsDamageOfEachLine();
};

namespace
{
/*! Two projectors, of which the second has no targets, and two plies, of which the second has a sub-ply. */
const QByteArray plain = "N000-00-01M19(Left wing,1-1,,TOOL0,NEW)\n"
                         "N000-00-02M19(1-1)\n"
                         "N000-00-00M17(CALIBRATION TARGETS)\n"
                         "N000-01-01G07X0.000000Y-1.500000Z2.000000\n"
                         "N000-01-02G07X3.000000Y0.000000Z0.125000\n"
                         "N000-01-00M02N000-02-00M02N000-00-02M19(2-1)\n"
                         "N000-00-01M19(GROUP START S1)\n"
                         "N000-00-01M19(GROUP START P1)\n"
                         "I 2\n"
                         "first\n"
                         "second\n"
                         "# raw\n"
                         "N000-00-01M19(CONTOUR START P1)\n"
                         "N000-00-01M19(CURVE START P1 boundary 1)\n"
                         "N001-01-01M11(S1;P1-1)\n"
                         "N001-01-01G01X0.000000Y0.000000Z0.000000I0.000000J0.000000K1.000000\n"
                         "N001-01-01G01X4.000000Y5.000000Z6.000000I0.000000J0.000000K0.000000\n"
                         "N000-00-01M19(CURVE END P1 boundary 1)\n"
                         "N000-00-01M19(CURVE START P1-Rosette)\n"
                         "N001-01-01M11(S1;P1-ROSETTE)\n"
                         "N001-01-01G01X7.000000Y8.000000Z9.000000I0.000000J0.000000K0.000000\n"
                         "N000-00-01M19(CURVE END P1-Rosette)\n"
                         "N000-00-01M19(CURVE START Line (1))\n"
                         "N001-01-01M11(S1;P1-2)\n"
                         "N001-01-01G01X7.000000Y8.000000Z9.500000I0.000000J0.000000K0.000000\n"
                         "N000-00-01M19(CURVE END Line (1))\n"
                         "N000-00-01M19(CONTOUR END P1)\n"
                         "N000-00-01M19(GROUP END P1)\n"
                         "N001-00-01M01\n"
                         "N000-00-01M19(GROUP START P2)\n"
                         "N000-00-01M19(GROUP START P2a)\n"
                         "N000-00-01M19(CONTOUR START )\n"
                         "N000-00-01M19(CURVE START )\n"
                         "N003-01-01M11(S1;P2;P2a-1)\n"
                         "N003-01-01G01X7.000000Y8.000000Z9.750000I0.000000J0.000000K0.000000\n"
                         "N000-00-01M19(CURVE END )\n"
                         "N000-00-01M19(CONTOUR END )\n"
                         "N000-00-01M19(GROUP END P2a)\n"
                         "N003-00-01M01\n"
                         "N000-00-01M19(GROUP END P2)\n"
                         "N003-00-01M01\n"
                         "N000-00-01M19(GROUP END S1)\n"
                         "N003-01-01M30\n";

const QByteArray nesting = "N000-00-01M19(Left wing,1-1,,TOOL0,NEW)\n"
                           "N000-00-01M19(UNITS=INCH)\n"
                           "N000-00-02M19(2-1)\n"
                           "N001-01-01M19(NESTSUBA=S1)\n"
                           "N001-01-01M19(NESTPART=P1)\n"
                           "N001-01-01M19(LAYUP=L1)\n"
                           "N001-01-01M19(MATERIAL=Glass, UD)\n"
                           "N001-01-01M19(DIRECTION=-33.3333)\n"
                           "N001-01-01M19(NESTROTATION=0;NONE)\n"
                           "I 1\n"
                           "first\n"
                           "N001-01-01M11(S1;P1;1)\n"
                           "N001-01-01G01X0.000000Y0.000000Z0.000000\n"
                           "N001-01-01M11(S1;P1;ROSETTE)\n"
                           "N001-01-01G01X1.000000Y2.000000Z3.000000\n"
                           "N001-01-01M11(S1;P1;2)\n"
                           "N001-01-01G01X4.000000Y5.000000Z6.000000\n"
                           "N001-00-01M01\n"
                           "N002-01-01M19(NESTSUBA=S1)\n"
                           "N002-01-01M19(NESTPART=P2)\n"
                           "N002-01-01M19(LAYUP=L1)\n"
                           "N002-01-01M19(MATERIAL=)\n"
                           "N002-01-01M19(DIRECTION=90)\n"
                           "N002-01-01M19(NESTROTATION=0;NONE)\n"
                           "N003-01-01M19(NESTSUBA=S1)\n"
                           "N003-01-01M19(NESTPART=P2a)\n"
                           "N003-01-01M19(LAYUP=L1)\n"
                           "N003-01-01M19(MATERIAL=)\n"
                           "N003-01-01M19(DIRECTION=1e-15)\n"
                           "N003-01-01M19(NESTROTATION=0;NONE)\n"
                           "N003-00-01M01\n"
                           "N003-00-01M01\n"
                           "N003-01-01M30\n";
} // namespace

void TestCheckNLines::readsPlainOutput()
{
    const QStringList held{u"part Left wing"_s,
                           u"projectors 2"_s,
                           u"4 target  projector 0 number 1 at 0 -1.5 2"_s,
                           u"5 target  projector 0 number 2 at 3 0 0.125"_s,
                           u"7 layer S1"_s,
                           u"8 ply P1 number 1 LABEL=S1;P1"_s,
                           u"10 information first"_s,
                           u"11 information second"_s,
                           u"12 literal # raw"_s,
                           u"13 part P1"_s,
                           u"15 curve boundary P1 boundary 1: 2 points #1"_s,
                           u"16 point 0 0 0 / 0 0 1"_s,
                           u"17 point 4 5 6 / 0 0 0"_s,
                           u"20 curve rosette P1-Rosette: 1 points #0"_s,
                           u"21 point 7 8 9 / 0 0 0"_s,
                           u"24 curve other Line (1): 1 points #2"_s,
                           u"25 point 7 8 9.5 / 0 0 0"_s,
                           u"27 end P1"_s,
                           u"28 end P1"_s,
                           u"30 layer P2 number 2"_s,
                           u"31 ply P2a number 3 LABEL=S1;P2;P2a"_s,
                           u"32 part "_s,
                           u"34 curve other: 1 points #1"_s,
                           u"35 point 7 8 9.75 / 0 0 0"_s,
                           u"37 end "_s,
                           u"38 end P2a"_s,
                           u"40 end P2"_s,
                           u"42 end S1"_s};
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")}) {
        const QByteArray bytes = QByteArray(plain).replace("\n", lineEnd);
        QVERIFY(CheckFormats::Recognise(u"part.PRT"_s, bytes) == CheckFormats::Find(u"general-scanning"_s));
        const CheckFile file = ReadChecked(u"general-scanning"_s, bytes);
        QCOMPARE(DumpFindings(file), QStringList());
        QCOMPARE(Dump(file), held);
    }
}

void TestCheckNLines::readsNestingOutput()
{
    const CheckFile file = ReadChecked(u"quilmon"_s, nesting);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file),
             QStringList({u"unit in"_s, u"part Left wing"_s,
                          u"4 ply P1 number 1 NESTSUBA=S1 NESTPART=P1 LAYUP=L1 MATERIAL=Glass, UD "
                          u"DIRECTION=-33.3333 LABEL=S1;P1"_s,
                          u"11 information first"_s, u"12 curve unknown: 1 points #1"_s, u"13 point 0 0 0"_s,
                          u"14 curve rosette: 1 points #0"_s, u"15 point 1 2 3"_s, u"16 curve unknown: 1 points #2"_s,
                          u"17 point 4 5 6"_s, u"18 end P1"_s,
                          u"19 layer P2 number 2 NESTSUBA=S1 NESTPART=P2 LAYUP=L1 MATERIAL= DIRECTION=90"_s,
                          u"25 ply P2a number 3 NESTSUBA=S1 NESTPART=P2a LAYUP=L1 MATERIAL= DIRECTION=1e-15"_s,
                          u"31 end P2a"_s, u"32 end P2"_s}));
}

void TestCheckNLines::readsEmptyJobs()
{
    const CheckFile file = ReadChecked(u"quilmon"_s, "N000-00-01M19(,1-1,,TOOL0,NEW)\nN000-00-02M19(2-1)\n"
                                                     "N000-01-01M30\n");
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList());
}

void TestCheckNLines::readsTextsWithLineEndsThatAreKnown()
{
    const QByteArray bytes = "N000-00-01M19(A\nB,1-1,,TOOL0,NEW)\n"
                             "N000-00-02M19(2-1)\n"
                             "N000-00-01M19(GROUP START A\nB)\n"
                             "I 1\n"
                             "one\ntwo\n"
                             "N000-00-01M19(\n\n"
                             "N000-00-01M19(GROUP END A\nB)\n"
                             "N001-00-01M01\n"
                             "N001-01-01M30\n";
    CheckKnownTexts known;
    known.withLineEnds = {"A\nB", "one\ntwo"};
    known.literals = {"N000-00-01M19(\n"};
    CheckFile file;
    CheckFormats::Find(u"quilmon"_s)->read(bytes, known, file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"part A\nB"_s, u"4 ply A\nB number 1"_s, u"7 information one\ntwo"_s,
                                      u"9 literal N000-00-01M19(\n"_s, u"11 end A\nB"_s}));
}

void TestCheckNLines::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const auto change = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        row(name, Replaced(plain, before, after), findings);
    };
    const auto nest = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        row(name, Replaced(nesting, before, after), findings);
    };
    row("empty file", "", {u"1: error: the file ends too early: expected the line of the program's end (M30)"_s});
    row("no end", "N000-00-01M19(,1-1,,TOOL0,NEW)\nN000-00-02M19(2-1)\n",
        {u"2: error: the file ends too early: expected the line of the program's end (M30)"_s});
    row("cut end", plain.chopped(1), {u"43: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", plain + "x\n",
        {u"44: error: expected nothing behind the line of the program's end (M30), found \"x\""_s});
    change(
        "head", "TOOL0", "TOOL1",
        {u"1: error: expected \"N000-00-01M19(NAME,1-1,,TOOL0,NEW)\", found \"N000-00-01M19(Left wing,1-1,,TOOL1,NEW)\""_s});
    nest("unit", "INCH", "CM", {u"2: error: expected \"INCH\" or \"MM\", found \"CM\""_s});
    nest("no unit", "N000-00-01M19(UNITS=INCH)\n", "",
         {u"3: error: expected the unit of the data (UNITS) ahead of it, found \"N001-01-01M19(NESTSUBA=S1)\""_s});
    nest("no begin of the part", "N000-00-02M19(2-1)\n", "",
         {u"3: error: expected \"N000-00-02M19(2-1)\", found \"N001-01-01M19(NESTSUBA=S1)\""_s});
    change(
        "no title of the targets", "N000-00-00M17(CALIBRATION TARGETS)\n", "",
        {u"3: error: expected \"N000-00-00M17(CALIBRATION TARGETS)\", found \"N000-01-01G07X0.000000Y-1.500000Z2.00000...\""_s});
    change("target", "X3.000000", "X3,000000",
           {u"5: error: expected a number with 6 decimals, found \"3,000000Y0.000000Z0.125000\""_s});
    change("number of a target", "N000-01-02G07", "N000-01-03G07", {u"5: error: expected target 2, found 3"_s});
    change("projector of a target", "N000-01-02G07", "N000-02-02G07",
           {u"5: error: expected \"N000-01-\", found \"N000-02-02G07X3.000000Y0.000000Z0.125000\""_s});
    change("projector", "N000-02-00M02", "N000-03-00M02",
           {u"6: error: expected \"N000-02-00M02\", found \"N000-03-00M02\""_s});
    change("line end behind a projector", "N000-01-00M02", "N000-01-00M02\n",
           {u"6: error: expected the next line behind the end of the projector, found \"\""_s});
    change("no end of the projectors", "N000-01-00M02N000-02-00M02", "",
           {u"6: error: expected the end of the projector (M02), found \"N000-00-02M19(2-1)\""_s});
    change("fewer texts", "I 2", "I 5", {u"9: error: P1: announces 5 texts and holds 3"_s});
    nest("fewer texts in nesting", "I 1", "I 2", {u"10: error: P1: announces 2 texts and holds 1"_s});
    change("text elsewhere", "N000-00-01M19(CURVE END P1 boundary 1)\n", "x\nN000-00-01M19(CURVE END P1 boundary 1)\n",
           {u"18: error: P1: expected an N-line, found \"x\""_s});
    change(
        "not a number", "X4.000000", "Xnan",
        {u"17: error: P1: expected a number with 6 decimals, found \"nanY5.000000Z6.000000I0.000000J0.000000K...\""_s});
    change("half a normal", "Z6.000000I0.000000J0.000000K0.000000", "Z6.000000I0.000000J0.000000",
           {u"17: error: P1: expected \"K\", found \"\""_s});
    change("no normal", "Z6.000000I0.000000J0.000000K0.000000", "Z6.000000",
           {u"17: error: P1: expected \"I\", found \"\""_s});
    nest("one normal", "Z6.000000", "Z6.000000I0.000000J0.000000K0.000000",
         {u"17: error: P1: expected the end of the line, found \"I0.000000J0.000000K0.000000\""_s});
    change("ply of a point", "N001-01-01G01X4", "N002-01-01G01X4",
           {u"17: error: P1: expected \"N001-01-01G01X\", found \"N002-01-01G01X4.000000Y5.000000Z6.000000...\""_s});
    change("ply of a curve", "N001-01-01M11(S1;P1-2)\nN001-01-01G01X7", "N002-01-01M11(S1;P1-2)\nN002-01-01G01X7",
           {u"24: error: expected the number of the plies so far, 1, found 2"_s,
            u"29: error: expected the number of the plies so far, 2, found 1"_s});
    change("no end of a ply", "N001-00-01M01\n", "",
           {u"15: error: expected the number of the plies so far, 0, found 1"_s});
    nest("number of a ply", "N001-00-01M01", "N002-00-01M01", {u"18: error: expected the ply 1, found 2"_s});
    nest("number at the end", "N003-01-01M30", "N004-01-01M30", {u"33: error: expected the ply 3, found 4"_s});
    nest("number at the begin", "N001-00-01M01\nN002-01-01M19(NESTSUBA", "N001-00-01M01\nN003-01-01M19(NESTSUBA",
         {u"19: error: expected the ply N002, found \"N003-01-01M19(NESTSUBA=S1)\""_s,
          u"20: error: expected \"N003-01-01M19(NESTPART=...)\", found \"N002-01-01M19(NESTPART=P2)\""_s,
          u"21: error: expected \"N003-01-01M19(LAYUP=...)\", found \"N002-01-01M19(LAYUP=L1)\""_s,
          u"22: error: expected \"N003-01-01M19(MATERIAL=...)\", found \"N002-01-01M19(MATERIAL=)\""_s,
          u"23: error: expected \"N003-01-01M19(DIRECTION=...)\", found \"N002-01-01M19(DIRECTION=90)\""_s,
          u"24: error: expected \"N003-01-01M19(NESTROTATION=0;NONE)\", found \"N002-01-01M19(NESTROTATION=0;NONE)\""_s,
          u"25: error: expected the ply N004, found \"N003-01-01M19(NESTSUBA=S1)\""_s});
    change("number of a curve", "S1;P1-2)", "S1;P1-3)",
           {u"24: error: P1: expected the curve 2, or ROSETTE, found \"3\""_s});
    change("label of a curve", "S1;P1-2)", "S1;P2-2)", {u"24: error: P1: expected \"S1;P1\", found \"S1;P2\""_s});
    change(
        "no head of a curve", "N001-01-01M11(S1;P1-2)\n", "",
        {u"24: error: P1: expected the head of a curve (M11), found \"N001-01-01G01X7.000000Y8.000000Z9.500000...\""_s,
         u"24: error: P1: expected the head of a curve (M11), found \"N001-01-01G01X7.000000Y8.000000Z9.500000...\""_s});
    change("no begin of a curve", "N000-00-01M19(CURVE START Line (1))\n", "",
           {u"23: error: P1: expected the begin of a curve, found \"N001-01-01M11(S1;P1-2)\""_s,
            u"25: error: P1: expected the end of the curve \"\", found \"N000-00-01M19(CURVE END Line (1))\""_s});
    change("curve not ended", "N000-00-01M19(CURVE END Line (1))\n", "",
           {u"26: error: P1: expected the end of the curve \"Line (1)\", found \"N000-00-01M19(CONTOUR END P1)\""_s});
    change(
        "other name at the end of a curve", "CURVE END Line (1)", "CURVE END Line (2)",
        {u"26: error: P1: expected the end of the curve \"Line (1)\", found \"N000-00-01M19(CURVE END Line (2))\""_s});
    change("contour not ended", "N000-00-01M19(CONTOUR END P1)\n", "",
           {u"27: error: P1: expected the end of \"P1\", begun in line 13, found \"N000-00-01M19(GROUP END P1)\""_s});
    change("no begin of a contour", "N000-00-01M19(CONTOUR START P1)\n", "",
           {u"13: error: P1: expected the begin of a contour, found \"N000-00-01M19(CURVE START P1 boundary 1)\""_s,
            u"18: error: P1: expected the begin of a contour, found \"N000-00-01M19(CURVE START P1-Rosette)\""_s,
            u"22: error: P1: expected the begin of a contour, found \"N000-00-01M19(CURVE START Line (1))\""_s,
            u"26: error: P1: expected the end of \"P1\", begun in line 8, found \"N000-00-01M19(CONTOUR END P1)\""_s});
    change("group not ended", "N000-00-01M19(GROUP END S1)\n", "",
           {u"42: error: expected the end of \"S1\", begun in line 7, found \"N003-01-01M30\""_s});
    change(
        "bracket", "CONTOUR END P1)", "CONTOUR END P1",
        {u"27: error: P1: expected the begin or the end of a group, contour or curve, found \"N000-00-01M19(CONTOUR END P1\""_s,
         u"28: error: P1: expected the end of \"P1\", begun in line 13, found \"N000-00-01M19(GROUP END P1)\""_s});
    nest("bracket in nesting", "N001-01-01M11(S1;P1;1)\n", "N000-00-01M19(CONTOUR START P1)\nN001-01-01M11(S1;P1;1)\n",
         {u"12: error: P1: expected no brackets in data for nesting, found \"N000-00-01M19(CONTOUR START P1)\""_s});
    nest("direction", "-33.3333", "north",
         {u"8: error: expected an angle in degrees, found \"N001-01-01M19(DIRECTION=north)\""_s});
    nest("direction that is no number", "-33.3333", "nan",
         {u"8: error: expected an angle in degrees, found \"N001-01-01M19(DIRECTION=nan)\""_s});
    nest("no direction", "N001-01-01M19(DIRECTION=-33.3333)\n", "", {u"8: warning: the ply has no direction"_s});
    nest(
        "rotation", "0;NONE", "90;NONE",
        {u"9: error: P1: expected \"N001-01-01M19(NESTROTATION=0;NONE)\", found \"N001-01-01M19(NESTROTATION=90;NONE)\""_s});
    nest("ply ended twice", "N001-00-01M01\n", "N001-00-01M01\nN001-00-01M01\n",
         {u"19: error: expected no end of a ply, because none is open, found \"N001-00-01M01\""_s});
    nest("ply not ended", "N003-00-01M01\nN003-00-01M01\n", "N003-00-01M01\n",
         {u"32: error: expected the end of \"P2\", begun in line 19, found \"N003-01-01M30\""_s});
}

void TestCheckNLines::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"quilmon"_s, bytes)), findings);
}

void TestCheckNLines::findsDamageOfEachLine()
{
    // Texts may be anything, and literals make up for a missing one. Points aren't counted, and without the head of a
    // curve they belong to the one ahead.
    const auto make = [](const QByteArray& bytes, const QList<std::pair<QString, int>>& places) {
        const QStringList lines = QString::fromUtf8(bytes).split(u'\n');
        QStringList silent;
        for (const auto& [kind, line] : places)
            silent.append(u"%1 %2: "_s.arg(kind).arg(line) + lines[line - 1]);
        return silent;
    };
    const QString without = u"without"_s;
    const QString wrong = u"wrong"_s;
    QCOMPARE(FindSilentDamage(u"quilmon"_s, plain), make(plain, {{without, 5},
                                                                 {without, 9},
                                                                 {wrong, 9},
                                                                 {without, 10},
                                                                 {wrong, 10},
                                                                 {without, 11},
                                                                 {wrong, 11},
                                                                 {without, 12},
                                                                 {wrong, 12},
                                                                 {without, 16},
                                                                 {without, 17},
                                                                 {without, 21},
                                                                 {without, 25},
                                                                 {without, 35}}));
    QCOMPARE(FindSilentDamage(u"quilmon"_s, nesting), make(nesting, {{without, 10},
                                                                     {wrong, 10},
                                                                     {wrong, 11},
                                                                     {without, 13},
                                                                     {without, 14},
                                                                     {without, 15},
                                                                     {without, 16},
                                                                     {without, 17}}));
}

QTEST_APPLESS_MAIN(TestCheckNLines)
#include "TestCheckNLines.moc"
