#include <ZETSystem/ZETSysException.h>
#include <ZETSystem/ZETSysFileUtilities.h>
#include <ZETSystem/ZETSysRegisterInit.h>
#include <ZETSystem/ZETSysUrlUtility.h>
#include <ZETSystem/ZETSysValue.h>

#include <QtTest>

#include <memory>

/*! What a library asks of the lowest host library, the message queue apart. */
class TestOpenSystemServices : public QObject
{
    Q_OBJECT

private slots:
    void safeFilenameReplacesWhatFileSystemsRefuse_data();
    void safeFilenameReplacesWhatFileSystemsRefuse();
    void angleIsConvertedToDegrees();
    void urlGivesItsLocalPath_data();
    void urlGivesItsLocalPath();
    void initFunctionRunsOnce();
    void missingInitFunctionIsNotTaken();
    void exceptionCarriesItsText();
};

void TestOpenSystemServices::safeFilenameReplacesWhatFileSystemsRefuse_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<QString>("expected");

    QTest::newRow("good name stays") << QStringLiteral("Ply P1-a(2)") << QStringLiteral("")
                                     << QStringLiteral("Ply P1-a(2)");
    QTest::newRow("empty") << QStringLiteral("") << QStringLiteral(".") << QStringLiteral("");
    QTest::newRow("separators and wildcards")
        << QStringLiteral("a/b\\c:d*e?f\"g<h>i|j") << QStringLiteral("") << QStringLiteral("a_b_c_d_e_f_g_h_i_j");
    QTest::newRow("control characters") << QStringLiteral("a\tb\nc\x7f"
                                                          "d")
                                        << QStringLiteral("") << QStringLiteral("a_b_c_d");
    QTest::newRow("control characters beyond ASCII")
        << QStringLiteral("a\u0080b\u0085c\u009fd") << QStringLiteral("") << QStringLiteral("a_b_c_d");
    QTest::newRow("null character") << QStringLiteral("a") + QChar(0) + u'b' << QStringLiteral("")
                                    << QStringLiteral("a_b");
    QTest::newRow("point stays") << QStringLiteral("P1.2") << QStringLiteral("") << QStringLiteral("P1.2");
    QTest::newRow("point by the third argument")
        << QStringLiteral("P1.2.3") << QStringLiteral(".") << QStringLiteral("P1_2_3");
    QTest::newRow("each character of the third argument")
        << QStringLiteral("a b-c.d") << QStringLiteral(". ") << QStringLiteral("a_b-c_d");
    QTest::newRow("letters beyond ASCII stay")
        << QStringLiteral("Läge 層 1") << QStringLiteral(".") << QStringLiteral("Läge 層 1");
}

void TestOpenSystemServices::safeFilenameReplacesWhatFileSystemsRefuse()
{
    QFETCH(QString, name);
    QFETCH(QString, extra);
    QFETCH(QString, expected);
    QCOMPARE(ZETSysFileUtilities::CreateSafeFilename(name, QLatin1Char('_'), extra), expected);
}

void TestOpenSystemServices::angleIsConvertedToDegrees()
{
    QCOMPARE(int(ZETSysValue::UnitDegree), 1280);
    QCOMPARE(ZETSysValue::ConvertFromSystemUnit(1.0, ZETSysValue::UnitDegree), 57.29577951308232);
    QCOMPARE(ZETSysValue::ConvertFromSystemUnit(-0.7853981633974483, ZETSysValue::UnitDegree), -45.0);
    QCOMPARE(ZETSysValue::ConvertFromSystemUnit(0.0, ZETSysValue::UnitDegree), 0.0);
}

void TestOpenSystemServices::urlGivesItsLocalPath_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("expected");
    QTest::newRow("file") << QUrl(QStringLiteral("file:///parts/wing.prt")) << QStringLiteral("/parts/wing.prt");
    QTest::newRow("encoded") << QUrl(QStringLiteral("file:///parts/left%20wing.prt"))
                             << QStringLiteral("/parts/left wing.prt");
    QTest::newRow("from a path") << QUrl::fromLocalFile(QStringLiteral("/parts/a#b.prt"))
                                 << QStringLiteral("/parts/a#b.prt");
    QTest::newRow("not local") << QUrl(QStringLiteral("https://host.example/wing.prt")) << QStringLiteral("");
    QTest::newRow("empty") << QUrl() << QStringLiteral("");
}

void TestOpenSystemServices::urlGivesItsLocalPath()
{
    QFETCH(QUrl, url);
    QFETCH(QString, expected);
    QCOMPARE(ZETSysUrlUtility::GetFilePathFromURL(url), expected);
}

void TestOpenSystemServices::initFunctionRunsOnce()
{
    int runs = 0;
    QVERIFY(ZETSysRegisterInit([&] { ++runs; }));
    QCOMPARE(runs, 1);
}

void TestOpenSystemServices::missingInitFunctionIsNotTaken()
{
    QVERIFY(!ZETSysRegisterInit(std::function<void()>()));
}

void TestOpenSystemServices::exceptionCarriesItsText()
{
    try {
        throw ZETSysException(QStringLiteral("größer"));
    } catch (const std::exception& exception) {
        QCOMPARE(QString::fromUtf8(exception.what()), QStringLiteral("größer"));
    }
    const ZETSysException first(QStringLiteral("text"));
    const auto copy = std::make_unique<ZETSysException>(first);
    QCOMPARE(copy->GetMessage(), QStringLiteral("text"));
}

QTEST_GUILESS_MAIN(TestOpenSystemServices)
#include "TestOpenSystemServices.moc"
