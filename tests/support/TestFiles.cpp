#include "tests/support/TestFiles.h"

#include <QFile>
#include <QList>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Shown(const QList<QByteArray>& lines, qsizetype index)
{
    if (index >= lines.size())
        return u"(behind the end)"_s;
    QByteArray line = lines[index];
    line.replace('\r', "\\r").replace('\t', "\\t");
    return u'|' + QString::fromUtf8(line) + u'|';
}
/*! \a text with the digits of its clock field masked, where that has the form of one. */
QByteArray WithoutClock(const QByteArray& text)
{
    static const QRegularExpression clock(uR"(FILEDATE="\d{1,2}/\d{1,2}/\d{4} \d\d:\d\d:\d\d")"_s);
    if (!text.contains("FILEDATE"))
        return text;
    // As Latin-1, so that all bytes come through as they are.
    return QString::fromLatin1(text).replace(clock, u"FILEDATE=\"*\""_s).toLatin1();
}
} // namespace

QByteArray ReadBytes(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("%s: %s", qUtf8Printable(fileName), qUtf8Printable(file.errorString()));
        return QByteArray();
    }
    const QByteArray bytes = file.readAll();
    return bytes.isNull() ? QByteArray("") : bytes;
}

bool IsSameText(const QByteArray& actualText, const QByteArray& expectedText, QString* difference)
{
    const QByteArray actual = WithoutClock(actualText);
    const QByteArray expected = WithoutClock(expectedText);
    if (actual == expected && actual.isNull() == expected.isNull())
        return true;

    constexpr qsizetype context = 3;
    const QList<QByteArray> actualLines = actual.split('\n');
    const QList<QByteArray> expectedLines = expected.split('\n');
    qsizetype first = 0;
    while (first < actualLines.size() && first < expectedLines.size() && actualLines[first] == expectedLines[first])
        ++first;
    *difference = u"%1 bytes instead of %2, the first difference is in line %3\n"_s.arg(actual.size())
                      .arg(expected.size())
                      .arg(first + 1);
    if (actual.isNull())
        *difference += u"there is no such text at all\n"_s;
    for (qsizetype line = qMax(qsizetype(0), first - context); line < first; ++line)
        *difference += u"           "_s + Shown(actualLines, line) + u'\n';
    for (qsizetype line = first; line <= first + context && line < qMax(actualLines.size(), expectedLines.size());
         ++line) {
        *difference += u"  expected "_s + Shown(expectedLines, line) + u'\n';
        *difference += u"  actual   "_s + Shown(actualLines, line) + u'\n';
    }
    return false;
}
