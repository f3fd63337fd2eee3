#include "writers/ZETLaserTextStream.h"

#include "writers/ZETLaserNumberText.h"

#include <QByteArray>
#include <QIODevice>
#include <QStringConverter>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace
{
// Large enough that handing over a block costs nothing beside filling it, small enough to stay in the cache.
constexpr qsizetype blockSize = 128 * 1024;
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
    if (device && device->isWritable() && used > 0)
        device->write(buffer.get(), used);
    used = 0;
}

void ZETLaserTextStream::Renew(qsizetype count)
{
    Flush();
    if (capacity >= count)
        return;
    capacity = std::max(blockSize, count);
    buffer = std::make_unique_for_overwrite<char[]>(size_t(capacity));
}

void ZETLaserTextStream::AppendBytes(const char* bytes, qsizetype count)
{
    if (count == 0)
        return; // an empty text may have no bytes to point to
    std::memcpy(MakeRoom(count), bytes, size_t(count));
    used += count;
}

void ZETLaserTextStream::Append(QLatin1StringView keyword)
{
    for (const char character : keyword)
        Q_ASSERT(uchar(character) < 0x80);
    AppendBytes(keyword.data(), keyword.size());
}

void ZETLaserTextStream::Append(QStringView text)
{
    // Stateless, so that half a surrogate pair at the end of a text becomes a replacement character at once.
    QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    char* at = MakeRoom(encoder.requiredSpace(text.size()));
    used += encoder.appendToBuffer(at, text) - at;
}

void ZETLaserTextStream::Append(const ZETLaserNumber& number)
{
    char* at = MakeRoom(ZETLaserNumberText::room);
    if (const char* end = ZETLaserNumberText::TryWrite(at, number.value, number.decimals)) {
        used += end - at;
        return;
    }
    QByteArray text;
    ZETLaserNumberText::Append(text, number.value, number.decimals);
    AppendBytes(text.constData(), text.size());
}

void ZETLaserTextStream::Append(const ZETLaserNumbers& numbers)
{
    Append(ZETLaserNumber{numbers.x, numbers.decimals});
    Append(' ');
    Append(ZETLaserNumber{numbers.y, numbers.decimals});
    Append(' ');
    Append(ZETLaserNumber{numbers.z, numbers.decimals});
}

void ZETLaserTextStream::AppendInteger(qint64 number)
{
    constexpr qsizetype room = 20; // of the longest, sign included
    char* at = MakeRoom(room);
    used += std::to_chars(at, at + room, number).ptr - at;
}
