// The readers of LPT part files and tool files, on whole files and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckLpt : public QObject
{
    Q_OBJECT

private slots:
    void readsEachRecord();
    void readsLiterals_data();
    void readsLiterals();
    void readsTextsWithLineEndsThatAreKnown();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void readsToolFiles();
    void tellsWhatIsWrongWithToolFiles_data();
    void tellsWhatIsWrongWithToolFiles();
    void namesTheToolFile();
    void findsDamageOfEachLine();
};

namespace
{
const QByteArray head = R"(
<XML>
    <PART NAME="Left &lt;wing&gt; &amp; &quot;1&quot;" STATUS="Vantrell" TOPLAYERS="1" FILEDATE="1/31/2000 23:59:00" INVERTNORMALS="" HIGHESTPLY="50" USEASSIGNEDLASERS="0" DEFAULTLASER="0">
        <PLY NAME="S1" LASERNUMBER="0">
)";
/*! From line 5 on. */
const QByteArray ply = R"(            <PLY NAME="P1" LASERNUMBER="0">
                <SUBPLY NAME="P1 boundary 1" LASERNUMBER="0">
                    <POINT NUMBER="1" XVAL="0.000000" YVAL="-1.500000" ZVAL="2.000000" IVAL="0.000000" JVAL="0.000000" KVAL="1.000000"/>
                    <POINT NUMBER="2" XVAL="3.000000" YVAL="0.000000" ZVAL="0.125000"/>
                </SUBPLY>
                <INSTRUCTIONS>one &amp; two

</INSTRUCTIONS>
                <NOTES>for &#216;
</NOTES>
                <TEXT NAME="1" VALUE="T&quot;2&#10;3" PT1XVAL="10.000000" PT1YVAL="20.000000" PT1ZVAL="0.000000" PT2XVAL="22.500000" PT2YVAL="20.000000" PT2ZVAL="0.000000" PT3XVAL="10.000000" PT3YVAL="21.000000" PT3ZVAL="0.000000"/>
            </PLY>
)";
/*! From line 17 on, if it follows the ply. */
const QByteArray end = R"(        </PLY>
    </PART>
</XML>
)";

const QByteArray tool = R"(
<XML>
    <TOOL NAME="Tool-part.XML" STATUS="Vantrell" COORDSYSTEM="RIGHT">
        <TARGET LASERNUMBER="1" NUMBER="1" NAME="A &amp; B" DVAL="ON" XVAL="0.000000" YVAL="-1.500000" ZVAL="2.000000" ANGLE1="" ANGLE2="" DISTANCE="" SCANRATIO="1.0" SEARCHRATIO="1.0" MISSING=""/>
        <TARGET LASERNUMBER="1" NUMBER="2" NAME="" DVAL="OFF" XVAL="3.000000" YVAL="0.000000" ZVAL="0.125000" ANGLE1="" ANGLE2="" DISTANCE="" SCANRATIO="1.0" SEARCHRATIO="1.0" MISSING=""/>
        <TARGET LASERNUMBER="3" NUMBER="1" NAME="T" DVAL="OFF" XVAL="4.000000" YVAL="5.000000" ZVAL="6.000000" ANGLE1="" ANGLE2="" DISTANCE="" SCANRATIO="1.0" SEARCHRATIO="1.0" MISSING=""/>
    </TOOL>
</XML>
)";
} // namespace

void TestCheckLpt::readsEachRecord()
{
    const QStringList held{u"part Left <wing> & \"1\""_s,
                           u"TOPLAYERS=1"_s,
                           u"4 layer S1"_s,
                           u"5 ply P1"_s,
                           u"6 curve boundary P1 boundary 1: 2 points"_s,
                           u"7 point 0 -1.5 2 / 0 0 1"_s,
                           u"8 point 3 0 0.125"_s,
                           u"10 information one & two"_s,
                           u"11 information "_s,
                           u"13 note for \u00d8"_s,
                           u"15 text T\"2\n3 10 20 0 22.5 20 0 10 21 0"_s,
                           u"16 end P1"_s,
                           u"17 end S1"_s};
    for (const QByteArray& lineEnd : {QByteArray("\n"), QByteArray("\r\n")}) {
        const QByteArray bytes = QByteArray(head + ply + end).replace("\n", lineEnd);
        QVERIFY(CheckFormats::Recognise(u"part"_s, bytes) == CheckFormats::Find(u"faro"_s));
        const CheckFile file = ReadChecked(u"lpt"_s, bytes);
        QCOMPARE(DumpFindings(file), QStringList());
        QCOMPARE(Dump(file), held);
    }
}

void TestCheckLpt::readsLiterals_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("held");
    const QByteArray curve = "                <SUBPLY NAME=\"C\" LASERNUMBER=\"0\">\n"
                             "                    <POINT NUMBER=\"1\" XVAL=\"1.000000\" YVAL=\"2.000000\" "
                             "ZVAL=\"3.000000\"/>\n"
                             "                </SUBPLY>";
    const QByteArray begin = "            <PLY NAME=\"P\" LASERNUMBER=\"0\"";
    QTest::newRow("within the tag of the ply")
        << begin + "<RAW A=\"1\"/>\na & b\n>\n" + curve + "\n            </PLY>\n"
        << QStringList{u"5 literal <RAW A=\"1\"/>"_s,  u"5 ply P"_s,       u"6 literal a & b"_s,
                       u"8 curve other C: 1 points"_s, u"9 point 1 2 3"_s, u"11 end P"_s};
    QTest::newRow("instead of all else") << begin + " EXTRA=\"1\"\n/>\n"
                                         << QStringList{u"5 literal  EXTRA=\"1\""_s, u"5 ply P"_s, u"6 end P"_s};
    QTest::newRow("behind the curves") << begin + ">\n" + curve + "<RAW>\n\n</RAW>\n\n            </PLY>\n"
                                       << QStringList{u"5 ply P"_s,       u"6 curve other C: 1 points"_s,
                                                      u"7 point 1 2 3"_s, u"8 literal <RAW>"_s,
                                                      u"9 literal "_s,    u"10 literal </RAW>"_s,
                                                      u"12 end P"_s};
    QTest::newRow("behind a block") << begin + ">\n                <NOTES>N\n</NOTES>a < b\n\n" + curve +
                                           "\n            </PLY>\n"
                                    << QStringList{u"5 ply P"_s,         u"6 note N"_s,
                                                   u"7 literal a < b"_s, u"9 curve other C: 1 points"_s,
                                                   u"10 point 1 2 3"_s,  u"12 end P"_s};
    QTest::newRow("empty") << begin + ">\n" + curve + "\n\n            </PLY>\n"
                           << QStringList{u"5 ply P"_s, u"6 curve other C: 1 points"_s, u"7 point 1 2 3"_s,
                                          u"8 literal "_s, u"10 end P"_s};
}

void TestCheckLpt::readsLiterals()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, held);
    const CheckFile file = ReadChecked(u"lpt"_s, head + bytes + end);
    QCOMPARE(DumpFindings(file), QStringList());
    QStringList found = Dump(file);
    found.removeIf([](const QString& line) { return !line.front().isDigit() || line.endsWith(u" S1"_s); });
    std::sort(found.begin(), found.end(), [](const QString& a, const QString& b) {
        return std::pair(a.section(u' ', 0, 0).toInt(), a) < std::pair(b.section(u' ', 0, 0).toInt(), b);
    });
    QCOMPARE(found, held);
}

void TestCheckLpt::readsTextsWithLineEndsThatAreKnown()
{
    CheckKnownTexts known;
    known.withLineEnds = {"one & two\n"};
    known.literals = {"<PLY NAME=\"X\" LASERNUMBER=\"0\">\n</PLY>"};
    CheckFile file;
    CheckFormats::Find(u"lpt"_s)->read(
        head + Replaced(ply, "</NOTES>", "</NOTES><PLY NAME=\"X\" LASERNUMBER=\"0\">\n</PLY>\n") + end, known, file);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(file.groups.size(), size_t(2));
    QCOMPARE(file.parameters.size(), size_t(3));
    QCOMPARE(file.parameters[0].text, u"one & two\n"_s);
    QCOMPARE(file.parameters[2].text, u"<PLY NAME=\"X\" LASERNUMBER=\"0\">\n</PLY>"_s);
}

void TestCheckLpt::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const QByteArray part = head + ply + end;
    const auto change = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        row(name, Replaced(part, before, after), findings);
    };
    row("empty file", "",
        {u"1: error: the file ends too early: expected \"<XML>\""_s,
         u"1: error: the file ends too early: expected \"</PART>\""_s});
    row("no end", head + ply, {u"16: error: the file ends too early: expected \"</PART>\""_s});
    row("cut end", part.chopped(1), {u"19: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", part + "x\n", {u"20: error: expected nothing behind \"</XML>\", found \"x\""_s});
    change("declaration", "\n<XML>", "<?xml version=\"1.0\"?>\n<XML>",
           {u"1: error: expected \"<XML>\", found \"<?xml version=\"1.0\"?>\""_s});
    change(
        "part", "STATUS=\"V", "STATUS=\"v",
        {u"3: error: expected \" STATUS=\"Vantrell\"\", found \" STATUS=\"vantrell\" TOPLAYERS=\"1\" FILEDAT...\""_s});
    change("date", "1/31/2000", "2000-01-31",
           {u"3: error: expected \"/\", found \"-01-31 23:59:00\" INVERTNORMALS=\"\" HIGHES...\""_s});
    change("escape", "&lt;", "&lt",
           {u"3: error: expected an escaped character such as \"&amp;\", found \"&ltwing&gt; &amp; &quot;1&quot;\""_s});
    change("fewer layers at the top", "TOPLAYERS=\"1\"", "TOPLAYERS=\"2\"",
           {u"3: warning: announces 2 layers at the top and holds 1"_s});
    change("name of a ply", "<PLY NAME=\"P1\"", "<PLY NAME=P1",
           {u"5: error: expected \" NAME=\"\", found \" NAME=P1 LASERNUMBER=\"0\">\""_s});
    change("laser of a ply", "<PLY NAME=\"P1\" LASERNUMBER=\"0\"", "<PLY NAME=\"P1\" LASERNUMBER=\"1\"",
           {u"5: error: P1: expected \" LASERNUMBER=\"0\"\", found \" LASERNUMBER=\"1\">\""_s});
    change("tag not ended", "P1\" LASERNUMBER=\"0\">", "P1\" LASERNUMBER=\"0\"",
           {u"5: error: P1: expected \">\", found \"\""_s});
    change(
        "not a number", "\"3.000000\"", "\"nan\"",
        {u"8: error: P1: expected a number with 6 decimals, found \"nan\" YVAL=\"0.000000\" ZVAL=\"0.125000\"/>\""_s});
    change(
        "letters in a number", "\"3.000000\"", "\"3.00x000\"",
        {u"8: error: P1: expected a number with 6 decimals, found \"3.00x000\" YVAL=\"0.000000\" ZVAL=\"0.125000...\""_s});
    change("missing attribute", " ZVAL=\"0.125000\"", "", {u"8: error: P1: expected \" ZVAL=\"\", found \"/>\""_s});
    change("other attribute", "KVAL", "LVAL",
           {u"7: error: P1: expected \" KVAL=\"\", found \" LVAL=\"1.000000\"/>\""_s});
    change("missing point",
           "                    <POINT NUMBER=\"1\" XVAL=\"0.000000\" YVAL=\"-1.500000\" ZVAL=\"2.000000\" "
           "IVAL=\"0.000000\" JVAL=\"0.000000\" KVAL=\"1.000000\"/>\n",
           "", {u"7: error: P1: expected point 1, found 2"_s});
    change("curve not ended", "                </SUBPLY>\n", "",
           {u"9: error: P1: expected \"<POINT\" or \"</SUBPLY>\", found \"<INSTRUCTIONS>one &amp; two\""_s});
    change(
        "point without a curve", "                <SUBPLY NAME=\"P1 boundary 1\" LASERNUMBER=\"0\">\n", "",
        {u"6: error: P1: expected an element of the ply, found \"<POINT NUMBER=\"1\" XVAL=\"0.000000\" YVAL=\"...\""_s,
         u"7: error: P1: expected an element of the ply, found \"<POINT NUMBER=\"2\" XVAL=\"3.000000\" YVAL=\"...\""_s,
         u"8: error: P1: expected an element of the ply, found \"</SUBPLY>\""_s});
    change(
        "other element in a curve", "<POINT NUMBER=\"2\"", "<PIONT NUMBER=\"2\"",
        {u"8: error: P1: expected \"<POINT\" or \"</SUBPLY>\", found \"<PIONT NUMBER=\"2\" XVAL=\"3.000000\" YVAL=\"...\""_s});
    change("other element in a ply", "<NOTES>", "<NOTE>",
           {u"13: error: P1: expected an element of the ply, found \"<NOTE>for &#216;\""_s,
            u"14: error: P1: expected an element of the ply, found \"</NOTES>\""_s});
    change("block not ended", "</NOTES>\n", "",
           {u"14: error: P1: expected \"</NOTES>\", found \"                <TEXT NAME=\"1\" VALUE=\"T&...\""_s});
    change(
        "text", "PT1ZVAL=\"0", "PT1ZVAL=\"x",
        {u"15: error: P1: expected a number with 6 decimals, found \"x.000000\" PT2XVAL=\"22.500000\" PT2YVAL=\"2...\""_s});
    change("number of a text", "<TEXT NAME=\"1\"", "<TEXT NAME=\"3\"", {u"15: error: P1: expected text 1, found 3"_s});
    change("ply not ended", "            </PLY>\n", "",
           {u"17: error: expected the end of \"S1\", begun in line 4, found \"</PART>\""_s});
    change("ply ended twice", "            </PLY>\n", "            </PLY>\n            </PLY>\n",
           {u"18: error: expected \"<PLY\" or \"</PART>\", found \"</PLY>\""_s});
    change("text in the part", "        </PLY>\n    </PART>", "        </PLY>\nx\n    </PART>",
           {u"18: error: expected \"<PLY\" or \"</PART>\", found \"x\""_s});
    change("no end of the document", "</XML>", "</XLM>", {u"19: error: expected \"</XML>\", found \"</XLM>\""_s});
}

void TestCheckLpt::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"lpt"_s, bytes)), findings);
}

void TestCheckLpt::readsToolFiles()
{
    QVERIFY(CheckFormats::Recognise(u"Tool-part.XML"_s, tool) == CheckFormats::Find(u"lpt-tool"_s));
    const CheckFile file = ReadChecked(u"lpt-tool"_s, tool);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"NAME=Tool-part.XML"_s, u"projectors 3"_s,
                                      u"4 target A & B drift projector 0 number 1 at 0 -1.5 2"_s,
                                      u"5 target  projector 0 number 2 at 3 0 0.125"_s,
                                      u"6 target T projector 2 number 1 at 4 5 6"_s}));
}

void TestCheckLpt::tellsWhatIsWrongWithToolFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto change = [&](const char* name, const char* before, const char* after, const QStringList& findings) {
        QTest::newRow(name) << Replaced(tool, before, after) << findings;
    };
    QTest::newRow("empty file") << QByteArray()
                                << QStringList{u"1: error: the file ends too early: expected \"<XML>\""_s,
                                               u"1: error: the file ends too early: expected \"</TOOL>\""_s};
    change("tool", "RIGHT", "LEFT",
           {u"3: error: expected \" COORDSYSTEM=\"RIGHT\"\", found \" COORDSYSTEM=\"LEFT\">\""_s});
    change("drift", "\"ON\"", "\"on\"",
           {u"4: error: expected \" DVAL=\"OFF\"\", found \" DVAL=\"on\" XVAL=\"0.000000\" YVAL=\"-1.5000...\""_s});
    change(
        "not a number", "\"-1.500000\"", "\"\"",
        {u"4: error: expected a number with 6 decimals, found \"\" ZVAL=\"2.000000\" ANGLE1=\"\" ANGLE2=\"\" DI...\""_s});
    change("number", "NUMBER=\"2\"", "NUMBER=\"3\"", {u"5: error: expected target 2, found 3"_s});
    change("laser", "LASERNUMBER=\"3\"", "LASERNUMBER=\"0\"", {u"6: error: expected a laser from 1 to 999, found 0"_s});
    change("laser beyond all", "LASERNUMBER=\"3\"", "LASERNUMBER=\"1000\"",
           {u"6: error: expected a laser from 1 to 999, found 1000"_s});
    change("other element", "<TARGET LASERNUMBER=\"3\"", "<TRAGET LASERNUMBER=\"3\"",
           {u"6: error: expected \"<TARGET\", found \"<TRAGET LASERNUMBER=\"3\" NUMBER=\"1\" NAME=...\""_s});
    change("tool not ended", "    </TOOL>\n", "", {u"7: error: expected \"</TOOL>\", found \"</XML>\""_s});
}

void TestCheckLpt::tellsWhatIsWrongWithToolFiles()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"lpt-tool"_s, bytes)), findings);
}

void TestCheckLpt::namesTheToolFile()
{
    const auto getCompanion = CheckFormats::Find(u"lpt"_s)->getCompanion;
    QCOMPARE(getCompanion(u"a/wing.XML"_s), u"a/Tool-wing.XML"_s);
    QCOMPARE(getCompanion(u"wing.XML"_s), u"Tool-wing.XML"_s);
}

void TestCheckLpt::findsDamageOfEachLine()
{
    // The texts of parameters may be anything, and neither they nor the points of a curve are counted. XML doesn't care
    // for empty lines.
    const QStringList lines = QString::fromUtf8(head + ply).split(u'\n');
    const QString last = u"without 8: "_s + lines[7];
    const QString text = u"without 15: "_s + lines[14];
    QCOMPARE(FindSilentDamage(u"lpt"_s, head + ply + end),
             QStringList({u"without 1: "_s, last, u"without 11: "_s, u"wrong 11: "_s, text}));
    // A target is missed only where another one of its laser comes behind it.
    const QStringList toolLines = QString::fromUtf8(tool).split(u'\n');
    QCOMPARE(FindSilentDamage(u"lpt-tool"_s, tool),
             QStringList({u"without 1: "_s, u"without 5: "_s + toolLines[4], u"without 6: "_s + toolLines[5]}));
}

QTEST_APPLESS_MAIN(TestCheckLpt)
#include "TestCheckLpt.moc"
