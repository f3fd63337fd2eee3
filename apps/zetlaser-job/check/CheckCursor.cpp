#include "CheckCursor.h"

#include "CheckFile.h"
#include "CheckLines.h"

#include <algorithm>
#include <limits>

namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

qsizetype CountDigits(QByteArrayView text)
{
    return std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin();
}

struct Word {
    QByteArrayView text;
    double value;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr std::array<Word, 4> nanWords{{{"nan", nan}, {"-nan", nan}, {"inf", infinity}, {"-inf", -infinity}}};
} // namespace

CheckCursor& CheckCursor::Text(QByteArrayView text)
{
    if (StartsWith(text))
        rest = rest.sliced(text.size());
    else if (isGood)
        Fail(CheckLines::Show(text));
    return *this;
}

CheckCursor& CheckCursor::TextUntil(char mark, QByteArrayView& text)
{
    const qsizetype end = rest.indexOf(mark);
    if (!isGood)
        return *this;
    if (end < 0)
        return Fail(Check::tr("a text up to %1").arg(CheckLines::Show({&mark, 1})));
    text = rest.first(end);
    rest = rest.sliced(end + 1);
    return *this;
}

CheckCursor& CheckCursor::Number(double& value)
{
    if (!isGood)
        return *this;
    const qsizetype length = GetNumberLength();
    const auto number = CheckNumbers::Parse(rest.first(length));
    if (!number)
        return Fail(Check::tr("a number with %1 decimals").arg(decimals));
    value = *number;
    rest = rest.sliced(length);
    return *this;
}

/*! Of the number at the begin; 0 if there is none with the right count of decimals. */
qsizetype CheckCursor::GetNumberLength() const
{
    const qsizetype sign = rest.startsWith('-') ? 1 : 0;
    const qsizetype point = sign + CountDigits(rest.sliced(sign));
    if (point == sign || point == rest.size() || rest[point] != '.')
        return 0;
    const qsizetype end = point + 1 + CountDigits(rest.sliced(point + 1));
    return end - point - 1 == decimals ? end : 0;
}

CheckCursor& CheckCursor::NumberOrNan(double& value)
{
    for (const Word& word : nanWords) {
        if (StartsWith(word.text)) {
            value = word.value;
            return Text(word.text);
        }
    }
    return Number(value);
}

CheckCursor& CheckCursor::Numbers(std::array<double, 3>& values, QByteArrayView separator)
{
    return Number(values[0]).Text(separator).Number(values[1]).Text(separator).Number(values[2]);
}

CheckCursor& CheckCursor::Integer(int& value, int width)
{
    if (!isGood)
        return *this;
    const QByteArrayView digits = rest.first(CountDigits(rest));
    const auto number = CheckNumbers::ParseInteger(digits);
    const bool isPadded = digits.size() > width && digits.startsWith('0');
    if (!number || digits.size() < width || isPadded)
        return Fail(width > 1 ? Check::tr("a whole number of at least %1 digits").arg(width)
                              : Check::tr("a whole number"));
    value = *number;
    rest = rest.sliced(digits.size());
    return *this;
}

CheckCursor& CheckCursor::End()
{
    return !isGood || rest.isEmpty() ? *this : Fail(Check::tr("the end of the line"));
}

CheckCursor& CheckCursor::Fail(const QString& what)
{
    if (isGood)
        expected = what;
    isGood = false;
    return *this;
}

bool CheckCursor::Report(int line, CheckFile& file) const
{
    if (!isGood)
        file.AddWrongValue(line, expected, rest);
    return isGood;
}
