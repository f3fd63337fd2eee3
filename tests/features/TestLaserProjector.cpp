#include "features/ZETLaserProjector.h"
#include "features/ZETLaserProjector_p.h"
#include "tests/features/FeatureModel.h"

#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETSystem/ZETSysException.h>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using Targets = QList<ZETLaserTarget*>;

namespace
{
static_assert(!std::is_constructible_v<ZETLaserProjector, ZETFeatObject*>);

/*! The lists that a projector told of, in order. */
QList<Targets> GetLists(const QSignalSpy& spy)
{
    QList<Targets> lists;
    for (const QVariantList& arguments : spy)
        lists.append(arguments.first().value<Targets>());
    return lists;
}
} // namespace

class TestLaserProjector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItself();
    void hasDefaults();
    void canBeMadeUnderAParent();
    void commentTellsOnceOfEachChange();

    void listTellsOfEachElementAndOnceMore();
    void sameListTellsNothing();
    void otherOrderRebuildsTheList();
    void emptyListAfterTargets();
    void listMayHoldNull();
    void newListMakesTheProjectorOutdated();
    void readsNullWhereATargetWent();

    void updateFailsWithoutTargets();
    void updateSucceedsWithTargets();

    void streamHoldsCommentCountAndTargets();
    void streamOfAnEmptyListEndsWithTheCount();
    void loadKeepsTheOrderAndTells();
    void loadReplacesTheList();
    void loadTakesAnInvalidReferenceAsNull();
    void loadThrowsForAReferenceWithoutItsTarget_data();
    void loadThrowsForAReferenceWithoutItsTarget();
    void loadStopsWhereADamagedStreamEnds();
    void loadTakesANegativeCountAsNone();
    void livesInASavedModel();
};

void TestLaserProjector::describesItself()
{
    const QMetaObject& type = ZETLaserProjector::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETFeatObject::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type), (ClassInfo{{"defaultLabel", "Laser Projector"},
                                               {"inputProps", "targets"},
                                               {"outputProps", ""},
                                               {"visProps", ""},
                                               {"contextualActions", ""},
                                               {"editAction", "ZETLaserProjectorCmd.Edit"},
                                               {"allowedParents", ""},
                                               {"PropertyLabel_comment", "Comment"},
                                               {"PropertyLabel_targets", "Targets"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"QString comment CommentChanged(QString)",
                                "QList<ZETLaserTarget*> targets TargetsChanged(QList<ZETLaserTarget*>)"}));
    QCOMPARE(ZETLaserProjector::Property_comment, "comment");
    QCOMPARE(ZETLaserProjector::Property_targets, "targets");
}

void TestLaserProjector::hasDefaults()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    QCOMPARE(projector->GetLabel(), u"Laser Projector"_s);
    QCOMPARE(projector->GetComment(), QString());
    QCOMPARE(projector->GetTargets(), Targets());
    QVERIFY(ZETLaserProjectorPrivate::Of(*projector).comment.IsInitialised());
}

void TestLaserProjector::canBeMadeUnderAParent()
{
    FeatureModel model;
    const ZETLaserProjector* projector = ZETLaserProjectorPrivate::Make(model.folder);
    QCOMPARE(projector->GetParent(), model.folder);
    QCOMPARE(projector->GetContainer(), &model.container);
}

void TestLaserProjector::commentTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    QSignalSpy comments(projector, &ZETLaserProjector::CommentChanged);
    projector->SetComment(u"by the wall"_s);
    projector->SetComment(u"by the wall"_s);
    QCOMPARE(comments, (QList<QVariantList>{{u"by the wall"_s}}));
}

void TestLaserProjector::listTellsOfEachElementAndOnceMore()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    auto* c = model.Make<ZETLaserTarget>();
    projector->SetTargets({a, b});
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    projector->SetTargets({c, a, b});
    QCOMPARE(GetLists(lists), (QList<Targets>{{b}, {}, {c}, {c, a}, {c, a, b}, {c, a, b}}));
    QCOMPARE(projector->GetTargets(), (Targets{c, a, b}));
}

void TestLaserProjector::sameListTellsNothing()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    projector->SetTargets({a, b});
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    projector->SetTargets({a, b});
    QCOMPARE(lists.count(), 0);
}

void TestLaserProjector::otherOrderRebuildsTheList()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    projector->SetTargets({a, b});
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    projector->SetTargets({b, a});
    QCOMPARE(GetLists(lists), (QList<Targets>{{b}, {}, {b}, {b, a}, {b, a}}));
    QCOMPARE(projector->GetTargets(), (Targets{b, a}));
}

void TestLaserProjector::emptyListAfterTargets()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    projector->SetTargets({model.Make<ZETLaserTarget>()});
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    projector->SetTargets({});
    QCOMPARE(GetLists(lists), (QList<Targets>{{}, {}}));
    QCOMPARE(projector->GetTargets(), Targets());
}

void TestLaserProjector::listMayHoldNull()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    projector->SetTargets({nullptr, a, nullptr});
    QCOMPARE(projector->GetTargets(), (Targets{nullptr, a, nullptr}));
    QCOMPARE(projector->UpdateResult(), true);
}

void TestLaserProjector::newListMakesTheProjectorOutdated()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    ZETOpenModel::Update(*projector);
    QVERIFY(!ZETOpenModel::IsOutdated(*projector));
    projector->SetTargets({model.Make<ZETLaserTarget>()});
    QVERIFY(ZETOpenModel::IsOutdated(*projector));
}

void TestLaserProjector::readsNullWhereATargetWent()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    projector->SetTargets({a, b});
    delete a;
    QCOMPARE(projector->GetTargets(), (Targets{nullptr, b}));
}

void TestLaserProjector::updateFailsWithoutTargets()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    QCOMPARE(projector->UpdateResult(), false);
    QCOMPARE(GetMessages(*projector), QStringList{u"3 targets: There is no target in the projector."_s});
}

void TestLaserProjector::updateSucceedsWithTargets()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    projector->SetTargets({model.Make<ZETLaserTarget>()});
    QCOMPARE(projector->UpdateResult(), true);
    QCOMPARE(GetMessages(*projector), QStringList());
}

void TestLaserProjector::streamHoldsCommentCountAndTargets()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    projector->SetComment(u"P"_s);
    projector->SetTargets({b, nullptr, a});
    QCOMPARE(GetOwnFields(*projector), "00000002"
                                       "0050"
                                       "00000003" +
                                           GetReference(b) + GetReference(nullptr) + GetReference(a));
}

void TestLaserProjector::streamOfAnEmptyListEndsWithTheCount()
{
    FeatureModel model;
    QCOMPARE(GetOwnFields(*model.Make<ZETLaserProjector>()), "ffffffff"
                                                             "00000000");
}

void TestLaserProjector::loadKeepsTheOrderAndTells()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    ZETOpenModelStream::LoadFields(*projector, MakeFields("00000002"
                                                          "0050"
                                                          "00000002" +
                                                          GetReference(b) + GetReference(a)));
    QCOMPARE(projector->GetComment(), u"P"_s);
    QCOMPARE(projector->GetTargets(), (Targets{b, a}));
    QCOMPARE(GetLists(lists), (QList<Targets>{{b}, {b, a}}));
}

void TestLaserProjector::loadReplacesTheList()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* a = model.Make<ZETLaserTarget>();
    auto* b = model.Make<ZETLaserTarget>();
    projector->SetTargets({a, b});
    QSignalSpy lists(projector, &ZETLaserProjector::TargetsChanged);
    ZETOpenModelStream::LoadFields(*projector, MakeFields("ffffffff"
                                                          "00000001" +
                                                          GetReference(b)));
    QCOMPARE(projector->GetTargets(), Targets{b});
    QCOMPARE(GetLists(lists), (QList<Targets>{{}, {b}})); // one bracket empties the list
}

void TestLaserProjector::loadTakesAnInvalidReferenceAsNull()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    ZETOpenModelStream::LoadFields(*projector, MakeFields("ffffffff"
                                                          "00000001" +
                                                          GetReference(nullptr)));
    QCOMPARE(projector->GetTargets(), Targets{nullptr});
}

void TestLaserProjector::loadThrowsForAReferenceWithoutItsTarget_data()
{
    QTest::addColumn<bool>("isOtherClass");
    QTest::newRow("deleted") << false;
    QTest::newRow("other class") << true;
}

void TestLaserProjector::loadThrowsForAReferenceWithoutItsTarget()
{
    QFETCH(bool, isOtherClass);
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* target = model.Make<ZETLaserTarget>();
    const QByteArray fields = MakeFields("ffffffff"
                                         "00000001" +
                                         GetReference(isOtherClass ? static_cast<ZETFeatObject*>(projector) : target));
    delete target;
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(*projector, fields));
    QCOMPARE(projector->GetTargets(), Targets());
}

void TestLaserProjector::loadStopsWhereADamagedStreamEnds()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    auto* target = model.Make<ZETLaserTarget>();
    const QByteArray fields = MakeFields("ffffffff"
                                         "7fffffff" +
                                         GetReference(target));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, ZETOpenModelStream::LoadFields(*projector, fields));
    QCOMPARE(projector->GetTargets(), Targets{target});
}

void TestLaserProjector::loadTakesANegativeCountAsNone()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>();
    ZETOpenModelStream::LoadFields(*projector, MakeFields("ffffffff"
                                                          "ffffffff"));
    QCOMPARE(projector->GetTargets(), Targets());
}

void TestLaserProjector::livesInASavedModel()
{
    FeatureModel model;
    auto* projector = model.Make<ZETLaserProjector>(); // ahead of its targets
    Targets targets;
    for (int i = 0; i < 20; ++i) {
        targets.append(model.Make<ZETLaserTarget>());
        targets.last()->SetComment(QString::number(i));
    }
    std::reverse(targets.begin(), targets.end());
    projector->SetTargets(targets);
    projector->SetComment(QString(70000, u'\u00e4'));
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    const auto* copy =
        qobject_cast<ZETLaserProjector*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QCOMPARE(copy->GetComment(), QString(70000, u'\u00e4'));
    QCOMPARE(copy->GetTargets().size(), 20);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(copy->GetTargets().at(i)->GetComment(), QString::number(19 - i));
}

QTEST_GUILESS_MAIN(TestLaserProjector)
#include "TestLaserProjector.moc"
