#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETFeature/ZETFeatVisObject.h>

#include <QFile>
#include <QLibrary>
#include <QMetaType>
#include <QSequentialIterable>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QList<QByteArray> featureClasses{"ZETLaser3DTextByAxis", "ZETLaser3DTextOnSupport", "ZETLaserExtraGeometry",
                                       "ZETLaserParameter",    "ZETLaserProjector",       "ZETLaserTarget"};
const QList<QByteArray> visObjectClasses{"ZETLaser3DTextVisObject", "ZETLaserTargetVisObject"};

QList<QByteArray> GetMetaTypeNames()
{
    QList<QByteArray> names{"ZETLaserExtraGeometry::OutputFilters", "QList<ZETLaserTarget*>",
                            "ZETLaserOptions::ELaserSourceType"};
    for (const QByteArray& name : featureClasses)
        names << name + '*' << "const " + name + '*';
    return names;
}

/*! The names of this library that the host or Qt knows. */
QList<QByteArray> GetRegistered()
{
    QList<QByteArray> names;
    for (const QByteArray& name : ZETOpenTypes::GetRegisteredClasses()) {
        if (name.startsWith("ZETLaser"))
            names.append(name);
    }
    names += ZETOpenScene::GetRegisteredVisObjectClasses();
    names += ZETOpenScene::GetRegisteredFeatureClasses();
    const QList<QByteArray> onDemand{"ZETLaserExtraGeometry::ScopeType", "ZETLaserParameter::ParameterType"};
    for (const QByteArray& name : GetMetaTypeNames() + onDemand) {
        if (QMetaType::fromName(name).isValid())
            names.append(name);
    }
    return names;
}

bool IsMapped()
{
    QFile maps(u"/proc/self/maps"_s);
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libZETLaser.so");
}

/*! Works with the library as a host does, by names alone; all that it makes is gone behind it. */
void UseLibrary(QLibrary& library)
{
    const auto* isLoaded = reinterpret_cast<const bool*>(library.resolve("_ZETLaserLoaded"));
    QVERIFY(isLoaded);
    QCOMPARE(*isLoaded, true);

    ZETFeatContainer container;
    for (const QByteArray& name : featureClasses)
        QCOMPARE(QByteArray(ZETOpenModel::Create(name, container)->metaObject()->className()), name);
    QVERIFY(!ZETOpenTypes::IsRegistered("ZETLaser3DText"));

    const ZETFeatEnvironment environment;
    for (const char* name : {"ZETLaser3DTextByAxis", "ZETLaser3DTextOnSupport"}) {
        const auto object = ZETOpenScene::CreateVisObject(environment, *ZETOpenModel::Create(name, container));
        QCOMPARE(object->metaObject()->className(), "ZETLaser3DTextVisObject");
    }

    // By their names and as integers, which makes the enumerations known as well.
    QVERIFY(ZETOpenModel::Create("ZETLaserExtraGeometry", container)->setProperty("scope", 2));
    QVERIFY(ZETOpenModel::Create("ZETLaserParameter", container)->setProperty("type", "Note"));

    ZETFeatObject* projector = ZETOpenModel::Create("ZETLaserProjector", container);
    ZETFeatObject* target = ZETOpenModel::Create("ZETLaserTarget", container);
    QVariant targets(QMetaType::fromName("QList<ZETLaserTarget*>"));
    targets.view<QSequentialIterable>().addValue(QVariant(QMetaType::fromName("ZETLaserTarget*"), &target));
    QVERIFY(projector->setProperty("targets", targets));
    const QVariant stored = projector->property("targets");
    QObjectList found;
    for (const QVariant& element : stored.value<QSequentialIterable>())
        found.append(element.value<QObject*>());
    QCOMPARE(found, QObjectList{target});
}
} // namespace

/*! The shared library as a host meets it: this program isn't linked with it. */
class TestLaserLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void leavesNothingBehind_data();
    void leavesNothingBehind();
};

void TestLaserLibrary::initTestCase()
{
    QVERIFY(!IsMapped());
    QCOMPARE(GetRegistered(), QList<QByteArray>());
}

void TestLaserLibrary::leavesNothingBehind_data()
{
    QTest::addColumn<int>("round");
    QTest::newRow("first") << 1;
    QTest::newRow("again") << 2; // what the first left behind would be in the way
}

void TestLaserLibrary::leavesNothingBehind()
{
    QLibrary library(QStringLiteral(ZET_LASER_LIBRARY));
    QVERIFY2(library.load(), qUtf8Printable(library.errorString()));
    QList<QByteArray> expected = featureClasses + visObjectClasses;
    expected << "ZETLaser3DText"
             << "ZETLaserTarget";
    expected += GetMetaTypeNames();
    QCOMPARE(GetRegistered(), expected);

    UseLibrary(library);
    if (QTest::currentTestFailed())
        return;

    QVERIFY2(library.unload(), qUtf8Printable(library.errorString()));
    QVERIFY(!IsMapped());
    QCOMPARE(GetRegistered(), QList<QByteArray>());
    ZETFeatContainer container;
    QVERIFY_THROWS_EXCEPTION(std::exception, ZETOpenModel::Create("ZETLaserTarget", container));
}

QTEST_GUILESS_MAIN(TestLaserLibrary)
#include "TestLaserLibrary.moc"
