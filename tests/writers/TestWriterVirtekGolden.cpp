#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestGolden.h"
#include "writers/ZETLaserWriterVirtek.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

class TestWriterVirtekGolden : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }
    void cases_data();
    void cases();

private:
    TestGolden golden{u"virtek"_s};
};

void TestWriterVirtekGolden::cases_data()
{
    QTest::addColumn<QString>("name");
    const auto names = golden.GetCases();
    for (const auto& name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void TestWriterVirtekGolden::cases()
{
    QFETCH(QString, name);
    const QString differences = golden.Run<ZETLaserWriterVirtek>(name, u"part.ply"_s);
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

QTEST_GUILESS_MAIN(TestWriterVirtekGolden)
#include "TestWriterVirtekGolden.moc"
