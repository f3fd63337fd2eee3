#include "laser/ZETLaserThinning.h"

#include "laser/ZETLaserPoint.h"
#include "tests/support/PlainThinning.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>

namespace
{
constexpr double noLimit = 10000000.0;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Points = QList<ZETLaserPoint>;

/*! Appends a point that remembers its place in its normal, so that survivors are told apart from duplicates. */
void Append(Points& points, double x, double y, double z = 0.0)
{
    points.emplaceBack(ZETMathPoint(x, y, z), ZETMathVector(double(points.size()), 0.0, 1.0));
}

QList<int> GetPlaces(const Points& points)
{
    QList<int> places;
    for (const ZETLaserPoint& point : points)
        places.append(static_cast<int>(point.GetNormal().GetX()));
    return places;
}

/*! Random curves; what is drawn next depends on the seed alone. */
class Draw
{
public:
    explicit Draw(unsigned seed)
        : engine(seed)
    {
    }
    double Real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(engine); }
    int Integer(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }
    bool Chance(double probability) { return Real(0.0, 1.0) < probability; }
    double Power(double low, double high) { return std::pow(10.0, Real(low, high)); }
    template <typename T, std::size_t n>
    T OneOf(const std::array<T, n>& choices)
    {
        return choices[static_cast<std::size_t>(Integer(0, int(n) - 1))];
    }

private:
    std::mt19937 engine;
};

using Generator = Points (*)(Draw&);

Points DrawNoisyLine(Draw& draw, double noise)
{
    Points points;
    const int count = draw.Integer(3, draw.Chance(0.1) ? 600 : 90);
    const double step = draw.Power(-4.0, 1.0);
    const std::array<double, 3> direction{draw.Real(-1.0, 1.0), draw.Real(-1.0, 1.0), draw.Real(-1.0, 1.0)};
    const bool flat = draw.Chance(0.5);
    for (int i = 0; i < count; ++i) {
        std::array<double, 3> at{};
        for (std::size_t k = 0; k < 3; ++k)
            at[k] = direction[k] * step * i + (flat && k != 1 ? 0.0 : draw.Real(-noise, noise));
        Append(points, at[0], at[1], at[2]);
    }
    return points;
}

Points DrawLightNoise(Draw& draw)
{
    return DrawNoisyLine(draw, 0.001);
}

// Half the tolerance up and down, so that chords pass and fail by little.
Points DrawNoiseNearTolerance(Draw& draw)
{
    return DrawNoisyLine(draw, 0.005 * draw.Real(0.9, 1.3));
}

Points DrawStraight(Draw& draw)
{
    return DrawNoisyLine(draw, 0.0);
}

Points DrawRandomWalk(Draw& draw)
{
    Points points;
    const double step = draw.Power(-4.0, 2.0);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    for (int count = draw.Integer(0, 60); count > 0; --count) {
        Append(points, x, y, z);
        x += draw.Real(-step, step);
        y += draw.Real(-step, step);
        z += draw.Real(-step, step);
    }
    return points;
}

Points DrawArc(Draw& draw)
{
    Points points;
    const double radius = draw.Power(-3.0, 4.0);
    const int count = draw.Integer(3, draw.Chance(0.1) ? 800 : 120);
    const double turn = draw.Chance(0.3) ? 6.283185307179586 / count : draw.Power(-5.0, -0.5);
    const double rise = draw.Chance(0.5) ? 0.0 : draw.Real(-1.0, 1.0) * radius * turn;
    const double noise = draw.Chance(0.5) ? 0.0 : draw.Power(-6.0, -2.0);
    for (int i = 0; i < count; ++i)
        Append(points, radius * std::cos(turn * i) + draw.Real(-noise, noise), radius * std::sin(turn * i), rise * i);
    return points;
}

// Coordinates on a coarse grid: exact ties, duplicates, chords back to the anchor, all collinear now and then.
Points DrawGrid(Draw& draw)
{
    Points points;
    const int width = draw.Integer(0, 6);
    const int height = draw.Integer(0, 2);
    const double unit = draw.OneOf(std::array<double, 4>{0.0025, 0.005, 0.01, 0.25});
    for (int count = draw.Integer(0, 40); count > 0; --count)
        Append(points, unit * draw.Integer(-width, width), unit * draw.Integer(0, height), unit * draw.Integer(0, 1));
    return points;
}

Points DrawBackAndForth(Draw& draw)
{
    Points points;
    const double step = draw.Power(-3.5, 0.5);
    const double noise = draw.Chance(0.4) ? 0.0 : draw.Power(-6.0, -1.8);
    double x = 0.0;
    double sense = 1.0;
    for (int count = draw.Integer(3, 150); count > 0; --count) {
        Append(points, x, 0.5 * x + draw.Real(-noise, noise), draw.Real(-noise, noise));
        if (draw.Chance(0.1))
            sense = -sense;
        if (!draw.Chance(0.1)) // otherwise the point comes twice
            x += sense * step;
    }
    return points;
}

// Around and around within the length of a degenerate chord, with excursions.
Points DrawNearAnchor(Draw& draw)
{
    Points points;
    for (int count = draw.Integer(3, 60); count > 0; --count) {
        const double reach = draw.Chance(0.2) ? 0.05 : 0.004;
        Append(points, draw.Real(-reach, reach), draw.Real(-reach, reach), draw.Chance(0.5) ? 0.0 : 0.003);
    }
    return points;
}

// A knot about as large as the tolerance, and a long run, to both sides, in a direction of its own: what the knot asks
// for leans far away from the run, and at its end the tolerance may drown in rounding.
Points DrawKnotAndRun(Draw& draw)
{
    const double size = draw.Power(-14.0, -2.0);
    const double length = draw.Power(1.0, 3.0);
    Points points;
    Append(points, 0.0, 0.0);
    for (int count = draw.Integer(1, 8); count > 0; --count) {
        const double angle = draw.Real(0.0, 6.283185307179586);
        const double radius = size * draw.Real(0.5, 1.5);
        Append(points, radius * std::cos(angle), radius * std::sin(angle));
    }
    for (int count = draw.Integer(10, 60); count > 0; --count) {
        const double x = length * (draw.Chance(0.9) ? draw.Real(0.01, 1.0) : -draw.Real(0.01, 1.0));
        Append(points, x, x / length * size * draw.Power(-2.0, 0.5) * draw.Real(-1.0, 1.0));
    }
    return points;
}

Points DrawRectangle(Draw& draw)
{
    Points points;
    const int side = draw.Integer(1, 60);
    const double step = draw.Power(-3.0, 1.0);
    const double noise = draw.Chance(0.3) ? 0.0 : draw.Power(-5.0, -1.5);
    const auto add = [&](double x, double y) {
        Append(points, step * x + draw.Real(-noise, noise), step * y + draw.Real(-noise, noise));
    };
    for (int i = 0; i < side; ++i)
        add(i, 0);
    for (int i = 0; i < side; ++i)
        add(side, i);
    for (int i = side; i > 0; --i)
        add(i, side);
    for (int i = side; i > 0; --i)
        add(0, i);
    return points;
}

// Far from the origin, where the coordinates have few bits left for the tolerance.
Points DrawFarAway(Draw& draw)
{
    const double away = draw.Power(3.0, 14.0);
    Points points;
    for (const ZETLaserPoint& point : draw.Chance(0.5) ? DrawArc(draw) : DrawNoiseNearTolerance(draw)) {
        const ZETMathPoint& at = point.GetPosition();
        Append(points, at.GetX() + away, at.GetY() - away, at.GetZ() + 0.3 * away);
    }
    return points;
}

// From where squares vanish to where they overflow.
Points DrawAnyScale(Draw& draw)
{
    const double scale = draw.Power(-170.0, 170.0);
    Points points;
    for (const ZETLaserPoint& point : draw.Chance(0.5) ? DrawGrid(draw) : DrawRandomWalk(draw)) {
        const ZETMathPoint& at = point.GetPosition();
        Append(points, at.GetX() * scale, at.GetY() * scale, at.GetZ() * scale);
    }
    return points;
}

Points DrawBrokenNumbers(Draw& draw)
{
    const auto spoil = [&](double value) {
        return draw.Chance(0.02)
                   ? draw.OneOf(std::array<double, 5>{notANumber, infinity, -infinity, 1e300, std::ldexp(1.0, -1074)})
                   : value;
    };
    Points points;
    for (const ZETLaserPoint& point : draw.Chance(0.5) ? DrawStraight(draw) : DrawLightNoise(draw)) {
        const ZETMathPoint& at = point.GetPosition();
        Append(points, spoil(at.GetX()), spoil(at.GetY()), spoil(at.GetZ()));
    }
    return points;
}

/*! A tolerance that has a tie with a distance that is measured on the way, or just misses one. */
double DrawTyingTolerance(Draw& draw, const Points& points)
{
    const int count = int(points.size());
    if (count < 3)
        return 0.01;
    const int from = draw.Integer(0, count - 3);
    const int to = draw.Integer(from + 2, std::min(count - 1, from + (draw.Chance(0.5) ? 4 : 60)));
    const double deviation = PlainThinning::GetDeviation(points, false, from, to);
    return draw.OneOf(
        std::array<double, 3>{deviation, std::nextafter(deviation, infinity), std::nextafter(deviation, 0.0)});
}

double DrawTolerance(Draw& draw, const Points& points)
{
    if (draw.Chance(0.4))
        return 0.01;
    if (draw.Chance(0.5))
        return DrawTyingTolerance(draw, points);
    if (draw.Chance(0.6))
        return draw.Power(-6.0, 1.0);
    return draw.OneOf(std::array<double, 9>{0.0, -0.01, 0.0025, 0.005, 0.25, 1e-150, 1e150, infinity, notANumber});
}

double DrawMaxLength(Draw& draw)
{
    if (draw.Chance(0.6))
        return noLimit;
    return draw.Chance(0.7) ? draw.Power(-3.0, 3.0)
                            : draw.OneOf(std::array<double, 5>{0.0, 1.0, infinity, -1.0, notANumber});
}

Points MakePoints(std::initializer_list<ZETMathPoint> places)
{
    Points points;
    for (const ZETMathPoint& at : places)
        Append(points, at.GetX(), at.GetY(), at.GetZ());
    return points;
}

Points MakeRun(int count, const std::function<ZETMathPoint(double)>& place)
{
    Points points;
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const ZETMathPoint at = place(double(i));
        Append(points, at.GetX(), at.GetY(), at.GetZ());
    }
    return points;
}
} // namespace

/*! Thinning keeps exactly the points that the plain greedy pass keeps. */
class TestLaserThinning : public QObject
{
    Q_OBJECT

private slots:
    void randomCurvesKeepThePointsOfThePlainPass_data();
    void randomCurvesKeepThePointsOfThePlainPass();
    void longRunsKeepThePointsOfThePlainPass_data();
    void longRunsKeepThePointsOfThePlainPass();
    void pointsAreNeverAddedAndTheFirstStays();
    void treeOnAGridOfEighthsMayBeMoved();
    void everythingTravelsWithItsPoint();
    void listThatLosesNothingStaysShared();
    void listThatIsSharedLeavesTheCopyIntact();
};

void TestLaserThinning::randomCurvesKeepThePointsOfThePlainPass_data()
{
    QTest::addColumn<Generator>("generator");
    QTest::addColumn<int>("curves");
    QTest::newRow("straight") << Generator(&DrawStraight) << 3000;
    QTest::newRow("light noise") << Generator(&DrawLightNoise) << 4000;
    QTest::newRow("noise near the tolerance") << Generator(&DrawNoiseNearTolerance) << 6000;
    QTest::newRow("random walk") << Generator(&DrawRandomWalk) << 6000;
    QTest::newRow("arc") << Generator(&DrawArc) << 4000;
    QTest::newRow("grid") << Generator(&DrawGrid) << 10000;
    QTest::newRow("back and forth") << Generator(&DrawBackAndForth) << 5000;
    QTest::newRow("near the anchor") << Generator(&DrawNearAnchor) << 5000;
    QTest::newRow("knot and run") << Generator(&DrawKnotAndRun) << 20000;
    QTest::newRow("rectangle") << Generator(&DrawRectangle) << 3000;
    QTest::newRow("far away") << Generator(&DrawFarAway) << 3000;
    QTest::newRow("any scale") << Generator(&DrawAnyScale) << 5000;
    QTest::newRow("broken numbers") << Generator(&DrawBrokenNumbers) << 3000;
}

void TestLaserThinning::randomCurvesKeepThePointsOfThePlainPass()
{
    QFETCH(Generator, generator);
    QFETCH(int, curves);
    qint64 before = 0;
    qint64 after = 0;
    for (int i = 0; i < curves; ++i) {
        const auto seed = static_cast<unsigned>(i + 1);
        Draw draw(seed);
        const Points points = generator(draw);
        const bool closed = draw.Chance(0.5);
        const double tolerance = DrawTolerance(draw, points);
        const double maxLength = DrawMaxLength(draw);

        Points expected = points;
        PlainThinning::Thin(expected, closed, tolerance, maxLength);
        Points actual = points;
        ZETLaserThinning::Thin(actual, closed, tolerance, maxLength);
        if (GetPlaces(actual) != GetPlaces(expected)) {
            qWarning("seed %u: %lld points, closed %d, tolerance %a, maxLength %a", seed, qint64(points.size()),
                     int(closed), tolerance, maxLength);
            QCOMPARE(GetPlaces(actual), GetPlaces(expected));
        }
        before += points.size();
        after += actual.size();
    }
    QVERIFY(after > before / 50); // else the curves prove nothing
    QVERIFY(after < before - before / 50);
}

void TestLaserThinning::longRunsKeepThePointsOfThePlainPass_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<double>("tolerance");
    constexpr int count = 4000;
    const auto noisy = [](double step, double noise, unsigned seed) {
        auto draw = std::make_shared<Draw>(seed);
        return MakeRun(count, [=](double i) {
            return ZETMathPoint(step * i, draw->Real(-noise, noise), draw->Real(-noise, noise));
        });
    };
    QTest::newRow("straight along an axis") << MakeRun(count, [](double i) { return ZETMathPoint(i, 0, 0); }) << 0.01;
    QTest::newRow("straight across") << MakeRun(count, [](double i) { return ZETMathPoint(i, i / 3, -i / 7); }) << 0.01;
    QTest::newRow("straight, barely any tolerance")
        << MakeRun(count, [](double i) { return ZETMathPoint(i, i / 3, -i / 7); }) << 1e-13;
    QTest::newRow("light noise") << noisy(0.1, 0.001, 1) << 0.01;
    QTest::newRow("noise at the limit") << noisy(0.1, 0.0035, 2) << 0.01;
    QTest::newRow("noise over the limit") << noisy(0.1, 0.0041, 3) << 0.01;
    QTest::newRow("noise, close points") << noisy(0.0001, 0.003, 4) << 0.01;
    QTest::newRow("noise, closer than the rounding of their place") << noisy(1e-8, 0.003, 5) << 0.01;
    QTest::newRow("large circle") << MakeRun(count, [](double i) {
        return ZETMathPoint(5000.0 * std::cos(i / 9000), 5000.0 * std::sin(i / 9000), 0);
    }) << 0.01;
    QTest::newRow("wave") << MakeRun(count, [](double i) {
        return ZETMathPoint(0.05 * i, 0.0099 * std::sin(i / 300), 0.001 * std::cos(i));
    }) << 0.01;
    QTest::newRow("there and back") << MakeRun(count, [](double i) {
        return ZETMathPoint(std::abs(1000 - std::fmod(i, 2000)), 0.002 * std::sin(i), 0);
    }) << 0.01;
    for (const double broken : {notANumber, infinity, 1e200}) {
        Points spoiled = noisy(0.1, 0.001, 6);
        spoiled[100].SetPosition(ZETMathPoint(broken, 0, 0));
        spoiled[1000].SetPosition(ZETMathPoint(100, broken, 0));
        QTest::addRow("a point at %g", broken) << spoiled << 0.01;
    }
    QTest::newRow("spiral from the anchor") << MakeRun(count, [](double i) {
        return ZETMathPoint(1e-5 * i * std::cos(i / 50), 1e-5 * i * std::sin(i / 50), 0);
    }) << 0.01;
}

void TestLaserThinning::longRunsKeepThePointsOfThePlainPass()
{
    QFETCH(Points, points);
    QFETCH(double, tolerance);
    for (const bool closed : {false, true}) {
        for (const double maxLength : {noLimit, 150.0}) {
            Points expected = points;
            PlainThinning::Thin(expected, closed, tolerance, maxLength);
            Points actual = points;
            ZETLaserThinning::Thin(actual, closed, tolerance, maxLength);
            QCOMPARE(GetPlaces(actual), GetPlaces(expected));
        }
    }
}

void TestLaserThinning::pointsAreNeverAddedAndTheFirstStays()
{
    for (int i = 0; i < 3000; ++i) {
        Draw draw(static_cast<unsigned>(i));
        const Points points = draw.Chance(0.5) ? DrawRandomWalk(draw) : DrawNearAnchor(draw);
        const bool closed = draw.Chance(0.5);
        Points thinned = points;
        ZETLaserThinning::Thin(thinned, closed, DrawTolerance(draw, points), DrawMaxLength(draw));
        QVERIFY(thinned.size() <= points.size());
        if (points.isEmpty())
            continue;
        QCOMPARE(GetPlaces(thinned).first(), 0);
        if (!closed)
            QCOMPARE(GetPlaces(thinned).last(), int(points.size()) - 1);
    }
}

void TestLaserThinning::treeOnAGridOfEighthsMayBeMoved()
{
    for (int i = 0; i < 2000; ++i) {
        Draw draw(static_cast<unsigned>(i));
        Points points;
        Points moved;
        for (int count = draw.Integer(0, 40); count > 0; --count) {
            const ZETMathPoint at(draw.Integer(-80, 80) / 8.0, draw.Integer(-2, 2) / 8.0, draw.Integer(0, 1) / 8.0);
            Append(points, at.GetX(), at.GetY(), at.GetZ());
            Append(moved, at.GetX() + 1234.0, at.GetY() - 5000.0, at.GetZ() + 17.0);
        }
        const double tolerance = draw.OneOf(std::array<double, 4>{0.01, 0.125, 0.2, 0.25});
        const bool closed = draw.Chance(0.5);
        ZETLaserThinning::Thin(points, closed, tolerance, noLimit);
        ZETLaserThinning::Thin(moved, closed, tolerance, noLimit);
        QCOMPARE(GetPlaces(moved), GetPlaces(points));
    }
}

void TestLaserThinning::everythingTravelsWithItsPoint()
{
    Points points = MakePoints({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}});
    points[2].SetOffsetPoint(ZETMathPoint(7, 8, 9));
    points[3].SetNormal(ZETMathVector(0, 1, 0));
    const Points kept{points[0], points[2], points[3]};
    ZETLaserThinning::Thin(points, false, 0.01, noLimit);
    QCOMPARE(points, kept);
}

void TestLaserThinning::listThatLosesNothingStaysShared()
{
    Points points = MakePoints({{0, 0, 0}, {1, 1, 0}, {2, 0, 0}});
    const Points copy = points;
    ZETLaserThinning::Thin(points, true, 0.01, noLimit);
    QVERIFY(points.isSharedWith(copy));
}

void TestLaserThinning::listThatIsSharedLeavesTheCopyIntact()
{
    Points points = MakePoints({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}});
    const Points copy = points;
    ZETLaserThinning::Thin(points, false, 0.01, noLimit);
    QCOMPARE(points.size(), 2);
    QCOMPARE(GetPlaces(copy), QList<int>({0, 1, 2}));
}

QTEST_GUILESS_MAIN(TestLaserThinning)
#include "TestLaserThinning.moc"
