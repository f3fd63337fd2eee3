#include "features/ZETLaserTarget.h"
#include "features/ZETLaserTarget_p.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "tests/features/FeatureModel.h"

#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETTopology/ZETTopEntity.h>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
// Who makes targets goes through the host.
static_assert(!std::is_constructible_v<ZETLaserTarget, ZETFeatObject*>);

std::unique_ptr<ZETTopBody> MakeTwoPointDomains()
{
    ZETOpenBodyBuilder builder;
    builder.AddPoints({ZETOpenComboPoint::Make(ZETMathPoint(1, 2, 3), {})});
    builder.AddPoints({ZETOpenComboPoint::Make(ZETMathPoint(4, 5, 6), {})});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> MakeTwoCurves()
{
    ZETOpenBodyBuilder builder;
    for (const double y : {0.0, 5.0}) {
        const QList<ZETMathPoint> points{ZETMathPoint(0, y, 0), ZETMathPoint(1, y, 0)};
        builder.AddNet({{ZETOpenComboCurve::MakePolyline(points), false}});
    }
    return builder.Build();
}

std::unique_ptr<ZETTopBody> MakeEmptyPoint()
{
    ZETOpenBodyBuilder builder;
    builder.SetDimension(0);
    return builder.Build();
}

/*! A body that claims an entity which is no vertex as its point. */
class OddBody final : public ZETTopBody
{
public:
    int GetDimension() const override { return 0; }
    QList<const ZETTopDomain*> GetDomains() const override { return {}; }
    QList<const ZETTopEntity*> GetEntities(int) const override { return {&entity}; }

private:
    class Entity final : public ZETTopEntity
    {
    };
    Entity entity;
};
} // namespace

class TestLaserTarget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItself();
    void hasDefaults();
    void canBeMadeUnderAParent();
    void setterTellsOnceOfEachChange();
    void driftIsRememberedAsLastSaved();
    void forgetsAPointThatGoes();

    void coordinatesAreThoseOfTheFirstVertex();
    void coordinatesAreTheOriginWithoutAVertex_data();
    void coordinatesAreTheOriginWithoutAVertex();

    void updateFailsWithoutPoint();
    void updateTellsOfABadPointAndKeepsTheResult_data();
    void updateTellsOfABadPointAndKeepsTheResult();
    void updateHasNothingToSayOfAGoodPoint();

    void streamHoldsCommentDriftAndPoint();
    void streamHoldsAnInvalidReferenceWithoutPoint();
    void loadsWhatWasSavedAndTells();
    void loadWithoutChangeTellsNothing();
    void loadWithoutAContainerFindsNothing();
    void loadThrowsForAReferenceWithoutItsGeometry_data();
    void loadThrowsForAReferenceWithoutItsGeometry();
    void livesInASavedModel();
};

void TestLaserTarget::describesItself()
{
    const QMetaObject& type = ZETLaserTarget::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETFeatObject::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type), (ClassInfo{{"defaultLabel", "Laser Target"},
                                               {"inputProps", "point"},
                                               {"outputProps", "isDrift"},
                                               {"visProps", "point"},
                                               {"contextualActions", ""},
                                               {"editAction", "ZETLaserTargetCmd.Edit"},
                                               {"allowedParents", ""},
                                               {"PropertyLabel_comment", "Comment"},
                                               {"PropertyLabel_isDrift", "Is Drift"},
                                               {"PropertyLabel_point", "Point"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"QString comment CommentChanged(QString)", "bool isDrift DriftChanged(bool)",
                                "ZETFeatGeometry* point PointChanged(ZETFeatGeometry*)"}));
    QCOMPARE(ZETLaserTarget::Property_comment, "comment");
    QCOMPARE(ZETLaserTarget::Property_isDrift, "isDrift");
    QCOMPARE(ZETLaserTarget::Property_point, "point");
}

void TestLaserTarget::hasDefaults()
{
    FeatureModel model;
    const auto* target = model.Make<ZETLaserTarget>();
    QCOMPARE(target->GetLabel(), u"Laser Target"_s);
    QCOMPARE(target->GetComment(), QString());
    QCOMPARE(target->IsDrift(), false);
    QCOMPARE(target->GetPoint(), nullptr);
}

void TestLaserTarget::canBeMadeUnderAParent()
{
    FeatureModel model;
    const ZETLaserTarget* target = ZETLaserTargetPrivate::Make(model.folder);
    QCOMPARE(target->GetParent(), model.folder);
    QCOMPARE(target->GetContainer(), &model.container);
}

void TestLaserTarget::setterTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    auto* point = model.MakeGeometry(nullptr);
    QSignalSpy comments(target, &ZETLaserTarget::CommentChanged);
    QSignalSpy drifts(target, &ZETLaserTarget::DriftChanged);
    QSignalSpy points(target, &ZETLaserTarget::PointChanged);
    for (int i = 0; i < 2; ++i) {
        target->SetComment(u"left of the door"_s);
        target->SetDrift(true);
        target->SetPoint(point);
    }
    QCOMPARE(comments, (QList<QVariantList>{{u"left of the door"_s}}));
    QCOMPARE(drifts, (QList<QVariantList>{{true}}));
    QCOMPARE(points.count(), 1);
    QCOMPARE(points.first().first().value<ZETFeatGeometry*>(), point);
    QCOMPARE(target->GetComment(), u"left of the door"_s);
    QVERIFY(target->IsDrift());
    QCOMPARE(target->GetPoint(), point);
}

void TestLaserTarget::driftIsRememberedAsLastSaved()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    ZETLaserTargetPrivate& record = ZETLaserTargetPrivate::Of(*target);
    QVERIFY(!record.isDrift.IsInitialised());
    QCOMPARE(record.isDrift.GetLastSavedValue(), QVariant(false)); // the framework gave it its first value
    target->SetDrift(true);
    QCOMPARE(record.isDrift.GetLastSavedValue(), QVariant(true));
    QVERIFY(record.comment.IsInitialised());
    target->SetComment(u"x"_s);
    QVERIFY(!record.comment.GetLastSavedValue().isValid());
}

void TestLaserTarget::forgetsAPointThatGoes()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    auto* point = model.MakeGeometry(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1, 2, 3)));
    target->SetPoint(point);
    delete point;
    QCOMPARE(target->GetPoint(), nullptr);
    QCOMPARE(target->GetCoordinates(), ZETMathPoint());
}

void TestLaserTarget::coordinatesAreThoseOfTheFirstVertex()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    target->SetPoint(model.MakeGeometry(MakeTwoPointDomains()));
    QCOMPARE(target->GetCoordinates(), ZETMathPoint(1, 2, 3));
    // A curve isn't a point, and its start serves all the same.
    target->SetPoint(
        model.MakeGeometry(ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(7, 8, 9), ZETMathPoint(0, 0, 1)}, false)));
    QCOMPARE(target->GetCoordinates(), ZETMathPoint(7, 8, 9));
}

void TestLaserTarget::coordinatesAreTheOriginWithoutAVertex_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"no point", "no body", "no vertex", "no vertex first"})
        QTest::newRow(kind) << QString::fromLatin1(kind);
}

void TestLaserTarget::coordinatesAreTheOriginWithoutAVertex()
{
    QFETCH(QString, kind);
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    if (kind == "no body"_L1)
        target->SetPoint(model.MakeGeometry(nullptr));
    else if (kind == "no vertex"_L1)
        target->SetPoint(model.MakeGeometry(MakeEmptyPoint()));
    else if (kind == "no vertex first"_L1)
        target->SetPoint(model.MakeGeometry(std::make_unique<OddBody>()));
    QCOMPARE(target->GetCoordinates(), ZETMathPoint(0, 0, 0));
}

void TestLaserTarget::updateFailsWithoutPoint()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    QCOMPARE(target->UpdateResult(), false);
    QCOMPARE(GetMessages(*target), QStringList{u"3 point: The target must have a point defined."_s});
}

void TestLaserTarget::updateTellsOfABadPointAndKeepsTheResult_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("message");
    QTest::newRow("no body") << u"no body"_s << u"3 point: The point does not have a body."_s;
    QTest::newRow("curves") << u"curves"_s << u"3 point: The point is not a point."_s; // two domains, which isn't told
    QTest::newRow("two domains") << u"two"_s << u"3 point: The point does not have exactly one domain."_s;
    QTest::newRow("no domain") << u"none"_s << u"3 point: The point does not have exactly one domain."_s;
}

void TestLaserTarget::updateTellsOfABadPointAndKeepsTheResult()
{
    QFETCH(QString, kind);
    QFETCH(QString, message);
    FeatureModel model;
    std::unique_ptr<ZETTopBody> body;
    if (kind == "curves"_L1)
        body = MakeTwoCurves();
    else if (kind == "two"_L1)
        body = MakeTwoPointDomains();
    else if (kind == "none"_L1)
        body = MakeEmptyPoint();
    auto* target = model.Make<ZETLaserTarget>();
    target->SetPoint(model.MakeGeometry(std::move(body)));
    QCOMPARE(target->UpdateResult(), true);
    QCOMPARE(GetMessages(*target), QStringList{message});
}

void TestLaserTarget::updateHasNothingToSayOfAGoodPoint()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    QVERIFY(!target->UpdateResult());
    target->SetPoint(model.MakeGeometry(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1, 2, 3))));
    QCOMPARE(target->UpdateResult(), true);
    QCOMPARE(GetMessages(*target), QStringList());
}

void TestLaserTarget::streamHoldsCommentDriftAndPoint()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    auto* point = model.MakeGeometry(nullptr);
    target->SetComment(u"T1"_s);
    target->SetDrift(true);
    target->SetPoint(point);
    QCOMPARE(GetOwnFields(*target), "00000004"
                                    "00540031"
                                    "01" +
                                        GetReference(point));
}

void TestLaserTarget::streamHoldsAnInvalidReferenceWithoutPoint()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    QCOMPARE(GetOwnFields(*target), "ffffffff"
                                    "00" +
                                        GetReference(nullptr));
}

void TestLaserTarget::loadsWhatWasSavedAndTells()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    auto* point = model.MakeGeometry(nullptr);
    QSignalSpy comments(target, &ZETLaserTarget::CommentChanged);
    QSignalSpy drifts(target, &ZETLaserTarget::DriftChanged);
    QSignalSpy points(target, &ZETLaserTarget::PointChanged);
    ZETOpenModelStream::LoadFields(*target, MakeFields("00000004"
                                                       "00540031"
                                                       "01" +
                                                       GetReference(point)));
    QCOMPARE(target->GetComment(), u"T1"_s);
    QVERIFY(target->IsDrift());
    QCOMPARE(target->GetPoint(), point);
    QCOMPARE(ZETLaserTargetPrivate::Of(*target).isDrift.GetLastSavedValue(), QVariant(true));
    QCOMPARE(comments.count(), 1);
    QCOMPARE(drifts.count(), 1);
    QCOMPARE(points.count(), 1);

    ZETOpenModelStream::LoadFields(*target, MakeFields("ffffffff"
                                                       "00" +
                                                       GetReference(nullptr)));
    QCOMPARE(target->GetComment(), QString());
    QVERIFY(!target->IsDrift());
    QCOMPARE(target->GetPoint(), nullptr);
}

void TestLaserTarget::loadWithoutChangeTellsNothing()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    QSignalSpy comments(target, &ZETLaserTarget::CommentChanged);
    QSignalSpy drifts(target, &ZETLaserTarget::DriftChanged);
    QSignalSpy points(target, &ZETLaserTarget::PointChanged);
    ZETOpenModelStream::LoadFields(*target, ZETOpenModelStream::SaveFields(*target));
    QCOMPARE(comments.count() + drifts.count() + points.count(), 0);
}

void TestLaserTarget::loadWithoutAContainerFindsNothing()
{
    FeatureModel model;
    const ZETFeatGeometry* point = model.MakeGeometry(nullptr);
    ZETLaserTarget target(nullptr, ZETGeoGeometryRef());
    ZETOpenModelStream::LoadFields(target, MakeFields("00000002"
                                                      "0054"
                                                      "01" +
                                                      GetReference(nullptr)));
    QCOMPARE(target.GetComment(), u"T"_s);
    QVERIFY(target.IsDrift());
    QCOMPARE(target.GetPoint(), nullptr);
    const QByteArray fields = MakeFields("00000002"
                                         "0054"
                                         "01" +
                                         GetReference(point));
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(target, fields));
}

void TestLaserTarget::loadThrowsForAReferenceWithoutItsGeometry_data()
{
    QTest::addColumn<bool>("isOtherClass");
    QTest::newRow("deleted") << false;
    QTest::newRow("other class") << true;
}

void TestLaserTarget::loadThrowsForAReferenceWithoutItsGeometry()
{
    QFETCH(bool, isOtherClass);
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    auto* point = model.MakeGeometry(nullptr);
    const QByteArray fields = MakeFields("00000002"
                                         "0054"
                                         "00" +
                                         GetReference(isOtherClass ? static_cast<ZETFeatObject*>(target) : point));
    delete point;
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(*target, fields));
    QCOMPARE(target->GetComment(), u"T"_s); // what stood ahead of the reference was read
    QCOMPARE(target->GetPoint(), nullptr);
}

void TestLaserTarget::livesInASavedModel()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>(); // ahead of its point
    target->SetComment(QString(100000, u'c'));
    target->SetDrift(true);
    target->SetPoint(model.MakeGeometry(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1, 2, 3))));
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    const auto* copy =
        qobject_cast<ZETLaserTarget*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QCOMPARE(copy->GetComment(), QString(100000, u'c'));
    QVERIFY(copy->IsDrift());
    QVERIFY(copy->GetPoint());
    QCOMPARE(copy->GetCoordinates(), ZETMathPoint(1, 2, 3));
}

QTEST_GUILESS_MAIN(TestLaserTarget)
#include "TestLaserTarget.moc"
