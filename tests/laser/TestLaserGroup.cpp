#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"

#include <QPointer>
#include <QtTest>

#include <random>

namespace
{
const QSharedPointer<QObject> noParent;

QSharedPointer<ZETLaserGroup> MakeGroup()
{
    return QSharedPointer<ZETLaserGroup>::create(noParent);
}

QSharedPointer<ZETLaserContour> MakeContour(int points)
{
    auto contour = QSharedPointer<ZETLaserContour>::create(noParent);
    auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    for (int i = 0; i < points; ++i)
        curve->GetPoints().emplaceBack(ZETMathPoint(i, 0, 0), ZETMathVector(0, 0, 1));
    contour->AddCurve(curve);
    return contour;
}

QSharedPointer<ZETLaserTextEntity> MakeText()
{
    return QSharedPointer<ZETLaserTextEntity>::create(noParent, nullptr);
}

QSharedPointer<ZETLaserParameterEntity> MakeParameter()
{
    return QSharedPointer<ZETLaserParameterEntity>::create(noParent, nullptr);
}

/*! The rule of adding as it is defined: a scan of all children for each. */
class ScannedList
{
public:
    void AddGroup(const QSharedPointer<ZETLaserGroup>& group)
    {
        for (const auto& child : children) {
            if (child.objectCast<ZETLaserGroup>().isNull())
                return;
        }
        children.append(group);
    }
    void AddLeaf(const QSharedPointer<ZETLaserEntity>& leaf)
    {
        for (const auto& child : children) {
            if (child.objectCast<ZETLaserContour>().isNull() && child.objectCast<ZETLaserTextEntity>().isNull() &&
                child.objectCast<ZETLaserParameterEntity>().isNull())
                return;
        }
        children.append(leaf);
    }
    bool HasGroups() const
    {
        return std::any_of(children.begin(), children.end(),
                           [](const auto& child) { return !child.template objectCast<ZETLaserGroup>().isNull(); });
    }

    QList<QSharedPointer<ZETLaserEntity>> children;
};
} // namespace

/*! The group with its walk, and what all entities share. */
class TestLaserGroup : public QObject
{
    Q_OBJECT

private slots:
    void entityHasANameAndAParent();
    void entitiesAreCastThroughTheirMetaObjects();
    void propertyThatWasNeverSetIsInvalidAndNotInherited();
    void objectTreeDeletesWhatTheListsDoNot();

    void groupOfAContourRefusesAGroup();
    void groupOfAGroupRefusesLeaves();
    void groupOfATextOrParameterRefusesAGroup();
    void leavesMayBeMixed();
    void emptyGroupAcceptsEither();
    void addingDoesWhatAScanWouldDo();
    void addingManyChildrenIsLinear();

    void clearLeavesACopyOfTheListIntact();
    void clearLetsTheFirstChildDecideAgain();
    void pointCountOfAParameterAndATextIsOne();
    void pointCountOfTextsIsZero();
    void pointCountGoesDown();

    void childrenOfSkipsOtherClasses();
    void childrenOfKeepsTheOrder();
    void walkNeitherCopiesNorDetaches();
    void walkSurvivesClear();

    void thinningAndTransformGoDownInOrder();
    void textAndParameterIgnoreThinningAndTransform();
};

void TestLaserGroup::entityHasANameAndAParent()
{
    const auto root = MakeGroup();
    QCOMPARE(root->parent(), nullptr);
    QVERIFY(root->GetName().isEmpty());
    root->SetName(QStringLiteral("Layup"));
    QCOMPARE(root->GetName(), QStringLiteral("Layup"));
    const auto group = QSharedPointer<ZETLaserGroup>::create(root);
    const auto contour = QSharedPointer<ZETLaserContour>::create(group);
    QCOMPARE(group->parent(), root.data());
    QCOMPARE(contour->parent(), group.data());
    QCOMPARE(QSharedPointer<ZETLaserCurve>::create(contour)->parent(), contour.data());
    QCOMPARE(QSharedPointer<ZETLaserTextEntity>::create(group, nullptr)->parent(), group.data());
    QCOMPARE(QSharedPointer<ZETLaserParameterEntity>::create(group, nullptr)->parent(), group.data());
}

void TestLaserGroup::entitiesAreCastThroughTheirMetaObjects()
{
    const QSharedPointer<ZETLaserEntity> entity = MakeContour(1);
    QVERIFY(!entity.objectCast<ZETLaserContour>().isNull());
    QVERIFY(entity.objectCast<ZETLaserGroup>().isNull());
    QCOMPARE(ZETLaserGroup::staticMetaObject.superClass(), &ZETLaserEntity::staticMetaObject);
    QCOMPARE(ZETLaserPoint::staticMetaObject.superClass(), &QObject::staticMetaObject);
    for (const QMetaObject* meta :
         {&ZETLaserEntity::staticMetaObject, &ZETLaserGroup::staticMetaObject, &ZETLaserContour::staticMetaObject,
          &ZETLaserCurve::staticMetaObject, &ZETLaserTextEntity::staticMetaObject,
          &ZETLaserParameterEntity::staticMetaObject, &ZETLaserPoint::staticMetaObject}) {
        QCOMPARE(meta->methodCount(), QObject::staticMetaObject.methodCount());
        QCOMPARE(meta->propertyCount(), QObject::staticMetaObject.propertyCount());
        QCOMPARE(meta->enumeratorCount(), QObject::staticMetaObject.enumeratorCount());
    }
}

void TestLaserGroup::propertyThatWasNeverSetIsInvalidAndNotInherited()
{
    const auto contour = MakeContour(1);
    QVERIFY(!contour->property(ZETLaserEntityProperties::sourceType).isValid());
    contour->setProperty("laserEntitySourceType", 2);
    QCOMPARE(contour->property(ZETLaserEntityProperties::sourceType).toInt(), 2);
    QVERIFY(!contour->GetCurves()[0]->property(ZETLaserEntityProperties::sourceType).isValid());
    QCOMPARE(QByteArray(ZETLaserEntityProperties::layup), QByteArray("ZETCompLayup"));
    QCOMPARE(QByteArray(ZETLaserEntityProperties::sequence), QByteArray("ZETCompSequence"));
    QCOMPARE(QByteArray(ZETLaserEntityProperties::ply), QByteArray("ZETCompPly"));
    QCOMPARE(QByteArray(ZETLaserEntityProperties::subPly), QByteArray("ZETCompSubPly"));
    QCOMPARE(QByteArray(ZETLaserEntityProperties::material), QByteArray("ZETCompMaterial"));
}

void TestLaserGroup::objectTreeDeletesWhatTheListsDoNot()
{
    auto root = MakeGroup();
    QPointer<ZETLaserGroup> listed;
    {
        const auto child = QSharedPointer<ZETLaserGroup>::create(root);
        listed = child.data();
        root->AddGroup(child);
    }
    const QPointer<ZETLaserGroup> unlisted = new ZETLaserGroup(root);
    QVERIFY(!listed.isNull());
    root.reset();
    QVERIFY(listed.isNull());
    QVERIFY(unlisted.isNull());
}

void TestLaserGroup::groupOfAContourRefusesAGroup()
{
    const auto group = MakeGroup();
    group->AddContour(MakeContour(1));
    group->AddGroup(MakeGroup());
    QCOMPARE(group->GetChildren().size(), 1);
    QVERIFY(!group->HasGroups());
}

void TestLaserGroup::groupOfAGroupRefusesLeaves()
{
    const auto group = MakeGroup();
    group->AddGroup(MakeGroup());
    group->AddContour(MakeContour(1));
    group->AddTextEntity(MakeText());
    group->AddParameterEntity(MakeParameter());
    QCOMPARE(group->GetChildren().size(), 1);
    QVERIFY(group->HasGroups());
}

void TestLaserGroup::groupOfATextOrParameterRefusesAGroup()
{
    const auto texts = MakeGroup();
    texts->AddTextEntity(MakeText());
    texts->AddGroup(MakeGroup());
    QCOMPARE(texts->GetChildren().size(), 1);
    const auto parameters = MakeGroup();
    parameters->AddParameterEntity(MakeParameter());
    parameters->AddGroup(MakeGroup());
    QCOMPARE(parameters->GetChildren().size(), 1);
}

void TestLaserGroup::leavesMayBeMixed()
{
    const auto group = MakeGroup();
    group->AddTextEntity(MakeText());
    group->AddParameterEntity(MakeParameter());
    group->AddContour(MakeContour(1));
    group->AddTextEntity(MakeText());
    QCOMPARE(group->GetChildren().size(), 4);
}

void TestLaserGroup::emptyGroupAcceptsEither()
{
    const auto groups = MakeGroup();
    groups->AddGroup(MakeGroup());
    groups->AddGroup(MakeGroup());
    QCOMPARE(groups->GetChildren().size(), 2);
    const auto leaves = MakeGroup();
    leaves->AddContour(MakeContour(1));
    QCOMPARE(leaves->GetChildren().size(), 1);
}

void TestLaserGroup::addingDoesWhatAScanWouldDo()
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        const auto group = MakeGroup();
        ScannedList scanned;
        const auto addGroup = [&](const QSharedPointer<ZETLaserGroup>& child) {
            group->AddGroup(child);
            scanned.AddGroup(child);
        };
        for (int step = 0; step < 12; ++step) {
            switch (random() % 8) {
            case 0:
            case 1:
                addGroup(MakeGroup());
                break;
            case 2: {
                const auto child = MakeContour(1);
                group->AddContour(child);
                scanned.AddLeaf(child);
                break;
            }
            case 3: {
                const auto child = MakeText();
                group->AddTextEntity(child);
                scanned.AddLeaf(child);
                break;
            }
            case 4: {
                const auto child = MakeParameter();
                group->AddParameterEntity(child);
                scanned.AddLeaf(child);
                break;
            }
            case 5: // a null pointer is added like any other, and casts to nothing afterwards
                addGroup(QSharedPointer<ZETLaserGroup>());
                break;
            case 6:
                group->AddContour(QSharedPointer<ZETLaserContour>());
                scanned.AddLeaf(QSharedPointer<ZETLaserContour>());
                break;
            default:
                if (random() % 3 == 0) {
                    group->Clear();
                    scanned.children.clear();
                }
            }
            QCOMPARE(group->GetChildren(), scanned.children);
            QCOMPARE(group->HasGroups(), scanned.HasGroups());
        }
    }
}

void TestLaserGroup::addingManyChildrenIsLinear()
{
    // With a scan for each child this would be 5e11 casts, far beyond the time limit of a test.
    const auto group = MakeGroup();
    const auto contour = MakeContour(0);
    constexpr int count = 1000000;
    for (int i = 0; i < count; ++i)
        group->AddContour(contour);
    QCOMPARE(group->GetChildren().size(), count);
}

void TestLaserGroup::clearLeavesACopyOfTheListIntact()
{
    const auto group = MakeGroup();
    group->Clear(); // nothing to do
    group->AddContour(MakeContour(1));
    group->AddContour(MakeContour(2));
    const QList<QSharedPointer<ZETLaserEntity>> copy = group->GetChildren();
    group->Clear();
    QVERIFY(group->GetChildren().isEmpty());
    QCOMPARE(copy.size(), 2);
    QVERIFY(!copy[0].isNull());
}

void TestLaserGroup::clearLetsTheFirstChildDecideAgain()
{
    const auto group = MakeGroup();
    group->AddContour(MakeContour(1));
    group->Clear();
    QVERIFY(!group->HasGroups());
    group->AddGroup(MakeGroup());
    QVERIFY(group->HasGroups());
    group->AddContour(MakeContour(1));
    QCOMPARE(group->GetChildren().size(), 1);
    group->Clear();
    QVERIFY(!group->HasGroups());
}

void TestLaserGroup::pointCountOfAParameterAndATextIsOne()
{
    const auto group = MakeGroup();
    group->AddParameterEntity(MakeParameter());
    group->AddTextEntity(MakeText());
    QCOMPARE(group->GetPointCount(), 1);
}

void TestLaserGroup::pointCountOfTextsIsZero()
{
    const auto group = MakeGroup();
    QCOMPARE(group->GetPointCount(), 0);
    group->AddTextEntity(MakeText());
    group->AddTextEntity(MakeText());
    QCOMPARE(group->GetPointCount(), 0);
}

void TestLaserGroup::pointCountGoesDown()
{
    const auto inner = MakeGroup();
    inner->AddContour(MakeContour(3));
    inner->AddParameterEntity(MakeParameter());
    inner->AddContour(MakeContour(4));
    const auto middle = MakeGroup();
    middle->AddGroup(inner);
    middle->AddGroup(MakeGroup());
    const auto outer = MakeGroup();
    outer->AddGroup(middle);
    outer->AddGroup(inner);
    QCOMPARE(outer->GetPointCount(), 16);
}

void TestLaserGroup::childrenOfSkipsOtherClasses()
{
    const auto group = MakeGroup();
    group->AddTextEntity(MakeText());
    const auto contour = MakeContour(1);
    group->AddContour(contour);
    group->AddParameterEntity(MakeParameter());
    int contours = 0;
    for (ZETLaserContour* child : ChildrenOf<ZETLaserContour>(*group)) {
        QCOMPARE(child, contour.data());
        ++contours;
    }
    QCOMPARE(contours, 1);
    for ([[maybe_unused]] ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(*group))
        QFAIL("there is no group");
    for ([[maybe_unused]] ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(*MakeGroup()))
        QFAIL("there is no child");
}

void TestLaserGroup::childrenOfKeepsTheOrder()
{
    const auto group = MakeGroup();
    for (int i = 0; i < 10; ++i) {
        const auto contour = MakeContour(i);
        contour->SetName(QString::number(i));
        group->AddContour(contour);
        group->AddTextEntity(MakeText());
    }
    QString names;
    for (const ZETLaserContour* child : ChildrenOf<ZETLaserContour>(*group))
        names += child->GetName();
    QCOMPARE(names, QStringLiteral("0123456789"));
}

void TestLaserGroup::walkNeitherCopiesNorDetaches()
{
    const auto group = MakeGroup();
    group->AddContour(MakeContour(3));
    const ZETLaserCurve& curve = *group->GetChildren()[0].objectCast<ZETLaserContour>()->GetCurves()[0];
    const QList<ZETLaserPoint> shared = curve.GetPoints(); // whoever detaches now, copies the points
    int points = 0;
    for (const ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(*group)) {
        for (const auto& child : contour->GetCurves()) {
            for (const ZETLaserPoint& point : std::as_const(*child).GetPoints()) {
                QCOMPARE(&point, &shared[points]);
                ++points;
            }
        }
    }
    QCOMPARE(points, 3);
    QVERIFY(curve.GetPoints().isSharedWith(shared));
}

void TestLaserGroup::walkSurvivesClear()
{
    const auto group = MakeGroup();
    group->AddContour(MakeContour(1));
    group->AddContour(MakeContour(2));
    int points = 0;
    for (const ZETLaserContour* child : ChildrenOf<ZETLaserContour>(*group)) {
        group->Clear();
        points += child->GetPointCount();
    }
    QCOMPARE(points, 3);
}

void TestLaserGroup::thinningAndTransformGoDownInOrder()
{
    const auto inner = MakeGroup();
    inner->AddContour(MakeContour(5));
    inner->AddTextEntity(MakeText());
    inner->AddParameterEntity(MakeParameter());
    inner->AddContour(MakeContour(3));
    const auto outer = MakeGroup();
    outer->AddGroup(MakeGroup());
    outer->AddGroup(inner);
    outer->MinimizePoints(0.01, 3.5); // both arguments come through
    QCOMPARE(outer->GetPointCount(), 3 + 1 + 2);

    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(1, 0, 0));
    outer->Transform(axis);
    for (ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(*inner))
        QCOMPARE(contour->GetCurves()[0]->GetPoints()[0].GetPosition(), ZETMathPoint(-1, 0, 0));
}

void TestLaserGroup::textAndParameterIgnoreThinningAndTransform()
{
    const auto text = MakeText();
    const auto parameter = MakeParameter();
    text->SetName(QStringLiteral("text"));
    for (ZETLaserEntity* entity :
         {static_cast<ZETLaserEntity*>(text.data()), static_cast<ZETLaserEntity*>(parameter.data())}) {
        entity->MinimizePoints(0.01, 1.0);
        entity->Transform(ZETMathAxis());
    }
    QCOMPARE(text->GetName(), QStringLiteral("text"));
    QCOMPARE(text->GetText(), nullptr);
    QCOMPARE(parameter->GetParameter(), nullptr);
}

QTEST_GUILESS_MAIN(TestLaserGroup)
#include "TestLaserGroup.moc"
