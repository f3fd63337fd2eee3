#include <ZETMathematics/ZETMathLine.h>

#include <QtTest>

class TestMathLine : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsTheXAxis()
    {
        QCOMPARE(ZETMathLine().GetDistanceTo(ZETMathPoint(7, 3, 4)), 5.0);
        QCOMPARE(ZETMathLine().GetDistanceTo(ZETMathPoint(-7, 0, 0)), 0.0);
    }
    void lengthOfTheVectorDoesNotMatter()
    {
        for (const double length : {0.001, 1.0, 1000.0}) {
            ZETMathLine line;
            line.SetOrigin(ZETMathPoint(1, 1, 1));
            line.SetVector(ZETMathVector(0, 0, length));
            QCOMPARE(line.GetDistanceTo(ZETMathPoint(4, 5, 100)), 5.0);
        }
    }
    void pointBeyondTheEndsCountsByItsPerpendicularDistance()
    {
        ZETMathLine line;
        line.SetOrigin(ZETMathPoint(10, 0, 0));
        line.SetVector(ZETMathVector(5, 0, 0));
        QCOMPARE(line.GetDistanceTo(ZETMathPoint(1000, 2, 0)), 2.0);  // ahead of the end
        QCOMPARE(line.GetDistanceTo(ZETMathPoint(-1000, 2, 0)), 2.0); // behind the origin
        QCOMPARE(line.GetDistanceTo(ZETMathPoint(12, 2, 0)), 2.0);
    }
    void lineWithoutDirectionThrows()
    {
        ZETMathLine line;
        line.SetVector(ZETMathVector());
        QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, line.GetDistanceTo(ZETMathPoint(1, 2, 3)));
    }
};

QTEST_GUILESS_MAIN(TestMathLine)
#include "TestMathLine.moc"
