#include "CheckCursor.h"
#include "CheckReaders.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString& ToolType()
{
    static const QString type = u"lpt-tool"_s;
    return type;
}

/*! The character behind \a name, what stands between "&" and ";"; null if that is none. */
QString GetCharacter(QByteArrayView name)
{
    constexpr std::array<std::pair<QByteArrayView, char16_t>, 5> names{
        {{"lt", u'<'}, {"gt", u'>'}, {"amp", u'&'}, {"quot", u'"'}, {"apos", u'\''}}};
    for (const auto& [known, character] : names) {
        if (name == known)
            return QChar(character);
    }
    bool isCode = false;
    uint code = 0;
    if (name.startsWith("#x"))
        code = name.sliced(2).toByteArray().toUInt(&isCode, 16);
    else if (name.startsWith('#'))
        code = name.sliced(1).toByteArray().toUInt(&isCode, 10);
    if (!isCode || code == 0 || code > QChar::LastValidCodePoint)
        return {};
    const char32_t character = code;
    return QString::fromUcs4(&character, 1);
}

/*! \a raw without the escapes of XML. */
QString Decode(QByteArrayView raw, int line, CheckFile& file)
{
    constexpr qsizetype longestName = 10;
    QString text;
    for (qsizetype at = 0; at < raw.size();) {
        const qsizetype escape = raw.indexOf('&', at);
        text += QString::fromUtf8(raw.sliced(at, (escape < 0 ? raw.size() : escape) - at));
        if (escape < 0)
            break;
        const QByteArrayView name = raw.sliced(escape + 1, std::min(longestName, raw.size() - escape - 1));
        const qsizetype end = name.indexOf(';');
        const QString character = end < 0 ? QString() : GetCharacter(name.first(end));
        if (character.isEmpty())
            file.AddWrongValue(line, Check::tr("an escaped character such as \"&amp;\""), raw.sliced(escape));
        text += character;
        at = character.isEmpty() ? escape + 1 : escape + 2 + end;
    }
    return text;
}

/*! What both files share: a tree of elements with one tag in each line, but for the user's own texts. */
class XmlReader
{
public:
    XmlReader(QByteArrayView bytes, const CheckKnownTexts& knownTexts, CheckFile& checkFile)
        : known(knownTexts)
        , lines(bytes, knownTexts)
        , file(checkFile)
    {
    }

protected:
    /*! Steps over empty lines and the blanks ahead of the next text; false at the end of the file. */
    bool SkipBlanks()
    {
        while (!lines.AtEnd()) {
            const QByteArrayView line = lines.Peek();
            qsizetype blanks = 0;
            while (blanks < line.size() && line[blanks] == ' ')
                ++blanks;
            if (blanks < line.size()) {
                lines.StepInto(blanks);
                return true;
            }
            lines.Take();
        }
        return false;
    }

    /*! A line that is \a tag and nothing else; otherwise an error. A line that begins with \a next stays in that case,
     *  and another one goes for it. */
    void ReadTag(QByteArrayView tag, QByteArrayView next)
    {
        if (!SkipBlanks()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), CheckLines::Show(tag));
            return;
        }
        if (lines.TakeIf(tag))
            return;
        file.AddExpected(lines.GetLineNumber(), CheckLines::Show(tag), lines.Peek());
        if (!next.isEmpty() && lines.Peek().startsWith(next))
            return;
        lines.Take();
        lines.TakeIf(tag);
    }

    /*! The document's end, and nothing behind it. */
    void ReadDocumentEnd()
    {
        ReadTag("</XML>", {});
        SkipBlanks();
        file.CheckEnd(lines, u"\"</XML>\""_s);
    }

    static void Fixed(CheckCursor& cursor, QByteArrayView name, QByteArrayView value)
    {
        cursor.Text(QByteArray(" ").append(name).append("=\"").append(value).append('"'));
    }

    static CheckCursor& BeginAttribute(CheckCursor& cursor, QByteArrayView name)
    {
        return cursor.Text(QByteArray(" ").append(name).append("=\""));
    }

    static void Integer(CheckCursor& cursor, QByteArrayView name, int& value)
    {
        BeginAttribute(cursor, name).Integer(value).Text("\"");
    }

    static void Numbers(CheckCursor& cursor, const std::array<QByteArrayView, 3>& names, std::array<double, 3>& values)
    {
        for (size_t i = 0; i < names.size(); ++i)
            BeginAttribute(cursor, names[i]).Number(values[i]).Text("\"");
    }

    QString Text(CheckCursor& cursor, QByteArrayView name)
    {
        QByteArrayView raw;
        BeginAttribute(cursor, name).TextUntil('"', raw);
        if (raw.contains('<'))
            cursor.Fail(Check::tr("no \"<\" in a text"));
        return Decode(raw, lines.GetLineNumber(), file);
    }

    /*! What is numbered one after the other. */
    void CheckRunning(int line, const QString& what, int expected, int found)
    {
        if (found != expected)
            file.AddError(line, Check::tr("expected %1 %2, found %3").arg(what).arg(expected).arg(found));
    }

    const CheckKnownTexts& known;
    CheckLines lines;
    CheckFile& file;
};

/*! Tags that a line of a part file may begin with. */
constexpr std::array<QByteArrayView, 10> partTags{"<PLY ",   "</PLY>", "<SUBPLY ", "</SUBPLY>", "<INSTRUCTIONS>",
                                                  "<NOTES>", "<TEXT ", "<POINT ",  "</PART>",   "</XML>"};

bool IsElement(QByteArrayView line)
{
    while (line.startsWith(' '))
        line = line.sliced(1);
    return std::any_of(partTags.begin(), partTags.end(), [&](QByteArrayView tag) { return line.startsWith(tag); });
}

/*! The line of \a lines is an empty one or rest with an element below it. */
bool IsEmptyAboveElement(const CheckLines& lines)
{
    CheckLines below = lines;
    return below.Take().isEmpty() && IsElement(below.Peek());
}

bool IsTagEnd(const CheckLines& lines)
{
    return lines.Peek() == ">" || lines.Peek() == "/>";
}

class LptReader : private XmlReader
{
public:
    using XmlReader::XmlReader;

    void Read()
    {
        ReadTag("<XML>", "<PART ");
        if (!ReadPart()) {
            CheckTopLayers();
            ReadDocumentEnd();
            return;
        }
        while (SkipBlanks() && !lines.Peek().startsWith("</PART>"))
            ReadLine();
        if (lines.AtEnd()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), u"\"</PART>\""_s);
            return;
        }
        file.EndUnended(lines.GetLineNumber(), -1, lines.Peek());
        CheckTopLayers();
        ReadTag("</PART>", "</XML>");
        ReadDocumentEnd();
    }

private:
    /*! False for a part that its tag ends at once, because nothing is in it. */
    bool ReadPart()
    {
        if (!SkipBlanks())
            return true;
        partLine = lines.GetLineNumber();
        CheckCursor cursor(lines.Peek());
        cursor.Text("<PART");
        file.partName = Text(cursor, "NAME");
        Fixed(cursor, "STATUS", "Vantrell");
        Integer(cursor, "TOPLAYERS", announcedLayers);
        ReadDate(cursor);
        Fixed(cursor, "INVERTNORMALS", "");
        Fixed(cursor, "HIGHESTPLY", "50");
        Fixed(cursor, "USEASSIGNEDLASERS", "0");
        Fixed(cursor, "DEFAULTLASER", "0");
        const bool isEmpty = cursor.StartsWith("/>");
        cursor.Text(isEmpty ? "/>" : ">").End().Report(partLine, file);
        if (cursor.IsGood())
            file.values.emplace_back(u"TOPLAYERS"_s, QString::number(announcedLayers));
        if (!IsElement(lines.Peek()))
            lines.Take();
        return !isEmpty;
    }

    static void ReadDate(CheckCursor& cursor)
    {
        int number = 0;
        cursor.Text(" FILEDATE=\"").Integer(number).Text("/").Integer(number).Text("/").Integer(number, 4).Text(" ");
        cursor.Integer(number, 2).Text(":").Integer(number, 2).Text(":").Integer(number, 2).Text("\"");
    }

    /*! A part may hold more, where its layups are no layers; and less, where one of them is empty. */
    void CheckTopLayers()
    {
        if (heldLayers < announcedLayers)
            file.AddWarning(
                partLine,
                Check::tr("announces %1 layers at the top and holds %2").arg(announcedLayers).arg(heldLayers));
    }

    bool IsInPly() const { return file.GetOpenGroup() >= 0; }

    void ReadLine()
    {
        const int line = lines.GetLineNumber();
        const QByteArrayView found = lines.Peek();
        if (isInCurve && ReadOfCurve(line, found))
            return;
        if (found.startsWith("<PLY ")) {
            ReadPly(line, found);
        } else if (!IsInPly()) {
            file.AddExpected(line, u"\"<PLY\" or \"</PART>\""_s, found);
            lines.Take();
        } else {
            ReadOfPly(line, found);
        }
    }

    /*! False if the line isn't one of a curve, which then ends with it. */
    bool ReadOfCurve(int line, QByteArrayView found)
    {
        if (found.startsWith("<POINT ")) {
            ReadPoint(line);
            return true;
        }
        isInCurve = false;
        if (found.startsWith("</SUBPLY>")) {
            ReadEndTag("</SUBPLY>");
            return true;
        }
        file.AddExpected(line, u"\"<POINT\" or \"</SUBPLY>\""_s, found);
        if (IsElement(found))
            return false;
        isInCurve = true;
        lines.Take();
        return true;
    }

    void ReadOfPly(int line, QByteArrayView found)
    {
        if (found.startsWith("</PLY>")) {
            file.EndGroup(line);
            ReadTag("</PLY>", {});
        } else if (found.startsWith("<SUBPLY ")) {
            BeginCurve(line, found);
        } else if (found.startsWith("<INSTRUCTIONS>")) {
            ReadBlock("<INSTRUCTIONS>", "</INSTRUCTIONS>", CheckParameter::Information);
        } else if (found.startsWith("<NOTES>")) {
            ReadBlock("<NOTES>", "</NOTES>", CheckParameter::Note);
        } else if (found.startsWith("<TEXT ")) {
            ReadText(line, found);
        } else {
            file.AddExpected(line, Check::tr("an element of the ply"), found);
            lines.Take();
        }
    }

    /*! A layer or a ply: one that holds others is a layer. */
    void ReadPly(int line, QByteArrayView found)
    {
        if (IsInPly())
            file.groups[static_cast<size_t>(file.GetOpenGroup())].kind = CheckGroup::Layer;
        else
            ++heldLayers;
        CheckCursor cursor(found);
        cursor.Text("<PLY");
        const QString name = Text(cursor, "NAME");
        Fixed(cursor, "LASERNUMBER", "0");
        file.BeginGroup(CheckGroup::Ply, name, line);
        if (!cursor.Report(line, file)) {
            lines.Take();
            return;
        }
        // The user's own texts may stand within the tag, because they are written ahead of its end.
        lines.StepInto(found.size() - cursor.GetRest().size());
        if (!ReadLiteralsUpTo(IsTagEnd)) {
            file.AddExpected(line, u"\">\""_s, lines.Peek());
            lines.Take();
        } else if (lines.Take() == "/>") {
            file.EndGroup(lines.GetLastLineNumber());
        }
    }

    void BeginCurve(int line, QByteArrayView found)
    {
        CheckCursor cursor(found);
        cursor.Text("<SUBPLY");
        const QString name = Text(cursor, "NAME");
        Fixed(cursor, "LASERNUMBER", "0");
        cursor.Text(">").End().Report(line, file);
        file.BeginCurve(GetCurveKindByName(name), name, line);
        isInCurve = true;
        pointNumber = 0;
        lines.Take();
    }

    void ReadPoint(int line)
    {
        CheckPoint point;
        int number = 0;
        CheckCursor cursor(lines.Take());
        cursor.Text("<POINT");
        Integer(cursor, "NUMBER", number);
        Numbers(cursor, {"XVAL", "YVAL", "ZVAL"}, point.position);
        point.hasNormal = cursor.StartsWith(" ");
        if (point.hasNormal)
            Numbers(cursor, {"IVAL", "JVAL", "KVAL"}, point.normal);
        cursor.Text("/>").End();
        ++pointNumber;
        if (!cursor.Report(line, file))
            return;
        CheckRunning(line, Check::tr("point"), pointNumber, number);
        CheckPoint& added = file.AddPoint(point.position, line);
        added.normal = point.normal;
        added.hasNormal = point.hasNormal;
    }

    void ReadText(int line, QByteArrayView found)
    {
        std::array<double, 3> places[3]{};
        int number = 0;
        CheckCursor cursor(found);
        cursor.Text("<TEXT");
        Integer(cursor, "NAME", number);
        const QString value = Text(cursor, "VALUE");
        Numbers(cursor, {"PT1XVAL", "PT1YVAL", "PT1ZVAL"}, places[0]);
        Numbers(cursor, {"PT2XVAL", "PT2YVAL", "PT2ZVAL"}, places[1]);
        Numbers(cursor, {"PT3XVAL", "PT3YVAL", "PT3ZVAL"}, places[2]);
        cursor.Text("/>").End();
        lines.Take();
        ++textNumber;
        if (!cursor.Report(line, file))
            return;
        CheckRunning(line, Check::tr("text"), textNumber, number);
        CheckText& text = file.AddText(value, line);
        for (const auto& place : places)
            text.numbers.insert(text.numbers.end(), place.begin(), place.end());
    }

    /*! Texts of parameters, each with a line end behind it. */
    void ReadBlock(QByteArrayView begin, QByteArrayView end, CheckParameter::Kind kind)
    {
        const int line = lines.GetLineNumber();
        lines.StepInto(begin.size());
        QByteArray raw;
        while (!lines.AtEnd() && !lines.Peek().contains('<'))
            raw.append(lines.Take()).append('\n');
        if (!lines.Peek().startsWith(end)) {
            file.AddExpected(lines.GetLineNumber(), CheckLines::Show(end), lines.Peek());
            lines.Take();
            return;
        }
        const QByteArray text = Decode(raw, line, file).toUtf8();
        CheckLines texts(text, known);
        while (!texts.AtEnd()) {
            const int textLine = line + texts.GetLineNumber() - 1;
            file.AddParameter(kind, texts.TakeText("").value_or(QString()), textLine);
        }
        ReadEndTag(end);
    }

    /*! The end of an element of a ply, and what stands behind it: nothing, or the user's own texts. */
    void ReadEndTag(QByteArrayView tag)
    {
        lines.StepInto(tag.size());
        if (!ReadLiteralsUpTo(IsEmptyAboveElement) && !lines.Peek().isEmpty())
            file.AddExpected(lines.GetLineNumber(), Check::tr("the end of the line"), lines.Peek());
        lines.Take();
    }

    /*! The user's own texts up to where \a isEnd holds, which isn't taken; false, and takes nothing, if an element or
     *  the end of the file comes first. */
    bool ReadLiteralsUpTo(bool (*isEnd)(const CheckLines& lines))
    {
        CheckLines ahead = lines;
        while (!ahead.AtEnd() && !isEnd(ahead)) {
            if (ahead.TakeLiteral())
                continue;
            if (IsElement(ahead.Peek()))
                return false;
            ahead.Take();
        }
        if (ahead.AtEnd())
            return false;
        while (lines.GetLineNumber() < ahead.GetLineNumber()) {
            const int line = lines.GetLineNumber();
            auto literal = lines.TakeLiteral();
            if (!literal)
                literal = lines.TakeText("");
            file.AddParameter(CheckParameter::Literal, literal.value_or(QString()), line);
        }
        return true;
    }

    int partLine = 1;
    int announcedLayers = 0;
    int heldLayers = 0;
    bool isInCurve = false;
    int pointNumber = 0;
    int textNumber = 0;
};

class ToolReader : private XmlReader
{
public:
    using XmlReader::XmlReader;

    void Read()
    {
        ReadTag("<XML>", "<TOOL ");
        ReadTool();
        while (SkipBlanks() && !lines.Peek().startsWith("</"))
            ReadTarget();
        if (lines.AtEnd()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), u"\"</TOOL>\""_s);
            return;
        }
        ReadTag("</TOOL>", "</XML>");
        ReadDocumentEnd();
    }

private:
    void ReadTool()
    {
        if (!SkipBlanks())
            return;
        CheckCursor cursor(lines.Peek());
        cursor.Text("<TOOL");
        const QString name = Text(cursor, "NAME");
        Fixed(cursor, "STATUS", "Vantrell");
        Fixed(cursor, "COORDSYSTEM", "RIGHT");
        cursor.Text(">").End().Report(lines.GetLineNumber(), file);
        if (cursor.IsGood())
            file.values.emplace_back(u"NAME"_s, name);
        if (!lines.Peek().startsWith("<TARGET "))
            lines.Take();
    }

    void ReadTarget()
    {
        const int line = lines.GetLineNumber();
        CheckTarget target;
        int laser = 0;
        CheckCursor cursor(lines.Peek());
        cursor.Text("<TARGET");
        Integer(cursor, "LASERNUMBER", laser);
        Integer(cursor, "NUMBER", target.number);
        target.name = Text(cursor, "NAME");
        target.isDrift = cursor.StartsWith(" DVAL=\"ON\"");
        Fixed(cursor, "DVAL", target.isDrift ? "ON" : "OFF");
        Numbers(cursor, {"XVAL", "YVAL", "ZVAL"}, target.position);
        for (const QByteArrayView name : {"ANGLE1", "ANGLE2", "DISTANCE"})
            Fixed(cursor, name, "");
        Fixed(cursor, "SCANRATIO", "1.0");
        Fixed(cursor, "SEARCHRATIO", "1.0");
        Fixed(cursor, "MISSING", "");
        cursor.Text("/>").End();
        lines.Take();
        const bool isGood = cursor.Report(line, file);
        if (!isGood && laser == 0)
            laser = std::max(file.projectorCount, 1); // it is there, broken
        if (!CheckLaser(line, laser))
            return;
        ++targetNumber;
        if (!isGood)
            return;
        target.projector = laser - 1;
        target.line = line;
        CheckRunning(line, Check::tr("target"), targetNumber, target.number);
        file.targets.push_back(target);
    }

    /*! Lasers come one after the other. A number may be left out, where a laser has no targets. */
    bool CheckLaser(int line, int laser)
    {
        constexpr int highest = 999;
        if (laser < std::max(file.projectorCount, 1) || laser > highest) {
            file.AddError(line, Check::tr("expected a laser from %1 to %2, found %3")
                                    .arg(std::max(file.projectorCount, 1))
                                    .arg(highest)
                                    .arg(laser));
            return false;
        }
        if (laser > file.projectorCount)
            targetNumber = 0;
        file.projectorCount = laser;
        return true;
    }

    int targetNumber = 0;
};

void ReadLpt(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    LptReader(bytes, known, file).Read();
}

void ReadTool(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    ToolReader(bytes, known, file).Read();
}

bool BeginsWith(QByteArrayView bytes, QByteArrayView tag)
{
    constexpr qsizetype head = 200;
    return bytes.trimmed().startsWith("<XML>") && bytes.first(std::min(bytes.size(), head)).contains(tag);
}

bool IsLpt(QByteArrayView bytes)
{
    return BeginsWith(bytes, "<PART ");
}

bool IsTool(QByteArrayView bytes)
{
    return BeginsWith(bytes, "<TOOL ");
}

QString GetToolPath(const QString& path)
{
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    return path.first(name) + u"Tool-"_s + path.sliced(name);
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetLpt()
{
    return {{{u"lpt"_s, u"faro"_s}, u"LPT and FARO"_s, {u".xml"_s}, IsLpt, ReadLpt, GetToolPath, ToolType()},
            {{ToolType()}, Check::tr("LPT and FARO tool file"), {}, IsTool, ReadTool, nullptr, {}}};
}
