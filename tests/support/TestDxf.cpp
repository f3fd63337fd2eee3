#include "tests/support/TestDxf.h"

#include <QFileInfo>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Group pairs, written as "code value" in one line each, as the lines of the file. */
QByteArray Pairs(const QByteArrayList& pairs)
{
    QByteArray lines;
    for (const QByteArray& pair : pairs) {
        const auto blank = pair.indexOf(' ');
        lines += "  " + pair.left(blank) + '\n' + pair.mid(blank + 1) + '\n';
    }
    return lines;
}

QByteArray Head(int units)
{
    return Pairs({"0 SECTION",     "2 HEADER",      "9 $INSUNITS",   "70 " + QByteArray::number(units),
                  "9 $EXTMAX",     "10 200.000000", "20 100.000000", "9 $EXTMIN",
                  "10 0.000000",   "20 0.000000",   "9 $LIMMAX",     "10 200.000000",
                  "20 100.000000", "9 $LIMMIN",     "10 0.000000",   "20 0.000000",
                  "0 ENDSEC",      "0 SECTION",     "2 TABLES",      "0 TABLE",
                  "2 LTYPE",       "70 1",          "0 LTYPE",       "2 CONTINUOUS",
                  "70 64",         "3 Solid line",  "72 65",         "73 0",
                  "40 0.000000",   "0 ENDTAB",      "0 TABLE",       "2 LAYER",
                  "70 1",          "0 LAYER",       "2 0",           "70 0",
                  "62 1",          "6 CONTINUOUS",  "0 ENDTAB",      "0 ENDSEC",
                  "0 SECTION",     "2 ENTITIES"});
}

const QByteArray tail = Pairs({"0 ENDSEC", "0 EOF"});

/*! Takes group pairs one by one, each of the code that has to come. */
class Taker
{
public:
    explicit Taker(const QByteArray& body)
        : lines(body.split('\n'))
    {
        lines.removeLast(); // behind the last line end
        if (lines.size() % 2 != 0)
            qFatal("DXF: half a group pair");
    }

    bool AtEnd() const { return next >= lines.size(); }
    QString Take(int code)
    {
        if (AtEnd() || lines[next] != "  " + QByteArray::number(code))
            qFatal("DXF: group code %d expected at line %d of the entities", code, int(next) + 1);
        next += 2;
        return QString::fromUtf8(lines[next - 1]);
    }
    void Take(int code, QLatin1StringView value)
    {
        const QString found = Take(code);
        if (found != value)
            qFatal("DXF: %s expected, found %s", value.data(), qPrintable(found));
    }
    QString TakeNumber(int code)
    {
        QString number = Take(code);
        if (number.size() - number.indexOf(u'.') != 7)
            qFatal("DXF: six decimals expected, found %s", qPrintable(number));
        while (number.endsWith(u'0'))
            number.chop(1);
        if (number.endsWith(u'.'))
            number.chop(1);
        return number;
    }
    QString TakePlace()
    {
        const QString x = TakeNumber(10);
        const QString y = TakeNumber(20);
        return x + u',' + y + u',' + TakeNumber(30);
    }

private:
    QByteArrayList lines;
    qsizetype next = 0;
};

QString TakeText(Taker& pairs)
{
    const QString layer = pairs.Take(8);
    const QString color = pairs.Take(62);
    const QString place = pairs.TakePlace();
    const QString height = pairs.TakeNumber(40);
    return u"text "_s + layer + u'/' + color + u" at "_s + place + u" high "_s + height + u": "_s + pairs.Take(1);
}

QString TakePolyline(Taker& pairs)
{
    const QString layer = pairs.Take(8);
    const QString style = pairs.Take(6);
    const QString color = pairs.Take(62);
    pairs.Take(39, "0"_L1);
    if (pairs.TakePlace() != "0,0,0"_L1)
        qFatal("DXF: a polyline has an elevation");
    pairs.Take(66, "1"_L1);
    QString line = u"polyline "_s + layer + u'/' + color + u'/' + style + u" flags "_s + pairs.Take(70) + u':';
    for (QString type = pairs.Take(0); type != "SEQEND"_L1; type = pairs.Take(0)) {
        if (type != "VERTEX"_L1 || pairs.Take(8) != layer || pairs.Take(62) != color)
            qFatal("DXF: not a vertex of its polyline");
        line += u' ' + pairs.TakePlace();
    }
    return line;
}
} // namespace

TestDxf::TestDxf(const QByteArray& bytes)
{
    units = bytes.startsWith(Head(1)) ? 1 : 4;
    const QByteArray head = Head(units);
    if (!bytes.startsWith(head) || !bytes.endsWith(tail))
        qFatal("DXF: not the head or the end of a file");
    Taker pairs(bytes.mid(head.size(), bytes.size() - head.size() - tail.size()));
    while (!pairs.AtEnd()) {
        const QString type = pairs.Take(0);
        if (type == "TEXT"_L1)
            entities += TakeText(pairs);
        else if (type == "POLYLINE"_L1)
            entities += TakePolyline(pairs);
        else
            qFatal("DXF: an entity %s", qPrintable(type));
    }
}

QString TestDxf::ReadWithEzdxf(const QString& folder, QString* skipped)
{
    // The packages of the system belong to its own interpreter, and another one may come first in the path.
    const QString systemPython = u"/usr/bin/python3"_s;
    QProcess reader;
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(QFileInfo::exists(systemPython) ? systemPython : u"python3"_s,
                 {u"-B"_s, QStringLiteral(ZET_SOURCE_DIR) + u"/tests/writers/read_dxf.py"_s, folder});
    constexpr int timeLimit = 100000;
    if (!reader.waitForStarted()) {
        *skipped = u"there is no python3 here"_s;
        return {};
    }
    if (!reader.waitForFinished(timeLimit) || reader.exitStatus() != QProcess::NormalExit)
        return u"read_dxf.py didn't end"_s;
    const QString output = QString::fromUtf8(reader.readAll());
    constexpr int codeSkipped = 77;
    if (reader.exitCode() == codeSkipped)
        *skipped = output.trimmed();
    if (reader.exitCode() == 0 || reader.exitCode() == codeSkipped)
        return {};
    return output.isEmpty() ? u"read_dxf.py failed"_s : output;
}
