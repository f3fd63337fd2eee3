// Writing of a part file in every text format but Virtek, which has a benchmark of its own, beside the same bytes in
// large blocks.

#include "benchmarks/BenchRatios.h"
#include "benchmarks/BenchWritingJob.h"

#include <string>

namespace
{
struct Make {
    const char* name;
    ZETLaserOptions::EOutputFileType fileType;
};

constexpr Make makes[] = {
    {"AssemblyGuidance", ZETLaserOptions::FileAssemblyGuidance},
    {"LAP", ZETLaserOptions::FileLAP},
    {"LPT", ZETLaserOptions::FileLPT},
    {"SL", ZETLaserOptions::FileSL},
    {"GeneralScanning", ZETLaserOptions::FileGeneralScanning},
};

void Writing(benchmark::State& state, ZETLaserOptions::EOutputFileType fileType)
{
    BenchWritingJob job(state, fileType);
    for (auto _ : state)
        job.Write();
    job.SetCounters(state);
}

void LargeBlocks(benchmark::State& state, ZETLaserOptions::EOutputFileType fileType)
{
    const BenchWritingJob job(state, fileType);
    for (auto _ : state)
        job.WriteInBlocks();
    job.SetCounters(state);
}

void SetUp(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"points", "normals"})->Args({1000000, 0})->Args({1000000, 1})->UseRealTime();
}

const bool registered = [] {
    for (const Make& make : makes) {
        const std::string writing = std::string("Writing") + make.name;
        const std::string blocks = std::string("LargeBlocks") + make.name;
        SetUp(benchmark::RegisterBenchmark(blocks.c_str(), LargeBlocks, make.fileType));
        SetUp(benchmark::RegisterBenchmark(writing.c_str(), Writing, make.fileType));
        for (const std::string args : {"/points:1000000/normals:0", "/points:1000000/normals:1"})
            BenchRatios::WantAtMost(8.0, writing + args, blocks + args);
    }
    return true;
}();
} // namespace
