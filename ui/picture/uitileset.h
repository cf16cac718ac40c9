#pragma once

#include "ui/picture/uitilegrid.h"

#include <QByteArray>
#include <QRect>

namespace ui {

/// Tiles that wait to be drawn in one of two ways, to be taken in rectangles that are drawn in the
/// same way. A tile waits in one way or not at all.
class TileSet {
public:
    enum Way : char { NONE, PLAIN, COSTLY };

    TileSet() = default;

    explicit TileSet(const TileGrid& grid)
        : mGrid(grid)
        , mWays(grid.count(), NONE)
        , mFirst(mWays.size()) {}

    bool isEmpty() const { return mFirst >= mWays.size(); }

    /// The row of the first tile; that below the grid when the set is empty.
    int firstRow() const;

    /// Lets the tile wait in that way, in whichever it did before.
    void add(int tile, Way way);

    /// Takes a rectangle, in columns and rows, of tiles that all wait in the same way: the first
    /// one, those to its right and the rows below with the same columns, up to `mostRows`. The set
    /// is not empty.
    QRect take(int mostRows);

private:
    bool wait(int row, int first, int last, char way) const;

    TileGrid mGrid;
    QByteArray mWays;     // by tile
    qsizetype mFirst = 0; // that waits; as many as there are when none does
};

} // namespace ui
