#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestGolden.h"
#include "writers/ZETLaserWriterLAP.h"
#include "writers/ZETLaserWriterVirtek.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Run = QString (TestGolden::*)(const QString& name, const QString& partFile) const;

/*! A folder of cases, the part file that they write, and the writer. */
struct Format {
    QString folder;
    QString partFile;
    Run run;
};

const QList<Format>& GetFormats()
{
    static const QList<Format> formats{
        {u"lap"_s, u"part.lpd"_s, &TestGolden::Run<ZETLaserWriterLAP>},
        {u"virtek"_s, u"part.ply"_s, &TestGolden::Run<ZETLaserWriterVirtek>},
    };
    return formats;
}
} // namespace

/*! Whole outputs of all formats. */
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
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("name");
    for (int format = 0; format < GetFormats().size(); ++format) {
        const QString& folder = GetFormats()[format].folder;
        const auto names = TestGolden(folder).GetCases();
        for (const auto& name : names)
            QTest::newRow(qPrintable(folder + u'/' + name)) << format << name;
    }
}

void TestWritersGolden::jobsGiveTheExpectedFiles()
{
    QFETCH(int, format);
    QFETCH(QString, name);
    const Format& of = GetFormats()[format];
    const QString differences = (TestGolden(of.folder).*of.run)(name, of.partFile);
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

QTEST_GUILESS_MAIN(TestWritersGolden)
#include "TestWritersGolden.moc"
