#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenRegion.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "tests/support/TestThrown.h"

#include <ZETMathematics/ZETMathAxis.h>

#include <QTest>

#include <cmath>
#include <numbers>

namespace
{
using std::numbers::pi;
using Curve = ZETOpenCurveOnSurface;

ZETOpenRef<ZETOpenSurface> MakePlane()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -1000.0, 1000.0, -1000.0, 1000.0);
}

QList<ZETMathPoint> GetVertices(const ZETGeoCurve& curve)
{
    QList<ZETMathPoint> points;
    for (int i = 0; i < curve.GetNumSegments() + (curve.IsClosed() ? 0 : 1); ++i)
        points.append(curve.GetLocation(i).GetMathPoint());
    return points;
}

/*! What Initialize says against the chain; empty if nothing. */
QString GetFault(const QList<ZETGeoRangeOfCurve>& ranges, const QList<bool>& senses)
{
    const ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(new ZETGeoAssembledCurveOnSurface(ranges, senses, false));
    return Thrown([&] { chain->Initialize(); });
}
} // namespace

class TestOpenAssembledCurve : public QObject
{
    Q_OBJECT

private slots:
    void wholeCurveKeepsItsSegments();
    void reversedPartIsWalkedFromItsEnd();
    void partsOfCurvesGiveBrokenSegments();
    void partOfAClosedCurveGoesOnBehindItsEnd();
    void chainThatMeetsItsStartIsClosed();
    void reversedChain();
    void distancesAndTangentsFollowTheWalk();
    void chainOfChains();
    void faultsAreTold();
    void chainHoldsItsCurves();
    void regionHoldsPlacesWithinItsBoundary();
    void regionWithAHole();
    void regionAcrossTheSeam();
    void regionOfOpenOrWindingBoundariesIsEmpty();
};

void TestOpenAssembledCurve::wholeCurveKeepsItsSegments()
{
    const auto plane = MakePlane();
    const auto curve = Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}, {0, 5, 0}}, true);
    const auto chain = MakeAssembledCurve(curve);
    QVERIFY(chain->IsClosed());
    QCOMPARE(chain->GetNumSegments(), 4);
    QCOMPARE(GetVertices(*chain), GetVertices(*curve));
    QCOMPARE(chain->GetLength(), 30.0);
    QCOMPARE(chain->GetSurface(), plane.Get());
    QCOMPARE(chain->GetNumPoints(), 5);
    QCOMPARE(chain->GetLocationOnSurface(chain->GetLocation(2)).GetPoint(), ZETMathPoint(10.0, 5.0, 0.0));
}

void TestOpenAssembledCurve::reversedPartIsWalkedFromItsEnd()
{
    const auto plane = MakePlane();
    const auto first = Curve::MakePolyline(plane, {{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}, false);
    const auto second = Curve::MakePolyline(plane, {{10, 9, 0}, {10, 6, 0}, {10, 0, 0}}, false);
    const auto chain = MakeAssembledCurve({first, second}, {true, false});
    QVERIFY(!chain->IsClosed());
    const QList<ZETMathPoint> expected{{0, 0, 0}, {4, 0, 0}, {10, 0, 0}, {10, 6, 0}, {10, 9, 0}};
    QCOMPARE(GetVertices(*chain), expected);
    QCOMPARE(chain->GetSegmentLength(0), 4.0);
    QCOMPARE(chain->GetSegmentLength(1), 6.0);
    QCOMPARE(chain->GetSegmentLength(2), 6.0);
    QCOMPARE(chain->GetSegmentLength(3), 3.0);
}

void TestOpenAssembledCurve::partsOfCurvesGiveBrokenSegments()
{
    const auto plane = MakePlane();
    const auto curve = Curve::MakePolyline(plane, {{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}, false);
    const ZETGeoRangeOfCurve range({curve.Get(), 0.5}, {curve.Get(), 1.5});
    for (const bool forward : {true, false}) {
        const ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(
            new ZETGeoAssembledCurveOnSurface({range}, {forward}, false));
        chain->Initialize();
        QList<ZETMathPoint> expected{{2, 0, 0}, {4, 0, 0}, {7, 0, 0}};
        if (!forward)
            std::reverse(expected.begin(), expected.end());
        QCOMPARE(GetVertices(*chain), expected);
        QCOMPARE(chain->GetLength(), 5.0);
        QCOMPARE(chain->GetLocation(1.0, nullptr).GetMathPoint(), ZETMathPoint(forward ? 3.0 : 6.0, 0.0, 0.0));
    }
}

void TestOpenAssembledCurve::partOfAClosedCurveGoesOnBehindItsEnd()
{
    const auto square = Curve::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, true);
    const ZETGeoRangeOfCurve range({square.Get(), 3.5}, {square.Get(), 0.5});
    const ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(new ZETGeoAssembledCurveOnSurface({range}, {true}, false));
    chain->Initialize();
    QVERIFY(!chain->IsClosed());
    const QList<ZETMathPoint> expected{{0, 5, 0}, {0, 0, 0}, {5, 0, 0}};
    QCOMPARE(GetVertices(*chain), expected);
}

void TestOpenAssembledCurve::chainThatMeetsItsStartIsClosed()
{
    const auto plane = MakePlane();
    const auto lower = Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false);
    const auto upper = Curve::MakePolyline(plane, {{0, 0.0005, 0}, {5, 9, 0}, {10, 0, 0}}, false);
    const auto chain = MakeAssembledCurve({lower, upper}, {true, false});
    QVERIFY(chain->IsClosed());
    QCOMPARE(chain->GetNumSegments(), 3);
    QCOMPARE(chain->GetLocation(3).GetParameter(), 0.0);
    const auto wide = Curve::MakePolyline(plane, {{0, 0.0011, 0}, {5, 9, 0}, {10, 0, 0}}, false);
    QVERIFY(!MakeAssembledCurve({lower, wide}, {true, false})->IsClosed());
}

void TestOpenAssembledCurve::reversedChain()
{
    const auto curve = Curve::MakePolyline(MakePlane(), {{0, 0, 0}, {4, 0, 0}, {10, 3, 0}}, false);
    const ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(
        new ZETGeoAssembledCurveOnSurface({curve->GetWholeRange()}, {true}, true));
    chain->Initialize();
    const QList<ZETMathPoint> expected{{10, 3, 0}, {4, 0, 0}, {0, 0, 0}};
    QCOMPARE(GetVertices(*chain), expected);
}

void TestOpenAssembledCurve::distancesAndTangentsFollowTheWalk()
{
    const double radius = 100.0;
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, 2.0 * pi, 0.0, 1000.0);
    const auto at = [&](double degrees, double height) {
        return ZETMathPoint(radius * std::cos(degrees * pi / 180.0), radius * std::sin(degrees * pi / 180.0), height);
    };
    const auto curve = Curve::MakePolyline(cylinder, {at(80.0, 100.0), at(20.0, 100.0), at(-40.0, 100.0)}, false);
    const auto chain = MakeAssembledCurve({curve}, {false});
    QVERIFY(chain->GetLocation(0).GetMathPoint().GetDistanceTo(at(-40.0, 100.0)) < 1e-9);
    const auto quarter = chain->GetLocation(radius * 90.0 * pi / 180.0, nullptr);
    QVERIFY(quarter.GetMathPoint().GetDistanceTo(at(50.0, 100.0)) < 1e-6);
    auto tangent = chain->GetTangent(quarter);
    tangent.Normalize();
    const ZETMathVector expected(-std::sin(50.0 * pi / 180.0), std::cos(50.0 * pi / 180.0), 0.0);
    QVERIFY((tangent - expected).GetSquaredMagnitude() < 1e-12);
    // Three equal steps through the segment, and the last is its end exactly.
    const auto start = chain->GetLocation(0);
    const double step = chain->GetSegmentLength(0) / 3.0;
    QCOMPARE(chain->GetLocation(3 * step, &start).GetParameter(), 1.0);
}

void TestOpenAssembledCurve::chainOfChains()
{
    const auto plane = MakePlane();
    const auto curve = Curve::MakePolyline(plane, {{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}, false);
    const auto inner = MakeAssembledCurve({curve}, {false});
    const ZETGeoRangeOfCurve range({inner.Get(), 0.0}, {inner.Get(), 2.0});
    const ZETOpenRef<ZETGeoAssembledCurveOnSurface> outer(new ZETGeoAssembledCurveOnSurface({range}, {false}, false));
    outer->Initialize();
    QCOMPARE(GetVertices(*outer), GetVertices(*curve));
}

void TestOpenAssembledCurve::faultsAreTold()
{
    const auto plane = MakePlane();
    const auto first = Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false);
    const auto second = Curve::MakePolyline(plane, {{10.5, 0, 0}, {20, 0, 0}}, false);
    const auto elsewhere = Curve::MakePolyline(MakePlane(), {{10, 0, 0}, {20, 0, 0}}, false);
    const auto whole = [](const auto& curve) { return curve->GetWholeRange(); };
    QCOMPARE(GetFault({whole(first)}, {true}), QString());
    QCOMPARE(GetFault({}, {}), "a chain of curves needs one part at least");
    QCOMPARE(GetFault({whole(first)}, {}), "a chain of 1 parts can't have 0 senses");
    QCOMPARE(GetFault({whole(first), ZETGeoRangeOfCurve()}, {true, true}),
             "part 2 of the chain isn't a part of a curve on a surface");
    QCOMPARE(GetFault({whole(first), whole(second)}, {true, true}),
             "part 2 of the chain begins 0.5 mm away from where part 1 ends");
    QCOMPARE(GetFault({whole(first), whole(elsewhere)}, {true, true}),
             "part 2 of the chain lies on another surface than part 1");
    const ZETGeoRangeOfCurve empty({first.Get(), 0.75}, {first.Get(), 0.25});
    QCOMPARE(GetFault({empty}, {true}), "part 1 of the chain is empty");
}

void TestOpenAssembledCurve::chainHoldsItsCurves()
{
    ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain;
    bool gone = false;
    {
        const auto curve = Curve::MakePolyline(MakePlane(), {{0, 0, 0}, {10, 0, 0}}, false);
        connect(curve.Get(), &QObject::destroyed, this, [&] { gone = true; });
        chain = MakeAssembledCurve(curve);
    }
    QVERIFY(!gone);
    QCOMPARE(chain->GetLength(), 10.0);
    chain = nullptr;
    QVERIFY(gone);
}

void TestOpenAssembledCurve::regionHoldsPlacesWithinItsBoundary()
{
    const auto plane = MakePlane();
    const auto corner =
        Curve::MakePolyline(plane, {{0, 0, 0}, {20, 0, 0}, {20, 10, 0}, {10, 10, 0}, {10, 20, 0}, {0, 20, 0}}, true);
    const ZETOpenRegion region({corner.Get()});
    const auto holds = [&](double x, double y) { return region.Contains(plane->Project({x, y, 0.0})); };
    QVERIFY(holds(5.0, 5.0) && holds(15.0, 5.0) && holds(5.0, 15.0));
    QVERIFY(!holds(15.0, 15.0) && !holds(-1.0, 5.0) && !holds(25.0, 5.0));
    QVERIFY(holds(20.0, 5.0) && holds(0.0, 0.0));
    QVERIFY(!region.IsEmpty());
    // The same place told by another surface.
    const auto other = MakePlane();
    QVERIFY(region.Contains(other->Project({5.0, 5.0, 0.0})));
    QVERIFY(!region.Contains(other->Project({15.0, 15.0, 0.0})));
}

void TestOpenAssembledCurve::regionWithAHole()
{
    const auto plane = MakePlane();
    const auto outer = Curve::MakePolyline(plane, {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}}, true);
    const auto hole = Curve::MakeCircle(plane, {50.0, 50.0, 0.0}, 20.0, 4);
    const ZETOpenRegion region({outer.Get(), hole.Get()});
    QVERIFY(region.Contains(plane->Project({10.0, 10.0, 0.0})));
    QVERIFY(!region.Contains(plane->Project({50.0, 50.0, 0.0})));
    QVERIFY(region.Contains(plane->Project({50.0, 71.0, 0.0})));
}

void TestOpenAssembledCurve::regionAcrossTheSeam()
{
    const double radius = 100.0;
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, 2.0 * pi, 0.0, 1000.0);
    const auto at = [&](double degrees, double height) {
        return ZETMathPoint(radius * std::cos(degrees * pi / 180.0), radius * std::sin(degrees * pi / 180.0), height);
    };
    const auto boundary =
        Curve::MakePolyline(cylinder, {at(-30.0, 100.0), at(30.0, 100.0), at(30.0, 300.0), at(-30.0, 300.0)}, true);
    const ZETOpenRegion region({boundary.Get()});
    for (const double inside : {-29.0, -1.0, 0.0, 1.0, 29.0})
        QVERIFY(region.Contains(cylinder->Project(at(inside, 200.0))));
    for (const double outside : {-31.0, 31.0, 180.0})
        QVERIFY(!region.Contains(cylinder->Project(at(outside, 200.0))));
}

void TestOpenAssembledCurve::regionOfOpenOrWindingBoundariesIsEmpty()
{
    const auto plane = MakePlane();
    const auto open = Curve::MakePolyline(plane, {{0, 0, 0}, {20, 0, 0}, {20, 10, 0}}, false);
    const ZETOpenRegion nothing({open.Get()});
    QVERIFY(!nothing.Contains(plane->Project({19.0, 1.0, 0.0})));
    QVERIFY(nothing.IsEmpty() && !nothing.HasWinding());
    const auto back = Curve::MakePolyline(plane, {{0, 0, 0}, {20, 7, 0}, {40, 14, 0}, {20, 7, 0}}, true);
    QVERIFY(ZETOpenRegion({back.Get()}).IsEmpty());
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.0, 2.0 * pi, 0.0, 100.0);
    const auto ring = Curve::MakePolyline(cylinder, {{10, 0, 50}, {-5, 8.660254, 50}, {-5, -8.660254, 50}}, true);
    const ZETOpenRegion winding({ring.Get()});
    QVERIFY(!winding.Contains(cylinder->Project({10.0, 0.0, 20.0})));
    QVERIFY(winding.IsEmpty() && winding.HasWinding());
}

QTEST_GUILESS_MAIN(TestOpenAssembledCurve)
#include "TestOpenAssembledCurve.moc"
