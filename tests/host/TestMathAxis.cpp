#include <ZETMathematics/ZETMath4x4Matrix.h>
#include <ZETMathematics/ZETMathAxis.h>

#include <QtTest>

#include <cmath>
#include <random>

namespace
{
constexpr double quarterTurn = 1.5707963267948966;

/*! Origin at 10, 20, 30; first along Y, second along Z, third along X. */
ZETMathAxis MakeAxis()
{
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(10, 20, 30));
    axis.SetDirections(ZETMathVector(0, 1, 0), ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0));
    return axis;
}

bool IsNear(const ZETMathVector& a, const ZETMathVector& b)
{
    return (a - b).GetSquaredMagnitude() < 1e-24;
}
bool IsNear(const ZETMathPoint& a, const ZETMathPoint& b)
{
    return a.GetDistanceTo(b) < 1e-9;
}
} // namespace

/*! The axis and its homogeneous matrix. */
class TestMathAxis : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsTheGlobalSystem()
    {
        const ZETMathAxis axis;
        QCOMPARE(axis.GetOrigin(), ZETMathPoint());
        QCOMPARE(axis.GetFirstDirection(), ZETMathVector(1, 0, 0));
        QCOMPARE(axis.GetSecondDirection(), ZETMathVector(0, 1, 0));
        QCOMPARE(axis.GetThirdDirection(), ZETMathVector(0, 0, 1));
        const ZETMathPoint point(0.1, -2.7, 1e6);
        QCOMPARE(axis * point, point);
        QCOMPARE(axis / point, point);
        QCOMPARE(axis * ZETMathVector(0.1, 0.2, 0.3), ZETMathVector(0.1, 0.2, 0.3));
    }
    void productTakesAPointFromOwnerToLocal()
    {
        QCOMPARE(MakeAxis() * ZETMathPoint(11, 22, 33), ZETMathPoint(2, 3, 1));
        QCOMPARE(MakeAxis() * ZETMathPoint(10, 20, 30), ZETMathPoint(0, 0, 0));
    }
    void quotientTakesAPointFromLocalToOwner()
    {
        QCOMPARE(MakeAxis() / ZETMathPoint(2, 3, 1), ZETMathPoint(11, 22, 33));
    }
    void vectorIsTurnedButNotMoved()
    {
        QCOMPARE(MakeAxis() * ZETMathVector(1, 2, 3), ZETMathVector(2, 3, 1));
        ZETMathAxis moved;
        moved.SetOrigin(ZETMathPoint(100, 200, 300));
        QCOMPARE(moved * ZETMathVector(0.3, 0.4, 0.5), ZETMathVector(0.3, 0.4, 0.5));
    }
    void productAndQuotientUndoEachOther()
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> number(-1000.0, 1000.0);
        for (int i = 0; i < 1000; ++i) {
            ZETMathAxis axis;
            axis.SetOrigin(ZETMathPoint(number(random), number(random), number(random)));
            axis.Tilt(ZETMathAxis::PlaneFirstSecond, number(random));
            axis.Tilt(ZETMathAxis::PlaneSecondThird, number(random));
            axis.Tilt(ZETMathAxis::PlaneThirdFirst, number(random));
            const ZETMathPoint point(number(random), number(random), number(random));
            QVERIFY(IsNear(axis / (axis * point), point));
            QVERIFY(IsNear(axis * (axis / point), point));
        }
    }
    void planeOfFirstAndSecondHasTheValueOne() { QCOMPARE(int(ZETMathAxis::PlaneFirstSecond), 1); }
    void tiltTurnsFirstTowardsSecondAboutThird()
    {
        ZETMathAxis axis = MakeAxis();
        axis.Tilt(ZETMathAxis::AxisPlane(1), quarterTurn);
        QVERIFY(IsNear(axis.GetFirstDirection(), ZETMathVector(0, 0, 1)));
        QVERIFY(IsNear(axis.GetSecondDirection(), ZETMathVector(0, -1, 0)));
        QCOMPARE(axis.GetThirdDirection(), ZETMathVector(1, 0, 0));
        QCOMPARE(axis.GetOrigin(), ZETMathPoint(10, 20, 30));
    }
    void tiltTakesRadians()
    {
        ZETMathAxis axis;
        axis.Tilt(ZETMathAxis::PlaneFirstSecond, 0.3);
        QVERIFY(IsNear(axis.GetFirstDirection(), ZETMathVector(std::cos(0.3), std::sin(0.3), 0)));
    }
    void tiltInTheOtherPlanesKeepsTheOneDirection()
    {
        ZETMathAxis axis;
        axis.Tilt(ZETMathAxis::PlaneSecondThird, quarterTurn);
        QCOMPARE(axis.GetFirstDirection(), ZETMathVector(1, 0, 0));
        QVERIFY(IsNear(axis.GetSecondDirection(), ZETMathVector(0, 0, 1)));
        axis = ZETMathAxis();
        axis.Tilt(ZETMathAxis::PlaneThirdFirst, quarterTurn);
        QCOMPARE(axis.GetSecondDirection(), ZETMathVector(0, 1, 0));
        QVERIFY(IsNear(axis.GetThirdDirection(), ZETMathVector(1, 0, 0)));
    }
    void tiltKeepsTheSystemRightHanded()
    {
        ZETMathAxis axis = MakeAxis();
        axis.Tilt(ZETMathAxis::PlaneFirstSecond, 1.1);
        axis.Tilt(ZETMathAxis::PlaneSecondThird, -0.4);
        QVERIFY(IsNear(axis.GetFirstDirection() ^ axis.GetSecondDirection(), axis.GetThirdDirection()));
    }
    void matrixTransformsAPointAsTheAxisDoes()
    {
        QCOMPARE(ZETMath4x4Matrix(MakeAxis()) * ZETMathPoint(11, 22, 33), MakeAxis() * ZETMathPoint(11, 22, 33));
        QCOMPARE(ZETMath4x4Matrix() * ZETMathPoint(1, 2, 3), ZETMathPoint(1, 2, 3));
    }
    void matrixMultipliesAHomogeneousVectorPlainly()
    {
        const ZETMath4x4Matrix matrix(MakeAxis());
        const ZETMathVector4D image = matrix * ZETMathVector4D(1, 2, 3, 2);
        // Turned, plus the fourth component times where the origin goes; no division by it.
        QCOMPARE(image[0], 2.0 + 2.0 * -20.0);
        QCOMPARE(image[1], 3.0 + 2.0 * -30.0);
        QCOMPARE(image[2], 1.0 + 2.0 * -10.0);
        QCOMPARE(image[3], 2.0);
    }
};

QTEST_GUILESS_MAIN(TestMathAxis)
#include "TestMathAxis.moc"
