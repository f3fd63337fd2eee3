#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"
#include "OpenTestFeatures.h"
#include "tests/support/TestThrown.h"

#include <ZETFeature/ZETFeatContainerManager.h>
#include <ZETFeature/ZETFeatContainerProvider.h>

#include <QPointer>
#include <QtTest>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

namespace
{
QStringList Labels(const QList<ZETFeatObject*>& features)
{
    QStringList labels;
    for (const ZETFeatObject* feature : features)
        labels.append(feature->GetLabel());
    return labels;
}

TestNode* MakeNode(ZETFeatObject* parent, const QString& label)
{
    auto* node = new TestNode(parent);
    ZETOpenModel::SetLabel(*node, label);
    return node;
}
} // namespace

class TestFolder : public ZETFeatFolder
{
    Q_OBJECT
public:
    using ZETFeatFolder::ZETFeatFolder;
};

class TestFolderChild : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("allowedParents", "TestFolder")
};

class TestOpenFeatureTree : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void childrenStandInModelOrder();
    void allChildrenListAParentAheadOfItsChildren();
    void aDeepTreeIsNoTrouble();
    void rootIsFoundFromBelow();
    void outsideATreeThereIsNoRoot();
    void labelIsTheOneSetOrTheDefault();
    void enabledGoesDownTheTree();
    void messagesAreKeptInOrderUntilTheNextUpdate();
    void propertiesAreThoseBelowQObject();
    void updatePropertyOutdatesForAnInput();
    void updateRunsInTreeOrder();
    void updateRunsInputsFirst();
    void updateEndsForFeaturesThatPointToEachOther();
    void updateTellsWhetherAllSucceeded();
    void exceptionOfAnUpdatePasses();
    void outdatedGoesToWhatPointsToAFeature();
    void allowedParentsAreAsked_data();
    void allowedParentsAreAsked();
    void folderBelowAFolderTakesWhatThatOneTakes();
    void createMakesAFeatureByName();
    void createKeepsAllowedParents();
    void createTellsWhatIsWrong();
    void rootTakesAnyFeatureThatIsConstructed();
    void moveChangesParentAndOrder();
    void moveRefusesWhatCannotBe();
    void removeTakesTheBranchAway();
    void removedFeatureThatIsHeldLivesOn();
    void containerDeletesWhatItOwns();
    void geometryWithoutContainerGoesWithItsLastReference();
    void referencesLeadToTheirObjects();
    void loadingConstructorSurvivesNulls();
    void registrationsCountOncePerClass();
    void providerAndUrl();
};

void TestOpenFeatureTree::initTestCase()
{
    for (const QMetaObject* type : {&TestRoot::staticMetaObject, &TestNode::staticMetaObject,
                                    &TestLeaf::staticMetaObject, &TestLeafOfLeaf::staticMetaObject})
        ZETGeoContainer::RegisterType(type);
}

void TestOpenFeatureTree::cleanupTestCase()
{
    for (const QMetaObject* type : {&TestRoot::staticMetaObject, &TestNode::staticMetaObject,
                                    &TestLeaf::staticMetaObject, &TestLeafOfLeaf::staticMetaObject})
        ZETGeoContainer::UnregisterType(type);
}

void TestOpenFeatureTree::init()
{
    TestNode::updates.clear();
}

void TestOpenFeatureTree::childrenStandInModelOrder()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    MakeNode(root, u"A"_s);
    MakeNode(root, u"B"_s);
    QCOMPARE(Labels(root->GetChildren()), (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(root->GetChildren().first()->GetParent(), root);
    QCOMPARE(root->GetChildren().first()->GetContainer(), &container);
    QCOMPARE(root->GetParent(), nullptr);
}

void TestOpenFeatureTree::allChildrenListAParentAheadOfItsChildren()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    MakeNode(b, u"B1"_s);
    TestNode* a1 = MakeNode(a, u"A1"_s);
    MakeNode(a, u"A2"_s);
    MakeNode(a1, u"A11"_s);
    QCOMPARE(Labels(root->GetAllChildren()), (QStringList{u"A"_s, u"A1"_s, u"A11"_s, u"A2"_s, u"B"_s, u"B1"_s}));
}

void TestOpenFeatureTree::aDeepTreeIsNoTrouble()
{
    constexpr int depth = 200000;
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    ZETFeatObject* parent = root;
    for (int i = 0; i < depth; ++i)
        parent = new TestNode(parent);
    QCOMPARE(root->GetAllChildren().size(), depth);
    QVERIFY(parent->IsEffectivelyEnabled());
    QCOMPARE(parent->GetRoot(), root);
    root->GetChildren().first()->Remove();
    QVERIFY(root->GetChildren().isEmpty());
}

void TestOpenFeatureTree::rootIsFoundFromBelow()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* leaf = MakeNode(MakeNode(root, u"A"_s), u"A1"_s);
    QCOMPARE(leaf->GetRoot(), root);
    QCOMPARE(root->GetRoot(), root);
    QCOMPARE(ZETOpenModel::GetRoot(container), root);
}

void TestOpenFeatureTree::outsideATreeThereIsNoRoot()
{
    ZETFeatContainer container;
    QCOMPARE(ZETOpenModel::GetRoot(container), nullptr);
    auto* top = ZETOpenModel::Create("TestNode", container);
    QCOMPARE(top->GetRoot(), nullptr);
    QCOMPARE(ZETOpenModel::GetTopFeatures(container), QList<ZETFeatObject*>{top});
}

void TestOpenFeatureTree::labelIsTheOneSetOrTheDefault()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    QCOMPARE(root->GetLabel(), u"Test root"_s);
    ZETOpenModel::SetLabel(*root, u"Wing"_s);
    QCOMPARE(root->GetLabel(), u"Wing"_s);
    ZETOpenModel::SetLabel(*root, u""_s);
    QCOMPARE(root->GetLabel(), QString());
    ZETOpenModel::SetLabel(*root, QString());
    QCOMPARE(root->GetLabel(), u"Test root"_s);
    // The nearest base that has a label lends it.
    QCOMPARE(ZETOpenModel::Create("TestLeafOfLeaf", *root)->GetLabel(), u"Test leaf"_s);
}

void TestOpenFeatureTree::enabledGoesDownTheTree()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* parent = MakeNode(root, u"A"_s);
    TestNode* child = MakeNode(parent, u"A1"_s);
    QVERIFY(child->IsEffectivelyEnabled());
    ZETOpenModel::SetEnabled(*parent, false);
    QVERIFY(ZETOpenModel::IsEnabled(*child));
    QVERIFY(!child->IsEffectivelyEnabled());
    QVERIFY(!parent->IsEffectivelyEnabled());
    QVERIFY(root->IsEffectivelyEnabled());
    ZETOpenModel::SetEnabled(*parent, true);
    QVERIFY(child->IsEffectivelyEnabled());
}

void TestOpenFeatureTree::messagesAreKeptInOrderUntilTheNextUpdate()
{
    ZETFeatContainer container;
    TestNode* node = MakeNode(new TestRoot(&container), u"A"_s);
    node->SetPropertyMessage("amount", ZETFeatObject::MessageWarning, u"first"_s);
    node->AddMessage(ZETFeatObject::MessageError, u"second"_s);
    const QList<ZETOpenModel::Message> expected{{ZETFeatObject::MessageWarning, "amount", u"first"_s},
                                                {ZETFeatObject::MessageError, QByteArray(), u"second"_s}};
    QCOMPARE(ZETOpenModel::GetMessages(*node), expected);
    QVERIFY(ZETOpenModel::Update(*node));
    QVERIFY(ZETOpenModel::GetMessages(*node).isEmpty());
}

void TestOpenFeatureTree::propertiesAreThoseBelowQObject()
{
    const TestLeaf leaf(nullptr, ZETGeoGeometryRef());
    QCOMPARE(leaf.GetAllProperties(), (QSet<QByteArray>{"amount", "other", "others", "note"}));
}

void TestOpenFeatureTree::updatePropertyOutdatesForAnInput()
{
    ZETFeatContainer container;
    auto* leaf = new TestLeaf(MakeNode(new TestRoot(&container), u"A"_s));
    ZETOpenModel::Update(container);
    QVERIFY(!ZETOpenModel::IsOutdated(*leaf));
    leaf->UpdateProperty("others");
    leaf->UpdateProperty("unknown");
    QVERIFY(!ZETOpenModel::IsOutdated(*leaf));
    leaf->UpdateProperty("amount"); // an input of the base class
    QVERIFY(ZETOpenModel::IsOutdated(*leaf));
    ZETOpenModel::Update(container);
    leaf->UpdateProperty("note");
    QVERIFY(ZETOpenModel::IsOutdated(*leaf));
}

void TestOpenFeatureTree::updateRunsInTreeOrder()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    MakeNode(root, u"B"_s);
    TestNode* a1 = MakeNode(a, u"A1"_s);
    QVERIFY(ZETOpenModel::IsOutdated(*a1));
    QVERIFY(ZETOpenModel::Update(container));
    QCOMPARE(TestNode::updates, (QStringList{u"A"_s, u"A1"_s, u"B"_s}));
    QVERIFY(!ZETOpenModel::IsOutdated(*a1));

    TestNode::updates.clear();
    a1->SetOutdated();
    QVERIFY(ZETOpenModel::Update(*root));
    QCOMPARE(TestNode::updates, QStringList{u"A1"_s});
}

void TestOpenFeatureTree::updateRunsInputsFirst()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    TestNode* c = MakeNode(root, u"C"_s);
    a->SetOther(c);
    c->SetOther(b);
    b->AppendOther(a); // no input, so no reason to wait
    QVERIFY(ZETOpenModel::Update(container));
    QCOMPARE(TestNode::updates, (QStringList{u"B"_s, u"C"_s, u"A"_s}));
}

void TestOpenFeatureTree::updateEndsForFeaturesThatPointToEachOther()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    a->SetOther(b);
    b->SetOther(a);
    QVERIFY(ZETOpenModel::Update(container));
    QCOMPARE(TestNode::updates, (QStringList{u"B"_s, u"A"_s}));
    a->SetOther(a);
    QVERIFY(ZETOpenModel::Update(container));
    QVERIFY(!ZETOpenModel::IsOutdated(*a));
}

void TestOpenFeatureTree::updateTellsWhetherAllSucceeded()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    MakeNode(root, u"B"_s);
    a->SetAmount(-1);
    QVERIFY(!ZETOpenModel::Update(container));
    QCOMPARE(TestNode::updates.size(), 2);
    QVERIFY(!ZETOpenModel::IsValid(*a));
    QCOMPARE(ZETOpenModel::GetMessages(*a).size(), 1);
    a->SetAmount(1);
    QVERIFY(ZETOpenModel::Update(container));
    QVERIFY(ZETOpenModel::IsValid(*a));
}

void TestOpenFeatureTree::exceptionOfAnUpdatePasses()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    a->throwsAtUpdate = true;
    QCOMPARE(Thrown([&] { ZETOpenModel::Update(container); }), u"no update today"_s);
    QVERIFY(!ZETOpenModel::IsOutdated(*root));
    QVERIFY(ZETOpenModel::IsOutdated(*a));
    QVERIFY(ZETOpenModel::IsOutdated(*b));
}

void TestOpenFeatureTree::outdatedGoesToWhatPointsToAFeature()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    TestNode* c = MakeNode(root, u"C"_s);
    a->SetOther(b);
    b->SetOther(c);
    QVERIFY(ZETOpenModel::Update(container));
    c->SetAmount(5);
    QVERIFY(ZETOpenModel::IsOutdated(*a));
    QVERIFY(!ZETOpenModel::IsOutdated(*root));
    QVERIFY(ZETOpenModel::Update(container));
    c->Remove();
    QCOMPARE(b->GetOther(), nullptr);
    QVERIFY(ZETOpenModel::IsOutdated(*b));
    QVERIFY(ZETOpenModel::IsOutdated(*a));
}

void TestOpenFeatureTree::allowedParentsAreAsked_data()
{
    QTest::addColumn<QByteArray>("parent");
    QTest::addColumn<QByteArray>("child");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("named") << QByteArray("TestNode") << QByteArray("TestLeaf") << true;
    QTest::newRow("derived from the named") << QByteArray("TestLeafOfLeaf") << QByteArray("TestLeaf") << true;
    QTest::newRow("not named") << QByteArray("ZETFeatFolder") << QByteArray("TestLeaf") << false;
    QTest::newRow("a root is like any other") << QByteArray("TestRoot") << QByteArray("TestLeaf") << false;
    QTest::newRow("no entry") << QByteArray("ZETFeatFolder") << QByteArray("TestNode") << true;
    QTest::newRow("empty entry over the base's") << QByteArray("ZETFeatFolder") << QByteArray("TestLeafOfLeaf") << true;
}

void TestOpenFeatureTree::allowedParentsAreAsked()
{
    QFETCH(QByteArray, parent);
    QFETCH(QByteArray, child);
    ZETFeatContainer container;
    const ZETFeatObject* feature = ZETOpenModel::Create(parent, container);
    QTEST(feature->IsChildAllowed(ZETOpenTypes::GetType(child)), "allowed");
    QVERIFY(!feature->IsChildAllowed(nullptr));
    QVERIFY(!feature->IsChildAllowed(&QObject::staticMetaObject));
}

void TestOpenFeatureTree::folderBelowAFolderTakesWhatThatOneTakes()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    auto* named = new TestFolder(root);
    auto* plain = new ZETFeatFolder(new ZETFeatFolder(named));
    QVERIFY(named->IsChildAllowed(&TestFolderChild::staticMetaObject));
    QVERIFY(plain->IsChildAllowed(&TestFolderChild::staticMetaObject));
    QVERIFY(!(new ZETFeatFolder(root))->IsChildAllowed(&TestFolderChild::staticMetaObject));

    TestNode* node = MakeNode(root, u"A"_s);
    auto* outer = new ZETFeatFolder(node);
    auto* inner = new ZETFeatFolder(outer);
    // The node itself isn't a folder, so what it takes doesn't go on below it.
    QVERIFY(!outer->IsChildAllowed(&TestLeaf::staticMetaObject));
    QVERIFY(!inner->IsChildAllowed(&TestLeaf::staticMetaObject));
    QVERIFY(inner->IsChildAllowed(&TestNode::staticMetaObject));
}

void TestOpenFeatureTree::createMakesAFeatureByName()
{
    ZETFeatContainer container;
    auto* root = qobject_cast<TestRoot*>(ZETOpenModel::Create("TestRoot", container));
    QVERIFY(root);
    MakeNode(root, u"A"_s);
    auto* node = qobject_cast<TestNode*>(ZETOpenModel::Create("TestNode", *root));
    QVERIFY(node);
    QCOMPARE(root->GetChildren().last(), node);
    QCOMPARE(node->GetContainer(), &container);
    QVERIFY(ZETOpenModel::GetFeatureClasses().contains("ZETFeatFolder"));
    QVERIFY(ZETOpenModel::GetFeatureClasses().contains("TestLeaf"));
}

void TestOpenFeatureTree::createKeepsAllowedParents()
{
    ZETFeatContainer container;
    ZETFeatObject* root = ZETOpenModel::Create("TestRoot", container);
    const int alive = TestNode::alive;
    QCOMPARE(Thrown([&] { ZETOpenModel::Create("TestLeaf", *root); }),
             u"A TestLeaf can't stand below \"Test root\", which is a TestRoot: its allowed parents are "
             "TestOther TestNode."_s);
    QCOMPARE(TestNode::alive, alive);
    QVERIFY(root->GetChildren().isEmpty());
    QVERIFY(ZETOpenModel::Create("TestLeaf", *root, ZETOpenModel::ParentCheck::None));
    QVERIFY(ZETOpenModel::Create("TestLeaf", *ZETOpenModel::Create("TestNode", *root)));
}

void TestOpenFeatureTree::createTellsWhatIsWrong()
{
    ZETFeatContainer container;
    ZETFeatObject* root = ZETOpenModel::Create("TestRoot", container);
    QCOMPARE(Thrown([&] { ZETOpenModel::Create("TestNothing", *root); }),
             u"The class \"TestNothing\" is not registered."_s);
    ZETGeoContainer::RegisterType(&QObject::staticMetaObject);
    QCOMPARE(Thrown([&] { ZETOpenModel::Create("QObject", *root); }),
             u"The class \"QObject\" is not a feature class."_s);
    ZETGeoContainer::UnregisterType(&QObject::staticMetaObject);
    ZETGeoContainer::RegisterType(&ZETFeatRoot::staticMetaObject);
    QCOMPARE(Thrown([&] { ZETOpenModel::Create("ZETFeatRoot", container); }),
             u"The class ZETFeatRoot can't be made by name: it has no invokable constructor (ZETGeoContainer*, const "
             "ZETGeoGeometryRef&)."_s);
    ZETGeoContainer::UnregisterType(&ZETFeatRoot::staticMetaObject);
}

void TestOpenFeatureTree::rootTakesAnyFeatureThatIsConstructed()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    auto* leaf = new TestLeaf(root);
    QCOMPARE(root->GetChildren(), QList<ZETFeatObject*>{leaf});
    QVERIFY(ZETOpenModel::Update(container));
    QVERIFY(ZETOpenModel::GetMessages(*leaf).isEmpty());
}

void TestOpenFeatureTree::moveChangesParentAndOrder()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    MakeNode(root, u"B"_s);
    TestNode* c = MakeNode(root, u"C"_s);
    ZETOpenModel::Move(*c, *root, 0);
    QCOMPARE(Labels(root->GetChildren()), (QStringList{u"C"_s, u"A"_s, u"B"_s}));
    ZETOpenModel::Move(*c, *a);
    QCOMPARE(Labels(root->GetChildren()), (QStringList{u"A"_s, u"B"_s}));
    QCOMPARE(Labels(a->GetChildren()), QStringList{u"C"_s});
}

void TestOpenFeatureTree::moveRefusesWhatCannotBe()
{
    ZETFeatContainer container;
    ZETFeatContainer otherContainer;
    auto* root = new TestRoot(&container);
    auto* otherRoot = new TestRoot(&otherContainer);
    TestNode* a = MakeNode(root, u"A"_s);
    TestNode* a1 = MakeNode(a, u"A1"_s);
    auto* leaf = new TestLeaf(a1);
    QCOMPARE(Thrown([&] { ZETOpenModel::Move(*a, *a1); }), u"\"A\" can't be moved below itself."_s);
    QCOMPARE(Thrown([&] { ZETOpenModel::Move(*a, *otherRoot); }), u"\"A\" can't be moved into another model."_s);
    QVERIFY(Thrown([&] { ZETOpenModel::Move(*leaf, *root); }).startsWith("A TestLeaf can't stand below"_L1));
    QCOMPARE(leaf->GetParent(), a1);
}

void TestOpenFeatureTree::removeTakesTheBranchAway()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    const int alive = TestNode::alive;
    TestNode* a = MakeNode(root, u"A"_s);
    MakeNode(MakeNode(a, u"A1"_s), u"A11"_s);
    TestNode* b = MakeNode(root, u"B"_s);
    ZETOpenModel::Move(*b, *a, 0); // younger than its new siblings' children
    a->Remove();
    QCOMPARE(TestNode::alive, alive);
    QVERIFY(root->GetChildren().isEmpty());
}

void TestOpenFeatureTree::removedFeatureThatIsHeldLivesOn()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    const QPointer<TestNode> node = MakeNode(root, u"A"_s);
    node->AddReference();
    node->Remove();
    QVERIFY(node);
    QCOMPARE(node->GetContainer(), nullptr);
    QCOMPARE(node->GetParent(), nullptr);
    node->RemoveReference();
    QVERIFY(!node);
}

void TestOpenFeatureTree::containerDeletesWhatItOwns()
{
    const int alive = TestNode::alive;
    QPointer<TestNode> held;
    {
        ZETFeatContainer container;
        auto* root = new TestRoot(&container);
        TestNode* a = MakeNode(root, u"A"_s);
        held = MakeNode(a, u"A1"_s);
        TestNode* b = MakeNode(root, u"B"_s);
        a->SetOther(b);
        b->SetOther(a);
        held->SetOther(b);
        held->AddReference();
    }
    QVERIFY(held);
    QCOMPARE(held->GetOther(), nullptr);
    QCOMPARE(held->GetParent(), nullptr);
    held->RemoveReference();
    QCOMPARE(TestNode::alive, alive);
}

void TestOpenFeatureTree::geometryWithoutContainerGoesWithItsLastReference()
{
    const QPointer<TestNode> node = new TestNode(nullptr, ZETGeoGeometryRef());
    node->AddReference();
    node->AddReference();
    node->RemoveReference();
    QVERIFY(node);
    node->RemoveReference();
    QVERIFY(!node);
}

void TestOpenFeatureTree::referencesLeadToTheirObjects()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = MakeNode(root, u"A"_s);
    const ZETGeoGeometryRef reference(a);
    QVERIFY(reference.IsValid());
    QVERIFY(reference != ZETGeoGeometryRef(root));
    QCOMPARE(container.GetGeometryByRef(reference), a);
    QCOMPARE(container.GetGeometryByRef(ZETGeoGeometryRef()), nullptr);
    QVERIFY(!ZETGeoGeometryRef(nullptr).IsValid());
    a->Remove();
    QCOMPARE(container.GetGeometryByRef(reference), nullptr);
    MakeNode(root, u"B"_s); // a number isn't used twice
    QCOMPARE(container.GetGeometryByRef(reference), nullptr);

    QByteArray bytes;
    QDataStream writer(&bytes, QIODevice::WriteOnly);
    writer << reference;
    ZETGeoGeometryRef read;
    QDataStream reader(bytes);
    reader >> read;
    QVERIFY(read == reference);
}

void TestOpenFeatureTree::loadingConstructorSurvivesNulls()
{
    TestLeaf leaf(nullptr, ZETGeoGeometryRef());
    QCOMPARE(leaf.GetContainer(), nullptr);
    QCOMPARE(leaf.GetParent(), nullptr);
    QCOMPARE(leaf.GetRoot(), nullptr);
    leaf.Initialize();
    leaf.SetAmount(3);
    QVERIFY(leaf.UpdateResult());
    const ZETFeatFolder folder(nullptr, ZETGeoGeometryRef());
    QVERIFY(folder.GetChildren().isEmpty());
}

void TestOpenFeatureTree::registrationsCountOncePerClass()
{
    QVERIFY(ZETOpenTypes::IsRegistered("TestNode"));
    ZETGeoContainer::RegisterType(&TestNode::staticMetaObject);
    ZETGeoContainer::UnregisterType(&TestNode::staticMetaObject);
    QVERIFY(!ZETOpenTypes::IsRegistered("TestNode"));
    QCOMPARE(ZETOpenTypes::GetType("TestNode"), nullptr);
    ZETGeoContainer::UnregisterType(&TestNode::staticMetaObject);
    ZETGeoContainer::RegisterType(&TestNode::staticMetaObject);
    QVERIFY(ZETOpenTypes::GetRegisteredClasses().contains("TestNode"));
}

void TestOpenFeatureTree::providerAndUrl()
{
    ZETFeatContainer container;
    const ZETFeatContainerManager* manager = ZETFeatContainerManager::GetManager();
    QVERIFY(manager);
    QCOMPARE(manager->GetProvider(nullptr), nullptr);
    QCOMPARE(manager->GetProvider(&container), nullptr);
    QCOMPARE(container.GetProviderUrl(), QUrl());
    ZETOpenModel::SetTextParameters(container, {{u"CUSTOMER"_s, u"ACME"_s}});
    ZETFeatContainerProvider* provider = manager->GetProvider(&container);
    QVERIFY(provider);
    QCOMPARE(provider->GetTextParameters(&container).value(u"CUSTOMER"_s), u"ACME"_s);
    ZETOpenModel::SetProviderUrl(container, QUrl(u"file:///parts/wing.json"_s));
    QCOMPARE(container.GetProviderUrl(), QUrl(u"file:///parts/wing.json"_s));
    ZETOpenModel::SetProvider(container, nullptr);
    QCOMPARE(manager->GetProvider(&container), nullptr);
}

QTEST_GUILESS_MAIN(TestOpenFeatureTree)
#include "TestOpenFeatureTree.moc"
