#pragma once

#include "CheckFile.h"

#include <optional>

/*! The first thing in which \a found isn't what \a expected says, or nothing: groups, curves, texts, parameters and
 *  targets one by one in their order, and each number to half a unit of the last of \a decimals, as far as a number can
 *  be told from its text. Kinds of groups and curves don't count, and lines only for the order among groups, curves,
 *  texts and parameters.
 *
 *  What the expectation leaves open isn't compared: a unit, an empty name of the part, values of the file or of a ply
 *  where there are none, the number of a ply or target below 0, numbers of a text and attributes where there are none.
 */
std::optional<CheckFinding> FindDifference(const CheckFile& expected, const CheckFile& found, int decimals);
