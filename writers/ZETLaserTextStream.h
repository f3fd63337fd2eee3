#pragma once

#include <QString>
#include <QtGlobal>

#include <concepts>
#include <memory>

class QIODevice;

/*! A number on its way into a file: fixed notation with this count of decimals, a point as decimal separator. */
struct ZETLaserNumber {
    double value;
    int decimals;
};

/*! Three such numbers, with one blank between them: the components of a point or of a vector. */
struct ZETLaserNumbers {
    template <typename Triple>
    ZETLaserNumbers(const Triple& triple, int decimalCount)
        : x(triple.GetX())
        , y(triple.GetY())
        , z(triple.GetZ())
        , decimals(decimalCount)
    {
    }

    double x;
    double y;
    double z;
    int decimals;
};

/*! Buffered text sink on a device, for the lines of a format.
 *
 *  It writes the bytes that a QTextStream with its default settings writes: UTF-8 without a byte order mark, and '\n'
 *  at the end of a line, which a device in text mode turns into the platform's line end. What it doesn't do is flush at
 *  the end of each line, because that costs more than all the rest of a large file. Bytes reach the device when the
 *  buffer is full, on Flush(), when another device is set, and when the stream is destroyed; whoever shares the device
 *  with another writer calls Flush() before that writer's turn.
 *
 *  Without a device, and with one that isn't open for writing, everything is dropped in silence.
 *  The device isn't owned, and must outlive the stream or be taken out of it with SetDevice(nullptr). */
class ZETLaserTextStream
{
public:
    ZETLaserTextStream() = default;
    explicit ZETLaserTextStream(QIODevice* target);
    ~ZETLaserTextStream();
    Q_DISABLE_COPY_MOVE(ZETLaserTextStream)

    /*! Flushes to the device set before and goes on with \a target, which may be null. */
    void SetDevice(QIODevice* target);
    /*! Hands everything written so far to the device. */
    void Flush();

    /*! Writes the parts one behind the other: text (as UTF-8), keywords (Latin-1, of which formats use ASCII alone),
     *  single ASCII characters, integers (plain decimal), ZETLaserNumber and ZETLaserNumbers. */
    template <typename... Parts>
    void Write(const Parts&... parts)
    {
        (Append(parts), ...);
    }
    /*! Writes the parts and ends the line. */
    template <typename... Parts>
    void WriteLine(const Parts&... parts)
    {
        (Append(parts), ...);
        EndLine();
    }

private:
    void Append(char character)
    {
        *MakeRoom(1) = character;
        ++used;
    }
    void Append(QLatin1StringView keyword);
    void Append(QStringView text);
    void Append(const QString& text) { Append(QStringView(text)); }
    void Append(std::integral auto number) { AppendInteger(qint64(number)); }
    void Append(const ZETLaserNumber& number);
    void Append(const ZETLaserNumbers& numbers);
    void AppendInteger(qint64 number);
    void EndLine() { Append('\n'); }
    void AppendBytes(const char* bytes, qsizetype count);

    /*! Where the next bytes go, with room for \a count of them; `used` grows by those that were written. */
    char* MakeRoom(qsizetype count)
    {
        if (capacity - used < count)
            Renew(count);
        return buffer.get() + used;
    }
    /*! Flushes, and sees to it that the buffer is large enough. */
    void Renew(qsizetype count);

    QIODevice* device = nullptr;
    std::unique_ptr<char[]> buffer;
    qsizetype capacity = 0;
    qsizetype used = 0;
};
