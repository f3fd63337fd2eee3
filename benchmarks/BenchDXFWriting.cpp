// Writing of a laser job as DXF, beside three peers: the same bytes in large blocks, which is what the disk and the
// system cost alone, and the same polylines through dxflib and through the r12writer of ezdxf, which are what one would
// otherwise write DXF with.

#include "benchmarks/BenchPart.h"
#include "benchmarks/BenchRatios.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "writers/ZETLaserWriterDXF.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#if ZET_HAS_DXFLIB
#include <dxflib/dl_dxf.h>
#endif

#include <memory>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace
{
#if ZET_HAS_DXFLIB
void WriteWithDxflib(const ZETLaserGroup& root, const QString& name)
{
    constexpr int closed3D = 9;
    DL_Dxf dxf;
    const std::unique_ptr<DL_WriterA> writer(dxf.out(name.toLocal8Bit().constData(), DL_Codes::AC1009));
    const DL_Attributes attributes("1", 0, 0, "0", 1.0);
    dxf.writeHeader(*writer);
    writer->sectionEnd();
    writer->sectionEntities();
    for (const auto& curve : BenchPart::GetContour(root).GetCurves()) {
        dxf.writePolyline(*writer, DL_PolylineData(curve->GetPointCount(), 0, 0, closed3D), attributes);
        for (const auto& point : std::as_const(*curve).GetPoints()) {
            const auto& at = point.GetPosition();
            dxf.writeVertex(*writer, DL_VertexData(at.GetX(), at.GetY(), at.GetZ()));
        }
        dxf.writePolylineEnd(*writer);
    }
    writer->sectionEnd();
    writer->dxfEOF();
    writer->close();
}
#endif

/*! One job: its tree, a folder for its files, and the bytes of its part file. */
class Job
{
public:
    explicit Job(const benchmark::State& state)
        : pointCount(int(state.range(0)))
        , tree(BenchPart::MakeTree(pointCount, int(state.range(1)), true, false))
    {
        options.SetFileType(ZETLaserOptions::FileDXF);
        options.SetFileName(folder.filePath(u"part.DXF"_s));
    }

    void Write() { ZETLaserWriterDXF(&options, tree, &materials).Write(); }
    QString GetPeerFile() const { return folder.filePath(u"peer.DXF"_s); }

    void SetCounters(benchmark::State& state, const QString& name) const
    {
        const QByteArray bytes = BenchPart::ReadBytes(name);
        if (bytes.count("VERTEX\n") < pointCount)
            state.SkipWithError("vertices are missing from the file");
        state.SetItemsProcessed(state.iterations() * pointCount);
        state.SetBytesProcessed(state.iterations() * bytes.size());
    }

    int pointCount;
    QSharedPointer<ZETLaserGroup> tree;
    QTemporaryDir folder{u"bench-dxf-XXXXXX"_s};
    QList<ZETMatMaterial*> materials;
    ZETLaserOptions options;
};

void DXFWriting(benchmark::State& state)
{
    Job job(state);
    for (auto _ : state)
        job.Write();
    job.SetCounters(state, job.options.GetFileName());
}

void DXFLargeBlocks(benchmark::State& state)
{
    Job job(state);
    job.Write();
    const QByteArray bytes = BenchPart::ReadBytes(job.options.GetFileName());
    for (auto _ : state)
        BenchPart::WriteInBlocks(bytes, job.GetPeerFile());
    job.SetCounters(state, job.GetPeerFile());
}

void DXFDxflib(benchmark::State& state)
{
#if ZET_HAS_DXFLIB
    Job job(state);
    for (auto _ : state)
        WriteWithDxflib(*job.tree, job.GetPeerFile());
    job.SetCounters(state, job.GetPeerFile());
#else
    state.SkipWithError("skipped: dxflib was not found when this was built (Debian: libdxflib-dev)");
#endif
}

/*! Python takes the time itself, so that its start and the making of the points don't count. */
void DXFEzdxf(benchmark::State& state)
{
    Job job(state);
    // The packages of the system belong to its own interpreter, and another one may come first in the path.
    const QString systemPython = u"/usr/bin/python3"_s;
    const QString python = QFile::exists(systemPython) ? systemPython : u"python3"_s;
    for (auto _ : state) {
        QProcess process;
        process.start(python, {u"-B"_s, QStringLiteral(ZET_SOURCE_DIR "/benchmarks/WriteDXFWithEzdxf.py"),
                               job.GetPeerFile(), QString::number(job.pointCount), QString::number(state.range(1))});
        bool isNumber = false;
        double seconds = 0.0;
        if (process.waitForFinished(-1))
            seconds = process.readAllStandardOutput().trimmed().toDouble(&isNumber);
        if (!isNumber) {
            state.SkipWithError("skipped: ezdxf did not run here (Debian: python3-ezdxf)");
            return;
        }
        state.SetIterationTime(seconds);
    }
    job.SetCounters(state, job.GetPeerFile());
}

void SetUp(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgNames({"points", "curve"})->Args({1000000, 1000})->Args({1000000, 10});
}
void SetUpRealTime(benchmark::internal::Benchmark* benchmark)
{
    SetUp(benchmark);
    benchmark->UseRealTime();
}

BENCHMARK(DXFLargeBlocks)->Apply(SetUpRealTime);
BENCHMARK(DXFWriting)->Apply(SetUpRealTime);
BENCHMARK(DXFDxflib)->Apply(SetUpRealTime);
BENCHMARK(DXFEzdxf)->Apply(SetUp)->Iterations(1)->UseManualTime();

const bool wants = [] {
    for (const std::string args : {"/points:1000000/curve:1000", "/points:1000000/curve:10"}) {
        BenchRatios::WantAtMost(8.0, "DXFWriting" + args, "DXFLargeBlocks" + args);
        BenchRatios::WantAtLeast(20.0, "DXFDxflib" + args, "DXFWriting" + args);
        BenchRatios::WantAtLeast(20.0, "DXFEzdxf" + args, "DXFWriting" + args);
    }
    return true;
}();
} // namespace
