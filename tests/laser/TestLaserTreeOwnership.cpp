#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"

#include <QPointer>
#include <QTest>

/*! Who keeps an entity of the tree alive. */
class TestLaserTreeOwnership : public QObject
{
    Q_OBJECT

private slots:
    void treeDeletesWhatNobodyElseHolds();
    void curveOutlivesTheTreeForWhoeverHoldsIt();
    void copyOfTheChildrenOutlivesClear();
    void groupWithoutPlaceInAListIsDeletedByItsHolder();
    void refusedChildOutlivesTheTreeForWhoeverHoldsIt();
    void curveTakenOutOfItsContourOutlivesIt();
    void childOfOneGroupInTheListOfAnotherSurvivesTheFirst();

private:
    static QSharedPointer<ZETLaserGroup> NewGroup(const QSharedPointer<QObject>& parent = {})
    {
        return QSharedPointer<ZETLaserGroup>::create(parent);
    }
};

void TestLaserTreeOwnership::treeDeletesWhatNobodyElseHolds()
{
    auto root = NewGroup();
    root->AddGroup(NewGroup(root));
    const QPointer<QObject> child = root->GetChildren().first().data();
    QCOMPARE(child->parent(), root.data());
    root.clear();
    QVERIFY(child.isNull());
}

void TestLaserTreeOwnership::curveOutlivesTheTreeForWhoeverHoldsIt()
{
    auto root = NewGroup();
    auto contour = QSharedPointer<ZETLaserContour>::create(root);
    const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    contour->AddCurve(curve);
    root->AddContour(contour);
    curve->GetPoints().emplaceBack(ZETMathPoint(1.0, 2.0, 3.0), ZETMathVector());
    root.clear();
    contour.clear();
    QVERIFY(!curve->parent());
    QCOMPARE(curve->GetPointCount(), 1);
}

void TestLaserTreeOwnership::copyOfTheChildrenOutlivesClear()
{
    auto root = NewGroup();
    root->AddGroup(NewGroup(root));
    const auto copy = root->GetChildren();
    root->Clear();
    QVERIFY(root->GetChildren().isEmpty());
    root.clear();
    QCOMPARE(copy.size(), 1);
    copy.first()->SetName(QStringLiteral("still there"));
    QCOMPARE(copy.first()->GetName(), QStringLiteral("still there"));
}

void TestLaserTreeOwnership::groupWithoutPlaceInAListIsDeletedByItsHolder()
{
    auto root = NewGroup();
    root->AddContour(QSharedPointer<ZETLaserContour>::create(root));
    auto refused = NewGroup(root);
    root->AddGroup(refused);
    QCOMPARE(root->GetChildren().size(), 1);
    const QPointer<QObject> watched = refused.data();
    refused.clear();
    QVERIFY(watched.isNull());
}

void TestLaserTreeOwnership::refusedChildOutlivesTheTreeForWhoeverHoldsIt()
{
    auto root = NewGroup();
    root->AddContour(QSharedPointer<ZETLaserContour>::create(root));
    const auto refused = NewGroup(root);
    root->AddGroup(refused);
    const QPointer<QObject> unowned = new ZETLaserGroup(root); // no shared pointer has it: the tree deletes it
    root.clear();
    QVERIFY(unowned.isNull());
    QVERIFY(!refused->parent());
    refused->SetName(QStringLiteral("still there"));
    QCOMPARE(refused->GetName(), QStringLiteral("still there"));
}

void TestLaserTreeOwnership::curveTakenOutOfItsContourOutlivesIt()
{
    auto contour = QSharedPointer<ZETLaserContour>::create(QSharedPointer<QObject>());
    const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    contour->AddCurve(curve);
    contour->GetCurves().clear();
    contour.clear();
    QVERIFY(!curve->parent());
    QCOMPARE(curve->GetPointCount(), 0);
}

void TestLaserTreeOwnership::childOfOneGroupInTheListOfAnotherSurvivesTheFirst()
{
    auto first = NewGroup();
    const auto second = NewGroup();
    second->AddGroup(NewGroup(first));
    first.clear();
    QCOMPARE(second->GetChildren().size(), 1);
    QVERIFY(second->GetChildren().first()->GetName().isEmpty());
}

QTEST_GUILESS_MAIN(TestLaserTreeOwnership)
#include "TestLaserTreeOwnership.moc"
