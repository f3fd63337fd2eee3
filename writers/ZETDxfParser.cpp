#include "writers/ZETDxfParser.h"

#include "writers/ZETLaserNumberText.h"

#include <ZETMathematics/ZETMathSetOfPoints.h>

#include <QByteArray>
#include <QFileDevice>
#include <QString>
#include <QStringConverter>
#include <QTextStream>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <utility>

namespace
{
/*! Collects the group pairs of one operation and hands them over in blocks, because one call for each line costs more
 *  than all the rest. A stream that has failed gets nothing more.
 *
 *  The bytes are those of the stream, but where it would only turn them into UTF-16 and back they go to its device. */
class Groups
{
    static constexpr QByteArrayView firstCode = "  10\n";

public:
    explicit Groups(QTextStream& out)
        : stream(out)
    {
        stream.flush(); // what the caller wrote comes first
    }
    ~Groups() { HandOver(); }
    Q_DISABLE_COPY_MOVE(Groups)

    void Write(int code, int value)
    {
        WriteCode(code);
        AppendInteger(value);
        EndLine();
    }
    void Write(int code, double value)
    {
        WriteCode(code);
        AppendNumber(value);
        EndLine();
    }
    void Write(int code, const char* value)
    {
        WriteCode(code);
        Append(value, qsizetype(std::strlen(value)));
        EndLine();
    }
    void WriteXYZ(double x, double y, double z)
    {
        Write(10, x);
        Write(20, y);
        Write(30, z);
    }
    /*! The pairs of a vertex that come ahead of its numbers, the same for all of a polyline. */
    class VertexBegin
    {
    public:
        VertexBegin(int layer, int color)
        {
            Append("  0\nVERTEX\n  8\n");
            Append(layer);
            Append("\n  62\n");
            Append(color);
            Append("\n");
            Append(firstCode);
        }

        static constexpr qsizetype room = 64; // with the longest numbers 49 are used
        char bytes[room] = {};
        qsizetype size = 0;

    private:
        void Append(QByteArrayView text)
        {
            std::memcpy(bytes + size, text.data(), size_t(text.size()));
            size += text.size();
        }
        void Append(int value) { size = std::to_chars(bytes + size, bytes + room, value).ptr - bytes; }
    };
    /*! A vertex. This is where the time of a file goes: pieces are copied by sizes that the compiler knows, and what is
     *  too much is written over by what comes next. */
    void WriteVertex(const VertexBegin& begin, double x, double y, double z)
    {
        constexpr qsizetype separatorRoom = 8;
        constexpr qsizetype vertexRoom = VertexBegin::room + 3 * (ZETLaserNumberText::room + separatorRoom);
        char* const start = MakeRoom(vertexRoom);
        std::memcpy(start, begin.bytes, VertexBegin::room);
        char* const endX = ZETLaserNumberText::TryWrite(start + begin.size, x, decimals);
        char* const endY = endX ? ZETLaserNumberText::TryWrite(AddSeparator(endX, "\n  20\n\0"), y, decimals) : nullptr;
        char* const endZ = endY ? ZETLaserNumberText::TryWrite(AddSeparator(endY, "\n  30\n\0"), z, decimals) : nullptr;
        if (endZ) {
            *endZ = '\n';
            used += endZ + 1 - start;
            return;
        }
        Append(begin.bytes, begin.size - firstCode.size());
        WriteXYZ(x, y, z);
    }
    /*! Hands over what is left, and lets the device do so as well. */
    void Finish()
    {
        HandOver();
        auto* file = qobject_cast<QFileDevice*>(stream.device());
        if (file && stream.status() == QTextStream::Ok && !file->flush())
            stream.setStatus(QTextStream::WriteFailed);
    }

private:
    static constexpr qsizetype blockSize = 64 * 1024;
    static constexpr int decimals = 6;

    /*! Writes a line end and a code line of two digits at \a at; returns where the value goes. */
    static char* AddSeparator(char* at, const char (&separator)[8])
    {
        std::memcpy(at, separator, sizeof separator);
        return at + std::strlen(separator);
    }
    void WriteCode(int code)
    {
        Append("  ", 2);
        AppendInteger(code);
        EndLine();
    }
    void AppendInteger(int value)
    {
        constexpr qsizetype integerRoom = 11;
        char* const at = MakeRoom(integerRoom);
        used += std::to_chars(at, at + integerRoom, value).ptr - at;
    }
    void AppendNumber(double value)
    {
        char* const at = MakeRoom(ZETLaserNumberText::room);
        if (const char* const end = ZETLaserNumberText::TryWrite(at, value, decimals)) {
            used += end - at;
            return;
        }
        QByteArray text;
        ZETLaserNumberText::Append(text, value, decimals);
        Append(text.constData(), text.size());
    }
    void EndLine()
    {
        *MakeRoom(1) = '\n';
        ++used;
    }
    void Append(const char* bytes, qsizetype count)
    {
        while (count > 0) {
            const qsizetype size = std::min(count, blockSize);
            std::memcpy(MakeRoom(size), bytes, size_t(size));
            used += size;
            bytes += size;
            count -= size;
        }
    }
    char* MakeRoom(qsizetype count)
    {
        if (blockSize - used < count)
            HandOver();
        return buffer + used;
    }
    void HandOver()
    {
        const qsizetype size = std::exchange(used, 0);
        if (stream.status() != QTextStream::Ok || size == 0)
            return;
        auto* device = stream.device();
        if (!device || stream.encoding() != QStringConverter::Utf8 || stream.generateByteOrderMark())
            stream << Decode(QByteArrayView(buffer, size));
        else if (device->write(buffer, size) != size)
            stream.setStatus(QTextStream::WriteFailed);
    }

    QString Decode(QByteArrayView bytes)
    {
        if (!decoder)
            decoder.emplace(QStringDecoder::Utf8);
        return decoder->decode(bytes);
    }

    QTextStream& stream;
    std::optional<QStringDecoder> decoder; // kept from block to block, because one may end within a letter
    qsizetype used = 0;
    char buffer[blockSize];
};

} // namespace

ZETDxfParser::ZETDxfParser(QTextStream& out)
    : stream(&out)
{
}

ZETDxfParser::~ZETDxfParser() = default;

void ZETDxfParser::WriteStartSection(int units)
{
    Groups groups(*stream);
    const auto writeExtent = [&](const char* variable, double x, double y) {
        groups.Write(9, variable);
        groups.Write(10, x);
        groups.Write(20, y);
    };
    groups.Write(0, "SECTION");
    groups.Write(2, "HEADER");
    groups.Write(9, "$INSUNITS");
    groups.Write(70, units);
    // Meant: constants, whatever the geometry is.
    writeExtent("$EXTMAX", 200.0, 100.0);
    writeExtent("$EXTMIN", 0.0, 0.0);
    writeExtent("$LIMMAX", 200.0, 100.0);
    writeExtent("$LIMMIN", 0.0, 0.0);
    groups.Write(0, "ENDSEC");

    groups.Write(0, "SECTION");
    groups.Write(2, "TABLES");
    groups.Write(0, "TABLE");
    groups.Write(2, "LTYPE");
    groups.Write(70, 1);
    groups.Write(0, "LTYPE");
    groups.Write(2, "CONTINUOUS");
    groups.Write(70, 64);
    groups.Write(3, "Solid line");
    groups.Write(72, 65);
    groups.Write(73, 0);
    groups.Write(40, 0.0);
    groups.Write(0, "ENDTAB");
    groups.Write(0, "TABLE");
    groups.Write(2, "LAYER");
    groups.Write(70, 1);
    groups.Write(0, "LAYER");
    groups.Write(2, 0); // the layer's name is its number
    groups.Write(70, 0);
    groups.Write(62, 1);
    groups.Write(6, "CONTINUOUS");
    groups.Write(0, "ENDTAB");
    groups.Write(0, "ENDSEC");

    groups.Write(0, "SECTION");
    groups.Write(2, "ENTITIES");
}

void ZETDxfParser::WritePolyline(const ZETMathSetOfPoints& points, bool is3D, bool closed, int layer, int color,
                                 int lineStyle, int thickness, double offsetX, double offsetY, double offsetZ)
{
    if (points.points.isEmpty())
        return;
    constexpr int flagClosed = 1;
    constexpr int flag3D = 8;
    Groups groups(*stream);
    groups.Write(0, "POLYLINE");
    groups.Write(8, layer);
    groups.Write(6, lineStyle);
    groups.Write(62, color);
    groups.Write(39, thickness);
    groups.WriteXYZ(0.0, 0.0, offsetZ);
    groups.Write(66, 1);
    groups.Write(70, (is3D ? flag3D : 0) + (closed ? flagClosed : 0));
    const Groups::VertexBegin vertexBegin(layer, color);
    for (const ZETMathPoint& point : points.points)
        groups.WriteVertex(vertexBegin, point.GetX() + offsetX, point.GetY() + offsetY, point.GetZ() + offsetZ);
    groups.Write(0, "SEQEND");
}

void ZETDxfParser::WriteText(const QString& text, double x, double y, double z, double height, int layer, int color)
{
    Groups groups(*stream);
    groups.Write(0, "TEXT");
    groups.Write(8, layer);
    groups.Write(62, color);
    groups.WriteXYZ(x, y, z);
    groups.Write(40, height);
    groups.Write(1, text.toLocal8Bit().constData());
}

void ZETDxfParser::WriteEndSection()
{
    Groups groups(*stream);
    groups.Write(0, "ENDSEC");
    groups.Write(0, "EOF");
    groups.Finish();
}
