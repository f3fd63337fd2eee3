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

constexpr std::array<std::uint64_t, 9> powersOfTen = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
constexpr int mostDigits = int(powersOfTen.size()) - 1; //!< in front of the point and behind it
constexpr std::uint64_t wholeLimit = powersOfTen.back();
static_assert(ZETLaserNumberText::room == 1 + mostDigits + 1 + mostDigits);

/*! A number without its sign, rounded to a count of decimals: whole + part / 10^decimals. */
struct Rounded {
    std::uint64_t whole;
    std::uint64_t part;
};

/*! Rounds \a mantissa / 2^shift, exactly; \a scale is 10^decimals, shift is 1 or more. */
Rounded Round(std::uint64_t mantissa, int shift, std::uint64_t scale)
{
    // Of the part behind the point twice as much as wanted, so that its last bit tells whether half a unit or more is
    // left. Usually all bits behind the point fit a word, and the upper word of a product is what is wanted.
    std::uint64_t whole = 0;
    std::uint64_t halves = 0;
    if (shift < 64) {
        whole = mantissa >> shift;
        halves = static_cast<std::uint64_t>((Wide(mantissa << (64 - shift)) * (2 * scale)) >> 64);
    } else if (shift <= 127) {
        halves = static_cast<std::uint64_t>((Wide(mantissa) * scale) >> (shift - 1));
    }
    const std::uint64_t part = (halves + 1) >> 1; // a tie goes up, which is away from zero
    return part < scale ? Rounded{whole, part} : Rounded{whole + 1, 0};
}

/*! How many digits a number below wholeLimit has: without a loop, because how long it would run can't be predicted. */
int CountDigits(std::uint64_t number)
{
    number |= 1;                                             // zero has a digit too, and no other count changes
    const int guess = (std::bit_width(number) * 1233) >> 12; // times the logarithm of 2
    return guess + (number >= powersOfTen[static_cast<std::size_t>(guess)] ? 1 : 0);
}

/*! The eight digits of a number below 10^8 as characters, the first in the lowest byte. All are made at once: the
 *  number is split into halves of four digits, these into pairs, and these into digits, each in a lane of its own, with
 *  a multiplication and a shift that divide exactly in the range of the lane. */
std::uint64_t GetEightDigits(std::uint64_t number)
{
    const std::uint64_t halves = number / 10000 + ((number % 10000) << 32);
    const std::uint64_t hundreds = ((halves * 10486) >> 20) & 0x0000007f0000007f;
    const std::uint64_t pairs = hundreds + ((halves - 100 * hundreds) << 16);
    const std::uint64_t tens = ((pairs * 103) >> 10) & 0x000f000f000f000f;
    return 0x3030303030303030 + tens + ((pairs - 10 * tens) << 8);
}

/*! Writes eight characters. Those that are too many are written over by what comes next. */
void Store(char* at, std::uint64_t characters)
{
    static_assert(std::endian::native == std::endian::little, "the first character must be in the lowest byte");
    std::memcpy(at, &characters, sizeof characters);
}

char* WriteRounded(char* at, bool negative, const Rounded& number, int decimals)
{
    *at = '-';
    at += negative ? 1 : 0;
    const int digits = CountDigits(number.whole);
    Store(at, GetEightDigits(number.whole) >> (8 * (mostDigits - digits)));
    at += digits;
    if (decimals == 0)
        return at;
    *at++ = '.';
    Store(at, GetEightDigits(number.part * powersOfTen[static_cast<std::size_t>(mostDigits - decimals)]));
    return at + decimals;
}
} // namespace

char* ZETLaserNumberText::TryWrite(char* at, double value, int decimals)
{
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const int exponent = static_cast<int>(bits >> mantissaBits) & exponentMask;
    // From 2^52 on a double has no bits behind the point; infinities and not-a-number have a large exponent as well.
    if (decimals < 0 || decimals > mostDigits || exponent >= exponentBias)
        return nullptr;
    const std::uint64_t fraction = bits & ((std::uint64_t(1) << mantissaBits) - 1);
    // Subnormal numbers have no leading bit. They would need an exponent of 1, but all are far below half a unit.
    const std::uint64_t mantissa = exponent > 0 ? fraction | (std::uint64_t(1) << mantissaBits) : fraction;
    const std::uint64_t scale = powersOfTen[static_cast<std::size_t>(decimals)];
    const Rounded number = Round(mantissa, exponentBias - exponent, scale);
    if (number.whole >= wholeLimit)
        return nullptr;
    // Meant: -0.0 has no sign, but a negative that rounds to zero keeps it.
    return WriteRounded(at, value < 0.0, number, decimals);
}

void ZETLaserNumberText::Append(QByteArray& buffer, double value, int decimals)
{
    const qsizetype size = buffer.size();
    buffer.resize(size + room);
    char* const at = buffer.data() + size;
    const char* const end = TryWrite(at, value, decimals);
    buffer.resize(size + (end ? end - at : 0));
    if (!end)
        buffer.append(QString::number(value, 'f', decimals).toLatin1());
}
