#include "benchmarks/BenchWritingJob.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserWriter.h"

#include <QFile>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
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

QByteArray ReadBytes(const QString& name)
{
    QFile file(name);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/*! \a file without the one line that tells the time of its writing. */
QByteArray WithoutClock(const QByteArray& file)
{
    const qsizetype clock = file.indexOf(" FILEDATE=");
    return clock < 0 ? file : file.first(clock) + file.mid(file.indexOf('\n', clock));
}
} // namespace

BenchWritingJob::BenchWritingJob(const benchmark::State& state, ZETLaserOptions::EOutputFileType fileType)
    : pointCount(int(state.range(0)))
    , tree(MakeTree(pointCount, state.range(1) != 0))
{
    options.SetFileType(fileType);
    options.SetFileName(folder.filePath(u"part"_s + ZETLaserFileType::Of(fileType).extension));
    Write();
    bytes = ReadBytes(options.GetFileName());
}

void BenchWritingJob::Write()
{
    ZETLaserFileType::Of(options.GetFileType()).makeWriter(&options, tree, nullptr)->Write();
}

void BenchWritingJob::WriteInBlocks() const
{
    constexpr qsizetype blockSize = 1024 * 1024;
    QFile file(options.GetFileName());
    file.open(fileMode);
    for (qsizetype begin = 0; begin < bytes.size(); begin += blockSize)
        file.write(bytes.constData() + begin, std::min(blockSize, bytes.size() - begin));
}

void BenchWritingJob::SetCounters(benchmark::State& state) const
{
    state.SetItemsProcessed(state.iterations() * pointCount);
    state.SetBytesProcessed(state.iterations() * bytes.size());
    if (WithoutClock(ReadBytes(options.GetFileName())) != WithoutClock(bytes))
        state.SkipWithError("the ways to write don't give the same bytes");
}
