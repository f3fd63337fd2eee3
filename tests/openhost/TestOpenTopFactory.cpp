#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETGeometry/ZETGeoComboCurve.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETGeometry/ZETGeoPointOnCurve.h>
#include <ZETGeometry/ZETGeoPointOnSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFactory.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QTest>

#include <cmath>
#include <numbers>

namespace
{
using std::numbers::pi;

const ZETTopVertex* GetVertex(const ZETTopBody* body, int index = 0)
{
    return body ? qobject_cast<const ZETTopVertex*>(body->GetEntities(0).value(index)) : nullptr;
}

bool IsNear(const ZETMathPoint& a, const ZETMathPoint& b)
{
    return a.GetDistanceTo(b) < 1e-6;
}
} // namespace

class TestOpenTopFactory : public QObject
{
    Q_OBJECT

private slots:
    void pointOntoAFace();
    void pointOntoSeveralFacesTakesTheNearest();
    void pointOntoACommonBorderKnowsBothFaces();
    void pointOntoAPolyline();
    void pointOntoACurveOnACylinder();
    void pointOntoSeveralEdgesTakesTheNearest();
    void curveIsProjectedByItsVertices();
    void whatCannotBeProjectedGivesNull();
    void bodiesBelongToTheFactory();
};

void TestOpenTopFactory::pointOntoAFace()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 100.0, 0.0, pi, 0.0, 500.0);
    const auto target = ZETOpenBodyBuilder::MakeFace(cylinder);
    const auto source = ZETOpenBodyBuilder::MakePoint({0.0, 130.0, 40.0});
    ZETTopFactory factory(nullptr);
    const auto* const result = factory.Project(target.get(), source.get());
    QVERIFY(result);
    QCOMPARE(result->GetDimension(), 0);
    QCOMPARE(result->GetEntities(0).size(), 1);
    const auto* const vertex = GetVertex(result);
    QVERIFY(IsNear(vertex->GetPoint()->GetPosition(), {0.0, 100.0, 40.0}));
    QCOMPARE(vertex->GetFaces().size(), 1);
    QVERIFY(vertex->GetEdges().isEmpty());
    const auto* const place = vertex->GetPoint(vertex->GetFaces().first());
    QVERIFY(place);
    QCOMPARE(place->GetSurface(), cylinder.Get());
    QVERIFY(IsNear(place->GetLocationOnSurface().GetPoint(), {0.0, 100.0, 40.0}));
    const auto normal = cylinder->GetNormal(place->GetLocationOnSurface());
    QVERIFY((normal - ZETMathVector(0.0, 1.0, 0.0)).GetSquaredMagnitude() < 1e-12);
}

void TestOpenTopFactory::pointOntoSeveralFacesTakesTheNearest()
{
    const auto low = ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 10.0, 0.0, 10.0);
    ZETMathAxis above;
    above.SetOrigin({0.0, 0.0, 50.0});
    const auto high = ZETOpenSurface::MakePlane(above, 0.0, 10.0, 0.0, 10.0);
    ZETOpenBodyBuilder builder;
    builder.AddSkin({low, high});
    const auto target = builder.Build();
    ZETTopFactory factory(nullptr);
    const auto source = ZETOpenBodyBuilder::MakePoint({5.0, 5.0, 40.0});
    const auto* const vertex = GetVertex(factory.Project(target.get(), source.get()));
    QCOMPARE(vertex->GetFaces().size(), 1);
    QCOMPARE(vertex->GetPoint(vertex->GetFaces().first())->GetSurface(), high.Get());
}

void TestOpenTopFactory::pointOntoACommonBorderKnowsBothFaces()
{
    const auto left = ZETOpenSurface::MakePlane(ZETMathAxis(), -10.0, 0.0, 0.0, 10.0);
    const auto right = ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 10.0, 0.0, 10.0);
    ZETOpenBodyBuilder builder;
    builder.AddSkin({left, right});
    const auto target = builder.Build();
    ZETTopFactory factory(nullptr);
    const auto source = ZETOpenBodyBuilder::MakePoint({0.0, 5.0, 3.0});
    const auto* const vertex = GetVertex(factory.Project(target.get(), source.get()));
    QCOMPARE(vertex->GetFaces().size(), 2);
    for (const ZETTopFace* face : vertex->GetFaces())
        QVERIFY(IsNear(vertex->GetPoint(face)->GetLocationOnSurface().GetPoint(), {0.0, 5.0, 0.0}));
}

void TestOpenTopFactory::pointOntoAPolyline()
{
    const auto target = ZETOpenBodyBuilder::MakePolyline({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false);
    const auto source = ZETOpenBodyBuilder::MakePoint({13.0, 4.0, 2.0});
    ZETTopFactory factory(nullptr);
    const auto* const vertex = GetVertex(factory.Project(target.get(), source.get()));
    QVERIFY(vertex);
    QVERIFY(vertex->GetFaces().isEmpty());
    QCOMPARE(vertex->GetEdges().size(), 1);
    const auto* const place = vertex->GetPoint(vertex->GetEdges().first());
    QVERIFY(IsNear(place->GetLocationOnCurve().GetMathPoint(), {10.0, 4.0, 0.0}));
    const auto tangent = place->GetCurve()->GetTangent(place->GetLocationOnCurve());
    QVERIFY(tangent.GetY() > 0.0 && tangent.GetX() == 0.0 && tangent.GetZ() == 0.0);
}

void TestOpenTopFactory::pointOntoACurveOnACylinder()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 100.0, 0.0, 2.0 * pi, 0.0, 500.0);
    const auto at = [](double degrees) {
        return ZETMathPoint(100.0 * std::cos(degrees * pi / 180.0), 100.0 * std::sin(degrees * pi / 180.0), 50.0);
    };
    const auto curve = ZETOpenCurveOnSurface::MakePolyline(cylinder, {at(-60.0), at(60.0)}, false);
    const auto target = ZETOpenBodyBuilder::MakeCurve(curve);
    const auto source = ZETOpenBodyBuilder::MakePoint({150.0, 0.0, 70.0});
    ZETTopFactory factory(nullptr);
    const auto* const vertex = GetVertex(factory.Project(target.get(), source.get()));
    const auto* const place = vertex->GetPoint(vertex->GetEdges().first());
    QVERIFY(IsNear(place->GetLocationOnCurve().GetMathPoint(), {100.0, 0.0, 50.0}));
    auto tangent = place->GetCurve()->GetTangent(place->GetLocationOnCurve());
    tangent.Normalize();
    QVERIFY((tangent - ZETMathVector(0.0, 1.0, 0.0)).GetSquaredMagnitude() < 1e-12);
}

void TestOpenTopFactory::pointOntoSeveralEdgesTakesTheNearest()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakePolyline({{0, 0, 0}, {10, 0, 0}}), false},
                    {ZETOpenComboCurve::MakePolyline({{10, 0, 0}, {10, 10, 0}}), false}});
    const auto target = builder.Build();
    ZETTopFactory factory(nullptr);
    const auto near = ZETOpenBodyBuilder::MakePoint({11.0, 7.0, 0.0});
    const auto* const vertex = GetVertex(factory.Project(target.get(), near.get()));
    QCOMPARE(vertex->GetEdges().size(), 1);
    QVERIFY(vertex->GetEdges().first() == target->GetEntities(1).at(1));
    // At the corner both edges hold the place.
    const auto corner = ZETOpenBodyBuilder::MakePoint({11.0, -1.0, 0.0});
    QCOMPARE(GetVertex(factory.Project(target.get(), corner.get()))->GetEdges().size(), 2);
}

void TestOpenTopFactory::curveIsProjectedByItsVertices()
{
    const auto target = ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 100.0, 0.0, 100.0));
    const auto source = ZETOpenBodyBuilder::MakePolyline({{10, 10, 5}, {20, 10, 5}, {20, 30, 7}}, false);
    ZETTopFactory factory(nullptr);
    const auto* const result = factory.Project(target.get(), source.get());
    // The vertices of a net are the ends of its edges, here of one edge.
    QCOMPARE(result->GetEntities(0).size(), 2);
    QCOMPARE(GetVertex(result, 1)->GetPoint()->GetPosition(), ZETMathPoint(20.0, 30.0, 0.0));
}

void TestOpenTopFactory::whatCannotBeProjectedGivesNull()
{
    const auto point = ZETOpenBodyBuilder::MakePoint({1.0, 2.0, 3.0});
    const auto face = ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 1.0, 0.0, 1.0));
    const auto empty = ZETOpenBodyBuilder().Build();
    ZETTopFactory factory(nullptr);
    QVERIFY(!factory.Project(nullptr, point.get()));
    QVERIFY(!factory.Project(face.get(), nullptr));
    QVERIFY(!factory.Project(point.get(), point.get()));
    QVERIFY(!factory.Project(empty.get(), point.get()));
    QVERIFY(!factory.Project(face.get(), empty.get()));
    QVERIFY(!factory.Project(face.get(), face.get()));
}

void TestOpenTopFactory::bodiesBelongToTheFactory()
{
    bool gone = false;
    const auto point = ZETOpenBodyBuilder::MakePoint({1.0, 2.0, 3.0});
    const auto face = ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 1.0, 0.0, 1.0));
    {
        ZETTopFactory factory(nullptr);
        auto* const first = factory.Project(face.get(), point.get());
        QVERIFY(factory.Project(face.get(), point.get()) != first);
        connect(first, &QObject::destroyed, this, [&] { gone = true; });
        QVERIFY(!gone);
    }
    QVERIFY(gone);
}

QTEST_GUILESS_MAIN(TestOpenTopFactory)
#include "TestOpenTopFactory.moc"
