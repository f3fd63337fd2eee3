#include "benchmarks/BenchRatios.h"
#include "tests/reader/ReaderModel.h"

#include "reader/ZETLaserReaderComposites.h"

#include <ZETMathematics/ZETMathAxis.h>

#include <benchmark/benchmark.h>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{

/*! A circle of \a radius about the origin, in the XY plane. */
QList<ZETMathPoint> MakeCircle(double radius, int count)
{
    QList<ZETMathPoint> points;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * M_PI * i / count;
        points.append(ZETMathPoint(radius * std::cos(angle), radius * std::sin(angle), 0.0));
    }
    return points;
}

/*! Layups of ten sequences of ten plies each. */
QString MakeText(int plies)
{
    QString text;
    for (int i = 0; i < plies; ++i) {
        if (i % 100 == 0)
            text += u"layup L%1 { "_s.arg(i / 100);
        if (i % 10 == 0)
            text += u"sequence S%1 { "_s.arg(i / 10);
        text += u"ply P%1 "_s.arg(i);
        if (i % 10 == 9)
            text += u"} "_s;
        if (i % 100 == 99)
            text += u"} "_s;
    }
    return text;
}

/*! Gives every ply of the model one boundary. */
void SetBoundaries(ReaderModel& model, const ZETOpenRef<ZETGeoAssembledCurveOnSurface>& boundary)
{
    for (ZETFeatObject* feature : model.root->GetAllChildren()) {
        if (auto* const ply = qobject_cast<ZETCompPlyBase*>(feature))
            ZETOpenComposites::SetBoundaryCurves(*ply, {boundary.Get()});
    }
}

void Run(benchmark::State& state, ReaderModel& model)
{
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(model.Read());
    const auto plies = static_cast<double>(model.options.GetPlies().size());
    const auto rate = benchmark::Counter::kIsIterationInvariantRate;
    state.counters["plies"] = benchmark::Counter(plies, rate);
    state.counters["points"] = benchmark::Counter(model.tree->GetPointCount(), rate);
}

/*! Many plies of few points: what the walk costs. */
void ReadPlies(benchmark::State& state)
{
    ReaderModel model(MakeText(static_cast<int>(state.range(0))));
    model.SetTool(MakeFlatTool());
    SetBoundaries(model, model.MakeBoundary(MakeCircle(100.0, 8), true));
    Run(state, model);
}
BENCHMARK(ReadPlies)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/*! One ply of many points: what the kernel and the points cost. */
void ReadPointsOnPlane(benchmark::State& state)
{
    ReaderModel model(u"layup L { sequence S { ply P } }"_s);
    model.SetTool(MakeFlatTool());
    SetBoundaries(model, model.MakeBoundary(MakeCircle(900.0, static_cast<int>(state.range(0))), true));
    Run(state, model);
}
BENCHMARK(ReadPointsOnPlane)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/*! The same on a cylinder, with segments that are cut: places at an arc length along the surface. */
void ReadCutSegmentsOnCylinder(benchmark::State& state)
{
    ReaderModel model(u"layup L { sequence S { ply P } }"_s);
    ZETMathAxis axis; // a cylinder along X, above the plane of the circle
    axis.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0), ZETMathVector(1.0, 0.0, 0.0));
    model.SetTool(ZETOpenSurface::MakeCylinder(axis, 1000.0, 0.0, M_PI, -1000.0, 1000.0));
    QList<ZETMathPoint> circle = MakeCircle(600.0, 100);
    for (ZETMathPoint& point : circle)
        point = point + ZETMathVector(0.0, 0.0, 800.0);
    SetBoundaries(model, model.MakeBoundary(circle, true));
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(4000.0 / static_cast<double>(state.range(0)));
    Run(state, model);
}
BENCHMARK(ReadCutSegmentsOnCylinder)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/*! A hundred plies one on top of the other, each lifted by those beneath. */
void ReadLiftedBoundaries(benchmark::State& state)
{
    ReaderModel model(MakeText(100));
    model.SetTool(MakeFlatTool());
    SetBoundaries(model, model.MakeBoundary(MakeCircle(600.0, 200), true));
    ZETMatMaterial* const material = model.AddMaterial(u"M"_s, 0.25);
    for (ZETFeatObject* feature : model.root->GetAllChildren()) {
        if (auto* const ply = qobject_cast<ZETCompPly*>(feature))
            ZETOpenComposites::SetMaterials(*ply, {material});
    }
    model.options.SetOffsetMode(ZETLaserOptions::OffsetComplete);
    model.options.SetUsePointOffset(true);
    Run(state, model);
}
BENCHMARK(ReadLiftedBoundaries)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool registered = [] {
    // Reading is linear in plies and points; a tree of ten thousand plies has outgrown the caches of a processor.
    BenchRatios::WantAtMost(20.0, "ReadPlies/10000", "ReadPlies/1000");
    BenchRatios::WantAtMost(15.0, "ReadPointsOnPlane/100000", "ReadPointsOnPlane/10000");
    return true;
}();

} // namespace
