#include "CheckDump.h"

#include "CheckFormat.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString ShowAttributes(const std::vector<int>& attributes)
{
    QString text;
    for (const int attribute : attributes)
        text += u" #%1"_s.arg(attribute);
    return text;
}

template <typename Numbers>
QString JoinNumbers(const Numbers& numbers)
{
    QStringList words;
    for (const double number : numbers)
        words.append(QString::number(number));
    return words.join(u' ');
}

QString GetWord(CheckCurveKind kind)
{
    static const QStringList words{u"unknown"_s, u"boundary"_s, u"rosette"_s, u"seedcurve"_s, u"other"_s};
    return words[static_cast<int>(kind)];
}

QString GetWord(CheckParameter::Kind kind)
{
    static const QStringList words{u"information"_s, u"message"_s, u"graphic"_s, u"query"_s, u"literal"_s, u"note"_s};
    return words[static_cast<int>(kind)];
}

/*! Gathers lines and puts them into the order of the file. */
class Lines
{
public:
    void Add(int line, const QString& text) { lines.append({line, text}); }
    QStringList Get()
    {
        std::stable_sort(lines.begin(), lines.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        QStringList texts;
        for (const auto& [line, text] : std::as_const(lines))
            texts.append(QString::number(line) + u' ' + text);
        return texts;
    }

private:
    QList<std::pair<int, QString>> lines;
};

void DumpGroup(const CheckGroup& group, Lines& lines)
{
    static const QStringList kinds{u"layer"_s, u"ply"_s, u"part"_s};
    QString text = kinds[group.kind] + u' ' + group.name;
    if (group.number >= 0)
        text += u" number %1"_s.arg(group.number);
    for (const auto& [key, value] : group.values)
        text += u' ' + key + u'=' + value;
    lines.Add(group.line, text);
    if (group.endLine > 0)
        lines.Add(group.endLine, u"end "_s + group.name);
}

void DumpCurve(const CheckFile& file, const CheckCurve& curve, Lines& lines)
{
    QString text = u"curve "_s + GetWord(curve.kind);
    if (!curve.name.isEmpty())
        text += u' ' + curve.name;
    text += u": %1 points"_s.arg(curve.pointCount);
    if (curve.closedByFlag)
        text += *curve.closedByFlag ? u", closed"_s : u", open"_s;
    lines.Add(curve.line, text + ShowAttributes(curve.attributes));
    for (const CheckPoint& point : file.GetPoints(curve)) {
        lines.Add(point.line, u"point "_s + JoinNumbers(point.position) +
                                  (point.hasNormal ? u" / "_s + JoinNumbers(point.normal) : QString()));
    }
}

void DumpTarget(const CheckTarget& target, Lines& lines)
{
    lines.Add(
        target.line,
        u"target %1%2 projector %3%4 at %5"_s.arg(target.name, target.isDrift ? u" drift"_s : QString())
            .arg(target.projector)
            .arg(target.number < 0 ? QString() : u" number %1"_s.arg(target.number), JoinNumbers(target.position)));
}
} // namespace

CheckFile ReadChecked(const QString& type, const QByteArray& bytes)
{
    const CheckFormat* const format = CheckFormats::Find(type);
    if (!format)
        qFatal("there is no type %s", qPrintable(type));
    CheckFile file;
    format->read(bytes, {}, file);
    return file;
}

QStringList Dump(const CheckFile& file)
{
    QStringList head;
    if (file.unit != CheckFile::UnknownUnit)
        head.append(file.unit == CheckFile::Inches ? u"unit in"_s : u"unit mm"_s);
    if (!file.partName.isEmpty())
        head.append(u"part "_s + file.partName);
    for (const auto& [key, value] : file.values)
        head.append(key + u'=' + value);
    if (file.projectorCount > 0)
        head.append(u"projectors %1"_s.arg(file.projectorCount));
    Lines lines;
    for (const CheckGroup& group : file.groups)
        DumpGroup(group, lines);
    for (const CheckCurve& curve : file.curves)
        DumpCurve(file, curve, lines);
    for (const CheckText& text : file.texts)
        lines.Add(text.line,
                  u"text "_s + text.text + u' ' + JoinNumbers(text.numbers) + ShowAttributes(text.attributes));
    for (const CheckParameter& parameter : file.parameters)
        lines.Add(parameter.line, GetWord(parameter.kind) + u' ' + parameter.text);
    for (const CheckTarget& target : file.targets)
        DumpTarget(target, lines);
    return head + lines.Get();
}

QStringList DumpFindings(const CheckFile& file)
{
    QStringList texts;
    for (const CheckFinding& finding : file.findings) {
        texts.append(u"%1: %2: %3%4"_s.arg(finding.line)
                         .arg(finding.severity == CheckSeverity::Error ? u"error"_s : u"warning"_s,
                              finding.ply.isEmpty() ? QString() : finding.ply + u": "_s, finding.text));
    }
    return texts;
}

QStringList FindSilentDamage(const QString& type, const QByteArray& bytes)
{
    QStringList silent;
    const auto damage = [&](const QByteArray& damaged, const QString& text) {
        if (ReadChecked(type, damaged).findings.empty())
            silent.append(text);
    };
    int number = 0;
    for (qsizetype begin = 0; begin < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', begin) + 1;
        const QByteArray line = bytes.sliced(begin, end - begin);
        const QString place = u" %1: %2"_s.arg(++number).arg(QString::fromUtf8(line.chopped(1)));
        if (end < bytes.size())
            damage(bytes.first(end), u"cut behind"_s + place);
        damage(bytes.first(begin) + bytes.sliced(end), u"without"_s + place);
        damage(bytes.first(begin) + '%' + bytes.sliced(begin), u"wrong"_s + place);
        begin = end;
    }
    return silent;
}

QByteArray Replaced(QByteArray bytes, const QByteArray& before, const QByteArray& after)
{
    const qsizetype at = bytes.indexOf(before);
    if (at < 0)
        qFatal("there is no \"%s\" to replace", before.constData());
    return bytes.replace(at, before.size(), after);
}
