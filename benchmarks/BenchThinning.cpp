#include "benchmarks/BenchRatios.h"
#include "laser/ZETLaserPoint.h"
#include "laser/ZETLaserThinning.h"
#include "tests/support/PlainThinning.h"

#include <benchmark/benchmark.h>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/geometries/register/linestring.hpp>

#include <QList>

#include <cmath>
#include <ctime>
#include <functional>
#include <random>

// The library's own points and lists as geometries of the peer.
BOOST_GEOMETRY_REGISTER_LINESTRING(QList<ZETLaserPoint>)
namespace boost::geometry::traits
{
template <>
struct tag<ZETLaserPoint> {
    using type = point_tag;
};
template <>
struct dimension<ZETLaserPoint> : std::integral_constant<std::size_t, 3> {
};
template <>
struct coordinate_type<ZETLaserPoint> {
    using type = double;
};
template <>
struct coordinate_system<ZETLaserPoint> {
    using type = cs::cartesian;
};
template <std::size_t index>
struct access<ZETLaserPoint, index> {
    static double get(const ZETLaserPoint& point)
    {
        const ZETMathPoint& at = point.GetPosition();
        return index == 0 ? at.GetX() : index == 1 ? at.GetY() : at.GetZ();
    }
    static void set(ZETLaserPoint& point, double value)
    {
        double coordinates[3];
        point.GetPosition().GetCoord(coordinates[0], coordinates[1], coordinates[2]);
        coordinates[index] = value;
        point.SetPosition(ZETMathPoint(coordinates[0], coordinates[1], coordinates[2]));
    }
};
} // namespace boost::geometry::traits

namespace
{
constexpr double tolerance = 0.01;
constexpr double noLimit = 10000000.0;
constexpr double fullTurn = 6.283185307179586;

using Points = QList<ZETLaserPoint>;
using BoostPoint = boost::geometry::model::point<double, 3, boost::geometry::cs::cartesian>;
using BoostLine = boost::geometry::model::linestring<BoostPoint>;

/*! Puts a place of the drawing plane on a plane that leans in space, so that no coordinate is idle. */
ZETMathPoint OnPlane(double x, double y, double up)
{
    return {0.8 * x - 0.36 * y + 0.48 * up, 0.8 * y + 0.6 * up, -0.6 * x - 0.48 * y + 0.64 * up};
}

/*! Noise for points that lie in a row. */
class Noise
{
public:
    explicit Noise(double size)
        : range(-size, size)
    {
    }
    double Next() { return range(engine); }

private:
    std::mt19937 engine{1};
    std::uniform_real_distribution<double> range;
};

void Append(Points& points, double x, double y, double up)
{
    points.emplaceBack(OnPlane(x, y, up), ZETMathVector(0.48, 0.6, 0.64));
}

Points MakeLine(int count, double noiseSize)
{
    Noise noise(noiseSize);
    Points points;
    points.reserve(count);
    for (int i = 0; i < count; ++i)
        Append(points, 5000.0 * i / count, noise.Next(), noise.Next());
    return points;
}

Points MakeCircle(int count, double noiseSize)
{
    Noise noise(noiseSize);
    Points points;
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double angle = fullTurn * i / count;
        const double radius = 1000.0 + noise.Next();
        Append(points, radius * std::cos(angle), radius * std::sin(angle), noise.Next());
    }
    return points;
}

/*! The outline of a ply, as if digitised: waves along the boundary, on a surface that is curved. */
Points MakeBoundary(int count, double noiseSize)
{
    Noise noise(noiseSize);
    Points points;
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double angle = fullTurn * i / count;
        const double radius = 1000.0 * (1.0 + 0.1 * std::cos(3.0 * angle)) + noise.Next();
        Append(points, 2.0 * radius * std::cos(angle), radius * std::sin(angle), 20.0 * std::sin(2.0 * angle));
    }
    return points;
}

Points MakeRectangle(int count, double noiseSize)
{
    Noise noise(noiseSize);
    const int side = count / 4;
    Points points;
    points.reserve(count);
    for (int i = 0; i < 4 * side; ++i) {
        const double along = double(i % side) / side;
        const double off = noise.Next();
        switch (i / side) {
        case 0:
            Append(points, 2000.0 * along, off, 0.0);
            break;
        case 1:
            Append(points, 2000.0 + off, 1000.0 * along, 0.0);
            break;
        case 2:
            Append(points, 2000.0 * (1.0 - along), 1000.0 + off, 0.0);
            break;
        default:
            Append(points, off, 1000.0 * (1.0 - along), 0.0);
        }
    }
    return points;
}

struct Shape {
    const char* name;
    Points (*make)(int count, double noise);
    double noise;
    bool closed;
    double timesPlain; //!< how many times faster than the plain pass, at 1e5 points
};

// Noise near the tolerance: half of it up and down, so that a side is one run whose chords pass by little; and more,
// so that they fail by little.
constexpr Shape shapes[] = {
    {"line", &MakeLine, 0.0, false, 200.0},
    {"lineNearTolerance", &MakeLine, 0.0034, false, 200.0},
    {"circle", &MakeCircle, 0.0, true, 6.0},
    {"circleOpen", &MakeCircle, 0.0, false, 6.0},
    {"boundaryLightNoise", &MakeBoundary, 0.001, true, 6.0},
    {"boundaryLightNoiseOpen", &MakeBoundary, 0.001, false, 6.0},
    {"boundaryHeavyNoise", &MakeBoundary, 0.02, true, 1.0 / 3.0},
    {"rectangle", &MakeRectangle, 0.0, true, 200.0},
    {"rectangleNearTolerance", &MakeRectangle, 0.0049, true, 200.0},
    {"rectangleNearToleranceOpen", &MakeRectangle, 0.0049, false, 200.0},
    {"rectangleOverTolerance", &MakeRectangle, 0.0055, true, 1.0 / 3.0},
};

/*! Processor time of this thread, in seconds: what else the machine does meanwhile doesn't count. */
double GetTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) * 1e-9;
}

using Thinning = std::function<void(Points& points)>;

void RunOnCopies(benchmark::State& state, const Points& points, const Thinning& thin)
{
    qsizetype kept = 0;
    for ([[maybe_unused]] auto _ : state) {
        Points copy = points;
        copy.detach();
        const double start = GetTime();
        thin(copy);
        state.SetIterationTime(GetTime() - start);
        kept = copy.size();
    }
    state.SetItemsProcessed(state.iterations() * points.size());
    state.counters["kept"] = double(kept);
}

void RunFast(benchmark::State& state, const Shape& shape)
{
    RunOnCopies(state, shape.make(int(state.range(0)), shape.noise),
                [&](Points& points) { ZETLaserThinning::Thin(points, shape.closed, tolerance, noLimit); });
}

void RunPlain(benchmark::State& state, const Shape& shape)
{
    RunOnCopies(state, shape.make(int(state.range(0)), shape.noise),
                [&](Points& points) { PlainThinning::Thin(points, shape.closed, tolerance, noLimit); });
}

/*! Which points go, without removing them. */
void RunSearch(benchmark::State& state, const Shape& shape)
{
    const Points points = shape.make(int(state.range(0)), shape.noise);
    for ([[maybe_unused]] auto _ : state) {
        const double start = GetTime();
        benchmark::DoNotOptimize(ZETLaserThinning::FindRemovals(points, shape.closed, tolerance, noLimit).data());
        state.SetIterationTime(GetTime() - start);
    }
    state.SetItemsProcessed(state.iterations() * points.size());
}

/*! The peer on bare coordinates: the simplification that everybody has, into a list of its own. Nothing is removed. */
void RunBoost(benchmark::State& state, const Shape& shape)
{
    BoostLine line;
    for (const ZETLaserPoint& point : shape.make(int(state.range(0)), shape.noise)) {
        const ZETMathPoint& at = point.GetPosition();
        line.emplace_back(at.GetX(), at.GetY(), at.GetZ());
    }
    std::size_t kept = 0;
    for ([[maybe_unused]] auto _ : state) {
        BoostLine simple;
        const double start = GetTime();
        boost::geometry::simplify(line, simple, tolerance);
        state.SetIterationTime(GetTime() - start);
        kept = simple.size();
    }
    state.SetItemsProcessed(state.iterations() * qint64(line.size()));
    state.counters["kept"] = double(kept);
}

/*! The peer at the whole task: afterwards the list of the library's points holds the kept ones alone. */
void RunBoostInPlace(benchmark::State& state, const Shape& shape)
{
    RunOnCopies(state, shape.make(int(state.range(0)), shape.noise), [](Points& points) {
        Points simple;
        boost::geometry::simplify(points, simple, tolerance);
        points = simple;
    });
}

void Register(const Shape& shape)
{
    const std::string name = shape.name;
    const auto add = [&](const std::string& prefix, void (*run)(benchmark::State&, const Shape&)) {
        return benchmark::RegisterBenchmark((prefix + name).c_str(),
                                            [=](benchmark::State& state) { run(state, shape); })
            ->UseManualTime();
    };
    add("Thin/", &RunFast)->RangeMultiplier(10)->Range(1000, 1000000);
    add("Search/", &RunSearch)->Arg(100000)->Arg(1000000);
    add("Boost/", &RunBoost)->Arg(100000)->Arg(1000000);
    add("BoostInPlace/", &RunBoostInPlace)->Arg(100000)->Arg(1000000);
    add("Plain/", &RunPlain)->Arg(1000);
    add("Plain/", &RunPlain)->Arg(100000)->Iterations(1); // takes up to a minute

    BenchRatios::WantAtLeast(shape.timesPlain, "Plain/" + name + "/100000", "Thin/" + name + "/100000");
    BenchRatios::WantAtLeast(1.0 / 3.0, "Plain/" + name + "/1000", "Thin/" + name + "/1000");
    BenchRatios::WantAtMost(12.0, "Thin/" + name + "/1000000", "Thin/" + name + "/100000");
    for (const std::string count : {"/100000", "/1000000"}) {
        BenchRatios::WantAtMost(2.5, "Search/" + name + count, "Boost/" + name + count);
        BenchRatios::WantAtMost(2.5, "Thin/" + name + count, "BoostInPlace/" + name + count);
        // What is removed must be destroyed, which alone costs more than Boost's whole pass over a straight line.
        BenchRatios::WantAtMost(2.5, "Thin/" + name + count, "Boost/" + name + count);
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const Shape& shape : shapes)
        Register(shape);
    return true;
}();
} // namespace
