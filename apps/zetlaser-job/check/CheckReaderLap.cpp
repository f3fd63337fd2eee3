#include "CheckCalibration.h"
#include "CheckPointLine.h"
#include "CheckReaders.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! The opening lines by their begins, in their order; comments may stand between them. */
constexpr std::array<QByteArrayView, 7> headKeywords{
    "ALERT ", "ID_START", "ID_SYNTAX \"", "ID_END", "PROJECTION_SCALE ", "PROJECTION_START \"", "DRAWING_START \""};
constexpr std::array<QByteArrayView, 5> bodyKeywords{"LAYER_", "GROUP_", "ENTITY_", "DRAWING_END", "PROJECTION_END"};

/*! A projection file: layers, in them groups, in them entities, and in these the points. It knows no plies, so a group
 *  is what the operator sees as one step. */
class LapReader
{
public:
    LapReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        for (const QByteArrayView keyword : headKeywords)
            ReadHeadLine(keyword);
        bool isEnded = false;
        while (!isEnded && !lines.AtEnd())
            isEnded = ReadRecord();
        ReadEnd(isEnded);
    }

private:
    static QString Quote(QByteArrayView keyword) { return u'"' + QString::fromLatin1(keyword.trimmed()) + u'"'; }

    void ReadHeadLine(QByteArrayView keyword)
    {
        while (lines.Peek().startsWith('#'))
            lines.Take();
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (found.startsWith(keyword)) {
            ReadHeadValue(keyword, line);
            return;
        }
        if (lines.AtEnd())
            return; // told at the end
        file.AddExpected(line, Quote(keyword), found);
        if (!IsKnown(found))
            lines.Take(); // the line itself is wrong; a known one stands where another is missing
    }

    static bool IsKnown(QByteArrayView line)
    {
        const auto isBegin = [line](QByteArrayView keyword) { return line.startsWith(keyword); };
        return std::any_of(headKeywords.begin(), headKeywords.end(), isBegin) ||
               std::any_of(bodyKeywords.begin(), bodyKeywords.end(), isBegin);
    }

    void ReadHeadValue(QByteArrayView keyword, int line)
    {
        const QByteArrayView found = lines.Peek();
        if (const auto name = keyword == headKeywords[6] ? TakeName(keyword) : std::nullopt) {
            file.partName = *name;
            return;
        }
        if (keyword == headKeywords[4]) {
            const QByteArrayView unit = found.sliced(keyword.size());
            if (unit == "mm")
                file.unit = CheckFile::Millimetres;
            else if (unit == "in")
                file.unit = CheckFile::Inches;
            else
                file.AddWrongValue(line, Check::tr("the unit mm or in"), unit);
        } else if (keyword == headKeywords[2] && found != "ID_SYNTAX \"1.5\"") {
            file.AddWrongValue(line, u"ID_SYNTAX \"1.5\""_s, found);
        }
        lines.Take();
    }

    /*! The name behind \a keyword, up to the double quote at the end of the line; nothing if the line begins otherwise.
     */
    std::optional<QString> TakeName(QByteArrayView keyword)
    {
        if (const auto name = lines.TakeText(keyword, "\""))
            return name;
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const auto unquoted = lines.TakeText(keyword);
        if (unquoted)
            file.AddExpected(line, Check::tr("a name in double quotes"), found);
        return unquoted;
    }

    /*! True for the end of the drawing. */
    bool ReadRecord()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (!isInEntity && !IsInGroup() && ReadLiteral(line))
            return false;
        if (isInEntity) {
            ReadOfEntity(line, found);
        } else if (const auto layer = TakeName("LAYER_START \"")) {
            RequireNoGroup(line, found);
            Begin(CheckGroup::Layer, *layer, line, "LAYER_COLOR ");
        } else if (const auto group = TakeName("GROUP_START \"")) {
            RequireNoGroup(line, found);
            Begin(CheckGroup::Ply, *group, line, "GROUP_COLOR ");
        } else if (const auto entity = TakeName("ENTITY_START \"")) {
            BeginEntity(*entity, line, found);
        } else if (lines.TakeIf("GROUP_END")) {
            file.EndGroup(line, CheckGroup::Ply, {}, found);
        } else if (lines.TakeIf("LAYER_END")) {
            file.EndGroup(line, CheckGroup::Layer, {}, found);
        } else if (lines.TakeIf("DRAWING_END")) {
            file.EndUnended(line, -1, found);
            return true;
        } else {
            ReadOther(line, found);
        }
        return false;
    }

    bool IsInGroup() const { return file.GetPly(file.GetOpenGroup()) >= 0; }

    void RequireNoGroup(int line, QByteArrayView found)
    {
        if (const int group = file.GetPly(file.GetOpenGroup()); group >= 0)
            file.EndUnended(line, file.groups[static_cast<size_t>(group)].parent, found);
    }

    void Begin(CheckGroup::Kind kind, const QString& name, int line, QByteArrayView color)
    {
        file.BeginGroup(kind, name, line);
        ReadColor(color);
    }

    void ReadColor(QByteArrayView keyword)
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (!found.startsWith(keyword)) {
            file.AddExpected(line, Quote(keyword), found);
            if (!IsKnown(found))
                lines.Take(); // such as the rest of a name with a line end
        }
        if (lines.Peek().startsWith(keyword))
            lines.Take();
    }

    void BeginEntity(const QString& name, int line, QByteArrayView found)
    {
        if (!IsInGroup())
            file.AddExpected(line, Quote("GROUP_START"), found);
        file.BeginCurve(GetCurveKindByName(name), name, line);
        ReadColor("ENTITY_COLOR ");
        isInEntity = true;
    }

    void ReadOfEntity(int line, QByteArrayView found)
    {
        if (CheckPointLine::IsAlike(found)) {
            CheckPointLine::Read(lines.Take(), line, file);
            return;
        }
        isInEntity = false;
        if (lines.TakeIf("ENTITY_END"))
            return;
        file.AddExpected(line, Check::tr("a point or \"ENTITY_END\""), found);
        if (!IsKnown(found))
            lines.Take();
    }

    bool ReadLiteral(int line)
    {
        const auto literal = lines.TakeLiteral();
        if (literal)
            file.AddParameter(CheckParameter::Literal, *literal, line);
        return literal.has_value();
    }

    /*! A literal stands between groups; there, and elsewhere, nothing else can. */
    void ReadOther(int line, QByteArrayView found)
    {
        if (IsInGroup() || IsKnown(found) || CheckPointLine::IsAlike(found)) {
            file.AddExpected(line,
                             IsInGroup() ? Check::tr("the begin of an entity or the end of the group")
                                         : Check::tr("the begin or the end of a layer or of a group"),
                             found);
            lines.Take();
        } else {
            file.AddParameter(CheckParameter::Literal, lines.TakeText("").value_or(QString()), line);
        }
    }

    void ReadEnd(bool isEnded)
    {
        constexpr QByteArrayView end = "PROJECTION_END";
        if (!isEnded || lines.AtEnd()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), isEnded ? Quote(end) : Quote("DRAWING_END"));
            return;
        }
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Take();
        if (found != end)
            file.AddExpected(line, Quote(end), found);
        else
            file.CheckEnd(lines, Quote(end));
    }

    CheckLines lines;
    CheckFile& file;
    bool isInEntity = false;
};

void ReadLap(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    LapReader(bytes, known, file).Read();
}

bool IsLap(QByteArrayView bytes)
{
    return bytes.startsWith("#switch to red") ||
           bytes.first(std::min<qsizetype>(bytes.size(), 400)).contains("\nID_START");
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetLap()
{
    return {{{u"lap"_s}, u"LAP Laser"_s, {u".lpd"_s}, IsLap, ReadLap, GetCalibrationPath, calibrationType}};
}
