#include "CheckFile.h"

#include "CheckLines.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

CheckCurveKind GetCurveKindByName(const QString& name)
{
    if (name.endsWith(u"Rosette"_s))
        return CheckCurveKind::Rosette;
    if (name.endsWith(u"Seedcurve"_s))
        return CheckCurveKind::SeedCurve;
    // A curve of extra geometry is called by any label, with the word contour and its number behind.
    static const QRegularExpression numbered(u" (boundary|flat contour) [0-9]+$"_s);
    if (numbered.match(name).hasMatch())
        return CheckCurveKind::Boundary;
    return CheckCurveKind::Other;
}

int CheckFile::GetPly(int group) const
{
    while (group >= 0 && groups[static_cast<size_t>(group)].kind != CheckGroup::Ply)
        group = groups[static_cast<size_t>(group)].parent;
    return group;
}

QString CheckFile::GetPlyName(int group) const
{
    const int ply = GetPly(group);
    return ply < 0 ? QString() : groups[static_cast<size_t>(ply)].name;
}

void CheckFile::BeginGroup(CheckGroup::Kind kind, const QString& name, int line)
{
    const int depth = openGroup < 0 ? 0 : groups[static_cast<size_t>(openGroup)].depth + 1;
    if (depth >= maxDepth) {
        if (ignoredDepth++ == 0)
            AddError(line, Check::tr("expected at most %1 levels, found more").arg(maxDepth));
        return;
    }
    CheckGroup& group = groups.emplace_back();
    group.kind = kind;
    group.name = name;
    group.parent = openGroup;
    group.depth = depth;
    group.line = line;
    openGroup = static_cast<int>(groups.size()) - 1;
}

bool CheckFile::EndGroup(int line)
{
    if (ignoredDepth > 0) {
        --ignoredDepth;
        return true;
    }
    if (openGroup < 0)
        return false;
    CheckGroup& group = groups[static_cast<size_t>(openGroup)];
    group.endLine = line;
    openGroup = group.parent;
    return true;
}

void CheckFile::EndGroup(int line, CheckGroup::Kind kind, const std::optional<QString>& name, QByteArrayView found)
{
    if (ignoredDepth > 0) {
        --ignoredDepth;
        return;
    }
    const auto isMeant = [&](int index) {
        const CheckGroup& group = groups[static_cast<size_t>(index)];
        return group.kind == kind && (!name || group.name == *name);
    };
    int meant = openGroup;
    while (meant >= 0 && !isMeant(meant))
        meant = groups[static_cast<size_t>(meant)].parent;
    if (meant >= 0) {
        EndUnended(line, meant, found);
        EndGroup(line);
        return;
    }
    if (openGroup < 0) {
        AddError(line, Check::tr("nothing is open that %1 could end").arg(CheckLines::Show(found)));
        return;
    }
    // A wrong name at the end of the right kind ends it all the same.
    const CheckGroup& open = groups[static_cast<size_t>(openGroup)];
    if (open.kind == kind)
        EndUnended(line, open.parent, found);
    else
        AddExpected(line, GetExpectedEnd(), found);
}

void CheckFile::EndUnended(int line, int last, QByteArrayView found)
{
    while (openGroup >= 0 && openGroup != last) {
        AddExpected(line, GetExpectedEnd(), found);
        EndGroup(line);
    }
}

QString CheckFile::GetExpectedEnd() const
{
    const CheckGroup& open = groups[static_cast<size_t>(openGroup)];
    return Check::tr("the end of \"%1\", begun in line %2").arg(open.name, QString::number(open.line));
}

CheckCurve& CheckFile::BeginCurve(CheckCurveKind kind, const QString& name, int line)
{
    CheckCurve& curve = curves.emplace_back();
    curve.kind = kind;
    curve.name = name;
    curve.group = openGroup;
    curve.line = line;
    curve.firstPoint = points.size();
    return curve;
}

CheckPoint& CheckFile::AddPoint(const std::array<double, 3>& position, int line)
{
    if (curves.empty())
        BeginCurve(CheckCurveKind::Unknown, {}, line);
    ++curves.back().pointCount;
    CheckPoint& point = points.emplace_back();
    point.position = position;
    point.line = line;
    return point;
}

CheckText& CheckFile::AddText(const QString& text, int line)
{
    CheckText& added = texts.emplace_back();
    added.text = text;
    added.group = openGroup;
    added.line = line;
    return added;
}

void CheckFile::AddParameter(CheckParameter::Kind kind, const QString& text, int line)
{
    parameters.push_back({kind, text, openGroup, line});
}

void CheckFile::AddExpected(int line, const QString& expected, QByteArrayView found)
{
    AddWrongValue(line, expected, found);
    if (lostLine == 0)
        lostLine = line;
}

void CheckFile::AddWrongValue(int line, const QString& expected, QByteArrayView found)
{
    AddError(line, Check::tr("expected %1, found %2").arg(expected, CheckLines::Show(found)));
}

void CheckFile::AddEndsTooEarly(int line, const QString& expected)
{
    AddFinding(CheckSeverity::Error, line, Check::tr("the file ends too early: expected %1").arg(expected), false);
}

void CheckFile::CheckEnd(const CheckLines& lines, const QString& end)
{
    if (!lines.AtEnd())
        AddExpected(lines.GetLineNumber(), Check::tr("nothing behind %1").arg(end), lines.Peek());
    else if (lines.IsCut())
        AddEndsTooEarly(lines.GetLastLineNumber(), Check::tr("the end of the line"));
}

void CheckFile::CheckCount(int line, const QString& what, int announced, int held)
{
    if (announced != held)
        AddError(line, Check::tr("announces %1 %2 and holds %3").arg(announced).arg(what).arg(held));
}

void CheckFile::AddFinding(CheckSeverity severity, int line, const QString& text, bool mayFollow)
{
    if (findings.size() < maxFindings)
        findings.push_back({severity, line, GetPlyName(openGroup), text, mayFollow});
    else
        ++suppressedFindings;
}
