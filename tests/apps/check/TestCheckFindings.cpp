// What is doubtful in a file that is right in its syntax: one file for each finding, and files that nothing is said of.

#include "CheckDump.h"
#include "CheckReport.h"

#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

class TestCheckFindings : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatIsDoubtful_data();
    void tellsWhatIsDoubtful();
    void namesThatTheFormatTellsApart_data();
    void namesThatTheFormatTellsApart();
    void countsErrorsBeyondAThousand();
    void tellsPliesThatLieTheirBacksToTheOthers();
    void onlyAGuessIsMarkedAsOne();
    void measuresPlies();
    void sizesInWords();
    void linesOfFindings();
};

namespace
{
QStringList GetLines(const QString& type, const QByteArray& bytes, CheckFile::Unit unit = CheckFile::UnknownUnit)
{
    const CheckedFile file = CheckBytes(u"f"_s, *CheckFormats::Find(type), bytes, unit);
    QStringList lines;
    for (const CheckFinding& finding : file.findings)
        lines.append(CheckReport::GetLine(file.path, finding));
    return lines;
}

/*! A polyline of \a points, which end lines. */
QByteArray Polyline(const QByteArray& points)
{
    return "P " + QByteArray::number(points.count('\n')) + '\n' + points;
}

QByteArray Ply(const QByteArray& name, const QByteArray& content)
{
    return "START " + name + '\n' + content + "END " + name + '\n';
}

const QByteArray square = Polyline("0 0 0\n100 0 0\n100 100 0\n0 100 0\n0 0 0\n");
const QByteArray end = "EOD\n";

/*! A square whose normals are \a z along Z. */
QByteArray PlyWithNormals(const QByteArray& name, int z)
{
    const QByteArray normal = "   0 0 " + QByteArray::number(z) + '\n';
    return Ply(name, Polyline("5 5 0" + normal + "105 5 0" + normal + "105 105 0" + normal + "5 105 0" + normal +
                              "5 5 0" + normal));
}

/*! Four plies, of which the third lies with its back to the others. */
const QByteArray oneTurned =
    PlyWithNormals("A", 1) + PlyWithNormals("B", 1) + PlyWithNormals("C", -1) + PlyWithNormals("D", 1);
} // namespace

void TestCheckFindings::tellsWhatIsDoubtful_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    row("nothing to say", Ply("A", square) + Ply("B", square + Polyline("0 0 0\n9 0 0\n")) + end, {});
    row("no ply", end, {u"f: warning: the file holds no ply"_s});
    row("an empty ply", Ply("A", "") + end, {u"f:1: warning: ply A: the ply holds nothing"_s});
    row("a ply of parameters alone", Ply("A", "L 1\nhello\n") + end, {});
    row("a curve of no points", Ply("A", square + Polyline("")) + end,
        {u"f:8: warning: ply A: a curve holds no points"_s});
    row("an open ply", Ply("A", Polyline("0 0 0\n100 0 0\n100 100 0\n")) + end,
        {u"f:1: warning: ply A: no curve of the ply is closed"_s});
    row("a ply of one line", Ply("A", Polyline("0 0 0\n100 0 0\n")) + end, {});
    row("an open ply whose ends meet", Ply("A", Polyline("0 0 0\n100 0 0\n100 100 0\n0 100 0\n0 0.001 0\n")) + end,
        {u"f:1: warning: ply A: no curve of the ply is closed"_s});
    row("a nearly closed ply", Ply("A", Polyline("0 0 0\n100 0 0\n100 100 0\n0 100 0\n0 0.25 0\n")) + end,
        {u"f:1: warning: ply A: no curve of the ply is closed"_s,
         u"f:2: warning: ply A: a curve is nearly closed: 0.250 mm are missing"_s});
    row("a curve whose gap is meant", Ply("A", square + Polyline("0 0 0\n100 0 0\n100 100 0\n0 1.01 0\n")) + end, {});
    row("a short open curve", Ply("A", square + Polyline("0 0 0\n2 0 0\n2 0.5 0\n1 0 0\n")) + end, {});
    row("no area", Ply("A", Polyline("0 0 0\n100 0 0\n50 0 0\n0 0 0\n")) + end,
        {u"f:2: warning: ply A: a closed curve of 4 points encloses no area"_s});
    row("a tiny ply", Ply("A", Polyline("0 0 0\n10 0 0\n10 9.5 0\n0 9.5 0\n0 0 0\n")) + end,
        {u"f:1: warning: ply A: the ply is tiny: it encloses 95.0 square millimetres"_s});
    row("a small ply that isn't tiny", Ply("A", Polyline("0 0 0\n10 0 0\n10 0 10.5\n0 0 10.5\n0 0 0\n")) + end, {});
    row("a small hole in a ply", Ply("A", square + Polyline("1 1 0\n2 1 0\n2 2 0\n1 1 0\n")) + end, {});
    row("points that repeat", Ply("A", Polyline("0 0 0\n100 0 0\n100 0 0\n100 0 0\n100 100 0\n0 0 0\n0 0 0\n")) + end,
        {u"f:5: warning: ply A: a point stands twice in a row, 3 times in the curve of line 2"_s});
    row("a dot", Ply("A", square + Polyline("1 1 1\n1 1 1\n") + Polyline("1 1 1\n")) + end, {});
    row("a name twice", Ply("A", square) + Ply("B", square) + Ply("A", square) + end,
        {u"f:17: warning: ply A: has the same name as the ply in line 1"_s});
    row("a name in two sequences",
        "LAYER START S1\n" + Ply("A", square) + "LAYER END S1\nLAYER START S2\n" + Ply("A", square) + "LAYER END S2\n" +
            end,
        {});
    row("a layer twice",
        "LAYER START S1\n" + Ply("A", square) + "LAYER END S1\nLAYER START S1\n" + Ply("B", square) + "LAYER END S1\n" +
            end,
        {u"f:11: warning: layer S1: has the same name as the layer in line 1"_s});
    row("a layer twice whose name looks like a place to fill in",
        "LAYER START S%2\nLAYER END S%2\nLAYER START S%2\n" + Ply("A", square) + end,
        {u"f:3: warning: layer S%2: has the same name as the layer in line 1"_s,
         u"f:12: error: expected the end of \"S%2\", begun in line 3, found \"EOD\""_s});
    row("no name", "LAYER START \n" + Ply(" ", square) + "LAYER END \n" + end,
        {u"f:1: warning: a layer has no name"_s, u"f:2: warning: a ply has no name"_s});
    row("beyond ASCII", Ply("Pl\xc3\xa4y", square + "L 1\nNa\xc3\xafve\n# \xc3\xa4 literal\n") + end,
        {u"f:1: warning: ply Pl\u00e4y: the ply's name has characters beyond ASCII, which projectors may show as "
         u"others: "
         "\"Pl\u00e4y\""_s,
         u"f:8: warning: ply Pl\u00e4y: a parameter's text has characters beyond ASCII, which projectors may show as "
         "others: \"Na\u00efve\""_s});
    const QByteArray wrongPoint = Polyline("0 0 0\n1 1 x\n");
    row("errors behind a line that is out of place",
        Ply("A", square + wrongPoint + wrongPoint) + "x\nEND B\n" + Ply("C", square + wrongPoint),
        {u"f:10: error: ply A: expected a number, found \"x\""_s,
         u"f:13: error: ply A: expected a number, found \"x\""_s,
         u"f:15: error: expected the begin of a layer or of a ply, found \"x\""_s,
         u"f:27: error: the file ends too early: expected \"EOD\""_s,
         u"f: error: further errors, which may come from that in line 15: 2"_s});
    row("CR LF", QByteArray(Ply("A", square) + end).replace("\n", "\r\n"),
        {u"f: warning: expected lines that end with LF, found CR LF"_s});
    row("CR LF in some lines", QByteArray(Ply("A", square) + end).replace("\n", "\r\n").replace("END A\r", "END A"),
        {u"f:1: warning: expected lines that end with LF, found CR LF at 8 of 9"_s});
    row("CR LF in the last line", Ply("A", square) + "EOD\r\n",
        {u"f:9: warning: expected lines that end with LF, found CR LF at 1 of 9"_s});
    row("some normals", Ply("A", Polyline("0 0 0   0 0 1\n100 0 0\n100 100 0   0 0 1\n0 0 0   0 0 1\n")) + end,
        {u"f:2: warning: ply A: 3 of 4 points of a curve have a normal"_s});
    row("no normals in one ply",
        Ply("A", Polyline("0 0 0   0 0 1\n100 0 0   0 0 1\n100 100 0   0 0 1\n0 0 0   0 0 1\n")) + Ply("B", square) +
            end,
        {u"f:8: warning: ply B: the ply has no normals, though others have"_s});
    row("a normal of another length",
        Ply("A", Polyline("0 0 0   0 0 1\n100 0 0   0 0 0.5\n100 100 0   0 0 0.995\n0 0 0   0 0 1\n")) + end,
        {u"f:4: warning: ply A: a normal has the length 0.5, expected 1"_s});
    row("a normal that turns round",
        Ply("A", Polyline("0 0 0   0 0 1\n100 0 0   1 0 0\n100 100 0   0 0 -1\n0 50 0   0 0 1\n0 0 0   0 0 1\n")) + end,
        {u"f:6: warning: ply A: the normal points to the other side than that of the point before"_s});
    row("a broken record too", Ply("A", square + "P 1\n") + Ply("A", square) + end,
        {u"f:8: error: ply A: announces 1 points and holds 0"_s, u"f:8: warning: ply A: a curve holds no points"_s,
         u"f:10: warning: ply A: has the same name as the ply in line 1"_s});
}

void TestCheckFindings::tellsWhatIsDoubtful()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(GetLines(u"virtek"_s, bytes), findings);
}

void TestCheckFindings::namesThatTheFormatTellsApart_data()
{
    QTest::addColumn<QByteArray>("groups");
    QTest::addColumn<QStringList>("findings");
    const auto group = [](const QByteArray& name, const QByteArray& curve, const QByteArray& points) {
        return "GROUP_START \"" + name + "\"\nGROUP_COLOR Green\nENTITY_START \"" + curve + "\"\nENTITY_COLOR Green\n" +
               points + "ENTITY_END\nGROUP_END\n";
    };
    const QByteArray open = "0 0 0\n100 0 0\n100 100 0\n0 50 0\n";
    const QByteArray closed = open + "0 0 0\n";
    QTest::newRow("open rosettes, seed curves and extra geometry")
        << group("A", "A-Rosette", open) + group("B", "Seedcurve", open) + group("C", "Line", open) << QStringList();
    QTest::newRow("an open boundary") << group("A", "A boundary 1", open)
                                      << QStringList(
                                             u"f:10: warning: ply A: the boundary isn't closed: 50.0 mm are missing"_s);
    QTest::newRow("plies of one name") << group("A", "A boundary 1", closed) + group("A", "A boundary 1", closed)
                                       << QStringList(
                                              u"f:19: warning: ply A: has the same name as the ply in line 8"_s);
    QTest::newRow("extra geometry of one name")
        << group("A", "Line", closed) + group("A", "Line", closed) << QStringList();
}

void TestCheckFindings::namesThatTheFormatTellsApart()
{
    QFETCH(const QByteArray, groups);
    QFETCH(const QStringList, findings);
    const QByteArray head = "ALERT red\nID_START\nID_SYNTAX \"1.5\"\nID_END\nPROJECTION_SCALE mm\n"
                            "PROJECTION_START \"Projection\"\nDRAWING_START \"Part\"\n";
    QCOMPARE(GetLines(u"lap"_s, head + groups + "DRAWING_END\nPROJECTION_END\n"), findings);
}

void TestCheckFindings::countsErrorsBeyondAThousand()
{
    const QStringList lines =
        GetLines(u"virtek"_s, Ply("A", square + Polyline(QByteArray("0 0 x\n").repeated(1003))) + end);
    QCOMPARE(lines.filter(u"found \"x\""_s).size(), 1000);
    QCOMPARE(lines.last(), u"f: error: further errors: 3"_s);
}

void TestCheckFindings::tellsPliesThatLieTheirBacksToTheOthers()
{
    QCOMPARE(GetLines(u"virtek"_s, oneTurned + end),
             QStringList(u"f:17: warning: ply C: the normals go to the other side than those of other plies at the "
                         "same places"_s));
    QCOMPARE(GetLines(u"virtek"_s, PlyWithNormals("A", -1) + PlyWithNormals("B", -1) + end), QStringList());
}

void TestCheckFindings::onlyAGuessIsMarkedAsOne()
{
    const auto countGuesses = [](const QByteArray& bytes) {
        const CheckedFile file = CheckBytes(u"f"_s, *CheckFormats::Find(u"virtek"_s), bytes, CheckFile::UnknownUnit);
        return std::count_if(file.findings.begin(), file.findings.end(),
                             [](const CheckFinding& finding) { return finding.isGuess; });
    };
    QCOMPARE(countGuesses(Ply("E", "") + oneTurned + end), 1);
    // There is no room for the guess any more.
    QCOMPARE(countGuesses(Ply("E", "").repeated(1000) + oneTurned + end), 0);
}

void TestCheckFindings::measuresPlies()
{
    const QByteArray bytes =
        "LAYER START S\n" + Ply("A", square + Polyline("0 0 -1\n0 0 4\n") + "L 1\nhello\n") + "LAYER END S\n" + end;
    const CheckedFile file = CheckBytes(u"f"_s, *CheckFormats::Find(u"virtek"_s), bytes, CheckFile::Inches);
    QCOMPARE(file.plies.size(), 1U);
    QCOMPARE(file.plies[0].curves.size(), 2U);
    QCOMPARE(file.plies[0].points, 7U);
    QCOMPARE(file.plies[0].parameters, 1U);
    QCOMPARE(file.plies[0].length, 405.0);
    QCOMPARE(CheckReport::GetSummary(file),
             QStringList({u"f: Virtek"_s, u"  plies and sub-plies: 1, curves: 2, points: 7, texts: 0, parameters: 1"_s,
                          u"  normals: 0 points have one"_s,
                          u"  size: 2.5 m x 2.5 m x 0.1 m, as it is written in inches; the file doesn't tell"_s,
                          u"     line  curves  closed  points     length  size                           ply"_s,
                          u"        2       2       1       7     10.3 m  2.5 m x 2.5 m x 0.1 m          S/A"_s}));
}

void TestCheckFindings::sizesInWords()
{
    QCOMPARE(CheckReport::DescribeSize({999.94, 20.0, 0.0}), u"999.9 mm x 20.0 mm x 0.0 mm"_s);
    QCOMPARE(CheckReport::DescribeSize({1000.0, 20.0, 0.0}), u"1.0 m x 0.0 m x 0.0 m"_s);
}

void TestCheckFindings::linesOfFindings()
{
    QCOMPARE(CheckReport::GetLine(u"a b.ply"_s, {CheckSeverity::Error, 0, {}, u"text"_s}), u"a b.ply: error: text"_s);
    QCOMPARE(CheckReport::GetLine(u"f"_s, {CheckSeverity::Warning, 3, u"P\n1"_s, u"text"_s}),
             u"f:3: warning: ply P\\x0a1: text"_s);
}

QTEST_APPLESS_MAIN(TestCheckFindings)
#include "TestCheckFindings.moc"
