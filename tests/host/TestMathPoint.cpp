#include <ZETMathematics/ZETMathPoint.h>

#include <QString>
#include <QtTest>

#include <cmath>

class TestMathPoint : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsTheOrigin() { QCOMPARE(ZETMathPoint(), ZETMathPoint(0, 0, 0)); }
    void coordinatesComeOneByOneAndTogether()
    {
        const ZETMathPoint point(1, 2, 3);
        double x = 0;
        double y = 0;
        double z = 0;
        point.GetCoord(x, y, z);
        QCOMPARE(ZETMathPoint(x, y, z), ZETMathPoint(point.GetX(), point.GetY(), point.GetZ()));
        QCOMPARE(x, 1.0);
        QCOMPARE(y, 2.0);
        QCOMPARE(z, 3.0);
    }
    void distanceIsEuclidean()
    {
        QCOMPARE(ZETMathPoint(1, 2, 3).GetDistanceTo(ZETMathPoint(3, 5, 9)), 7.0);
        QCOMPARE(ZETMathPoint(1, 2, 3).GetDistanceTo(ZETMathPoint(1, 2, 3)), 0.0);
    }
    void differenceLeadsFromTheArgumentToThePoint()
    {
        QCOMPARE(ZETMathPoint(5, 7, 9) - ZETMathPoint(1, 2, 3), ZETMathVector(4, 5, 6));
    }
    void pointPlusVectorIsThePointMoved()
    {
        QCOMPARE(ZETMathPoint(1, 2, 3) + ZETMathVector(10, 20, 30), ZETMathPoint(11, 22, 33));
    }
    void scalingTakesEachCoordinate()
    {
        ZETMathPoint point(1, -2, 3);
        QCOMPARE(point * 2.0, ZETMathPoint(2, -4, 6));
        QCOMPARE(point / 2.0, ZETMathPoint(0.5, -1, 1.5));
        point *= 3.0;
        QCOMPARE(point, ZETMathPoint(3, -6, 9));
    }
    void inchOf25Point4MillimetresPrintsAsOne()
    {
        const ZETMathPoint inch = ZETMathPoint(25.4, 0, 0) * (1.0 / 25.4);
        QCOMPARE(QString::number(inch.GetX(), 'f', 6), QStringLiteral("1.000000"));
    }
    void comparisonIsExact()
    {
        const double next = std::nextafter(1.0, 2.0);
        QVERIFY(ZETMathPoint(1, 2, 3) == ZETMathPoint(1, 2, 3));
        QVERIFY(ZETMathPoint(1, 2, 3) != ZETMathPoint(next, 2, 3));
        QVERIFY(ZETMathPoint(2, 1, 3) != ZETMathPoint(2, next, 3));
        QVERIFY(ZETMathPoint(2, 3, 1) != ZETMathPoint(2, 3, next));
        QVERIFY(ZETMathPoint(0.0, 0, 0) == ZETMathPoint(-0.0, 0, 0));
    }
    void copiesAreValues()
    {
        ZETMathPoint point(1, 2, 3);
        const ZETMathPoint copy = point;
        point *= 2.0;
        QCOMPARE(copy, ZETMathPoint(1, 2, 3));
    }
};

QTEST_GUILESS_MAIN(TestMathPoint)
#include "TestMathPoint.moc"
