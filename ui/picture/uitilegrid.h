#pragma once

#include "ui/picture/uistroke.h"

#include <QBitArray>
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

    int columns() const;
    int rows() const;

    int count() const { return columns() * rows(); }

    /// The number of the tile in a column and a row.
    int tile(int column, int row) const { return row * columns() + column; }

    /// The pixels of a rectangle of tiles, which is given in columns and rows.
    QRect pixels(const QRect& tiles) const;

    /// Appends the tiles that `area`, in pixels, may touch.
    void collect(const QRectF& area, QList<int>& tiles) const;

    /// Appends the tiles that `curve`, in pixels, may touch, when drawn with a pen that reaches
    /// `beside` to each side. A tile may come several times.
    void collect(const stroke& curve, double beside, QList<int>& tiles) const;

private:
    QSize mSize;
};

/// Whether `curve`, drawn with a pen that reaches `beside` to each side, may touch `area`.
bool may_touch(const stroke& curve, double beside, const QRectF& area);

/// Tiles that wait for something, to be taken in rectangles.
class TileSet {
public:
    TileSet() = default;

    explicit TileSet(const TileGrid& grid)
        : mGrid(grid)
        , mWaits(grid.count())
        , mFirst(mWaits.size()) {}

    bool isEmpty() const { return mFirst >= mWaits.size(); }

    /// The row of the first tile; that below the grid when the set is empty.
    int firstRow() const;

    void add(int tile);

    /// Takes a rectangle, in columns and rows, of tiles that all wait: the first one, those to its
    /// right and the rows below with the same columns, up to `mostRows`. The set is not empty.
    QRect take(int mostRows);

private:
    bool waits(int row, int first, int last) const;
    void skip();

    TileGrid mGrid;
    QBitArray mWaits;
    qsizetype mFirst = 0; // that waits; as many as there are when none does
};

} // namespace ui
