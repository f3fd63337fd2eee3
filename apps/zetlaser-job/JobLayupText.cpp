#include "JobLayupText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QSet>
#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString shapeName = u"Tool"_s;
const QString rosetteName = u"Rosette"_s;

QString FormatNumber(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

QString FormatNumbers(const QList<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers)
        texts.append(FormatNumber(number));
    return u'[' + texts.join(u", "_s) + u']';
}

/*! An array with each of \a elements on a line of its own. */
QString FormatArray(const QStringList& elements, const QString& indentation)
{
    return u"[\n"_s + indentation + u"  "_s + elements.join(u",\n"_s + indentation + u"  "_s) + u'\n' + indentation +
           u']';
}

QString FormatPly(const JobPlyRow& ply)
{
    return u"{\"name\": %1, \"direction\": %2, \"material\": %3, \"boundary\": %4}"_s.arg(
        QuoteJson(ply.ply), FormatNumber(ply.direction), QuoteJson(ply.material), QuoteJson(ply.boundary));
}

/*! A name for the tool's surface that no boundary has: both stand among the geometries. */
QString MakeSurfaceName(const QList<JobPlyRow>& plies)
{
    QString name = shapeName;
    const auto isTaken = [&](const JobPlyRow& ply) { return ply.boundary == name; };
    while (std::any_of(plies.begin(), plies.end(), isTaken))
        name += u" surface"_s;
    return name;
}

QString FormatShape(const JobLayupFrame& frame)
{
    const QString scale = frame.scale ? u", \"scale\": "_s + FormatNumber(*frame.scale) : QString();
    return u"{\"name\": %1, \"file\": %2%3}"_s.arg(QuoteJson(shapeName), QuoteJson(frame.toolFile), scale);
}

QString FormatSurface(const JobLayupFrame& frame, const QString& name)
{
    QString more;
    if (!frame.face.isEmpty())
        more += u", \"face\": "_s + (frame.isFaceIndex ? frame.face : QuoteJson(frame.face));
    if (frame.isReversed)
        more += u", \"reversed\": true"_s;
    return u"{\"name\": %1, \"shape\": %2%3}"_s.arg(QuoteJson(name), QuoteJson(shapeName), more);
}

QString FormatRosette(const JobLayupFrame& frame)
{
    return u"{\"name\": %1, \"origin\": %2, \"x\": %3, \"y\": %4}"_s.arg(
        QuoteJson(rosetteName), FormatNumbers(frame.rosetteOrigin), FormatNumbers(frame.rosetteX),
        FormatNumbers(frame.rosetteY));
}

QString FormatMaterial(const JobPlyRow& ply)
{
    // Files that are made for each material are named by type.
    return u"{\"name\": %1, \"type\": %1}"_s.arg(QuoteJson(ply.material));
}

/*! The first of \a plies for each value that \a member has in them. */
QList<JobPlyRow> FindFirst(const QList<JobPlyRow>& plies, QString JobPlyRow::*member)
{
    QList<JobPlyRow> first;
    QSet<QString> seen;
    for (const JobPlyRow& ply : plies) {
        if (!seen.contains(ply.*member))
            first.append(ply);
        seen.insert(ply.*member);
    }
    return first;
}

/*! The end of the block of \a plies behind \a begin that have the same layup or sequence. */
qsizetype FindBlockEnd(const QList<JobPlyRow>& plies, qsizetype begin, qsizetype end, QString JobPlyRow::*member)
{
    qsizetype at = begin;
    while (at < end && plies[at].*member == plies[begin].*member)
        ++at;
    return at;
}

QString FormatSequence(const QList<JobPlyRow>& plies, qsizetype begin, qsizetype end)
{
    QStringList lines;
    for (qsizetype at = begin; at < end; ++at)
        lines.append(FormatPly(plies[at]));
    return u"{\"name\": %1, \"children\": %2}"_s.arg(QuoteJson(plies[begin].sequence), FormatArray(lines, u"      "_s));
}

QString FormatLayup(const QList<JobPlyRow>& plies, qsizetype begin, qsizetype end, const QString& surface)
{
    QStringList sequences;
    for (qsizetype at = begin, next = begin; at < end; at = next) {
        next = FindBlockEnd(plies, at, end, &JobPlyRow::sequence);
        sequences.append(FormatSequence(plies, at, next));
    }
    return u"{\"name\": %1, \"workpiece\": %2, \"rosette\": %3, \"children\": %4}"_s.arg(
        QuoteJson(plies[begin].layup), QuoteJson(surface), QuoteJson(rosetteName), FormatArray(sequences, u"    "_s));
}
} // namespace

QString QuoteJson(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

JobLayupText::JobLayupText(const JobLayupFrame& frame, const QList<JobPlyRow>& plies,
                           const QHash<QString, QString>& curveKinds)
{
    const QString indentation = u"  "_s;
    const QString surface = MakeSurfaceName(plies);
    QStringList curves;
    for (const JobPlyRow& ply : FindFirst(plies, &JobPlyRow::boundary)) {
        lines.insert(u"curves[%1]"_s.arg(curves.size()), ply.line);
        curves.append(u"{\"name\": %1, \"shape\": %2, \"%3\": %1, \"on\": %4}"_s.arg(
            QuoteJson(ply.boundary), QuoteJson(shapeName), curveKinds.value(ply.boundary), QuoteJson(surface)));
    }
    QStringList materials;
    for (const JobPlyRow& ply : FindFirst(plies, &JobPlyRow::material))
        materials.append(FormatMaterial(ply));
    QStringList layups;
    for (qsizetype at = 0, next = 0; at < plies.size(); at = next) {
        next = FindBlockEnd(plies, at, plies.size(), &JobPlyRow::layup);
        for (qsizetype ply = at; ply < next; ++ply)
            lines.insert(u"layups[%1].%2.%3"_s.arg(QString::number(layups.size()), plies[ply].sequence, plies[ply].ply),
                         plies[ply].line);
        layups.append(FormatLayup(plies, at, next, surface));
    }
    const QStringList members{
        u"\"format\": \"zetlaser-layup\", \"version\": 1, \"units\": \"mm\", \"name\": "_s + QuoteJson(frame.name),
        u"\"shapes\": "_s + FormatArray({FormatShape(frame)}, indentation),
        u"\"surfaces\": "_s + FormatArray({FormatSurface(frame, surface)}, indentation),
        u"\"curves\": "_s + FormatArray(curves, indentation),
        u"\"rosettes\": "_s + FormatArray({FormatRosette(frame)}, indentation),
        u"\"materials\": "_s + FormatArray(materials, indentation),
        u"\"layups\": "_s + FormatArray(layups, indentation),
    };
    text = u"{\n"_s + indentation + members.join(u",\n"_s + indentation) + u"\n}\n"_s;
}

int JobLayupText::FindLine(const QString& path) const
{
    return lines.value(path, lines.value(path.left(path.lastIndexOf(u'.'))));
}
