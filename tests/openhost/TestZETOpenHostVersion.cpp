#include "openhost/ZETOpenHostVersion.h"

#include <QRegularExpression>
#include <QtTest>

class TestZETOpenHostVersion : public QObject
{
    Q_OBJECT
private slots:
    void namesItselfAndTheKernel();
};

void TestZETOpenHostVersion::namesItselfAndTheKernel()
{
    static const QRegularExpression form(QStringLiteral("^\\d+\\.\\d+\\.\\d+ \\(Open CASCADE \\d+\\.\\d+\\.\\d+\\)$"));
    const QString version = GetOpenHostVersion();
    QVERIFY2(form.match(version).hasMatch(), qPrintable(version));
}

QTEST_GUILESS_MAIN(TestZETOpenHostVersion)
#include "TestZETOpenHostVersion.moc"
