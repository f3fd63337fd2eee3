#include "writers/ZETDxfParser.h"

#include "writers/ZETLaserNumberText.h"

#include <ZETMathematics/ZETMathSetOfPoints.h>

#include <QByteArray>
#include <QString>
#include <QTextStream>

#include <charconv>

namespace
{
/*! Collects the group pairs of one operation and hands them to the stream in blocks, because one call for each line
 *  costs more than all the rest. With its end all of them are on the device. A stream that has failed gets nothing
 *  more. */
class Groups
{
public:
    explicit Groups(QTextStream& out)
        : stream(out)
    {
        buffer.reserve(blockSize + pairRoom);
    }
    ~Groups()
    {
        Flush();
        stream.flush();
    }
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
        ZETLaserNumberText::Append(buffer, value, 6);
        EndLine();
    }
    void Write(int code, const char* value)
    {
        WriteCode(code);
        buffer.append(value);
        EndLine();
    }
    void WriteXYZ(double x, double y, double z)
    {
        Write(10, x);
        Write(20, y);
        Write(30, z);
    }

private:
    static constexpr qsizetype blockSize = 16 * 1024;
    static constexpr qsizetype pairRoom = 1024;

    void WriteCode(int code)
    {
        buffer.append("  ");
        AppendInteger(code);
        buffer.append('\n');
    }
    void AppendInteger(int value)
    {
        char digits[16];
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        buffer.append(digits, end - digits);
    }
    void EndLine()
    {
        buffer.append('\n');
        if (buffer.size() >= blockSize)
            Flush();
    }
    void Flush()
    {
        if (stream.status() == QTextStream::Ok)
            stream << buffer.constData();
        buffer.resize(0); // keeps the memory
    }

    QTextStream& stream;
    QByteArray buffer;
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
    for (const ZETMathPoint& point : points.points) {
        groups.Write(0, "VERTEX");
        groups.Write(8, layer);
        groups.Write(62, color);
        groups.WriteXYZ(point.GetX() + offsetX, point.GetY() + offsetY, point.GetZ() + offsetZ);
    }
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
}
