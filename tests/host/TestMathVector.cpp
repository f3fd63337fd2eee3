#include <ZETMathematics/ZETMathVector.h>
#include <ZETMathematics/ZETMathVector4D.h>

#include <QtTest>

#include <cmath>

class TestMathVector : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsTheZeroVector()
    {
        QCOMPARE(ZETMathVector(), ZETMathVector(0, 0, 0));
        QCOMPARE(ZETMathVector().GetSquaredMagnitude(), 0.0);
    }
    void componentsAreKept()
    {
        const ZETMathVector vector(1, -2, 3);
        QCOMPARE(vector.GetX(), 1.0);
        QCOMPARE(vector.GetY(), -2.0);
        QCOMPARE(vector.GetZ(), 3.0);
        QCOMPARE(vector.GetSquaredMagnitude(), 14.0);
    }
    void normalizeScalesToLengthOne()
    {
        ZETMathVector vector(3, 0, -4);
        vector.Normalize();
        QCOMPARE(vector, ZETMathVector(3.0 / 5.0, 0, -4.0 / 5.0));
    }
    void normalizeThrowsOnTheZeroVector()
    {
        ZETMathVector zero;
        QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, zero.Normalize());
    }
    void exceptionIsAStandardExceptionWithAText()
    {
        ZETMathVector zero;
        try {
            zero.Normalize();
            QFAIL("nothing was thrown");
        } catch (const std::exception& exception) {
            QVERIFY(QByteArray(exception.what()).contains("zero length"));
        }
    }
    void productsAreDotAndCross()
    {
        const ZETMathVector x(1, 0, 0);
        const ZETMathVector y(0, 1, 0);
        QCOMPARE(ZETMathVector(1, 2, 3) * ZETMathVector(4, 5, 6), 32.0);
        QCOMPARE(x ^ y, ZETMathVector(0, 0, 1));
        QCOMPARE(y ^ x, ZETMathVector(0, 0, -1));
        QCOMPARE(ZETMathVector(1, 2, 3) ^ ZETMathVector(4, 5, 6), ZETMathVector(-3, 6, -3));
    }
    void scalingWorksFromBothSidesAndInPlace()
    {
        ZETMathVector vector(1, -2, 3);
        QCOMPARE(vector * 2.0, ZETMathVector(2, -4, 6));
        QCOMPARE(2.0 * vector, ZETMathVector(2, -4, 6));
        vector *= -1.0;
        QCOMPARE(vector, ZETMathVector(-1, 2, -3));
    }
    void sumAndDifference()
    {
        QCOMPARE(ZETMathVector(1, 2, 3) + ZETMathVector(4, 5, 6), ZETMathVector(5, 7, 9));
        QCOMPARE(ZETMathVector(1, 2, 3) - ZETMathVector(4, 6, 8), ZETMathVector(-3, -4, -5));
    }
    void parallelAndOppositeAreParallel()
    {
        const ZETMathVector vector(1, 2, 3);
        QVERIFY(vector.IsParallel(vector * 1e6));
        QVERIFY(vector.IsParallel(vector * -1e-6));
        QVERIFY(!vector.IsParallel(ZETMathVector(1, 2, 3.0001)));
        QVERIFY(!ZETMathVector(1, 0, 0).IsParallel(ZETMathVector(0, 1, 0)));
    }
    void parallelHasATinyTolerance()
    {
        const ZETMathVector x(1, 0, 0);
        QVERIFY(x.IsParallel(ZETMathVector(1, 0.9e-9, 0)));
        QVERIFY(!x.IsParallel(ZETMathVector(1, 1.1e-9, 0)));
    }
    void comparisonIsExact()
    {
        const double next = std::nextafter(1.0, 2.0);
        QVERIFY(ZETMathVector(1, 2, 3) == ZETMathVector(1, 2, 3));
        QVERIFY(ZETMathVector(1, 2, 3) != ZETMathVector(next, 2, 3));
        QVERIFY(ZETMathVector(2, 1, 3) != ZETMathVector(2, next, 3));
        QVERIFY(ZETMathVector(2, 3, 1) != ZETMathVector(2, 3, next));
    }
    void copiesAreValues()
    {
        ZETMathVector vector(1, 2, 3);
        const ZETMathVector copy = vector;
        vector *= 2.0;
        QCOMPARE(copy, ZETMathVector(1, 2, 3));
    }
    void fourComponentsAreReadByIndex()
    {
        const ZETMathVector4D vector(1, 2, 3, 4);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(vector[i], i + 1.0);
        QCOMPARE(ZETMathVector4D()[3], 0.0);
    }
};

QTEST_GUILESS_MAIN(TestMathVector)
#include "TestMathVector.moc"
