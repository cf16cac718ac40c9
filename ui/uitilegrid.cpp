#include "ui/uitilegrid.h"

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

QRect TileGrid::rect(int tile) const {
    const QPoint corner(tile % columns() * TILE, tile / columns() * TILE);
    return QRect(corner, QSize(TILE, TILE)) & QRect(QPoint(), mSize);
}

void TileGrid::collect(const QRectF& area, QList<int>& tiles) const {
    const QRectF touched = area & QRectF(QPointF(), mSize);
    if (touched.isEmpty())
        return;
    const int right = std::min(columns() - 1, tileAt(touched.right()));
    const int bottom = std::min(rows() - 1, tileAt(touched.bottom()));
    for (int row = tileAt(touched.top()); row <= bottom; ++row)
        for (int column = tileAt(touched.left()); column <= right; ++column)
            tiles.append(row * columns() + column);
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

} // namespace ui
