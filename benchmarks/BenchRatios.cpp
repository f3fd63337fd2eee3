#include "benchmarks/BenchRatios.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <vector>

namespace
{
struct Want {
    bool atLeast;
    double limit;
    std::string name;
    std::string peer;    //!< empty for a counter
    std::string counter; //!< empty for a ratio of times
};

std::vector<Want>& GetWants()
{
    static std::vector<Want> wants;
    return wants;
}

/*! Prints what the console reporter prints, and remembers it. */
class Recorder : public benchmark::ConsoleReporter
{
public:
    // Colours and columns in pipes and logs are noise.
    Recorder()
        : ConsoleReporter(OO_None)
    {
    }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            hasFault |= run.error_occurred && run.error_message.rfind("skipped: ", 0) != 0;
            if (run.run_type != Run::RT_Iteration || run.error_occurred)
                continue;
            const auto [at, isNew] = times.emplace(GetName(run), run.GetAdjustedRealTime());
            if (!isNew)
                at->second = std::min(at->second, run.GetAdjustedRealTime());
            for (const auto& [counter, value] : run.counters)
                counters[GetName(run) + ' ' + counter] = value;
        }
        ConsoleReporter::ReportRuns(runs);
    }

    bool HasFault() const { return hasFault; }

    std::optional<double> GetResult(const Want& want) const
    {
        if (!want.counter.empty())
            return Find(counters, want.name + ' ' + want.counter);
        const std::optional<double> time = Find(times, want.name);
        const std::optional<double> peer = Find(times, want.peer);
        return time && peer ? std::optional(*time / *peer) : std::nullopt;
    }

private:
    /*! Without what only says how the run was steered. */
    static std::string GetName(const Run& run)
    {
        return run.run_name.function_name + (run.run_name.args.empty() ? "" : '/' + run.run_name.args);
    }
    static std::optional<double> Find(const std::map<std::string, double>& values, const std::string& key)
    {
        const auto at = values.find(key);
        return at != values.end() ? std::optional(at->second) : std::nullopt;
    }

    bool hasFault = false;
    std::map<std::string, double> times; //!< in the unit of the benchmark, which is nanoseconds for all
    std::map<std::string, double> counters;
};

void PrintTable(const Recorder& recorder)
{
    std::printf("\n%-84s %10s  %s\n", "what", "result", "wanted");
    for (const Want& want : GetWants()) {
        const std::optional<double> result = recorder.GetResult(want);
        if (!result)
            continue; // left out by --benchmark_filter
        const bool met = want.atLeast ? *result >= want.limit : *result <= want.limit;
        const std::string what = want.name + (want.counter.empty() ? " : " + want.peer : " " + want.counter);
        std::printf("%-84s %10.2f  at %s %g%s\n", what.c_str(), *result, want.atLeast ? "least" : "most", want.limit,
                    met ? "" : "  MISSED");
    }
}
} // namespace

void BenchRatios::WantAtLeast(double factor, const std::string& slower, const std::string& faster)
{
    GetWants().push_back({true, factor, slower, faster, {}});
}

void BenchRatios::WantAtMost(double factor, const std::string& name, const std::string& peer)
{
    GetWants().push_back({false, factor, name, peer, {}});
}

void BenchRatios::WantCounterAtMost(double limit, const std::string& name, const std::string& counter)
{
    GetWants().push_back({false, limit, name, {}, counter});
}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Recorder recorder;
    benchmark::RunSpecifiedBenchmarks(&recorder);
    PrintTable(recorder);
    return recorder.HasFault() ? 1 : 0;
}
