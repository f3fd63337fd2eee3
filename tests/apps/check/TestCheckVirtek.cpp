// The reader of Virtek part files and of calibration files, on whole files and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckVirtek : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void readsTextsWithLineEndsThatAreKnown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void readsCalibrationFiles();
    void tellsWhatIsWrongWithCalibrationFiles_data();
    void tellsWhatIsWrongWithCalibrationFiles();
};

void TestCheckVirtek::readsEachRecord()
{
    const QByteArray bytes = "LAYER START Layup 1\n"
                             "START P 1\n"
                             "P 2\n"
                             "0.000000 -1.500000 2.000000   0.000000 0.000000 1.000000\n"
                             "3.000000 0.000000 0.125000\n"
                             "I 2\n"
                             "first\n"
                             "\n"
                             "L 1\n"
                             "END of shift\n"
                             "G 0 logo.bmp\n"
                             "Q 1\n"
                             "Is  there?\n"
                             "# raw\n"
                             "T 3 P1 x\n"
                             "10.000000 20.000000 0.000000\n"
                             "22.500000 20.000000 0.000000\n"
                             "10.000000 21.000000 0.000000\n"
                             "END P 1\n"
                             "LAYER END Layup 1\n"
                             "EOD\n";
    const QStringList held{u"1 layer Layup 1"_s,
                           u"2 ply P 1"_s,
                           u"3 curve unknown: 2 points"_s,
                           u"4 point 0 -1.5 2 / 0 0 1"_s,
                           u"5 point 3 0 0.125"_s,
                           u"7 information first"_s,
                           u"8 information "_s,
                           u"9 message END of shift"_s,
                           u"11 graphic logo.bmp"_s,
                           u"12 query Is  there?"_s,
                           u"14 literal # raw"_s,
                           u"15 text P1 x 10 20 0 22.5 20 0 10 21 0"_s,
                           u"19 end P 1"_s,
                           u"20 end Layup 1"_s};
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")}) {
        const CheckFile file = ReadChecked(u"virtek"_s, QByteArray(bytes).replace("\n", lineEnd));
        QCOMPARE(DumpFindings(file), QStringList());
        QCOMPARE(Dump(file), held);
    }
}

void TestCheckVirtek::readsTextsWithLineEndsThatAreKnown()
{
    const QByteArray bytes = "START A\nB\n"
                             "I 1\n"
                             "one\ntwo\n"
                             "P 1\n1 2 3\n"
                             "P 1\n4 5 6\n"
                             "END A\nB\n"
                             "EOD\n";
    CheckKnownTexts known;
    known.withLineEnds = {"A\nB", "one\ntwo"};
    known.literals = {"P 1\n1 2 3"};
    CheckFile file;
    CheckFormats::Find(u"virtek"_s)->read(bytes, known, file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"1 ply A\nB"_s, u"4 information one\ntwo"_s, u"6 literal P 1\n1 2 3"_s,
                                      u"8 curve unknown: 1 points"_s, u"9 point 4 5 6"_s, u"10 end A\nB"_s}));
}

void TestCheckVirtek::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    row("empty file", "", {u"1: error: the file ends too early: expected \"EOD\""_s});
    row("no end", "START A\nEND A\n", {u"2: error: the file ends too early: expected \"EOD\""_s});
    row("cut end", "START A\nEND A\nEO",
        {u"3: error: expected the begin of a layer or of a ply, found \"EO\""_s,
         u"3: error: the file ends too early: expected \"EOD\""_s});
    row("cut line end", "START A\nEND A\nEOD", {u"3: error: the file ends too early: expected the end of the line"_s});
    row("cut within a ply", "START A\nP 2\n0 0 0\n",
        {u"2: error: A: announces 2 points and holds 1"_s,
         u"3: error: A: the file ends too early: expected \"EOD\""_s});
    row("behind the end", "EOD\nSTART A\n", {u"2: error: expected nothing behind \"EOD\", found \"START A\""_s});
    row("fewer points", "START A\nP 3\n0 0 0\n1 0 0\nEND A\nEOD\n", {u"2: error: A: announces 3 points and holds 2"_s});
    row("more points", "START A\nP 1\n0 0 0\n1 0 0\n2 0 0\nEND A\nEOD\n",
        {u"4: error: A: more points than line 2 announces"_s});
    row("no count", "START A\nP x\n0 0 0\n1 0 0\nEND A\nEOD\n",
        {u"2: error: A: expected a count behind \"P\", found \"P x\""_s});
    row("a count beyond all", "START A\nP 99999999999\n0 0 0\nEND A\nEOD\n",
        {u"2: error: A: expected a count behind \"P\", found \"P 99999999999\""_s});
    row("points without a head", "START A\n0 0 0\nEND A\nEOD\n",
        {u"2: error: A: expected a record of the ply, found \"0 0 0\""_s});
    row("not a number", "START A\nP 2\n0 nan 0\n1 0 1e5\nEND A\nEOD\n",
        {u"3: error: A: expected a number, found \"nan\""_s, u"4: error: A: expected a number, found \"1e5\""_s});
    row("no number at all", "START A\nP 2\n-nan 0 0\ninf 0 0\nEND A\nEOD\n",
        {u"3: error: A: expected a number, found \"-nan\""_s, u"4: error: A: expected a number, found \"inf\""_s});
    row("comma", "START A\nP 1\n0,5 0 0\nEND A\nEOD\n", {u"3: error: A: expected a number, found \"0,5\""_s});
    row("columns", "START A\nP 1\n0 0 0 1\nEND A\nEOD\n",
        {u"3: error: A: expected three numbers of a point, or six with its normal, found \"0 0 0 1\""_s});
    row("fewer texts", "START A\nI 2\none\nEND A\nEOD\n", {u"2: error: A: announces 2 texts and holds 1"_s});
    row("no text", "START A\nL 1\nEND A\nEOD\n", {u"2: error: A: expected a text behind it, found none"_s});
    row("points of a text", "START A\nT 3 x\n0 0 0\nEND A\nEOD\n",
        {u"4: error: A: expected three numbers of a point of the text in line 2, found \"END A\""_s});
    row("outside a ply", "P 1\nEOD\n", {u"1: error: expected the begin of a layer or of a ply, found \"P 1\""_s});
    row("ply in a ply", "START A\nSTART B\nEND B\nEOD\n",
        {u"2: error: A: expected the end of \"A\", begun in line 1, found \"START B\""_s});
    row("ply not ended", "LAYER START S\nSTART A\nLAYER END S\nEOD\n",
        {u"3: error: A: expected the end of \"A\", begun in line 2, found \"LAYER END S\""_s});
    row("wrong name at an end", "LAYER START S\nSTART A\nEND B\nLAYER END S\nEOD\n",
        {u"3: error: A: expected the end of \"A\", begun in line 2, found \"END B\""_s});
    row("wrong name at the end of a layer", "LAYER START S\nLAYER END T\nEOD\n",
        {u"2: error: expected the end of \"S\", begun in line 1, found \"LAYER END T\""_s});
    row("layer not ended", "LAYER START S\nEOD\n",
        {u"2: error: expected the end of \"S\", begun in line 1, found \"EOD\""_s});
    row("end without begin", "END A\nEOD\n", {u"1: error: nothing is open that \"END A\" could end"_s});
    row("line end in a name", "START A\nB\nEND A\nB\nEOD\n",
        {u"4: error: expected the begin of a layer or of a ply, found \"B\""_s});
    row("bytes that can't be shown", QByteArray("\0\x01\xff!\n", 5) + "EOD\n",
        {u"1: error: expected the begin of a layer or of a ply, found \"\\x00\\x01\uFFFD!\""_s});
}

void TestCheckVirtek::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"virtek"_s, bytes)), findings);
}

void TestCheckVirtek::readsCalibrationFiles()
{
    const CheckFile file = ReadChecked(u"calibration"_s, "2\nT TE1 D 1.000000 2.000000 -3.500000\nT 1 0.0 0.0 0.0\n0\n"
                                                         "1\nT D 4.0 5.0 6.0\n");
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"projectors 3"_s, u"2 target TE1 drift projector 0 at 1 2 -3.5"_s,
                                      u"3 target 1 projector 0 at 0 0 0"_s, u"6 target D projector 2 at 4 5 6"_s}));
}

void TestCheckVirtek::tellsWhatIsWrongWithCalibrationFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    row("empty file", "", {u"1: error: the file ends too early: expected the count of a projector's targets"_s});
    row("fewer targets", "2\nT a 1 2 3\n", {u"1: error: announces 2 targets and holds 1"_s});
    row("more targets", "1\nT a 1 2 3\nT b 1 2 3\n1\nT c 1 2 3\n", {u"1: error: announces 1 targets and holds 2"_s});
    row("cut number", "1\nT a 1.0 2.0 3.",
        {u"2: error: expected a number, found \"3.\""_s,
         u"2: error: the file ends too early: expected the end of the line"_s});
    row("no count", "T a 1 2 3\n",
        {u"1: error: expected the count of a projector's targets, found \"T a 1 2 3\""_s,
         u"1: error: the file ends too early: expected the count of a projector's targets"_s});
    row("no number", "1\nT a 1 x 3\n", {u"2: error: expected a number, found \"x\""_s});
    row("columns", "1\nT a b 1 2 3\n",
        {u"2: error: expected \"T\", a name and three numbers, found \"T a b 1 2 3\""_s});
    row("other lines", "0\nx\n", {u"2: error: expected a count of targets, or a target, found \"x\""_s});
}

void TestCheckVirtek::tellsWhatIsWrongWithCalibrationFiles()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"calibration"_s, bytes)), findings);
}

QTEST_APPLESS_MAIN(TestCheckVirtek)
#include "TestCheckVirtek.moc"
