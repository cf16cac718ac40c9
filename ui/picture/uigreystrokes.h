#pragma once

#include "ui/picture/uipicturepart.h"
#include "ui/picture/uitilegrid.h"

#include <QImage>
#include <QList>

namespace ui {

class LeafPainter;
class Slice;

/// A picture of every stroke in grey, drawn bit by bit: the strokes are collected and placed first.
/// There is none where there are no strokes.
///
/// Many strokes are drawn on several processors, each of which draws all of them, in their order,
/// in a band of the picture, so that the pixels are the same. Bands are drawn within `advance`
/// alone: between its calls nothing else touches the picture. Main thread only.
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

    /// Grows as strokes are drawn.
    qsizetype drawn() const;

    /// Null before the first stroke is drawn.
    const QImage& picture() const { return mPicture; }

private:
    struct band {
        PicturePart part; // as wide as the picture
        int drawn = 0;    // strokes, those that do not touch it too
    };

    void begin(const TileGrid& grid);
    QList<double> workAbove(const TileGrid& grid) const;
    void draw(const TileGrid& grid, Slice& slice);
    void drawBand(band& piece, const TileGrid& grid, Slice slice) const;
    bool isWhole(const band& each) const;

    LeafPainter& mPainter;
    QImage mPicture;
    QList<band> mBands; // the whole picture
    bool mIsWhole = false;
};

} // namespace ui
