#pragma once

#include "ui/picture/uitilegrid.h"

#include <QList>

namespace ui {

/// Which things lie on which tiles of a picture. Things are numbers, tiles as the grid counts them.
class TileIndex {
public:
    TileIndex() = default;

    explicit TileIndex(const TileGrid& grid)
        : mGrid(grid)
        , mTiles(grid.count()) {}

    /// Lets a thing lie on a tile, where it does not lie yet.
    void add(int thing, int tile);

    /// How many things lie on a tile.
    int countOn(int tile) const { return mTiles[tile].count; }

    /// The things that lie on any of a rectangle of tiles, in columns and rows: each once, rising.
    QList<int> on(const QRect& tiles) const;

    /// Appends the tiles on which anything lies.
    void collect(QList<int>& tiles) const;

private:
    struct chain {
        int last = -1; // the thing added last, by its position in mLinks
        int count = 0;
    };

    struct link {
        int thing;
        int before; // as in `chain`; -1 for none
    };

    TileGrid mGrid;
    QList<chain> mTiles;
    QList<link> mLinks;
};

} // namespace ui
