#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"
#include "OpenTestFeatures.h"
#include "tests/support/TestThrown.h"

#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETFeature/ZETFeatVisObject.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisRepSet.h>

#include <QPointer>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

/*! Shows a feature as one point. */
class TestNodeVisObject : public ZETFeatVisObject
{
    Q_OBJECT
public:
    Q_INVOKABLE TestNodeVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature)
        : ZETFeatVisObject(environment, feature)
    {
        if (!qobject_cast<TestNode*>(feature))
            throw ZETSysException(u"not a node"_s);
    }
    ZETVisRepGraphics* CreateRepresentation() override
    {
        auto* node = qobject_cast<TestNode*>(GetFeature());
        if (!node)
            return nullptr;
        auto* coordinates = new double[3]{static_cast<double>(node->GetAmount()), 0.0, 0.0};
        return new ZETVisRepGraphics({new ZETVisPointPrimitive(coordinates, 1)}, ZETVisOptions());
    }
};

/*! Can't be made by name. */
class TestClosedVisObject : public ZETFeatVisObject
{
    Q_OBJECT
public:
    using ZETFeatVisObject::ZETFeatVisObject;
    ZETVisRepGraphics* CreateRepresentation() override { return nullptr; }
};

namespace
{
ZETMathSetOfPoints MakePoints(const QList<ZETMathPoint>& points)
{
    ZETMathSetOfPoints set;
    set.points = points;
    return set;
}

ZETVisOptions MakeOptions(int priority)
{
    ZETVisOptions options;
    options.SetPriority(priority);
    return options;
}

QList<int> GetPriorities(const ZETVisRep& rep)
{
    QList<const ZETVisPrimitive*> primitives;
    QList<ZETVisOptions> options;
    rep.GetPrimitives(primitives, options);
    QList<int> priorities;
    for (const ZETVisOptions& record : options)
        priorities.append(record.GetPriority());
    return primitives.size() == options.size() ? priorities : QList<int>{-1};
}
} // namespace

class TestOpenScene : public QObject
{
    Q_OBJECT
private slots:
    void optionsKeepWhatTheyAreGiven();
    void primitivesKeepTheirPoints();
    void graphicsPairPrimitivesWithOptions();
    void graphicsSurviveOddLists();
    void setListsItsRepresentationsInOrder();
    void representationsDeleteWhatTheyWereGiven();
    void boxHoldsAllPoints();
    void objectIsVisibleAndEmptyAtFirst();
    void objectDeletesTheRepresentationItShowed();
    void sceneKeepsItsObjectsInOrder();
    void objectMovesToTheEnd();
    void removedObjectIsDeleted();
    void sceneDeletesItsObjects();
    void objectMayGoAheadOfItsScene();
    void displayClassIsFoundThroughTheBase();
    void lastRegistrationOfAFeatureClassCounts();
    void displayObjectIsMadeFromItsClass();
    void displayObjectThatCannotBeMadeIsTold();
    void displayObjectFollowsItsFeature();
    void showPutsAFeatureInTheScene();
};

void TestOpenScene::optionsKeepWhatTheyAreGiven()
{
    ZETVisOptions options;
    QVERIFY(options.IsDepthEnabled());
    QVERIFY(!options.IsFixedPerspective());
    QCOMPARE(options.GetPriority(), 0);
    options.SetColor(QColor(255, 128, 64, 255));
    options.SetLineThickness(2.5);
    options.SetPointSymbol(ZETVisOptions::SymbolTarget);
    options.SetDepthEnabled(false);
    options.SetPriority(100);
    options.SetFixedPerspective(true);
    const ZETVisOptions copy = options;
    QCOMPARE(copy.GetColor(), QColor(255, 128, 64, 255));
    QCOMPARE(copy.GetLineThickness(), 2.5);
    QCOMPARE(static_cast<int>(copy.GetPointSymbol()), 3);
    QVERIFY(!copy.IsDepthEnabled());
    QCOMPARE(copy.GetPriority(), 100);
    QVERIFY(copy.IsFixedPerspective());
}

void TestOpenScene::primitivesKeepTheirPoints()
{
    const ZETMathSetOfPoints points = MakePoints({{1, 2, 3}, {4, 5, 6}});
    const ZETVisPolylinePrimitive pairs(points, ZETVisPolylinePrimitive::StructurePairs);
    const ZETVisPolylinePrimitive run(points, ZETVisPolylinePrimitive::StructureRun);
    QCOMPARE(static_cast<int>(pairs.GetStructure()), 0);
    QCOMPARE(static_cast<int>(run.GetStructure()), 1);
    QCOMPARE(run.GetPoints().points, points.points);

    const ZETVisPointPrimitive flat(new double[6]{1, 2, 3, 4, 5, 6}, 2);
    QCOMPARE(flat.GetPoints().points, points.points);
    const ZETVisPointPrimitive none(nullptr, 0);
    QVERIFY(none.GetPoints().points.isEmpty());
}

void TestOpenScene::graphicsPairPrimitivesWithOptions()
{
    const ZETVisRepGraphics one({new ZETVisPointPrimitive({}), new ZETVisPointPrimitive({})}, MakeOptions(10));
    QCOMPARE(GetPriorities(one), (QList<int>{10, 10}));
    const ZETVisRepGraphics each({new ZETVisPointPrimitive({}), new ZETVisPointPrimitive({})},
                                 {MakeOptions(10), MakeOptions(100)});
    QCOMPARE(GetPriorities(each), (QList<int>{10, 100}));
}

void TestOpenScene::graphicsSurviveOddLists()
{
    const ZETVisRepGraphics empty({}, MakeOptions(10));
    QVERIFY(GetPriorities(empty).isEmpty());
    QVERIFY(empty.GetBoundingBox().IsEmpty());
    const auto* twice = new ZETVisPointPrimitive({});
    const ZETVisRepGraphics odd({nullptr, twice, twice}, QList<ZETVisOptions>{MakeOptions(1), MakeOptions(2)});
    QCOMPARE(GetPriorities(odd), (QList<int>{2, 0}));
}

void TestOpenScene::setListsItsRepresentationsInOrder()
{
    const ZETVisRepSet set({new ZETVisRepGraphics({new ZETVisPointPrimitive({})}, MakeOptions(1)), nullptr,
                            new ZETVisRepGraphics({new ZETVisPointPrimitive({})}, MakeOptions(2))});
    QCOMPARE(GetPriorities(set), (QList<int>{1, 2}));
    QList<const ZETVisPrimitive*> primitives{nullptr};
    QList<ZETVisOptions> options{MakeOptions(0)};
    set.GetPrimitives(primitives, options); // appends
    QCOMPARE(primitives.size(), 3);
    QCOMPARE(options.size(), 3);
}

void TestOpenScene::representationsDeleteWhatTheyWereGiven()
{
    auto* primitive = new ZETVisPointPrimitive({});
    const QPointer<QObject> guard(primitive);
    auto* graphics = new ZETVisRepGraphics({primitive}, MakeOptions(1));
    const QPointer<QObject> graphicsGuard(graphics);
    delete new ZETVisRepSet({graphics});
    QVERIFY(!guard);
    QVERIFY(!graphicsGuard);
}

void TestOpenScene::boxHoldsAllPoints()
{
    ZETVisVirtualObject object(nullptr, nullptr);
    QVERIFY(object.GetBoundingBox().IsEmpty());
    object.SetRep(new ZETVisRepGraphics({new ZETVisPointPrimitive(MakePoints({{1, -2, 3}})),
                                         new ZETVisPointPrimitive(MakePoints({{-1, 2, 0}, {0, 9, 5}}))},
                                        ZETVisOptions()));
    QCOMPARE(object.GetBoundingBox().GetLowerPoint(), ZETMathPoint(-1, -2, 0));
    QCOMPARE(object.GetBoundingBox().GetUpperPoint(), ZETMathPoint(1, 9, 5));
}

void TestOpenScene::objectIsVisibleAndEmptyAtFirst()
{
    ZETVisVirtualObject object(nullptr, nullptr);
    QVERIFY(object.IsVisible());
    QVERIFY(!object.IsSelectable());
    QVERIFY(!object.IsPosition());
    QCOMPARE(object.GetRep(), nullptr);
    object.SetVisibility(false);
    QVERIFY(!object.IsVisible());
}

void TestOpenScene::objectDeletesTheRepresentationItShowed()
{
    ZETVisVirtualObject object(nullptr, nullptr);
    auto* first = new ZETVisRepGraphics({}, ZETVisOptions());
    const QPointer<QObject> guard(first);
    object.SetRep(first);
    object.SetRep(first);
    QVERIFY(guard);
    object.SetRep(nullptr);
    QVERIFY(!guard);
}

void TestOpenScene::sceneKeepsItsObjectsInOrder()
{
    ZETVisEnvironment scene;
    QList<ZETVisVirtualObject*> objects;
    for (int i = 0; i < 3; ++i) {
        objects.append(new ZETVisVirtualObject(&scene, nullptr));
        QCOMPARE(ZETOpenScene::GetObjects(scene).size(), i); // not in it by being made
        scene.AddVirtualObject(objects.last());
    }
    scene.AddVirtualObject(objects.first());
    scene.AddVirtualObject(nullptr);
    QCOMPARE(ZETOpenScene::GetObjects(scene), objects);
}

void TestOpenScene::objectMovesToTheEnd()
{
    ZETVisEnvironment scene;
    QList<ZETVisVirtualObject*> objects;
    for (int i = 0; i < 3; ++i) {
        objects.append(new ZETVisVirtualObject(&scene, nullptr));
        scene.AddVirtualObject(objects.last());
    }
    ZETVisVirtualObject out(&scene, nullptr);
    ZETOpenScene::MoveToEnd(scene, out);
    ZETOpenScene::MoveToEnd(scene, *objects[0]);
    ZETOpenScene::MoveToEnd(scene, *objects[0]);
    QCOMPARE(ZETOpenScene::GetObjects(scene), (QList{objects[1], objects[2], objects[0]}));
    scene.RemoveVirtualObject(objects[0]);
    QCOMPARE(ZETOpenScene::GetObjects(scene), (QList{objects[1], objects[2]}));
}

void TestOpenScene::removedObjectIsDeleted()
{
    ZETVisEnvironment scene;
    const QPointer<ZETVisVirtualObject> in = new ZETVisVirtualObject(&scene, nullptr);
    ZETVisVirtualObject out(&scene, nullptr);
    scene.AddVirtualObject(in);
    scene.RemoveVirtualObject(&out);
    scene.RemoveVirtualObject(nullptr);
    scene.RemoveVirtualObject(in);
    QVERIFY(!in);
    QVERIFY(ZETOpenScene::GetObjects(scene).isEmpty());
}

void TestOpenScene::sceneDeletesItsObjects()
{
    QPointer<ZETVisVirtualObject> object;
    {
        ZETVisEnvironment scene;
        object = new ZETVisVirtualObject(&scene, nullptr);
        scene.AddVirtualObject(object);
    }
    QVERIFY(!object);
}

void TestOpenScene::objectMayGoAheadOfItsScene()
{
    ZETVisEnvironment scene;
    auto parent = std::make_unique<QObject>();
    auto* object = new ZETVisVirtualObject(&scene, parent.get());
    scene.AddVirtualObject(object);
    parent.reset();
    QVERIFY(ZETOpenScene::GetObjects(scene).isEmpty());
}

void TestOpenScene::displayClassIsFoundThroughTheBase()
{
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestLeaf::staticMetaObject), nullptr);
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"TestNode", "TestRoot"},
                                                          &TestNodeVisObject::staticMetaObject);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestLeaf::staticMetaObject), &TestNodeVisObject::staticMetaObject);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&ZETFeatObject::staticMetaObject), nullptr);
    QCOMPARE(ZETOpenScene::GetRegisteredFeatureClasses(), (QList<QByteArray>{"TestNode", "TestRoot"}));
    QCOMPARE(ZETOpenScene::GetRegisteredVisObjectClasses(), QList<QByteArray>{"TestNodeVisObject"});
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"TestLeaf"}, &TestClosedVisObject::staticMetaObject);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestLeafOfLeaf::staticMetaObject),
             &TestClosedVisObject::staticMetaObject);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestClosedVisObject::staticMetaObject);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestLeaf::staticMetaObject), &TestNodeVisObject::staticMetaObject);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestNodeVisObject::staticMetaObject);
    QVERIFY(ZETOpenScene::GetRegisteredFeatureClasses().isEmpty());
    QVERIFY(ZETOpenScene::GetRegisteredVisObjectClasses().isEmpty());
}

void TestOpenScene::lastRegistrationOfAFeatureClassCounts()
{
    for (const QMetaObject* type : {&TestNodeVisObject::staticMetaObject, &TestClosedVisObject::staticMetaObject})
        ZETFeatEnvironment::RegisterGlobalVisualizationObject({"TestNode"}, type);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestNode::staticMetaObject), &TestClosedVisObject::staticMetaObject);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestClosedVisObject::staticMetaObject);
    QCOMPARE(ZETOpenScene::GetVisObjectClass(&TestNode::staticMetaObject), &TestNodeVisObject::staticMetaObject);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestNodeVisObject::staticMetaObject);
}

void TestOpenScene::displayObjectIsMadeFromItsClass()
{
    ZETFeatEnvironment scene;
    TestNode node(nullptr, ZETGeoGeometryRef());
    QVERIFY(!ZETOpenScene::CreateVisObject(scene, node));
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"TestNode"}, &TestNodeVisObject::staticMetaObject);
    const std::unique_ptr<ZETFeatVisObject> object = ZETOpenScene::CreateVisObject(scene, node);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestNodeVisObject::staticMetaObject);
    QVERIFY(qobject_cast<TestNodeVisObject*>(object.get()));
    QCOMPARE(object->GetFeature(), &node);
    QVERIFY(ZETOpenScene::GetObjects(scene).isEmpty());
}

void TestOpenScene::displayObjectThatCannotBeMadeIsTold()
{
    ZETFeatEnvironment scene;
    ZETFeatFolder folder(nullptr, ZETGeoGeometryRef());
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"ZETFeatFolder"}, &TestClosedVisObject::staticMetaObject);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, ZETOpenScene::CreateVisObject(scene, folder));
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestClosedVisObject::staticMetaObject);
    // What its constructor throws passes.
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"ZETFeatFolder"}, &TestNodeVisObject::staticMetaObject);
    const QString text = Thrown([&] { ZETOpenScene::CreateVisObject(scene, folder); });
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestNodeVisObject::staticMetaObject);
    QCOMPARE(text, u"not a node"_s);
}

void TestOpenScene::displayObjectFollowsItsFeature()
{
    const ZETFeatEnvironment scene;
    auto node = std::make_unique<TestNode>(nullptr, ZETGeoGeometryRef());
    ZETOpenModel::SetLabel(*node, u"N"_s);
    TestNodeVisObject object(&scene, node.get());
    QCOMPARE(object.GetLabel(), u"N"_s);
    QVERIFY(object.IsVisible());
    QVERIFY(object.IsSelectable());
    node->SetVisibility(false);
    QVERIFY(!object.IsVisible());
    node->SetVisibility(true);
    object.SetVisibility(false);
    QVERIFY(!object.IsVisible());
    object.SetVisibility(true);
    node.reset();
    QCOMPARE(object.GetFeature(), nullptr);
    QVERIFY(!object.IsVisible());
    QVERIFY(!object.IsSelectable());
    QCOMPARE(object.GetLabel(), QString());
    QCOMPARE(object.CreateRepresentation(), nullptr);
}

void TestOpenScene::showPutsAFeatureInTheScene()
{
    ZETFeatEnvironment scene;
    TestNode node(nullptr, ZETGeoGeometryRef());
    node.SetAmount(4);
    QCOMPARE(ZETOpenScene::Show(scene, node), nullptr);
    ZETFeatEnvironment::RegisterGlobalVisualizationObject({"TestNode"}, &TestNodeVisObject::staticMetaObject);
    ZETFeatVisObject* object = ZETOpenScene::Show(scene, node);
    ZETFeatEnvironment::UnregisterGlobalVisualizationObject(&TestNodeVisObject::staticMetaObject);
    QVERIFY(object);
    QCOMPARE(ZETOpenScene::GetObjects(scene), QList<ZETVisVirtualObject*>{object});
    QCOMPARE(object->GetBoundingBox().GetLowerPoint(), ZETMathPoint(4, 0, 0));
}

QTEST_GUILESS_MAIN(TestOpenScene)
#include "TestOpenScene.moc"
