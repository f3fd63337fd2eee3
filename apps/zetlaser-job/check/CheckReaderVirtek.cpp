#include "CheckCalibration.h"
#include "CheckPointLine.h"
#include "CheckReaders.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
class VirtekReader
{
public:
    VirtekReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        bool isEnded = false;
        while (!isEnded && !lines.AtEnd())
            isEnded = ReadRecord();
        if (isEnded)
            file.CheckEnd(lines, u"\"EOD\""_s);
        else
            file.AddEndsTooEarly(lines.GetLastLineNumber(), u"\"EOD\""_s);
    }

private:
    /*! True for the end of the data. */
    bool ReadRecord()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const bool isBehindPoints = std::exchange(mayHavePoints, false);
        if (IsInPly() && ReadLiteral(line))
            return false;
        if (const auto layer = lines.TakeText("LAYER START ")) {
            RequireNoPly(line, found);
            file.BeginGroup(CheckGroup::Layer, *layer, line);
        } else if (const auto layerEnd = lines.TakeText("LAYER END ")) {
            file.EndGroup(line, CheckGroup::Layer, *layerEnd, found);
        } else if (const auto ply = lines.TakeText("START ")) {
            RequireNoPly(line, found);
            file.BeginGroup(CheckGroup::Ply, *ply, line);
        } else if (const auto plyEnd = lines.TakeText("END ")) {
            file.EndGroup(line, CheckGroup::Ply, *plyEnd, found);
        } else if (lines.TakeIf("EOD")) {
            file.EndUnended(line, -1, found);
            return true;
        } else if (isBehindPoints && CheckPointLine::IsAlike(found)) {
            ReadSurplusPoint();
        } else if (!IsInPly()) {
            file.AddExpected(line, Check::tr("the begin of a layer or of a ply"), found);
            lines.Take();
        } else {
            ReadOfPly(line, found);
        }
        return false;
    }

    void ReadOfPly(int line, QByteArrayView found)
    {
        if (found.startsWith("P ")) {
            ReadPolyline(line);
        } else if (found.startsWith("I ")) {
            ReadInformation(line);
        } else if (lines.TakeIf("L 1")) {
            ReadTextOf(CheckParameter::Message, line);
        } else if (lines.TakeIf("Q 1")) {
            ReadTextOf(CheckParameter::Query, line);
        } else if (const auto graphic = lines.TakeText("G 0 ")) {
            file.AddParameter(CheckParameter::Graphic, *graphic, line);
        } else if (const auto text = lines.TakeText("T 3 ")) {
            ReadText(*text, line);
        } else if (CheckPointLine::IsAlike(found)) {
            file.AddExpected(line, Check::tr("a record of the ply"), found);
            lines.Take();
        } else {
            file.AddParameter(CheckParameter::Literal, lines.TakeText("").value_or(QString()), line);
        }
    }

    bool IsInPly() const { return file.GetPly(file.GetOpenGroup()) >= 0; }

    bool ReadLiteral(int line)
    {
        const auto literal = lines.TakeLiteral();
        if (literal)
            file.AddParameter(CheckParameter::Literal, *literal, line);
        return literal.has_value();
    }

    /*! A ply holds neither layers nor plies. */
    void RequireNoPly(int line, QByteArrayView found)
    {
        if (const int ply = file.GetPly(file.GetOpenGroup()); ply >= 0)
            file.EndUnended(line, file.groups[static_cast<size_t>(ply)].parent, found);
    }

    /*! The number behind the keyword of one letter; nothing, with a finding, if there is none. */
    std::optional<int> TakeCount(int line)
    {
        const QByteArrayView found = lines.Take();
        const auto count = CheckNumbers::ParseInteger(found.sliced(2));
        if (!count)
            file.AddWrongValue(line, Check::tr("a count behind \"%1\"").arg(QLatin1Char(found.front())), found);
        return count;
    }

    void ReadPolyline(int line)
    {
        file.BeginCurve(CheckCurveKind::Unknown, {}, line);
        const auto announced = TakeCount(line);
        int held = 0;
        for (; held < announced.value_or(0) && CheckPointLine::IsAlike(lines.Peek()); ++held) {
            const int pointLine = lines.GetLineNumber();
            CheckPointLine::Read(lines.Take(), pointLine, file);
        }
        if (announced)
            file.CheckCount(line, Check::tr("points"), *announced, held);
        mayHavePoints = true;
        surplusOf = announced ? line : 0;
    }

    /*! A point line behind the announced ones. It belongs to the curve as far as anybody can see. */
    void ReadSurplusPoint()
    {
        const int line = lines.GetLineNumber();
        if (surplusOf > 0)
            file.AddError(line, Check::tr("more points than line %1 announces").arg(surplusOf));
        surplusOf = 0; // told once
        CheckPointLine::Read(lines.Take(), line, file);
        mayHavePoints = true;
    }

    void ReadInformation(int line)
    {
        const auto announced = TakeCount(line);
        int held = 0;
        for (; held < announced.value_or(0) && !lines.AtEnd() && !IsEndOfPly(); ++held) {
            const int textLine = lines.GetLineNumber();
            file.AddParameter(CheckParameter::Information, lines.TakeText("").value_or(QString()), textLine);
        }
        if (announced)
            file.CheckCount(line, Check::tr("texts"), *announced, held);
    }

    /*! Any text may stand here, but for the one that ends the ply. */
    bool IsEndOfPly() const
    {
        const QByteArrayView name = lines.Peek();
        return name.startsWith("END ") && QString::fromUtf8(name.sliced(4)) == file.GetPlyName(file.GetOpenGroup());
    }

    void ReadTextOf(CheckParameter::Kind kind, int line)
    {
        if (lines.AtEnd() || IsEndOfPly())
            file.AddError(line, Check::tr("expected a text behind it, found none"));
        else
            file.AddParameter(kind, lines.TakeText("").value_or(QString()), line);
    }

    void ReadText(const QString& text, int line)
    {
        CheckText& added = file.AddText(text, line);
        for (int i = 0; i < 3; ++i) {
            const int pointLine = lines.GetLineNumber();
            const QByteArrayView found = lines.Peek();
            std::array<QByteArrayView, 3> fields;
            if (CheckNumbers::Split(found, fields) != 3 || !CheckPointLine::IsAlike(found)) {
                file.AddExpected(pointLine, Check::tr("three numbers of a point of the text in line %1").arg(line),
                                 found);
                return;
            }
            if (const auto numbers = CheckPointLine::ReadTriple(fields, pointLine, file))
                added.numbers.insert(added.numbers.end(), numbers->begin(), numbers->end());
            lines.Take();
        }
    }

    CheckLines lines;
    CheckFile& file;
    bool mayHavePoints = false; //!< the last line was one of a polyline
    int surplusOf = 0;          //!< line of its head, while no surplus was told
};

void ReadVirtek(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    VirtekReader(bytes, known, file).Read();
}

bool IsVirtek(QByteArrayView bytes)
{
    return bytes.startsWith("LAYER START ") || bytes.startsWith("START ") || bytes.trimmed() == "EOD";
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetVirtek()
{
    return {{{u"virtek"_s}, u"Virtek"_s, {u".ply"_s}, IsVirtek, ReadVirtek, GetCalibrationPath, calibrationType}};
}
