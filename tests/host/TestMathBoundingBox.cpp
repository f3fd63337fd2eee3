#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathSetOfPoints.h>

#include <QtTest>

#include <type_traits>

/*! The box, and the set of points that makes one. */
class TestMathBoundingBox : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsEmptyWithItsCornersAtTheOrigin()
    {
        const ZETMathBoundingBox box;
        QVERIFY(box.IsEmpty());
        QCOMPARE(box.GetLowerPoint(), ZETMathPoint());
        QCOMPARE(box.GetUpperPoint(), ZETMathPoint());
    }
    void cornersMayComeInAnyOrder()
    {
        const ZETMathBoundingBox box(ZETMathPoint(1, 5, 3), ZETMathPoint(4, 2, 6));
        QCOMPARE(box.GetLowerPoint(), ZETMathPoint(1, 2, 3));
        QCOMPARE(box.GetUpperPoint(), ZETMathPoint(4, 5, 6));
    }
    void emptyBoxTakesOverTheOther()
    {
        ZETMathBoundingBox box;
        box.Expand(ZETMathBoundingBox(ZETMathPoint(5, 5, 5), ZETMathPoint(6, 6, 6)));
        QVERIFY(!box.IsEmpty());
        QCOMPARE(box.GetLowerPoint(), ZETMathPoint(5, 5, 5)); // the origin isn't in it
        QCOMPARE(box.GetUpperPoint(), ZETMathPoint(6, 6, 6));
    }
    void expandingByAnEmptyBoxChangesNothing()
    {
        ZETMathBoundingBox box(ZETMathPoint(5, 5, 5), ZETMathPoint(6, 6, 6));
        box.Expand(ZETMathBoundingBox());
        QCOMPARE(box.GetLowerPoint(), ZETMathPoint(5, 5, 5));
        QCOMPARE(box.GetUpperPoint(), ZETMathPoint(6, 6, 6));
        ZETMathBoundingBox empty;
        empty.Expand(ZETMathBoundingBox());
        QVERIFY(empty.IsEmpty());
    }
    void expandedBoxHoldsBoth()
    {
        ZETMathBoundingBox box(ZETMathPoint(0, 0, 0), ZETMathPoint(2, 2, 2));
        box.Expand(ZETMathBoundingBox(ZETMathPoint(-1, 1, 1), ZETMathPoint(1, 5, 1)));
        QCOMPARE(box.GetLowerPoint(), ZETMathPoint(-1, 0, 0));
        QCOMPARE(box.GetUpperPoint(), ZETMathPoint(2, 5, 2));
    }
    void setWithoutPointsHasAnEmptyBox() { QVERIFY(ZETMathSetOfPoints().GetBoundingBox().IsEmpty()); }
    void boxOfASetHoldsAllItsPoints()
    {
        ZETMathSetOfPoints set;
        set.points.append(ZETMathPoint(3, 1, 2));
        const ZETMathPoint second(1, 3, 2);
        set.points.append(second);
        QCOMPARE(set.points.size(), 2);
        QCOMPARE(set.points[1], second);
        QCOMPARE(set.GetBoundingBox().GetLowerPoint(), ZETMathPoint(1, 1, 2));
        QCOMPARE(set.GetBoundingBox().GetUpperPoint(), ZETMathPoint(3, 3, 2));
    }
    void copyOfASetIsAValue()
    {
        ZETMathSetOfPoints set;
        set.points.append(ZETMathPoint(1, 1, 1));
        const ZETMathSetOfPoints copy = set;
        set.points.append(ZETMathPoint(2, 2, 2));
        QCOMPARE(copy.points.size(), 1);
        static_assert(std::has_virtual_destructor_v<ZETMathSetOfPoints>);
        static_assert(std::has_virtual_destructor_v<ZETMathBoundingBox>);
    }
};

QTEST_GUILESS_MAIN(TestMathBoundingBox)
#include "TestMathBoundingBox.moc"
