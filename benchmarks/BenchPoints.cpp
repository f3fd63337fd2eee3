#include "benchmarks/BenchRatios.h"
#include "laser/ZETLaserPoint.h"

#include <benchmark/benchmark.h>

#include <QList>

#include <malloc.h>

namespace
{
constexpr int pointCount = 1000000;

/*! Bytes in use, with what the allocator adds to each block. */
std::size_t GetBytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void AppendPoints(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        QList<ZETLaserPoint> points;
        for (int i = 0; i < pointCount; ++i)
            points.append(ZETLaserPoint(ZETMathPoint(i, 0.0, 0.0), ZETMathVector(0.0, 0.0, 1.0)));
        benchmark::DoNotOptimize(points.constData());
        state.PauseTiming(); // both ways destroy the same
        points.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(AppendPoints)->Unit(benchmark::kMillisecond);

void MakePointsInPlace(benchmark::State& state)
{
    double bytes = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        const std::size_t before = GetBytesInUse();
        QList<ZETLaserPoint> points;
        points.reserve(pointCount);
        for (int i = 0; i < pointCount; ++i)
            points.emplaceBack(ZETMathPoint(i, 0.0, 0.0), ZETMathVector(0.0, 0.0, 1.0));
        benchmark::DoNotOptimize(points.constData());
        state.PauseTiming();
        bytes = double(GetBytesInUse() - before) / pointCount;
        points.clear();
        state.ResumeTiming();
    }
    state.counters["bytesPerPoint"] = bytes;
}
BENCHMARK(MakePointsInPlace)->Unit(benchmark::kMillisecond);

[[maybe_unused]] const bool registered = [] {
    BenchRatios::WantAtLeast(2.5, "AppendPoints", "MakePointsInPlace");
    BenchRatios::WantCounterAtMost(260.0, "MakePointsInPlace", "bytesPerPoint");
    return true;
}();
} // namespace
