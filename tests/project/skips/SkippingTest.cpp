#include <QTest>

/*! Tests that pass, that are skipped, and that fail; called by their names. */
class SkippingTest : public QObject
{
    Q_OBJECT

private slots:
    void passes() {}
    void skips() { QSKIP("as it would where a program isn't installed"); }
    void fails() { QFAIL("as it is meant to"); }
};

QTEST_GUILESS_MAIN(SkippingTest)
#include "SkippingTest.moc"
