#pragma once

#include "CheckFile.h"

#include <QByteArrayView>

/*! Lines of points, which formats of lines share: X Y Z, and a normal I J K behind it where the point has one. */
namespace CheckPointLine
{
/*! The line begins as a number does, or as what is written in the place of one: no other record of these formats does.
 */
bool IsAlike(QByteArrayView line);
/*! Adds the point to the last curve; false, with a finding, if it can't be read. */
bool Read(QByteArrayView line, int lineNumber, CheckFile& file);
/*! The numbers of three fields; nothing, with a finding, if one isn't a number. */
std::optional<std::array<double, 3>> ReadTriple(std::span<const QByteArrayView> fields, int lineNumber,
                                                CheckFile& file);
} // namespace CheckPointLine
