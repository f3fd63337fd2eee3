#include "writers/ZETLaserNumberText.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

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

/*! Writes the last \a count digits of \a number in front of \a end, zeros in front of it included. */
void WriteDigits(char* end, std::uint64_t number, int count)
{
    for (; count >= 2; count -= 2) {
        end -= 2;
        std::memcpy(end, &digitPairs[2 * (number % 100)], 2);
        number /= 100;
    }
    if (count > 0)
        *(end - 1) = static_cast<char>('0' + number % 10);
}

int CountDigits(std::uint64_t number)
{
    int digits = 1;
    for (; number >= 10000; number /= 10000)
        digits += 4;
    for (; number >= 10; number /= 10)
        ++digits;
    return digits;
}

void AppendRounded(QByteArray& buffer, bool negative, const Rounded& number, int decimals)
{
    const int digits = CountDigits(number.whole);
    const int length = (negative ? 1 : 0) + digits + (decimals > 0 ? 1 + decimals : 0);
    const qsizetype start = buffer.size();
    buffer.resize(start + length);
    char* at = buffer.data() + start;
    if (negative)
        *at++ = '-';
    at += digits;
    WriteDigits(at, number.whole, digits);
    if (decimals > 0) {
        *at = '.';
        WriteDigits(at + 1 + decimals, number.part, decimals);
    }
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
