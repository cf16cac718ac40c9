#include "ui/picture/uitileindex.h"

#include <algorithm>

namespace ui {

void TileIndex::add(int thing, int tile) {
    chain& things = mTiles[tile];
    mLinks.append({thing, things.last});
    things.last = static_cast<int>(mLinks.size()) - 1;
    ++things.count;
}

QList<int> TileIndex::on(const QRect& tiles) const {
    QList<int> things;
    for (int row = tiles.top(); row <= tiles.bottom(); ++row)
        for (int column = tiles.left(); column <= tiles.right(); ++column)
            for (int i = mTiles[mGrid.tile(column, row)].last; i >= 0; i = mLinks[i].before)
                things.append(mLinks[i].thing);
    std::sort(things.begin(), things.end());
    things.erase(std::unique(things.begin(), things.end()), things.end());
    return things;
}

void TileIndex::collect(QList<int>& tiles) const {
    for (int tile = 0; tile < mTiles.size(); ++tile) {
        if (mTiles[tile].count > 0)
            tiles.append(tile);
    }
}

} // namespace ui
