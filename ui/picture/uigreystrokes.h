#pragma once

#include "ui/picture/uitilegrid.h"

#include <QImage>

namespace ui {

class LeafPainter;
class Slice;

/// A picture of every stroke in grey, drawn bit by bit: the strokes are collected and placed first.
/// There is none where there are no strokes. Main thread only.
class GreyStrokes {
public:
    /// `painter` outlives the picture.
    explicit GreyStrokes(LeafPainter& painter)
        : mPainter(painter) {}

    /// To be called when strokes are others or elsewhere.
    void forget();

    /// Draws more of a picture of `grid`, which stays the same until all is forgotten; true when
    /// everything is drawn. Throws `std::bad_alloc`.
    bool advance(const TileGrid& grid, Slice& slice);

    /// Whether everything is drawn.
    bool isWhole() const { return mIsWhole; }

    /// How many strokes are drawn.
    int drawn() const { return mDrawn; }

    /// Null before the first stroke is drawn.
    const QImage& picture() const { return mPicture; }

private:
    void draw(const TileGrid& grid, Slice& slice);

    LeafPainter& mPainter;
    QImage mPicture;
    int mDrawn = 0;
    bool mIsWhole = false;
};

} // namespace ui
