// Writing of a Virtek part file, beside two peers: the same bytes in large blocks, which is what the disk and the
// system cost alone, and the same lines through QTextStream, QString::number and Qt::endl, which is the plain way to
// write them.

#include "benchmarks/BenchRatios.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "writers/ZETLaserWriterVirtek.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr QIODevice::OpenMode fileMode = QIODevice::WriteOnly | QIODevice::Text;

/*! A group of closed curves on a bowl some metres wide. */
QSharedPointer<ZETLaserGroup> MakeTree(int pointCount, bool normals)
{
    constexpr int pointsInCurve = 1000;
    const auto root = QSharedPointer<ZETLaserGroup>::create(QSharedPointer<QObject>());
    const auto leaf = QSharedPointer<ZETLaserGroup>::create(root);
    leaf->SetName(u"P1"_s);
    root->AddGroup(leaf);
    const auto contour = QSharedPointer<ZETLaserContour>::create(leaf);
    leaf->AddContour(contour);
    for (int first = 0; first < pointCount; first += pointsInCurve) {
        const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
        curve->GetPoints().reserve(pointsInCurve);
        for (int i = 0; i < pointsInCurve; ++i) {
            const double angle = 6.283185307 * i / pointsInCurve;
            const double radius = 100.0 + 0.005 * first;
            const ZETMathPoint point(radius * std::cos(angle), radius * std::sin(angle), 0.0001 * radius * radius);
            const ZETMathVector normal(0.6 * std::cos(angle), 0.6 * std::sin(angle), 0.8);
            curve->GetPoints().emplaceBack(point, normals ? normal : ZETMathVector());
        }
        contour->AddCurve(curve);
    }
    return root;
}

void WriteInBlocks(const QByteArray& bytes, const QString& name)
{
    constexpr qsizetype blockSize = 1024 * 1024;
    QFile file(name);
    file.open(fileMode);
    for (qsizetype begin = 0; begin < bytes.size(); begin += blockSize)
        file.write(bytes.constData() + begin, std::min(blockSize, bytes.size() - begin));
}

void WriteThroughTextStream(const ZETLaserGroup& root, const QString& name)
{
    const auto number = [](double value) { return QString::number(value, 'f', 6); };
    QFile file(name);
    file.open(fileMode);
    QTextStream stream(&file);
    const auto leaf = root.GetChildren().first().staticCast<ZETLaserGroup>();
    const auto contour = leaf->GetChildren().first().staticCast<ZETLaserContour>();
    stream << "LAYER START " << leaf->GetName() << Qt::endl;
    stream << "START " << leaf->GetName() << Qt::endl;
    for (const auto& curve : std::as_const(*contour).GetCurves()) {
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

QByteArray ReadBytes(const QString& name)
{
    QFile file(name);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/*! One job: its tree, a folder for its files, and the bytes of its part file. */
class Job
{
public:
    explicit Job(const benchmark::State& state)
        : pointCount(int(state.range(0)))
        , tree(MakeTree(pointCount, state.range(1) != 0))
    {
        options.SetFileType(ZETLaserOptions::FileVirtek);
        options.SetFileName(folder.filePath(u"part.ply"_s));
        ZETLaserWriterVirtek(&options, tree).Write();
        bytes = ReadBytes(options.GetFileName());
    }

    void SetCounters(benchmark::State& state) const
    {
        state.SetItemsProcessed(state.iterations() * pointCount);
        state.SetBytesProcessed(state.iterations() * bytes.size());
        if (ReadBytes(options.GetFileName()) != bytes)
            state.SkipWithError("the ways to write don't give the same bytes");
    }

    int pointCount;
    QSharedPointer<ZETLaserGroup> tree;
    QTemporaryDir folder{u"bench-virtek-XXXXXX"_s};
    ZETLaserOptions options;
    QByteArray bytes;
};

void VirtekWriting(benchmark::State& state)
{
    Job job(state);
    for (auto _ : state)
        ZETLaserWriterVirtek(&job.options, job.tree).Write();
    job.SetCounters(state);
}

void LargeBlocks(benchmark::State& state)
{
    Job job(state);
    for (auto _ : state)
        WriteInBlocks(job.bytes, job.options.GetFileName());
    job.SetCounters(state);
}

void TextStreamLines(benchmark::State& state)
{
    Job job(state);
    for (auto _ : state)
        WriteThroughTextStream(*job.tree, job.options.GetFileName());
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
