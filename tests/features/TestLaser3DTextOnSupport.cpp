#include "features/ZETLaser3DTextOnSupport.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "tests/features/FeatureModel.h"
#include "tests/support/TestThrown.h"

#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETMathematics/ZETMathAxis.h>

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>

using namespace Qt::Literals::StringLiterals;

using Text = ZETLaser3DTextOnSupport;
using Body = std::unique_ptr<ZETTopBody>;

namespace
{
constexpr double pi = 3.14159265358979323846;

constexpr auto noPlane = "3 : Failed to calculate the text plane."_L1;
constexpr auto noProjectionOnCurve = "Failed to project the anchor point to the direction curve";
constexpr auto noProjectionOnSurface = "Failed to project the anchor point to the support surface";
constexpr auto isParallel = "The support surface normal is parallel with the direction";

/*! The XY plane around the origin, with its normal along Z. */
ZETOpenRef<ZETOpenSurface> MakePlane()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -100, 100, -100, 100);
}

Body MakePlaneBody()
{
    return ZETOpenBodyBuilder::MakeFace(MakePlane());
}

Body MakePointBody()
{
    return ZETOpenBodyBuilder::MakePoint(ZETMathPoint(3, 4, 5));
}

/*! Parallel to X, away from the anchor. */
Body MakeCurveBody()
{
    return ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(-50, 10, 0), ZETMathPoint(50, 10, 0)}, false);
}

Body MakeNothing()
{
    return nullptr;
}

Body MakeTwoPoints()
{
    ZETOpenBodyBuilder builder;
    for (const double x : {3.0, 7.0})
        builder.AddPoints({ZETOpenComboPoint::Make(ZETMathPoint(x, 4, 5), {})});
    return builder.Build();
}

Body MakeTwoSkins()
{
    ZETOpenBodyBuilder builder;
    builder.AddSkin({MakePlane()});
    builder.AddSkin({MakePlane()});
    return builder.Build();
}

/*! A body that claims to be a surface and has a net. */
Body MakeNetAsSurface()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakePolyline({ZETMathPoint(0, 0, 0), ZETMathPoint(1, 0, 0)}), false}});
    builder.SetDimension(2);
    return builder.Build();
}

Body MakeSkinWithoutFace()
{
    ZETOpenBodyBuilder builder;
    builder.AddSkin({});
    builder.SetDimension(2);
    return builder.Build();
}

Body MakeNetWithoutEdge()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({});
    builder.SetDimension(1);
    return builder.Build();
}

using Maker = std::function<Body()>;

/*! A text on a support, valid but for what a test changes. */
struct TextModel : FeatureModel {
    explicit TextModel(const Maker& support = MakePlaneBody, const Maker& anchor = MakePointBody,
                       const Maker& direction = MakeCurveBody)
    {
        text->SetText(u"A"_s);
        text->SetSupport(MakeGeometry(support()));
        text->SetAnchorPoint(MakeGeometry(anchor()));
        text->SetDirection(MakeGeometry(direction()));
    }

    Text* text = Make<Text>();
};

bool IsNear(const ZETMathPoint& a, const ZETMathPoint& b)
{
    return a.GetDistanceTo(b) < 1e-6;
}

/*! Whether both point the same way, within a micrometre a metre. */
bool IsAlong(ZETMathVector a, ZETMathVector b)
{
    a.Normalize();
    b.Normalize();
    return (a - b).GetSquaredMagnitude() < 1e-12;
}
} // namespace

Q_DECLARE_METATYPE(Maker)

class TestLaser3DTextOnSupport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItself();
    void hasDefaults();
    void canBeMadeByTheMetaObject();
    void setterTellsOnceOfEachChange();

    void standsOnAPlane();
    void mirrorsTurnTheDirections_data();
    void mirrorsTurnTheDirections();
    void standsOnACylinder();
    void standsOnTheSeamOfACylinder();
    void standsOnASphere();
    void standsOnADoublyCurvedSurface();
    void takesTheTangentOfACurveOnTheSurface();
    void keepsItsPlaneAfterAFailedUpdate();
    void failsWhereTheDirectionIsTheNormal_data();
    void failsWhereTheDirectionIsTheNormal();

    void badSupportStopsTheUpdate_data();
    void badSupportStopsTheUpdate();
    void badAnchorPointIsToldAndTheUpdateGoesOn_data();
    void badAnchorPointIsToldAndTheUpdateGoesOn();
    void anchorPointWithoutBodyThrows();
    void badDirectionIsTold_data();
    void badDirectionIsTold();
    void supportWithoutFaceIsToldAtTheAnchorPoint();
    void curveAsAnchorPointStillMakesAPlane();
    void tellsOfTheTextFirst();

    void streamHoldsReferencesMirrorsAndPlane();
    void loadGivesThePlaneBackWithoutAnUpdate();
    void loadOfTheFirstVersionLeavesTheTextOutdated();
    void loadThrowsForAReferenceWithoutItsGeometry_data();
    void loadThrowsForAReferenceWithoutItsGeometry();
    void loadTakesNullReferences();
    void livesInASavedModel();
};

void TestLaser3DTextOnSupport::describesItself()
{
    const QMetaObject& type = Text::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETLaser3DText::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type),
             (ClassInfo{{"version", "2"},
                        {"defaultLabel", "3D Text On Support"},
                        {"inputProps", "anchorpoint support direction verticalMirror horizontalMirror"},
                        {"outputProps", ""},
                        {"visProps", "anchorpoint support direction verticalMirror horizontalMirror"},
                        {"contextualActions", ""},
                        {"editAction", "ZETLaser3DTextCmd.Edit"},
                        {"allowedParents", ""},
                        {"PropertyLabel_anchorpoint", "Anchor point"},
                        {"PropertyLabel_support", "Support surface"},
                        {"PropertyLabel_direction", "Direction"},
                        {"PropertyLabel_verticalMirror", "Vertical Mirror"},
                        {"PropertyLabel_horizontalMirror", "Horizontal Mirror"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"ZETFeatGeometry* anchorpoint AnchorPointChanged(ZETFeatGeometry*)",
                                "ZETFeatGeometry* support SupportChanged(ZETFeatGeometry*)",
                                "ZETFeatGeometry* direction DirectionChanged(ZETFeatGeometry*)",
                                "bool verticalMirror VerticalMirrorChanged(bool)",
                                "bool horizontalMirror HorizontalMirrorChanged(bool)"}));
    QCOMPARE(Text::Property_anchorpoint, "anchorpoint");
    QCOMPARE(Text::Property_support, "support");
    QCOMPARE(Text::Property_direction, "direction");
    QCOMPARE(Text::Property_verticalMirror, "verticalMirror");
    QCOMPARE(Text::Property_horizontalMirror, "horizontalMirror");
}

void TestLaser3DTextOnSupport::hasDefaults()
{
    FeatureModel model;
    const auto* text = model.Make<Text>();
    QCOMPARE(text->GetLabel(), u"3D Text On Support"_s);
    QCOMPARE(text->GetText(), QString());
    QCOMPARE(text->GetSize(), 10.0);
    QCOMPARE(text->GetAnchorPoint(), nullptr);
    QCOMPARE(text->GetSupport(), nullptr);
    QCOMPARE(text->GetDirection(), nullptr);
    QCOMPARE(text->IsVerticalMirror(), false);
    QCOMPARE(text->IsHorizontalMirror(), false);
    // The default plane: XY at the origin.
    QCOMPARE(text->GetBasePoint(), ZETMathPoint());
    QCOMPARE(text->GetBaseDirection(), ZETMathVector(1, 0, 0));
    QCOMPARE(text->GetUpDirection(), ZETMathVector(0, 1, 0));
}

void TestLaser3DTextOnSupport::canBeMadeByTheMetaObject()
{
    FeatureModel model;
    ZETFeatObject* parent = model.folder;
    const auto* text = qobject_cast<Text*>(Text::staticMetaObject.newInstance(Q_ARG(ZETFeatObject*, parent)));
    QVERIFY(text);
    QCOMPARE(text->GetParent(), parent);
    QCOMPARE(text->GetContainer(), &model.container);
}

void TestLaser3DTextOnSupport::setterTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    auto* anchor = model.MakeGeometry(nullptr);
    auto* support = model.MakeGeometry(nullptr);
    auto* direction = model.MakeGeometry(nullptr);
    QSignalSpy anchors(text, &Text::AnchorPointChanged);
    QSignalSpy supports(text, &Text::SupportChanged);
    QSignalSpy directions(text, &Text::DirectionChanged);
    QSignalSpy verticals(text, &Text::VerticalMirrorChanged);
    QSignalSpy horizontals(text, &Text::HorizontalMirrorChanged);
    for (int i = 0; i < 2; ++i) {
        text->SetAnchorPoint(anchor);
        text->SetSupport(support);
        text->SetDirection(direction);
        text->SetVerticalMirror(true);
        text->SetHorizontalMirror(true);
    }
    QCOMPARE(anchors.count(), 1);
    QCOMPARE(anchors.first().first().value<ZETFeatGeometry*>(), anchor);
    QCOMPARE(supports.count(), 1);
    QCOMPARE(supports.first().first().value<ZETFeatGeometry*>(), support);
    QCOMPARE(directions.count(), 1);
    QCOMPARE(directions.first().first().value<ZETFeatGeometry*>(), direction);
    QCOMPARE(verticals, (QList<QVariantList>{{true}}));
    QCOMPARE(horizontals, (QList<QVariantList>{{true}}));
    QCOMPARE(text->GetAnchorPoint(), anchor);
    QCOMPARE(text->GetSupport(), support);
    QCOMPARE(text->GetDirection(), direction);
    QVERIFY(text->IsVerticalMirror());
    QVERIFY(text->IsHorizontalMirror());
}

void TestLaser3DTextOnSupport::standsOnAPlane()
{
    TextModel model;
    QCOMPARE(model.text->UpdateResult(), true);
    QCOMPARE(GetMessages(*model.text), QStringList());
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(3, 4, 0)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(1, 0, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(0, 1, 0)));
}

void TestLaser3DTextOnSupport::mirrorsTurnTheDirections_data()
{
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<double>("run");
    QTest::addColumn<double>("up");
    QTest::newRow("none") << false << false << 1.0 << 1.0;
    QTest::newRow("vertical") << true << false << -1.0 << -1.0; // the up direction turns with the run
    QTest::newRow("horizontal") << false << true << 1.0 << -1.0;
    QTest::newRow("both") << true << true << -1.0 << 1.0;
}

void TestLaser3DTextOnSupport::mirrorsTurnTheDirections()
{
    QFETCH(bool, vertical);
    QFETCH(bool, horizontal);
    QFETCH(double, run);
    QFETCH(double, up);
    TextModel model;
    model.text->SetVerticalMirror(vertical);
    model.text->SetHorizontalMirror(horizontal);
    QCOMPARE(model.text->UpdateResult(), true);
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(3, 4, 0)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(run, 0, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(0, up, 0)));
}

void TestLaser3DTextOnSupport::standsOnACylinder()
{
    const double c = std::cos(pi / 6);
    const double s = std::sin(pi / 6);
    TextModel model(
        [] { return ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10, 0, pi, 0, 50)); },
        [&] { return ZETOpenBodyBuilder::MakePoint(ZETMathPoint(12 * c, 12 * s, 5)); },
        [] {
            return ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(9, 0, 0), ZETMathPoint(9, 0, 50)}, false);
        });
    QCOMPARE(model.text->UpdateResult(), true);
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(10 * c, 10 * s, 5)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(0, 0, 1)));
    // Outward normal cross the axis.
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(s, -c, 0)));
}

void TestLaser3DTextOnSupport::standsOnTheSeamOfACylinder()
{
    const auto surface = ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10, 0, 2 * pi, 0, 50);
    const double c = 10 * std::cos(pi / 9);
    const double s = 10 * std::sin(pi / 9);
    TextModel model([&] { return ZETOpenBodyBuilder::MakeFace(surface); },
                    [] { return ZETOpenBodyBuilder::MakePoint(ZETMathPoint(15, 0, 20)); },
                    [&] {
                        // Across the seam, which is where the angle is 0.
                        return ZETOpenBodyBuilder::MakeCurve(ZETOpenCurveOnSurface::MakePolyline(
                            surface, {ZETMathPoint(c, -s, 20), ZETMathPoint(c, s, 20)}, false));
                    });
    QCOMPARE(model.text->UpdateResult(), true);
    QCOMPARE(GetMessages(*model.text), QStringList());
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(10, 0, 20)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(0, 1, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(0, 0, 1)));
}

void TestLaser3DTextOnSupport::standsOnASphere()
{
    TextModel model(
        [] {
            return ZETOpenBodyBuilder::MakeFace(
                ZETOpenSurface::MakeSphere(ZETMathAxis(), 10, 0, 2 * pi, -pi / 2, pi / 2));
        },
        [] { return ZETOpenBodyBuilder::MakePoint(ZETMathPoint(0, 20, 0)); },
        [] {
            return ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(5, 12, 0), ZETMathPoint(-5, 12, 0)}, false);
        });
    QCOMPARE(model.text->UpdateResult(), true);
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(0, 10, 0)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(-1, 0, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(0, 0, 1)));
}

void TestLaser3DTextOnSupport::standsOnADoublyCurvedSurface()
{
    // z = x * y / 100, whose normal at (x, y) is along (-y, -x, 100): a grid of a surface that is ruled both ways.
    QList<QList<ZETMathPoint>> rows;
    for (int y = -50; y <= 50; y += 10) {
        QList<ZETMathPoint> row;
        for (int x = -50; x <= 50; x += 10)
            row.append(ZETMathPoint(x, y, x * y / 100.0));
        rows.append(row);
    }
    const auto surface = ZETOpenSurface::MakeBSpline(rows);
    const ZETMathPoint foot(20, 30, 6);
    ZETMathVector normal(-30, -20, 100);
    normal.Normalize();
    TextModel model([&] { return ZETOpenBodyBuilder::MakeFace(surface); },
                    [&] { return ZETOpenBodyBuilder::MakePoint(foot + 4.0 * normal); }, [] { return MakeCurveBody(); });
    QCOMPARE(model.text->UpdateResult(), true);
    QVERIFY(IsNear(model.text->GetBasePoint(), foot));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(1, 0, 0)));
    // The surface's own normal may be on either side; MakeBSpline tells rows cross row: -Z for rows along Y.
    const ZETMathVector own = normal * -1.0;
    QVERIFY(IsAlong(model.text->GetUpDirection(), own ^ ZETMathVector(1, 0, 0)));
}

void TestLaser3DTextOnSupport::takesTheTangentOfACurveOnTheSurface()
{
    const auto plane = MakePlane();
    TextModel model(
        [&] { return ZETOpenBodyBuilder::MakeFace(plane); },
        [] { return ZETOpenBodyBuilder::MakePoint(ZETMathPoint(30, 30, 7)); },
        [&] { return ZETOpenBodyBuilder::MakeCurve(ZETOpenCurveOnSurface::MakeCircle(plane, ZETMathPoint(), 20, 8)); });
    QCOMPARE(model.text->UpdateResult(), true);
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(30, 30, 0)));
    QVERIFY(IsAlong(model.text->GetBaseDirection(), ZETMathVector(-1, 1, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(-1, -1, 0)));
}

void TestLaser3DTextOnSupport::keepsItsPlaneAfterAFailedUpdate()
{
    TextModel model;
    QVERIFY(model.text->UpdateResult());
    model.text->SetDirection(nullptr);
    QCOMPARE(model.text->UpdateResult(), false);
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(3, 4, 0)));
    QVERIFY(IsAlong(model.text->GetUpDirection(), ZETMathVector(0, 1, 0)));
}

void TestLaser3DTextOnSupport::failsWhereTheDirectionIsTheNormal_data()
{
    QTest::addColumn<double>("z");
    QTest::newRow("along") << 50.0;
    QTest::newRow("against") << -50.0;
}

void TestLaser3DTextOnSupport::failsWhereTheDirectionIsTheNormal()
{
    QFETCH(double, z);
    TextModel model(MakePlaneBody, MakePointBody, [&] {
        return ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(9, 9, -z), ZETMathPoint(9, 9, z)}, false);
    });
    QTest::ignoreMessage(QtDebugMsg, isParallel);
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), QStringList{noPlane});
    QCOMPARE(model.text->GetBasePoint(), ZETMathPoint());
    QCOMPARE(model.text->GetBaseDirection(), ZETMathVector(1, 0, 0));
}

void TestLaser3DTextOnSupport::badSupportStopsTheUpdate_data()
{
    QTest::addColumn<Maker>("support");
    QTest::addColumn<QString>("message");
    QTest::newRow("none") << Maker() << u"The text on support must have a support."_s;
    QTest::newRow("no body") << Maker(MakeNothing) << u"The support does not have a body."_s;
    QTest::newRow("curve") << Maker(MakeCurveBody) << u"The support is not a surface."_s;
    QTest::newRow("two skins") << Maker(MakeTwoSkins) << u"The support does not have exactly one domain."_s;
    QTest::newRow("net") << Maker(MakeNetAsSurface) << u"The support surface does not have a skin domain."_s;
}

void TestLaser3DTextOnSupport::badSupportStopsTheUpdate()
{
    QFETCH(Maker, support);
    QFETCH(QString, message);
    TextModel model(support ? support : MakePlaneBody);
    if (!support)
        model.text->SetSupport(nullptr);
    model.text->SetAnchorPoint(nullptr); // no longer looked at
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), QStringList{"3 support: "_L1 + message});
}

void TestLaser3DTextOnSupport::badAnchorPointIsToldAndTheUpdateGoesOn_data()
{
    const QString noAnchor = u"3 anchorpoint: The text on support must have an anchor point."_s;
    const QString noCurve = u"3 direction: Failed to project the anchor point to the direction curve."_s;
    QTest::addColumn<Maker>("anchor");
    QTest::addColumn<QStringList>("messages");
    // Without an anchor point there is nothing to project on the direction either.
    QTest::newRow("none") << Maker() << QStringList{noAnchor, noCurve, noPlane};
    QTest::newRow("two points") << Maker(MakeTwoPoints)
                                << QStringList{u"3 anchorpoint: The anchor point does not have exactly one domain."_s};
}

void TestLaser3DTextOnSupport::badAnchorPointIsToldAndTheUpdateGoesOn()
{
    QFETCH(Maker, anchor);
    QFETCH(QStringList, messages);
    TextModel model(MakePlaneBody, anchor ? anchor : MakePointBody);
    if (!anchor)
        model.text->SetAnchorPoint(nullptr);
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), messages);
}

void TestLaser3DTextOnSupport::anchorPointWithoutBodyThrows()
{
    TextModel model(MakePlaneBody, MakeNothing);
    model.text->SetDirection(nullptr); // no longer looked at
    QCOMPARE(Thrown([&] { model.text->UpdateResult(); }), u"geometry does not have a body"_s);
    QCOMPARE(GetMessages(*model.text), QStringList{u"3 anchorpoint: The anchor point does not have a body."_s});
}

void TestLaser3DTextOnSupport::badDirectionIsTold_data()
{
    const QString noDirection = u"3 direction: The text on support must specify a direction."_s;
    const QString noCurve = u"3 direction: Failed to project the anchor point to the direction curve."_s;
    QTest::addColumn<Maker>("direction");
    QTest::addColumn<QByteArray>("debug");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("none") << Maker() << QByteArray() << QStringList{noDirection, noPlane};
    QTest::newRow("no body") << Maker(MakeNothing) << QByteArray(noProjectionOnCurve) << QStringList{noCurve, noPlane};
    QTest::newRow("no edge") << Maker(MakeNetWithoutEdge) << QByteArray(noProjectionOnCurve)
                             << QStringList{noCurve, noPlane};
    // The anchor can be projected on a surface, but there is no edge whose tangent could be taken.
    QTest::newRow("surface") << Maker(MakePlaneBody) << QByteArray(noProjectionOnCurve) << QStringList{noPlane};
}

void TestLaser3DTextOnSupport::badDirectionIsTold()
{
    QFETCH(Maker, direction);
    QFETCH(QByteArray, debug);
    QFETCH(QStringList, messages);
    TextModel model(MakePlaneBody, MakePointBody, direction ? direction : MakeCurveBody);
    if (!direction)
        model.text->SetDirection(nullptr);
    if (!debug.isEmpty())
        QTest::ignoreMessage(QtDebugMsg, debug.constData());
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), messages);
    QCOMPARE(model.text->GetBasePoint(), ZETMathPoint());
}

void TestLaser3DTextOnSupport::supportWithoutFaceIsToldAtTheAnchorPoint()
{
    TextModel model(MakeSkinWithoutFace);
    QTest::ignoreMessage(QtDebugMsg, noProjectionOnSurface);
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text),
             (QStringList{u"3 anchorpoint: Failed to project the anchor point to the support surface."_s, noPlane}));
}

void TestLaser3DTextOnSupport::curveAsAnchorPointStillMakesAPlane()
{
    TextModel model(MakePlaneBody, [] {
        return ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(1, 2, 9), ZETMathPoint(5, 5, 9)}, false);
    });
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), QStringList{u"3 anchorpoint: The anchor point is not a point."_s});
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(1, 2, 0))); // at the start of the curve
}

void TestLaser3DTextOnSupport::tellsOfTheTextFirst()
{
    TextModel model;
    model.text->SetText(QString());
    model.text->SetSize(0);
    QCOMPARE(model.text->UpdateResult(), false);
    QCOMPARE(GetMessages(*model.text), (QStringList{u"3 size: The size must be greater than zero."_s,
                                                    u"3 text: The text should not be empty."_s}));
    QVERIFY(IsNear(model.text->GetBasePoint(), ZETMathPoint(3, 4, 0))); // the plane is worked out all the same
}

void TestLaser3DTextOnSupport::streamHoldsReferencesMirrorsAndPlane()
{
    TextModel model;
    model.text->SetVerticalMirror(true);
    const QByteArray zero = "0000000000000000";
    const QByteArray one = "3ff0000000000000";
    QCOMPARE(GetOwnFields(*model.text), "00000002"
                                        "0041"
                                        "4024000000000000" +
                                            GetReference(model.text->GetAnchorPoint()) +
                                            GetReference(model.text->GetSupport()) +
                                            GetReference(model.text->GetDirection()) +
                                            "01"
                                            "00" +
                                            zero + zero + zero + one + zero + zero + zero + one + zero);
}

void TestLaser3DTextOnSupport::loadGivesThePlaneBackWithoutAnUpdate()
{
    TextModel model;
    model.text->SetHorizontalMirror(true);
    QVERIFY(ZETOpenModel::Update(*model.text));
    auto* copy = model.Make<Text>();
    ZETOpenModelStream::LoadFields(*copy, ZETOpenModelStream::SaveFields(*model.text));
    QVERIFY(!ZETOpenModel::IsOutdated(*copy));
    QCOMPARE(copy->GetText(), u"A"_s);
    QCOMPARE(copy->GetAnchorPoint(), model.text->GetAnchorPoint());
    QCOMPARE(copy->GetSupport(), model.text->GetSupport());
    QCOMPARE(copy->GetDirection(), model.text->GetDirection());
    QCOMPARE(copy->IsVerticalMirror(), false);
    QCOMPARE(copy->IsHorizontalMirror(), true);
    QCOMPARE(copy->GetBasePoint(), model.text->GetBasePoint());
    QCOMPARE(copy->GetBaseDirection(), model.text->GetBaseDirection());
    QCOMPARE(copy->GetUpDirection(), model.text->GetUpDirection());
    QVERIFY(IsNear(copy->GetBasePoint(), ZETMathPoint(3, 4, 0)));
}

void TestLaser3DTextOnSupport::loadOfTheFirstVersionLeavesTheTextOutdated()
{
    TextModel model;
    QVERIFY(ZETOpenModel::Update(*model.text));
    QByteArray fields = ZETOpenModelStream::SaveFields(*model.text);
    fields.chop(9 * 8); // the plane
    auto* copy = model.Make<Text>();
    ZETOpenModelStream::LoadFields(*copy, fields, {{"ZETLaser3DTextOnSupport", 1}});
    QVERIFY(ZETOpenModel::IsOutdated(*copy));
    QCOMPARE(copy->GetSupport(), model.text->GetSupport());
    QCOMPARE(copy->GetBasePoint(), ZETMathPoint()); // the default plane, until the first update
    QCOMPARE(copy->GetUpDirection(), ZETMathVector(0, 1, 0));
    QVERIFY(ZETOpenModel::Update(*copy));
    QVERIFY(IsNear(copy->GetBasePoint(), ZETMathPoint(3, 4, 0)));
}

void TestLaser3DTextOnSupport::loadThrowsForAReferenceWithoutItsGeometry_data()
{
    QTest::addColumn<int>("missing");
    QTest::newRow("anchorpoint") << 0;
    QTest::newRow("support") << 1;
    QTest::newRow("direction") << 2;
}

void TestLaser3DTextOnSupport::loadThrowsForAReferenceWithoutItsGeometry()
{
    QFETCH(int, missing);
    TextModel model;
    const QByteArray fields = ZETOpenModelStream::SaveFields(*model.text);
    const QList<ZETFeatGeometry*> inputs{model.text->GetAnchorPoint(), model.text->GetSupport(),
                                         model.text->GetDirection()};
    delete inputs.at(missing);
    auto* copy = model.Make<Text>();
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(*copy, fields));
    QCOMPARE(copy->GetAnchorPoint(), missing > 0 ? inputs.at(0) : nullptr);
    QCOMPARE(copy->GetDirection(), nullptr);
}

void TestLaser3DTextOnSupport::loadTakesNullReferences()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    auto* copy = model.Make<Text>();
    ZETOpenModelStream::LoadFields(*copy, ZETOpenModelStream::SaveFields(*text));
    QCOMPARE(copy->GetAnchorPoint(), nullptr);
    QCOMPARE(copy->GetSupport(), nullptr);
    QCOMPARE(copy->GetDirection(), nullptr);
}

void TestLaser3DTextOnSupport::livesInASavedModel()
{
    TextModel model; // the text stands ahead of its inputs
    model.text->SetVerticalMirror(true);
    QVERIFY(ZETOpenModel::Update(*model.folder));
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    auto* copy = qobject_cast<Text*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QVERIFY(!ZETOpenModel::IsOutdated(*copy));
    QVERIFY(IsNear(copy->GetBasePoint(), ZETMathPoint(3, 4, 0)));
    QVERIFY(IsAlong(copy->GetBaseDirection(), ZETMathVector(-1, 0, 0)));
    copy->SetVerticalMirror(false); // and it can be worked out anew from what was loaded
    QVERIFY(ZETOpenModel::Update(*copy));
    QVERIFY(IsAlong(copy->GetBaseDirection(), ZETMathVector(1, 0, 0)));
}

QTEST_GUILESS_MAIN(TestLaser3DTextOnSupport)
#include "TestLaser3DTextOnSupport.moc"
