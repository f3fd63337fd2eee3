#include "benchmarks/BenchWritingJob.h"

#include "benchmarks/BenchPart.h"
#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserGroup.h"
#include "writers/ZETLaserWriter.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int pointsInCurve = 1000;

/*! \a file without the one line that tells the time of its writing. */
QByteArray WithoutClock(const QByteArray& file)
{
    const qsizetype clock = file.indexOf(" FILEDATE=");
    return clock < 0 ? file : file.first(clock) + file.mid(file.indexOf('\n', clock));
}
} // namespace

BenchWritingJob::BenchWritingJob(const benchmark::State& state, ZETLaserOptions::EOutputFileType fileType)
    : pointCount(int(state.range(0)))
    , tree(BenchPart::MakeTree(pointCount, pointsInCurve, false, state.range(1) != 0))
{
    options.SetFileType(fileType);
    options.SetFileName(folder.filePath(u"part"_s + ZETLaserFileType::Of(fileType).extension));
    Write();
    bytes = BenchPart::ReadBytes(options.GetFileName());
}

void BenchWritingJob::Write()
{
    ZETLaserFileType::Of(options.GetFileType()).makeWriter(&options, tree, nullptr)->Write();
}

void BenchWritingJob::WriteInBlocks() const
{
    BenchPart::WriteInBlocks(bytes, options.GetFileName());
}

void BenchWritingJob::SetCounters(benchmark::State& state) const
{
    state.SetItemsProcessed(state.iterations() * pointCount);
    state.SetBytesProcessed(state.iterations() * bytes.size());
    if (WithoutClock(BenchPart::ReadBytes(options.GetFileName())) != WithoutClock(bytes))
        state.SkipWithError("the ways to write don't give the same bytes");
}
