#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QSharedPointer>
#include <QString>

class ZETLaserContour;
class ZETLaserGroup;

/*! What the benchmarks of writing share: the tree of a part, and the plainest ways to and from a file. */
namespace BenchPart
{

/*! One group with one contour: curves of \a pointsInCurve points each, on a bowl some metres wide.
 *  WriteDXFWithEzdxf.py makes the same. */
QSharedPointer<ZETLaserGroup> MakeTree(int pointCount, int pointsInCurve, bool closed, bool normals);
/*! The contour of a tree that MakeTree made. */
const ZETLaserContour& GetContour(const ZETLaserGroup& tree);

/*! How files are opened by all ways to write. */
constexpr QIODevice::OpenMode fileMode = QIODevice::WriteOnly | QIODevice::Text;
/*! Writes \a bytes in large blocks, which is what the disk and the system cost alone. */
void WriteInBlocks(const QByteArray& bytes, const QString& fileName);
QByteArray ReadBytes(const QString& fileName);

} // namespace BenchPart
