#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestGolden.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

/*! Whole outputs of all text formats. */
class TestWritersGolden : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }
    void jobsGiveTheExpectedFiles_data();
    void jobsGiveTheExpectedFiles();
};

void TestWritersGolden::jobsGiveTheExpectedFiles_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("partFile");
    const auto addFormat = [](const QString& format, const QString& partFile) {
        const auto names = TestGolden(format).GetCases();
        for (const auto& name : names)
            QTest::addRow("%s/%s", qPrintable(format), qPrintable(name)) << format << name << partFile;
    };
    addFormat(u"virtek"_s, u"part.ply"_s);
    addFormat(u"dxf"_s, u"part.DXF"_s);
    addFormat(u"lap"_s, u"part.lpd"_s);
    addFormat(u"assembly-guidance"_s, u"part.PRT"_s);
    addFormat(u"lpt"_s, u"part.XML"_s);
    addFormat(u"sl"_s, u"part.sl"_s);
    addFormat(u"general-scanning"_s, u"part.PRT"_s);
    addFormat(u"quilmon"_s, u"part.CPD"_s);
    addFormat(u"apt"_s, u"part.APT"_s);
}

void TestWritersGolden::jobsGiveTheExpectedFiles()
{
    QFETCH(QString, format);
    QFETCH(QString, name);
    QFETCH(QString, partFile);
    const QString differences = TestGolden(format).Run(name, partFile);
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

QTEST_GUILESS_MAIN(TestWritersGolden)
#include "TestWritersGolden.moc"
