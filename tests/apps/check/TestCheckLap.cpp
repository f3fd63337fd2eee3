// The reader of LAP projection files, on a whole file and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckLap : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void tellsKindsOfCurvesByTheEndsOfTheirNames();
    void readsTextsWithLineEndsThatAreKnown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
};

namespace
{
const QByteArray head = "#switch to red if any error occurs\n"
                        "ALERT red\n"
                        "#Identification\n"
                        "ID_START\n"
                        "ID_SYNTAX \"1.5\"\n"
                        "ID_END\n"
                        "#Source: Shop\n"
                        "PROJECTION_SCALE in\n"
                        "PROJECTION_START \"Projection\"\n"
                        "DRAWING_START \"Left \"wing\"\"\n";
const QByteArray end = "DRAWING_END\nPROJECTION_END\n";

/*! A group with one entity of two points: lines 11 to 18 behind the head. */
const QByteArray group = "GROUP_START \"P1\"\n"
                         "GROUP_COLOR Green\n"
                         "ENTITY_START \"P1 boundary 1\"\n"
                         "ENTITY_COLOR Green\n"
                         "0.000 -1.500 2.000   0.000 0.000 1.000\n"
                         "3.000 0.000 0.125\n"
                         "ENTITY_END\n"
                         "GROUP_END\n";
} // namespace

void TestCheckLap::readsEachRecord()
{
    const CheckFile file = ReadChecked(u"lap"_s, head + "LAYER_START \"S1\"\nLAYER_COLOR Green\n" + group +
                                                     "# raw\nLAYER_END\nGROUP_START \"\"\nGROUP_COLOR Green\n"
                                                     "ENTITY_START \"P2-Rosette\"\nENTITY_COLOR Green\nENTITY_END\n"
                                                     "ENTITY_START \"P2-Seedcurve\"\nENTITY_COLOR Green\nENTITY_END\n"
                                                     "ENTITY_START \"Line\"\nENTITY_COLOR Green\nENTITY_END\n"
                                                     "GROUP_END\n" +
                                                     end);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file),
             QStringList({u"unit in"_s, u"part Left \"wing\""_s, u"11 layer S1"_s, u"13 ply P1"_s,
                          u"15 curve boundary P1 boundary 1: 2 points"_s, u"17 point 0 -1.5 2 / 0 0 1"_s,
                          u"18 point 3 0 0.125"_s, u"20 end P1"_s, u"21 literal # raw"_s, u"22 end S1"_s, u"23 ply "_s,
                          u"25 curve rosette P2-Rosette: 0 points"_s, u"28 curve seedcurve P2-Seedcurve: 0 points"_s,
                          u"31 curve other Line: 0 points"_s, u"34 end "_s}));
}

void TestCheckLap::tellsKindsOfCurvesByTheEndsOfTheirNames()
{
    const QList<QPair<QByteArray, QString>> names{{"P1 boundary 12", u"boundary"_s},
                                                  {"P1 flat contour 1", u"boundary"_s},
                                                  {"at P1 boundary 2 contour 1", u"other"_s},
                                                  {"no flat contour here contour 1", u"other"_s},
                                                  {"P1 boundary x", u"other"_s}};
    for (const auto& [name, kind] : names) {
        const CheckFile file = ReadChecked(u"lap"_s, head + QByteArray(group).replace("P1 boundary 1", name) + end);
        QVERIFY(Dump(file).contains(u"13 curve %1 %2: 2 points"_s.arg(kind, QString::fromUtf8(name))));
    }
}

void TestCheckLap::readsTextsWithLineEndsThatAreKnown()
{
    CheckKnownTexts known;
    known.withLineEnds = {"S\n1"};
    known.literals = {"LAYER_END"};
    CheckFile file;
    CheckFormats::Find(u"lap"_s)->read(
        head + "LAYER_START \"S\n1\"\nLAYER_COLOR Green\nLAYER_END\nLAYER_END\nLAYER_END\n" + end, known, file);
    // Each line that is a known literal is taken for it, so that the layer isn't ended.
    QCOMPARE(DumpFindings(file),
             QStringList(u"17: error: expected the end of \"S\n1\", begun in line 11, found \"DRAWING_END\""_s));
    QCOMPARE(file.parameters.size(), 3);
}

void TestCheckLap::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    row("empty file", "", {u"1: error: the file ends too early: expected \"DRAWING_END\""_s});
    row("no end", head + group, {u"18: error: the file ends too early: expected \"DRAWING_END\""_s});
    row("half an end", head + "DRAWING_END\n", {u"11: error: the file ends too early: expected \"PROJECTION_END\""_s});
    row("a wrong end", head + "DRAWING_END\nx\n", {u"12: error: expected \"PROJECTION_END\", found \"x\""_s});
    row("cut end", (head + end).chopped(1), {u"12: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", head + end + "x\n",
        {u"13: error: expected nothing behind \"PROJECTION_END\", found \"x\""_s});
    row("unit", QByteArray(head).replace("SCALE in", "SCALE ft") + end,
        {u"8: error: expected the unit mm or in, found \"ft\""_s});
    row("missing line of the head", QByteArray(head).replace("ID_END\n", "") + end,
        {u"7: error: expected \"ID_END\", found \"PROJECTION_SCALE in\""_s});
    row("wrong line of the head", QByteArray(head).replace("ID_END\n", "ID_EDN\n") + end,
        {u"6: error: expected \"ID_END\", found \"ID_EDN\""_s});
    row("name of the drawing", QByteArray(head).replace("\"\"\n", "\n") + end,
        {u"10: error: expected a name in double quotes, found \"DRAWING_START \"Left \"wing\""_s});
    row("name in two lines", head + "LAYER_START \"S\n1\"\nLAYER_COLOR Green\nLAYER_END\n" + end,
        {u"11: error: expected a name in double quotes, found \"LAYER_START \"S\""_s,
         u"12: error: expected \"LAYER_COLOR\", found \"1\"\""_s});
    row("no colour", head + QByteArray(group).replace("GROUP_COLOR Green\n", "") + end,
        {u"12: error: P1: expected \"GROUP_COLOR\", found \"ENTITY_START \"P1 boundary 1\"\""_s});
    row("entity outside a group", head + "ENTITY_START \"a\"\nENTITY_COLOR Green\nENTITY_END\n" + end,
        {u"11: error: expected \"GROUP_START\", found \"ENTITY_START \"a\"\""_s});
    row("entity not ended", head + QByteArray(group).replace("ENTITY_END\n", "") + end,
        {u"17: error: P1: expected a point or \"ENTITY_END\", found \"GROUP_END\""_s});
    row("group not ended", head + QByteArray(group).replace("GROUP_END\n", "") + end,
        {u"18: error: P1: expected the end of \"P1\", begun in line 11, found \"DRAWING_END\""_s});
    row("group in a group", head + QByteArray(group).replace("GROUP_END\n", "") + group + end,
        {u"18: error: P1: expected the end of \"P1\", begun in line 11, found \"GROUP_START \"P1\"\""_s});
    row("text in a group", head + QByteArray(group).replace("GROUP_END\n", "x\nGROUP_END\n") + end,
        {u"18: error: P1: expected the begin of an entity or the end of the group, found \"x\""_s});
    row("point outside an entity", head + "1.0 2.0 3.0\n" + end,
        {u"11: error: expected the begin or the end of a layer or of a group, found \"1.0 2.0 3.0\""_s});
    row("not a number", head + QByteArray(group).replace("3.000", "3.0x0") + end,
        {u"16: error: P1: expected a number, found \"3.0x0\""_s});
    row("ends without begin", head + "LAYER_END\n" + end,
        {u"11: error: nothing is open that \"LAYER_END\" could end"_s});
}

void TestCheckLap::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"lap"_s, bytes)), findings);
}

QTEST_APPLESS_MAIN(TestCheckLap)
#include "TestCheckLap.moc"
