// The reader of DXF files, on a whole file and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckDxf : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void readsTextsWithLineEndsThatAreKnown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void findsDamageOfEachLine();
};

namespace
{
/*! Pairs, told as "CODE VALUE" with a comma between them. */
QByteArray MakePairs(const QByteArray& pairs)
{
    QByteArray lines;
    for (const QByteArray& pair : pairs.split(',')) {
        const qsizetype blank = pair.indexOf(' ');
        lines += "  " + pair.first(blank) + '\n' + pair.sliced(blank + 1) + '\n';
    }
    return lines;
}

/*! Lines 1 to 88. */
const QByteArray head = MakePairs(
    "0 SECTION,2 HEADER,9 $INSUNITS,70 4,9 $EXTMAX,10 200.000000,20 100.000000,9 $EXTMIN,10 0.000000,20 0.000000,"
    "9 $LIMMAX,10 200.000000,20 100.000000,9 $LIMMIN,10 0.000000,20 0.000000,0 ENDSEC,"
    "0 SECTION,2 TABLES,0 TABLE,2 LTYPE,70 1,0 LTYPE,2 CONTINUOUS,70 64,3 Solid line,72 65,73 0,40 0.000000,0 ENDTAB,"
    "0 TABLE,2 LAYER,70 1,0 LAYER,2 0,70 0,62 1,6 CONTINUOUS,0 ENDTAB,0 ENDSEC,0 SECTION,2 ENTITIES");
const QByteArray text = MakePairs("0 TEXT,8 5,62 6,10 1.000000,20 2.000000,30 3.000000,40 50.000000,1 Left wing");
const QByteArray polylineHead = MakePairs("0 POLYLINE,8 1,6 3,62 2,39 0,10 0.000000,20 0.000000,30 0.000000,66 1,70 9");
const QByteArray vertex = MakePairs("0 VERTEX,8 1,62 2,10 -1.500000,20 2.000000,30 0.125000");
const QByteArray vertex2 = MakePairs("0 VERTEX,8 1,62 2,10 4.000000,20 5.000000,30 6.000000");
const QByteArray rosette = MakePairs("0 POLYLINE,8 4,6 3,62 2,39 0,10 0.000000,20 0.000000,30 0.000000,66 1,70 8,"
                                     "0 VERTEX,8 4,62 2,10 7.000000,20 8.000000,30 9.000000,0 SEQEND");
const QByteArray end = MakePairs("0 ENDSEC,0 EOF");

/*! The text from line 85 on, the polyline from 101, its vertices from 121 and 133, the rosette from 147, the end from
 *  181. */
const QByteArray drawing = head + text + polylineHead + vertex + vertex2 + MakePairs("0 SEQEND") + rosette + end;
} // namespace

void TestCheckDxf::readsEachRecord()
{
    QCOMPARE(head.count('\n'), 84);
    QCOMPARE(drawing.count('\n'), 184);
    const QStringList held{u"85 text Left wing 1 2 3 50 #5 #6"_s,
                           u"101 curve unknown: 2 points, closed #1 #3 #2 #9"_s,
                           u"121 point -1.5 2 0.125"_s,
                           u"133 point 4 5 6"_s,
                           u"147 curve rosette: 1 points, open #4 #3 #2 #8"_s,
                           u"167 point 7 8 9"_s};
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")}) {
        const QByteArray bytes = QByteArray(drawing).replace("\n", lineEnd);
        QVERIFY(CheckFormats::Recognise(u"part"_s, bytes) == CheckFormats::Find(u"dxf"_s));
        const CheckFile file = ReadChecked(u"dxf"_s, bytes);
        QCOMPARE(DumpFindings(file), QStringList());
        QCOMPARE(Dump(file), QStringList(u"unit mm"_s) + held);
    }
    const CheckFile empty = ReadChecked(u"dxf"_s, QByteArray(head).replace("  70\n4\n", "  70\n1\n") + end);
    QCOMPARE(DumpFindings(empty), QStringList());
    QCOMPARE(Dump(empty), QStringList(u"unit in"_s));
}

void TestCheckDxf::readsTextsWithLineEndsThatAreKnown()
{
    CheckKnownTexts known;
    known.withLineEnds = {"Left\n  0\nENDSEC\nwing"};
    CheckFile file;
    CheckFormats::Find(u"dxf"_s)->read(QByteArray(drawing).replace("Left wing", "Left\n  0\nENDSEC\nwing"), known,
                                       file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(file.texts.front().text, u"Left\n  0\nENDSEC\nwing"_s);
}

void TestCheckDxf::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const auto change = [&](const char* name, const QByteArray& before, const QByteArray& after,
                            const QStringList& findings) { row(name, Replaced(drawing, before, after), findings); };
    row("empty file", "", {u"1: error: the file ends too early: expected \"EOF\""_s});
    row("no end", head, {u"84: error: the file ends too early: expected \"EOF\""_s});
    row("half an end", head + MakePairs("0 ENDSEC"), {u"86: error: the file ends too early: expected \"EOF\""_s});
    row("cut end", drawing.chopped(1), {u"184: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", drawing + "x\n", {u"185: error: expected nothing behind \"EOF\", found \"x\""_s});
    change("unit", "  70\n4\n", "  70\n5\n", {u"8: error: expected the unit 1 (inches) or 4 (mm), found 5"_s});
    change("no unit", "  70\n4\n", "  70\nmm\n", {u"8: error: expected a whole number, found \"mm\""_s});
    change("head", "  20\n100.000000\n", "  20\n200.000000\n",
           {u"14: error: expected \"100.000000\", found \"200.000000\""_s});
    change("missing pair of the head", "  2\nTABLES\n", "",
           {u"37: error: expected the group code \"  2\", found \"  0\""_s});
    change("other entity", "POLYLINE", "LINE",
           {u"102: error: expected \"POLYLINE\", \"TEXT\" or \"ENDSEC\", found \"LINE\""_s});
    change("code", "  66\n", "  67\n", {u"117: error: expected the group code \"  66\", found \"  67\""_s});
    change("code without blanks", "  66\n", "66\n", {u"117: error: expected the group code \"  66\", found \"66\""_s});
    change("layer", "POLYLINE\n  8\n1\n", "POLYLINE\n  8\none\n",
           {u"104: error: expected a whole number, found \"one\""_s});
    change("layer of a vertex", "VERTEX\n  8\n1\n", "VERTEX\n  8\n2\n", {u"124: error: expected \"1\", found \"2\""_s});
    change("not a number", "-1.500000", "nan", {u"128: error: expected a number with 6 decimals, found \"nan\""_s});
    change("comma", "-1.500000", "-1,500000",
           {u"128: error: expected a number with 6 decimals, found \"-1,500000\""_s});
    change("decimals", "-1.500000", "-1.50000",
           {u"128: error: expected a number with 6 decimals, found \"-1.50000\""_s});
    change("behind a number", "-1.500000", "-1.500000 ", {u"128: error: expected the end of the line, found \" \""_s});
    change("missing number", "  10\n-1.500000\n", "",
           {u"127: error: expected the group code \"  10\", found \"  20\""_s});
    change("flags", "  70\n9\n", "  70\n2\n",
           {u"120: error: expected the flags 0, 1, 8 or 9, found 2"_s,
            u"166: error: expected flags as those of the polylines ahead, found 8"_s});
    change("flags of space", "  70\n8\n", "  70\n0\n",
           {u"166: error: expected flags as those of the polylines ahead, found 0"_s});
    change("polyline not ended", "  0\nSEQEND\n", "", {u"146: error: expected \"VERTEX\", found \"POLYLINE\""_s});
    change("line end in a text", "Left wing\n", "Left\nwing\n",
           {u"101: error: expected the group code \"  0\", found \"wing\""_s});
}

void TestCheckDxf::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"dxf"_s, bytes)), findings);
}

void TestCheckDxf::findsDamageOfEachLine()
{
    QCOMPARE(FindSilentDamage(u"dxf"_s, drawing), QStringList(u"wrong 100: Left wing"_s));
}

QTEST_APPLESS_MAIN(TestCheckDxf)
#include "TestCheckDxf.moc"
