#include "writers/ZETLaserNumberText.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

namespace
{
__extension__ typedef unsigned __int128 Wide;

constexpr int mantissaBits = 52;
constexpr int exponentBias = 1023 + mantissaBits;
constexpr int exponentMask = 0x7ff;

constexpr std::array<std::uint64_t, 10> powersOfTen = {1,      10,      100,      1000,      10000,
                                                       100000, 1000000, 10000000, 100000000, 1000000000};
constexpr int mostDecimals = int(powersOfTen.size()) - 1;

/*! A number without its sign, rounded to a count of decimals: whole + part / 10^decimals. */
struct Rounded {
    std::uint64_t whole;
    std::uint64_t part;
};

/*! Rounds \a mantissa / 2^shift, exactly; shift is 1 or more. */
Rounded Round(std::uint64_t mantissa, int shift, std::uint64_t scale)
{
    const std::uint64_t whole = shift < 64 ? mantissa >> shift : 0;
    const std::uint64_t rest = shift < 64 ? mantissa - (whole << shift) : mantissa;
    // Of the quotient twice as much as wanted, so that its last bit tells whether half a unit or more is left.
    const Wide scaled = Wide(rest) * scale;
    const std::uint64_t halves = shift <= 127 ? static_cast<std::uint64_t>(scaled >> (shift - 1)) : 0;
    const std::uint64_t part = (halves + 1) >> 1; // a tie goes up, which is away from zero
    return part < scale ? Rounded{whole, part} : Rounded{whole + 1, 0};
}

constexpr std::array<char, 200> MakePairs()
{
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> digitPairs = MakePairs();

void WritePair(char* at, std::uint64_t number)
{
    std::memcpy(at, &digitPairs[2 * number], 2);
}

/*! Writes the last \a count digits of \a number in front of \a end, zeros in front of it included. */
void WriteDigits(char* end, std::uint64_t number, int count)
{
    for (; count >= 2; count -= 2) {
        end -= 2;
        WritePair(end, number % 100);
        number /= 100;
    }
    if (count > 0)
        *(end - 1) = static_cast<char>('0' + number % 10);
}

constexpr int usualDigits = 8;
constexpr std::uint64_t usualLimit = 100000000;

/*! The digits of a number below usualLimit: without a loop, because how long it would run can't be predicted. */
int CountUsualDigits(std::uint64_t number)
{
    number |= 1;                                             // zero has a digit too, and no other count changes
    const int guess = (std::bit_width(number) * 1233) >> 12; // times the logarithm of 2
    return guess + (number >= powersOfTen[static_cast<std::size_t>(guess)] ? 1 : 0);
}

int CountDigits(std::uint64_t number)
{
    int digits = usualDigits;
    for (number /= usualLimit; number > 0; number /= 10)
        ++digits;
    return digits;
}

/*! Appends sign and number; \a mostDigits is room for the whole digits, of which \a digits are needed. */
template <int mostDigits>
void AppendText(QByteArray& buffer, bool negative, const Rounded& number, int digits, int decimals)
{
    std::array<char, 1 + mostDigits + 1 + mostDecimals> text;
    char* point = text.data() + 1 + mostDigits;
    if constexpr (mostDigits == usualDigits) {
        const std::uint64_t high = number.whole / 10000;
        const std::uint64_t low = number.whole % 10000;
        WritePair(point - 8, high / 100);
        WritePair(point - 6, high % 100);
        WritePair(point - 4, low / 100);
        WritePair(point - 2, low % 100);
    } else {
        WriteDigits(point, number.whole, digits);
    }
    *point = '.';
    WriteDigits(point + 1 + decimals, number.part, decimals);
    *(point - digits - 1) = '-';
    const char* start = point - digits - (negative ? 1 : 0);
    const char* end = decimals > 0 ? point + 1 + decimals : point;

    const qsizetype size = buffer.size();
    buffer.resize(size + (end - start));
    std::memcpy(buffer.data() + size, start, static_cast<std::size_t>(end - start));
}

void AppendRounded(QByteArray& buffer, bool negative, const Rounded& number, int decimals)
{
    if (number.whole < usualLimit)
        AppendText<usualDigits>(buffer, negative, number, CountUsualDigits(number.whole), decimals);
    else
        AppendText<std::numeric_limits<std::uint64_t>::digits10 + 1>(buffer, negative, number,
                                                                     CountDigits(number.whole), decimals);
}
} // namespace

void ZETLaserNumberText::Append(QByteArray& buffer, double value, int decimals)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int exponent = static_cast<int>(bits >> mantissaBits) & exponentMask;
    // From 2^52 on a double has no bits behind the point; infinities and not-a-number have a large exponent as well.
    if (decimals < 0 || decimals > mostDecimals || exponent >= exponentBias) {
        buffer.append(QString::number(value, 'f', decimals).toLatin1());
        return;
    }
    const std::uint64_t fraction = bits & ((std::uint64_t(1) << mantissaBits) - 1);
    // Subnormal numbers have no leading bit. They would need an exponent of 1, but all are far below any half unit.
    const std::uint64_t mantissa = exponent > 0 ? fraction | (std::uint64_t(1) << mantissaBits) : fraction;
    const bool negative = value < 0.0; // Meant: -0.0 has no sign, but a negative that rounds to zero keeps it
    const std::uint64_t scale = powersOfTen[static_cast<std::size_t>(decimals)];
    AppendRounded(buffer, negative, Round(mantissa, exponentBias - exponent, scale), decimals);
}
