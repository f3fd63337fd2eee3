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
} // namespace ZETLaserNumberText
