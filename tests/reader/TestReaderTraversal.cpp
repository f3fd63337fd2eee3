#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserEntityProperties.h"
#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/ReaderModel.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

class TestReaderTraversal : public QObject
{
    Q_OBJECT

private slots:
    void withoutAModelNothingIsRead();
    void withoutASelectedPlyOnlyTheRootIsNamed();
    void eachLayupWithASelectedPlyHasAGroup();
    void aSequenceWithoutASelectedPlyHasNone();
    void pliesStandInTheLayupIfTheyAreNotNestedWithinSequences();
    void theLayupHasItsGroupWhateverTheFileNestsWithinLayups();
    void groupsKnowTheirModelObjects();
    void eachPlyGroupBeginsWithItsContour();

    void anUnselectedParentPlyHasNoGroupBesideItsSubPlies();
    void aSkippedParentPlyHasNoGroupThoughItIsSelected();
    void aParentPlyStandsAheadOfItsSubPlies();
    void theSubdivisionIsThatOfNoConfiguration();

    void anAllPliesFeatureReachesEveryPlyFromAnywhere();
    void pliesBelowReachesWhatStandsAfterItInItsLevel();
    void pliesBelowAPlyReachesItsSubPliesOnly();
    void untilNextIsReplacedByTheNextOfItsLevel();
    void untilNextOfALevelEndsWithItsNode();
    void eachNodeBeginsWithNothingOfTheOneBefore();
    void parentOnlyReachesEveryPlyOfItsNode();
    void parentOnlyBelowTheRootReachesNothing();
    void extraGeometryOfASubPly();
    void extraGeometryComesInTheOrderOfScopesAndLevels();
    void nothingIsTakenOutThatStandsTwice();
    void extraGeometryInAFolderCountsForAllPliesOnly();
    void withoutExtraGeometryTheListsStayEmpty();
    void anUntilNextFeatureThatHasGoneAddsNothing();
    void theFeaturesOfASkippedLayupReachNothing();
    void featuresOfTheLastReadDontCount();

    void theFirstMaterialOfEachPlyIsCollectedOnce();
    void aSkippedParentPlyStillGivesItsMaterial();
    void aPlyWithoutMaterialHasANullPointer();
    void aSubPlyHasTheMaterialOfItsPly();
    void materialsAreKeptFromReadToRead();

    void enabledStatesAreNotLookedAt();
    void readingTwiceGivesTheSameTree();
};

void TestReaderTraversal::withoutAModelNothingIsRead()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } }"_s);
    model.options.SetCompRoot(nullptr);
    QCOMPARE(model.Read(), false);
    QCOMPARE(model.Tree(), u"[]"_s);
}

void TestReaderTraversal::withoutASelectedPlyOnlyTheRootIsNamed()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } }"_s);
    model.Select({});
    QCOMPARE(model.Read(), false);
    QCOMPARE(model.Tree(), u"Part[]"_s);
}

void TestReaderTraversal::eachLayupWithASelectedPlyHasAGroup()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } } layup L2 { sequence S2 { ply P2 } }"
                      " layup L3 { sequence S3 { ply P3 ply P4 } }"_s);
    model.Select({u"P1"_s, u"P4"_s});
    QCOMPARE(model.Read(), true);
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1()]] L3[S3[P4()]]]"_s);
}

void TestReaderTraversal::aSequenceWithoutASelectedPlyHasNone()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } sequence S2 { ply P2 } sequence S3 { ply P3 } }"_s);
    model.Select({u"P1"_s, u"P3"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1()] S3[P3()]]]"_s);
}

void TestReaderTraversal::pliesStandInTheLayupIfTheyAreNotNestedWithinSequences()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 ply P2 } sequence S2 { ply P3 } }"_s);
    model.options.SetNestPliesWithinSequence(false);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[P1() P2() P3()]]"_s);
}

void TestReaderTraversal::theLayupHasItsGroupWhateverTheFileNestsWithinLayups()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } }"_s);
    model.options.SetNestSequencesWithinLayup(false);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1()]]]"_s);
}

void TestReaderTraversal::groupsKnowTheirModelObjects()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A } } } }"_s);
    QVERIFY(model.Read());
    using namespace ZETLaserEntityProperties;
    QCOMPARE(model.Group(u"L1"_s)->property(layup).value<ZETCompLayup*>(), model.Layup(u"L1"_s));
    QCOMPARE(model.Group(u"S1"_s)->property(sequence).value<ZETCompSequence*>(), model.Get<ZETCompSequence>(u"S1"_s));
    QCOMPARE(model.Group(u"P1"_s)->property(ply).value<ZETCompPly*>(), model.Ply(u"P1"_s));
    QCOMPARE(model.Group(u"A"_s)->property(subPly).value<ZETCompSubPly*>(), model.Get<ZETCompSubPly>(u"A"_s));
    QVERIFY(model.tree->dynamicPropertyNames().isEmpty());
    QCOMPARE(model.Group(u"L1"_s)->dynamicPropertyNames(), QList<QByteArray>{layup});
    QCOMPARE(model.Group(u"S1"_s)->dynamicPropertyNames(), QList<QByteArray>{sequence});
    QCOMPARE(model.Group(u"P1"_s)->dynamicPropertyNames(), (QList<QByteArray>{ply, material}));
    QCOMPARE(model.Group(u"A"_s)->dynamicPropertyNames(), (QList<QByteArray>{subPly, material}));
    QCOMPARE(model.Group(u"A"_s)->parent(), model.Group(u"S1"_s).data());
}

void TestReaderTraversal::eachPlyGroupBeginsWithItsContour()
{
    ReaderModel model(u"layup L1 { sequence S1 { extra X:all ply P1 { pieces D { subply A } } } }"_s);
    for (const bool first : {false, true}) {
        model.options.SetRosetteBeforePlyGeometry(first);
        QVERIFY(model.Read());
        QCOMPARE(model.Contour(u"P1"_s)->GetName(), u"P1"_s);
        QCOMPARE(model.Contour(u"A"_s)->GetName(), u"A"_s);
        QVERIFY(model.Contour(u"P1"_s)->dynamicPropertyNames().isEmpty());
        QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X) A(X)]]]"_s);
    }
}

void TestReaderTraversal::anUnselectedParentPlyHasNoGroupBesideItsSubPlies()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A subply B } } } }"_s);
    model.Select({u"B"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[B()]]]"_s);
}

void TestReaderTraversal::aSkippedParentPlyHasNoGroupThoughItIsSelected()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A subply B } } ply P2 } }"_s);
    QCOMPARE(model.options.GetPlies().size(), 4);
    model.options.SetSkipParentPlyWithSubPlies(1);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[A() B() P2()]]]"_s);
}

void TestReaderTraversal::aParentPlyStandsAheadOfItsSubPlies()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A subply B } } ply P2 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() A() B() P2()]]]"_s);
}

void TestReaderTraversal::theSubdivisionIsThatOfNoConfiguration()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { strategy One pieces D { subply A } }"
                      " ply P2 { pieces E { subply B } strategy Two } } }"_s);
    ZETOpenComposites::SetIncluded(*model.configuration, *model.Ply(u"P1"_s), model.Get<ZETCompSubdivision>(u"D"_s));
    ZETOpenComposites::SetIncluded(*model.configuration, *model.Ply(u"P2"_s), model.Strategy(u"Two"_s));
    model.Select({u"P1"_s, u"A"_s, u"P2"_s});
    QVERIFY(model.Read());
    // A is selected, and yet out of reach: without a configuration P1 is made by its first child, which is a strategy.
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() P2()]]]"_s);
    model.options.SetSkipParentPlyWithSubPlies(1);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1()]]]"_s);
}

void TestReaderTraversal::anAllPliesFeatureReachesEveryPlyFromAnywhere()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } } layup L2 { sequence S2 { ply P2 { pieces D { subply A { "
                      "extra X:all } } } } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X)]] L2[S2[P2(X) A(X)]]]"_s);
}

void TestReaderTraversal::pliesBelowReachesWhatStandsAfterItInItsLevel()
{
    ReaderModel model(u"extra R:below layup L1 { sequence S1 { ply P1 ply P2 extra X:below ply P3 ply P4 }"
                      " extra Y:below sequence S2 { ply P5 } } extra Z:below layup L2 { sequence S3 { ply P6 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(R) P2(R) P3(R X) P4(R X)] S2[P5(R Y)]] L2[S3[P6(R Z)]]]"_s);
}

void TestReaderTraversal::pliesBelowAPlyReachesItsSubPliesOnly()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A extra Y:below subply B } extra X:below }"
                      " ply P2 } }"_s);
    QVERIFY(model.Read());
    // Meant: the whole ply is looked through ahead of its sub-plies, so the place of X behind them doesn't matter.
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() A(X) B(X Y) P2()]]]"_s);
}

void TestReaderTraversal::untilNextIsReplacedByTheNextOfItsLevel()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 extra X:until ply P2 ply P3 extra Y:until ply P4 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() P2(X) P3(X) P4(Y)]]]"_s);
}

void TestReaderTraversal::untilNextOfALevelEndsWithItsNode()
{
    ReaderModel model(u"layup L1 { extra X:until sequence S1 { extra Y:until ply P1 { extra Z:until } ply P2 }"
                      " sequence S2 { ply P3 } } layup L2 { sequence S3 { ply P4 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X Y Z) P2(X Y)] S2[P3(X)]] L2[S3[P4()]]]"_s);
}

void TestReaderTraversal::eachNodeBeginsWithNothingOfTheOneBefore()
{
    const QString node = u"extra u%1:until extra b%1:below extra p%1:parent "_s;
    ReaderModel model(u"layup L1 { "_s + node.arg(1) + u"sequence S1 { "_s + node.arg(2) + u"ply P1 { "_s +
                      node.arg(3) + u"pieces D1 { "_s + node.arg(4) + u"subply A { "_s + node.arg(5) +
                      u"} } } ply P2 { pieces D2 { subply B } } } sequence S2 { ply P3 } }"
                      " layup L2 { sequence S3 { ply P4 { pieces D4 { subply C } } } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(b1 b2 u1 u2 u3 p1 p2 p3)"
                           " A(b1 b2 b3 b4 u1 u2 u3 u4 u5 p1 p2 p3 p4 p5) P2(b1 b2 u1 u2 p1 p2)"
                           " B(b1 b2 u1 u2 p1 p2)] S2[P3(b1 u1 p1)]] L2[S3[P4() C()]]]"_s);
}

void TestReaderTraversal::parentOnlyReachesEveryPlyOfItsNode()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A { extra V:parent } subply B"
                      " extra W:parent } extra Z:parent } ply P2 extra Y:parent } sequence S2 { ply P3 }"
                      " extra X:parent } layup L2 { sequence S3 { ply P4 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X Y Z) A(X Y Z W V) B(X Y Z W) P2(X Y)] S2[P3(X)]] L2[S3[P4()]]]"_s);
}

void TestReaderTraversal::parentOnlyBelowTheRootReachesNothing()
{
    ReaderModel model(u"extra X:parent layup L1 { sequence S1 { ply P1 { pieces D { subply A } } } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() A()]]]"_s);
}

void TestReaderTraversal::extraGeometryOfASubPly()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D {"
                      " subply A { extra W:until extra V:until extra U:below extra T:parent } subply B } } } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() A(V T) B()]]]"_s);
}

void TestReaderTraversal::extraGeometryComesInTheOrderOfScopesAndLevels()
{
    const QString four = u"extra %1p:parent extra %1u:until extra %1b:below extra %1a:all"_s;
    ReaderModel model(four.arg(u"r"_s) + u" layup L { "_s + four.arg(u"l"_s) + u" sequence S { "_s + four.arg(u"s"_s) +
                      u" ply P { "_s + four.arg(u"p"_s) + u" pieces D { "_s + four.arg(u"d"_s) + u" subply A { "_s +
                      four.arg(u"y"_s) + u" } } } } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L[S[P(ra la sa pa da ya rb lb sb ru lu su pu lp sp pp)"
                           " A(ra la sa pa da ya rb lb sb pb db ru lu su pu du yu lp sp pp dp yp)]]]"_s);
}

void TestReaderTraversal::nothingIsTakenOutThatStandsTwice()
{
    ReaderModel model(u"layup L1 { extra X:all extra X:all sequence S1 { ply P1 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X X)]]]"_s);
}

void TestReaderTraversal::extraGeometryInAFolderCountsForAllPliesOnly()
{
    ReaderModel model(u"layup L1 { folder F { extra X:all extra Y:below extra Z:until extra W:parent }"
                      " sequence S1 { ply P1 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X)]]]"_s);
}

void TestReaderTraversal::withoutExtraGeometryTheListsStayEmpty()
{
    ReaderModel model(u"extra A:all layup L1 { extra B:below extra C:until extra D:parent"
                      " sequence S1 { ply P1 { pieces P { subply Q } } } }"_s);
    model.options.SetOutputExtraGeometry(0);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1() Q()]]]"_s);
    model.options.SetOutputExtraGeometry(-1);
    QVERIFY(model.ReadAgain());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(A B C D) Q(A B C D)]]]"_s);
}

void TestReaderTraversal::anUntilNextFeatureThatHasGoneAddsNothing()
{
    ReaderModel model(u"layup L1 { extra X:until sequence S1 { ply P1 } }"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X)]]]"_s);
    delete model.Get<ZETLaserExtraGeometry>(u"X"_s);
    QVERIFY(model.ReadAgain());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1()]]]"_s);
}

void TestReaderTraversal::theFeaturesOfASkippedLayupReachNothing()
{
    ReaderModel model(u"layup L1 { extra X:until extra Y:below sequence S1 { ply P1 } }"
                      " layup L2 { sequence S2 { ply P2 { pieces D { subply A } } } }"_s);
    model.Select({u"A"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L2[S2[A()]]]"_s);
}

void TestReaderTraversal::featuresOfTheLastReadDontCount()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } } extra X:until extra Y:below extra Z:all"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(Z)]]]"_s);
    QVERIFY(model.ReadAgain());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(Z)]]]"_s);
}

void TestReaderTraversal::theFirstMaterialOfEachPlyIsCollectedOnce()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 ply P2 ply P3 ply P4 } }"_s);
    auto* const a = model.AddMaterial(u"A"_s);
    auto* const b = model.AddMaterial(u"B"_s);
    auto* const c = model.AddMaterial(u"C"_s);
    ZETOpenComposites::SetMaterials(*model.Ply(u"P1"_s), {b, c});
    ZETOpenComposites::SetMaterials(*model.Ply(u"P2"_s), {a});
    ZETOpenComposites::SetMaterials(*model.Ply(u"P3"_s), {b});
    model.Select({u"P1"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.materials, (QList<ZETMatMaterial*>{b, a}));
    QCOMPARE(model.Group(u"P1"_s)->property(ZETLaserEntityProperties::material).value<ZETMatMaterial*>(), b);
}

void TestReaderTraversal::aSkippedParentPlyStillGivesItsMaterial()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A } } } }"_s);
    auto* const material = model.AddMaterial(u"M"_s);
    ZETOpenComposites::SetMaterials(*model.Ply(u"P1"_s), {material});
    model.options.SetSkipParentPlyWithSubPlies(1);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[A()]]]"_s);
    QCOMPARE(model.materials, QList<ZETMatMaterial*>{material});
}

void TestReaderTraversal::aPlyWithoutMaterialHasANullPointer()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } }"_s);
    QVERIFY(model.Read());
    const QVariant value = model.Group(u"P1"_s)->property(ZETLaserEntityProperties::material);
    QVERIFY2(value.isValid(), "the property stands there all the same");
    QVERIFY(!value.value<ZETMatMaterial*>());
    QVERIFY(model.materials.isEmpty());
}

void TestReaderTraversal::aSubPlyHasTheMaterialOfItsPly()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 { pieces D { subply A } } } }"_s);
    auto* const material = model.AddMaterial(u"M"_s);
    ZETOpenComposites::SetMaterials(*model.Ply(u"P1"_s), {material});
    QVERIFY(model.Read());
    QCOMPARE(model.Group(u"A"_s)->property(ZETLaserEntityProperties::material).value<ZETMatMaterial*>(), material);
}

void TestReaderTraversal::materialsAreKeptFromReadToRead()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } }"_s);
    auto* const a = model.AddMaterial(u"A"_s);
    auto* const b = model.AddMaterial(u"B"_s);
    ZETOpenComposites::SetMaterials(*model.Ply(u"P1"_s), {b});
    QVERIFY(model.Read());
    ZETOpenComposites::SetMaterials(*model.Ply(u"P1"_s), {a});
    QVERIFY(model.ReadAgain());
    QCOMPARE(model.materials, (QList<ZETMatMaterial*>{b, a}));
}

void TestReaderTraversal::enabledStatesAreNotLookedAt()
{
    ReaderModel model(u"layup L1 { extra X:below sequence S1 { ply P1 } }"_s);
    for (ZETFeatObject* feature : model.root->GetAllChildren())
        ZETOpenModel::SetEnabled(*feature, false);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L1[S1[P1(X)]]]"_s);
}

void TestReaderTraversal::readingTwiceGivesTheSameTree()
{
    ReaderModel model(u"extra R:until layup L1 { sequence S1 { ply P1 extra X:below ply P2 { extra Y:parent } } }"_s);
    QVERIFY(model.Read());
    const QString tree = model.Tree();
    QCOMPARE(tree, u"Part[L1[S1[P1(R) P2(X R Y)]]]"_s);
    QVERIFY(model.ReadAgain());
    QCOMPARE(model.Tree(), tree);
}

QTEST_GUILESS_MAIN(TestReaderTraversal)
#include "TestReaderTraversal.moc"
