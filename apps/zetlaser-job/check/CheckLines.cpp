#include "CheckLines.h"

#include <algorithm>
#include <charconv>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

bool CheckKnownTexts::HoldCr() const
{
    const auto holdsCr = [](const QByteArray& text) { return text.contains('\r'); };
    return std::any_of(withLineEnds.begin(), withLineEnds.end(), holdsCr) ||
           std::any_of(literals.begin(), literals.end(), holdsCr);
}

CheckLines::CheckLines(QByteArrayView fileBytes, const CheckKnownTexts& knownTexts)
    : bytes(fileBytes)
    , known(knownTexts)
    , mayEndWithCr(!knownTexts.HoldCr())
{
}

qsizetype CheckLines::GetLineEnd() const
{
    const qsizetype end = bytes.indexOf('\n', position);
    return end < 0 ? bytes.size() : end;
}

QByteArrayView CheckLines::Peek() const
{
    if (AtEnd())
        return {};
    QByteArrayView line = bytes.sliced(position, GetLineEnd() - position);
    if (mayEndWithCr && line.endsWith('\r'))
        line.chop(1);
    return line;
}

QByteArrayView CheckLines::Take()
{
    const QByteArrayView line = Peek();
    if (!AtEnd()) {
        position = std::min(GetLineEnd() + 1, bytes.size());
        ++lineNumber;
    }
    return line;
}

bool CheckLines::TakeIf(QByteArrayView line)
{
    if (AtEnd() || Peek() != line)
        return false;
    Take();
    return true;
}

std::optional<QString> CheckLines::TakeText(QByteArrayView keyword)
{
    return TakeText(keyword, {});
}

std::optional<QString> CheckLines::TakeText(QByteArrayView keyword, QByteArrayView ending)
{
    const QByteArrayView line = Peek();
    if (AtEnd() || !line.startsWith(keyword))
        return {};
    const QByteArrayView text = FindKnown(known.withLineEnds, position + keyword.size(), ending);
    if (!text.isEmpty()) {
        StepOver(keyword.size() + text.size() + ending.size());
        return QString::fromUtf8(text);
    }
    if (line.size() < keyword.size() + ending.size() || !line.endsWith(ending))
        return {};
    Take();
    return QString::fromUtf8(line.sliced(keyword.size()).chopped(ending.size()));
}

std::optional<QString> CheckLines::TakeLiteral()
{
    if (AtEnd())
        return {};
    for (const QByteArray& literal : known.literals) {
        if (literal.isEmpty() && Peek().isEmpty()) {
            Take();
            return QString();
        }
    }
    const QByteArrayView text = FindKnown(known.literals, position, {});
    if (text.isEmpty())
        return {};
    StepOver(text.size());
    return QString::fromUtf8(text);
}

/*! The longest of \a texts that stands at \a at, with \a ending and the end of a line behind it; empty if none does. */
QByteArrayView CheckLines::FindKnown(const QList<QByteArray>& texts, qsizetype at, QByteArrayView ending) const
{
    QByteArrayView found;
    const QByteArrayView rest = bytes.sliced(at);
    for (const QByteArrayView text : texts) {
        if (text.size() <= found.size() || !rest.startsWith(text))
            continue;
        QByteArrayView behind = rest.sliced(text.size());
        if (!behind.startsWith(ending))
            continue;
        behind = behind.sliced(ending.size());
        if (behind.isEmpty() || behind.startsWith('\n') || (mayEndWithCr && behind.startsWith("\r\n")))
            found = text;
    }
    return found;
}

/*! Steps over \a count bytes and the line end behind them. */
void CheckLines::StepOver(qsizetype count)
{
    const QByteArrayView taken = bytes.sliced(position, count);
    lineNumber += static_cast<int>(taken.count('\n'));
    position += count;
    Take();
}

QString CheckLines::Escape(QStringView text)
{
    QString shown;
    for (const QChar c : text) {
        if (c.isPrint() || c.isSurrogate())
            shown += c;
        else
            shown += u"\\x"_s + QString::number(c.unicode(), 16).rightJustified(2, u'0');
    }
    return shown;
}

QString CheckLines::Show(QByteArrayView text)
{
    constexpr qsizetype longest = 40;
    const QString decoded = QString::fromUtf8(text.first(std::min(text.size(), longest * 4)));
    const QString shown = Escape(QStringView(decoded).first(std::min(decoded.size(), longest)));
    return u'"' + shown + (decoded.size() > longest ? u"..."_s : QString()) + u'"';
}

std::optional<double> CheckNumbers::Parse(QByteArrayView text)
{
    // Words such as "nan" are numbers to from_chars.
    const QByteArrayView digits = text.startsWith('-') ? text.sliced(1) : text;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.isEmpty() || !isDigit(digits.front()) || !isDigit(digits.back()))
        return {};
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.end() || !std::isfinite(value))
        return {};
    return value;
}

std::optional<int> CheckNumbers::ParseInteger(QByteArrayView text)
{
    constexpr qsizetype longest = 9;
    if (text.isEmpty() || text.size() > longest)
        return {};
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return {};
        value = value * 10 + (c - '0');
    }
    return value;
}

int CheckNumbers::Split(QByteArrayView text, std::span<QByteArrayView> fields)
{
    int count = 0;
    for (qsizetype at = 0; at < text.size();) {
        if (text[at] == ' ') {
            ++at;
            continue;
        }
        const qsizetype blank = text.indexOf(' ', at);
        const qsizetype end = blank < 0 ? text.size() : blank;
        if (static_cast<size_t>(count) < fields.size())
            fields[static_cast<size_t>(count)] = text.sliced(at, end - at);
        ++count;
        at = end;
    }
    return count;
}
