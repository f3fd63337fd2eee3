#include "CheckCursor.h"
#include "CheckReaders.h"

#include <span>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct Pair {
    int code;
    QByteArrayView value;
};

/*! The head ahead of and behind the units: constants, whatever the drawing is. */
constexpr std::array headBegin{Pair{0, "SECTION"}, Pair{2, "HEADER"}, Pair{9, "$INSUNITS"}};
constexpr std::array headEnd{
    Pair{9, "$EXTMAX"},   Pair{10, "200.000000"}, Pair{20, "100.000000"}, Pair{9, "$EXTMIN"},     Pair{10, "0.000000"},
    Pair{20, "0.000000"}, Pair{9, "$LIMMAX"},     Pair{10, "200.000000"}, Pair{20, "100.000000"}, Pair{9, "$LIMMIN"},
    Pair{10, "0.000000"}, Pair{20, "0.000000"},   Pair{0, "ENDSEC"},      Pair{0, "SECTION"},     Pair{2, "TABLES"},
    Pair{0, "TABLE"},     Pair{2, "LTYPE"},       Pair{70, "1"},          Pair{0, "LTYPE"},       Pair{2, "CONTINUOUS"},
    Pair{70, "64"},       Pair{3, "Solid line"},  Pair{72, "65"},         Pair{73, "0"},          Pair{40, "0.000000"},
    Pair{0, "ENDTAB"},    Pair{0, "TABLE"},       Pair{2, "LAYER"},       Pair{70, "1"},          Pair{0, "LAYER"},
    Pair{2, "0"},         Pair{70, "0"},          Pair{62, "1"},          Pair{6, "CONTINUOUS"},  Pair{0, "ENDTAB"},
    Pair{0, "ENDSEC"},    Pair{0, "SECTION"},     Pair{2, "ENTITIES"}};
constexpr int rosetteLayer = 4;

/*! Pairs of lines: two blanks and a code, and a value. */
class DxfReader
{
public:
    DxfReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        ReadHead();
        while (!lines.AtEnd() && !isEnded)
            ReadEntity();
        if (isEnded)
            file.CheckEnd(lines, u"\"EOF\""_s);
        else
            file.AddEndsTooEarly(lines.GetLastLineNumber(), u"\"EOF\""_s);
    }

private:
    void ReadHead()
    {
        const bool isAsMeant = ReadPairs(headBegin) && ReadUnits() && ReadPairs(headEnd);
        if (!isAsMeant)
            SkipToEntities();
    }

    bool ReadPairs(std::span<const Pair> pairs)
    {
        for (const Pair& pair : pairs) {
            if (!ReadFixed(pair))
                return false;
        }
        return true;
    }

    bool ReadUnits()
    {
        int units = 0;
        const int line = lines.GetLineNumber() + 1;
        if (!ReadInteger(70, units))
            return false;
        constexpr int inches = 1;
        constexpr int millimetres = 4;
        if (units == inches)
            file.unit = CheckFile::Inches;
        else if (units == millimetres)
            file.unit = CheckFile::Millimetres;
        else
            file.AddError(line, Check::tr("expected the unit 1 (inches) or 4 (mm), found %1").arg(units));
        return true;
    }

    /*! The head is constant, so one that differs is told once. */
    void SkipToEntities()
    {
        while (!lines.AtEnd() && lines.Take() != "ENTITIES") {
        }
    }

    void ReadEntity()
    {
        const bool isWhole = TakeCode(0) && ReadKind();
        if (isWhole || isEnded)
            return;
        // What is broken is told, and the next entity found.
        while (!lines.AtEnd() && !IsAtEntity())
            lines.Take();
    }

    bool IsAtEntity() const
    {
        CheckLines ahead = lines;
        if (ahead.Take() != "  0")
            return false;
        const QByteArrayView kind = ahead.Peek();
        return kind == "POLYLINE" || kind == "TEXT" || kind == "ENDSEC";
    }

    bool ReadKind()
    {
        const int line = lines.GetLineNumber();
        if (lines.TakeIf("POLYLINE"))
            return ReadPolyline(line - 1);
        if (lines.TakeIf("TEXT"))
            return ReadText(line - 1);
        if (lines.TakeIf("ENDSEC"))
            return isEnded = ReadFixed({0, "EOF"});
        return Expect(u"\"POLYLINE\", \"TEXT\" or \"ENDSEC\""_s);
    }

    bool ReadPolyline(int line)
    {
        int layer = 0;
        int lineStyle = 0;
        int colour = 0;
        int flags = 0;
        bool isGood = ReadInteger(8, layer) && ReadInteger(6, lineStyle) && ReadInteger(62, colour);
        isGood = isGood && ReadPairs(std::array{Pair{39, "0"}, Pair{10, "0.000000"}, Pair{20, "0.000000"},
                                                Pair{30, "0.000000"}, Pair{66, "1"}});
        isGood = isGood && ReadFlags(flags);
        const auto kind = layer == rosetteLayer ? CheckCurveKind::Rosette : CheckCurveKind::Unknown;
        CheckCurve& curve = file.BeginCurve(kind, {}, line);
        curve.closedByFlag = (flags & closedFlag) != 0;
        curve.attributes = {layer, lineStyle, colour, flags};
        while (isGood && !IsAtSeqEnd())
            isGood = ReadVertex(layer, colour);
        return isGood && ReadFixed({0, "SEQEND"});
    }

    /*! Closed is 1 of them, and 8 says that the polyline is one of space, as all of a file are or none is. */
    bool ReadFlags(int& flags)
    {
        constexpr int spaceFlag = 8;
        const int line = lines.GetLineNumber() + 1;
        if (!ReadInteger(70, flags))
            return false;
        const bool isSpace = (flags & spaceFlag) != 0;
        if ((flags & ~(spaceFlag | closedFlag)) != 0)
            file.AddError(line, Check::tr("expected the flags 0, 1, 8 or 9, found %1").arg(flags));
        else if (isInSpace.value_or(isSpace) != isSpace)
            file.AddError(line, Check::tr("expected flags as those of the polylines ahead, found %1").arg(flags));
        isInSpace = isSpace;
        return true;
    }

    bool IsAtSeqEnd() const
    {
        CheckLines ahead = lines;
        return ahead.Take() == "  0" && ahead.Peek() == "SEQEND";
    }

    bool ReadVertex(int layer, int colour)
    {
        const int line = lines.GetLineNumber();
        const QByteArray layerText = QByteArray::number(layer);
        const QByteArray colourText = QByteArray::number(colour);
        std::array<double, 3> position{};
        const bool isGood = ReadPairs(std::array{Pair{0, "VERTEX"}, Pair{8, layerText}, Pair{62, colourText}}) &&
                            ReadPosition(position);
        if (isGood)
            file.AddPoint(position, line);
        return isGood;
    }

    bool ReadText(int line)
    {
        int layer = 0;
        int colour = 0;
        std::array<double, 3> position{};
        double height = 0.0;
        const bool isGood = ReadInteger(8, layer) && ReadInteger(62, colour) && ReadPosition(position) &&
                            ReadNumber(40, height) && TakeCode(1) && !lines.AtEnd();
        if (!isGood)
            return false;
        CheckText& text = file.AddText(lines.TakeText("").value_or(QString()), line);
        text.numbers.assign(position.begin(), position.end());
        text.numbers.push_back(height);
        text.attributes = {layer, colour};
        return true;
    }

    bool ReadPosition(std::array<double, 3>& position)
    {
        return ReadNumber(10, position[0]) && ReadNumber(20, position[1]) && ReadNumber(30, position[2]);
    }

    // Pairs. All are false, with an error unless the file ends there, if the pair isn't as expected.

    bool TakeCode(int code)
    {
        const QByteArray line = "  " + QByteArray::number(code);
        return lines.TakeIf(line) || Expect(Check::tr("the group code \"%1\"").arg(QLatin1StringView(line)));
    }

    bool ReadFixed(const Pair& pair)
    {
        return TakeCode(pair.code) && (lines.TakeIf(pair.value) || Expect(CheckLines::Show(pair.value)));
    }

    bool ReadInteger(int code, int& value)
    {
        return TakeCode(code) && TakeValue(CheckCursor(lines.Peek()).Integer(value));
    }

    bool ReadNumber(int code, double& value)
    {
        return TakeCode(code) && TakeValue(CheckCursor(lines.Peek()).Number(value));
    }

    bool TakeValue(CheckCursor& cursor)
    {
        const int line = lines.GetLineNumber();
        if (lines.AtEnd() || !cursor.End().Report(line, file))
            return false;
        lines.Take();
        return true;
    }

    bool Expect(const QString& what)
    {
        if (!lines.AtEnd())
            file.AddExpected(lines.GetLineNumber(), what, lines.Peek());
        return false;
    }

    static constexpr int closedFlag = 1;

    CheckLines lines;
    CheckFile& file;
    bool isEnded = false;
    std::optional<bool> isInSpace;
};

void ReadDxf(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    DxfReader(bytes, known, file).Read();
}

bool IsDxf(QByteArrayView bytes)
{
    return bytes.startsWith("  0\nSECTION\n") || bytes.startsWith("  0\r\nSECTION\r\n");
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetDxf()
{
    return {{{u"dxf"_s}, u"DXF"_s, {u".dxf"_s}, IsDxf, ReadDxf, nullptr, {}}};
}
