#include "ui/picture/uitilegrid.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int TILE = 16;

int tilesAlong(int pixels) {
    return (pixels + TILE - 1) / TILE;
}

int tileAt(double pixel) {
    return static_cast<int>(pixel) / TILE;
}

} // namespace

QRect TileGrid::pixels(const QRect& tiles) const {
    return QRect(tiles.topLeft() * TILE, tiles.size() * TILE) & QRect(QPoint(), mSize);
}

void TileGrid::collect(const QRectF& area, QList<int>& tiles) const {
    const QRectF touched = area & QRectF(QPointF(), mSize);
    if (touched.isEmpty())
        return;
    const int right = std::min(columns() - 1, tileAt(touched.right()));
    const int bottom = std::min(rows() - 1, tileAt(touched.bottom()));
    for (int row = tileAt(touched.top()); row <= bottom; ++row)
        for (int column = tileAt(touched.left()); column <= right; ++column)
            tiles.append(tile(column, row));
}

/// Cuts the curve up until its hulls are about as small as a tile.
void TileGrid::collect(const stroke& curve, double beside, QList<int>& tiles) const {
    const QRectF hull = curve.hull();
    const QRectF area = hull.adjusted(-beside, -beside, beside, beside);
    if (std::max(hull.width(), hull.height()) <= TILE) {
        collect(area, tiles);
    } else if (area.intersects(QRectF(QPointF(), mSize))) {
        const auto [first, second] = curve.halves();
        collect(first, beside, tiles);
        collect(second, beside, tiles);
    }
}

int TileGrid::columns() const {
    return tilesAlong(mSize.width());
}

int TileGrid::rows() const {
    return tilesAlong(mSize.height());
}

/// Cuts the curve up as `TileGrid::collect` does.
bool may_touch(const stroke& curve, double beside, const QRectF& area) {
    const QRectF hull = curve.hull();
    if (!hull.adjusted(-beside, -beside, beside, beside).intersects(area))
        return false;
    if (std::max(hull.width(), hull.height()) <= TILE)
        return true;
    const auto [first, second] = curve.halves();
    return may_touch(first, beside, area) || may_touch(second, beside, area);
}

int TileSet::firstRow() const {
    return isEmpty() ? mGrid.rows() : static_cast<int>(mFirst) / mGrid.columns();
}

void TileSet::add(int tile) {
    mWaits.setBit(tile);
    mFirst = std::min(mFirst, qsizetype(tile));
}

QRect TileSet::take(int mostRows) {
    const int row = firstRow();
    const int left = static_cast<int>(mFirst) % mGrid.columns();
    int right = left;
    while (right + 1 < mGrid.columns() && waits(row, right + 1, right + 1))
        ++right;
    int bottom = row;
    while (bottom + 1 < std::min(row + mostRows, mGrid.rows()) && waits(bottom + 1, left, right))
        ++bottom;
    const QRect taken(QPoint(left, row), QPoint(right, bottom));
    for (int y = row; y <= bottom; ++y)
        mWaits.fill(false, mGrid.tile(left, y), mGrid.tile(right, y) + 1);
    skip();
    return taken;
}

/// Whether all tiles of a row do, from the column `first` to `last`.
bool TileSet::waits(int row, int first, int last) const {
    for (int column = first; column <= last; ++column) {
        if (!mWaits.testBit(mGrid.tile(column, row)))
            return false;
    }
    return true;
}

void TileSet::skip() {
    while (mFirst < mWaits.size() && !mWaits.testBit(mFirst))
        ++mFirst;
}

} // namespace ui
