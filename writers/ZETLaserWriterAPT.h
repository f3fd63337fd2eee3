#pragma once

#include "writers/ZETLaserWriter.h"

/*! What the three APT outputs have in common: they do all that a job asks of a writer, but their format isn't there. A
 *  stub file is written, and the user is told that the format isn't supported. The tree isn't walked. */
class ZETLaserWriterAPTBase : public ZETLaserWriter
{
protected:
    using ZETLaserWriter::ZETLaserWriter;
    ~ZETLaserWriterAPTBase() = default;

    /*! Writes the stub. \a notSupportedText is the translated message, \a dataLine the second line of the file. */
    bool WriteStub(const QString& notSupportedText, QLatin1StringView dataLine);
};

class ZETLaserWriterAPT final : public ZETLaserWriterAPTBase
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterAPT)

public:
    ZETLaserWriterAPT(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;
};

class ZETLaserWriterAPT_2 final : public ZETLaserWriterAPTBase
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterAPT_2)

public:
    ZETLaserWriterAPT_2(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;
};

class ZETLaserWriterAPT_SL final : public ZETLaserWriterAPTBase
{
    Q_DECLARE_TR_FUNCTIONS(ZETLaserWriterAPT_SL)

public:
    ZETLaserWriterAPT_SL(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot);

    bool Write() override;
};
