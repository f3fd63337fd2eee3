// A line with the type of a file that `zetlaser-job check` reads, such as "virtek", and any bytes behind it as that
// file: they are read to their end, with findings that are one line each.

#include "FuzzTarget.h"

#include "CheckReport.h"

#include <QJsonDocument>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! What the reader found must lie within what it read. */
void CheckIndices(const CheckFile& file)
{
    const auto isGroup = [&](int group) { return group >= -1 && group < int(file.groups.size()); };
    const auto areGroups = [&](const auto& items) {
        return std::all_of(items.begin(), items.end(), [&](const auto& item) { return isGroup(item.group); });
    };
    FuzzTarget::Require(areGroups(file.curves) && areGroups(file.texts) && areGroups(file.parameters),
                        "all stands in a group that is there");
    for (const CheckGroup& group : file.groups)
        FuzzTarget::Require(isGroup(group.parent) && group.depth <= CheckFile::maxDepth, "groups stand in groups");
    for (const CheckCurve& curve : file.curves)
        FuzzTarget::Require(curve.firstPoint + curve.pointCount <= file.points.size(), "a curve has its points");
    for (const CheckTarget& target : file.targets)
        FuzzTarget::Require(target.projector >= 0, "a target has a projector", QString::number(target.projector));
    FuzzTarget::Require(file.findings.size() <= CheckFile::maxFindings, "findings are limited");
}

void Read(const CheckFormat& format, QByteArrayView bytes, const CheckKnownTexts& known)
{
    const CheckedFile file = CheckBytes(u"part"_s, format, bytes, CheckFile::UnknownUnit, known);
    CheckIndices(file.content);
    const auto lines = bytes.count('\n') + 1;
    for (const CheckFinding& finding : file.findings) {
        FuzzTarget::RequireOneLine(CheckReport::GetLine(file.path, finding));
        FuzzTarget::Require(finding.line >= 0 && finding.line <= lines + 1, "a finding is in the file",
                            QString::number(finding.line));
    }
    for (const QString& line : CheckReport::GetSummary(file))
        FuzzTarget::RequireOneLine(line);
    FuzzTarget::Require(!QJsonDocument(CheckReport::GetJson(file)).toJson().isEmpty(), "all of it is told to scripts");
}
} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArrayView input(data, qsizetype(size));
    const qsizetype lineEnd = input.indexOf('\n');
    if (lineEnd < 0)
        return 0;
    const CheckFormat* format = CheckFormats::Find(QString::fromLatin1(input.first(lineEnd)));
    if (!format)
        return 0;
    const QByteArrayView bytes = input.sliced(lineEnd + 1);
    Read(*format, bytes, {});
    static const CheckKnownTexts known{{"two\nlines", "\n", "END P1\n"}, {"# raw", "two\nlines\nof a literal", ""}};
    Read(*format, bytes, known);
    CheckFormats::Recognise(u"part"_s, bytes);
    return 0;
}
