#include "CheckAlignment.h"

#include <algorithm>
#include <cstdint>

namespace
{
constexpr size_t mostCells = 40'000'000; // 80 MB

/*! Lengths of the longest common lists of all ends of both: row 0 and column 0 stand for the whole lists. */
class Lengths
{
public:
    Lengths(size_t rowCount, size_t columnCount)
        : columns(columnCount + 1)
        , cells((rowCount + 1) * columns)
    {
    }

    std::uint16_t& At(size_t row, size_t column) { return cells[row * columns + column]; }

private:
    size_t columns;
    std::vector<std::uint16_t> cells;
};

void AlignMiddle(size_t begin, size_t firstEnd, size_t secondEnd, const std::function<bool(size_t, size_t)>& isSame,
                 CheckPairs& pairs)
{
    const size_t rows = firstEnd - begin;
    const size_t columns = secondEnd - begin;
    Lengths lengths(rows, columns);
    for (size_t row = rows; row-- > 0;) {
        for (size_t column = columns; column-- > 0;)
            lengths.At(row, column) = isSame(begin + row, begin + column)
                                          ? static_cast<std::uint16_t>(lengths.At(row + 1, column + 1) + 1)
                                          : std::max(lengths.At(row + 1, column), lengths.At(row, column + 1));
    }
    size_t row = 0;
    size_t column = 0;
    while (row < rows && column < columns && lengths.At(row, column) > 0) {
        if (lengths.At(row, column) == lengths.At(row + 1, column)) {
            ++row;
        } else if (lengths.At(row, column) == lengths.At(row, column + 1)) {
            ++column;
        } else {
            pairs.emplace_back(begin + row, begin + column);
            ++row;
            ++column;
        }
    }
}
} // namespace

CheckPairs AlignInOrder(size_t firstCount, size_t secondCount, const std::function<bool(size_t, size_t)>& isSame)
{
    CheckPairs pairs;
    size_t begin = 0;
    for (; begin < std::min(firstCount, secondCount) && isSame(begin, begin); ++begin)
        pairs.emplace_back(begin, begin);
    size_t tail = 0;
    while (tail < std::min(firstCount, secondCount) - begin && isSame(firstCount - tail - 1, secondCount - tail - 1))
        ++tail;
    const size_t firstEnd = firstCount - tail;
    const size_t secondEnd = secondCount - tail;
    const size_t widest = std::max(firstEnd, secondEnd) - begin;
    if (widest <= UINT16_MAX && (firstEnd - begin + 1) * (secondEnd - begin + 1) <= mostCells) {
        AlignMiddle(begin, firstEnd, secondEnd, isSame, pairs);
    } else {
        for (size_t i = begin; i < std::min(firstEnd, secondEnd); ++i) {
            if (isSame(i, i))
                pairs.emplace_back(i, i);
        }
    }
    for (; tail > 0; --tail)
        pairs.emplace_back(firstCount - tail, secondCount - tail);
    return pairs;
}
