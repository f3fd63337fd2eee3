#pragma once

#include "CheckAlignment.h"
#include "CheckReport.h"

/*! What a file ought to hold by the model, so far as plies and their boundaries go: the same as \a expected of a job,
 *  in the file's unit and axis system, with the kinds of its curves. */
struct CheckedModel {
    const CheckFile* file = nullptr;
    std::vector<CheckPly> plies;

    bool HasBoundary(const CheckPly& ply) const;
};

/*! Finds the plies of \a file in \a model, by their names and the layers around them, of which either may have fewer.
 *  Adds findings for plies that are missing, that the model doesn't have, and that stand elsewhere in the order or in
 * another layer. Groups that tell that they are nothing but guides, and plies of the model without a boundary, may be
 *  there or not.
 *
 *  Pairs are of a ply of the model and one of the file. What stands in no ply is the pair of what stands in no ply. */
CheckPairs PairPlies(CheckedFile& file, const CheckedModel& model);
