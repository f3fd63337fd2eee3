#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"
#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/ReaderModel.h"

#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>
#include <ZETTopology/ZETTopBody.h>

#include <QtTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;
using namespace ZETOpenComposites;

namespace
{

const QString onePly = u"layup L { sequence S { ply P { strategy One { pattern Flat } } } }"_s;

/*! An axis system at (5, 6, 7): X, Y, Z, or turned about X so that its third direction points downwards. */
ZETMathAxis MakeAxis(bool downwards = false)
{
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(5.0, 6.0, 7.0));
    if (downwards)
        axis.SetDirections(ZETMathVector(1.0, 0.0, 0.0), ZETMathVector(0.0, -1.0, 0.0), ZETMathVector(0.0, 0.0, -1.0));
    return axis;
}

/*! One ply on a flat tool, with a rosette, a ply direction and a strategy whose seed lies at the origin. */
class RosetteModel : public ReaderModel
{
public:
    explicit RosetteModel(const QString& text = onePly)
        : ReaderModel(text)
    {
        SetTool(MakeFlatTool());
        AddRosette(u"L"_s, MakeAxis());
        options.SetOutputRosette(1);
        options.SetUseSeedPoint(1);
    }
    void AddSeed(const ZETMathPoint& point = ZETMathPoint())
    {
        SetSeedPoint(*Strategy(u"One"_s), AddGeometry(u"Seed"_s, ZETOpenBodyBuilder::MakePoint(point, tool)));
    }
    QString ReadPoints(const QString& ply = u"P"_s)
    {
        Read();
        return PointsText(*Curve(ply, ply + u"-Rosette"_s));
    }
};

/*! One ply on a curved tool, whose rosette was read: zero degrees point along Z, and the seed lies at \a seedPoint. */
class FibreModel : public ReaderModel
{
public:
    FibreModel(const ZETOpenRef<ZETOpenSurface>& surface, const ZETMathPoint& seedPoint, double angle, bool positive)
        : ReaderModel(onePly)
    {
        SetTool(surface);
        ZETMathAxis zeroIsUp;
        zeroIsUp.SetDirections(ZETMathVector(0.0, 0.0, 1.0), ZETMathVector(1.0, 0.0, 0.0),
                               ZETMathVector(0.0, 1.0, 0.0));
        AddRosette(u"L"_s, zeroIsUp);
        SetSeedPoint(*Strategy(u"One"_s), AddGeometry(u"Seed"_s, ZETOpenBodyBuilder::MakePoint(seedPoint, tool)));
        SetDirection(*Ply(u"P"_s), angle);
        SetLayupDirection(*Layup(u"L"_s), positive);
        options.SetOutputRosette(1);
        options.SetUseSeedPoint(1);
        isRead = Read();
    }

    bool isRead;
};

ZETMathVector Normalized(ZETMathVector vector)
{
    vector.Normalize();
    return vector;
}

/*! The direction in which a way over a surface sets out, from the places a little ahead and a little behind. */
template <typename Way>
ZETMathVector SettingOut(Way way)
{
    constexpr double step = 1e-3;
    return Normalized(way(step) - way(-step));
}

/*! The way along a cylinder about Z that is straight when the cylinder is unrolled, \a angle away from the upward
 *  direction, counter-clockwise as seen from outside. */
ZETMathPoint AlongCylinder(double radius, double start, double height, double angle, double distance)
{
    const double across = -std::sin(angle) * distance; // leftwards is against the turn as seen from outside
    const double turn = start + across / radius;
    return {radius * std::cos(turn), radius * std::sin(turn), height + std::cos(angle) * distance};
}

/*! Where a ship comes to on a globe, by the rule of navigators: \a bearing counts clockwise from north. */
ZETMathPoint AlongGreatCircle(double radius, double longitude, double latitude, double bearing, double distance)
{
    const double arc = distance / radius;
    const double newLatitude =
        std::asin(std::sin(latitude) * std::cos(arc) + std::cos(latitude) * std::sin(arc) * std::cos(bearing));
    const double newLongitude = longitude + std::atan2(std::sin(bearing) * std::sin(arc) * std::cos(latitude),
                                                       std::cos(arc) - std::sin(latitude) * std::sin(newLatitude));
    return {radius * std::cos(newLatitude) * std::cos(newLongitude),
            radius * std::cos(newLatitude) * std::sin(newLongitude), radius * std::sin(newLatitude)};
}

} // namespace

class TestReaderRosette : public QObject
{
    Q_OBJECT

private slots:
    void theRosetteIsAnOpenCurveOfItsOwnSource();
    void theSeedFormLiesOnTheSurfaceAtTheSeed_data();
    void theSeedFormLiesOnTheSurfaceAtTheSeed();
    void theAxisIsProjectedIntoTheTangentPlane();
    void anAxisAlongTheNormalEndsTheRead();
    void theFibreOnACylinderIsAHelix_data();
    void theFibreOnACylinderIsAHelix();
    void theFibreOnASphereHoldsItsBearing_data();
    void theFibreOnASphereHoldsItsBearing();
    void theFinalSeedCountsWithTheCompleteOffset();
    void aFinalSeedWithoutASurfaceGivesTheAxisForm();
    void aSeedThatIsNotOnTheToolGivesTheAxisForm();

    void withoutUseOfTheSeedPointTheRosetteStandsAtItsOrigin();
    void withASubdivisionTheSeedPointIsMissing();
    void withoutAStrategyTheSeedPointIsMissingOnlyIfItIsAskedFor();
    void theAxisFormIsTiltedByTheDirection_data();
    void theAxisFormIsTiltedByTheDirection();
    void anAxisSquareToTheNormalIsTiltedForward();
    void theWorkpieceNormalIsTakenInItsMiddle();
    void withoutAWorkpieceTheNormalPointsUpwards();
    void aWorkpieceWithoutAFaceIsTold_data();
    void aWorkpieceWithoutAFaceIsTold();
    void theMessageAboutTheWorkpieceNamesThePlyOfASubPly();

    void aLayupWithoutRosetteLeavesTheCurveEmpty();
    void aSubPlyHasTheDirectionOfItsPly();
    void aSubPlyWithoutAPlyHasNoRosette();
    void theRosetteInSpaceHasTheSizeForLasers();

    void theFlatRosetteLiesAlongThePattern_data();
    void theFlatRosetteLiesAlongThePattern();
    void theFlatRosetteIsCarriedToTheFlatteningPlane();
    void withoutAFlatSeedThereIsNoFlatRosette();
};

void TestReaderRosette::theRosetteIsAnOpenCurveOfItsOwnSource()
{
    for (const int useSeedPoint : {0, 1}) {
        RosetteModel model;
        model.AddSeed();
        model.options.SetUseSeedPoint(useSeedPoint);
        QVERIFY(model.Read());
        const auto rosette = model.Curve(u"P"_s, 0);
        QCOMPARE(rosette->GetName(), u"P-Rosette"_s);
        QCOMPARE(rosette->property(ZETLaserEntityProperties::sourceType), QVariant(2));
        QCOMPARE(rosette->GetPointCount(), 3);
        QCOMPARE(rosette->IsClosed(), false);
        QCOMPARE(model.Messages(), QString());
    }
}

void TestReaderRosette::theSeedFormLiesOnTheSurfaceAtTheSeed_data()
{
    QTest::addColumn<bool>("positive");
    QTest::addColumn<double>("direction");
    QTest::addColumn<QString>("expected");
    QTest::newRow("positive, 0") << true << 0.0 << u"100,0,0/0,0,1 0,0,0/0,0,1 0,50,0/0,0,1"_s;
    QTest::newRow("negative, 0") << false << 0.0 << u"100,0,0/0,0,-1 0,0,0/0,0,-1 0,-50,0/0,0,-1"_s;
    QTest::newRow("positive, 90") << true << M_PI_2 << u"0,100,0/0,0,1 0,0,0/0,0,1 -50,0,0/0,0,1"_s;
    QTest::newRow("negative, 90") << false << M_PI_2 << u"0,-100,0/0,0,-1 0,0,0/0,0,-1 -50,0,0/0,0,-1"_s;
    QTest::newRow("positive, 180") << true << M_PI << u"-100,0,0/0,0,1 0,0,0/0,0,1 0,-50,0/0,0,1"_s;
}

void TestReaderRosette::theSeedFormLiesOnTheSurfaceAtTheSeed()
{
    QFETCH(bool, positive);
    QFETCH(double, direction);
    QFETCH(QString, expected);
    RosetteModel model;
    model.AddSeed();
    SetLayupDirection(*model.Layup(u"L"_s), positive);
    SetDirection(*model.Ply(u"P"_s), direction);
    QCOMPARE(model.ReadPoints(), expected);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderRosette::theAxisIsProjectedIntoTheTangentPlane()
{
    // Half way between X and Z: only its part along X counts.
    RosetteModel model;
    model.AddSeed(ZETMathPoint(1.0, 2.0, 0.0));
    const double half = std::sqrt(0.5);
    ZETMathAxis axis;
    axis.SetDirections(ZETMathVector(half, 0.0, half), ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(-half, 0.0, half));
    ZETOpenWireframe::SetAxis(*model.Get<ZETCompRosette>(u"Rosette"_s), axis);
    model.options.SetRosetteSize(10.0);
    QCOMPARE(model.ReadPoints(), u"11,2,0/0,0,1 1,2,0/0,0,1 1,7,0/0,0,1"_s);
}

void TestReaderRosette::anAxisAlongTheNormalEndsTheRead()
{
    RosetteModel model;
    model.AddSeed();
    ZETMathAxis axis;
    axis.SetDirections(ZETMathVector(0.0, 0.0, 1.0), ZETMathVector(1.0, 0.0, 0.0), ZETMathVector(0.0, 1.0, 0.0));
    ZETOpenWireframe::SetAxis(*model.Get<ZETCompRosette>(u"Rosette"_s), axis);
    QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P-Rosette"_s);
}

void TestReaderRosette::theFibreOnACylinderIsAHelix_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("start");
    QTest::addColumn<bool>("positive");
    for (const double angle : {0.0, 0.4, -0.4, M_PI_4, M_PI_2, 2.5}) {
        for (const double start : {0.3, 1.2, 2.9}) {
            for (const bool positive : {true, false})
                QTest::addRow("%g at %g %s", angle, start, positive ? "positive" : "negative")
                    << angle << start << positive;
        }
    }
}

void TestReaderRosette::theFibreOnACylinderIsAHelix()
{
    QFETCH(double, angle);
    QFETCH(double, start);
    QFETCH(bool, positive);
    constexpr double radius = 250.0;
    constexpr double height = 40.0;
    const ZETMathPoint seed = AlongCylinder(radius, start, height, 0.0, 0.0);
    const FibreModel model(ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, M_PI, -500.0, 500.0), seed, angle,
                           positive);
    QVERIFY(model.isRead);

    const auto& points = std::as_const(*model.Curve(u"P"_s, 0)).GetPoints();
    const double seen = positive ? angle : -angle; // from the other side a turn runs the other way
    const ZETMathVector helix = SettingOut([&](double t) { return AlongCylinder(radius, start, height, seen, t); });
    const ZETMathVector outwards(std::cos(start), std::sin(start), 0.0);
    const ZETMathVector longArm = points.at(0).GetPosition() - points.at(1).GetPosition();
    const ZETMathVector shortArm = points.at(2).GetPosition() - points.at(1).GetPosition();
    QVERIFY(points.at(1).GetDistanceTo(seed) < 1e-6);
    QVERIFY((longArm - 100.0 * helix).GetSquaredMagnitude() < 1e-6);
    QVERIFY(std::abs(longArm * outwards) < 1e-6);
    const ZETMathVector normal = outwards * (positive ? 1.0 : -1.0);
    QVERIFY((shortArm - 50.0 * (normal ^ helix)).GetSquaredMagnitude() < 1e-6);
    for (const ZETLaserPoint& point : points)
        QVERIFY((point.GetNormal() - normal).GetSquaredMagnitude() < 1e-12);
}

void TestReaderRosette::theFibreOnASphereHoldsItsBearing_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<bool>("positive");
    for (const double angle : {0.0, 0.7, -1.1, M_PI_2, 3.0}) {
        for (const double latitude : {-0.5, 0.0, 0.9}) {
            for (const bool positive : {true, false})
                QTest::addRow("%g at latitude %g %s", angle, latitude, positive ? "positive" : "negative")
                    << angle << 0.8 << latitude << positive;
        }
    }
}

void TestReaderRosette::theFibreOnASphereHoldsItsBearing()
{
    QFETCH(double, angle);
    QFETCH(double, longitude);
    QFETCH(double, latitude);
    QFETCH(bool, positive);
    constexpr double radius = 400.0;
    const ZETMathPoint seed = AlongGreatCircle(radius, longitude, latitude, 0.0, 0.0);
    const FibreModel model(ZETOpenSurface::MakeSphere(ZETMathAxis(), radius, 0.0, M_PI_2, -1.2, 1.2), seed, angle,
                           positive);
    QVERIFY(model.isRead);

    const auto& points = std::as_const(*model.Curve(u"P"_s, 0)).GetPoints();
    const double bearing = positive ? -angle : angle; // the ply direction counts the other way than bearings do
    const ZETMathVector course =
        SettingOut([&](double t) { return AlongGreatCircle(radius, longitude, latitude, bearing, t); });
    const ZETMathVector longArm = points.at(0).GetPosition() - points.at(1).GetPosition();
    QVERIFY(points.at(1).GetDistanceTo(seed) < 1e-6);
    QVERIFY((longArm - 100.0 * course).GetSquaredMagnitude() < 1e-6);
    const ZETMathVector normal = Normalized(seed - ZETMathPoint()) * (positive ? 1.0 : -1.0);
    QVERIFY((points.at(0).GetNormal() - normal).GetSquaredMagnitude() < 1e-12);
}

void TestReaderRosette::theFinalSeedCountsWithTheCompleteOffset()
{
    RosetteModel model;
    ZETMathAxis raised;
    raised.SetOrigin(ZETMathPoint(0.0, 0.0, 2.0));
    const auto surface = ZETOpenSurface::MakePlane(raised, -100.0, 100.0, -100.0, 100.0);
    SetFinalSeedPoint(*model.Strategy(u"One"_s), surface->Project(ZETMathPoint(3.0, 4.0, 0.0)));
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QCOMPARE(model.ReadPoints(), u"103,4,2/0,0,1 3,4,2/0,0,1 3,54,2/0,0,1"_s);
}

void TestReaderRosette::aFinalSeedWithoutASurfaceGivesTheAxisForm()
{
    RosetteModel model;
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderRosette::aSeedThatIsNotOnTheToolGivesTheAxisForm()
{
    RosetteModel model;
    SetSeedPoint(*model.Strategy(u"One"_s),
                 model.AddGeometry(u"Seed"_s, ZETOpenBodyBuilder::MakePoint(ZETMathPoint())));
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderRosette::withoutUseOfTheSeedPointTheRosetteStandsAtItsOrigin()
{
    RosetteModel model;
    model.AddSeed();
    model.options.SetUseSeedPoint(0);
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
}

void TestReaderRosette::withASubdivisionTheSeedPointIsMissing()
{
    RosetteModel model(u"layup L { sequence S { ply P { pieces D { subply A } } } }"_s);
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
    QCOMPARE(model.Messages(), u"1: Could not get seed point for P\n1: Could not get seed point for A"_s);
}

void TestReaderRosette::withoutAStrategyTheSeedPointIsMissingOnlyIfItIsAskedFor()
{
    RosetteModel model(u"layup L { sequence S { ply P } }"_s);
    model.options.SetUseSeedPoint(0);
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
    QCOMPARE(model.Messages(), QString());
    model.options.SetUseSeedPoint(-1);
    QCOMPARE(model.ReadPoints(), u"105,6,7 5,6,7 5,56,7"_s);
    QCOMPARE(model.Messages(), u"1: Could not get seed point for P"_s);
}

void TestReaderRosette::theAxisFormIsTiltedByTheDirection_data()
{
    QTest::addColumn<bool>("downwards");
    QTest::addColumn<bool>("positive");
    QTest::addColumn<QString>("expected");
    // Downwards: first X, second -Y. With the opposite sign, first turns to -second = Y, second to first = X.
    QTest::newRow("with the normal") << false << true << u"5,106,7 5,6,7 -45,6,7"_s;
    QTest::newRow("against the normal") << true << true << u"5,106,7 5,6,7 55,6,7"_s;
    QTest::newRow("against the normal of a negative layup") << false << false << u"5,-94,7 5,6,7 55,6,7"_s;
    QTest::newRow("with the normal of a negative layup") << true << false << u"5,-94,7 5,6,7 -45,6,7"_s;
}

void TestReaderRosette::theAxisFormIsTiltedByTheDirection()
{
    QFETCH(bool, downwards);
    QFETCH(bool, positive);
    QFETCH(QString, expected);
    RosetteModel model;
    model.AddSeed();
    model.options.SetUseSeedPoint(0);
    ZETOpenWireframe::SetAxis(*model.Get<ZETCompRosette>(u"Rosette"_s), MakeAxis(downwards));
    SetLayupDirection(*model.Layup(u"L"_s), positive);
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    QCOMPARE(model.ReadPoints(), expected);
    QCOMPARE(model.Messages(), QString());
    QCOMPARE(model.Get<ZETCompRosette>(u"Rosette"_s)->GetAxis().GetFirstDirection(), ZETMathVector(1.0, 0.0, 0.0));
}

void TestReaderRosette::anAxisSquareToTheNormalIsTiltedForward()
{
    RosetteModel model(u"layup L { sequence S { ply P } }"_s);
    model.options.SetUseSeedPoint(0);
    ZETMathAxis axis;
    axis.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0), ZETMathVector(1.0, 0.0, 0.0));
    ZETOpenWireframe::SetAxis(*model.Get<ZETCompRosette>(u"Rosette"_s), axis);
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    QCOMPARE(model.ReadPoints(), u"0,0,100 0,0,0 0,-50,0"_s);
}

void TestReaderRosette::theWorkpieceNormalIsTakenInItsMiddle()
{
    // A quarter of a cylinder from X to Y: in its middle the normal points along (1, 1, 0), which is with the third
    // direction although it is square to it at the start.
    RosetteModel model(u"layup L { sequence S { ply P } }"_s);
    model.options.SetUseSeedPoint(0);
    for (const bool away : {false, true}) {
        auto* const quarter = model.AddGeometry(u"Quarter"_s, ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakeCylinder(
                                                                  ZETMathAxis(), 10.0, 0.0, M_PI_2, -5.0, 5.0)));
        SetWorkpiece(*model.Layup(u"L"_s), quarter);
        ZETMathAxis axis;
        const double sign = away ? -1.0 : 1.0;
        axis.SetDirections(ZETMathVector(0.0, 0.0, 1.0), ZETMathVector(sign, 0.0, 0.0), ZETMathVector(0.0, sign, 0.0));
        ZETOpenWireframe::SetAxis(*model.Get<ZETCompRosette>(u"Rosette"_s), axis);
        SetDirection(*model.Ply(u"P"_s), M_PI_2);
        QCOMPARE(model.ReadPoints(), u"100,0,0 0,0,0 "_s + (away ? u"0,0,50"_s : u"0,0,-50"_s));
    }
}

void TestReaderRosette::withoutAWorkpieceTheNormalPointsUpwards()
{
    RosetteModel model(u"layup L { sequence S { ply P } }"_s);
    model.options.SetUseSeedPoint(0);
    SetWorkpiece(*model.Layup(u"L"_s), nullptr);
    SetLayupDirection(*model.Layup(u"L"_s), false); // has no say in the normal that stands in for the workpiece's
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    QCOMPARE(model.ReadPoints(), u"5,106,7 5,6,7 -45,6,7"_s);
    QCOMPARE(model.Messages(), u"1: Could not get workpiece for P"_s);
}

void TestReaderRosette::aWorkpieceWithoutAFaceIsTold_data()
{
    QTest::addColumn<bool>("hasBody");
    QTest::newRow("no body") << false;
    QTest::newRow("a body of a curve") << true;
}

void TestReaderRosette::aWorkpieceWithoutAFaceIsTold()
{
    QFETCH(bool, hasBody);
    RosetteModel model(u"layup L { sequence S { ply P } }"_s);
    model.options.SetUseSeedPoint(0);
    auto body = ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}}, false);
    SetWorkpiece(*model.Layup(u"L"_s), model.AddGeometry(u"W"_s, hasBody ? std::move(body) : nullptr));
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    QCOMPARE(model.ReadPoints(), u"5,106,7 5,6,7 -45,6,7"_s);
    QCOMPARE(model.Messages(), u"1: Could not get workpiece face for P"_s);
}

void TestReaderRosette::theMessageAboutTheWorkpieceNamesThePlyOfASubPly()
{
    RosetteModel model(u"layup L { sequence S { ply P { pieces D { subply A } } } }"_s);
    model.options.SetUseSeedPoint(0);
    SetWorkpiece(*model.Layup(u"L"_s), nullptr);
    model.Select({u"A"_s});
    QVERIFY(model.Read());
    QCOMPARE(model.Messages(), u"1: Could not get workpiece for P"_s);
}

void TestReaderRosette::aLayupWithoutRosetteLeavesTheCurveEmpty()
{
    RosetteModel model;
    SetRosette(*model.Layup(u"L"_s), nullptr);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), u"P-Rosette"_s);
    QCOMPARE(model.Curve(u"P"_s, 0)->GetPointCount(), 0);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderRosette::aSubPlyHasTheDirectionOfItsPly()
{
    RosetteModel model(u"layup L { sequence S { ply P { pieces D { subply A { strategy One } } } } }"_s);
    model.AddSeed(ZETMathPoint(1.0, 2.0, 0.0));
    SetDirection(*model.Ply(u"P"_s), M_PI_2);
    QCOMPARE(model.ReadPoints(u"A"_s), u"1,102,0/0,0,1 1,2,0/0,0,1 -49,2,0/0,0,1"_s);
}

void TestReaderRosette::aSubPlyWithoutAPlyHasNoRosette()
{
    RosetteModel model(u"layup L { sequence S { ply P pieces D { subply A } } }"_s);
    QVERIFY(model.Read());
    const auto contour = QSharedPointer<ZETLaserContour>::create(nullptr);
    model.Messages();
    model.reader->ReadRosette(contour, model.Get<ZETCompSubPly>(u"A"_s));
    QCOMPARE(contour->GetCurves().size(), 1);
    QCOMPARE(contour->GetCurves().first()->GetName(), u"A-Rosette"_s);
    QCOMPARE(contour->GetPointCount(), 0);
    QCOMPARE(model.Messages(), u"1: Could not get seed point for P\n1: Could not get rosette for A"_s);
}

void TestReaderRosette::theRosetteInSpaceHasTheSizeForLasers()
{
    RosetteModel model;
    model.AddSeed();
    model.options.SetRosetteSize(8.0);
    model.options.SetRosetteSizeQuilmon(3.0);
    QCOMPARE(model.ReadPoints(), u"8,0,0/0,0,1 0,0,0/0,0,1 0,4,0/0,0,1"_s);
    model.options.SetUseSeedPoint(0);
    QCOMPARE(model.ReadPoints(), u"13,6,7 5,6,7 5,10,7"_s);
}

void TestReaderRosette::theFlatRosetteLiesAlongThePattern_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    QTest::newRow("flat") << int(ZETLaserOptions::OutputFlat) << u"8,0,0 0,0,0 0,4,0"_s;
    QTest::newRow("nesting") << int(ZETLaserOptions::OutputFlatNesting) << u"6,0,0 0,0,0 0,3,0"_s;
    QTest::newRow("embedded nesting") << int(ZETLaserOptions::OutputFlatNestingEmbedded) << u"6,0,0 0,0,0 0,3,0"_s;
}

void TestReaderRosette::theFlatRosetteLiesAlongThePattern()
{
    QFETCH(int, type);
    QFETCH(QString, expected);
    RosetteModel model;
    model.AddSeed();
    auto* const image = ReaderModel::Add<ZETCompFlatPoint>(model.Get<ZETCompFlatPattern>(u"Flat"_s), u"Image"_s);
    SetBody(*image, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(30.0, 40.0, 0.0)));
    SetSource(*image, model.Get<ZETFeatGeometry>(u"Seed"_s));
    SetDirection(*model.Ply(u"P"_s), 0.5); // has no say: the pattern's own x axis is the ply's direction
    model.options.SetOutputType(static_cast<ZETLaserOptions::EOutputType>(type));
    model.options.SetRosetteSize(8.0);
    model.options.SetRosetteSizeQuilmon(6.0);
    QCOMPARE(model.ReadPoints(), expected);
    const auto rosette = model.Curve(u"P"_s, 0);
    QCOMPARE(rosette->property(ZETLaserEntityProperties::sourceType), QVariant(2));
    QCOMPARE(rosette->IsClosed(), false);
    QCOMPARE(model.Messages(), QString());
}

void TestReaderRosette::theFlatRosetteIsCarriedToTheFlatteningPlane()
{
    RosetteModel model;
    model.AddSeed();
    auto* const image = ReaderModel::Add<ZETCompFlatPoint>(model.Get<ZETCompFlatPattern>(u"Flat"_s), u"Image"_s);
    SetBody(*image, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(30.0, 40.0, 0.0)));
    SetSource(*image, model.Get<ZETFeatGeometry>(u"Seed"_s));
    model.AddTable(u"L"_s);
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    model.options.SetRosetteSize(8.0);
    QCOMPARE(model.ReadPoints(), u"100,208,300 100,200,300 100,200,304"_s);
}

void TestReaderRosette::withoutAFlatSeedThereIsNoFlatRosette()
{
    RosetteModel model;
    model.AddSeed();
    model.options.SetOutputType(ZETLaserOptions::OutputFlat);
    QVERIFY(model.Read());
    QCOMPARE(model.CurveNames(u"P"_s), QString());
    QCOMPARE(model.Messages(), u"1: Could not get flattened seed point for P"_s);
}

QTEST_GUILESS_MAIN(TestReaderRosette)
#include "TestReaderRosette.moc"
