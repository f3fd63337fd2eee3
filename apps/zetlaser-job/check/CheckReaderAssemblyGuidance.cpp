#include "CheckPointLine.h"
#include "CheckReaders.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
// Keywords with the blanks that fill them up.
constexpr QByteArrayView partKeyword = "$*PARTNO    ";
constexpr QByteArrayView fileKeyword = "$*DOSNAME   ";
constexpr QByteArrayView unitKeyword = "$*UNITS     ";
constexpr QByteArrayView sensorKeyword = "$*SENSOR    ";
constexpr QByteArrayView modeKeyword = "$*DISPLAYMODE ";
constexpr QByteArrayView layupKeyword = "$*PLYGROUP  ";
constexpr QByteArrayView sequenceKeyword = "$*SEQ       ";
constexpr QByteArrayView plyKeyword = "$*PLY       ";
constexpr QByteArrayView textKeyword = "$*LASERTEXT ";
constexpr QByteArrayView pointKeyword = "GOTO        ";

/*! Part files of Assembly Guidance and Aligned Vision. Nothing ends a group but the next one, and a ply with sub-plies
 *  is a line without content ahead of them, so that both stand side by side. */
class AssemblyGuidanceReader
{
public:
    AssemblyGuidanceReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
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
        if (isEnded)
            file.CheckEnd(lines, Check::tr("the last %1").arg(Quote(partKeyword)));
        else
            file.AddEndsTooEarly(lines.GetLastLineNumber(), Quote(partKeyword) + Check::tr(" once more"));
    }

private:
    static QString Quote(QByteArrayView keyword) { return u'"' + QString::fromLatin1(keyword.trimmed()) + u'"'; }

    // The head

    void ReadHead()
    {
        file.partName = TakeHeadLine(partKeyword).value_or(QString());
        if (const auto name = TakeHeadLine(fileKeyword))
            file.values.emplace_back(u"file"_s, *name);
        const int unitLine = lines.GetLineNumber();
        if (const auto unit = TakeHeadLine(unitKeyword))
            ReadUnit(*unit, unitLine);
        while (lines.Peek().startsWith(sensorKeyword))
            ReadTarget();
        TakeHeadLine(modeKeyword);
    }

    /*! What stands behind \a keyword; nothing, with a finding, if another line stands there. */
    std::optional<QString> TakeHeadLine(QByteArrayView keyword)
    {
        if (auto text = lines.TakeText(keyword))
            return text;
        if (lines.AtEnd())
            return {}; // told at the end
        file.AddExpected(lines.GetLineNumber(), Quote(keyword), lines.Peek());
        if (!lines.Peek().startsWith("$*"))
            lines.Take(); // the line itself is wrong; another record stands where this one is missing
        return {};
    }

    void ReadUnit(const QString& unit, int line)
    {
        if (unit == u"MM"_s)
            file.unit = CheckFile::Millimetres;
        else if (unit == u"IN"_s)
            file.unit = CheckFile::Inches;
        else
            file.AddWrongValue(line, Check::tr("the unit MM or IN"), unit.toUtf8());
    }

    void ReadTarget()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Take();
        std::array<QByteArrayView, 5> fields;
        const int count = CheckNumbers::Split(found.sliced(sensorKeyword.size()), fields);
        const auto number = CheckNumbers::ParseInteger(fields[0]);
        if (count != 5 || !number) {
            file.AddWrongValue(line, Check::tr("a number, three coordinates and a name"), found);
            return;
        }
        file.projectorCount = 1;
        const int expected = static_cast<int>(file.targets.size()) + 1;
        if (*number != expected)
            file.AddWrongValue(line, Check::tr("the number %1").arg(expected), fields[0]);
        const auto position = CheckPointLine::ReadTriple(std::span(fields).subspan(1, 3), line, file);
        CheckTarget& target = file.targets.emplace_back();
        target.name = QString::fromUtf8(fields[4]);
        target.number = *number;
        target.position = position.value_or(std::array<double, 3>{});
        target.line = line;
    }

    // The groups

    /*! True for the end of the data. */
    bool ReadRecord()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (IsInPly() && ReadLiteral(line)) {
            EndCurve();
        } else if (const auto layup = lines.TakeText(layupKeyword)) {
            Begin(CheckGroup::Layer, 0, *layup, line);
        } else if (const auto sequence = lines.TakeText(sequenceKeyword)) {
            Begin(CheckGroup::Layer, 1, *sequence, line);
        } else if (const auto ply = lines.TakeText(plyKeyword)) {
            Begin(CheckGroup::Ply, 2, *ply, line);
        } else if (const auto part = lines.TakeText(partKeyword)) {
            return ReadEnd(*part, line, found);
        } else if (!IsInPly()) {
            // A group that is neither layup, sequence nor ply leaves its curves without a line of its own.
            ReadOfPly(line, found, false);
        } else {
            ReadOfPly(line, found, true);
        }
        return false;
    }

    bool IsInPly() const { return file.GetPly(file.GetOpenGroup()) >= 0; }

    /*! \a level: 0 for a layup, 1 for a sequence, 2 for a ply. It ends what is open of its level or below. */
    void Begin(CheckGroup::Kind kind, int level, const QString& name, int line)
    {
        EndCurve();
        while (!levels.empty() && levels.back() >= level) {
            // Without the line: the file doesn't say it.
            file.EndGroup(0);
            levels.pop_back();
        }
        file.BeginGroup(kind, name, line);
        levels.push_back(level);
    }

    bool ReadEnd(const QString& part, int line, QByteArrayView found)
    {
        EndCurve();
        if (part != file.partName)
            file.AddWrongValue(line, Check::tr("the name of the first line"), found);
        return true;
    }

    // The records of a ply

    void ReadOfPly(int line, QByteArrayView found, bool mayBeLiteral)
    {
        if (lines.TakeIf("PENUP")) {
            ReadPenUp(line);
        } else if (found.startsWith(pointKeyword)) {
            ReadNextPoint(line, found);
        } else if (found == "PENDWN" || found.startsWith(textKeyword)) {
            EndCurve();
            file.AddExpected(line, Quote("PENUP"), found);
            lines.Take();
        } else if (const auto message = mayBeLiteral ? lines.TakeText("$*MSG ") : std::nullopt) {
            AddParameter(CheckParameter::Message, *message, line);
        } else if (const auto graphic = mayBeLiteral ? lines.TakeText("$*DISPLAYGRAPHICS ") : std::nullopt) {
            AddParameter(CheckParameter::Graphic, *graphic, line);
        } else if (mayBeLiteral) {
            AddParameter(CheckParameter::Literal, lines.TakeText("").value_or(QString()), line);
        } else {
            EndCurve();
            file.AddExpected(line, Check::tr("the begin of a layup, a sequence or a ply"), found);
            lines.Take();
        }
    }

    bool ReadLiteral(int line)
    {
        const auto literal = lines.TakeLiteral();
        if (literal)
            file.AddParameter(CheckParameter::Literal, *literal, line);
        return literal.has_value();
    }

    void AddParameter(CheckParameter::Kind kind, const QString& text, int line)
    {
        EndCurve();
        file.AddParameter(kind, text, line);
    }

    /*! A point behind "PENUP", and what it is the begin of: a curve or a text. */
    void ReadPenUp(int line)
    {
        EndCurve();
        const int pointLine = lines.GetLineNumber();
        const QByteArrayView point = lines.Peek();
        if (!point.startsWith(pointKeyword)) {
            file.AddExpected(pointLine, Quote(pointKeyword), point);
            return;
        }
        lines.Take();
        if (lines.TakeIf("PENDWN")) {
            file.BeginCurve(CheckCurveKind::Unknown, {}, line);
            isInCurve = true;
            CheckPointLine::Read(point.sliced(pointKeyword.size()), pointLine, file);
        } else if (lines.Peek().startsWith(textKeyword)) {
            ReadText(point.sliced(pointKeyword.size()), line);
        } else {
            file.AddExpected(lines.GetLineNumber(), Quote("PENDWN"), lines.Peek());
        }
    }

    void ReadNextPoint(int line, QByteArrayView found)
    {
        lines.Take();
        if (isInCurve)
            CheckPointLine::Read(found.sliced(pointKeyword.size()), line, file);
        else
            file.AddExpected(line, Quote("PENUP"), found);
    }

    void ReadText(QByteArrayView place, int line)
    {
        const int textLine = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const qsizetype quote = found.indexOf('"');
        const auto text = quote < 0 ? std::nullopt : lines.TakeText(found.first(quote + 1), "\"");
        if (!text) {
            file.AddWrongValue(textLine, Check::tr("a size and a text in double quotes"), found);
            lines.Take();
            return;
        }
        CheckText& added = file.AddText(*text, line);
        std::array<QByteArrayView, 4> fields;
        const int count = CheckNumbers::Split(place, fields);
        if (count != 3) {
            file.AddWrongValue(line + 1, Check::tr("three numbers of a point"), place);
            return;
        }
        const auto position = CheckPointLine::ReadTriple(fields, line + 1, file);
        const QByteArrayView size = found.first(quote).sliced(textKeyword.size()).trimmed();
        const auto height = CheckNumbers::Parse(size);
        if (!height)
            file.AddWrongValue(textLine, Check::tr("a number"), size);
        if (position && height)
            added.numbers = {(*position)[0], (*position)[1], (*position)[2], *height};
    }

    void EndCurve() { isInCurve = false; }

    CheckLines lines;
    CheckFile& file;
    std::vector<int> levels; //!< of the open groups
    bool isInCurve = false;
};

void ReadAssemblyGuidance(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    AssemblyGuidanceReader(bytes, known, file).Read();
}

bool IsAssemblyGuidance(QByteArrayView bytes)
{
    return bytes.startsWith(partKeyword.trimmed());
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetAssemblyGuidance()
{
    return {{{u"assembly-guidance"_s, u"aligned-vision"_s},
             Check::tr("Assembly Guidance, Aligned Vision"),
             {u".prt"_s},
             IsAssemblyGuidance,
             ReadAssemblyGuidance,
             nullptr,
             {}}};
}
