#pragma once

#include "CheckFile.h"
#include "CheckMeasures.h"

#include <span>
#include <vector>

/*! Looks at what a file holds with the eyes of whoever has to lay it: what is drawn twice, not at all, too small or on
 *  the wrong side, and names that the operator can't tell apart. What a correct model gives rise to is no finding: a
 *  rosette is open, extra geometry has no normals, and a sequence may have plies of the same names as another.
 *
 *  \a plies are those of the file; \a unitLength is its unit in millimetres. The findings are in the order of the
 *  file, and those of its reader aren't among them. */
std::vector<CheckFinding> FindFaults(const CheckFile& file, std::span<const CheckPly> plies, double unitLength);
