#pragma once

#include "CheckPlies.h"

#include <functional>

/*! In mm. */
struct CheckBoundaryLimits {
    double off = 0.0;     //!< of a point of the file from the model's boundary
    double passing = 0.0; //!< of a point of the model's boundary from what is drawn
};

/*! Holds the boundaries of the plies of \a pairs against those of the model, whatever thinning left of their points.
 *  Adds findings for those that are missing, lie elsewhere, come in another order or have their normals on the other
 * side. From then on \a file knows the kind of each curve of these plies.
 *
 *  \a model has the points that the model's boundaries are defined by, and no others. \a getDense gives the same file
 * with points so near to each other that a line between them is the boundary. It is asked only if a point isn't on a
 *  line between those of \a model, for a job may have put points of its own between. */
void CompareBoundaries(CheckedFile& file, const CheckedModel& model, const CheckPairs& pairs,
                       const CheckBoundaryLimits& limits, const std::function<const CheckFile&()>& getDense);
