#pragma once

#include "laser/ZETLaserOptions.h"

#include <QByteArray>
#include <QSharedPointer>
#include <QString>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

class ZETLaserGroup;

/*! One job of range(0) points, with normals if range(1): its tree, a folder for its files, and the bytes that the
 *  writer of its file type makes of it. */
class BenchWritingJob
{
public:
    BenchWritingJob(const benchmark::State& state, ZETLaserOptions::EOutputFileType fileType);

    /*! Through the writer, report included. */
    void Write();
    /*! The same bytes in large blocks, which is what the disk and the system cost alone. */
    void WriteInBlocks() const;

    const ZETLaserGroup& GetTree() const { return *tree; }
    QString GetFileName() const { return options.GetFileName(); }

    /*! Tells points and bytes, and faults a run that left other bytes in the file. */
    void SetCounters(benchmark::State& state) const;

private:
    int pointCount;
    QSharedPointer<ZETLaserGroup> tree;
    QTemporaryDir folder{QStringLiteral("bench-writing-XXXXXX")};
    ZETLaserOptions options;
    QByteArray bytes;
};
