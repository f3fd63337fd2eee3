#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/FakeCurve.h"
#include "tests/reader/ReaderModel.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETTopology/ZETTopBody.h>

#include <QtTest>

#include <cmath>
#include <iostream>
#include <limits>
#include <sstream>

using namespace Qt::Literals::StringLiterals;
using namespace ZETOpenComposites;

namespace
{

const QString onePly = u"layup L { sequence S { ply P } }"_s;
const QString oneStrategy = u"layup L { sequence S { ply P { strategy One { pattern Flat } } } }"_s;
const QList<ZETMathPoint> square{{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 10.0, 0.0}, {0.0, 10.0, 0.0}};

/*! Reads \a points as a boundary on the fake surface. */
QString ReadFake(const QList<ZETMathPoint>& points, bool closed, bool useMaxLength, double maxLength)
{
    ReaderModel model(onePly);
    const ZETOpenRef<FakeSurface> surface(new FakeSurface);
    const ZETOpenRef<FakeCurve> curve(new FakeCurve(surface.Get(), points, closed));
    SetUpdatedBoundaryCurves(*model.Ply(u"P"_s), {curve.Get()});
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    model.options.SetUseMaxLength(useMaxLength);
    model.options.SetMaxLength(maxLength);
    model.Read();
    const auto read = model.Curve(u"P"_s, 0);
    if (read->IsClosed() != closed)
        return u"closed is wrong"_s;
    return PointsText(*read).remove(u"/0,0,1"_s);
}

QString ReadNested(ZETLaserOptions::EOutputType type, ReaderModel& model)
{
    model.options.SetOutputType(type);
    model.Read();
    return model.Tree();
}

/*! What a read writes to the standard output of the process. */
class OutputCapture
{
public:
    OutputCapture()
        : old(std::cout.rdbuf(stream.rdbuf()))
    {
    }
    ~OutputCapture() { std::cout.rdbuf(old); }
    QString GetText() const { return QString::fromStdString(stream.str()); }

private:
    Q_DISABLE_COPY_MOVE(OutputCapture)
    std::ostringstream stream;
    std::streambuf* old;
};

/*! A flat part: one ply with a flat pattern of one contour, and a seed point at (2, 1) of the pattern for the asking.
 */
class FlatModel : public ReaderModel
{
public:
    FlatModel()
        : ReaderModel(oneStrategy)
    {
        AddContour(u"Outline"_s, {{0.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {4.0, 3.0, 0.0}}, false);
        options.SetOutputType(ZETLaserOptions::OutputFlat);
    }

    ZETFeatObject* Pattern() { return Get<ZETCompFlatPattern>(u"Flat"_s); }

    ZETCompFlatContour* AddContour(const QString& label, const QList<ZETMathPoint>& points, bool closed)
    {
        return AddContour(label, ZETOpenBodyBuilder::MakePolyline(points, closed));
    }
    ZETCompFlatContour* AddContour(const QString& label, std::unique_ptr<ZETTopBody> body)
    {
        auto* const contour = Add<ZETCompFlatContour>(Pattern(), label);
        SetBody(*contour, std::move(body));
        return contour;
    }
    void AddSeed()
    {
        auto* const seed = AddGeometry(u"Seed"_s, ZETOpenBodyBuilder::MakePoint(ZETMathPoint()));
        SetSeedPoint(*Strategy(u"One"_s), seed);
        auto* const image = Add<ZETCompFlatPoint>(Pattern(), u"Flat Seed"_s);
        SetBody(*image, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(2.0, 1.0, 0.0)));
        SetSource(*image, seed);
    }
    QString ReadPoints()
    {
        Read();
        return PointsText(*Curve(u"P"_s, 0));
    }
};

} // namespace

class TestReaderBoundary : public QObject
{
    Q_OBJECT

private slots:
    // boundaries in space
    void aClosedCurveEndsAtItsFirstLocation();
    void anOpenCurveComesBackToItsFirstLocation();
    void segmentsAreCutIntoPartsNoLongerThanTheMaximum_data();
    void segmentsAreCutIntoPartsNoLongerThanTheMaximum();
    void aCurveOfTheKernelIsCutByArcLength();
    void boundariesAreNumberedWithoutGaps();
    void nullBoundariesAreToldAndPassedOver_data();
    void nullBoundariesAreToldAndPassedOver();
    void nullBoundariesAreNoTroubleWithoutAQueue();
    void noBoundariesGiveAnEmptyContourAndNoMessage();
    void aBoundaryWithoutASurfaceGivesAnEmptyCurve();
    void namesAreFilledInOneAfterTheOther();
    void normalsAreOfUnitLengthAndPointToTheLayupsSide_data();
    void normalsAreOfUnitLengthAndPointToTheLayupsSide();
    void offsetModeDecidesWhichBoundaryIsRead_data();
    void offsetModeDecidesWhichBoundaryIsRead();
    void pointsAreLiftedByThePliesBeneath_data();
    void pointsAreLiftedByThePliesBeneath();
    void aSubPlyIsLiftedByWhatLiesBeneathItsPly();
    void placesOutsideByTheBoundaryToleranceAreLifted_data();
    void placesOutsideByTheBoundaryToleranceAreLifted();
    void withoutThicknessAnOffsetBoundaryIsTheBoundary();
    void eachLayupHasADirectionOfItsOwn();

    // the order of a ply's parts, and what of it is read
    void partsInSpaceComeInTheOrderThatTheOptionsAskFor_data();
    void partsInSpaceComeInTheOrderThatTheOptionsAskFor();
    void flatPartsComeInTheOrderThatTheOptionsAskFor_data();
    void flatPartsComeInTheOrderThatTheOptionsAskFor();
    void extraGeometryIsReadInTheOutputTypesOfItsFilters_data();
    void extraGeometryIsReadInTheOutputTypesOfItsFilters();

    // flat patterns
    void aPlyWithoutFlatPatternIsToldOnceAndStaysEmpty();
    void theFlatPatternIsThatOfTheActiveConfiguration();
    void flatPointsHaveNoNormal();
    void edgesThatJoinShareAPoint_data();
    void edgesThatJoinShareAPoint();
    void edgesAreReadInTheirOwnOrder();
    void longFlatSegmentsAreCut_data();
    void longFlatSegmentsAreCut();
    void allFlatCurvesHaveTheNumberOne();
    void flatNamesAreFilledInOneAfterTheOther();
    void whatIsNoNetIsPassedOver();
    void aGeometryWithoutABodyGivesNothing();
    void contoursBelowFoldersAreFound();

    // the frame of flat patterns
    void withoutAPlaneAndASeedFlatPointsStayAsTheyAre();
    void flatPointsAreLaidOnTheFlatteningPlane();
    void theSeedComesToLieOnTheOriginOfThePlane();
    void flatPointsKeepTheirHeightAboveThePlane_data();
    void flatPointsKeepTheirHeightAboveThePlane();
    void flatteningByDirectionTurnsAgainstThePlyDirection_data();
    void flatteningByDirectionTurnsAgainstThePlyDirection();
    void otherFlatteningModesDoNotTurn();
    void withoutASeedFlatteningByDirectionDoesNotTurn();
    void anUnknownOutputTypeKeepsTheFrameOfTheModel();
    void aPlyOfASubPlyIsTurnedByTheDirectionOfItsPly();
};

// ---- Boundaries in space ----

void TestReaderBoundary::aClosedCurveEndsAtItsFirstLocation()
{
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"P"_s, square, true);
    QVERIFY(model.Read());
    const auto curve = model.Curve(u"P"_s, 0);
    QCOMPARE(curve->GetName(), u"P boundary 1"_s);
    QCOMPARE(curve->IsClosed(), true);
    QCOMPARE(PointsText(*curve), u"10,0,0/0,0,1 10,10,0/0,0,1 0,10,0/0,0,1 0,0,0/0,0,1"_s);
    QVERIFY(curve->dynamicPropertyNames().isEmpty());
}

void TestReaderBoundary::anOpenCurveComesBackToItsFirstLocation()
{
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"P"_s, square, false);
    QVERIFY(model.Read());
    const auto curve = model.Curve(u"P"_s, 0);
    QCOMPARE(curve->IsClosed(), false);
    // Three segments, four points: the last is location 0 again, where the curve itself ends at (0, 10).
    QCOMPARE(PointsText(*curve), u"0,0,0/0,0,1 10,0,0/0,0,1 10,10,0/0,0,1 0,0,0/0,0,1"_s);
}

void TestReaderBoundary::segmentsAreCutIntoPartsNoLongerThanTheMaximum_data()
{
    QTest::addColumn<QList<ZETMathPoint>>("points");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<double>("maxLength");
    QTest::addColumn<QString>("expected");
    const QList<ZETMathPoint> ten{{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}};
    const QList<ZETMathPoint> eight{{0.0, 0.0, 0.0}, {8.0, 0.0, 0.0}, {8.0, 1.0, 0.0}};
    const QList<ZETMathPoint> still{{0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}};
    const double infinity = std::numeric_limits<double>::infinity();

    // An open curve of one segment ends at location 0, so the end that stands twice shows as 10 and then 0.
    QTest::newRow("10 by 4, open") << ten << false << 4.0 << u"0,0,0 3.333333,0,0 6.666667,0,0 10,0,0 0,0,0"_s;
    QTest::newRow("10 by 4, closed")
        << ten << true << 4.0 << u"3.333333,0,0 6.666667,0,0 10,0,0 10,0,0 6.666667,0,0 3.333333,0,0 0,0,0 0,0,0"_s;
    QTest::newRow("8 by 4 divides exactly") << eight << false << 4.0 << u"0,0,0 4,0,0 8,0,0 8,0,0 8,1,0 0,0,0"_s;
    QTest::newRow("shorter than the maximum") << eight << false << 9.0 << u"0,0,0 8,0,0 8,0,0 8,1,0 0,0,0"_s;
    QTest::newRow("a segment of no length") << still << false << 4.0 << u"0,0,0 0,0,0 3,0,0 0,0,0"_s;
    QTest::newRow("a maximum of 0") << eight << false << 0.0 << u"0,0,0 8,0,0 0,0,0"_s;
    QTest::newRow("a maximum of 0 and no length") << still << false << 0.0 << u"0,0,0 0,0,0 0,0,0"_s;
    QTest::newRow("a negative maximum") << eight << false << -4.0 << u"0,0,0 8,0,0 0,0,0"_s;
    QTest::newRow("an infinite maximum") << eight << false << infinity << u"0,0,0 8,0,0 0,0,0"_s;
    QTest::newRow("a maximum that is no number") << eight << false << std::nan("") << u"0,0,0 8,0,0 0,0,0"_s;
    QTest::newRow("a maximum too small to count") << eight << false << 1e-300 << u"0,0,0 8,0,0 0,0,0"_s;
}

void TestReaderBoundary::segmentsAreCutIntoPartsNoLongerThanTheMaximum()
{
    QFETCH(QList<ZETMathPoint>, points);
    QFETCH(bool, closed);
    QFETCH(double, maxLength);
    QFETCH(QString, expected);
    QCOMPARE(ReadFake(points, closed, true, maxLength), expected);
}

void TestReaderBoundary::aCurveOfTheKernelIsCutByArcLength()
{
    // A quarter of a cylinder of radius 10: the curve runs once over it, 5 pi long.
    ReaderModel model(onePly);
    model.SetTool(ZETOpenSurface::MakeCylinder(ZETMathAxis(), 10.0, 0.0, M_PI_2, -5.0, 5.0));
    model.SetBoundary(u"P"_s, {{10.0, 0.0, 0.0}, {0.0, 10.0, 0.0}}, false);
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(6.0);
    QVERIFY(model.Read());
    const double x = 10.0 * std::cos(M_PI / 6.0);
    const QList<ZETMathPoint> expected{
        {10.0, 0.0, 0.0}, {x, 5.0, 0.0}, {5.0, x, 0.0}, {0.0, 10.0, 0.0}, {10.0, 0.0, 0.0}};
    const auto curve = model.Curve(u"P"_s, 0);
    QCOMPARE(curve->GetPointCount(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const ZETLaserPoint& point = std::as_const(*curve).GetPoints().at(i);
        QVERIFY(point.GetDistanceTo(expected.at(i)) < 1e-6);
        const ZETMathVector outwards(expected.at(i).GetX() / 10.0, expected.at(i).GetY() / 10.0, 0.0);
        QVERIFY((point.GetNormal() - outwards).GetSquaredMagnitude() < 1e-12);
    }
}

void TestReaderBoundary::boundariesAreNumberedWithoutGaps()
{
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    const auto edge = model.MakeBoundary(square, true);
    SetBoundaryCurves(*model.Ply(u"P"_s), {nullptr, edge.Get(), nullptr, edge.Get()});
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1, P boundary 2"_s);
    QCOMPARE(model.Messages(), u"1: Found null boundary in ply P\n1: Found null boundary in ply P"_s);
}

void TestReaderBoundary::nullBoundariesAreToldAndPassedOver_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("pointOffset");
    QTest::addColumn<QString>("message");
    QTest::newRow("none") << int(ZETLaserOptions::OffsetNone) << false << u"1: Found null boundary in ply P"_s;
    QTest::newRow("layup") << int(ZETLaserOptions::OffsetLayup) << true << u"1: Found null boundary in ply P"_s;
    QTest::newRow("debulk") << int(ZETLaserOptions::OffsetDebulk) << true << u"1: Found null boundary in ply P"_s;
    QTest::newRow("complete") << int(ZETLaserOptions::OffsetComplete) << false
                              << u"1: Found null updated boundary in ply P"_s;
    QTest::newRow("complete by points") << int(ZETLaserOptions::OffsetComplete) << true
                                        << u"1: Found null boundary in ply P"_s;
}

void TestReaderBoundary::nullBoundariesAreToldAndPassedOver()
{
    QFETCH(int, mode);
    QFETCH(bool, pointOffset);
    QFETCH(QString, message);
    ReaderModel model(onePly);
    SetBoundaryCurves(*model.Ply(u"P"_s), {nullptr});
    model.options.SetOffsetMode(static_cast<ZETLaserOptions::EOffsetMode>(mode));
    model.options.SetUsePointOffset(pointOffset);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), QString());
    QCOMPARE(model.Messages(), message);
}

void TestReaderBoundary::nullBoundariesAreNoTroubleWithoutAQueue()
{
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    const auto edge = model.MakeBoundary(square, true);
    SetBoundaryCurves(*model.Ply(u"P"_s), {nullptr, edge.Get()});
    ZETOpenMessageQueue::Remove();
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1"_s);
}

void TestReaderBoundary::noBoundariesGiveAnEmptyContourAndNoMessage()
{
    ReaderModel model(onePly);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), QString());
    QCOMPARE(model.Messages(), QString());
}

void TestReaderBoundary::aBoundaryWithoutASurfaceGivesAnEmptyCurve()
{
    ReaderModel model(onePly);
    const ZETOpenRef<FakeCurve> curve(new FakeCurve(nullptr, square, true));
    SetUpdatedBoundaryCurves(*model.Ply(u"P"_s), {curve.Get()});
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QVERIFY(model.Read());
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPointCount(), 0);
    QCOMPARE(model.Curve(u"P"_s, 0)->IsClosed(), true);
}

void TestReaderBoundary::namesAreFilledInOneAfterTheOther()
{
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"P"_s, square, true);
    ZETOpenModel::SetLabel(*model.Ply(u"P"_s), u"A %1 B"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Curve(u"A %1 B"_s, 0)->GetName(), u"A 1 B boundary %2"_s);
}

void TestReaderBoundary::normalsAreOfUnitLengthAndPointToTheLayupsSide_data()
{
    QTest::addColumn<bool>("direction");
    QTest::addColumn<QString>("expected");
    QTest::newRow("positive") << true << u"3,0,0/0,0,1 0,0,0/0,0,1"_s;
    QTest::newRow("negative") << false << u"3,0,0/0,0,-1 0,0,0/0,0,-1"_s;
}

void TestReaderBoundary::normalsAreOfUnitLengthAndPointToTheLayupsSide()
{
    QFETCH(bool, direction);
    QFETCH(QString, expected);
    ReaderModel model(onePly);
    SetLayupDirection(*model.Layup(u"L"_s), direction);
    const ZETOpenRef<FakeSurface> surface(new FakeSurface);
    const ZETOpenRef<FakeCurve> curve(new FakeCurve(surface.Get(), {{0.0, 0.0, 0.0}, {3.0, 0.0, 0.0}}, true));
    SetUpdatedBoundaryCurves(*model.Ply(u"P"_s), {curve.Get()});
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, 0)), expected);
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPoints().first().GetNormal().GetSquaredMagnitude(), 1.0);
}

void TestReaderBoundary::offsetModeDecidesWhichBoundaryIsRead_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("pointOffset");
    QTest::addColumn<double>("x");
    QTest::newRow("none") << int(ZETLaserOptions::OffsetNone) << false << 10.0;
    QTest::newRow("none, point offset") << int(ZETLaserOptions::OffsetNone) << true << 10.0;
    QTest::newRow("layup, point offset has no effect") << int(ZETLaserOptions::OffsetLayup) << true << 10.0;
    QTest::newRow("debulk") << int(ZETLaserOptions::OffsetDebulk) << false << 10.0;
    QTest::newRow("complete") << int(ZETLaserOptions::OffsetComplete) << false << 11.0;
    QTest::newRow("complete, point offset") << int(ZETLaserOptions::OffsetComplete) << true << 10.0;
}

void TestReaderBoundary::offsetModeDecidesWhichBoundaryIsRead()
{
    QFETCH(int, mode);
    QFETCH(bool, pointOffset);
    QFETCH(double, x);
    ReaderModel model(onePly);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"P"_s, square, true);
    const auto raised = model.MakeBoundary({{0.0, 0.0, 0.0}, {11.0, 0.0, 0.0}, {0.0, 11.0, 0.0}}, true);
    SetUpdatedBoundaryCurves(*model.Ply(u"P"_s), {raised.Get()});
    model.options.SetOffsetMode(static_cast<ZETLaserOptions::EOffsetMode>(mode));
    model.options.SetUsePointOffset(pointOffset);
    QVERIFY(model.Read());
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPoints().first().GetPosition().GetX(), x);
    QCOMPARE(model.CurveNames(u"P"_s), u"P boundary 1"_s);
}

void TestReaderBoundary::pointsAreLiftedByThePliesBeneath_data()
{
    QTest::addColumn<bool>("direction");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    const int complete = ZETLaserOptions::OffsetComplete;
    const int layup = ZETLaserOptions::OffsetLayup;
    QTest::newRow("along the normal") << true << complete
                                      << u"10,0,0.5/0,0,1 10,10,0.75/0,0,1 0,10,0.5/0,0,1 0,0,0.5/0,0,1"_s;
    QTest::newRow("against the surface's normal in a negative layup")
        << false << complete << u"10,0,-0.5/0,0,-1 10,10,-0.75/0,0,-1 0,10,-0.5/0,0,-1 0,0,-0.5/0,0,-1"_s;
    QTest::newRow("not at all with another mode")
        << true << layup << u"10,0,0/0,0,1 10,10,0/0,0,1 0,10,0/0,0,1 0,0,0/0,0,1"_s;
}

void TestReaderBoundary::pointsAreLiftedByThePliesBeneath()
{
    QFETCH(bool, direction);
    QFETCH(int, mode);
    QFETCH(QString, expected);
    ReaderModel model(u"layup L { sequence S { ply A ply B ply P ply Z } }"_s);
    model.SetTool(MakeFlatTool());
    SetLayupDirection(*model.Layup(u"L"_s), direction);
    model.SetBoundary(u"A"_s, {{-50.0, -50.0, 0.0}, {50.0, -50.0, 0.0}, {50.0, 50.0, 0.0}, {-50.0, 50.0, 0.0}}, true);
    model.SetBoundary(u"B"_s, {{5.0, 5.0, 0.0}, {50.0, 5.0, 0.0}, {50.0, 50.0, 0.0}, {5.0, 50.0, 0.0}}, true);
    for (const QString& ply : {u"P"_s, u"Z"_s})
        model.SetBoundary(ply, square, true);
    SetMaterials(*model.Ply(u"A"_s), {model.AddMaterial(u"thick"_s, 0.5)});
    SetMaterials(*model.Ply(u"B"_s), {model.AddMaterial(u"thin"_s, 0.25)});
    SetMaterials(*model.Ply(u"P"_s), {model.AddMaterial(u"own"_s, 4.0)});
    model.options.SetOffsetMode(static_cast<ZETLaserOptions::EOffsetMode>(mode));
    model.options.SetUsePointOffset(true);
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, 0)), expected);
    QCOMPARE(model.Curve(u"P"_s, 0)->IsClosed(), true);
}

void TestReaderBoundary::aSubPlyIsLiftedByWhatLiesBeneathItsPly()
{
    ReaderModel model(u"layup L { sequence S { ply A ply P { pieces D { subply P1 } } } }"_s);
    model.SetTool(MakeFlatTool());
    for (const QString& ply : {u"A"_s, u"P"_s, u"P1"_s})
        model.SetBoundary(ply, square, true);
    SetMaterials(*model.Ply(u"A"_s), {model.AddMaterial(u"M"_s, 0.5)});
    SetMaterials(*model.Ply(u"P"_s), {model.AddMaterial(u"N"_s, 4.0)});
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    model.options.SetUsePointOffset(true);
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P1"_s, 0)), u"10,0,0.5/0,0,1 10,10,0.5/0,0,1 0,10,0.5/0,0,1 0,0,0.5/0,0,1"_s);
    QCOMPARE(model.Curve(u"P1"_s, 0)->GetName(), u"P1 boundary 1"_s);
}

void TestReaderBoundary::placesOutsideByTheBoundaryToleranceAreLifted_data()
{
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<QString>("expected");
    QTest::newRow("wider than the gap") << 0.3 << u"10.2,0,0.5/0,0,1 10.2,10,0.5/0,0,1 0,10,0.5/0,0,1 0,0,0.5/0,0,1"_s;
    QTest::newRow("narrower than the gap") << 0.1 << u"10.2,0,0/0,0,1 10.2,10,0/0,0,1 0,10,0.5/0,0,1 0,0,0.5/0,0,1"_s;
}

void TestReaderBoundary::placesOutsideByTheBoundaryToleranceAreLifted()
{
    // The ply beneath ends at x = 10, and this one 0.2 beyond.
    QFETCH(double, tolerance);
    QFETCH(QString, expected);
    ReaderModel model(u"layup L { sequence S { ply A ply P } }"_s);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"A"_s, square, true);
    model.SetBoundary(u"P"_s, {{0.0, 0.0, 0.0}, {10.2, 0.0, 0.0}, {10.2, 10.0, 0.0}, {0.0, 10.0, 0.0}}, true);
    SetMaterials(*model.Ply(u"A"_s), {model.AddMaterial(u"M"_s, 0.5)});
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    model.options.SetUsePointOffset(true);
    model.options.SetBoundaryTolerance(tolerance);
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, 0)), expected);
}

void TestReaderBoundary::eachLayupHasADirectionOfItsOwn()
{
    ReaderModel model(u"layup L1 { sequence S1 { ply P1 } } layup L2 { sequence S2 { ply P2 } }"
                      " layup L3 { sequence S3 { ply P3 } } layup L4 { sequence S4 { ply P4 } }"_s);
    model.SetTool(MakeFlatTool());
    SetLayupDirection(*model.Layup(u"L1"_s), false);
    SetLayupDirection(*model.Layup(u"L3"_s), false); // is skipped, and so has no say in what comes behind it
    for (const QString& ply : {u"P1"_s, u"P2"_s, u"P3"_s, u"P4"_s})
        model.SetBoundary(ply, square, true);
    model.Select({u"P1"_s, u"P2"_s, u"P4"_s});
    QVERIFY(model.Read());
    const auto normal = [&](const QString& ply) { return model.Curve(ply, 0)->GetPoints().first().GetNormal(); };
    QCOMPARE(normal(u"P1"_s), ZETMathVector(0.0, 0.0, -1.0));
    QCOMPARE(normal(u"P2"_s), ZETMathVector(0.0, 0.0, 1.0));
    QCOMPARE(normal(u"P4"_s), ZETMathVector(0.0, 0.0, 1.0));
}

void TestReaderBoundary::withoutThicknessAnOffsetBoundaryIsTheBoundary()
{
    ReaderModel model(u"layup L { sequence S { ply A ply P } }"_s);
    model.SetTool(MakeFlatTool());
    for (const QString& ply : {u"A"_s, u"P"_s})
        model.SetBoundary(ply, square, false);
    SetMaterials(*model.Ply(u"A"_s), {model.AddMaterial(u"M"_s, 0.5)});
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(5.0);
    QVERIFY(model.Read());
    const auto contour = QSharedPointer<ZETLaserContour>::create(nullptr);
    ZETCompPly* const ply = model.Ply(u"P"_s);
    model.reader->ReadOffsetBoundaryCurve(ply, contour, u"X"_s, 7, ply->GetBoundaryCurves().first(), false);
    QCOMPARE(contour->GetCurves().size(), 1);
    QCOMPARE(contour->GetCurves().first()->GetName(), u"X boundary 7"_s);
    QCOMPARE(PointsText(*contour->GetCurves().first()), PointsText(*model.Curve(u"P"_s, 0)));
    QCOMPARE(contour->GetCurves().first()->IsClosed(), false);
    QCOMPARE(contour->GetPointCount(), 10);
}

// ---- The order of a ply's parts ----

void TestReaderBoundary::partsInSpaceComeInTheOrderThatTheOptionsAskFor_data()
{
    QTest::addColumn<bool>("rosetteFirst");
    QTest::addColumn<int>("rosette");
    QTest::addColumn<int>("seedCurve");
    QTest::addColumn<QString>("curves");
    QTest::newRow("last") << false << 1 << 1 << u"P boundary 1, P-Rosette, P-Seedcurve"_s;
    QTest::newRow("first") << true << 1 << 1 << u"P-Rosette, P-Seedcurve, P boundary 1"_s;
    QTest::newRow("no rosette") << true << 0 << 2 << u"P-Seedcurve, P boundary 1"_s;
    QTest::newRow("no seed curve") << false << -1 << 0 << u"P boundary 1, P-Rosette"_s;
    QTest::newRow("neither") << false << 0 << 0 << u"P boundary 1"_s;
}

void TestReaderBoundary::partsInSpaceComeInTheOrderThatTheOptionsAskFor()
{
    QFETCH(bool, rosetteFirst);
    QFETCH(int, rosette);
    QFETCH(int, seedCurve);
    QFETCH(QString, curves);
    ReaderModel model(u"layup L { extra X:parent extra Y:parent sequence S { ply P { strategy One } } }"_s);
    model.SetTool(MakeFlatTool());
    model.SetBoundary(u"P"_s, square, true);
    SetFinalSeedCurve(*model.Strategy(u"One"_s), model.MakeBoundary(square, false).Get());
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    model.options.SetRosetteBeforePlyGeometry(rosetteFirst);
    model.options.SetOutputRosette(rosette);
    model.options.SetUseSeedCurve(seedCurve);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), curves);
    QCOMPARE(model.Tree(), u"Part[L[S[P(X Y)]]]"_s);
}

void TestReaderBoundary::flatPartsComeInTheOrderThatTheOptionsAskFor_data()
{
    QTest::addColumn<bool>("rosetteFirst");
    QTest::addColumn<QString>("curves");
    QTest::addColumn<QString>("messages");
    QTest::newRow("last") << false << u"P flat contour 1, P-Rosette"_s
                          << u"1: Could not get flattened seed curve for P"_s;
    QTest::newRow("first") << true << u"P-Rosette, P flat contour 1"_s
                           << u"1: Could not get flattened seed curve for P"_s;
}

void TestReaderBoundary::flatPartsComeInTheOrderThatTheOptionsAskFor()
{
    QFETCH(bool, rosetteFirst);
    QFETCH(QString, curves);
    QFETCH(QString, messages);
    FlatModel model;
    model.AddSeed();
    model.options.SetRosetteBeforePlyGeometry(rosetteFirst);
    model.options.SetOutputRosette(1);
    model.options.SetUseSeedCurve(1);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), curves);
    QCOMPARE(model.Messages(), messages);
    model.options.SetOutputRosette(0);
    model.options.SetUseSeedCurve(0);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P flat contour 1"_s);
}

void TestReaderBoundary::extraGeometryIsReadInTheOutputTypesOfItsFilters_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("extra");
    QTest::newRow("3D") << int(ZETLaserOptions::Output3D) << u"Space All"_s;
    QTest::newRow("flat") << int(ZETLaserOptions::OutputFlat) << u"Flat All"_s;
    QTest::newRow("nesting") << int(ZETLaserOptions::OutputFlatNesting) << u"Nesting All"_s;
    QTest::newRow("embedded nesting") << int(ZETLaserOptions::OutputFlatNestingEmbedded) << u"Nesting All"_s;
    QTest::newRow("none of these") << 4 << QString();
}

void TestReaderBoundary::extraGeometryIsReadInTheOutputTypesOfItsFilters()
{
    QFETCH(int, type);
    QFETCH(QString, extra);
    ReaderModel model(u"layup L { extra Space:parent extra Flat:parent extra Nesting:parent extra All:parent"
                      " extra None:parent sequence S { ply P { strategy One { pattern Pattern } } } }"_s);
    const auto setFilter = [&](const QString& label, ZETLaserExtraGeometry::OutputFilters filters) {
        model.Get<ZETLaserExtraGeometry>(label)->SetFilters(filters);
    };
    setFilter(u"Space"_s, ZETLaserExtraGeometry::Filter3D);
    setFilter(u"Flat"_s, ZETLaserExtraGeometry::FilterFlat);
    setFilter(u"Nesting"_s, ZETLaserExtraGeometry::FilterFlatNesting);
    setFilter(u"None"_s, {});
    QCOMPARE(ReadNested(static_cast<ZETLaserOptions::EOutputType>(type), model), u"Part[L[S[P("_s + extra + u")]]]"_s);
}

// ---- Flat patterns ----

void TestReaderBoundary::aPlyWithoutFlatPatternIsToldOnceAndStaysEmpty()
{
    ReaderModel model(u"layup L { extra X:parent sequence S { ply P { strategy One } } }"_s);
    model.options.SetOutputRosette(1);
    model.options.SetUseSeedCurve(1);
    for (const auto type : {ZETLaserOptions::OutputFlat, ZETLaserOptions::OutputFlatNesting,
                            ZETLaserOptions::OutputFlatNestingEmbedded}) {
        ZETOpenMessageQueue::Clear();
        QCOMPARE(ReadNested(type, model), u"Part[L[S[P()]]]"_s);
        QCOMPARE(model.CurveNames(u"P"_s), QString());
        QCOMPARE(model.Messages(), u"1: No flat pattern found for ply P"_s);
    }
}

void TestReaderBoundary::theFlatPatternIsThatOfTheActiveConfiguration()
{
    FlatModel model;
    auto* const other = ReaderModel::Add<ZETCompStrategy>(model.Ply(u"P"_s), u"Two"_s);
    auto* const pattern = ReaderModel::Add<ZETCompFlatPattern>(other, u"Other"_s);
    auto* const contour = ReaderModel::Add<ZETCompFlatContour>(pattern, u"C"_s);
    SetBody(*contour, ZETOpenBodyBuilder::MakePolyline({{7.0, 7.0, 0.0}, {8.0, 8.0, 0.0}}, false));
    SetIncluded(*model.configuration, *model.Ply(u"P"_s), other);
    QCOMPARE(model.ReadPoints(), u"7,7,0 8,8,0"_s);
    SetIncluded(*model.configuration, *model.Ply(u"P"_s), nullptr);
    QVERIFY(model.Read());
    QCOMPARE(model.Messages(), u"1: No flat pattern found for ply P"_s);
}

void TestReaderBoundary::flatPointsHaveNoNormal()
{
    FlatModel model;
    QVERIFY(model.Read());
    for (const ZETLaserPoint& point : std::as_const(*model.Curve(u"P"_s, 0)).GetPoints())
        QVERIFY(!point.HasNormal());
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPointCount(), 3);
    QVERIFY(model.Curve(u"P"_s, 0)->dynamicPropertyNames().isEmpty());
}

void TestReaderBoundary::edgesThatJoinShareAPoint_data()
{
    QTest::addColumn<double>("gap");
    QTest::addColumn<QString>("expected");
    QTest::newRow("joined") << 0.0 << u"-10,0,0 0,0,0 5,5,0"_s;
    QTest::newRow("0.001 apart") << 0.001 << u"-10,0,0 0,0,0 5,5,0"_s;
    QTest::newRow("0.0011 apart") << 0.0011 << u"-10,0,0 0,0,0 0.0011,0,0 5,5,0"_s;
}

void TestReaderBoundary::edgesThatJoinShareAPoint()
{
    QFETCH(double, gap);
    QFETCH(QString, expected);
    FlatModel model;
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakePolyline({{-10.0, 0.0, 0.0}, {0.0, 0.0, 0.0}}), false},
                    {ZETOpenComboCurve::MakePolyline({{gap, 0.0, 0.0}, {5.0, 5.0, 0.0}}), false}});
    SetBody(*model.Get<ZETCompFlatContour>(u"Outline"_s), builder.Build());
    QCOMPARE(model.ReadPoints(), expected);
    QCOMPARE(model.Curve(u"P"_s, 0)->IsClosed(), false);
}

void TestReaderBoundary::edgesAreReadInTheirOwnOrder()
{
    // The net runs (0,0) (4,0) (4,3) (0,0); its second edge runs against it, and is read as it runs itself.
    FlatModel model;
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakePolyline({{0.0, 0.0, 0.0}, {4.0, 0.0, 0.0}}), false},
                    {ZETOpenComboCurve::MakePolyline({{4.0, 3.0, 0.0}, {4.0, 0.0, 0.0}}), true},
                    {ZETOpenComboCurve::MakePolyline({{4.0, 3.0, 0.0}, {0.0, 0.0, 0.0}}), false}});
    SetBody(*model.Get<ZETCompFlatContour>(u"Outline"_s), builder.Build());
    QCOMPARE(model.ReadPoints(), u"0,0,0 4,0,0 4,3,0 4,0,0 4,3,0 0,0,0"_s);
    QCOMPARE(model.Curve(u"P"_s, 0)->IsClosed(), true);
}

void TestReaderBoundary::longFlatSegmentsAreCut_data()
{
    QTest::addColumn<bool>("use");
    QTest::addColumn<double>("maxLength");
    QTest::addColumn<QString>("expected");
    QTest::newRow("off") << false << 2.0 << u"0,0,0 4,0,0 4,3,0"_s;
    QTest::newRow("as long as the maximum") << true << 4.0 << u"0,0,0 4,0,0 4,3,0"_s;
    QTest::newRow("one is longer") << true << 3.0 << u"0,0,0 2,0,0 4,0,0 4,0,0 4,3,0"_s;
    QTest::newRow("both are longer") << true << 2.0 << u"0,0,0 2,0,0 4,0,0 4,0,0 4,1.5,0 4,3,0 4,3,0"_s;
    QTest::newRow("a maximum of 0") << true << 0.0 << u"0,0,0 4,0,0 4,3,0"_s;
    QTest::newRow("a negative maximum") << true << -1.0 << u"0,0,0 4,0,0 4,3,0"_s;
    QTest::newRow("no number") << true << std::nan("") << u"0,0,0 4,0,0 4,3,0"_s;
}

void TestReaderBoundary::longFlatSegmentsAreCut()
{
    QFETCH(bool, use);
    QFETCH(double, maxLength);
    QFETCH(QString, expected);
    FlatModel model;
    model.options.SetUseMaxLength(use);
    model.options.SetMaxLength(maxLength);
    QCOMPARE(model.ReadPoints(), expected);
}

void TestReaderBoundary::allFlatCurvesHaveTheNumberOne()
{
    FlatModel model;
    ZETOpenBodyBuilder builder;
    const auto line = ZETOpenComboCurve::MakePolyline({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}});
    builder.AddNet({{line, false}});
    builder.AddNet({{line, false}});
    model.AddContour(u"Holes"_s, builder.Build());
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P flat contour 1, P flat contour 1, P flat contour 1"_s);
}

void TestReaderBoundary::flatNamesAreFilledInOneAfterTheOther()
{
    FlatModel model;
    ZETOpenModel::SetLabel(*model.Ply(u"P"_s), u"A %1 B"_s);
    QVERIFY(model.Read());
    QCOMPARE(model.Curve(u"A %1 B"_s, 0)->GetName(), u"A 1 B flat contour %2"_s);
}

void TestReaderBoundary::whatIsNoNetIsPassedOver()
{
    FlatModel model;
    ZETOpenBodyBuilder builder;
    builder.AddSkin({MakeFlatTool()});
    builder.AddNet({{ZETOpenComboCurve::MakePolyline({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}), false}});
    SetBody(*model.Get<ZETCompFlatContour>(u"Outline"_s), builder.Build());
    QCOMPARE(model.ReadPoints(), u"0,0,0 1,0,0"_s);
    QCOMPARE(model.CurveNames(u"P"_s), u"P flat contour 1"_s);
}

void TestReaderBoundary::aGeometryWithoutABodyGivesNothing()
{
    FlatModel model;
    SetBody(*model.Get<ZETCompFlatContour>(u"Outline"_s), nullptr);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), QString());
    QCOMPARE(model.Messages(), QString());
}

void TestReaderBoundary::contoursBelowFoldersAreFound()
{
    FlatModel model;
    auto* const folder = ReaderModel::Add<ZETFeatFolder>(model.Pattern(), u"Folder"_s);
    auto* const inner = ReaderModel::Add<ZETCompFlatContour>(folder, u"Inner"_s);
    SetBody(*inner, ZETOpenBodyBuilder::MakePolyline({{7.0, 7.0, 0.0}, {8.0, 8.0, 0.0}}, false));
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"P"_s, 1)), u"7,7,0 8,8,0"_s);
}

// ---- The frame of flat patterns ----

void TestReaderBoundary::withoutAPlaneAndASeedFlatPointsStayAsTheyAre()
{
    FlatModel model;
    QCOMPARE(model.ReadPoints(), u"0,0,0 4,0,0 4,3,0"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderBoundary::flatPointsAreLaidOnTheFlatteningPlane()
{
    FlatModel model;
    model.AddTable(u"L"_s);
    QCOMPARE(model.ReadPoints(), u"100,200,300 100,204,300 100,204,303"_s);
}

void TestReaderBoundary::theSeedComesToLieOnTheOriginOfThePlane()
{
    FlatModel model;
    model.AddSeed();
    QCOMPARE(model.ReadPoints(), u"-2,-1,0 2,-1,0 2,2,0"_s);
    model.AddTable(u"L"_s);
    QCOMPARE(model.ReadPoints(), u"100,198,299 100,202,299 100,202,302"_s);
}

void TestReaderBoundary::flatPointsKeepTheirHeightAboveThePlane_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("expected");
    // Of the plane, first is Y, second is Z and the normal X. The seed at (2, 1, 0) comes to lie on its origin.
    QTest::newRow("unturned") << int(ZETCompLayup::FlatteningUnturned) << u"105,198,299 105,202,299"_s;
    QTest::newRow("turned") << int(ZETCompLayup::FlatteningByDirection) << u"105,201,298 105,201,302"_s;
}

void TestReaderBoundary::flatPointsKeepTheirHeightAboveThePlane()
{
    QFETCH(int, mode);
    QFETCH(QString, expected);
    FlatModel model;
    model.AddSeed();
    model.AddTable(u"L"_s);
    SetBody(*model.Get<ZETCompFlatContour>(u"Outline"_s),
            ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 5.0}, {4.0, 0.0, 5.0}}, false));
    SetFlatteningMode(*model.Layup(u"L"_s), static_cast<ZETCompLayup::FlatteningMode>(mode));
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    const OutputCapture capture;
    QCOMPARE(model.ReadPoints(), expected);
}

void TestReaderBoundary::flatteningByDirectionTurnsAgainstThePlyDirection_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("direction");
    QTest::addColumn<QString>("points");
    QTest::addColumn<QString>("output");
    const QString negative = u"\nin GetDirection() layup direction is negative, reversing ply direction\n"_s;
    // The ply direction is a quarter turn. Of the plane, F is Y and S is Z; the pattern runs (-2,-1) (2,-1) (2,2) about
    // its seed. With x = -pi/2 the new first is F cos x - S sin x = S, and the new second S cos x + F sin x = -F.
    QTest::newRow("positive layup") << int(ZETLaserOptions::OutputFlat) << true
                                    << u"100,201,298 100,201,302 100,198,302"_s
                                    << u"\nin GetDirection() ply direction 1.5708\n"_s;
    QTest::newRow("negative layup") << int(ZETLaserOptions::OutputFlat) << false
                                    << u"100,199,302 100,199,298 100,202,298"_s
                                    << negative + u"\nin GetDirection() ply direction -1.5708\n"_s;
    QTest::newRow("nesting") << int(ZETLaserOptions::OutputFlatNesting) << true
                             << u"100,198,299 100,202,299 100,202,302"_s << QString();
    QTest::newRow("embedded nesting") << int(ZETLaserOptions::OutputFlatNestingEmbedded) << false
                                      << u"100,198,299 100,202,299 100,202,302"_s << QString();
}

void TestReaderBoundary::flatteningByDirectionTurnsAgainstThePlyDirection()
{
    QFETCH(int, type);
    QFETCH(bool, direction);
    QFETCH(QString, points);
    QFETCH(QString, output);
    FlatModel model;
    model.AddSeed();
    model.AddTable(u"L"_s);
    SetFlatteningMode(*model.Layup(u"L"_s), ZETCompLayup::FlatteningByDirection);
    SetLayupDirection(*model.Layup(u"L"_s), direction);
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    model.options.SetOutputType(static_cast<ZETLaserOptions::EOutputType>(type));
    const OutputCapture capture;
    QCOMPARE(model.ReadPoints(), points);
    QCOMPARE(capture.GetText(), output);
}

void TestReaderBoundary::otherFlatteningModesDoNotTurn()
{
    FlatModel model;
    model.AddSeed();
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    for (const int mode : {0, 2, -1}) {
        SetFlatteningMode(*model.Layup(u"L"_s), static_cast<ZETCompLayup::FlatteningMode>(mode));
        const OutputCapture capture;
        QCOMPARE(model.ReadPoints(), u"-2,-1,0 2,-1,0 2,2,0"_s);
        QCOMPARE(capture.GetText(), QString());
    }
}

void TestReaderBoundary::withoutASeedFlatteningByDirectionDoesNotTurn()
{
    FlatModel model;
    model.AddTable(u"L"_s);
    SetFlatteningMode(*model.Layup(u"L"_s), ZETCompLayup::FlatteningByDirection);
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    const OutputCapture capture;
    QCOMPARE(model.ReadPoints(), u"100,200,300 100,204,300 100,204,303"_s);
    QCOMPARE(capture.GetText(), QString());
}

void TestReaderBoundary::anUnknownOutputTypeKeepsTheFrameOfTheModel()
{
    FlatModel model;
    model.AddSeed();
    model.AddTable(u"L"_s);
    model.options.SetOutputType(static_cast<ZETLaserOptions::EOutputType>(4));
    QCOMPARE(model.ReadPoints(), u"0,0,0 4,0,0 4,3,0"_s);
}

void TestReaderBoundary::aPlyOfASubPlyIsTurnedByTheDirectionOfItsPly()
{
    ReaderModel model(
        u"layup L { sequence S { ply P { pieces D { subply A { strategy One { pattern Flat } } } } } }"_s);
    auto* const pattern = model.Get<ZETCompFlatPattern>(u"Flat"_s);
    auto* const contour = ReaderModel::Add<ZETCompFlatContour>(pattern, u"C"_s);
    SetBody(*contour, ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}, false));
    auto* const point = ReaderModel::Add<ZETCompFlatPoint>(pattern, u"Q"_s); // no source, as the strategy has no seed
    SetBody(*point, ZETOpenBodyBuilder::MakePoint(ZETMathPoint()));
    SetFlatteningMode(*model.Layup(u"L"_s), ZETCompLayup::FlatteningByDirection);
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    const OutputCapture capture;
    QVERIFY(model.Read());
    QCOMPARE(PointsText(*model.Curve(u"A"_s, 0)), u"0,0,0 0,1,0"_s);
    QCOMPARE(model.Messages(), u"1: No flat pattern found for ply P"_s);
}

QTEST_GUILESS_MAIN(TestReaderBoundary)
#include "TestReaderBoundary.moc"
