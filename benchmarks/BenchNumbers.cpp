#include "benchmarks/BenchRatios.h"
#include "writers/ZETLaserNumberText.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace
{
std::vector<double> MakeValues(double size)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> range(-size, size);
    std::vector<double> values(100000);
    for (double& value : values)
        value = range(random);
    return values;
}

/*! The number's text alone, where a writer has it: in a block. */
void RunNumberText(benchmark::State& state, double size)
{
    const std::vector<double> values = MakeValues(size);
    const int decimals = int(state.range(0));
    std::array<char, ZETLaserNumberText::room> text{};
    for ([[maybe_unused]] auto _ : state) {
        for (const double value : values) {
            benchmark::DoNotOptimize(ZETLaserNumberText::TryWrite(text.data(), value, decimals));
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * qint64(values.size()));
}

void RunAppend(benchmark::State& state, double size)
{
    const std::vector<double> values = MakeValues(size);
    const int decimals = int(state.range(0));
    QByteArray buffer;
    for ([[maybe_unused]] auto _ : state) {
        buffer.resize(0);
        for (const double value : values)
            ZETLaserNumberText::Append(buffer, value, decimals);
        benchmark::DoNotOptimize(buffer.constData());
    }
    state.SetItemsProcessed(state.iterations() * qint64(values.size()));
}

/*! The number's text alone: bringing it into a buffer of bytes would come on top. */
void RunQString(benchmark::State& state, double size)
{
    const std::vector<double> values = MakeValues(size);
    const int decimals = int(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        for (const double value : values)
            benchmark::DoNotOptimize(QString::number(value, 'f', decimals).constData());
    }
    state.SetItemsProcessed(state.iterations() * qint64(values.size()));
}

void Register(const std::string& kind, double size)
{
    const auto add = [&](const std::string& prefix, void (*run)(benchmark::State&, double)) {
        benchmark::RegisterBenchmark((prefix + kind).c_str(), [=](benchmark::State& state) { run(state, size); })
            ->Arg(3)
            ->Arg(6);
    };
    add("NumberText/", &RunNumberText);
    add("NumberAppended/", &RunAppend);
    add("QStringNumber/", &RunQString);
    for (const std::string decimals : {"/3", "/6"})
        BenchRatios::WantAtLeast(6.0, "QStringNumber/" + kind + decimals, "NumberText/" + kind + decimals);
}

[[maybe_unused]] const bool registered = [] {
    Register("lengths", 20000.0);
    Register("normals", 1.0);
    return true;
}();
} // namespace
