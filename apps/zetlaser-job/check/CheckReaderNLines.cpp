#include "CheckCursor.h"
#include "CheckReaders.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr QByteArrayView commentBegin = "N000-00-01M19(";
constexpr QByteArrayView unitsBegin = "N000-00-01M19(UNITS=";
constexpr QByteArrayView partBegin = "N000-00-02M19(2-1)";
constexpr QByteArrayView calibrationBegin = "N000-00-02M19(1-1)";

/*! The begin of an N-line and what stands behind it. */
struct NLine {
    int ply = 0;
    int second = 0;
    int third = 0;
    QByteArrayView code;
};

std::optional<NLine> ReadNLine(QByteArrayView line)
{
    NLine numbers;
    CheckCursor cursor(line);
    cursor.Text("N").Integer(numbers.ply, 3).Text("-").Integer(numbers.second, 2).Text("-").Integer(numbers.third, 2);
    numbers.code = cursor.GetRest();
    const bool isCode = numbers.code.startsWith('M') || numbers.code.startsWith('G');
    return cursor.IsGood() && isCode ? std::optional(numbers) : std::nullopt;
}

/*! Plain output has brackets for groups, contours and curves and tells of a ply only at its end that it was one;
 *  nesting output has none, but a head for each ply. */
class NLineReader
{
public:
    NLineReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        ReadHead();
        bool isEnded = false;
        while (!isEnded && !lines.AtEnd())
            isEnded = ReadRecord();
        const int unended = isEnded ? -1 : GetOutermostOpenGroup();
        const QString end = Check::tr("the line of the program's end (M30)");
        if (isEnded)
            file.CheckEnd(lines, end);
        else
            file.AddEndsTooEarly(lines.GetLastLineNumber(), end);
        CheckPlyNumbers(unended);
    }

private:
    // The head.

    void ReadHead()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const auto name = lines.TakeText(commentBegin, ",1-1,,TOOL0,NEW)");
        file.partName = name.value_or(QString());
        if (!name && !lines.AtEnd()) {
            file.AddExpected(line, u"\"N000-00-01M19(NAME,1-1,,TOOL0,NEW)\""_s, found);
            if (found != partBegin && !found.startsWith(unitsBegin))
                lines.Take();
        }
        ReadUnits();
        if (lines.TakeIf(calibrationBegin))
            ReadCalibration();
        const int beginLine = lines.GetLineNumber();
        if (!lines.TakeIf(partBegin) && !lines.AtEnd())
            file.AddExpected(beginLine, CheckLines::Show(partBegin), lines.Peek());
    }

    void ReadUnits()
    {
        const int line = lines.GetLineNumber();
        const auto unit = lines.TakeText(unitsBegin, ")");
        isNesting = unit.has_value();
        if (!unit)
            return;
        if (*unit == "INCH"_L1)
            file.unit = CheckFile::Inches;
        else if (*unit == "MM"_L1)
            file.unit = CheckFile::Millimetres;
        else
            file.AddWrongValue(line, u"\"INCH\" or \"MM\""_s, unit->toUtf8());
    }

    /*! A projector's end has no line end, so what follows stands behind it. */
    void ReadCalibration()
    {
        ReadLine("N000-00-00M17(CALIBRATION TARGETS)");
        bool isOpen = true;
        for (auto numbers = ReadNLine(lines.Peek()); !lines.AtEnd() && !(numbers && numbers->code.startsWith("M19"));
             numbers = ReadNLine(lines.Peek())) {
            isOpen = !(numbers && numbers->code.startsWith("M02"));
            if (isOpen)
                ReadTarget();
            else
                EndProjector(lines.Peek().size() - numbers->code.size() + 3);
        }
        if (isOpen)
            file.AddExpected(lines.GetLineNumber(), Check::tr("the end of the projector (M02)"), lines.Peek());
    }

    void EndProjector(qsizetype length)
    {
        const int line = lines.GetLineNumber();
        CheckCursor cursor(lines.Peek().first(length));
        cursor.Text("N000-" + Pad(++file.projectorCount, 2) + "-00M02").End().Report(line, file);
        targetNumber = 0;
        lines.StepInto(length);
        if (!lines.Peek().isEmpty())
            return;
        file.AddExpected(line, Check::tr("the next line behind the end of the projector"), {});
        lines.Take();
    }

    void ReadTarget()
    {
        const int line = lines.GetLineNumber();
        CheckTarget target;
        CheckCursor cursor(lines.Take());
        cursor.Text("N000-" + Pad(file.projectorCount + 1, 2) + '-').Integer(target.number, 2);
        ReadTriple(cursor, {"G07X", "Y", "Z"}, target.position);
        if (!cursor.End().Report(line, file))
            return;
        if (target.number != ++targetNumber)
            file.AddError(line, Check::tr("expected target %1, found %2").arg(targetNumber).arg(target.number));
        target.projector = file.projectorCount;
        target.line = line;
        file.targets.push_back(target);
    }

    // The part.

    /*! True for the end of the program. */
    bool ReadRecord()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const bool mayHaveParameters = std::exchange(isBehindHead, false);
        const int ended = std::exchange(endedGroup, -1);
        if (mayHaveParameters && ReadLiteral(line))
            return false;
        const auto numbers = ReadNLine(found);
        if (!numbers) {
            ReadParameter(line, found, mayHaveParameters);
        } else if (found.startsWith(commentBegin)) {
            ReadBracket(line, found);
        } else if (numbers->code.startsWith("M19(NESTSUBA=")) {
            ReadNestingHead(line, numbers->ply);
        } else if (numbers->code.startsWith("M11(")) {
            ReadCurveHead(line, numbers->ply);
        } else if (numbers->code.startsWith("G01")) {
            ReadPoint(line);
        } else if (numbers->code.startsWith("M01")) {
            EndPly(line, numbers->ply, ended);
        } else if (numbers->code.startsWith("M30")) {
            EndCurve(line, found);
            file.EndUnended(line, -1, found);
            ReadNumbered(line, numbers->ply, "-01-01M30");
            return true;
        } else {
            file.AddExpected(line, Check::tr("a line of the part"), found);
            lines.Take();
        }
        return false;
    }

    bool ReadLiteral(int line)
    {
        const auto literal = lines.TakeLiteral();
        if (literal)
            AddParameter(CheckParameter::Literal, *literal, line);
        return literal.has_value();
    }

    void AddParameter(CheckParameter::Kind kind, const QString& text, int line)
    {
        file.AddParameter(kind, text, line);
        isBehindHead = true;
    }

    /*! Parameters stand directly behind the head of their group or ply. */
    void ReadParameter(int line, QByteArrayView found, bool mayHaveParameters)
    {
        int announced = 0;
        if (!mayHaveParameters) {
            file.AddExpected(line, Check::tr("an N-line"), found);
            lines.Take();
        } else if (CheckCursor(found).Text("I ").Integer(announced).End().IsGood()) {
            ReadInformation(line, announced);
        } else {
            AddParameter(CheckParameter::Literal, QString::fromUtf8(lines.Take()), line);
        }
    }

    void ReadInformation(int headLine, int announced)
    {
        lines.Take();
        int held = 0;
        for (; held < announced && !lines.AtEnd() && !ReadNLine(lines.Peek()); ++held) {
            const int line = lines.GetLineNumber();
            AddParameter(CheckParameter::Information, lines.TakeText("").value_or(QString()), line);
        }
        file.CheckCount(headLine, Check::tr("texts"), announced, held);
        isBehindHead = true;
    }

    // Brackets of plain output.

    void ReadBracket(int line, QByteArrayView found)
    {
        if (isNesting) {
            file.AddExpected(line, Check::tr("no brackets in data for nesting"), found);
            lines.Take();
        } else if (const auto group = TakeComment("GROUP START ")) {
            BeginGroup(*group, line, found);
        } else if (const auto groupEnd = TakeComment("GROUP END ")) {
            EndCurve(line, found);
            endedGroup = GetOpenBracket();
            const CheckGroup::Kind kind = endedGroup < 0 ? CheckGroup::Ply : GetGroup(endedGroup).kind;
            file.EndGroup(line, kind, *groupEnd, found);
        } else if (const auto contour = TakeComment("CONTOUR START ")) {
            BeginContour(*contour, line, found);
        } else if (const auto contourEnd = TakeComment("CONTOUR END ")) {
            EndCurve(line, found);
            file.EndGroup(line, CheckGroup::Part, *contourEnd, found);
        } else if (const auto curve = TakeComment("CURVE START ")) {
            EndCurve(line, found);
            BeginCurve(*curve, line, found);
        } else if (const auto curveEnd = TakeComment("CURVE END ")) {
            if (!curveName || *curveName != *curveEnd)
                file.AddExpected(line, Check::tr("the end of the curve \"%1\"").arg(curveName.value_or(QString())),
                                 found);
            curveName.reset();
            hasCurve = false;
        } else {
            file.AddExpected(line, Check::tr("the begin or the end of a group, contour or curve"), found);
            lines.Take();
        }
    }

    std::optional<QString> TakeComment(QByteArrayView what)
    {
        return lines.TakeText(commentBegin.toByteArray().append(what), ")");
    }

    CheckGroup& GetGroup(int index) { return file.groups[static_cast<size_t>(index)]; }

    /*! The group around an open contour; -1 at the top. */
    int GetOpenBracket()
    {
        const int open = file.GetOpenGroup();
        return open >= 0 && GetGroup(open).kind == CheckGroup::Part ? GetGroup(open).parent : open;
    }

    void BeginGroup(const QString& name, int line, QByteArrayView found)
    {
        EndCurve(line, found);
        const int parent = GetOpenBracket();
        file.EndUnended(line, parent, found);
        if (parent >= 0)
            GetGroup(parent).kind = CheckGroup::Layer;
        file.BeginGroup(CheckGroup::Ply, name, line);
        isBehindHead = true;
    }

    void BeginContour(const QString& name, int line, QByteArrayView found)
    {
        EndCurve(line, found);
        file.EndUnended(line, GetOpenBracket(), found);
        file.BeginGroup(CheckGroup::Part, name, line);
        curveNumber = 1;
    }

    void BeginCurve(const QString& name, int line, QByteArrayView found)
    {
        const int open = file.GetOpenGroup();
        if (open < 0 || GetGroup(open).kind != CheckGroup::Part)
            file.AddExpected(line, Check::tr("the begin of a contour"), found);
        curveName = name;
        const int headLine = lines.GetLineNumber();
        const auto numbers = ReadNLine(lines.Peek());
        if (numbers && numbers->code.startsWith("M11("))
            ReadCurveHead(headLine, numbers->ply);
        else
            file.AddExpected(headLine, Check::tr("the head of a curve (M11)"), lines.Peek());
    }

    /*! Where a curve has to have ended. */
    void EndCurve(int line, QByteArrayView found)
    {
        if (curveName)
            file.AddExpected(line, Check::tr("the end of the curve \"%1\"").arg(*curveName), found);
        curveName.reset();
        hasCurve = false;
    }

    // Plies.

    /*! What stands ahead of a ply's curves in data for nesting. */
    void ReadNestingHead(int line, int number)
    {
        if (!isNesting)
            file.AddExpected(line, Check::tr("the unit of the data (UNITS) ahead of it"), lines.Peek());
        isNesting = true;
        hasCurve = false;
        if (number != plyNumber + 1)
            file.AddWrongValue(line, Check::tr("the ply N%1").arg(QLatin1StringView(Pad(plyNumber + 1, 3))),
                               lines.Peek());
        plyNumber = number;

        Values values;
        for (const QByteArrayView key : {"NESTSUBA", "NESTPART", "LAYUP", "MATERIAL", "DIRECTION"})
            ReadNestingValue(key, values);
        if (const int parent = file.GetOpenGroup(); parent >= 0)
            GetGroup(parent).kind = CheckGroup::Layer;
        file.BeginGroup(CheckGroup::Ply, values[1].second, line);
        if (file.GetOpenGroup() >= 0) {
            GetGroup(file.GetOpenGroup()).number = number;
            GetGroup(file.GetOpenGroup()).values = std::move(values);
        }
        const bool isRotation = HasKey(lines.Peek(), "NESTROTATION");
        if (!ReadLine('N' + Pad(number, 3) + "-01-01M19(NESTROTATION=0;NONE)") && isRotation)
            lines.Take();
        isBehindHead = true;
        curveNumber = 1;
    }

    using Values = std::vector<std::pair<QString, QString>>;

    /*! Adds the value of \a key, empty if its line is missing, which only the direction's may. */
    void ReadNestingValue(QByteArrayView key, Values& values)
    {
        const int line = lines.GetLineNumber();
        const QByteArray begin = 'N' + Pad(plyNumber, 3) + "-01-01M19(" + key.toByteArray() + '=';
        const QByteArrayView found = lines.Peek();
        const auto value = lines.TakeText(begin, ")");
        const bool isDirection = key == "DIRECTION";
        if (!value && isDirection && !HasKey(found, key))
            file.AddWarning(line, Check::tr("the ply has no direction"));
        else if (!value)
            file.AddExpected(line, u"\"%1...)\""_s.arg(QLatin1StringView(begin)), found);
        if (!value && HasKey(found, key))
            lines.Take();
        if (value || !isDirection)
            values.emplace_back(QString::fromLatin1(key), value.value_or(QString()));
        if (value && isDirection && !IsAngle(*value))
            file.AddWrongValue(line, Check::tr("an angle in degrees"), found);
    }

    static bool HasKey(QByteArrayView line, QByteArrayView key)
    {
        const auto numbers = ReadNLine(line);
        return numbers && numbers->code.startsWith("M19(" + key.toByteArray());
    }

    static bool IsAngle(const QString& text)
    {
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        return isNumber && std::isfinite(number);
    }

    /*! \a ended: the group that the line ahead of it ended, in plain output. */
    void EndPly(int line, int number, int ended)
    {
        hasCurve = false;
        if (isNesting && !file.EndGroup(line))
            file.AddExpected(line, Check::tr("no end of a ply, because none is open"), lines.Peek());
        else if (!isNesting && ended < 0)
            file.AddExpected(line, Check::tr("the end of the ply's group ahead of it"), lines.Peek());
        else if (!isNesting)
            plyGroups.push_back(ended);
        ReadNumbered(line, number, "-00-01M01");
    }

    /*! A line that consists of the number of the last ply and \a tail. */
    void ReadNumbered(int line, int number, QByteArrayView tail)
    {
        UseNumber(line, number);
        CheckCursor(lines.Take()).Text('N' + Pad(number, 3)).Text(tail).End().Report(line, file);
    }

    // Curves.

    void ReadCurveHead(int line, int number)
    {
        if (!isNesting && !curveName)
            file.AddExpected(line, Check::tr("the begin of a curve"), lines.Peek());
        const QByteArray begin = 'N' + Pad(number, 3) + "-01-01M11(";
        const QByteArrayView found = lines.Peek();
        const auto text = lines.TakeText(begin, ")");
        const auto kind = curveName ? GetCurveKindByName(*curveName) : CheckCurveKind::Unknown;
        CheckCurve& curve = file.BeginCurve(kind, curveName.value_or(QString()), line);
        hasCurve = true;
        pointBegin = 'N' + Pad(number, 3) + "-01-01G01X";
        UseNumber(line, number);
        const qsizetype separator = text ? text->lastIndexOf(isNesting ? u';' : u'-') : -1;
        if (separator < 0) {
            file.AddExpected(line, u"\"%1...)\""_s.arg(QLatin1StringView(begin)), found);
            if (!text)
                lines.Take();
            return;
        }
        CheckLabel(line, text->first(separator));
        const int curveOrRosette = ReadCurveNumber(line, text->sliced(separator + 1));
        curve.attributes = {curveOrRosette};
        if (curveOrRosette == rosetteNumber)
            curve.kind = CheckCurveKind::Rosette;
    }

    /*! All curves of a ply have the same label: the sequence and the ply. */
    void CheckLabel(int line, const QString& label)
    {
        const int ply = GetOpenBracket();
        if (ply < 0)
            return;
        Values& values = GetGroup(ply).values;
        if (values.empty() || values.back().first != labelKey)
            values.emplace_back(labelKey, label);
        if (values.back().second != label)
            file.AddWrongValue(line, u"\"%1\""_s.arg(values.back().second), label.toUtf8());
    }

    /*! Curves of a contour are numbered from 1; a rosette has a word instead. */
    int ReadCurveNumber(int line, const QString& text)
    {
        if (text == "ROSETTE"_L1)
            return rosetteNumber;
        const auto number = CheckNumbers::ParseInteger(text.toUtf8());
        const bool isNext = number && (*number == curveNumber || (isNesting && *number == 1));
        if (!isNext)
            file.AddWrongValue(line, Check::tr("the curve %1, or ROSETTE").arg(curveNumber), text.toUtf8());
        curveNumber = number.value_or(curveNumber) + 1;
        return curveNumber - 1;
    }

    void ReadPoint(int line)
    {
        const QByteArrayView found = lines.Take();
        if (!hasCurve) {
            file.AddExpected(line, Check::tr("the head of a curve (M11)"), found);
            return;
        }
        CheckPoint point;
        CheckCursor cursor(found);
        ReadTriple(cursor, {pointBegin, "Y", "Z"}, point.position);
        point.hasNormal = hasNormals.value_or(cursor.StartsWith("I"));
        if (point.hasNormal)
            ReadTriple(cursor, {"I", "J", "K"}, point.normal);
        if (!cursor.End().Report(line, file))
            return;
        hasNormals = point.hasNormal; // all points have one, or none has
        CheckPoint& added = file.AddPoint(point.position, line);
        added.normal = point.normal;
        added.hasNormal = point.hasNormal;
    }

    static void ReadTriple(CheckCursor& cursor, const std::array<QByteArrayView, 3>& keys,
                           std::array<double, 3>& numbers)
    {
        for (size_t i = 0; i < keys.size(); ++i)
            cursor.Text(keys[i]).Number(numbers[i]);
    }

    // Numbers of plies.

    /*! The number of the last ply that was begun, at a line that has to have it. */
    struct Use {
        int number = 0;
        int line = 0;
        size_t groups = 0; //!< that were begun up to there
    };

    void UseNumber(int line, int number)
    {
        if (!isNesting)
            uses.push_back({number, line, file.groups.size()});
        else if (number != plyNumber)
            file.AddError(line, Check::tr("expected the ply %1, found %2").arg(plyNumber).arg(number));
    }

    int GetOutermostOpenGroup() const
    {
        int outermost = file.GetOpenGroup();
        while (outermost >= 0 && file.groups[static_cast<size_t>(outermost)].parent >= 0)
            outermost = file.groups[static_cast<size_t>(outermost)].parent;
        return outermost;
    }

    /*! Which groups are plies is known at their ends only, so plain output is looked through once more. Of \a unended,
     *  the group that a file ends in too early, or -1, it isn't known. */
    void CheckPlyNumbers(int unended)
    {
        std::vector<bool> isPly(file.groups.size());
        for (const int group : plyGroups)
            isPly[static_cast<size_t>(group)] = true;
        size_t group = 0;
        int expected = 0;
        for (const Use& use : uses) {
            if (unended >= 0 && use.groups > static_cast<size_t>(unended))
                return;
            for (; group < use.groups; ++group) {
                if (isPly[group])
                    file.groups[group].number = ++expected;
            }
            if (use.number != expected)
                file.AddError(
                    use.line,
                    Check::tr("expected the number of the plies so far, %1, found %2").arg(expected).arg(use.number));
            expected = use.number; // told once
        }
    }

    // Words.

    /*! False, and doesn't take it, if the line is another. */
    bool ReadLine(const QByteArray& expected)
    {
        const bool isTaken = lines.TakeIf(expected);
        if (!isTaken && !lines.AtEnd())
            file.AddExpected(lines.GetLineNumber(), CheckLines::Show(expected), lines.Peek());
        return isTaken;
    }

    static QByteArray Pad(int number, int width) { return QByteArray::number(number).rightJustified(width, '0'); }

    static inline const QString labelKey = u"LABEL"_s;
    static constexpr int rosetteNumber = 0;

    CheckLines lines;
    CheckFile& file;
    bool isNesting = false;
    int targetNumber = 0;
    bool isBehindHead = false;        //!< parameters may stand here
    int endedGroup = -1;              //!< by the last line
    std::optional<QString> curveName; //!< of the bracket that is open
    bool hasCurve = false;            //!< points may stand here
    QByteArray pointBegin;
    std::optional<bool> hasNormals;
    int curveNumber = 1;
    int plyNumber = 0; //!< in nesting output
    std::vector<Use> uses;
    std::vector<int> plyGroups; //!< in plain output, in the order of their ends
};

void ReadNLines(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    NLineReader(bytes, known, file).Read();
}

bool IsNLines(QByteArrayView bytes)
{
    return bytes.startsWith(commentBegin);
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetNLines()
{
    return {{{u"general-scanning"_s, u"quilmon"_s},
             Check::tr("General Scanning and Quilmon"),
             {u".cpd"_s},
             IsNLines,
             ReadNLines,
             nullptr,
             {}}};
}
