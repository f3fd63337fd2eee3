#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETGeometry/ZETGeoPointOnCurve.h>
#include <ZETGeometry/ZETGeoPointOnSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopNet.h>
#include <ZETTopology/ZETTopSkin.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QTest>

#include <cmath>
#include <numbers>

namespace
{
using std::numbers::pi;
using Curve = ZETOpenCurveOnSurface;
using Combo = ZETOpenComboCurve;

ZETOpenRef<ZETOpenSurface> MakePlane()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -1000.0, 1000.0, -1000.0, 1000.0);
}

const ZETTopNet* GetNet(const ZETTopBody& body)
{
    return qobject_cast<const ZETTopNet*>(body.GetDomains().value(0));
}

const ZETTopVertex* GetVertex(const ZETTopDomain& domain, int index)
{
    return qobject_cast<const ZETTopVertex*>(domain.GetEntities(0).value(index));
}

/*! The ranges and senses of a net on a surface as whoever assembles a seed curve collects them. */
ZETOpenRef<ZETGeoAssembledCurveOnSurface> Assemble(const ZETTopNet& net, const ZETGeoSurface* surface)
{
    QList<ZETGeoRangeOfCurve> ranges;
    QList<bool> senses;
    for (const ZETTopEntity* entity : net.GetEntities(1)) {
        const auto* const edge = qobject_cast<const ZETTopEdge*>(entity);
        bool reversed = false;
        ZETGeoRangeOfCurve range;
        edge->GetCurve()->GetCurve(surface, &reversed, &range);
        ranges.append(range);
        senses.append(reversed == net.GetEdgeSense(net.GetEdgePosition(edge)));
    }
    ZETOpenRef<ZETGeoAssembledCurveOnSurface> curve(new ZETGeoAssembledCurveOnSurface(ranges, senses, false));
    curve->Initialize();
    return curve;
}
} // namespace

class TestOpenBody : public QObject
{
    Q_OBJECT

private slots:
    void pointInSpace();
    void pointOnASurface();
    void polylineKeepsItsCoordinatesToTheBit();
    void closedPolylineEndsAtItsFirstPoint();
    void curveOnASurface();
    void imageAgainstTheCurve();
    void netOfTwoEdgesOneReversed_data();
    void netOfTwoEdgesOneReversed();
    void verticesKnowTheirEdgesAndPlaces();
    void closedNetSharesItsFirstVertex();
    void edgesThatDoNotJoinKeepTheirOwnVertices();
    void noImageLeavesTheArgumentsAlone();
    void secondImage();
    void faceBody();
    void vertexOfABodyWithAFaceKnowsIt();
    void faultyBodiesAreBuiltAsTold();
    void nothingIsRefused();
    void bodyHoldsItsGeometry();
};

void TestOpenBody::pointInSpace()
{
    const auto body = ZETOpenBodyBuilder::MakePoint({1.0, 2.0, 3.0});
    QCOMPARE(body->GetDimension(), 0);
    QCOMPARE(body->GetDomains().size(), 1);
    QCOMPARE(body->GetEntities(0).size(), 1);
    QCOMPARE(body->GetEntities(1).size(), 0);
    QCOMPARE(body->GetEntities(2).size(), 0);
    QVERIFY(!GetNet(*body));
    const auto* const vertex = GetVertex(*body->GetDomains().first(), 0);
    QVERIFY(vertex->GetPoint()->GetPosition() == ZETMathPoint(1.0, 2.0, 3.0));
    QVERIFY(!vertex->GetPoint()->GetPoint(MakePlane().Get()));
    QVERIFY(vertex->GetFaces().isEmpty() && vertex->GetEdges().isEmpty());
}

void TestOpenBody::pointOnASurface()
{
    const auto plane = MakePlane();
    const auto body = ZETOpenBodyBuilder::MakePoint({1.0, 2.0, 3.0}, plane);
    const auto* const point = GetVertex(*body->GetDomains().first(), 0)->GetPoint();
    const auto* const image = point->GetPoint(plane.Get());
    QVERIFY(image);
    QCOMPARE(image->GetSurface(), plane.Get());
    QCOMPARE(image->GetLocationOnSurface().GetPoint(), ZETMathPoint(1.0, 2.0, 0.0));
    QCOMPARE(point->GetPosition(), ZETMathPoint(1.0, 2.0, 3.0));
}

void TestOpenBody::polylineKeepsItsCoordinatesToTheBit()
{
    const QList<ZETMathPoint> points{{0.1, 0.2, 0.0}, {1.0 / 3.0, 7.7, 0.0}, {12.345678901234567, -0.0, 0.0}};
    const auto body = ZETOpenBodyBuilder::MakePolyline(points, false);
    QCOMPARE(body->GetDimension(), 1);
    const auto* const net = GetNet(*body);
    QVERIFY(net && !net->IsClosed());
    QCOMPARE(net->GetNumEdges(), 1);
    const auto* const curve = net->GetEdge(0)->GetCurve();
    QCOMPARE(curve->GetNumPoints(), 3);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(curve->GetPoint(i) == points[i]);
        QVERIFY(curve->GetLocation(i).GetMathPoint() == points[i]);
    }
    QCOMPARE(curve->GetNumSegments(), 2);
    QCOMPARE(curve->GetLength(), points[0].GetDistanceTo(points[1]) + points[1].GetDistanceTo(points[2]));
    QVERIFY(!net->GetEdge(1) && !net->GetEdge(-1));
}

void TestOpenBody::closedPolylineEndsAtItsFirstPoint()
{
    const QList<ZETMathPoint> open{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}};
    const QList<ZETMathPoint> repeated{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 0, 0}};
    for (const auto& points : {open, repeated}) {
        const auto body = ZETOpenBodyBuilder::MakePolyline(points, true);
        const auto* const net = GetNet(*body);
        QVERIFY(net->IsClosed());
        QCOMPARE(net->GetEntities(0).size(), 1);
        const auto* const curve = net->GetEdge(0)->GetCurve();
        QVERIFY(curve->IsClosed());
        QCOMPARE(curve->GetNumSegments(), 3);
        QCOMPARE(curve->GetNumPoints(), 4);
        QCOMPARE(curve->GetPoint(3), ZETMathPoint(0.0, 0.0, 0.0));
    }
}

void TestOpenBody::curveOnASurface()
{
    const auto cylinder = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 100.0, 0.0, pi, 0.0, 100.0);
    const auto curve = Curve::MakePolyline(cylinder, {{100, 0, 0}, {0, 100, 0}}, false);
    const auto body = ZETOpenBodyBuilder::MakeCurve(curve);
    const auto* const combo = GetNet(*body)->GetEdge(0)->GetCurve();
    bool reversed = true;
    ZETGeoRangeOfCurve range;
    QCOMPARE(combo->GetCurve(cylinder.Get(), &reversed, &range), curve.Get());
    QVERIFY(!reversed);
    QCOMPARE(range.GetStart().GetParameter(), 0.0);
    QCOMPARE(range.GetEnd().GetParameter(), 1.0);
    QVERIFY(std::abs(combo->GetLength() - 50.0 * pi) < 1e-6);
    // A fine polyline in space.
    QVERIFY(combo->GetNumPoints() > 50);
    for (int i = 0; i < combo->GetNumPoints(); ++i)
        QVERIFY(std::abs(std::hypot(combo->GetPoint(i).GetX(), combo->GetPoint(i).GetY()) - 100.0) < 1e-9);
}

void TestOpenBody::imageAgainstTheCurve()
{
    const auto plane = MakePlane();
    const auto image = Curve::MakePolyline(plane, {{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}, false);
    const auto combo = Combo::MakeFromImage(image, true);
    QCOMPARE(combo->GetLocation(0).GetMathPoint(), ZETMathPoint(10.0, 0.0, 0.0));
    QCOMPARE(combo->GetPoint(0), ZETMathPoint(10.0, 0.0, 0.0));
    QCOMPARE(combo->GetSegmentLength(0), 6.0);
    bool reversed = false;
    QVERIFY(combo->GetCurve(plane.Get(), &reversed, nullptr));
    QVERIFY(reversed);
    const auto tangent = combo->GetTangent(combo->GetLocation(0));
    QVERIFY(tangent.GetX() < 0.0);
}

void TestOpenBody::netOfTwoEdgesOneReversed_data()
{
    QTest::addColumn<bool>("edgeReversed");
    QTest::addColumn<bool>("imageReversed");
    QTest::newRow("along") << false << false;
    QTest::newRow("edge against the net") << true << false;
    QTest::newRow("image against the edge") << false << true;
    QTest::newRow("both") << true << true;
}

void TestOpenBody::netOfTwoEdgesOneReversed()
{
    QFETCH(bool, edgeReversed);
    QFETCH(bool, imageReversed);
    const auto plane = MakePlane();
    const auto first = Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false);
    // The net goes from (10,0) by (10,6) to (10,9); the image does so too unless exactly one of the two is reversed.
    QList<ZETMathPoint> points{{10, 0, 0}, {10, 6, 0}, {10, 9, 0}};
    if (edgeReversed != imageReversed)
        std::reverse(points.begin(), points.end());
    const auto second = Curve::MakePolyline(plane, points, false);
    ZETOpenBodyBuilder builder;
    builder.AddNet(
        {{Combo::MakeFromImage(first, false), false}, {Combo::MakeFromImage(second, imageReversed), edgeReversed}});
    const auto body = builder.Build();
    const auto* const net = GetNet(*body);
    QCOMPARE(net->GetNumEdges(), 2);
    QVERIFY(!net->IsClosed());
    QCOMPARE(net->GetEdgePosition(net->GetEdge(1)), 1);
    QCOMPARE(net->GetEdgePosition(nullptr), -1);
    QCOMPARE(net->GetEdgeSense(0), false);
    QCOMPARE(net->GetEdgeSense(1), edgeReversed);
    QCOMPARE(net->GetEntities(0).size(), 3);
    const auto seed = Assemble(*net, plane.Get());
    QCOMPARE(seed->GetNumSegments(), 3);
    QCOMPARE(seed->GetLocation(0).GetMathPoint(), ZETMathPoint(0.0, 0.0, 0.0));
    QCOMPARE(seed->GetLocation(1).GetMathPoint(), ZETMathPoint(10.0, 0.0, 0.0));
    QCOMPARE(seed->GetLocation(2).GetMathPoint(), ZETMathPoint(10.0, 6.0, 0.0));
    QCOMPARE(seed->GetLocation(3).GetMathPoint(), ZETMathPoint(10.0, 9.0, 0.0));
}

void TestOpenBody::verticesKnowTheirEdgesAndPlaces()
{
    const auto plane = MakePlane();
    ZETOpenBodyBuilder builder;
    builder.AddNet({{Combo::MakePolyline({{0, 0, 0}, {10, 0, 0}}), false},
                    {Combo::MakeFromImage(Curve::MakePolyline(plane, {{10, 9, 0}, {10, 0, 0}}, false), false), true}});
    const auto body = builder.Build();
    const auto* const net = GetNet(*body);
    const auto* const middle = GetVertex(*net, 1);
    QCOMPARE(middle->GetPoint()->GetPosition(), ZETMathPoint(10.0, 0.0, 0.0));
    QCOMPARE(middle->GetEdges().size(), 2);
    QCOMPARE(middle->GetPoint(net->GetEdge(0))->GetLocationOnCurve().GetParameter(), 1.0);
    QCOMPARE(middle->GetPoint(net->GetEdge(1))->GetLocationOnCurve().GetParameter(), 1.0);
    QCOMPARE(middle->GetPoint(net->GetEdge(1))->GetCurve(), net->GetEdge(1)->GetCurve());
    QCOMPARE(middle->GetPoint()->GetPoint(plane.Get())->GetLocationOnSurface().GetPoint(),
             ZETMathPoint(10.0, 0.0, 0.0));
    QVERIFY(!GetVertex(*net, 0)->GetPoint(net->GetEdge(1)));
    QCOMPARE(GetVertex(*net, 2)->GetPoint()->GetPosition(), ZETMathPoint(10.0, 9.0, 0.0));
}

void TestOpenBody::closedNetSharesItsFirstVertex()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({{Combo::MakePolyline({{0, 0, 0}, {10, 0, 0}}), false},
                    {Combo::MakePolyline({{10, 0, 0}, {5, 9, 0}, {0, 0, 0}}), false}});
    const auto body = builder.Build();
    const auto* const net = GetNet(*body);
    QVERIFY(net->IsClosed());
    QCOMPARE(net->GetEntities(0).size(), 2);
    QCOMPARE(GetVertex(*net, 0)->GetEdges().size(), 2);
}

void TestOpenBody::edgesThatDoNotJoinKeepTheirOwnVertices()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({{Combo::MakePolyline({{0, 0, 0}, {10, 0, 0}}), false},
                    {Combo::MakePolyline({{10, 0.5, 0}, {10, 9, 0}}), false}});
    QCOMPARE(GetNet(*builder.Build().get())->GetEntities(0).size(), 4);
}

void TestOpenBody::noImageLeavesTheArgumentsAlone()
{
    const auto combo = Combo::MakePolyline({{0, 0, 0}, {10, 0, 0}});
    const auto plane = MakePlane();
    for (const bool before : {true, false}) {
        bool reversed = before;
        ZETGeoRangeOfCurve range({combo.Get(), 0.25}, {combo.Get(), 0.5});
        QVERIFY(!combo->GetCurve(plane.Get(), &reversed, &range));
        QCOMPARE(reversed, before);
        QCOMPARE(range.GetStart().GetParameter(), 0.25);
    }
}

void TestOpenBody::secondImage()
{
    const auto plane = MakePlane();
    const auto other = MakePlane();
    const auto combo = Combo::MakeFromImage(Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false), false);
    const auto image = Curve::MakePolyline(other, {{20, 0, 0}, {0, 0, 0}}, false);
    combo->AddImage(image, true, ZETGeoRangeOfCurve({image.Get(), 0.5}, {image.Get(), 1.0}));
    QCOMPARE(combo->GetImages().size(), 2);
    bool reversed = false;
    ZETGeoRangeOfCurve range;
    QCOMPARE(combo->GetCurve(other.Get(), &reversed, &range), image.Get());
    QVERIFY(reversed);
    QCOMPARE(range.GetLength(), 10.0);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, combo->AddImage(image, false, ZETGeoRangeOfCurve()));
}

void TestOpenBody::faceBody()
{
    const auto plane = MakePlane();
    const auto body = ZETOpenBodyBuilder::MakeFace(plane);
    QCOMPARE(body->GetDimension(), 2);
    QCOMPARE(body->GetDomains().size(), 1);
    QVERIFY(qobject_cast<const ZETTopSkin*>(body->GetDomains().first()));
    QCOMPARE(body->GetEntities(2).size(), 1);
    QCOMPARE(body->GetEntities(0).size(), 0);
    QCOMPARE(qobject_cast<const ZETTopFace*>(body->GetEntities(2).first())->GetSurface(), plane.Get());
}

void TestOpenBody::vertexOfABodyWithAFaceKnowsIt()
{
    const auto plane = MakePlane();
    ZETOpenBodyBuilder builder;
    builder.AddSkin({plane});
    builder.AddNet({{Combo::MakeFromImage(Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false), false), false}});
    const auto body = builder.Build();
    const auto* const vertex = qobject_cast<const ZETTopVertex*>(body->GetEntities(0).first());
    QCOMPARE(vertex->GetFaces().size(), 1);
    QCOMPARE(vertex->GetPoint(vertex->GetFaces().first())->GetLocationOnSurface().GetPoint(), ZETMathPoint());
}

void TestOpenBody::faultyBodiesAreBuiltAsTold()
{
    ZETOpenBodyBuilder builder;
    const auto nothing = builder.Build();
    QCOMPARE(nothing->GetDimension(), 0);
    QVERIFY(nothing->GetDomains().isEmpty());

    builder.AddNet({});
    const auto noEdges = builder.Build();
    QCOMPARE(noEdges->GetDimension(), 1);
    QCOMPARE(noEdges->GetDomains().size(), 1);
    QVERIFY(noEdges->GetEntities(1).isEmpty() && noEdges->GetEntities(0).isEmpty());
    QVERIFY(!GetNet(*noEdges)->IsClosed());

    builder.AddNet({{Combo::MakePolyline({{0, 0, 0}, {10, 0, 0}}), false}});
    builder.AddNet({{Combo::MakePolyline({{0, 5, 0}, {10, 5, 0}}), false}});
    const auto twoNets = builder.Build();
    QCOMPARE(twoNets->GetDomains().size(), 2);
    QCOMPARE(twoNets->GetEntities(1).size(), 2);
    QCOMPARE(twoNets->GetEntities(0).size(), 4);

    builder.AddSkin({MakePlane(), MakePlane()});
    const auto twoFaces = builder.Build();
    QCOMPARE(twoFaces->GetDomains().size(), 1);
    QCOMPARE(twoFaces->GetEntities(2).size(), 2);

    builder.AddPoints({ZETOpenComboPoint::Make({1, 2, 3}, {}), ZETOpenComboPoint::Make({4, 5, 6}, {})});
    const auto twoPoints = builder.Build();
    QCOMPARE(twoPoints->GetDimension(), 0);
    QCOMPARE(twoPoints->GetEntities(0).size(), 2);

    builder.SetDimension(2);
    const auto noFaces = builder.Build();
    QCOMPARE(noFaces->GetDimension(), 2);
    QVERIFY(noFaces->GetEntities(2).isEmpty());
}

void TestOpenBody::nothingIsRefused()
{
    ZETOpenBodyBuilder builder;
    QVERIFY_THROWS_EXCEPTION(ZETSysException, builder.AddPoints({nullptr}));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, builder.AddNet({{nullptr, false}}));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, builder.AddSkin({nullptr}));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Combo::MakePolyline({{0, 0, 0}}));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Combo::MakeFromImage(nullptr, false));
}

void TestOpenBody::bodyHoldsItsGeometry()
{
    bool gone = false;
    std::unique_ptr<ZETTopBody> body;
    {
        const auto plane = MakePlane();
        connect(plane.Get(), &QObject::destroyed, this, [&] { gone = true; });
        body = ZETOpenBodyBuilder::MakeCurve(Curve::MakePolyline(plane, {{0, 0, 0}, {10, 0, 0}}, false));
    }
    QVERIFY(!gone);
    QCOMPARE(GetNet(*body)->GetEdge(0)->GetCurve()->GetLength(), 10.0);
    body.reset();
    QVERIFY(gone);
}

QTEST_GUILESS_MAIN(TestOpenBody)
#include "TestOpenBody.moc"
