#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

/*! Places of two lists that belong together: first and second. */
using CheckPairs = std::vector<std::pair<size_t, size_t>>;

/*! The most pairs of places at which two lists, of \a firstCount and of \a secondCount, are the same without changing
 *  the order of either. Where the lists differ for more than some thousand places, only those pairs are found that
 *  stand as far behind the first difference in both. */
CheckPairs AlignInOrder(size_t firstCount, size_t secondCount, const std::function<bool(size_t, size_t)>& isSame);
