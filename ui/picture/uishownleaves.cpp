#include "ui/picture/uishownleaves.h"

namespace ui {

void ShownLeaves::clear() {
    mLeaves.clear();
    mTiles = TileIndex();
}

void ShownLeaves::take(const LeafList& leaves, double radius, const TileGrid& grid,
                       const LeafSelection& selection) {
    mRadius = radius;
    mGrid = grid;
    mSelection = selection;
    mLeaves.clear();
    mTiles = TileIndex(grid);
    QList<int> tiles;
    for (const Leaf* leaf : leaves) {
        mLeaves.append({leaf, leaf->mPos, lookOf(*leaf, selection)});
        tiles.clear();
        collect(mLeaves.last(), tiles);
        for (const int tile : std::as_const(tiles))
            mTiles.add(static_cast<int>(mLeaves.size()) - 1, tile);
    }
}

bool ShownLeaves::are(const LeafList& leaves) const {
    auto known = mLeaves.cbegin();
    for (const Leaf* leaf : leaves) {
        if (known == mLeaves.cend() || known->leaf != leaf || known->place.x() != leaf->mPos.x() ||
            known->place.y() != leaf->mPos.y())
            return false;
        ++known;
    }
    return known == mLeaves.cend();
}

bool ShownLeaves::follow(const LeafSelection& selection, QList<int>& tiles) {
    if (mSelection == selection)
        return false;
    for (shown& leaf : mLeaves) {
        const Look look = lookOf(*leaf.leaf, selection);
        if (look != leaf.look)
            collect(leaf, tiles);
        leaf.look = look;
    }
    mSelection = selection;
    return true;
}

ShownLeaves::Look ShownLeaves::lookOf(const Leaf& leaf, const LeafSelection& selection) {
    if (leaf.mIndex == selection.mPrimary)
        return Look::IN_FOCUS;
    return selection.hasAlternate(leaf.mIndex) ? Look::SELECTED : Look::PLAIN;
}

void ShownLeaves::collect(const shown& leaf, QList<int>& tiles) const {
    mGrid.collect(QRectF(leaf.place, QSizeF()).adjusted(-mRadius, -mRadius, mRadius, mRadius),
                  tiles);
}

} // namespace ui
