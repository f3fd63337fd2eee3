#include "display/ZETLaserRenderer.h"

#include "features/ZETLaser3DText.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"
#include "tests/support/TestJob.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>
#include <ZETVisualization/ZETVisEnvironment.h>
#include <ZETVisualization/ZETVisOptions.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRep.h>
#include <ZETVisualization/ZETVisVectorText.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QTest>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using Options = ZETLaserOptions;

namespace
{
/*! What an object shows: its primitives with their options, by index. */
struct Content {
    explicit Content(const ZETVisVirtualObject& object) { object.GetRep()->GetPrimitives(primitives, options); }

    QList<const ZETVisPrimitive*> primitives;
    QList<ZETVisOptions> options;
};

QString Describe(const ZETMathPoint& point)
{
    return u"%1,%2,%3"_s.arg(point.GetX()).arg(point.GetY()).arg(point.GetZ());
}

/*! "pairs 0,0,0 1,0,0", "run ..." or "dots ...". */
QString Describe(const ZETVisPrimitive& primitive)
{
    QStringList words;
    if (const auto* lines = qobject_cast<const ZETVisPolylinePrimitive*>(&primitive))
        words += lines->GetStructure() == ZETVisPolylinePrimitive::StructurePairs ? u"pairs"_s : u"run"_s;
    else if (qobject_cast<const ZETVisPointPrimitive*>(&primitive))
        words += u"dots"_s;
    for (const ZETMathPoint& point : primitive.GetPoints().points)
        words += Describe(point);
    return words.join(u' ');
}

QStringList Describe(const ZETVisVirtualObject& object)
{
    QStringList texts;
    for (const ZETVisPrimitive* primitive : Content(object).primitives)
        texts += Describe(*primitive);
    return texts;
}

QString Describe(const ZETVisOptions& options)
{
    return u"%1 width %2 symbol %3 depth %4 priority %5 fixed %6"_s.arg(options.GetColor().name(QColor::HexArgb))
        .arg(options.GetLineThickness())
        .arg(options.GetPointSymbol())
        .arg(options.IsDepthEnabled())
        .arg(options.GetPriority())
        .arg(options.IsFixedPerspective());
}

/*! A job with a scene and its renderer. */
class Stage
{
public:
    explicit Stage(const QString& jobText)
        : job(jobText)
    {
        job.GetOptions().SetEnvironment(scene.get());
        job.GetOptions().SetNormalVectorSize(10.0);
        renderer = std::make_unique<ZETLaserRenderer>(&job.GetOptions(), job.GetTree());
    }

    /*! Renders and returns all objects by label of their ply and source type, as "P1:0", with what they show. */
    QMap<QString, QStringList> Render()
    {
        renderer->Render();
        return GetShown();
    }
    QMap<QString, QStringList> GetShown() const
    {
        QMap<QString, QStringList> shown;
        ForEach([&](const QString& key, const ZETVisVirtualObject& object) { shown[key] = Describe(object); });
        return shown;
    }
    const ZETVisVirtualObject* Find(const QString& wanted) const
    {
        const ZETVisVirtualObject* found = nullptr;
        ForEach([&](const QString& key, const ZETVisVirtualObject& object) {
            if (key == wanted)
                found = &object;
        });
        return found;
    }
    QList<ZETVisVirtualObject*> GetSceneObjects() const { return ZETOpenScene::GetObjects(*scene); }

    /*! All entities of a class in the tree, in order. */
    template <typename Entity>
    QList<Entity*> All() const
    {
        return job.GetTree()->findChildren<Entity*>();
    }
    void SetSourceType(ZETLaserEntity* entity, int type) const
    {
        entity->setProperty(ZETLaserEntityProperties::sourceType, type);
    }

    TestJob job;
    std::unique_ptr<ZETVisEnvironment> scene = std::make_unique<ZETVisEnvironment>();
    std::unique_ptr<ZETLaserRenderer> renderer;

private:
    template <typename Visit>
    void ForEach(Visit visit) const
    {
        const ZETLaserRenderer::VisObjects objects = renderer->GetVisObjects();
        for (auto ply = objects.cbegin(); ply != objects.cend(); ++ply) {
            for (auto entry = ply->cbegin(); entry != ply->cend(); ++entry)
                visit(u"%1:%2"_s.arg(ply.key()->GetLabel()).arg(entry.key()), **entry);
        }
    }
};

using Shown = QMap<QString, QStringList>;
} // namespace

class TestLaserRenderer : public QObject
{
    Q_OBJECT

private slots:
    void openCurveBecomesPairs();
    void closedCurveReturnsToItsStart();
    void closedCurveOfTwoPoints();
    void curveOfOnePoint_data();
    void curveOfOnePoint();
    void curveWithoutPointsMakesAnEmptyObject();
    void pointHasAStickOrADot();
    void normalVectorSizeScalesTheNormal();
    void offsetPointsAreShown();
    void closingSegmentNeedsBothOffsetPoints();
    void curvesAreDrawnWithTheirOptions();
    void normalsTakeTheColorOfTheOptions();

    void normalsOfPlyCurvesAreAnObjectOfTheirOwn();
    void normalsOfOtherCurvesStayWithThem_data();
    void normalsOfOtherCurvesStayWithThem();
    void curvesOfExtraGeometryShowWithThePly();
    void plyHasAnObjectForEachSourceType();
    void curvesOfOnePlyAreGathered();
    void pliesAndSubPliesHaveObjectsOfTheirOwn();
    void ownerIsTheNearestPlyAbove();
    void curveBelowNoPlyIsNotShown();
    void plyWithANullObjectIsNotShown();
    void treeOfGroupsShowsNothing();
    void emptyTreeLeavesTheObjectsAsTheyAre();
    void leavesOfTheRootAreNotShown();

    void textBecomesRunsOnItsPlane();
    void textHasItsSizeAndTwoSizesFromLineToLine();
    void textIsDrawnWithItsOptions();
    void textIsEvaluatedForItsPly();
    void textOfASubPlyIsEvaluatedForIt();
    void textOfAGroupWithoutPlyIsShownAsTyped();
    void textWithoutDirectionsThrows();
    void textWithoutSourceTypeShowsWithThePly();
    void textBelowNoPlyIsNotShown();
    void parameterHasNoPicture();

    void objectsAreBornHiddenInTheScene();
    void renderingTwiceLeavesTheFirstObjectsInTheScene();
    void renderingAgainKeepsObjectsOfPliesThatLeftTheTree();
    void erasingTakesAllObjectsOutOfTheScene();
    void erasingBeforeRenderingDoesNothing();
    void renderingAfterErasingStartsAnew();
    void sceneMayBeGone();
    void sceneMayGoBeforeErasing();
    void modelMayBeMissing();
};

void TestLaserRenderer::openCurveBecomesPairs()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 1,0,0 1,2,0 1,2,3 } }"_s);
    QCOMPARE(stage.Render(),
             (Shown{{u"P1:0"_s, {u"pairs 0,0,0 1,0,0 1,0,0 1,2,0 1,2,0 1,2,3"_s, u"dots 0,0,0 1,0,0 1,2,0 1,2,3"_s}}}));
}

void TestLaserRenderer::closedCurveReturnsToItsStart()
{
    Stage stage(u"ply P1 { contour { closed 0,0,0 1,0,0 1,2,0 } }"_s);
    QCOMPARE(stage.Render().value(u"P1:0"_s),
             (QStringList{u"pairs 0,0,0 1,0,0 1,0,0 1,2,0 1,2,0 0,0,0"_s, u"dots 0,0,0 1,0,0 1,2,0"_s}));
}

void TestLaserRenderer::closedCurveOfTwoPoints()
{
    Stage stage(u"ply P1 { contour { closed 0,0,0 1,0,0 } }"_s);
    QCOMPARE(stage.Render().value(u"P1:0"_s), (QStringList{u"pairs 0,0,0 1,0,0 1,0,0 0,0,0"_s, u"dots 0,0,0 1,0,0"_s}));
}

void TestLaserRenderer::curveOfOnePoint_data()
{
    QTest::addColumn<QString>("curve");
    QTest::addColumn<Shown>("shown");
    const QStringList withDot{u"pairs 5,6,7"_s, u"dots 5,6,7"_s};
    QTest::newRow("open") << u"open 5,6,7"_s << Shown{{u"P1:0"_s, withDot}};
    QTest::newRow("closed") << u"closed 5,6,7"_s << Shown{{u"P1:0"_s, withDot}};
    QTest::newRow("with a normal") << u"open 5,6,7/0,0,1"_s
                                   << Shown{{u"P1:0"_s, {u"pairs 5,6,7"_s}}, {u"P1:3"_s, {u"pairs 5,6,7 5,6,17"_s}}};
}

void TestLaserRenderer::curveOfOnePoint()
{
    QFETCH(QString, curve);
    Stage stage(u"ply P1 { contour { "_s + curve + u" } }"_s);
    QTEST(stage.Render(), "shown");
}

void TestLaserRenderer::curveWithoutPointsMakesAnEmptyObject()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    stage.All<ZETLaserCurve>().first()->GetPoints().clear();
    QCOMPARE(stage.Render(), (Shown{{u"P1:0"_s, {}}}));
}

void TestLaserRenderer::pointHasAStickOrADot()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 1,0,0 2,0,0/0,1,0 } }"_s);
    QCOMPARE(stage.Render(), (Shown{{u"P1:0"_s, {u"pairs 0,0,0 1,0,0 1,0,0 2,0,0"_s, u"dots 1,0,0"_s}},
                                    {u"P1:3"_s, {u"pairs 0,0,0 0,0,10 2,0,0 2,10,0"_s}}}));
}

void TestLaserRenderer::normalVectorSizeScalesTheNormal()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,2 } }"_s);
    stage.job.GetOptions().SetNormalVectorSize(-2.5);
    QCOMPARE(stage.Render().value(u"P1:3"_s), (QStringList{u"pairs 0,0,0 0,0,-5"_s}));
}

void TestLaserRenderer::offsetPointsAreShown()
{
    Stage stage(u"ply P1 { contour { closed 0,0,0/0,0,1@0,0,4 1,0,0@1,0,4 1,1,0@1,1,4 } }"_s);
    QCOMPARE(stage.Render(),
             (Shown{{u"P1:0"_s, {u"pairs 0,0,4 1,0,4 1,0,4 1,1,4 1,1,4 0,0,4"_s, u"dots 1,0,4 1,1,4"_s}},
                    {u"P1:3"_s, {u"pairs 0,0,4 0,0,14"_s}}}));
}

void TestLaserRenderer::closingSegmentNeedsBothOffsetPoints()
{
    Stage first(u"ply P1 { contour { closed 0,0,0@0,0,4 1,0,0 1,1,0 } }"_s);
    QCOMPARE(first.Render().value(u"P1:0"_s).first(), u"pairs 0,0,4 1,0,0 1,0,0 1,1,0 1,1,0 0,0,0"_s);
    Stage last(u"ply P1 { contour { closed 0,0,0 1,0,0 1,1,0@1,1,4 } }"_s);
    QCOMPARE(last.Render().value(u"P1:0"_s).first(), u"pairs 0,0,0 1,0,0 1,0,0 1,1,4 1,1,0 0,0,0"_s);
}

void TestLaserRenderer::curvesAreDrawnWithTheirOptions()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 1,0,0 } }"_s);
    stage.Render();
    const Content curve(*stage.Find(u"P1:0"_s));
    QCOMPARE(curve.options.size(), 2);
    QCOMPARE(Describe(curve.options[0]), u"#ff00ff00 width 3 symbol 0 depth 0 priority 100 fixed 0"_s);
    QCOMPARE(Describe(curve.options[1]), u"#ff00ff00 width 1 symbol 0 depth 0 priority 100 fixed 1"_s);
    const Content normals(*stage.Find(u"P1:3"_s));
    QCOMPARE(normals.options.size(), 1);
    QCOMPARE(Describe(normals.options[0]), u"#ff00ff00 width 2 symbol 0 depth 0 priority 100 fixed 0"_s);
}

void TestLaserRenderer::normalsTakeTheColorOfTheOptions()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 1,0,0 } }"_s);
    stage.job.GetOptions().SetNormalVectorColor(QColor(255, 1, 2, 128));
    stage.Render();
    const Content curve(*stage.Find(u"P1:0"_s));
    QCOMPARE(curve.options[0].GetColor(), QColor(0, 255, 0, 255)); // lines are always green
    QCOMPARE(curve.options[1].GetColor(), QColor(255, 1, 2, 128));
    QCOMPARE(Content(*stage.Find(u"P1:3"_s)).options[0].GetColor(), QColor(255, 1, 2, 128));
}

void TestLaserRenderer::normalsOfPlyCurvesAreAnObjectOfTheirOwn()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 1,0,0/0,0,1 } }"_s);
    stage.SetSourceType(stage.All<ZETLaserCurve>().first(), Options::SourcePly); // the same as without
    QCOMPARE(stage.Render(),
             (Shown{{u"P1:0"_s, {u"pairs 0,0,0 1,0,0"_s}}, {u"P1:3"_s, {u"pairs 0,0,0 0,0,10 1,0,0 1,0,10"_s}}}));
}

void TestLaserRenderer::normalsOfOtherCurvesStayWithThem_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("extra geometry") << int(Options::SourceExtraGeometry);
    QTest::newRow("rosette") << int(Options::SourceRosette);
    QTest::newRow("normals") << int(Options::SourceNormals);
    QTest::newRow("seed curve") << int(Options::SourceSeedCurve);
}

void TestLaserRenderer::normalsOfOtherCurvesStayWithThem()
{
    QFETCH(int, type);
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 1,0,0 } }"_s);
    stage.SetSourceType(stage.All<ZETLaserCurve>().first(), type);
    QCOMPARE(stage.Render(),
             (Shown{{u"P1:%1"_s.arg(type), {u"pairs 0,0,0 1,0,0"_s, u"dots 1,0,0"_s, u"pairs 0,0,0 0,0,10"_s}}}));
}

void TestLaserRenderer::curvesOfExtraGeometryShowWithThePly()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 1,0,0 } contour { open 0,5,0/0,0,1 1,5,0/0,0,1 } }"_s);
    // The source type of extra geometry stands on its contour, which no curve inherits.
    stage.SetSourceType(stage.All<ZETLaserContour>().last(), Options::SourceExtraGeometry);
    QCOMPARE(stage.Render(),
             (Shown{{u"P1:0"_s, {u"pairs 0,0,0 1,0,0"_s, u"dots 0,0,0 1,0,0"_s, u"pairs 0,5,0 1,5,0"_s}},
                    {u"P1:3"_s, {u"pairs 0,5,0 0,5,10 1,5,0 1,5,10"_s}}}));
}

void TestLaserRenderer::plyHasAnObjectForEachSourceType()
{
    Stage stage(uR"(ply P1 {
        contour { open 0,0,0/0,0,1 1,0,0/0,0,1  open 9,9,9 8,8,8  open 7,7,7/0,0,1 6,6,6/0,0,1 }
        text A 0,0,0 1,0,0 0,1,0 10 })"_s);
    const auto curves = stage.All<ZETLaserCurve>();
    stage.SetSourceType(curves[1], Options::SourceRosette);
    stage.SetSourceType(curves[2], Options::SourceSeedCurve);
    stage.SetSourceType(stage.All<ZETLaserTextEntity>().first(), Options::SourceExtraGeometry);
    QCOMPARE(stage.Render().keys(), (QList<QString>{u"P1:0"_s, u"P1:1"_s, u"P1:2"_s, u"P1:3"_s, u"P1:4"_s}));
    QCOMPARE(stage.GetSceneObjects().size(), 5);
}

void TestLaserRenderer::curvesOfOnePlyAreGathered()
{
    Stage stage(uR"(ply P1 { contour { open 0,0,0 1,0,0  open 2,0,0 3,0,0 } contour { open 4,0,0 5,0,0 } })"_s);
    QCOMPARE(stage.Render(), (Shown{{u"P1:0"_s,
                                     {u"pairs 0,0,0 1,0,0"_s, u"dots 0,0,0 1,0,0"_s, u"pairs 2,0,0 3,0,0"_s,
                                      u"dots 2,0,0 3,0,0"_s, u"pairs 4,0,0 5,0,0"_s, u"dots 4,0,0 5,0,0"_s}}}));
    QCOMPARE(stage.GetSceneObjects().size(), 1);
}

void TestLaserRenderer::pliesAndSubPliesHaveObjectsOfTheirOwn()
{
    Stage stage(uR"(
        layup L1 { sequence S1 { ply P1 { contour { open 0,0,0 } } subply P1.1 { contour { open 1,0,0 } } } }
        layup L2 { ply P2 { contour { open 2,0,0 } } })"_s);
    QCOMPARE(stage.Render(), (Shown{{u"P1:0"_s, {u"pairs 0,0,0"_s, u"dots 0,0,0"_s}},
                                    {u"P1.1:0"_s, {u"pairs 1,0,0"_s, u"dots 1,0,0"_s}},
                                    {u"P2:0"_s, {u"pairs 2,0,0"_s, u"dots 2,0,0"_s}}}));
}

void TestLaserRenderer::ownerIsTheNearestPlyAbove()
{
    Stage stage(u"ply P1 { ply P2 { group G { contour { open 1,0,0 } } } group H { contour { open 2,0,0 } } }"_s);
    QCOMPARE(stage.Render(), (Shown{{u"P1:0"_s, {u"pairs 2,0,0"_s, u"dots 2,0,0"_s}},
                                    {u"P2:0"_s, {u"pairs 1,0,0"_s, u"dots 1,0,0"_s}}}));
}

void TestLaserRenderer::curveBelowNoPlyIsNotShown()
{
    Stage stage(u"layup L1 { sequence S1 { group G { contour { open 0,0,0/0,0,1 1,0,0 } } } }"_s);
    QVERIFY(stage.Render().isEmpty());
    QVERIFY(stage.GetSceneObjects().isEmpty());
}

void TestLaserRenderer::plyWithANullObjectIsNotShown()
{
    Stage stage(uR"(nullply P1 { contour { open 0,0,0 } } nullsubply P2 { contour { open 1,0,0 } }
                        ply P3 { contour { open 2,0,0 } })"_s);
    QCOMPARE(stage.Render(), (Shown{{u"P3:0"_s, {u"pairs 2,0,0"_s, u"dots 2,0,0"_s}}}));
    QCOMPARE(stage.GetSceneObjects().size(), 1);
}

void TestLaserRenderer::treeOfGroupsShowsNothing()
{
    Stage stage(u"layup L1 { sequence S1 { ply P1 { } } }"_s);
    QVERIFY(stage.renderer->Render());
    QVERIFY(stage.renderer->GetVisObjects().isEmpty());
    QVERIFY(stage.GetSceneObjects().isEmpty());
}

void TestLaserRenderer::emptyTreeLeavesTheObjectsAsTheyAre()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    const Shown before = stage.Render();
    stage.job.GetTree()->Clear();
    QVERIFY(stage.renderer->Render());
    QCOMPARE(stage.GetShown(), before);
    QCOMPARE(before.size(), 1);
}

void TestLaserRenderer::leavesOfTheRootAreNotShown()
{
    Stage stage(QString{});
    const auto root = stage.job.GetTree();
    auto* ply = new ZETCompPly(stage.job.GetModel());
    root->setProperty(ZETLaserEntityProperties::ply, QVariant::fromValue(ply));
    const auto contour = QSharedPointer<ZETLaserContour>::create(root);
    const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
    curve->GetPoints().emplaceBack(ZETMathPoint(), ZETMathVector());
    contour->AddCurve(curve);
    root->AddContour(contour);
    QVERIFY(stage.Render().isEmpty());
}

void TestLaserRenderer::textBecomesRunsOnItsPlane()
{
    Stage stage(u"ply P1 { text H 100,200,300 0,1,0 0,0,1 10 }"_s);
    stage.SetSourceType(stage.All<ZETLaserTextEntity>().first(), Options::SourceExtraGeometry);

    ZETVisVectorText text;
    ZETMathPlane plane;
    plane.SetOrigin(ZETMathPoint(100.0, 200.0, 300.0));
    plane.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0));
    text.SetFont(ZETVisVectorFont(u"simple"_s));
    text.SetText(u"H"_s);
    text.SetTextSize(10.0);
    text.SetPlane(plane);
    QStringList expected;
    for (const ZETMathSetOfPoints& stroke : text.GetPolylines()) {
        QStringList words{u"run"_s};
        for (const ZETMathPoint& point : stroke.points) {
            QCOMPARE(point.GetX(), 100.0); // on the plane
            words += Describe(point);
        }
        expected += words.join(u' ');
    }
    QVERIFY(expected.size() >= 3); // the letter has three strokes
    QCOMPARE(stage.Render(), (Shown{{u"P1:1"_s, expected}}));
}

void TestLaserRenderer::textHasItsSizeAndTwoSizesFromLineToLine()
{
    // Of an upright stroke: 7 high, and 14 from one base line to the next.
    Stage stage(u"ply P1 { text \"I\\nI\" 1,2,3 1,0,0 0,1,0 7 }"_s);
    stage.Render();
    const auto primitives = Content(*stage.Find(u"P1:0"_s)).primitives;
    QCOMPARE(primitives.size(), 2);
    const ZETMathBoundingBox upper = primitives.first()->GetPoints().GetBoundingBox();
    const ZETMathBoundingBox lower = primitives.last()->GetPoints().GetBoundingBox();
    QCOMPARE(upper.GetUpperPoint().GetY(), 9.0);
    QCOMPARE(upper.GetLowerPoint().GetY(), 2.0);
    QCOMPARE(lower.GetUpperPoint().GetY(), -5.0);
    QCOMPARE(lower.GetLowerPoint().GetY(), -12.0);
}

void TestLaserRenderer::textIsDrawnWithItsOptions()
{
    Stage stage(u"ply P1 { text H 0,0,0 1,0,0 0,1,0 10 }"_s);
    stage.job.GetOptions().SetNormalVectorColor(Qt::red);
    stage.Render();
    const Content content(*stage.Find(u"P1:0"_s));
    QVERIFY(!content.primitives.isEmpty());
    QCOMPARE(content.options.size(), content.primitives.size());
    for (const ZETVisOptions& options : content.options)
        QCOMPARE(Describe(options), u"#ff00ff00 width 5 symbol 6 depth 0 priority 10 fixed 0"_s);
}

void TestLaserRenderer::textIsEvaluatedForItsPly()
{
    Stage macro(u"layup L1 { sequence S1 { ply P1 { text %SEQ%-%PLY% 0,0,0 1,0,0 0,1,0 10 } } }"_s);
    Stage plain(u"layup L1 { sequence S1 { ply P1 { text S1-P1 0,0,0 1,0,0 0,1,0 10 } } }"_s);
    QCOMPARE(macro.Render(), plain.Render());
    QVERIFY(!plain.GetShown().value(u"P1:0"_s).isEmpty());
}

void TestLaserRenderer::textOfASubPlyIsEvaluatedForIt()
{
    Stage macro(u"layup L1 { sequence S1 { ply P1 { subply A { text %PLY%%SUBPLY% 0,0,0 1,0,0 0,1,0 5 } } } }"_s);
    Stage plain(u"layup L1 { sequence S1 { ply P1 { subply A { text P1A 0,0,0 1,0,0 0,1,0 5 } } } }"_s);
    QCOMPARE(macro.Render(), plain.Render());
    QVERIFY(!plain.GetShown().value(u"A:0"_s).isEmpty());
}

void TestLaserRenderer::textOfAGroupWithoutPlyIsShownAsTyped()
{
    // It shows with the ply above its group, but macros are those of the group itself.
    Stage group(u"layup L1 { sequence S1 { ply P1 { group G { text %PLY% 0,0,0 1,0,0 0,1,0 5 } } } }"_s);
    Stage typed(u"layup L1 { sequence S1 { ply %PLY% { text %PLY% 0,0,0 1,0,0 0,1,0 5 } } }"_s);
    QCOMPARE(group.Render().value(u"P1:0"_s), typed.Render().value(u"%PLY%:0"_s));
    QVERIFY(!group.GetShown().value(u"P1:0"_s).isEmpty());
}

void TestLaserRenderer::textWithoutDirectionsThrows()
{
    // Meant: unlike the display object of the text, which isn't made then.
    Stage stage(u"ply P1 { text A 0,0,0 0,0,0 0,0,0 5 }"_s);
    QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, stage.renderer->Render());
}

void TestLaserRenderer::textWithoutSourceTypeShowsWithThePly()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } text I 0,0,0 1,0,0 0,1,0 10 }"_s);
    const Shown shown = stage.Render();
    QCOMPARE(shown.keys(), (QList<QString>{u"P1:0"_s}));
    QCOMPARE(shown.value(u"P1:0"_s).mid(0, 2), (QStringList{u"pairs 0,0,0"_s, u"dots 0,0,0"_s}));
    QVERIFY(shown.value(u"P1:0"_s).last().startsWith(u"run "_s));
}

void TestLaserRenderer::textBelowNoPlyIsNotShown()
{
    Stage stage(u"layup L1 { group G { text I 0,0,0 1,0,0 0,1,0 10 } }"_s);
    QVERIFY(stage.Render().isEmpty());
}

void TestLaserRenderer::parameterHasNoPicture()
{
    Stage stage(u"ply P1 { parameter message hello }"_s);
    QCOMPARE(stage.All<ZETLaserParameterEntity>().size(), 1);
    QVERIFY(stage.Render().isEmpty());
}

void TestLaserRenderer::objectsAreBornHiddenInTheScene()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 } }"_s);
    stage.Render();
    const QList<ZETVisVirtualObject*> objects = stage.GetSceneObjects();
    QCOMPARE(objects.size(), 2);
    for (const ZETVisVirtualObject* object : objects) {
        QVERIFY(!object->IsVisible());
        QCOMPARE(object->parent(), nullptr);
    }
    QVERIFY(objects.contains(stage.Find(u"P1:0"_s)));
    QVERIFY(objects.contains(stage.Find(u"P1:3"_s)));
}

void TestLaserRenderer::renderingTwiceLeavesTheFirstObjectsInTheScene()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    const Shown first = stage.Render();
    const ZETVisVirtualObject* object = stage.Find(u"P1:0"_s);
    QCOMPARE(stage.Render(), first);
    QVERIFY(stage.Find(u"P1:0"_s) != object);
    QCOMPARE(stage.GetSceneObjects().size(), 2);
    stage.renderer->Erase(); // reaches only what is in the map
    QCOMPARE(stage.GetSceneObjects().size(), 1);
    QCOMPARE(stage.GetSceneObjects().first(), object);
}

void TestLaserRenderer::renderingAgainKeepsObjectsOfPliesThatLeftTheTree()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    stage.Render();
    auto* other = new ZETCompPly(stage.job.GetModel());
    ZETOpenModel::SetLabel(*other, u"P2"_s);
    for (ZETLaserGroup* group : ChildrenOf<ZETLaserGroup>(*stage.job.GetTree()))
        group->setProperty(ZETLaserEntityProperties::ply, QVariant::fromValue(other));
    QCOMPARE(stage.Render().keys(), (QList<QString>{u"P1:0"_s, u"P2:0"_s}));
}

void TestLaserRenderer::erasingTakesAllObjectsOutOfTheScene()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 } } ply P2 { contour { open 1,0,0 } }"_s);
    stage.Render();
    QCOMPARE(stage.GetSceneObjects().size(), 3);
    stage.renderer->Erase();
    QVERIFY(stage.GetSceneObjects().isEmpty());
    QVERIFY(stage.renderer->GetVisObjects().isEmpty());
}

void TestLaserRenderer::erasingBeforeRenderingDoesNothing()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    stage.renderer->Erase();
    QVERIFY(stage.renderer->GetVisObjects().isEmpty());
}

void TestLaserRenderer::renderingAfterErasingStartsAnew()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    const Shown first = stage.Render();
    stage.renderer->Erase();
    QCOMPARE(stage.Render(), first);
    QCOMPARE(stage.GetSceneObjects().size(), 1);
}

void TestLaserRenderer::sceneMayBeGone()
{
    Stage stage(u"ply P1 { contour { open 0,0,0/0,0,1 } }"_s);
    stage.scene.reset();
    QCOMPARE(stage.Render().keys(), (QList<QString>{u"P1:0"_s, u"P1:3"_s}));
    const ZETLaserRenderer::VisObjects objects = stage.renderer->GetVisObjects();
    stage.renderer->Erase();
    QVERIFY(stage.renderer->GetVisObjects().isEmpty());
    for (const auto& ofPly : objects) // nobody else owns them
        qDeleteAll(ofPly);
}

void TestLaserRenderer::sceneMayGoBeforeErasing()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } }"_s);
    stage.Render();
    stage.scene.reset();
    stage.renderer->Erase();
    QVERIFY(stage.renderer->GetVisObjects().isEmpty());
}

void TestLaserRenderer::modelMayBeMissing()
{
    Stage stage(u"ply P1 { contour { open 0,0,0 } text %PLY% 0,0,0 1,0,0 0,1,0 10 }"_s);
    stage.job.RemoveModel();
    ZETLaserRenderer renderer(&stage.job.GetOptions(), stage.job.GetTree());
    QVERIFY(renderer.Render());
    QCOMPARE(renderer.GetVisObjects().size(), 1);
    renderer.Erase();
}

QTEST_GUILESS_MAIN(TestLaserRenderer)
#include "TestLaserRenderer.moc"
