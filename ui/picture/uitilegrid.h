#pragma once

#include "ui/picture/uistroke.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QSize>
#include <QTransform>

namespace ui {

/// A picture of a view, cut into tiles of 16 x 16 pixels, those at its right and lower edge as
/// large as is left; numbered row by row from 0.
class TileGrid {
public:
    /// Of nothing.
    TileGrid() = default;

    /// Of a view of `view`; `toPixels`, by which it becomes pixels, scales and moves only.
    TileGrid(const QTransform& toPixels, const QSize& view);

    /// The same tiles, of the same places in a view.
    bool operator==(const TileGrid& other) const = default;

    const QTransform& toPixels() const { return mToPixels; }

    int columns() const;
    int rows() const;

    int count() const { return columns() * rows(); }

    /// The number of the tile in a column and a row.
    int tile(int column, int row) const { return row * columns() + column; }

    /// The tile of that number, in columns and rows.
    QRect rectOf(int tile) const { return {tile % columns(), tile / columns(), 1, 1}; }

    /// The pixels of a rectangle of tiles, which is given in columns and rows.
    QRect pixels(const QRect& tiles) const;

    /// The tiles, in columns and rows, that a rectangle of the view touches.
    QRect tilesIn(const QRectF& area) const { return tilesOf(mToPixels.mapRect(area)); }

    /// A picture with nothing on it. Throws `std::bad_alloc`.
    QImage newPicture() const;

    /// Appends the tiles that what is drawn in `area`, of the view, with a pen as wide as a view
    /// pixel may touch.
    void collect(const QRectF& area, QList<int>& tiles) const;

    /// Appends the tiles that `curve`, in the view, may touch, drawn with such a pen. A tile may
    /// come several times.
    void collect(const stroke& curve, QList<int>& tiles) const;

    /// Whether `curve`, in the view, may touch the pixels, drawn with such a pen.
    bool mayTouch(const stroke& curve, const QRect& pixels) const;

private:
    QRectF withPen(const QRectF& area) const;
    QRect tilesOf(const QRectF& pixels) const;
    void collectPixels(const QRectF& area, QList<int>& tiles) const;

    QTransform mToPixels;
    QSize mSize = {0, 0};
};

} // namespace ui
