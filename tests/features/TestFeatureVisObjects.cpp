#include "features/ZETLaser3DText_p.h"
#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaser3DTextVisObject.h"
#include "features/ZETLaserTarget.h"
#include "features/ZETLaserTargetVisObject.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"
#include "tests/features/FeatureModel.h"
#include "tests/support/TestThrown.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisVectorText.h>

#include <QTest>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! What a representation holds. */
struct Content {
    explicit Content(const ZETVisRepGraphics& graphics) { graphics.GetPrimitives(primitives, options); }

    QList<const ZETVisPrimitive*> primitives;
    QList<ZETVisOptions> options;
};

/*! The representation that the display object of \a feature makes; null if it makes none. */
std::unique_ptr<ZETVisRepGraphics> MakeRepresentation(ZETFeatObject& feature)
{
    const ZETFeatEnvironment environment;
    const auto object = ZETOpenScene::CreateVisObject(environment, feature);
    return std::unique_ptr<ZETVisRepGraphics>(object->CreateRepresentation());
}

ZETLaser3DTextByAxis* MakeText(FeatureModel& model, const QString& content)
{
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(1, 2, 3));
    axis.SetDirections(ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0), ZETMathVector(0, 1, 0));
    auto* system = model.Make<ZETWFAxisSystem>();
    ZETOpenWireframe::SetAxis(*system, axis);
    auto* text = model.Make<ZETLaser3DTextByAxis>();
    text->SetAxis(system);
    text->SetText(content);
    text->SetSize(5.0);
    return text;
}

/*! The strokes of \a content as tall as \a size, that start at \a origin, run along \a run and stand in \a up. */
QList<ZETMathSetOfPoints> GetStrokes(const QString& content, double size, const ZETMathPoint& origin,
                                     const ZETMathVector& run, const ZETMathVector& up)
{
    ZETMathPlane plane;
    plane.SetOrigin(origin);
    plane.SetDirections(run, up);
    ZETVisVectorText text;
    text.SetFont(ZETVisVectorFont(u"simple"_s));
    text.SetAnchor(static_cast<ZETVisVectorText::Anchor>(0));
    text.SetOrientation(static_cast<ZETVisVectorText::Orientation>(1));
    text.SetJustification(static_cast<ZETVisVectorText::Justification>(0));
    text.SetDecorations({});
    text.SetText(content);
    text.SetTextSize(size);
    text.SetLineSpacing(2.0);
    text.SetPlane(plane);
    return text.GetPolylines();
}

/*! Whether the primitives are these runs, in order. */
bool AreRuns(const QList<const ZETVisPrimitive*>& primitives, const QList<ZETMathSetOfPoints>& strokes)
{
    if (primitives.size() != strokes.size())
        return false;
    for (qsizetype i = 0; i < primitives.size(); ++i) {
        const auto* run = qobject_cast<const ZETVisPolylinePrimitive*>(primitives.at(i));
        if (!run || int(run->GetStructure()) != 1 || run->GetPoints().points != strokes.at(i).points)
            return false;
    }
    return true;
}

/*! A 3D text whose place is what a test says. */
class OddText final : public ZETLaser3DText
{
public:
    explicit OddText(ZETFeatObject* parent)
        : ZETLaser3DText(std::make_unique<ZETLaser3DTextPrivate>(), parent)
    {
    }
    ZETMathPoint GetBasePoint() const override { return {}; }
    ZETMathVector GetBaseDirection() const override
    {
        if (throwsOther)
            throw std::runtime_error("other");
        return run;
    }
    ZETMathVector GetUpDirection() const override { return up; }

    bool throwsOther = false;
    ZETMathVector run{1, 0, 0};
    ZETMathVector up{0, 1, 0};
};
} // namespace

class TestFeatureVisObjects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsShownAsItsStrokes();
    void textIsDrawnAsTyped();
    void textHasOneOptionsRecordAPrimitive();
    void blankTextShowsNoPrimitive();
    void textWithoutAxisIsNotShown();
    void textWithAZeroDirectionIsNotShown_data();
    void textWithAZeroDirectionIsNotShown();
    void otherExceptionsGoOn();
    void textOnSupportIsShownAtItsLastPlane();
    void targetIsOneGreenMarker();
    void targetWithoutPointIsShownAtTheOrigin();
    void objectOutlivesItsFeature();
    void otherFeaturesAreRefused_data();
    void otherFeaturesAreRefused();
};

void TestFeatureVisObjects::textIsShownAsItsStrokes()
{
    FeatureModel model;
    const auto graphics = MakeRepresentation(*MakeText(model, u"Ply 1\nleft"_s)); // two lines, two text sizes apart
    QVERIFY(graphics);
    const auto strokes =
        GetStrokes(u"Ply 1\nleft"_s, 5.0, ZETMathPoint(1, 2, 3), ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0));
    QVERIFY(strokes.size() > 4);
    QVERIFY(AreRuns(Content(*graphics).primitives, strokes));
}

void TestFeatureVisObjects::textIsDrawnAsTyped()
{
    FeatureModel model;
    const auto graphics = MakeRepresentation(*MakeText(model, u"%PLY%"_s));
    QVERIFY(graphics);
    QVERIFY(AreRuns(Content(*graphics).primitives, GetStrokes(u"%PLY%"_s, 5.0, ZETMathPoint(1, 2, 3),
                                                              ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0))));
}

void TestFeatureVisObjects::textHasOneOptionsRecordAPrimitive()
{
    FeatureModel model;
    const auto graphics = MakeRepresentation(*MakeText(model, u"AB"_s));
    const Content content(*graphics);
    QVERIFY(content.primitives.size() > 1);
    QCOMPARE(content.options.size(), content.primitives.size());
    for (const ZETVisOptions& options : content.options) {
        QCOMPARE(options.GetColor(), QColor(255, 128, 64, 255));
        QCOMPARE(int(options.GetPointSymbol()), 6);
        QCOMPARE(options.IsDepthEnabled(), false);
        QCOMPARE(options.GetPriority(), 10);
    }
}

void TestFeatureVisObjects::blankTextShowsNoPrimitive()
{
    FeatureModel model;
    const auto graphics = MakeRepresentation(*MakeText(model, QString()));
    QVERIFY(graphics);
    QVERIFY(Content(*graphics).primitives.isEmpty());
}

void TestFeatureVisObjects::textWithoutAxisIsNotShown()
{
    FeatureModel model;
    auto* text = model.Make<ZETLaser3DTextByAxis>();
    text->SetText(u"A"_s);
    QVERIFY(!MakeRepresentation(*text));
}

void TestFeatureVisObjects::textWithAZeroDirectionIsNotShown_data()
{
    QTest::addColumn<bool>("hasRun");
    QTest::addColumn<bool>("hasUp");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("both directions") << true << true << true;
    QTest::newRow("no base direction") << false << true << false;
    QTest::newRow("no up direction") << true << false << false;
}

void TestFeatureVisObjects::textWithAZeroDirectionIsNotShown()
{
    QFETCH(bool, hasRun);
    QFETCH(bool, hasUp);
    QFETCH(bool, isShown);
    FeatureModel model;
    auto* text = new OddText(model.folder);
    text->SetText(u"A"_s);
    if (!hasRun)
        text->run = ZETMathVector();
    if (!hasUp)
        text->up = ZETMathVector();
    QCOMPARE(bool(MakeRepresentation(*text)), isShown);
}

void TestFeatureVisObjects::otherExceptionsGoOn()
{
    FeatureModel model;
    auto* text = new OddText(model.folder);
    text->throwsOther = true;
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, MakeRepresentation(*text));
}

void TestFeatureVisObjects::textOnSupportIsShownAtItsLastPlane()
{
    FeatureModel model;
    auto* text = model.Make<ZETLaser3DTextOnSupport>();
    text->SetText(u"A"_s);
    text->SetSupport(model.MakeGeometry(
        ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(ZETMathAxis(), -100, 100, -100, 100))));
    text->SetAnchorPoint(model.MakeGeometry(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(3, 4, 5))));
    text->SetDirection(
        model.MakeGeometry(ZETOpenBodyBuilder::MakePolyline({ZETMathPoint(0, 0, 0), ZETMathPoint(0, 50, 0)}, false)));
    QVERIFY(text->UpdateResult());
    text->SetSupport(nullptr);
    QVERIFY(!text->UpdateResult());

    const auto graphics = MakeRepresentation(*text);
    QVERIFY(graphics);
    const auto strokes =
        GetStrokes(u"A"_s, 10.0, text->GetBasePoint(), text->GetBaseDirection(), text->GetUpDirection());
    QVERIFY(AreRuns(Content(*graphics).primitives, strokes));
    // Upright along Y, its foot at the anchor: it stands to the left of the run, at x from 3 down to -7.
    const ZETMathBoundingBox box = graphics->GetBoundingBox();
    QVERIFY(std::abs(box.GetUpperPoint().GetX() - 3.0) < 0.6);
    QVERIFY(std::abs(box.GetLowerPoint().GetX() + 7.0) < 0.6);
    QVERIFY(box.GetLowerPoint().GetY() > 3.9);
}

void TestFeatureVisObjects::targetIsOneGreenMarker()
{
    FeatureModel model;
    auto* target = model.Make<ZETLaserTarget>();
    target->SetPoint(model.MakeGeometry(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1, -2, 3.5))));
    const auto graphics = MakeRepresentation(*target);
    QVERIFY(graphics);
    const Content content(*graphics);
    QCOMPARE(content.primitives.size(), 1);
    const auto* marker = qobject_cast<const ZETVisPointPrimitive*>(content.primitives.first());
    QVERIFY(marker);
    QCOMPARE(marker->GetPoints().points, QList<ZETMathPoint>{ZETMathPoint(1, -2, 3.5)});
    QCOMPARE(content.options.size(), 1);
    QCOMPARE(content.options.first().GetColor(), QColor(0, 255, 0, 255));
    QCOMPARE(int(content.options.first().GetPointSymbol()), 3);
    QCOMPARE(content.options.first().IsDepthEnabled(), false);
    QCOMPARE(content.options.first().GetPriority(), 10);
}

void TestFeatureVisObjects::targetWithoutPointIsShownAtTheOrigin()
{
    FeatureModel model;
    const auto graphics = MakeRepresentation(*model.Make<ZETLaserTarget>());
    QVERIFY(graphics);
    QCOMPARE(Content(*graphics).primitives.first()->GetPoints().points, QList<ZETMathPoint>{ZETMathPoint()});
}

void TestFeatureVisObjects::objectOutlivesItsFeature()
{
    FeatureModel model;
    const ZETFeatEnvironment environment;
    auto* text = MakeText(model, u"A"_s);
    auto* target = model.Make<ZETLaserTarget>();
    ZETLaser3DTextVisObject textObject(&environment, text);
    ZETLaserTargetVisObject targetObject(&environment, target);
    delete text;
    delete target;
    QCOMPARE(textObject.CreateRepresentation(), nullptr);
    QCOMPARE(targetObject.CreateRepresentation(), nullptr);
}

void TestFeatureVisObjects::otherFeaturesAreRefused_data()
{
    QTest::addColumn<bool>("isNull");
    QTest::newRow("other class") << false;
    QTest::newRow("null") << true;
}

void TestFeatureVisObjects::otherFeaturesAreRefused()
{
    QFETCH(bool, isNull);
    FeatureModel model;
    const ZETFeatEnvironment environment;
    ZETFeatObject* feature = isNull ? nullptr : model.folder;
    QCOMPARE(Thrown([&] { const ZETLaser3DTextVisObject object(&environment, feature); }), u"not a laser 3D text"_s);
    QCOMPARE(Thrown([&] { const ZETLaserTargetVisObject object(&environment, feature); }), u"not a target"_s);
}

QTEST_GUILESS_MAIN(TestFeatureVisObjects)
#include "TestFeatureVisObjects.moc"
