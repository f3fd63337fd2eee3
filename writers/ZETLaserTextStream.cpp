#include "writers/ZETLaserTextStream.h"

#include "writers/ZETLaserNumberText.h"

#include <QIODevice>
#include <QStringConverter>

namespace
{
// Large enough that handing over a block costs nothing beside filling it, small enough to stay in the cache.
constexpr qsizetype blockSize = 128 * 1024;
// Room behind a full block for the line that fills it; a longer one makes the buffer grow.
constexpr qsizetype lineRoom = 4 * 1024;
} // namespace

ZETLaserTextStream::ZETLaserTextStream(QIODevice* target)
    : device(target)
{
}

ZETLaserTextStream::~ZETLaserTextStream()
{
    Flush();
}

void ZETLaserTextStream::SetDevice(QIODevice* target)
{
    Flush();
    device = target;
}

void ZETLaserTextStream::Flush()
{
    if (device && device->isWritable() && !buffer.isEmpty())
        device->write(buffer);
    buffer.resize(0); // keeps the memory
}

void ZETLaserTextStream::Append(char character)
{
    buffer.append(character);
}

void ZETLaserTextStream::Append(QLatin1StringView keyword)
{
    for (const char character : keyword)
        Q_ASSERT(uchar(character) < 0x80);
    buffer.append(keyword.data(), keyword.size());
}

void ZETLaserTextStream::Append(QStringView text)
{
    // Stateless, so that half a surrogate pair at the end of a text becomes a replacement character at once.
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const qsizetype start = buffer.size();
    buffer.resize(start + encoder.requiredSpace(text.size()));
    const char* end = encoder.appendToBuffer(buffer.data() + start, text);
    buffer.resize(end - buffer.constData());
}

void ZETLaserTextStream::Append(const ZETLaserNumber& number)
{
    ZETLaserNumberText::Append(buffer, number.value, number.decimals);
}

void ZETLaserTextStream::Append(const ZETLaserNumbers& numbers)
{
    ZETLaserNumberText::Append(buffer, numbers.x, numbers.decimals);
    buffer.append(' ');
    ZETLaserNumberText::Append(buffer, numbers.y, numbers.decimals);
    buffer.append(' ');
    ZETLaserNumberText::Append(buffer, numbers.z, numbers.decimals);
}

void ZETLaserTextStream::AppendInteger(qint64 number)
{
    buffer.append(QByteArray::number(number));
}

void ZETLaserTextStream::EndLine()
{
    buffer.append('\n');
    if (buffer.size() >= blockSize)
        Flush();
    else if (buffer.capacity() < blockSize + lineRoom)
        buffer.reserve(blockSize + lineRoom);
}
