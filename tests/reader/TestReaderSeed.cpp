#include "features/ZETLaserFlatGeometry.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/FakeCurve.h"
#include "tests/reader/ReaderModel.h"
#include "tests/support/TestThrown.h"

#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>

#include <QPointer>
#include <QTranslator>
#include <QtTest>

#include <cmath>
#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace ZETOpenComposites;

namespace
{

const QString twoPlies = u"layup L { sequence S { ply A ply P { strategy One { pattern Flat } } } }"_s;

/*! Two plies with a boundary each, the second with a strategy. */
class SeedModel : public ReaderModel
{
public:
    SeedModel()
        : ReaderModel(twoPlies)
    {
        SetTool(MakeFlatTool());
        for (const QString& ply : {u"A"_s, u"P"_s})
            SetBoundary(ply, {{0.0, 0.0, 0.0}, {50.0, 0.0, 0.0}, {0.0, 50.0, 0.0}}, true);
        AddRosette(u"L"_s, ZETMathAxis());
        options.SetUseSeedCurve(1);
        SetIncluded(*configuration, *Ply(u"A"_s), nullptr);
    }
    ZETCompStrategy* One() { return Strategy(u"One"_s); }
    ZETOpenRef<ZETOpenCurveOnSurface> MakeLine(const QList<ZETMathPoint>& points, bool closed = false)
    {
        return ZETOpenCurveOnSurface::MakePolyline(tool, points, closed);
    }
    void SetSeedCurveBody(std::unique_ptr<ZETTopBody> body)
    {
        SetSeedCurve(*One(), AddGeometry(u"Seed Curve"_s, std::move(body)));
    }
    void SetSeedPointBody(std::unique_ptr<ZETTopBody> body)
    {
        SetSeedPoint(*One(), AddGeometry(u"Seed"_s, std::move(body)));
    }
    ZETCompFlatCurve* AddFlatCurve(const QList<ZETMathPoint>& points, ZETFeatGeometry* source)
    {
        auto* const curve = Add<ZETCompFlatCurve>(Get<ZETCompFlatPattern>(u"Flat"_s), u"Image"_s);
        SetBody(*curve, ZETOpenBodyBuilder::MakePolyline(points, false));
        SetSource(*curve, source);
        return curve;
    }
    ZETCompFlatPoint* AddFlatPoint(double x, ZETFeatGeometry* source)
    {
        auto* const point = Add<ZETCompFlatPoint>(Get<ZETCompFlatPattern>(u"Flat"_s), u"Image"_s);
        SetBody(*point, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(x, 0.0, 0.0)));
        SetSource(*point, source);
        return point;
    }
};

/*! The positions of a curve, without the normals upwards. */
QString Positions(const ZETLaserCurve& curve)
{
    return PointsText(curve).remove(u"/0,0,1"_s);
}

/*! Translates in the context of the reader and in no other, for as long as it lives. */
class ReaderTranslator : public QTranslator
{
public:
    explicit ReaderTranslator(const QHash<QString, QString>& words)
        : translations(words)
    {
        QCoreApplication::installTranslator(this);
    }
    ~ReaderTranslator() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        if (qstrcmp(context, "ZETLaserReaderComposites") != 0)
            return QString();
        asked.insert(QString::fromLatin1(source));
        return translations.value(QString::fromLatin1(source));
    }
    bool isEmpty() const override { return false; }
    const QSet<QString>& GetAsked() const { return asked; }

private:
    QHash<QString, QString> translations;
    mutable QSet<QString> asked;
};

std::unique_ptr<ZETTopBody> MakeTwoPoints(const ZETOpenRef<ZETOpenSurface>& tool)
{
    ZETOpenBodyBuilder builder;
    builder.AddPoints({ZETOpenComboPoint::Make(ZETMathPoint(), {tool}),
                       ZETOpenComboPoint::Make(ZETMathPoint(1.0, 0.0, 0.0), {tool})});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> MakeTwoNets()
{
    ZETOpenBodyBuilder builder;
    for (const double y : {0.0, 5.0})
        builder.AddNet({{ZETOpenComboCurve::MakePolyline({{0.0, y, 0.0}, {1.0, y, 0.0}}), false}});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> MakeEmptyNet()
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> MakeTwoFaces()
{
    ZETOpenBodyBuilder builder;
    builder.AddSkin({MakeFlatTool(), MakeFlatTool()});
    return builder.Build();
}

using Fault = std::function<void(SeedModel&)>;

} // namespace

Q_DECLARE_METATYPE(Fault)

class TestReaderSeed : public QObject
{
    Q_OBJECT

private slots:
    void aSeedCurveIsReadLikeABoundary();
    void aClosedSeedCurveIsClosed();
    void aSeedCurveIsCutByTheMaximumLength();
    void normalsOfASeedCurvePointToTheLayupsSide();
    void edgesOfASeedCurveRunThrough_data();
    void edgesOfASeedCurveRunThrough();
    void theSeedCurveIsSkippedIfItIsNotAskedFor();
    void theFinalSeedCurveCountsWithTheCompleteOffset();
    void theFinalSeedCurveIsHeldAndGivenBack();
    void theAssembledSeedCurveGoesWithTheRead();
    void aMissingSeedCurveIsTold_data();
    void aMissingSeedCurveIsTold();

    void structuralFaultsEndTheRead_data();
    void structuralFaultsEndTheRead();
    void structuralFaultsAreNotLookedForWithTheCompleteOffset_data();
    void structuralFaultsAreNotLookedForWithTheCompleteOffset();
    void aMissingSeedPointEndsTheReadThoughItIsNotUsed();
    void theSurfaceUpdateCountsWithTheCompleteOffsetOnly();

    void theFlatSeedCurveIsTheImageOfItsSource();
    void theLastFlatImageOfASeedCurveCounts();
    void aMissingFlatSeedCurveIsTold();
    void aStrategyWithoutSeedCurveMatchesAnImageWithoutSource();
    void theFlatSeedCurveIsCarriedToTheFlatteningPlane();
    void withoutAStrategyThereIsNoFlatSeedCurveAndNoMessage();

    void textsAreTranslatedInTheContextOfTheReader();

    void theFirstFlatImageOfASeedPointCounts();
    void theFlattenedSeedPointMayBeMissing();
    void aStrategyWithoutSeedPointMatchesAPointWithoutSource();
};

// ---- In space ----

void TestReaderSeed::aSeedCurveIsReadLikeABoundary()
{
    SeedModel model;
    model.SetSeedCurveBody(
        ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {4.0, 9.0, 0.0}})));
    QVERIFY(model.Read());
    const auto curve = model.Curve(u"P"_s, 1);
    QCOMPARE(curve->GetName(), u"P-Seedcurve"_s);
    QCOMPARE(curve->property(ZETLaserEntityProperties::sourceType), QVariant(4));
    QCOMPARE(curve->IsClosed(), false);
    QCOMPARE(PointsText(*curve), u"1,0,0/0,0,1 4,0,0/0,0,1 1,0,0/0,0,1"_s);
}

void TestReaderSeed::aClosedSeedCurveIsClosed()
{
    SeedModel model;
    model.SetSeedCurveBody(
        ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {4.0, 9.0, 0.0}}, true)));
    QVERIFY(model.Read());
    const auto curve = model.Curve(u"P"_s, u"P-Seedcurve"_s);
    QCOMPARE(curve->IsClosed(), true);
    QCOMPARE(Positions(*curve), u"4,0,0 4,9,0 1,0,0"_s);
}

void TestReaderSeed::aSeedCurveIsCutByTheMaximumLength()
{
    SeedModel model;
    model.SetSeedCurveBody(
        ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {4.0, 9.0, 0.0}})));
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(4.5);
    QVERIFY(model.Read());
    QCOMPARE(Positions(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"1,0,0 4,0,0 4,0,0 4,4.5,0 4,9,0 1,0,0"_s);
}

void TestReaderSeed::normalsOfASeedCurvePointToTheLayupsSide()
{
    SeedModel model;
    SetLayupDirection(*model.Layup(u"L"_s), false);
    model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}})));
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"1,0,0/0,0,-1 1,0,0/0,0,-1"_s);
}

void TestReaderSeed::edgesOfASeedCurveRunThrough_data()
{
    QTest::addColumn<bool>("imageReversed");
    QTest::addColumn<bool>("edgeReversed");
    QTest::newRow("all along") << false << false;
    QTest::newRow("edge against the net") << false << true;
    QTest::newRow("image against the edge") << true << false;
    QTest::newRow("both against") << true << true;
}

void TestReaderSeed::edgesOfASeedCurveRunThrough()
{
    QFETCH(bool, imageReversed);
    QFETCH(bool, edgeReversed);
    // The net runs (0,0) to (10,0), then on to (10,10). The image of the second edge runs with it if it is turned round
    // twice or not at all.
    SeedModel model;
    const bool imageRunsAlong = imageReversed == edgeReversed;
    const QList<ZETMathPoint> along{{10.0, 0.0, 0.0}, {10.0, 10.0, 0.0}};
    const QList<ZETMathPoint> against{{10.0, 10.0, 0.0}, {10.0, 0.0, 0.0}};
    ZETOpenBodyBuilder builder;
    builder.AddNet(
        {{ZETOpenComboCurve::MakeFromImage(model.MakeLine({{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}}), false), false},
         {ZETOpenComboCurve::MakeFromImage(model.MakeLine(imageRunsAlong ? along : against), imageReversed),
          edgeReversed}});
    model.SetSeedCurveBody(builder.Build());
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(10.0);
    QVERIFY(model.Read());
    // The parts show where the curve ends, which the end of the last segment doesn't.
    QCOMPARE(Positions(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"0,0,0 10,0,0 10,0,0 10,10,0 0,0,0"_s);
}

void TestReaderSeed::theSeedCurveIsSkippedIfItIsNotAskedFor()
{
    SeedModel model;
    model.options.SetUseSeedCurve(0);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderSeed::theFinalSeedCurveCountsWithTheCompleteOffset()
{
    SeedModel model;
    model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}})));
    SetFinalSeedCurve(*model.One(), model.MakeLine({{7.0, 0.0, 0.0}, {8.0, 0.0, 0.0}}).Get());
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QVERIFY(model.Read());
    QCOMPARE(Positions(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"7,0,0 7,0,0"_s);
    model.options.SetOffsetMode(ZETLaserOptions::OffsetDebulk);
    QVERIFY(model.Read());
    QCOMPARE(Positions(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"1,0,0 1,0,0"_s);
}

void TestReaderSeed::theFinalSeedCurveIsHeldAndGivenBack()
{
    SeedModel model;
    QPointer<QObject> line;
    {
        const auto made = model.MakeLine({{7.0, 0.0, 0.0}, {8.0, 0.0, 0.0}});
        line = made.Get();
        SetFinalSeedCurve(*model.One(), made.Get());
    }
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QVERIFY(model.Read());
    QVERIFY2(line, "the strategy still holds it");
    SetFinalSeedCurve(*model.One(), nullptr);
    QVERIFY2(!line, "the reader holds it no more");
}

void TestReaderSeed::theAssembledSeedCurveGoesWithTheRead()
{
    // It holds the curves that it is made of, so these stay if it does.
    SeedModel model;
    QPointer<QObject> line;
    {
        const auto made = model.MakeLine({{7.0, 0.0, 0.0}, {8.0, 0.0, 0.0}});
        line = made.Get();
        model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(made));
    }
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1, P-Seedcurve"_s);
    QVERIFY2(line, "the model still holds it");
    model.Get<ZETOpenGeometryFeature>(u"Seed Curve"_s)->SetBody(nullptr);
    QVERIFY2(!line, "nobody else does");
}

void TestReaderSeed::aMissingSeedCurveIsTold_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("no strategy") << Fault(
        [](SeedModel& model) { SetIncluded(*model.configuration, *model.Ply(u"P"_s), nullptr); });
    QTest::newRow("a subdivision") << Fault([](SeedModel& model) {
        auto* const subdivision = ReaderModel::Add<ZETCompSubdivision>(model.Ply(u"P"_s), u"D"_s);
        SetIncluded(*model.configuration, *model.Ply(u"P"_s), subdivision);
    });
    QTest::newRow("no seed curve") << Fault([](SeedModel& model) { SetSeedCurve(*model.One(), nullptr); });
    QTest::newRow("no final seed curve") << Fault(
        [](SeedModel& model) { model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete); });
    QTest::newRow("a seed curve on no surface") << Fault([](SeedModel& model) {
        model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
        const ZETOpenRef<FakeCurve> loose(new FakeCurve(nullptr, {{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}}, false));
        SetFinalSeedCurve(*model.One(), loose.Get());
    });
}

void TestReaderSeed::aMissingSeedCurveIsTold()
{
    QFETCH(Fault, fault);
    SeedModel model;
    model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}})));
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Messages(), QString());
    fault(model);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1"_s);
    QCOMPARE(model.Messages(), u"1: Could not get seed curve for P"_s);
}

// ---- Structural faults ----

void TestReaderSeed::structuralFaultsEndTheRead_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<int>("rosette");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, int rosette, const char* text, const Fault& fault) {
        QTest::newRow(name) << fault << rosette << QString::fromLatin1(text);
    };
    row("no seed point", 1, "strategy does not have a seed point",
        [](SeedModel& model) { SetSeedPoint(*model.One(), nullptr); });
    row("a seed point without body", 1, "seed point does not have a body",
        [](SeedModel& model) { model.SetSeedPointBody(nullptr); });
    row("two seed points", 1, "seed point does not have exactly one point",
        [](SeedModel& model) { model.SetSeedPointBody(MakeTwoPoints(model.tool)); });
    row("a seed point of no points", 1, "seed point does not have exactly one point",
        [](SeedModel& model) { model.SetSeedPointBody(ZETOpenBodyBuilder().Build()); });
    row("a seed curve without body", 0, "seed curve does not have a body",
        [](SeedModel& model) { model.SetSeedCurveBody(nullptr); });
    row("a seed curve of two nets", 0, "seed curve has more than one domain",
        [](SeedModel& model) { model.SetSeedCurveBody(MakeTwoNets()); });
    row("a seed curve of no nets", 0, "seed curve has more than one domain",
        [](SeedModel& model) { model.SetSeedCurveBody(ZETOpenBodyBuilder().Build()); });
    row("a seed curve of an empty net", 0, "seed curve does not have any edges",
        [](SeedModel& model) { model.SetSeedCurveBody(MakeEmptyNet()); });
    row("a seed curve of a point", 0, "seed curve does not have any edges",
        [](SeedModel& model) { model.SetSeedCurveBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint())); });
    const Fault stray = [](SeedModel& model) {
        auto* const strategy = ReaderModel::Add<ZETCompStrategy>(model.root, u"Stray"_s);
        SetIncluded(*model.configuration, *model.Ply(u"P"_s), strategy);
    };
    row("a strategy outside its ply, for the seed point", 1, "could not get the ply from the strategy", stray);
    row("a strategy outside its ply, for the seed curve", 0, "could not get the ply from the strategy", stray);
    const Fault noWorkpiece = [](SeedModel& model) { SetWorkpiece(*model.Layup(u"L"_s), nullptr); };
    row("no workpiece, for the seed point", 1, "ply does not have the surface available", noWorkpiece);
    row("no workpiece, for the seed curve", 0, "ply does not have the surface available", noWorkpiece);
    row("a surface update doesn't stand in for the workpiece", 0, "ply does not have the surface available",
        [](SeedModel& model) {
            auto* const update = ReaderModel::Add<ZETCompSurfaceUpdate>(model.Ply(u"P"_s), u"Raised"_s);
            SetBody(*update, ZETOpenBodyBuilder::MakeFace(model.tool));
            SetSurfaceUpdateFeature(*model.Ply(u"P"_s), update);
            SetWorkpiece(*model.Layup(u"L"_s), nullptr);
        });
    row("a workpiece without body", 0, "surface does not have a body",
        [](SeedModel& model) { SetWorkpiece(*model.Layup(u"L"_s), model.AddGeometry(u"W"_s, nullptr)); });
    row("a workpiece of two faces", 1, "surface does not have exactly one face",
        [](SeedModel& model) { SetWorkpiece(*model.Layup(u"L"_s), model.AddGeometry(u"W"_s, MakeTwoFaces())); });
    row("a workpiece of no face", 0, "surface does not have exactly one face",
        [](SeedModel& model) { SetWorkpiece(*model.Layup(u"L"_s), model.AddGeometry(u"W"_s, MakeTwoNets())); });
}

void TestReaderSeed::structuralFaultsEndTheRead()
{
    QFETCH(Fault, fault);
    QFETCH(int, rosette);
    QFETCH(QString, text);
    SeedModel model;
    model.SetSeedPointBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(), model.tool));
    model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}})));
    model.options.SetOutputRosette(rosette);
    model.options.SetUseSeedCurve(rosette == 0);
    fault(model);
    QCOMPARE(Thrown([&] { model.Read(); }), text);
    // What was read until then stays.
    QCOMPARE(model.Tree(), u"Part[L[S[A() P()]]]"_s);
    QCOMPARE(model.CurveNames(u"A"_s), rosette ? u"A boundary 1, A-Rosette"_s : u"A boundary 1"_s);
    QCOMPARE(model.CurveNames(u"P"_s), rosette ? u"P boundary 1, P-Rosette"_s : u"P boundary 1"_s);
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPointCount(), 3);
}

void TestReaderSeed::structuralFaultsAreNotLookedForWithTheCompleteOffset_data()
{
    structuralFaultsEndTheRead_data();
}

void TestReaderSeed::structuralFaultsAreNotLookedForWithTheCompleteOffset()
{
    QFETCH(Fault, fault);
    QFETCH(int, rosette);
    SeedModel model;
    model.options.SetOutputRosette(rosette);
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    fault(model);
    QVERIFY(model.Read());
    QCOMPARE(model.Tree(), u"Part[L[S[A() P()]]]"_s);
}

void TestReaderSeed::aMissingSeedPointEndsTheReadThoughItIsNotUsed()
{
    SeedModel model;
    model.options.SetUseSeedPoint(0);
    model.options.SetUseSeedCurve(0);
    QVERIFY(model.Read());
    model.options.SetOutputRosette(1);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, model.Read());
}

void TestReaderSeed::theSurfaceUpdateCountsWithTheCompleteOffsetOnly()
{
    SeedModel model;
    QVERIFY(model.Read());
    const auto raised = MakeFlatTool();
    auto* const update = ReaderModel::Add<ZETCompSurfaceUpdate>(model.Ply(u"P"_s), u"Raised"_s);
    SetBody(*update, ZETOpenBodyBuilder::MakeFace(raised));
    const auto surfaceWith = [&](ZETLaserOptions::EOffsetMode mode) {
        model.options.SetOffsetMode(mode);
        return model.reader->GetStrategySurface(model.One());
    };
    const ZETGeoSurface* const workpiece = model.tool.Get();
    QCOMPARE(surfaceWith(ZETLaserOptions::OffsetComplete), workpiece); // there is no update of the surface yet
    SetSurfaceUpdateFeature(*model.Ply(u"P"_s), update);
    QCOMPARE(surfaceWith(ZETLaserOptions::OffsetComplete), static_cast<const ZETGeoSurface*>(raised.Get()));
    QCOMPARE(surfaceWith(ZETLaserOptions::OffsetLayup), workpiece);
}

// ---- In the flat ----

void TestReaderSeed::theFlatSeedCurveIsTheImageOfItsSource()
{
    SeedModel model;
    model.SetSeedCurveBody(nullptr);
    model.AddFlatCurve({{9.0, 9.0, 0.0}, {9.0, 8.0, 0.0}}, nullptr);
    model.AddFlatCurve({{0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}}, model.One()->GetSeedCurve());
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    const auto curve = model.Curve(u"P"_s, 0);
    QCOMPARE(curve->GetName(), u"P-Seedcurve"_s);
    QVERIFY2(!curve->property(ZETLaserEntityProperties::sourceType).isValid(), "it counts as ply geometry");
    QCOMPARE(PointsText(*curve), u"0,0,0 3,0,0"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderSeed::theLastFlatImageOfASeedCurveCounts()
{
    SeedModel model;
    model.SetSeedCurveBody(nullptr);
    model.AddFlatCurve({{0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}}, model.One()->GetSeedCurve());
    model.AddFlatCurve({{0.0, 1.0, 0.0}, {3.0, 1.0, 0.0}}, model.One()->GetSeedCurve());
    model.AddFlatCurve({{0.0, 2.0, 0.0}, {3.0, 2.0, 0.0}}, nullptr);
    model.options.SetOutputType(ZETLaserOptions::OutputFlatNesting);
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, 0)), u"0,1,0 3,1,0"_s);
    QCOMPARE(model.CurveNames(u"P"_s), u"P-Seedcurve"_s);
}

void TestReaderSeed::aMissingFlatSeedCurveIsTold()
{
    SeedModel model;
    model.SetSeedCurveBody(nullptr);
    model.AddFlatCurve({{0.0, 2.0, 0.0}, {3.0, 2.0, 0.0}}, nullptr);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), QString());
    QCOMPARE(model.Messages(), u"1: Could not get flattened seed curve for P"_s);
}

void TestReaderSeed::aStrategyWithoutSeedCurveMatchesAnImageWithoutSource()
{
    SeedModel model;
    model.AddFlatCurve({{0.0, 2.0, 0.0}, {3.0, 2.0, 0.0}}, nullptr);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"0,2,0 3,2,0"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderSeed::theFlatSeedCurveIsCarriedToTheFlatteningPlane()
{
    SeedModel model;
    model.SetSeedCurveBody(nullptr);
    model.SetSeedPointBody(nullptr);
    model.AddFlatCurve({{30.0, 0.0, 0.0}, {33.0, 4.0, 0.0}}, model.One()->GetSeedCurve());
    model.AddFlatPoint(30.0, model.One()->GetSeedPoint());
    model.AddTable(u"L"_s);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, u"P-Seedcurve"_s)), u"100,200,300 100,203,304"_s);
}

void TestReaderSeed::withoutAStrategyThereIsNoFlatSeedCurveAndNoMessage()
{
    SeedModel model;
    auto* const pattern = model.Get<ZETCompFlatPattern>(u"Flat"_s);
    model.AddFlatCurve({{0.0, 2.0, 0.0}, {3.0, 2.0, 0.0}}, nullptr);
    QVERIFY(model.Read());
    ZETOpenMessageQueue::Clear();
    SetIncluded(*model.configuration, *model.Ply(u"P"_s), nullptr);
    const auto contour = QSharedPointer<ZETLaserContour>::create(nullptr);
    model.reader->ReadFlatSeedCurve(contour, model.Ply(u"P"_s), pattern, ZETMathAxis());
    QCOMPARE(contour->GetCurves().size(), 0);
    QCOMPARE(model.Messages(), QString());
    // On the way through the model such a ply has no flat pattern, and says so before anything else.
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Messages(), u"1: No flat pattern found for ply P"_s);
}

void TestReaderSeed::textsAreTranslatedInTheContextOfTheReader()
{
    const ReaderTranslator translator({{u"Seedcurve"_s, u"Startkurve"_s},
                                       {u"Rosette"_s, u"Rose"_s},
                                       {u"%1-%2"_s, u"%2 zu %1"_s},
                                       {u"%1 boundary %2"_s, u"%1 Rand %2"_s},
                                       {u"Could not get flattened seed point for %1"_s, u"Kein Startpunkt: %1"_s},
                                       {u"Found %1 first level groups"_s, u"%1"_s}});
    SeedModel model;
    model.SetSeedCurveBody(ZETOpenBodyBuilder::MakeCurve(model.MakeLine({{1.0, 0.0, 0.0}, {4.0, 0.0, 0.0}})));
    model.SetSeedPointBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(), model.tool));
    model.AddFlatCurve({{0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}}, model.One()->GetSeedCurve());
    model.options.SetOutputRosette(1);
    model.Select({u"P"_s});
    QVERIFY(model.Read());
    // In space the name is put together, in the flat its pattern is translated as well.
    QCOMPARE(model.CurveNames(u"P"_s), u"P Rand 1, P-Rose, P-Startkurve"_s);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"Startkurve zu P"_s);
    QCOMPARE(model.Messages(), u"1: Kein Startpunkt: P"_s);
    QVERIFY(translator.GetAsked().contains(u"Found %1 first level groups"_s));
}

// ---- The flattened seed point ----

void TestReaderSeed::theFirstFlatImageOfASeedPointCounts()
{
    SeedModel model;
    model.SetSeedPointBody(nullptr);
    auto* const folder = ReaderModel::Add<ZETFeatFolder>(model.Get<ZETCompFlatPattern>(u"Flat"_s), u"F"_s);
    auto* const deep = ReaderModel::Add<ZETCompFlatPoint>(folder, u"Deep"_s);
    SetBody(*deep, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1.0, 0.0, 0.0)));
    model.AddFlatPoint(2.0, model.One()->GetSeedPoint());
    model.AddFlatPoint(3.0, model.One()->GetSeedPoint());
    ZETMathPoint point;
    QVERIFY(GetFlattenedSeedPoint(model.Get<ZETCompFlatPattern>(u"Flat"_s), point));
    QCOMPARE(point, ZETMathPoint(2.0, 0.0, 0.0));
    SetSource(*deep, model.One()->GetSeedPoint());
    QVERIFY(GetFlattenedSeedPoint(model.Get<ZETCompFlatPattern>(u"Flat"_s), point));
    QCOMPARE(point, ZETMathPoint(1.0, 0.0, 0.0));
}

void TestReaderSeed::theFlattenedSeedPointMayBeMissing()
{
    SeedModel model;
    model.SetSeedPointBody(nullptr);
    auto* const pattern = model.Get<ZETCompFlatPattern>(u"Flat"_s);
    const ZETMathPoint untouched(7.0, 8.0, 9.0);
    ZETMathPoint point = untouched;
    QVERIFY2(!GetFlattenedSeedPoint(nullptr, point), "no pattern");
    QVERIFY2(!GetFlattenedSeedPoint(pattern, point), "no flat point");
    auto* const image = model.AddFlatPoint(2.0, nullptr);
    QVERIFY2(!GetFlattenedSeedPoint(pattern, point), "the image of something else");
    SetSource(*image, model.One()->GetSeedPoint());
    SetBody(*image, nullptr);
    QVERIFY2(!GetFlattenedSeedPoint(pattern, point), "no body");
    SetBody(*image, ZETOpenBodyBuilder().Build());
    QVERIFY2(!GetFlattenedSeedPoint(pattern, point), "no point in the body");
    auto* const stray = ReaderModel::Add<ZETCompFlatPattern>(model.root, u"Stray"_s);
    ReaderModel::Add<ZETCompFlatPoint>(stray, u"Q"_s);
    QVERIFY2(!GetFlattenedSeedPoint(stray, point), "no strategy");
    QCOMPARE(point, untouched);
}

void TestReaderSeed::aStrategyWithoutSeedPointMatchesAPointWithoutSource()
{
    SeedModel model;
    model.AddFlatPoint(2.0, nullptr);
    ZETMathPoint point;
    QVERIFY(GetFlattenedSeedPoint(model.Get<ZETCompFlatPattern>(u"Flat"_s), point));
    QCOMPARE(point, ZETMathPoint(2.0, 0.0, 0.0));
}

QTEST_GUILESS_MAIN(TestReaderSeed)
#include "TestReaderSeed.moc"
