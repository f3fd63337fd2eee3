#include "laser/ZETLaserPoint.h"

#include <QtTest>

namespace
{
ZETMathAxis MakeAxis()
{
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(10, 20, 30));
    axis.SetDirections(ZETMathVector(0, 1, 0), ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0));
    return axis;
}
} // namespace

class TestLaserPoint : public QObject
{
    Q_OBJECT

private slots:
    void defaultHasNeitherNormalNorOffsetPoint()
    {
        const ZETLaserPoint point;
        QCOMPARE(point.GetPosition(), ZETMathPoint());
        QCOMPARE(point.GetNormal(), ZETMathVector());
        QCOMPARE(point.GetOffsetPoint(), ZETMathPoint());
        QVERIFY(!point.HasNormal());
        QVERIFY(!point.HasOffsetPoint());
        QCOMPARE(point.parent(), nullptr);
    }
    void positionAndNormalAreKept()
    {
        ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector(0, 0, 2));
        QCOMPARE(point.GetPosition(), ZETMathPoint(1, 2, 3));
        QCOMPARE(point.GetNormal(), ZETMathVector(0, 0, 2));
        QVERIFY(point.HasNormal());
        QVERIFY(!point.HasOffsetPoint());
        point.SetPosition(ZETMathPoint(4, 5, 6));
        point.SetNormal(ZETMathVector());
        QCOMPARE(point.GetPosition(), ZETMathPoint(4, 5, 6));
        QVERIFY(!point.HasNormal());
    }
    void smallestNormalIsANormal()
    {
        QVERIFY(ZETLaserPoint(ZETMathPoint(), ZETMathVector(0, 1e-150, 0)).HasNormal());
        QVERIFY(!ZETLaserPoint(ZETMathPoint(), ZETMathVector(0, -0.0, 0)).HasNormal());
    }
    void offsetPointSetsItsFlag()
    {
        ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector(0, 0, 1));
        QCOMPARE(point.GetShownPoint(), ZETMathPoint(1, 2, 3));
        point.SetOffsetPoint(ZETMathPoint());
        QVERIFY(point.HasOffsetPoint());
        QCOMPARE(point.GetShownPoint(), ZETMathPoint());
        QCOMPARE(point.GetPosition(), ZETMathPoint(1, 2, 3));
    }
    void copyAndAssignmentTakeTheGeometryAndNothingElse()
    {
        QObject parent;
        ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector(0, 0, 1));
        point.SetOffsetPoint(ZETMathPoint(7, 8, 9));
        point.setParent(&parent);
        point.setObjectName(QStringLiteral("point"));

        const ZETLaserPoint copy(point);
        ZETLaserPoint assigned;
        assigned.setObjectName(QStringLiteral("other"));
        assigned = point;
        for (const ZETLaserPoint* other : {&copy, const_cast<const ZETLaserPoint*>(&assigned)}) {
            QCOMPARE(other->GetPosition(), ZETMathPoint(1, 2, 3));
            QCOMPARE(other->GetNormal(), ZETMathVector(0, 0, 1));
            QVERIFY(other->HasOffsetPoint());
            QCOMPARE(other->GetOffsetPoint(), ZETMathPoint(7, 8, 9));
            QCOMPARE(other->parent(), nullptr);
        }
        QVERIFY(copy.objectName().isEmpty());
        QCOMPARE(assigned.objectName(), QStringLiteral("other"));
        point.setParent(nullptr);
    }
    void assignmentTakesTheOffsetFlagBack()
    {
        ZETLaserPoint point;
        point.SetOffsetPoint(ZETMathPoint(1, 1, 1));
        point = ZETLaserPoint();
        QVERIFY(!point.HasOffsetPoint());
    }
    void comparisonLooksAtAllFourMembers()
    {
        const ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector(0, 0, 1));
        QVERIFY(point == ZETLaserPoint(point));
        QVERIFY(point != ZETLaserPoint(ZETMathPoint(1, 2, 4), ZETMathVector(0, 0, 1)));
        QVERIFY(point != ZETLaserPoint(ZETMathPoint(1, 2, 3), ZETMathVector(0, 1, 0)));
        ZETLaserPoint flagged(point);
        flagged.SetOffsetPoint(ZETMathPoint());
        QVERIFY(point != flagged); // differs by the flag alone
        ZETLaserPoint elsewhere(point);
        elsewhere.SetOffsetPoint(ZETMathPoint(0, 0, 1));
        QVERIFY(flagged != elsewhere);
    }
    void transformTakesAllThreeMembers()
    {
        ZETLaserPoint point(ZETMathPoint(11, 22, 33), ZETMathVector(1, 2, 3));
        point.SetOffsetPoint(ZETMathPoint(10, 20, 31));
        point.Transform(MakeAxis());
        QCOMPARE(point.GetPosition(), ZETMathPoint(2, 3, 1));
        QCOMPARE(point.GetNormal(), ZETMathVector(2, 3, 1));
        QCOMPARE(point.GetOffsetPoint(), ZETMathPoint(0, 1, 0));
    }
    void transformTakesTheOffsetPointEvenIfItDoesNotCount()
    {
        ZETLaserPoint point;
        point.Transform(MakeAxis());
        QVERIFY(!point.HasOffsetPoint());
        QCOMPARE(point.GetOffsetPoint(), ZETMathPoint(-20, -30, -10));
    }
    void zeroNormalStaysZeroUnderTransform()
    {
        ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector());
        point.Transform(MakeAxis());
        QVERIFY(!point.HasNormal());
    }
    void distanceIsThatOfThePosition()
    {
        ZETLaserPoint point(ZETMathPoint(1, 2, 3), ZETMathVector());
        point.SetOffsetPoint(ZETMathPoint(100, 100, 100));
        QCOMPARE(point.GetDistanceTo(ZETMathPoint(3, 5, 9)), 7.0);
    }
};

QTEST_GUILESS_MAIN(TestLaserPoint)
#include "TestLaserPoint.moc"
