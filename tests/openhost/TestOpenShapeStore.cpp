#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"
#include "tests/support/TestThrown.h"

#include <ZETGeometry/ZETGeoPointOnSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopNet.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QDataStream>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using std::numbers::pi;
using Curve = ZETOpenCurveOnSurface;
using Combo = ZETOpenComboCurve;
using Store = ZETOpenShapeStore;

ZETOpenRef<ZETOpenSurface> MakeCylinder()
{
    const auto surface = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 100.0, 0.0, 2.0 * pi, 0.0, 500.0);
    surface->SetName("tool");
    return surface;
}

ZETMathPoint At(double degrees, double height)
{
    return ZETMathPoint(100.0 * std::cos(degrees * pi / 180.0), 100.0 * std::sin(degrees * pi / 180.0), height);
}

ZETOpenRef<Curve> MakeBoundary(const ZETOpenRef<ZETOpenSurface>& surface)
{
    return Curve::MakePolyline(surface, {At(340.0, 100.0), At(40.0, 110.0), At(30.0, 300.0)}, true);
}

/*! Everything that a body can hold. */
std::unique_ptr<ZETTopBody> MakeRichBody()
{
    const auto surface = MakeCylinder();
    const auto first = Curve::MakePolyline(surface, {At(10.0, 50.0), At(60.0, 60.0)}, false);
    const auto second = Curve::MakeInterpolated(surface, {At(90.0, 80.0), At(80.0, 60.0), At(60.0, 60.0)}, false);
    ZETOpenBodyBuilder builder;
    builder.AddSkin({surface, surface->MakeReversed()});
    builder.AddNet({{Combo::MakeFromImage(first, false), false}, {Combo::MakeFromImage(second, false), true}});
    builder.AddNet({{Combo::MakePolyline({{0.1, 0.2, 0.3}, {1.0 / 3.0, 5.0, -0.0}, {0.1, 0.2, 0.3}}), false}});
    builder.AddPoints({ZETOpenComboPoint::Make(At(20.0, 33.0), {surface})});
    builder.SetDimension(2);
    return builder.Build();
}

template <typename Save>
QByteArray GetBytes(Save save)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    save(stream);
    return bytes;
}

QString GetBodyFault(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    return Thrown([&] { Store::LoadBody(stream); });
}

bool IsSameCurve(const ZETGeoCurve& a, const ZETGeoCurve& b)
{
    if (a.GetNumSegments() != b.GetNumSegments() || a.IsClosed() != b.IsClosed() ||
        a.GetNumPoints() != b.GetNumPoints())
        return false;
    for (int i = 0; i < a.GetNumPoints(); ++i) {
        if (a.GetPoint(i) != b.GetPoint(i))
            return false;
    }
    for (int i = 0; i < a.GetNumSegments(); ++i) {
        if (a.GetLocation(i).GetMathPoint() != b.GetLocation(i).GetMathPoint() ||
            a.GetSegmentLength(i) != b.GetSegmentLength(i))
            return false;
    }
    return true;
}
} // namespace

class TestOpenShapeStore : public QObject
{
    Q_OBJECT

private slots:
    void surfaceComesBack();
    void curveComesBackToTheBit_data();
    void curveComesBackToTheBit();
    void assembledCurveComesBack();
    void locationComesBack();
    void bodyComesBack();
    void bodyStoredAgainGivesTheSameBytes();
    void nullComesBackAsNull();
    void sessionKeepsSurfacesShared();
    void withoutASessionEachCallStandsForItself();
    void numberAheadOfItsObjectIsTold();
    void foreignObjectsAreRefused();
    void streamCutAnywhereIsTold();
    void changedByteIsToldOrHarmless();
    void announcedSizesAreNotBelieved();
    void chainsWithinChainsHaveALimit();
    void emptyStreamIsTold();
};

void TestOpenShapeStore::surfaceComesBack()
{
    const auto surface = MakeCylinder()->MakeReversed();
    surface->SetName("tool");
    QDataStream stream(GetBytes([&](QDataStream& out) { Store::SaveSurface(out, surface.Get()); }));
    const auto loaded = Store::LoadSurface(stream);
    QVERIFY(stream.atEnd());
    QVERIFY(loaded != surface);
    QCOMPARE(loaded->GetName(), "tool");
    const auto before = surface->Project({120.0, 160.0, 50.0});
    const auto after = loaded->Project({120.0, 160.0, 50.0});
    QVERIFY(after.GetPoint() == before.GetPoint());
    QVERIFY(loaded->GetNormal(after) == surface->GetNormal(before));
    QVERIFY(loaded->GetNormal(after) * ZETMathVector(0.6, 0.8, 0.0) < -0.999);
}

void TestOpenShapeStore::curveComesBackToTheBit_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"polyline", "smooth", "smooth ring", "circle"})
        QTest::newRow(kind) << kind;
}

void TestOpenShapeStore::curveComesBackToTheBit()
{
    QFETCH(QString, kind);
    ZETOpenRef<Curve> curve;
    if (kind == "polyline")
        curve = MakeBoundary(MakeCylinder());
    else if (kind == "smooth")
        curve = Curve::MakeInterpolated(MakeCylinder(), {At(340.0, 100.0), At(40.0, 110.0), At(30.0, 300.0)}, false);
    else if (kind == "smooth ring")
        curve = Curve::MakeInterpolated(MakeCylinder(), {At(0.0, 100.0), At(120.0, 110.0), At(240.0, 300.0)}, true);
    else
        curve = Curve::MakeCircle(ZETOpenSurface::MakePlane(ZETMathAxis(), -90, 90, -90, 90), {1, 2, 0}, 33.0, 3);
    curve->SetName("seed");
    QDataStream stream(GetBytes([&](QDataStream& out) { Store::SaveCurve(out, curve.Get()); }));
    const auto loaded = Store::LoadCurve(stream);
    QVERIFY(stream.atEnd());
    QVERIFY(loaded && IsSameCurve(*loaded, *curve));
    const auto* const own = qobject_cast<const Curve*>(loaded.Get());
    QCOMPARE(own->GetName(), "seed");
    QCOMPARE(own->GetMaxProjectionDistance(), curve->GetMaxProjectionDistance());
}

void TestOpenShapeStore::assembledCurveComesBack()
{
    const auto surface = MakeCylinder();
    const auto first = Curve::MakePolyline(surface, {At(10.0, 50.0), At(60.0, 60.0)}, false);
    const auto second = Curve::MakePolyline(surface, {At(90.0, 80.0), At(60.0, 60.0)}, false);
    const auto chain = MakeAssembledCurve({first, second}, {true, false});
    QDataStream stream(GetBytes([&](QDataStream& out) { Store::SaveCurve(out, chain.Get()); }));
    const auto loaded = Store::LoadCurve(stream);
    QVERIFY(qobject_cast<const ZETGeoAssembledCurveOnSurface*>(loaded.Get()));
    QVERIFY(IsSameCurve(*loaded, *chain));
    // Both parts lie on one surface still, else the chain couldn't have been joined.
    QVERIFY(loaded->GetSurface());
}

void TestOpenShapeStore::locationComesBack()
{
    const auto surface = MakeCylinder();
    const auto location = surface->Project({120.0, 160.0, 50.0});
    QDataStream stream(GetBytes([&](QDataStream& out) {
        Store::SaveLocation(out, location);
        Store::SaveLocation(out, ZETGeoLocationOnSurface());
    }));
    ZETOpenRef<ZETOpenSurface> loadedSurface;
    const auto loaded = Store::LoadLocation(stream, loadedSurface);
    QCOMPARE(loaded.GetSurface(), loadedSurface.Get());
    QVERIFY(loaded.GetPoint() == location.GetPoint());
    QVERIFY(!Store::LoadLocation(stream, loadedSurface).GetSurface());
    QVERIFY(!loadedSurface);
}

void TestOpenShapeStore::bodyComesBack()
{
    const auto body = MakeRichBody();
    QDataStream stream(GetBytes([&](QDataStream& out) { Store::SaveBody(out, body.get()); }));
    const auto loaded = Store::LoadBody(stream);
    QVERIFY(stream.atEnd());
    QCOMPARE(loaded->GetDimension(), 2);
    QCOMPARE(loaded->GetDomains().size(), 4);
    for (int dimension = 0; dimension <= 2; ++dimension)
        QCOMPARE(loaded->GetEntities(dimension).size(), body->GetEntities(dimension).size());
    const auto* const surface = qobject_cast<const ZETTopFace*>(loaded->GetEntities(2).first())->GetSurface();
    for (int i = 1; i <= 2; ++i) {
        const auto* const net = qobject_cast<const ZETTopNet*>(loaded->GetDomains()[i]);
        const auto* const before = qobject_cast<const ZETTopNet*>(body->GetDomains()[i]);
        QCOMPARE(net->GetNumEdges(), before->GetNumEdges());
        QCOMPARE(net->IsClosed(), before->IsClosed());
        for (int e = 0; e < net->GetNumEdges(); ++e) {
            QCOMPARE(net->GetEdgeSense(e), before->GetEdgeSense(e));
            QVERIFY(IsSameCurve(*net->GetEdge(e)->GetCurve(), *before->GetEdge(e)->GetCurve()));
            // The images lie on the body's own face, not on a copy of its surface.
            if (i == 1)
                QVERIFY(net->GetEdge(e)->GetCurve()->GetCurve(surface, nullptr, nullptr));
        }
    }
    const auto* const vertex = qobject_cast<const ZETTopVertex*>(loaded->GetEntities(0).last());
    QVERIFY(vertex->GetPoint()->GetPosition() == At(20.0, 33.0));
    QVERIFY(vertex->GetPoint()->GetPoint(surface));
}

void TestOpenShapeStore::bodyStoredAgainGivesTheSameBytes()
{
    const auto body = MakeRichBody();
    const QByteArray bytes = GetBytes([&](QDataStream& out) { Store::SaveBody(out, body.get()); });
    QDataStream stream(bytes);
    const auto loaded = Store::LoadBody(stream);
    QCOMPARE(GetBytes([&](QDataStream& out) { Store::SaveBody(out, loaded.get()); }), bytes);
}

void TestOpenShapeStore::nullComesBackAsNull()
{
    QDataStream stream(GetBytes([&](QDataStream& out) {
        Store::SaveSurface(out, nullptr);
        Store::SaveCurve(out, nullptr);
        Store::SaveBody(out, nullptr);
    }));
    QVERIFY(!Store::LoadSurface(stream));
    QVERIFY(!Store::LoadCurve(stream));
    QVERIFY(!Store::LoadBody(stream));
    QVERIFY(stream.atEnd());
}

void TestOpenShapeStore::sessionKeepsSurfacesShared()
{
    const auto surface = MakeCylinder();
    const auto body = ZETOpenBodyBuilder::MakeFace(surface);
    const auto boundary = MakeAssembledCurve(MakeBoundary(surface));
    const auto other = MakeAssembledCurve(MakeBoundary(surface));
    QByteArray bytes;
    {
        const Store::Session session;
        bytes = GetBytes([&](QDataStream& out) {
            Store::SaveBody(out, body.get());
            Store::SaveCurve(out, boundary.Get());
        });
        // Several streams, as when each feature has its own.
        const QByteArray second = GetBytes([&](QDataStream& out) { Store::SaveCurve(out, other.Get()); });
        QVERIFY(second.size() < bytes.size() / 3);
        bytes += second;
    }
    const Store::Session session;
    QDataStream stream(bytes);
    const auto loadedBody = Store::LoadBody(stream);
    const auto first = Store::LoadCurve(stream);
    const auto second = Store::LoadCurve(stream);
    QVERIFY(stream.atEnd());
    const auto* const face = qobject_cast<const ZETTopFace*>(loadedBody->GetEntities(2).first());
    QCOMPARE(first->GetSurface(), face->GetSurface());
    QCOMPARE(second->GetSurface(), face->GetSurface());
}

void TestOpenShapeStore::withoutASessionEachCallStandsForItself()
{
    const auto surface = MakeCylinder();
    QDataStream stream(GetBytes([&](QDataStream& out) {
        Store::SaveSurface(out, surface.Get());
        Store::SaveSurface(out, surface.Get());
    }));
    QVERIFY(Store::LoadSurface(stream) != Store::LoadSurface(stream));
}

void TestOpenShapeStore::numberAheadOfItsObjectIsTold()
{
    const auto surface = MakeCylinder();
    const Store::Session session;
    const QByteArray whole = GetBytes([&](QDataStream& out) { Store::SaveSurface(out, surface.Get()); });
    const QByteArray number = GetBytes([&](QDataStream& out) { Store::SaveSurface(out, surface.Get()); });
    QCOMPARE(number.size(), 5);
    const Store::Session reading;
    QDataStream ahead(number);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Store::LoadSurface(ahead));
    QDataStream first(whole);
    QVERIFY(Store::LoadSurface(first));
    QDataStream twice(whole);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Store::LoadSurface(twice));
}

void TestOpenShapeStore::foreignObjectsAreRefused()
{
    class ForeignBody : public ZETTopBody
    {
    public:
        int GetDimension() const override { return 0; }
        QList<const ZETTopDomain*> GetDomains() const override { return {}; }
        QList<const ZETTopEntity*> GetEntities(int) const override { return {}; }
    };
    const ForeignBody body;
    QVERIFY_THROWS_EXCEPTION(ZETSysException, GetBytes([&](QDataStream& out) { Store::SaveBody(out, &body); }));
}

void TestOpenShapeStore::streamCutAnywhereIsTold()
{
    const auto body = MakeRichBody();
    const QByteArray bytes = GetBytes([&](QDataStream& out) { Store::SaveBody(out, body.get()); });
    for (qsizetype length = 0; length < bytes.size(); length += length < 400 || length > bytes.size() - 400 ? 1 : 7) {
        const QString fault = GetBodyFault(bytes.first(length));
        QVERIFY2(fault == "the stored geometry can't be read: it ends too early",
                 qPrintable(QString("cut at %1: %2").arg(length).arg(fault)));
    }
    QCOMPARE(GetBodyFault(bytes), QString());
}

void TestOpenShapeStore::changedByteIsToldOrHarmless()
{
    const auto body = MakeRichBody();
    const QByteArray bytes = GetBytes([&](QDataStream& out) { Store::SaveBody(out, body.get()); });
    QRandomGenerator random(11);
    int told = 0;
    for (int n = 0; n < 2000; ++n) {
        QByteArray changed = bytes;
        for (int k = 0; k <= n % 3; ++k)
            changed[random.bounded(int(changed.size()))] = char(random.bounded(256));
        QDataStream stream(changed);
        try {
            const auto loaded = Store::LoadBody(stream);
            if (loaded) {
                for (const ZETTopEntity* entity : loaded->GetEntities(1))
                    qobject_cast<const ZETTopEdge*>(entity)->GetCurve()->GetNumPoints();
            }
        } catch (const ZETSysException& exception) {
            QVERIFY(!exception.GetMessage().isEmpty());
            ++told;
        }
    }
    QVERIFY(told > 1000);
}

void TestOpenShapeStore::announcedSizesAreNotBelieved()
{
    // A surface of almost 2^64 bytes, and a body of 2^32 domains.
    const QByteArray surface = GetBytes([](QDataStream& out) {
        out << quint8(2) << quint32(1) << QString("tool") << (std::numeric_limits<quint64>::max() - 7);
        out.writeRawData(QByteArray(64, 'x').constData(), 64);
    });
    QDataStream stream(surface);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Store::LoadSurface(stream));
    const QByteArray body = GetBytes([](QDataStream& out) {
        out << quint8(2) << qint32(1) << std::numeric_limits<quint32>::max() << quint8(2)
            << std::numeric_limits<quint32>::max() << quint8(0) << quint8(1) << std::numeric_limits<quint32>::max();
    });
    QCOMPARE(GetBodyFault(body), "the stored geometry can't be read: it ends too early");
}

void TestOpenShapeStore::chainsWithinChainsHaveALimit()
{
    const QByteArray chain = GetBytes([](QDataStream& out) {
        for (quint32 i = 1; i < 100000; ++i)
            out << quint8(2) << i << quint8(2) << quint8(0) << quint32(1);
    });
    QDataStream stream(chain);
    QCOMPARE(Thrown([&] { Store::LoadCurve(stream); }),
             "the stored geometry can't be read: chains stand too deep within chains");
}

void TestOpenShapeStore::emptyStreamIsTold()
{
    QDataStream stream{QByteArray()};
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Store::LoadSurface(stream));
    QDataStream noDevice;
    QVERIFY_THROWS_EXCEPTION(ZETSysException, Store::LoadBody(noDevice));
}

QTEST_GUILESS_MAIN(TestOpenShapeStore)
#include "TestOpenShapeStore.moc"
