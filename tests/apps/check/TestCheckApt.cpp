// The readers of the three APT files, on whole files and on files that are wrong in one place.

#include "CheckDump.h"
#include "CheckFormat.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestCheckApt : public QObject
{
    Q_OBJECT

private slots:
    void readsEachOfTheThree_data();
    void readsEachOfTheThree();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void findsDamageOfEachLine();
};

namespace
{
QByteArray MakeFile(const QByteArray& word)
{
    return "LAYER START myData\n... this will become " + word +
           " ply data ...\nBaser laser Group Name Left  wing\nLAYER END myData\n";
}
} // namespace

void TestCheckApt::readsEachOfTheThree_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("APT") << u"apt"_s << MakeFile("APT");
    QTest::newRow("APT_2") << u"apt-2"_s << MakeFile("APT_2");
    QTest::newRow("APT_SL") << u"apt-sl"_s << MakeFile("APT_SL");
}

void TestCheckApt::readsEachOfTheThree()
{
    QFETCH(const QString, type);
    QFETCH(const QByteArray, bytes);
    const CheckFormat* const format = CheckFormats::Recognise(u"part"_s, bytes);
    QVERIFY(format);
    QCOMPARE(format->types, QStringList(type));
    const CheckFile file = ReadChecked(type, bytes);
    QCOMPARE(DumpFindings(file), QStringList());
    QCOMPARE(Dump(file), QStringList({u"part Left  wing"_s, u"1 layer myData"_s, u"4 end myData"_s}));
}

void TestCheckApt::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("findings");
    const auto row = [](const char* name, const QByteArray& bytes, const QStringList& findings) {
        QTest::newRow(name) << bytes << findings;
    };
    const QByteArray whole = MakeFile("APT");
    row("empty file", "", {u"1: error: the file ends too early: expected \"LAYER START myData\""_s});
    row("no end", whole.chopped(17), {u"3: error: the file ends too early: expected \"LAYER END myData\""_s});
    row("cut end", whole.chopped(1), {u"4: error: the file ends too early: expected the end of the line"_s});
    row("behind the end", whole + "\n", {u"5: error: expected nothing behind \"LAYER END myData\", found \"\""_s});
    row("another APT", MakeFile("APT_2"),
        {u"2: error: expected \"... this will become APT ply data ...\", found \"... this will become APT_2 ply data ...\""_s});
    row("no name", QByteArray(whole).replace("Baser laser Group Name ", "Basic"),
        {u"3: error: expected \"Baser laser Group Name \", found \"BasicLeft  wing\""_s});
    row("missing line", QByteArray(whole).replace("Baser laser Group Name Left  wing\n", ""),
        {u"3: error: expected \"Baser laser Group Name \", found \"LAYER END myData\""_s,
         u"3: error: the file ends too early: expected \"LAYER END myData\""_s});
}

void TestCheckApt::tellsWhatIsWrong()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QStringList, findings);
    QCOMPARE(DumpFindings(ReadChecked(u"apt"_s, bytes)), findings);
}

void TestCheckApt::findsDamageOfEachLine()
{
    QCOMPARE(FindSilentDamage(u"apt"_s, MakeFile("APT")), QStringList());
}

QTEST_APPLESS_MAIN(TestCheckApt)
#include "TestCheckApt.moc"
