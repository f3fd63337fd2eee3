#include "benchmarks/BenchPart.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserPoint.h"

#include <QFile>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

QSharedPointer<ZETLaserGroup> BenchPart::MakeTree(int pointCount, int pointsInCurve, bool closed, bool normals)
{
    const auto root = QSharedPointer<ZETLaserGroup>::create(QSharedPointer<QObject>());
    const auto leaf = QSharedPointer<ZETLaserGroup>::create(root);
    leaf->SetName(u"P1"_s);
    root->AddGroup(leaf);
    const auto contour = QSharedPointer<ZETLaserContour>::create(leaf);
    leaf->AddContour(contour);
    for (int first = 0; first < pointCount; first += pointsInCurve) {
        const auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
        curve->SetClosed(closed);
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

const ZETLaserContour& BenchPart::GetContour(const ZETLaserGroup& tree)
{
    const auto leaf = tree.GetChildren().first().staticCast<ZETLaserGroup>();
    return *leaf->GetChildren().first().staticCast<ZETLaserContour>();
}

void BenchPart::WriteInBlocks(const QByteArray& bytes, const QString& fileName)
{
    constexpr qsizetype blockSize = 1024 * 1024;
    QFile file(fileName);
    file.open(fileMode);
    for (qsizetype begin = 0; begin < bytes.size(); begin += blockSize)
        file.write(bytes.constData() + begin, std::min(blockSize, bytes.size() - begin));
}

QByteArray BenchPart::ReadBytes(const QString& fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}
