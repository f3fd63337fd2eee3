#include "CheckCursor.h"
#include "CheckReaders.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int decimals = 3;
constexpr size_t laserCount = 16;

const QString& TargetsType()
{
    static const QString type = u"sl-targets"_s;
    return type;
}

class SlReader
{
public:
    SlReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
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
            file.CheckEnd(lines, u"\"EOF\""_s);
        else
            file.AddEndsTooEarly(lines.GetLastLineNumber(), u"\"EOF\""_s);
    }

private:
    /*! True for the end of the data. */
    bool ReadRecord()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (IsInGroup() && ReadLiteral(line))
            return false;
        if (const auto group = lines.TakeText("GS ")) {
            BeginGroup(*group, line);
        } else if (lines.TakeIf("GE")) {
            if (!file.EndGroup(line))
                file.AddError(line, Check::tr("nothing is open that %1 could end").arg(CheckLines::Show(found)));
        } else if (const auto block = lines.TakeText("BG ")) {
            if (!IsInGroup())
                file.AddExpected(line, Check::tr("the begin of a group"), found);
            ReadBlock(*block, line);
        } else if (lines.TakeIf("EOF")) {
            file.EndUnended(line, -1, found);
            return true;
        } else {
            ReadOther(line, found);
        }
        return false;
    }

    bool IsInGroup() const { return file.GetOpenGroup() >= 0; }

    /*! A group that holds groups is no ply. */
    void BeginGroup(const QString& name, int line)
    {
        if (IsInGroup())
            file.groups[static_cast<size_t>(file.GetOpenGroup())].kind = CheckGroup::Layer;
        file.BeginGroup(CheckGroup::Ply, name, line);
    }

    bool ReadLiteral(int line)
    {
        const auto literal = lines.TakeLiteral();
        if (literal)
            file.AddParameter(CheckParameter::Literal, *literal, line);
        return literal.has_value();
    }

    void ReadOther(int line, QByteArrayView found)
    {
        if (!IsInGroup())
            file.AddExpected(line, Check::tr("the begin of a group"), found);
        else if (IsWithinBlock(found))
            file.AddExpected(line, Check::tr("the begin of a block"), found);
        else
            file.AddParameter(CheckParameter::Literal, QString::fromUtf8(found), line);
        lines.Take();
    }

    /*! A line that stands within a block alone. */
    static bool IsWithinBlock(QByteArrayView line)
    {
        std::array<double, 3> numbers{};
        return line.startsWith("E ") || line.startsWith("L ") || line.startsWith("N ") || line.startsWith("BMP ") ||
               line.startsWith("T ") || CheckCursor(line, decimals).Numbers(numbers, " ").IsGood();
    }

    /*! The name alone doesn't tell what a block is: a curve may be called anything. */
    void ReadBlock(const QString& name, int line)
    {
        const QByteArrayView first = lines.Peek();
        if (first.startsWith("L "))
            ReadCurve(name, line);
        else if (name == "NOTE"_L1 && first.startsWith("N "))
            ReadNotes();
        else if (name == "GRAPHIC"_L1 && first.startsWith("BMP "))
            ReadGraphic();
        else if (name.endsWith(" Text"_L1) && (first.startsWith("T ") || first.startsWith("E ")))
            ReadTexts(name, line);
        else
            file.AddExpected(lines.GetLineNumber(), Check::tr("what \"BG %1\" announces").arg(name), first);
        EndBlock(name);
    }

    void EndBlock(const QString& name)
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        const auto end = lines.TakeText("E ");
        if (!end || *end != name)
            file.AddExpected(line, u"\"E %1\""_s.arg(name), found);
    }

    /*! A line that can't stand within a block, but for the end of the file. */
    bool IsBehindBlock() const
    {
        const QByteArrayView line = lines.Peek();
        return lines.AtEnd() || line.startsWith("E ") || line.startsWith("BG ") || line.startsWith("GS ") ||
               line == "GE" || line == "EOF";
    }

    void ReadCurve(const QString& name, int line)
    {
        file.BeginCurve(GetCurveKindByName(name), name, line);
        const int headLine = lines.GetLineNumber();
        int announced = 0;
        CheckCursor head(lines.Take());
        head.Text("L ").Integer(announced).Text(" 1").End();
        const bool isAnnounced = head.Report(headLine, file);
        int held = 0;
        for (; !IsBehindBlock(); ++held)
            ReadPoint();
        if (isAnnounced)
            file.CheckCount(headLine, Check::tr("points"), announced, held);
    }

    void ReadPoint()
    {
        const int line = lines.GetLineNumber();
        CheckPoint point;
        CheckCursor cursor(lines.Take(), decimals);
        cursor.Numbers(point.position, " ");
        point.hasNormal = cursor.StartsWith("   ");
        if (point.hasNormal)
            cursor.Text("   ").Numbers(point.normal, " ");
        else
            cursor.Text("  0 0 0");
        cursor.Text("  1").End();
        if (!cursor.Report(line, file))
            return;
        CheckPoint& added = file.AddPoint(point.position, line);
        added.normal = point.normal;
        added.hasNormal = point.hasNormal;
    }

    void ReadNotes()
    {
        const int headLine = lines.GetLineNumber();
        int announced = 0;
        CheckCursor head(lines.Take());
        head.Text("N ").Integer(announced).End();
        const bool isAnnounced = head.Report(headLine, file);
        int held = 0;
        for (; !lines.AtEnd() && lines.Peek() != "E NOTE"; ++held) {
            const int line = lines.GetLineNumber();
            file.AddParameter(CheckParameter::Note, lines.TakeText("").value_or(QString()), line);
        }
        if (isAnnounced)
            file.CheckCount(headLine, Check::tr("notes"), announced, held);
    }

    void ReadGraphic()
    {
        const int line = lines.GetLineNumber();
        if (const auto text = lines.TakeText("BMP 0 "))
            file.AddParameter(CheckParameter::Graphic, *text, line);
        else
            file.AddWrongValue(line, u"\"BMP 0 \""_s, lines.Take());
    }

    void ReadTexts(const QString& name, int line)
    {
        const QString expected = file.GetPlyName(file.GetOpenGroup()) + u" Text"_s;
        if (name != expected)
            file.AddWrongValue(line, u"\"BG %1\""_s.arg(expected), ("BG " + name).toUtf8());
        while (!IsBehindBlock())
            ReadText();
    }

    void ReadText()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        std::array<double, 3> place{};
        std::array<double, 9> matrix{};
        double size = 0.0;
        CheckCursor cursor(found, decimals);
        cursor.Text("T ").Numbers(place, " ").Text(" 0 ").Number(size);
        // A text of no direction has none as numbers, either.
        for (double& number : matrix)
            cursor.Text(" ").NumberOrNan(number);
        cursor.Text("  1  0.0 0.0 0.0  ~");
        if (!cursor.Report(line, file)) {
            lines.Take();
            return;
        }
        const QByteArrayView numbers = found.chopped(cursor.GetRest().size());
        CheckText& text = file.AddText(lines.TakeText(numbers).value_or(QString()), line);
        text.numbers.assign(place.begin(), place.end());
        text.numbers.push_back(size);
        text.numbers.insert(text.numbers.end(), matrix.begin(), matrix.end());
    }

    CheckLines lines;
    CheckFile& file;
};

/*! What the lasers are used for in three lines of a table, and a line for each target. */
class SlTargetsReader
{
public:
    SlTargetsReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        ReadTitle();
        const bool isUsed = ReadTable("LaserUsage=", usage);
        ReadTable("AssignedLaser=", assigned);
        const int countLine = lines.GetLineNumber();
        const bool isCounted = ReadTable("TargetPoints=", announced);
        if (isUsed)
            CheckUsage(countLine - 2);
        while (!lines.AtEnd())
            ReadTarget();
        if (lines.IsCut())
            file.AddEndsTooEarly(lines.GetLastLineNumber(), Check::tr("the end of the line"));
        for (size_t laser = 0; isCounted && laser < laserCount; ++laser)
            file.CheckCount(countLine, Check::tr("targets of laser %1").arg(laser + 1), announced[laser], held[laser]);
    }

private:
    using Table = std::array<int, laserCount>;

    void ReadTitle()
    {
        const int line = lines.GetLineNumber();
        if (const auto name = lines.TakeText("", " targets"))
            file.partName = *name;
        else if (lines.AtEnd())
            file.AddEndsTooEarly(line, Check::tr("a title that ends with \" targets\""));
        else
            file.AddExpected(line, Check::tr("a title that ends with \" targets\""), lines.Take());
    }

    /*! 16 whole numbers, each with a blank behind it. */
    bool ReadTable(QByteArrayView key, Table& table)
    {
        const int line = lines.GetLineNumber();
        if (lines.AtEnd()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), CheckLines::Show(key));
            return false;
        }
        CheckCursor cursor(lines.Peek());
        cursor.Text(key);
        for (int& entry : table)
            cursor.Integer(entry).Text(" ");
        if (!lines.Peek().startsWith("L=")) // the first target stands there where the line is missing
            lines.Take();
        return cursor.End().Report(line, file);
    }

    /*! The lasers that are used are numbered from 1, and assigned to themselves. */
    void CheckUsage(int line)
    {
        size_t used = 0;
        while (used < laserCount && usage[used] == static_cast<int>(used) + 1)
            ++used;
        file.projectorCount = static_cast<int>(used);
        for (size_t i = used; i < laserCount; ++i) {
            if (usage[i] != 0)
                file.AddError(line, Check::tr("expected 0 or %1 for laser %1, found %2").arg(i + 1).arg(usage[i]));
        }
        for (size_t i = 0; i < laserCount; ++i) {
            if (assigned[i] != usage[i])
                file.AddError(
                    line + 1,
                    Check::tr("expected %1 for laser %2, found %3").arg(usage[i]).arg(i + 1).arg(assigned[i]));
        }
    }

    void ReadTarget()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        int laser = 0;
        CheckTarget target;
        CheckCursor cursor(found);
        cursor.Text("L=").Integer(laser).Text("\tP=").Integer(target.number).Text("\tX=");
        cursor.Number(target.position[0]).Text("\tY=").Number(target.position[1]);
        cursor.Text("\tZ=").Number(target.position[2]).Text("\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1");
        const QByteArray again = "\tL=" + QByteArray::number(laser);
        cursor.Text(again).Text(again).Text("\tT=");
        if (!cursor.Report(line, file)) {
            CountTarget(laser, 1); // it is there, broken
            lines.Take();
            return;
        }
        target.name = lines.TakeText(found.chopped(cursor.GetRest().size())).value_or(QString());
        target.projector = laser - 1;
        target.line = line;
        if (!IsLaser(laser)) {
            file.AddError(line, Check::tr("expected a laser from 1 to %1, found %2").arg(laserCount).arg(laser));
            return;
        }
        CheckNumber(target);
        file.targets.push_back(target);
    }

    static bool IsLaser(int laser) { return laser >= 1 && laser <= static_cast<int>(laserCount); }

    void CountTarget(int laser, int numbers)
    {
        if (!IsLaser(laser))
            return;
        const auto index = static_cast<size_t>(laser) - 1;
        ++held[index];
        last[index] += numbers;
    }

    /*! Targets of a laser are numbered one after the other, from 0 on where there is no projector. */
    void CheckNumber(const CheckTarget& target)
    {
        const auto laser = static_cast<size_t>(target.projector);
        const bool beginsWith0 = target.number == 0 && held[laser] == 0 && laser == 0 && usage[1] == 0;
        const int expected = beginsWith0 ? 0 : last[laser] + 1;
        if (target.number != expected)
            file.AddError(target.line, Check::tr("expected the point %1 of laser %2, found %3")
                                           .arg(expected)
                                           .arg(laser + 1)
                                           .arg(target.number));
        CountTarget(target.projector + 1, target.number - last[laser]);
    }

    CheckLines lines;
    CheckFile& file;
    Table usage{};
    Table assigned{};
    Table announced{};
    Table held{};
    Table last{};
};

void ReadSl(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    SlReader(bytes, known, file).Read();
}

void ReadSlTargets(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    SlTargetsReader(bytes, known, file).Read();
}

bool IsSl(QByteArrayView bytes)
{
    return bytes.startsWith("GS ") || bytes.trimmed() == "EOF";
}

bool IsSlTargets(QByteArrayView bytes)
{
    return bytes.contains("\nLaserUsage=");
}

/*! Two characters make room for three: those of "sl" behind the dot. */
QString GetTargetsPath(const QString& path)
{
    return path.chopped(std::min<qsizetype>(path.size(), 2)) + u"cp1"_s;
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetSl()
{
    return {{{u"sl"_s}, u"SL Laser"_s, {u".sl"_s}, IsSl, ReadSl, GetTargetsPath, TargetsType()},
            {{TargetsType()}, Check::tr("SL targets file"), {u"cp1"_s}, IsSlTargets, ReadSlTargets, nullptr, {}}};
}
