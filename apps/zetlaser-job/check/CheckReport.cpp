#include "CheckReport.h"

#include <QJsonArray>

#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double metre = 1000.0; // mm
constexpr double inch = 25.4;    // mm

QString GetSeverity(CheckSeverity severity)
{
    return severity == CheckSeverity::Error ? Check::tr("error") : Check::tr("warning");
}

/*! The names of the layers around a ply, from the outside. */
QStringList GetLayers(const CheckFile& file, const CheckGroup& ply)
{
    QStringList names;
    for (int at = ply.parent; at >= 0; at = file.groups[static_cast<size_t>(at)].parent)
        names.prepend(file.groups[static_cast<size_t>(at)].name);
    return names;
}

/*! In the order of the file; what concerns it as a whole comes last. */
bool IsAhead(const CheckFinding& a, const CheckFinding& b)
{
    constexpr int last = std::numeric_limits<int>::max();
    return (a.line == 0 ? last : a.line) < (b.line == 0 ? last : b.line);
}

std::array<double, 3> Scale(const std::array<double, 3>& sides, double factor)
{
    return {sides[0] * factor, sides[1] * factor, sides[2] * factor};
}

QJsonArray ToJson(const std::array<double, 3>& numbers)
{
    return {numbers[0], numbers[1], numbers[2]};
}

QString GetUnitText(const CheckedFile& file)
{
    switch (file.content.unit) {
    case CheckFile::Millimetres:
        return Check::tr("written in mm");
    case CheckFile::Inches:
        return Check::tr("written in inches");
    default:
        return file.unitLength == 1.0 ? Check::tr("if it is written in mm; the file doesn't tell")
                                      : Check::tr("as it is written in inches; the file doesn't tell");
    }
}

QString DescribeLength(double millimetres)
{
    return millimetres < metre ? Check::tr("%1 mm").arg(millimetres, 0, 'f', 1)
                               : Check::tr("%1 m").arg(millimetres / metre, 0, 'f', 1);
}

qint64 CountClosed(const CheckedFile& file, const CheckPly& ply)
{
    return std::count_if(ply.curves.begin(), ply.curves.end(), [&](size_t curve) {
        return CheckMeasures::IsClosed(file.content, file.content.curves[curve]);
    });
}

QString GetPlyLine(const CheckedFile& file, const CheckPly& ply)
{
    const CheckGroup* const group = ply.group < 0 ? nullptr : &file.content.groups[static_cast<size_t>(ply.group)];
    const QStringList names =
        group ? GetLayers(file.content, *group) << group->name : QStringList(Check::tr("(in no ply)"));
    const QString size =
        ply.box.IsEmpty() ? u"-"_s : CheckReport::DescribeSize(Scale(ply.box.GetSides(), file.unitLength));
    return u"  %1  %2  %3  %4  %5  %6  %7"_s.arg(group ? group->line : 0, 7)
        .arg(ply.curves.size(), 6)
        .arg(CountClosed(file, ply), 6)
        .arg(ply.points, 6)
        .arg(DescribeLength(ply.length * file.unitLength), 9)
        .arg(size, -29)
        .arg(CheckLines::Escape(names.join(u'/')));
}

QStringList GetPlyTable(const CheckedFile& file)
{
    if (file.plies.empty())
        return {};
    QStringList lines{u"  %1  %2  %3  %4  %5  %6  %7"_s.arg(Check::tr("line"), 7)
                          .arg(Check::tr("curves"), 6)
                          .arg(Check::tr("closed"), 6)
                          .arg(Check::tr("points"), 6)
                          .arg(Check::tr("length"), 9)
                          .arg(Check::tr("size"), -29)
                          .arg(Check::tr("ply"))};
    for (const CheckPly& ply : file.plies)
        lines.append(GetPlyLine(file, ply));
    return lines;
}

/*! One error is told where a reader has lost its way, and those that may come from it are counted. */
void AddFurtherErrors(CheckedFile& file)
{
    const auto mayFollow = [](const CheckFinding& finding) { return finding.mayFollow; };
    const size_t count = std::erase_if(file.findings, mayFollow) + file.content.suppressedFindings;
    if (count == 0)
        return;
    const int lostLine = file.content.lostLine;
    file.findings.push_back(
        {CheckSeverity::Error,
         0,
         {},
         lostLine > 0 ? Check::tr("further errors, which may come from that in line %1: %2").arg(lostLine).arg(count)
                      : Check::tr("further errors: %1").arg(count)});
}

void AddByteOrderMark(CheckedFile& file, QByteArrayView bytes)
{
    if (CheckFormats::HasByteOrderMark(bytes))
        file.findings.push_back(
            {CheckSeverity::Error, 1, {}, Check::tr("the file begins with a byte order mark, which no format has")});
}

/*! The formats leave the line ends to the system that writes them, which is LF here. So CR LF is no fault of a format,
 *  but a file that has them was written elsewhere, or saved by an editor. */
void AddLineEnds(CheckedFile& file, QByteArrayView bytes)
{
    constexpr QByteArrayView lineEnd = "\r\n";
    const qsizetype count = bytes.count(lineEnd);
    const qsizetype all = bytes.count('\n');
    if (count == 0)
        return;
    if (count == all) {
        file.AddWarning(0, {}, Check::tr("expected lines that end with LF, found CR LF"));
        return;
    }
    const qsizetype first = bytes.first(bytes.indexOf(lineEnd)).count('\n') + 1;
    file.AddWarning(static_cast<int>(first), {},
                    Check::tr("expected lines that end with LF, found CR LF at %1 of %2").arg(count).arg(all));
}

QJsonObject GetPlyJson(const CheckedFile& file, const CheckPly& ply)
{
    QJsonObject json;
    if (ply.group >= 0) {
        const CheckGroup& group = file.content.groups[static_cast<size_t>(ply.group)];
        json[u"name"_s] = group.name;
        json[u"line"_s] = group.line;
        json[u"layers"_s] = QJsonArray::fromStringList(GetLayers(file.content, group));
        for (const auto& [key, value] : group.values)
            json[key] = value;
    }
    json[u"curves"_s] = static_cast<qint64>(ply.curves.size());
    json[u"closedCurves"_s] = CountClosed(file, ply);
    json[u"points"_s] = static_cast<qint64>(ply.points);
    json[u"pointsWithNormal"_s] = static_cast<qint64>(ply.pointsWithNormal);
    json[u"texts"_s] = static_cast<qint64>(ply.texts);
    json[u"parameters"_s] = static_cast<qint64>(ply.parameters);
    json[u"length"_s] = ply.length * file.unitLength;
    if (!ply.box.IsEmpty())
        json[u"size"_s] = ToJson(Scale(ply.box.GetSides(), file.unitLength));
    return json;
}

QJsonObject GetTargetJson(const CheckTarget& target)
{
    QJsonObject json{{u"name"_s, target.name},
                     {u"line"_s, target.line},
                     {u"projector"_s, target.projector},
                     {u"drift"_s, target.isDrift},
                     {u"at"_s, ToJson(target.position)}};
    if (target.number >= 0)
        json[u"number"_s] = target.number;
    return json;
}

QString DescribeComparison(const CheckedFile& file)
{
    if (file.compared == CheckedFile::Everything)
        return Check::tr("  compared with the model: all of it, point by point");
    if (!file.difference)
        return Check::tr("  compared with the model: plies, boundaries, targets");
    return Check::tr("  compared with the model: plies, boundaries, targets; the job had other options (line %1: %2)")
        .arg(file.difference->line)
        .arg(CheckLines::Escape(file.difference->text));
}

QJsonObject GetFindingJson(const CheckFinding& finding)
{
    QJsonObject json{{u"severity"_s, finding.severity == CheckSeverity::Error ? u"error"_s : u"warning"_s},
                     {u"text"_s, finding.text}};
    if (finding.line > 0)
        json[u"line"_s] = finding.line;
    if (!finding.ply.isEmpty())
        json[u"ply"_s] = finding.ply;
    return json;
}
} // namespace

CheckBox CheckedFile::GetBox() const
{
    CheckBox box;
    for (const CheckPly& ply : plies)
        box.Add(ply.box);
    return box;
}

void CheckedFile::AddWarning(int line, const QString& ply, const QString& text)
{
    const CheckFinding finding{CheckSeverity::Warning, line, ply, text};
    findings.insert(std::upper_bound(findings.begin(), findings.end(), finding, IsAhead), finding);
}

const CheckFinding* CheckedFile::GetUnreadable() const
{
    if (!content.groups.empty() || !content.curves.empty() || !content.targets.empty() || !content.texts.empty())
        return nullptr;
    const auto isError = [](const CheckFinding& finding) { return finding.severity == CheckSeverity::Error; };
    const auto error = std::find_if(findings.begin(), findings.end(), isError);
    return error == findings.end() ? nullptr : &*error;
}

CheckedFile CheckBytes(const QString& path, const CheckFormat& format, QByteArrayView bytes, CheckFile::Unit unit,
                       const CheckKnownTexts& known)
{
    CheckedFile file;
    file.path = path;
    file.format = &format;
    format.read(CheckFormats::SkipByteOrderMark(bytes), known, file.content);
    const CheckFile::Unit told = file.content.unit == CheckFile::UnknownUnit ? unit : file.content.unit;
    file.unitLength = told == CheckFile::Inches ? inch : 1.0;
    file.plies = CheckMeasures::GetPlies(file.content);
    file.findings = file.content.findings;
    AddByteOrderMark(file, bytes);
    // Of a file that isn't whole, half of what is doubtful is doubtful because of that.
    const std::vector<CheckFinding> faults = FindFaults(file.content, file.plies, file.unitLength);
    file.findings.insert(file.findings.end(), faults.begin(), faults.end());
    if (file.plies.empty() && !CheckFormats::IsCompanion(format))
        file.findings.push_back({CheckSeverity::Warning, 0, {}, Check::tr("the file holds no ply")});
    AddFurtherErrors(file);
    std::stable_sort(file.findings.begin(), file.findings.end(), IsAhead);
    if (!known.HoldCr())
        AddLineEnds(file, bytes);
    return file;
}

QString CheckReport::DescribeSize(const std::array<double, 3>& sides)
{
    const double largest = *std::max_element(sides.begin(), sides.end());
    QStringList words;
    for (const double side : sides) {
        words.append(largest < metre ? Check::tr("%1 mm").arg(side, 0, 'f', 1)
                                     : Check::tr("%1 m").arg(side / metre, 0, 'f', 1));
    }
    return words.join(u" x "_s);
}

QStringList CheckReport::GetSummary(const CheckedFile& file)
{
    const CheckFile& content = file.content;
    QStringList lines{u"%1: %2"_s.arg(file.path, file.format->name)};
    if (!content.partName.isEmpty())
        lines.append(Check::tr("  part: %1").arg(CheckLines::Escape(content.partName)));
    const auto plies =
        std::count_if(file.plies.begin(), file.plies.end(), [](const CheckPly& ply) { return ply.group >= 0; });
    if (!file.plies.empty()) {
        lines.append(Check::tr("  plies and sub-plies: %1, curves: %2, points: %3, texts: %4, parameters: %5")
                         .arg(plies)
                         .arg(content.curves.size())
                         .arg(content.points.size())
                         .arg(content.texts.size())
                         .arg(content.parameters.size()));
        const auto normals = std::count_if(content.points.begin(), content.points.end(), CheckMeasures::HasNormal);
        lines.append(Check::tr("  normals: %1 points have one").arg(normals));
        lines.append(Check::tr("  size: %1, %2")
                         .arg(DescribeSize(Scale(file.GetBox().GetSides(), file.unitLength)), GetUnitText(file)));
    }
    if (file.farthest)
        lines.append(Check::tr("  farthest from the tool: %1 mm (line %2, ply %3)")
                         .arg(file.farthest->distance, 0, 'f', 3)
                         .arg(file.farthest->line)
                         .arg(CheckLines::Escape(file.farthest->ply)));
    if (file.compared != CheckedFile::Nothing)
        lines.append(DescribeComparison(file));
    if (content.projectorCount > 0)
        lines.append(
            Check::tr("  targets: %1, projectors: %2").arg(content.targets.size()).arg(content.projectorCount));
    return lines + GetPlyTable(file);
}

QString CheckReport::GetLine(const QString& path, const CheckFinding& finding)
{
    const QString place = finding.line > 0 ? path + u':' + QString::number(finding.line) : path;
    const QString ply = finding.ply.isEmpty() ? QString() : Check::tr("ply %1: ").arg(CheckLines::Escape(finding.ply));
    return u"%1: %2: "_s.arg(place, GetSeverity(finding.severity)) + ply + CheckLines::Escape(finding.text);
}

QJsonObject CheckReport::GetJson(const CheckedFile& file)
{
    const CheckFile& content = file.content;
    QJsonArray plies;
    for (const CheckPly& ply : file.plies)
        plies.append(GetPlyJson(file, ply));
    QJsonArray targets;
    for (const CheckTarget& target : content.targets)
        targets.append(GetTargetJson(target));
    QJsonArray findings;
    for (const CheckFinding& finding : file.findings)
        findings.append(GetFindingJson(finding));
    QJsonObject json{{u"file"_s, file.path},
                     {u"type"_s, file.format->types.first()},
                     {u"curves"_s, static_cast<qint64>(content.curves.size())},
                     {u"points"_s, static_cast<qint64>(content.points.size())},
                     {u"texts"_s, static_cast<qint64>(content.texts.size())},
                     {u"parameters"_s, static_cast<qint64>(content.parameters.size())},
                     {u"projectors"_s, content.projectorCount},
                     {u"plies"_s, plies},
                     {u"targets"_s, targets},
                     {u"findings"_s, findings}};
    if (content.unit != CheckFile::UnknownUnit)
        json[u"unit"_s] = content.unit == CheckFile::Inches ? u"in"_s : u"mm"_s;
    if (file.farthest)
        json[u"farthest"_s] = QJsonObject{
            {u"distance"_s, file.farthest->distance}, {u"line"_s, file.farthest->line}, {u"ply"_s, file.farthest->ply}};
    if (file.compared != CheckedFile::Nothing)
        json[u"compared"_s] = file.compared == CheckedFile::Everything ? u"everything"_s : u"boundaries"_s;
    if (file.difference)
        json[u"difference"_s] = GetFindingJson(*file.difference);
    if (!content.partName.isEmpty())
        json[u"partName"_s] = content.partName;
    if (const CheckBox box = file.GetBox(); !box.IsEmpty())
        json[u"size"_s] = ToJson(Scale(box.GetSides(), file.unitLength));
    return json;
}
