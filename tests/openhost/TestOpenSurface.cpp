#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "tests/openhost/OpenTestGeometry.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace
{
using std::numbers::pi;

/*! Origin (10, 20, 30), turned about the third direction by a quarter, and that one along x. */
ZETMathAxis MakeTurnedAxis()
{
    ZETMathAxis axis;
    axis.SetOrigin({10.0, 20.0, 30.0});
    axis.SetDirections({0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0});
    return axis;
}

bool IsNear(const ZETMathVector& a, const ZETMathVector& b, double tolerance = 1e-9)
{
    return (a - b).GetSquaredMagnitude() <= tolerance * tolerance;
}
} // namespace

class TestOpenSurface : public QObject
{
    Q_OBJECT

private slots:
    void planeProjectsAtRightAnglesAndStopsAtItsBorder();
    void planeInATurnedAxisKeepsItsDirections();
    void cylinderPointsAndNormalsFollowTheFormula();
    void projectionToAPartOfACylinderStopsAtItsBorder();
    void projectionAcrossTheSeamOfACylinder();
    void sphereNormalsPointOutwardsAlsoAtThePole();
    void coneNormalsFollowTheFormulaAlsoAtTheApex();
    void torusPointsFollowTheFormula();
    void splineGoesThroughItsGrid_data();
    void splineGoesThroughItsGrid();
    void splineNormalIsRowsCrossAlongRow();
    void splineProjectionIsNotBeatenByASearchOverAGrid();
    void reversedFaceTurnsTheNormalOnly();
    void boxIsTight();
    void trianglesKeepTheDeflectionAndFaceTheNormal();
    void impossibleSurfacesAreRefused_data();
    void impossibleSurfacesAreRefused();
    void pointThatIsNotANumberIsRefused();
    void surfaceLivesWhileItIsHeld();
};

void TestOpenSurface::planeProjectsAtRightAnglesAndStopsAtItsBorder()
{
    const auto plane = ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 100.0, -50.0, 50.0);
    QVERIFY(plane->IsPlane());
    QCOMPARE(plane->Project({10.0, 20.0, 7.0}).GetPoint(), ZETMathPoint(10.0, 20.0, 0.0));
    QCOMPARE(plane->Project({-5.0, 20.0, 7.0}).GetPoint(), ZETMathPoint(0.0, 20.0, 0.0));
    QCOMPARE(plane->Project({130.0, 90.0, -7.0}).GetPoint(), ZETMathPoint(100.0, 50.0, 0.0));
    QCOMPARE(plane->GetNormal(plane->Project({10.0, 20.0, 7.0})), ZETMathVector(0.0, 0.0, 1.0));
    QCOMPARE(plane->GetDistanceTo({10.0, 20.0, -7.0}), 7.0);
    QCOMPARE(plane->Project({1.0, 2.0, 3.0}).GetSurface(), plane.Get());
}

void TestOpenSurface::planeInATurnedAxisKeepsItsDirections()
{
    const auto plane = ZETOpenSurface::MakePlane(MakeTurnedAxis(), 0.0, 100.0, 0.0, 50.0);
    const auto location = plane->Project({99.0, 25.0, 37.0});
    QCOMPARE(location.GetPoint(), ZETMathPoint(10.0, 25.0, 37.0));
    QCOMPARE(location.GetU(), 5.0);
    QCOMPARE(location.GetV(), 7.0);
    QCOMPARE(plane->GetNormal(location), ZETMathVector(1.0, 0.0, 0.0));
}

void TestOpenSurface::cylinderPointsAndNormalsFollowTheFormula()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 500.0, 0.0, pi, 0.0, 1000.0);
    QVERIFY(!cylinder->IsPlane());
    for (const double degrees : {1.0, 30.0, 90.0, 137.0, 179.0}) {
        const double angle = degrees * pi / 180.0;
        const ZETMathVector outwards(std::cos(angle), std::sin(angle), 0.0);
        for (const double radius : {20.0, 499.0, 500.0, 3000.0}) {
            const auto location = cylinder->Project(ZETMathPoint(0.0, 0.0, 333.0) + outwards * radius);
            QVERIFY(IsNear(location.GetPoint(), ZETMathPoint(0.0, 0.0, 333.0) + outwards * 500.0));
            QVERIFY(IsNear(cylinder->GetNormal(location), outwards));
            QVERIFY(std::abs(location.GetU() - angle) < 1e-12);
        }
    }
}

void TestOpenSurface::projectionToAPartOfACylinderStopsAtItsBorder()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.0, 0.5 * pi, 0.0, 100.0);
    // On the other side of the axis: the nearest of all places are the two straight borders.
    QVERIFY(IsNear(cylinder->Project({-8.0, -9.0, 50.0}).GetPoint(), ZETMathPoint(10.0, 0.0, 50.0)) ||
            IsNear(cylinder->Project({-8.0, -9.0, 50.0}).GetPoint(), ZETMathPoint(0.0, 10.0, 50.0)));
    QVERIFY(IsNear(cylinder->Project({3.0, -9.0, 50.0}).GetPoint(), ZETMathPoint(10.0, 0.0, 50.0)));
    QVERIFY(IsNear(cylinder->Project({3.0, -9.0, 120.0}).GetPoint(), ZETMathPoint(10.0, 0.0, 100.0)));
    QVERIFY(IsNear(cylinder->Project({6.0, 8.0, 120.0}).GetPoint(), ZETMathPoint(6.0, 8.0, 100.0)));
}

void TestOpenSurface::projectionAcrossTheSeamOfACylinder()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.0, 2.0 * pi, 0.0, 100.0);
    for (const double angle : {-1e-3, -1e-9, 0.0, 1e-9, 1e-3, pi, 3.0}) {
        const ZETMathPoint place(10.0 * std::cos(angle), 10.0 * std::sin(angle), 5.0);
        QVERIFY(IsNear(cylinder->Project(ZETMathPoint(2.0 * place.GetX(), 2.0 * place.GetY(), 5.0)).GetPoint(), place));
    }
    // From the axis every direction is as good; the answer still lies on the cylinder.
    const auto fromAxis = cylinder->Project({0.0, 0.0, 5.0}).GetPoint();
    QVERIFY(std::abs(std::hypot(fromAxis.GetX(), fromAxis.GetY()) - 10.0) < 1e-9);
    QVERIFY(std::abs(fromAxis.GetZ() - 5.0) < 1e-9);
}

void TestOpenSurface::sphereNormalsPointOutwardsAlsoAtThePole()
{
    ZETMathAxis axis;
    axis.SetOrigin({1.0, 2.0, 3.0});
    const auto sphere = ZETOpenSurface::MakeSphere(axis, 50.0, 0.0, 2.0 * pi, -0.5 * pi, 0.5 * pi);
    const QList<ZETMathVector> directions{{0.0, 0.0, 1.0},  {0.0, 0.0, -1.0}, {1.0, 0.0, 0.0},
                                          {0.6, 0.0, -0.8}, {0.0, -0.6, 0.8}, {-1.0, 0.0, 0.0}};
    for (const ZETMathVector& direction : directions) {
        const auto location = sphere->Project(axis.GetOrigin() + direction * 70.0);
        QVERIFY(IsNear(location.GetPoint(), axis.GetOrigin() + direction * 50.0));
        QVERIFY(IsNear(sphere->GetNormal(location), direction));
    }
}

void TestOpenSurface::coneNormalsFollowTheFormulaAlsoAtTheApex()
{
    // The wall rises by 45 degrees from the apex at the origin.
    const auto cone = ZETOpenSurface::MakeCone(ZETMathAxis(), 0.0, 0.25 * pi, 0.0, 2.0 * pi, 0.0, 100.0);
    const double half = std::sqrt(0.5);
    const auto location = cone->Project({30.0, 0.0, 10.0});
    QVERIFY(IsNear(location.GetPoint(), ZETMathPoint(20.0, 0.0, 20.0)));
    QVERIFY(IsNear(cone->GetNormal(location), ZETMathVector(half, 0.0, -half)));
    const auto apex = cone->Project({0.0, 0.0, -10.0});
    QVERIFY(IsNear(apex.GetPoint(), ZETMathPoint(0.0, 0.0, 0.0)));
    const ZETMathVector normal = cone->GetNormal(apex);
    QVERIFY(std::abs(normal.GetSquaredMagnitude() - 1.0) < 1e-9);
    QVERIFY(normal.GetZ() < 0.0);
}

void TestOpenSurface::torusPointsFollowTheFormula()
{
    const auto torus = ZETOpenSurface::MakeTorus(ZETMathAxis(), 100.0, 20.0, 0.0, pi, 0.0, pi);
    const auto location = torus->Project({0.0, 100.0, 50.0});
    QVERIFY(IsNear(location.GetPoint(), ZETMathPoint(0.0, 100.0, 20.0)));
    QVERIFY(IsNear(torus->GetNormal(location), ZETMathVector(0.0, 0.0, 1.0)));
    QVERIFY(IsNear(torus->Project({0.0, 200.0, 0.0}).GetPoint(), ZETMathPoint(0.0, 120.0, 0.0)));
}

void TestOpenSurface::splineGoesThroughItsGrid_data()
{
    QTest::addColumn<int>("rowCount");
    QTest::addColumn<int>("columnCount");
    QTest::newRow("2 x 2") << 2 << 2;
    QTest::newRow("2 x 5") << 2 << 5;
    QTest::newRow("3 x 3") << 3 << 3;
    QTest::newRow("4 x 2") << 4 << 2;
    QTest::newRow("9 x 7") << 9 << 7;
}

void TestOpenSurface::splineGoesThroughItsGrid()
{
    QFETCH(int, rowCount);
    QFETCH(int, columnCount);
    QList<QList<ZETMathPoint>> rows;
    for (int i = 0; i < rowCount; ++i) {
        QList<ZETMathPoint> row;
        for (int k = 0; k < columnCount; ++k)
            row.append(ZETMathPoint(50.0 * i + 3.0 * k, 40.0 * k, 5.0 * i * k - 2.0 * k * k));
        rows.append(row);
    }
    const auto surface = ZETOpenSurface::MakeBSpline(rows);
    for (const auto& row : rows) {
        for (const ZETMathPoint& point : row)
            QVERIFY(surface->GetDistanceTo(point) < 1e-6);
    }
}

void TestOpenSurface::splineNormalIsRowsCrossAlongRow()
{
    // Rows go on along x, points of a row along y: x cross y is z.
    const auto surface =
        ZETOpenSurface::MakeBSpline({{{0.0, 0.0, 0.0}, {0.0, 10.0, 0.0}}, {{10.0, 0.0, 0.0}, {10.0, 10.0, 0.0}}});
    QVERIFY(IsNear(surface->GetNormal(surface->Project({5.0, 5.0, 1.0})), ZETMathVector(0.0, 0.0, 1.0)));
}

void TestOpenSurface::splineProjectionIsNotBeatenByASearchOverAGrid()
{
    const auto surface = MakeWavySurface();
    QList<ZETMathPoint> places;
    for (int i = 0; i <= 200; ++i) {
        for (int k = 0; k <= 200; ++k)
            places.append(ZETGeoLocationOnSurface(surface.Get(), i / 200.0, k / 200.0).GetPoint());
    }
    QRandomGenerator random(20);
    for (int n = 0; n < 300; ++n) {
        const ZETMathPoint point(random.bounded(1200.0) - 200.0, random.bounded(1000.0) - 200.0,
                                 random.bounded(400.0) - 200.0);
        double best = std::numeric_limits<double>::infinity();
        for (const ZETMathPoint& place : places)
            best = std::min(best, place.GetDistanceTo(point));
        QVERIFY2(surface->GetDistanceTo(point) <= best + 1e-6, qPrintable(QString("%1 %2 %3: %4 against %5")
                                                                              .arg(point.GetX())
                                                                              .arg(point.GetY())
                                                                              .arg(point.GetZ())
                                                                              .arg(surface->GetDistanceTo(point))
                                                                              .arg(best)));
    }
}

void TestOpenSurface::reversedFaceTurnsTheNormalOnly()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.0, pi, 0.0, 100.0);
    const auto reversed = cylinder->MakeReversed();
    const auto location = cylinder->Project({3.0, 20.0, 40.0});
    const auto other = reversed->Project({3.0, 20.0, 40.0});
    QCOMPARE(other.GetPoint(), location.GetPoint());
    QCOMPARE(other.GetU(), location.GetU());
    QVERIFY(IsNear(reversed->GetNormal(other), cylinder->GetNormal(location) * -1.0));
    QVERIFY(IsNear(reversed->MakeReversed()->GetNormal(location), cylinder->GetNormal(location)));
}

void TestOpenSurface::boxIsTight()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.25 * pi, 0.75 * pi, 0.0, 100.0);
    const auto box = cylinder->GetBoundingBox();
    const double half = 10.0 * std::sqrt(0.5);
    QVERIFY(IsNear(box.GetLowerPoint(), ZETMathPoint(-half, half, 0.0), 1e-4));
    QVERIFY(IsNear(box.GetUpperPoint(), ZETMathPoint(half, 10.0, 100.0), 1e-4));
    const auto plane = ZETOpenSurface::MakePlane(MakeTurnedAxis(), 0.0, 100.0, 0.0, 50.0)->GetBoundingBox();
    QVERIFY(IsNear(plane.GetLowerPoint(), ZETMathPoint(10.0, 20.0, 30.0), 1e-6));
    QVERIFY(IsNear(plane.GetUpperPoint(), ZETMathPoint(10.0, 120.0, 80.0), 1e-6));
}

void TestOpenSurface::trianglesKeepTheDeflectionAndFaceTheNormal()
{
    auto sphere = ZETOpenSurface::MakeSphere(ZETMathAxis(), 100.0, 0.0, pi, -1.0, 1.0);
    for (int side = 0; side < 2; ++side) {
        const auto triangles = sphere->Tessellate(0.5, 0.5);
        QVERIFY(triangles.indices.size() >= 3 * 20);
        QCOMPARE(triangles.indices.size() % 3, 0);
        QCOMPARE(triangles.normals.size(), triangles.points.size());
        double area = 0.0;
        for (qsizetype i = 0; i < triangles.indices.size(); i += 3) {
            const auto a = triangles.points[triangles.indices[i]];
            const auto b = triangles.points[triangles.indices[i + 1]];
            const auto c = triangles.points[triangles.indices[i + 2]];
            const auto normal = (b - a) ^ (c - a);
            QVERIFY(normal * triangles.normals[triangles.indices[i]] > 0.0);
            area += 0.5 * std::sqrt(normal.GetSquaredMagnitude());
            const ZETMathPoint middle =
                ZETMathPoint() + (1.0 / 3.0) * ((a - ZETMathPoint()) + (b - ZETMathPoint()) + (c - ZETMathPoint()));
            QVERIFY(middle.GetDistanceTo(ZETMathPoint()) > 100.0 - 1.0);
        }
        // A zone of a sphere: 2 pi r h for the full turn, half of it here.
        const double exact = pi * 100.0 * 200.0 * std::sin(1.0);
        QVERIFY(area > 0.98 * exact && area < exact);
        sphere = sphere->MakeReversed();
    }
}

void TestOpenSurface::impossibleSurfacesAreRefused_data()
{
    QTest::addColumn<std::function<void()>>("build");
    const ZETMathAxis axis;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    using Build = std::function<void()>;
    QTest::newRow("plane without width") << Build([=] { ZETOpenSurface::MakePlane(axis, 5.0, 5.0, 0.0, 1.0); });
    QTest::newRow("plane from high to low") << Build([=] { ZETOpenSurface::MakePlane(axis, 5.0, 1.0, 0.0, 1.0); });
    QTest::newRow("plane to nowhere") << Build([=] { ZETOpenSurface::MakePlane(axis, 0.0, nan, 0.0, 1.0); });
    QTest::newRow("cylinder of no radius")
        << Build([=] { ZETOpenSurface::MakeCylinder(axis, 0.0, 0.0, 1.0, 0.0, 1.0); });
    QTest::newRow("cylinder of two turns")
        << Build([=] { ZETOpenSurface::MakeCylinder(axis, 1.0, 0.0, 4.0 * pi, 0.0, 1.0); });
    QTest::newRow("cone beyond its apex")
        << Build([=] { ZETOpenSurface::MakeCone(axis, 10.0, 0.5, 0.0, 1.0, -100.0, 0.0); });
    QTest::newRow("cone without an angle")
        << Build([=] { ZETOpenSurface::MakeCone(axis, 10.0, 0.0, 0.0, 1.0, 0.0, 10.0); });
    QTest::newRow("sphere beyond its pole")
        << Build([=] { ZETOpenSurface::MakeSphere(axis, 10.0, 0.0, 1.0, 0.0, 2.0); });
    QTest::newRow("torus of no tube") << Build([=] { ZETOpenSurface::MakeTorus(axis, 10.0, 0.0, 0.0, 1.0, 0.0, 1.0); });
    QTest::newRow("no grid") << Build([=] { ZETOpenSurface::MakeBSpline({}); });
    QTest::newRow("one row") << Build([=] { ZETOpenSurface::MakeBSpline({{{0, 0, 0}, {1, 0, 0}}}); });
    QTest::newRow("rows of different lengths") << Build([=] {
        ZETOpenSurface::MakeBSpline({{{0, 0, 0}, {1, 0, 0}}, {{0, 1, 0}}});
    });
    QTest::newRow("the same row twice") << Build([=] {
        ZETOpenSurface::MakeBSpline({{{0, 0, 0}, {1, 0, 0}}, {{0, 0, 0}, {1, 0, 0}}});
    });
    QTest::newRow("grid with a hole") << Build([=] {
        ZETOpenSurface::MakeBSpline({{{0, 0, 0}, {1, 0, 0}}, {{0, 1, 0}, {1, nan, 0}}});
    });
    QTest::newRow("axis without directions") << Build([=] {
        ZETMathAxis broken;
        broken.SetDirections({0, 0, 0}, {0, 0, 0}, {0, 0, 0});
        ZETOpenSurface::MakePlane(broken, 0.0, 1.0, 0.0, 1.0);
    });
}

void TestOpenSurface::impossibleSurfacesAreRefused()
{
    QFETCH(std::function<void()>, build);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, build());
}

void TestOpenSurface::pointThatIsNotANumberIsRefused()
{
    const auto plane = ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 1.0, 0.0, 1.0);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, plane->Project({std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0}));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, plane->Project({std::numeric_limits<double>::infinity(), 0.0, 0.0}));
}

void TestOpenSurface::surfaceLivesWhileItIsHeld()
{
    bool gone = false;
    {
        auto first = ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 1.0, 0.0, 1.0);
        connect(first.Get(), &QObject::destroyed, this, [&] { gone = true; });
        ZETOpenRef<ZETOpenSurface> second = first;
        first = nullptr;
        QVERIFY(!gone);
        QVERIFY(second->IsPlane());
    }
    QVERIFY(gone);
}

QTEST_GUILESS_MAIN(TestOpenSurface)
#include "TestOpenSurface.moc"
