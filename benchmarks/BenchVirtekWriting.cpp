// Writing of a Virtek part file, beside two peers: the same bytes in large blocks, which is what the disk and the
// system cost alone, and the same lines through QTextStream, QString::number and Qt::endl, which is the plain way to
// write them.

#include "benchmarks/BenchPart.h"
#include "benchmarks/BenchRatios.h"
#include "benchmarks/BenchWritingJob.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserPoint.h"

#include <QFile>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <string>

using namespace Qt::Literals::StringLiterals;

namespace
{
void WriteThroughTextStream(const ZETLaserGroup& root, const QString& name)
{
    const auto number = [](double value) { return QString::number(value, 'f', 6); };
    QFile file(name);
    file.open(BenchPart::fileMode);
    QTextStream stream(&file);
    const auto leaf = root.GetChildren().first().staticCast<ZETLaserGroup>();
    stream << "LAYER START " << leaf->GetName() << Qt::endl;
    stream << "START " << leaf->GetName() << Qt::endl;
    for (const auto& curve : BenchPart::GetContour(root).GetCurves()) {
        stream << "P " << curve->GetPointCount() << Qt::endl;
        for (const auto& point : std::as_const(*curve).GetPoints()) {
            const auto& at = point.GetPosition();
            stream << number(at.GetX()) << ' ' << number(at.GetY()) << ' ' << number(at.GetZ());
            if (point.HasNormal()) {
                const auto& normal = point.GetNormal();
                stream << "   " << number(normal.GetX()) << ' ' << number(normal.GetY()) << ' '
                       << number(normal.GetZ());
            }
            stream << Qt::endl;
        }
    }
    stream << "END " << leaf->GetName() << Qt::endl;
    stream << "LAYER END " << leaf->GetName() << Qt::endl;
    stream << "EOD" << Qt::endl;
}

void VirtekWriting(benchmark::State& state)
{
    BenchWritingJob job(state, ZETLaserOptions::FileVirtek);
    for (auto _ : state)
        job.Write();
    job.SetCounters(state);
}

void LargeBlocks(benchmark::State& state)
{
    const BenchWritingJob job(state, ZETLaserOptions::FileVirtek);
    for (auto _ : state)
        job.WriteInBlocks();
    job.SetCounters(state);
}

void TextStreamLines(benchmark::State& state)
{
    const BenchWritingJob job(state, ZETLaserOptions::FileVirtek);
    for (auto _ : state)
        WriteThroughTextStream(job.GetTree(), job.GetFileName());
    job.SetCounters(state);
}

void SetUp(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"points", "normals"})->Args({1000000, 0})->Args({1000000, 1})->UseRealTime();
}

BENCHMARK(LargeBlocks)->Apply(SetUp);
BENCHMARK(VirtekWriting)->Apply(SetUp);
BENCHMARK(TextStreamLines)->Apply(SetUp);

const bool wants = [] {
    for (const std::string args : {"/points:1000000/normals:0", "/points:1000000/normals:1"}) {
        BenchRatios::WantAtMost(6.0, "VirtekWriting" + args, "LargeBlocks" + args);
        BenchRatios::WantAtLeast(10.0, "TextStreamLines" + args, "VirtekWriting" + args);
    }
    return true;
}();
} // namespace
