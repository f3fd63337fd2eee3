#pragma once

class QByteArray;

/*! How a number becomes text in a file: the only place that does it. */
namespace ZETLaserNumberText
{
/*! Appends to \a buffer the text of \a value in fixed notation with \a decimals decimals: to the letter what
 *  `QString::number(value, 'f', decimals)` gives, whatever the value is and whatever the locale. That is: rounded to
 *  nearest with exact ties away from zero, a minus sign for negatives that round to zero but none for -0.0, "nan",
 *  "inf" and "-inf". Only faster: that call costs more than all the rest of writing a point. */
void Append(QByteArray& buffer, double value, int decimals);

/*! Memory that TryWrite may use: a sign, a point, and eight digits on both sides of it. */
constexpr int room = 18;
/*! The same into memory of the caller, which may use all of its room, and returns the end of the text. Null, with
 *  nothing said of the memory, for numbers whose text may need more, and for not-a-number; Append takes those. */
char* TryWrite(char* at, double value, int decimals);
} // namespace ZETLaserNumberText
