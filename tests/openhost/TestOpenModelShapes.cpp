#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype digestSize = 8;

/*! A tool surface as a root's first child, a second feature of the same surface, and a point. */
std::unique_ptr<ZETFeatContainer> MakeModel()
{
    auto container = std::make_unique<ZETFeatContainer>();
    auto* root = new ZETCompRoot(container.get());
    const ZETOpenRef<ZETOpenSurface> surface =
        ZETOpenSurface::MakeCylinder(ZETMathAxis(), 250.0, -1.0, 1.0, 0.0, 400.0);
    (new ZETOpenGeometryFeature(root))->SetBody(ZETOpenBodyBuilder::MakeFace(surface));
    (new ZETOpenGeometryFeature(root))->SetBody(ZETOpenBodyBuilder::MakeFace(surface));
    (new ZETOpenGeometryFeature(root))->SetBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(250.0, 0.0, 7.0), surface));
    new ZETOpenGeometryFeature(root);
    ZETOpenModel::Update(*container);
    return container;
}

QList<ZETOpenGeometryFeature*> GetFeatures(const ZETFeatContainer& container)
{
    QList<ZETOpenGeometryFeature*> features;
    for (ZETFeatObject* feature : ZETOpenModel::GetRoot(container)->GetChildren())
        features.append(qobject_cast<ZETOpenGeometryFeature*>(feature));
    return features;
}

const ZETGeoSurface* GetSurface(const ZETOpenGeometryFeature& feature)
{
    const auto* face = qobject_cast<const ZETTopFace*>(feature.GetBody()->GetEntities(2).value(0));
    return face ? face->GetSurface() : nullptr;
}

QByteArray Sealed(const QByteArray& file)
{
    const QByteArray content = file.chopped(digestSize);
    return content + QCryptographicHash::hash(content, QCryptographicHash::Sha256).left(digestSize);
}

bool IsLoaded(const QByteArray& bytes)
{
    try {
        return ZETOpenModelStream::Load(bytes) != nullptr;
    } catch (const ZETSysException&) {
        return false;
    }
}
} // namespace

/*! Models with kernel geometry in them. */
class TestOpenModelShapes : public QObject
{
    Q_OBJECT
private slots:
    void bodiesComeBack();
    void sharedSurfaceStaysShared();
    void bitFlipsThrowOrLoad();
    void truncatedBodiesThrow();
};

void TestOpenModelShapes::bodiesComeBack()
{
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*MakeModel()));
    QVERIFY(qobject_cast<ZETCompRoot*>(ZETOpenModel::GetRoot(*loaded)));
    const QList<ZETOpenGeometryFeature*> features = GetFeatures(*loaded);
    QCOMPARE(features.size(), 4);
    QCOMPARE(features[0]->GetBody()->GetDimension(), 2);
    QVERIFY(
        GetSurface(*features[0])->Project(ZETMathPoint(900.0, 0.0, 50.0)).GetPoint().GetDistanceTo({250.0, 0.0, 50.0}) <
        1e-6);
    const auto* vertex = qobject_cast<const ZETTopVertex*>(features[2]->GetBody()->GetEntities(0).value(0));
    QVERIFY(vertex);
    QCOMPARE(vertex->GetPoint()->GetPosition(), ZETMathPoint(250.0, 0.0, 7.0));
    QCOMPARE(features[3]->GetBody(), nullptr);
    QVERIFY(!ZETOpenModel::IsOutdated(*features[0]));
}

void TestOpenModelShapes::sharedSurfaceStaysShared()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*model));
    const QList<ZETOpenGeometryFeature*> features = GetFeatures(*loaded);
    QVERIFY(GetSurface(*features[0]));
    QCOMPARE(GetSurface(*features[0]), GetSurface(*features[1]));
    QVERIFY(GetSurface(*features[0]) != GetSurface(*GetFeatures(*model)[0]));
}

void TestOpenModelShapes::bitFlipsThrowOrLoad()
{
    const QByteArray good = ZETOpenModelStream::Save(*MakeModel());
    QVERIFY(IsLoaded(good));
    QRandomGenerator random(20253);
    int refused = 0;
    for (int i = 0; i < 500; ++i) {
        QByteArray bytes = good;
        const auto place = random.bounded(bytes.size());
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << random.bounded(8)));
        QVERIFY(!IsLoaded(bytes));
        refused += IsLoaded(Sealed(bytes)) ? 0 : 1;
    }
    QVERIFY(refused > 0);
}

void TestOpenModelShapes::truncatedBodiesThrow()
{
    const QByteArray fields = ZETOpenModelStream::SaveFields(*GetFeatures(*MakeModel())[0]);
    ZETFeatContainer container;
    auto* feature = new ZETOpenGeometryFeature(new ZETCompRoot(&container));
    ZETOpenModelStream::LoadFields(*feature, fields);
    QRandomGenerator random(20254);
    for (int i = 0; i < 200; ++i) {
        const QByteArray part = fields.left(random.bounded(fields.size()));
        QVERIFY_THROWS_EXCEPTION(ZETSysException, ZETOpenModelStream::LoadFields(*feature, part));
    }
}

QTEST_GUILESS_MAIN(TestOpenModelShapes)
#include "TestOpenModelShapes.moc"
