#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaserExtraGeometry.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserOptions.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"
#include "tests/features/FeatureModel.h"

#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETFeature/ZETFeatVisObject.h>

#include <QMetaType>
#include <QSequentialIterable>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

/*! What is registered by the time that a program's main begins. */
class TestLaserStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void libraryIsLoaded();
    void featureClassesAreMadeFromTheirNames_data();
    void featureClassesAreMadeFromTheirNames();
    void abstractTextIsNotRegistered();
    void displayObjectsAreFoundByTheNameOfTheBase_data();
    void displayObjectsAreFoundByTheNameOfTheBase();
    void metaTypesAreKnownByName_data();
    void metaTypesAreKnownByName();
    void targetsInAVariantCanBeIterated();
    void targetsInAVariantCanBeChanged();
};

void TestLaserStartup::libraryIsLoaded()
{
    QVERIFY(_ZETLaserLoaded);
}

void TestLaserStartup::featureClassesAreMadeFromTheirNames_data()
{
    QTest::addColumn<const QMetaObject*>("type");
    for (const QMetaObject* type : {&ZETLaser3DTextByAxis::staticMetaObject, &ZETLaser3DTextOnSupport::staticMetaObject,
                                    &ZETLaserExtraGeometry::staticMetaObject, &ZETLaserParameter::staticMetaObject,
                                    &ZETLaserProjector::staticMetaObject, &ZETLaserTarget::staticMetaObject})
        QTest::newRow(type->className()) << type;
}

void TestLaserStartup::featureClassesAreMadeFromTheirNames()
{
    QFETCH(const QMetaObject*, type);
    ZETFeatContainer container;
    const ZETFeatObject* feature = ZETOpenModel::Create(type->className(), container);
    QCOMPARE(feature->metaObject(), type);
}

void TestLaserStartup::abstractTextIsNotRegistered()
{
    QVERIFY(!ZETOpenTypes::IsRegistered("ZETLaser3DText"));
}

void TestLaserStartup::displayObjectsAreFoundByTheNameOfTheBase_data()
{
    QTest::addColumn<QByteArray>("feature");
    QTest::addColumn<QByteArray>("object");
    QTest::newRow("by axis") << "ZETLaser3DTextByAxis"_ba
                             << "ZETLaser3DTextVisObject"_ba;
    QTest::newRow("on support") << "ZETLaser3DTextOnSupport"_ba
                                << "ZETLaser3DTextVisObject"_ba;
    QTest::newRow("target") << "ZETLaserTarget"_ba
                            << "ZETLaserTargetVisObject"_ba;
    QTest::newRow("projector") << "ZETLaserProjector"_ba << QByteArray();
    QTest::newRow("parameter") << "ZETLaserParameter"_ba << QByteArray();
    QTest::newRow("extra geometry") << "ZETLaserExtraGeometry"_ba << QByteArray();
}

void TestLaserStartup::displayObjectsAreFoundByTheNameOfTheBase()
{
    QFETCH(QByteArray, feature);
    QFETCH(QByteArray, object);
    ZETFeatContainer container;
    const ZETFeatEnvironment environment;
    const auto made = ZETOpenScene::CreateVisObject(environment, *ZETOpenModel::Create(feature, container));
    QCOMPARE(made ? QByteArray(made->metaObject()->className()) : QByteArray(), object);
    QCOMPARE(ZETOpenScene::GetRegisteredFeatureClasses(), (QList<QByteArray>{"ZETLaser3DText", "ZETLaserTarget"}));
}

void TestLaserStartup::metaTypesAreKnownByName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QMetaType>("type");
    const auto add = [](const char* name, QMetaType type) { QTest::newRow(name) << QByteArray(name) << type; };
    add("ZETLaserExtraGeometry::OutputFilters", QMetaType::fromType<ZETLaserExtraGeometry::OutputFilters>());
    add("QList<ZETLaserTarget*>", QMetaType::fromType<QList<ZETLaserTarget*>>());
    add("ZETLaserOptions::ELaserSourceType", QMetaType::fromType<ZETLaserOptions::ELaserSourceType>());
    add("ZETLaser3DTextByAxis*", QMetaType::fromType<ZETLaser3DTextByAxis*>());
    add("const ZETLaser3DTextByAxis*", QMetaType::fromType<const ZETLaser3DTextByAxis*>());
    add("ZETLaser3DTextOnSupport*", QMetaType::fromType<ZETLaser3DTextOnSupport*>());
    add("const ZETLaser3DTextOnSupport*", QMetaType::fromType<const ZETLaser3DTextOnSupport*>());
    add("ZETLaserExtraGeometry*", QMetaType::fromType<ZETLaserExtraGeometry*>());
    add("const ZETLaserExtraGeometry*", QMetaType::fromType<const ZETLaserExtraGeometry*>());
    add("ZETLaserParameter*", QMetaType::fromType<ZETLaserParameter*>());
    add("const ZETLaserParameter*", QMetaType::fromType<const ZETLaserParameter*>());
    add("ZETLaserProjector*", QMetaType::fromType<ZETLaserProjector*>());
    add("const ZETLaserProjector*", QMetaType::fromType<const ZETLaserProjector*>());
    add("ZETLaserTarget*", QMetaType::fromType<ZETLaserTarget*>());
    add("const ZETLaserTarget*", QMetaType::fromType<const ZETLaserTarget*>());
}

void TestLaserStartup::metaTypesAreKnownByName()
{
    QFETCH(QByteArray, name);
    QFETCH(QMetaType, type);
    QCOMPARE(QMetaObject::normalizedType(name.constData()), name);
    QVERIFY(QMetaType::fromName(name).isValid());
    QCOMPARE(QMetaType::fromName(name), type);
}

void TestLaserStartup::targetsInAVariantCanBeIterated()
{
    FeatureModel model;
    const QList<ZETLaserTarget*> targets{model.Make<ZETLaserTarget>(), nullptr, model.Make<ZETLaserTarget>()};
    auto* projector = model.Make<ZETLaserProjector>();
    projector->SetTargets(targets);
    const QVariant variant = projector->property("targets");
    QVERIFY(variant.canConvert<QVariantList>());
    QList<ZETLaserTarget*> found;
    for (const QVariant& element : variant.value<QSequentialIterable>())
        found.append(element.value<ZETLaserTarget*>());
    QCOMPARE(found, targets);
}

void TestLaserStartup::targetsInAVariantCanBeChanged()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    QVariant variant = QVariant::fromValue(QList<ZETLaserTarget*>());
    QSequentialIterable view = variant.view<QSequentialIterable>();
    view.addValue(QVariant::fromValue(target));
    QCOMPARE(variant.value<QList<ZETLaserTarget*>>(), QList<ZETLaserTarget*>{target});
}

QTEST_GUILESS_MAIN(TestLaserStartup)
#include "TestLaserStartup.moc"
