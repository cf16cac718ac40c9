#pragma once

#include "ui/uistroke.h"

#include <QList>
#include <QRect>
#include <QSize>

namespace ui {

/// A picture cut into tiles of 16 x 16 pixels, those at its right and lower edge as large as is
/// left; numbered row by row from 0.
class TileGrid {
public:
    TileGrid() = default;

    explicit TileGrid(const QSize& size)
        : mSize(size) {}

    int count() const { return columns() * rows(); }

    /// The pixels of a tile.
    QRect rect(int tile) const;

    /// Appends the tiles that `area`, in pixels, may touch.
    void collect(const QRectF& area, QList<int>& tiles) const;

    /// Appends the tiles that `curve`, in pixels, may touch, when drawn with a pen that reaches
    /// `beside` to each side. A tile may come several times.
    void collect(const stroke& curve, double beside, QList<int>& tiles) const;

private:
    int columns() const;
    int rows() const;

    QSize mSize;
};

} // namespace ui
