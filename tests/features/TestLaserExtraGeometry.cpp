#include "features/ZETLaserExtraGeometry.h"
#include "features/ZETLaserExtraGeometry_p.h"
#include "tests/features/FeatureModel.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETSystem/ZETSysException.h>

#include <QMetaEnum>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using Extra = ZETLaserExtraGeometry;

class TestLaserExtraGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItself();
    void hasDefaults();
    void canBeMadeUnderAParent();
    void publishesTheNamesOfScopesOnly();
    void namesScopes_data();
    void namesScopes();
    void listsScopesInOrder();
    void setterTellsOnceOfEachChange();
    void remembersWhatWasSetAsLastSaved();
    void isAlwaysValid();

    void streamHoldsScopeAndFilters();
    void loadsWhatWasSavedAndTells();
    void loadKeepsUnknownValues();
    void filtersGoThroughAStreamAsOneInteger();
    void livesInASavedModel();

    void standsOnlyWhereItIsAllowed_data();
    void standsOnlyWhereItIsAllowed();
};

void TestLaserExtraGeometry::describesItself()
{
    const QMetaObject& type = Extra::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETFeatFolder::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type),
             (ClassInfo{{"defaultLabel", "Extra Geometry"},
                        {"inputProps", ""},
                        {"outputProps", ""},
                        {"visProps", ""},
                        {"contextualActions", ""},
                        {"editAction", "ZETLaserExtraGeometryCmd.Edit"},
                        {"allowedParents", "ZETCompLayup ZETCompSequence ZETCompPly ZETCompSubdivision ZETCompSubPly"},
                        {"PropertyLabel_scope", "Scope"},
                        {"PropertyLabel_filters", "Filters"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"ZETLaserExtraGeometry::ScopeType scope ScopeChanged(ScopeType)",
                                "QFlags<ZETLaserExtraGeometry::OutputFilter> filters FiltersChanged(OutputFilters)"}));
    QCOMPARE(Extra::Property_scope, "scope");
    QCOMPARE(Extra::Property_filters, "filters");
}

void TestLaserExtraGeometry::hasDefaults()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    QCOMPARE(extra->GetLabel(), u"Extra Geometry"_s);
    QCOMPARE(extra->GetScope(), Extra::AllPlies);
    QCOMPARE(Extra::GetScopeTypeString(extra->GetScope()), u"All plies"_s);
    QCOMPARE(extra->GetFilters(), Extra::OutputFilters());
    const auto& record = ZETLaserExtraGeometryPrivate::Of(*extra);
    QVERIFY(!record.scope.IsInitialised());
    QVERIFY(!record.filters.IsInitialised());
}

void TestLaserExtraGeometry::canBeMadeUnderAParent()
{
    FeatureModel model;
    const auto* extra = new Extra(model.folder);
    QCOMPARE(extra->GetParent(), model.folder);
    QCOMPARE(extra->GetContainer(), &model.container);
}

void TestLaserExtraGeometry::publishesTheNamesOfScopesOnly()
{
    const QMetaObject& type = Extra::staticMetaObject;
    QCOMPARE(type.enumeratorCount() - type.enumeratorOffset(), 1);
    const QMetaEnum scopes = QMetaEnum::fromType<Extra::ScopeType>();
    QCOMPARE(scopes.valueToKeys(3), "ParentOnly");
    QCOMPARE(scopes.keyCount(), 4);
    QCOMPARE(scopes.keyToValue("AllPlies"), 0);
    QCOMPARE(scopes.keyToValue("PliesBelow"), 1);
    QCOMPARE(scopes.keyToValue("UntilNext"), 2);
    QCOMPARE(scopes.keyToValue("ParentOnly"), 3);
    QCOMPARE(int(Extra::FilterFlat), 1);
    QCOMPARE(int(Extra::Filter3D), 2);
    QCOMPARE(int(Extra::FilterFlatNesting), 4);
}

void TestLaserExtraGeometry::namesScopes_data()
{
    QTest::addColumn<int>("scope");
    QTest::addColumn<QString>("name");
    QTest::newRow("-1") << -1 << QString();
    QTest::newRow("0") << 0 << u"All plies"_s;
    QTest::newRow("1") << 1 << u"Plies below"_s;
    QTest::newRow("2") << 2 << u"Until next"_s;
    QTest::newRow("3") << 3 << u"Parent only"_s;
    QTest::newRow("4") << 4 << QString();
}

void TestLaserExtraGeometry::namesScopes()
{
    QFETCH(int, scope);
    QFETCH(QString, name);
    QCOMPARE(Extra::GetScopeTypeString(static_cast<Extra::ScopeType>(scope)), name);
}

void TestLaserExtraGeometry::listsScopesInOrder()
{
    const QList<Extra::ScopeType> expected{Extra::AllPlies, Extra::PliesBelow, Extra::UntilNext, Extra::ParentOnly};
    QCOMPARE(Extra::GetAllScopeTypes(), expected);
}

void TestLaserExtraGeometry::setterTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    QSignalSpy scopes(extra, &Extra::ScopeChanged);
    QSignalSpy filters(extra, &Extra::FiltersChanged);
    for (int i = 0; i < 2; ++i) {
        extra->SetScope(Extra::UntilNext);
        extra->SetFilters(Extra::FilterFlat | Extra::FilterFlatNesting);
    }
    QCOMPARE(scopes.count(), 1);
    QCOMPARE(scopes.first().first().value<Extra::ScopeType>(), Extra::UntilNext);
    QCOMPARE(filters.count(), 1);
    QCOMPARE(filters.first().first().value<Extra::OutputFilters>().toInt(), 5);
    QCOMPARE(extra->GetScope(), Extra::UntilNext);
    QCOMPARE(extra->GetFilters().toInt(), 5);
}

void TestLaserExtraGeometry::remembersWhatWasSetAsLastSaved()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    extra->SetScope(Extra::PliesBelow);
    extra->SetFilters(Extra::Filter3D);
    const auto& record = ZETLaserExtraGeometryPrivate::Of(*extra);
    QCOMPARE(record.scope.GetLastSavedValue().value<Extra::ScopeType>(), Extra::PliesBelow);
    QCOMPARE(record.filters.GetLastSavedValue().value<Extra::OutputFilters>().toInt(), 2);
}

void TestLaserExtraGeometry::isAlwaysValid()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    QCOMPARE(extra->UpdateResult(), true);
    QCOMPARE(GetMessages(*extra), QStringList());
}

void TestLaserExtraGeometry::streamHoldsScopeAndFilters()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    extra->SetScope(Extra::ParentOnly);
    extra->SetFilters(Extra::FilterFlat | Extra::Filter3D | Extra::FilterFlatNesting);
    QCOMPARE(GetOwnFields(*extra), "00000003"
                                   "00000007");
}

void TestLaserExtraGeometry::loadsWhatWasSavedAndTells()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    QSignalSpy scopes(extra, &Extra::ScopeChanged);
    QSignalSpy filters(extra, &Extra::FiltersChanged);
    for (int i = 0; i < 2; ++i) // the second time nothing changes
        ZETOpenModelStream::LoadFields(*extra, MakeFields("00000003"
                                                          "00000004"));
    QCOMPARE(extra->GetScope(), Extra::ParentOnly);
    QCOMPARE(extra->GetFilters(), Extra::OutputFilters(Extra::FilterFlatNesting));
    QCOMPARE(scopes.count(), 1);
    QCOMPARE(filters.count(), 1);
    const auto& record = ZETLaserExtraGeometryPrivate::Of(*extra);
    QCOMPARE(record.scope.GetLastSavedValue().value<Extra::ScopeType>(), Extra::ParentOnly);
    QCOMPARE(record.filters.GetLastSavedValue().value<Extra::OutputFilters>().toInt(), 4);
}

void TestLaserExtraGeometry::loadKeepsUnknownValues()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    ZETOpenModelStream::LoadFields(*extra, MakeFields("0000002a"
                                                      "80000011"));
    QCOMPARE(int(extra->GetScope()), 42);
    QCOMPARE(extra->GetFilters().toInt(), int(0x80000011));
    QCOMPARE(GetOwnFields(*extra), "0000002a"
                                   "80000011");
}

void TestLaserExtraGeometry::filtersGoThroughAStreamAsOneInteger()
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << Extra::OutputFilters(Extra::FilterFlat | Extra::Filter3D);
    QCOMPARE(bytes.toHex(), "00000003");
    Extra::OutputFilters filters = Extra::FilterFlatNesting; // reading doesn't add to what is there
    QDataStream stream(bytes);
    stream >> filters;
    QCOMPARE(filters, Extra::FilterFlat | Extra::Filter3D);
}

void TestLaserExtraGeometry::livesInASavedModel()
{
    FeatureModel model;
    auto* extra = model.Make<Extra>();
    extra->SetScope(Extra::ParentOnly);
    extra->SetFilters(Extra::Filter3D);
    ZETOpenModel::Create("ZETLaserParameter", *extra);
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    const auto* copy = qobject_cast<Extra*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QCOMPARE(copy->GetScope(), Extra::ParentOnly);
    QCOMPARE(copy->GetFilters(), Extra::OutputFilters(Extra::Filter3D));
    QCOMPARE(copy->GetChildren().size(), 1);
}

void TestLaserExtraGeometry::standsOnlyWhereItIsAllowed_data()
{
    QTest::addColumn<QByteArray>("parent");
    QTest::addColumn<bool>("allowed");
    for (const char* name : {"ZETCompLayup", "ZETCompSequence", "ZETCompPly", "ZETCompSubdivision", "ZETCompSubPly"})
        QTest::newRow(name) << QByteArray(name) << true;
    for (const char* name : {"ZETCompRoot", "ZETLaserTarget", "ZETLaserParameter", "ZETWFAxisSystem"})
        QTest::newRow(name) << QByteArray(name) << false;
}

void TestLaserExtraGeometry::standsOnlyWhereItIsAllowed()
{
    QFETCH(QByteArray, parent);
    QFETCH(bool, allowed);
    ZETFeatContainer container;
    ZETFeatObject* above = ZETOpenModel::Create(parent, container);
    if (allowed)
        QVERIFY(qobject_cast<Extra*>(ZETOpenModel::Create("ZETLaserExtraGeometry", *above)));
    else
        QVERIFY_THROWS_EXCEPTION(ZETSysException, ZETOpenModel::Create("ZETLaserExtraGeometry", *above));
}

QTEST_GUILESS_MAIN(TestLaserExtraGeometry)
#include "TestLaserExtraGeometry.moc"
