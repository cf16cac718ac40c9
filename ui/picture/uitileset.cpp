#include "ui/picture/uitileset.h"

#include <algorithm>

namespace ui {

int TileSet::firstRow() const {
    return isEmpty() ? mGrid.rows() : static_cast<int>(mFirst) / mGrid.columns();
}

void TileSet::add(int tile, Way way) {
    mWays[tile] = way;
    mFirst = std::min(mFirst, qsizetype(tile));
}

QRect TileSet::take(int mostRows) {
    const char way = mWays[mFirst];
    const int row = firstRow();
    const int left = static_cast<int>(mFirst) % mGrid.columns();
    int right = left;
    while (right + 1 < mGrid.columns() && wait(row, right + 1, right + 1, way))
        ++right;
    int bottom = row;
    while (bottom + 1 < std::min(row + mostRows, mGrid.rows()) &&
           wait(bottom + 1, left, right, way))
        ++bottom;
    for (int y = row; y <= bottom; ++y)
        std::fill_n(mWays.begin() + mGrid.tile(left, y), right - left + 1, NONE);
    mFirst = std::find_if(mWays.cbegin() + mFirst, mWays.cend(),
                          [](char other) { return other != NONE; }) -
             mWays.cbegin();
    return {QPoint(left, row), QPoint(right, bottom)};
}

/// Whether all tiles of a row do, from the column `first` to `last`.
bool TileSet::wait(int row, int first, int last, char way) const {
    const auto begin = mWays.cbegin() + mGrid.tile(first, row);
    return std::all_of(begin, begin + (last - first + 1),
                       [way](char other) { return other == way; });
}

} // namespace ui
