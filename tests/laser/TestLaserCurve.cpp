#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "tests/support/TestThrown.h"

#include <ZETMathematics/ZETMathVector4D.h>

#include <QtTest>

namespace
{
constexpr double noLimit = 10000000.0;

QSharedPointer<ZETLaserCurve> MakeCurve(std::initializer_list<ZETMathPoint> places, bool closed = false)
{
    auto curve = QSharedPointer<ZETLaserCurve>::create(QSharedPointer<QObject>());
    for (const ZETMathPoint& at : places)
        curve->GetPoints().emplaceBack(at, ZETMathVector(0, 0, 1));
    curve->SetClosed(closed);
    return curve;
}

QList<double> GetXs(const QSharedPointer<ZETLaserCurve>& curve)
{
    QList<double> xs;
    for (const ZETLaserPoint& point : std::as_const(*curve).GetPoints())
        xs.append(point.GetPosition().GetX());
    return xs;
}

ZETMathAxis MakeMovedAxis(const ZETMathPoint& origin)
{
    ZETMathAxis axis;
    axis.SetOrigin(origin);
    return axis;
}
} // namespace

/*! The curve, and the contour that forwards to it. What thinning keeps in general is held by TestLaserThinning. */
class TestLaserCurve : public QObject
{
    Q_OBJECT

private slots:
    void newCurveIsEmptyOpenAndNameless();
    void copyTakesPointsAndParentButNeitherNameNorFlag();
    void assignmentTakesThePointsOnly();
    void assignmentToItselfDoesNothing();

    void openCurveOfUpToTwoPointsIsLeftAlone();
    void closedCurveOfUpToOnePointIsLeftAlone();
    void closedCurveOfTwoPointsLosesTheSecond();
    void middleOfThreeCollinearPointsGoes();
    void middleStaysIfTheChordIsTooLong();
    void zeroToleranceKeepsAll();
    void consecutiveAcceptsKeepTheAnchor();
    void anchorAdvancesToTheLastSurvivor();
    void pointBeyondTheChordCountsByItsPerpendicularDistance();
    void runBackToTheAnchorCountsAsStraight();
    void deviationEqualToTheToleranceKeeps();
    void closedCurveMayLoseItsLastPoint();
    void closingChordIsNotLimitedInLength();
    void closingChordStartsAtTheLastSurvivor();
    void openCurveKeepsItsLastPoint();

    void transformMovesPositionsAndLeavesOffsetPoints();
    void transformTreatsTheNormalAsAPoint();
    void transformGivesAZeroNormalADirection();
    void transformThrowsWhenTheNormalComesToTheOrigin();
    void negativeFourthComponentThrows();
    void fourthComponentDividesAndTheResultIsUnit();

    void contourForwardsToItsCurves();
    void contourCountsThePointsOfItsCurves();
};

void TestLaserCurve::newCurveIsEmptyOpenAndNameless()
{
    const auto curve = MakeCurve({});
    QCOMPARE(curve->GetPointCount(), 0);
    QVERIFY(!curve->IsClosed());
    QVERIFY(curve->GetName().isEmpty());
    QCOMPARE(curve->parent(), nullptr);
}

void TestLaserCurve::copyTakesPointsAndParentButNeitherNameNorFlag()
{
    auto contour = QSharedPointer<ZETLaserContour>::create(QSharedPointer<QObject>());
    auto* curve = new ZETLaserCurve(contour);
    curve->GetPoints().emplaceBack(ZETMathPoint(1, 2, 3), ZETMathVector());
    curve->SetName(QStringLiteral("name"));
    curve->SetClosed(true);

    const auto* copy = new ZETLaserCurve(*curve); // belongs to the contour, like the other
    QCOMPARE(copy->parent(), contour.data());
    QVERIFY(copy->GetName().isEmpty());
    QVERIFY(!copy->IsClosed());
    QCOMPARE(copy->GetPointCount(), 1);
    QVERIFY(copy->GetPoints().isSharedWith(curve->GetPoints()));
}

void TestLaserCurve::assignmentTakesThePointsOnly()
{
    const auto curve = MakeCurve({{1, 0, 0}, {2, 0, 0}}, true);
    curve->SetName(QStringLiteral("name"));
    const auto other = MakeCurve({});
    other->SetName(QStringLiteral("other"));
    *other = *curve;
    QCOMPARE(GetXs(other), QList<double>({1, 2}));
    QCOMPARE(other->GetName(), QStringLiteral("other"));
    QVERIFY(!other->IsClosed());
    QCOMPARE(other->parent(), nullptr);
}

void TestLaserCurve::assignmentToItselfDoesNothing()
{
    const auto curve = MakeCurve({{1, 0, 0}, {2, 0, 0}}, true);
    const ZETLaserCurve& same = *curve;
    *curve = same;
    QCOMPARE(GetXs(curve), QList<double>({1, 2}));
    QVERIFY(curve->IsClosed());
}

void TestLaserCurve::openCurveOfUpToTwoPointsIsLeftAlone()
{
    for (const auto& curve : {MakeCurve({}), MakeCurve({{1, 0, 0}}), MakeCurve({{1, 0, 0}, {1, 0, 0}})}) {
        const int before = curve->GetPointCount();
        curve->MinimizePoints(1000.0, noLimit);
        QCOMPARE(curve->GetPointCount(), before);
    }
}

void TestLaserCurve::closedCurveOfUpToOnePointIsLeftAlone()
{
    for (const auto& curve : {MakeCurve({}, true), MakeCurve({{1, 0, 0}}, true)}) {
        const int before = curve->GetPointCount();
        curve->MinimizePoints(1000.0, noLimit);
        QCOMPARE(curve->GetPointCount(), before);
    }
}

void TestLaserCurve::closedCurveOfTwoPointsLosesTheSecond()
{
    const auto curve = MakeCurve({{0, 0, 0}, {100, 0, 0}}, true);
    curve->MinimizePoints(0.0, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 100})); // 0.0 isn't above the deviation 0.0
    curve->MinimizePoints(1e-9, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0}));
}

void TestLaserCurve::middleOfThreeCollinearPointsGoes()
{
    const auto curve = MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    curve->MinimizePoints(0.01, 10000000.0);
    QCOMPARE(GetXs(curve), QList<double>({0, 2}));
}

void TestLaserCurve::middleStaysIfTheChordIsTooLong()
{
    for (const double maxLength : {1.9, 2.0}) { // the length must stay below the limit
        const auto curve = MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
        curve->MinimizePoints(0.01, maxLength);
        QCOMPARE(GetXs(curve), QList<double>({0, 1, 2}));
    }
}

void TestLaserCurve::zeroToleranceKeepsAll()
{
    for (const bool closed : {false, true}) {
        const auto curve = MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0.001, 0, 0}}, closed);
        curve->MinimizePoints(0.0, noLimit);
        QCOMPARE(curve->GetPointCount(), 4);
    }
}

void TestLaserCurve::consecutiveAcceptsKeepTheAnchor()
{
    // From point 0 all four lie within 0.1 of each chord; from point 1 the last would not.
    const auto curve = MakeCurve({{0, 0, 0}, {1, 0.09, 0}, {2, 0, 0}, {3, 0, 0}});
    curve->MinimizePoints(0.1, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 3}));
}

void TestLaserCurve::anchorAdvancesToTheLastSurvivor()
{
    const auto curve = MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 1, 0}, {2, 2, 0}, {7, 3, 0}});
    curve->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 2, 2, 7}));
}

void TestLaserCurve::pointBeyondTheChordCountsByItsPerpendicularDistance()
{
    // Out to 10 and back to 1: the far point lies on the line of the short chord.
    const auto curve = MakeCurve({{0, 0, 0}, {10, 0.005, 0}, {1, 0, 0}});
    curve->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 1}));
}

void TestLaserCurve::runBackToTheAnchorCountsAsStraight()
{
    // Meant: a chord below 0.005 is no line, and what lies between goes, however far away it is.
    const auto near = MakeCurve({{0, 0, 0}, {50, 50, 0}, {0.0049, 0, 0}});
    near->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(near), QList<double>({0, 0.0049}));

    const auto atLimit = MakeCurve({{0, 0, 0}, {50, 50, 0}, {0.005, 0, 0}});
    atLimit->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(atLimit), QList<double>({0, 50, 0.005}));
}

void TestLaserCurve::deviationEqualToTheToleranceKeeps()
{
    const auto curve = MakeCurve({{0, 0, 0}, {1, 0.25, 0}, {2, 0, 0}});
    curve->MinimizePoints(0.25, noLimit);
    QCOMPARE(curve->GetPointCount(), 3);
    curve->MinimizePoints(0.2500001, noLimit);
    QCOMPARE(curve->GetPointCount(), 2);
}

void TestLaserCurve::closedCurveMayLoseItsLastPoint()
{
    const auto curve = MakeCurve({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 1, 0}}, true);
    curve->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 2, 2, 0}));
}

void TestLaserCurve::closingChordIsNotLimitedInLength()
{
    // Meant: only the chords of the pass are limited.
    const auto curve = MakeCurve({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 1, 0}}, true);
    curve->MinimizePoints(0.01, 0.5);
    QCOMPARE(GetXs(curve), QList<double>({0, 2, 2, 0}));
}

void TestLaserCurve::closingChordStartsAtTheLastSurvivor()
{
    // The points between the corner and the last one go in the pass; the closing chord still measures them.
    const auto straight =
        MakeCurve({{0, 0, 0}, {2, 0, 0}, {2, 4, 0}, {0, 4, 0}, {0, 3, 0}, {0, 2, 0}, {0, 1, 0}}, true);
    straight->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(straight), QList<double>({0, 2, 2, 0}));

    const auto bent =
        MakeCurve({{0, 0, 0}, {2, 0, 0}, {2, 4, 0}, {0, 4, 0}, {0.009, 3, 0}, {0.012, 2, 0}, {0.012, 1, 0}}, true);
    bent->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(bent), QList<double>({0, 2, 2, 0, 0.012}));
}

void TestLaserCurve::openCurveKeepsItsLastPoint()
{
    const auto curve = MakeCurve({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 1, 0}});
    curve->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(curve), QList<double>({0, 2, 2, 0, 0}));
}

void TestLaserCurve::transformMovesPositionsAndLeavesOffsetPoints()
{
    const auto curve = MakeCurve({{11, 22, 33}});
    curve->GetPoints()[0].SetOffsetPoint(ZETMathPoint(7, 8, 9));
    curve->Transform(MakeMovedAxis(ZETMathPoint(10, 20, 30)));
    QCOMPARE(curve->GetPoints()[0].GetPosition(), ZETMathPoint(1, 2, 3));
    QCOMPARE(curve->GetPoints()[0].GetOffsetPoint(), ZETMathPoint(7, 8, 9));
}

void TestLaserCurve::transformTreatsTheNormalAsAPoint()
{
    const auto curve = MakeCurve({{0, 0, 0}}); // normal 0, 0, 1
    curve->Transform(MakeMovedAxis(ZETMathPoint(-3, 0, -3)));
    QCOMPARE(curve->GetPoints()[0].GetNormal(), ZETMathVector(3.0 / 5.0, 0, 4.0 / 5.0));
}

void TestLaserCurve::transformGivesAZeroNormalADirection()
{
    const auto curve = MakeCurve({{0, 0, 0}});
    curve->GetPoints()[0].SetNormal(ZETMathVector());
    curve->Transform(MakeMovedAxis(ZETMathPoint(0, 5, 0)));
    QCOMPARE(curve->GetPoints()[0].GetNormal(), ZETMathVector(0, -1, 0));
    QVERIFY(curve->GetPoints()[0].HasNormal());
}

void TestLaserCurve::transformThrowsWhenTheNormalComesToTheOrigin()
{
    const auto curve = MakeCurve({{1, 0, 0}, {2, 0, 0}});
    curve->GetPoints()[1].SetNormal(ZETMathVector());
    QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, curve->Transform(ZETMathAxis()));
    const auto moved = MakeCurve({{1, 0, 0}, {2, 0, 0}});
    moved->GetPoints()[1].SetNormal(ZETMathVector(5, 0, 0));
    QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException,
                             moved->Transform(MakeMovedAxis(ZETMathPoint(5, 0, 0))));
    QCOMPARE(moved->GetPoints()[0].GetPosition(), ZETMathPoint(-4, 0, 0)); // no way back
}

void TestLaserCurve::negativeFourthComponentThrows()
{
    for (const double fourth : {-1.0, 0.0, 0.99e-5}) {
        QCOMPARE(Thrown([&] { ZETLaserCurve::GetDirection(ZETMathVector4D(0, 0, 1, fourth)); }),
                 QStringLiteral("ZETLaserCurve::Transform() cannot normalize homogenous vector"));
    }
}

void TestLaserCurve::fourthComponentDividesAndTheResultIsUnit()
{
    QCOMPARE(ZETLaserCurve::GetDirection(ZETMathVector4D(0, -6, 8, 2)), ZETMathVector(0, -3.0 / 5.0, 4.0 / 5.0));
    QCOMPARE(ZETLaserCurve::GetDirection(ZETMathVector4D(0, 0, 1, 1e-5)), ZETMathVector(0, 0, 1));
}

void TestLaserCurve::contourForwardsToItsCurves()
{
    auto contour = QSharedPointer<ZETLaserContour>::create(QSharedPointer<QObject>());
    contour->AddCurve(MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    contour->AddCurve(MakeCurve({{5, 0, 0}, {6, 0, 0}, {7, 0, 0}, {7, 1, 0}}));
    contour->MinimizePoints(0.01, noLimit);
    QCOMPARE(GetXs(contour->GetCurves()[0]), QList<double>({0, 2}));
    QCOMPARE(GetXs(contour->GetCurves()[1]), QList<double>({5, 7, 7}));
    contour->Transform(MakeMovedAxis(ZETMathPoint(1, 0, 0)));
    QCOMPARE(GetXs(contour->GetCurves()[0]), QList<double>({-1, 1}));
    QCOMPARE(GetXs(contour->GetCurves()[1]), QList<double>({4, 6, 6}));
}

void TestLaserCurve::contourCountsThePointsOfItsCurves()
{
    auto contour = QSharedPointer<ZETLaserContour>::create(QSharedPointer<QObject>());
    QCOMPARE(contour->GetPointCount(), 0);
    QVERIFY(contour->GetCurves().isEmpty());
    contour->AddCurve(MakeCurve({}));
    const auto curve = MakeCurve({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, true);
    contour->AddCurve(curve);
    contour->AddCurve(curve);              // no test of any kind
    QCOMPARE(contour->GetPointCount(), 6); // the closing span isn't a point
    QCOMPARE(contour->GetCurves().size(), 3);
    QCOMPARE(std::as_const(*contour).GetCurves().last(), curve);
    contour->GetCurves().removeFirst(); // the list itself
    QCOMPARE(contour->GetCurves().size(), 2);
}

QTEST_GUILESS_MAIN(TestLaserCurve)
#include "TestLaserCurve.moc"
