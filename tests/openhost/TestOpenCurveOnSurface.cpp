#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSegment_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "tests/openhost/OpenTestGeometry.h"
#include "tests/support/TestThrown.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>

#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom2d_OffsetCurve.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>

#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using std::numbers::pi;

ZETOpenRef<ZETOpenSurface> MakePlane()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -1000.0, 1000.0, -1000.0, 1000.0);
}

/*! About z, from the angle 0 to a full turn. */
ZETOpenRef<ZETOpenSurface> MakeFullCylinder(double radius)
{
    return ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, 2.0 * pi, 0.0, 1000.0);
}

ZETMathPoint GetCylinderPoint(double radius, double degrees, double height)
{
    const double angle = degrees * pi / 180.0;
    return ZETMathPoint(radius * std::cos(angle), radius * std::sin(angle), height);
}

bool IsNear(double a, double b, double tolerance = 1e-7)
{
    return std::abs(a - b) <= tolerance;
}
} // namespace

class TestOpenCurveOnSurface : public QObject
{
    Q_OBJECT

private slots:
    void lengthsOnAPlaneAreExact();
    void fourEqualPartsOfASegmentAreExact();
    void distanceToTheEndOfASegmentIsTheVertex();
    void verticesAreExactInBothForms();
    void closedCurveDropsARepeatedPointAndGoesOnBehindItsEnd();
    void openCurveStopsAtItsEnds();
    void distanceMayPassSeveralSegmentsAndRunBackwards();
    void segmentOfNoLength();
    void arcLengthOnACylinderIsTheHelix();
    void distanceOnACylinderFollowsTheHelix();
    void segmentTakesTheShortWayAcrossTheSeam();
    void segmentKeepsToAFaceThatDoesNotCloseAcrossItsGap();
    void ringRoundACylinder();
    void meridianThroughThePoleStaysOnItsCircle();
    void arcLengthOnASphereIsTrue();
    void arcLengthOnASplineAddsUp();
    void tangentIsTheDerivativeOfUnitLength();
    void circleHasTheLengthOfAnArc();
    void circleOnAReversedPlaneRunsTheOtherWayRound();
    void interpolatedCurveGoesThroughItsPoints_data();
    void interpolatedCurveGoesThroughItsPoints();
    void polylineKeepsTheSurface();
    void refinedCurveKeepsCloseToItsChords();
    void nearestPlace();
    void pointsAreProjectedAndTheirDistanceIsKept();
    void rangeKnowsWhatLiesInIt();
    void impossibleCurvesAreRefused();
    void curvesThatGoRoundWithoutEndAreRefused();
    void curveHoldsItsSurface();
};

void TestOpenCurveOnSurface::lengthsOnAPlaneAreExact()
{
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakePlane(), {{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 8.0, 0.0}, {0.0, 8.0, 0.0}}, true);
    QVERIFY(curve->IsClosed());
    QCOMPARE(curve->GetNumSegments(), 4);
    // Exactly, without a tolerance: the number of pieces of a segment is a ceiling.
    QVERIFY(curve->GetSegmentLength(0) == 10.0);
    QVERIFY(curve->GetSegmentLength(1) == 8.0);
    QVERIFY(curve->GetSegmentLength(2) == 10.0);
    QVERIFY(curve->GetSegmentLength(3) == 8.0);
    QVERIFY(curve->GetLength() == 36.0);
    QVERIFY(curve->GetSegmentLength(4) == 0.0);
}

void TestOpenCurveOnSurface::fourEqualPartsOfASegmentAreExact()
{
    const auto curve =
        ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 6.0, 0.0}}, false);
    const auto start = curve->GetLocation(0);
    for (int k = 0; k <= 4; ++k)
        QVERIFY(curve->GetLocation(k * 2.5, &start).GetMathPoint() == ZETMathPoint(2.5 * k, 0.0, 0.0));
    const double third = 10.0 / 3.0;
    for (int k = 1; k < 3; ++k)
        QVERIFY(IsNear(curve->GetLocation(k * third, &start).GetMathPoint(), ZETMathPoint(k * third, 0.0, 0.0), 1e-14));
}

void TestOpenCurveOnSurface::distanceToTheEndOfASegmentIsTheVertex()
{
    const auto plane = MakePlane();
    const auto cylinder = MakeFullCylinder(321.0);
    const auto flat =
        ZETOpenCurveOnSurface::MakePolyline(plane, {{0.1, 0.2, 0.0}, {7.7, 3.3, 0.0}, {5.1, 9.9, 0.0}}, true);
    const auto round = ZETOpenCurveOnSurface::MakePolyline(
        cylinder,
        {GetCylinderPoint(321.0, 10.0, 5.0), GetCylinderPoint(321.0, 55.0, 77.0), GetCylinderPoint(321.0, 33.0, 200.0)},
        true);
    for (const auto& curve : {flat, round}) {
        for (int s = 0; s < 3; ++s) {
            const auto start = curve->GetLocation(s);
            for (const int parts : {1, 3, 7}) {
                const double step = curve->GetSegmentLength(s) / parts;
                const auto end = curve->GetLocation(parts * step, &start);
                QCOMPARE(end.GetParameter(), double((s + 1) % 3));
                QVERIFY(end.GetMathPoint() == curve->GetLocation((s + 1) % 3).GetMathPoint());
            }
        }
    }
}

void TestOpenCurveOnSurface::verticesAreExactInBothForms()
{
    const auto cylinder = MakeFullCylinder(100.0);
    const QList<ZETMathPoint> points{GetCylinderPoint(100.0, 350.0, 10.0), GetCylinderPoint(100.0, 20.0, 30.0),
                                     GetCylinderPoint(100.0, 10.0, 50.0)};
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(cylinder, points, false);
    for (int i = 0; i < 3; ++i) {
        const auto location = curve->GetLocation(i);
        QCOMPARE(location.GetParameter(), double(i));
        QVERIFY(location.GetMathPoint() == curve->GetLocationOnSurface(location).GetPoint());
        QVERIFY(IsNear(location.GetMathPoint(), points[i], 1e-9));
        QCOMPARE(curve->GetLocationOnSurface(location).GetSurface(), cylinder.Get());
    }
}

void TestOpenCurveOnSurface::closedCurveDropsARepeatedPointAndGoesOnBehindItsEnd()
{
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}}, true);
    QCOMPARE(curve->GetNumSegments(), 4);
    QCOMPARE(curve->GetLocation(4).GetParameter(), 0.0);
    const auto corner = curve->GetLocation(3);
    QCOMPARE(curve->GetLocation(15.0, &corner).GetMathPoint(), ZETMathPoint(5.0, 0.0, 0.0));
    QCOMPARE(curve->GetLocation(105.0, &corner).GetMathPoint(), ZETMathPoint(10.0, 5.0, 0.0));
    QCOMPARE(curve->GetLocation(45.0, nullptr).GetMathPoint(), ZETMathPoint(5.0, 0.0, 0.0));
}

void TestOpenCurveOnSurface::openCurveStopsAtItsEnds()
{
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false);
    QVERIFY(!curve->IsClosed());
    QCOMPARE(curve->GetNumSegments(), 2);
    QCOMPARE(curve->GetLocation(99.0, nullptr).GetMathPoint(), ZETMathPoint(10.0, 10.0, 0.0));
    QCOMPARE(curve->GetLocation(2).GetMathPoint(), ZETMathPoint(10.0, 10.0, 0.0));
    const auto end = curve->GetLocation(2);
    QCOMPARE(curve->GetLocation(1.0, &end).GetMathPoint(), ZETMathPoint(10.0, 10.0, 0.0));
    QCOMPARE(curve->GetLocation(-99.0, &end).GetMathPoint(), ZETMathPoint(0.0, 0.0, 0.0));
    QCOMPARE(curve->GetLocation(std::numeric_limits<double>::infinity(), nullptr).GetMathPoint(),
             ZETMathPoint(10.0, 10.0, 0.0));
}

void TestOpenCurveOnSurface::distanceMayPassSeveralSegmentsAndRunBackwards()
{
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakePlane(), {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {9, 0, 0}}, false);
    QVERIFY(IsNear(curve->GetLocation(5.5, nullptr).GetMathPoint(), ZETMathPoint(5.5, 0.0, 0.0), 1e-14));
    const auto location = curve->GetLocation(5.5, nullptr);
    QVERIFY(IsNear(curve->GetLocation(-4.0, &location).GetMathPoint(), ZETMathPoint(1.5, 0.0, 0.0), 1e-12));
}

void TestOpenCurveOnSurface::segmentOfNoLength()
{
    const auto curve =
        ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {5, 0, 0}, {5, 0, 0}, {9, 0, 0}}, false);
    QCOMPARE(curve->GetNumSegments(), 3);
    QVERIFY(curve->GetSegmentLength(1) == 0.0);
    const auto start = curve->GetLocation(1);
    QCOMPARE(curve->GetLocation(0.0, &start).GetMathPoint(), ZETMathPoint(5.0, 0.0, 0.0));
    QCOMPARE(curve->GetLocation(7.0, nullptr).GetMathPoint(), ZETMathPoint(7.0, 0.0, 0.0));
    const auto round = MakeFullCylinder(10.0);
    const auto place = GetCylinderPoint(10.0, 40.0, 5.0);
    const auto still = ZETOpenCurveOnSurface::MakePolyline(round, {place, place, place}, false);
    QVERIFY(still->GetLength() == 0.0);
    QVERIFY(IsNear(still->GetLocation(3.0, nullptr).GetMathPoint(), place));
    QVERIFY(still->GetTangent(still->GetLocation(1)) == ZETMathVector());
}

void TestOpenCurveOnSurface::arcLengthOnACylinderIsTheHelix()
{
    const double radius = 200.0;
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius),
        {GetCylinderPoint(radius, 30.0, 100.0), GetCylinderPoint(radius, 30.0, 400.0),
         GetCylinderPoint(radius, 120.0, 400.0), GetCylinderPoint(radius, 165.0, 500.0)},
        false);
    QVERIFY(IsNear(curve->GetSegmentLength(0), 300.0));
    QVERIFY(IsNear(curve->GetSegmentLength(1), radius * 0.5 * pi));
    QVERIFY(IsNear(curve->GetSegmentLength(2), std::hypot(radius * 0.25 * pi, 100.0)));
    QVERIFY(IsNear(curve->GetLength(), 300.0 + radius * 0.5 * pi + std::hypot(radius * 0.25 * pi, 100.0)));
}

void TestOpenCurveOnSurface::distanceOnACylinderFollowsTheHelix()
{
    const double radius = 200.0;
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius), {GetCylinderPoint(radius, 0.0, 100.0), GetCylinderPoint(radius, 90.0, 300.0)}, false);
    for (const double share : {0.1, 0.25, 0.5, 0.9}) {
        const auto location = curve->GetLocation(share * curve->GetLength(), nullptr);
        QVERIFY(IsNear(location.GetMathPoint(), GetCylinderPoint(radius, 90.0 * share, 100.0 + 200.0 * share), 1e-6));
    }
}

void TestOpenCurveOnSurface::segmentTakesTheShortWayAcrossTheSeam()
{
    const double radius = 50.0;
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius), {GetCylinderPoint(radius, 350.0, 10.0), GetCylinderPoint(radius, 20.0, 10.0)}, false);
    QVERIFY(IsNear(curve->GetLength(), radius * pi / 6.0));
    QVERIFY(IsNear(curve->GetLocation(0.5 * curve->GetLength(), nullptr).GetMathPoint(),
                   GetCylinderPoint(radius, 5.0, 10.0), 1e-6));
    // The location on the surface is the same place, whichever turn its angle belongs to.
    const auto location = curve->GetLocation(0.5 * curve->GetLength(), nullptr);
    QVERIFY(IsNear(curve->GetLocationOnSurface(location).GetPoint(), location.GetMathPoint(), 1e-12));
}

void TestOpenCurveOnSurface::segmentKeepsToAFaceThatDoesNotCloseAcrossItsGap()
{
    const double radius = 50.0;
    const auto face = ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, 1.75 * pi, 0.0, 100.0);
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        face, {GetCylinderPoint(radius, 10.0, 10.0), GetCylinderPoint(radius, 300.0, 10.0)}, false);
    QVERIFY(IsNear(curve->GetLength(), radius * 290.0 / 180.0 * pi));
}

void TestOpenCurveOnSurface::ringRoundACylinder()
{
    const double radius = 50.0;
    QList<ZETMathPoint> points;
    for (int i = 0; i < 8; ++i)
        points.append(GetCylinderPoint(radius, 45.0 * i + 11.0, 10.0));
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(MakeFullCylinder(radius), points, true);
    QCOMPARE(curve->GetNumSegments(), 8);
    QVERIFY(IsNear(curve->GetLength(), 2.0 * pi * radius, 1e-6));
    for (int i = 0; i < 8; ++i)
        QVERIFY(IsNear(curve->GetSegmentLength(i), 0.25 * pi * radius));
}

void TestOpenCurveOnSurface::meridianThroughThePoleStaysOnItsCircle()
{
    const auto sphere = ZETOpenSurface::MakeSphere(ZETMathAxis(), 100.0, 0.0, 2.0 * pi, -0.5 * pi, 0.5 * pi);
    const ZETMathPoint east(0.0, 100.0, 0.0);
    const ZETMathPoint pole(0.0, 0.0, 100.0);
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(sphere, {east, pole, {-100.0, 0.0, 0.0}}, false);
    QVERIFY(IsNear(curve->GetSegmentLength(0), 50.0 * pi, 1e-6));
    QVERIFY(IsNear(curve->GetSegmentLength(1), 50.0 * pi, 1e-6));
    const auto middle = curve->GetLocation(25.0 * pi, nullptr).GetMathPoint();
    QVERIFY(IsNear(middle, ZETMathPoint(0.0, 100.0 * std::sqrt(0.5), 100.0 * std::sqrt(0.5)), 1e-5));
}

void TestOpenCurveOnSurface::arcLengthOnASphereIsTrue()
{
    const double radius = 100.0;
    const auto sphere = ZETOpenSurface::MakeSphere(ZETMathAxis(), radius, 0.0, pi, -1.5, 1.5);
    const auto at = [&](double longitude, double latitude) {
        return ZETMathPoint(radius * std::cos(latitude) * std::cos(longitude),
                            radius * std::cos(latitude) * std::sin(longitude), radius * std::sin(latitude));
    };
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(sphere, {at(0.2, 0.1), at(2.2, 0.1), at(2.7, 1.2)}, false);
    // Along a parallel.
    QVERIFY(IsNear(curve->GetSegmentLength(0), radius * std::cos(0.1) * 2.0, 1e-6));
    // Straight in longitude and latitude: the integral by Simpson's rule.
    const int count = 2000;
    double sum = 0.0;
    for (int i = 0; i <= count; ++i) {
        const double latitude = 0.1 + 1.1 * i / count;
        const double speed = std::hypot(0.5 * std::cos(latitude), 1.1);
        sum += speed * (i == 0 || i == count ? 1.0 : (i % 2 ? 4.0 : 2.0));
    }
    QVERIFY(IsNear(curve->GetSegmentLength(1), radius * sum / (3.0 * count), 1e-6));
}

void TestOpenCurveOnSurface::arcLengthOnASplineAddsUp()
{
    const auto surface = MakeWavySurface();
    const auto curve =
        ZETOpenCurveOnSurface::MakePolyline(surface, {{50, 50, 0}, {750, 80, 0}, {700, 550, 0}, {60, 500, 0}}, true);
    for (int s = 0; s < 4; ++s) {
        // The sum of many small chords is the length, to a little less.
        double chords = 0.0;
        const int count = 4000;
        auto before = curve->GetLocation(s).GetMathPoint();
        for (int i = 1; i <= count; ++i) {
            const auto point = ZETGeoLocationOnCurve(curve.Get(), s + double(i) / count).GetMathPoint();
            chords += point.GetDistanceTo(before);
            before = point;
        }
        QVERIFY(IsNear(curve->GetSegmentLength(s), chords, 1e-3));
        const auto start = curve->GetLocation(s);
        // Equal steps are equal in arc length.
        const double step = curve->GetSegmentLength(s) / 3.0;
        const auto first = curve->GetLocation(step, &start);
        const auto second = curve->GetLocation(2.0 * step, &start);
        const auto viaFirst = curve->GetLocation(step, &first);
        QVERIFY(IsNear(second.GetParameter(), viaFirst.GetParameter(), 1e-9));
        QVERIFY(IsNear(ZETGeoRangeOfCurve(first, second).GetLength(), step, 1e-6));
    }
}

void TestOpenCurveOnSurface::tangentIsTheDerivativeOfUnitLength()
{
    const double radius = 80.0;
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius), {GetCylinderPoint(radius, 350.0, 10.0), GetCylinderPoint(radius, 80.0, 110.0)},
        false);
    for (const double parameter : {0.0, 0.3, 0.7, 1.0}) {
        const double angle = (-10.0 + 90.0 * parameter) * pi / 180.0;
        const auto tangent = curve->GetTangent(ZETGeoLocationOnCurve(curve.Get(), parameter));
        ZETMathVector expected(-radius * std::sin(angle) * 0.5 * pi, radius * std::cos(angle) * 0.5 * pi, 100.0);
        expected.Normalize();
        QVERIFY((tangent - expected).GetSquaredMagnitude() < 1e-10);
    }
}

void TestOpenCurveOnSurface::circleHasTheLengthOfAnArc()
{
    const auto circle = ZETOpenCurveOnSurface::MakeCircle(MakePlane(), {10.0, 20.0, 5.0}, 50.0, 4);
    QVERIFY(circle->IsClosed());
    QCOMPARE(circle->GetNumSegments(), 4);
    QVERIFY(IsNear(circle->GetSegmentLength(2), 25.0 * pi, 1e-10));
    QVERIFY(IsNear(circle->GetLength(), 100.0 * pi, 1e-10));
    QVERIFY(IsNear(circle->GetLocation(0).GetMathPoint(), {60.0, 20.0, 0.0}, 1e-12));
    QVERIFY(IsNear(circle->GetLocation(1).GetMathPoint(), {10.0, 70.0, 0.0}, 1e-12));
    QVERIFY(IsNear(circle->GetLocation(3).GetMathPoint(), {10.0, -30.0, 0.0}, 1e-12));
    const double half = 50.0 * std::sqrt(0.5);
    QVERIFY(IsNear(circle->GetLocation(12.5 * pi, nullptr).GetMathPoint(), {10.0 + half, 20.0 + half, 0.0}, 1e-9));
    const auto tangent = circle->GetTangent(circle->GetLocation(0));
    QVERIFY(tangent.GetY() > 0.0 && std::abs(tangent.GetX()) < 1e-9);
}

void TestOpenCurveOnSurface::circleOnAReversedPlaneRunsTheOtherWayRound()
{
    const auto plane = MakePlane()->MakeReversed();
    const auto circle = ZETOpenCurveOnSurface::MakeCircle(plane, {0.0, 0.0, 0.0}, 50.0, 4);
    QVERIFY(IsNear(circle->GetLocation(1).GetMathPoint(), {0.0, -50.0, 0.0}, 1e-12));
}

void TestOpenCurveOnSurface::interpolatedCurveGoesThroughItsPoints_data()
{
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("ring");
    QTest::newRow("open") << false << false;
    QTest::newRow("closed") << true << false;
    QTest::newRow("round the cylinder") << true << true;
}

void TestOpenCurveOnSurface::interpolatedCurveGoesThroughItsPoints()
{
    QFETCH(bool, closed);
    QFETCH(bool, ring);
    const double radius = 100.0;
    const double step = ring ? 60.0 : 0.0;
    QList<ZETMathPoint> points;
    for (int i = 0; i < 6; ++i) {
        points.append(ring ? GetCylinderPoint(radius, 350.0 + step * i, 500.0 + 20.0 * (i % 2))
                           : GetCylinderPoint(radius, 350.0 + 40.0 * std::cos(pi / 3.0 * i),
                                              500.0 + 80.0 * std::sin(pi / 3.0 * i)));
    }
    const auto curve = ZETOpenCurveOnSurface::MakeInterpolated(MakeFullCylinder(radius), points, closed);
    QCOMPARE(curve->IsClosed(), closed);
    QCOMPARE(curve->GetNumSegments(), closed ? 6 : 5);
    for (int i = 0; i < 6; ++i)
        QVERIFY(IsNear(curve->GetLocation(i).GetMathPoint(), points[i], 1e-6));
    for (int i = 0; i + 1 < curve->GetNumSegments(); ++i) {
        // Smooth at the inner vertices: the direction just ahead is the one behind.
        const auto before = curve->GetTangent(ZETGeoLocationOnCurve(curve.Get(), i + 1 - 1e-7));
        const auto behind = curve->GetTangent(ZETGeoLocationOnCurve(curve.Get(), i + 1));
        const double size = std::sqrt(before.GetSquaredMagnitude() * behind.GetSquaredMagnitude());
        QVERIFY(before * behind > (1.0 - 1e-6) * size);
    }
    // The chord is shorter than the arc, but not by much here.
    const double chord = points[0].GetDistanceTo(points[1]);
    QVERIFY(curve->GetSegmentLength(0) > chord && curve->GetSegmentLength(0) < 1.2 * chord);
}

void TestOpenCurveOnSurface::polylineKeepsTheSurface()
{
    const double radius = 100.0;
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius), {GetCylinderPoint(radius, 0.0, 0.0), GetCylinderPoint(radius, 90.0, 0.0)}, false);
    QVERIFY(curve->GetNumPoints() > 50);
    QVERIFY(IsNear(curve->GetPoint(0), GetCylinderPoint(radius, 0.0, 0.0)));
    QVERIFY(IsNear(curve->GetPoint(curve->GetNumPoints() - 1), GetCylinderPoint(radius, 90.0, 0.0)));
    for (int i = 1; i < curve->GetNumPoints(); ++i) {
        const auto middle = curve->GetPoint(i - 1) + 0.5 * (curve->GetPoint(i) - curve->GetPoint(i - 1));
        QVERIFY(radius - std::hypot(middle.GetX(), middle.GetY()) <= 0.0101);
    }
    const auto square = ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, true);
    QCOMPARE(square->GetNumPoints(), 4);
    QCOMPARE(square->GetPoint(3), square->GetPoint(0));
}

void TestOpenCurveOnSurface::refinedCurveKeepsCloseToItsChords()
{
    const auto circle = ZETOpenCurveOnSurface::MakeCircle(MakePlane(), {50.0, 40.0, 0.0}, 20.0, 1);
    circle->SetName("hole");
    const auto fine = circle->MakeRefined(0.01);
    QVERIFY(fine->IsClosed());
    QCOMPARE(fine->GetName(), "hole");
    QVERIFY(std::abs(fine->GetLength() - circle->GetLength()) < 1e-6);
    for (int i = 0; i < fine->GetNumSegments(); ++i) {
        const auto start = fine->GetLocation(i).GetMathPoint();
        const auto end = fine->GetLocation((i + 1) % fine->GetNumSegments()).GetMathPoint();
        const auto middle = start + 0.5 * (end - start);
        QVERIFY(std::abs(start.GetDistanceTo({50.0, 40.0, 0.0}) - 20.0) < 1e-9);
        QVERIFY(20.0 - middle.GetDistanceTo({50.0, 40.0, 0.0}) < 0.0101);
    }
    // Chords that leave the arc by h are sqrt(8 r h) long: 100 of them go round. No more are made than that takes.
    QVERIFY(fine->GetNumSegments() <= 101);

    // What is straight stays as it is, and the vertices of a curve are vertices still.
    const auto square = ZETOpenCurveOnSurface::MakePolyline(
        MakePlane(), {{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 8.0, 0.0}, {0.0, 8.0, 0.0}}, true);
    QCOMPARE(square->MakeRefined(0.01)->GetNumSegments(), 4);
    const QList<ZETMathPoint> points{{0.0, 0.0, 0.5}, {20.0, 30.0, 0.0}, {60.0, 0.0, 0.0}};
    const auto smooth = ZETOpenCurveOnSurface::MakeInterpolated(MakePlane(), points, false)->MakeRefined(0.01);
    QVERIFY(smooth->GetNumSegments() > 10);
    QCOMPARE(smooth->GetMaxProjectionDistance(), 0.5);
    int found = 0;
    for (int i = 0; i <= smooth->GetNumSegments(); ++i)
        found += smooth->GetLocation(i).GetMathPoint().GetDistanceTo({20.0, 30.0, 0.0}) < 1e-9 ? 1 : 0;
    QCOMPARE(found, 1);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, smooth->MakeRefined(0.0));
}

void TestOpenCurveOnSurface::nearestPlace()
{
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false);
    QCOMPARE(curve->Project({4.0, -3.0, 2.0}).GetMathPoint(), ZETMathPoint(4.0, 0.0, 0.0));
    QCOMPARE(curve->Project({14.0, 6.0, 2.0}).GetParameter(), 1.6);
    QCOMPARE(curve->Project({-4.0, -3.0, 2.0}).GetParameter(), 0.0);
    QCOMPARE(curve->Project({12.0, 30.0, 2.0}).GetParameter(), 2.0);
    const double radius = 100.0;
    const auto arc = ZETOpenCurveOnSurface::MakePolyline(
        MakeFullCylinder(radius), {GetCylinderPoint(radius, 340.0, 7.0), GetCylinderPoint(radius, 70.0, 7.0)}, false);
    QVERIFY(IsNear(arc->Project(GetCylinderPoint(20.0, 30.0, 90.0)).GetMathPoint(), GetCylinderPoint(radius, 30.0, 7.0),
                   1e-6));
    QVERIFY(IsNear(arc->Project(GetCylinderPoint(20.0, 100.0, 90.0)).GetMathPoint(),
                   GetCylinderPoint(radius, 70.0, 7.0), 1e-6));
}

void TestOpenCurveOnSurface::pointsAreProjectedAndTheirDistanceIsKept()
{
    const auto curve =
        ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0.25}, {10, 0, -0.5}, {10, 10, 0}}, false);
    QCOMPARE(curve->GetMaxProjectionDistance(), 0.5);
    QCOMPARE(curve->GetLocation(1).GetMathPoint(), ZETMathPoint(10.0, 0.0, 0.0));
}

void TestOpenCurveOnSurface::rangeKnowsWhatLiesInIt()
{
    const auto open = ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {20, 0, 0}}, false);
    const auto on = [&](double parameter) { return ZETGeoLocationOnCurve(open.Get(), parameter); };
    const ZETGeoRangeOfCurve range(on(0.5), on(1.5));
    QVERIFY(range.IsInside(on(0.5)) && range.IsInside(on(1.5)) && range.IsInside(on(1.0)));
    QVERIFY(range.IsOutside(on(0.4)) && range.IsOutside(on(1.6)));
    QCOMPARE(range.GetLength(), 10.0);
    QCOMPARE(range.GetCurve(), open.Get());
    QCOMPARE(open->GetWholeRange().GetLength(), 20.0);
    QVERIFY(!ZETGeoRangeOfCurve().IsInside(on(1.0)));
    QCOMPARE(ZETGeoRangeOfCurve().GetLength(), 0.0);

    const auto closed =
        ZETOpenCurveOnSurface::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, true);
    const auto round = [&](double parameter) { return ZETGeoLocationOnCurve(closed.Get(), parameter); };
    const ZETGeoRangeOfCurve over(round(3.5), round(0.5));
    QVERIFY(over.IsInside(round(0.0)) && over.IsInside(round(3.75)) && over.IsInside(round(0.5)));
    QVERIFY(over.IsOutside(round(0.75)) && over.IsOutside(round(3.0)));
    QCOMPARE(over.GetLength(), 10.0);
    QVERIFY(over.IsOutside(on(0.0)));
    QCOMPARE(closed->GetWholeRange().GetLength(), 40.0);
}

void TestOpenCurveOnSurface::impossibleCurvesAreRefused()
{
    const auto plane = MakePlane();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    using Curve = ZETOpenCurveOnSurface;
    const QList<ZETMathPoint> none;
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakePolyline(plane, none, false));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakePolyline(plane, QList<ZETMathPoint>{{0, 0, 0}}, false));
    // The last point repeats the first, so there are three points, but not enough of them.
    const auto makeRepeating = [&] { Curve::MakePolyline(plane, {{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}, true); };
    QCOMPARE(Thrown(makeRepeating), QStringLiteral("a closed curve needs at least three different points"));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakePolyline(plane, {{0, 0, 0}, {nan, 0, 0}}, false));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakePolyline(nullptr, {{0, 0, 0}, {1, 0, 0}}, false));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakeInterpolated(plane, {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}}, false));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakeCircle(plane, {0, 0, 0}, 0.0, 4));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakeCircle(plane, {0, 0, 0}, 5.0, 0));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Curve::MakeCircle(MakeFullCylinder(10.0), {0, 0, 0}, 5.0, 4));
}

void TestOpenCurveOnSurface::curvesThatGoRoundWithoutEndAreRefused()
{
    const QString fault = "a curve on a surface goes round more than 1000 times";
    const auto cylinder = MakeFullCylinder(100.0);
    const auto plane = MakePlane();
    const auto makeStraight = [](const ZETOpenSurface& surface, double u, double v) {
        return [&surface, u, v] { ZETOpenSurfaceSegment(surface, gp_Pnt2d(0.0, 0.0), gp_Pnt2d(u, v)); };
    };
    QCOMPARE(Thrown(makeStraight(*cylinder, 1000.0 * 2.0 * pi, 1e6)), QString());
    QCOMPARE(Thrown(makeStraight(*cylinder, 1e300, 0.0)), fault);
    QCOMPARE(Thrown(makeStraight(*plane, 1e6, 1e6)), QString());

    const auto makePart = [](const ZETOpenSurface& surface, const Handle(Geom2d_Curve) & curve, double first,
                             double last) {
        return [&surface, curve, first, last] { ZETOpenSurfaceSegment(surface, curve, first, last); };
    };
    const Handle(Geom2d_Line) round = new Geom2d_Line(gp_Pnt2d(0.0, 0.0), gp_Dir2d(1.0, 0.0));
    QCOMPARE(Thrown(makePart(*cylinder, round, 0.0, 100.0)), QString());
    QCOMPARE(Thrown(makePart(*cylinder, round, 0.0, 1e4)), fault);

    // The kernel would take the period of this spline, 4, away again and again.
    TColgp_Array1OfPnt2d poles(1, 4);
    TColStd_Array1OfReal knots(1, 5);
    TColStd_Array1OfInteger multiplicities(1, 5);
    multiplicities.Init(1);
    for (int i = 0; i < 5; ++i)
        knots(i + 1) = i;
    poles(1) = gp_Pnt2d(0.0, 0.0);
    poles(2) = gp_Pnt2d(1.0, 0.0);
    poles(3) = gp_Pnt2d(0.0, 1.0);
    poles(4) = gp_Pnt2d(1.0, 1.0);
    const Handle(Geom2d_Curve) loop = new Geom2d_BSplineCurve(poles, knots, multiplicities, 2, true);
    QCOMPARE(Thrown(makePart(*plane, loop, 3.0, 6.0)), QString());
    QCOMPARE(Thrown(makePart(*plane, loop, 3.0, 1e300)), fault);
    const Handle(Geom2d_Curve) part = new Geom2d_TrimmedCurve(new Geom2d_OffsetCurve(loop, 1.0), 0.0, 3.0);
    QCOMPARE(Thrown(makePart(*plane, part, -1e300, 3.0)), fault);
}

void TestOpenCurveOnSurface::curveHoldsItsSurface()
{
    ZETOpenRef<ZETOpenCurveOnSurface> curve;
    {
        const auto plane = MakePlane();
        curve = ZETOpenCurveOnSurface::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false);
    }
    QCOMPARE(curve->GetLocationOnSurface(curve->GetLocation(1)).GetPoint(), ZETMathPoint(10.0, 0.0, 0.0));
}

QTEST_GUILESS_MAIN(TestOpenCurveOnSurface)
#include "TestOpenCurveOnSurface.moc"
